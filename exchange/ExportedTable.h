// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_EXPORTEDTABLE_H
#define TARVELL_EXCHANGE_EXPORTEDTABLE_H

#include <cstdint>
#include <string>
#include <vector>

#include "core/caldata/EditorState.h"
#include "core/caldata/Models.h"

namespace tarvell {

struct ExportedColumn {
  std::string caption;  ///< without a unit
  std::string unit;     ///< of all values; "" where they have several units, or none
};

/// A page without the texts around its numbers, such as "Ls/". Where a column has several units,
/// each value has its own.
struct ExportedTable {
  std::vector<ExportedColumn> columns;
  std::vector<std::vector<std::string>> rows;
};

[[nodiscard]] ExportedTable ExportedPage(const Model& model, const cifCaldata& data,
                                         std::int16_t page, const DraftPage& shown);

}  // namespace tarvell

#endif
