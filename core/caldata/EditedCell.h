// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_EDITEDCELL_H
#define TARVELL_CORE_CALDATA_EDITEDCELL_H

#include <cstdint>
#include <string>
#include <vector>

#include "core/caldata/cifCaldata.h"

/// What an editor shows when a cell is opened.
namespace tarvell {

/// The text to edit of a cell, and the unit that the cell's text names.
struct EditedCell {
  std::string text;
  std::string unit;
};

/// What to edit for a cell that holds `text`, by GetCalibrationDataFormat. A number that is too
/// large to be calculated with keeps its text, so that the user can replace it.
[[nodiscard]] EditedCell EditedCellOf(const cifCaldata& data, std::int16_t page, Cell cell,
                                      const std::string& text);

/// The units to choose from in a column, none where there is no choice.
[[nodiscard]] std::vector<std::string> UnitsOf(const cifCaldata& data, std::int16_t page,
                                               std::int16_t column);

/// The one of `units` to show for a cell whose text names `unit`; "" where there is no choice. For
/// a cell that names none of them it is the first one, because the cell would be saved with that.
[[nodiscard]] std::string ChosenUnit(const std::vector<std::string>& units,
                                     const std::string& unit);

}  // namespace tarvell

#endif
