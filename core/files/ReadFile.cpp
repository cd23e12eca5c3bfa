// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/ReadFile.h"

#include <array>
#include <memory>

namespace tarvell {

namespace {

// More than most files that the program writes, so that one call reads them.
constexpr std::size_t kBlockSize = 16384;

/// Appends what one call reads, at most a block, and sets `count` to the number of bytes.
[[nodiscard]] std::error_code ReadBlock(InputFile& file, std::string& bytes, std::size_t& count) {
  std::array<char, kBlockSize> block;  // NOLINT(*-member-init): not worth filling it twice
  const std::error_code code = file.Read(block.data(), block.size(), count);
  bytes.append(block.data(), code ? 0 : count);
  return code;
}

/// Reads a file from its beginning to its end.
[[nodiscard]] std::error_code ReadWhole(InputFile& file, std::string& bytes, std::size_t limit) {
  std::size_t count = 0;
  do {
    if (const std::error_code code = ReadBlock(file, bytes, count)) {
      return code;
    }
    if (bytes.size() > limit) {
      bytes.resize(limit);
      return std::make_error_code(kTooLargeForData);
    }
  } while (count > 0);
  return {};
}

}  // namespace

std::error_code ReadNativeFile(const std::filesystem::path& path, std::string& bytes,
                               std::size_t limit) {
  bytes.clear();
  std::unique_ptr<InputFile> file;
  const std::error_code code = CurrentPlatform().OpenForReading(path, file);
  return code ? code : ReadWhole(*file, bytes, limit);
}

std::error_code ReadFoundFile(const FoundEntry& entry, std::string& bytes, std::size_t limit) {
  bytes.clear();
  std::unique_ptr<InputFile> file;
  const std::error_code code = CurrentPlatform().OpenFound(entry, file);
  return code ? code : ReadWhole(*file, bytes, limit);
}

std::error_code ReadBeginning(InputFile& file, std::string& bytes) {
  bytes.clear();
  std::size_t count = 0;
  return ReadBlock(file, bytes, count);
}

}  // namespace tarvell
