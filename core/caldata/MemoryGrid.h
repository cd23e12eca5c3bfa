// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_MEMORYGRID_H
#define TARVELL_CORE_CALDATA_MEMORYGRID_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/caldata/CalDataGrid.h"

namespace tarvell {

/// The grid itself, without a window. Besides what the calibration data objects use, it inserts
/// and removes rows for the editors.
class MemoryGrid final : public CalDataGrid {
 public:
  explicit MemoryGrid(std::int16_t columns = 2);

  void SetCellText(std::int16_t row, std::int16_t column, std::string_view text) override;
  [[nodiscard]] std::string CellText(std::int16_t row, std::int16_t column) const override;
  [[nodiscard]] std::int16_t RowCount() const override;
  void SetRowCount(std::int16_t count) override;
  void AddRow(std::string_view text) override;
  [[nodiscard]] std::int16_t ColumnCount() const override;
  void SetColumnCount(std::int16_t count) override;
  [[nodiscard]] float Width() const override { return width_; }
  void SetColumnWidth(std::int16_t column, std::int32_t width) override;

  /// Leaves an empty caption row of `columns` columns, whose widths are not set.
  void Clear(std::int16_t columns);
  /// Puts a row of these cells before the row `position`, or after the last one.
  void InsertRow(GridRow position, std::span<const std::string> cells);
  /// Removes a data row.
  void RemoveRow(GridRow row);

  /// The cells by row, the caption row included. The rows that are set must have one cell for each
  /// column.
  [[nodiscard]] const std::vector<std::vector<std::string>>& Rows() const { return rows_; }
  void SetRows(std::vector<std::vector<std::string>> rows) { rows_ = std::move(rows); }

  void SetWidth(float width) { width_ = width; }
  /// Width of a column; 0 until one is set.
  [[nodiscard]] std::int32_t ColumnWidth(std::int16_t column) const;

 private:
  [[nodiscard]] std::size_t RowIndex(std::int16_t row) const;
  [[nodiscard]] std::size_t ColumnIndex(std::int16_t column) const;
  [[nodiscard]] std::vector<std::string> CellsOf(std::string_view text) const;

  std::vector<std::vector<std::string>> rows_;
  std::vector<std::int32_t> columnWidths_;
  float width_ = 0;
};

}  // namespace tarvell

#endif
