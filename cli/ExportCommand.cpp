// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <array>

#include "cli/SurveyRun.h"
#include "core/files/Paths.h"
#include "core/survey/DueCalendar.h"
#include "core/survey/ExportFile.h"
#include "core/survey/SurveyTable.h"

namespace tarvell::cli {

namespace {

std::string TextOf(const Options& options, ExportFormat format, const SurveyResult& result,
                   bool isWhole) {
  switch (format) {
    case ExportFormat::Csv:
      return SurveyCsv(result.rows);
    case ExportFormat::Json:
      return SurveyJson(options, result, isWhole);
    case ExportFormat::Calendar:
      return DueCalendar(result.rows, options.now);
  }
  return {};
}

}  // namespace

int Export(const Options& options, ExportFormat format, const std::string& target,
           Console& console) {
  const SurveyResult result = RunSurvey(options, console);
  const Unread missing = format == ExportFormat::Calendar ? Unread::DueDates : Unread::Folders;
  const bool isWhole = ReportUnread(result, missing, console);
  if (!result.couldLook) {
    // A calendar without half of its dates must not replace a whole one.
    return kCouldNotLook;
  }
  const std::string text = TextOf(options, format, result, isWhole);
  if (target.empty()) {
    console.Out(text);
  } else {
    SaveExport(NativePath(target), text, std::array{options.calibrationDir, options.stationDir});
  }
  return isWhole ? kClean : kCouldNotLook;
}

}  // namespace tarvell::cli
