// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_OVERVIEW_SURVEYTHREAD_H
#define TARVELL_SCREENS_OVERVIEW_SURVEYTHREAD_H

#include <QObject>

#include <atomic>
#include <cstddef>
#include <exception>
#include <functional>
#include <stop_token>
#include <thread>
#include <vector>

#include "core/survey/Survey.h"

namespace tarvell {

/// Starts a thread; throws std::system_error where the system starts no more.
using SurveyThreadStarter =
    std::function<std::jthread(const std::function<void(std::stop_token stop)>& work)>;
[[nodiscard]] std::jthread StartSurveyThread(const std::function<void(std::stop_token stop)>& work);

/// Runs a survey in a thread of its own and reports to the thread of the screens, in which the
/// object lives. The two threads share nothing: the survey only reads files, and what it has found
/// is copied or given away.
///
/// Where the system starts no more threads, the survey goes on between the events of the screens.
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

  SurveyThread(SurveyOrder order, Reports reports,
               const SurveyThreadStarter& start = &StartSurveyThread);

 private:
  /// Goes on with the survey until `isEnough`, which is asked after each step, or until its end.
  /// Returns whether something is left to do.
  bool Run(const std::function<bool()>& isEnough);
  void RunBetweenEvents();
  /// Reports the rows that have not been reported, if the screen takes more.
  void HandRows();
  /// Calls `report` in the thread of the screens, unless the object is gone by then.
  void Hand(std::function<void()> report);

  Reports reports_;
  Survey survey_;
  std::size_t handed_ = 0;            ///< how many of its rows have been reported
  std::atomic<bool> isReady_ = true;  ///< whether the screen takes more rows now
  std::jthread thread_;               ///< the last member: it ends before the others are destroyed
};

}  // namespace tarvell

#endif
