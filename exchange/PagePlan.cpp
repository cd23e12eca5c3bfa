// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/PagePlan.h"

#include <algorithm>
#include <cstddef>

#include "core/caldata/TableRows.h"
#include "exchange/PointRows.h"
#include "exchange/SetRows.h"

namespace tarvell {

bool PagePlan::IsEmpty() const {
  return std::ranges::all_of(rows, [](const PlannedRow& row) { return row.taken.empty(); });
}

bool PagePlan::HasPlace(bool missingRemoved) const {
  const auto kept = std::ranges::count_if(rows, [&](const PlannedRow& row) {
    return !missingRemoved || row.row.change != PastedRow::Change::Missing;
  });
  return kept <= static_cast<std::ptrdiff_t>(kTableRows);
}

PagePlan PlanPage(const PageSource& source) {
  return HasPages(source.model) ? PlanSetRows(source) : PlanPoints(source);
}

bool IsNearPage(const PageSource& source) {
  return AreNearSetRows(source);
}

}  // namespace tarvell
