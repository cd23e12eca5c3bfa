// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_HISTORY_KEPTVERSIONS_H
#define TARVELL_CORE_HISTORY_KEPTVERSIONS_H

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/history/History.h"
#include "core/history/Journal.h"

namespace tarvell {

/// Whether a kept version is what the journal says.
enum class VersionState {
  AsKept,
  Changed,     ///< its content is not the one that was kept or saved
  NotSaved,    ///< it is as it was kept, but no change in the journal had written that
  Missing,     ///< the journal names it, but nobody finds it
  Unreadable,  ///< its file is there, and cannot be read
  NoJournal    ///< no line of the journal is about it, so that nobody knows whether it was changed
};

/// A sentence for a state that is not AsKept, "" for that.
[[nodiscard]] std::string_view TextOf(VersionState state);

/// The state of the present content of a file, or of a kept one: reads the file at `path`, a path
/// of the program, and works out a hash. `event` is what has written the present content, or what
/// replaced the kept one; `wasSaved` is that of the version.
[[nodiscard]] VersionState StateOfCurrent(const std::string& path, const HistoryEvent& event);
[[nodiscard]] VersionState StateOfKept(const std::string& path, const HistoryEvent& event,
                                       bool wasSaved);

/// An earlier content of a file.
struct KeptVersion {
  std::string path;      ///< of the kept file, a path of the program
  HistoryEvent event;    ///< what replaced or removed it
  bool wasSaved = true;  ///< false if the journal knows that no change had written it

  [[nodiscard]] VersionState State() const { return StateOfKept(path, event, wasSaved); }
};

struct FileHistory {
  std::optional<std::string> current;  ///< what the file holds now; nothing if it cannot be read
  HistoryEvent written;                ///< what has written `current`, see WrittenBy
  std::vector<KeptVersion> versions;   ///< the one that was replaced last comes first
  std::size_t damagedLines = 0;        ///< of the journal, see ReadJournal
};

/// The history of the file at `path`, a path of the program; without versions if nothing is known
/// of it. Leaves out a version that an interrupted save has kept, because the file still holds it.
/// Reads the journal and the file, and only those versions that may have to be left out. Throws the
/// error of a history that cannot be read.
[[nodiscard]] FileHistory HistoryOf(const std::string& path);

/// The versions of the file of `place`, the one that was replaced last comes first. `events` are
/// those of its journal; a version that none of them names is put at the time in its own name.
/// Throws the error of a folder that cannot be listed.
[[nodiscard]] std::vector<KeptVersion> VersionsIn(const HistoryPlace& place,
                                                  std::span<const HistoryEvent> events);

/// A file that does not exist any more, or that is damaged, and of which the history keeps
/// versions.
struct LostFile {
  std::string path;        ///< of the file, a path of the program
  std::string newest;      ///< path of the version that was kept last
  HistoryEvent last;       ///< the last change of the file; its time is 0 if unknown
  bool isDamaged = false;  ///< there still is a file
};

/// Whether the file at `path` is so damaged that no list shows it; `newest` is the path of the
/// version that was kept last.
using DamageCheck = std::function<bool(const std::string& path, const std::string& newest)>;

/// The lost files of the tree in `root`, a path of the program, or of the folder in it that is
/// called `folder`. The one that was changed last comes first. Throws the error of a history that
/// cannot be read.
[[nodiscard]] std::vector<LostFile> LostFiles(const std::string& root,
                                              const std::string& folder = "",
                                              const DamageCheck& isDamaged = nullptr);

/// Saves the content of the kept file at `version` as the file at `path` again, byte for byte, by
/// SaveWithHistory or without it. Makes the folder of the file if it was deleted, too. Throws the
/// same errors, and that of a version that cannot be read.
void PutBack(const std::string& version, const std::string& path, Earlier earlier = Earlier::Keep);

}  // namespace tarvell

#endif
