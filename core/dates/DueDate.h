// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_DATES_DUEDATE_H
#define TARVELL_CORE_DATES_DUEDATE_H

#include <optional>
#include <string>
#include <string_view>

#include "core/dates/FileDate.h"

/// When the calibration of an instrument is due again.
namespace tarvell {

/// How many days before its due date an instrument begins to be due soon.
inline constexpr int kDueSoonDays = 30;

enum class DueState {
  NoDate,  ///< the date has no month, or no day in it
  Fine,
  DueSoon,
  PastDue
};

/// The state of the due date `due` on the existing day `today`. On the due date itself an
/// instrument is not past due. A day after the end of its month counts as the last day of it.
[[nodiscard]] DueState DueStateOf(const FileDate& due, const FileDate& today);

/// The days from the existing day `today` until the due date `due`, negative after it; nothing for
/// a date that has the state NoDate. A day after the end of its month counts as the last day of it.
[[nodiscard]] std::optional<int> DaysLeft(const FileDate& due, const FileDate& today);

/// "past due", "due within 30 days", "" for the other states.
[[nodiscard]] std::string_view DueWords(DueState state);

/// The due date of a calibration on the existing day `today`, which is as much later as `due` was
/// after `calibrated`. Where that was a number of months, or a day less, it is again, and a day
/// that a month lacks is its last day; from the last day of one month to the last of another, it is
/// the last day of a month again where `today` is one. Any other interval is a number of days.
/// Nothing when the earlier dates give no interval, or the due date would be after the year 9999.
[[nodiscard]] std::optional<FileDate> DueAgain(const FileDate& calibrated, const FileDate& due,
                                               const FileDate& today);

/// "5 MAR 2002"; "(none)" for a date of zeros, "(no such day)" for one that does not exist.
[[nodiscard]] std::string DateText(const FileDate& date);

}  // namespace tarvell

#endif
