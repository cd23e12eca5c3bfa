// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_NUMBERS_DECIMALTEXT_H
#define TARVELL_CORE_NUMBERS_DECIMALTEXT_H

#include <array>
#include <cstddef>
#include <string_view>

namespace tarvell {

/// The decimal text of 15 significant digits that number texts are made from: a finite value is
/// d.dddddddddddddd times 10 to the power of `exponent`, less its sign. Zero has all digits '0'
/// and exponent 0.
class DecimalText {
 public:
  static constexpr std::size_t kDigits = 15;

  /// Throws a Type error when `value` is infinite.
  explicit DecimalText(double value);

  [[nodiscard]] bool Negative() const { return negative_; }
  [[nodiscard]] int Exponent() const { return exponent_; }
  [[nodiscard]] std::string_view Digits() const { return {digits_.data(), kDigits}; }

  /// The digit that stands `place` places before the point (0 the units, -1 the tenths).
  [[nodiscard]] char DigitAt(int place) const;

  /// Rounds half away from zero, so that every digit behind `lastPlace` is '0'.
  void RoundAt(int lastPlace);

 private:
  bool negative_;
  int exponent_ = 0;
  std::array<char, kDigits> digits_{};
};

}  // namespace tarvell

#endif
