// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/GridModel.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

#include "screens/widgets/QtText.h"

namespace tarvell {

Cell GridModel::CellAt(const QModelIndex& index) {
  return {{static_cast<std::int16_t>(index.row() + 1)}, static_cast<std::int16_t>(index.column())};
}

QModelIndex GridModel::IndexAt(Cell cell) const {
  return index(cell.row.number - 1, cell.column);
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : grid_.RowCount() - 1;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : grid_.ColumnCount();
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  const auto note = [&] { return NoteAt(CellAt(index)); };
  switch (role) {
    case Qt::DisplayRole:
      return ToQt(grid_.TextOf(CellAt(index)));
    case Qt::TextAlignmentRole:
      return (Qt::AlignRight | Qt::AlignVCenter).toInt();
    case Qt::BackgroundRole:
      return IsEditable(index.column())
                 ? QVariant()
                 : QVariant(QGuiApplication::palette().brush(QPalette::AlternateBase));
    case Qt::DecorationRole:
      return note().isEmpty()
                 ? QVariant()
                 : QVariant(QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning));
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return note();
    default:
      return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal ||
      (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) {
    return {};
  }
  const QString caption = ToQt(grid_.TextOf({kCaptionRow, static_cast<std::int16_t>(section)}));
  // A screen reader would say nothing.
  return role == Qt::AccessibleTextRole && caption.isEmpty() ? tr("column not used") : caption;
}

bool GridModel::IsEditable(int column) const {
  return column >= firstEditableColumn_ &&
         !grid_.TextOf({kCaptionRow, static_cast<std::int16_t>(column)}).empty();
}

int GridModel::LastEditableColumn() const {
  int column = columnCount() - 1;
  while (column >= 0 && !IsEditable(column)) {
    --column;
  }
  return column;
}

void GridModel::SetNote(Cell cell, const QString& note) {
  if (note.isEmpty()) {
    notes_.erase(cell);
  } else {
    notes_[cell] = note;
  }
  emit dataChanged(IndexAt(cell), IndexAt(cell));
}

void GridModel::SetNotes(CellNotes notes) {
  notes_ = std::move(notes);
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

QString GridModel::NoteAt(Cell cell) const {
  const auto found = notes_.find(cell);
  return found == notes_.end() ? QString() : found->second;
}

void GridModel::MoveNotes(GridRow first, int rows) {
  CellNotes moved;
  for (auto& [cell, note] : notes_) {
    const bool moves = cell.row >= first;
    const GridRow row = cell.row + (moves ? rows : 0);
    if (!moves || row >= first) {
      moved[{row, cell.column}] = std::move(note);
    }
  }
  notes_ = std::move(moved);
}

void GridModel::Fill(const std::function<void(MemoryGrid& grid)>& fill) {
  beginResetModel();
  notes_.clear();
  fill(grid_);
  endResetModel();
}

void GridModel::SetCellText(Cell cell, std::string_view text) {
  grid_.SetCellText(cell.row.number, cell.column, text);
  emit dataChanged(IndexAt(cell), IndexAt(cell));
}

void GridModel::InsertRow(GridRow position, std::span<const std::string> cells) {
  beginInsertRows({}, position.number - 1, position.number - 1);
  grid_.InsertRow(position, cells);
  MoveNotes(position, 1);
  endInsertRows();
}

void GridModel::RemoveRow(GridRow row) {
  beginRemoveRows({}, row.number - 1, row.number - 1);
  grid_.RemoveRow(row);
  MoveNotes(row, -1);
  endRemoveRows();
}

}  // namespace tarvell
