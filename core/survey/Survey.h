// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_SURVEY_H
#define TARVELL_CORE_SURVEY_SURVEY_H

#include <cstddef>
#include <functional>
#include <future>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/dates/DueDate.h"
#include "core/dates/FileDate.h"
#include "core/survey/Comparison.h"
#include "core/survey/FolderSurvey.h"
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

/// Starts a thread that does `work`. Throws std::system_error where the system starts no more.
using ThreadStarter = std::function<std::future<void>(const std::function<void()>& work)>;
[[nodiscard]] std::future<void> StartThread(const std::function<void()>& work);

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

  /// Lists a folder, reads a file or compares the rows. Returns whether something is left to do.
  bool Step();

  [[nodiscard]] const std::vector<SurveyRow>& Rows() const { return rows_; }
  /// Moves out what the survey has found. Call it once, at the end.
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
  friend SurveyResult SurveyInThreads(SurveyOrder order, std::size_t threads,
                                      const std::function<void(double done)>& report,
                                      const ThreadStarter& start);

  void ListRoots();
  /// Returns whether the folder could be listed.
  bool ListRoot(ListedFolder& root);
  void StepInFolder();
  /// Takes over what the survey of a folder has found, besides its rows.
  void EndFolder(const FolderSurvey& folder);
  void Compare();

  enum class Stage { Roots, Folders, Compare, Done };

  SurveyOrder order_;
  Stage stage_ = Stage::Roots;
  std::vector<SurveyRow> rows_;
  SurveyedTrees trees_;
  std::unique_ptr<ValueRules> rules_;  ///< once the roots are listed
  std::vector<FolderSurvey> folders_;  ///< those of the models, then the stations
  std::size_t folder_ = 0;             ///< the one that is being read
  std::size_t filesRead_ = 0;
};

/// A whole survey, with the folders shared among several threads, of which the caller's is one; it
/// does without those that cannot be started. Calls `report` in that one.
[[nodiscard]] SurveyResult SurveyInThreads(SurveyOrder order, std::size_t threads,
                                           const std::function<void(double done)>& report,
                                           const ThreadStarter& start = &StartThread);

/// Looks again at folders of models or stations whose files may have changed. The other rows stay
/// as they are: this is for a survey that was ended before it has compared its rows.
void ReadAgain(const SurveyOrder& order, const std::set<std::string>& folders,
               std::vector<SurveyRow>& rows);

/// The same after a whole survey: compares all rows again.
void SurveyAgain(const SurveyOrder& order, const std::set<std::string>& folders,
                 const SurveyedTrees& trees, std::vector<SurveyRow>& rows);

/// Whether the rows of a survey have been compared. Before that, nobody knows whether the due date
/// of an instrument is a copy, and it is not judged.
enum class Compared { No, Yes };

/// Judges the due dates of all rows again, for another day or another number of days.
void CheckDueDates(const SurveyOrder& order, std::vector<SurveyRow>& rows,
                   Compared compared = Compared::Yes);

}  // namespace tarvell

#endif
