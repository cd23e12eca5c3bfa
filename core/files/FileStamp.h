// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_FILESTAMP_H
#define TARVELL_CORE_FILES_FILESTAMP_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace tarvell {

/// Length and checksum of a file's content: tells whether a file still holds what it held.
class FileStamp {
 public:
  FileStamp() = default;
  explicit FileStamp(std::string_view bytes) { Append(bytes); }

  /// The content goes on with `bytes`.
  void Append(std::string_view bytes);

  bool operator==(const FileStamp&) const = default;

 private:
  static constexpr std::size_t kChunk = 8;

  std::uintmax_t length_ = 0;
  std::uint64_t checksum_ = 0;           ///< of all whole chunks
  std::array<char, kChunk> chunk_ = {};  ///< the bytes behind them
};

/// Takes the stamp of the ordinary file at the native `path`.
[[nodiscard]] std::error_code StampNativeFile(const std::filesystem::path& path, FileStamp& stamp);

}  // namespace tarvell

#endif
