// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/CapacitorSet.h"

#include <algorithm>

#include "core/caldata/SetPages.h"
#include "core/caldata/Uncertainty.h"
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
constexpr std::string_view kPpmEnds = "mM";
constexpr std::size_t kDataWords = 16;
constexpr NumberPattern kPercentPattern("0.0000");

using DataWords = std::array<std::string, kDataWords>;

/// The words of a data line without its "*".
DataWords DataWordsOf(std::string_view line) {
  DataWords words;
  SplitWords(WithoutFirst(Replaced(line, ':', ' '), 1), words);
  return words;
}

/// The rule for a cell, nullptr if none exists.
const CapacitorFormat* FindFormat(std::span<const CapacitorFormat> formats, std::int16_t page,
                                  GridRow row) {
  for (const CapacitorFormat& format : formats) {
    if ((format.page == kAnyPage || format.page == page) && row.number >= format.firstRow &&
        row.number <= format.lastRow) {
      return &format;
    }
  }
  return nullptr;
}

/// The unit of an uncertainty as it ends the text of a cell, with a blank before it.
std::string_view UncertaintyUnit(std::string_view unit) {
  const std::string_view trimmed = Trim(unit);
  return EqualsIgnoringCase(trimmed, kPpm) ? " ppm" : trimmed == kPercent ? " %" : "";
}

}  // namespace

class CapacitorSet::Reader final : public SetReader {
 public:
  Reader(CapacitorSet& data, LoadNotes& notes)
      : SetReader(notes, PagesOf(data.traits_)), data_(data) {}

  void TakePageLine(const LineWords& words, ItemReader& reader) override {
    const auto& names = data_.traits_.pageNames;
    const auto* found = std::find_if(names.begin(), names.end(), [&](std::string_view name) {
      return EqualsIgnoringCase(name, words[0]);
    });
    if (found != names.end()) {
      const auto page = found - names.begin();
      data_.pageSerial_.at(static_cast<std::size_t>(page)) = words[1];
      ReadPage(static_cast<std::int16_t>(page), 0, reader);
    }
  }

  bool End(const FileEnd& end) override {
    if (data_.traits_.hasOption) {
      EndOption();
    }
    return SetReader::End(end);
  }

 private:
  static std::vector<Page> PagesOf(const CapacitorSetTraits& traits) {
    std::vector<Page> pages;
    for (const std::string_view name : traits.pageNames) {
      const bool isOption = traits.hasOption && pages.size() == std::size_t{kOptionPage};
      pages.push_back({"page " + std::string(name), "", isOption});
    }
    return pages;
  }

  void EndOption() {
    const bool found = IsFound(kOptionPage);
    std::string& serial = data_.pageSerial_[kOptionPage];
    if (found && (serial == kOptionOff || serial == kOptionOn)) {
      Notes().Add("The page " + data_.GetCalPageName(kOptionPage) + " has the serial number \"" +
                  serial + "\", which is not a valid serial number. It was left out.");
      serial.clear();
    }
    data_.optionInstalled_ = found;
    data_.optionSerial_ = found ? serial : std::string(kOptionOff);
  }

  [[nodiscard]] std::string RowText(const std::string& item) const override {
    return std::string(Trim(StripNull(item)));
  }

  void TakeRow(std::int16_t page, TableIndex index, std::string_view text) override {
    const DataWords words = DataWordsOf(text);
    const GridRow row = RowOf(index);
    data_.tables_.at(static_cast<std::size_t>(page)).At(index) = data_.CellsOf(page, row, words);
    const bool isBeyond = FindFormat(data_.traits_.capacitance, page, row) == nullptr ||
                          FindFormat(data_.traits_.uncertainty, page, row) == nullptr;
    RowsOf(page).Take(index, HasEmptyField(text, kColumns), words[kDissipationUncertainty].empty(),
                      isBeyond);
  }

  void NoteRows(std::int16_t page, const std::string& table) override {
    Notes().AddDoubtfulRows(
        RowsOf(page), data_.tables_.at(static_cast<std::size_t>(page)).Rows().size(),
        {.table = table,
         .firstColumn = "frequency",
         .emptyField = kValuesMovedLeft,
         .missing = "0 is shown in their place, and would be saved",
         .beyond = "Their capacitance and uncertainty were not read, and would be saved without "
                   "numbers"});
  }

  CapacitorSet& data_;
};

