// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/StepAttenuator.h"

#include <algorithm>
#include <cmath>

#include "core/numbers/NumberPattern.h"
#include "core/numbers/Numbers.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::int16_t kSettingColumn = 0;
constexpr std::int16_t kFrequencyColumn = 1;
constexpr std::int16_t kCalDataColumn = 2;
constexpr std::int16_t kColumns = 3;
constexpr std::size_t kSettingWidth = 3;
constexpr std::size_t kFrequencyWidth = 8;
constexpr std::size_t kCalDataWidth = 7;
constexpr NumberPattern kFrequencyPattern("0.00E-00");
constexpr NumberPattern kCalDataPattern("0.0000");

}  // namespace

void StepAttenuator::GetCalData(std::int16_t /*page*/, CalDataGrid& grid) const {
  grid.SetColumnCount(kColumns);
  for (std::int16_t column = 0; column < kColumns; ++column) {
    const float width =
        grid.Width() / kColumns - traits_.narrowing.at(static_cast<std::size_t>(column));
    grid.SetColumnWidth(column, static_cast<std::int32_t>(std::lround(width)));
  }
  grid.SetCellText(0, kSettingColumn, "Setting [dB]");
  grid.SetCellText(0, kFrequencyColumn, traits_.frequencyCaption);
  grid.SetCellText(0, kCalDataColumn, "Cal Data [dB]");
  grid.SetRowCount(1);
  for (const Row& row : rows_) {
    if (row.setting.empty()) {
      break;
    }
    grid.AddRow(row.setting + "\t" + row.frequency + "\t" + row.calData);
  }
}

void StepAttenuator::SetCalData(std::int16_t page, const CalDataGrid& grid) {
  rows_.fill(Row());
  if (page != 0) {
    return;
  }
  TakeDataRows(grid, [&](std::size_t index, std::int16_t row) {
    rows_.at(index) = {grid.CellText(row, kSettingColumn), grid.CellText(row, kFrequencyColumn),
                       grid.CellText(row, kCalDataColumn)};
  });
}

std::string StepAttenuator::GetCalibrationDataFormat(std::int16_t /*page*/, std::int16_t column,
                                                     std::int16_t /*row*/, const std::string& text,
                                                     std::string& unit) const {
  unit.clear();
  return column == kFrequencyColumn && !text.empty() ? Normalised(text) : std::string();
}

std::string StepAttenuator::SetCalibrationDataFormat(std::int16_t /*page*/, std::int16_t column,
                                                     std::int16_t /*row*/, const std::string& text,
                                                     const std::string& /*unit*/) const {
  switch (column) {
    case kFrequencyColumn:
      return FormatText(text, kFrequencyPattern);
    case kCalDataColumn:
      return FormatText(text, kCalDataPattern);
    default:
      return {};
  }
}

std::optional<CellAffixes> StepAttenuator::AffixesOf(std::int16_t /*page*/, Cell cell,
                                                     std::string_view /*unit*/) const {
  return cell.column == kFrequencyColumn || cell.column == kCalDataColumn
             ? std::optional<CellAffixes>(CellAffixes())
             : std::nullopt;
}

std::int16_t StepAttenuator::GetCalibrationUnit(std::int16_t /*page*/, std::int16_t /*column*/,
                                                std::vector<std::string>& units) const {
  units = {"*"};
  return 0;
}

std::string_view StepAttenuator::HeaderText(std::string_view item) const {
  return StripNull(item);
}

void StepAttenuator::TakeDataLine(std::size_t index, std::string_view item) {
  const LineWords words = WordsOf(item);
  if (index >= rows_.size()) {
    throw FullTableError();
  }
  rows_.at(index) = {words[0], words[1], words[2]};
  read_.Take(index, HasEmptyField(item, kColumns), words[2].empty());
}

bool StepAttenuator::EndRead(const std::string& lastItem, bool hasEnd) {
  const auto shown = static_cast<std::size_t>(
      std::find_if(rows_.begin(), rows_.end(), [](const Row& row) { return row.setting.empty(); }) -
      rows_.begin());
  const bool isComplete = CalDataFile::EndRead(lastItem, hasEnd);
  NoteDoubtfulRows(read_, shown,
                   {.table = "The table",
                    .firstColumn = "setting",
                    .emptyField = kValuesMovedLeft,
                    .missing = "Their cells are empty, and would be saved so"});
  return isComplete;
}

void StepAttenuator::WriteBody(FileText& text) const {
  text.Line("!");
  text.Line("! Setting  /  Freq  /  CalData ");
  if (!traits_.noteLine.empty()) {
    text.Line(traits_.noteLine);
  }
  for (const Row& row : rows_) {
    if (row.setting.empty()) {
      break;
    }
    std::string line = "*";
    AppendRight(line, row.setting, kSettingWidth);
    line += "  :  ";
    AppendRight(line, row.frequency, kFrequencyWidth);
    line += "   :  ";
    AppendRight(line, row.calData, kCalDataWidth);
    WriteDataLine(text, line);
  }
  text.Line("!End");
}

}  // namespace tarvell
