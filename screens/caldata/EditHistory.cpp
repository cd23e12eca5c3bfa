// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/EditHistory.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace tarvell {

namespace {

/// The number of places at the beginning in which two lists are the same.
template <typename Item>
std::size_t CommonBeginning(const std::vector<Item>& one, const std::vector<Item>& other) {
  return static_cast<std::size_t>(std::ranges::mismatch(one, other).in1 - one.begin());
}

/// The first place in which two maps differ. They must differ.
template <typename Map>
Cell FirstDifferentKey(const Map& one, const Map& other) {
  const auto [left, right] = std::ranges::mismatch(one, other);
  if (left == one.end() || right == other.end()) {
    return left == one.end() ? right->first : left->first;
  }
  return std::min(left->first, right->first);
}

}  // namespace

EditStep::EditStep(const QString& what, PageState before, PageState after, Show show, int run)
    : HistoryStep(what),
      before_(std::move(before)),
      after_(std::move(after)),
      show_(std::move(show)),
      run_(run) {}

void EditStep::redo() {
  if (!std::exchange(isMade_, false)) {
    show_(after_, before_);
  }
}

bool EditStep::mergeWith(const QUndoCommand* next) {
  after_ = static_cast<const EditStep*>(next)->after_;
  setObsolete(after_ == before_);
  return true;
}

Cell FirstDifference(const GridState& one, const GridState& other) {
  const std::size_t row = CommonBeginning(one.rows, other.rows);
  if (one.rows.size() == other.rows.size() && row < one.rows.size()) {
    return {{static_cast<std::int16_t>(row)},
            static_cast<std::int16_t>(CommonBeginning(one.rows[row], other.rows[row]))};
  }
  if (one.rows.size() != other.rows.size()) {
    return {{static_cast<std::int16_t>(row)}, 0};
  }
  if (one.origins != other.origins) {
    return FirstDifferentKey(one.origins, other.origins);
  }
  return FirstDifferentKey(one.notes, other.notes);
}

}  // namespace tarvell
