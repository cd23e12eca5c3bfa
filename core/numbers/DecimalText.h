// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_NUMBERS_DECIMALTEXT_H
#define TARVELL_CORE_NUMBERS_DECIMALTEXT_H

#include <array>
#include <cstddef>
#include <string_view>

namespace tarvell {

/// A finite value as 15 significant decimal digits: d.dddddddddddddd times 10 to the power of
/// Exponent(), and a sign. Zero has only digits '0' and exponent 0.
class DecimalText {
 public:
  static constexpr std::size_t kDigits = 15;

  /// Throws a Type error when `value` is infinite.
  explicit DecimalText(double value);

  [[nodiscard]] bool Negative() const { return negative_; }
  [[nodiscard]] int Exponent() const { return exponent_; }
  [[nodiscard]] std::string_view Digits() const { return {digits_.data(), kDigits}; }

  /// The digit `place` places before the point (0 the units, -1 the tenths).
  [[nodiscard]] char DigitAt(int place) const;

  /// Rounds half away from zero, so that every digit after `lastPlace` is '0'.
  void RoundAt(int lastPlace);

 private:
  bool negative_;
  int exponent_ = 0;
  std::array<char, kDigits> digits_{};
};

/// The number nearest to 10 to the power of `exponent`; 0 for one that is too large or too small.
/// The power function of the library is not the same on each system.
[[nodiscard]] double PowerOfTen(int exponent);

}  // namespace tarvell

#endif
