// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_SURVEY_H
#define TARVELL_CORE_SURVEY_SURVEY_H

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "core/curves/SlipLimits.h"
#include "core/dates/DueDate.h"
#include "core/dates/FileDate.h"
#include "core/platform/Platform.h"
#include "core/survey/Comparison.h"
#include "core/survey/SurveyRow.h"

namespace tarvell {

/// What a survey looks at.
struct SurveyOrder {
  std::string calibrationDir;  ///< a path of the program, as all paths here
  std::string stationDir;
  FileDate today;                  ///< a day that exists
  int dueSoonDays = kDueSoonDays;  ///< how many days before its due date a calibration is due soon
};

/// A finished survey.
struct SurveyResult {
  SurveyedTrees trees;
  std::vector<SurveyRow> rows;
  std::size_t filesRead = 0;
  bool couldLook = true;  ///< whether both directories could be listed
};

/// A look at every data set of the calibration tree and every instrument of the station tree. It
/// reads each file once and writes nothing.
///
/// Step does a small part of the work, so that a screen stays usable and the user can cancel: call
/// it until it returns false, or stop calling it. Rows grows at its end meanwhile, sorted by folder
/// and name: first the data sets, then the instruments of each station. What a comparison of the
/// rows finds (stations that use a data set, and what differs) comes with the last step.
///
/// What cannot be read is a finding, and the survey goes on.
class Survey {
 public:
  explicit Survey(SurveyOrder order);
  /// A survey of the rows in one folder, that of a model or a station, without a comparison.
  Survey(SurveyOrder order, std::string_view folder);

  /// Lists a folder, reads a file or compares the rows. Returns whether something is left to do.
  bool Step();

  [[nodiscard]] const std::vector<SurveyRow>& Rows() const { return rows_; }
  /// What the survey has found, which it gives away.
  [[nodiscard]] SurveyResult TakeResult() {
    const bool couldLook = CouldLook();
    return {std::move(trees_), std::move(rows_), filesRead_, couldLook};
  }

  /// How much of the work is done, from 0 to 1.
  [[nodiscard]] double Progress() const;
  [[nodiscard]] std::size_t FilesRead() const { return filesRead_; }

  /// Whether both directories could be listed. Otherwise a row says why not.
  [[nodiscard]] bool CouldLook() const { return trees_.hasDataSets && trees_.hasStations; }

 private:
  struct Name {
    std::string name;
    EntryKind kind;
  };
  struct Folder {
    std::string name;
    bool isStation;
  };

  void ListRoots();
  void ListFolder();
  void ReadNextFile();
  void Compare();

  /// The row of the file whose content is in `bytes_`, unless reading it failed with `code`.
  [[nodiscard]] SurveyRow RowOf(const Folder& folder, const std::string& path,
                                std::error_code code) const;
  void AddRow(SurveyRow row);
  /// Finds the names in a folder, and sorts them. If it cannot be listed, adds a row and returns
  /// false.
  bool List(const std::string& path, SearchKind kind, std::vector<Name>& names);
  /// Adds a row for the INDEX in the folder `path`, if there is something to report.
  void CheckIndexIn(const std::string& path, const std::vector<Name>& listed,
                    std::string_view remedy, const std::vector<std::string>& stations);
  [[nodiscard]] std::string PathOf(const Folder& folder) const;

  enum class Stage { Roots, Folders, Files, Compare, Done };

  SurveyOrder order_;
  Stage stage_ = Stage::Roots;
  bool isOfOneFolder_ = false;
  std::vector<SurveyRow> rows_;
  SurveyedTrees trees_;
  SlipLimits limits_;
  std::vector<Folder> folders_;  ///< the model folders, then the stations
  std::size_t folder_ = 0;       ///< the one that is being read
  std::filesystem::path native_;
  std::vector<Name> files_;  ///< of that folder
  std::size_t file_ = 0;     ///< the next one
  std::string bytes_;
  std::size_t filesRead_ = 0;
};

/// Looks again at the folder of a model or a station whose files may have changed since a survey,
/// and compares all rows again.
void SurveyAgain(const SurveyOrder& order, const std::string& folder, SurveyResult& result);

/// Judges the due dates of all rows again, for another day or another number of days.
void CheckDueDates(const SurveyOrder& order, std::vector<SurveyRow>& rows);

}  // namespace tarvell

#endif
