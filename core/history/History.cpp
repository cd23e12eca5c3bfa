// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/history/History.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

#include "core/files/FileIOCommonModule.h"
#include "core/files/FileNames.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/files/SaveFile.h"
#include "core/platform/Error.h"
#include "core/platform/SystemName.h"
#include "core/platform/Waiting.h"
#include "core/text/Sha256.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr double kSecondsBetweenLooks = 0.02;
constexpr int kLooks = 250;  // five seconds

[[nodiscard]] Error NotKept(const std::string& reason, const std::filesystem::path& path) {
  return {ErrorKind::NotKept, reason, PathText(path)};
}

void Check(std::error_code code, const std::string& action, const std::filesystem::path& path) {
  if (code) {
    throw NotKept(SystemError(code, action, "").Text(), path);
  }
}

/// What is at `native`, where the history has a file or a folder. Throws for a link: the history
/// would grow, and be looked for, somewhere else.
EntryFacts OwnFacts(const std::filesystem::path& native, const std::string& what) {
  EntryFacts facts;
  Check(CurrentPlatform().Facts(native, facts), "use the " + what, native);
  if (facts.isLink) {
    throw NotKept("In the place of its " + what +
                      " there is a link, which may lead anywhere. Replace the link by a " + what +
                      ", then try again.",
                  native);
  }
  return facts;
}

/// Makes a folder that is still there after a power cut.
void MakeLastingFolder(const std::filesystem::path& folder) {
  if (OwnFacts(folder, "folder").kind == EntryKind::Folder) {
    return;
  }
  const std::error_code code = CurrentPlatform().MakeFolder(folder);
  // Another operator may have made it in the meantime.
  if (code != std::errc::file_exists) {
    Check(code, "make the folder", folder);
  }
  Check(CurrentPlatform().SyncFolder(folder.parent_path()), "make the folder", folder);
}

/// The name of a version that was replaced by this event: no other version of the file has it, and
/// it is valid on every system.
std::string FreeName(const std::filesystem::path& versions, const HistoryEvent& event) {
  std::string time = UtcText(event.time);
  std::erase_if(time, [](char c) { return c == '-' || c == ':'; });
  const std::string user = "-" + FileNamePart(event.user);
  std::string name = time + user;
  EntryFacts facts;
  for (int number = 2; !CurrentPlatform().Facts(versions / SystemName(name), facts) &&
                       (facts.kind != EntryKind::None || facts.isLink);
       ++number) {
    name = time + "." + std::to_string(number) + user;
  }
  return name;
}

/// The content of the ordinary file at `native`; nothing if there is none.
std::optional<std::string> ContentOf(const std::filesystem::path& native) {
  std::string bytes;
  const std::error_code code = ReadNativeFile(native, bytes);
  if (code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory) {
    return std::nullopt;
  }
  Check(code, "read the earlier file", native);
  return bytes;
}

/// What is at `native`; nothing if that is unknown.
EntryFacts FactsOf(const std::filesystem::path& native) {
  EntryFacts facts;
  return CurrentPlatform().Facts(native, facts) ? EntryFacts() : facts;
}

/// Notes that the entry at `native` is about to be deleted. Only the content of an ordinary file is
/// lost then.
void NoteDeletion(HistoryWriter& writer, const HistoryPlace& place,
                  const std::filesystem::path& native) {
  const EntryFacts facts = FactsOf(native);
  const bool isLost = facts.kind == EntryKind::File && !facts.isLink;
  if (isLost || facts.isLink || facts.kind != EntryKind::None) {
    writer.Note(place, kDeleted, isLost ? ContentOf(native) : std::nullopt, std::nullopt);
  }
}

/// Removes the version that was kept just now, because its line could not be added. The version
/// stays if the line is in the journal after all, or if the journal cannot be read.
void TakeBack(const HistoryPlace& place, const std::string& kept, const std::string& line) {
  std::string journal;
  if (!ReadNativeFile(place.Journal(), journal) && journal.find(line) == std::string::npos) {
    // One that stays is listed as a version that is not in the journal.
    static_cast<void>(CurrentPlatform().RemoveFile(place.Versions() / kept));
  }
}

/// The names in a folder, except one.
std::vector<std::string> NamesIn(const std::filesystem::path& folder, std::string_view except) {
  std::vector<std::string> names;
  const std::error_code code =
      CurrentPlatform().Search(folder, SearchKind::EveryName, [&](const FoundEntry& entry) {
        if (!EqualsIgnoringCase(entry.name, except)) {
          names.push_back(entry.name);
        }
        return true;
      });
  Check(code, "list the folder", folder);
  std::ranges::sort(names);
  return names;
}

}  // namespace

