// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_TEXT_NATURALORDER_H
#define TARVELL_CORE_TEXT_NATURALORDER_H

#include <string>
#include <string_view>

namespace tarvell {

/// Bytes by which texts are in the order that people expect: upper and lower case make no
/// difference, and digits that follow each other count as one number, so that "BENCH2" comes before
/// "BENCH10". Many texts are sorted faster by their keys than by themselves.
[[nodiscard]] std::string NaturalKey(std::string_view text);

}  // namespace tarvell

#endif
