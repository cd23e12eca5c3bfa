// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/cInstrRT730A.h"

#include <algorithm>
#include <span>

#include "core/caldata/ResistorFormats.h"
#include "core/caldata/SetPages.h"
#include "core/caldata/TableRows.h"
#include "core/caldata/Uncertainty.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"
#include "core/text/Words.h"

namespace tarvell {

namespace {

constexpr std::int16_t kShownColumns = kTableColumns;
constexpr std::int16_t kHighFrequencyPage = 2;  // the first page of high frequencies
constexpr NumberPattern kPpmInPercentPattern("0.00000");
constexpr std::string_view kPpmEnds = "m";

/// What a page is, nullptr for a page that is not used.
const ResistorPage* PageOf(std::int16_t page) {
  return page >= 0 && page < static_cast<std::int16_t>(kResistorPages)
             ? &kResistorPage.at(static_cast<std::size_t>(page))
             : nullptr;
}

std::size_t ColumnsOf(const ResistorPage& page) {
  return static_cast<std::size_t>(std::find(page.widths.begin(), page.widths.end(), 0U) -
                                  page.widths.begin());
}

bool IsRelative(const ResistorPage& page, std::int16_t column) {
  return column != kNoColumn && column == page.relativeColumn;
}

const ResistorFormat* FindFormat(std::int16_t page, Cell cell) {
  const bool isFourth = page >= kHighFrequencyPage && cell.column == 4;
  const std::int16_t column = isFourth ? std::int16_t{3} : cell.column;
  const std::int16_t row = cell.row.number;
  const auto* found = std::find_if(kResistorFormat.begin(), kResistorFormat.end(),
                                   [&](const ResistorFormat& format) {
                                     return format.page == page && format.column == column &&
                                            row >= format.firstRow && row <= format.lastRow;
                                   });
  return found == kResistorFormat.end() ? nullptr : found;
}

CellAffixes AffixesOf(const ResistorFormat& format, std::string_view unit) {
  const bool isRelative = format.unit == kRelativeUnit;
  return {format.prefix, isRelative ? (unit == kPpm ? " ppm" : " %") : format.unit};
}

std::string CellText(const ResistorFormat& format, double number, std::string_view unit) {
  const CellAffixes affixes = AffixesOf(format, unit);
  return std::string(affixes.before) + format.pattern.Format(number) + std::string(affixes.after);
}

/// The number of a cell without its unit and, on page 1, without the "Ls/" or "Cp/" before it; ""
/// for a column without a rule.
std::string NumberOfCell(std::int16_t page, Cell cell, std::string_view text) {
  const std::int16_t column = cell.column;
  switch (page) {
    case 0:
      if (column == 1 || column == 2) {
        const bool isOhm = cell.row >= GridRow{4} && cell.row <= GridRow{6};
        return Normalised(WithoutLast(text, isOhm ? 3 : 4));
      }
      return {};
    case 1:
      if (column == 1) {
        return Normalised(WithoutFirst(WithoutLast(text, 2), 3));
      }
      return column == 2 ? Normalised(WithoutLast(text, 2)) : std::string();
    default:
      return column == 1 || column == 3 || column == 4 ? Normalised(WithoutLast(text, 3))
                                                       : std::string();
  }
}

/// The text of an uncertainty's cell for a file's field, whose last character is its unit; "" where
/// there is no format.
std::string UncertaintyRead(std::int16_t page, Cell cell, std::string_view field) {
  const Uncertainty uncertainty = UncertaintyOfField(Trim(WithoutLast(field, 1)), kPpmEnds);
  const ResistorFormat* format = FindFormat(page, cell);
  if (format == nullptr) {
    return {};
  }
  if (uncertainty.unit == kPercent) {
    CheckPercent(uncertainty.number);
  }
  return CellText(*format, uncertainty.number, uncertainty.unit);
}

/// Appends the field of an uncertainty and its "%".
void AppendUncertainty(std::string& line, std::int16_t page, const std::string& text) {
  const ResistorPage& known = *PageOf(page);
  const std::size_t width = known.widths.at(static_cast<std::size_t>(known.relativeColumn));
  const std::string field = FieldOfUncertainty(text, kPpmEnds, kPpmInPercentPattern);
  if (page != 0) {
    AppendRight(line, field, width);
    line += " %";
  } else if (text.ends_with(kPercent)) {
    AppendRight(line, field, width);
    line += " % ";
  } else {
    AppendRight(line, field + " %", width);
  }
}

std::string DataLine(std::int16_t page, std::span<const std::string> row) {
  const ResistorPage& known = *PageOf(page);
  std::string line = "*";
  for (std::size_t column = 0; column < ColumnsOf(known); ++column) {
    if (column > 0) {
      line += " : ";
    }
    if (static_cast<std::int16_t>(column) == known.relativeColumn) {
      AppendUncertainty(line, page, row[column]);
    } else {
      AppendRight(line, row[column], known.widths.at(column));
    }
  }
  return line;
}

}  // namespace

class cInstrRT730A::Reader final : public SetReader {
 public:
  Reader(cInstrRT730A& data, LoadNotes& notes) : SetReader(notes, Sections()), data_(data) {}

