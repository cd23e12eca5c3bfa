// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

#include "core/dates/Calendar.h"

namespace tarvell {
namespace {

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

}  // namespace
}  // namespace tarvell
