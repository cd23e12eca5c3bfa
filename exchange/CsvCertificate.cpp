// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvCertificate.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"
#include "exchange/CsvColumns.h"
#include "exchange/CsvInstruments.h"
#include "exchange/CsvLines.h"
#include "exchange/CsvPlaces.h"
#include "exchange/CsvSign.h"
#include "exchange/DecodedText.h"
#include "exchange/DelimitedText.h"
#include "exchange/HeaderDates.h"
#include "exchange/UnusedLines.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

/// A longer line above a table is not its title.
constexpr std::size_t kLongestTitle = 80;
constexpr std::size_t kItemLimit = 100;
constexpr std::size_t kTableCellLimit = 500'000;

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
      AddTables(place);
      done = place.rows.back() + 1;
    }
    TakeHead({done, lines_.size()});
    DecideSign();
    CsvColumns columns(lines_, sign_, certificate_.isExport);
    for (const Table& table : tables_) {
      certificate_.tables.push_back(TableOf(table, columns));
    }
    if (columns.HasMillihertz()) {
      certificate_.doubts.emplace_back(
          "The file has frequencies in \"mHz\", which is millihertz. They are read as MHz.");
    }
    dates_.Store(certificate_);
    std::ranges::move(unused_.Sentences(), std::back_inserter(certificate_.notes));
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
    std::optional<std::size_t> item = {};  ///< the instrument that its rows name
  };

  /// Adds a table, or one for each instrument that its rows name.
  void AddTables(const TablePlace& place) {
    const Head head = std::exchange(head_, {});
    const std::vector<InstrumentRows> instruments = RowsByInstrument(lines_, place);
    if (instruments.empty()) {
      tables_.push_back({place, head});
    }
    for (const InstrumentRows& instrument : instruments) {
      Table table = {place, head};
      table.place.rows = instrument.rows;
      if (!instrument.serialNumber.empty()) {
        table.item = ItemOf(instrument);
        const std::string name =
            instrument.model + (instrument.model.empty() ? "" : " ") + instrument.serialNumber;
        table.head.title = head.title + (head.title.empty() ? "" : ", ") + name;
      }
      tables_.push_back(std::move(table));
    }
  }

  std::size_t ItemOf(const InstrumentRows& instrument) {
    const bool isKnown =
        std::ranges::find(certificate_.items, instrument.serialNumber,
                          &CertificateItem::serialNumber) != certificate_.items.end();
    const std::size_t index = ItemWith(&CertificateItem::serialNumber, instrument.serialNumber);
    CertificateItem& item = certificate_.items[index];
    item.model = item.model.empty() ? instrument.model : item.model;
    item.where = isKnown ? item.where : WhereOf(lines_[instrument.rows.front()]);
    return index;
  }

  static std::string WhereOf(const DelimitedLine& line) {
    return "line " + std::to_string(line.number);
  }

  void TakeHead(LineRange lines) {
    for (std::size_t i = lines.begin; i < lines.end; ++i) {
      if (!IsBlank(lines_[i]) && !TakeLine(lines_[i])) {
        unused_.Add(lines_[i]);
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
    const std::string where = WhereOf(line);
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
        if (!value.empty() && value.front() >= '0' && value.front() <= '9') {
          // "1/3" is a page of paper.
          return false;
        }
        head_.page = Shortened(value);
        break;
      case KeyField::MemberSerial:
        head_.memberSerial = Shortened(value);
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

  void DecideSign() {
    CsvSign sign(separator_);
    for (const Table& table : tables_) {
      for (const std::size_t row : table.place.rows) {
        for (std::size_t column = 0; column < lines_[row].Width(); ++column) {
          const std::optional<NumberCell> cell = NumberIn(lines_[row].Cell(column));
          if (cell && column != table.place.serialColumn) {
            sign.Add(cell->number);
          }
        }
      }
    }
    sign_ = sign.Sign(choices_.sign);
    if (std::optional<ReadingQuestion> question = sign.Question()) {
      certificate_.questions.push_back(std::move(*question));
    }
  }

  [[nodiscard]] CertificateTable TableOf(const Table& from, CsvColumns& columns) {
    CertificateTable table;
    const auto& [place, head, item] = from;
    table.where = WhereOf(lines_[place.rows.front()]);
    table.page = head.page;
    table.memberSerial = head.memberSerial;
    table.name = {{"", !head.page.empty()    ? head.page
                       : !head.title.empty() ? head.title
                                             : "Table of " + table.where}};
    // A table without a serial number above it is about the same instrument as the one before.
    item_ = head.items.empty()       ? item_
            : head.items.size() == 1 ? std::optional(head.items.front())
                                     : std::nullopt;
    table.item = item ? item : item_;
    std::size_t width = 0;
    for (std::size_t i = place.captions.begin; i < place.captions.end; ++i) {
      width = std::max(width, lines_[i].Width());
    }
    for (const std::size_t row : place.rows) {
      table.rowLines.push_back(lines_[row].number);
      width = std::max(width, lines_[row].Width());
    }
    CheckColumns(width, table.where);
    CountCells(width * place.rows.size());
    for (std::size_t column = 0; column < width; ++column) {
      // The serial numbers have said which rows these are.
      if (!item || column != place.serialColumn) {
        table.columns.push_back(columns.Of(place, column));
      }
    }
    return table;
  }

  /// Short lines get the width of their table, so that few bytes can become many cells.
  void CountCells(std::size_t cells) {
    cells_ += cells;
    if (cells_ > kTableCellLimit) {
      throw Error(ErrorKind::Type,
                  "The tables of the file have more than " + std::to_string(kTableCellLimit) +
                      " cells, which no certificate has. Export only the certificate, then try "
                      "again.");
    }
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
  std::size_t cells_ = 0;            ///< of all tables
  UnusedLines unused_;
  Certificate certificate_;
};

std::string NameOf(char separator) {
  switch (separator) {
    case '\t':
      return "tabs";
    case ';':
      return "semicolons";
    case ',':
      return "commas";
    default:
      return Quoted(std::string(1, separator));
  }
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
      "Text, " + std::string(decoded.encoding) + ", separated by " + NameOf(separator);
  return certificate;
}

}  // namespace tarvell
