// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/FileStamp.h"

#include "common/ReadFile.h"

namespace tarvell {

namespace {

constexpr std::uint64_t kPrime = 0x00000100000001B3U;

}  // namespace

void FileStamp::Append(std::string_view bytes) {
  length_ += bytes.size();
  for (const char byte : bytes) {
    checksum_ = (checksum_ ^ static_cast<unsigned char>(byte)) * kPrime;
  }
}

std::error_code StampNativeFile(const std::string& path, FileStamp& stamp) {
  stamp = FileStamp();
  return ReadNativeBlocks(path, [&](std::string_view block) { stamp.Append(block); });
}

}  // namespace tarvell
