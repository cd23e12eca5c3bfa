// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/StandOut.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace tarvell {

namespace {

/// A residual that is this many times the usual one is not noise.
constexpr double kTimesUsual = 5;
/// How much of the difference between the suggestions is allowed in addition.
constexpr double kShareOfSpread = 0.5;
/// The same at the end of a curve, where the suggestions are only guesses.
constexpr double kShareOfSpreadAtEnd = 1;
/// A suggestion whose weights are larger would magnify the noise of its neighbours too much.
constexpr double kLargestWeights = 3.5;
/// Most values are on two lines, with three suggestions on each.
constexpr std::size_t kUsualSuggestions = 6;

double MedianOf(std::vector<double> numbers) {
  const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
  std::ranges::nth_element(numbers, middle);
  if (numbers.size() % 2 == 1) {
    return *middle;
  }
  return (*middle + *std::max_element(numbers.begin(), middle)) / 2;
}

/// A neighbour on a line.
struct Neighbour {
  double x = 0;
  double y = 0;
};

/// The polynomial through the neighbours, at x; nothing where it would magnify noise, or where two
/// of them have the same x.
template <std::size_t Count>
std::optional<double> Suggested(double x, const std::array<Neighbour, Count>& neighbours) {
  double sum = 0;
  double weights = 0;
  for (std::size_t i = 0; i < Count; ++i) {
    double weight = 1;
    for (std::size_t j = 0; j < Count; ++j) {
      if (j != i) {
        weight *= (x - neighbours.at(j).x) / (neighbours.at(i).x - neighbours.at(j).x);
      }
    }
    sum += weight * neighbours.at(i).y;
    weights += std::abs(weight);
  }
  // The comparison fails for a weight that is not a number.
  return weights <= kLargestWeights ? std::optional<double>(sum) : std::nullopt;
}

/// What the neighbours of each value suggest, while some values are left out.
class Judge {
 public:
  Judge(std::span<const CurveValue> values, std::span<const CurveLine> lines)
      : values_(values),
        lines_(lines),
        isLeftOut_(values.size(), false),
        suggestions_(values.size()) {
    for (std::vector<double>& suggestions : suggestions_) {
      suggestions.reserve(kUsualSuggestions);
    }
  }

  /// The value that stands out most, nothing if none does. It is left out from now on.
  std::optional<OddValue> TakeWorst() {
    Suggest();
    std::optional<std::size_t> worst;
    double worstShare = 0;
    for (std::size_t index = 0; index < values_.size(); ++index) {
      if (!IsJudged(index)) {
        continue;
      }
      const double share = Share(index, 1);
      if (!worst || share > worstShare) {
        worst = index;
        worstShare = share;
      }
    }
    // The judgement below allows at least this much.
    if (!worst || ShareOf(*worst, 1, kShareOfSpread) <= 1) {
      return std::nullopt;
    }
    // In a short table one wrong value makes most of the others look unusual.
    const OddValue odd = {*worst, MedianOf(suggestions_[*worst])};
    const auto suggestions = suggestions_[*worst];
    const double vaguest = vaguest_[*worst];
    const bool isAtEnd = isAtEnd_[*worst];
    isLeftOut_[*worst] = true;
    Suggest();
    const double usual = std::max(1.0, kTimesUsual * UsualShare());
    suggestions_[*worst] = suggestions;
    vaguest_[*worst] = vaguest;
    isAtEnd_[*worst] = isAtEnd;
    return Share(*worst, usual) > 1 ? std::optional<OddValue>(odd) : std::nullopt;
  }

 private:
  /// A single suggestion could come from a neighbour that is itself wrong.
  [[nodiscard]] bool IsJudged(std::size_t index) const {
    return !isLeftOut_[index] && suggestions_[index].size() > 1;
  }

  [[nodiscard]] double Residual(std::size_t index) const {
    return values_[index].y - MedianOf(suggestions_[index]);
  }

  /// How far a value is from what its neighbours suggest, as a share of what is allowed.
  [[nodiscard]] double Share(std::size_t index, double tolerances) const {
    return ShareOf(index, tolerances, isAtEnd_[index] ? kShareOfSpreadAtEnd : kShareOfSpread);
  }

