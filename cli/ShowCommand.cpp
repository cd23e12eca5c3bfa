// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <nlohmann/json.hpp>

#include "cli/Commands.h"
#include "cli/DataFile.h"
#include "cli/TextTable.h"
#include "core/dates/FileDate.h"
#include "core/platform/ProgramPath.h"
#include "core/station/StationFiles.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell::cli {

namespace {

using Json = nlohmann::ordered_json;

std::string TextOf(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string TextOf(const DataFile& file) {
  TextTable header;
  for (const NamedValue& field : HeaderValues(file.header)) {
    header.Add({field.name, field.value});
  }
  std::string text = header.Text();
  if (!file.data) {
    return text;
  }
  for (const PageTexts& page : PagesOf(*file.data)) {
    text += "\n";
    if (!page.name.empty()) {
      text += WithoutControls(page.name + ", serial number " +
                              std::string(TextOrNone(page.serialNumber))) +
              "\n";
    }
    TextTable table;
    table.Add(page.captions);
    for (const std::vector<std::string>& row : page.rows) {
      table.Add(row);
    }
    text += table.Text();
  }
  return text;
}

Json JsonOf(const DataFile& file, const std::string& path) {
  const CalFileInfo& header = file.header;
  Json json;
  json["format"] = "tarvell-file";
  json["version"] = 1;
  json["path"] = ShownPath(path);
  json["model"] = header.ModelNumber;
  json["serialNumber"] = header.SerialNumber;
  json["calibrationNumber"] = header.CalibrationNumber;
  json["calibrated"] = IsoDate({header.CalYear, header.CalMonth, header.CalDay});
  json["due"] = IsoDate({header.DueYear, header.DueMonth, header.DueDay});
  json["comment"] = header.Comment;
  json["pages"] = Json::array();
  if (!file.data) {
    return json;
  }
  for (PageTexts& page : PagesOf(*file.data)) {
    json["pages"].push_back({{"name", page.name},
                             {"serialNumber", page.serialNumber},
                             {"columns", page.captions},
                             {"rows", page.rows}});
  }
  return json;
}

/// The keywords of an instrument's file with their values, in its order.
std::vector<KeywordLine> InstrumentLines(std::string_view bytes) {
  std::vector<KeywordLine> lines;
  while (!bytes.empty()) {
    lines.push_back(ParseKeywordLine(DecodeFileText(TakeLine(bytes))));
  }
  return lines;
}

void ShowInstrument(const Options& options, std::string_view bytes, const std::string& path,
                    Console& console) {
  Json json = {{"format", "tarvell-instrument"}, {"version", 1}, {"path", ShownPath(path)}};
  TextTable table;
  for (const KeywordLine& line : InstrumentLines(bytes)) {
    table.Add({line.keyword, line.value});
    json["fields"].push_back({{"keyword", line.keyword}, {"value", line.value}});
  }
  console.Out(options.isJson ? TextOf(json) : table.Text());
}

}  // namespace

int Show(const Options& options, const std::string& path, Console& console) {
  const std::string bytes = ReadBytes(path);
  if (IsInstrumentFile(bytes)) {
    ShowInstrument(options, bytes, path, console);
    return kClean;
  }
  const DataFile file = ReadDataFile(bytes, path);
  console.Out(options.isJson ? TextOf(JsonOf(file, path)) : TextOf(file));
  if (file.data && !options.isQuiet) {
    for (const std::string& notice : file.data->LoadNotices()) {
      console.Err("tarvell-cli: " + WithoutControls(notice) + "\n");
    }
  }
  return kClean;
}

}  // namespace tarvell::cli
