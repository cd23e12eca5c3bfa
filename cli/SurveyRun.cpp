// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/SurveyRun.h"

#include <algorithm>
#include <string>
#include <thread>

#include "cli/TextTable.h"
#include "core/platform/ProgramPath.h"

namespace tarvell::cli {

namespace {

bool IsDamage(const Finding& finding) {
  return finding.kind == FindingKind::Unreadable || finding.kind == FindingKind::CutOff ||
         finding.kind == FindingKind::NoSuchDate;
}

/// Whether nobody knows when an instrument is due, because its file or the date is damaged.
bool LacksDueDate(const SurveyRow& row) {
  return row.kind != SurveyRow::Kind::Place && !row.daysLeft && !row.isCopy &&
         std::ranges::any_of(row.findings, &IsDamage);
}

std::string TextOfDamage(const SurveyRow& row) {
  return std::ranges::find_if(row.findings, &IsDamage)->text;
}

}  // namespace

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
    if (row.isFolder || (unread == Unread::DueDates && LacksDueDate(row))) {
      console.Err("tarvell-cli: " + WithoutControls(ShownPath(row.path)) + ": " +
                  WithoutControls(TextOfDamage(row)) + "\n");
      isWhole = false;
    }
  }
  return isWhole;
}

}  // namespace tarvell::cli
