// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CALSCREENS_CELLEDITOR_H
#define TARVELL_CALSCREENS_CELLEDITOR_H

#include <QLineEdit>
#include <QObject>
#include <QPersistentModelIndex>

#include <cstdint>
#include <functional>
#include <string>

#include "calscreens/CalGrid.h"

namespace tarvell {

/// How a cell's text becomes the text to edit, and what was typed becomes a cell's text. Rows and
/// columns are the grid's.
struct CellRules {
  std::function<std::string(std::int16_t column, std::int16_t row, const std::string& text)>
      textToEdit;
  std::function<std::string(std::int16_t column, std::int16_t row, const std::string& text)>
      textToStore;
};

/// Edits the cells of a CalGrid in the text box `txtCell`, which lies over the current cell.
///
/// A typed character, Enter, the blank, Backspace or a double click open it on a cell that can be
/// edited. Enter, Tab, the Up and Down keys, and every way back to the grid store the text in the
/// cell; Escape does not. A text that was not touched leaves the cell as it was.
class CellEditor final : public QObject {
  Q_OBJECT

 public:
  explicit CellEditor(CalGrid* grid);

  void SetRules(CellRules rules) { rules_ = std::move(rules); }

  [[nodiscard]] bool IsOpen() const { return cell_.isValid(); }

  /// Stores the text of an open edit in its cell and closes it. Throws what the rules throw; the
  /// edit is then still open, with what was typed.
  void Commit();
  /// Closes an open edit; the cell keeps its text.
  void Cancel();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool GridKeyPressed(const QKeyEvent& event);
  bool BoxKeyPressed(const QKeyEvent& event);
  /// Opens the box on the current cell: with `typed`, or with the cell's own text for "".
  void Open(const QString& typed);
  void CommitGuarded();
  void ReturnToGrid(int rows);
  void Close();
  void PlaceBox();

  CalGrid* grid_;
  QLineEdit* txtCell_;
  CellRules rules_;
  QPersistentModelIndex cell_;  ///< the cell that is edited, invalid when none is
  QString untouched_;           ///< the text of the box as it was opened
  bool replaced_ = false;       ///< whether a typed character opened the box
};

}  // namespace tarvell

#endif
