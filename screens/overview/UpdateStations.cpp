// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/overview/UpdateStations.h"

#include <algorithm>
#include <map>
#include <utility>

#include "core/platform/Error.h"
#include "core/platform/ProgramPath.h"
#include "core/survey/StationUpdate.h"
#include "screens/overview/UpdatePreview.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/ChangedWithHistory.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"

namespace tarvell {

namespace {

/// The data set of each instrument, by the paths of both.
using DataSets = std::map<std::string, std::string>;

struct Plan {
  std::vector<StationUpdate> updates;
  std::vector<UpdatePreview::Line> lines;
};

Plan PlanOf(QWidget* owner, const DataSets& dataSets) {
  const BusyPointer busy;
  Plan plan;
  for (const auto& [instrument, dataSet] : dataSets) {
    const QString file = ToQt(ShownPath(instrument));
    Guarded(
        owner,
        [&, &path = instrument, &source = dataSet] {
          StationUpdate update(path, source);
          for (const auto& [before, after] : update.Lines()) {
            plan.lines.push_back({.file = file, .before = ToQt(before), .after = ToQt(after)});
          }
          if (!update.Lines().empty()) {
            plan.updates.push_back(std::move(update));
          }
        },
        [&](const Error& error) {
          plan.lines.push_back({.file = file, .problem = ToQt(error.Text())});
        });
  }
  return plan;
}

bool HasProblem(const Plan& plan) {
  return std::ranges::any_of(plan.lines, [](const auto& line) { return !line.problem.isEmpty(); });
}

std::set<std::string> FoldersOf(const DataSets& dataSets) {
  std::set<std::string> folders;
  for (const auto& [instrument, dataSet] : dataSets) {
    folders.emplace(FolderOf(instrument));
    folders.emplace(FolderOf(dataSet));
  }
  return folders;
}

/// Whether the file has been saved.
bool Save(QWidget* owner, StationUpdate& update) {
  bool isSaved = false;
  Guarded(owner, [&] {
    isSaved = SavedWithHistory(
        owner, [&] { return update.WouldReplace(); },
        [&](Earlier earlier) { update.Save(earlier); });
  });
  return isSaved;
}

}  // namespace

StationsUpdated UpdateStations(QWidget* owner, const std::vector<SurveyRow>& selected,
                               const std::vector<SurveyRow>& all) {
  const DataSets dataSets = DataSetsToTakeOver(selected, all);
  if (dataSets.empty()) {
    Tell(owner, UpdatePreview::tr("No station has an instrument that could be updated by what is "
                                  "selected. Select instruments that have a data set, or data sets "
                                  "that stations use. The data of a test kit need a due date."));
    return {};
  }
  Plan plan = PlanOf(owner, dataSets);
  if (plan.lines.empty()) {
    Tell(owner, UpdatePreview::tr("Nothing has to be updated: the files of the stations have the "
                                  "due dates and comments of the data sets."));
    return {};
  }
  StationsUpdated updated;
  if (UpdatePreview(plan.lines, !plan.updates.empty(), owner).exec() == QDialog::Accepted) {
    for (StationUpdate& update : plan.updates) {
      updated.isAnySaved = Save(owner, update) || updated.isAnySaved;
    }
  } else if (!HasProblem(plan)) {
    return {};
  }
  updated.foldersToReadAgain = FoldersOf(dataSets);
  return updated;
}

}  // namespace tarvell
