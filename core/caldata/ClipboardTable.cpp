// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/ClipboardTable.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "core/caldata/CellNotices.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::array<TableUnit, 9> kUnits = {{{"Hz", Quantity::Frequency},
                                              {"kHz", Quantity::Frequency, 1E3},
                                              {"MHz", Quantity::Frequency, 1E6},
                                              {"GHz", Quantity::Frequency, 1E9},
                                              {"%", Quantity::Percent},
                                              {"dB", Quantity::Decibel},
                                              {"THz", Quantity::Other},
                                              {"dBm", Quantity::Other},
                                              {"ppm", Quantity::Other}}};

/// Takes the cell at the beginning of `rest`. A spreadsheet puts a cell with line ends in quotes,
/// and doubles the quotes in it.
std::string TakeCell(std::string_view& rest, char separator) {
  constexpr char kQuote = '"';
  const std::string ends = std::string("\r\n") + separator;
  if (rest.starts_with(kQuote)) {
    std::string cell;
    for (std::size_t i = 1; i < rest.size(); ++i) {
      if (rest[i] != kQuote) {
        cell += rest[i];
      } else if (rest.substr(i + 1).starts_with(kQuote)) {
        cell += rest[i++];
      } else if (i + 1 == rest.size() || ends.find(rest[i + 1]) != std::string::npos) {
        rest.remove_prefix(i + 1);
        return cell;
      } else {
        break;
      }
    }
  }
  const std::size_t end = std::min(rest.find_first_of(ends), rest.size());
  std::string cell(rest.substr(0, end));
  rest.remove_prefix(end);
  return cell;
}

