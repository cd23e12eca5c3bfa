// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/PastedTable.h"

#include <algorithm>
#include <array>
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

/// So many points that cannot be taken are named in sentences of their own, the others in a list.
constexpr std::size_t kSentences = 8;
/// A table that repeats each point has fewer lines.
constexpr std::size_t kMostLines = 4 * kTableRows;

enum class Quantity { Frequency, Percent, Decibel, Other };

struct Unit {
  std::string_view name;
  Quantity quantity;
  double scale = 1;  ///< in Hz
};
constexpr std::array<Unit, 9> kUnits = {{{"Hz", Quantity::Frequency},
                                         {"kHz", Quantity::Frequency, 1E3},
                                         {"MHz", Quantity::Frequency, 1E6},
                                         {"GHz", Quantity::Frequency, 1E9},
                                         {"%", Quantity::Percent},
                                         {"dB", Quantity::Decibel},
                                         {"THz", Quantity::Other},
                                         {"dBm", Quantity::Other},
                                         {"ppm", Quantity::Other}}};

const Unit* FindUnit(std::string_view name) {
  const auto found = std::ranges::find_if(
      kUnits, [&](const Unit& unit) { return EqualsIgnoringCase(unit.name, name); });
  return found == kUnits.end() ? nullptr : &*found;
}

std::string UnitsOf(Quantity quantity) {
  return quantity == Quantity::Frequency ? "Hz, kHz, MHz or GHz"
         : quantity == Quantity::Percent ? "%"
                                         : "dB";
}

/// The first number of rows of the clipboard's table is 1, as in the spreadsheet's selection.
struct Line {
  std::size_t number = 0;
  std::vector<std::string> cells;
};

/// Takes the cell at the beginning of `rest`. A spreadsheet puts a cell with line ends in quotes,
/// and doubles the quotes in it.
std::string TakeCell(std::string_view& rest) {
  constexpr char kQuote = '"';
  constexpr std::string_view kEnds = "\t\r\n";
  if (rest.starts_with(kQuote)) {
    std::string cell;
    for (std::size_t i = 1; i < rest.size(); ++i) {
      if (rest[i] != kQuote) {
        cell += rest[i];
      } else if (rest.substr(i + 1).starts_with(kQuote)) {
        cell += rest[i++];
      } else if (i + 1 == rest.size() || kEnds.find(rest[i + 1]) != std::string_view::npos) {
        rest.remove_prefix(i + 1);
        return cell;
      } else {
        break;
      }
    }
  }
  const std::size_t end = std::min(rest.find_first_of(kEnds), rest.size());
  std::string cell(rest.substr(0, end));
  rest.remove_prefix(end);
  return cell;
}

/// The lines that are not blank. Blank cells at their ends are left out.
std::vector<Line> LinesOf(std::string_view rest) {
  std::vector<Line> lines;
  for (std::size_t number = 1; !rest.empty(); ++number) {
    Line line = {number, {}};
    bool goesOn = true;
    while (goesOn) {
      line.cells.emplace_back(WithoutBlanks(TakeCell(rest)));
      goesOn = rest.starts_with('\t');
      rest.remove_prefix(goesOn ? 1 : 0);
    }
    (void)TakeLine(rest);
    while (!line.cells.empty() && line.cells.back().empty()) {
      line.cells.pop_back();
    }
    if (!line.cells.empty()) {
      lines.push_back(std::move(line));
    }
  }
  return lines;
}

bool BeginsLikeNumber(std::string_view cell) {
  constexpr std::string_view kMinusSign = "\u2212";
  if (cell.starts_with(kMinusSign)) {
    cell.remove_prefix(kMinusSign.size());
  }
  const std::size_t first = cell.find_first_not_of("+-.,");
  return first <= 2 && first != std::string_view::npos && cell[first] >= '0' && cell[first] <= '9';
}

/// A number with the unit after it.
struct Written {
  std::string_view number;
  const Unit* unit = nullptr;  ///< nullptr for none
};

