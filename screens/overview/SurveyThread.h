// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_OVERVIEW_SURVEYTHREAD_H
#define TARVELL_SCREENS_OVERVIEW_SURVEYTHREAD_H

#include <QObject>

#include <exception>
#include <functional>
#include <stop_token>
#include <thread>
#include <vector>

#include "core/survey/Survey.h"

namespace tarvell {

/// Runs a survey in a thread of its own and reports to the thread of the screens, in which the
/// object lives. The two threads share nothing: the survey only reads files, and what it has found
/// is copied or given away.
///
/// The destructor ends the survey. It waits for the file that is being read.
class SurveyThread final : public QObject {
  Q_OBJECT

 public:
  /// What is called in the thread of the screens.
  struct Reports {
    /// Rows that were added at the end, several at a time, and how much of the work is done, from 0
    /// to 1.
    std::function<void(std::vector<SurveyRow> rows, double done)> found;
    /// The whole survey, after its last row. Its rows are those reported before, in their order,
    /// with what the comparison has found.
    std::function<void(SurveyResult result)> finished;
    /// The survey has ended by this exception.
    std::function<void(std::exception_ptr failure)> failed;
  };

  SurveyThread(SurveyOrder order, Reports reports);

 private:
  void Run(const SurveyOrder& order, const std::stop_token& stop);
  /// Calls `report` in the thread of the screens, unless the object is gone by then.
  void Hand(std::function<void()> report);

  Reports reports_;
  std::jthread thread_;  ///< the last member: it ends before the others are destroyed
};

}  // namespace tarvell

#endif