std::filesystem::path HistoryPlace::Versions() const {
  return NativePath(Joined(Joined(PathText(Tree()), folder), name));
}

HistoryPlace HistoryPlaceOf(std::string_view path) {
  const std::filesystem::path native = NativePath(path);
  const std::filesystem::path folder = native.parent_path();
  return {folder.parent_path(), folder.filename().string(), native.filename().string()};
}

bool HasHistory(const std::filesystem::path& tree) {
  const EntryFacts facts = OwnFacts(tree, "folder");
  if (facts.kind == EntryKind::File || facts.kind == EntryKind::Other) {
    throw NotKept(
        "In the place of its folder there is a file. Move the file elsewhere, then try again.",
        tree);
  }
  return facts.kind == EntryKind::Folder;
}

HistoryWriter::HistoryWriter(const HistoryPlace& place) {
  if (!HasHistory(place.Tree())) {
    MakeLastingFolder(place.Tree());
  }
  const EntryFacts journal = OwnFacts(place.Journal(), "file");
  for (int look = 0; look < kLooks; ++look) {
    const std::error_code code = CurrentPlatform().Lock(place.Journal(), 0, lock_);
    if (code != std::errc::resource_unavailable_try_again) {
      Check(code, "use the journal", place.Journal());
      if (journal.kind == EntryKind::None) {
        Check(CurrentPlatform().SyncFolder(place.Tree()), "make the journal", place.Journal());
      }
      return;
    }
    WaitSeconds(kSecondsBetweenLooks);
  }
  throw NotKept("Another program is using it. Wait a moment, then try again.", place.Journal());
}

// Only the object holds the lock. NOLINTNEXTLINE(readability-convert-member-functions-to-static)
void HistoryWriter::Note(const HistoryPlace& place, std::string_view done,
                         const std::optional<std::string>& before,
                         const std::optional<std::string_view>& after) {
  Platform& platform = CurrentPlatform();
  HistoryEvent event = {.time = platform.Now(),
                        .user = platform.UserName(),
                        .host = platform.HostName(),
                        .done = std::string(done),
                        .file = place.File(),
                        .kept = "",
                        .before = before ? Sha256(*before) : "",
                        .after = after ? Sha256(*after) : ""};
  const bool isKept = before && event.before != event.after;
  if (isKept) {
    const std::filesystem::path versions = place.Versions();
    MakeLastingFolder(versions.parent_path());
    MakeLastingFolder(versions);
    event.kept = FreeName(versions, event);
    const std::filesystem::path kept = versions / SystemName(event.kept);
    Check(SaveNativeFile(kept, *before), "write the file", kept);
  }
  const std::filesystem::path journal = place.Journal();
  const std::string line = JournalLine(event);
  const std::error_code code = AppendLine(journal, line);
  if (code && isKept) {
    TakeBack(place, event.kept, line);
  }
  Check(code, "write the journal", journal);
}

void SaveWithHistory(const std::string& path, std::string_view bytes, std::string_view done) {
  const HistoryPlace place = HistoryPlaceOf(path);
  std::optional<HistoryWriter> writer;
  SaveFile(path, bytes, [&](const std::filesystem::path& target, EntryKind kind) {
    if (FactsOf(target.parent_path()).kind != EntryKind::Folder) {
      return;  // The save fails, and its error says why.
    }
    writer.emplace(place);
    // Read now: another operator may have replaced the file while this one waited.
    const bool isReadable = kind != EntryKind::Other;
    writer->Note(place, done, isReadable ? ContentOf(target) : std::nullopt, bytes);
  });
}

void DeleteWithHistory(std::string_view folder, const std::string& name, Earlier earlier) {
  std::optional<HistoryWriter> writer;
  const std::filesystem::path native = NativePath(folder) / SystemName(name);
  if (earlier == Earlier::Keep) {
    const HistoryPlace place = {native.parent_path().parent_path(),
                                native.parent_path().filename().string(), name};
    writer.emplace(place);
    NoteDeletion(*writer, place, native);
  }
  RecycleEntry(folder, name);
}

void DeleteFolderWithHistory(std::string_view root, const std::string& name,
                             std::string_view except, Earlier earlier) {
  std::optional<HistoryWriter> writer;
  HistoryPlace place = {NativePath(root), name, ""};
  const std::filesystem::path folder = place.root / SystemName(name);
  const EntryFacts facts = FactsOf(folder);
  if (earlier == Earlier::Keep && facts.kind == EntryKind::Folder && !facts.isLink) {
    writer.emplace(place);
    for (std::string& file : NamesIn(folder, except)) {
      place.name = std::move(file);
      NoteDeletion(*writer, place, folder / SystemName(place.name));
    }
  }
  RecycleEntry(root, name);
}

}  // namespace tarvell
