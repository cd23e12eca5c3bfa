// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_PROGRAMPATH_H
#define TARVELL_CORE_PLATFORM_PROGRAMPATH_H

#include <string>
#include <string_view>

/// The form of a path of the program, such as "c:\calfactors\PX12A". Paths.h says what it means.
namespace tarvell {

[[nodiscard]] bool IsDriveLetter(char c);

/// Whether `c` is "\" or "/". Both separate names.
[[nodiscard]] bool IsPathSeparator(char c);

/// Whether `path` begins with a letter and a colon.
[[nodiscard]] bool BeginsWithDrive(std::string_view path);

/// Whether `path` begins neither with a drive letter nor with a separator, so that it depends on
/// the folder in which the program was started.
[[nodiscard]] bool IsRelative(std::string_view path);

/// `folder` and `name` joined by one "\".
[[nodiscard]] std::string Joined(std::string_view folder, std::string_view name);

/// `path` up to its last separator, "" when it has none.
[[nodiscard]] std::string_view FolderOf(std::string_view path);

/// `path` after its last separator, all of it when it has none.
[[nodiscard]] std::string_view LastNameOf(std::string_view path);

/// `path` as a message shows it, with only one kind of separator: "\" if it begins with a drive
/// letter, otherwise the first separator that it has.
[[nodiscard]] std::string ShownPath(std::string_view path);

}  // namespace tarvell

#endif
