// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_CHANGE_H
#define TARVELL_CORE_CURVES_CHANGE_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/Cell.h"
#include "core/curves/PageRows.h"

/// A page compared with the same page of an earlier calibration.
namespace tarvell {

/// What became of a value.
struct CellChange {
  std::string earlier;     ///< the text of the earlier cell
  std::string difference;  ///< "-0.4", "+0.001 ohm"; "" where the two cannot be subtracted
};

struct PageChange {
  /// The cells that hold values, of the rows whose point both calibrations have.
  std::map<Cell, CellChange> cells;
  std::vector<std::string> onlyNow;      ///< names of the points that only this calibration has
  std::vector<std::string> onlyEarlier;  ///< names of those that only the earlier one has
};

/// Compares the same page of two calibrations of one model.
[[nodiscard]] PageChange ChangeOf(const PageTable& now, const PageTable& earlier);

/// `now` minus `earlier`, the texts of two cells: with the unit of the table, and with the decimals
/// of the one that has more. "" unless both hold a number, in the same unit or in per cent and ppm.
[[nodiscard]] std::string DifferenceText(std::string_view now, std::string_view earlier);

/// The points that only one of the two has, in sentences; "" if there are none.
[[nodiscard]] std::string PointsOfOneOnly(const PageChange& change);

}  // namespace tarvell

#endif
