// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/ReadFile.h"

#include <array>
#include <memory>

#include "core/platform/Platform.h"

namespace tarvell {

std::error_code ReadNativeBlocks(const std::filesystem::path& path,
                                 const std::function<void(std::string_view block)>& take,
                                 std::size_t most) {
  std::unique_ptr<InputFile> file;
  if (const std::error_code code = CurrentPlatform().OpenForReading(path, EntryKind::None, file)) {
    return code;
  }
  std::array<char, 8192> block{};
  std::size_t count = 0;
  do {
    if (const std::error_code code = file->Read(block.data(), block.size(), count)) {
      return code;
    }
    if (count > most) {
      return std::make_error_code(kTooLargeForData);
    }
    most -= count;
    take({block.data(), count});
  } while (count > 0);
  return {};
}

std::error_code ReadNativeFile(const std::filesystem::path& path, std::string& bytes,
                               std::size_t most) {
  bytes.clear();
  return ReadNativeBlocks(
      path, [&](std::string_view block) { bytes += block; }, most);
}

}  // namespace tarvell
