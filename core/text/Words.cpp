// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/Words.h"

#include <algorithm>

#include "core/platform/Error.h"

namespace tarvell {

namespace {

/// A blank, a NUL, or one of BS, TAB, LF, VT, FF and CR.
bool IsSeparator(char c) {
  return c == ' ' || c == '\0' || (c >= '\b' && c <= '\r');
}

}  // namespace

std::int16_t SplitWords(std::string_view line, std::span<std::string> words) {
  for (std::size_t i = 0; i + 1 < words.size(); ++i) {
    words[i].clear();
  }
  std::size_t count = 0;
  const auto* start = std::find_if_not(line.begin(), line.end(), IsSeparator);
  while (start != line.end() && count < kWordLimit) {
    const auto* end = std::find_if(start, line.end(), IsSeparator);
    if (count == words.size()) {
      throw Error(ErrorKind::Index, "A line holds more than " + std::to_string(words.size()) +
                                        " words. Correct the file, then try again.");
    }
    words[count++].assign(start, end);
    start = std::find_if_not(end, line.end(), IsSeparator);
  }
  return static_cast<std::int16_t>(count);
}

}  // namespace tarvell
