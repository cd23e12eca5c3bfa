// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <variant>
#include <vector>

#include "core/paper/SurveyPaper.h"

namespace tarvell {
namespace {

TEST(SurveyPaper, HasTheShownRowsAndSaysWhatTheyWereNarrowedBy) {
  SurveyRow due;
  due.model = "PX12A";
  due.serialNumber = "3318A12345";
  due.due = {2026, 11, 21};
  due.calibrationNumber = "C-0042";
  due.calibrated = {2025, 11, 21};
  due.daysLeft = -1;
  due.comment = "rack";
  due.stations = {"BENCH1", "BENCH2"};
  due.Add(FindingKind::PastDue, "Have it calibrated.");
  ShownRows rows;
  rows.Set({due, SurveyRow()});
  rows.SetFilter({.text = "rack", .onlyFaults = true, .station = "BENCH2"});

  const PaperDocument paper = SurveyOnPaper(rows, {2026, 11, 22});
  EXPECT_TRUE(paper.isWide);
  EXPECT_EQ(paper.foot, "Overview, 22 NOV 2026");
  ASSERT_EQ(paper.parts.size(), 2U);
  EXPECT_EQ(std::get<PaperFields>(paper.parts[0]),
            (PaperFields{{"Day", "22 NOV 2026"},
                         {"Rows", "1 of 2, of all 1 with something to do"},
                         {"Filter", "rack"},
                         {"State", "something to do"},
                         {"Station", "BENCH2"}}));
  const auto& table = std::get<PaperTable>(paper.parts[1]);
  ASSERT_EQ(table.columns.size(), 9U);
  EXPECT_EQ(table.columns[5], (PaperColumn{"Days left", true}));
  EXPECT_EQ(table.rows, (std::vector<std::vector<PaperCell>>{{{"PX12A"},
                                                              {"3318A12345"},
                                                              {"C-0042"},
                                                              {"2025-11-21"},
                                                              {"2026-11-21"},
                                                              {"-1"},
                                                              {"rack"},
                                                              {"BENCH1, BENCH2"},
                                                              {"past due"}}}));
}

}  // namespace
}  // namespace tarvell
