// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_PATHS_H
#define TARVELL_CORE_FILES_PATHS_H

#include <filesystem>
#include <string>
#include <string_view>

#include "core/platform/ProgramPath.h"

/// A path of the program is a text such as "c:\calfactors\PX12A"; a path of the system is a
/// std::filesystem::path. On a system without drive letters the drives are folders in the drive
/// folder.
namespace tarvell {

/// The path of the system that `path` means. "\" and "/" both separate names. "." and ".." are
/// resolved, and ".." never leads out of a drive. Where no entry has exactly the name in `path`,
/// one that differs from it only in case is meant.
[[nodiscard]] std::filesystem::path NativePath(std::string_view path);

/// A path of the system as the program shows it: with its drive letter when it is on a drive.
[[nodiscard]] std::string PathText(const std::filesystem::path& native);
std::string PathText(const std::string& path) = delete;

/// The absolute path that `path` means, as a path of the program.
[[nodiscard]] std::string FullPathText(std::string_view path);

/// Throws a Name error for a path such as "\\server\share" on a system that reaches shares only
/// through the folders where they are mounted; the error says what to do. A path that begins with
/// "//" is accepted where it exists.
void CheckNamesNoShare(std::string_view path);

/// Folder that holds the drives ("c" in it is drive C:), "" on a system with drive letters.
[[nodiscard]] std::filesystem::path DriveFolder();

/// Sets another drive folder; "" sets the system's own again.
void SetDriveFolder(const std::filesystem::path& folder);

}  // namespace tarvell

#endif
