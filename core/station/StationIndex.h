// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_STATION_STATIONINDEX_H
#define TARVELL_CORE_STATION_STATIONINDEX_H

#include <set>
#include <string>
#include <vector>

namespace tarvell {

/// What is to be written to an INDEX file when a list is left that others may have changed
/// meanwhile: nothing that they added is dropped, nothing that was deleted comes back, and what was
/// only added to the list on the screen stays in it. Names are compared as INDEX has them.
class StationIndex {
 public:
  /// A visit to the list of `folder`, a path text of the program, begins.
  void Begin(const std::string& folder);

  /// The folder holds these names: the list was read from it, or they were saved, or are about to
  /// be deleted.
  void WasListed(const std::vector<std::string>& names);

  /// The names to write: those that the screen shows, except files that are gone; after them
  /// those that `listed`, the folder as it is now, has besides; then those that somebody wrote to
  /// INDEX during the visit for instruments that are not saved yet. An INDEX that cannot be read
  /// adds none.
  [[nodiscard]] std::vector<std::string> Merged(const std::vector<std::string>& shown,
                                                const std::vector<std::string>& listed) const;

 private:
  std::string path_;
  std::set<std::string> atBegin_;  ///< the lines of INDEX
  std::set<std::string> seen_;     ///< the lines of all names that the folder has held
};

}  // namespace tarvell

#endif
