// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/Survey.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/survey/DueCalendar.h"
#include "core/survey/SurveyTable.h"
#include "core/text/FileCharacters.h"

/// A survey of a small laboratory in which one file is the input: the first byte chooses which. It
/// never fails, reports every file, and its exports keep their forms.
namespace tarvell::fuzz {
namespace {

constexpr std::array kPlaces = {"data/PX12A/SN12345", "data/RT520A/SN12345", "data/RT730A/SN12345",
                                "data/ZZ1/SN12345",   "stations/B/PX12A",    "stations/B/INDEX"};
constexpr std::size_t kFiles = 5;  // without INDEX

constexpr const char* kSensor =
    "#MODEL_NO : PX12A\r\n#SER_NO   : 12345\r\n#CAL_DATE : 20260305\r\n#CAL_NO   : 1\r\n"
    "#DUE_DATE : 20270305\r\n#COMMENT  : \r\n!\r\n!End\r\n";

std::vector<SurveyRow> Surveyed() {
  Survey survey(
      {.calibrationDir = "c:\\data", .stationDir = "c:\\stations", .today = {2026, 11, 22}});
  while (survey.Step()) {
    Require(survey.Progress() >= 0 && survey.Progress() <= 1, "progress is a part of the whole");
  }
  Require(survey.CouldLook(), "both directories can be listed");
  Require(survey.FilesRead() == kFiles, "every file is read once");
  return survey.TakeResult().rows;
}

/// Whether every line has at most 75 bytes and ends with CR LF.
bool IsFolded(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = text.find("\r\n");
    if (end == std::string_view::npos || end > 75 ||
        text.substr(0, end).find_first_of("\r\n") != std::string_view::npos) {
      return false;
    }
    text.remove_prefix(end + 2);
  }
  return true;
}

/// The number of records in a CSV text, 0 if one has not as many fields as the table has columns.
std::size_t RecordsIn(std::string_view text) {
  std::size_t records = 0;
  std::size_t fields = 1;
  bool isQuoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    isQuoted = isQuoted != (text[i] == '"');
    if (isQuoted) {
      continue;
    }
    fields += text[i] == ',' ? 1U : 0U;
    if (text[i] == '\n') {
      if (fields != kSurveyColumns || text[i - 1] != '\r') {
        return 0;
      }
      ++records;
      fields = 1;
    }
  }
  return isQuoted ? 0 : records;
}

}  // namespace

void Run(Input input) {
  const std::string place = kPlaces.at(input.Byte() % kPlaces.size());
  const std::string bytes = input.Rest();
  MemoryPlatform disk;
  for (const char* other : kPlaces) {
    disk.Put(other, kSensor);
  }
  disk.Put("stations/INDEX", "B\r\n");
  disk.Put(place, bytes);

  const std::vector<SurveyRow> rows = Surveyed();
  const std::vector<SurveyRow> again = Surveyed();
  Require(rows.size() == again.size(), "a second survey finds the same rows");
  std::size_t files = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    Require(rows[i].findings == again[i].findings, "a second survey finds the same");
    files += rows[i].kind == SurveyRow::Kind::Place ? 0U : 1U;
    for (const Finding& finding : rows[i].findings) {
      Require(!finding.text.empty() && IsUtf8(finding.text), "a finding is a text", finding.text);
    }
  }
  Require(files == kFiles, "every file has a row");
  Require(*disk.Find(place) == bytes, "a survey writes nothing");

  const std::string calendar = DueCalendar(rows, 0);
  Require(IsFolded(calendar) && IsUtf8(calendar), "the calendar has whole lines", calendar);
  const std::string csv = SurveyCsv(rows);
  Require(RecordsIn(csv) == rows.size() + 1, "the CSV file has a record for each row", csv);
}

}  // namespace tarvell::fuzz
