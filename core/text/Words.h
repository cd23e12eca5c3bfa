// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_TEXT_WORDS_H
#define TARVELL_CORE_TEXT_WORDS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tarvell {

/// As many words as are ever taken from a line.
inline constexpr std::size_t kWordLimit = 30;

/// Splits `line` into its words, separated by runs of blanks and control blanks (NUL, TAB, CR,
/// LF, backspace, form feed, vertical tab), at most kWordLimit. All of `words` but the last is
/// emptied first. Returns the number of words; throws an Index error when `words` has no place for
/// one.
std::int16_t SplitWords(std::string_view line, std::span<std::string> words);

}  // namespace tarvell

#endif
