// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/CalDataGrid.h"

#include "core/text/Text.h"

namespace tarvell {

void AddCells(CalDataGrid& grid, std::span<const std::string> cells) {
  std::string text;
  for (const std::string& cell : cells) {
    text += Replaced(cell, '\t', ' ') + "\t";
  }
  grid.AddRow(WithoutLast(text, 1));
}

}  // namespace tarvell
