// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_COMMON_STOREDFILE_H
#define TARVELL_COMMON_STOREDFILE_H

#include <string>
#include <string_view>

#include "common/FileStamp.h"

namespace tarvell {

/// The file that a data set was read from, or was written to last. It is empty for a new data set.
///
/// What a save replaces without the user having seen it goes into the recycle bin: a file that the
/// data set did not come from, that has changed since then, that holds another serial number, or
/// something that the data set does not keep.
class StoredFile {
 public:
  /// The data set was read from the file at `path`, whose whole content has this stamp.
  void WasRead(const std::string& path, const FileStamp& stamp, const std::string& serialNumber);

  /// An unchanged save would write a content of this stamp. Where that is not the file's own, the
  /// next save keeps the file.
  void WouldBeWrittenAs(const FileStamp& stamp) { isWhollyKept_ = stamp == stamp_; }

  /// Writes `bytes` as the file at `path` by SaveFile; the data set is that file's from then on.
  /// Throws as SaveFile does, and a WriteFailed error when the earlier file could not be kept:
  /// nothing has been written then.
  void Save(const std::string& path, const std::string& serialNumber, std::string_view bytes);

 private:
  /// Keeps what stands at `native`, unless it is what the data set knows, or will be written.
  void KeepEarlier(const std::string& path, const std::string& native, const FileStamp& stamp,
                   const std::string& serialNumber) const;

  std::string path_;
  std::string serialNumber_;
  FileStamp stamp_;
  bool isWhollyKept_ = true;
};

}  // namespace tarvell

#endif
