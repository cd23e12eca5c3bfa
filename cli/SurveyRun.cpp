// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/SurveyRun.h"

#include <algorithm>
#include <thread>

#include "cli/TextTable.h"
#include "core/platform/ProgramPath.h"

namespace tarvell::cli {

SurveyResult RunSurvey(const Options& options, Console& console) {
  ProgressBar bar(console, !options.isQuiet);
  const std::size_t threads = std::max(std::thread::hardware_concurrency(), 1U);
  return SurveyInThreads({.calibrationDir = options.calibrationDir,
                          .stationDir = options.stationDir,
                          .today = options.today,
                          .dueSoonDays = options.dueSoonDays},
                         threads, [&bar](double done) { bar.Show(done); });
}

bool ReportUnread(const SurveyResult& result, Unread unread, Console& console) {
  bool isWhole = true;
  for (const SurveyRow& row : result.rows) {
    if (LacksSomething(row, unread)) {
      console.Err("tarvell-cli: " + WithoutControls(ShownPath(row.path)) + ": " +
                  WithoutControls(TextOfDamage(row)) + "\n");
      isWhole = false;
    }
  }
  return isWhole;
}

}  // namespace tarvell::cli
