// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/GridModel.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QRegularExpression>
#include <QStyle>

#include <utility>

#include "screens/widgets/Colours.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

/// A font that differs from that of the table in its slant, its weight or its line, so that it can
/// be seen without colours.
QVariant FontOf(bool isToEnter, bool isSlip) {
  if (!isToEnter && !isSlip) {
    return {};
  }
  QFont font;
  if (isToEnter) {
    font.setItalic(true);
  }
  if (isSlip) {
    font.setBold(true);
    font.setUnderline(true);
  }
  return font;
}

QVariant MarkIcon(bool hasNote, bool isSlip) {
  if (!hasNote && !isSlip) {
    return {};
  }
  return hasNote ? QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning) : SlipIcon();
}

/// Paler than other text, and still easy to read on any background.
QBrush PaleText() {
  constexpr float kShare = 0.68F;  // of the text's own colour
  const QPalette palette = QGuiApplication::palette();
  return Mixed(palette.color(QPalette::Text), palette.color(QPalette::Base), kShare);
}

/// What a screen reader says after a value of this origin.
QString SpokenOrigin(Origin origin) {
  switch (origin) {
    case Origin::Template:
      return GridModel::tr(" (default value, not entered)");
    case Origin::Earlier:
      return GridModel::tr(" (taken over, not entered)");
    default:
      return {};
  }
}

QString Explanation(Origin origin) {
  switch (origin) {
    case Origin::Template:
      return GridModel::tr("This is a default value, which nobody has entered.");
    case Origin::Earlier:
      return GridModel::tr("This value was taken over from earlier data. Nobody has entered it.");
    default:
      return {};
  }
}

/// Moves what is known of the rows from `first` on by `rows`, 1 or -1. With -1 what is known of
/// `first` itself is removed.
template <typename Value>
void MoveRows(std::map<Cell, Value>& values, GridRow first, int rows) {
  std::map<Cell, Value> moved;
  for (auto& [cell, value] : values) {
    const bool moves = cell.row >= first;
    const GridRow row = cell.row + (moves ? rows : 0);
    if (!moves || row >= first) {
      moved[{row, cell.column}] = std::move(value);
    }
  }
  values = std::move(moved);
}

}  // namespace

QIcon SlipIcon() {
  return QApplication::style()->standardIcon(QStyle::SP_MessageBoxQuestion);
}

GridModel::GridModel(QObject* parent) : QAbstractTableModel(parent) {
  connect(this, &QAbstractItemModel::rowsInserted, this, &GridModel::Changed);
  connect(this, &QAbstractItemModel::rowsRemoved, this, &GridModel::Changed);
  connect(this, &QAbstractItemModel::modelReset, this, &GridModel::Changed);
}

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
  const auto origin = [&] { return OriginAt(CellAt(index)); };
  const auto slip = [&] {
    const auto found = slips_.find(CellAt(index));
    return found == slips_.end() ? QString() : found->second;
  };
  switch (role) {
    case Qt::DisplayRole:
      return ToQt(grid_.TextOf(CellAt(index)));
    case Qt::AccessibleTextRole:
      return QString(ToQt(grid_.TextOf(CellAt(index))) +
                     (slip().isEmpty() ? QString() : tr(" (possible slip)")) +
                     SpokenOrigin(origin()));
    case Qt::FontRole:
      return FontOf(IsToEnter(origin()), !slip().isEmpty());
    case Qt::ForegroundRole:
      return IsToEnter(origin()) ? QVariant(PaleText()) : QVariant();
    case Qt::TextAlignmentRole:
      return (Qt::AlignRight | Qt::AlignVCenter).toInt();
    case Qt::BackgroundRole:
      return IsEditable(index.column())
                 ? QVariant()
                 : QVariant(QGuiApplication::palette().brush(QPalette::AlternateBase));
    case Qt::DecorationRole:
      return MarkIcon(!note().isEmpty(), !slip().isEmpty());
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return QStringList({note(), slip(), Explanation(origin())})
          .filter(QRegularExpression("."))
          .join(' ');
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
  CellChanged(cell);
}

void GridModel::SetNotes(CellNotes notes) {
  notes_ = std::move(notes);
  ShowMarksChanged();
  emit Changed();
}

void GridModel::SetSlips(CellNotes slips) {
  if (slips != slips_) {
    slips_ = std::move(slips);
    ShowMarksChanged();
  }
}

QString GridModel::NoteAt(Cell cell) const {
  const auto found = notes_.find(cell);
  return found == notes_.end() ? QString() : found->second;
}

void GridModel::SetOrigin(Cell cell, Origin origin) {
  origins_[cell] = origin;
  CellChanged(cell);
}

void GridModel::SetOrigins(CellOrigins origins) {
  origins_ = std::move(origins);
  ShowMarksChanged();
  emit Changed();
}

Origin GridModel::OriginAt(Cell cell) const {
  const auto found = origins_.find(cell);
  return found == origins_.end() ? Origin::File : found->second;
}

void GridModel::SetState(const GridState& state) {
  beginResetModel();
  grid_.SetRows(state.rows);
  notes_ = state.notes;
  slips_.clear();
  origins_ = state.origins;
  endResetModel();
}

void GridModel::CellChanged(Cell cell) {
  emit dataChanged(IndexAt(cell), IndexAt(cell));
  emit Changed();
}

void GridModel::ShowMarksChanged() {
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void GridModel::Fill(const std::function<void(MemoryGrid& grid)>& fill) {
  beginResetModel();
  notes_.clear();
  slips_.clear();
  origins_.clear();
  fill(grid_);
  endResetModel();
}

void GridModel::SetCellText(Cell cell, std::string_view text) {
  grid_.SetCellText(cell.row.number, cell.column, text);
  CellChanged(cell);
}

void GridModel::InsertRow(GridRow position, std::span<const std::string> cells, Origin origin) {
  beginInsertRows({}, position.number - 1, position.number - 1);
  grid_.InsertRow(position, cells);
  slips_.clear();
  MoveRows(notes_, position, 1);
  MoveRows(origins_, position, 1);
  for (int column = firstEditableColumn_; column < columnCount(); ++column) {
    origins_[{position, static_cast<std::int16_t>(column)}] = origin;
  }
  endInsertRows();
}

void GridModel::RemoveRow(GridRow row) {
  beginRemoveRows({}, row.number - 1, row.number - 1);
  grid_.RemoveRow(row);
  slips_.clear();
  MoveRows(notes_, row, -1);
  MoveRows(origins_, row, -1);
  endRemoveRows();
}

}  // namespace tarvell
