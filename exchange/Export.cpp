// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/Export.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <vector>

#include "core/caldata/SetPages.h"
#include "core/dates/FileDate.h"
#include "core/dates/Months.h"
#include "core/numbers/Numbers.h"
#include "core/text/Csv.h"
#include "exchange/Certificate.h"
#include "exchange/ExportedTable.h"
#include "exchange/WrittenDate.h"

namespace tarvell {

namespace {

using Json = nlohmann::ordered_json;

/// The numbers of three boxes as a date, even if no such day exists; "" for zeros.
std::string DateOf(const std::string& year, const std::string& month, const std::string& day) {
  const auto number = [](const std::string& text) {
    const std::optional<double> parsed = ParseNumber(text);
    return parsed && *parsed >= 0 && *parsed <= 9999 ? ToInt16(*parsed) : std::int16_t{0};
  };
  return IsoDate({number(year), MonthToNumber(month), number(day)});
}

/// Whether JSON can have a date: it has only days that exist.
bool IsDay(const std::string& iso) {
  const std::optional<FileDate> date = ExportedDate(iso);
  return date && Exists(*date);
}

/// A header field, by its names in CSV and JSON.
struct ExportedField {
  std::string key;
  std::string member;
  std::string value;
  bool isDate = false;
};

/// The values of a header; dates are ISO dates.
struct ExportedHeader {
  std::string model;
  std::string serialNumber;
  std::string calibrationNumber;
  std::string calibrationDate;
  std::string dueDate;
  std::string comment;
};

std::vector<ExportedField> FieldsOf(const ExportedHeader& header) {
  return {{"Model", "model", header.model},
          {"Serial number", "serialNumber", header.serialNumber},
          {"Calibration number", "calibrationNumber", header.calibrationNumber},
          {"Calibration date", "calibrationDate", header.calibrationDate, true},
          {"Due date", "dueDate", header.dueDate, true},
          {"Comment", "comment", header.comment}};
}

std::vector<ExportedField> FieldsOf(const Model& model, const EditorState& state) {
  const DraftHeader& header = state.header;
  std::vector<ExportedField> fields =
      FieldsOf({.model = std::string(model.code),
                .serialNumber = header.serialNumber,
                .calibrationNumber = header.calibrationNumber,
                .calibrationDate = DateOf(header.calYear, header.calMonth, header.calDay),
                .dueDate = DateOf(header.dueYear, header.dueMonth, header.dueDay),
                .comment = header.comment});
  if (state.option) {
    fields.push_back({"Option", "option", *state.option ? "001" : "none"});
  }
  return fields;
}

void AppendLine(std::string& csv, const std::vector<std::string>& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    csv += i == 0 ? "" : ",";
    AppendCsvField(csv, cells[i]);
  }
  csv += kCsvLineEnd;
}

void AppendKey(std::string& csv, const std::string& key, const std::string& value) {
  AppendLine(csv, {key, value});
}

std::string JsonText(const std::vector<ExportedField>& fields, const Json& pages) {
  Json json = {{"format", "tarvell-data-set"}, {"version", 1}};
  for (const ExportedField& field : fields) {
    const bool isShown = field.isDate ? IsDay(field.value) : !field.value.empty();
    if (isShown || field.member == "model") {
      json[field.member] = field.value;
    }
  }
  json["pages"] = pages;
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

std::string CsvOf(const Model& model, const cifCaldata& data, const EditorState& state) {
  std::string csv;
  for (const ExportedField& field : FieldsOf(model, state)) {
    AppendKey(csv, field.key, field.value);
  }
  for (const std::int16_t page : ShownPages(state)) {
    const DraftPage& shown = state.pages.at(static_cast<std::size_t>(page));
    const ExportedTable table = ExportedPage(model, data, page, shown);
    csv += kCsvLineEnd;
    if (HasPages(model)) {
      AppendKey(csv, "Page", data.GetCalPageName(page));
    }
    if (model.family == ModelFamily::CapacitorSet) {
      AppendKey(csv, "Member serial number", shown.serialNumber);
    }
    std::vector<std::string> captions;
    for (const ExportedColumn& column : table.columns) {
      captions.push_back(column.caption + (column.unit.empty() ? "" : " [" + column.unit + "]"));
    }
    AppendLine(csv, captions);
    for (const std::vector<std::string>& row : table.rows) {
      AppendLine(csv, row);
    }
  }
  std::string format;
  AppendKey(format, "Format", ExportFormat(csv));
  return format + csv;
}

std::string JsonOf(const Model& model, const cifCaldata& data, const EditorState& state) {
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
  return JsonText(FieldsOf(model, state), pages);
}

std::string JsonOf(const CalFileInfo& header) {
  return JsonText(
      FieldsOf({.model = header.ModelNumber,
                .serialNumber = header.SerialNumber,
                .calibrationNumber = header.CalibrationNumber,
                .calibrationDate = IsoDate({header.CalYear, header.CalMonth, header.CalDay}),
                .dueDate = IsoDate({header.DueYear, header.DueMonth, header.DueDay}),
                .comment = header.Comment}),
      Json::array());
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