/// The lines that are not blank. Blank cells at their ends are left out.
std::vector<ClipboardLine> LinesOf(std::string_view rest) {
  // A text file may have semicolons, which no number holds.
  const char separator = rest.find('\t') == std::string_view::npos ? ';' : '\t';
  std::vector<ClipboardLine> lines;
  for (std::size_t number = 1; !rest.empty(); ++number) {
    ClipboardLine line = {number, {}};
    bool goesOn = true;
    while (goesOn) {
      line.cells.emplace_back(WithoutBlanks(TakeCell(rest, separator)));
      goesOn = rest.starts_with(separator);
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
  return first <= 2 && cell[first] >= '0' && cell[first] <= '9';
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

}  // namespace

std::string_view WithoutReferenceMark(std::string_view cell) {
  for (const std::string_view mark : {"(REF.)", "(REF)"}) {
    if (ToUpper(cell).ends_with(mark)) {
      return WithoutBlanks(WithoutLast(cell, mark.size()));
    }
  }
  return cell;
}

const TableUnit* FindUnit(std::string_view name) {
  // Only the case of one letter distinguishes millihertz from megahertz.
  static constexpr TableUnit kMillihertz = {"mHz", Quantity::Other};
  if (name == kMillihertz.name) {
    return &kMillihertz;
  }
  const auto found = std::ranges::find_if(
      kUnits, [&](const TableUnit& unit) { return EqualsIgnoringCase(unit.name, name); });
  return found == kUnits.end() ? nullptr : &*found;
}

std::string UnitNames(Quantity quantity) {
  return quantity == Quantity::Frequency ? "Hz, kHz, MHz or GHz"
         : quantity == Quantity::Percent ? "%"
                                         : "dB";
}

NumberWithUnit SplitNumber(std::string_view cell) {
  cell = WithoutReferenceMark(cell);
  const std::size_t last = cell.find_last_of("0123456789");
  if (last == std::string_view::npos) {
    return {cell};
  }
  const TableUnit* unit = FindUnit(WithoutBlanks(cell.substr(last + 1)));
  return unit == nullptr ? NumberWithUnit{cell} : NumberWithUnit{cell.substr(0, last + 1), unit};
}

ClipboardTable::ClipboardTable(std::string_view text, const PointColumns& columns)
    : columns_(columns) {
  std::vector<ClipboardLine> lines = LinesOf(text);
  const auto points = std::ranges::find_if(lines, [](const ClipboardLine& line) {
    return std::ranges::any_of(line.cells, BeginsLikeNumber);
  });
  captions_.assign(std::make_move_iterator(lines.begin()), std::make_move_iterator(points));
  lines_.assign(std::make_move_iterator(points), std::make_move_iterator(lines.end()));
}

void ClipboardTable::CheckColumns() const {
  std::size_t most = 0;
  for (const ClipboardLine& line : lines_) {
    if (line.cells.size() == columns_.Count()) {
      return;
    }
    most = std::max(most, line.cells.size());
  }
  const std::string all = columns_.IsSensor() ? "the frequency and the factor"
                                              : "the setting, the frequency and the value";
  const std::string copied =
      "The copied lines have " + std::to_string(most) + (most == 1 ? " column" : " columns");
  throw Error(ErrorKind::Type,
              most > columns_.Count()
                  ? copied + ". Copy only those of " + all + "."
                  : copied + ": one is missing. Copy those of " + all + ", or only the values.");
}

Quantity ClipboardTable::QuantityOf(std::size_t column) const {
  return column == FrequencyColumn() ? Quantity::Frequency
         : columns_.IsSensor()       ? Quantity::Percent
                                     : Quantity::Decibel;
}

const TableUnit* ClipboardTable::CaptionUnit(std::size_t column, PasteRefusals& refusals) const {
  const TableUnit* named = nullptr;
  for (const ClipboardLine& line : captions_) {
    if (column >= line.cells.size()) {
      continue;
    }
    const std::string& caption = line.cells[column];
    std::string_view foreign;
    bool isOwn = false;
    for (const std::string_view word : WordsOf(caption)) {
      const TableUnit* unit = FindUnit(word);
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
                       ", but this column is in " + UnitNames(QuantityOf(column)) + ".");
    }
  }
  return named;
}

std::size_t ClipboardTable::CountUnread(DecimalSign sign) const {
  std::size_t unread = 0;
  ForEachNumber([&](std::string_view number) { unread += PlainNumber(number, sign) ? 0 : 1; });
  return unread;
}

std::optional<TwoReadings> ClipboardTable::ReadTwoWays() const {
  // A number that only one sign fits decides for all: a table is written with one of them.
  const bool decides = CountUnread(DecimalSign::Point) != CountUnread(DecimalSign::Comma);
  return decides ? std::nullopt : FirstOfTwoReadings();
}

/// The first number that the two decimal signs make different.
std::optional<TwoReadings> ClipboardTable::FirstOfTwoReadings() const {
  std::optional<TwoReadings> found;
  ForEachNumber([&](std::string_view number) {
    const std::optional<std::string> point = PlainNumber(number, DecimalSign::Point);
    const std::optional<std::string> comma = PlainNumber(number, DecimalSign::Comma);
    if (found || !point || !comma || ParseNumber(*point) == ParseNumber(*comma)) {
      return;
    }
    const bool hasPoint = number.find('.') != std::string_view::npos;
    found =
        TwoReadings{std::string(number), hasPoint ? DecimalSign::Point : DecimalSign::Comma,
                    Normalised(hasPoint ? *point : *comma), Normalised(hasPoint ? *comma : *point)};
  });
  return found;
}

void ClipboardTable::ForEachNumber(const std::function<void(std::string_view number)>& act) const {
  for (const ClipboardLine& line : lines_) {
    for (const std::string& cell : line.cells) {
      act(SplitNumber(cell).number);
    }
  }
}

bool IsPointTable(std::string_view text) {
  return std::ranges::any_of(LinesOf(text),
                             [](const ClipboardLine& line) { return line.cells.size() > 1; });
}

std::optional<TwoReadings> ReadTwoWays(std::string_view text, const PointColumns& columns) {
  return ClipboardTable(text, columns).ReadTwoWays();
}

}  // namespace tarvell
