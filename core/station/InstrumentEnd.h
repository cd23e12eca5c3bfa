// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_STATION_INSTRUMENTEND_H
#define TARVELL_CORE_STATION_INSTRUMENTEND_H

#include <string>
#include <string_view>

namespace tarvell {

/// What LoadInstrumentFile does not get from the content of a file that lacks its end, the line
/// CAL DATA, in sentences: which line it did not read, and which fields have no value. "" for a
/// file that has its end.
[[nodiscard]] std::string NoticeOfMissingEnd(std::string_view bytes);

}  // namespace tarvell

#endif
