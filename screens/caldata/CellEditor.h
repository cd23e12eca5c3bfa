// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CELLEDITOR_H
#define TARVELL_SCREENS_CALDATA_CELLEDITOR_H

#include <QComboBox>
#include <QLineEdit>
#include <QObject>
#include <QPersistentModelIndex>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "core/caldata/EditorState.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/CellRules.h"

namespace tarvell {

/// Edits the cells of a CalGrid in the text box `txtCell`, which covers the current cell. Where the
/// unit can be chosen, the list `txtCellCmb` takes up a part of the cell.
///
/// A typed character, Enter, F2, the space key, Backspace or a double click starts an edit of a
/// cell that can be edited. Enter, Up, Down, Tab and whatever else moves the focus to the grid
/// store the text in the cell; Shift+Enter also goes up; Escape does not. When neither the text nor
/// the unit was changed, the cell stays as it is.
///
/// Tab goes to the unit if there is one, then to the next cell that can be edited; Shift+Tab goes
/// to the previous one. After that, both keys go on from cell to cell until another key or a mouse
/// button is pressed.
///
/// In the grid, Ctrl+C and Ctrl+V copy and paste cells; in an open box, they copy and paste its
/// text.
class CellEditor final : public QObject {
  Q_OBJECT

 public:
  /// `grid` must live longer than the object.
  explicit CellEditor(CalGrid* grid);

  void SetRules(CellRules rules) { rules_ = std::move(rules); }

  /// Makes a change of the table, called `what`.
  using Change = std::function<void(const QString& what, const std::function<void()>& change)>;
  /// Sets how the table is changed; at first, it is just changed.
  void SetChange(Change change) { change_ = std::move(change); }

  [[nodiscard]] bool IsOpen() const { return cell_.isValid(); }

  /// Stores the text of an open edit in its cell and closes the edit. Throws the errors of the
  /// rules; the edit stays open then, with the text that was typed.
  void Commit();
  /// Closes an open edit without storing it.
  void Cancel();
  /// The open edit as it is.
  [[nodiscard]] std::optional<OpenCell> Edit() const;
  /// The cell of an open edit, and what it would hold if the text as it is were stored in it; the
  /// digits may differ. The row is kCaptionRow when no edit is open.
  [[nodiscard]] std::pair<Cell, std::string> Preview() const;
  /// Opens an edit as it was. Does nothing if the table has no such cell that can be edited.
  void Reopen(const OpenCell& edit);

  /// Copies the selected cells, or pastes into them, unless an edit is open.
  void Copy();
  void Paste();

 signals:
  void Closed();
  /// The text or the unit of an open edit has changed.
  void Edited();
  /// The typed text `text` has been stored in a cell.
  void Typed(Cell cell, const QString& text);
  /// The text that a cell holds was typed again.
  void TypedAgain(Cell cell);
  /// A text from the clipboard has been stored in a cell.
  void Pasted(Cell cell);
  /// The user tried to type into a column that cannot be edited.
  void FixedCellTyped(std::int16_t column);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool GridKeyPressed(const QKeyEvent& event);
  bool BoxKeyPressed(const QKeyEvent& event);
  /// Says what to do with a table that is on the clipboard.
  void RefuseTable();
  bool UnitKeyPressed(const QKeyEvent& event);
  void OfferUnits(std::int16_t column, const std::string& unit);
  /// Opens the box on the current cell with the text `typed`, or with the text of the cell if
  /// `typed` is empty.
  void Open(const QString& typed);
  /// Whether the open edit has another text or unit than the cell, or began with a typed character.
  [[nodiscard]] bool IsChanged() const;
  void CommitGuarded();
  /// Stores the edit and goes `rows` rows down, or up when it is negative.
  void ReturnToGrid(int rows);
  /// Stores the edit and goes to the next cell that can be edited, or to the previous one. Leaves
  /// the table if none exists.
  void ReturnByTab(bool forward);
  void GoByTab(const QModelIndex& from, bool forward);
  void Close();
  void PlaceBox();

  CalGrid* grid_;
  QLineEdit* txtCell_;
  QComboBox* txtCellCmb_;
  CellRules rules_;
  Change change_ = [](const QString& /*what*/, const std::function<void()>& change) { change(); };
  QPersistentModelIndex cell_;  ///< the edited cell; invalid when no edit is open
  QString untouched_;           ///< the text of the box as it was opened
  QString untouchedUnit_;       ///< the unit as the list first showed it
  bool replaced_ = false;       ///< whether a typed character opened the box
  bool touched_ = false;        ///< whether the text was edited since the box was opened
  bool tabsOn_ = false;         ///< whether Tab goes on from the current cell to the next one
};

}  // namespace tarvell

#endif
