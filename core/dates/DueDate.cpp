// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/dates/DueDate.h"

#include <algorithm>
#include <chrono>

#include "core/dates/Calendar.h"
#include "core/dates/Months.h"

namespace tarvell {

namespace {

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

constexpr int kMonthsOfAYear = 12;
constexpr int kLastYear = 9999;

bool IsMonthEnd(const FileDate& date) {
  return date.day == DaysInMonth(date.year, date.month);
}

/// The same day `months` later; the last day of the month where that lacks the day.
FileDate MonthsAfter(const FileDate& date, int months) {
  const int month = date.year * kMonthsOfAYear + date.month - 1 + months;
  return WithinItsMonth({static_cast<std::int16_t>(month / kMonthsOfAYear),
                         static_cast<std::int16_t>(month % kMonthsOfAYear + 1), date.day});
}

FileDate DateOf(std::chrono::sys_days day) {
  const std::chrono::year_month_day date(day);
  return {static_cast<std::int16_t>(static_cast<int>(date.year())),
          static_cast<std::int16_t>(static_cast<unsigned>(date.month())),
          static_cast<std::int16_t>(static_cast<unsigned>(date.day()))};
}

FileDate LastOfItsMonth(FileDate date) {
  date.day = DaysInMonth(date.year, date.month);
  return date;
}

/// The day that is as much after `today` as `to` is after `from`.
FileDate AsMuchLater(const FileDate& from, const FileDate& to, const FileDate& today) {
  const int months = (to.year - from.year) * kMonthsOfAYear + to.month - from.month;
  if (DayOf(to) == DayOf(MonthsAfter(from, months))) {
    return MonthsAfter(today, months);
  }
  if (IsMonthEnd(from) && IsMonthEnd(to)) {
    const FileDate again = MonthsAfter(today, months);
    return IsMonthEnd(today) ? LastOfItsMonth(again) : again;
  }
  // The day before the first of a month is in the month before.
  for (const int most : {months, months + 1}) {
    if (DayOf(to) == DayOf(MonthsAfter(from, most)) - std::chrono::days(1)) {
      return DateOf(DayOf(MonthsAfter(today, most)) - std::chrono::days(1));
    }
  }
  return DateOf(DayOf(today) + (DayOf(to) - DayOf(from)));
}

}  // namespace

std::optional<FileDate> DueAgain(const FileDate& calibrated, const FileDate& due,
                                 const FileDate& today) {
  if (!NamesADay(calibrated) || !NamesADay(due)) {
    return std::nullopt;
  }
  const FileDate from = WithinItsMonth(calibrated);
  const FileDate to = WithinItsMonth(due);
  if (DayOf(to) <= DayOf(from) || to.year - from.year > kLastYear - today.year) {
    return std::nullopt;
  }
  const FileDate again = AsMuchLater(from, to, today);
  return again.year > kLastYear ? std::nullopt : std::optional(again);
}

std::string DateText(const FileDate& date) {
  if (date == FileDate()) {
    return "(none)";
  }
  if (!NamesADay(date)) {
    return "(no such day)";
  }
  return std::to_string(date.day) + " " + NumberToMonth(date.month) + " " +
         std::to_string(date.year) + (Exists(date) ? "" : " (no such day)");
}

std::optional<int> DaysLeft(const FileDate& due, const FileDate& today) {
  if (!NamesADay(due)) {
    return std::nullopt;
  }
  return static_cast<int>((DayOf(WithinItsMonth(due)) - DayOf(today)).count());
}

DueState DueStateOf(const FileDate& due, const FileDate& today) {
  const std::optional<int> daysLeft = DaysLeft(due, today);
  if (!daysLeft) {
    return DueState::NoDate;
  }
  if (*daysLeft < 0) {
    return DueState::PastDue;
  }
  return *daysLeft <= kDueSoonDays ? DueState::DueSoon : DueState::Fine;
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
