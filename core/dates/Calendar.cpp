// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/dates/Calendar.h"

#include <array>
#include <cstddef>

namespace tarvell {

namespace {

constexpr std::int16_t kFebruary = 2;
constexpr std::array<std::int16_t, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

bool IsLeapYear(std::int16_t year) {
  return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
}

}  // namespace

bool IsValidDate(std::int16_t year, std::int16_t month, std::int16_t day) {
  return day >= 1 && day <= DaysInMonth(year, month);
}

std::int16_t DaysInMonth(std::int16_t year, std::int16_t month) {
  if (month < 1 || month > static_cast<std::int16_t>(kDays.size())) {
    return -1;
  }
  if (month == kFebruary && IsLeapYear(year)) {
    return 29;
  }
  return kDays.at(static_cast<std::size_t>(month - 1));
}

}  // namespace tarvell
