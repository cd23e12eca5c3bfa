// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/StoredFile.h"

#include <algorithm>
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

void StoredFile::WasRead(const std::string& path, std::string bytes,
                         const std::string& serialNumber) {
  path_ = path;
  serialNumber_ = serialNumber;
  content_ = std::move(bytes);
  unchanged_.clear();
  rewritesContent_ = false;
  isWhollyKept_ = true;
}

void StoredFile::SetUnchangedBytes(std::string bytes) {
  rewritesContent_ = bytes == content_;
  isWhollyKept_ = rewritesContent_;
  unchanged_ = rewritesContent_ ? std::string() : std::move(bytes);
}

std::optional<UnseenFile> StoredFile::Unseen(const std::string& path,
                                             std::string_view bytes) const {
  const std::filesystem::path native = NativePath(path);
  EntryFacts facts;
  // If there is something other than an ordinary file, the save itself fails, and its error says
  // why.
  if (CurrentPlatform().Facts(native, facts) || facts.kind != EntryKind::File) {
    return std::nullopt;
  }
  UnseenFile file;
  file.modified = facts.modified;
  file.wasRead = !path_.empty() && CurrentPlatform().IsSameFile(NativePath(path_), native);
  const std::error_code code = ReadNativeFile(native, file.bytes, kDataFileLimit);
  if (!code && (file.bytes == bytes || (file.wasRead && file.bytes == content_))) {
    return std::nullopt;
  }
  if (code == std::errc::no_such_file_or_directory) {
    // It has been deleted in the meantime.
    return std::nullopt;
  }
  if (code && code != kTooLargeForData) {
    throw NotKept(code, path);
  }
  return file;
}

void StoredFile::Save(const std::string& path, const std::string& serialNumber,
                      std::string_view bytes) {
  SaveFile(path, bytes, [&](const std::filesystem::path& native) {
    KeepEarlier(path, native, bytes, serialNumber);
  });
  WasRead(path, std::string(bytes), serialNumber);
  rewritesContent_ = true;
}

void StoredFile::KeepEarlier(const std::string& path, const std::filesystem::path& native,
                             std::string_view bytes, const std::string& serialNumber) const {
  std::string earlier;
  const std::error_code code =
      ReadNativeFile(native, earlier, std::max(bytes.size(), content_.size()));
  if (code && code != kTooLargeForData) {
    throw NotKept(code, path);
  }
  // A file that is larger than both contents differs from both.
  if (!code) {
    const bool isOwn = isWhollyKept_ && earlier == content_ && serialNumber == serialNumber_ &&
                       !path_.empty() && CurrentPlatform().IsSameFile(NativePath(path_), native);
    if (earlier == bytes || isOwn) {
      return;
    }
  }
  if (const std::error_code kept = CurrentPlatform().RecycleCopy(native)) {
    throw NotKept(kept, path);
  }
}

}  // namespace tarvell
