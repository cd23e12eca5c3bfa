// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/StepAttenuator.h"

#include <cmath>

#include "core/caldata/TableReader.h"
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

std::unique_ptr<BodyReader> StepAttenuator::NewBodyReader(LoadNotes& notes) {
  return std::make_unique<TableReader<kColumns>>(table_, notes, "setting");
}

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
  for (const Row& row : table_.Rows()) {
    AddCells(grid, row);
  }
}

void StepAttenuator::SetCalData(std::int16_t page, const CalDataGrid& grid) {
  table_.Clear();
  if (page == 0) {
    table_.TakeGrid(grid, kColumns);
  }
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

void StepAttenuator::WriteBody(FileText& text) const {
  text.Line("!");
  text.Line("! Setting  /  Freq  /  CalData ");
  if (!traits_.noteLine.empty()) {
    text.Line(traits_.noteLine);
  }
  WriteRows(text, table_, [this](const Row& row) { return DataLine(row); });
  text.Line("!End");
}

std::string StepAttenuator::DataLine(const Row& row) const {
  std::string line = "*";
  AppendRight(line, row[kSettingColumn], kSettingWidth);
  line += "  :  ";
  AppendRight(line, row[kFrequencyColumn], kFrequencyWidth);
  line += "   :  ";
  AppendRight(line, row[kCalDataColumn], kCalDataWidth);
  return line;
}

}  // namespace tarvell
