// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_HISTORY_STOREDFILE_H
#define TARVELL_CORE_HISTORY_STOREDFILE_H

#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/history/History.h"

namespace tarvell {

/// A file that a save would replace, and whose content the data set has neither read nor written.
struct UnseenFile {
  bool wasRead = false;   ///< whether the data set came from it, before it changed
  bool isAsRead = false;  ///< whether it is as it was read, and the data set lacks a part of it
  std::time_t modified = 0;
  std::string bytes;  ///< its content; of a file that is too large for data, the beginning
};

/// The file that a data set was read from, or was written to last. It is empty for a new data set.
class StoredFile {
 public:
  /// The data set was read from the file at `path`, whose content is `bytes`.
  void WasRead(const std::string& path, std::string bytes, const std::string& serialNumber);

  /// Says in words what the data set did not take from the file; "" for nothing. A save that would
  /// lose it counts as one that replaces an unseen file.
  void SetUnread(std::string unread) { unread_ = std::move(unread); }
  [[nodiscard]] const std::string& Unread() const { return unread_; }

  /// Sets what a save would write if the user changed nothing.
  void SetUnchangedBytes(std::string bytes);

  /// What a save would write if the user changed nothing, "" if unknown.
  [[nodiscard]] const std::string& UnchangedBytes() const {
    return rewritesContent_ ? content_ : unchanged_;
  }
  /// The serial number that was last read or written.
  [[nodiscard]] const std::string& SerialNumber() const { return serialNumber_; }

  /// The file that saving `bytes` at `path` would replace, unless the whole data set comes from it
  /// and it has not changed, or it holds these bytes already. Throws a WriteFailed error for a file
  /// that cannot be read.
  [[nodiscard]] std::optional<UnseenFile> Unseen(const std::string& path,
                                                 std::string_view bytes) const;

  /// Writes `bytes` to the file at `path` by SaveWithHistory, or without it; the data set belongs
  /// to that file from then on. Throws the same errors.
  void Save(const std::string& path, const std::string& serialNumber, std::string_view bytes,
            Earlier earlier = Earlier::Keep);

 private:
  std::string path_;
  std::string serialNumber_;
  std::string content_;  ///< of the file, as it was read or written
  std::string unchanged_;
  std::string unread_;
  bool rewritesContent_ = false;  ///< whether a save without changes would write `content_`
};

}  // namespace tarvell

#endif
