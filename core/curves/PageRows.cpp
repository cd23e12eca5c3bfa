// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/PageRows.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <deque>
#include <map>
#include <string_view>
#include <utility>

#include "core/curves/CellNumber.h"
#include "core/numbers/Numbers.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::int16_t kFirstColumn = 0;  // the frequency, the setting or the member
constexpr std::int16_t kSensorFactor = 1;
constexpr std::int16_t kAttenuatorFrequency = 1;
constexpr std::int16_t kAttenuation = 2;
constexpr std::int16_t kNominalPage = 0;  // of the resistor set
constexpr std::int16_t kNominal = 1;
constexpr std::int16_t kCalibrated = 2;
constexpr std::string_view kFrequency = "Frequency";
constexpr std::string_view kUncertainty = "Unc.";

bool HasNominal(const PageTable& table) {
  return table.model.family == ModelFamily::ResistorSet && table.page == kNominalPage;
}

bool IsAttenuator(const PageTable& table) {
  return table.model.family == ModelFamily::StepAttenuator;
}

/// A frequency as people say it. A table in Hz has too many zeros for that.
std::string FrequencyText(double number, std::string_view unit) {
  constexpr double kStep = 1000;
  if (unit == "Hz") {
    constexpr std::array<std::string_view, 4> kUnits = {"Hz", "kHz", "MHz", "GHz"};
    std::size_t order = 0;
    for (; order + 1 < kUnits.size() && std::abs(number) >= kStep; ++order) {
      number /= kStep;
    }
    unit = kUnits.at(order);
  }
  return ShortestText(number) + " " + std::string(unit);
}

}  // namespace

Axis AxisOf(const PageTable& table) {
  const std::string frequency(kFrequency);
  if (table.model.family == ModelFamily::PowerSensor) {
    return {frequency, std::string(table.model.frequencyUnit), kFirstColumn};
  }
  if (IsAttenuator(table)) {
    return {frequency, "Hz", kAttenuatorFrequency};
  }
  if (HasNominal(table)) {
    return {"Nominal Value", "ohm", kNominal};
  }
  const std::string caption = table.grid.TextOf({kCaptionRow, kFirstColumn});
  const CaptionParts parts = PartsOfCaption(caption);
  return {std::string(parts.name),
          parts.name == kFrequency ? std::string(parts.unit) : std::string(), kFirstColumn};
}

Place PlaceOf(const CalDataGrid& grid, GridRow row, const Axis& axis) {
  const auto member = [&] { return std::string(Trim(grid.TextOf({row, kFirstColumn}))); };
  if (axis.unit.empty()) {
    return {static_cast<double>(row.number), member()};
  }
  const std::string text = grid.TextOf({row, axis.column});
  const std::optional<CellNumber> number = NumberOfCell(text);
  if (!number) {
    return {};
  }
  const bool isFrequency = axis.name == kFrequency;
  const std::string_view unit = isFrequency ? std::string_view(axis.unit) : number->unit;
  const double x = number->value * FactorOfUnit(unit);
  if (std::abs(x) > kLargestNumber) {
    return {};
  }
  return {RoundedTo15Digits(x), isFrequency ? FrequencyText(number->value, unit) : member()};
}

std::string PointName(const PageTable& table, GridRow row) {
  const std::string place = PlaceOf(table.grid, row, AxisOf(table)).at;
  if (!IsAttenuator(table) || place.empty()) {
    return place;
  }
  const std::string text = table.grid.TextOf({row, kFirstColumn});
  const std::optional<CellNumber> setting = NumberOfCell(text);
  return setting ? ShortestText(setting->value) + " dB, " + place : std::string();
}

std::vector<std::optional<GridRow>> EarlierRows(const PageTable& now, const PageTable& earlier) {
  std::map<std::string, std::deque<GridRow>> rowsOf;
  for (GridRow row = kFirstDataRow; row < EndOf(earlier.grid); ++row) {
    rowsOf[PointName(earlier, row)].push_back(row);
  }
  rowsOf.erase("");
  std::vector<std::optional<GridRow>> partners;
  for (GridRow row = kFirstDataRow; row < EndOf(now.grid); ++row) {
    const auto found = rowsOf.find(PointName(now, row));
    if (found == rowsOf.end() || found->second.empty()) {
      partners.emplace_back();
    } else {
      partners.emplace_back(found->second.front());
      found->second.pop_front();
    }
  }
  return partners;
}

std::vector<ValueColumn> ValueColumnsOf(const PageTable& table) {
  switch (table.model.family) {
    case ModelFamily::PowerSensor:
      return {{.column = kSensorFactor, .name = "Calibration factor"}};
    case ModelFamily::StepAttenuator:
      return {{.column = kAttenuation, .name = "Attenuation"}};
    case ModelFamily::TestKit:
      return {};
    default:
      break;
  }
  std::vector<ValueColumn> columns;
  const auto first = static_cast<std::int16_t>(AxisOf(table).column + 1);
  for (std::int16_t column = first; column < table.grid.ColumnCount(); ++column) {
    const std::string caption = table.grid.TextOf({kCaptionRow, column});
    const std::string name(PartsOfCaption(caption).name);
    if (name == kUncertainty && !columns.empty()) {
      ValueColumn& measured = columns.back();
      measured.uncertainty = column;
      columns.push_back(
          {.column = column, .name = name + " of " + measured.name, .isUncertainty = true});
    } else if (!name.empty()) {
      columns.push_back({.column = column, .name = name});
    }
  }
  return columns;
}

bool IsDeviation(const PageTable& table, std::int16_t column) {
  return IsAttenuator(table) || (HasNominal(table) && column == kCalibrated);
}

std::int16_t NominalColumn(const PageTable& table) {
  return IsAttenuator(table) ? kFirstColumn : kNominal;
}

}  // namespace tarvell
