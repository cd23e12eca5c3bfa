// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_OVERVIEW_UPDATESTATIONS_H
#define TARVELL_SCREENS_OVERVIEW_UPDATESTATIONS_H

#include <QWidget>

#include <set>
#include <string>
#include <vector>

#include "core/survey/SurveyRow.h"

namespace tarvell {

/// What an update has done.
struct StationsUpdated {
  bool isAnySaved = false;
  /// Those of the instruments and their data sets, if anything was saved or could not be read: the
  /// overview may show something that is not so any more.
  std::set<std::string> foldersToReadAgain = {};
};

/// Takes the due dates and comments of data sets into the files of the instruments at the stations,
/// after a preview of every line that changes. Which instruments: the selected ones, and all that
/// use a selected data set. `all` are the rows of a finished survey.
StationsUpdated UpdateStations(QWidget* owner, const std::vector<SurveyRow>& selected,
                               const std::vector<SurveyRow>& all);

}  // namespace tarvell

#endif
