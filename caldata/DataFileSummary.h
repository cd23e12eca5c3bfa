// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CALDATA_DATAFILESUMMARY_H
#define TARVELL_CALDATA_DATAFILESUMMARY_H

#include <cstddef>
#include <limits>
#include <string_view>

#include "app/Replacement.h"

namespace tarvell {

/// What a data file of any model, or of a test kit, says: its header as the lists of serial numbers
/// show it, the serial numbers of its members, and the first `cells` cells of each data line.
[[nodiscard]] FileSummary SummaryOfDataFile(
    std::string_view bytes, std::size_t cells = std::numeric_limits<std::size_t>::max());

}  // namespace tarvell

#endif
