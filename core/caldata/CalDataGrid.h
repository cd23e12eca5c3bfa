// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CALDATAGRID_H
#define TARVELL_CORE_CALDATA_CALDATAGRID_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/caldata/Cell.h"

namespace tarvell {

/// The table of text cells through which calibration data objects and editors exchange data. Rows
/// and columns count from 0; row 0 holds the captions. Widths are twips (1440 to the inch).
/// A row or column that does not exist is an Index error.
class CalDataGrid {
 public:
  CalDataGrid() = default;
  CalDataGrid(const CalDataGrid&) = delete;
  CalDataGrid& operator=(const CalDataGrid&) = delete;
  virtual ~CalDataGrid() = default;

  virtual void SetCellText(std::int16_t row, std::int16_t column, std::string_view text) = 0;
  [[nodiscard]] virtual std::string CellText(std::int16_t row, std::int16_t column) const = 0;

  /// Number of rows, the caption row included.
  [[nodiscard]] virtual std::int16_t RowCount() const = 0;
  /// New rows are empty; 1 leaves only the caption row.
  virtual void SetRowCount(std::int16_t count) = 0;
  /// Appends a row below the last: its cells from column 0 on, separated by one TAB each.
  virtual void AddRow(std::string_view text) = 0;

  [[nodiscard]] virtual std::int16_t ColumnCount() const = 0;
  virtual void SetColumnCount(std::int16_t count) = 0;

  /// Width of the whole grid.
  [[nodiscard]] virtual float Width() const = 0;
  virtual void SetColumnWidth(std::int16_t column, std::int32_t width) = 0;

  [[nodiscard]] std::string TextOf(Cell cell) const {
    return CellText(cell.row.number, cell.column);
  }
};

/// The rows of a grid end before this one.
[[nodiscard]] inline GridRow EndOf(const CalDataGrid& grid) {
  return {grid.RowCount()};
}

/// Appends a row of these cells, from column 0 on. A TAB in a cell, which would split the cell,
/// becomes a blank.
void AddCells(CalDataGrid& grid, std::span<const std::string> cells);

}  // namespace tarvell

#endif
