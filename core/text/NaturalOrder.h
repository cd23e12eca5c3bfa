// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_TEXT_NATURALORDER_H
#define TARVELL_CORE_TEXT_NATURALORDER_H

#include <compare>
#include <string_view>

namespace tarvell {

/// The order of two texts as people expect it: upper and lower case make no difference, and digits
/// that follow each other count as one number, so that "BENCH2" comes before "BENCH10".
[[nodiscard]] std::weak_ordering NaturalOrder(std::string_view a, std::string_view b);

}  // namespace tarvell

#endif
