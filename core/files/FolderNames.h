// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_FOLDERNAMES_H
#define TARVELL_CORE_FILES_FOLDERNAMES_H

#include <filesystem>
#include <set>
#include <string>
#include <system_error>

namespace tarvell {

/// Finds every name in a folder, in the order of their bytes. If it cannot be listed, or not to its
/// end, those that were found are there all the same.
[[nodiscard]] std::error_code ListNames(const std::filesystem::path& folder,
                                        std::set<std::string>& names);

}  // namespace tarvell

#endif
