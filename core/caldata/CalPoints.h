// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_CALPOINTS_H
#define TARVELL_CORE_CALDATA_CALPOINTS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/CalDataGrid.h"

/// The calibration points of the single-table models: how a typed point becomes a row, where the
/// row goes, and how a row's point is named.
namespace tarvell {

enum class PointPlace {
  Row,        ///< before the row `row`, or after the last one
  Taken,      ///< the table has this point already
  BelowZero,  ///< a point cannot be below zero
  TooSmall    ///< its row would be written as zero
};

struct PointPosition {
  PointPlace place = PointPlace::Row;
  GridRow row;
};

/// Throws an Index error when a table has no place for another point.
void CheckPlaceForPoint(const CalDataGrid& grid);

/// A frequency typed in `unit` ("GHz", "MHz" or "KHz"; any other means the table's own), in the
/// table's unit ("MHz" or "GHz"). A text without a number gives 0.
[[nodiscard]] double SensorFrequency(std::string_view typed, std::string_view unit,
                                     std::string_view tableUnit);

/// The cells of a new point of a power sensor, with the default factor.
[[nodiscard]] std::vector<std::string> SensorRow(double frequency, std::string_view tableUnit);

/// Where a new point of a power sensor goes, so that a table sorted upward stays so. A frequency
/// that its own row would round to that of another row is the same point.
[[nodiscard]] PointPosition PlaceSensorPoint(const CalDataGrid& grid, double frequency,
                                             std::string_view tableUnit);

/// The row of a power sensor's point, which is that of PlaceSensorPoint, in a table of any order.
[[nodiscard]] std::optional<GridRow> FindSensorPoint(const CalDataGrid& grid, double frequency,
                                                     std::string_view tableUnit);

/// The point of a data row as the delete question names it: "50MHz".
[[nodiscard]] std::string SensorPointName(const CalDataGrid& grid, GridRow row,
                                          std::string_view tableUnit);

/// Several points as the delete question names them, by the names of the first and the last one:
/// "50MHz to 18000MHz, 12 points". A single point has its own name.
[[nodiscard]] std::string PointsName(const std::string& first, const std::string& last, int count);

/// A point of a step attenuator.
struct AttenuatorPoint {
  std::int16_t setting = 0;  ///< dB
  double frequency = 0;      ///< Hz
};

/// The point that was chosen or typed. Throws a Type error that names the setting or the frequency
/// when it does not begin with a number, or when the setting does not fit into 16 bits.
[[nodiscard]] AttenuatorPoint AttenuatorPointFrom(std::string_view setting,
                                                  std::string_view frequency);

/// The cells of a new point of a step attenuator; the default value is the setting itself.
[[nodiscard]] std::vector<std::string> AttenuatorRow(const AttenuatorPoint& point);

/// Where a new point of a step attenuator goes, so that a table sorted by setting and then by
/// frequency stays so.
[[nodiscard]] PointPosition PlaceAttenuatorPoint(const CalDataGrid& grid,
                                                 const AttenuatorPoint& point);

/// The row of a step attenuator's point in a table of any order, or the row that a new point with
/// the decimals of its cells would be the same as.
[[nodiscard]] std::optional<GridRow> FindAttenuatorPoint(const CalDataGrid& grid,
                                                         const AttenuatorPoint& point);

/// The point of a data row as the delete question names it: "10dB, 50MHz".
[[nodiscard]] std::string AttenuatorPointName(const CalDataGrid& grid, GridRow row);

}  // namespace tarvell

#endif
