// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_DATAFILESUMMARY_H
#define TARVELL_CORE_CALDATA_DATAFILESUMMARY_H

#include <cstddef>
#include <limits>
#include <string_view>

#include "core/history/Replacement.h"

namespace tarvell {

/// What a data file of any model holds: its header as the lists of serial numbers show it, the
/// serial numbers of its members, and the first `cells` cells of each data line. The serial number
/// is the one that a load would read. The file is taken for one in the old style if a load would do
/// so.
[[nodiscard]] FileSummary SummaryOfDataFile(
    std::string_view bytes, std::size_t cells = std::numeric_limits<std::size_t>::max());

/// The same of a test kit's file. Its serial number is the second item or, if that is a line
/// "#SER_NO", the text after this keyword.
[[nodiscard]] FileSummary SummaryOfKitFile(std::string_view bytes);

}  // namespace tarvell

#endif
