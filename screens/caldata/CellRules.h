// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CELLRULES_H
#define TARVELL_SCREENS_CALDATA_CELLRULES_H

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarvell {

/// How a cell's text becomes the text to edit, and what was typed becomes a cell's text. Rows and
/// columns are the grid's.
struct CellRules {
  std::function<std::string(std::int16_t column, std::int16_t row, const std::string& text,
                            std::string& unit)>
      textToEdit;
  std::function<std::string(std::int16_t column, std::int16_t row, const std::string& text,
                            const std::string& unit)>
      textToStore;
  /// The units to choose from in a column, none where there is no choice; may be missing.
  std::function<std::vector<std::string>(std::int16_t column)> units = nullptr;

  [[nodiscard]] std::vector<std::string> UnitsOf(std::int16_t column) const {
    return units ? units(column) : std::vector<std::string>();
  }
};

/// The one of `units` that a cell has whose text names `unit`; "" where there is no choice.
[[nodiscard]] inline std::string OwnUnit(const std::vector<std::string>& units,
                                         const std::string& unit) {
  if (units.empty()) {
    return {};
  }
  // A cell without a unit is taken as the first one, ppm, when it is saved.
  return std::find(units.begin(), units.end(), unit) != units.end() ? unit : units.front();
}

}  // namespace tarvell

#endif
