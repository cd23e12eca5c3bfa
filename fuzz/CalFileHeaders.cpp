// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <optional>
#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/files/ItemReader.h"
#include "core/session/Tarvell_MainModule.h"

/// The header scan of a model folder with one data file, which is the input.
namespace tarvell::fuzz {
namespace {

/// Scans the folder; nothing when the file is refused.
std::optional<int> Scan() {
  gCalFiles = {};
  int count = -1;
  int reported = 0;
  const auto report = [&](const CalFileInfo&) { ++reported; };
  if (!Accepts([&] { count = ReadCalFileHeaders("c:\\data", report); })) {
    return std::nullopt;
  }
  Require(reported == count, "every row is reported once");
  return count;
}

/// What follows the colon of a header line.
std::string ValueOf(const std::string& item) {
  const std::size_t colon = item.find(':');
  return colon == std::string::npos ? std::string() : Stripped(item.substr(colon + 1));
}

}  // namespace

void Run(Input input) {
  MemoryPlatform disk;
  disk.Put("data/SN00001", input.Rest());
  // Neither of these is a data file.
  disk.Put("data/SN00001.bak", "");
  disk.Put("data/INDEX", "");

  const std::optional<int> count = Scan();
  const CalFileInfo row = gCalFiles.front();
  Require(Scan() == count && gCalFiles.front().SerialNumber == row.SerialNumber,
          "a second scan finds the same");
  if (!count) {
    return;
  }
  ItemReader reader("c:\\data\\SN00001");
  std::vector<std::string> items;
  while (!reader.AtEnd()) {
    items.push_back(reader.ReadItem());
  }
  Require(!items.empty(), "an empty file is refused");
  const bool isNewStyle = items[0].starts_with('#');
  if (!isNewStyle && items[0].find_first_of("\r\n") != std::string::npos) {
    Require(*count == 0, "a file of neither style is no row");
    return;
  }
  Require(*count == 1, "a file of either style is one row");
  Require(row.FilePath == "c:\\data\\SN00001", "the row names its file");
  Require(FindCalFile(row.SerialNumber) == 0, "a row is found by its serial number");
  if (isNewStyle) {
    Require(items.size() >= 6, "a header has six lines");
    Require(row.ModelNumber == ValueOf(items[0]), "line 1 is the model number");
    Require(row.SerialNumber == ValueOf(items[1]), "line 2 is the serial number");
    Require(row.CalibrationNumber == ValueOf(items[3]), "line 4 is the calibration number");
    Require(row.Comment == ValueOf(items[5]), "line 6 is the comment");
  } else {
    Require(items.size() >= 3, "an old header has three lines");
    Require(row.SerialNumber == Stripped(items[1]), "line 2 is the serial number");
    Require(row.CalMonth >= 0 && row.CalMonth <= 12, "a month's name is a month");
  }
}

}  // namespace tarvell::fuzz
