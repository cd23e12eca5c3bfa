// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/numbers/DecimalText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "core/platform/Error.h"

namespace tarvell {

DecimalText::DecimalText(double value) : negative_(value < 0) {
  if (!std::isfinite(value)) {
    throw Error(ErrorKind::Type, "The number is too large to be calculated with.");
  }
  // d.dddddddddddddde+XXX
  std::array<char, 32> buffer{};
  const char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                  std::chars_format::scientific, kDigits - 1)
                        .ptr;
  digits_[0] = buffer[0];
  std::copy_n(&buffer[2], kDigits - 1, &digits_[1]);
  const char* exponent = &buffer[kDigits + 2];
  std::from_chars(*exponent == '+' ? exponent + 1 : exponent, end, exponent_);
}

char DecimalText::DigitAt(int place) const {
  const int index = exponent_ - place;
  return index >= 0 && index < static_cast<int>(kDigits)
             ? digits_.at(static_cast<std::size_t>(index))
             : '0';
}

void DecimalText::RoundAt(int lastPlace) {
  // Index of the first digit that is dropped; it decides whether to round up.
  const int cut = exponent_ - lastPlace + 1;
  if (cut >= static_cast<int>(kDigits)) {
    return;
  }
  const bool up = cut >= 0 && digits_.at(static_cast<std::size_t>(cut)) >= '5';
  std::fill(digits_.begin() + std::max(cut, 0), digits_.end(), '0');
  if (cut <= 0) {
    exponent_ = up ? lastPlace : 0;
    digits_[0] = up ? '1' : '0';
    return;
  }
  if (!up) {
    return;
  }
  int index = cut - 1;
  while (index >= 0 && digits_.at(static_cast<std::size_t>(index)) == '9') {
    digits_.at(static_cast<std::size_t>(index--)) = '0';
  }
  if (index >= 0) {
    ++digits_.at(static_cast<std::size_t>(index));
  } else {
    digits_[0] = '1';
    ++exponent_;
  }
}

double PowerOfTen(int exponent) {
  const std::string text = "1e" + std::to_string(exponent);
  double power = 0;
  std::from_chars(text.data(), text.data() + text.size(), power);
  return power;
}

}  // namespace tarvell
