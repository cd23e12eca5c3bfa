// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_SHIFT_H
#define TARVELL_CORE_CURVES_SHIFT_H

#include <cstddef>
#include <optional>
#include <vector>

/// Columns of values that were typed one row too early or too late.
namespace tarvell {

/// A row of a column, in the order of the table.
struct ShiftRow {
  std::optional<double> now;      ///< the value that was entered
  std::optional<double> earlier;  ///< that of the earlier calibration at the same point
  double limit = 0;               ///< how far a value may be from `earlier`
};

struct Shift {
  std::size_t first = 0;   ///< the first row whose value belongs to another row
  bool isLeftOut = false;  ///< whether a row was left out, otherwise one was entered twice
};

/// Where the values from some row on to the last that was entered all fit the earlier calibration
/// one row later or earlier. At least two of them must be outside the limit in their own rows.
/// Where neighbours differ by less than the limit, at least four must fit the other rows several
/// times better than their own, while the rows before them fit their own.
[[nodiscard]] std::optional<Shift> FindShift(const std::vector<ShiftRow>& rows);

}  // namespace tarvell

#endif
