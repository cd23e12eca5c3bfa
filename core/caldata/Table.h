// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_TABLE_H
#define TARVELL_CORE_CALDATA_TABLE_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/caldata/CalDataGrid.h"
#include "core/caldata/Cell.h"
#include "core/caldata/TableRows.h"
#include "core/files/FileText.h"

namespace tarvell {

/// Throws an Index error for a place after the last row of a table.
void CheckTableIndex(TableIndex index);

/// The cells of one table of a data file. Its rows end before the first one whose first cell is
/// empty.
template <std::size_t Columns>
class Table {
 public:
  using Row = std::array<std::string, Columns>;

  /// A row, even one after the end. Throws as CheckTableIndex does.
  [[nodiscard]] Row& At(TableIndex index) {
    CheckTableIndex(index);
    return rows_.at(index.value);
  }
  [[nodiscard]] const Row& At(TableIndex index) const {
    CheckTableIndex(index);
    return rows_.at(index.value);
  }

  /// The rows from `first` on, up to the first one whose first cell is empty.
  [[nodiscard]] std::span<const Row> Rows(TableIndex first = {}) const {
    const auto begin = rows_.begin() + first.value;
    return {begin, std::find_if(begin, rows_.end(), [](const Row& row) { return row[0].empty(); })};
  }

  /// Copies the first `columns` columns of a grid's data rows to the same places. Throws as At does
  /// for the first row that the table has no place for.
  void TakeGrid(const CalDataGrid& grid, std::int16_t columns) {
    for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
      Row& cells = At(IndexOf(row));
      for (std::int16_t column = 0; column < columns; ++column) {
        cells.at(static_cast<std::size_t>(column)) = grid.TextOf({row, column});
      }
    }
  }

  /// Empties the first `columns` columns of every row.
  void Clear(std::size_t columns = Columns) {
    for (Row& row : rows_) {
      std::fill_n(row.begin(), columns, "");
    }
  }

 private:
  std::array<Row, kTableRows> rows_;
};

/// Appends a data line. Throws a Character error when a cell holds a comma, as one from a quoted
/// line may: the text after it would be lost, or taken for a line of its own.
void WriteDataLine(FileText& text, std::string_view line);

/// Appends the line that `lineOf` gives for each row of a table.
template <std::size_t Columns, typename LineOf>
void WriteRows(FileText& text, const Table<Columns>& table, const LineOf& lineOf) {
  for (const typename Table<Columns>::Row& row : table.Rows()) {
    WriteDataLine(text, lineOf(row));
  }
}

}  // namespace tarvell

#endif
