// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_READFILE_H
#define TARVELL_CORE_FILES_READFILE_H

#include <cstddef>
#include <filesystem>
#include <limits>
#include <string>
#include <system_error>

#include "core/platform/Platform.h"

namespace tarvell {

/// A file of more than 4 MiB is not read as data. The program writes hundreds of times less.
inline constexpr std::size_t kDataFileLimit = 1U << 22U;

/// The result of reading a file that is larger than its limit.
inline constexpr std::errc kTooLargeForData = std::errc::value_too_large;

/// Reads the ordinary file at `path` into `bytes`. A file of more than `limit` bytes gives its
/// first `limit` bytes and kTooLargeForData.
[[nodiscard]] std::error_code ReadNativeFile(
    const std::filesystem::path& path, std::string& bytes,
    std::size_t limit = std::numeric_limits<std::size_t>::max());
std::error_code ReadNativeFile(const std::string& path, std::string& bytes,
                               std::size_t limit = 0) = delete;

/// The same of a file that a search has found, perhaps some time ago.
[[nodiscard]] std::error_code ReadFoundFile(const FoundEntry& entry, std::string& bytes,
                                            std::size_t limit);

/// Reads the beginning of `file` into `bytes`: more than an ordinary header, in one call to the
/// system.
[[nodiscard]] std::error_code ReadBeginning(InputFile& file, std::string& bytes);

}  // namespace tarvell

#endif
