// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/history/StoredFile.h"

#include <system_error>
#include <utility>

#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/files/SaveFile.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"

namespace tarvell {

namespace {

[[nodiscard]] Error NotSaved(std::error_code code, const std::string& path) {
  const Error reason = SystemError(code, "read the earlier file", path);
  return {ErrorKind::WriteFailed, "Nothing was saved. " + reason.Text(), path};
}

}  // namespace

void StoredFile::WasRead(const std::string& path, std::string bytes,
                         const std::string& serialNumber) {
  path_ = path;
  serialNumber_ = serialNumber;
  content_ = std::move(bytes);
  unchanged_.clear();
  unread_.clear();
  rewritesContent_ = false;
}

void StoredFile::SetUnchangedBytes(std::string bytes) {
  rewritesContent_ = bytes == content_;
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
  const bool isUnchanged = !code && file.wasRead && file.bytes == content_;
  file.isAsRead = isUnchanged && !unread_.empty();
  if ((!code && file.bytes == bytes) || (isUnchanged && !file.isAsRead)) {
    return std::nullopt;
  }
  if (code == std::errc::no_such_file_or_directory) {
    // It has been deleted in the meantime.
    return std::nullopt;
  }
  if (code && code != kTooLargeForData) {
    throw NotSaved(code, path);
  }
  return file;
}

void StoredFile::Save(const std::string& path, const std::string& serialNumber,
                      std::string_view bytes, Earlier earlier) {
  if (earlier == Earlier::Keep) {
    SaveWithHistory(path, bytes);
  } else {
    SaveFile(path, bytes);
  }
  WasRead(path, std::string(bytes), serialNumber);
  rewritesContent_ = true;
}

}  // namespace tarvell
