// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/CalPoints.h"

#include <cmath>

#include "core/caldata/Table.h"
#include "core/numbers/NumberPattern.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::int16_t kFirstColumn = 0;  // the frequency of a sensor, the setting of an attenuator
constexpr std::int16_t kHzColumn = 1;

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

/// The frequency of a new point as its row shows it and the file will hold it.
std::string FrequencyText(double frequency, std::string_view tableUnit) {
  const NumberPattern& pattern = tableUnit == "GHz"      ? kGHzPattern
                                 : frequency <= kHighMHz ? kMHzPattern
                                                         : kHighMHzPattern;
  return pattern.Format(frequency);
}

/// The value of a cell by which rows are compared. A number that is too large to be calculated with
/// counts as infinite.
double ValueOf(const CalDataGrid& grid, Cell cell) {
  return NumericValueOrInfinity(grid.TextOf(cell));
}

/// The number of a cell as a question names it: its shortest text, or the text of the cell where
/// the number is too large to be calculated with.
std::string NumberShown(const CalDataGrid& grid, Cell cell) {
  const std::string text = grid.TextOf(cell);
  return std::isinf(NumericValueOrInfinity(text)) ? std::string(Trim(text)) : Normalised(text);
}

void CheckNumber(std::string_view text, const std::string& field) {
  if (!BeginsWithNumber(text)) {
    throw Error(ErrorKind::Type, field + ": \"" + std::string(text) +
                                     "\" is not a number. Choose one from the list or type one.");
  }
}

}  // namespace

void CheckPlaceForPoint(const CalDataGrid& grid) {
  CheckTableIndex(IndexOf(EndOf(grid)));
}

double SensorFrequency(std::string_view typed, std::string_view unit, std::string_view tableUnit) {
  // 1.005 GHz is 1005 MHz, although the binary product is a little less: it is rounded to 15
  // digits.
  const double value = NumericValue(typed);
  if (tableUnit == "GHz") {
    return RoundedTo15Digits(unit == "MHz"   ? value / kStep
                             : unit == "KHz" ? value / (kStep * kStep)
                                             : value);
  }
  return RoundedTo15Digits(unit == "GHz" ? value * kStep : unit == "KHz" ? value / kStep : value);
}

std::vector<std::string> SensorRow(double frequency, std::string_view tableUnit) {
  return {FrequencyText(frequency, tableUnit), std::string(kDefaultFactor)};
}

PointPosition PlaceSensorPoint(const CalDataGrid& grid, double frequency,
                               std::string_view tableUnit) {
  if (frequency < 0) {
    return {PointPlace::BelowZero, {}};
  }
  const double written = NumericValue(FrequencyText(frequency, tableUnit));
  if (written == 0) {
    return {PointPlace::TooSmall, {}};
  }
  double previous = 0;
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    const double current = ValueOf(grid, {row, kFirstColumn});
    if (frequency == previous || frequency == current || written == current) {
      return {PointPlace::Taken, row};
    }
    if (frequency < previous || frequency < current) {
      return {PointPlace::Row, row + (frequency < previous ? -1 : 0)};
    }
    previous = current;
  }
  return {PointPlace::Row, EndOf(grid)};
}

std::optional<GridRow> FindSensorPoint(const CalDataGrid& grid, double frequency,
                                       std::string_view tableUnit) {
  const double written = NumericValue(FrequencyText(frequency, tableUnit));
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    const double current = ValueOf(grid, {row, kFirstColumn});
    if (frequency == current || written == current) {
      return row;
    }
  }
  return std::nullopt;
}

std::string SensorPointName(const CalDataGrid& grid, GridRow row, std::string_view tableUnit) {
  return NumberShown(grid, {row, kFirstColumn}) + std::string(tableUnit);
}

std::string PointsName(const std::string& first, const std::string& last, int count) {
  return count == 1 ? first : first + " to " + last + ", " + std::to_string(count) + " points";
}

AttenuatorPoint AttenuatorPointFrom(std::string_view setting, std::string_view frequency) {
  CheckNumber(setting, "Setting");
  CheckNumber(frequency, "Frequency");
  return {IntegerValue(Normalised(setting), "Setting"), NumericValue(frequency)};
}

std::vector<std::string> AttenuatorRow(const AttenuatorPoint& point) {
  return {kSettingPattern.Format(point.setting), kHzPattern.Format(point.frequency),
          kCalDataPattern.Format(point.setting)};
}

PointPosition PlaceAttenuatorPoint(const CalDataGrid& grid, const AttenuatorPoint& point) {
  if (point.setting < 0 || point.frequency < 0) {
    return {PointPlace::BelowZero, {}};
  }
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    const double setting = ValueOf(grid, {row, kFirstColumn});
    const double frequency = ValueOf(grid, {row, kHzColumn});
    if (setting == point.setting && frequency == point.frequency) {
      return {PointPlace::Taken, row};
    }
    if (setting > point.setting || (setting == point.setting && frequency > point.frequency)) {
      return {PointPlace::Row, row};
    }
  }
  return {PointPlace::Row, EndOf(grid)};
}

std::optional<GridRow> FindAttenuatorPoint(const CalDataGrid& grid, const AttenuatorPoint& point) {
  const double written = NumericValue(kHzPattern.Format(point.frequency));
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    const double frequency = ValueOf(grid, {row, kHzColumn});
    if (ValueOf(grid, {row, kFirstColumn}) == point.setting &&
        (frequency == point.frequency || frequency == written)) {
      return row;
    }
  }
  return std::nullopt;
}

std::string AttenuatorPointName(const CalDataGrid& grid, GridRow row) {
  const std::string point = NumberShown(grid, {row, kFirstColumn}) + "dB, ";
  const double frequency = ValueOf(grid, {row, kHzColumn});
  if (std::isinf(frequency)) {
    return point + NumberShown(grid, {row, kHzColumn}) + "Hz";
  }
  const bool inGHz = frequency >= kGHz;
  return point + ShortestText(frequency / (inGHz ? kGHz : kMHz)) + (inGHz ? "GHz" : "MHz");
}

}  // namespace tarvell