  void TakeCommentLine(const std::string& item, ItemReader& reader) override {
    // A title is recognised by its first words, and a remark may have any number of words.
    std::array<std::string, kWordLimit> words;
    SplitWords(WithoutFirst(item, 1), words);
    const std::string keyword = ToUpper(words[0]);
    if (keyword == "DC") {
      ReadPage(0, 1, reader);
    } else if (keyword == "SERIES") {
      ReadPage(1, 1, reader);
    } else if (keyword == "HIGH") {
      ReadPage(2, 2, reader);
    } else if (keyword == "100" && words[1] == "ohm") {
      ReadPage(3, 1, reader);
    } else if (keyword == "1") {
      ReadPage(4, 1, reader);
    } else if (keyword == "10" && words[1] != "ohm") {
      // A 10 ohm title begins no section by itself: it is part of the "High" title.
      ReadPage(5, 1, reader);
    } else if (keyword == "100" && words[1] == "kohm") {
      ReadPage(6, 1, reader);
    }
  }

 private:
  static std::vector<Page> Sections() {
    std::vector<Page> sections;
    sections.reserve(kResistorPage.size());
    for (const ResistorPage& page : kResistorPage) {
      sections.push_back(
          {"section \"" + std::string(page.name) + "\"", ", or its title is damaged", false});
    }
    return sections;
  }

  [[nodiscard]] std::string RowText(const std::string& item) const override {
    // A TAB would split the cell where the table is copied.
    const std::string line = Replaced(Replaced(Replaced(item, '\n', ' '), '\r', ' '), '\t', ' ');
    const std::string_view text = TrimLeft(StripNull(line));
    return WithoutFirst(text, 1).empty() ? std::string() : std::string(text);
  }

  void TakeRow(std::int16_t page, TableIndex index, std::string_view text) override {
    const ResistorPage& known = *PageOf(page);
    const std::size_t columns = ColumnsOf(known);
    std::size_t& filled = filled_.at(static_cast<std::size_t>(page)).at(index.value);
    filled = std::max(filled, TakeFields(page, index, WithoutFirst(text, 1)));
    const bool isBeyond = known.relativeColumn != kNoColumn &&
                          filled > static_cast<std::size_t>(known.relativeColumn) &&
                          FindFormat(page, {RowOf(index), known.relativeColumn}) == nullptr;
    RowsOf(page).Take(index, HasEmptyField(text, columns), filled < columns, isBeyond);
  }

  /// Takes the fields of a row, which are separated by ":", up to the first empty one. Returns
  /// their number.
  std::size_t TakeFields(std::int16_t page, TableIndex index, std::string_view fields) {
    Row& row = data_.tables_.at(static_cast<std::size_t>(page)).At(index);
    for (std::size_t column = 0;; ++column) {
      const std::size_t colon = std::min(fields.find(':'), fields.size());
      const std::string_view field = Trim(fields.substr(0, colon));
      if (field.empty()) {
        return column;
      }
      if (column == kColumns) {
        throw Error(ErrorKind::Index,
                    "A line holds more than 6 columns. Correct the file, then try again.");
      }
      const Cell cell = {RowOf(index), static_cast<std::int16_t>(column)};
      row.at(column) = cell.column == PageOf(page)->relativeColumn
                           ? UncertaintyRead(page, cell, field)
                           : std::string(field);
      fields.remove_prefix(std::min(colon + 1, fields.size()));
    }
  }

  void NoteRows(std::int16_t page, const std::string& table) override {
    const Table<kColumns>& cells = data_.tables_.at(static_cast<std::size_t>(page));
    const auto& filled = filled_.at(static_cast<std::size_t>(page));
    const std::size_t shown = cells.Rows().size();
    const std::size_t columns = ColumnsOf(*PageOf(page));
    DoubtfulRows& read = RowsOf(page);
    RowSet ofTemplate;
    for (std::size_t row = 0; row < std::min(shown, read.count); ++row) {
      Notes().AddLackedCells(page, {row}, filled.at(row));
      const bool isKept = filled.at(row) < columns && Notes().IsReadOverDefaults() &&
                          !cells.At({row}).at(filled.at(row)).empty();
      ofTemplate.set(row, isKept);
    }
    read.missing &= ~ofTemplate;
    Notes().AddRows(table +
                        " shows cells that the file does not hold. They come from the template, "
                        "and would be saved",
                    ofTemplate);
    Notes().AddDoubtfulRows(
        read, shown,
        {.table = table,
         .firstColumn = "first value",
         .emptyField = "The values after it were not read",
         .missing = "Their cells are empty; an uncertainty in ppm or % would be saved as 0",
         .beyond = "Their uncertainty in ppm or % was not read, and would be saved as 0"});
  }