  [[nodiscard]] double ShareOf(std::size_t index, double tolerances, double ofSpread) const {
    const auto [low, high] = std::ranges::minmax(suggestions_[index]);
    return std::abs(Residual(index)) / (tolerances * Tolerance(index) + ofSpread * (high - low));
  }

  /// A suggestion is not better than the neighbours that it comes from.
  [[nodiscard]] double Tolerance(std::size_t index) const {
    return std::max(values_[index].tolerance, vaguest_[index]);
  }

  /// The median residual, as a share of the tolerances.
  [[nodiscard]] double UsualShare() const {
    std::vector<double> shares;
    for (std::size_t index = 0; index < values_.size(); ++index) {
      if (IsJudged(index)) {
        shares.push_back(std::abs(Residual(index)) / Tolerance(index));
      }
    }
    return shares.empty() ? 0 : MedianOf(std::move(shares));
  }

  void Suggest() {
    std::ranges::for_each(suggestions_, &std::vector<double>::clear);
    vaguest_.assign(values_.size(), 0);
    isAtEnd_.assign(values_.size(), false);
    for (const CurveLine& line : lines_) {
      CurveLine left;
      std::ranges::copy_if(line, std::back_inserter(left),
                           [&](const CurveStop& stop) { return !isLeftOut_[stop.value]; });
      for (std::size_t place = 0; place < left.size(); ++place) {
        SuggestAt(left, place);
      }
    }
  }

  void SuggestAt(const CurveLine& line, std::size_t place) {
    const auto at = [&](std::size_t index) {
      return Neighbour{line[index].x, values_[line[index].value].y};
    };
    const std::size_t after = line.size() - 1 - place;
    for (std::size_t near = place - std::min<std::size_t>(place, 1);
         near <= place + std::min<std::size_t>(after, 1); ++near) {
      double& vaguest = vaguest_[line[place].value];
      vaguest = std::max(vaguest, values_[line[near].value].tolerance);
    }
    if (place >= 1 && after >= 1) {
      Add(line[place], std::array{at(place - 1), at(place + 1)});
    }
    if (place >= 2 && after >= 1) {
      Add(line[place], std::array{at(place - 2), at(place - 1), at(place + 1)});
    }
    if (place >= 1 && after >= 2) {
      Add(line[place], std::array{at(place - 1), at(place + 1), at(place + 2)});
    }
    if (place == 0 || after == 0) {
      isAtEnd_[line[place].value] = true;
      SuggestAtEnd(line, place, at);
    }
  }

  template <typename At>
  void SuggestAtEnd(const CurveLine& line, std::size_t place, const At& at) {
    const auto inward = [&](std::size_t steps) { return place == 0 ? steps : place - steps; };
    if (line.size() >= 2) {
      Add(line[place], std::array{at(inward(1))});
    }
    if (line.size() >= 3) {
      Add(line[place], std::array{at(inward(1)), at(inward(2))});
    }
    if (line.size() >= 4) {
      Add(line[place], std::array{at(inward(1)), at(inward(3))});
    }
  }

  template <std::size_t Count>
  void Add(const CurveStop& stop, const std::array<Neighbour, Count>& neighbours) {
    if (const auto suggested = Suggested(stop.x, neighbours)) {
      suggestions_[stop.value].push_back(*suggested);
    }
  }

  std::span<const CurveValue> values_;
  std::span<const CurveLine> lines_;
  std::vector<bool> isLeftOut_;
  std::vector<std::vector<double>> suggestions_;
  std::vector<bool> isAtEnd_;    ///< whether a value is at the end of one of its lines
  std::vector<double> vaguest_;  ///< the largest tolerance beside each value
};

}  // namespace

std::vector<OddValue> ValuesThatStandOut(std::span<const CurveValue> values,
                                         std::span<const CurveLine> lines) {
  constexpr std::size_t kShareThatMayStandOut = 4;
  // Fewer show no curve that one of them could leave.
  constexpr std::size_t kFewestValues = 5;
  std::vector<OddValue> odd;
  if (values.size() < kFewestValues) {
    return odd;
  }
  Judge judge(values, lines);
  while (odd.size() < (values.size() + kShareThatMayStandOut - 1) / kShareThatMayStandOut) {
    const std::optional<OddValue> worst = judge.TakeWorst();
    if (!worst) {
      break;
    }
    odd.push_back(*worst);
  }
  return odd;
}

}  // namespace tarvell
