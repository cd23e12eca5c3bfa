// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_EDITHISTORY_H
#define TARVELL_SCREENS_CALDATA_EDITHISTORY_H

#include <QString>
#include <QUndoCommand>

#include <cstdint>
#include <functional>

#include "screens/caldata/GridModel.h"

namespace tarvell {

/// What an editor shows of one page, as far as it can be undone.
struct PageState {
  std::int16_t page = 0;
  bool hasOption = false;  ///< of the whole set
  QString memberSerial;
  GridState table;

  bool operator==(const PageState&) const = default;
};

/// A step of the history of an editor. Undo and Redo first go to the page of the state that the
/// table then has.
class HistoryStep : public QUndoCommand {
 public:
  using QUndoCommand::QUndoCommand;

  [[nodiscard]] virtual const PageState& Before() const = 0;
  [[nodiscard]] virtual const PageState& After() const = 0;
};

/// One step of the history of an editor: the page before and after a change.
class EditStep final : public HistoryStep {
 public:
  /// Shows a page as it was before the change, or after it. `other` is the state that is left.
  using Show = std::function<void(const PageState& state, const PageState& other)>;

  /// Steps that stand one after the other and have the same run, if it is not kNoRun, become one.
  static constexpr int kNoRun = -1;

  /// The change has been made already.
  EditStep(const QString& what, PageState before, PageState after, Show show, int run);

  [[nodiscard]] const PageState& Before() const override { return before_; }
  [[nodiscard]] const PageState& After() const override { return after_; }

  void undo() override { show_(before_, after_); }
  void redo() override;
  [[nodiscard]] int id() const override { return run_; }
  bool mergeWith(const QUndoCommand* next) override;

 private:
  PageState before_;
  PageState after_;
  Show show_;
  int run_;
  bool isMade_ = true;  ///< the stack redoes a step when it gets it
};

/// The first cell in which two states of a table differ. They must differ. For a row that was added
/// or removed, its first cell.
[[nodiscard]] Cell FirstDifference(const GridState& one, const GridState& other);

}  // namespace tarvell

#endif
