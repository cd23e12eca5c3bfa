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
#include "exchange/CaptionUnit.h"
#include "exchange/CsvLines.h"
#include "exchange/CsvPlaces.h"
#include "exchange/DecodedText.h"
#include "exchange/DelimitedText.h"
#include "exchange/HeaderDates.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

/// So many lines that no field takes are named.
constexpr std::size_t kNamedLines = 12;
/// A longer line above a table is not its title.
constexpr std::size_t kLongestTitle = 80;
constexpr std::size_t kItemLimit = 100;

class CsvReader {
 public:
  CsvReader(std::string_view text, char separator, const ReadingChoices& choices)
      : text_(text),
        lines_(DelimitedLines(text, separator)),
        separator_(separator),
        choices_(choices),
        dates_(choices.dateOrder) {}

  Certificate Read() {
    std::size_t done = 0;
    for (const TablePlace& place : TablePlaces(lines_)) {
      TakeHead(place.head);
      tables_.push_back({place, std::exchange(head_, {})});
      done = place.rows.back() + 1;
    }
    TakeHead({done, lines_.size()});
    DecideSign();
    for (const Table& table : tables_) {
      certificate_.tables.push_back(TableOf(table));
    }
    dates_.Store(certificate_);
    NoteLines();
    return std::move(certificate_);
  }

 private:
  /// What the lines above a table say about it.
  struct Head {
    std::string page;
    std::optional<std::string> memberSerial;
    std::string title;               ///< the last line of one cell
    std::vector<std::size_t> items;  ///< the instruments whose serial numbers they have
  };
  struct Table {
    TablePlace place;
    Head head;
  };

  void TakeHead(LineRange lines) {
    for (std::size_t i = lines.begin; i < lines.end; ++i) {
      if (!IsBlank(lines_[i]) && !TakeLine(lines_[i])) {
        unused_.push_back(lines_[i].number);
      }
    }
  }

  bool TakeLine(const DelimitedLine& line) {
    if (certificate_.isExport && line.cells.size() <= 2 && KeyFieldOf(line.Cell(0))) {
      // An export has the value as it is, even if it is empty.
      return Take(line, line.Cell(0), line.cells.size() > 1 ? line.cells[1] : std::string());
    }
    return line.Width() == 1 ? TakeCell(line) : TakePairs(line);
  }

  /// A title, or "Serial number: 4711" in one cell.
  bool TakeCell(const DelimitedLine& line) {
    const std::string_view cell = line.Cell(0);
    if (cell.size() <= kLongestTitle) {
      head_.title = cell;
    }
    const std::size_t colon = std::min(cell.find(':'), cell.size());
    return colon < cell.size() &&
           Take(line, cell.substr(0, colon), WithoutBlanks(cell.substr(colon + 1)));
  }

  bool TakePairs(const DelimitedLine& line) {
    bool isTaken = false;
    for (std::size_t column = 0; column + 1 < line.Width(); ++column) {
      std::size_t value = column + 1;
      while (line.Cell(value).empty()) {
        ++value;
      }
      if (Take(line, line.Cell(column), line.Cell(value))) {
        isTaken = true;
        column = value;
      }
    }
    return isTaken;
  }

