// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/PagePlan.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "core/caldata/CalPoints.h"
#include "core/caldata/CellNotices.h"
#include "core/caldata/EditedCell.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/TableRows.h"
#include "core/caldata/Uncertainty.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// A number in another unit; nothing where the units cannot be converted. A value without a unit,
/// or in one that is not known, is in the wanted one.
std::optional<std::string> Converted(const WrittenValue& value, const Unit& wanted) {
  if (!value.isNumber) {
    return std::nullopt;
  }
  if (value.unit.empty()) {
    return value.text;
  }
  const std::optional<Unit> unit = UnitFrom(value.unit);
  if (unit && !unit->IsLike(wanted)) {
    return std::nullopt;
  }
  const int power = unit ? unit->power - wanted.power : 0;
  const bool isPlain = value.text.find_first_not_of("-.0123456789") == std::string::npos;
  return power == 0 && isPlain ? value.text : Shifted(value.text, power);
}

std::string ShownValue(const WrittenValue& value) {
  const std::string unit = ShownUnit(value.unit);
  return value.text + (unit.empty() ? "" : " " + unit);
}

bool IsRounded(const std::string& number, std::string_view stored) {
  return ParseNumber(number) != ParseNumber(PartsOfCell(stored).number);
}

/// A cell's text with another number in it.
std::string WithNumber(std::string_view cell, const std::string& number) {
  const CellParts parts = PartsOfCell(cell);
  return std::string(parts.before) + number + std::string(parts.after);
}

/// The number that is to be stored in a cell, and the unit that its format needs for it.
struct CellNumber {
  std::string number;
  std::string unit;
};

