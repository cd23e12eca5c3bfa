// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/history/KeptVersions.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/files/SaveFile.h"
#include "core/history/Sha256.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"

namespace tarvell {

namespace {

bool MeansMissing(std::error_code code) {
  return code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory;
}

Journal JournalOf(const HistoryPlace& place) {
  std::string bytes;
  const std::error_code code = ReadNativeFile(place.Journal(), bytes);
  if (code && !MeansMissing(code)) {
    throw SystemError(code, "read the journal of the history", PathText(place.Journal()));
  }
  return ReadJournal(bytes, place.File());
}

std::set<std::string> NamesIn(const std::filesystem::path& folder) {
  std::set<std::string> names;
  const std::error_code code =
      CurrentPlatform().Search(folder, SearchKind::EveryName, [&](const FoundEntry& entry) {
        names.insert(entry.name);
        return true;
      });
  if (code && !MeansMissing(code)) {
    throw SystemError(code, "list the history", PathText(folder));
  }
  return names;
}

/// What the name of a kept file says ("20260305T140307Z-anna" or "20260305T140307Z.2-anna"), for
/// one that no line of the journal is about.
HistoryEvent EventNamed(const std::string& name) {
  HistoryEvent event;
  event.kept = name;
  constexpr std::size_t kTimeLength = 16;
  if (name.size() > kTimeLength) {
    std::string time = name.substr(0, kTimeLength);
    for (const auto& [place, separator] : {std::pair(4, "-"), {7, "-"}, {13, ":"}, {16, ":"}}) {
      time.insert(static_cast<std::size_t>(place), separator);
    }
    event.time = UtcTimeOf(time).value_or(0);
    event.user = name.substr(std::min(name.find('-'), name.size() - 1) + 1);
  }
  return event;
}

KeptVersion Read(const std::filesystem::path& folder, HistoryEvent event, bool isInJournal) {
  KeptVersion version;
  const std::filesystem::path native = folder / event.kept;
  version.path = PathText(native);
  const std::error_code code = ReadNativeFile(native, version.bytes);
  version.state = MeansMissing(code)                      ? VersionState::Missing
                  : code                                  ? VersionState::Changed
                  : !isInJournal                          ? VersionState::NoJournal
                  : Sha256(version.bytes) == event.before ? VersionState::AsKept
                                                          : VersionState::Changed;
  version.event = std::move(event);
  return version;
}

/// Leaves out what a save kept that was interrupted before it replaced the file: the file was still
/// the same after it.
void LeaveOutUnfinished(FileHistory& history) {
  const auto isWhole = [](const KeptVersion& version) {
    return version.state == VersionState::AsKept || version.state == VersionState::NoJournal;
  };
  std::vector<KeptVersion>& versions = history.versions;
  const auto repeated = std::unique(
      versions.begin(), versions.end(), [&](const KeptVersion& later, const KeptVersion& version) {
        return later.bytes == version.bytes && isWhole(later) && isWhole(version);
      });
  versions.erase(repeated, versions.end());
  if (!versions.empty() && isWhole(versions.front()) && versions.front().bytes == history.current) {
    versions.erase(versions.begin());
  }
}

/// Reads the file itself.
void ReadCurrent(const std::string& path, FileHistory& history) {
  std::string bytes;
  const std::error_code code = ReadNativeFile(NativePath(path), bytes);
  if (code) {
    return;
  }
  const std::string hash = Sha256(bytes);
  // A save that was interrupted leaves the content from before it.
  const bool isAsSaved = hash == history.last.after || hash == history.last.before;
  history.currentState = history.last.time == 0 ? VersionState::NoJournal
                         : isAsSaved            ? VersionState::AsKept
                                                : VersionState::Changed;
  history.current = std::move(bytes);
}

}  // namespace

std::string_view TextOf(VersionState state) {
  switch (state) {
    case VersionState::AsKept:
      break;
    case VersionState::Changed:
      return "Changed by hand: it is not what the program saved.";
    case VersionState::Missing:
      return "Missing: its file was removed by hand.";
    case VersionState::NoJournal:
      return "Not in the journal: whether it was changed is unknown.";
  }
  return "";
}

FileHistory HistoryOf(const std::string& path) {
  FileHistory history;
  const HistoryPlace place = HistoryPlaceOf(path);
  Journal journal;
  if (HasHistory(place.Tree())) {
    journal = JournalOf(place);
  }
  history.damagedLines = journal.damagedLines;
  if (!journal.events.empty()) {
    history.last = journal.events.back();
  }
  ReadCurrent(path, history);
  const std::filesystem::path folder = place.Versions();
  std::set<std::string> names = NamesIn(folder);
  for (const HistoryEvent& event : journal.events) {
    names.erase(event.kept);
  }
  for (const std::string& name : names) {
    history.versions.push_back(Read(folder, EventNamed(name), false));
  }
  for (HistoryEvent& event : journal.events) {
    if (!event.kept.empty()) {
      history.versions.push_back(Read(folder, std::move(event), true));
    }
  }
  // In the same second the journal knows the order.
  std::ranges::stable_sort(history.versions, {},
                           [](const KeptVersion& version) { return version.event.time; });
  std::ranges::reverse(history.versions);
  LeaveOutUnfinished(history);
  return history;
}

void PutBack(const std::string& version, const std::string& path, Earlier earlier) {
  std::string bytes;
  if (const std::error_code code = ReadNativeFile(NativePath(version), bytes)) {
    throw SystemError(code, "read the version", version);
  }
  if (earlier == Earlier::Keep) {
    SaveWithHistory(path, bytes, kPutBack);
  } else {
    SaveFile(path, bytes);
  }
}

}  // namespace tarvell
