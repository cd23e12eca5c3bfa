// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/DataFileSummary.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/HeaderLines.h"
#include "core/dates/Calendar.h"
#include "core/dates/DueDate.h"
#include "core/dates/FileDate.h"
#include "core/dates/Months.h"
#include "core/files/ItemReader.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

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

/// A date that does not exist keeps its digits, so that it can be compared with another one.
std::string DateOf(std::string_view digits) {
  if (digits.size() != kDateDigits || !AreDigits(digits)) {
    return TextOrNone(digits);
  }
  const FileDate date = FileDate::From(digits);
  return IsValidDate(date.year, date.month, date.day) ? DateText(date)
                                                      : std::string(digits) + " (no such day)";
}

/// The dates of a file in the old style.
std::vector<FileSummary::Field> OldDates(std::string_view text) {
  const std::string_view day = text.substr(0, 2);
  const std::int16_t month =
      text.size() == kOldDateLength ? MonthToNumber(text.substr(2, 3)) : std::int16_t{0};
  if (month == 0 || !AreDigits(day) || !AreDigits(text.substr(5))) {
    return {{kCalibrated, TextOrNone(text)}};
  }
  const FileDate date = OldStyleDateOf(text);
  return {{kCalibrated, DateText(date)}, {kDue, DateText(OneYearAfter(date))}};
}

/// The next item without blanks around it, which quotes would keep; "" if none exists.
std::string NextItem(ItemReader& reader) {
  std::string item;
  static_cast<void>(reader.TryReadItem(item));
  return std::string(Trim(item));
}

FileSummary SummaryOfOldFile(std::string_view bytes) {
  ItemReader reader = ItemReader::Of(bytes);
  static_cast<void>(NextItem(reader));
  FileSummary summary;
  summary.serialNumber = NextItem(reader);
  summary.fields = OldDates(NextItem(reader));
  summary.fields.insert(summary.fields.begin(), {kSerialNumber, TextOrNone(summary.serialNumber)});
  return summary;
}

/// The next line of `rest`, without the blanks at its beginning, which a load skips.
std::string_view TakeLoadedLine(std::string_view& rest) {
  const std::string_view line = TakeLine(rest);
  return line.substr(std::min(line.find_first_not_of(" \t"), line.size()));
}

/// A header line as a load splits it, but the value is the whole text and not only its first word.
struct SplitLine {
  std::string keyword;  ///< in upper case
  std::string_view value;
};

/// `line` is a header line without its "#".
SplitLine SplitHeaderLine(std::string_view line) {
  const std::string keyword = HeaderValueRead(line);
  const std::string_view rest = line.substr(line.find(keyword) + keyword.size());
  const std::size_t start = std::min(rest.find_first_not_of(" \t:"), rest.size());
  return {ToUpper(keyword), TrimRight(rest.substr(start))};
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

/// The fields of the header in the order of the lists, then those of the members in the order of
/// the file.
class HeaderFields {
 public:
  /// Takes a line without its "#".
  void Take(std::string_view line) {
    const auto [keyword, value] = SplitHeaderLine(line);
    if (const std::optional<HeaderField> field = HeaderFieldOf(keyword)) {
      lines_.set(static_cast<std::size_t>(*field));
      TakeField(*field, value);
    } else if (!keyword.empty()) {
      fields_.push_back({"Serial number of " + keyword, std::string(value)});
    }
  }

  /// The header lines that were taken.
  [[nodiscard]] const HeaderFieldSet& Lines() const { return lines_; }

  void MoveTo(FileSummary& summary) {
    summary.serialNumber = serial_;
    summary.fields = std::move(fields_);
  }

 private:
  void TakeField(HeaderField field, std::string_view value) {
    switch (field) {
      case HeaderField::ModelNumber:
        break;
      case HeaderField::SerialNumber:
        serial_ = HeaderValueRead(value);
        fields_.at(0).value = TextOrNone(value);
        break;
      case HeaderField::CalNumber:
        fields_.at(1).value = TextOrNone(value);
        break;
      case HeaderField::CalDate:
        fields_.at(2).value = DateOf(value);
        break;
      case HeaderField::DueDate:
        fields_.at(3).value = DateOf(value);
        break;
      case HeaderField::Comment:
        fields_.at(4).value = TextOrNone(value);
        break;
    }
  }

  HeaderFieldSet lines_;
  std::string serial_;
  std::vector<FileSummary::Field> fields_ = {{kSerialNumber, TextOrNone("")},
                                             {"Calibration number", TextOrNone("")},
                                             {kCalibrated, TextOrNone("")},
                                             {kDue, TextOrNone("")},
                                             {"Comment", TextOrNone("")}};
};

}  // namespace

FileSummary SummaryOfDataFile(std::string_view bytes, std::size_t cells) {
  const std::string text = DecodeFileText(bytes);
  std::string_view rest = text;
  // A load ignores blanks before the first line.
  const std::string_view firstLine =
      rest.substr(std::min(rest.find_first_not_of(" \t"), rest.size()));
  FileSummary summary;
  HeaderFields header;
  while (!rest.empty()) {
    const std::string_view line = TakeLoadedLine(rest);
    if (line.starts_with('#')) {
      header.Take(line.substr(1));
    } else if (line.starts_with('*')) {
      summary.rows.push_back(CellsOf(line.substr(1), cells));
    }
  }
  if (IsOldStyle(firstLine, header.Lines())) {
    return SummaryOfOldFile(bytes);
  }
  header.MoveTo(summary);
  return summary;
}

FileSummary SummaryOfKitFile(std::string_view bytes) {
  ItemReader reader = ItemReader::Of(bytes);
  static_cast<void>(NextItem(reader));
  const std::string item = NextItem(reader);
  std::string_view serial = Trim(StripNull(item));
  if (serial.starts_with('#')) {
    const auto [keyword, value] = SplitHeaderLine(serial.substr(1));
    serial = HeaderFieldOf(keyword) == HeaderField::SerialNumber ? value : serial;
  }
  FileSummary summary = SummaryOfDataFile(bytes);
  summary.serialNumber = serial;
  summary.fields.front().value = TextOrNone(serial);
  return summary;
}

}  // namespace tarvell
