// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/FolderNames.h"

#include "core/platform/Platform.h"

namespace tarvell {

std::error_code ListNames(const std::filesystem::path& folder, std::set<std::string>& names) {
  names.clear();
  return CurrentPlatform().Search(folder, SearchKind::EveryName, [&](const FoundEntry& entry) {
    names.insert(entry.name);
    return true;
  });
}

}  // namespace tarvell
