// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/GridModel.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

#include "screens/widgets/QtText.h"

namespace tarvell {

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : grid_.RowCount() - 1;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : grid_.ColumnCount();
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  const auto note = [&] {
    return NoteAt(static_cast<std::int16_t>(index.row() + 1),
                  static_cast<std::int16_t>(index.column()));
  };
  switch (role) {
    case Qt::DisplayRole:
      return ToQt(grid_.CellText(static_cast<std::int16_t>(index.row() + 1),
                                 static_cast<std::int16_t>(index.column())));
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
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
    return {};
  }
  return ToQt(grid_.CellText(0, static_cast<std::int16_t>(section)));
}

bool GridModel::IsEditable(int column) const {
  return column >= firstEditableColumn_ &&
         !grid_.CellText(0, static_cast<std::int16_t>(column)).empty();
}

int GridModel::LastEditableColumn() const {
  int column = columnCount() - 1;
  while (column >= 0 && !IsEditable(column)) {
    --column;
  }
  return column;
}

void GridModel::SetNote(std::int16_t row, std::int16_t column, const QString& note) {
  if (note.isEmpty()) {
    notes_.erase({row, column});
  } else {
    notes_[{row, column}] = note;
  }
  const QModelIndex cell = index(row - 1, column);
  emit dataChanged(cell, cell);
}

void GridModel::SetNotes(CellNotes notes) {
  notes_ = std::move(notes);
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

QString GridModel::NoteAt(std::int16_t row, std::int16_t column) const {
  const auto found = notes_.find({row, column});
  return found == notes_.end() ? QString() : found->second;
}

void GridModel::MoveNotes(std::int16_t first, std::int16_t rows) {
  CellNotes moved;
  for (auto& [cell, note] : notes_) {
    const bool moves = cell.first >= first;
    const auto row = static_cast<std::int16_t>(cell.first + (moves ? rows : 0));
    if (!moves || row >= first) {
      moved[{row, cell.second}] = std::move(note);
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

void GridModel::SetCellText(std::int16_t row, std::int16_t column, std::string_view text) {
  grid_.SetCellText(row, column, text);
  const QModelIndex cell = index(row - 1, column);
  emit dataChanged(cell, cell);
}

void GridModel::InsertRow(GridRow position, std::span<const std::string> cells) {
  beginInsertRows({}, position.number - 1, position.number - 1);
  grid_.InsertRow(position, cells);
  MoveNotes(position.number, 1);
  endInsertRows();
}

void GridModel::RemoveRow(GridRow row) {
  beginRemoveRows({}, row.number - 1, row.number - 1);
  grid_.RemoveRow(row);
  MoveNotes(row.number, -1);
  endRemoveRows();
}

}  // namespace tarvell
