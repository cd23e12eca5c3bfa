// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_DATES_FILEDATE_H
#define TARVELL_CORE_DATES_FILEDATE_H

#include <cstdint>
#include <string_view>

namespace tarvell {

/// A date as data files write it, YYYYMMDD, taken apart by position: year from the first four
/// characters, month from the fifth and sixth, day from the last two. Texts of another length
/// give defined but wrong values. Throws a Type error for a number outside 16 bits.
struct FileDate {
  std::int16_t year = 0;
  std::int16_t month = 0;
  std::int16_t day = 0;

  [[nodiscard]] static FileDate From(std::string_view text);
};

}  // namespace tarvell

#endif
