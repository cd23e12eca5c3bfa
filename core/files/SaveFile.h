// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_SAVEFILE_H
#define TARVELL_CORE_FILES_SAVEFILE_H

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

#include "core/platform/Platform.h"

namespace tarvell {

/// Is called before anything is written, with the path that the save writes to, links followed, and
/// with what is there now. An exception from it ends the save.
using BeforeSaving = std::function<void(const std::filesystem::path& target, EntryKind kind)>;

/// Writes `bytes` as the whole content of the file at `path`, a path of the program. The program
/// writes files only by the functions of this header.
///
/// The bytes go to a temporary file in the same folder, which is synced and then replaces the file
/// in one step. The file keeps its mode, its group and, where the system permits it, its owner.
/// Links are followed. If the file cannot be replaced in this way (it is not an ordinary file, has
/// several hard links, or its folder or group does not permit it), it is overwritten in place, and
/// gets its old content back when that fails.
///
/// Throws a WriteFailed error when a step fails. The file then has its earlier content, or the new
/// one if only the last step failed, the sync of its folder.
void SaveFile(std::string_view path, std::string_view bytes, const BeforeSaving& before = {});

/// The same for exactly the file at a path of the system, even if others differ only in case.
/// Returns the error of a failed step. Throws when the earlier content could not be put back.
[[nodiscard]] std::error_code SaveNativeFile(const std::filesystem::path& native,
                                             std::string_view bytes,
                                             const BeforeSaving& before = {});
std::error_code SaveNativeFile(const std::string& path, std::string_view bytes,
                               const BeforeSaving& before = {}) = delete;

/// Appends `line` and a line end to the file at a path of the system, which must exist, and returns
/// when they are on the disk. Ends a last line that was cut off. Two writers at once must hold a
/// lock in turn. When a step fails, a part of the line may have been written.
[[nodiscard]] std::error_code AppendLine(const std::filesystem::path& native,
                                         std::string_view line);
std::error_code AppendLine(const std::string& path, std::string_view line) = delete;

}  // namespace tarvell

#endif
