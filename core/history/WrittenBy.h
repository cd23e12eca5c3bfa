// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_HISTORY_WRITTENBY_H
#define TARVELL_CORE_HISTORY_WRITTENBY_H

#include <span>
#include <string>

#include "core/history/Journal.h"

namespace tarvell {

/// The change that has written the content with this hash, according to the latest of `events`,
/// which are those of one file. A change is noted before it happens: one that failed then has
/// written nothing, and left the content from before it.
///
/// If no change has written the content, only `after` is set, to the hash that the file should
/// have: to that of the content if it may be from before the first event, to "" if the file should
/// not exist or nothing is known of it.
[[nodiscard]] HistoryEvent WrittenBy(std::span<const HistoryEvent> events, const std::string& hash);

}  // namespace tarvell

#endif
