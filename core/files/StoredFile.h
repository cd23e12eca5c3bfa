// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_STOREDFILE_H
#define TARVELL_CORE_FILES_STOREDFILE_H

#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tarvell {

/// A file that a save would replace, and whose content the data set has neither read nor written.
struct UnseenFile {
  bool wasRead = false;  ///< whether the data set came from it, before it changed
  std::time_t modified = 0;
  std::string bytes;  ///< its content; of a file that is too large for data, the beginning
};

/// The file that a data set was read from, or was written to last. It is empty for a new data set.
///
/// A save puts the earlier file into the recycle bin if the data set did not come from it, if it
/// has changed since then, if it holds another serial number, or if it holds something that the
/// data set does not keep.
class StoredFile {
 public:
  /// The data set was read from the file at `path`, whose content is `bytes`.
  void WasRead(const std::string& path, std::string bytes, const std::string& serialNumber);

  /// Sets what a save would write if the user changed nothing. If that differs from the file, the
  /// next save puts the file into the recycle bin.
  void SetUnchangedBytes(std::string bytes);

  /// What a save would write if the user changed nothing, "" if unknown.
  [[nodiscard]] const std::string& UnchangedBytes() const {
    return rewritesContent_ ? content_ : unchanged_;
  }
  /// The serial number that was last read or written.
  [[nodiscard]] const std::string& SerialNumber() const { return serialNumber_; }

  /// The file that saving `bytes` at `path` would replace, unless the data set comes from it and it
  /// has not changed, or it holds these bytes already. Throws a WriteFailed error for a file that
  /// cannot be read.
  [[nodiscard]] std::optional<UnseenFile> Unseen(const std::string& path,
                                                 std::string_view bytes) const;

  /// Writes `bytes` to the file at `path` by SaveFile; the data set belongs to that file from then
  /// on. Throws as SaveFile does, and a WriteFailed error, before anything is written, when the
  /// earlier file cannot be kept.
  void Save(const std::string& path, const std::string& serialNumber, std::string_view bytes);

 private:
  /// Puts a copy of the file at `native` into the recycle bin, unless its content is `bytes` or was
  /// read or written by the data set, which keeps all of it.
  void KeepEarlier(const std::string& path, const std::filesystem::path& native,
                   std::string_view bytes, const std::string& serialNumber) const;

  std::string path_;
  std::string serialNumber_;
  std::string content_;  ///< of the file, as it was read or written
  std::string unchanged_;
  bool rewritesContent_ = false;  ///< whether a save without changes would write `content_`
  bool isWhollyKept_ = true;
};

}  // namespace tarvell

#endif
