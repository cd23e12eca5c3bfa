// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_PASTEDCELLS_H
#define TARVELL_CORE_CALDATA_PASTEDCELLS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/CalDataGrid.h"
#include "core/caldata/cifCaldata.h"

namespace tarvell {

/// The rules of the cells of a table, each for the unit that a cell has.
struct PasteRules {
  /// What a cell has around its number; nothing where it takes no number.
  std::function<std::optional<CellAffixes>(Cell cell)> affixes;
  /// What a cell stores when `number` is typed into it.
  std::function<std::string(Cell cell, const std::string& number)> store;
};

struct PastedCell {
  Cell cell;
  std::string text;

  bool operator==(const PastedCell&) const = default;
};

/// Where a paste begins, and the first column of the table that can be edited.
struct PasteStart {
  Cell cell;
  std::int16_t firstEditableColumn = 0;
};

/// The cells that pasting `text` changes, row by row. Each line of it is a row, from the row of the
/// start downwards, and holds the numbers of one column or of several, separated by TAB. Lines end
/// with LF or CR LF; a line end at the end of the text does not add an empty line. A number may
/// have the unit of its cell with it.
///
/// Throws when not every value can be stored. `line` is then the line with the error, counted from
/// 1, or 0 if the error is not about one line.
[[nodiscard]] std::vector<PastedCell> PastedCells(const CalDataGrid& grid, const PasteStart& start,
                                                  std::string_view text, const PasteRules& rules,
                                                  std::size_t& line);

}  // namespace tarvell

#endif
