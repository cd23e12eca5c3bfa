// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_DATES_FILEDATE_H
#define TARVELL_CORE_DATES_FILEDATE_H

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvell {

/// A date in a data file, YYYYMMDD. The year is the first four characters, the month the fifth and
/// sixth, the day the last two, so that a text of another length gives a wrong date. Throws a Type
/// error for a number outside 16 bits.
struct FileDate {
  std::int16_t year = 0;
  std::int16_t month = 0;
  std::int16_t day = 0;

  [[nodiscard]] static FileDate From(std::string_view text);

  bool operator==(const FileDate&) const = default;
};

/// Whether there is such a day.
[[nodiscard]] bool Exists(const FileDate& date);

/// "2027-03-05"; "" for a date of zeros. The numbers of a date that does not exist stay.
[[nodiscard]] std::string IsoDate(const FileDate& date);

}  // namespace tarvell

#endif
