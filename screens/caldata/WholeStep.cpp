// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/WholeStep.h"

#include <cstddef>
#include <utility>

#include "core/caldata/SetPages.h"

namespace tarvell {

namespace {

PageState PlaceOf(const EditorState& state) {
  PageState place;
  place.page = state.shownPage;
  // A set without an option has all its pages.
  place.hasOption = state.option.value_or(state.pages.size() > std::size_t{kOptionPage});
  return place;
}

}  // namespace

WholeStep::WholeStep(const QString& what, EditorState before, EditorState after,
                     std::function<EditorState()> now, Show show, Shown shown)
    : HistoryStep(what),
      before_(std::move(before)),
      after_(std::move(after)),
      placeBefore_(PlaceOf(before_)),
      placeAfter_(PlaceOf(after_)),
      now_(std::move(now)),
      show_(std::move(show)),
      shown_(std::move(shown)) {}

void WholeStep::undo() {
  ShowInstead(after_, before_);
  shown_(false);
}

void WholeStep::redo() {
  if (!std::exchange(isMade_, false)) {
    ShowInstead(before_, after_);
    shown_(true);
  }
}

void WholeStep::ShowInstead(const EditorState& left, EditorState state) {
  const DraftHeader present = now_().header;
  for (const auto box : kHeaderBoxes) {
    if (present.*box != left.header.*box) {
      state.header.*box = present.*box;
    }
  }
  show_(state);
}

}  // namespace tarvell
