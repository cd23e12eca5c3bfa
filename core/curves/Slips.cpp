// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/Slips.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/curves/CellNumber.h"
#include "core/curves/Change.h"
#include "core/curves/Curves.h"
#include "core/curves/PageValues.h"
#include "core/curves/Shift.h"
#include "core/curves/StandOut.h"
#include "core/numbers/DecimalText.h"
#include "core/numbers/Numbers.h"

namespace tarvell {

namespace {

constexpr double kHundred = 100;
/// For the noise of binary fractions: a change of just the limit is not beyond it.
constexpr double kSlack = 1 + 1E-9;

/// Rounded to two significant digits, which is enough for a limit.
std::string Rounded(double value) {
  constexpr int kDigits = 2;
  if (value == 0 || !std::isfinite(value)) {
    return "0";
  }
  const double unit = PowerOfTen(DecimalText(value).Exponent() - (kDigits - 1));
  return ShortestText(unit > 0 ? RoundedToWhole(value / unit) * unit : value);
}

/// A copy of a table in which defaults that nobody has entered are empty.
void CopyEntered(const SlipInput& input, MemoryGrid& entered) {
  const CalDataGrid& grid = input.table.grid;
  entered.Clear(grid.ColumnCount());
  entered.SetRowCount(grid.RowCount());
  for (GridRow row = kCaptionRow; row < EndOf(grid); ++row) {
    for (std::int16_t column = 0; column < grid.ColumnCount(); ++column) {
      const auto origin = input.origins.find({row, column});
      const bool isDefault = origin != input.origins.end() && origin->second == Origin::Template;
      entered.SetCellText(row.number, column,
                          isDefault ? std::string() : grid.TextOf({row, column}));
    }
  }
}

/// A point with what is needed to judge it: a value is `base` plus `scale` times what is
/// compared with the neighbours.
struct JudgedPoint {
  Cell cell;
  double x = 0;
  double y = 0;
  double base = 0;
  double scale = 1;
  bool isLog = false;  ///< whether the value is 10 to the power of y

  [[nodiscard]] double ValueOf(double expected) const {
    return isLog ? std::pow(10.0, expected) : base + scale * expected;
  }
};

/// Collects the marks of one page.
class SlipFinder {
 public:
  /// `input` and `entered`, its table without defaults, must outlive the object.
  SlipFinder(const SlipInput& input, const CalDataGrid& entered)
      : input_(input),
        table_{input.table.model, input.table.page, entered},
        columns_(ValueColumnsOf(table_)),
        values_(ValuesOf(table_, columns_)) {
    if (input.earlier != nullptr) {
      earlierRows_ = EarlierRows(table_, *input.earlier);
      earlierValues_ = ValuesOf(*input.earlier, columns_);
    }
  }

  [[nodiscard]] Slips Find() {
    for (const ValueColumn& column : columns_) {
      MarkChanges(column);
      if (!column.isUncertainty) {
        MarkStandingOut(column);
        NoteShift(column);
      }
    }
    return std::move(slips_);
  }

 private:
  /// The cell of the earlier calibration that has the same point, unit and column, if it has a
  /// number.
  [[nodiscard]] std::optional<Cell> EarlierCell(Cell cell) const {
    const std::size_t index = IndexOf(cell.row).value;
    if (index >= earlierRows_.size() || !earlierRows_[index]) {
      return std::nullopt;
    }
    const Cell earlier = {*earlierRows_[index], cell.column};
    const auto before = earlierValues_.find(earlier);
    const auto now = values_.find(cell);
    const bool isSame = before != earlierValues_.end() &&
                        (now == values_.end() || now->second.unit == before->second.unit);
    return isSame ? std::optional<Cell>(earlier) : std::nullopt;
  }

  [[nodiscard]] double EarlierLimit(const ValueColumn& column, Cell earlier) const {
    return LimitAt(input_.limit, column, earlier, earlierValues_) * kSlack;
  }

