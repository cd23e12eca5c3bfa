// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/StationUpdate.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/caldata/CalFileList.h"
#include "core/dates/FileDate.h"
#include "core/dates/Months.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
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
  if (!EqualsIgnoringCase(instrument.ModelNumber, LastNameOf(path)) ||
      instrument.SerialNumber != dataSet.SerialNumber) {
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

std::vector<std::string> LinesOf(std::string_view bytes) {
  std::vector<std::string> lines;
  while (!bytes.empty()) {
    lines.push_back(DecodeFileText(TakeLine(bytes)));
  }
  return lines;
}

std::string KeywordOf(const std::string& line) {
  return ParseKeywordLine(line).keyword;
}

}  // namespace

std::vector<ChangedLine> ChangedLines(std::string_view before, std::string_view after) {
  std::vector<std::string> earlier = LinesOf(before);
  std::vector<ChangedLine> changed;
  for (const std::string& line : LinesOf(after)) {
    // Of several lines with one keyword, a reader takes the last.
    const auto last = std::find_if(earlier.rbegin(), earlier.rend(), [&](const std::string& other) {
      return KeywordOf(other) == KeywordOf(line);
    });
    if (last == earlier.rend()) {
      changed.push_back({"", line});
      continue;
    }
    if (*last != line) {
      changed.push_back({*last, line});
    }
    earlier.erase(std::next(last).base());
  }
  for (const std::string& line : earlier) {
    changed.push_back({line, ""});
  }
  return changed;
}

StationUpdate::StationUpdate(const std::string& instrumentPath, const std::string& dataSetPath)
    : stationFolder_(FolderOf(instrumentPath)) {
  const std::string bytes = ReadInstrument(instrumentPath);
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
  SaveInstrumentFile(stationFolder_, instrument_, file_, earlier);
}

}  // namespace tarvell
