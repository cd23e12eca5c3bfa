// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/DueDate.h"

#include <chrono>

#include "common/CommonStringModule.h"

namespace tarvell {

namespace {

FileDate DueDateOf(const CalFileInfo& row) {
  return {row.DueYear, row.DueMonth, row.DueDay};
}

bool Exists(const FileDate& date) {
  return date.year > 0 && IsValidDate(date.year, date.month, date.day);
}

std::chrono::sys_days DayOf(const FileDate& date) {
  return std::chrono::year(date.year) / date.month / date.day;
}

std::string TextOrNone(const std::string& text) {
  return text.empty() ? "(none)" : text;
}

}  // namespace

std::string DateText(const FileDate& date) {
  if (date.year == 0 && date.month == 0 && date.day == 0) {
    return "(none)";
  }
  return Exists(date) ? std::to_string(date.day) + " " + NumberToMonth(date.month) + " " +
                            std::to_string(date.year)
                      : "(no such day)";
}

DueState DueStateOf(const CalFileInfo& row, const FileDate& today) {
  const FileDate due = DueDateOf(row);
  if (!Exists(due)) {
    return DueState::NoDate;
  }
  const auto daysLeft = (DayOf(due) - DayOf(today)).count();
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

std::string CalFileNotes(const CalFileInfo& row, DueState state) {
  const std::string words(DueWords(state));
  return "Calibration number: " + TextOrNone(row.CalibrationNumber) +
         "\nCalibrated: " + DateText({row.CalYear, row.CalMonth, row.CalDay}) +
         "\nDue: " + DateText(DueDateOf(row)) + (words.empty() ? "" : ", " + words) +
         "\nComment: " + TextOrNone(row.Comment);
}

}  // namespace tarvell
