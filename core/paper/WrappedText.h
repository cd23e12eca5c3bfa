// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PAPER_WRAPPEDTEXT_H
#define TARVELL_CORE_PAPER_WRAPPEDTEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/paper/PaperLayout.h"

namespace tarvell {

/// Of a longer text, which only a damaged file has, this many characters are shown.
inline constexpr std::size_t kShownCharacters = 4000;

/// The lines of a text, none of them wider than `width`; one line for "". It is broken at its line
/// ends and its blanks, and a word that is wider, such as a path, inside. A text that is not shown
/// whole ends in "...".
[[nodiscard]] std::vector<std::string> WrappedText(std::string_view text, double width,
                                                   PaperFont font, const PaperFonts& fonts);

}  // namespace tarvell

#endif
