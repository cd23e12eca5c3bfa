// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_UNITS_H
#define TARVELL_EXCHANGE_UNITS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The units of certificates. All of them are powers of ten of each other, so that a value is
/// converted by moving its decimal point, and keeps every digit.
namespace tarvell {

struct Unit {
  /// The exponents of metre, kilogram, second, ampere and kelvin.
  static constexpr std::size_t kBases = 5;
  std::array<std::int8_t, kBases> bases = {};
  /// A unit that is not a product of those, such as the decibel; "" for all others.
  std::string_view special = {};
  int power = 0;  ///< of ten

  /// Whether values in one of the two units can be converted to the other.
  [[nodiscard]] bool IsLike(const Unit& other) const {
    return bases == other.bases && special == other.special;
  }
};

/// "MHz", "kΩ", "%" or the D-SI form "\mega\hertz"; nothing for a text that is not a known unit.
[[nodiscard]] std::optional<Unit> UnitFrom(std::string_view text);

/// `unit` as a reader sees it: "MHz" for "\mega\hertz"; any other text is as it is.
[[nodiscard]] std::string ShownUnit(std::string_view unit);

/// A number times ten to the power of `power`, with the same digits: "0.9850" by 2 is "98.50".
[[nodiscard]] std::string Shifted(std::string_view number, int power);

}  // namespace tarvell

#endif
