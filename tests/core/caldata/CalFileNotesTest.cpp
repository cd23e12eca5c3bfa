// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "core/caldata/CalFileNotes.h"
#include "core/session/Tarvell_MainModule.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell::test {
namespace {

TEST(CalFileNotes, SayNumberDatesCommentAndWhatTheMarkMeans) {
  CalFileInfo row;
  row.CalibrationNumber = "C-0042";
  row.CalYear = 2001;
  row.CalMonth = 3;
  row.CalDay = 5;
  row.DueYear = 2002;
  row.DueMonth = 12;
  row.DueDay = 31;
  row.Comment = "factory";
  for (const auto& [state, words] :
       {std::pair(DueState::Fine, ""), std::pair(DueState::PastDue, ", past due"),
        std::pair(DueState::DueSoon, ", due within 30 days")}) {
    EXPECT_EQ(CalFileNotes(row, state),
              "Calibration number: C-0042\n"
              "Calibrated: 5 MAR 2001\n"
              "Due: 31 DEC 2002" +
                  std::string(words) + "\nComment: factory");
  }
}

TEST(CalFileNotes, SayWhatIsMissingAndDaysThatDoNotExist) {
  CalFileInfo row;
  row.DueYear = 2002;
  row.DueMonth = 11;
  row.DueDay = 31;
  EXPECT_EQ(CalFileNotes(row, DueState::NoDate),
            "Calibration number: (none)\n"
            "Calibrated: (none)\n"
            "Due: 31 NOV 2002 (no such day)\n"
            "Comment: (none)");
}

TEST(CalFileHeader, OfOneFileIsReadWithoutChangingTheList) {
  const TestTree tree;
  gCalFiles.at(0).SerialNumber = "other";
  const std::string path = R"(c:\calfactors\PX12A\SN12345)";
  EXPECT_EQ(ErrorOf([&] { (void)ReadCalFileHeader(path); }).Path(), path);
  tree.Write(path,
             Lines({"#MODEL_NO : PX12A", "#SER_NO   : 3318A12345", "#CAL_DATE : 20010305",
                    "#CAL_NO   : C-0042", "#DUE_DATE : 20021231", "#COMMENT  : factory", "!End"}));
  const auto row = ReadCalFileHeader(path);
  ASSERT_TRUE(row.has_value());
  EXPECT_EQ(row->FilePath, path);
  EXPECT_EQ(row->SerialNumber, "3318A12345");
  EXPECT_EQ(gCalFiles.at(0).SerialNumber, "other");
  gCalFiles.fill(CalFileInfo());
}

}  // namespace
}  // namespace tarvell::test
