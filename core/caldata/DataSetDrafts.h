// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_DATASETDRAFTS_H
#define TARVELL_CORE_CALDATA_DATASETDRAFTS_H

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

/// What the editor was opened for.
enum class DraftKind {
  Data,           ///< the data of a file as they are, or new data
  NewCalibration  ///< a new calibration of the instrument
};

/// The drafts of one data set, or of the new data of one model, while an editor shows it. They are
/// in the folder `drafts` of the user's folder. Drafts of a new calibration are apart from those of
/// the data as they are: each would put the wrong dates into the other.
///
/// An editor writes its own draft. Every draft that it writes or offers is locked, so that another
/// program of the same user writes one of its own and neither offers nor removes this one. When the
/// object ends, or the program is killed, the drafts are free again for the next editor.
class DataSetDrafts {
 public:
  /// A draft older than this many seconds is removed: 30 days.
  static constexpr std::int64_t kLifetime = 30LL * 24 * 60 * 60;

  /// `file` is the path of the data set, a path of the program, or "" for new data. `now` is the
  /// time of opening, as everywhere here in seconds since the beginning of 1970, UTC. Takes the
  /// drafts of this data set that no other program holds, however old they are: the clock may have
  /// been wrong. Renames those that cannot be read, so that they are kept but not found again.
  /// Removes drafts of other data sets that are too old.
  DataSetDrafts(std::string model, std::string_view file, std::int64_t now,
                DraftKind kind = DraftKind::Data);

  /// The newest draft that was found and not yet chosen or discarded, nullptr when there is none.
  [[nodiscard]] const Draft* Offered() const;
  /// How many drafts can be offered.
  [[nodiscard]] std::size_t OfferedCount() const { return offered_.size(); }
  /// Whether the file of the data set is another one than when the offered draft was begun.
  [[nodiscard]] bool IsOfferedOutdated() const;
  /// Whether the data set has drafts of the other kind, which no other program holds.
  [[nodiscard]] bool HasDraftsOfOtherKind() const { return hasOfOtherKind_; }
  /// Paths of the drafts that could not be read, under their new names.
  [[nodiscard]] const std::vector<std::string>& Damaged() const { return damaged_; }

  /// Sets what the editor shows before anything is typed. Removes the offered drafts of which that
  /// holds everything: a program may have been killed after it had saved. Throws the error of a
  /// file that cannot be removed.
  void Begin(const EditorState& opened);

  /// Makes the offered draft the editor's own. The draft that the editor has written until then is
  /// offered in its place.
  void TakeOffered();
  /// How many times TakeOffered has made a draft the editor's own.
  [[nodiscard]] std::size_t TakenCount() const { return taken_.size(); }
  /// The editor does not show the draft of this call of TakeOffered, counted from 0, any more: it
  /// is offered again, as it was then, and the editor goes on with the draft that it wrote before.
  /// Throws the error of a file that cannot be written.
  void LeaveTaken(std::size_t number);
  /// The editor shows it again.
  void TakeAgain(std::size_t number);
  /// Moves the offered draft to the recycle bin. Throws the error of a file that cannot be moved.
  void DiscardOffered();
  /// Removes the offered draft. Throws the error of a file that cannot be removed.
  void RemoveOffered();
  /// Removes the offered drafts of which `state` holds everything, and the own draft.
  void RemoveAllOf(const EditorState& state);

  /// The draft that the editor has written, nullptr when there is none.
  [[nodiscard]] const Draft* Own() const { return own_.draft ? &*own_.draft : nullptr; }
  /// Writes the editor's own draft. Throws the error of a file that cannot be written.
  void Write(const EditorState& state, std::int64_t now);
  /// The editor shows nothing that was typed: removes its own draft, if there is one. A draft that
  /// was made the editor's own by TakeOffered is offered again, as it was then. Throws the error of
  /// a file that cannot be written or removed.
  void LeaveOwn();

 private:
  struct Held {
    std::filesystem::path path = {};
    std::unique_ptr<HeldLock> lock = {};
    std::optional<Draft> draft = {};  ///< nullopt for a name that has no file yet
  };

  /// A draft that TakeOffered has made the editor's own.
  struct Taken {
    std::filesystem::path path;
    Draft draft;                   ///< as it was then
    std::filesystem::path before;  ///< the own draft until then; empty if there was none
  };

  [[nodiscard]] std::error_code Lock(Held& held) const;
  void Find(std::int64_t now);
  void Consider(const std::string& name, std::int64_t now);
  void Offer(Held held);
  void WriteOwn(Draft draft);
  void RemoveOwn();
  /// Takes a draft out of those that are offered; one without a lock if it is not among them.
  [[nodiscard]] Held Withdrawn(const std::filesystem::path& path);
  /// Reserves a name that has no file.
  void TakeName();

  std::filesystem::path folder_;
  std::string model_;
  std::string file_;
  std::string name_;       ///< what the names of its drafts begin with
  std::string otherName_;  ///< of those of the other kind; "" for new data
  bool hasOfOtherKind_ = false;
  std::vector<Held> offered_;  ///< the newest is the last
  Held own_;
  std::vector<Taken> taken_;
  std::string fileContent_;  ///< as in Draft
  std::optional<EditorState> begun_;
  std::vector<std::string> damaged_;
};

}  // namespace tarvell

#endif
