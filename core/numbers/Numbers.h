// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_NUMBERS_NUMBERS_H
#define TARVELL_CORE_NUMBERS_NUMBERS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers as data files hold them, independent of the locale.
namespace tarvell {

/// The number at the beginning of a text: an optional sign, digits with an optional point, an
/// optional exponent (E or D, either case). Blanks, tabs and LFs are ignored everywhere. A text
/// without such a number gives 0. Throws a Type error when the number is too large for a double.
[[nodiscard]] double NumericValue(std::string_view text);

/// The same, but infinite for a number that is too large for a double.
[[nodiscard]] double NumericValueOrInfinity(std::string_view text);

/// The first number in a cell, such as "1E999" in "Ls/1E999 nH", if it is too large for a double;
/// otherwise "".
[[nodiscard]] std::string_view TooLargeNumber(std::string_view text);

/// The number at the beginning of a text that NumericValueOrInfinity would find, and what follows
/// it, without the blanks before that.
struct LeadingNumber {
  double value = 0;
  std::string_view after;
};
/// Nothing for a text that does not begin with a number.
[[nodiscard]] std::optional<LeadingNumber> LeadingNumberOf(std::string_view text);

/// Whether a text begins with a number that NumericValue would find.
[[nodiscard]] bool BeginsWithNumber(std::string_view text);

/// What follows the number at the beginning of a text, without the blanks before it; the whole text
/// where it does not begin with a number.
[[nodiscard]] std::string_view AfterNumber(std::string_view text);

/// The value of a text that is nothing but a number, with blanks around it allowed. Infinite if it
/// is too large for a double; nothing for any other text.
[[nodiscard]] std::optional<double> ParseNumber(std::string_view text);

/// `value` rounded half away from zero. The one of the language's library is not exact on every
/// system: just below a half it may round up.
[[nodiscard]] double RoundedToWhole(double value);

/// `value` rounded half away from zero. Throws a Type error if that does not fit into 16 bits.
[[nodiscard]] std::int16_t ToInt16(double value);

/// ToInt16 of NumericValue.
[[nodiscard]] std::int16_t NumericInt16(std::string_view text);

/// The number in a text box, rounded half away from zero. Throws a Type error that names `field`
/// when the text is not a number (see ParseNumber) or the number does not fit into 16 bits.
[[nodiscard]] std::int16_t IntegerValue(std::string_view text, std::string_view field);

/// Shortest text of a number: up to 15 significant digits, no trailing zeros, at least one digit
/// before the point. A number below 1E15 that needs at most 15 decimals has no exponent; others
/// have one (1.5E+20, 1E-16). Throws a Type error for an infinite value.
[[nodiscard]] std::string ShortestText(double value);

/// `value` with the 15 digits of its shortest text. Removes the tiny error of a calculation, such
/// as 0.1 + 0.2. Throws a Type error for an infinite value.
[[nodiscard]] double RoundedTo15Digits(double value);

/// An integer with at least two digits: 5 is "05".
[[nodiscard]] std::string AtLeastTwoDigits(int number);

/// ShortestText of NumericValue.
[[nodiscard]] std::string Normalised(std::string_view text);

}  // namespace tarvell

#endif
