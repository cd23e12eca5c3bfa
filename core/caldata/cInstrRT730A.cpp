// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/cInstrRT730A.h"

#include <algorithm>

#include "core/caldata/ResistorFormats.h"
#include "core/caldata/SetPages.h"
#include "core/caldata/TableRows.h"
#include "core/numbers/Numbers.h"
#include "core/text/Text.h"
#include "core/text/Words.h"

namespace tarvell {

namespace {

constexpr std::int16_t kShownColumns = 5;
constexpr std::int16_t kHighFrequencyPage = 2;  // the first of them
constexpr NumberPattern kPpmInPercentPattern("0.00000");

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

const ResistorFormat* FindFormat(std::int16_t page, std::int16_t column, std::int16_t row) {
  const std::int16_t ruled = page >= kHighFrequencyPage && column == 4 ? std::int16_t{3} : column;
  const auto* found = std::find_if(kResistorFormat.begin(), kResistorFormat.end(),
                                   [&](const ResistorFormat& format) {
                                     return format.page == page && format.column == ruled &&
                                            row >= format.firstRow && row <= format.lastRow;
                                   });
  return found == kResistorFormat.end() ? nullptr : found;
}

CellAffixes AffixesOf(const ResistorFormat& format, std::string_view unit) {
  const bool isRelative = format.unit == kRelativeUnit;
  return {format.prefix, isRelative ? (unit == "ppm" ? " ppm" : " %") : format.unit};
}

/// The number of a relative uncertainty, and its unit, "" where the text names none.
std::string SplitRelative(std::string_view text, std::string& unit) {
  if (LastCharacters(text, 1) == "m") {
    unit = "ppm";
    return Normalised(WithoutLast(text, 3));
  }
  if (LastCharacters(text, 1) == "%") {
    unit = "%";
    return Normalised(WithoutLast(text, 1));
  }
  return Normalised(text);
}

/// The number of a cell, less the unit behind it and the "Ls/" or "Cp/" in front of it on page 1;
/// "" for a column without a rule.
std::string NumberOfCell(std::int16_t page, std::int16_t column, std::int16_t row,
                         std::string_view text) {
  switch (page) {
    case 0:
      if (column == 1 || column == 2) {
        return Normalised(WithoutLast(text, row >= 4 && row <= 6 ? 3 : 4));
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

}  // namespace

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
  return IsRelative(*known, column) ? SplitRelative(trimmed, unit)
                                    : NumberOfCell(page, column, row, trimmed);
}

std::string cInstrRT730A::SetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                   std::int16_t row, const std::string& text,
                                                   const std::string& unit) const {
  const ResistorFormat* format = FindFormat(page, column, row);
  if (format == nullptr) {
    return {};
  }
  if (format->unit == kRelativeUnit && unit != "ppm") {
    // A long text comes back from the file as ppm.
    static_cast<void>(PpmOfPercent(text));
  }
  const CellAffixes affixes = tarvell::AffixesOf(*format, unit);
  return std::string(affixes.before) + FormatText(text, format->pattern) +
         std::string(affixes.after);
}

std::optional<CellAffixes> cInstrRT730A::AffixesOf(std::int16_t page, Cell cell,
                                                   std::string_view unit) const {
  const ResistorFormat* format = FindFormat(page, cell.column, cell.row.number);
  return format == nullptr ? std::nullopt
                           : std::optional<CellAffixes>(tarvell::AffixesOf(*format, unit));
}

std::string cInstrRT730A::CellReadBack(std::int16_t page, Cell cell,
                                       const std::string& text) const {
  const auto [row, column] = cell;
  const ResistorPage* known = PageOf(page);
  if (known == nullptr || !IsRelative(*known, column) || text.empty()) {
    return text;
  }
  std::string field;
  AppendUncertainty(field, page, row.number, text);
  return UncertaintyRead(page, column, row.number, Trim(field));
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
  const Page& rows = table_.at(PageIndex(page, kPages));
  const ResistorPage* known = PageOf(page);
  grid.SetRowCount(1);
  for (std::int16_t column = 0; column < kShownColumns; ++column) {
    grid.SetCellText(0, column,
                     known != nullptr ? known->captions.at(static_cast<std::size_t>(column)) : "");
  }
  for (const Row& row : rows) {
    if (row.front().empty()) {
      break;
    }
    std::string text;
    for (std::size_t column = 0; column < kShownColumns; ++column) {
      text += (column == 0 ? "" : "\t") + row.at(column);
    }
    grid.AddRow(text);
  }
}

void cInstrRT730A::SetCalData(std::int16_t page, const CalDataGrid& grid) {
  Page& rows = table_.at(PageIndex(page, kPages));
  if (grid.ColumnCount() > static_cast<std::int16_t>(kColumns)) {
    throw Error(ErrorKind::Index, "A table of the resistor set has at most 6 columns.");
  }
  for (Row& row : rows) {
    std::fill_n(row.begin(), kShownColumns, "");
  }
  TakeDataRows(grid, [&](std::size_t index, std::int16_t row) {
    for (std::int16_t column = 0; column < grid.ColumnCount(); ++column) {
      rows.at(index).at(static_cast<std::size_t>(column)) = grid.CellText(row, column);
    }
  });
}

void cInstrRT730A::BeginRead() {
  sections_.fill(0);
  sectionEnded_.fill(false);
  sectionRows_.fill(DoubtfulRows());
  filled_ = {};
}

void cInstrRT730A::TakeCommentLine(const std::string& item, ItemReader& reader) {
  // A title is known by its first words, and a remark may have any number of them.
  std::array<std::string, kMostWords> words;
  SplitWords(WithoutFirst(item, 1), words);
  const std::string keyword = ToUpper(words[0]);
  if (keyword == "DC") {
    ReadCalPage(0, 1, reader);
  } else if (keyword == "SERIES") {
    ReadCalPage(1, 1, reader);
  } else if (keyword == "HIGH") {
    ReadCalPage(2, 2, reader);
  } else if (keyword == "100" && words[1] == "ohm") {
    ReadCalPage(3, 1, reader);
  } else if (keyword == "1") {
    ReadCalPage(4, 1, reader);
  } else if (keyword == "10" && words[1] != "ohm") {
    // The 10 ohm title belongs to the "High" one, and means nothing by itself.
    ReadCalPage(5, 1, reader);
  } else if (keyword == "100" && words[1] == "kohm") {
    ReadCalPage(6, 1, reader);
  }
}

void cInstrRT730A::ReadCalPage(std::int16_t page, int linesToSkip, ItemReader& reader) {
  const auto pageIndex = static_cast<std::size_t>(page);
  for (int i = 0; i < linesToSkip && !reader.AtEnd(); ++i) {
    const std::string item = reader.ReadItem();
    if (!item.empty() && item.front() == '*') {
      Note("The section \"" + GetCalPageName(page) +
           "\" lacks a title line. The line in its place was not read as one of its rows: " + item);
    }
  }
  if (++sections_.at(pageIndex) == 2) {
    Note("The section \"" + GetCalPageName(page) +
         "\" stands in the file more than once. The rows of the later one were read over those of "
         "the earlier one.");
  }
  std::size_t row = 0;
  sectionEnded_.at(pageIndex) = ReadToEnd(reader, [&](const std::string& item) {
    // A TAB would part the cell in two where the table is shown.
    const std::string line = Replaced(Replaced(Replaced(item, '\n', ' '), '\r', ' '), '\t', ' ');
    const std::string_view text = TrimLeft(StripNull(line));
    if (WithoutFirst(text, 1).empty()) {
      return;
    }
    if (text.front() != '*') {
      Note("In the section \"" + GetCalPageName(page) +
           "\" a line that is no data line was read as one of its rows (is its \"!END\" "
           "missing?): " +
           std::string(text));
    }
    if (row == kTableRows) {
      throw FullTableError();
    }
    ReadRow(page, row++, text);
  });
}

void cInstrRT730A::ReadRow(std::int16_t page, std::size_t index, std::string_view line) {
  const auto pageIndex = static_cast<std::size_t>(page);
  const std::size_t columns = ColumnsOf(*PageOf(page));
  std::size_t& filled = filled_.at(pageIndex).at(index);
  filled = std::max(filled, TakeFields(page, index, WithoutFirst(line, 1)));
  const std::int16_t relative = PageOf(page)->relativeColumn;
  const bool isBeyond = relative != kNoColumn && filled > static_cast<std::size_t>(relative) &&
                        FindFormat(page, relative, static_cast<std::int16_t>(index + 1)) == nullptr;
  sectionRows_.at(pageIndex).Take(index, HasEmptyField(line, columns), filled < columns, isBeyond);
}

std::size_t cInstrRT730A::TakeFields(std::int16_t page, std::size_t index, std::string_view line) {
  Row& row = table_.at(static_cast<std::size_t>(page)).at(index);
  const std::int16_t relative = PageOf(page)->relativeColumn;
  for (std::size_t column = 0;; ++column) {
    const std::size_t colon = std::min(line.find(':'), line.size());
    const std::string_view field = Trim(line.substr(0, colon));
    if (field.empty()) {
      return column;
    }
    if (column == kColumns) {
      throw Error(ErrorKind::Index,
                  "A line holds more than 6 columns. Correct the file, then try again.");
    }
    const auto gridColumn = static_cast<std::int16_t>(column);
    row.at(column) =
        gridColumn == relative
            ? UncertaintyRead(page, gridColumn, static_cast<std::int16_t>(index + 1), field)
            : std::string(field);
    line.remove_prefix(std::min(colon + 1, line.size()));
  }
}

std::string cInstrRT730A::UncertaintyRead(std::int16_t page, std::int16_t column,
                                          std::int16_t gridRow, std::string_view field) const {
  const std::string text(Trim(WithoutLast(field, 1)));
  std::string unit;
  const std::string number = GetCalibrationDataFormat(page, column, gridRow, text, unit);
  const bool isPpm = CharacterCount(text) >= kPpmCharacters;
  return SetCalibrationDataFormat(page, column, gridRow, isPpm ? PpmOfPercent(number) : number,
                                  isPpm ? "ppm" : "%");
}

bool cInstrRT730A::EndRead(const std::string& /*lastItem*/, bool /*hasEnd*/) {
  bool isComplete = true;
  for (std::size_t page = 0; page < kResistorPages; ++page) {
    const std::string name(kResistorPage.at(page).name);
    if (sections_.at(page) == 0) {
      Note("The file holds no section \"" + name + "\", or its title is damaged. " +
           (IsReadOverDefaults() ? "The default data are shown for it." : "It is empty."));
    } else if (!sectionEnded_.at(page)) {
      Note("The section \"" + name +
           "\" has no line \"!END\". The last line of the file was not read as one of its rows.");
    }
    if (sections_.at(page) > 0) {
      NoteRowsOf(page);
    }
    isComplete = isComplete && sectionEnded_.at(page);
  }
  return isComplete;
}

void cInstrRT730A::NoteRowsOf(std::size_t page) {
  const Page& rows = table_.at(page);
  const std::string table = "The section \"" + std::string(kResistorPage.at(page).name) + "\"";
  const auto shown = static_cast<std::size_t>(
      std::find_if(rows.begin(), rows.end(), [](const Row& row) { return row.front().empty(); }) -
      rows.begin());
  DoubtfulRows& read = sectionRows_.at(page);
  const std::size_t columns = ColumnsOf(kResistorPage.at(page));
  RowSet ofTemplate;
  for (std::size_t row = 0; row < std::min(shown, read.count); ++row) {
    const auto* const firstKept = rows.at(row).begin() + filled_.at(page).at(row);
    const bool isKept =
        filled_.at(page).at(row) < columns && IsReadOverDefaults() && !firstKept->empty();
    ofTemplate.set(row, isKept);
  }
  read.missing &= ~ofTemplate;
  NoteRows(table +
               " shows cells that the file does not hold. They come from the template, and would "
               "be saved",
           ofTemplate);
  NoteDoubtfulRows(
      read, shown,
      {.table = table,
       .firstColumn = "first value",
       .emptyField = "The values after it were not read",
       .missing = "Their cells are empty; an uncertainty in ppm or % would be saved as 0",
       .beyond = "Their uncertainty in ppm or % was not read, and would be saved as 0"});
}

void cInstrRT730A::WriteBody(FileText& text) const {
  WriteTableCaption(text);
  for (std::int16_t page = 0; page < GetCalPageCount(); ++page) {
    for (const std::string_view title : PageOf(page)->titles) {
      if (!title.empty()) {
        text.Line(title);
      }
    }
    std::int16_t gridRow = 1;
    for (const Row& row : table_.at(static_cast<std::size_t>(page))) {
      if (row.front().empty()) {
        break;
      }
      WriteDataLine(text, DataLine(page, gridRow++, row));
    }
    text.Line("!END");
  }
}

std::string cInstrRT730A::DataLine(std::int16_t page, std::int16_t gridRow, const Row& row) const {
  const ResistorPage& known = *PageOf(page);
  std::string line = "*";
  for (std::size_t column = 0; column < known.widths.size() && known.widths.at(column) > 0;
       ++column) {
    if (column > 0) {
      line += " : ";
    }
    if (static_cast<std::int16_t>(column) == known.relativeColumn) {
      AppendUncertainty(line, page, gridRow, row.at(column));
    } else {
      AppendRight(line, row.at(column), known.widths.at(column));
    }
  }
  return line;
}

void cInstrRT730A::AppendUncertainty(std::string& line, std::int16_t page, std::int16_t gridRow,
                                     const std::string& text) const {
  const ResistorPage& known = *PageOf(page);
  const std::size_t width = known.widths.at(static_cast<std::size_t>(known.relativeColumn));
  if (LastCharacters(text, 1) == "%") {
    AppendRight(line, WithoutLast(text, 2), width);
    line += page == 0 ? " % " : " %";
    return;
  }
  std::string unit;
  const double ppm =
      NumericValue(GetCalibrationDataFormat(page, known.relativeColumn, gridRow, text, unit));
  const std::string percent = kPpmInPercentPattern.Format(ppm / kPpmPerPercent);
  if (page == 0) {
    AppendRight(line, percent + " %", width);
  } else {
    AppendRight(line, percent, width);
    line += " %";
  }
}

}  // namespace tarvell
