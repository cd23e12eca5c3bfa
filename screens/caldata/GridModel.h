// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_GRIDMODEL_H
#define TARVELL_SCREENS_CALDATA_GRIDMODEL_H

#include <QAbstractTableModel>

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "core/caldata/MemoryGrid.h"

namespace tarvell {

/// Notes about cells that the user should look at.
using CellNotes = std::map<Cell, QString>;

/// A MemoryGrid as a table view shows it: row 0 as the captions, and the data rows. A QModelIndex
/// counts the data rows from 0, a Cell from 1.
class GridModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit GridModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

  [[nodiscard]] const MemoryGrid& Grid() const { return grid_; }

  [[nodiscard]] static Cell CellAt(const QModelIndex& index);
  [[nodiscard]] QModelIndex IndexAt(Cell cell) const;

  /// Lets `fill` change the whole grid, and removes all notes.
  void Fill(const std::function<void(MemoryGrid& grid)>& fill);
  void SetCellText(Cell cell, std::string_view text);
  void InsertRow(GridRow position, std::span<const std::string> cells);
  void RemoveRow(GridRow row);

  /// Marks a cell with a warning icon and this note; "" removes the mark. A note moves with its
  /// row.
  void SetNote(Cell cell, const QString& note);
  void SetNotes(CellNotes notes);
  [[nodiscard]] const CellNotes& Notes() const { return notes_; }
  [[nodiscard]] QString NoteAt(Cell cell) const;

  /// The columns before this one cannot be edited; their background shows it.
  void SetFirstEditableColumn(int column) { firstEditableColumn_ = column; }
  [[nodiscard]] int FirstEditableColumn() const { return firstEditableColumn_; }
  /// A column without a caption is not used, and cannot be edited either.
  [[nodiscard]] bool IsEditable(int column) const;
  /// The last column that can be edited, -1 if none exists.
  [[nodiscard]] int LastEditableColumn() const;

 private:
  /// Moves the notes of the rows from `first` on by `rows`, 1 or -1. With -1 the notes of `first`
  /// itself are removed.
  void MoveNotes(GridRow first, int rows);

  MemoryGrid grid_;
  CellNotes notes_;
  int firstEditableColumn_ = 1;
};

}  // namespace tarvell

#endif