/// Builds the plan of one page.
class Planning {
 public:
  explicit Planning(const PageSource& source)
      : source_(source), columns_(ModelColumns(source.model, source.data, source.page)) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const std::optional<ColumnSource>& from = source.match.at(i);
      values_.push_back(from ? &ValuesOf(source.table, *from, columns_[i]) : nullptr);
    }
    plan_.page = source.page;
    plan_.name = source.data.GetCalPageName(source.page);
    plan_.memberSerial = source.table.memberSerial;
  }

  PagePlan Run() {
    NoteUnusedColumns();
    DoubtUnknownUnits();
    DoubtRatios();
    if (HasPages(source_.model)) {
      TakeIntoRows();
    } else {
      TakePoints();
    }
    return std::move(plan_);
  }

  [[nodiscard]] bool IsNear() const {
    constexpr double kLess = 0.7;
    constexpr double kMore = 1.4;
    if (columns_.front().role == ColumnRole::Member) {
      return true;
    }
    for (std::size_t row = 0; row < source_.table.RowCount(); ++row) {
      const std::optional<std::size_t> at = FindRow(row);
      const std::optional<CellNumber> number = at ? NumberFor(row, {*at}, 1) : std::nullopt;
      if (number) {
        const double present = NumericValueOrInfinity(PartsOfCell(source_.rows[*at].at(1)).number);
        const double ratio = NumericValueOrInfinity(number->number) / present;
        return ratio > kLess && ratio < kMore;
      }
    }
    return false;
  }

 private:
  [[nodiscard]] const WrittenValue* ValueAt(std::size_t row, std::size_t column) const {
    return values_[column] == nullptr || row >= values_[column]->size() ? nullptr
                                                                        : &values_[column]->at(row);
  }

  void NoteUnusedColumns() {
    std::string unused;
    for (const ColumnSource& each : SourcesOf(source_.table)) {
      if (std::ranges::find(source_.match, std::optional(each)) == source_.match.end()) {
        unused += (unused.empty() ? "" : ", ") +
                  Quoted(SourceName(source_.table, each, source_.language));
      }
    }
    if (!unused.empty()) {
      plan_.notes.push_back(Where() + "These columns are not used: " + unused + ".");
    }
    for (const std::string& unit : UnknownUnits(source_.table, source_.match, source_.language)) {
      plan_.notes.push_back(Where() + unit);
    }
  }

  /// Only a user who chose such a column has it taken.
  void DoubtUnknownUnits() {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const std::string unit = values_[i] == nullptr ? std::string() : UnknownUnitIn(*values_[i]);
      if (!unit.empty()) {
        plan_.doubts.push_back(
            Where() + "The unit " + Quoted(unit) + " of the column " +
            Quoted(SourceName(source_.table, *source_.match.at(i), source_.language)) +
            " is not known. Its numbers are taken as they are, for " + columns_[i].caption + ".");
      }
    }
  }

  /// Numbers around 1 are taken as per cent only if the user says so.
  void DoubtRatios() {
    constexpr double kLargestRatio = 2;
    const auto isRatio = [](const WrittenValue& value) {
      return value.isNumber && value.unit.empty() &&
             std::abs(NumericValueOrInfinity(value.text)) < kLargestRatio;
    };
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const bool isPercent = columns_[i].role == ColumnRole::Value &&
                             columns_[i].unit.IsLike(Unit()) && columns_[i].unit.power == -2;
      if (isPercent && values_[i] != nullptr && std::ranges::all_of(*values_[i], isRatio)) {
        plan_.doubts.push_back(
            Where() + "The column " +
            Quoted(SourceName(source_.table, *source_.match.at(i), source_.language)) +
            " names no unit, and all its numbers are below 2, as ratios are. They would be taken "
            "as per cent. For ratios, multiply them by 100 first, or add the unit to the caption.");
      }
    }
  }

  [[nodiscard]] std::string Where() const {
    return plan_.name.empty() ? std::string() : plan_.name + ": ";
  }

  /// The point of a row of the certificate as messages name it: "50 MHz".
  [[nodiscard]] std::string PointName(std::size_t row) const {
    std::string name;
    for (std::size_t i = 0; i < columns_.size() && columns_[i].IsPoint(); ++i) {
      const WrittenValue* value = ValueAt(row, i);
      name += (name.empty() ? "" : ", ") + (value == nullptr ? "no point" : ShownValue(*value));
    }
    return name;
  }

  [[nodiscard]] std::string Refusal(std::size_t row, const WrittenValue& value,
                                    const std::string& why) const {
    const std::string shown = ShownValue(value);
    return Where() + PointName(row) + ": " +
           (shown.empty() ? "there is no value" : Quoted(shown) + why) + ".";
  }

  void Refuse(std::size_t row, const WrittenValue& value, const std::string& why) {
    plan_.notes.push_back(Refusal(row, value, why));
  }

  // --- Sensors and attenuators: the rows are points, and go through the paste of a whole table.

  void TakePoints() {
    std::string text;
    std::size_t points = 0;
    std::size_t written = 1;
    for (std::size_t row = 0; row < source_.table.RowCount(); ++row) {
      const std::string line = LineOf(row);
      points += line.empty() ? 0 : 1;
      if (points > kTableRows) {
        throw Error(ErrorKind::Type, "The table of the certificate (" + source_.table.where +
                                         ") has more than " + std::to_string(kTableRows) +
                                         " points, which is all that a data set has room for. "
                                         "Choose another table.");
      }
      // Refusals name the lines of the text: they are those of the file.
      for (const std::size_t place = LineInFile(row); written < place; ++written) {
        text += '\n';
      }
      text += line;
    }
    if (text.find_first_not_of('\n') == std::string::npos) {
      return;
    }
    MemoryGrid grid(static_cast<std::int16_t>(columns_.size()));
    for (std::vector<std::string> cells : source_.rows) {
      cells.resize(columns_.size());
      grid.InsertRow(EndOf(grid), cells);
    }
    const std::int16_t valueColumn = LastColumn();
    const PastedTable pasted = PastedTableFrom(
        grid, text, {source_.model.frequencyUnit},
        [&](const std::string& number) {
          return Store({kFirstDataRow, valueColumn}, {number, {}});
        },
        DecimalSign::Point);
    for (const PastedRow& row : pasted.rows) {
      plan_.rows.push_back({row, {}});
      if (row.change != PastedRow::Change::Missing) {
        plan_.rows.back().taken.push_back(valueColumn);
      }
    }
    if (source_.keepsTexts) {
      KeepTexts();
    }
  }

  /// The rows of a DCC, which are in no lines, are counted.
  [[nodiscard]] std::size_t LineInFile(std::size_t row) const {
    const std::vector<std::size_t>& lines = source_.table.rowLines;
    return row < lines.size() ? lines[row] : row + 1;
  }

  /// Gives the rows the texts that the data set had, where they are the same numbers.
  void KeepTexts() {
    for (PlannedRow& planned : plan_.rows) {
      PastedRow& row = planned.row;
      for (std::size_t from = 0; !planned.taken.empty() && from < source_.table.RowCount();
           ++from) {
        std::vector<std::string> texts;
        for (std::size_t column = 0; column < columns_.size(); ++column) {
          const WrittenValue* value = ValueAt(from, column);
          texts.push_back(value == nullptr ? std::string() : value->text);
        }
        if (std::ranges::equal(texts, row.after, [](const auto& one, const auto& other) {
              return ParseNumber(one) && ParseNumber(one) == ParseNumber(other);
            })) {
          row.after = texts;
          break;
        }
      }
      if (row.change == PastedRow::Change::Unchanged && row.after != row.before) {
        row.change = PastedRow::Change::Updated;
      }
    }
  }

  [[nodiscard]] std::int16_t LastColumn() const {
    return static_cast<std::int16_t>(columns_.size() - 1);
  }

  /// The numbers of a row in the units of the table, with tabs between them; "" for a row that
  /// cannot be taken.
  std::string LineOf(std::size_t row) {
    std::vector<std::string> numbers;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const WrittenValue* value = ValueAt(row, i);
      const std::optional<std::string> number =
          value == nullptr ? std::nullopt : Converted(*value, columns_[i].unit);
      if (!number) {
        // Without its row, the table would look as if the certificate did not have the point.
        plan_.doubts.push_back(Refusal(row, value == nullptr ? WrittenValue() : *value,
                                       " cannot be taken for " + columns_[i].caption));
        return {};
      }
      numbers.push_back(*number);
    }
    NoteRoundedPoint(row, numbers);
    std::string line;
    for (const std::string& number : numbers) {
      line += (line.empty() ? "" : "\t") + number;
    }
    return line;
  }

  void NoteRoundedPoint(std::size_t row, const std::vector<std::string>& numbers) {
    if (std::isinf(*ParseNumber(numbers.back()))) {
      return;
    }
    const std::string stored = Store({kFirstDataRow, LastColumn()}, {numbers.back(), {}});
    NoteIfRounded(row, columns_.size() - 1, numbers.back(), stored);
    if (columns_.front().role == ColumnRole::Frequency) {
      const double frequency = *ParseNumber(numbers.front());
      if (!std::isinf(frequency)) {
        NoteIfRounded(row, 0, numbers.front(),
                      SensorRow(frequency, source_.model.frequencyUnit).front());
      }
    }
  }

  void NoteIfRounded(std::size_t row, std::size_t column, const std::string& number,
                     const std::string& stored) {
    if (IsRounded(number, stored)) {
      plan_.rounded.push_back(Where() + PointName(row) + ": " + ShownValue(*ValueAt(row, column)) +
                              " becomes " + stored + ".");
    }
  }

  // --- Sets: the rows are fixed, and take values.

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
      const std::optional<CellNumber> number = NumberFor(row, at, column);
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
      // A relative uncertainty that was calculated always has more decimals than its cell.
      if (IsWritten(*value, columns_[column])) {
        NoteIfRounded(row, column, number->number, stored);
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

  /// Whether a value is in a unit like that of its column, so that it needs no calculation.
  static bool IsWritten(const WrittenValue& value, const ModelColumn& column) {
    const std::optional<Unit> unit = UnitFrom(value.unit);
    return column.role != ColumnRole::Relative || !unit || unit->IsLike(column.unit);
  }

  [[nodiscard]] std::optional<CellNumber> NumberFor(std::size_t row, TableIndex at,
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
    return number ? std::optional(CellNumber{*number, {}}) : std::nullopt;
  }

  /// An uncertainty in ppm or per cent. Without such a unit of its own it gets that of the cell.
  [[nodiscard]] std::optional<CellNumber> RelativeFor(std::size_t row, Cell cell,
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
      return CellNumber{std::move(*number), chosen};
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
    return CellNumber{Shifted(ShortestText(ratio), -wanted.power), chosen};
  }

  [[nodiscard]] std::string Store(Cell cell, const CellNumber& number) const {
    return source_.data.SetCalibrationDataFormat(source_.page, cell.column, cell.row.number,
                                                 number.number, number.unit);
  }

  const PageSource& source_;
  std::vector<ModelColumn> columns_;
  std::vector<const std::vector<WrittenValue>*> values_;  ///< of each column, nullptr for none
  PagePlan plan_;
};

}  // namespace

bool PagePlan::IsEmpty() const {
  return std::ranges::all_of(rows, [](const PlannedRow& row) { return row.taken.empty(); });
}

bool PagePlan::HasPlace(bool missingRemoved) const {
  const auto kept = std::ranges::count_if(rows, [&](const PlannedRow& row) {
    return !missingRemoved || row.row.change != PastedRow::Change::Missing;
  });
  return kept <= static_cast<std::ptrdiff_t>(kTableRows);
}

PagePlan PlanPage(const PageSource& source) {
  return Planning(source).Run();
}

bool IsNearPage(const PageSource& source) {
  return Planning(source).IsNear();
}

}  // namespace tarvell
