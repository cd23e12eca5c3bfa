// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
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

TEST(Months, AnyOtherNameOrNumberIsNone) {
  for (const char* name : {"", "Jan", "jan", "JANUARY", "JA", " JAN", "JAN ", "1", "01"}) {
    EXPECT_EQ(MonthToNumber(name), 0) << name;
  }
  for (const int number : {-32768, -1, 0, 13, 32767}) {
    EXPECT_EQ(NumberToMonth(static_cast<std::int16_t>(number)), "") << number;
  }
}

}  // namespace
}  // namespace tarvell
