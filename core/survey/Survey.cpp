// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/Survey.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <span>
#include <system_error>
#include <utility>

#include "core/platform/ProgramPath.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::string_view kRemedy = "Open the list of stations and leave it with Return to Main";

/// Adds what depends on the day, in the place of what was found before.
void CheckDue(const SurveyOrder& order, SurveyRow& row) {
  row.daysLeft = DaysLeft(row.due, order.today);
  std::erase_if(row.findings, [](const Finding& it) {
    return it.kind == FindingKind::PastDue || it.kind == FindingKind::DueSoon;
  });
  if (row.isCopy || !row.daysLeft) {
    return;
  }
  const auto due = [&] { return "The calibration is due on " + DateText(row.due) + "."; };
  if (*row.daysLeft < 0) {
    row.Add(FindingKind::PastDue, due() + " Have the instrument calibrated.");
  } else if (*row.daysLeft <= order.dueSoonDays) {
    row.Add(FindingKind::DueSoon, due() + " Plan the calibration.");
  }
}

void JudgeDate(const SurveyOrder& order, SurveyRow& row) {
  row.daysLeft = DaysLeft(row.due, order.today);
  // Whether the date of an instrument counts is not known before the comparison.
  if (row.kind == SurveyRow::Kind::DataSet) {
    CheckDue(order, row);
  }
}

/// Replaces the rows of a folder.
void ReadFolderAgain(const SurveyOrder& order, const ValueRules& rules, const std::string& folder,
                     std::vector<SurveyRow>& rows) {
  // The root of a drive ends in a separator.
  const bool isStation = Joined(order.stationDir, std::string(LastNameOf(folder))) == folder;
  const auto kind = isStation ? FolderSurvey::Kind::Station : FolderSurvey::Kind::Model;
  FolderSurvey survey(kind, ListedFolder(folder));
  std::vector<SurveyRow> again;
  while (survey.Step(rules, again)) {
  }
  for (SurveyRow& row : again) {
    JudgeDate(order, row);
  }
  const auto isIn = [&](const SurveyRow& row) {
    return row.path == folder || FolderOf(row.path) == folder;
  };
  const auto place = std::ranges::find_if(rows, isIn) - rows.begin();
  std::erase_if(rows, isIn);
  rows.insert(rows.begin() + place, std::make_move_iterator(again.begin()),
              std::make_move_iterator(again.end()));
}

}  // namespace

Survey::Survey(SurveyOrder order) : order_(std::move(order)) {}

