// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_FILEIOCOMMONMODULE_H
#define TARVELL_CORE_FILES_FILEIOCOMMONMODULE_H

#include <string>
#include <string_view>

namespace tarvell {

/// Whether `path` (path text of the program, with or without one trailing separator) names an
/// existing folder.
[[nodiscard]] bool FolderExists(std::string_view path);

/// Makes one folder, whose parent must exist. Throws the platform's error.
void MakeFolder(std::string_view path);

/// Moves a file or folder to the recycle bin; where there is none, deletes it. A link is deleted,
/// never what it leads to. Throws the platform's error.
void Recycle(std::string_view path);

/// The same of the entry of `folder` (path text of the program) with exactly this name: one that
/// differs in case alone is never taken in its place.
void RecycleEntry(std::string_view folder, const std::string& name);

}  // namespace tarvell

#endif
