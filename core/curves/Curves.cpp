// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/Curves.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "core/caldata/Uncertainty.h"
#include "core/curves/CellNumber.h"
#include "core/curves/PageRows.h"
#include "core/numbers/DecimalDifference.h"
#include "core/numbers/Numbers.h"

namespace tarvell {

namespace {

constexpr double kHundred = 100;

/// A value as it is drawn.
struct Drawn {
  double y = 0;
  std::string text;
  std::string unit;
};

/// Uncertainties in ppm are drawn in per cent, so that a column has one curve.
Drawn DrawnValue(const CellNumber& number) {
  if (number.unit == kPpm) {
    const double percent = RoundedTo15Digits(number.value / kPpmInPercent);
    return {percent, ShortestText(percent), std::string(kPercent)};
  }
  return {number.value, std::string(number.text), std::string(number.unit)};
}

/// The deviation of an attenuation, exact in its decimals.
std::optional<Drawn> DeviationInDecibels(const CellNumber& number, const CellNumber& setting) {
  const std::string text = SignedDifference(number.text, setting.text);
  return text.empty() ? std::nullopt : std::optional<Drawn>({NumericValue(text), text, "dB"});
}

/// The deviation of a resistance. The members differ too much for deviations in ohm.
std::optional<Drawn> DeviationInPercent(const CellNumber& number, const CellNumber& nominal) {
  const std::string text = SignedDifference(number.text, nominal.text);
  if (text.empty() || nominal.value == 0 || nominal.unit != number.unit) {
    return std::nullopt;
  }
  const double share = NumericValue(text) / nominal.value * kHundred;
  if (std::abs(share) > kLargestNumber) {
    return std::nullopt;
  }
  const double percent = RoundedTo15Digits(share);
  return Drawn{percent, (percent > 0 ? "+" : "") + ShortestText(percent), std::string(kPercent)};
}

/// The curves of one column, by what their points are.
class ColumnCurves {
 public:
  /// What is given must outlive the object.
  ColumnCurves(const PageTable& table, const Axis& axis, std::span<const Place> places,
               const ValueColumn& column)
      : table_(table),
        axis_(axis),
        places_(places),
        column_(column),
        isAttenuator_(table.model.family == ModelFamily::StepAttenuator),
        isDeviation_(IsDeviation(table, column.column)) {}

  /// The curves, in the order of their first points.
  [[nodiscard]] std::vector<Curve> Curves() {
    for (GridRow row = kFirstDataRow; row < EndOf(table_.grid); ++row) {
      AddRow(row);
    }
    return std::move(curves_);
  }

 private:
  void AddRow(GridRow row) {
    const std::string text = table_.grid.TextOf({row, column_.column});
    const std::optional<CellNumber> number = NumberOfCell(text);
    const Place& place = places_[IndexOf(row).value];
    if (!number || place.at.empty()) {
      return;
    }
    if (!isDeviation_) {
      Drawn value = DrawnValue(*number);
      if (table_.model.family == ModelFamily::PowerSensor) {
        value.unit = kPercent;  // only the caption has it
      }
      Add(column_.name, row, place, value);
      return;
    }
    const std::string nominalText = table_.grid.TextOf({row, NominalColumn(table_)});
    const std::optional<CellNumber> nominal = NumberOfCell(nominalText);
    if (!nominal) {
      return;
    }
    const auto deviation = isAttenuator_ ? DeviationInDecibels(*number, *nominal)
                                         : DeviationInPercent(*number, *nominal);
    if (deviation) {
      Add(isAttenuator_ ? ShortestText(nominal->value) + " dB" : column_.name, row, place,
          *deviation);
    }
  }

  void Add(const std::string& name, GridRow row, const Place& place, const Drawn& value) {
    CurveFor(name, value.unit)
        .points.push_back({place.x, value.y, {row, column_.column}, place.at, value.text});
  }

  Curve& CurveFor(const std::string& name, const std::string& unit) {
    const auto found = std::ranges::find_if(
        curves_, [&](const Curve& curve) { return curve.name == name && curve.yUnit == unit; });
    if (found != curves_.end()) {
      return *found;
    }
    return curves_.emplace_back(Curve{.name = name,
                                      .xName = axis_.name,
                                      .xUnit = axis_.unit,
                                      .xFactor = FactorOfUnit(axis_.unit),
                                      .yName = isDeviation_ ? "Deviation" : name,
                                      .yUnit = unit,
                                      .column = column_.column,
                                      .isUncertainty = column_.isUncertainty,
                                      .points = {}});
  }

