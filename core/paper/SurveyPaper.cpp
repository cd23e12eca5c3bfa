// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/paper/SurveyPaper.h"

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "core/dates/DueDate.h"
#include "core/survey/SurveyTable.h"

namespace tarvell {

namespace {

/// What to do is left out: it has whole sentences, and the state says it in a word.
constexpr std::array kColumns = {
    SurveyColumn::Model,      SurveyColumn::SerialNumber, SurveyColumn::CalibrationNumber,
    SurveyColumn::Calibrated, SurveyColumn::Due,          SurveyColumn::DaysLeft,
    SurveyColumn::Comment,    SurveyColumn::Stations,     SurveyColumn::State};

PaperFields FieldsOf(const ShownRows& rows, const FileDate& today) {
  PaperFields fields = {
      {"Day", DateText(today)},
      {"Rows", std::to_string(rows.Count()) + " of " + std::to_string(rows.All().size()) +
                   ", of all " + std::to_string(rows.FaultCount()) + " with something to do"}};
  const RowFilter& filter = rows.Filter();
  if (!filter.text.empty()) {
    fields.push_back({"Filter", filter.text});
  }
  if (filter.state) {
    fields.push_back({"State", std::string(WordsOf(*filter.state))});
  } else if (filter.onlyFaults) {
    fields.push_back({"State", "something to do"});
  }
  if (!filter.station.empty()) {
    fields.push_back({"Station", filter.station});
  }
  return fields;
}

PaperTable TableOf(const ShownRows& rows) {
  PaperTable table;
  for (const SurveyColumn column : kColumns) {
    table.columns.push_back(
        {.caption = std::string(kSurveyCaptions.at(static_cast<std::size_t>(column))),
         .isNumber = column == SurveyColumn::DaysLeft});
  }
  table.rows.reserve(rows.Count());
  for (std::size_t place = 0; place < rows.Count(); ++place) {
    std::vector<PaperCell> cells;
    for (const SurveyColumn column : kColumns) {
      cells.push_back({SurveyCell(rows.At(place), column)});
    }
    table.rows.push_back(std::move(cells));
  }
  return table;
}

}  // namespace

PaperDocument SurveyOnPaper(const ShownRows& rows, const FileDate& today) {
  return {.title = "Overview of the calibrations",
          .foot = "Overview, " + DateText(today),
          .isWide = true,
          .parts = {FieldsOf(rows, today), TableOf(rows)}};
}

}  // namespace tarvell
