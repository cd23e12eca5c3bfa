// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_DOUBTFULROWS_H
#define TARVELL_CORE_CALDATA_DOUBTFULROWS_H

#include <bitset>
#include <cstddef>
#include <string>
#include <string_view>

#include "core/caldata/Cell.h"
#include "core/caldata/TableRows.h"

/// The rows of a table that are doubtful in its file.
namespace tarvell {

/// Rows of a table, counted from 0.
using RowSet = std::bitset<kTableRows>;

/// The rows as a message names them, counted from 1: "row 3", "rows 1, 4 and 6 to 9".
[[nodiscard]] std::string RowsText(const RowSet& rows);

/// The rows from `first` to the one before `end`.
[[nodiscard]] RowSet RowsBetween(std::size_t first, std::size_t end);

/// Whether one of the first `columns` fields of a data line, which are separated by ":", is blank
/// and has a value after it. Where a line is read word by word, that value moves to the left.
[[nodiscard]] bool HasEmptyField(std::string_view line, std::size_t columns);

/// The consequence of HasEmptyField where a line is read word by word.
inline constexpr std::string_view kValuesMovedLeft =
    "The values after it were read one column too far to the left";

/// The rows of one table of a file, by what is doubtful about them.
struct DoubtfulRows {
  std::size_t count = 0;  ///< rows that the file holds
  RowSet emptyField;      ///< rows with an empty field, by HasEmptyField
  RowSet missing;         ///< rows with fewer values than the table has columns
  RowSet beyond;          ///< rows after the last one that there are formats for

  /// Notes what is doubtful about a row of the file. What was noted about an earlier row in its
  /// place is forgotten.
  void Take(TableIndex index, bool hasEmptyField, bool isMissing, bool isBeyond = false);
};

}  // namespace tarvell

#endif
