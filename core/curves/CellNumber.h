// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_CELLNUMBER_H
#define TARVELL_CORE_CURVES_CELLNUMBER_H

#include <optional>
#include <string>
#include <string_view>

namespace tarvell {

/// Up to here, what is calculated with a few numbers stays finite.
inline constexpr double kLargestNumber = 1E300;

/// The number of a cell and its unit: "Ls/5.21 nH" has "5.21" and "nH".
struct CellNumber {
  double value = 0;
  std::string_view text;
  std::string_view unit;
};

/// Nothing for a cell without a number, or with one beyond kLargestNumber. The
/// texts are parts of `cell`.
[[nodiscard]] std::optional<CellNumber> NumberOfCell(std::string_view cell);

/// A caption's name, and the unit in brackets: "Capacitance[pF]" has "Capacitance" and "pF".
struct CaptionParts {
  std::string_view name;
  std::string_view unit;
};
[[nodiscard]] CaptionParts PartsOfCaption(std::string_view caption);

/// "12.4 GHz"; only the number where it has no unit.
[[nodiscard]] std::string WithUnit(const std::string& number, const std::string& unit);

/// How many Hz, or ohm, one of a unit is: 1E9 for "GHz", 1E3 for "kohm", 1 for any other.
[[nodiscard]] double FactorOfUnit(std::string_view unit);

}  // namespace tarvell

#endif
