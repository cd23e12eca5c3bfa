// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_APP_DUEDATE_H
#define TARVELL_APP_DUEDATE_H

#include <string>
#include <string_view>

#include "app/Tarvell_MainModule.h"
#include "common/mTypeDef.h"

/// When the calibration of an instrument is due again, and what the lists tell of its data file.
namespace tarvell {

/// Days before the due date, that day included, on which an instrument is due soon.
inline constexpr int kDueSoonDays = 30;

enum class DueState {
  NoDate,  ///< the file names no day of a month
  Fine,
  DueSoon,
  PastDue
};

/// How the due date of a data file stands to the existing day `today`. On the due date itself an
/// instrument is not past due. A day after the end of its month counts as the last of it.
[[nodiscard]] DueState DueStateOf(const CalFileInfo& row, const FileDate& today);

/// "past due", "due within 30 days"; "" for a state that needs no attention.
[[nodiscard]] std::string_view DueWords(DueState state);

/// "5 MAR 2002"; "(none)" for a date of zeros, "(no such day)" for one that does not exist.
[[nodiscard]] std::string DateText(const FileDate& date);

/// What the lists show of a text: "(none)" where it is empty.
[[nodiscard]] std::string TextOrNone(std::string_view text);

/// The calibration number, both dates and the comment of a data file, a line each; the due date
/// with the words of its state. What is missing is "(none)"; a date that does not exist is marked
/// "(no such day)".
[[nodiscard]] std::string CalFileNotes(const CalFileInfo& row, DueState state);

}  // namespace tarvell

#endif
