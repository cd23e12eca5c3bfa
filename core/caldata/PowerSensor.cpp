// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/PowerSensor.h"

#include <algorithm>

#include "core/numbers/NumberPattern.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::int16_t kFrequencyColumn = 0;
constexpr std::int16_t kFactorColumn = 1;
constexpr std::size_t kColumns = 2;
constexpr std::size_t kFrequencyWidth = 8;
constexpr std::size_t kFactorWidth = 5;
constexpr NumberPattern kFactorPattern("##0.0");

constexpr std::string_view kPlainTail = "    0.0    :     0.0    :    0.0    :     0.0  ";
constexpr std::string_view kReferenceTail = " (Ref.)    :     0.0    :    0.0    :     0.0  ";

}  // namespace

void PowerSensor::GetCalData(std::int16_t /*page*/, CalDataGrid& grid) const {
  grid.SetCellText(0, kFrequencyColumn, "Frequency  [" + std::string(traits_.frequencyUnit) + "]");
  grid.SetCellText(0, kFactorColumn, "Calibration factor[%]");
  grid.SetRowCount(1);
  for (const Row& row : rows_) {
    if (row.frequency.empty()) {
      break;
    }
    grid.AddRow(row.frequency + "\t" + row.calFactor);
  }
}

void PowerSensor::SetCalData(std::int16_t page, const CalDataGrid& grid) {
  rows_.fill(Row());
  if (page != 0) {
    return;
  }
  TakeDataRows(grid, [&](std::size_t index, std::int16_t row) {
    rows_.at(index) = {grid.CellText(row, kFrequencyColumn), grid.CellText(row, kFactorColumn)};
  });
}

std::string PowerSensor::GetCalibrationDataFormat(std::int16_t /*page*/, std::int16_t column,
                                                  std::int16_t /*row*/, const std::string& text,
                                                  std::string& unit) const {
  if (!text.empty() || traits_.clearsUnit) {
    unit.clear();
  }
  return column == kFactorColumn && !text.empty() ? Normalised(text) : std::string();
}

std::string PowerSensor::SetCalibrationDataFormat(std::int16_t /*page*/, std::int16_t column,
                                                  std::int16_t /*row*/, const std::string& text,
                                                  const std::string& /*unit*/) const {
  return column == kFactorColumn ? FormatText(text, kFactorPattern) : std::string();
}

std::optional<CellAffixes> PowerSensor::AffixesOf(std::int16_t /*page*/, Cell cell,
                                                  std::string_view /*unit*/) const {
  return cell.column == kFactorColumn ? std::optional<CellAffixes>(CellAffixes()) : std::nullopt;
}

std::int16_t PowerSensor::GetCalibrationUnit(std::int16_t /*page*/, std::int16_t /*column*/,
                                             std::vector<std::string>& units) const {
  if (!traits_.clearsUnit) {
    units = {"*"};
  }
  return 0;
}

void PowerSensor::TakeDataLine(std::size_t index, std::string_view item) {
  const LineWords words = WordsOf(item);
  if (index >= rows_.size()) {
    throw FullTableError();
  }
  rows_.at(index) = {words[0], words[1]};
  read_.Take(index, HasEmptyField(item, kColumns), words[1].empty());
}

bool PowerSensor::EndRead(const std::string& lastItem, bool hasEnd) {
  const auto shown =
      static_cast<std::size_t>(std::find_if(rows_.begin(), rows_.end(),
                                            [](const Row& row) { return row.frequency.empty(); }) -
                               rows_.begin());
  const bool isComplete = CalDataFile::EndRead(lastItem, hasEnd);
  NoteDoubtfulRows(read_, shown,
                   {.table = "The table",
                    .firstColumn = "frequency",
                    .emptyField = kValuesMovedLeft,
                    .missing = "Their cells are empty, and would be saved so"});
  return isComplete;
}

void PowerSensor::WriteBody(FileText& text) const {
  text.Line("!");
  text.Line("!");
  text.Line("!        :              : Reflection Coefficient");
  text.Line("!FEQ(" + std::string(traits_.frequencyUnit) +
            "): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)");
  for (const Row& row : rows_) {
    if (row.frequency.empty()) {
      break;
    }
    WriteDataLine(text, DataLine(row));
  }
  text.Line("!End");
}

std::string PowerSensor::DataLine(const Row& row) const {
  std::string line = "*";
  AppendRight(line, row.frequency, kFrequencyWidth);
  line += ":    ";
  AppendRight(line, row.calFactor, kFactorWidth);
  line += "     :";
  line += NumericValue(row.frequency) == traits_.referenceFrequency ? kReferenceTail : kPlainTail;
  return line;
}

}  // namespace tarvell
