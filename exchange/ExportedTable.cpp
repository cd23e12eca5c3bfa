// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/ExportedTable.h"

#include <algorithm>
#include <cstddef>

#include "core/caldata/CellNotices.h"
#include "core/text/Text.h"
#include "exchange/CaptionUnit.h"
#include "exchange/ModelColumns.h"
#include "exchange/Units.h"

namespace tarvell {

namespace {

std::string WithoutUnitIn(std::string_view caption) {
  return std::string(Trim(caption.substr(0, caption.find_first_of("[("))));
}

/// The number of a cell and its unit. A name, and a cell without a number, is all number.
struct Exported {
  std::string number;
  std::string unit;
};

Exported ExportedCell(const std::string& text, const ModelColumn& column) {
  const CellParts parts = PartsOfCell(text);
  if (column.role == ColumnRole::Member || parts.number.empty()) {
    return {std::string(Trim(text)), {}};
  }
  return {std::string(parts.number), std::string(Trim(parts.after))};
}

}  // namespace

ExportedTable ExportedPage(const Model& model, const cifCaldata& data, std::int16_t page,
                           const DraftPage& shown) {
  const std::vector<ModelColumn> columns = ModelColumns(model, data, page);
  ExportedTable table;
  table.rows.resize(shown.rows.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    std::vector<Exported> cells;
    for (const std::vector<std::string>& row : shown.rows) {
      cells.push_back(ExportedCell(i < row.size() ? row[i] : std::string(), columns[i]));
    }
    const bool isOneUnit = std::ranges::all_of(
        cells, [&](const Exported& cell) { return cell.unit == cells.front().unit; });
    ExportedColumn column = {WithoutUnitIn(columns[i].caption), {}};
    if (columns[i].IsUncertainty()) {
      column.caption += " of " + table.columns.back().caption;
    }
    if (isOneUnit && !cells.empty()) {
      column.unit = cells.front().unit;
    }
    if (isOneUnit && column.unit.empty() && !columns[i].IsUncertainty()) {
      column.unit = UnitOfCaption(columns[i].caption);
    }
    table.columns.push_back(std::move(column));
    for (std::size_t row = 0; row < cells.size(); ++row) {
      const bool hasOwn = !isOneUnit && !cells[row].unit.empty();
      table.rows[row].push_back(cells[row].number + (hasOwn ? " " + cells[row].unit : ""));
    }
  }
  return table;
}

}  // namespace tarvell
