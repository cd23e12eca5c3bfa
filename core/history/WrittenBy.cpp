// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/history/WrittenBy.h"

namespace tarvell {

HistoryEvent WrittenBy(std::span<const HistoryEvent> events, const std::string& hash) {
  HistoryEvent unknown;
  for (auto event = events.rbegin(); event != events.rend(); ++event) {
    if (event->after == hash) {
      return *event;
    }
    if (event->before != hash) {
      unknown.after = event->after;
      return unknown;
    }
  }
  unknown.after = events.empty() ? std::string() : hash;
  return unknown;
}

}  // namespace tarvell
