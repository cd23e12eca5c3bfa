// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/SurveyRun.h"

#include <algorithm>
#include <thread>

#include "cli/TextTable.h"
#include "core/platform/ProgramPath.h"

namespace tarvell::cli {

SurveyResult RunSurvey(const Options& options, Console& console) {
  ProgressBar bar(console);
  const std::size_t threads = std::max(std::thread::hardware_concurrency(), 1U);
  return SurveyInThreads({.calibrationDir = options.calibrationDir,
                          .stationDir = options.stationDir,
                          .today = options.today,
                          .dueSoonDays = options.dueSoonDays},
                         threads, [&bar](double done) { bar.Show(done); });
}

void ReportPlaces(const SurveyResult& result, Console& console) {
  if (result.couldLook) {
    return;
  }
  for (const SurveyRow& row : result.rows) {
    if (row.kind == SurveyRow::Kind::Place && row.Has(FindingKind::Unreadable)) {
      console.Err("tarvell-cli: " + WithoutControls(ShownPath(row.path)) + ": " +
                  WithoutControls(row.findings.front().text) + "\n");
    }
  }
}

}  // namespace tarvell::cli
