// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/GridClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelectionModel>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/caldata/EditedCell.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

/// The selected cells, row by row.
QModelIndexList SelectedCells(const CalGrid& grid) {
  QModelIndexList cells = grid.selectionModel()->selectedIndexes();
  std::sort(cells.begin(), cells.end());
  return cells;
}

PasteStart StartIn(const CalGrid& grid) {
  const QModelIndexList selected = SelectedCells(grid);
  const QModelIndex first =
      selected.contains(grid.currentIndex()) ? selected.first() : grid.currentIndex();
  return {{{static_cast<std::int16_t>(first.row() + 1)},
           static_cast<std::int16_t>(std::max(first.column(), 0))},
          static_cast<std::int16_t>(grid.Model().FirstEditableColumn())};
}

void Store(CalGrid& grid, const std::vector<PastedCell>& cells) {
  int lastColumn = 0;
  for (const PastedCell& cell : cells) {
    grid.Model().SetCellText(cell.cell.row.number, cell.cell.column, cell.text);
    lastColumn = std::max<int>(lastColumn, cell.cell.column);
  }
  const Cell first = cells.front().cell;
  grid.SetCurrentCell(first.row.number, first.column);
  grid.selectionModel()->select(
      QItemSelection(grid.currentIndex(),
                     grid.Model().index(cells.back().cell.row.number - 1, lastColumn)),
      QItemSelectionModel::ClearAndSelect);
}

}  // namespace

void CopySelectedCells(const CalGrid& grid) {
  QString text;
  int row = -1;
  for (const QModelIndex& cell : SelectedCells(grid)) {
    if (row >= 0) {
      text += cell.row() == row ? '\t' : '\n';
    }
    row = cell.row();
    text += cell.data().toString();
  }
  if (row >= 0) {
    QGuiApplication::clipboard()->setText(text);
  }
}

std::vector<PastedCell> PasteIntoCells(CalGrid& grid, const CellRules& rules) {
  std::vector<PastedCell> cells;
  std::size_t line = 0;
  const auto unitOf = [&](Cell cell) {
    std::string unit;
    static_cast<void>(
        rules.textToEdit(cell.column, cell.row.number, grid.Data().TextOf(cell), unit));
    return ChosenUnit(rules.UnitsOf(cell.column), unit);
  };
  const PasteRules pasting = {
      .affixes = [&](Cell cell) { return rules.affixes(cell, unitOf(cell)); },
      .store =
          [&](Cell cell, const std::string& number) {
            return rules.textToStore(cell.column, cell.row.number, number, unitOf(cell));
          }};
  Guarded(
      grid.window(),
      [&] {
        const std::string text = FromQt(QGuiApplication::clipboard()->text());
        cells = PastedCells(grid.Data(), StartIn(grid), text, pasting, line);
        Store(grid, cells);
      },
      [&](const Error& error) {
        const std::string where = line == 0 ? "" : "Line " + std::to_string(line) + ": ";
        ShowError(grid.window(), Error(error.Kind(),
                                       "Nothing was pasted, and the table is as it "
                                       "was.\n\n" +
                                           where + error.Text()));
      });
  return cells;
}

}  // namespace tarvell
