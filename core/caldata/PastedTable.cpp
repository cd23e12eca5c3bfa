// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/PastedTable.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "core/caldata/CalPoints.h"
#include "core/caldata/CellNotices.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/TableRows.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// A table that repeats each point has fewer lines.
constexpr std::size_t kLineLimit = 4 * kTableRows;

/// A point of the clipboard: its line, where it belongs, and the number to store.
struct Point {
  std::size_t line = 0;
  double frequency = 0;
  AttenuatorPoint attenuator = {};  ///< of an attenuator
  std::string value;
};

/// Puts the points of the clipboard into a copy of the table.
class Paste {
 public:
  Paste(const CalDataGrid& grid, const ClipboardTable& table, const PointColumns& columns,
        const StoreValue& store, const RefusalWords& words)
      : table_(table),
        columns_(columns),
        store_(store),
        grid_(grid.ColumnCount()),
        refusals_(words) {
    for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
      std::vector<std::string> cells;
      for (std::int16_t column = 0; column < grid.ColumnCount(); ++column) {
        cells.push_back(grid.TextOf({row, column}));
      }
      grid_.InsertRow(row, cells);
      taken_.rows.push_back({PastedRow::Change::Missing, cells, cells});
      sources_.emplace_back();
    }
  }

  PastedTable Take(DecimalSign sign) {
    taken_.sign = sign;
    for (std::size_t column = 0; column < columns_.Count(); ++column) {
      units_.push_back(table_.CaptionUnit(column, refusals_));
    }
    const TableUnit* frequencyUnit = units_[table_.FrequencyColumn()];
    taken_.isUnitNamed = frequencyUnit != nullptr;
    taken_.frequencyUnit = frequencyUnit != nullptr ? frequencyUnit->name : UnitOfTable().name;
    for (const ClipboardLine& line : table_.Lines()) {
      TakeLineOf(line);
    }
    refusals_.ThrowIfAny();
    taken_.ownUnits = OwnUnits();
    return std::move(taken_);
  }

 private:
  /// The line of the clipboard from which a row was taken, 0 for none, and what it stores.
  struct TakenFrom {
    std::size_t line = 0;
    std::string stored;
  };

  [[nodiscard]] PastedTable::OwnUnits OwnUnits() const {
    const auto own = std::ranges::count_if(table_.Lines(), [&](const ClipboardLine& line) {
      return SplitNumber(line.cells[table_.FrequencyColumn()]).unit != nullptr;
    });
    return own == 0                            ? PastedTable::OwnUnits::None
           : own == std::ssize(table_.Lines()) ? PastedTable::OwnUnits::All
                                               : PastedTable::OwnUnits::Some;
  }

  [[nodiscard]] const TableUnit& UnitOfTable() const {
    return *FindUnit(columns_.IsSensor() ? columns_.frequencyUnit : "Hz");
  }

  void TakeLineOf(const ClipboardLine& line) {
    if (line.cells.size() > columns_.Count()) {
      refusals_.Add(line.number, "it has " + std::to_string(line.cells.size()) +
                                     " columns, and a table of points has " +
                                     std::to_string(columns_.Count()) + ".");
      return;
    }
    std::vector<std::optional<std::string>> numbers;
    for (std::size_t column = 0; column < columns_.Count(); ++column) {
      numbers.push_back(
          NumberIn(line, column, column < line.cells.size() ? line.cells[column] : std::string()));
    }
    if (!std::ranges::all_of(numbers, [](const auto& number) { return number.has_value(); })) {
      return;
    }
    const std::size_t frequencyColumn = table_.FrequencyColumn();
    Point point = {.line = line.number, .value = *numbers.back()};
    if (!ReadFrequency(line, *numbers[frequencyColumn], point.frequency) ||
        (!columns_.IsSensor() && !ReadSetting(line, *numbers.front(), point.attenuator.setting))) {
      return;
    }
    point.attenuator.frequency = point.frequency;
    Place(line, point);
  }

  /// The number of a cell; nothing, and a refusal, when there is none.
  std::optional<std::string> NumberIn(const ClipboardLine& line, std::size_t column,
                                      const std::string& cell) {
    if (cell.empty()) {
      refusals_.Add(line.number, column, "there is no value.");
      return std::nullopt;
    }
    const NumberWithUnit written = SplitNumber(cell);
    if (written.unit != nullptr && written.unit->quantity != table_.QuantityOf(column)) {
      refusals_.Add(line.number, column,
                    Quoted(cell) + " is not in " + UnitNames(table_.QuantityOf(column)) + ".");
      return std::nullopt;
    }
    std::optional<std::string> number = PlainNumber(written.number, taken_.sign);
    if (!number) {
      refusals_.Add(line.number, column,
                    Quoted(cell) + " is not a number with a decimal " +
                        (taken_.sign == DecimalSign::Point ? "point." : "comma."));
    } else if (std::isinf(*ParseNumber(*number))) {
      refusals_.Add(line.number, column, Quoted(cell) + " is too large to be calculated with.");
      return std::nullopt;
    }
    return number;
  }

  /// A frequency in the table's unit.
  bool ReadFrequency(const ClipboardLine& line, const std::string& number, double& frequency) {
    const std::size_t column = table_.FrequencyColumn();
    const std::string& cell = line.cells[column];
    const TableUnit* own = SplitNumber(cell).unit;
    const TableUnit& unit = own != nullptr              ? *own
                            : units_[column] != nullptr ? *units_[column]
                                                        : UnitOfTable();
    frequency = *ParseNumber(number) * unit.scale / UnitOfTable().scale;
    if (std::isinf(frequency)) {
      refusals_.Add(line.number, column, Quoted(cell) + " is too large to be calculated with.");
      return false;
    }
    frequency = RoundedTo15Digits(frequency);
    return true;
  }

  bool ReadSetting(const ClipboardLine& line, const std::string& number, std::int16_t& setting) {
    const double value = *ParseNumber(number);
    if (value != std::floor(value) || std::abs(value) > std::numeric_limits<std::int16_t>::max()) {
      refusals_.Add(line.number, 0,
                    Quoted(line.cells.front()) + " is not a setting: settings are whole numbers.");
      return false;
    }
    setting = static_cast<std::int16_t>(value);
    return true;
  }

  void Place(const ClipboardLine& line, const Point& point) {
    const std::string stored = store_(point.value);
    if (*ParseNumber(point.value) != 0 && HoldsZero(stored)) {
      refusals_.Add(line.number, columns_.Count() - 1,
                    Quoted(line.cells.back()) + " would be stored as " + Quoted(stored) + ".");
      return;
    }
    const std::optional<GridRow> known =
        columns_.IsSensor() ? FindSensorPoint(grid_, point.frequency, columns_.frequencyUnit)
                            : FindAttenuatorPoint(grid_, point.attenuator);
    if (known) {
      Update(point, *known, stored);
      return;
    }
    const PointPosition position =
        columns_.IsSensor() ? PlaceSensorPoint(grid_, point.frequency, columns_.frequencyUnit)
                            : PlaceAttenuatorPoint(grid_, point.attenuator);
    if (position.place != PointPlace::Row) {
      RefusePoint(line, position.place, point);
      return;
    }
    std::vector<std::string> cells = columns_.IsSensor()
                                         ? SensorRow(point.frequency, columns_.frequencyUnit)
                                         : AttenuatorRow(point.attenuator);
    cells.back() = stored;
    grid_.InsertRow(position.row, cells);
    const auto place = static_cast<std::ptrdiff_t>(IndexOf(position.row).value);
    taken_.rows.insert(taken_.rows.begin() + place, {PastedRow::Change::Added, {}, cells});
    sources_.insert(sources_.begin() + place, {point.line, stored});
  }

  void Update(const Point& point, GridRow at, const std::string& stored) {
    PastedRow& row = taken_.rows[IndexOf(at).value];
    TakenFrom& source = sources_[IndexOf(at).value];
    if (source.line != 0) {
      // A certificate may give the reference point once more among the others.
      if (source.stored != stored) {
        refusals_.Add(point.line, "line " + std::to_string(source.line) +
                                      " has the same point with another value.");
      }
      return;
    }
    source = {point.line, stored};
    const bool isSame = ParseNumber(row.before.back()) == ParseNumber(point.value);
    row.after.back() = isSame ? row.before.back() : stored;
    row.change = row.after.back() == row.before.back() ? PastedRow::Change::Unchanged
                                                       : PastedRow::Change::Updated;
  }

  void RefusePoint(const ClipboardLine& line, PointPlace place, const Point& point) {
    const bool isSetting = !columns_.IsSensor() && point.attenuator.setting < 0;
    const std::size_t column = isSetting ? 0 : table_.FrequencyColumn();
    refusals_.Add(line.number, column,
                  Quoted(line.cells[column]) + (place == PointPlace::BelowZero
                                                    ? " is below zero."
                                                    : " is too small: its row would show zero."));
  }

  const ClipboardTable& table_;
  PointColumns columns_;
  const StoreValue& store_;
  MemoryGrid grid_;
  PastedTable taken_;
  std::vector<TakenFrom> sources_;       ///< of each row
  std::vector<const TableUnit*> units_;  ///< that the captions name
  PasteRefusals refusals_;
};

}  // namespace

