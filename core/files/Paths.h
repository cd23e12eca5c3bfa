// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_PATHS_H
#define TARVELL_CORE_FILES_PATHS_H

#include <string>
#include <string_view>

#include "core/platform/PathText.h"

/// The program speaks in paths such as "c:\calfactors\PX12A". On a system without drive letters
/// a path that begins with one lies below the drive folder; any other path is taken as it is.
namespace tarvell {

/// The native path that `path` means. "\" and "/" both separate. "." and ".." are resolved, and
/// ".." never leads out of a drive. Where no entry of exactly a component's name exists, one that
/// differs from it only in case is meant.
[[nodiscard]] std::string NativePath(std::string_view path);

/// A native path as the program speaks of it: with its drive letter when it lies on a drive.
[[nodiscard]] std::string PathText(std::string_view native);

/// Whether `path` has neither a drive letter nor a separator at its beginning, so that what it
/// means depends on the folder in which the program was started.
[[nodiscard]] bool IsRelative(std::string_view path);

/// The whole of the path that `path` means, as path text.
[[nodiscard]] std::string FullPathText(std::string_view path);

/// Throws a Name error, which says how to reach a share, for a path such as "\\server\share" where
/// the system reaches shares by its folders only. "//" and a name are fine where they exist.
void CheckNamesNoShare(std::string_view path);

/// `folder` and `name` joined by one "\".
[[nodiscard]] std::string Joined(std::string_view folder, std::string_view name);

/// `path` up to its last separator, "" when it has none.
[[nodiscard]] std::string_view FolderOf(std::string_view path);

/// `path` behind its last separator, all of it when it has none.
[[nodiscard]] std::string_view NameOf(std::string_view path);

/// Native folder that holds the drives ("c" below it is drive C:), "" on a system that has drive
/// letters of its own.
[[nodiscard]] std::string DriveFolder();

/// Puts the drives elsewhere; "" puts them back.
void SetDriveFolder(const std::string& folder);

}  // namespace tarvell

#endif
