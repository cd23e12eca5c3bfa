// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_DATES_CALENDAR_H
#define TARVELL_CORE_DATES_CALENDAR_H

#include <cstdint>

namespace tarvell {

/// Whether the date exists (Gregorian leap-year rule). The year itself is not checked.
[[nodiscard]] bool IsValidDate(std::int16_t year, std::int16_t month, std::int16_t day);

/// Days of a month, -1 when `month` is outside 1 to 12.
[[nodiscard]] std::int16_t DaysInMonth(std::int16_t year, std::int16_t month);

}  // namespace tarvell

#endif
