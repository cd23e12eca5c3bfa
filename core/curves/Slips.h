// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_SLIPS_H
#define TARVELL_CORE_CURVES_SLIPS_H

#include <map>
#include <string>

#include "core/caldata/Cell.h"
#include "core/caldata/Origin.h"
#include "core/curves/PageRows.h"
#include "core/curves/SlipLimits.h"

/// Values that may be slips of typing. Nothing is refused for them: they are marked, so that the
/// user looks again.
namespace tarvell {

/// A page, and what it is judged by.
struct SlipInput {
  PageTable table;
  /// Defaults that nobody has entered are not judged, and no other value is judged by them.
  const CellOrigins& origins;
  /// The same page of an earlier calibration, nullptr if there is none.
  const PageTable* earlier = nullptr;
  SlipLimit limit;
};

struct Slips {
  std::map<Cell, std::string> marks;  ///< why each cell is marked, in a sentence
  std::string notice;                 ///< that a row may be left out or entered twice, else ""
};

/// A value that the earlier calibration has, too, is marked when its change is beyond the limit.
/// Another one is marked when it stands out from its neighbours on the curve; uncertainties are
/// not, because they go in steps. The notice is given when all values from some row on fit the
/// earlier calibration one row later or earlier, and, where there is no earlier one, when all
/// values of a column but the last were entered.
[[nodiscard]] Slips FindSlips(const SlipInput& input);

}  // namespace tarvell

#endif
