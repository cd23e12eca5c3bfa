// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_DATES_H
#define TARVELL_TESTS_SUPPORT_DATES_H

#include <cstdint>
#include <ostream>
#include <string>

#include "core/caldata/cifCaldata.h"

namespace tarvell::test {

/// A date of a data file's header, in the parts that cifCaldata returns.
struct Date {
  std::int16_t year = -1;
  std::string month = "?";
  std::int16_t day = -1;

  bool operator==(const Date&) const = default;
};

inline void PrintTo(const Date& date, std::ostream* stream) {
  *stream << date.year << ' ' << date.month << ' ' << date.day;
}

[[nodiscard]] inline Date CalDateOf(const cifCaldata& data) {
  Date date;
  data.GetCalDate(date.year, date.month, date.day);
  return date;
}

[[nodiscard]] inline Date DueDateOf(const cifCaldata& data) {
  Date date;
  data.GetDueDate(date.year, date.month, date.day);
  return date;
}

}  // namespace tarvell::test

#endif