std::unique_ptr<BodyReader> CapacitorSet::NewBodyReader(LoadNotes& notes) {
  return std::make_unique<Reader>(*this, notes);
}

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
    case kUncertainty: {
      const auto split = SplitUncertainty(trimmed, kPpmEnds);
      unit = split.unit;
      return Normalised(split.number);
    }
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
  const GridRow gridRow = {row};
  switch (column) {
    case kCapacitance: {
      const CapacitorFormat* format = FindFormat(traits_.capacitance, page, gridRow);
      return (format != nullptr ? FormatText(text, format->pattern) : std::string()) +
             std::string(CapacitanceUnit(page));
    }
    case kUncertainty: {
      // Where a cell shows no number, any text is accepted.
      const bool isUsed = FindFormat(traits_.uncertainty, page, gridRow) != nullptr ||
                          UncertaintyUnit(unit) == " %";
      return UncertaintyText(page, gridRow, isUsed ? NumericValue(text) : 0, unit);
    }
    case kDissipation:
    case kDissipationUncertainty:
      return FormatText(text, FindFormat(traits_.dissipation, page, gridRow)->pattern);
    default:
      return {};
  }
}

std::optional<CellAffixes> CapacitorSet::AffixesOf(std::int16_t page, Cell cell,
                                                   std::string_view unit) const {
  switch (cell.column) {
    case kCapacitance:
      if (FindFormat(traits_.capacitance, page, cell.row) == nullptr) {
        return std::nullopt;
      }
      return CellAffixes{"", CapacitanceUnit(page)};
    case kUncertainty:
      if (FindFormat(traits_.uncertainty, page, cell.row) == nullptr) {
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
  // The other cells need some text, or the words after them would move into their places.
  Row cells = {"1", "1pF", "1 %", "1", "1"};
  cells.at(static_cast<std::size_t>(column)) = text;
  const DataWords words = DataWordsOf(DataLine(cells));
  return CellsOf(page, row, words).at(static_cast<std::size_t>(column));
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
  const Table<kColumns>& table = tables_.at(PageIndex(page, kPages));
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
    grid.SetCellText(1, column, table.At({0}).at(static_cast<std::size_t>(column)));
  }
  for (const Row& row : table.Rows({1})) {
    AddCells(grid, row);
  }
}

void CapacitorSet::SetCalData(std::int16_t page, const CalDataGrid& grid) {
  Table<kColumns>& table = tables_.at(PageIndex(page, kPages));
  table.Clear();
  table.TakeGrid(grid, kColumns);
}

CapacitorSet::Row CapacitorSet::CellsOf(std::int16_t page, GridRow gridRow,
                                        std::span<const std::string> words) const {
  Row row;
  row[kFrequency] = words[kFrequency];
  for (const std::int16_t column : {kCapacitance, kDissipation, kDissipationUncertainty}) {
    const auto index = static_cast<std::size_t>(column);
    row.at(index) =
        SetCalibrationDataFormat(page, column, gridRow.number, Edited(column, words[index]), "");
  }
  const Uncertainty uncertainty = UncertaintyOfField(words[kUncertainty], kPpmEnds);
  row[kUncertainty] = UncertaintyText(page, gridRow, uncertainty.number, uncertainty.unit);
  return row;
}

std::string CapacitorSet::UncertaintyText(std::int16_t page, GridRow row, double number,
                                          std::string_view unit) const {
  std::string text;
  if (const CapacitorFormat* format = FindFormat(traits_.uncertainty, page, row)) {
    text = (unit == kPpm ? format->ppmPattern : format->pattern).Format(number);
  }
  const std::string_view after = UncertaintyUnit(unit);
  if (after == " %") {
    CheckPercent(number);
  }
  return text + std::string(after);
}

std::string CapacitorSet::Edited(std::int16_t column, const std::string& text) const {
  std::string unit;
  return GetCalibrationDataFormat(0, column, 0, text, unit);
}

void CapacitorSet::WriteBody(FileText& text) const {
  WriteTableCaption(text);
  for (std::int16_t page = 0; page < GetCalPageCount(); ++page) {
    const auto index = static_cast<std::size_t>(page);
    const std::string name = GetCalPageName(page);
    CheckHeaderName("serial number of the member " + name, pageSerial_.at(index));
    text.Line("#" + name + "    :     " + pageSerial_.at(index));
    WritePageRows(text, tables_.at(index), [this](const Row& row) { return DataLine(row); });
    text.Line("!");
  }
}

std::string CapacitorSet::DataLine(const Row& row) const {
  std::string line = "*";
  AppendRight(line, row[kFrequency], kFrequencyWidth);
  line += " : ";
  AppendRight(line, row[kCapacitance], kCapacitanceWidth);
  line += " : ";
  AppendRight(line, FieldOfUncertainty(row[kUncertainty], kPpmEnds, kPercentPattern),
              kUncertaintyWidth);
  line += " : ";
  AppendRight(line, row[kDissipation], kDissipationWidth);
  line += " :   " + row[kDissipationUncertainty];
  return line;
}

}  // namespace tarvell
