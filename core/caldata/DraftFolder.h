// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_DRAFTFOLDER_H
#define TARVELL_CORE_CALDATA_DRAFTFOLDER_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "core/caldata/Draft.h"
#include "core/platform/Platform.h"

namespace tarvell {

/// The drafts of one data set, or of the new data of one model, while an editor shows it. They are
/// in the folder `drafts` of the user's folder.
///
/// An editor writes its own draft. Every draft that it writes or offers is locked, so that another
/// program of the same user writes one of its own and neither offers nor removes this one. When the
/// object ends, or the program is killed, the drafts are free again for the next editor.
class DraftFolder {
 public:
  /// A draft older than this many seconds is removed: 30 days.
  static constexpr std::int64_t kLifetime = 30LL * 24 * 60 * 60;

  /// `file` is the path of the data set, a path of the program, or "" for new data. `now` is the
  /// time of opening, as everywhere here in seconds since the beginning of 1970, UTC. Removes
  /// drafts that are too old, whatever data set they belong to. Takes the drafts of this data set
  /// that no other program holds. Renames those that cannot be read, so that they are kept but not
  /// found again.
  DraftFolder(std::string model, std::string_view file, std::int64_t now);

  /// The newest draft that was found and not yet chosen or discarded, nullptr when there is none.
  [[nodiscard]] const Draft* Offered() const;
  /// How many drafts can be offered.
  [[nodiscard]] std::size_t OfferedCount() const { return offered_.size(); }
  /// Whether the data set has been saved since the offered draft was written.
  [[nodiscard]] bool IsOfferedOutdated() const;
  /// Paths of the drafts that could not be read, under their new names.
  [[nodiscard]] const std::vector<std::string>& Damaged() const { return damaged_; }

  /// Makes the offered draft the editor's own. The draft that the editor has written until then is
  /// offered in its place.
  void TakeOffered();
  /// Removes the offered draft for good. Throws the error of a file that cannot be removed.
  void DiscardOffered();
  /// Removes the offered drafts with this state, and the own draft.
  void RemoveAllOf(const EditorState& state);

  /// Writes the editor's own draft. Throws the error of a file that cannot be written.
  void Write(const EditorState& state, std::int64_t now);
  /// Removes the editor's own draft, if there is one. Throws the error of a file that cannot be
  /// removed.
  void RemoveOwn();

 private:
  struct Held {
    std::filesystem::path path = {};
    std::unique_ptr<HeldLock> lock = {};
    std::optional<Draft> draft = {};  ///< nullopt for a name that has no file yet
  };

  [[nodiscard]] std::error_code Lock(Held& held) const;
  void Find(std::int64_t now);
  void Offer(Held held);
  /// Reserves a name that has no file.
  void TakeName();

  std::filesystem::path folder_;
  std::string model_;
  std::string file_;
  std::string name_;           ///< what the names of its drafts begin with
  std::vector<Held> offered_;  ///< the newest is the last
  Held own_;
  std::vector<std::string> damaged_;
};

}  // namespace tarvell

#endif
