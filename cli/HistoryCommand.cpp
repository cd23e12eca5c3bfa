// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <nlohmann/json.hpp>

#include "cli/Commands.h"
#include "cli/DataFile.h"
#include "cli/TextTable.h"
#include "core/caldata/EarlierCalibration.h"
#include "core/dates/FileDate.h"
#include "core/history/Journal.h"
#include "core/platform/ProgramPath.h"

namespace tarvell::cli {

namespace {

std::string TimeOf(const HistoryEvent& event) {
  return event.time == 0 ? std::string() : UtcText(event.time);
}

/// "" for a file without the dates of a data set.
std::string DateText(const Calibration& calibration, const FileDate& date) {
  return calibration.hasHeader ? IsoDate(date) : std::string();
}

std::string TableOf(const std::vector<Calibration>& calibrations) {
  TextTable table;
  table.Add({"Content", "Changed by", "Calibrated", "Due", "Calibration number", "File"});
  for (const Calibration& it : calibrations) {
    const std::string time = TimeOf(it.event);
    table.Add({it.isCurrent ? "now" : "until " + time, ForColumn(it.event.user),
               DateText(it, it.Calibrated()), DateText(it, it.Due()),
               ForColumn(it.header.CalibrationNumber), ShownPath(it.header.FilePath)});
  }
  return table.Text();
}

std::string JsonOf(const std::vector<Calibration>& calibrations) {
  using Json = nlohmann::ordered_json;
  Json json = {{"format", "tarvell-history"}, {"version", 1}, {"contents", Json::array()}};
  for (const Calibration& it : calibrations) {
    json["contents"].push_back({{"isCurrent", it.isCurrent},
                                {"path", ShownPath(it.header.FilePath)},
                                {"calibrated", DateText(it, it.Calibrated())},
                                {"due", DateText(it, it.Due())},
                                {"calibrationNumber", it.header.CalibrationNumber},
                                {"changed", TimeOf(it.event)},
                                {"done", it.event.done},
                                {"user", it.event.user},
                                {"host", it.event.host},
                                {"doubt", std::string(TextOf(it.State()))}});
  }
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

int History(const Options& options, const std::string& path, Console& console) {
  const std::vector<Calibration> calibrations = EveryCalibrationOf(path);
  if (calibrations.empty()) {
    // The file has neither a content nor a history: the error says why.
    static_cast<void>(ReadBytes(path));
  }
  if (options.isQuiet) {
    return kClean;
  }
  console.Out(options.isJson ? JsonOf(calibrations) : TableOf(calibrations));
  for (const Calibration& it : calibrations) {
    if (const std::string_view doubt = TextOf(it.State()); !doubt.empty() && !options.isJson) {
      console.Err("tarvell-cli: " + WithoutControls(ShownPath(it.header.FilePath)) + ": " +
                  std::string(doubt) + "\n");
    }
  }
  return kClean;
}

}  // namespace tarvell::cli
