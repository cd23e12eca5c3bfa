// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "caldata/DataFileSummary.h"

#include <algorithm>
#include <string>
#include <vector>

#include "app/DueDate.h"
#include "app/Tarvell_MainModule.h"
#include "common/CommonStringModule.h"
#include "common/FileCharacters.h"
#include "common/Numbers.h"
#include "common/Text.h"

namespace tarvell {

namespace {

constexpr const char* kSerialNumber = "Serial number";
constexpr const char* kCalibrated = "Calibrated";
constexpr const char* kDue = "Due";
constexpr std::size_t kDateDigits = 8;
constexpr std::size_t kOldDateLength = 9;  // 05MAR2001

bool AreDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string TextOrNone(std::string_view text) {
  return text.empty() ? "(none)" : std::string(text);
}

/// A date that does not exist keeps its digits: two of them differ.
std::string DateOf(std::string_view digits) {
  if (digits.size() != kDateDigits || !AreDigits(digits)) {
    return TextOrNone(digits);
  }
  const FileDate date = FileDate::From(digits);
  return IsValidDate(date.year, date.month, date.day) ? DateText(date)
                                                      : std::string(digits) + " (no such day)";
}

/// The dates of an older file, which is due one year later.
std::vector<FileSummary::Field> OldDates(std::string_view text) {
  const std::string_view day = text.substr(0, 2);
  const std::int16_t month =
      text.size() == kOldDateLength ? MonthToNumber(text.substr(2, 3)) : std::int16_t{0};
  if (month == 0 || !AreDigits(day) || !AreDigits(text.substr(5))) {
    return {{kCalibrated, TextOrNone(text)}};
  }
  FileDate date = {NumericInt16(text.substr(5)), month, NumericInt16(day)};
  const std::string calibrated = DateText(date);
  ++date.year;
  return {{kCalibrated, calibrated}, {kDue, DateText(date)}};
}

/// The next item of `rest`, as far as the header needs it: up to a line end or, in an older file,
/// a comma.
std::string_view TakeItem(std::string_view& rest, std::string_view ends) {
  const std::size_t end = std::min(rest.find_first_of(ends), rest.size());
  const std::string_view item = rest.substr(0, end);
  const std::size_t length = rest.substr(end, 2) == "\r\n" ? 2 : 1;
  rest.remove_prefix(std::min(end + length, rest.size()));
  return Trim(item);
}

FileSummary SummaryOfOldFile(std::string_view text) {
  static_cast<void>(TakeItem(text, ",\r\n"));
  FileSummary summary;
  summary.serialNumber = TakeItem(text, ",\r\n");
  summary.fields = OldDates(TakeItem(text, ",\r\n"));
  summary.fields.insert(summary.fields.begin(), {kSerialNumber, TextOrNone(summary.serialNumber)});
  return summary;
}

std::vector<std::string> CellsOf(std::string_view line, std::size_t most) {
  std::vector<std::string> cells;
  std::size_t start = 0;
  while (start != std::string_view::npos && cells.size() < most) {
    const std::size_t colon = line.find(':', start);
    cells.emplace_back(Trim(line.substr(start, colon - start)));
    start = colon == std::string_view::npos ? colon : colon + 1;
  }
  return cells;
}

/// The header's fields in the order of the lists; the members' follow as they come.
class HeaderFields {
 public:
  void Take(std::string_view line) {
    const std::size_t colon = std::min(line.find(':'), line.size());
    const std::string keyword = ToUpper(Trim(line.substr(0, colon)));
    const std::string_view value = Trim(line.substr(std::min(colon + 1, line.size())));
    if (keyword == "SER_NO") {
      serial_ = value;
    } else if (keyword == "CAL_NO") {
      fields_.at(1).value = TextOrNone(value);
    } else if (keyword == "CAL_DATE") {
      fields_.at(2).value = DateOf(value);
    } else if (keyword == "DUE_DATE") {
      fields_.at(3).value = DateOf(value);
    } else if (keyword == "COMMENT") {
      fields_.at(4).value = TextOrNone(value);
    } else if (keyword != "MODEL_NO" && !keyword.empty()) {
      fields_.push_back({"Serial number of " + keyword, std::string(value)});
    }
  }

  void MoveTo(FileSummary& summary) {
    fields_.at(0).value = TextOrNone(serial_);
    summary.serialNumber = serial_;
    summary.fields = std::move(fields_);
  }

 private:
  std::string serial_;
  std::vector<FileSummary::Field> fields_ = {{kSerialNumber, ""},
                                             {"Calibration number", TextOrNone("")},
                                             {kCalibrated, TextOrNone("")},
                                             {kDue, TextOrNone("")},
                                             {"Comment", TextOrNone("")}};
};

}  // namespace

FileSummary SummaryOfDataFile(std::string_view bytes, std::size_t cells) {
  const std::string text = DecodeFileText(bytes);
  std::string_view rest = text;
  if (!rest.starts_with('#')) {
    return SummaryOfOldFile(rest);
  }
  FileSummary summary;
  HeaderFields header;
  while (!rest.empty()) {
    const std::string_view line = TakeItem(rest, "\r\n");
    if (line.starts_with('#')) {
      header.Take(line.substr(1));
    } else if (line.starts_with('*')) {
      summary.rows.push_back(CellsOf(line.substr(1), cells));
    }
  }
  header.MoveTo(summary);
  return summary;
}

}  // namespace tarvell