/// A certificate may mark the reference point, as the data file does.
std::string_view WithoutReferenceMark(std::string_view cell) {
  for (const std::string_view mark : {"(REF.)", "(REF)"}) {
    if (ToUpper(cell).ends_with(mark)) {
      return WithoutBlanks(WithoutLast(cell, mark.size()));
    }
  }
  return cell;
}

Written Parsed(std::string_view cell) {
  cell = WithoutReferenceMark(cell);
  const std::size_t last = cell.find_last_of("0123456789");
  if (last == std::string_view::npos) {
    return {cell};
  }
  const Unit* unit = FindUnit(WithoutBlanks(cell.substr(last + 1)));
  return unit == nullptr ? Written{cell} : Written{cell.substr(0, last + 1), unit};
}

/// The words of a caption that may be units.
std::vector<std::string_view> WordsOf(std::string_view caption) {
  const auto isPart = [](char c) {
    return c == '%' || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           static_cast<unsigned char>(c) > 0x7F;
  };
  std::vector<std::string_view> words;
  while (true) {
    const auto begin = std::ranges::find_if(caption, isPart);
    if (begin == caption.end()) {
      return words;
    }
    caption.remove_prefix(static_cast<std::size_t>(begin - caption.begin()));
    const auto end = std::ranges::find_if_not(caption, isPart);
    words.push_back(caption.substr(0, static_cast<std::size_t>(end - caption.begin())));
    caption.remove_prefix(words.back().size());
  }
}

/// The cells that cannot be taken.
class Refusals {
 public:
  void Add(std::size_t line, const std::string& sentence) {
    Add("Line " + std::to_string(line), sentence);
  }
  void Add(std::size_t line, std::size_t column, const std::string& sentence) {
    Add("Line " + std::to_string(line) + ", column " + std::to_string(column + 1), sentence);
  }

  void ThrowIfAny() const {
    if (count_ == 0) {
      return;
    }
    throw Error(ErrorKind::Type,
                sentences_ +
                    (others_.empty() ? "" : "These cannot be taken either: " + others_ + ".\n") +
                    "\nCorrect them in the spreadsheet, then copy and paste again.");
  }

 private:
  void Add(const std::string& where, const std::string& sentence) {
    if (++count_ <= kSentences) {
      sentences_ += where + ": " + sentence + "\n";
    } else {
      others_ += (others_.empty() ? "" : "; ") + where;
    }
  }

  std::size_t count_ = 0;
  std::string sentences_;
  std::string others_;
};

/// The clipboard's table: its points, and the units that its captions name.
class ClipboardTable {
 public:
  ClipboardTable(std::string_view text, const PointColumns& columns) : columns_(columns) {
    std::vector<Line> lines = LinesOf(text);
    const auto points = std::ranges::find_if(
        lines, [](const Line& line) { return std::ranges::any_of(line.cells, BeginsLikeNumber); });
    captions_.assign(std::make_move_iterator(lines.begin()), std::make_move_iterator(points));
    lines_.assign(std::make_move_iterator(points), std::make_move_iterator(lines.end()));
  }

  [[nodiscard]] const std::vector<Line>& Lines() const { return lines_; }

  [[nodiscard]] Quantity QuantityOf(std::size_t column) const {
    return column == FrequencyColumn() ? Quantity::Frequency
           : columns_.IsSensor()       ? Quantity::Percent
                                       : Quantity::Decibel;
  }
  [[nodiscard]] std::size_t FrequencyColumn() const { return columns_.Count() - 2; }

