// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvCertificate.h"

#include <algorithm>
#include <utility>

#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"
#include "exchange/CaptionUnit.h"
#include "exchange/CsvColumns.h"
#include "exchange/CsvForms.h"
#include "exchange/CsvHeader.h"
#include "exchange/CsvInstruments.h"
#include "exchange/CsvLines.h"
#include "exchange/CsvPlaces.h"
#include "exchange/CsvSign.h"
#include "exchange/DecodedText.h"
#include "exchange/DelimitedText.h"
#include "exchange/ModelColumns.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

constexpr std::size_t kTableCellLimit = 500'000;

class CsvReader {
 public:
  CsvReader(std::string_view text, char separator, const ReadingChoices& choices)
      : lines_(DelimitedLines(text, separator)),
        separator_(separator),
        choices_(choices),
        header_(text, choices, certificate_) {}

  Certificate Read() {
    std::size_t done = 0;
    const std::vector<TablePlace> places = TablePlaces(lines_);
    certificate_.doubts = UnreadForms(lines_, places);
    for (const TablePlace& place : places) {
      TakeHead(place.head);
      AddTables(place);
      done = place.rows.back() + 1;
    }
    TakeHead({done, lines_.size()});
    DecideSign();
    CsvColumns columns(lines_, sign_, certificate_.isUnchanged);
    for (const Table& table : tables_) {
      certificate_.tables.push_back(TableOf(table, columns));
    }
    if (columns.HasMillihertz()) {
      certificate_.doubts.emplace_back(
          "The file has frequencies in \"mHz\", which is millihertz. They are read as MHz.");
    }
    header_.Finish();
    return std::move(certificate_);
  }

 private:
  struct Table {
    TablePlace place;
    TableHead head;
    std::optional<std::size_t> item = {};  ///< the instrument that its rows name
  };

  void TakeHead(LineRange lines) {
    for (std::size_t i = lines.begin; i < lines.end; ++i) {
      if (certificate_.isExport && IsCaptionLine(lines_[i])) {
        // An empty table has only captions.
        AddTables({.captions = {i, i + 1}});
      } else {
        header_.TakeLine(lines_[i]);
      }
    }
  }

  /// Adds a table, or one for each instrument that its rows name.
  void AddTables(const TablePlace& place) {
    if (!place.headerColumns.empty() && HasQuantity(place)) {
      for (const std::size_t column : place.headerColumns) {
        TakeHeaderColumn(place, column);
      }
    }
    const TableHead head = header_.TakeHead();
    const std::vector<InstrumentRows> instruments = RowsByInstrument(lines_, place);
    if (instruments.empty()) {
      tables_.push_back({place, head});
    }
    for (const InstrumentRows& instrument : instruments) {
      Table table = {place, head};
      table.place.rows = instrument.rows;
      if (!instrument.serialNumber.empty()) {
        table.item = header_.ItemOf(instrument, lines_[instrument.rows.front()]);
        const std::string name =
            instrument.model + (instrument.model.empty() ? "" : " ") + instrument.serialNumber;
        table.head.title = head.title + (head.title.empty() ? "" : ", ") + name;
      }
      tables_.push_back(std::move(table));
    }
  }

  /// Whether a table has a column of values. The dates in a list of the standards that were used
  /// are not those of the instrument.
  [[nodiscard]] bool HasQuantity(const TablePlace& place) const {
    // Captions may be wider than their rows, and many tables may share them.
    std::size_t width = 0;
    for (const std::size_t row : place.rows) {
      width = std::max(width, lines_[row].Width());
    }
    for (std::size_t column = 0; column < width; ++column) {
      const std::string caption = CaptionOf(lines_, place, column);
      const std::string unit = UnitOfCaption(caption);
      const bool isNamed = NamesQuantity(Folded(caption)) && !NamesNoValue(Folded(caption));
      if (!place.IsAboutRows(column) && (unit.size() > 1 || unit == "%" || isNamed)) {
        return true;
      }
    }
    return false;
  }

  /// Takes what a column of dates or certificate numbers says of all rows.
  void TakeHeaderColumn(const TablePlace& place, std::size_t column) {
    const DelimitedLine& captions = lines_[place.captions.begin];
    const DelimitedLine* first = nullptr;
    for (const std::size_t row : place.rows) {
      const std::string_view cell = lines_[row].Cell(column);
      if (first != nullptr && !cell.empty() && cell != first->Cell(column)) {
        certificate_.notes.push_back("The column " + Quoted(std::string(captions.Cell(column))) +
                                     " (" + WhereOf(captions) +
                                     ") is not used, because it has several values.");
        return;
      }
      first = first == nullptr && !cell.empty() ? &lines_[row] : first;
    }
    if (first != nullptr) {
      header_.TakeColumn(*first, captions.Cell(column), first->Cell(column));
    }
  }

  void DecideSign() {
    CsvSign sign(separator_);
    for (const Table& table : tables_) {
      sign.Add(lines_, table.place);
    }
    sign_ = sign.Sign(choices_.sign);
    if (std::optional<ReadingQuestion> question = sign.Question()) {
      certificate_.questions.push_back(std::move(*question));
    }
    if (std::string mixed = sign.Mixed(); !mixed.empty() && !certificate_.isExport) {
      certificate_.doubts.push_back(std::move(mixed));
    }
  }

  [[nodiscard]] CertificateTable TableOf(const Table& from, CsvColumns& columns) {
    CertificateTable table;
    const auto& [place, head, item] = from;
    table.where = WhereOf(lines_[place.rows.empty() ? place.captions.begin : place.rows.front()]);
    table.page = head.page;
    table.memberSerial = head.memberSerial;
    table.section = head.section;
    table.isOfStandards = head.isOfStandards;
    table.hasCommas = separator_ == ',';
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
      const bool isSerial = item && column == place.serialColumn;
      const bool isHeader =
          std::ranges::find(place.headerColumns, column) != place.headerColumns.end();
      if (!isSerial && !isHeader) {
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

  Certificate certificate_;
  std::vector<DelimitedLine> lines_;
  char separator_;
  ReadingChoices choices_;
  CsvHeader header_;
  DecimalSign sign_ = DecimalSign::Point;
  std::vector<Table> tables_;
  std::optional<std::size_t> item_;  ///< the instrument of the table before
  std::size_t cells_ = 0;            ///< of all tables
};

std::string SeparatorName(char separator) {
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
      "Text, " + std::string(decoded.encoding) + ", separated by " + SeparatorName(separator);
  return certificate;
}

}  // namespace tarvell
