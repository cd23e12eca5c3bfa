// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

#include "core/dates/DueDate.h"

namespace tarvell {
namespace {

TEST(DueDate, IsPastDueBeforeTodayAndDueSoonForThirtyDays) {
  struct Case {
    FileDate due;
    FileDate today;
    DueState state;
  };
  for (const Case& each :
       std::vector<Case>{{{2024, 3, 4}, {2024, 3, 5}, DueState::PastDue},
                         {{2024, 3, 5}, {2024, 3, 5}, DueState::DueSoon},
                         {{2024, 5, 1}, {2024, 4, 1}, DueState::DueSoon},
                         {{2024, 5, 2}, {2024, 4, 1}, DueState::Fine},
                         // Over the end of a year: 16 days are left of December.
                         {{2023, 12, 31}, {2024, 1, 1}, DueState::PastDue},
                         {{2024, 1, 14}, {2023, 12, 15}, DueState::DueSoon},
                         {{2024, 1, 15}, {2023, 12, 15}, DueState::Fine},
                         // The leap day counts only in leap years.
                         {{2024, 3, 2}, {2024, 2, 1}, DueState::DueSoon},
                         {{2024, 3, 3}, {2024, 2, 1}, DueState::Fine},
                         {{2023, 3, 3}, {2023, 2, 1}, DueState::DueSoon},
                         {{2023, 3, 4}, {2023, 2, 1}, DueState::Fine},
                         // A day after the end of its month counts as the last of it.
                         {{2025, 2, 29}, {2025, 2, 28}, DueState::DueSoon},
                         {{2025, 2, 29}, {2025, 3, 1}, DueState::PastDue},
                         {{2001, 4, 31}, {2001, 3, 31}, DueState::DueSoon},
                         {{2001, 4, 31}, {2001, 3, 30}, DueState::Fine},
                         {{2001, 1, 99}, {2001, 2, 1}, DueState::PastDue}}) {
    EXPECT_EQ(DueStateOf(each.due, each.today), each.state)
        << DateText(each.due) << " on " << DateText(each.today);
  }
}

TEST(DueDate, ADateOutsideEveryMonthIsNoDueDate) {
  constexpr std::int16_t kLowest = std::numeric_limits<std::int16_t>::min();
  for (const FileDate& due :
       {FileDate{0, 1, 1}, FileDate{2001, 0, 5}, FileDate{2001, 3, 0}, FileDate{2001, 13, 1},
        FileDate{-2001, 3, 5}, FileDate{2001, 3, -5}, FileDate{kLowest, kLowest, kLowest}}) {
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
