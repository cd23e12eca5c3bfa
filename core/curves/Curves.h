// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CURVES_CURVES_H
#define TARVELL_CORE_CURVES_CURVES_H

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/CalDataGrid.h"
#include "core/caldata/Cell.h"
#include "core/caldata/Models.h"
#include "core/curves/PageRows.h"

/// The values of a page as curves: over frequency, or over what its rows are.
namespace tarvell {

/// A value of the table that can be drawn: neither x nor y is infinite.
struct CurvePoint {
  double x = 0;  ///< see Curve::xUnit
  double y = 0;
  Cell cell;          ///< the cell that holds the value
  std::string at;     ///< the place on the curve: "12.4 GHz", or the member "RT731A"
  std::string value;  ///< y in the digits of the table, without its unit: "84.1", "+0.0034"
};

struct Curve {
  std::string name;  ///< "Calibration factor", "10 dB", "Unc. of Capacitance"
  std::string xName;
  /// The unit of the table. x is in Hz where that is a frequency, in ohm where it is a resistance,
  /// and the number of the row (the first data row is 1) where it is "".
  std::string xUnit;
  double xFactor = 1;  ///< x is this many times the number in the table's unit
  std::string yName;
  std::string yUnit;
  std::int16_t column = 0;  ///< of the values
  bool isUncertainty = false;
  std::vector<CurvePoint> points;  ///< upward by x; those of the same x in the order of the rows
};

/// The curves of a page, in the order of the table:
/// - of a power sensor, the factor over frequency;
/// - of a step attenuator, one for each setting: the deviation from it over frequency;
/// - of a set, one for each column of values and each unit in it, over frequency or over the
///   members. Uncertainties in ppm are shown in per cent. The calibrated resistances, which are of
///   very different size, are shown as deviation from the nominal value.
/// A cell without a number, or in a row without a frequency, gives no point, and a column without a
/// point no curve.
[[nodiscard]] std::vector<Curve> CurvesOf(const Model& model, std::int16_t page,
                                          const CalDataGrid& grid);
/// Only those of some columns of the page.
[[nodiscard]] std::vector<Curve> CurvesOf(const PageTable& table,
                                          std::span<const ValueColumn> columns);

/// The one of `curves` that is the same curve of another calibration; nullptr if none is.
[[nodiscard]] const Curve* FindCurve(std::span<const Curve> curves, const Curve& curve);

/// The points of two curves at the same x. Of several at one x, each has its own partner.
using PointPair = std::pair<const CurvePoint*, const CurvePoint*>;
[[nodiscard]] std::vector<PointPair> CommonPoints(const Curve& curve, const Curve& earlier);

/// Whether x is better drawn as a logarithm: it is above zero everywhere and spans more than two
/// decades.
[[nodiscard]] bool IsLogarithmic(std::span<const Curve> curves);

/// The captions of the axes: "Frequency [GHz]", "Deviation [dB]".
[[nodiscard]] std::string XCaption(const Curve& curve);
[[nodiscard]] std::string YCaption(const Curve& curve);

/// A curve in a sentence, for screen readers: "18 points, 84.1 to 100.0 %". With the same curve of
/// an earlier calibration also ", largest change -0.4 at 12.4 GHz" or ", no change".
[[nodiscard]] std::string Summary(const Curve& curve, const Curve* earlier = nullptr);

}  // namespace tarvell

#endif
