// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/Uncertainty.h"

#include <cstddef>

#include "core/numbers/Numbers.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// A field of this many characters or more is in ppm.
constexpr std::size_t kPpmFieldCharacters = 6;
constexpr double kPpmPerPercent = 10000;

double NumberOf(std::string_view text, std::string_view ppmEnds) {
  return RoundedTo15Digits(NumericValue(SplitUncertainty(Trim(text), ppmEnds).number));
}

}  // namespace

UncertaintyText SplitUncertainty(std::string_view cell, std::string_view ppmEnds) {
  if (cell.ends_with(kPercent)) {
    return {WithoutLast(cell, kPercent.size()), kPercent};
  }
  if (!cell.empty() && ppmEnds.find(cell.back()) != std::string_view::npos) {
    return {WithoutLast(cell, kPpm.size()), LastCharacters(cell, kPpm.size())};
  }
  return {cell, {}};
}

double PpmOfPercent(double percent) {
  return RoundedTo15Digits(percent * kPpmPerPercent);
}

void CheckPercent(double percent) {
  static_cast<void>(PpmOfPercent(percent));
}

Uncertainty UncertaintyOfField(std::string_view field, std::string_view ppmEnds) {
  const double percent = NumberOf(field, ppmEnds);
  if (CharacterCount(field) >= kPpmFieldCharacters) {
    return {PpmOfPercent(percent), kPpm};
  }
  return {percent, kPercent};
}

std::string FieldOfUncertainty(std::string_view cell, std::string_view ppmEnds,
                               const NumberPattern& pattern) {
  if (cell.ends_with(kPercent)) {
    return std::string(WithoutLast(cell, 2));
  }
  return pattern.Format(NumberOf(cell, ppmEnds) / kPpmPerPercent);
}

}  // namespace tarvell
