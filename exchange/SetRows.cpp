// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/SetRows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/CellNotices.h"
#include "core/caldata/EditedCell.h"
#include "core/caldata/Uncertainty.h"
#include "core/numbers/Numbers.h"
#include "core/text/Text.h"
#include "exchange/PagePlanning.h"
#include "exchange/ValueLimits.h"

namespace tarvell {

namespace {

/// A cell's text with another number in it.
std::string WithNumber(std::string_view cell, const std::string& number) {
  const CellParts parts = PartsOfCell(cell);
  return std::string(parts.before) + number + std::string(parts.after);
}

/// One unit of the last digit that a number is written with.
double LastDigit(std::string_view number) {
  constexpr double kLargest = 400;
  const std::size_t end = std::min(number.find_first_of("Ee"), number.size());
  const std::size_t point = std::min(number.substr(0, end).find('.'), end);
  const double decimals = point == end ? 0 : static_cast<double>(end - point - 1);
  const double exponent = end == number.size() ? 0 : NumericValueOrInfinity(number.substr(end + 1));
  return std::pow(10, std::clamp(exponent, -kLargest, kLargest) - decimals);
}

/// Whether a cell with `stored`, which is `exact` rounded, no longer shows what is written. A
/// number that was calculated nearly always has more digits than its cell.
bool LosesDigits(std::string_view written, std::string_view exact, std::string_view stored) {
  constexpr double kHalf = 0.5000001;
  const double number = NumericValueOrInfinity(exact);
  const double kept = NumericValueOrInfinity(PartsOfCell(stored).number);
  const double lost = NumericValueOrInfinity(written) * (kept / number - 1);
  return number != 0 && std::abs(lost) > kHalf * LastDigit(written);
}

/// A number that was calculated, with as many digits as a reader needs.
std::string ShortNumber(const std::string& number) {
  constexpr double kDigits = 5;
  const double value = NumericValueOrInfinity(number);
  if (value == 0) {
    return number;
  }
  const double scale = std::pow(10, kDigits - 1 - std::floor(std::log10(std::abs(value))));
  return ShortestText(RoundedTo15Digits(RoundedToWhole(value * scale) / scale));
}

class SetRows : public PagePlanning {
 public:
  using PagePlanning::PagePlanning;

  PagePlan Run() {
    JudgeColumns();
    TakeIntoRows();
    return std::move(plan_);
  }

  [[nodiscard]] bool IsNear() const {
    if (columns_.front().role == ColumnRole::Member) {
      return true;
    }
    for (std::size_t row = 0; row < source_.table.RowCount(); ++row) {
      const std::optional<std::size_t> at = FindRow(row);
      const std::optional<NumberToStore> number = at ? NumberFor(row, {*at}, 1) : std::nullopt;
      if (number) {
        const double present = NumericValueOrInfinity(PartsOfCell(source_.rows[*at].at(1)).number);
        return AreNear(NumericValueOrInfinity(number->number), present);
      }
    }
    return false;
  }

 private:
  void TakeIntoRows() {
    for (const std::vector<std::string>& cells : source_.rows) {
      plan_.rows.push_back({{PastedRow::Change::Missing, cells, cells}, {}});
    }
    std::string unknown;
    for (std::size_t row = 0; row < source_.table.RowCount(); ++row) {
      const std::optional<std::size_t> at = FindRow(row);
      if (!at) {
        unknown += (unknown.empty() ? "" : ", ") + PointName(row);
      } else if (plan_.rows[*at].row.change != PastedRow::Change::Missing) {
        plan_.doubts.push_back(Where() + PointName(row) +
                               " is in the certificate twice. The first one is used.");
      } else {
        TakeRow(row, {*at});
      }
    }
    FinishDoubts();
    if (!unknown.empty()) {
      plan_.notes.push_back(Where() + "Not used, because the table has no such row: " + unknown +
                            ".");
    }
  }

  /// The row of the page with the point of a row of the certificate.
  [[nodiscard]] std::optional<std::size_t> FindRow(std::size_t row) const {
    const WrittenValue* point = ValueAt(row, 0);
    if (point == nullptr) {
      return std::nullopt;
    }
    const bool isMember = columns_.front().role == ColumnRole::Member;
    const std::optional<std::string> number =
        isMember ? std::nullopt : Converted(*point, columns_.front().unit);
    for (std::size_t i = 0; i < source_.rows.size(); ++i) {
      const std::string_view cell = Trim(source_.rows[i].at(0));
      if (isMember ? EqualsIgnoringCase(cell, Trim(point->text))
                   : number && ParseNumber(cell) == ParseNumber(*number)) {
        return i;
      }
    }
    return std::nullopt;
  }

  void TakeRow(std::size_t row, TableIndex at) {
    PlannedRow& planned = plan_.rows[at.value];
    planned.row.change = PastedRow::Change::Unchanged;
    for (std::size_t column = 1; column < columns_.size(); ++column) {
      const WrittenValue* value = ValueAt(row, column);
      if (value == nullptr) {
        continue;
      }
      const std::optional<NumberToStore> number = NumberFor(row, at, column);
      if (!number || std::isinf(*ParseNumber(number->number))) {
        Refuse(row, *value, " cannot be taken for " + columns_[column].caption);
        continue;
      }
      const Cell cell = {RowOf(at), static_cast<std::int16_t>(column)};
      std::string stored = Store(cell, *number);
      if (*ParseNumber(number->number) != 0 && HoldsZero(stored)) {
        Refuse(row, *value, " would be stored as " + Quoted(stored));
        continue;
      }
      DoubtImpossible(row, cell, *number);
      if (IsWritten(*value, columns_[column])) {
        NoteIfRounded(row, column, number->number, stored);
      } else if (LosesDigits(value->text, number->number, stored)) {
        NoteRounded(row, column, ShortNumber(number->number) + " " + number->unit, stored);
      }
      planned.taken.push_back(cell.column);
      if (source_.keepsTexts && !IsRounded(number->number, stored)) {
        stored = WithNumber(stored, number->number);
      }
      std::string& text = planned.row.after.at(column);
      if (text != stored) {
        planned.row.change = PastedRow::Change::Updated;
        text = stored;
      }
    }
  }