bool Survey::Step() {
  switch (stage_) {
    case Stage::Roots:
      ListRoots();
      stage_ = Stage::Folders;
      break;
    case Stage::Folders:
      StepInFolder();
      stage_ = folder_ < folders_.size() ? Stage::Folders : Stage::Compare;
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
  if (folder_ == folders_.size()) {
    return 1;
  }
  return (static_cast<double>(folder_) + folders_[folder_].Progress()) /
         static_cast<double>(folders_.size());
}

bool Survey::ListRoot(ListedFolder& root) {
  const std::error_code code = root.List(SearchKind::NamesWithoutDot);
  if (code) {
    rows_.push_back(root.UnlistedRow(code));
  }
  return !code;
}

void Survey::ListRoots() {
  const auto add = [this](FolderSurvey::Kind kind, const ListedFolder& root) {
    for (const ListedFolder::Name& name : root.Names()) {
      if (name.kind != EntryKind::File) {
        folders_.emplace_back(kind, ListedFolder(root, name.name));
      }
    }
  };
  ListedFolder dataSets(order_.calibrationDir);
  trees_.hasDataSets = ListRoot(dataSets);
  rules_ = std::make_unique<ValueRules>(order_.calibrationDir);
  add(FolderSurvey::Kind::Model, dataSets);
  for (const FolderSurvey& folder : folders_) {
    trees_.models.insert(ToUpper(folder.Name()));
  }
  ListedFolder stations(order_.stationDir);
  trees_.hasStations = ListRoot(stations);
  if (trees_.hasStations) {
    stations.CheckIndex(kRemedy, {}, rows_);
  }
  add(FolderSurvey::Kind::Station, stations);
}

void Survey::StepInFolder() {
  if (folder_ == folders_.size()) {
    return;
  }
  FolderSurvey& folder = folders_[folder_];
  const std::size_t first = rows_.size();
  const bool goesOn = folder.Step(*rules_, rows_);
  for (SurveyRow& row : std::span(rows_).subspan(first)) {
    JudgeDate(order_, row);
  }
  if (!goesOn) {
    EndFolder(folder);
    ++folder_;
  }
}

void Survey::EndFolder(const FolderSurvey& folder) {
  filesRead_ += folder.FilesRead();
  if (folder.IsListed()) {
    return;
  }
  if (folder.KindOfFolder() == FolderSurvey::Kind::Model) {
    trees_.unlisted.insert(ToUpper(folder.Name()));
  } else {
    trees_.hasUnlistedStation = true;
  }
}

void Survey::Compare() {
  CompareRows(trees_, rows_);
  // Those of the data sets were judged when they were read.
  for (SurveyRow& row : rows_) {
    if (row.kind == SurveyRow::Kind::Instrument) {
      CheckDue(order_, row);
    }
  }
}

std::future<void> StartThread(const std::function<void()>& work) {
  return std::async(std::launch::async, work);
}

SurveyResult SurveyInThreads(SurveyOrder order, std::size_t threads,
                             const std::function<void(double done)>& report,
                             const ThreadStarter& start) {
  Survey survey(std::move(order));
  survey.ListRoots();
  std::vector<FolderSurvey>& folders = survey.folders_;
  std::vector<std::vector<SurveyRow>> found(folders.size());
  std::atomic<std::size_t> next = 0;
  const auto work = [&](const std::function<void(double done)>& reportHere) {
    for (std::size_t i = next++; i < folders.size(); i = next++) {
      while (folders[i].Step(*survey.rules_, found[i])) {
        found[i].reserve(folders[i].MostRows());
      }
      for (SurveyRow& row : found[i]) {
        JudgeDate(survey.order_, row);
      }
      reportHere(static_cast<double>(i) / static_cast<double>(folders.size()));
    }
  };
  std::vector<std::future<void>> others;
  try {
    for (std::size_t thread = 1; thread < threads; ++thread) {
      others.push_back(start([&work] { work([](double) {}); }));
    }
  } catch (const std::system_error&) {
    // The threads that run do all the work.
  }
  // The other threads may take every folder.
  report(0);
  work(report);
  for (std::future<void>& other : others) {
    other.get();
  }
  std::size_t count = survey.rows_.size();
  for (const std::vector<SurveyRow>& rows : found) {
    count += rows.size();
  }
  survey.rows_.reserve(count);
  for (std::size_t i = 0; i < folders.size(); ++i) {
    std::ranges::move(std::exchange(found[i], {}), std::back_inserter(survey.rows_));
    survey.EndFolder(folders[i]);
  }
  survey.Compare();
  return survey.TakeResult();
}

void ReadAgain(const SurveyOrder& order, const std::set<std::string>& folders,
               std::vector<SurveyRow>& rows) {
  const ValueRules rules(order.calibrationDir);
  for (const std::string& folder : folders) {
    ReadFolderAgain(order, rules, folder, rows);
  }
}

void SurveyAgain(const SurveyOrder& order, const std::set<std::string>& folders,
                 const SurveyedTrees& trees, std::vector<SurveyRow>& rows) {
  ReadAgain(order, folders, rows);
  CompareRows(trees, rows);
  CheckDueDates(order, rows);
}

void CheckDueDates(const SurveyOrder& order, std::vector<SurveyRow>& rows, Compared compared) {
  for (SurveyRow& row : rows) {
    compared == Compared::Yes ? CheckDue(order, row) : JudgeDate(order, row);
  }
}

}  // namespace tarvell
