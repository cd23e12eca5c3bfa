// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/MemoryGrid.h"

#include <algorithm>
#include <utility>

#include "core/platform/Error.h"

namespace tarvell {

namespace {

[[noreturn]] void RefuseIndex(const char* what, std::int16_t index) {
  throw Error(ErrorKind::Index,
              "The table has no " + std::string(what) + " " + std::to_string(index) + ".");
}

}  // namespace

MemoryGrid::MemoryGrid(std::int16_t columns) {
  Clear(columns);
}

void MemoryGrid::Clear(std::int16_t columns) {
  rows_.clear();
  columnWidths_.clear();
  SetColumnCount(columns);
  SetRowCount(1);
}

void MemoryGrid::SetCellText(std::int16_t row, std::int16_t column, std::string_view text) {
  rows_[RowIndex(row)][ColumnIndex(column)] = text;
}

std::string MemoryGrid::CellText(std::int16_t row, std::int16_t column) const {
  return rows_[RowIndex(row)][ColumnIndex(column)];
}

std::int16_t MemoryGrid::RowCount() const {
  return static_cast<std::int16_t>(rows_.size());
}

void MemoryGrid::SetRowCount(std::int16_t count) {
  if (count < 1) {
    RefuseIndex("row", count);
  }
  rows_.resize(static_cast<std::size_t>(count), std::vector<std::string>(columnWidths_.size()));
}

void MemoryGrid::AddRow(std::string_view text) {
  rows_.push_back(CellsOf(text));
}

std::int16_t MemoryGrid::ColumnCount() const {
  return static_cast<std::int16_t>(columnWidths_.size());
}

void MemoryGrid::SetColumnCount(std::int16_t count) {
  if (count < 0) {
    RefuseIndex("column", count);
  }
  columnWidths_.resize(static_cast<std::size_t>(count));
  for (std::vector<std::string>& row : rows_) {
    row.resize(columnWidths_.size());
  }
}

void MemoryGrid::SetColumnWidth(std::int16_t column, std::int32_t width) {
  columnWidths_[ColumnIndex(column)] = width;
}

void MemoryGrid::InsertRow(GridRow position, std::span<const std::string> cells) {
  if (position < kFirstDataRow || position > EndOf(*this)) {
    RefuseIndex("row", position.number);
  }
  std::vector<std::string> row(cells.begin(), cells.end());
  row.resize(columnWidths_.size());
  rows_.insert(rows_.begin() + position.number, std::move(row));
}

void MemoryGrid::RemoveRow(GridRow row) {
  if (row < kFirstDataRow) {
    RefuseIndex("data row", row.number);
  }
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(RowIndex(row.number)));
}

std::int32_t MemoryGrid::ColumnWidth(std::int16_t column) const {
  return columnWidths_[ColumnIndex(column)];
}

std::size_t MemoryGrid::RowIndex(std::int16_t row) const {
  if (row < 0 || row >= RowCount()) {
    RefuseIndex("row", row);
  }
  return static_cast<std::size_t>(row);
}

std::size_t MemoryGrid::ColumnIndex(std::int16_t column) const {
  if (column < 0 || column >= ColumnCount()) {
    RefuseIndex("column", column);
  }
  return static_cast<std::size_t>(column);
}

std::vector<std::string> MemoryGrid::CellsOf(std::string_view text) const {
  std::vector<std::string> cells(columnWidths_.size());
  for (std::string& cell : cells) {
    const std::size_t tab = std::min(text.find('\t'), text.size());
    cell = text.substr(0, tab);
    text.remove_prefix(std::min(tab + 1, text.size()));
  }
  return cells;
}

}  // namespace tarvell
