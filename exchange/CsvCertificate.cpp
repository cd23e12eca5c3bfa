// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvCertificate.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/files/ReadFile.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"
#include "exchange/DecodedText.h"
#include "exchange/DelimitedText.h"
#include "exchange/HeaderDates.h"
#include "exchange/Units.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

/// So many lines that no field takes are named.
constexpr std::size_t kNamedLines = 12;
/// A longer line above a table is not its title.
constexpr std::size_t kLongestTitle = 80;

/// The number and the unit of a cell.
struct NumberCell {
  std::string_view number;
  std::string_view unit;
};

/// A certificate may mark the reference point, as the data file does.
std::string_view WithoutReferenceMark(std::string_view cell) {
  constexpr std::array<std::string_view, 2> kMarks = {"(REF.)", "(REF)"};
  for (const std::string_view mark : kMarks) {
    if (ToUpper(cell).ends_with(mark)) {
      return WithoutBlanks(cell.substr(0, cell.size() - mark.size()));
    }
  }
  return cell;
}

/// Nothing for a cell that is no number in either way.
std::optional<NumberCell> NumberIn(std::string_view cell) {
  cell = WithoutReferenceMark(cell);
  const std::size_t last = cell.find_last_of("0123456789");
  if (last == std::string_view::npos) {
    return std::nullopt;
  }
  const NumberCell parts = {cell.substr(0, last + 1), WithoutBlanks(cell.substr(last + 1))};
  const bool isNumber = PlainNumber(parts.number, DecimalSign::Point) ||
                        PlainNumber(parts.number, DecimalSign::Comma);
  return isNumber && (parts.unit.empty() || UnitFrom(parts.unit)) ? std::optional(parts)
                                                                  : std::nullopt;
}

bool IsBlank(const DelimitedLine& line) {
  return line.Width() == 0;
}

bool IsKeyLine(const DelimitedLine& line) {
  return line.Width() == 2 && KeyFieldOf(line.Cell(0));
}

/// A row of a table begins with a number, or with a name and then has nothing but numbers.
bool IsDataLine(const DelimitedLine& line) {
  const std::size_t width = line.Width();
  if (width < 2 || line.Cell(0).empty()) {
    return false;
  }
  if (NumberIn(line.Cell(0))) {
    return true;
  }
  std::size_t numbers = 0;
  for (std::size_t column = 1; column < width; ++column) {
    const bool isNumber = NumberIn(line.Cell(column)).has_value();
    if (!isNumber && !line.Cell(column).empty()) {
      return false;
    }
    numbers += isNumber ? 1 : 0;
  }
  return numbers > 1 && !KeyFieldOf(line.Cell(0));
}

bool IsCaptionLine(const DelimitedLine& line) {
  if (line.Width() < 2 || IsKeyLine(line) || IsDataLine(line)) {
    return false;
  }
  for (std::size_t column = 0; column < line.Width(); ++column) {
    if (NumberIn(line.Cell(column)) && line.Cell(column) != "1") {
      return false;
    }
  }
  return true;
}

/// A unit in a line of its own, which may be in brackets.
std::string_view UnitOnly(std::string_view cell) {
  if (cell.size() > 2 && (cell.front() == '[' || cell.front() == '(')) {
    cell = WithoutBlanks(cell.substr(1, cell.size() - 2));
  }
  return UnitFrom(cell) ? cell : std::string_view();
}

bool HasOnlyUnits(const DelimitedLine& line) {
  for (std::size_t column = 0; column < line.Width(); ++column) {
    if (!line.Cell(column).empty() && UnitOnly(line.Cell(column)).empty()) {
      return false;
    }
  }
  return true;
}

class CsvReader {
 public:
  CsvReader(std::string_view text, char separator, const ReadingChoices& choices)
      : lines_(DelimitedLines(text, separator)),
        separator_(separator),
        choices_(choices),
        dates_(choices.dateOrder) {}

  Certificate Read() {
    FindTables();
    DecideSign();
    for (const Place& place : places_) {
      certificate_.tables.push_back(TableOf(place));
    }
    dates_.Store(certificate_);
    NoteLines();
    return std::move(certificate_);
  }

 private:
  /// The lines of a table, from `begin` to before `end`. Its captions are above it.
  struct Place {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t captions = 0;  ///< how many lines
    std::string page;
    std::string memberSerial;
    std::string title;  ///< the last line of one cell above the table
  };

