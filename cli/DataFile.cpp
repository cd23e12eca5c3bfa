// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/DataFile.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include "core/caldata/CalFileList.h"
#include "core/caldata/DataFileSummary.h"
#include "core/caldata/HeaderLines.h"
#include "core/caldata/MemoryGrid.h"
#include "core/dates/DueDate.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
#include "core/station/StationFiles.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell::cli {

namespace {

constexpr std::int16_t kColumnLimit = 7;

const Model* ModelOf(std::string_view bytes, const std::string& path) {
  std::string_view rest = bytes;
  const std::string_view first = TrimLeft(TakeLine(rest));
  if (first.starts_with('#')) {
    const LineWords words = WordsOf(first);
    if (const Model* model = FindModel(ToUpper(ModelOnLine(words))); model != nullptr) {
      return model;
    }
  }
  const std::string whole = FullPathText(path);
  return FindModel(ToUpper(LastNameOf(FolderOf(whole))));
}

/// Takes the dates as the file has them: two that do not exist can differ.
void TakeDates(std::string_view bytes, DataFile& file) {
  for (FileSummary::Field& field : SummaryOfDataFile(bytes, 0).fields) {
    if (field.name == "Calibrated") {
      file.calibrated = std::move(field.value);
    } else if (field.name == "Due") {
      file.due = std::move(field.value);
    }
  }
}

}  // namespace

std::string ReadBytes(const std::string& path) {
  std::string bytes;
  if (const std::error_code code = ReadNativeFile(NativePath(path), bytes, kDataFileLimit)) {
    // What is said about an entry of a folder, that it should be removed, would be wrong here.
    if (code == std::errc::is_a_directory) {
      throw Error(ErrorKind::NotAFile, "It is a folder. Name a file in it.", path);
    }
    if (code == std::errc::not_supported || code == std::errc::no_such_device_or_address) {
      throw Error(ErrorKind::NotAFile, "It is a device or a pipe. Name a file.", path);
    }
    throw SystemError(code, "read the file", path);
  }
  return bytes;
}

bool IsInstrumentFile(std::string_view bytes) {
  if (bytes.starts_with("MODEL NUMBER")) {
    return true;
  }
  // A comment of another file may begin like one of these lines.
  static constexpr std::size_t kSureKeywords = 2;
  static constexpr std::array<std::string_view, 5> kKeywords = {
      "MODEL NUMBER", "SERIAL NUMBER", "ADDRESS TYPE", "CAL DUE DATE", "CAL DATA"};
  std::set<std::string> found;
  std::string_view rest = bytes.starts_with('#') ? std::string_view() : bytes;
  while (!rest.empty() && found.size() < kSureKeywords) {
    std::string keyword = ParseKeywordLine(DecodeFileText(TakeLine(rest))).keyword;
    if (std::ranges::find(kKeywords, keyword) != kKeywords.end()) {
      found.insert(std::move(keyword));
    }
  }
  return found.size() == kSureKeywords;
}

DataFile ReadDataFile(std::string_view bytes, const std::string& path) {
  DataFile file;
  std::optional<CalFileInfo> header = CalFileHeaderIn(bytes, path);
  if (!header) {
    throw Error(ErrorKind::NotAFile, "The file does not begin like a data file. Name another one.",
                path);
  }
  file.header = std::move(*header);
  file.calibrated = DateText({file.header.CalYear, file.header.CalMonth, file.header.CalDay});
  file.due = DateText({file.header.DueYear, file.header.DueMonth, file.header.DueDay});
  file.model = ModelOf(bytes, path);
  if (file.model != nullptr && file.model->create != nullptr) {
    file.data = file.model->create();
    file.data->LoadFromBytes(bytes, path);
    if (file.data->HeaderOfLoad().isOldStyle) {
      file.data.reset();
    } else {
      TakeDates(bytes, file);
    }
  }
  return file;
}

std::vector<NamedValue> HeaderValues(const DataFile& file) {
  const CalFileInfo& header = file.header;
  return {{"Model", header.ModelNumber},
          {"Serial number", header.SerialNumber},
          {"Calibration number", header.CalibrationNumber},
          {"Calibrated", file.calibrated},
          {"Due", file.due},
          {"Comment", header.Comment}};
}

std::vector<PageTexts> PagesOf(const cifCaldata& data) {
  std::vector<PageTexts> pages;
  for (std::int16_t number = 0; number < data.GetCalPageCount(); ++number) {
    MemoryGrid grid(kColumnLimit);
    data.GetCalData(number, grid);
    PageTexts page;
    page.name = data.GetCalPageName(number);
    page.serialNumber = data.GetCalPageSerial(number);
    page.rows = grid.Rows();
    // A page has fewer columns than the widest table.
    std::size_t columns = 0;
    for (const std::vector<std::string>& row : page.rows) {
      for (std::size_t column = 0; column < row.size(); ++column) {
        columns = row[column].empty() ? columns : std::max(columns, column + 1);
      }
    }
    for (std::vector<std::string>& row : page.rows) {
      row.resize(columns);
    }
    page.captions = std::move(page.rows.front());
    page.rows.erase(page.rows.begin());
    pages.push_back(std::move(page));
  }
  return pages;
}

}  // namespace tarvell::cli
