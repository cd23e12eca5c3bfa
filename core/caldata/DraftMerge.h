// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_DRAFTMERGE_H
#define TARVELL_CORE_CALDATA_DRAFTMERGE_H

#include <cstddef>

#include "core/caldata/Draft.h"

namespace tarvell {

/// A draft, put into data that were saved after it was begun.
struct MergedDraft {
  EditorState state = {};
  std::size_t kept = 0;         ///< how many newer values stay that the draft has otherwise
  std::size_t withoutRoom = 0;  ///< how many typed points the full tables could not take
};

/// Puts what was typed in a draft into `now`, what the editor shows of the newer data. Typed is
/// what the draft has otherwise than when it was begun; everything else stays as in `now`. Rows
/// belong together when their first `pointColumns` cells are the same. Of rows with the same point,
/// the first belongs to the first, the second to the second. A row that was deleted in
/// the draft is deleted, unless it holds newer values. Without Draft::opened everything counts as
/// typed.
[[nodiscard]] MergedDraft Merged(const Draft& draft, const EditorState& now,
                                 std::size_t pointColumns);

}  // namespace tarvell

#endif
