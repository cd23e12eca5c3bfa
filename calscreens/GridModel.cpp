// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "calscreens/GridModel.h"

#include <QGuiApplication>
#include <QPalette>

#include "common/QtText.h"

namespace tarvell {

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : grid_.RowCount() - 1;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : grid_.ColumnCount();
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
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

void GridModel::Fill(const std::function<void(MemoryGrid& grid)>& fill) {
  beginResetModel();
  fill(grid_);
  endResetModel();
}

void GridModel::SetCellText(std::int16_t row, std::int16_t column, std::string_view text) {
  grid_.SetCellText(row, column, text);
  const QModelIndex cell = index(row - 1, column);
  emit dataChanged(cell, cell);
}

void GridModel::InsertRow(std::int16_t position, std::string_view text) {
  beginInsertRows({}, position - 1, position - 1);
  grid_.InsertRow(position, text);
  endInsertRows();
}

void GridModel::RemoveRow(std::int16_t row) {
  beginRemoveRows({}, row - 1, row - 1);
  grid_.RemoveRow(row);
  endRemoveRows();
}

}  // namespace tarvell
