// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_PAGEROWS_H
#define TARVELL_CORE_CURVES_PAGEROWS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/caldata/CalDataGrid.h"
#include "core/caldata/Cell.h"
#include "core/caldata/Models.h"

/// What the rows and the columns of a page are.
namespace tarvell {

/// A page of the data of a model.
struct PageTable {
  const Model& model;
  std::int16_t page;
  const CalDataGrid& grid;
};

/// By what the rows are placed on a curve.
struct Axis {
  std::string name;
  std::string unit;  ///< of a frequency or a resistance, "" for other rows
  std::int16_t column = 0;
};
[[nodiscard]] Axis AxisOf(const PageTable& table);

/// The place of a row.
struct Place {
  double x = 0;    ///< Hz, ohm, or the number of the row
  std::string at;  ///< "12.4 GHz", "RT731A"; "" for a row that has no place
};
[[nodiscard]] Place PlaceOf(const CalDataGrid& grid, GridRow row, const Axis& axis);

/// A row as it is called: "12.4 GHz", "10 dB, 50 MHz", "RT731A"; "" for a row without a place.
/// Different points have different names.
[[nodiscard]] std::string PointName(const PageTable& table, GridRow row);

/// The row of `earlier` that is the same point as each data row of `now`. Of several rows with the
/// same point, each has its own partner.
[[nodiscard]] std::vector<std::optional<GridRow>> EarlierRows(const PageTable& now,
                                                              const PageTable& earlier);

/// A column that holds the values of a page.
struct ValueColumn {
  std::int16_t column = 0;
  std::string name;  ///< "Capacitance", "Unc. of Capacitance"
  bool isUncertainty = false;
  std::optional<std::int16_t> uncertainty = std::nullopt;  ///< the column of its uncertainties
};
[[nodiscard]] std::vector<ValueColumn> ValueColumnsOf(const PageTable& table);

/// Whether the values of the column are drawn as deviation from those of NominalColumn: the
/// attenuation of a step attenuator, and the resistances of the members of a resistor set.
[[nodiscard]] bool IsDeviation(const PageTable& table, std::int16_t column);
[[nodiscard]] std::int16_t NominalColumn(const PageTable& table);

}  // namespace tarvell

#endif
