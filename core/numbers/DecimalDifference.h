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

/// How many ppm one per cent is.
inline constexpr double kPpmInPercent = 1E4;

/// A number and the unit after it.
struct Quantity {
  std::string_view number;
  std::string_view unit;
};

/// The same for two numbers with units, in the unit of `later`: "0.1" % and "950" ppm give
/// "+0.005". "" where the units differ, except per cent and ppm.
[[nodiscard]] std::string SignedDifference(const Quantity& later, const Quantity& earlier);

}  // namespace tarvell

#endif
