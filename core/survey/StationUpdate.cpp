// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/StationUpdate.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/caldata/CalFileList.h"
#include "core/caldata/Models.h"
#include "core/dates/FileDate.h"
#include "core/dates/Months.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/station/InstrumentEnd.h"
#include "core/survey/PairedLines.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

std::string ReadInstrument(const std::string& path) {
  std::string bytes;
  if (const std::error_code code = ReadNativeFile(NativePath(path), bytes, kDataFileLimit)) {
    throw SystemError(code, "read the file", path);
  }
  return bytes;
}

/// A save would make a file that was cut off look whole.
void CheckIsWhole(std::string_view bytes, const std::string& path) {
  if (!NoticeOfMissingEnd(bytes).empty()) {
    throw Error(
        ErrorKind::InputPastEnd,
        "The file was cut off: its end is missing. Select it at the station, compare it with "
        "the instrument, and save it first.",
        path);
  }
}

/// The header of a data set with a due date.
CalFileInfo ReadDataSet(const std::string& path) {
  const std::optional<CalFileInfo> header = ReadCalFileHeader(path);
  if (!header || !Exists({header->DueYear, header->DueMonth, header->DueDay})) {
    throw Error(ErrorKind::Type,
                "The data set has no due date that the station could take. Open it and correct "
                "the date first.",
                path);
  }
  return *header;
}

void CheckSameInstrument(const StationInstrument& instrument, const std::string& path,
                         const CalFileInfo& dataSet) {
  const std::string name = NameText(LastNameOf(path));
  if (!EqualsIgnoringCase(instrument.ModelNumber, name)) {
    throw Error(ErrorKind::Name,
                "The file is called " + Quoted(name) + ", but the MODEL NUMBER in it is " +
                    Quoted(instrument.ModelNumber) +
                    ". Select it at the station, correct the MODEL NUMBER and save it first.",
                path);
  }
  if (instrument.SerialNumber != dataSet.SerialNumber) {
    throw Error(ErrorKind::Name,
                "The station has the " + instrument.ModelNumber + " " + instrument.SerialNumber +
                    ", the data set is that of " + dataSet.SerialNumber +
                    ". Choose the right serial number at the station first.",
                path);
  }
}

void TakeDataSet(const CalFileInfo& dataSet, StationInstrument& instrument) {
  instrument.DueDay = std::to_string(dataSet.DueDay);
  instrument.DueMonth = NumberToMonth(dataSet.DueMonth);
  instrument.DueYear = std::to_string(dataSet.DueYear);
  instrument.Comment = dataSet.Comment;
}

std::string ShownText(const FileLine& line) {
  return line.text.empty() ? "(empty line)" : line.text;
}

/// A line whose end changes.
std::string TextWithEnd(const FileLine& line) {
  const std::string_view end = line.end == "\r\n" ? " (line end CR LF)"
                               : line.end == "\n" ? " (line end LF)"
                               : line.end == "\r" ? " (line end CR)"
                                                  : " (no line end)";
  return ShownText(line) + std::string(end);
}

ChangedLine ChangeOf(const FileLine& before, const FileLine& after) {
  return before.end == after.end ? ChangedLine{ShownText(before), ShownText(after)}
                                 : ChangedLine{TextWithEnd(before), TextWithEnd(after)};
}

/// Whether a file with these lines has the due date and the comment that it should have.
bool IsUpToDate(const FileLines& lines, const FileLines& wanted) {
  return std::ranges::all_of(wanted, [&](const FileLine& line) {
    const auto last = std::find_if(lines.rbegin(), lines.rend(), [&](const FileLine& other) {
      return other.keyword == line.keyword;
    });
    return (line.keyword != "CAL DUE DATE" && line.keyword != "COMMENT") ||
           (last != lines.rend() && last->text == line.text);
  });
}

/// Whether an instrument is a test kit whose own data set has no due date.
bool IsKitWithoutDate(const SurveyRow& instrument) {
  const Model* model = FindModel(ToUpper(LastNameOf(FolderOf(instrument.dataSet))));
  return model != nullptr && model->family == ModelFamily::TestKit && !instrument.isCopy &&
         !instrument.isDataSetOfOther;
}

}  // namespace

std::map<std::string, std::string> DataSetsToTakeOver(const std::vector<SurveyRow>& selected,
                                                      const std::vector<SurveyRow>& all) {
  std::set<std::string> paths;
  for (const SurveyRow& row : selected) {
    paths.insert(row.path);
  }
  std::map<std::string, std::string> dataSets;
  for (const SurveyRow& row : all) {
    const bool isMeant = paths.contains(row.path) || paths.contains(row.dataSet);
    if (row.kind == SurveyRow::Kind::Instrument && !row.dataSet.empty() && isMeant &&
        !IsKitWithoutDate(row)) {
      dataSets[row.path] = row.dataSet;
    }
  }
  return dataSets;
}

std::vector<ChangedLine> ChangedLines(std::string_view before, std::string_view after) {
  const FileLines earlier = LinesOf(before);
  const FileLines later = LinesOf(after);
  std::vector<ChangedLine> changed;
  if (IsUpToDate(earlier, later)) {
    return changed;
  }
  PairedLines(earlier, later).Each([&](const FileLine* from, const FileLine* to) {
    if (from == nullptr) {
      changed.push_back({"", ShownText(*to)});
    } else if (to == nullptr) {
      changed.push_back({ShownText(*from), ""});
    } else if (from->text != to->text || from->end != to->end) {
      changed.push_back(ChangeOf(*from, *to));
    }
  });
  return changed;
}

StationUpdate::StationUpdate(const std::string& instrumentPath, const std::string& dataSetPath)
    : stationFolder_(FolderOf(instrumentPath)), path_(instrumentPath) {
  const std::string bytes = ReadInstrument(instrumentPath);
  CheckIsWhole(bytes, instrumentPath);
  const CalFileInfo dataSet = ReadDataSet(dataSetPath);
  instrument_ = InstrumentIn(bytes, instrumentPath);
  CheckSameInstrument(instrument_, instrumentPath, dataSet);
  file_.WasRead(instrumentPath, bytes, instrument_.SerialNumber);
  file_.SetUnchangedBytes(InstrumentBytes(instrument_));
  TakeDataSet(dataSet, instrument_);
  lines_ = ChangedLines(bytes, InstrumentBytes(instrument_));
}

Replacement StationUpdate::WouldReplace() const {
  return InstrumentWouldReplace(stationFolder_, instrument_, file_);
}

void StationUpdate::Save(Earlier earlier) {
  EntryFacts facts;
  if (!CurrentPlatform().Facts(NativePath(path_), facts) && facts.kind == EntryKind::None) {
    throw Error(ErrorKind::NotFound,
                "The instrument was not updated: somebody has deleted its file meanwhile. If the "
                "station still uses it, add it to the station again.",
                path_);
  }
  SaveInstrumentFile(stationFolder_, instrument_, file_, earlier);
}

}  // namespace tarvell
