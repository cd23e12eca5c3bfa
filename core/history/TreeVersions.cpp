// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/history/TreeVersions.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

#include "core/files/FolderNames.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
#include "core/platform/SystemName.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

std::set<std::string> NamesIn(const std::filesystem::path& folder) {
  std::set<std::string> names;
  static_cast<void>(ListNames(folder, names));
  return names;
}

}  // namespace

TreeVersions::TreeVersions(const std::string& root)
    : place_{NativePath(root), "", ""}, folders_(NamesIn(place_.Tree())) {}

std::set<std::string> TreeVersions::FilesIn(const std::string& folder) const {
  std::set<std::string> files;
  const auto same = [&](const std::string& name) { return EqualsIgnoringCase(name, folder); };
  const auto found =
      folders_.contains(folder) ? folders_.find(folder) : std::ranges::find_if(folders_, same);
  if (found != folders_.end()) {
    for (const std::string& name : NamesIn(place_.Tree() / SystemName(*found))) {
      files.insert(ToUpper(name));
    }
  }
  return files;
}

std::vector<KeptVersion> TreeVersions::Of(const std::string& folder,
                                          const std::string& file) const {
  std::call_once(isRead_, [this] { ReadJournalOnce(); });
  HistoryPlace place = place_;
  place.folder = folder;
  place.name = file;
  const auto events = events_.find(ToUpper(place.File()));
  try {
    return VersionsIn(place,
                      events == events_.end() ? std::vector<HistoryEvent>() : events->second);
  } catch (const Error&) {
    // As for an editor, which works without the history.
    return {};
  }
}

void TreeVersions::ReadJournalOnce() const {
  std::string bytes;
  if (ReadNativeFile(place_.Journal(), bytes)) {
    return;
  }
  std::string_view rest = bytes;
  while (!rest.empty()) {
    std::optional<HistoryEvent> event = EventOf(TakeLine(rest));
    if (event && !event->kept.empty()) {
      HistoryEvent& kept = events_[ToUpper(event->file)].emplace_back();
      kept.time = event->time;
      kept.kept = std::move(event->kept);
    }
  }
}

}  // namespace tarvell
