// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <nlohmann/json.hpp>

#include "cli/Commands.h"
#include "cli/DataFile.h"
#include "cli/TextTable.h"
#include "core/platform/ProgramPath.h"
#include "core/station/StationFiles.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"
#include "exchange/Export.h"

namespace tarvell::cli {

namespace {

using Json = nlohmann::ordered_json;

std::string TextOf(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string TextOf(const DataFile& file) {
  TextTable header;
  for (const NamedValue& field : HeaderValues(file)) {
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

std::string JsonTextOf(const DataFile& file) {
  return file.data ? JsonOf(*file.model, *file.data, StateOf(*file.model, *file.data))
                   : JsonOf(file.header);
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
  if (!options.isQuiet) {
    console.Out(options.isJson ? TextOf(json) : table.Text());
  }
}

}  // namespace

int Show(const Options& options, const std::string& path, Console& console) {
  const std::string bytes = ReadBytes(path);
  if (IsInstrumentFile(bytes)) {
    ShowInstrument(options, bytes, path, console);
    return kClean;
  }
  const DataFile file = ReadDataFile(bytes, path);
  if (options.isQuiet) {
    return kClean;
  }
  console.Out(options.isJson ? JsonTextOf(file) : TextOf(file));
  if (file.data) {
    for (const std::string& notice : file.data->LoadNotices()) {
      console.Err("tarvell-cli: " + WithoutControls(notice) + "\n");
    }
  }
  return kClean;
}

}  // namespace tarvell::cli
