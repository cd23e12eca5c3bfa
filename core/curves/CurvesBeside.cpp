// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/CurvesBeside.h"

#include <algorithm>
#include <functional>
#include <string>

namespace tarvell {

namespace {

/// The first curve of which this is true; nullptr if none.
const Curve* First(const std::vector<Curve>& curves,
                   const std::function<bool(const Curve& curve)>& isMeant) {
  const auto found = std::ranges::find_if(curves, isMeant);
  return found == curves.end() ? nullptr : &*found;
}

const Curve* Leading(const std::vector<Curve>& curves, Cell cell) {
  const Curve* curve = First(curves, [cell](const Curve& one) {
    return std::ranges::find(one.points, cell, &CurvePoint::cell) != one.points.end();
  });
  if (curve == nullptr) {
    curve = First(curves, [cell](const Curve& one) { return one.column == cell.column; });
  }
  if (curve == nullptr) {
    curve = First(curves, [](const Curve& one) { return !one.isUncertainty; });
  }
  return curve;
}

}  // namespace

std::vector<Curve> CurvesBeside(std::vector<Curve> curves, Cell cell) {
  const Curve* leading = Leading(curves, cell);
  if (leading == nullptr) {
    return {};
  }
  const auto column = leading->column;
  const std::string unit = leading->yUnit;
  std::erase_if(curves,
                [&](const Curve& curve) { return curve.column != column || curve.yUnit != unit; });
  return curves;
}

}  // namespace tarvell
