// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/CapacitorSet.h"

#include <algorithm>

#include "core/caldata/SetPages.h"
#include "core/caldata/TableRows.h"
#include "core/numbers/Numbers.h"
#include "core/text/Text.h"
#include "core/text/Words.h"

namespace tarvell {

namespace {

constexpr std::int16_t kFrequency = 0;
constexpr std::int16_t kCapacitance = 1;
constexpr std::int16_t kUncertainty = 2;
constexpr std::int16_t kDissipation = 3;
constexpr std::int16_t kDissipationUncertainty = 4;

constexpr std::size_t kFrequencyWidth = 13;
constexpr std::size_t kCapacitanceWidth = 16;
constexpr std::size_t kUncertaintyWidth = 9;
constexpr std::size_t kDissipationWidth = 18;
constexpr std::size_t kUnitLength = 2;  // "pF"
constexpr std::size_t kPpmLength = 3;
constexpr std::size_t kDataWords = 16;
constexpr NumberPattern kPercentPattern("0.0000");

using DataWords = std::array<std::string, kDataWords>;

/// The words of a data line, its "*" left out.
DataWords DataWordsOf(std::string_view line) {
  DataWords words;
  SplitWords(WithoutFirst(Replaced(line, ':', ' '), 1), words);
  return words;
}

/// The rule for a cell, nullptr when there is none.
const CapacitorFormat* FindFormat(std::span<const CapacitorFormat> formats, std::int16_t page,
                                  std::int16_t row) {
  for (const CapacitorFormat& format : formats) {
    if ((format.page == kAnyPage || format.page == page) && row >= format.firstRow &&
        row <= format.lastRow) {
      return &format;
    }
  }
  return nullptr;
}

/// The unit of an uncertainty as its cell has it.
std::string_view UncertaintyUnit(std::string_view unit) {
  const std::string_view trimmed = Trim(unit);
  return EqualsIgnoringCase(trimmed, "ppm") ? " ppm" : trimmed == "%" ? " %" : "";
}

std::string FormatUncertainty(std::span<const CapacitorFormat> formats, std::int16_t page,
                              std::int16_t row, const std::string& text, const std::string& unit) {
  const CapacitorFormat* format = FindFormat(formats, page, row);
  std::string result;
  if (format != nullptr) {
    result = FormatText(text, unit == "ppm" ? format->ppmPattern : format->pattern);
  }
  const std::string_view after = UncertaintyUnit(unit);
  if (after == " %") {
    // A long text comes back from the file as ppm.
    static_cast<void>(PpmOfPercent(text));
  }
  return result + std::string(after);
}

}  // namespace

std::string CapacitorSet::GetCalibrationDataFormat(std::int16_t /*page*/, std::int16_t column,
                                                   std::int16_t /*row*/, const std::string& text,
                                                   std::string& unit) const {
  unit.clear();
  const std::string_view trimmed = Trim(text);
  if (trimmed.empty()) {
    return {};
  }
  switch (column) {
    case kCapacitance: {
      const std::string_view number = WithoutLast(trimmed, kUnitLength);
      if (!traits_.normalisesCapacitance) {
        return std::string(number);
      }
      unit = LastCharacters(trimmed, kUnitLength);
      return Normalised(number);
    }
    case kUncertainty:
      if (EqualsIgnoringCase(LastCharacters(trimmed, 1), "m")) {
        unit = LastCharacters(trimmed, kPpmLength);
        return Normalised(WithoutLast(trimmed, kPpmLength));
      }
      if (LastCharacters(trimmed, 1) == "%") {
        unit = "%";
        return Normalised(WithoutLast(trimmed, 1));
      }
      return Normalised(trimmed);
    case kDissipation:
    case kDissipationUncertainty:
      return Normalised(trimmed);
    default:
      return {};
  }
}

std::string CapacitorSet::SetCalibrationDataFormat(std::int16_t page, std::int16_t column,
                                                   std::int16_t row, const std::string& text,
                                                   const std::string& unit) const {
  switch (column) {
    case kCapacitance: {
      const CapacitorFormat* format = FindFormat(traits_.capacitance, page, row);
      return (format != nullptr ? FormatText(text, format->pattern) : std::string()) +
             std::string(CapacitanceUnit(page));
    }
    case kUncertainty:
      return FormatUncertainty(traits_.uncertainty, page, row, text, unit);
    case kDissipation:
    case kDissipationUncertainty:
      return FormatText(text, FindFormat(traits_.dissipation, page, row)->pattern);
    default:
      return {};
  }
}

std::optional<CellAffixes> CapacitorSet::AffixesOf(std::int16_t page, Cell cell,
                                                   std::string_view unit) const {
  switch (cell.column) {
    case kCapacitance:
      if (FindFormat(traits_.capacitance, page, cell.row.number) == nullptr) {
        return std::nullopt;
      }
      return CellAffixes{"", CapacitanceUnit(page)};
    case kUncertainty:
      if (FindFormat(traits_.uncertainty, page, cell.row.number) == nullptr) {
        return std::nullopt;
      }
      return CellAffixes{"", UncertaintyUnit(unit)};
    case kDissipation:
    case kDissipationUncertainty:
      return CellAffixes();
    default:
      return std::nullopt;
  }
}

std::string CapacitorSet::CellReadBack(std::int16_t page, Cell cell,
                                       const std::string& text) const {
  const auto [row, column] = cell;
  if (column < kCapacitance || column >= kColumns || text.empty()) {
    return text;
  }
  // The other cells only have to be there, so that no word moves into the place of another.
  Row cells = {"1", "1pF", "1 %", "1", "1"};
  cells.at(static_cast<std::size_t>(column)) = text;
  const DataWords words = DataWordsOf(DataLine(page, row.number, cells));
  return ReadRow(page, row.number, words).at(static_cast<std::size_t>(column));
}

std::int16_t CapacitorSet::GetCalibrationUnit(std::int16_t /*page*/, std::int16_t column,
                                              std::vector<std::string>& units) const {
  if (column == kUncertainty) {
    units = {"ppm", "%"};
  } else {
    units = {"*"};
  }
  return 0;
}

std::string CapacitorSet::GetCalPageName(std::int16_t page) const {
  return page >= 0 && page < static_cast<std::int16_t>(traits_.pageNames.size())
             ? std::string(traits_.pageNames.at(static_cast<std::size_t>(page)))
             : std::string();
}

std::string CapacitorSet::GetCalPageSerial(std::int16_t page) const {
  const std::size_t index = PageIndex(page, kPages);
  return traits_.hasOption && page == kOptionPage ? optionSerial_ : pageSerial_.at(index);
}

void CapacitorSet::SetCalPageSerial(std::int16_t page, const std::string& serial) {
  std::string& pageSerial = pageSerial_.at(PageIndex(page, kPages));
  if (!traits_.hasOption || page != kOptionPage) {
    pageSerial = serial;
    return;
  }
  optionInstalled_ = serial != kOptionOff;
  if (serial == kOptionOff) {
    optionSerial_ = serial;
  } else if (serial == kOptionOn) {
    optionSerial_ = pageSerial;
  } else {
    optionSerial_ = serial;
    pageSerial = serial;
  }
}

std::int16_t CapacitorSet::GetCalPageCount() const {
  return traits_.hasOption && !optionInstalled_ ? kOptionPage : kOptionPage + 1;
}

std::string_view CapacitorSet::CapacitanceUnit(std::int16_t page) const {
  return page >= 0 && page < static_cast<std::int16_t>(traits_.units.size())
             ? traits_.units.at(static_cast<std::size_t>(page))
             : traits_.otherUnit;
}

void CapacitorSet::GetCalData(std::int16_t page, CalDataGrid& grid) const {
  if (traits_.hasOption && page == kOptionPage && optionSerial_ == kOptionOff) {
    return;
  }
  const Page& rows = calTable_.at(PageIndex(page, kPages));
  grid.SetRowCount(2);
  grid.SetCellText(0, kFrequency, "Frequency[Hz]");
  const std::string_view unit = CapacitanceUnit(page);
  if (!unit.empty()) {
    grid.SetCellText(0, kCapacitance, "Capacitance[" + std::string(unit) + "]");
  }
  grid.SetCellText(0, kUncertainty, "Unc.");
  grid.SetCellText(0, kDissipation, "Disspation Factor");
  grid.SetCellText(0, kDissipationUncertainty, "Unc.");
  for (std::int16_t column = 0; column < kColumns; ++column) {
    grid.SetCellText(1, column, rows.front().at(static_cast<std::size_t>(column)));
  }
  for (const auto* row = rows.begin() + 1; row != rows.end() && !row->front().empty(); ++row) {
    std::string text;
    for (const std::string& cell : *row) {
      text += (text.empty() ? "" : "\t") + cell;
    }
    grid.AddRow(text);
  }
}

void CapacitorSet::SetCalData(std::int16_t page, const CalDataGrid& grid) {
  Page& rows = calTable_.at(PageIndex(page, kPages));
  rows.fill(Row());
  TakeDataRows(grid, [&](std::size_t index, std::int16_t row) {
    for (std::int16_t column = 0; column < kColumns; ++column) {
      rows.at(index).at(static_cast<std::size_t>(column)) = grid.CellText(row, column);
    }
  });
}

void CapacitorSet::BeginRead() {
  pageLines_.fill(0);
  pageEnded_.fill(false);
  pageRows_.fill(DoubtfulRows());
}

void CapacitorSet::TakePageLine(const LineWords& words, ItemReader& reader) {
  const auto* found =
      std::find_if(traits_.pageNames.begin(), traits_.pageNames.end(),
                   [&](std::string_view name) { return EqualsIgnoringCase(name, words[0]); });
  if (found == traits_.pageNames.end()) {
    return;
  }
  const auto page = static_cast<std::int16_t>(found - traits_.pageNames.begin());
  pageSerial_.at(static_cast<std::size_t>(page)) = words[1];
  if (++pageLines_.at(static_cast<std::size_t>(page)) == 2) {
    Note("The page " + std::string(*found) +
         " stands in the file more than once. The rows of the later one were read over those of "
         "the earlier one.");
  }
  ReadCalPage(page, reader);
}

void CapacitorSet::ReadCalPage(std::int16_t page, ItemReader& reader) {
  std::size_t row = 0;
  const bool ended = ReadToEnd(reader, [&](const std::string& item) {
    const std::string_view text = Trim(StripNull(item));
    if (text.empty()) {
      return;
    }
    if (row == kTableRows) {
      throw FullTableError();
    }
    if (text.front() != '*') {
      Note("In the page " + GetCalPageName(page) +
           " a line that is no data line was read as one of its rows (is its \"!END\" missing?): " +
           std::string(text));
    }
    TakeRow(page, row++, text);
  });
  pageEnded_.at(static_cast<std::size_t>(page)) = ended;
}

void CapacitorSet::TakeRow(std::int16_t page, std::size_t row, std::string_view line) {
  const DataWords words = DataWordsOf(line);
  const auto index = static_cast<std::size_t>(page);
  const auto gridRow = static_cast<std::int16_t>(row + 1);
  calTable_.at(index).at(row) = ReadRow(page, gridRow, words);
  const bool isBeyond = FindFormat(traits_.capacitance, page, gridRow) == nullptr ||
                        FindFormat(traits_.uncertainty, page, gridRow) == nullptr;
  pageRows_.at(index).Take(row, HasEmptyField(line, kColumns),
                           words[kDissipationUncertainty].empty(), isBeyond);
}

CapacitorSet::Row CapacitorSet::ReadRow(std::int16_t page, std::int16_t gridRow,
                                        std::span<const std::string> words) const {
  Row row;
  row[kFrequency] = words[kFrequency];
  for (const std::int16_t column : {kCapacitance, kDissipation, kDissipationUncertainty}) {
    const auto index = static_cast<std::size_t>(column);
    row.at(index) = SetCalibrationDataFormat(page, column, gridRow,
                                             Edited(page, column, gridRow, words[index]), "");
  }
  const std::string& word = words[kUncertainty];
  const std::string number = Edited(page, kUncertainty, gridRow, word);
  const bool isPpm = CharacterCount(word) >= kPpmCharacters;
  row[kUncertainty] = SetCalibrationDataFormat(
      page, kUncertainty, gridRow, isPpm ? PpmOfPercent(number) : number, isPpm ? "ppm" : "%");
  return row;
}

std::string CapacitorSet::Edited(std::int16_t page, std::int16_t column, std::int16_t row,
                                 const std::string& text) const {
  std::string unit;
  return GetCalibrationDataFormat(page, column, row, text, unit);
}

bool CapacitorSet::EndRead(const std::string& /*lastItem*/, bool /*hasEnd*/) {
  const bool found = pageLines_[kOptionPage] > 0;
  if (traits_.hasOption) {
    std::string& serial = pageSerial_[kOptionPage];
    if (found && (serial == kOptionOff || serial == kOptionOn)) {
      Note("The page " + GetCalPageName(kOptionPage) + " has the serial number \"" + serial +
           "\", which cannot be one. It was left out.");
      serial.clear();
    }
    optionInstalled_ = found;
    optionSerial_ = found ? pageSerial_[kOptionPage] : std::string(kOptionOff);
  }
  bool isComplete = true;
  for (std::size_t page = 0; page < traits_.pageNames.size(); ++page) {
    const std::string name(traits_.pageNames.at(page));
    const bool isOption = traits_.hasOption && page == kOptionPage;
    if (pageLines_.at(page) == 0 && !isOption) {
      Note("The file holds no page " + name + ". " +
           (IsReadOverDefaults() ? "The default data are shown for it." : "It is empty."));
    } else if (pageLines_.at(page) > 0 && !pageEnded_.at(page)) {
      Note("The page " + name +
           " has no line \"!END\". The last line of the file was not read as one of its rows.");
    }
    if (pageLines_.at(page) > 0) {
      NoteRowsOf(page);
    }
    isComplete = isComplete && (pageEnded_.at(page) || (isOption && !found));
  }
  return isComplete;
}

void CapacitorSet::NoteRowsOf(std::size_t page) {
  const Page& rows = calTable_.at(page);
  const auto shown = static_cast<std::size_t>(
      std::find_if(rows.begin(), rows.end(), [](const Row& row) { return row.front().empty(); }) -
      rows.begin());
  NoteDoubtfulRows(
      pageRows_.at(page), shown,
      {.table = "The page " + std::string(traits_.pageNames.at(page)),
       .firstColumn = "frequency",
       .emptyField = kValuesMovedLeft,
       .missing = "0 is shown in their place, and would be saved",
       .beyond = "Their capacitance and uncertainty were not read, and would be saved without "
                 "numbers"});
}

void CapacitorSet::WriteBody(FileText& text) const {
  WriteTableCaption(text);
  for (std::int16_t page = 0; page < GetCalPageCount(); ++page) {
    WriteCalPage(page, text);
  }
}

void CapacitorSet::WriteCalPage(std::int16_t page, FileText& text) const {
  const auto index = static_cast<std::size_t>(page);
  CheckHeaderName("serial number of the member " + GetCalPageName(page), pageSerial_.at(index));
  text.Line("#" + GetCalPageName(page) + "    :     " + pageSerial_.at(index));
  std::int16_t gridRow = 1;
  for (const Row& row : calTable_.at(index)) {
    if (row.front().empty()) {
      break;
    }
    WriteDataLine(text, DataLine(page, gridRow++, row));
  }
  text.Line("!END");
  text.Line("!");
}

std::string CapacitorSet::DataLine(std::int16_t page, std::int16_t gridRow, const Row& row) const {
  const std::string& uncertainty = row[kUncertainty];
  std::string line = "*";
  AppendRight(line, row[kFrequency], kFrequencyWidth);
  line += " : ";
  AppendRight(line, row[kCapacitance], kCapacitanceWidth);
  line += " : ";
  if (LastCharacters(uncertainty, 1) == "%") {
    AppendRight(line, WithoutLast(uncertainty, 2), kUncertaintyWidth);
  } else {
    const double ppm = NumericValue(Edited(page, kUncertainty, gridRow, uncertainty));
    AppendRight(line, kPercentPattern.Format(ppm / kPpmPerPercent), kUncertaintyWidth);
  }
  line += " : ";
  AppendRight(line, row[kDissipation], kDissipationWidth);
  line += " :   " + row[kDissipationUncertainty];
  return line;
}

}  // namespace tarvell
