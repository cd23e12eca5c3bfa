// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_STATIONUPDATE_H
#define TARVELL_CORE_SURVEY_STATIONUPDATE_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/mTypeDef.h"
#include "core/history/Replacement.h"
#include "core/history/StoredFile.h"
#include "core/station/StationFiles.h"
#include "core/survey/SurveyRow.h"

namespace tarvell {

/// A line of a file that a save changes. `before` is "" for a line that it adds, `after` for one
/// that it removes.
struct ChangedLine {
  std::string before;
  std::string after;

  bool operator==(const ChangedLine&) const = default;
};

/// The data set of each instrument of `all` that is among `selected`, or whose data set is, by the
/// paths of both. A test kit whose data have no due date is left out, because no editor could enter
/// one.
[[nodiscard]] std::map<std::string, std::string> DataSetsToTakeOver(
    const std::vector<SurveyRow>& selected, const std::vector<SurveyRow>& all);

/// The change of an instrument's file that takes over the due date and the comment of its data set.
/// All other fields stay, CAL DATA included.
class StationUpdate {
 public:
  /// Reads both files and prepares the change. Throws the error of a file that cannot be read, and
  /// an error that says what to do first if they do not belong together, if the data set has no due
  /// date, or if the instrument could not be saved.
  StationUpdate(const std::string& instrumentPath, const std::string& dataSetPath);

  /// Every line that the save changes, also where the file was not as the program writes it. None
  /// if the file has the due date and the comment of the data set already.
  [[nodiscard]] const std::vector<ChangedLine>& Lines() const { return lines_; }

  /// The folder of the station.
  [[nodiscard]] const std::string& Folder() const { return stationFolder_; }

  /// What the save would replace because the file has changed since it was read.
  [[nodiscard]] Replacement WouldReplace() const;

  /// Saves the instrument as SaveInstrumentFile does. Throws a NotFound error if its file was
  /// deleted after it was read.
  void Save(Earlier earlier = Earlier::Keep);

 private:
  std::string stationFolder_;
  std::string path_;
  StationInstrument instrument_;
  StoredFile file_;
  std::vector<ChangedLine> lines_;
};

/// The lines that differ between the contents of two instrument files, in their order: also a line
/// at another place, which is removed and added, and a line with another end. None if the due date
/// and the comment are the same.
[[nodiscard]] std::vector<ChangedLine> ChangedLines(std::string_view before,
                                                    std::string_view after);

}  // namespace tarvell

#endif
