// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CELLRULES_H
#define TARVELL_SCREENS_CALDATA_CELLRULES_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/caldata/EditedCell.h"
#include "core/caldata/PastedTable.h"

namespace tarvell {

/// How an editor edits the cells of the table that it shows.
struct CellRules {
  /// The text to edit of a cell that holds `text`, and the unit that `text` names.
  std::function<EditedCell(Cell cell, const std::string& text)> toEdit;
  /// The text that a cell holds after `text` was typed into it, in this unit.
  std::function<std::string(Cell cell, const std::string& text, const std::string& unit)> toStore;
  /// What a cell has around its number, in this unit; nothing where it takes no number.
  std::function<std::optional<CellAffixes>(Cell cell, const std::string& unit)> affixes;
  /// The units to choose from in a column, none where there is no choice. May be missing.
  std::function<std::vector<std::string>(std::int16_t column)> units = nullptr;
  /// The columns of a table of points, whose whole rows can be pasted. Missing for other tables.
  std::function<PointColumns()> points = nullptr;

  [[nodiscard]] std::vector<std::string> UnitsOf(std::int16_t column) const {
    return units ? units(column) : std::vector<std::string>();
  }
};

}  // namespace tarvell

#endif
