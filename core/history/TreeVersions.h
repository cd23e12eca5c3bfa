// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_HISTORY_TREEVERSIONS_H
#define TARVELL_CORE_HISTORY_TREEVERSIONS_H

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "core/history/History.h"
#include "core/history/Journal.h"
#include "core/history/KeptVersions.h"

namespace tarvell {

/// The kept versions of a tree, for somebody who looks at all its files: the journal is read once,
/// when a version is asked for, and each folder of the history is listed once. Several threads may
/// use the object. What cannot be read of the history counts as missing.
class TreeVersions {
 public:
  /// Those of the tree in `root`, a path of the program.
  explicit TreeVersions(const std::string& root);

  /// The files of a folder of the tree that have versions, by their names in capital letters.
  [[nodiscard]] std::set<std::string> FilesIn(const std::string& folder) const;

  /// The versions of a file, as HistoryOf lists them, but including those of unfinished saves.
  [[nodiscard]] std::vector<KeptVersion> Of(const std::string& folder,
                                            const std::string& file) const;

 private:
  void ReadJournalOnce() const;

  HistoryPlace place_;
  std::set<std::string> folders_;  ///< of the history
  mutable std::once_flag isRead_;
  /// The events that have kept a version, without hashes, by folder and file in capital letters.
  mutable std::map<std::string, std::vector<HistoryEvent>> events_;
};

}  // namespace tarvell

#endif
