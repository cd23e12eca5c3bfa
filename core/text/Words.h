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

/// How many words are taken from a line at most.
inline constexpr std::size_t kWordLimit = 30;

/// Splits `line` into at most kWordLimit words, which are separated by runs of blanks and control
/// blanks (NUL, TAB, CR, LF, backspace, form feed, vertical tab). First clears all of `words`
/// except the last. Returns the number of words. Throws an Index error when `words` is too short.
std::int16_t SplitWords(std::string_view line, std::span<std::string> words);

}  // namespace tarvell

#endif
