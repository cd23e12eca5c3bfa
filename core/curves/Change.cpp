// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/Change.h"

#include <cstddef>
#include <optional>
#include <set>

#include "core/curves/CellNumber.h"
#include "core/numbers/DecimalDifference.h"
#include "core/text/Text.h"

namespace tarvell {

PageChange ChangeOf(const PageTable& now, const PageTable& earlier) {
  PageChange change;
  const std::vector<ValueColumn> columns = ValueColumnsOf(now);
  const auto partners = EarlierRows(now, earlier);
  std::set<GridRow> found;
  for (std::size_t index = 0; index < partners.size(); ++index) {
    const GridRow row = RowOf({index});
    if (!partners[index]) {
      change.onlyNow.push_back(PointName(now, row));
      continue;
    }
    found.insert(*partners[index]);
    for (const ValueColumn& column : columns) {
      const std::string text = now.grid.TextOf({row, column.column});
      const std::string before = earlier.grid.TextOf({*partners[index], column.column});
      change.cells[{row, column.column}] = {before, DifferenceText(text, before)};
    }
  }
  for (GridRow row = kFirstDataRow; row < EndOf(earlier.grid); ++row) {
    if (!found.contains(row)) {
      change.onlyEarlier.push_back(PointName(earlier, row));
    }
  }
  std::erase(change.onlyNow, "");
  std::erase(change.onlyEarlier, "");
  return change;
}

std::string DifferenceText(std::string_view now, std::string_view earlier) {
  const std::optional<CellNumber> later = NumberOfCell(now);
  const std::optional<CellNumber> before = NumberOfCell(earlier);
  if (!later || !before) {
    return {};
  }
  const std::string difference =
      SignedDifference({later->text, later->unit}, {before->text, before->unit});
  return difference.empty() ? difference : WithUnit(difference, std::string(later->unit));
}

std::string PointsOfOneOnly(const PageChange& change) {
  std::string text;
  if (!change.onlyNow.empty()) {
    text = "Only this calibration has " + Listed(change.onlyNow) + ".";
  }
  if (!change.onlyEarlier.empty()) {
    text += (text.empty() ? "" : " ");
    text += "Only the earlier calibration has " + Listed(change.onlyEarlier) + ".";
  }
  return text;
}

}  // namespace tarvell
