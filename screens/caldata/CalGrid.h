// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CALGRID_H
#define TARVELL_SCREENS_CALDATA_CALGRID_H

#include <QItemSelectionModel>
#include <QPersistentModelIndex>
#include <QTableView>

#include <cstdint>
#include <functional>

#include "screens/caldata/GridModel.h"

namespace tarvell {

/// The editors' table. The captions stay in place while it scrolls; the columns keep the shares
/// of its width that were set for them (equal ones where none were), as far as their captions
/// leave them. A rectangle of cells can be
/// selected.
class CalGrid final : public QTableView {
  Q_OBJECT

 public:
  explicit CalGrid(QWidget* parent = nullptr);

  [[nodiscard]] const MemoryGrid& Data() const { return model_->Grid(); }
  [[nodiscard]] GridModel& Model() { return *model_; }
  [[nodiscard]] const GridModel& Model() const { return *model_; }

  /// Lets `fill` change the whole table, which knows its width in twips, and goes to the first
  /// cell that can be edited.
  void Fill(const std::function<void(MemoryGrid& grid)>& fill);

  /// The current cell's row and column as the grid counts them, 0 when there is no data row.
  [[nodiscard]] std::int16_t CurrentRow() const;
  [[nodiscard]] std::int16_t CurrentColumn() const;
  /// Makes this cell the current one, and the only one that is selected.
  void SetCurrentCell(std::int16_t row, std::int16_t column);

  /// Removes a row after which the same row number is current, or the last one.
  void RemoveRow(std::int16_t row);

  /// The next cell that takes typing from `cell` on, over row ends, or the previous one; invalid
  /// after the last and before the first.
  [[nodiscard]] QModelIndex NextEditable(const QModelIndex& cell, bool forward) const;
  /// Gives the keyboard to the control after the table, or before it.
  void Leave(bool forward) { focusNextPrevChild(forward); }

  /// Typing in a column that cannot be edited does nothing: it does not search either.
  void keyboardSearch(const QString& /*search*/) override {}

 protected:
  /// Home and End, with and without Ctrl, go to cells that take typing.
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void resizeEvent(QResizeEvent* event) override;
  void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;

 private:
  void ShareWidth();

  GridModel* model_;
  /// Where a selection begins since SetCurrentCell, if it still does.
  QPersistentModelIndex start_;
};

}  // namespace tarvell

#endif
