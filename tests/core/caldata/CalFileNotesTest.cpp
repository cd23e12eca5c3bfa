// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "core/caldata/CalFileNotes.h"
#include "core/session/Tarvell_MainModule.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

CalFileInfo WholeRow() {
  CalFileInfo row;
  row.SerialNumber = "3318A12345";
  row.CalibrationNumber = "C-0042";
  row.CalYear = 2001;
  row.CalMonth = 3;
  row.CalDay = 5;
  row.DueYear = 2002;
  row.DueMonth = 12;
  row.DueDay = 31;
  row.Comment = "factory";
  return row;
}

TEST(CalFileNotes, TellNumberDatesAndComment) {
  EXPECT_EQ(CalFileNotes(WholeRow(), DueState::Fine),
            "Calibration number: C-0042\n"
            "Calibrated: 5 MAR 2001\n"
            "Due: 31 DEC 2002\n"
            "Comment: factory");
}

TEST(CalFileNotes, TellWhatTheMarkMeans) {
  EXPECT_EQ(CalFileNotes(WholeRow(), DueState::PastDue),
            "Calibration number: C-0042\n"
            "Calibrated: 5 MAR 2001\n"
            "Due: 31 DEC 2002, past due\n"
            "Comment: factory");
  EXPECT_EQ(CalFileNotes(WholeRow(), DueState::DueSoon),
            "Calibration number: C-0042\n"
            "Calibrated: 5 MAR 2001\n"
            "Due: 31 DEC 2002, due within 30 days\n"
            "Comment: factory");
}

TEST(CalFileNotes, TellWhatIsMissing) {
  EXPECT_EQ(CalFileNotes(CalFileInfo(), DueState::NoDate),
            "Calibration number: (none)\n"
            "Calibrated: (none)\n"
            "Due: (none)\n"
            "Comment: (none)");
}

TEST(CalFileNotes, TellOfDaysThatDoNotExist) {
  CalFileInfo row = WholeRow();
  row.CalMonth = 13;
  row.DueMonth = 11;
  EXPECT_EQ(CalFileNotes(row, DueState::PastDue),
            "Calibration number: C-0042\n"
            "Calibrated: (no such day)\n"
            "Due: 31 NOV 2002 (no such day), past due\n"
            "Comment: factory");
}

TEST(CalFileHeader, OfOneFileIsReadAloneAndLeavesTheListAsItIs) {
  const test::TestTree tree;
  gCalFiles.fill(CalFileInfo());
  gCalFiles.at(0).SerialNumber = "other";
  const std::string path = R"(c:\calfactors\PX12A\SN12345)";
  tree.Write(path, test::Lines({"#MODEL_NO : PX12A", "#SER_NO   : 3318A12345",
                                "#CAL_DATE : 20010305", "#CAL_NO   : C-0042",
                                "#DUE_DATE : 20021231", "#COMMENT  : factory", "!End"}));
  const auto row = ReadCalFileHeader(path);
  ASSERT_TRUE(row.has_value());
  EXPECT_EQ(row->FilePath, path);
  EXPECT_EQ(row->ModelNumber, "PX12A");
  EXPECT_EQ(row->SerialNumber, "3318A12345");
  EXPECT_EQ(CalFileNotes(*row, DueState::Fine),
            "Calibration number: C-0042\n"
            "Calibrated: 5 MAR 2001\n"
            "Due: 31 DEC 2002\n"
            "Comment: factory");
  EXPECT_EQ(gCalFiles.at(0).SerialNumber, "other");
}

TEST(CalFileHeader, OfAFileThatIsGoneIsAnError) {
  const test::TestTree tree;
  const Error error =
      test::ErrorOf([] { (void)ReadCalFileHeader(R"(c:\calfactors\PX12A\SN12345)"); });
  EXPECT_EQ(error.Path(), R"(c:\calfactors\PX12A\SN12345)");
}

}  // namespace
}  // namespace tarvell
