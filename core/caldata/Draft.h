// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_DRAFT_H
#define TARVELL_CORE_CALDATA_DRAFT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/caldata/EditorState.h"

/// Drafts: the state of an open editor, as a text.
namespace tarvell {

struct Draft {
  std::string model = {};        ///< model code
  std::string file = {};         ///< the full path of the data set, "" for new data
  std::int64_t written = 0;      ///< seconds since the beginning of 1970, UTC
  std::string fileContent = {};  ///< stands for the bytes of the file when it was opened
  EditorState state = {};
  std::optional<EditorState> opened = {};  ///< what was shown before anything was typed

  bool operator==(const Draft&) const = default;
};

/// The bytes of a draft's file. Any text can be kept.
[[nodiscard]] std::string DraftBytes(const Draft& draft);

/// The draft with these bytes; nullopt when they are not a whole draft of this version. No table
/// has more rows or columns than the program's own.
[[nodiscard]] std::optional<Draft> DraftFrom(std::string_view bytes);

}  // namespace tarvell

#endif
