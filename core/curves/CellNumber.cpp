// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/CellNumber.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "core/numbers/Numbers.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::array<std::pair<std::string_view, double>, 5> kFactors = {{
    {"MHz", 1E6},
    {"GHz", 1E9},
    {"kHz", 1E3},
    {"mohm", 1E-3},
    {"kohm", 1E3},
}};

}  // namespace

std::optional<CellNumber> NumberOfCell(std::string_view cell) {
  // The inductance and the capacitance of a resistor have "Ls/" or "Cp/" before the number.
  const std::size_t slash = cell.find('/');
  const std::string_view text =
      Trim(slash == std::string_view::npos ? cell : cell.substr(slash + 1));
  const std::optional<LeadingNumber> number = LeadingNumberOf(text);
  if (!number || std::abs(number->value) > kLargestNumber) {
    return std::nullopt;
  }
  const std::size_t end = text.size() - number->after.size();
  return CellNumber{number->value, TrimRight(text.substr(0, end)), Trim(number->after)};
}

CaptionParts PartsOfCaption(std::string_view caption) {
  const std::size_t open = std::min(caption.find_first_of("[("), caption.size());
  const std::string_view rest = caption.substr(std::min(open + 1, caption.size()));
  return {Trim(caption.substr(0, open)),
          Trim(rest.substr(0, std::min(rest.find_first_of("])"), rest.size())))};
}

std::string WithUnit(const std::string& number, const std::string& unit) {
  return unit.empty() ? number : number + " " + unit;
}

double FactorOfUnit(std::string_view unit) {
  const auto* found =
      std::ranges::find(kFactors, unit, &std::pair<std::string_view, double>::first);
  return found == kFactors.end() ? 1 : found->second;
}

}  // namespace tarvell
