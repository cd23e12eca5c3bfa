// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_GRIDCLIPBOARD_H
#define TARVELL_SCREENS_CALDATA_GRIDCLIPBOARD_H

#include <vector>

#include "core/caldata/PastedCells.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/CellRules.h"

namespace tarvell {

/// Copies the selected cells to the clipboard, as text with a TAB between columns and a line end
/// between rows, and as an HTML table. Whole rows have the captions above them, which name the
/// units. The clipboard stays as it is when no cell is selected.
void CopySelectedCells(const CalGrid& grid);

/// Whether the clipboard has more than one cell.
[[nodiscard]] bool ClipboardHasTable();

/// Stores the numbers of the clipboard in the cells from the first selected one downwards and to
/// the right, each as if it were typed into its cell, and selects these cells. If the clipboard has
/// whole rows of a table of points, shows a preview instead, and puts each point in its place when
/// the user accepts it. When one number cannot be stored, reports it and changes no cell. Returns
/// the cells that were stored.
std::vector<PastedCell> PasteIntoCells(CalGrid& grid, const CellRules& rules);

}  // namespace tarvell

#endif
