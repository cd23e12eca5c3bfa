// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_SAVEFILE_H
#define TARVELL_CORE_FILES_SAVEFILE_H

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace tarvell {

/// Called with the native path of the ordinary file that a save is about to replace, links
/// followed, before anything is written. What it throws ends the save.
using KeepEarlier = std::function<void(const std::filesystem::path& native)>;

/// Writes `bytes` as the whole content of the file at `path` (path text of the program). This is
/// the only way in which the program writes a file.
///
/// A new content is written and synced beside the file and then takes its place in one step, with
/// the mode, group and, where the system permits it, owner that the file had; links are followed.
/// Where that cannot be (no ordinary file, several hard links, a folder that takes no new file, a
/// group that cannot be kept), the file is overwritten in place, and gets its old content back when
/// that fails.
///
/// Throws a WriteFailed error when a step failed; the file then holds its earlier content, whole,
/// or the new one when only the last step, syncing its folder, failed.
void SaveFile(std::string_view path, std::string_view bytes, const KeepEarlier& keepEarlier = {});

/// The same for exactly the file that a native path names, whatever others differ from it only in
/// case. A failed step is returned; an earlier content that could not be put back is thrown.
[[nodiscard]] std::error_code SaveNativeFile(const std::filesystem::path& native,
                                             std::string_view bytes,
                                             const KeepEarlier& keepEarlier = {});
std::error_code SaveNativeFile(const std::string& path, std::string_view bytes,
                               const KeepEarlier& keepEarlier = {}) = delete;

}  // namespace tarvell

#endif
