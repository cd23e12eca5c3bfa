// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_PAGEVALUES_H
#define TARVELL_CORE_CURVES_PAGEVALUES_H

#include <map>
#include <string>
#include <vector>

#include "core/caldata/Cell.h"
#include "core/curves/PageRows.h"
#include "core/curves/SlipLimits.h"

/// The numbers of a page, and how far each may be from what is expected.
namespace tarvell {

struct PageValue {
  double value = 0;      ///< an uncertainty in ppm as per cent
  double lastDigit = 0;  ///< one unit of the last decimal
  std::string unit;
};

using PageValues = std::map<Cell, PageValue>;

/// The values of a page, by cell. A cell without a number has none.
[[nodiscard]] PageValues ValuesOf(const PageTable& table, const std::vector<ValueColumn>& columns);

/// How far a value may be from the one in `cell` of `values`, which is on the same page.
[[nodiscard]] double LimitAt(const SlipLimit& limit, const ValueColumn& column, Cell cell,
                             const PageValues& values);

}  // namespace tarvell

#endif
