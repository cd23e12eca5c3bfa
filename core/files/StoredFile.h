// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_STOREDFILE_H
#define TARVELL_CORE_FILES_STOREDFILE_H

#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/files/FileStamp.h"

namespace tarvell {

/// A file that a save would replace and that is not as the data set knows it.
struct UnseenFile {
  bool wasRead = false;  ///< whether the data set came from it: it has changed since then
  FileStamp stamp;
  std::time_t modified = 0;
  std::string bytes;  ///< what it holds, of a larger one than any data file the beginning
};

/// The file that a data set was read from, or was written to last. It is empty for a new data set.
///
/// What a save replaces without the user having seen it goes into the recycle bin: a file that the
/// data set did not come from, that has changed since then, that holds another serial number, or
/// something that the data set does not keep.
class StoredFile {
 public:
  /// The data set was read from the file at `path`, whose whole content has this stamp.
  void WasRead(const std::string& path, const FileStamp& stamp, const std::string& serialNumber);

  /// An unchanged save would write these bytes. Where they are not the file's own, the next save
  /// keeps the file.
  void WouldBeWrittenAs(std::string bytes);

  /// What an unchanged save would write, "" where that is not known.
  [[nodiscard]] const std::string& Unchanged() const { return unchanged_; }
  /// The serial number that was read, or written last.
  [[nodiscard]] const std::string& SerialNumber() const { return serialNumber_; }

  /// The file that saving `bytes` at `path` would replace although the data set does not come from
  /// it, or not as it is now; nothing where there is none, or where it holds these bytes. Throws a
  /// WriteFailed error for a file that cannot be read.
  [[nodiscard]] std::optional<UnseenFile> Unseen(const std::string& path,
                                                 std::string_view bytes) const;

  /// Writes `bytes` as the file at `path` by SaveFile; the data set is that file's from then on.
  /// Throws as SaveFile does, and a WriteFailed error when the earlier file could not be kept:
  /// nothing has been written then.
  void Save(const std::string& path, const std::string& serialNumber, std::string_view bytes);

 private:
  /// Keeps what stands at `native`, unless it is what the data set knows, or will be written.
  void KeepEarlier(const std::string& path, const std::filesystem::path& native,
                   const FileStamp& stamp, const std::string& serialNumber) const;

  std::string path_;
  std::string serialNumber_;
  FileStamp stamp_;
  std::string unchanged_;
  bool isWhollyKept_ = true;
};

}  // namespace tarvell

#endif
