// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_DATES_MONTHS_H
#define TARVELL_CORE_DATES_MONTHS_H

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvell {

/// "JAN" to "DEC" give 1 to 12, any other text (lower case included) 0.
[[nodiscard]] std::int16_t MonthToNumber(std::string_view name);

/// 1 to 12 give "JAN" to "DEC", any other number "".
[[nodiscard]] std::string NumberToMonth(std::int16_t n);

}  // namespace tarvell

#endif
