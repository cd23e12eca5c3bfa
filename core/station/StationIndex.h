// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_STATION_STATIONINDEX_H
#define TARVELL_CORE_STATION_STATIONINDEX_H

#include <set>
#include <string>
#include <vector>

namespace tarvell {

/// Finds what to write to an INDEX file when the user leaves a list that others may have changed in
/// the meantime. Names that others added are kept, deleted names do not come back, and names that
/// were added only to the list on the screen stay. Names are compared in the bytes of INDEX.
class StationIndex {
 public:
  /// The user opens the list of `folder`, a path of the program.
  void Begin(const std::string& folder);

  /// These names are in the folder: they were listed, or saved, or are about to be deleted.
  void WasListed(const std::vector<std::string>& names);

  /// The names to write: first those on the screen, except files that are gone, then the others of
  /// `listed`, the present content of the folder, then those that somebody else has added to INDEX
  /// for instruments that are not saved yet. An INDEX that cannot be read adds none.
  [[nodiscard]] std::vector<std::string> Merged(const std::vector<std::string>& shown,
                                                const std::vector<std::string>& listed) const;

 private:
  std::string path_;
  std::set<std::string> atBegin_;  ///< the lines of INDEX when the list was opened
  std::set<std::string> seen_;     ///< the lines of all names that were in the folder
};

}  // namespace tarvell

#endif
