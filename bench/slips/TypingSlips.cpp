// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/slips/TypingSlips.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace tarvell::bench {

namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::vector<std::size_t> PlacesOfDigits(const std::string& number) {
  std::vector<std::size_t> places;
  for (std::size_t place = 0; place < number.size(); ++place) {
    if (IsDigit(number[place])) {
      places.push_back(place);
    }
  }
  return places;
}

/// The keys to the sides of, above and below each digit on the block of digits.
constexpr std::array<std::string_view, 10> kOnBlock = {"12",   "240", "1350", "26",  "157",
                                                       "2468", "359", "48",   "579", "68"};
/// The keys beside each digit in the row above the letters.
constexpr std::array<std::string_view, 10> kInRow = {"9",  "2",  "13", "24", "35",
                                                     "46", "57", "68", "79", "80"};

std::string Exchanged(std::string number, const std::vector<std::size_t>& digits, Chance& chance) {
  if (digits.size() < 2) {
    return number;
  }
  const std::size_t first = chance.Below(digits.size() - 1);
  std::swap(number[digits[first]], number[digits[first + 1]]);
  return number;
}

std::string WithNeighbouringKey(std::string number, std::size_t place, Chance& chance) {
  const auto digit = static_cast<std::size_t>(number[place] - '0');
  const std::string_view keys = (chance.Below(2) == 0 ? kOnBlock : kInRow).at(digit);
  number[place] = keys[chance.Below(keys.size())];
  return number;
}

std::string WithOtherPoint(std::string number, Chance& chance) {
  const std::size_t point = number.find('.');
  if (point == std::string::npos) {
    return number;
  }
  number.erase(point, 1);
  if (chance.Below(2) == 0) {
    return number;
  }
  const bool toLeft = chance.Below(2) == 0 && point > 0 && IsDigit(number[point - 1]);
  return number.insert(toLeft ? point - 1 : point + 1 <= number.size() ? point + 1 : point, 1, '.');
}

}  // namespace

std::string WithSlip(std::string number, SlipKind kind, Chance& chance) {
  const std::vector<std::size_t> digits = PlacesOfDigits(number);
  if (digits.empty()) {
    return number;
  }
  const std::size_t place = digits[chance.Below(digits.size())];
  switch (kind) {
    case SlipKind::Exchanged:
      return Exchanged(std::move(number), digits, chance);
    case SlipKind::NeighbouringKey:
      return WithNeighbouringKey(std::move(number), place, chance);
    case SlipKind::DigitCount:
      return chance.Below(2) == 0 ? number.erase(place, 1) : number.insert(place, 1, number[place]);
    case SlipKind::Point:
      return WithOtherPoint(std::move(number), chance);
    case SlipKind::RowLeftOut:
      break;
  }
  return number;
}

}  // namespace tarvell::bench