  cInstrRT730A& data_;
  /// The number of columns that the file fills in each row.
  std::array<std::array<std::size_t, kTableRows>, kResistorPages> filled_{};
};

std::unique_ptr<BodyReader> cInstrRT730A::NewBodyReader(LoadNotes& notes) {
  return std::make_unique<Reader>(*this, notes);
}

std::string cInstrRT730A::GetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                   std::int16_t row, const std::string& text,
                                                   std::string& unit) const {
  unit.clear();
  const std::string_view trimmed = Trim(text);
  if (trimmed.empty()) {
    return {};
  }
  const ResistorPage* known = PageOf(page);
  if (known == nullptr) {
    return std::string(trimmed.substr(0, trimmed.find(' ')));
  }
  if (!IsRelative(*known, column)) {
    return NumberOfCell(page, {{row}, column}, trimmed);
  }
  const UncertaintyText split = SplitUncertainty(trimmed, kPpmEnds);
  unit = split.unit.empty() || split.unit == kPercent ? split.unit : kPpm;
  return Normalised(split.number);
}

std::string cInstrRT730A::SetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                   std::int16_t row, const std::string& text,
                                                   const std::string& unit) const {
  const ResistorFormat* format = FindFormat(page, {{row}, column});
  if (format == nullptr) {
    return {};
  }
  const double number = NumericValue(text);
  if (format->unit == kRelativeUnit && unit != kPpm) {
    CheckPercent(number);
  }
  return CellText(*format, number, unit);
}

std::optional<CellAffixes> cInstrRT730A::AffixesOf(std::int16_t page, Cell cell,
                                                   std::string_view unit) const {
  const ResistorFormat* format = FindFormat(page, cell);
  return format == nullptr ? std::nullopt
                           : std::optional<CellAffixes>(tarvell::AffixesOf(*format, unit));
}

std::string cInstrRT730A::CellReadBack(std::int16_t page, Cell cell,
                                       const std::string& text) const {
  const ResistorPage* known = PageOf(page);
  if (known == nullptr || !IsRelative(*known, cell.column) || text.empty()) {
    return text;
  }
  std::string field;
  AppendUncertainty(field, page, text);
  return UncertaintyRead(page, cell, Trim(field));
}

std::int16_t cInstrRT730A::GetCalibrationUnit(std::int16_t page, std::int16_t column,
                                              std::vector<std::string>& units) const {
  const ResistorPage* known = PageOf(page);
  if (known != nullptr && IsRelative(*known, column)) {
    units = {"ppm", "%"};
  } else {
    units = {"*"};
  }
  return 0;
}

std::string cInstrRT730A::GetCalPageName(std::int16_t page) const {
  const ResistorPage* known = PageOf(page);
  return known != nullptr ? std::string(known->name) : std::string();
}

std::string cInstrRT730A::GetCalPageSerial(std::int16_t page) const {
  return pageSerial_.at(PageIndex(page, kPages));
}

void cInstrRT730A::SetCalPageSerial(std::int16_t page, const std::string& serial) {
  pageSerial_.at(PageIndex(page, kPages)) = serial;
}

std::int16_t cInstrRT730A::GetCalPageCount() const {
  return static_cast<std::int16_t>(kResistorPages);
}

void cInstrRT730A::GetCalData(std::int16_t page, CalDataGrid& grid) const {
  const Table<kColumns>& table = tables_.at(PageIndex(page, kPages));
  const ResistorPage* known = PageOf(page);
  grid.SetRowCount(1);
  for (std::int16_t column = 0; column < kShownColumns; ++column) {
    grid.SetCellText(0, column,
                     known != nullptr ? known->captions.at(static_cast<std::size_t>(column)) : "");
  }
  for (const Row& row : table.Rows()) {
    AddCells(grid, std::span(row).first(kShownColumns));
  }
}

void cInstrRT730A::SetCalData(std::int16_t page, const CalDataGrid& grid) {
  Table<kColumns>& table = tables_.at(PageIndex(page, kPages));
  if (grid.ColumnCount() > static_cast<std::int16_t>(kColumns)) {
    throw Error(ErrorKind::Index, "A table of the resistor set has at most 6 columns.");
  }
  table.Clear(kShownColumns);
  table.TakeGrid(grid, grid.ColumnCount());
}

void cInstrRT730A::WriteBody(FileText& text) const {
  WriteTableCaption(text);
  for (std::int16_t page = 0; page < GetCalPageCount(); ++page) {
    for (const std::string_view title : PageOf(page)->titles) {
      if (!title.empty()) {
        text.Line(title);
      }
    }
    WritePageRows(text, tables_.at(static_cast<std::size_t>(page)),
                  [page](const Row& row) { return DataLine(page, row); });
  }
}

}  // namespace tarvell
