// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_NUMBERS_DECIMALDIFFERENCE_H
#define TARVELL_CORE_NUMBERS_DECIMALDIFFERENCE_H

#include <string>
#include <string_view>

namespace tarvell {

/// The decimals that the number at the beginning of a text is written with: 2 for "1.50", 4 for
/// "1.5E-03". At most 30.
[[nodiscard]] int DecimalsOf(std::string_view text);

/// `later` minus `earlier`, as a person works it out on paper: with the decimals of the one that
/// has more, and a sign unless it is zero. "84.1" and "84.5" give "-0.4", "10.0034" and "10" give
/// "+0.0034". Numbers are read as NumericValue reads them; "" where one of them, or the difference,
/// is too large.
[[nodiscard]] std::string SignedDifference(std::string_view later, std::string_view earlier);

}  // namespace tarvell

#endif
