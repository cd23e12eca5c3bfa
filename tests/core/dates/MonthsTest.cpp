// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "core/dates/Months.h"

namespace tarvell {
namespace {

constexpr std::array<std::string_view, 12> kMonths = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                      "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

TEST(Months, TheTwelveNamesAndNumbersBelongTogether) {
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    SCOPED_TRACE(kMonths[i]);
    EXPECT_EQ(MonthToNumber(kMonths[i]), static_cast<std::int16_t>(i + 1));
    EXPECT_EQ(NumberToMonth(static_cast<std::int16_t>(i + 1)), kMonths[i]);
  }
}

TEST(Months, AnyOtherNameIsNone) {
  for (const std::string_view name :
       {"", "Jan", "jan", "JANUARY", "JA", " JAN", "JAN ", "1", "01", "XXX", "DECEMBER", "dec"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(MonthToNumber(name), 0);
  }
}

TEST(Months, AnyOtherNumberIsNone) {
  for (const std::int16_t number :
       {std::int16_t{0}, std::int16_t{13}, std::int16_t{-1},
        std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max()}) {
    SCOPED_TRACE(number);
    EXPECT_EQ(NumberToMonth(number), "");
  }
}

}  // namespace
}  // namespace tarvell
