// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/history/WrittenBy.h"

namespace tarvell {

HistoryEvent WrittenBy(std::span<const HistoryEvent> events, const std::string& hash) {
  HistoryEvent unknown;
  if (events.empty()) {
    return unknown;
  }
  unknown.after = hash;
  for (; !events.empty(); events = events.first(events.size() - 1)) {
    const HistoryEvent& latest = events.back();
    if (latest.after == hash) {
      return latest;
    }
    if (latest.before != hash) {
      unknown.after = latest.after;
      break;
    }
  }
  return unknown;
}

}  // namespace tarvell
