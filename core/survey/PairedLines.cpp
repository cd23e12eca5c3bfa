// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/PairedLines.h"

#include <algorithm>
#include <utility>

#include "core/station/StationFiles.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// How much two lines have in common; 0 if one cannot have become the other.
std::size_t Likeness(const FileLine& before, const FileLine& after) {
  if (before.text == after.text) {
    return before.end == after.end ? 3 : 2;
  }
  return before.keyword == after.keyword ? 1 : 0;
}

}  // namespace

FileLines LinesOf(std::string_view bytes) {
  FileLines lines;
  while (!bytes.empty()) {
    std::string_view end = bytes;
    const std::string_view line = TakeLine(bytes);
    end.remove_suffix(bytes.size());
    end.remove_prefix(line.size());
    std::string text = DecodeFileText(line);
    std::string keyword = ParseKeywordLine(text).keyword;
    lines.push_back({std::move(text), std::move(keyword), end});
  }
  return lines;
}

PairedLines::PairedLines(const FileLines& before, const FileLines& after)
    : before_(before),
      after_(after),
      width_(after.size() + 1),
      best_((before.size() + 1) * width_) {
  for (std::size_t i = before.size(); i-- > 0;) {
    for (std::size_t j = after.size(); j-- > 0;) {
      const std::size_t likeness = Likeness(before[i], after[j]);
      best_[i * width_ + j] = std::max(
          {Best(i + 1, j), Best(i, j + 1), likeness == 0 ? 0 : likeness + Best(i + 1, j + 1)});
    }
  }
}

}  // namespace tarvell
