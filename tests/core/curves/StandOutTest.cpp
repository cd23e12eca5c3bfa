// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <vector>

#include "core/curves/StandOut.h"

namespace tarvell {
namespace {

/// The places of the values of one line that stand out. All have the tolerance 1.
std::vector<std::size_t> OddPlaces(const std::vector<double>& numbers) {
  std::vector<CurveValue> values;
  CurveLine line;
  for (std::size_t place = 0; place < numbers.size(); ++place) {
    values.push_back({.y = numbers[place], .tolerance = 1});
    line.push_back({.x = static_cast<double>(place), .value = place});
  }
  std::vector<std::size_t> places;
  for (const OddValue& odd : ValuesThatStandOut(values, std::vector<CurveLine>{line})) {
    places.push_back(odd.value);
  }
  return places;
}

// Of 0.1 x², the neighbours of the first value suggest 0.1, -0.2 and -0.3: it may be 1 + 0.4 away
// from -0.2. A value between others may be 1 + 0.5 * 0.1 away from its suggestions.
TEST(ValuesThatStandOutOfALine, AreJudgedMoreMildlyAtItsEnd) {
  const std::vector<double> smooth = {0, 0.1, 0.4, 0.9, 1.6, 2.5, 3.6, 4.9};
  const auto with = [&](std::size_t place, double number) {
    std::vector<double> numbers = smooth;
    numbers[place] = number;
    return OddPlaces(numbers);
  };
  EXPECT_EQ(OddPlaces(smooth), std::vector<std::size_t>());
  EXPECT_EQ(with(0, 1.1), std::vector<std::size_t>()) << "1.3 away";
  EXPECT_EQ(with(0, 1.3), std::vector<std::size_t>{0}) << "1.5 away";
  EXPECT_EQ(with(4, 2.9), std::vector<std::size_t>{4}) << "1.3 away";
}

}  // namespace
}  // namespace tarvell
