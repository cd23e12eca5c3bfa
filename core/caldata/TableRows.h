// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_TABLEROWS_H
#define TARVELL_CORE_CALDATA_TABLEROWS_H

#include <cstddef>

namespace tarvell {

/// Rows of every table of a data file, and of `gCalFiles`.
inline constexpr std::size_t kTableRows = 51;

}  // namespace tarvell

#endif
