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

  /// Surveys the two directories of the session, and returns when the screen is closed.
  void ShowModally(const FileDate& today = Today());

  /// Whether files may have been changed from this screen.
  [[nodiscard]] bool HasChangedFiles() const { return hasChangedFiles_; }

 private:
  void btnOpen_Click();
  void btnUpdate_Click();
  void btnCancel_Click();
  void spnDueSoon_Change(int days);

  void SetUpFiles();

  /// Begins to read all files.
  void StartSurvey();
  void TakeRows(std::vector<SurveyRow> rows, double done);
  void Finish(SurveyResult result);
  void Fail(const std::exception_ptr& failure);
  void ShowProgress(bool isReading);

  /// Reads folders again whose files may have been changed; while the survey runs, when it has
  /// ended.
  void LookAgain(const std::set<std::string>& folders);
  /// Lets `change` change the rows, and shows them.
  void ChangeRows(const std::function<void(std::vector<SurveyRow>& rows)>& change);
  void ShowCounts();
  void ShowToDo();

  std::unique_ptr<Ui::frmOverview> ui_;
  OverviewFilter* filter_ = nullptr;
  SurveyOrder order_;
  SurveyedTrees trees_;            ///< of the survey that has ended
  bool isFinished_ = false;        ///< whether all files were read and compared
  bool couldLook_ = false;         ///< whether both directories could be listed then
  std::set<std::string> folders_;  ///< those to be read again then
  bool hasChangedFiles_ = false;
  std::unique_ptr<SurveyThread> survey_;  ///< the last member: it reports to the others
};

}  // namespace tarvell

#endif
