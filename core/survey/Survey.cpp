// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/Survey.h"

#include <algorithm>
#include <iterator>
#include <system_error>

#include "core/caldata/Models.h"
#include "core/files/FileNames.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/station/StationFiles.h"
#include "core/survey/FileCheck.h"
#include "core/survey/IndexCheck.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::string_view kStationRemedy =
    "Open the instruments of the station and leave them with Return";
constexpr std::string_view kRootRemedy =
    "Open the list of stations and leave it with Return to Main";

SurveyRow PlaceRow(const std::string& path) {
  SurveyRow row;
  row.kind = SurveyRow::Kind::Place;
  row.path = path;
  return row;
}

/// Removes the INDEX: the name itself or, without one, the first that differs only in case.
template <typename Names>
void LeaveOutIndex(Names& names) {
  auto index =
      std::ranges::find_if(names, [](const auto& name) { return name.name == kIndexName; });
  if (index == names.end()) {
    index = std::ranges::find_if(
        names, [](const auto& name) { return EqualsIgnoringCase(name.name, kIndexName); });
  }
  if (index != names.end()) {
    names.erase(index);
  }
}

bool IsTestKit(const std::string& modelFolder) {
  const Model* model = FindModel(ToUpper(modelFolder));
  return model != nullptr && model->family == ModelFamily::TestKit;
}

/// Adds what depends on the day, in the place of what was found before.
void CheckDue(const SurveyOrder& order, SurveyRow& row) {
  std::erase_if(row.findings, [](const Finding& it) {
    return it.kind == FindingKind::PastDue || it.kind == FindingKind::DueSoon;
  });
  // The date of an instrument with a data set is a copy.
  const bool isCopy = row.kind == SurveyRow::Kind::Instrument && !row.dataSet.empty();
  if (isCopy || !row.daysLeft || row.Has(FindingKind::NoSuchDate)) {
    return;
  }
  const int days = *row.daysLeft;
  const std::string text = "The calibration is due on " + DateText(row.due) + ".";
  if (days < 0) {
    row.Add(FindingKind::PastDue, text + " Have the instrument calibrated.");
  } else if (days <= order.dueSoonDays) {
    row.Add(FindingKind::DueSoon, text + " Plan the calibration.");
  }
}

}  // namespace

Survey::Survey(SurveyOrder order) : order_(std::move(order)) {}

Survey::Survey(SurveyOrder order, std::string_view folder)
    : order_(std::move(order)), stage_(Stage::Folders), isOfOneFolder_(true) {
  folders_.push_back({std::string(LastNameOf(folder)), FolderOf(folder) == order_.stationDir});
  limits_ = LoadSlipLimits(order_.calibrationDir);
}

bool Survey::Step() {
  switch (stage_) {
    case Stage::Roots:
      ListRoots();
      stage_ = Stage::Folders;
      break;
    case Stage::Folders:
      if (folder_ < folders_.size()) {
        ListFolder();
        stage_ = Stage::Files;
      } else {
        stage_ = isOfOneFolder_ ? Stage::Done : Stage::Compare;
      }
      break;
    case Stage::Files:
      ReadNextFile();
      break;
    case Stage::Compare:
      Compare();
      stage_ = Stage::Done;
      break;
    case Stage::Done:
      break;
  }
  return stage_ != Stage::Done;
}

double Survey::Progress() const {
  if (stage_ == Stage::Roots) {
    return 0;
  }
  if (stage_ == Stage::Done || folders_.empty()) {
    return 1;
  }
  const double part = files_.empty() || stage_ != Stage::Files
                          ? 0.0
                          : static_cast<double>(file_) / static_cast<double>(files_.size());
  return (static_cast<double>(folder_) + part) / static_cast<double>(folders_.size());
}

void Survey::ListRoots() {
  std::vector<Name> names;
  trees_.hasDataSets = List(order_.calibrationDir, SearchKind::NamesWithoutDot, names);
  for (const Name& name : names) {
    if (name.kind != EntryKind::File) {
      folders_.push_back({name.name, false});
      trees_.models.insert(ToUpper(name.name));
    }
  }
  if (trees_.hasDataSets) {
    limits_ = LoadSlipLimits(order_.calibrationDir);
  }
  trees_.hasStations = List(order_.stationDir, SearchKind::NamesWithoutDot, names);
  LeaveOutIndex(names);
  for (const Name& name : names) {
    if (name.kind != EntryKind::File) {
      folders_.push_back({name.name, true});
    }
  }
  if (trees_.hasStations) {
    CheckIndexIn(order_.stationDir, names, kRootRemedy, {});
  }
}

