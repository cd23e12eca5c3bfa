// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_FILEIOCOMMONMODULE_H
#define TARVELL_CORE_FILES_FILEIOCOMMONMODULE_H

#include <string>
#include <string_view>

namespace tarvell {

/// Whether there is a folder at `path`, a path of the program with or without a separator at its
/// end.
[[nodiscard]] bool FolderExists(std::string_view path);

/// Makes one folder, whose parent must exist. Throws the error of the system.
void MakeFolder(std::string_view path);

/// Moves a file or folder to the recycle bin. Where there is no recycle bin, deletes it. A link is
/// deleted, never what it leads to. Throws the error of the system.
void Recycle(std::string_view path);

/// The same for the entry of `folder`, a path of the program, with exactly this name: never for one
/// that differs only in case.
void RecycleEntry(std::string_view folder, const std::string& name);

}  // namespace tarvell

#endif
