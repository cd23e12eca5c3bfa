// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "core/dates/DueDate.h"

namespace tarvell {
namespace {

TEST(DueDate, TheDayBeforeTodayIsPastDueAndTodayIsNot) {
  EXPECT_EQ(DueStateOf({2024, 3, 4}, {2024, 3, 5}), DueState::PastDue);
  EXPECT_EQ(DueStateOf({2024, 3, 5}, {2024, 3, 5}), DueState::DueSoon);
}

TEST(DueDate, TheThirtiethDayFromTodayIsDueSoonAndTheNextIsNot) {
  EXPECT_EQ(DueStateOf({2024, 5, 1}, {2024, 4, 1}), DueState::DueSoon);
  EXPECT_EQ(DueStateOf({2024, 5, 2}, {2024, 4, 1}), DueState::Fine);
}

TEST(DueDate, DaysAreCountedOverTheEndsOfMonthsAndYears) {
  EXPECT_EQ(DueStateOf({2023, 12, 31}, {2024, 1, 1}), DueState::PastDue);
  // 16 days are left of December.
  EXPECT_EQ(DueStateOf({2024, 1, 14}, {2023, 12, 15}), DueState::DueSoon);
  EXPECT_EQ(DueStateOf({2024, 1, 15}, {2023, 12, 15}), DueState::Fine);
}

TEST(DueDate, TheLeapDayCountsOnlyInLeapYears) {
  EXPECT_EQ(DueStateOf({2024, 3, 2}, {2024, 2, 1}), DueState::DueSoon);
  EXPECT_EQ(DueStateOf({2024, 3, 3}, {2024, 2, 1}), DueState::Fine);
  EXPECT_EQ(DueStateOf({2023, 3, 3}, {2023, 2, 1}), DueState::DueSoon);
  EXPECT_EQ(DueStateOf({2023, 3, 4}, {2023, 2, 1}), DueState::Fine);
  EXPECT_EQ(DueStateOf({2024, 2, 29}, {2024, 3, 1}), DueState::PastDue);
}

TEST(DueDate, ADayAfterTheEndOfItsMonthCountsAsTheLastOfIt) {
  EXPECT_EQ(DueStateOf({2025, 2, 29}, {2025, 2, 28}), DueState::DueSoon);
  EXPECT_EQ(DueStateOf({2025, 2, 29}, {2025, 3, 1}), DueState::PastDue);
  EXPECT_EQ(DueStateOf({2024, 2, 30}, {2024, 2, 29}), DueState::DueSoon);
  EXPECT_EQ(DueStateOf({2001, 4, 31}, {2001, 5, 1}), DueState::PastDue);
  // 30 days before 30 APR, and 31.
  EXPECT_EQ(DueStateOf({2001, 4, 31}, {2001, 3, 31}), DueState::DueSoon);
  EXPECT_EQ(DueStateOf({2001, 4, 31}, {2001, 3, 30}), DueState::Fine);
  EXPECT_EQ(DueStateOf({2001, 1, 99}, {2001, 2, 1}), DueState::PastDue);
}

TEST(DueDate, ADateOutsideEveryMonthIsNoDueDate) {
  constexpr std::int16_t kLowest = std::numeric_limits<std::int16_t>::min();
  constexpr std::int16_t kHighest = std::numeric_limits<std::int16_t>::max();
  for (const FileDate& due :
       {FileDate{0, 0, 0}, FileDate{0, 1, 1}, FileDate{2001, 0, 5}, FileDate{2001, 3, 0},
        FileDate{2001, 13, 1}, FileDate{2001, 13, 31}, FileDate{-2001, 3, 5}, FileDate{2001, -3, 5},
        FileDate{2001, 3, -5}, FileDate{kLowest, kLowest, kLowest},
        FileDate{kHighest, kHighest, kHighest}}) {
    EXPECT_EQ(DueStateOf(due, {2024, 3, 5}), DueState::NoDate)
        << due.year << " " << due.month << " " << due.day;
  }
}

TEST(DateText, NamesTheDayOrSaysThatThereIsNone) {
  EXPECT_EQ(DateText({2002, 3, 5}), "5 MAR 2002");
  EXPECT_EQ(DateText({0, 0, 0}), "(none)");
  EXPECT_EQ(DateText({2001, 2, 29}), "29 FEB 2001 (no such day)");
  EXPECT_EQ(DateText({2001, 13, 1}), "(no such day)");
  EXPECT_EQ(DateText({0, 3, 5}), "(no such day)");
}

TEST(DueDate, OnlyPastDueAndDueSoonHaveWords) {
  EXPECT_EQ(DueWords(DueState::PastDue), "past due");
  EXPECT_EQ(DueWords(DueState::DueSoon), "due within 30 days");
  EXPECT_EQ(DueWords(DueState::Fine), "");
  EXPECT_EQ(DueWords(DueState::NoDate), "");
}

}  // namespace
}  // namespace tarvell
