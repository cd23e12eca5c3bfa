// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/history/KeptVersions.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <span>
#include <system_error>
#include <utility>

#include "core/files/FileIOCommonModule.h"
#include "core/files/FolderNames.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/files/SaveFile.h"
#include "core/history/WrittenBy.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/platform/SystemName.h"
#include "core/text/Sha256.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

bool MeansMissing(std::error_code code) {
  return code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory;
}

/// What the journal says about the file of the place, or about every file of its tree.
Journal JournalOf(const HistoryPlace& place) {
  std::string bytes;
  const std::error_code code = ReadNativeFile(place.Journal(), bytes);
  if (code && !MeansMissing(code)) {
    throw SystemError(code, "read the journal of the history", PathText(place.Journal()));
  }
  return ReadJournal(bytes, place.name.empty() ? std::string() : place.File());
}

void CheckListed(std::error_code code, const std::filesystem::path& folder) {
  if (code && !MeansMissing(code)) {
    throw SystemError(code, "list the history", PathText(folder));
  }
}

std::set<std::string> NamesIn(const std::filesystem::path& folder) {
  std::set<std::string> names;
  CheckListed(ListNames(folder, names), folder);
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

/// The state of a content that should have this hash, "" if nobody knows.
VersionState StateBy(const std::string& bytes, std::error_code error, std::string_view hash) {
  if (error) {
    return MeansMissing(error) ? VersionState::Missing : VersionState::Unreadable;
  }
  if (hash.empty()) {
    return VersionState::NoJournal;
  }
  return Sha256(bytes) == hash ? VersionState::AsKept : VersionState::Changed;
}

/// The state of a version whose copy has this one.
VersionState StateByCopy(VersionState copy, bool wasSaved) {
  return copy == VersionState::AsKept && !wasSaved ? VersionState::NotSaved : copy;
}

/// Adds versions that the journal does not know, in the order of their times, to those that it
/// knows. These stay in its order: the clocks of two hosts may differ.
void InsertByTime(std::vector<KeptVersion> unknown, std::vector<KeptVersion>& versions) {
  std::vector<KeptVersion> known = std::exchange(versions, {});
  auto next = unknown.begin();
  for (KeptVersion& version : known) {
    for (; next != unknown.end() && next->event.time <= version.event.time; ++next) {
      versions.push_back(std::move(*next));
    }
    versions.push_back(std::move(version));
  }
  std::move(next, unknown.end(), std::back_inserter(versions));
}

/// The content of a version that is as it was kept, as far as anybody knows; nothing for others.
std::optional<std::string> WholeContent(const KeptVersion& version) {
  std::string bytes;
  const std::error_code error = ReadNativeFile(NativePath(version.path), bytes);
  const VersionState state = StateBy(bytes, error, version.event.before);
  const bool isWhole = state == VersionState::AsKept || state == VersionState::NoJournal;
  return isWhole ? std::optional(std::move(bytes)) : std::nullopt;
}

/// Whether the journal rules out that a whole version has the content with this hash, "" if
/// unknown.
bool RulesOut(const KeptVersion& version, std::string_view hash) {
  return !hash.empty() && !version.event.before.empty() && version.event.before != hash;
}

/// Leaves out what a save kept that was interrupted before it replaced the file: the file was still
/// the same after it. `hash` is that of the file now, "" if it is not known.
void LeaveOutUnfinished(FileHistory& history, std::string_view hash) {
  std::vector<KeptVersion>& versions = history.versions;
  const auto repeated = std::unique(
      versions.begin(), versions.end(), [](const KeptVersion& later, const KeptVersion& version) {
        if (RulesOut(later, version.event.before)) {
          return false;
        }
        const std::optional<std::string> content = WholeContent(version);
        return content && content == WholeContent(later);
      });
  versions.erase(repeated, versions.end());
  if (!versions.empty() && history.current && !RulesOut(versions.front(), hash) &&
      WholeContent(versions.front()) == history.current) {
    versions.erase(versions.begin());
  }
}

/// Reads the file itself.
void ReadCurrent(const std::string& path, FileHistory& history) {
  std::string bytes;
  if (!ReadNativeFile(NativePath(path), bytes)) {
    history.current = std::move(bytes);
  }
}

/// Whether a change had written what the last of these events has kept. The first event keeps what
/// was there before it.
bool WasSaved(std::span<const HistoryEvent> events) {
  const std::string& kept = events.back().before;
  const std::span<const HistoryEvent> earlier = events.first(events.size() - 1);
  return earlier.empty() || WrittenBy(earlier, kept).after == kept;
}

EntryFacts FactsOf(const std::filesystem::path& native) {
  EntryFacts facts;
  return CurrentPlatform().Facts(native, facts) ? EntryFacts() : facts;
}

/// The last event of each file of a tree, by its name in capital letters.
std::map<std::string, HistoryEvent> LastEvents(const HistoryPlace& tree) {
  std::map<std::string, HistoryEvent> last;
  for (HistoryEvent& event : JournalOf(tree).events) {
    std::string name = ToUpper(event.file);
    last[std::move(name)] = std::move(event);
  }
  return last;
}

}  // namespace