  void FindTables() {
    Place next;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      if (!IsDataLine(lines_[i])) {
        continue;
      }
      next.captions = CaptionsAbove(i);
      TakeKeys(done_, i - next.captions, next);
      next.begin = i;
      while (i < lines_.size() && IsDataLine(lines_[i])) {
        ++i;
      }
      next.end = done_ = i;
      places_.push_back(std::exchange(next, {}));
    }
    TakeKeys(done_, lines_.size(), next);
  }

  [[nodiscard]] std::size_t CaptionsAbove(std::size_t data) const {
    const auto isCaption = [&](std::size_t above) {
      return data >= done_ + above && IsCaptionLine(lines_[data - above]);
    };
    if (!isCaption(1)) {
      return 0;
    }
    return HasOnlyUnits(lines_[data - 1]) && isCaption(2) ? 2 : 1;
  }

  /// Takes the key and value lines from `begin` to before `end`.
  void TakeKeys(std::size_t begin, std::size_t end, Place& next) {
    for (std::size_t i = begin; i < end; ++i) {
      const DelimitedLine& line = lines_[i];
      bool isTaken = IsBlank(line);
      if (line.Width() == 1 && line.Cell(0).size() <= kLongestTitle) {
        next.title = line.Cell(0);
      }
      if (line.Width() == 1) {
        // "Serial number: 4711" in one cell.
        const std::string_view cell = line.Cell(0);
        const std::size_t colon = std::min(cell.find(':'), cell.size());
        isTaken = colon < cell.size() &&
                  Take(line, cell.substr(0, colon), WithoutBlanks(cell.substr(colon + 1)), next);
      }
      for (std::size_t column = 0; column + 1 < line.Width(); ++column) {
        std::size_t value = column + 1;
        while (line.Cell(value).empty()) {
          ++value;
        }
        if (Take(line, line.Cell(column), line.Cell(value), next)) {
          isTaken = true;
          column = value;
        }
      }
      if (!isTaken) {
        unused_.push_back(line.number);
      }
    }
  }

  bool Take(const DelimitedLine& line, std::string_view key, std::string_view value, Place& next) {
    const std::optional<KeyField> field = KeyFieldOf(key);
    if (!field) {
      return false;
    }
    const std::string where = "line " + std::to_string(line.number);
    CertificateHeader& header = certificate_.header;
    const auto keep = [&](std::optional<FoundText>& target) {
      if (!target) {
        target = FoundText{std::string(value), where};
      } else if (target->text != value) {
        certificate_.notes.push_back("Line " + std::to_string(line.number) + ": " + Quoted(value) +
                                     " is not used, because " + target->where + " has " +
                                     Quoted(target->text) + ".");
      }
    };
    switch (*field) {
      case KeyField::Model:
        Item().model = value;
        break;
      case KeyField::SerialNumber:
        Item().serialNumber = value;
        break;
      case KeyField::CalibrationNumber:
        keep(header.calibrationNumber);
        break;
      case KeyField::CalDate:
      case KeyField::DueDate:
        dates_.Add(*field == KeyField::CalDate, value, where);
        break;
      case KeyField::Comment:
        keep(header.comment);
        break;
      case KeyField::Option:
        keep(header.option);
        break;
      case KeyField::Format:
        certificate_.isExport = value == kExportFormat;
        break;
      case KeyField::Page:
        next.page = value;
        break;
      case KeyField::MemberSerial:
        next.memberSerial = value;
        break;
    }
    return true;
  }

  CertificateItem& Item() {
    if (certificate_.items.empty()) {
      certificate_.items.emplace_back();
    }
    return certificate_.items.front();
  }

  /// A number that only one sign fits decides for all: a file is written with one of them.
  void DecideSign() {
    std::size_t unreadPoint = 0;
    std::size_t unreadComma = 0;
    bool hasComma = false;
    std::optional<ReadingQuestion> question;
    ForEachNumber([&](std::string_view number) {
      hasComma = hasComma || number.find(',') != std::string_view::npos;
      const std::optional<std::string> point = PlainNumber(number, DecimalSign::Point);
      const std::optional<std::string> comma = PlainNumber(number, DecimalSign::Comma);
      unreadPoint += point ? 0 : 1;
      unreadComma += comma ? 0 : 1;
      if (!question && point && comma && ParseNumber(*point) != ParseNumber(*comma)) {
        question = ReadingQuestion{ReadingQuestion::About::DecimalSign, std::string(number),
                                   Normalised(*point), Normalised(*comma)};
      }
    });
    // Who writes a decimal comma does not separate cells by commas, except with quotes.
    unreadComma += separator_ == ',' && !hasComma ? 1 : 0;
    const bool isDecided = unreadPoint != unreadComma;
    sign_ = isDecided       ? unreadPoint < unreadComma ? DecimalSign::Point : DecimalSign::Comma
            : choices_.sign ? *choices_.sign
                            : DecimalSign::Point;
    if (!isDecided && question) {
      certificate_.questions.push_back(*question);
    }
  }

  template <typename Act>
  void ForEachNumber(const Act& act) const {
    for (const Place& place : places_) {
      for (std::size_t i = place.begin; i < place.end; ++i) {
        for (std::size_t column = 0; column < lines_[i].Width(); ++column) {
          if (const std::optional<NumberCell> cell = NumberIn(lines_[i].Cell(column))) {
            act(cell->number);
          }
        }
      }
    }
  }

  [[nodiscard]] CertificateTable TableOf(const Place& place) const {
    CertificateTable table;
    table.where = "line " + std::to_string(lines_[place.begin].number);
    table.page = place.page;
    table.memberSerial = place.memberSerial;
    table.name = {{"", !place.page.empty()    ? place.page
                       : !place.title.empty() ? place.title
                                              : "Table of " + table.where}};
    std::size_t width = 0;
    for (std::size_t i = place.begin - place.captions; i < place.end; ++i) {
      width = std::max(width, lines_[i].Width());
    }
    for (std::size_t column = 0; column < width; ++column) {
      table.columns.push_back(ColumnOf(place, column));
    }
    return table;
  }

  [[nodiscard]] CertificateColumn ColumnOf(const Place& place, std::size_t column) const {
    std::string caption;
    std::string unit;
    for (std::size_t i = place.begin - place.captions; i < place.begin; ++i) {
      const std::string_view cell = lines_[i].Cell(column);
      const bool isUnit = i > place.begin - place.captions;
      caption +=
          isUnit && !cell.empty() ? " [" + std::string(UnitOnly(cell)) + "]" : std::string(cell);
    }
    unit = UnitOfCaption(caption);
    Series series;
    for (std::size_t i = place.begin; i < place.end; ++i) {
      series.values.push_back(ValueOf(lines_[i].Cell(column), unit));
    }
    return {{{"", caption}}, "", {std::move(series)}};
  }

  [[nodiscard]] WrittenValue ValueOf(std::string_view cell, const std::string& captionUnit) const {
    const std::optional<NumberCell> parts = NumberIn(cell);
    const std::optional<std::string> number =
        parts ? PlainNumber(parts->number, sign_) : std::nullopt;
    if (!number) {
      return {std::string(cell), "", false};
    }
    return {*number, parts->unit.empty() ? captionUnit : std::string(parts->unit)};
  }

  void NoteLines() {
    if (unused_.empty()) {
      return;
    }
    std::string numbers;
    for (std::size_t i = 0; i < std::min(unused_.size(), kNamedLines); ++i) {
      numbers += (i == 0 ? "" : ", ") + std::to_string(unused_[i]);
    }
    const std::string more = unused_.size() > kNamedLines
                                 ? " and " + std::to_string(unused_.size() - kNamedLines) + " more"
                                 : "";
    certificate_.notes.push_back(
        std::string(unused_.size() == 1 ? "This line is" : "These lines are") +
        " not used, because no field takes the text: " + numbers + more + ".");
  }

  std::vector<DelimitedLine> lines_;
  char separator_;
  ReadingChoices choices_;
  HeaderDates dates_;
  DecimalSign sign_ = DecimalSign::Point;
  std::vector<Place> places_;
  std::size_t done_ = 0;  ///< the lines before this one belong to earlier tables
  std::vector<std::size_t> unused_;
  Certificate certificate_;
};

std::string_view NameOf(char separator) {
  return separator == '\t' ? "tabs" : separator == ';' ? "semicolons" : "commas";
}

}  // namespace

Certificate CsvCertificate(std::string_view bytes, const ReadingChoices& choices) {
  if (bytes.size() > kDataFileLimit) {
    throw Error(ErrorKind::Type,
                "The file is larger than any table of calibration data. Export only the "
                "certificate, then try again.");
  }
  const DecodedText decoded = Decoded(bytes);
  if (decoded.text.find('\0') != std::string::npos) {
    throw Error(ErrorKind::Type,
                "The file is not a text. Save the table as CSV, or choose a DCC file (XML).");
  }
  const char separator = SeparatorOf(decoded.text);
  Certificate certificate = CsvReader(decoded.text, separator, choices).Read();
  certificate.kind =
      "Text, " + std::string(decoded.encoding) + ", separated by " + std::string(NameOf(separator));
  return certificate;
}

}  // namespace tarvell
