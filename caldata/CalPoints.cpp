// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "caldata/CalPoints.h"

#include "app/Tarvell_MainModule.h"
#include "common/NumberPattern.h"
#include "common/Numbers.h"

namespace tarvell {

namespace {

constexpr NumberPattern kGHzPattern("0.0000");
constexpr NumberPattern kMHzPattern("####0.00");
constexpr NumberPattern kHighMHzPattern("#####0.0");
constexpr double kHighMHz = 10000;
constexpr double kStep = 1000;  // from KHz to MHz to GHz
constexpr std::string_view kDefaultFactor = "100.0";

/// The number of 15 digits that is meant: 1.005 GHz is 1005 MHz, although the product is a little
/// less.
double AsTyped(double value) {
  return NumericValue(ShortestText(value));
}

bool IsFull(const CalDataGrid& grid) {
  return grid.RowCount() > static_cast<std::int16_t>(kTableRows);
}

}  // namespace

double SensorFrequency(std::string_view typed, std::string_view unit, std::string_view tableUnit) {
  const double value = NumericValue(typed);
  if (tableUnit == "GHz") {
    return AsTyped(unit == "MHz" ? value / kStep : unit == "KHz" ? value / (kStep * kStep) : value);
  }
  return AsTyped(unit == "GHz" ? value * kStep : unit == "KHz" ? value / kStep : value);
}

std::string SensorRow(double frequency, std::string_view tableUnit) {
  const NumberPattern& pattern = tableUnit == "GHz"      ? kGHzPattern
                                 : frequency <= kHighMHz ? kMHzPattern
                                                         : kHighMHzPattern;
  return pattern.Format(frequency) + "\t" + std::string(kDefaultFactor);
}

PointPosition PlaceSensorPoint(const CalDataGrid& grid, double frequency) {
  if (frequency < 0) {
    return {PointPlace::BelowZero};
  }
  double previous = 0;
  for (std::int16_t row = 1; row < grid.RowCount(); ++row) {
    const double current = NumericValue(grid.CellText(row, 0));
    if (frequency == previous || frequency == current) {
      return {PointPlace::Taken, row};
    }
    if (frequency < previous || frequency < current) {
      const auto position = static_cast<std::int16_t>(frequency < previous ? row - 1 : row);
      return {IsFull(grid) ? PointPlace::TableFull : PointPlace::Row, position};
    }
    previous = current;
  }
  return {IsFull(grid) ? PointPlace::TableFull : PointPlace::Row, grid.RowCount()};
}

std::string SensorPointName(const CalDataGrid& grid, std::int16_t row, std::string_view tableUnit) {
  return Normalised(grid.CellText(row, 0)) + std::string(tableUnit);
}

}  // namespace tarvell
