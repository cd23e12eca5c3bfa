// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_CURVESBESIDE_H
#define TARVELL_CORE_CURVES_CURVESBESIDE_H

#include <vector>

#include "core/caldata/Cell.h"
#include "core/curves/Curves.h"

namespace tarvell {

/// Those of a page's curves that are shown beside the table while this cell is current: the curves
/// of its column. Where the column has several units, they are those of the cell's own unit. Where
/// it has no curve, they are those of the first column that has values other than uncertainties.
[[nodiscard]] std::vector<Curve> CurvesBeside(std::vector<Curve> curves, Cell cell);

}  // namespace tarvell

#endif
