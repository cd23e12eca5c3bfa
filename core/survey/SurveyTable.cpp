// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/SurveyTable.h"

#include "core/dates/FileDate.h"
#include "core/platform/ProgramPath.h"
#include "core/text/Csv.h"
#include "core/text/FileCharacters.h"

namespace tarvell {

namespace {

/// The texts that `textOf` gives for a list, with `between` between them.
template <typename List, typename TextOf>
std::string JoinedTexts(const List& list, std::string_view between, const TextOf& textOf) {
  std::string text;
  for (const auto& entry : list) {
    text += (text.empty() ? "" : std::string(between)) + std::string(textOf(entry));
  }
  return text;
}

/// The states of a row. One without a serial number is known only by its file.
std::string StateOf(const SurveyRow& row) {
  const std::string states =
      JoinedTexts(row.findings, ", ", [](const Finding& it) { return WordsOf(it.kind); });
  const bool needsFile = row.serialNumber.empty() && !states.empty();
  return needsFile ? states + ": " + NameText(ShownPath(row.path)) : states;
}

/// Appends a line with the text that `textOf` gives for each column.
template <typename TextOf>
void AppendCsvLine(std::string& csv, const TextOf& textOf) {
  for (std::size_t column = 0; column < kSurveyColumns; ++column) {
    csv += column == 0 ? "" : ",";
    AppendCsvField(csv, textOf(column));
  }
  csv += kCsvLineEnd;
}

}  // namespace

const std::array<std::string_view, kSurveyColumns> kSurveyCaptions = {
    "Kind",    "Model",    "Serial number", "Calibration number", "Calibrated", "Due", "Days left",
    "Comment", "Stations", "State",         "What to do",         "Path"};

std::string_view CodeOf(SurveyRow::Kind kind) {
  switch (kind) {
    case SurveyRow::Kind::DataSet:
      return "data-set";
    case SurveyRow::Kind::Instrument:
      return "instrument";
    case SurveyRow::Kind::Place:
      break;
  }
  return "place";
}

std::string_view WordsOf(const SurveyRow& row) {
  switch (row.kind) {
    case SurveyRow::Kind::DataSet:
      return "data set";
    case SurveyRow::Kind::Instrument:
      return "instrument";
    case SurveyRow::Kind::Place:
      break;
  }
  return row.isFolder ? "folder" : "list";
}

std::string SurveyCell(const SurveyRow& row, SurveyColumn column) {
  switch (column) {
    case SurveyColumn::Kind:
      return std::string(WordsOf(row));
    case SurveyColumn::Model:
      return NameText(row.kind == SurveyRow::Kind::Place ? LastNameOf(row.path) : row.model);
    case SurveyColumn::SerialNumber:
      return row.serialNumber;
    case SurveyColumn::CalibrationNumber:
      return row.calibrationNumber;
    case SurveyColumn::Calibrated:
      return IsoDate(row.calibrated);
    case SurveyColumn::Due:
      return IsoDate(row.due);
    case SurveyColumn::DaysLeft:
      return row.daysLeft ? std::to_string(*row.daysLeft) : std::string();
    case SurveyColumn::Comment:
      return row.comment;
    case SurveyColumn::Stations:
      return JoinedTexts(row.stations, ", ", &NameText);
    case SurveyColumn::State:
      return StateOf(row);
    case SurveyColumn::ToDo:
      return JoinedTexts(row.findings, " ", [](const Finding& it) { return it.text; });
    case SurveyColumn::Path:
      return NameText(ShownPath(row.path));
  }
  return {};
}

std::string SurveyCsv(std::span<const SurveyRow> rows) {
  std::string csv;
  AppendCsvLine(csv, [](std::size_t column) { return kSurveyCaptions.at(column); });
  for (const SurveyRow& row : rows) {
    AppendCsvLine(csv, [&](std::size_t column) {
      return SurveyCell(row, static_cast<SurveyColumn>(column));
    });
  }
  return csv;
}

}  // namespace tarvell
