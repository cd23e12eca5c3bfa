// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/Curves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string_view>

#include "core/caldata/Uncertainty.h"
#include "core/curves/CellNumber.h"
#include "core/numbers/DecimalDifference.h"
#include "core/numbers/Numbers.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::int16_t kFirstColumn = 0;
constexpr std::int16_t kAttenuatorFrequency = 1;
constexpr std::int16_t kAttenuation = 2;
constexpr std::int16_t kNominalPage = 0;  // of the resistor set
constexpr std::int16_t kNominal = 1;
constexpr std::int16_t kCalibrated = 2;
constexpr double kPpmInPercent = 1E4;
constexpr std::string_view kFrequency = "Frequency";
constexpr std::string_view kDeviation = "Deviation";
constexpr std::string_view kUncertainty = "Unc.";

/// Where a row is on the curves, "" for `at` where it is nowhere.
struct Place {
  double x = 0;
  std::string at;
};

/// What x is on a page.
struct Axis {
  std::string_view name;
  std::string_view unit;
  std::int16_t column = 0;
};

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

/// The place of a row by a number that its cell holds; the "" of `at` means none.
Place PlaceOfNumber(const CalDataGrid& grid, GridRow row, const Axis& axis) {
  const std::string text = grid.TextOf({row, axis.column});
  const std::optional<CellNumber> number = NumberOfCell(text);
  if (!number) {
    return {};
  }
  const std::string_view unit = axis.name == kFrequency ? axis.unit : number->unit;
  const double x = number->value * FactorOfUnit(unit);
  if (!std::isfinite(x)) {
    return {};
  }
  return {RoundedTo15Digits(x), axis.name == kFrequency
                                    ? FrequencyText(number->value, unit)
                                    : std::string(Trim(grid.TextOf({row, kFirstColumn})))};
}

Place PlaceOf(const CalDataGrid& grid, GridRow row, const Axis& axis) {
  if (!axis.unit.empty()) {
    return PlaceOfNumber(grid, row, axis);
  }
  return {static_cast<double>(row.number), std::string(Trim(grid.TextOf({row, kFirstColumn})))};
}

Curve NewCurve(const Axis& axis, std::string_view name, std::string_view unit,
               std::int16_t column) {
  Curve curve;
  curve.name = name;
  curve.xName = axis.name;
  curve.xUnit = axis.unit;
  curve.xFactor = FactorOfUnit(axis.unit);
  curve.yName = name;
  curve.yUnit = unit;
  curve.column = column;
  return curve;
}

/// The curve of this name and unit, added where it is missing.
Curve& CurveFor(std::vector<Curve>& curves, const Curve& wanted) {
  const auto found = std::ranges::find_if(curves, [&](const Curve& curve) {
    return curve.column == wanted.column && curve.name == wanted.name &&
           curve.yUnit == wanted.yUnit;
  });
  return found != curves.end() ? *found : curves.emplace_back(wanted);
}

/// A value that belongs to a curve.
struct Value {
  double y = 0;
  std::string text;
  std::string unit;
};

void AddPoint(std::vector<Curve>& curves, const Curve& wanted, Cell cell, Place place,
              const Value& value) {
  if (!place.at.empty() && std::isfinite(value.y)) {
    CurveFor(curves, wanted)
        .points.push_back({place.x, value.y, cell, std::move(place.at), value.text});
  }
}

/// The difference of two numbers in one unit, exact in its decimals.
std::optional<Value> DifferenceOf(const std::optional<CellNumber>& number,
                                  const std::optional<CellNumber>& nominal) {
  const std::string text =
      number && nominal ? SignedDifference(number->text, nominal->text) : std::string();
  if (text.empty()) {
    return std::nullopt;
  }
  return Value{NumericValue(text), text, ""};
}

std::vector<Curve> SensorCurves(const Model& model, const CalDataGrid& grid) {
  constexpr std::int16_t kFactor = 1;
  std::vector<Curve> curves;
  const Axis axis = {kFrequency, model.frequencyUnit, kFirstColumn};
  const Curve curve = NewCurve(axis, "Calibration factor", "%", kFactor);
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    const std::string text = grid.TextOf({row, kFactor});
    if (const auto number = NumberOfCell(text)) {
      AddPoint(curves, curve, {row, kFactor}, PlaceOf(grid, row, axis),
               {number->value, std::string(number->text), ""});
    }
  }
  return curves;
}

std::vector<Curve> AttenuatorCurves(const CalDataGrid& grid) {
  std::vector<Curve> curves;
  const Axis axis = {kFrequency, "Hz", kAttenuatorFrequency};
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    const std::string settingText = grid.TextOf({row, kFirstColumn});
    const std::string text = grid.TextOf({row, kAttenuation});
    const auto setting = NumberOfCell(settingText);
    if (const auto deviation = DifferenceOf(NumberOfCell(text), setting)) {
      Curve curve = NewCurve(axis, ShortestText(setting->value) + " dB", "dB", kAttenuation);
      curve.yName = kDeviation;
      AddPoint(curves, curve, {row, kAttenuation}, PlaceOf(grid, row, axis), *deviation);
    }
  }
  return curves;
}