  /// The unit that the captions name for a column, nullptr for none.
  const Unit* CaptionUnit(std::size_t column, Refusals& refusals) const {
    const Unit* named = nullptr;
    for (const Line& line : captions_) {
      if (column >= line.cells.size()) {
        continue;
      }
      const std::string& caption = line.cells[column];
      std::string_view foreign;
      bool isOwn = false;
      for (const std::string_view word : WordsOf(caption)) {
        const Unit* unit = FindUnit(word);
        if (unit != nullptr && unit->quantity == QuantityOf(column)) {
          if (named != nullptr && named != unit) {
            refusals.Add(line.number, column,
                         "the captions name both " + std::string(named->name) + " and " +
                             std::string(unit->name) + ". Leave the right unit.");
          }
          named = unit;
          isOwn = true;
        } else if (unit != nullptr || ToUpper(word).ends_with("HZ")) {
          foreign = word;
        }
      }
      if (!foreign.empty() && !isOwn) {
        refusals.Add(line.number, column,
                     Quoted(caption) + " names the unit " + std::string(foreign) +
                         ", but this column is in " + UnitsOf(QuantityOf(column)) + ".");
      }
    }
    return named;
  }

  /// How many numbers cannot be read with this decimal sign.
  [[nodiscard]] std::size_t CountUnread(DecimalSign sign) const {
    std::size_t unread = 0;
    ForEachNumber([&](std::string_view number) { unread += PlainNumber(number, sign) ? 0 : 1; });
    return unread;
  }

  /// The first number that the two decimal signs make different.
  [[nodiscard]] std::optional<TwoReadings> FirstOfTwoReadings() const {
    std::optional<TwoReadings> found;
    ForEachNumber([&](std::string_view number) {
      const std::optional<std::string> point = PlainNumber(number, DecimalSign::Point);
      const std::optional<std::string> comma = PlainNumber(number, DecimalSign::Comma);
      if (found || !point || !comma || ParseNumber(*point) == ParseNumber(*comma)) {
        return;
      }
      const bool hasPoint = number.find('.') != std::string_view::npos;
      found = TwoReadings{std::string(number), hasPoint ? DecimalSign::Point : DecimalSign::Comma,
                          Normalised(hasPoint ? *point : *comma),
                          Normalised(hasPoint ? *comma : *point)};
    });
    return found;
  }

 private:
  void ForEachNumber(const std::function<void(std::string_view number)>& act) const {
    for (const Line& line : lines_) {
      for (const std::string& cell : line.cells) {
        act(Parsed(cell).number);
      }
    }
  }

  PointColumns columns_;
  std::vector<Line> captions_;
  std::vector<Line> lines_;
};

std::optional<TwoReadings> TwoReadingsOf(const ClipboardTable& table) {
  // A number that only one sign fits decides for all: a table is written with one of them.
  const bool decides =
      table.CountUnread(DecimalSign::Point) != table.CountUnread(DecimalSign::Comma);
  return decides ? std::nullopt : table.FirstOfTwoReadings();
}

