// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CALGRID_H
#define TARVELL_SCREENS_CALDATA_CALGRID_H

#include <QItemSelectionModel>
#include <QPersistentModelIndex>

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "screens/caldata/EditorTable.h"
#include "screens/caldata/GridModel.h"

namespace tarvell {

/// The table of the editors. The captions stay in place while it scrolls. The columns share its
/// width in proportion to the widths that the user gave them, or else that were set for them, or
/// equally if none were set; but each is at least as wide as its caption. A rectangle of cells can
/// be selected.
class CalGrid final : public EditorTable {
  Q_OBJECT

 public:
  explicit CalGrid(QWidget* parent = nullptr);

  [[nodiscard]] const MemoryGrid& Data() const { return model_->Grid(); }
  [[nodiscard]] GridModel& Model() { return *model_; }
  [[nodiscard]] const GridModel& Model() const { return *model_; }

  /// Sets the width of the table in twips and lets `fill` change the whole table. Then goes to the
  /// first cell that can be edited.
  void Fill(const std::function<void(MemoryGrid& grid)>& fill);

  /// Takes the widths that the user last gave the columns of a table of this name, and remembers
  /// those that the user gives them now.
  void RememberWidthsAs(const QString& name);

  /// Shows another state of the same table and goes to `cell`, or to the cell nearest to it.
  void Show(const GridState& state, Cell cell);

  /// The current cell; its row is kCaptionRow when there is no data row.
  [[nodiscard]] Cell CurrentCell() const;
  /// The first and the last row in which cells are selected, or the row of the current cell when it
  /// is not selected. Both are kCaptionRow when there is no data row.
  [[nodiscard]] std::pair<GridRow, GridRow> SelectedRows() const;
  /// Makes this cell the current one, and the only one that is selected.
  void SetCurrentCell(Cell cell);

  /// Removes the rows from `first` to `last`. Then the row of the number `first` is current, or the
  /// last one.
  void RemoveRows(GridRow first, GridRow last);

  /// The next cell after `cell` that can be edited, in this row or a later one, or the previous
  /// one. Invalid after the last and before the first.
  [[nodiscard]] QModelIndex NextEditable(const QModelIndex& cell, bool forward) const;
  /// Gives the focus to the control after the table, or before it.
  void Leave(bool forward) { focusNextPrevChild(forward); }

  /// Typing in a column that cannot be edited must not search for a text.
  void keyboardSearch(const QString& /*search*/) override {}

 signals:
  /// The user wants the table's menu, by the mouse or by a key.
  void MenuWanted(const QPoint& globalPlace);

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override;
  /// Home and End, with and without Ctrl, go to cells that can be edited.
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
  /// Ctrl+Shift+Home and Ctrl+Shift+End extend the selection to the first and the last row.
  [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
      const QModelIndex& index, const QEvent* event) const override;

 private:
  void ShareWidth();
  /// What each column needs: its caption, or less where all captions have no room and its values
  /// are narrower. The first column also needs room for its values.
  [[nodiscard]] std::vector<int> LeastWidths() const;
  /// What the width is shared by.
  [[nodiscard]] std::vector<int> Proportions() const;

  /// Makes `cell` the current one, or that of the same column in the nearest row.
  void GoNear(Cell cell);

  GridModel* model_;
  QString widthsKey_;
  std::vector<int> usersWidths_;  ///< of the columns, when the user last changed one
  bool isSharing_ = false;        ///< whether the program changes the widths, not the user
  bool isShareDue_ = false;       ///< the table was filled while it was hidden
  /// Where a selection with Shift begins after SetCurrentCell. Invalid when the user has selected
  /// something since.
  QPersistentModelIndex start_;
};

}  // namespace tarvell

#endif
