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

/// Is called before anything is written, with the ordinary file that a save is about to replace,
/// links followed. An exception from it ends the save.
using KeepEarlier = std::function<void(const std::filesystem::path& native)>;

/// Writes `bytes` as the whole content of the file at `path`, a path of the program. The program
/// writes files only by this function and SaveNativeFile.
///
/// The bytes go to a temporary file in the same folder, which is synced and then replaces the file
/// in one step. The file keeps its mode, its group and, where the system permits it, its owner.
/// Links are followed. If the file cannot be replaced in this way (it is not an ordinary file, has
/// several hard links, or its folder or group does not permit it), it is overwritten in place, and
/// gets its old content back when that fails.
///
/// Throws a WriteFailed error when a step fails. The file then has its earlier content, or the new
/// one if only the last step failed, the sync of its folder.
void SaveFile(std::string_view path, std::string_view bytes, const KeepEarlier& keepEarlier = {});

/// The same for exactly the file at a path of the system, even if others differ only in case.
/// Returns the error of a failed step. Throws when the earlier content could not be put back.
[[nodiscard]] std::error_code SaveNativeFile(const std::filesystem::path& native,
                                             std::string_view bytes,
                                             const KeepEarlier& keepEarlier = {});
std::error_code SaveNativeFile(const std::string& path, std::string_view bytes,
                               const KeepEarlier& keepEarlier = {}) = delete;

}  // namespace tarvell

#endif
