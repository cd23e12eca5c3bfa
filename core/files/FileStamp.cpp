// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/FileStamp.h"

#include <algorithm>
#include <bit>

#include "core/files/ReadFile.h"

namespace tarvell {

namespace {

constexpr std::uint64_t kPrime = 0x9E3779B97F4A7C15U;
constexpr unsigned kShift = 29;  // brings what only the high bits know down to the others

}  // namespace

void FileStamp::Append(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t filled = length_ % kChunk;
    const std::size_t count = std::min(kChunk - filled, bytes.size());
    std::copy_n(bytes.begin(), count, &chunk_[filled]);
    bytes.remove_prefix(count);
    length_ += count;
    if (filled + count == kChunk) {
      checksum_ = (checksum_ ^ std::bit_cast<std::uint64_t>(chunk_)) * kPrime;
      checksum_ ^= checksum_ >> kShift;
      chunk_ = {};
    }
  }
}

std::error_code StampNativeFile(const std::filesystem::path& path, FileStamp& stamp) {
  stamp = FileStamp();
  return ReadNativeBlocks(path, [&](std::string_view block) { stamp.Append(block); });
}

}  // namespace tarvell
