// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/ListedFolder.h"

#include <algorithm>
#include <iterator>
#include <system_error>
#include <utility>

#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/ProgramPath.h"
#include "core/station/StationFiles.h"
#include "core/survey/FileCheck.h"
#include "core/survey/IndexCheck.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

SurveyRow PlaceRow(const std::string& path) {
  SurveyRow row;
  row.kind = SurveyRow::Kind::Place;
  row.path = path;
  return row;
}

/// The INDEX: the name itself or, without one, the first that differs only in case.
std::vector<ListedFolder::Name>::iterator FindIndex(std::vector<ListedFolder::Name>& names) {
  const auto index = std::ranges::find(names, kIndexName, &ListedFolder::Name::name);
  return index != names.end() ? index : std::ranges::find_if(names, [](const auto& name) {
    return EqualsIgnoringCase(name.name, kIndexName);
  });
}

}  // namespace

ListedFolder::ListedFolder(std::string path) : path_(std::move(path)), native_(NativePath(path_)) {}

ListedFolder::ListedFolder(const ListedFolder& parent, const std::string& name)
    : path_(Joined(parent.path_, name)), native_(parent.native_ / SystemName(name)) {}

std::error_code ListedFolder::List(SearchKind kind) {
  const std::error_code code =
      CurrentPlatform().Search(native_, kind, [this](const FoundEntry& entry) {
        names_.push_back({entry.name, entry.kind});
        return true;
      });
  std::ranges::sort(names_, {}, &Name::name);
  return code;
}

SurveyRow ListedFolder::UnlistedRow(std::error_code code) const {
  SurveyRow row = PlaceRow(path_);
  row.isFolder = true;
  AddUnreadable(SystemError(code, "list the folder", path_), row);
  return row;
}

void ListedFolder::CheckIndex(std::string_view remedy, const std::vector<std::string>& stations,
                              std::vector<SurveyRow>& rows) {
  SurveyRow row = PlaceRow(Joined(path_, kIndexName));
  row.stations = stations;
  std::string bytes;
  std::error_code code;
  if (const auto index = FindIndex(names_); index != names_.end()) {
    code = ReadFoundFile({native_, index->name, index->kind}, bytes, kDataFileLimit);
    names_.erase(index);
  } else {
    // It may still be something that is not a file.
    code = ReadNativeFile(NativePath(row.path), bytes, kDataFileLimit);
  }
  if (code && code != std::errc::no_such_file_or_directory) {
    AddUnreadable(SystemError(code, "read the file", row.path), row);
  } else {
    std::vector<std::string> others;
    std::ranges::transform(names_, std::back_inserter(others), &Name::name);
    // An INDEX that does not exist lacks every name.
    tarvell::CheckIndex(bytes, others, remedy, row);
  }
  if (!row.findings.empty()) {
    rows.push_back(std::move(row));
  }
}

}  // namespace tarvell
