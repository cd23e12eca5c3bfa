// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_GRIDCLIPBOARD_H
#define TARVELL_SCREENS_CALDATA_GRIDCLIPBOARD_H

#include <vector>

#include "core/caldata/PastedCells.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/CellRules.h"

namespace tarvell {

/// Puts the selected cells on the clipboard: columns separated by TAB, rows by line ends. Without
/// any the clipboard stays as it is.
void CopySelectedCells(const CalGrid& grid);

/// Stores the numbers on the clipboard in the cells from the selection's first one (the current
/// cell, unless more are selected) downwards and to the right, each as if it were typed into its
/// cell, and selects them. When one of them cannot be stored, that is reported and no cell changes.
/// Returns the cells that were stored.
std::vector<PastedCell> PasteIntoCells(CalGrid& grid, const CellRules& rules);

}  // namespace tarvell

#endif
