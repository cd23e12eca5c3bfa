// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "core/dates/Calendar.h"
#include "core/dates/DueDate.h"
#include "core/dates/FileDate.h"
#include "core/dates/Months.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::ErrorOf;

constexpr std::array<std::int16_t, 12> kCommonYear = {31, 28, 31, 30, 31, 30,
                                                      31, 31, 30, 31, 30, 31};

constexpr std::array<std::int16_t, 5> kLeapYears = {0, 1996, 2000, 2024, 2400};
constexpr std::array<std::int16_t, 5> kCommonYears = {1, 1900, 2001, 2100, 32767};

TEST(Calendar, EveryMonthHasItsDaysAndFebruaryOneMoreInLeapYears) {
  for (const auto& [years, february] : {std::pair(kCommonYears, 28), std::pair(kLeapYears, 29)}) {
    for (const std::int16_t year : years) {
      for (std::int16_t month = 1; month <= 12; ++month) {
        SCOPED_TRACE(testing::Message() << year << '-' << month);
        const auto days = static_cast<std::int16_t>(
            month == 2 ? february : kCommonYear[static_cast<std::size_t>(month - 1)]);
        EXPECT_EQ(DaysInMonth(year, month), days);
        EXPECT_FALSE(IsValidDate(year, month, 0));
        EXPECT_TRUE(IsValidDate(year, month, 1));
        EXPECT_TRUE(IsValidDate(year, month, days));
        EXPECT_FALSE(IsValidDate(year, month, static_cast<std::int16_t>(days + 1)));
        EXPECT_FALSE(IsValidDate(year, month, std::numeric_limits<std::int16_t>::min()));
      }
    }
  }
  EXPECT_TRUE(IsValidDate(-4, 2, 29));
}

TEST(Calendar, AMonthOutsideTheYearHasNoDays) {
  for (const int month : {-32768, 0, 13, 32767}) {
    SCOPED_TRACE(month);
    EXPECT_EQ(DaysInMonth(2001, static_cast<std::int16_t>(month)), -1);
    EXPECT_FALSE(IsValidDate(2001, static_cast<std::int16_t>(month), 1));
  }
}

constexpr std::array<std::string_view, 12> kMonths = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                      "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

TEST(Months, TheTwelveNamesAndNumbersBelongTogether) {
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    SCOPED_TRACE(kMonths[i]);
    EXPECT_EQ(MonthToNumber(kMonths[i]), static_cast<std::int16_t>(i + 1));
    EXPECT_EQ(NumberToMonth(static_cast<std::int16_t>(i + 1)), kMonths[i]);
  }
}

TEST(Months, AnyOtherNameOrNumberIsNone) {
  for (const char* name : {"", "Jan", "jan", "JANUARY", "JA", " JAN", "JAN ", "1", "01"}) {
    EXPECT_EQ(MonthToNumber(name), 0) << name;
  }
  for (const int number : {-32768, -1, 0, 13, 32767}) {
    EXPECT_EQ(NumberToMonth(static_cast<std::int16_t>(number)), "") << number;
  }
}

TEST(FileDate, IsParsedByPosition) {
  using Numbers = std::vector<int>;
  for (const auto& [text, numbers] :
       std::vector<std::pair<std::string_view, Numbers>>{{"20010305", {2001, 3, 5}},
                                                         {"20370000", {2037, 0, 0}},
                                                         {"2001", {2001, 0, 1}},
                                                         {"200103", {2001, 3, 3}},
                                                         {"200103051", {2001, 3, 51}},
                                                         {"", {0, 0, 0}},
                                                         {"12", {12, 0, 12}},
                                                         {"2001AB05", {2001, 0, 5}},
                                                         {"C-0042", {0, 42, 42}},
                                                         {"20019905", {2001, 99, 5}}}) {
    const FileDate date = FileDate::From(text);
    EXPECT_EQ((Numbers{date.year, date.month, date.day}), numbers) << text;
  }
}

