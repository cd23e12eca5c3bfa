// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/GridClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QStringList>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/EditedCell.h"
#include "screens/caldata/PastePreview.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"

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
  const bool isSelected = selected.contains(grid.currentIndex());
  return {isSelected ? GridModel::CellAt(selected.first()) : grid.CurrentCell(),
          static_cast<std::int16_t>(grid.Model().FirstEditableColumn())};
}

void Store(CalGrid& grid, const std::vector<PastedCell>& cells) {
  Cell last = cells.back().cell;
  for (const PastedCell& pasted : cells) {
    grid.Model().SetCellText(pasted.cell, pasted.text);
    last.column = std::max(last.column, pasted.cell.column);
  }
  grid.SetCurrentCell(cells.front().cell);
  grid.selectionModel()->select(QItemSelection(grid.currentIndex(), grid.Model().IndexAt(last)),
                                QItemSelectionModel::ClearAndSelect);
}

/// The texts to copy, row by row.
std::vector<QStringList> SelectedRows(const CalGrid& grid) {
  std::vector<QStringList> rows;
  int row = -1;
  for (const QModelIndex& cell : SelectedCells(grid)) {
    if (cell.row() != row) {
      rows.emplace_back();
    }
    row = cell.row();
    rows.back() << cell.data().toString();
  }
  return rows;
}

QStringList CaptionsOf(const CalGrid& grid) {
  QStringList captions;
  for (int column = 0; column < grid.model()->columnCount(); ++column) {
    captions << grid.model()->headerData(column, Qt::Horizontal).toString();
  }
  return captions;
}

QString HtmlRow(const QStringList& cells, const QString& tag) {
  QString row = "<tr>";
  for (const QString& cell : cells) {
    row += "<" + tag + ">" + cell.toHtmlEscaped() + "</" + tag + ">";
  }
  return row + "</tr>";
}

/// Asks which of the two readings is meant; nothing when the user cancels.
std::optional<DecimalSign> AskSign(QWidget* owner, const TwoReadings& readings) {
  const bool isPoint = readings.sign == DecimalSign::Point;
  const QString sign = isPoint ? "point" : "comma";
  const auto answer = CurrentQuestions().Ask(
      owner, {.text = QString("\"%1\" can be read as %2 or as %3.\n\nIs the %4 in it a decimal %4?")
                          .arg(ToQt(readings.written), ToQt(readings.ifDecimals),
                               ToQt(readings.ifThousands), sign),
              .icon = QMessageBox::Question,
              .buttons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
              .defaultButton = QMessageBox::Cancel,
              .detail = QString("Yes: it is %1. No: it is %2. Nothing else that is to be pasted "
                                "shows which one is meant.")
                            .arg(ToQt(readings.ifDecimals), ToQt(readings.ifThousands))});
  if (answer != QMessageBox::Yes && answer != QMessageBox::No) {
    return std::nullopt;
  }
  return isPoint == (answer == QMessageBox::Yes) ? DecimalSign::Point : DecimalSign::Comma;
}

/// Notes which rows hold values that nobody has entered.
void NoteValuesToEnter(const CalGrid& grid, std::int16_t valueColumn, PastedTable& table) {
  GridRow row = kFirstDataRow;
  for (PastedRow& pasted : table.rows) {
    if (pasted.change != PastedRow::Change::Added) {
      pasted.isToEnter = IsToEnter(grid.Model().OriginAt({row, valueColumn}));
      row = row + 1;
    }
  }
}

/// Makes the table what the preview showed. Returns the cells of the pasted values.
std::vector<PastedCell> Store(CalGrid& grid, const PastedTable& table, bool removesMissing) {
  std::vector<PastedCell> cells;
  GridRow row = kFirstDataRow;
  for (const PastedRow& pasted : table.rows) {
    const bool isMissing = pasted.change == PastedRow::Change::Missing;
    if (isMissing && removesMissing) {
      grid.Model().RemoveRow(row);
      continue;
    }
    if (pasted.change == PastedRow::Change::Added) {
      grid.Model().InsertRow(row, pasted.after);
    }
    if (!isMissing) {
      cells.push_back(
          {{row, static_cast<std::int16_t>(pasted.after.size() - 1)}, pasted.after.back()});
      grid.Model().SetCellText(cells.back().cell, cells.back().text);
    }
    ++row;
  }
  grid.SetCurrentCell(cells.front().cell);
  grid.scrollTo(grid.currentIndex());
  return cells;
}

std::vector<PastedCell> PasteTable(CalGrid& grid, std::string_view text, const CellRules& rules) {
  const PointColumns columns = rules.points();
  std::optional<DecimalSign> sign;
  if (const std::optional<TwoReadings> readings = ReadTwoWays(text, columns)) {
    sign = AskSign(grid.window(), *readings);
    if (!sign) {
      return {};
    }
  }
  const Cell value = {kFirstDataRow, static_cast<std::int16_t>(columns.Count() - 1)};
  PastedTable table = PastedTableFrom(
      grid.Data(), text, columns,
      [&](const std::string& number) { return rules.toStore(value, number, {}); }, sign);
  NoteValuesToEnter(grid, value.column, table);
  PastePreview preview(table, CaptionsOf(grid), grid.window());
  if (preview.exec() != QDialog::Accepted) {
    return {};
  }
  return Store(grid, table, preview.RemovesMissing());
}

}  // namespace

void CopySelectedCells(const CalGrid& grid) {
  const std::vector<QStringList> rows = SelectedRows(grid);
  if (rows.empty()) {
    return;
  }
  const QStringList captions = CaptionsOf(grid);
  QStringList lines;
  QString html = "<html><head><meta charset=\"utf-8\"></head><body><table>";
  if (rows.front().size() == captions.size()) {
    lines << captions.join('\t');
    html += HtmlRow(captions, "th");
  }
  for (const QStringList& row : rows) {
    lines << row.join('\t');
    html += HtmlRow(row, "td");
  }
  auto* data = new QMimeData;  // the clipboard owns it
  data->setText(lines.join('\n'));
  data->setHtml(html + "</table></body></html>");
  QGuiApplication::clipboard()->setMimeData(data);
}

bool ClipboardHasTable() {
  const QString text = QGuiApplication::clipboard()->text();
  return text.contains('\t') || text.trimmed().contains('\n');
}

std::vector<PastedCell> PasteIntoCells(CalGrid& grid, const CellRules& rules) {
  std::vector<PastedCell> cells;
  std::size_t line = 0;
  const auto unitOf = [&](Cell cell) {
    return ChosenUnit(rules.UnitsOf(cell.column),
                      rules.toEdit(cell, grid.Data().TextOf(cell)).unit);
  };
  const PasteRules pasting = {
      .affixes = [&](Cell cell) { return rules.affixes(cell, unitOf(cell)); },
      .store =
          [&](Cell cell, const std::string& number) {
            return rules.toStore(cell, number, unitOf(cell));
          }};
  Guarded(
      grid.window(),
      [&] {
        const std::string text = FromQt(QGuiApplication::clipboard()->text());
        if (rules.points && IsPointTable(text)) {
          cells = PasteTable(grid, text, rules);
        } else {
          cells = PastedCells(grid.Data(), StartIn(grid), text, pasting, line);
          Store(grid, cells);
        }
      },
      [&](const Error& error) {
        const std::string where = line == 0 ? "" : "Line " + std::to_string(line) + ": ";
        ShowError(grid.window(),
                  Error(error.Kind(), "Nothing was pasted, and the table is as it was.\n\n" +
                                          where + error.Text()));
      });
  return cells;
}

}  // namespace tarvell
