// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/CalPoints.h"

#include <cmath>

#include "core/caldata/CalDataFile.h"
#include "core/caldata/TableRows.h"
#include "core/numbers/NumberPattern.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr NumberPattern kGHzPattern("0.0000");
constexpr NumberPattern kMHzPattern("####0.00");
constexpr NumberPattern kHighMHzPattern("#####0.0");
constexpr double kHighMHz = 10000;
constexpr double kStep = 1000;  // from KHz to MHz to GHz
constexpr std::string_view kDefaultFactor = "100.0";

constexpr NumberPattern kSettingPattern("#0");
constexpr NumberPattern kHzPattern("0.00##E-00");
constexpr NumberPattern kCalDataPattern("#0.0000");
constexpr double kMHz = 1E6;  // in Hz
constexpr double kGHz = 1E9;

/// The frequency of a new point as its row, and then the file, has it.
std::string FrequencyText(double frequency, std::string_view tableUnit) {
  const NumberPattern& pattern = tableUnit == "GHz"      ? kGHzPattern
                                 : frequency <= kHighMHz ? kMHzPattern
                                                         : kHighMHzPattern;
  return pattern.Format(frequency);
}

/// The value of a cell by which rows are compared. A number too large to be calculated with is the
/// largest.
double ValueOf(const CalDataGrid& grid, std::int16_t row, std::int16_t column) {
  return NumericValueOrInfinity(grid.CellText(row, column));
}

/// The number of a cell as a question names it: in its shortest text, or as it stands where it is
/// too large to be calculated with.
std::string NumberShown(const CalDataGrid& grid, std::int16_t row, std::int16_t column) {
  const std::string text = grid.CellText(row, column);
  return std::isinf(NumericValueOrInfinity(text)) ? std::string(Trim(text)) : Normalised(text);
}

/// The number of 15 digits that is meant: 1.005 GHz is 1005 MHz, although the product is a little
/// less.
double AsTyped(double value) {
  return NumericValue(ShortestText(value));
}

/// A new point goes before this row, or after the last one.
PointPosition Before(std::int16_t row) {
  return {PointPlace::Row, row};
}

void CheckNumber(std::string_view text, const std::string& field) {
  if (!BeginsWithNumber(text)) {
    throw Error(ErrorKind::Type, field + ": \"" + std::string(text) +
                                     "\" is not a number. Choose one from the list or type one.");
  }
}

}  // namespace

void CheckPlaceForPoint(const CalDataGrid& grid) {
  if (grid.RowCount() > static_cast<std::int16_t>(kTableRows)) {
    throw FullTableError();
  }
}

double SensorFrequency(std::string_view typed, std::string_view unit, std::string_view tableUnit) {
  const double value = NumericValue(typed);
  if (tableUnit == "GHz") {
    return AsTyped(unit == "MHz" ? value / kStep : unit == "KHz" ? value / (kStep * kStep) : value);
  }
  return AsTyped(unit == "GHz" ? value * kStep : unit == "KHz" ? value / kStep : value);
}

std::string SensorRow(double frequency, std::string_view tableUnit) {
  return FrequencyText(frequency, tableUnit) + "\t" + std::string(kDefaultFactor);
}

PointPosition PlaceSensorPoint(const CalDataGrid& grid, double frequency,
                               std::string_view tableUnit) {
  if (frequency < 0) {
    return {PointPlace::BelowZero};
  }
  const double written = NumericValue(FrequencyText(frequency, tableUnit));
  if (written == 0) {
    return {PointPlace::TooSmall};
  }
  double previous = 0;
  for (std::int16_t row = 1; row < grid.RowCount(); ++row) {
    const double current = ValueOf(grid, row, 0);
    if (frequency == previous || frequency == current || written == current) {
      return {PointPlace::Taken, row};
    }
    if (frequency < previous || frequency < current) {
      return Before(static_cast<std::int16_t>(frequency < previous ? row - 1 : row));
    }
    previous = current;
  }
  return Before(grid.RowCount());
}

std::string SensorPointName(const CalDataGrid& grid, std::int16_t row, std::string_view tableUnit) {
  return NumberShown(grid, row, 0) + std::string(tableUnit);
}

AttenuatorPoint AttenuatorPointFrom(std::string_view setting, std::string_view frequency) {
  CheckNumber(setting, "Setting");
  CheckNumber(frequency, "Frequency");
  return {IntegerValue(Normalised(setting), "Setting"), NumericValue(frequency)};
}

std::string AttenuatorRow(const AttenuatorPoint& point) {
  return kSettingPattern.Format(point.setting) + "\t" + kHzPattern.Format(point.frequency) + "\t" +
         kCalDataPattern.Format(point.setting);
}

PointPosition PlaceAttenuatorPoint(const CalDataGrid& grid, const AttenuatorPoint& point) {
  if (point.setting < 0 || point.frequency < 0) {
    return {PointPlace::BelowZero};
  }
  for (std::int16_t row = 1; row < grid.RowCount(); ++row) {
    const double setting = ValueOf(grid, row, 0);
    const double frequency = ValueOf(grid, row, 1);
    if (setting == point.setting && frequency == point.frequency) {
      return {PointPlace::Taken, row};
    }
    if (setting > point.setting || (setting == point.setting && frequency > point.frequency)) {
      return Before(row);
    }
  }
  return Before(grid.RowCount());
}

std::string AttenuatorPointName(const CalDataGrid& grid, std::int16_t row) {
  const std::string point = NumberShown(grid, row, 0) + "dB, ";
  const double frequency = ValueOf(grid, row, 1);
  if (std::isinf(frequency)) {
    return point + NumberShown(grid, row, 1) + "Hz";
  }
  const bool inGHz = frequency >= kGHz;
  return point + ShortestText(frequency / (inGHz ? kGHz : kMHz)) + (inGHz ? "GHz" : "MHz");
}

}  // namespace tarvell
