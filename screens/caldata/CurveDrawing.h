// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CURVEDRAWING_H
#define TARVELL_SCREENS_CALDATA_CURVEDRAWING_H

#include <QString>

#include <vector>

#include "core/curves/Curves.h"
#include "screens/curve/CurvePlot.h"

namespace tarvell {

/// Curves that are shown together.
struct ShownCurves {
  QString subject = {};  ///< another one shows the whole curve again
  std::vector<Curve> curves = {};
  std::vector<Curve> earlier = {};  ///< dashed below them
  QString earlierName = {};         ///< for the legend
};

/// How they are drawn: the earlier ones first, and in the look of the curve that each belongs to.
[[nodiscard]] Drawing DrawingOf(const ShownCurves& shown);

}  // namespace tarvell

#endif
