// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_FILECHECK_H
#define TARVELL_CORE_SURVEY_FILECHECK_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/curves/SlipLimits.h"
#include "core/history/KeptVersions.h"
#include "core/platform/Error.h"
#include "core/survey/SurveyRow.h"

/// What a survey finds in the content of one file.
namespace tarvell {

/// The row of a data set. `modelFolder` is the name of the folder that its file is in. Its days
/// left and what depends on the day are not in it. `limits` are those of the calibration tree,
/// `versions` the kept versions of the file.
[[nodiscard]] SurveyRow DataSetRow(const std::string& modelFolder, const std::string& path,
                                   std::string_view bytes, const SlipLimits& limits,
                                   const std::vector<KeptVersion>& versions);

/// The same of an instrument of a station.
[[nodiscard]] SurveyRow InstrumentRow(const std::string& station, const std::string& path,
                                      std::string_view bytes);

/// Adds the finding for a file or folder that cannot be read.
void AddUnreadable(const Error& error, SurveyRow& row);

/// Adds a finding unless the last line of a file has an end; `remedy` completes the sentence
/// "Compare it with its source, then ...". Returns whether it has.
bool CheckLastLine(std::string_view bytes, std::string_view remedy, SurveyRow& row);

/// Adds a finding unless a save without changes would write the file as it is. `save` returns what
/// it would write, `hasEnd` says whether the file has the line that ends it. A row that has a
/// finding which explains the difference gets no other.
void CheckRewritten(std::string_view bytes, const std::function<std::string()>& save, bool hasEnd,
                    SurveyRow& row);

}  // namespace tarvell

#endif
