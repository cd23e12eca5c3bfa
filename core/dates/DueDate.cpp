// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/dates/DueDate.h"

#include <algorithm>
#include <chrono>

#include "core/dates/Calendar.h"
#include "core/dates/Months.h"

namespace tarvell {

namespace {

bool Exists(const FileDate& date) {
  return date.year > 0 && IsValidDate(date.year, date.month, date.day);
}

/// Whether the date has a month and a positive day, which may be after the month's end.
bool NamesADay(const FileDate& date) {
  return date.year > 0 && date.day > 0 && DaysInMonth(date.year, date.month) > 0;
}

/// The day to calculate with: a day after the end of its month is replaced by the last day of the
/// month.
FileDate WithinItsMonth(FileDate date) {
  date.day = std::min(date.day, DaysInMonth(date.year, date.month));
  return date;
}

std::chrono::sys_days DayOf(const FileDate& date) {
  return std::chrono::year(date.year) / date.month / date.day;
}

}  // namespace

std::string DateText(const FileDate& date) {
  if (date.year == 0 && date.month == 0 && date.day == 0) {
    return "(none)";
  }
  if (!NamesADay(date)) {
    return "(no such day)";
  }
  return std::to_string(date.day) + " " + NumberToMonth(date.month) + " " +
         std::to_string(date.year) + (Exists(date) ? "" : " (no such day)");
}

DueState DueStateOf(const FileDate& due, const FileDate& today) {
  if (!NamesADay(due)) {
    return DueState::NoDate;
  }
  const auto daysLeft = (DayOf(WithinItsMonth(due)) - DayOf(today)).count();
  if (daysLeft < 0) {
    return DueState::PastDue;
  }
  return daysLeft <= kDueSoonDays ? DueState::DueSoon : DueState::Fine;
}

std::string_view DueWords(DueState state) {
  switch (state) {
    case DueState::PastDue:
      return "past due";
    case DueState::DueSoon:
      return "due within 30 days";
    case DueState::NoDate:
    case DueState::Fine:
      break;
  }
  return "";
}

}  // namespace tarvell
