// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_PASTEDTABLE_H
#define TARVELL_CORE_CALDATA_PASTEDTABLE_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/CalDataGrid.h"
#include "core/caldata/ClipboardTable.h"
#include "core/numbers/WrittenNumber.h"

/// A whole table of calibration points from the clipboard: each of its lines is a point and its
/// value. Lines may be in any order. Caption lines before the points may name their units.
namespace tarvell {

/// What a paste does to one row of a table.
struct PastedRow {
  enum class Change {
    Unchanged,  ///< the clipboard has the value that the row has
    Updated,    ///< the row gets another value
    Added,      ///< the table lacks the point
    Missing     ///< the clipboard lacks the point; the row is kept or removed
  };

  Change change = Change::Unchanged;
  std::vector<std::string> before;  ///< the row's cells, none for an added row
  std::vector<std::string> after;   ///< the row's cells after the paste, if it is kept
  /// Whether nobody has entered the value before; PastedTableFrom does not know it.
  bool isToEnter = false;
};

/// A table as it would be after a paste, with the rows that the clipboard lacks at their places.
struct PastedTable {
  /// How many frequencies have a unit of their own.
  enum class OwnUnits { None, Some, All };

  std::vector<PastedRow> rows;
  std::string_view frequencyUnit;  ///< of frequencies without a unit of their own
  bool isUnitNamed = false;        ///< whether a caption named that unit
  OwnUnits ownUnits = OwnUnits::None;
  DecimalSign sign = DecimalSign::Point;

  [[nodiscard]] std::size_t Count(PastedRow::Change change) const;
  /// Whether the file has a place for every row.
  [[nodiscard]] bool HasPlace(bool missingRemoved) const;
};

/// What a value cell of a row stores when `number` is typed into it.
using StoreValue = std::function<std::string(const std::string& number)>;

/// What pasting a table of points does to `grid`. Rows are matched as new points are. A row that
/// holds the pasted number already keeps its text, and a matched row keeps its point. `sign` is the
/// decimal sign where the text can be read in two ways.
///
/// Throws when not every line can be taken; the text of the error names every cell that cannot, in
/// these words.
[[nodiscard]] PastedTable PastedTableFrom(const CalDataGrid& grid, std::string_view text,
                                          const PointColumns& columns, const StoreValue& store,
                                          std::optional<DecimalSign> sign = std::nullopt,
                                          const RefusalWords& words = {});

}  // namespace tarvell

#endif
