// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/Export.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <vector>

#include "core/caldata/SetPages.h"
#include "core/dates/Calendar.h"
#include "core/dates/Months.h"
#include "core/numbers/Numbers.h"
#include "exchange/Certificate.h"
#include "exchange/ExportedTable.h"
#include "exchange/WrittenDate.h"

namespace tarvell {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

/// The ISO date of three boxes; "" for a date that does not exist.
std::string DateOf(const std::string& year, const std::string& month, const std::string& day) {
  const auto number = [](const std::string& text) {
    const std::optional<double> parsed = ParseNumber(text);
    return parsed && *parsed >= 0 && *parsed <= 9999 ? ToInt16(*parsed) : std::int16_t{0};
  };
  const FileDate date = {number(year), MonthToNumber(month), number(day)};
  return date.year > 0 && IsValidDate(date.year, date.month, date.day) ? IsoText(date)
                                                                       : std::string();
}

/// A header field, by its names in CSV and JSON.
struct ExportedField {
  std::string key;
  std::string member;
  std::string value;
};

std::vector<ExportedField> HeaderOf(const Model& model, const EditorState& state) {
  const DraftHeader& header = state.header;
  std::vector<ExportedField> fields = {
      {"Model", "model", std::string(model.code)},
      {"Serial number", "serialNumber", header.serialNumber},
      {"Calibration number", "calibrationNumber", header.calibrationNumber},
      {"Calibration date", "calibrationDate",
       DateOf(header.calYear, header.calMonth, header.calDay)},
      {"Due date", "dueDate", DateOf(header.dueYear, header.dueMonth, header.dueDay)},
      {"Comment", "comment", header.comment}};
  if (state.option) {
    fields.push_back({"Option", "option", *state.option ? "001" : "none"});
  }
  return fields;
}

std::string Cell(const std::string& text) {
  if (text.find_first_of("\",\r\n") == std::string::npos) {
    return text;
  }
  std::string quoted = "\"";
  for (const char c : text) {
    quoted += c == '"' ? "\"\"" : std::string(1, c);
  }
  return quoted + "\"";
}

void AppendLine(std::string& csv, const std::vector<std::string>& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    csv += (i == 0 ? "" : ",") + Cell(cells[i]);
  }
  csv += kLineEnd;
}

void AppendKey(std::string& csv, const std::string& key, const std::string& value) {
  if (!value.empty()) {
    AppendLine(csv, {key, value});
  }
}

}  // namespace

std::string CsvOf(const Model& model, const cifCaldata& data, const EditorState& state) {
  std::string csv;
  AppendKey(csv, "Format", std::string(kExportFormat));
  for (const ExportedField& field : HeaderOf(model, state)) {
    AppendKey(csv, field.key, field.value);
  }
  for (const std::int16_t page : ShownPages(state)) {
    const DraftPage& shown = state.pages.at(static_cast<std::size_t>(page));
    const ExportedTable table = ExportedPage(model, data, page, shown);
    csv += kLineEnd;
    AppendKey(csv, "Page", data.GetCalPageName(page));
    AppendKey(csv, "Member serial number", shown.serialNumber);
    std::vector<std::string> captions;
    for (const ExportedColumn& column : table.columns) {
      captions.push_back(column.caption + (column.unit.empty() ? "" : " [" + column.unit + "]"));
    }
    AppendLine(csv, captions);
    for (const std::vector<std::string>& row : table.rows) {
      AppendLine(csv, row);
    }
  }
  return csv;
}

std::string JsonOf(const Model& model, const cifCaldata& data, const EditorState& state) {
  using Json = nlohmann::ordered_json;
  Json json = {{"format", "tarvell-data-set"}, {"version", 1}};
  for (const ExportedField& field : HeaderOf(model, state)) {
    if (!field.value.empty()) {
      json[field.member] = field.value;
    }
  }
  Json pages = Json::array();
  for (const std::int16_t page : ShownPages(state)) {
    const DraftPage& shown = state.pages.at(static_cast<std::size_t>(page));
    const ExportedTable table = ExportedPage(model, data, page, shown);
    Json columns = Json::array();
    for (const ExportedColumn& column : table.columns) {
      columns.push_back({{"caption", column.caption}, {"unit", column.unit}});
    }
    pages.push_back({{"name", data.GetCalPageName(page)},
                     {"serialNumber", shown.serialNumber},
                     {"columns", columns},
                     {"rows", table.rows}});
  }
  json["pages"] = pages;
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

EditorState StateOf(const Model& model, cifCaldata& data) {
  EditorState state;
  std::int16_t year = 0;
  std::int16_t day = 0;
  DraftHeader& header = state.header;
  header.serialNumber = data.SerialNumber();
  header.calibrationNumber = data.CalibrationNumber();
  header.comment = data.Comment();
  data.GetCalDate(year, header.calMonth, day);
  header.calYear = std::to_string(year);
  header.calDay = std::to_string(day);
  data.GetDueDate(year, header.dueMonth, day);
  header.dueYear = std::to_string(year);
  header.dueDay = std::to_string(day);
  if (model.hasOption) {
    state.option = data.GetCalPageCount() > kOptionPage;
  }
  state.pages = PagesOf(data, model.hasOption);
  return state;
}

void StoreState(const EditorState& state, const Model& model, cifCaldata& data) {
  const DraftHeader& header = state.header;
  data.SetSerialNumber(header.serialNumber);
  data.SetCalibrationNumber(header.calibrationNumber);
  data.SetComment(header.comment);
  data.SetCalDate(IntegerValue(header.calYear, "Calibration year"), header.calMonth,
                  IntegerValue(header.calDay, "Calibration day"));
  data.SetDueDate(IntegerValue(header.dueYear, "Due year"), header.dueMonth,
                  IntegerValue(header.dueDay, "Due day"));
  RestorePages(state, model.hasOption, data);
}

}  // namespace tarvell
