// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_TABLEROWS_H
#define TARVELL_CORE_CALDATA_TABLEROWS_H

#include <cstddef>
#include <cstdint>

/// The size of the tables.
namespace tarvell {

/// Rows of every table of a data file, and of `gCalFiles`.
inline constexpr std::size_t kTableRows = 51;

/// No page of any model shows more columns.
inline constexpr std::int16_t kTableColumns = 5;

}  // namespace tarvell

#endif
