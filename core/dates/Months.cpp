// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/dates/Months.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tarvell {

namespace {

constexpr std::array<std::string_view, 12> kMonths = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                      "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

}  // namespace

std::int16_t MonthToNumber(std::string_view name) {
  const auto* found = std::find(kMonths.begin(), kMonths.end(), name);
  return found == kMonths.end() ? std::int16_t{0}
                                : static_cast<std::int16_t>(found - kMonths.begin() + 1);
}

std::string NumberToMonth(std::int16_t n) {
  return n >= 1 && n <= static_cast<std::int16_t>(kMonths.size())
             ? std::string(kMonths.at(static_cast<std::size_t>(n - 1)))
             : std::string();
}

}  // namespace tarvell