/// What a value of a set is drawn as.
std::optional<Value> SetValue(const CellNumber& number) {
  if (number.unit == kPpm) {
    const double percent = RoundedTo15Digits(number.value / kPpmInPercent);
    return Value{percent, ShortestText(percent), std::string(kPercent)};
  }
  return Value{number.value, std::string(number.text), std::string(number.unit)};
}

/// A calibrated resistance as deviation from its nominal value in per cent.
std::optional<Value> DeviationInPercent(const CellNumber& number,
                                        const std::optional<CellNumber>& nominal) {
  constexpr double kHundred = 100;
  if (!nominal || nominal->value == 0 || nominal->unit != number.unit) {
    return std::nullopt;
  }
  const auto difference = DifferenceOf(number, nominal);
  if (!difference || !std::isfinite(difference->y / nominal->value * kHundred)) {
    return std::nullopt;
  }
  const double percent = RoundedTo15Digits(difference->y / nominal->value * kHundred);
  return Value{percent, (percent > 0 ? "+" : "") + ShortestText(percent), std::string(kPercent)};
}

/// Adds a column of a set.
void AddSetColumn(std::vector<Curve>& curves, const CalDataGrid& grid, const Axis& axis,
                  std::int16_t column, const std::string& name, bool isDeviation) {
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    const std::string text = grid.TextOf({row, column});
    const auto number = NumberOfCell(text);
    if (!number) {
      continue;
    }
    const std::string nominal = grid.TextOf({row, kNominal});
    const auto value =
        isDeviation ? DeviationInPercent(*number, NumberOfCell(nominal)) : SetValue(*number);
    if (value) {
      Curve curve = NewCurve(axis, name, value->unit, column);
      curve.yName = isDeviation ? kDeviation : std::string_view(name);
      curve.isUncertainty = name.starts_with(kUncertainty);
      AddPoint(curves, curve, {row, column}, PlaceOf(grid, row, axis), *value);
    }
  }
}

Axis AxisOfSet(bool hasNominal, std::string_view caption) {
  if (hasNominal) {
    return {"Nominal Value", "ohm", kNominal};
  }
  const CaptionParts parts = PartsOfCaption(caption);
  return parts.name == kFrequency ? Axis{kFrequency, parts.unit, kFirstColumn}
                                  : Axis{parts.name, "", kFirstColumn};
}

std::vector<Curve> SetCurves(const Model& model, std::int16_t page, const CalDataGrid& grid) {
  std::vector<Curve> curves;
  const bool hasNominal = model.family == ModelFamily::ResistorSet && page == kNominalPage;
  const std::string caption = grid.TextOf({kCaptionRow, kFirstColumn});
  const Axis axis = AxisOfSet(hasNominal, caption);
  std::string valueName;
  for (std::int16_t column = axis.column + 1; column < grid.ColumnCount(); ++column) {
    const std::string text = grid.TextOf({kCaptionRow, column});
    std::string name(PartsOfCaption(text).name);
    if (name == kUncertainty) {
      name += " of " + valueName;
    } else {
      valueName = name;
    }
    AddSetColumn(curves, grid, axis, column, name, hasNominal && column == kCalibrated);
  }
  return curves;
}

std::vector<Curve> UnsortedCurves(const Model& model, std::int16_t page, const CalDataGrid& grid) {
  switch (model.family) {
    case ModelFamily::PowerSensor:
      return SensorCurves(model, grid);
    case ModelFamily::StepAttenuator:
      return AttenuatorCurves(grid);
    case ModelFamily::CapacitorSet:
    case ModelFamily::ResistorSet:
      return SetCurves(model, page, grid);
    case ModelFamily::TestKit:
      break;
  }
  return {};
}

std::string Caption(const std::string& name, const std::string& unit) {
  return unit.empty() ? name : name + " [" + unit + "]";
}

std::string WithUnit(const std::string& number, const std::string& unit) {
  return unit.empty() ? number : number + " " + unit;
}

std::string ChangeText(const Curve& curve, const Curve& earlier) {
  std::string largest;
  const CurvePoint* place = nullptr;
  const std::vector<PointPair> pairs = CommonPoints(curve, earlier);
  for (const auto& [now, before] : pairs) {
    const std::string change = SignedDifference(now->value, before->value);
    if (!change.empty() && std::abs(NumericValue(change)) > std::abs(NumericValue(largest))) {
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
  std::vector<Curve> curves = UnsortedCurves(model, page, grid);
  for (Curve& curve : curves) {
    std::ranges::stable_sort(curve.points, {}, &CurvePoint::x);
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