  const PageTable& table_;
  const Axis& axis_;
  std::span<const Place> places_;  ///< of the data rows
  const ValueColumn& column_;
  bool isAttenuator_;
  bool isDeviation_;
  std::vector<Curve> curves_;
};

std::string Caption(const std::string& name, const std::string& unit) {
  return unit.empty() ? name : name + " [" + unit + "]";
}

std::string ChangeText(const Curve& curve, const Curve& earlier) {
  std::string largest;
  const CurvePoint* place = nullptr;
  const std::vector<PointPair> pairs = CommonPoints(curve, earlier);
  for (const auto& [now, before] : pairs) {
    const std::string change = SignedDifference(now->value, before->value);
    if (std::abs(NumericValue(change)) > std::abs(NumericValue(largest))) {
      largest = change;
      place = now;
    }
  }
  return pairs.empty()      ? ", no point in common with the earlier calibration"
         : place == nullptr ? ", no change"
                            : ", largest change " + largest + " at " + place->at;
}

}  // namespace

std::vector<Curve> CurvesOf(const Model& model, std::int16_t page, const CalDataGrid& grid) {
  const PageTable table = {model, page, grid};
  return CurvesOf(table, ValueColumnsOf(table));
}

std::vector<Curve> CurvesOf(const PageTable& table, std::span<const ValueColumn> columns) {
  const Axis axis = AxisOf(table);
  std::vector<Place> places;
  for (GridRow row = kFirstDataRow; row < EndOf(table.grid); ++row) {
    places.push_back(PlaceOf(table.grid, row, axis));
  }
  std::vector<Curve> curves;
  for (const ValueColumn& column : columns) {
    for (Curve& curve : ColumnCurves(table, axis, places, column).Curves()) {
      std::ranges::stable_sort(curve.points, {}, &CurvePoint::x);
      curves.push_back(std::move(curve));
    }
  }
  return curves;
}

const Curve* FindCurve(std::span<const Curve> curves, const Curve& curve) {
  const auto found = std::ranges::find_if(curves, [&](const Curve& other) {
    return other.column == curve.column && other.name == curve.name && other.yUnit == curve.yUnit;
  });
  return found == curves.end() ? nullptr : &*found;
}

std::vector<PointPair> CommonPoints(const Curve& curve, const Curve& earlier) {
  std::vector<PointPair> pairs;
  auto before = earlier.points.begin();
  for (const CurvePoint& point : curve.points) {
    while (before != earlier.points.end() && before->x < point.x) {
      ++before;
    }
    if (before != earlier.points.end() && before->x == point.x) {
      pairs.emplace_back(&point, &*before++);
    }
  }
  return pairs;
}

bool IsLogarithmic(std::span<const Curve> curves) {
  constexpr double kTwoDecades = 100;
  double lowest = 0;
  double highest = 0;
  for (const Curve& curve : curves) {
    for (const CurvePoint& point : curve.points) {
      if (!(point.x > 0)) {
        return false;
      }
      lowest = lowest == 0 ? point.x : std::min(lowest, point.x);
      highest = std::max(highest, point.x);
    }
  }
  return lowest > 0 && highest / lowest > kTwoDecades;
}

std::string XCaption(const Curve& curve) {
  return Caption(curve.xName, curve.xUnit);
}

std::string YCaption(const Curve& curve) {
  return Caption(curve.yName, curve.yUnit);
}

std::string Summary(const Curve& curve, const Curve* earlier) {
  if (curve.points.empty()) {
    return "no points";
  }
  const auto [low, high] = std::ranges::minmax_element(curve.points, {}, &CurvePoint::y);
  const std::string change = earlier != nullptr ? ChangeText(curve, *earlier) : std::string();
  if (curve.points.size() == 1) {
    return "1 point, " + WithUnit(low->value, curve.yUnit) + change;
  }
  return std::to_string(curve.points.size()) + " points, " + low->value + " to " +
         WithUnit(high->value, curve.yUnit) + change;
}

}  // namespace tarvell
