// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/StoredFile.h"

#include <system_error>
#include <utility>

#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/files/SaveFile.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"

namespace tarvell {

namespace {

[[nodiscard]] Error NotKept(std::error_code code, const std::string& path) {
  const Error reason = SystemError(code, "keep the earlier file in the recycle bin", path);
  return {ErrorKind::WriteFailed, "Nothing was saved. " + reason.Text(), path};
}

}  // namespace

void StoredFile::WasRead(const std::string& path, const FileStamp& stamp,
                         const std::string& serialNumber) {
  path_ = path;
  serialNumber_ = serialNumber;
  stamp_ = stamp;
  unchanged_.clear();
  isWhollyKept_ = true;
}

void StoredFile::WouldBeWrittenAs(std::string bytes) {
  isWhollyKept_ = FileStamp(bytes) == stamp_;
  unchanged_ = std::move(bytes);
}

std::optional<UnseenFile> StoredFile::Unseen(const std::string& path,
                                             std::string_view bytes) const {
  const std::filesystem::path native = NativePath(path);
  EntryFacts facts;
  // What is no ordinary file is refused by the save, which says why.
  if (CurrentPlatform().Facts(native, facts) || facts.kind != EntryKind::File) {
    return std::nullopt;
  }
  UnseenFile file;
  file.modified = facts.modified;
  file.wasRead = !path_.empty() && CurrentPlatform().IsSameFile(NativePath(path_), native);
  std::error_code code = StampNativeFile(native, file.stamp);
  if (!code && (file.stamp == FileStamp(bytes) || (file.wasRead && file.stamp == stamp_))) {
    return std::nullopt;
  }
  if (!code) {
    code = ReadNativeFile(native, file.bytes, kMostDataFileBytes);
  }
  if (code == std::errc::no_such_file_or_directory) {
    // Somebody has just deleted it.
    return std::nullopt;
  }
  if (code && code != kTooLargeForData) {
    throw NotKept(code, path);
  }
  return file;
}

void StoredFile::Save(const std::string& path, const std::string& serialNumber,
                      std::string_view bytes) {
  const FileStamp stamp(bytes);
  SaveFile(path, bytes, [&](const std::filesystem::path& native) {
    KeepEarlier(path, native, stamp, serialNumber);
  });
  WasRead(path, stamp, serialNumber);
  unchanged_ = bytes;
}

void StoredFile::KeepEarlier(const std::string& path, const std::filesystem::path& native,
                             const FileStamp& stamp, const std::string& serialNumber) const {
  FileStamp earlier;
  if (const std::error_code code = StampNativeFile(native, earlier)) {
    throw NotKept(code, path);
  }
  const bool isOwn = isWhollyKept_ && earlier == stamp_ && serialNumber == serialNumber_ &&
                     !path_.empty() && CurrentPlatform().IsSameFile(NativePath(path_), native);
  if (earlier == stamp || isOwn) {
    return;
  }
  if (const std::error_code code = CurrentPlatform().RecycleCopy(native)) {
    throw NotKept(code, path);
  }
}

}  // namespace tarvell