std::size_t PastedTable::Count(PastedRow::Change change) const {
  return static_cast<std::size_t>(std::ranges::count(rows, change, &PastedRow::change));
}

bool PastedTable::HasPlace(bool missingRemoved) const {
  return rows.size() - (missingRemoved ? Count(PastedRow::Change::Missing) : 0) <= kTableRows;
}

PastedTable PastedTableFrom(const CalDataGrid& grid, std::string_view text,
                            const PointColumns& columns, const StoreValue& store,
                            std::optional<DecimalSign> sign, const RefusalWords& words) {
  const ClipboardTable table(text, columns);
  if (table.Lines().empty()) {
    throw Error(ErrorKind::Type,
                "There are no numbers to paste. Copy the points and their values, then paste "
                "again.");
  }
  table.CheckColumns();
  const std::string room =
      " points. A table has room for " + std::to_string(kTableRows) + ". Copy fewer.";
  if (table.Lines().size() > kLineLimit) {
    throw Error(ErrorKind::Index,
                "What is to be pasted has " + std::to_string(table.Lines().size()) + room);
  }
  const std::optional<TwoReadings> unclear = table.ReadTwoWays();
  if (unclear && !sign) {
    throw Error(ErrorKind::Type, Quoted(unclear->written) + " can be read as " +
                                     unclear->ifDecimals + " or as " + unclear->ifThousands + ".");
  }
  const bool isPoint =
      unclear ? *sign == DecimalSign::Point
              : table.CountUnread(DecimalSign::Point) <= table.CountUnread(DecimalSign::Comma);
  PastedTable pasted = Paste(grid, table, columns, store, words)
                           .Take(isPoint ? DecimalSign::Point : DecimalSign::Comma);
  if (!pasted.HasPlace(true)) {
    throw Error(ErrorKind::Index,
                "What is to be pasted has " +
                    std::to_string(pasted.rows.size() - pasted.Count(PastedRow::Change::Missing)) +
                    room);
  }
  return pasted;
}

}  // namespace tarvell
