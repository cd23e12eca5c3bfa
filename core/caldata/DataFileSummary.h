// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_DATAFILESUMMARY_H
#define TARVELL_CORE_CALDATA_DATAFILESUMMARY_H

#include <cstddef>
#include <limits>
#include <string_view>

#include "core/files/Replacement.h"

namespace tarvell {

/// What a data file of any model says: its header as the lists of serial numbers show it, the
/// serial numbers of its members, and the first `cells` cells of each data line. Its serial number
/// is the one that a load gives. It is in the old style where a load would take it for such a file.
[[nodiscard]] FileSummary SummaryOfDataFile(
    std::string_view bytes, std::size_t cells = std::numeric_limits<std::size_t>::max());

/// The same of a test kit's file, whose serial number is its second item; of a line "#SER_NO", the
/// text after it.
[[nodiscard]] FileSummary SummaryOfKitFile(std::string_view bytes);

}  // namespace tarvell

#endif
