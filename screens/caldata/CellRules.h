// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CELLRULES_H
#define TARVELL_SCREENS_CALDATA_CELLRULES_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/caldata/cifCaldata.h"

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
  /// What a cell has around its number, in this unit; nothing where it takes no number.
  std::function<std::optional<CellAffixes>(Cell cell, const std::string& unit)> affixes;
  /// The units to choose from in a column, none where there is no choice; may be missing.
  std::function<std::vector<std::string>(std::int16_t column)> units = nullptr;

  [[nodiscard]] std::vector<std::string> UnitsOf(std::int16_t column) const {
    return units ? units(column) : std::vector<std::string>();
  }
};

}  // namespace tarvell

#endif