  void DoubtImpossible(std::size_t row, Cell cell, const NumberToStore& number) {
    const auto column = static_cast<std::size_t>(cell.column);
    const ModelColumn& of = columns_[column];
    const std::string& present = source_.rows.at(IndexOf(cell.row).value).at(column);
    const double value = NumericValueOrInfinity(number.number);
    std::string why;
    if (of.role == ColumnRole::Relative) {
      const int power = UnitFrom(number.unit).value_or(Unit{.power = -2}).power;
      why = WhyNoRelativeUncertainty(NumericValueOrInfinity(Shifted(number.number, power)));
    } else if (of.role == ColumnRole::Uncertainty) {
      why = WhyNoUncertainty(value);
    } else if (of.needsName && of.role == ColumnRole::Value) {
      why = WhyNoDissipation(value);
    } else if (IsOfMember(column)) {
      const double before = NumericValueOrInfinity(PartsOfCell(present).number);
      why = before == 0 || AreNear(value, before) ? std::string()
                                                  : "is not near " + present + " in the table";
    }
    DoubtValue(row, column, why);
  }

  /// Whether a column has the value of the capacitor or resistor itself, which is near its nominal
  /// value. Its inductance or reactance may be anything.
  [[nodiscard]] bool IsOfMember(std::size_t column) const {
    const auto isValue = [](const ModelColumn& each) { return each.role == ColumnRole::Value; };
    const auto first = std::ranges::find_if(columns_, isValue);
    const bool isFirst = first - columns_.begin() == static_cast<std::ptrdiff_t>(column);
    return isFirst && !UnitFrom("H")->IsLike(columns_[column].unit);
  }

  /// Whether a value is in a unit like that of its column, so that it needs no calculation.
  static bool IsWritten(const WrittenValue& value, const ModelColumn& column) {
    const std::optional<Unit> unit = UnitFrom(value.unit);
    return column.role != ColumnRole::Relative || !unit || unit->IsLike(column.unit);
  }

  [[nodiscard]] std::optional<NumberToStore> NumberFor(std::size_t row, TableIndex at,
                                                       std::size_t column) const {
    const WrittenValue* value = ValueAt(row, column);
    if (value == nullptr || !value->isNumber) {
      return std::nullopt;
    }
    const Cell cell = {RowOf(at), static_cast<std::int16_t>(column)};
    if (columns_[column].role == ColumnRole::Relative) {
      return RelativeFor(row, cell, *value);
    }
    const std::optional<CellAffixes> affixes = source_.data.AffixesOf(source_.page, cell, "");
    const std::optional<Unit> wanted =
        affixes && !Trim(affixes->after).empty() ? UnitFrom(Trim(affixes->after)) : Unit();
    std::optional<std::string> number;
    if (affixes && wanted) {
      number = Converted(*value, *wanted);
    }
    return number ? std::optional(NumberToStore{*number, {}}) : std::nullopt;
  }

  /// An uncertainty in ppm or per cent. Without such a unit of its own it gets that of the cell.
  [[nodiscard]] std::optional<NumberToStore> RelativeFor(std::size_t row, Cell cell,
                                                         const WrittenValue& value) const {
    const auto column = static_cast<std::size_t>(cell.column);
    const std::optional<Unit> unit = UnitFrom(value.unit);
    const std::vector<std::string> units = UnitsOf(source_.data, source_.page, cell.column);
    const std::string& present = source_.rows.at(IndexOf(cell.row).value).at(column);
    std::string chosen =
        ChosenUnit(units, EditedCellOf(source_.data, source_.page, cell, present).unit);
    if (unit && unit->special.empty() && unit->bases == Unit().bases && unit->power != 0) {
      chosen = ShownUnit(value.unit);
    }
    const Unit wanted = UnitFrom(chosen).value_or(Unit{.power = -2});
    if (!source_.data.AffixesOf(source_.page, cell, chosen)) {
      return std::nullopt;
    }
    if (std::optional<std::string> number = Converted(value, wanted)) {
      return NumberToStore{std::move(*number), chosen};
    }
    // It is in the unit of the value before it.
    const WrittenValue* measured = ValueAt(row, column - 1);
    const std::optional<std::string> numerator = unit ? Converted(value, *unit) : std::nullopt;
    const std::optional<std::string> denominator =
        measured != nullptr && unit ? Converted(*measured, *unit) : std::nullopt;
    if (!numerator || !denominator || measured->unit.empty()) {
      return std::nullopt;
    }
    const double ratio =
        std::abs(NumericValueOrInfinity(*numerator) / NumericValueOrInfinity(*denominator));
    if (!std::isfinite(ratio)) {
      return std::nullopt;
    }
    return NumberToStore{Shifted(ShortestText(ratio), -wanted.power), chosen};
  }

  void Refuse(std::size_t row, const WrittenValue& value, const std::string& why) {
    // The cell keeps its value, as if the certificate confirmed it.
    plan_.doubts.push_back(Refusal(row, value, why));
  }
};

}  // namespace

PagePlan PlanSetRows(const PageSource& source) {
  return SetRows(source).Run();
}

bool AreNearSetRows(const PageSource& source) {
  return SetRows(source).IsNear();
}

}  // namespace tarvell
