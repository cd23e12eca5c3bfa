// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/numbers/DecimalDifference.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

#include "core/numbers/DecimalText.h"
#include "core/numbers/Numbers.h"

namespace tarvell {

namespace {

constexpr std::string_view kExponentLetters = "EeDd";
/// A double holds this many decimal digits exactly.
constexpr int kExactDigits = static_cast<int>(DecimalText::kDigits);

/// The digits before the point.
int WholeDigits(double value) {
  return value == 0 ? 1 : std::max(DecimalText(value).Exponent() + 1, 1);
}

}  // namespace

int DecimalsOf(std::string_view text) {
  const std::string_view number = text.substr(0, text.size() - AfterNumber(text).size());
  const std::size_t letter = std::min(number.find_first_of(kExponentLetters), number.size());
  const std::size_t point = std::min(number.find('.'), letter);
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto decimals =
      std::count_if(number.begin() + static_cast<std::ptrdiff_t>(point),
                    number.begin() + static_cast<std::ptrdiff_t>(letter), isDigit);
  const double power =
      letter < number.size() ? NumericValueOrInfinity(number.substr(letter + 1)) : 0;
  const double places = static_cast<double>(decimals) - power;
  return static_cast<int>(std::clamp(places, 0.0, static_cast<double>(2 * kExactDigits)));
}

std::string SignedDifference(std::string_view later, std::string_view earlier) {
  const double a = NumericValueOrInfinity(later);
  const double b = NumericValueOrInfinity(earlier);
  const double difference = a - b;
  if (!std::isfinite(a) || !std::isfinite(b) || !std::isfinite(difference)) {
    return {};
  }
  const int decimals = std::max(DecimalsOf(later), DecimalsOf(earlier));
  const std::string plus = difference > 0 ? "+" : "";
  // Beyond the digits that a double holds, the last ones would be noise.
  if (std::max(WholeDigits(a), WholeDigits(b)) + decimals > kExactDigits) {
    return plus + ShortestText(difference);
  }
  std::array<char, 4 * static_cast<std::size_t>(kExactDigits)> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), difference,
                                 std::chars_format::fixed, decimals);
  return plus + std::string(buffer.data(), end.ptr);
}

std::string SignedDifference(const Quantity& later, const Quantity& earlier) {
  if (later.unit == earlier.unit) {
    return SignedDifference(later.number, earlier.number);
  }
  double value = NumericValueOrInfinity(earlier.number);
  if (later.unit == "%" && earlier.unit == "ppm") {
    value /= kPpmInPercent;
  } else if (later.unit == "ppm" && earlier.unit == "%") {
    value *= kPpmInPercent;
  } else {
    return {};
  }
  return std::isfinite(value) ? SignedDifference(later.number, ShortestText(value)) : std::string();
}

}  // namespace tarvell
