// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/FolderSurvey.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "core/caldata/Models.h"
#include "core/files/FileNames.h"
#include "core/files/ReadFile.h"
#include "core/platform/ProgramPath.h"
#include "core/platform/SystemName.h"
#include "core/survey/FileCheck.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::string_view kRemedy =
    "Open the instruments of the station and leave them with Return";

bool IsTestKit(std::string_view modelFolder) {
  const Model* model = FindModel(ToUpper(modelFolder));
  return model != nullptr && model->family == ModelFamily::TestKit;
}

/// Whether an entry could not be used because somebody has deleted it since it was found. What a
/// link leads to may have been missing all the time.
bool IsGone(std::error_code code, const std::filesystem::path& native) {
  EntryFacts facts;
  return code == std::errc::no_such_file_or_directory && !CurrentPlatform().Facts(native, facts) &&
         facts.kind == EntryKind::None && !facts.isLink;
}

}  // namespace

bool FolderSurvey::Step(const ValueRules& rules, std::vector<SurveyRow>& rows) {
  if (!std::exchange(hasBegun_, true)) {
    List(rules, rows);
  } else if (file_ < files_.size()) {
    ReadNextFile(rules, rows);
  }
  const bool isDone = file_ == files_.size();
  if (isDone) {
    bytes_ = {};
    open_.reset();
  }
  return !isDone;
}

std::string FolderSurvey::Name() const {
  return std::string(LastNameOf(folder_.Path()));
}

double FolderSurvey::Progress() const {
  return files_.empty() ? 0 : static_cast<double>(file_) / static_cast<double>(files_.size());
}

void FolderSurvey::List(const ValueRules& rules, std::vector<SurveyRow>& rows) {
  const bool isStation = kind_ == Kind::Station;
  const std::error_code code =
      folder_.List(isStation ? SearchKind::OrdinaryFiles : SearchKind::NamesWithoutDot);
  isListed_ = !code || IsGone(code, folder_.Native());
  if (!isListed_) {
    rows.push_back(folder_.UnlistedRow(code));
  }
  if (code) {
    return;
  }
  if (isStation) {
    folder_.CheckIndex(kRemedy, {Name()}, rows);
    files_ = folder_.Names();
  } else {
    std::ranges::copy_if(folder_.Names(), std::back_inserter(files_),
                         [](const ListedFolder::Name& file) { return IsDataFileName(file.name); });
    if (const Model* model = FindModel(ToUpper(Name())); model != nullptr && model->create) {
      withVersions_ = rules.versions.FilesIn(Name());
    }
  }
  open_ = CurrentPlatform().KeepOpen(folder_.Native());
}

void FolderSurvey::ReadNextFile(const ValueRules& rules, std::vector<SurveyRow>& rows) {
  const ListedFolder::Name& file = files_[file_++];
  const std::string path = Joined(folder_.Path(), file.name);
  const int open = open_ ? open_->Number() : -1;
  const std::error_code code =
      ReadFoundFile({folder_.Native(), file.name, file.kind, open}, bytes_, kDataFileLimit);
  // Joining a path takes longer than looking at most files.
  if (code && IsGone(code, folder_.Native() / SystemName(file.name))) {
    return;
  }
  ++filesRead_;
  // The file of a test kit may have any size.
  const bool isRead =
      !code || (code == kTooLargeForData && kind_ == Kind::Model && IsTestKit(Name()));
  if (!isRead) {
    rows.push_back(UnreadableRow(path, code));
  } else if (kind_ == Kind::Station) {
    rows.push_back(InstrumentRow(Name(), path, bytes_));
  } else {
    const bool hasVersions = withVersions_.contains(ToUpper(file.name));
    rows.push_back(DataSetRow(
        Name(), path, bytes_, rules.limits,
        hasVersions ? rules.versions.Of(Name(), file.name) : std::vector<KeptVersion>()));
  }
}

SurveyRow FolderSurvey::UnreadableRow(const std::string& path, std::error_code code) const {
  SurveyRow row;
  row.path = path;
  if (kind_ == Kind::Station) {
    row.kind = SurveyRow::Kind::Instrument;
    row.model = LastNameOf(path);
    row.stations = {Name()};
  } else {
    row.kind = SurveyRow::Kind::DataSet;
    row.model = Name();
  }
  AddUnreadable(SystemError(code, "read the file", path), row);
  return row;
}

}  // namespace tarvell
