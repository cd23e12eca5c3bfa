// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/dates/FileDate.h"

#include "core/dates/Calendar.h"
#include "core/numbers/Numbers.h"
#include "core/text/Text.h"

namespace tarvell {

FileDate FileDate::From(std::string_view text) {
  return {NumericInt16(FirstCharacters(text, 4)),
          NumericInt16(FirstCharacters(WithoutFirst(text, 4), 2)),
          NumericInt16(LastCharacters(text, 2))};
}

bool Exists(const FileDate& date) {
  return date.year > 0 && IsValidDate(date.year, date.month, date.day);
}

std::string IsoDate(const FileDate& date) {
  if (date == FileDate()) {
    return {};
  }
  const std::string year = "000" + std::to_string(date.year);
  return (date.year < 1000 ? year.substr(year.size() - 4) : std::to_string(date.year)) + "-" +
         AtLeastTwoDigits(date.month) + "-" + AtLeastTwoDigits(date.day);
}

}  // namespace tarvell
