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

constexpr const char* kFolder = "c:\\data";

/// Scans the folder anew; nothing when the file is refused.
std::optional<int> Scan() {
  gCalFiles = {};
  int count = -1;
  int told = 0;
  const bool accepted =
      Accepts([&] { count = ReadCalFileHeaders(kFolder, [&](const CalFileInfo&) { ++told; }); });
  if (!accepted) {
    return std::nullopt;
  }
  Require(told == count, "every row is told once");
  return count;
}

std::string ValueOf(const std::string& item) {
  const std::size_t colon = item.find(':');
  return colon == std::string::npos ? std::string() : WithoutBlanks(item.substr(colon + 1));
}

bool IsDigits(const std::string& text, std::size_t count) {
  return text.size() == count && text.find_first_not_of("0123456789") == std::string::npos;
}

/// The six values of a file with header lines.
void CheckNewStyle(const std::vector<std::string>& items, const CalFileInfo& row) {
  Require(items.size() >= 6, "a header has six lines");
  Require(row.ModelNumber == ValueOf(items[0]), "line 1 is the model number");
  Require(row.SerialNumber == ValueOf(items[1]), "line 2 is the serial number");
  Require(row.CalibrationNumber == ValueOf(items[3]), "line 4 is the calibration number");
  Require(row.Comment == ValueOf(items[5]), "line 6 is the comment");
  Require(row.Option.empty(), "a header line names no option");
  struct DateLine {
    std::string digits;
    int year;
    int month;
    int day;
  };
  for (const DateLine& date :
       {DateLine{ValueOf(items[2]), row.CalYear, row.CalMonth, row.CalDay},
        DateLine{ValueOf(items[4]), row.DueYear, row.DueMonth, row.DueDay}}) {
    if (IsDigits(date.digits, 8)) {
      Require(date.year == std::stoi(date.digits.substr(0, 4)) &&
                  date.month == std::stoi(date.digits.substr(4, 2)) &&
                  date.day == std::stoi(date.digits.substr(6)),
              "eight digits are year, month and day", date.digits);
    }
  }
}

/// A file from before the header lines.
void CheckOldStyle(const std::vector<std::string>& items, const CalFileInfo& row) {
  Require(items.size() >= 3, "an old header has three lines");
  Require(row.SerialNumber == WithoutBlanks(items[1]), "line 2 is the serial number");
  Require(row.CalMonth >= 0 && row.CalMonth <= 12, "a month's name is a month");
  Require(
      row.DueYear == row.CalYear + 1 && row.DueMonth == row.CalMonth && row.DueDay == row.CalDay,
      "it is due one year later");
  const std::string& date = items[2];
  if (date.size() == 9 && IsDigits(date.substr(0, 2), 2) && IsDigits(date.substr(5), 4)) {
    Require(row.CalDay == std::stoi(date.substr(0, 2)) && row.CalYear == std::stoi(date.substr(5)),
            "nine characters are day, month and year", date);
  }
}

void Run(Input input) {
  MemoryPlatform disk;
  disk.Put("data/SN00001", input.Rest());
  // Neither is a data file.
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
  const bool isNewStyle = items[0].rfind('#', 0) == 0;
  const bool isNone = !isNewStyle && items[0].find_first_of("\r\n") != std::string::npos;
  Require(*count == (isNone ? 0 : 1), "a file of either style is one row");
  if (isNone) {
    return;
  }
  Require(row.FilePath == "c:\\data\\SN00001", "the row tells its file");
  Require(FindCalFile(row.SerialNumber) == 0, "a row is found by its serial number");
  if (isNewStyle) {
    CheckNewStyle(items, row);
  } else {
    CheckOldStyle(items, row);
  }
}

}  // namespace
}  // namespace tarvell::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvell::fuzz::Run({data, size});
  return 0;
}
