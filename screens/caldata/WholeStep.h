// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_WHOLESTEP_H
#define TARVELL_SCREENS_CALDATA_WHOLESTEP_H

#include <functional>

#include "core/caldata/EditorState.h"
#include "screens/caldata/EditHistory.h"

namespace tarvell {

/// A step of the history that changes the whole data set, its header included.
class WholeStep final : public HistoryStep {
 public:
  using Show = std::function<void(const EditorState& state)>;
  /// Is called after Undo with false, and after Redo with true.
  using Shown = std::function<void(bool isMade)>;

  /// The change has been made already. `now` returns what is in the editor.
  WholeStep(const QString& what, EditorState before, EditorState after,
            std::function<EditorState()> now, Show show, Shown shown);

  // The step goes to the page of its state itself. Until then the editor stays where it is.
  [[nodiscard]] const PageState& Before() const override { return placeAfter_; }
  [[nodiscard]] const PageState& After() const override { return placeBefore_; }
  void undo() override;
  void redo() override;

 private:
  /// Shows `state`. A header box that does not hold its text of `left` any more was typed in since,
  /// and keeps its text.
  void ShowInstead(const EditorState& left, EditorState state);

  EditorState before_;
  EditorState after_;
  PageState placeBefore_;
  PageState placeAfter_;
  std::function<EditorState()> now_;
  Show show_;
  Shown shown_;
  bool isMade_ = true;  ///< the stack redoes a step when it gets it
};

}  // namespace tarvell

#endif
