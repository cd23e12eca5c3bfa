// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_COMPAREDTABLES_H
#define TARVELL_CORE_CALDATA_COMPAREDTABLES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarvell {

/// The cells of a row, and the rows of a table, its captions first.
using TableRow = std::vector<std::string>;
using TableRowList = std::vector<TableRow>;

/// Rows of two tables of the same page side by side.
struct ComparedRow {
  TableRow earlier;  ///< empty if only the later table has the row
  TableRow later;    ///< the same of the later table
};

/// Aligns the rows of two tables by their first `keys` cells, which are the point or the name of a
/// row. Numbers that are written differently are the same. The order is that of the later table,
/// with the rows of the earlier one that it lacks in their places.
[[nodiscard]] std::vector<ComparedRow> ComparedRows(const TableRowList& earlier,
                                                    const TableRowList& later, std::size_t keys);

/// What a cell has become larger or smaller by, in the unit of the later one: "+0.4", "-0.02 pF".
/// "" if the two cells are equal, or differ in more than a number, or per cent and ppm.
[[nodiscard]] std::string CellDifference(std::string_view earlier, std::string_view later);

}  // namespace tarvell

#endif