  void MarkChanges(const ValueColumn& column) {
    if (input_.earlier == nullptr) {
      return;
    }
    for (GridRow row = kFirstDataRow; row < EndOf(table_.grid); ++row) {
      const Cell cell = {row, column.column};
      const auto now = values_.find(cell);
      const std::optional<Cell> earlier = EarlierCell(cell);
      if (now == values_.end() || !earlier) {
        continue;
      }
      const double limit = EarlierLimit(column, *earlier);
      if (std::abs(now->second.value - earlierValues_.at(*earlier).value) > limit) {
        const std::string before = input_.earlier->grid.TextOf(*earlier);
        const std::string change = DifferenceText(table_.grid.TextOf(cell), before);
        slips_.marks[cell] = "The earlier calibration has " + before +
                             (change.empty() ? "" : ", a change of " + change) + "; the limit is " +
                             WithUnit(Rounded(limit), now->second.unit) + ".";
      }
    }
  }

  /// Marks the values without an earlier one that do not fit their neighbours on the curves.
  void MarkStandingOut(const ValueColumn& column) {
    const bool hasAllEarlier = std::ranges::all_of(values_, [&](const auto& value) {
      return value.first.column != column.column || EarlierCell(value.first);
    });
    if (hasAllEarlier) {
      return;
    }
    points_.clear();
    lines_.clear();
    for (const Curve& curve : CurvesOf(table_, std::span(&column, 1))) {
      AddLine(curve);
    }
    if (table_.model.family == ModelFamily::StepAttenuator) {
      AddLinesOverSettings();
    }
    std::vector<CurveValue> judged;
    judged.reserve(points_.size());
    for (const JudgedPoint& point : points_) {
      judged.push_back({point.y, ToleranceOf(column, point)});
    }
    for (const OddValue& odd : ValuesThatStandOut(judged, lines_)) {
      const JudgedPoint& point = points_[odd.value];
      if (!EarlierCell(point.cell)) {
        MarkOdd(point, odd.expected);
      }
    }
  }

  void MarkOdd(const JudgedPoint& point, double expected) {
    const PageValue& value = values_.at(point.cell);
    const double suggested = point.ValueOf(expected);
    const double digit = value.lastDigit > 0 ? value.lastDigit : 1;
    const double shown = RoundedToWhole(suggested / digit) * digit;
    slips_.marks[point.cell] =
        "The value stands out from its neighbours on the curve" +
        (std::isfinite(shown) ? ", which suggest about " + WithUnit(ShortestText(shown), value.unit)
                              : std::string()) +
        ".";
  }

  /// The curve of one unit, or of one setting of an attenuator.
  void AddLine(const Curve& curve) {
    const bool isDeviation = IsDeviation(table_, curve.column);
    const auto [low, high] = std::ranges::minmax(curve.points, {}, &CurvePoint::y);
    constexpr double kDecade = 10;
    const bool isLogY = !isDeviation && low.y > 0 && high.y / low.y > kDecade;
    CurveLine line;
    for (const CurvePoint& point : curve.points) {
      JudgedPoint judged = {.cell = point.cell,
                            .x = point.x,
                            .y = isLogY ? std::log10(point.y) : point.y,
                            .isLog = isLogY};
      if (isDeviation) {
        SetScale(judged);
      }
      line.push_back({judged.x, points_.size()});
      points_.push_back(judged);
    }
    // Which scale makes a curve smooth differs from one end to the other.
    if (!line.empty() && line.front().x > 0) {
      lines_.push_back(line);
      for (CurveStop& stop : lines_.back()) {
        stop.x = std::log10(stop.x);
      }
    }
    lines_.push_back(std::move(line));
  }

  /// A deviation is compared, and the value is shown.
  void SetScale(JudgedPoint& point) const {
    const double value = values_.at(point.cell).value;
    if (table_.model.family == ModelFamily::ResistorSet && point.y != -kHundred) {
      point.scale = value / (point.y + kHundred);
    }
    point.base = value - point.scale * point.y;
  }

