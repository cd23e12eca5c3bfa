// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <nlohmann/json.hpp>

#include "cli/SurveyRun.h"
#include "core/dates/FileDate.h"
#include "core/platform/ProgramPath.h"
#include "core/survey/SurveyTable.h"
#include "core/text/FileCharacters.h"

namespace tarvell::cli {

namespace {

/// Keeps the order in which the members are added.
using Json = nlohmann::ordered_json;

Json DateJson(const FileDate& date) {
  const std::string text = IsoDate(date);
  return text.empty() ? Json() : Json(text);
}

Json RowJson(const SurveyRow& row) {
  Json json;
  json["kind"] = CodeOf(row.kind);
  json["path"] = NameText(ShownPath(row.path));
  json["model"] = NameText(row.model);
  json["serialNumber"] = row.serialNumber;
  json["calibrationNumber"] = row.calibrationNumber;
  json["calibrated"] = DateJson(row.calibrated);
  json["due"] = DateJson(row.due);
  json["daysLeft"] = row.daysLeft ? Json(*row.daysLeft) : Json();
  json["comment"] = row.comment;
  json["address"] = row.address;
  json["stations"] = Json::array();
  for (const std::string& station : row.stations) {
    json["stations"].push_back(NameText(station));
  }
  json["dataSet"] = row.dataSet.empty() ? Json() : Json(NameText(ShownPath(row.dataSet)));
  json["findings"] = Json::array();
  for (const Finding& finding : row.findings) {
    json["findings"].push_back({{"state", CodeOf(finding.kind)}, {"text", finding.text}});
  }
  return json;
}

std::string TextOf(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

std::string SurveyJson(const Options& options, const SurveyResult& result, bool isWhole) {
  Json head;
  head["format"] = "tarvell-survey";
  head["version"] = 1;
  head["today"] = IsoDate(options.today);
  head["calibrationData"] = NameText(ShownPath(options.calibrationDir));
  head["stationData"] = NameText(ShownPath(options.stationDir));
  head["complete"] = isWhole;
  head["filesRead"] = result.filesRead;
  std::string text = TextOf(head);
  // A line for each row: the tree of all rows at once would take many times their memory.
  text.pop_back();
  text += ",\"rows\":[";
  for (std::size_t i = 0; i < result.rows.size(); ++i) {
    text += (i == 0 ? "\n" : ",\n") + TextOf(RowJson(result.rows[i]));
  }
  return text + "\n]}\n";
}

}  // namespace tarvell::cli
