// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_OVERVIEW_FRMOVERVIEW_H
#define TARVELL_SCREENS_OVERVIEW_FRMOVERVIEW_H

#include <QDialog>

#include <exception>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "core/survey/Survey.h"
#include "screens/overview/SurveyThread.h"
#include "screens/widgets/SerialList.h"

namespace tarvell {

class OverviewFiles;
class OverviewFilter;

namespace Ui {
class frmOverview;
}

/// Shows every data set of the calibration tree and every instrument of every station in one table,
/// with what is due and what is wrong. The table fills while the files are read.
class frmOverview final : public QDialog {
  Q_OBJECT

 public:
  explicit frmOverview(QWidget* parent);
  frmOverview(const frmOverview&) = delete;
  frmOverview& operator=(const frmOverview&) = delete;
  ~frmOverview() override;

  /// Surveys the two directories of the session, and returns when the screen is closed. `today` is
  /// asked again from time to time, because the screen may stay open for days.
  void ShowModally(std::function<FileDate()> today = &Today);

  /// Judges the due dates by the present day, if another one has begun.
  void LookAtTheDay();

  /// Whether files may have been changed from this screen.
  [[nodiscard]] bool HasChangedFiles() const { return hasChangedFiles_; }

 private:
  void btnOpen_Click();
  void btnUpdate_Click();
  void btnCancel_Click();
  void spnDueSoon_Change();

  void SetUpFiles();

  /// How much has been read.
  enum class Read {
    Partly,  ///< reading goes on
    Ended,   ///< reading ended before all files were read and compared
    Whole
  };

  /// Begins to read all files.
  void StartSurvey();
  void TakeRows(std::vector<SurveyRow> rows, double done);
  void Finish(SurveyResult result);
  void Fail(const std::exception_ptr& failure);
  /// Goes on with the rows that there are.
  void EndEarly();
  void ShowProgress(bool isReading);
  /// Judges the due dates of all rows again.
  void JudgeDueDates();

  /// Reads folders again whose files may have been changed; while the survey runs, when it has
  /// ended.
  void LookAgain(const std::set<std::string>& folders);
  /// Reads the folders again whose files were deleted meanwhile. Returns whether there are any.
  bool TakeOutGoneFiles();
  /// Lets `change` change the rows, and shows them.
  void ChangeRows(const std::function<void(std::vector<SurveyRow>& rows)>& change);
  void ShowCounts();
  void ShowToDo();

  std::unique_ptr<Ui::frmOverview> ui_;
  OverviewFilter* filter_ = nullptr;
  OverviewFiles* files_ = nullptr;  ///< both belong to the screen
  std::function<FileDate()> today_;
  SurveyOrder order_;
  SurveyedTrees trees_;  ///< of the survey that has ended
  Read read_ = Read::Partly;
  bool couldLook_ = false;         ///< whether both directories could be listed then
  std::set<std::string> folders_;  ///< those to be read again then
  bool hasChangedFiles_ = false;
  std::unique_ptr<SurveyThread> survey_;  ///< the last member: it reports to the others
};

}  // namespace tarvell

#endif
