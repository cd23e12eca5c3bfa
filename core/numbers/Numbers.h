// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_NUMBERS_NUMBERS_H
#define TARVELL_CORE_NUMBERS_NUMBERS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers as the data files write and read them; never dependent on the locale.
namespace tarvell {

/// Numeric value of a text: its longest leading numeric part. Blanks, tabs and LFs are ignored
/// wherever they stand; an optional sign, digits with an optional point, an optional exponent
/// (E or D, either case). No digits give 0. Throws a Type error when the number is too large
/// for a double.
[[nodiscard]] double NumericValue(std::string_view text);

/// The same, but infinite where the number is too large for a double.
[[nodiscard]] double NumericValueOrInfinity(std::string_view text);

/// The number of a cell that is too large for a double, without what stands around it, such as
/// "1E999" of "Ls/1E999 nH"; "" where the first number of `text` is none of these.
[[nodiscard]] std::string_view TooLargeNumber(std::string_view text);

/// Whether a text begins with a number, so that NumericValue reads one.
[[nodiscard]] bool BeginsWithNumber(std::string_view text);

/// The value of a text that is a number as a whole (blanks around it are allowed), infinite when it
/// is too large for a double; nothing for any other text.
[[nodiscard]] std::optional<double> WholeNumber(std::string_view text);

/// `value` rounded half away from zero into 16 bits; throws a Type error outside their range.
[[nodiscard]] std::int16_t ToInt16(double value);

/// Numeric value of a text, stored into 16 bits.
[[nodiscard]] std::int16_t NumericInt16(std::string_view text);

/// The integer that a text box holds. The whole text must be a number (blanks around it are
/// allowed), which is rounded half away from zero. Throws a Type error that names `field` when
/// it is none or outside 16 bits.
[[nodiscard]] std::int16_t IntegerValue(std::string_view text, std::string_view field);

/// Shortest text of a number: up to 15 significant digits, no trailing zeros, a leading 0
/// before the point; plain decimals while the magnitude is below 1E15 and the digits fit in 15
/// decimals, else with exponent (1.5E+20, 1E-16). Throws a Type error for an infinite value.
[[nodiscard]] std::string ShortestText(double value);

/// `value` with the 15 digits of its shortest text: the number that was meant where a calculation
/// gives a little more or less. Throws a Type error for an infinite value.
[[nodiscard]] double RoundedTo15Digits(double value);

/// An integer with at least two digits: 5 is "05".
[[nodiscard]] std::string AtLeastTwoDigits(int number);

/// NumericValue's number in its shortest text.
[[nodiscard]] std::string Normalised(std::string_view text);

}  // namespace tarvell

#endif
