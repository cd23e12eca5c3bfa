// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_SHAREDNAMES_H
#define TARVELL_CORE_PLATFORM_SHAREDNAMES_H

#include <cstdint>
#include <string_view>

/// What the bodies of the platform have in common, so that programs on different systems can work
/// on one tree.
namespace tarvell {

/// A temporary file is called ".tarvell-XXXXXX.tmp".
inline constexpr std::string_view kTemporaryPrefix = ".tarvell-";
inline constexpr std::string_view kTemporarySuffix = ".tmp";

[[nodiscard]] inline bool IsTemporary(std::string_view name) {
  return name.size() > kTemporaryPrefix.size() + kTemporarySuffix.size() &&
         name.starts_with(kTemporaryPrefix) && name.ends_with(kTemporarySuffix);
}

/// The byte of a file that its lock 0 holds, far after the end of the content: on some systems
/// nobody else may read a locked byte.
inline constexpr std::uint64_t kFirstLockedByte = std::uint64_t{1} << 40U;

}  // namespace tarvell

#endif
