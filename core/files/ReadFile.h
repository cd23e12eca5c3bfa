// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_READFILE_H
#define TARVELL_CORE_FILES_READFILE_H

#include <cstddef>
#include <filesystem>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

namespace tarvell {

/// No file that is read as data is larger: hundreds of times what the program writes.
inline constexpr std::size_t kMostDataFileBytes = 1U << 22U;

/// What reading a larger one ends with.
inline constexpr std::errc kTooLargeForData = std::errc::value_too_large;

/// Reads the ordinary file at the native `path` to its end, block by block. One of more than `most`
/// bytes is read no further, and is kTooLargeForData.
[[nodiscard]] std::error_code ReadNativeBlocks(
    const std::filesystem::path& path, const std::function<void(std::string_view block)>& take,
    std::size_t most = std::numeric_limits<std::size_t>::max());

/// Reads the whole ordinary file at the native `path` into `bytes`, likewise.
[[nodiscard]] std::error_code ReadNativeFile(
    const std::filesystem::path& path, std::string& bytes,
    std::size_t most = std::numeric_limits<std::size_t>::max());
std::error_code ReadNativeFile(const std::string& path, std::string& bytes,
                               std::size_t most = 0) = delete;

}  // namespace tarvell

#endif
