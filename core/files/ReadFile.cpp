// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/ReadFile.h"

#include <memory>

namespace tarvell {

namespace {

// More than any file that the program writes, so that one call reads it.
constexpr std::size_t kBlockSize = 16384;

/// Appends what one call reads, at most a block, and sets `count` to the number of bytes.
[[nodiscard]] std::error_code ReadBlock(InputFile& file, std::string& bytes, std::size_t& count) {
  const std::size_t filled = bytes.size();
  bytes.resize(filled + kBlockSize);
  const std::error_code code = file.Read(bytes.data() + filled, kBlockSize, count);
  bytes.resize(filled + (code ? 0 : count));
  return code;
}

}  // namespace

std::error_code ReadNativeFile(const std::filesystem::path& path, std::string& bytes,
                               std::size_t limit) {
  bytes.clear();
  std::unique_ptr<InputFile> file;
  if (const std::error_code code = CurrentPlatform().OpenForReading(path, EntryKind::None, file)) {
    return code;
  }
  std::size_t count = 0;
  do {
    if (const std::error_code code = ReadBlock(*file, bytes, count)) {
      return code;
    }
    if (bytes.size() > limit) {
      bytes.resize(limit);
      return std::make_error_code(kTooLargeForData);
    }
  } while (count > 0);
  return {};
}

std::error_code ReadNativeBeginning(const std::filesystem::path& path, EntryKind kind,
                                    std::string& bytes) {
  bytes.clear();
  std::unique_ptr<InputFile> file;
  if (const std::error_code code = CurrentPlatform().OpenForReading(path, kind, file)) {
    return code;
  }
  std::size_t count = 0;
  return ReadBlock(*file, bytes, count);
}

}  // namespace tarvell
