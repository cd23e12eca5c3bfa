// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_NUMBERS_WRITTENNUMBER_H
#define TARVELL_CORE_NUMBERS_WRITTENNUMBER_H

#include <optional>
#include <string>
#include <string_view>

/// Numbers as people and spreadsheets write them. What is written here has to be read in the same
/// way in every locale, so the reader is given the decimal sign.
namespace tarvell {

enum class DecimalSign { Point, Comma };

/// `text` without blanks around it: spaces of every width, tabs and line ends.
[[nodiscard]] std::string_view WithoutBlanks(std::string_view text);

/// The number that `text` is, with a decimal point and nothing between its digits: "1 234,5" with a
/// decimal comma is "1234.5". Groups of three digits may be separated by a blank of any width, an
/// apostrophe, or that one of point and comma that is not the decimal sign; an exponent goes only
/// with an ungrouped number. Nothing for any other text.
[[nodiscard]] std::optional<std::string> PlainNumber(std::string_view text, DecimalSign sign);

}  // namespace tarvell

#endif
