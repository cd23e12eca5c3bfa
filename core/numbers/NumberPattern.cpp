// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/numbers/NumberPattern.h"

#include <algorithm>
#include <cstdlib>

#include "core/numbers/DecimalText.h"
#include "core/numbers/Numbers.h"

namespace tarvell {

std::string NumberPattern::Format(double value) const {
  DecimalText decimal(value);
  // With an exponent the mantissa's point is after the first digit, wherever the value has
  // its own.
  int shift = exponentDigits_ > 0 ? decimal.Exponent() : 0;
  decimal.RoundAt(shift - decimals_);
  if (exponentDigits_ > 0) {
    shift = decimal.Exponent();
  }

  std::string text(decimal.Negative() ? "-" : "");
  const bool wholePart =
      decimal.Exponent() - shift >= 0 && decimal.DigitAt(decimal.Exponent()) != '0';
  const int whole = std::max(wholePart ? decimal.Exponent() - shift + 1 : 0, wholeDigits_);
  for (int place = whole - 1; place >= 0; --place) {
    text += decimal.DigitAt(shift + place);
  }
  int shown = decimals_;
  while (shown > fixedDecimals_ && decimal.DigitAt(shift - shown) == '0') {
    --shown;
  }
  if (shown > 0) {
    text += '.';
  }
  for (int place = 1; place <= shown; ++place) {
    text += decimal.DigitAt(shift - place);
  }
  if (exponentDigits_ > 0) {
    text += shift < 0 ? "E-" : "E";
    const std::string exponent = std::to_string(std::abs(shift));
    const std::size_t width = std::max(exponent.size(), static_cast<std::size_t>(exponentDigits_));
    text.append(width - exponent.size(), '0');
    text += exponent;
  }
  text.append(static_cast<std::size_t>(blanks_), ' ');
  return text;
}

std::string FormatText(std::string_view text, const NumberPattern& pattern) {
  return pattern.Format(NumericValue(text));
}

}  // namespace tarvell
