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

/// The same as GetCalibrationDataFormat gives for a cell that holds `text`. A number that is too
/// large to be calculated with is given as it stands, so that it can be replaced.
[[nodiscard]] EditedCell EditedCellOf(const cifCaldata& data, std::int16_t page, Cell cell,
                                      const std::string& text);

/// The units to choose from in a column, none where there is no choice.
[[nodiscard]] std::vector<std::string> UnitsOf(const cifCaldata& data, std::int16_t page,
                                               std::int16_t column);

/// The one of `units` that a cell has whose text names `unit`; "" where there is no choice. A cell
/// that names none of them has the first one, as which it would be saved.
[[nodiscard]] std::string ChosenUnit(const std::vector<std::string>& units,
                                     const std::string& unit);

}  // namespace tarvell

#endif