TEST(FileDate, ANumberBeyondSixteenBitsIsATypeError) {
  EXPECT_EQ(ErrorOf([] { (void)FileDate::From("9E900305"); }).Kind(), ErrorKind::Type);
  EXPECT_EQ(FileDate::From("3E4 0305").year, 30000);
  EXPECT_EQ(ErrorOf([] { (void)FileDate::From("4E4 0305"); }).Kind(), ErrorKind::Type);
}

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

TEST(DueDate, IsAgainAsMuchLaterAsItWas) {
  struct Case {
    FileDate calibrated;
    FileDate due;
    FileDate today;
    std::string again;
  };
  for (const Case& each :
       std::vector<Case>{// Months.
                         {{2001, 3, 5}, {2002, 3, 5}, {2026, 11, 22}, "22 NOV 2027"},
                         {{2001, 11, 5}, {2002, 2, 5}, {2026, 11, 22}, "22 FEB 2027"},
                         // A month without the day, in the earlier dates and in the new ones.
                         {{2001, 8, 31}, {2002, 2, 28}, {2026, 8, 15}, "15 FEB 2027"},
                         {{2001, 8, 15}, {2002, 2, 15}, {2026, 8, 31}, "28 FEB 2027"},
                         {{2001, 8, 31}, {2002, 2, 28}, {2027, 8, 30}, "29 FEB 2028"},
                         {{2024, 2, 29}, {2025, 2, 28}, {2026, 2, 28}, "28 FEB 2027"},
                         // From month end to month end.
                         {{2001, 6, 30}, {2001, 12, 31}, {2026, 4, 30}, "31 OCT 2026"},
                         {{2001, 6, 30}, {2001, 12, 31}, {2026, 4, 29}, "29 OCT 2026"},
                         // A day less.
                         {{2001, 3, 5}, {2002, 3, 4}, {2027, 3, 10}, "9 MAR 2028"},
                         {{2001, 1, 1}, {2001, 12, 31}, {2027, 3, 10}, "9 MAR 2028"},
                         // Days: 90 of them, and one.
                         {{2001, 1, 1}, {2001, 4, 3}, {2026, 12, 1}, "3 MAR 2027"},
                         {{2001, 2, 28}, {2001, 3, 1}, {2026, 12, 31}, "1 JAN 2027"},
                         // A day after the end of its month counts as the last of it.
                         {{2001, 2, 31}, {2002, 2, 28}, {2026, 5, 1}, "1 MAY 2027"},
                         {{2001, 3, 5}, {9974, 3, 5}, {2026, 3, 5}, "5 MAR 9999"},
                         // Nothing.
                         {{2001, 3, 5}, {9975, 3, 5}, {2026, 3, 5}, "(none)"},
                         {{2001, 3, 5}, {2001, 3, 5}, {2026, 3, 5}, "(none)"},
                         {{2002, 3, 5}, {2001, 3, 5}, {2026, 3, 5}, "(none)"},
                         {{2001, 3, 0}, {2002, 3, 5}, {2026, 3, 5}, "(none)"},
                         {{2001, 3, 5}, {2002, 13, 5}, {2026, 3, 5}, "(none)"}}) {
    const FileDate again = DueAgain(each.calibrated, each.due, each.today).value_or(FileDate());
    EXPECT_EQ(DateText(again), each.again)
        << DateText(each.due) << " after " << DateText(each.calibrated);
  }
}

TEST(DateText, NamesTheDayOrSaysThatThereIsNone) {
  EXPECT_EQ(DateText({2002, 3, 5}), "5 MAR 2002");
  EXPECT_EQ(DateText({0, 0, 0}), "(none)");
  EXPECT_EQ(DateText({2001, 2, 29}), "29 FEB 2001 (no such day)");
  EXPECT_EQ(DateText({2001, 13, 1}), "(no such day)");
  EXPECT_EQ(DateText({0, 3, 5}), "(no such day)");
}

}  // namespace
}  // namespace tarvell
