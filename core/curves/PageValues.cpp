// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/PageValues.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/caldata/Uncertainty.h"
#include "core/curves/CellNumber.h"
#include "core/numbers/DecimalDifference.h"
#include "core/numbers/DecimalText.h"

namespace tarvell {

namespace {

constexpr double kHundred = 100;
/// Two roundings can make up a unit of the last digit.
constexpr double kLastDigits = 2;

std::optional<PageValue> ValueOf(const std::string& text) {
  const std::optional<CellNumber> number = NumberOfCell(text);
  if (!number) {
    return std::nullopt;
  }
  const bool isPpm = number->unit == kPpm;
  const double divisor = isPpm ? kPpmInPercent : 1;
  return PageValue{number->value / divisor, PowerOfTen(-DecimalsOf(number->text)) / divisor,
                   std::string(isPpm ? kPercent : number->unit)};
}

/// The uncertainty of a value in the unit of the value.
double UncertaintyOf(const PageValue& value, const PageValue& uncertainty) {
  const bool isRelative = uncertainty.unit == kPercent || uncertainty.unit != value.unit;
  return std::abs(isRelative ? value.value * uncertainty.value / kHundred : uncertainty.value);
}

}  // namespace

PageValues ValuesOf(const PageTable& table, const std::vector<ValueColumn>& columns) {
  PageValues values;
  for (GridRow row = kFirstDataRow; row < EndOf(table.grid); ++row) {
    for (const ValueColumn& column : columns) {
      const Cell cell = {row, column.column};
      if (auto value = ValueOf(table.grid.TextOf(cell))) {
        values.emplace(cell, std::move(*value));
      }
    }
  }
  return values;
}

double LimitAt(const SlipLimit& limit, const ValueColumn& column, Cell cell,
               const PageValues& values) {
  const PageValue& value = values.at(cell);
  const double size = std::abs(value.value);
  if (column.isUncertainty) {
    return size * limit.uncertaintyPercent / kHundred;
  }
  double largest =
      std::max({limit.absolute, size * limit.percent / kHundred, kLastDigits * value.lastDigit});
  if (column.uncertainty) {
    const auto uncertainty = values.find({cell.row, *column.uncertainty});
    if (uncertainty != values.end()) {
      largest = std::max(largest, limit.uncertainties * UncertaintyOf(value, uncertainty->second));
    }
  }
  return largest;
}

}  // namespace tarvell
