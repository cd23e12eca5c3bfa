// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_COMPARISON_H
#define TARVELL_CORE_SURVEY_COMPARISON_H

#include <set>
#include <string>
#include <vector>

#include "core/survey/SurveyRow.h"

namespace tarvell {

/// What is known about the trees that the rows come from.
struct SurveyedTrees {
  bool hasDataSets = true;         ///< whether the calibration tree could be listed
  bool hasStations = true;         ///< whether the station tree could be listed
  std::set<std::string> models;    ///< folders of the calibration tree, in upper case
  std::set<std::string> unlisted;  ///< those of them that could not be listed
  bool hasUnlistedStation = false;
};

/// Compares the rows with each other: finds the data set of each instrument and the stations of
/// each data set, and adds what does not fit.
///
/// What an earlier comparison has found is forgotten.
///
/// The data set of an instrument is the file that its model and serial number name. A cause is
/// reported once: an instrument whose data set cannot be read, or is another one's, is not compared
/// with it.
void CompareRows(const SurveyedTrees& trees, std::vector<SurveyRow>& rows);

}  // namespace tarvell

#endif