  bool Take(const DelimitedLine& line, std::string_view key, std::string_view value) {
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
        (void)ItemWith(&CertificateItem::model, value);
        break;
      case KeyField::SerialNumber: {
        const std::size_t item = ItemWith(&CertificateItem::serialNumber, value);
        certificate_.items[item].where = where;
        head_.items.push_back(item);
        break;
      }
      case KeyField::CalibrationNumber:
        keep(header.calibrationNumber);
        break;
      case KeyField::CalDate:
      case KeyField::DueDate:
        TakeDate(*field == KeyField::CalDate, value, where);
        break;
      case KeyField::Comment:
        keep(header.comment);
        break;
      case KeyField::Option:
        keep(header.option);
        break;
      case KeyField::Format:
        TakeFormat(value);
        break;
      case KeyField::Page:
        head_.page = value;
        break;
      case KeyField::MemberSerial:
        head_.memberSerial = value;
        break;
    }
    return true;
  }

  /// A spreadsheet writes numbers with other digits than the data set.
  void TakeFormat(std::string_view value) {
    certificate_.isExport = value.starts_with(kExportFormat);
    const std::size_t firstEnd = std::min(text_.find('\n'), text_.size() - 1);
    certificate_.isUnchanged = value == ExportFormat(text_.substr(firstEnd + 1));
    if (certificate_.isExport && !certificate_.isUnchanged) {
      certificate_.notes.emplace_back(
          "This export was changed after it was written. Its numbers get the digits of the table.");
    }
  }

  void TakeDate(bool isCalDate, std::string_view value, const std::string& where) {
    const std::optional<FileDate> exported =
        certificate_.isExport ? ExportedDate(value) : std::nullopt;
    if (!exported) {
      dates_.Add(isCalDate, value, where);
      return;
    }
    CertificateHeader& header = certificate_.header;
    (isCalDate ? header.calDate : header.dueDate) = FoundDate{*exported, where};
  }

  /// The index of the instrument with this model or serial number. Another one than that of the
  /// instrument before begins the next instrument.
  std::size_t ItemWith(std::string CertificateItem::*field, std::string_view value) {
    std::vector<CertificateItem>& items = certificate_.items;
    const auto known = std::ranges::find(items, value, field);
    if (known != items.end()) {
      return static_cast<std::size_t>(known - items.begin());
    }
    const bool isNext = items.empty() || !(items.back().*field).empty();
    if (isNext && items.size() == kItemLimit) {
      throw Error(ErrorKind::Type, "The file names more than " + std::to_string(kItemLimit) +
                                       " instruments, which no certificate does.");
    }
    if (isNext) {
      items.emplace_back();
    }
    items.back().*field = value;
    return items.size() - 1;
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
    for (const Table& table : tables_) {
      for (const std::size_t row : table.place.rows) {
        for (std::size_t column = 0; column < lines_[row].Width(); ++column) {
          if (const std::optional<NumberCell> cell = NumberIn(lines_[row].Cell(column))) {
            act(cell->number);
          }
        }
      }
    }
  }

  [[nodiscard]] CertificateTable TableOf(const Table& from) {
    CertificateTable table;
    const auto& [place, head] = from;
    table.where = "line " + std::to_string(lines_[place.rows.front()].number);
    table.page = head.page;
    table.memberSerial = head.memberSerial;
    table.name = {{"", !head.page.empty()    ? head.page
                       : !head.title.empty() ? head.title
                                             : "Table of " + table.where}};
    // A table without a serial number above it is about the same instrument as the one before.
    item_ = head.items.empty()       ? item_
            : head.items.size() == 1 ? std::optional(head.items.front())
                                     : std::nullopt;
    table.item = item_;
    std::size_t width = 0;
    for (std::size_t i = place.captions.begin; i < place.captions.end; ++i) {
      width = std::max(width, lines_[i].Width());
    }
    for (const std::size_t row : place.rows) {
      table.rowLines.push_back(lines_[row].number);
      width = std::max(width, lines_[row].Width());
    }
    for (std::size_t column = 0; column < width; ++column) {
      table.columns.push_back(ColumnOf(place, column));
    }
    return table;
  }

  [[nodiscard]] CertificateColumn ColumnOf(const TablePlace& place, std::size_t column) {
    std::string caption;
    for (std::size_t i = place.captions.begin; i < place.captions.end; ++i) {
      const std::string_view cell = lines_[i].Cell(column);
      const bool isUnit = i > place.captions.begin;
      caption +=
          isUnit && !cell.empty() ? " [" + std::string(UnitOnly(cell)) + "]" : std::string(cell);
    }
    const std::string known = UnitOfCaption(caption);
    const std::string unit = known.empty() ? UnknownUnitOf(caption) : Meant(known);
    Series series;
    for (const std::size_t row : place.rows) {
      series.values.push_back(ValueOf(lines_[row].Cell(column), unit));
    }
    return {{{"", caption}}, "", {std::move(series)}};
  }

  [[nodiscard]] WrittenValue ValueOf(std::string_view cell, const std::string& captionUnit) {
    const std::optional<NumberCell> parts = NumberIn(cell);
    std::optional<std::string> number = parts ? PlainNumber(parts->number, sign_) : std::nullopt;
    if (!number) {
      return {std::string(cell), "", false};
    }
    if (certificate_.isExport && ParseNumber(parts->number)) {
      number = parts->number;
    }
    return {*number, parts->unit.empty() ? captionUnit : Meant(std::string(parts->unit))};
  }

  /// Nobody calibrates in millihertz, and many write "mHz" for megahertz; but the user has to know.
  std::string Meant(std::string unit) {
    if (unit != "mHz") {
      return unit;
    }
    constexpr std::string_view kDoubt =
        "The file has frequencies in \"mHz\", which is millihertz. They are read as MHz.";
    if (std::ranges::find(certificate_.doubts, kDoubt) == certificate_.doubts.end()) {
      certificate_.doubts.emplace_back(kDoubt);
    }
    return "MHz";
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

  std::string_view text_;
  std::vector<DelimitedLine> lines_;
  char separator_;
  ReadingChoices choices_;
  HeaderDates dates_;
  DecimalSign sign_ = DecimalSign::Point;
  Head head_;  ///< of the next table
  std::vector<Table> tables_;
  std::optional<std::size_t> item_;  ///< the instrument of the table before
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
