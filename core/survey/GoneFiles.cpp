// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/GoneFiles.h"

#include <algorithm>
#include <map>
#include <system_error>

#include "core/files/FolderNames.h"
#include "core/files/Paths.h"

namespace tarvell {

std::set<std::string> FoldersWithGoneFiles(std::span<const SurveyRow> rows) {
  std::map<std::string, std::set<std::string>> namesIn;
  for (const SurveyRow& row : rows) {
    if (row.kind != SurveyRow::Kind::Place) {
      namesIn[std::string(FolderOf(row.path))].emplace(LastNameOf(row.path));
    }
  }
  std::set<std::string> folders;
  for (const auto& [folder, names] : namesIn) {
    std::set<std::string> there;
    const std::error_code code = ListNames(NativePath(folder), there);
    const bool isKnown = !code || code == std::errc::no_such_file_or_directory;
    if (isKnown && !std::ranges::includes(there, names)) {
      folders.insert(folder);
    }
  }
  return folders;
}

}  // namespace tarvell
