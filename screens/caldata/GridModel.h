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
#include <utility>

#include "core/caldata/MemoryGrid.h"

namespace tarvell {

/// What is to be known about cells, by row and column of the grid.
using CellNotes = std::map<std::pair<std::int16_t, std::int16_t>, QString>;

/// A MemoryGrid as a table view shows it: row 0 as the captions, the data rows below. Rows and
/// columns here are the grid's own, row 1 being the first data row; a QModelIndex counts data
/// rows from 0.
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

  /// Lets `fill` change the whole grid.
  void Fill(const std::function<void(MemoryGrid& grid)>& fill);
  void SetCellText(std::int16_t row, std::int16_t column, std::string_view text);
  void InsertRow(GridRow position, std::span<const std::string> cells);
  void RemoveRow(GridRow row);

  /// Marks a cell with a warning icon and this note; "" removes the mark. A note moves with its
  /// row, and filling the grid removes all.
  void SetNote(std::int16_t row, std::int16_t column, const QString& note);
  void SetNotes(CellNotes notes);
  [[nodiscard]] const CellNotes& Notes() const { return notes_; }
  [[nodiscard]] QString NoteAt(std::int16_t row, std::int16_t column) const;

  /// Columns before this one cannot be edited, and are shown so.
  void SetFirstEditableColumn(int column) { firstEditableColumn_ = column; }
  [[nodiscard]] int FirstEditableColumn() const { return firstEditableColumn_; }
  /// A column without a caption holds nothing, so that it cannot be edited either.
  [[nodiscard]] bool IsEditable(int column) const;
  /// The last column that can be edited, -1 when there is none.
  [[nodiscard]] int LastEditableColumn() const;

 private:
  /// Moves the notes of the rows from `first` on by `rows`; those of a row that goes are dropped.
  void MoveNotes(std::int16_t first, std::int16_t rows);

  MemoryGrid grid_;
  CellNotes notes_;
  int firstEditableColumn_ = 1;
};

}  // namespace tarvell

#endif