void Survey::ListFolder() {
  const Folder& folder = folders_[folder_];
  const std::string path = PathOf(folder);
  file_ = 0;
  if (folder.isStation) {
    if (List(path, SearchKind::OrdinaryFiles, files_)) {
      LeaveOutIndex(files_);
      CheckIndexIn(path, files_, kStationRemedy, {folder.name});
    }
  } else if (List(path, SearchKind::NamesWithoutDot, files_)) {
    std::erase_if(files_, [](const Name& file) { return !IsDataFileName(file.name); });
  } else {
    trees_.unlisted.insert(ToUpper(folder.name));
  }
}

void Survey::ReadNextFile() {
  if (file_ == files_.size()) {
    ++folder_;
    stage_ = Stage::Folders;
    return;
  }
  const Folder& folder = folders_[folder_];
  const Name& file = files_[file_++];
  const std::string path = Joined(PathOf(folder), file.name);
  const std::error_code code =
      ReadFoundFile({native_, file.name, file.kind}, bytes_, kDataFileLimit);
  ++filesRead_;
  AddRow(RowOf(folder, path, code));
}

SurveyRow Survey::RowOf(const Folder& folder, const std::string& path, std::error_code code) const {
  // The file of a test kit may have any size.
  if (code && (folder.isStation || code != kTooLargeForData || !IsTestKit(folder.name))) {
    SurveyRow row;
    row.kind = folder.isStation ? SurveyRow::Kind::Instrument : SurveyRow::Kind::DataSet;
    row.path = path;
    row.model = folder.isStation ? std::string(LastNameOf(path)) : folder.name;
    if (folder.isStation) {
      row.stations = {folder.name};
    }
    AddUnreadable(SystemError(code, "read the file", path), row);
    return row;
  }
  if (folder.isStation) {
    return InstrumentRow(folder.name, path, bytes_);
  }
  return DataSetRow(folder.name, path, bytes_, limits_);
}

std::string Survey::PathOf(const Folder& folder) const {
  return Joined(folder.isStation ? order_.stationDir : order_.calibrationDir, folder.name);
}

void Survey::AddRow(SurveyRow row) {
  row.daysLeft = DaysLeft(row.due, order_.today);
  if (row.kind == SurveyRow::Kind::DataSet) {
    CheckDue(order_, row);
  }
  rows_.push_back(std::move(row));
}

bool Survey::List(const std::string& path, SearchKind kind, std::vector<Name>& names) {
  names.clear();
  native_ = NativePath(path);
  const std::error_code code =
      CurrentPlatform().Search(native_, kind, [&](const FoundEntry& entry) {
        names.push_back({entry.name, entry.kind});
        return true;
      });
  std::ranges::sort(names, {}, &Name::name);
  if (code) {
    SurveyRow row = PlaceRow(path);
    AddUnreadable(SystemError(code, "list the folder", path), row);
    rows_.push_back(std::move(row));
    return false;
  }
  return true;
}

void Survey::CheckIndexIn(const std::string& path, const std::vector<Name>& listed,
                          std::string_view remedy, const std::vector<std::string>& stations) {
  std::vector<std::string> names;
  std::ranges::transform(listed, std::back_inserter(names), &Name::name);
  SurveyRow row = PlaceRow(Joined(path, kIndexName));
  row.stations = stations;
  const std::error_code code = ReadNativeFile(NativePath(row.path), bytes_, kDataFileLimit);
  if (code && code != std::errc::no_such_file_or_directory) {
    AddUnreadable(SystemError(code, "read the file", row.path), row);
  } else {
    // Without an INDEX, every name lacks.
    CheckIndex(bytes_, names, remedy, row);
  }
  if (!row.findings.empty()) {
    rows_.push_back(std::move(row));
  }
}

void Survey::Compare() {
  CompareRows(trees_, rows_);
  CheckDueDates(order_, rows_);
}

void SurveyAgain(const SurveyOrder& order, const std::string& folder, SurveyResult& result) {
  Survey survey(order, folder);
  while (survey.Step()) {
  }
  std::vector<SurveyRow>& rows = result.rows;
  const auto isIn = [&](const SurveyRow& row) {
    return row.path == folder || FolderOf(row.path) == folder;
  };
  const auto place = std::ranges::find_if(rows, isIn) - rows.begin();
  std::erase_if(rows, isIn);
  std::vector<SurveyRow> again = survey.TakeResult().rows;
  rows.insert(rows.begin() + place, std::make_move_iterator(again.begin()),
              std::make_move_iterator(again.end()));
  CompareRows(result.trees, rows);
  CheckDueDates(order, rows);
}

void CheckDueDates(const SurveyOrder& order, std::vector<SurveyRow>& rows) {
  for (SurveyRow& row : rows) {
    CheckDue(order, row);
  }
}

}  // namespace tarvell
