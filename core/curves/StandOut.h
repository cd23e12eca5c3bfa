// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_STANDOUT_H
#define TARVELL_CORE_CURVES_STANDOUT_H

#include <cstddef>
#include <span>
#include <vector>

/// Which points of curves do not fit their neighbours.
namespace tarvell {

/// A value, and how far it may be away from what its neighbours suggest on the smoothest of curves.
struct CurveValue {
  double y = 0;
  double tolerance = 0;
};

/// A curve through some of the values. One value may be on several.
struct CurveStop {
  double x = 0;
  std::size_t value = 0;  ///< index of the value
};
using CurveLine = std::vector<CurveStop>;

struct OddValue {
  std::size_t value = 0;  ///< index of the value
  double expected = 0;    ///< what its neighbours suggest
};

/// The values that stand out, the worst first. The neighbours of a value suggest it in several
/// ways; it stands out when it is further from their median than its tolerance, than some times
/// what is usual on these curves, and than the ways differ. A value that stands out is then left
/// out, so that it does not spoil the judgement of its neighbours. Each line must be sorted by x.
/// Never more than a quarter of the values stand out, and none of fewer than five.
[[nodiscard]] std::vector<OddValue> ValuesThatStandOut(std::span<const CurveValue> values,
                                                       std::span<const CurveLine> lines);

}  // namespace tarvell

#endif
