// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>

#include "cli/SurveyRun.h"
#include "cli/TextTable.h"
#include "core/platform/ProgramPath.h"
#include "core/survey/SurveyTable.h"

namespace tarvell::cli {

namespace {

std::string Counted(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

/// Removes the rows of `result` without findings, and the state NotUsed. Returns how many data sets
/// had it.
std::size_t KeepFaults(SurveyResult& result) {
  std::size_t unused = 0;
  for (SurveyRow& row : result.rows) {
    unused += std::erase_if(row.findings, [](const Finding& it) { return !IsFault(it.kind); });
  }
  return unused;
}

std::string FindingLines(const SurveyResult& result) {
  TextTable table;
  for (const SurveyRow& row : result.rows) {
    for (const Finding& finding : row.findings) {
      table.Add({std::string(WordsOf(finding.kind)), ShownPath(row.path),
                 ForColumn(row.serialNumber), finding.text});
    }
  }
  return table.Text();
}

std::size_t CountFindings(const SurveyResult& result) {
  std::size_t count = 0;
  for (const SurveyRow& row : result.rows) {
    count += row.findings.size();
  }
  return count;
}

bool IsDue(const SurveyRow& row) {
  return row.Has(FindingKind::PastDue) || row.Has(FindingKind::DueSoon);
}

std::string DueLines(const SurveyResult& result) {
  TextTable table;
  table.Add({"Due", "Days left", "Model", "Serial number", "Calibration number", "Stations"});
  for (const SurveyRow& row : result.rows) {
    table.Add({SurveyCell(row, SurveyColumn::Due), SurveyCell(row, SurveyColumn::DaysLeft),
               row.model, ForColumn(row.serialNumber), ForColumn(row.calibrationNumber),
               SurveyCell(row, SurveyColumn::Stations)});
  }
  return result.rows.empty() ? std::string() : table.Text();
}

}  // namespace

int Check(const Options& options, bool showUnused, Console& console) {
  SurveyResult result = RunSurvey(options, console);
  const bool isWhole = ReportUnread(result, Unread::Folders, console);
  const std::size_t unused = showUnused ? 0 : KeepFaults(result);
  std::erase_if(result.rows, [](const SurveyRow& row) { return row.findings.empty(); });
  const std::size_t findings = CountFindings(result);
  if (options.isJson) {
    console.Out(SurveyJson(options, result, isWhole));
  } else if (!options.isQuiet) {
    console.Out(FindingLines(result));
    console.Out(Counted(findings, "finding", "findings") + " in " +
                Counted(result.filesRead, "file", "files") + ".\n");
    if (unused > 0) {
      console.Out(Counted(unused, "data set is", "data sets are") +
                  " used by no station; --unused lists them.\n");
    }
  }
  if (!isWhole) {
    return kCouldNotLook;
  }
  return findings > 0 ? kFindings : kClean;
}

int Due(const Options& options, Console& console) {
  SurveyResult result = RunSurvey(options, console);
  const bool isWhole = ReportUnread(result, Unread::DueDates, console);
  std::erase_if(result.rows, [](const SurveyRow& row) { return !IsDue(row); });
  std::ranges::stable_sort(result.rows, {}, &SurveyRow::daysLeft);
  if (options.isJson) {
    console.Out(SurveyJson(options, result, isWhole));
  } else if (!options.isQuiet) {
    console.Out(DueLines(result));
  }
  if (!isWhole) {
    return kCouldNotLook;
  }
  return result.rows.empty() ? kClean : kFindings;
}

}  // namespace tarvell::cli
