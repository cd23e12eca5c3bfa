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

/// Takes the due dates and comments of data sets into the files of the instruments at the stations,
/// after a preview of every line that changes. Which instruments: the selected ones, and all that
/// use a selected data set. `all` are the rows of a finished survey. Returns the folders of the
/// files that were saved.
std::set<std::string> UpdateStations(QWidget* owner, const std::vector<SurveyRow>& selected,
                                     const std::vector<SurveyRow>& all);

}  // namespace tarvell

#endif
