// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/PowerSensor.h"

#include "core/caldata/TableReader.h"
#include "core/numbers/NumberPattern.h"
#include "core/numbers/Numbers.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::int16_t kFrequencyColumn = 0;
constexpr std::int16_t kFactorColumn = 1;
constexpr std::int16_t kColumns = 2;
constexpr std::size_t kFrequencyWidth = 8;
constexpr std::size_t kFactorWidth = 5;
constexpr NumberPattern kFactorPattern("##0.0");

constexpr std::string_view kPlainTail = "    0.0    :     0.0    :    0.0    :     0.0  ";
constexpr std::string_view kReferenceTail = " (Ref.)    :     0.0    :    0.0    :     0.0  ";

}  // namespace

std::unique_ptr<BodyReader> PowerSensor::NewBodyReader(LoadNotes& notes) {
  return std::make_unique<TableReader<kColumns>>(table_, notes, "frequency");
}

void PowerSensor::GetCalData(std::int16_t /*page*/, CalDataGrid& grid) const {
  grid.SetCellText(0, kFrequencyColumn, "Frequency  [" + std::string(traits_.frequencyUnit) + "]");
  grid.SetCellText(0, kFactorColumn, "Calibration factor[%]");
  grid.SetRowCount(1);
  for (const Row& row : table_.Rows()) {
    AddCells(grid, row);
  }
}

void PowerSensor::SetCalData(std::int16_t page, const CalDataGrid& grid) {
  table_.Clear();
  if (page == 0) {
    table_.TakeGrid(grid, kColumns);
  }
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

void PowerSensor::WriteBody(FileText& text) const {
  text.Line("!");
  text.Line("!");
  text.Line("!        :              : Reflection Coefficient");
  text.Line("!FEQ(" + std::string(traits_.frequencyUnit) +
            "): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)");
  WriteRows(text, table_, [this](const Row& row) { return DataLine(row); });
  text.Line("!End");
}

std::string PowerSensor::DataLine(const Row& row) const {
  std::string line = "*";
  AppendRight(line, row[kFrequencyColumn], kFrequencyWidth);
  line += ":    ";
  AppendRight(line, row[kFactorColumn], kFactorWidth);
  line += "     :";
  line += NumericValue(row[kFrequencyColumn]) == traits_.referenceFrequency ? kReferenceTail
                                                                            : kPlainTail;
  return line;
}

}  // namespace tarvell