/// A point of the clipboard: its line, the cells of a new row, and the row's number to store.
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
        const StoreValue& store)
      : table_(table), columns_(columns), store_(store), grid_(grid.ColumnCount()) {
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
    const Unit* frequencyUnit = units_[table_.FrequencyColumn()];
    taken_.isUnitNamed = frequencyUnit != nullptr;
    taken_.frequencyUnit = frequencyUnit != nullptr ? frequencyUnit->name : TableUnit().name;
    for (const Line& line : table_.Lines()) {
      TakeLineOf(line);
    }
    refusals_.ThrowIfAny();
    return std::move(taken_);
  }

 private:
  /// The line of the clipboard from which a row was taken, 0 for none, and what it stores.
  struct TakenFrom {
    std::size_t line = 0;
    std::string stored;
  };

  [[nodiscard]] const Unit& TableUnit() const {
    return *FindUnit(columns_.IsSensor() ? columns_.frequencyUnit : "Hz");
  }

  void TakeLineOf(const Line& line) {
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
  std::optional<std::string> NumberIn(const Line& line, std::size_t column,
                                      const std::string& cell) {
    if (cell.empty()) {
      refusals_.Add(line.number, column, "there is no value.");
      return std::nullopt;
    }
    const Written written = Parsed(cell);
    if (written.unit != nullptr && written.unit->quantity != table_.QuantityOf(column)) {
      refusals_.Add(line.number, column,
                    Quoted(cell) + " is not in " + UnitsOf(table_.QuantityOf(column)) + ".");
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
  bool ReadFrequency(const Line& line, const std::string& number, double& frequency) {
    const std::size_t column = table_.FrequencyColumn();
    const std::string& cell = line.cells[column];
    const Unit* own = Parsed(cell).unit;
    const Unit& unit = own != nullptr              ? *own
                       : units_[column] != nullptr ? *units_[column]
                                                   : TableUnit();
    frequency = *ParseNumber(number) * unit.scale / TableUnit().scale;
    if (std::isinf(frequency)) {
      refusals_.Add(line.number, column, Quoted(cell) + " is too large to be calculated with.");
      return false;
    }
    frequency = RoundedTo15Digits(frequency);
    return true;
  }

  bool ReadSetting(const Line& line, const std::string& number, std::int16_t& setting) {
    const double value = *ParseNumber(number);
    if (value != std::floor(value) || std::abs(value) > std::numeric_limits<std::int16_t>::max()) {
      refusals_.Add(line.number, 0,
                    Quoted(line.cells.front()) + " is not a setting: settings are whole numbers.");
      return false;
    }
    setting = static_cast<std::int16_t>(value);
    return true;
  }

  void Place(const Line& line, const Point& point) {
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

  void RefusePoint(const Line& line, PointPlace place, const Point& point) {
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
  std::vector<TakenFrom> sources_;  ///< of each row
  std::vector<const Unit*> units_;  ///< that the captions name
  Refusals refusals_;
};

}  // namespace

bool IsPointTable(std::string_view text, const PointColumns& columns) {
  return std::ranges::any_of(
      LinesOf(text), [&](const Line& line) { return line.cells.size() >= columns.Count(); });
}

std::optional<TwoReadings> ReadTwoWays(std::string_view text, const PointColumns& columns) {
  return TwoReadingsOf(ClipboardTable(text, columns));
}

std::size_t PastedTable::Count(PastedRow::Change change) const {
  return static_cast<std::size_t>(std::ranges::count(rows, change, &PastedRow::change));
}

bool PastedTable::HasPlace(bool missingRemoved) const {
  return rows.size() - (missingRemoved ? Count(PastedRow::Change::Missing) : 0) <= kTableRows;
}

PastedTable PastedTableFrom(const CalDataGrid& grid, std::string_view text,
                            const PointColumns& columns, const StoreValue& store,
                            std::optional<DecimalSign> sign) {
  const ClipboardTable table(text, columns);
  if (table.Lines().empty()) {
    throw Error(ErrorKind::Type,
                "There are no numbers to paste. Copy the points and their values, then paste "
                "again.");
  }
  const std::string room =
      " points. A table has room for " + std::to_string(kTableRows) + ". Copy fewer.";
  if (table.Lines().size() > kMostLines) {
    throw Error(ErrorKind::Index,
                "What is to be pasted has " + std::to_string(table.Lines().size()) + room);
  }
  const std::optional<TwoReadings> unclear = TwoReadingsOf(table);
  if (unclear && !sign) {
    throw Error(ErrorKind::Type, Quoted(unclear->written) + " can be read as " +
                                     unclear->ifDecimals + " or as " + unclear->ifThousands + ".");
  }
  const bool isPoint =
      unclear ? *sign == DecimalSign::Point
              : table.CountUnread(DecimalSign::Point) <= table.CountUnread(DecimalSign::Comma);
  PastedTable pasted =
      Paste(grid, table, columns, store).Take(isPoint ? DecimalSign::Point : DecimalSign::Comma);
  if (!pasted.HasPlace(true)) {
    throw Error(ErrorKind::Index,
                "What is to be pasted has " +
                    std::to_string(pasted.rows.size() - pasted.Count(PastedRow::Change::Missing)) +
                    room);
  }
  return pasted;
}

}  // namespace tarvell
