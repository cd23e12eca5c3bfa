// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CSVLINES_H
#define TARVELL_EXCHANGE_CSVLINES_H

#include <optional>
#include <string_view>

#include "exchange/DelimitedText.h"

/// What a line of a CSV file is: captions, a row of a table, or a key and its value.
namespace tarvell {

/// The number and the unit of a cell.
struct NumberCell {
  std::string_view number;
  std::string_view unit;
};

/// Nothing for a cell that is not a number, with either decimal sign.
[[nodiscard]] std::optional<NumberCell> NumberIn(std::string_view cell);

[[nodiscard]] bool IsBlank(const DelimitedLine& line);

/// Whether the line begins with a number, or with a name and then has nothing but numbers.
[[nodiscard]] bool IsDataLine(const DelimitedLine& line);

[[nodiscard]] bool IsCaptionLine(const DelimitedLine& line);

/// The unit that is all of a cell, which may be in brackets, or may be followed by a coverage
/// factor in brackets; "" for any other text.
[[nodiscard]] std::string_view UnitOnly(std::string_view cell);

/// Whether the line has nothing but units.
[[nodiscard]] bool HasOnlyUnits(const DelimitedLine& line);

}  // namespace tarvell

#endif