std::string_view TextOf(VersionState state) {
  switch (state) {
    case VersionState::AsKept:
      break;
    case VersionState::Changed:
      return "Changed by hand: it is not what the program saved.";
    case VersionState::NotSaved:
      return "Not saved as the journal says: it was changed by hand before it was replaced, or "
             "saved without the history.";
    case VersionState::Missing:
      return "Missing: its file was removed by hand.";
    case VersionState::Unreadable:
      return "Unreadable: its file is there, but it cannot be read.";
    case VersionState::NoJournal:
      return "Not in the journal: whether it was changed is unknown.";
  }
  return "";
}

VersionState StateOfCurrent(const std::string& path, const HistoryEvent& event) {
  std::string bytes;
  const std::error_code error = ReadNativeFile(NativePath(path), bytes);
  return StateBy(bytes, error, event.after);
}

VersionState StateOfKept(const std::string& path, const HistoryEvent& event, bool wasSaved) {
  std::string bytes;
  const std::error_code error = ReadNativeFile(NativePath(path), bytes);
  return StateByCopy(StateBy(bytes, error, event.before), wasSaved);
}

FileHistory HistoryOf(const std::string& path) {
  FileHistory history;
  const HistoryPlace place = HistoryPlaceOf(path);
  Journal journal;
  if (HasHistory(place.Tree())) {
    journal = JournalOf(place);
  }
  history.damagedLines = journal.damagedLines;
  ReadCurrent(path, history);
  history.versions = VersionsIn(place, journal.events);
  std::string hash;
  if (history.current && (!journal.events.empty() || !history.versions.empty())) {
    hash = Sha256(*history.current);
    history.written = WrittenBy(journal.events, hash);
  }
  LeaveOutUnfinished(history, hash);
  return history;
}

std::vector<KeptVersion> VersionsIn(const HistoryPlace& place,
                                    std::span<const HistoryEvent> events) {
  const std::filesystem::path folder = place.Versions();
  const std::string text = PathText(folder);
  std::set<std::string> names = NamesIn(folder);
  std::vector<KeptVersion> versions;
  versions.reserve(events.size());
  for (std::size_t i = 0; i < events.size(); ++i) {
    const HistoryEvent& event = events[i];
    if (!event.kept.empty()) {
      names.erase(event.kept);
      versions.push_back({Joined(text, event.kept), event, WasSaved(events.first(i + 1))});
    }
  }
  // Those that are left are not in the journal.
  std::vector<KeptVersion> unknown;
  unknown.reserve(names.size());
  for (const std::string& name : names) {
    unknown.push_back({Joined(text, name), EventNamed(name)});
  }
  InsertByTime(std::move(unknown), versions);
  std::ranges::reverse(versions);
  return versions;
}

std::vector<LostFile> LostFiles(const std::string& root, const std::string& folder,
                                const DamageCheck& isDamaged) {
  HistoryPlace place = {NativePath(root), "", ""};
  std::vector<LostFile> lost;
  if (!HasHistory(place.Tree())) {
    return lost;
  }
  const std::map<std::string, HistoryEvent> events = LastEvents(place);
  const std::string tree = PathText(place.Tree());
  for (const std::string& name : NamesIn(place.Tree())) {
    const bool isWanted = folder.empty() || EqualsIgnoringCase(name, folder);
    const std::filesystem::path files = place.Tree() / SystemName(name);
    if (!isWanted || FactsOf(files).kind != EntryKind::Folder) {
      continue;
    }
    for (const std::string& file : NamesIn(files)) {
      const std::string path = Joined(Joined(root, name), file);
      const std::set<std::string> kept = NamesIn(files / SystemName(file));
      if (kept.empty()) {
        continue;
      }
      const auto found = events.find(ToUpper(name + "/" + file));
      const HistoryEvent event = found == events.end() ? HistoryEvent() : found->second;
      const std::string& last = kept.contains(event.kept) ? event.kept : *kept.rbegin();
      const std::string newest = Joined(Joined(Joined(tree, name), file), last);
      const EntryFacts facts = FactsOf(NativePath(path));
      if (facts.kind == EntryKind::None && !facts.isLink) {
        lost.push_back({path, newest, event});
      } else if (facts.kind == EntryKind::File && isDamaged && isDamaged(path, newest)) {
        lost.push_back({path, newest, event, true});
      }
    }
  }
  std::ranges::stable_sort(lost, std::greater(),
                           [](const LostFile& file) { return file.last.time; });
  return lost;
}

void PutBack(const std::string& version, const std::string& path, Earlier earlier) {
  std::string bytes;
  if (const std::error_code code = ReadNativeFile(NativePath(version), bytes)) {
    throw SystemError(code, "read the version", version);
  }
  if (const std::string folder(FolderOf(path)); !FolderExists(folder)) {
    MakeFolder(folder);
  }
  if (earlier == Earlier::Keep) {
    SaveWithHistory(path, bytes, kPutBack);
  } else {
    SaveFile(path, bytes);
  }
}

}  // namespace tarvell