  /// An attenuator has few frequencies; the other settings are neighbours, too.
  void AddLinesOverSettings() {
    std::map<double, CurveLine> lines;
    for (std::size_t index = 0; index < points_.size(); ++index) {
      lines[points_[index].x].push_back({points_[index].base, index});
    }
    for (auto& [x, line] : lines) {
      std::ranges::stable_sort(line, {}, &CurveStop::x);
      lines_.push_back(std::move(line));
    }
  }

  [[nodiscard]] double ToleranceOf(const ValueColumn& column, const JudgedPoint& point) const {
    const double limit = LimitAt(input_.limit, column, point.cell, values_);
    if (point.isLog) {
      return std::log10(1 + limit / values_.at(point.cell).value);
    }
    return point.scale != 0 ? limit / std::abs(point.scale) : limit;
  }

  void NoteShift(const ValueColumn& column) {
    if (input_.earlier == nullptr && input_.origins.empty()) {
      return;  // nothing that could show it
    }
    std::vector<ShiftRow> rows;
    for (GridRow row = kFirstDataRow; row < EndOf(table_.grid); ++row) {
      rows.push_back(RowOfShift(column, {row, column.column}));
    }
    if (!slips_.notice.empty()) {
      return;
    }
    if (const std::optional<Shift> shift = FindShift(rows)) {
      slips_.notice =
          column.name + ": from " + PointName(table_, RowOf({shift->first})) +
          (shift->isLeftOut ? " on, all values fit the earlier calibration one row later. A row "
                              "was probably left out."
                            : " on, all values fit the earlier calibration one row earlier. A row "
                              "was probably entered twice.");
    } else if (input_.earlier == nullptr && OnlyLastIsDefault(rows, column)) {
      slips_.notice = column.name + ": the last value, at " +
                      PointName(table_, RowOf({rows.size() - 1})) +
                      ", is the only default left. Enter it, or look whether a row was left out.";
    }
  }

  /// Where a row is left out and nothing is known of an earlier calibration, only this shows it.
  [[nodiscard]] bool OnlyLastIsDefault(const std::vector<ShiftRow>& rows,
                                       const ValueColumn& column) const {
    constexpr std::size_t kLeastRows = 3;
    if (rows.size() < kLeastRows) {
      return false;
    }
    const auto last = input_.origins.find({RowOf({rows.size() - 1}), column.column});
    return last != input_.origins.end() && last->second == Origin::Template &&
           std::ranges::all_of(rows.begin(), rows.end() - 1,
                               [](const ShiftRow& row) { return row.now.has_value(); });
  }

  [[nodiscard]] ShiftRow RowOfShift(const ValueColumn& column, Cell cell) const {
    ShiftRow row;
    const auto now = values_.find(cell);
    const auto origin = input_.origins.find(cell);
    const bool isEntered = origin == input_.origins.end() || !IsToEnter(origin->second);
    if (now != values_.end() && isEntered) {
      row.now = now->second.value;
    }
    if (const auto earlier = EarlierCell(cell)) {
      row.earlier = earlierValues_.at(*earlier).value;
      row.limit = EarlierLimit(column, *earlier);
    }
    return row;
  }

  const SlipInput& input_;
  PageTable table_;
  std::vector<ValueColumn> columns_;
  PageValues values_;
  std::vector<std::optional<GridRow>> earlierRows_;
  PageValues earlierValues_;
  std::vector<JudgedPoint> points_;
  std::vector<CurveLine> lines_;
  Slips slips_;
};

}  // namespace

Slips FindSlips(const SlipInput& input) {
  if (input.origins.empty()) {
    return SlipFinder(input, input.table.grid).Find();
  }
  MemoryGrid entered;
  CopyEntered(input, entered);
  return SlipFinder(input, entered).Find();
}

}  // namespace tarvell
