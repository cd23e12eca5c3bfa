// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "app/DueDate.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

DueState StateOn(const FileDate& due, const FileDate& today) {
  CalFileInfo row;
  row.DueYear = due.year;
  row.DueMonth = due.month;
  row.DueDay = due.day;
  return DueStateOf(row, today);
}

TEST(DueDate, TheDayBeforeTodayIsPastDueAndTodayIsNot) {
  EXPECT_EQ(StateOn({2024, 3, 4}, {2024, 3, 5}), DueState::PastDue);
  EXPECT_EQ(StateOn({2024, 3, 5}, {2024, 3, 5}), DueState::DueSoon);
}

TEST(DueDate, TheThirtiethDayFromTodayIsDueSoonAndTheNextIsNot) {
  EXPECT_EQ(StateOn({2024, 5, 1}, {2024, 4, 1}), DueState::DueSoon);
  EXPECT_EQ(StateOn({2024, 5, 2}, {2024, 4, 1}), DueState::Fine);
}

TEST(DueDate, DaysAreCountedOverTheEndsOfMonthsAndYears) {
  EXPECT_EQ(StateOn({2023, 12, 31}, {2024, 1, 1}), DueState::PastDue);
  // 16 days are left of December.
  EXPECT_EQ(StateOn({2024, 1, 14}, {2023, 12, 15}), DueState::DueSoon);
  EXPECT_EQ(StateOn({2024, 1, 15}, {2023, 12, 15}), DueState::Fine);
}

TEST(DueDate, TheLeapDayCountsInLeapYearsAlone) {
  EXPECT_EQ(StateOn({2024, 3, 2}, {2024, 2, 1}), DueState::DueSoon);
  EXPECT_EQ(StateOn({2024, 3, 3}, {2024, 2, 1}), DueState::Fine);
  EXPECT_EQ(StateOn({2023, 3, 3}, {2023, 2, 1}), DueState::DueSoon);
  EXPECT_EQ(StateOn({2023, 3, 4}, {2023, 2, 1}), DueState::Fine);
  EXPECT_EQ(StateOn({2024, 2, 29}, {2024, 3, 1}), DueState::PastDue);
}

TEST(DueDate, DatesFarAwayAreFineOrPastDue) {
  constexpr std::int16_t kLastYear = std::numeric_limits<std::int16_t>::max();
  EXPECT_EQ(StateOn({kLastYear, 12, 31}, {2024, 3, 5}), DueState::Fine);
  EXPECT_EQ(StateOn({1, 1, 1}, {2024, 3, 5}), DueState::PastDue);
}

TEST(DueDate, ADayAfterTheEndOfItsMonthCountsAsTheLastOfIt) {
  EXPECT_EQ(StateOn({2025, 2, 29}, {2025, 2, 28}), DueState::DueSoon);
  EXPECT_EQ(StateOn({2025, 2, 29}, {2025, 3, 1}), DueState::PastDue);
  EXPECT_EQ(StateOn({2024, 2, 30}, {2024, 2, 29}), DueState::DueSoon);
  EXPECT_EQ(StateOn({2001, 4, 31}, {2001, 5, 1}), DueState::PastDue);
  // 30 days before 30 APR, and 31.
  EXPECT_EQ(StateOn({2001, 4, 31}, {2001, 3, 31}), DueState::DueSoon);
  EXPECT_EQ(StateOn({2001, 4, 31}, {2001, 3, 30}), DueState::Fine);
  EXPECT_EQ(StateOn({2001, 1, 99}, {2001, 2, 1}), DueState::PastDue);
}

TEST(DueDate, WhatIsNoDayOfAMonthIsNoDueDate) {
  constexpr std::int16_t kLowest = std::numeric_limits<std::int16_t>::min();
  constexpr std::int16_t kHighest = std::numeric_limits<std::int16_t>::max();
  for (const FileDate& due :
       {FileDate{0, 0, 0}, FileDate{0, 1, 1}, FileDate{2001, 0, 5}, FileDate{2001, 3, 0},
        FileDate{2001, 13, 1}, FileDate{2001, 13, 31}, FileDate{-2001, 3, 5}, FileDate{2001, -3, 5},
        FileDate{2001, 3, -5}, FileDate{kLowest, kLowest, kLowest},
        FileDate{kHighest, kHighest, kHighest}}) {
    EXPECT_EQ(StateOn(due, {2024, 3, 5}), DueState::NoDate)
        << due.year << " " << due.month << " " << due.day;
  }
}

TEST(DueDate, OnlyPastDueAndDueSoonHaveWords) {
  EXPECT_EQ(DueWords(DueState::PastDue), "past due");
  EXPECT_EQ(DueWords(DueState::DueSoon), "due within 30 days");
  EXPECT_EQ(DueWords(DueState::Fine), "");
  EXPECT_EQ(DueWords(DueState::NoDate), "");
}

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
