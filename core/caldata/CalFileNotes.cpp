// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/CalFileNotes.h"

#include "core/text/Text.h"

namespace tarvell {

FileDate DueDateOf(const CalFileInfo& row) {
  return {row.DueYear, row.DueMonth, row.DueDay};
}

std::string CalFileNotes(const CalFileInfo& row, DueState state) {
  const std::string words(DueWords(state));
  return "Calibration number: " + TextOrNone(row.CalibrationNumber) +
         "\nCalibrated: " + DateText({row.CalYear, row.CalMonth, row.CalDay}) +
         "\nDue: " + DateText(DueDateOf(row)) + (words.empty() ? "" : ", " + words) +
         "\nComment: " + TextOrNone(row.Comment);
}

}  // namespace tarvell
