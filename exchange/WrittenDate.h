// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_WRITTENDATE_H
#define TARVELL_EXCHANGE_WRITTENDATE_H

#include <optional>
#include <string>
#include <string_view>

#include "core/dates/FileDate.h"

/// Dates as people and spreadsheets write them.
namespace tarvell {

/// Which comes first in "03/05/2026" and "03-05-2026".
enum class DateOrder { DayFirst, MonthFirst };

/// The existing day that `text` is: "2026-03-05", "20260305", "5.3.2026",
/// "5 MAR 2026", "Thursday, March 5th, 2026", or with slashes or hyphens in the given order. A time
/// of day may follow the ISO form. Nothing for any other text, such as a year of two digits.
[[nodiscard]] std::optional<FileDate> DateFrom(std::string_view text, DateOrder slashOrder);

/// Whether `text` would be a date if its year had four digits: "05-Mar-26".
[[nodiscard]] bool HasShortYear(std::string_view text);

/// The date of a text such as "2026-02-31", even if no such day exists, and zeros for ""; nothing
/// for any other text.
[[nodiscard]] std::optional<FileDate> ExportedDate(std::string_view text);

}  // namespace tarvell

#endif
