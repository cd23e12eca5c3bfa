// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CELLEDITOR_H
#define TARVELL_SCREENS_CALDATA_CELLEDITOR_H

#include <QComboBox>
#include <QLineEdit>
#include <QObject>
#include <QPersistentModelIndex>

#include <cstdint>
#include <string>
#include <utility>

#include "screens/caldata/CalGrid.h"
#include "screens/caldata/CellRules.h"

namespace tarvell {

/// Edits the cells of a CalGrid in the text box `txtCell`, which lies over the current cell. Where
/// the unit can be chosen, the list `txtCellCmb` shares the cell with it.
///
/// A typed character, Enter, the blank, Backspace or a double click open it on a cell that can be
/// edited. Enter, the Up and Down keys, Tab and every way back to the grid store the text in the
/// cell; Escape does not. Tab goes on to the next cell that takes typing, by way of the unit where
/// it can be chosen, and Shift+Tab to the previous one; so they do from there on, until another key
/// or click. When neither text nor unit was touched, the cell stays as it was. Copying and pasting
/// in the grid take the selected cells, and in an open box its text.
class CellEditor final : public QObject {
  Q_OBJECT

 public:
  /// `grid` outlives the object.
  explicit CellEditor(CalGrid* grid);

  void SetRules(CellRules rules) { rules_ = std::move(rules); }

  [[nodiscard]] bool IsOpen() const { return cell_.isValid(); }

  /// Stores the text of an open edit in its cell and closes it. Throws what the rules throw; the
  /// edit is then still open, with what was typed.
  void Commit();
  /// Closes an open edit; the cell keeps its text.
  void Cancel();

 signals:
  /// What was typed has been stored in a cell.
  void Typed(std::int16_t row, std::int16_t column, const QString& text);
  /// A cell has got its text from the clipboard.
  void Pasted(std::int16_t row, std::int16_t column);
  /// The user tried to type into a column that cannot be edited.
  void FixedCellTyped(std::int16_t column);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool GridKeyPressed(const QKeyEvent& event);
  bool BoxKeyPressed(const QKeyEvent& event);
  bool UnitKeyPressed(const QKeyEvent& event);
  void OfferUnits(std::int16_t column, const std::string& unit);
  /// Opens the box on the current cell: with `typed`, or with the cell's own text for "".
  void Open(const QString& typed);
  void CommitGuarded();
  void ReturnToGrid(int rows);
  /// Stores the edit and goes to the next cell that takes typing, or to the previous one; out of
  /// the table where there is none.
  void ReturnByTab(bool forward);
  void GoByTab(const QModelIndex& from, bool forward);
  void Close();
  void PlaceBox();

  CalGrid* grid_;
  QLineEdit* txtCell_;
  QComboBox* txtCellCmb_;
  CellRules rules_;
  QPersistentModelIndex cell_;  ///< the cell that is edited, invalid when none is
  QString untouched_;           ///< the text of the box as it was opened
  QString untouchedUnit_;       ///< the unit as it was offered
  bool replaced_ = false;       ///< whether a typed character opened the box
  bool tabsOn_ = false;         ///< whether Tab goes on from the current cell to the next one
};

}  // namespace tarvell

#endif
