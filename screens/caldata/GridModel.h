// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_GRIDMODEL_H
#define TARVELL_SCREENS_CALDATA_GRIDMODEL_H

#include <QAbstractTableModel>
#include <QIcon>

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Origin.h"

namespace tarvell {

/// Marks what may hold a slip of typing.
[[nodiscard]] QIcon SlipIcon();

/// Notes about cells that the user should look at.
using CellNotes = std::map<Cell, QString>;

/// All that can be undone in a table: its cells, the captions included, and what is known of them.
struct GridState {
  std::vector<std::vector<std::string>> rows;
  CellNotes notes;
  CellOrigins origins;

  bool operator==(const GridState&) const = default;
};

/// A MemoryGrid as a table view shows it: row 0 as the captions, and the data rows. A QModelIndex
/// counts the data rows from 0, a Cell from 1.
class GridModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit GridModel(QObject* parent = nullptr);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

  [[nodiscard]] const MemoryGrid& Grid() const { return grid_; }

  [[nodiscard]] static Cell CellAt(const QModelIndex& index);
  [[nodiscard]] QModelIndex IndexAt(Cell cell) const;

  /// Lets `fill` change the whole grid, and removes all notes and origins.
  void Fill(const std::function<void(MemoryGrid& grid)>& fill);
  void SetCellText(Cell cell, std::string_view text);
  /// Inserts a row whose cells have this origin.
  void InsertRow(GridRow position, std::span<const std::string> cells,
                 Origin origin = Origin::Operator);
  void RemoveRow(GridRow row);

  /// Marks a cell with a warning icon and this note; "" removes the mark. A note moves with its
  /// row.
  void SetNote(Cell cell, const QString& note);
  void SetNotes(CellNotes notes);
  [[nodiscard]] const CellNotes& Notes() const { return notes_; }
  [[nodiscard]] QString NoteAt(Cell cell) const;

  /// Marks the cells whose values may be slips of typing, and only these, each with the reason.
  /// The marks are those of the table as it is now: a change of rows removes them.
  void SetSlips(CellNotes slips);
  [[nodiscard]] const CellNotes& SlipMarks() const { return slips_; }

  /// A value that is still to be entered looks different, and a screen reader says so. An origin
  /// moves with its row.
  void SetOrigin(Cell cell, Origin origin);
  void SetOrigins(CellOrigins origins);
  [[nodiscard]] const CellOrigins& Origins() const { return origins_; }
  [[nodiscard]] Origin OriginAt(Cell cell) const;

  [[nodiscard]] GridState State() const { return {grid_.Rows(), notes_, origins_}; }
  void SetState(const GridState& state);

  /// The columns before this one cannot be edited; their background shows it.
  void SetFirstEditableColumn(int column) { firstEditableColumn_ = column; }
  [[nodiscard]] int FirstEditableColumn() const { return firstEditableColumn_; }
  /// A column without a caption is not used, and cannot be edited either.
  [[nodiscard]] bool IsEditable(int column) const;
  /// The last column that can be edited, -1 if none exists.
  [[nodiscard]] int LastEditableColumn() const;

 signals:
  /// The table, its notes or its origins have changed. The marks of slips follow from these.
  void Changed();

 private:
  void CellChanged(Cell cell);
  void ShowMarksChanged();

  MemoryGrid grid_;
  CellNotes notes_;
  CellNotes slips_;
  CellOrigins origins_;
  int firstEditableColumn_ = 1;
};

}  // namespace tarvell

#endif
