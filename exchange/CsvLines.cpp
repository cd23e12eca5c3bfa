// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvLines.h"

#include <cstddef>

#include "core/caldata/ClipboardTable.h"
#include "core/numbers/WrittenNumber.h"
#include "exchange/Units.h"
#include "exchange/Words.h"
#include "exchange/WrittenDate.h"

namespace tarvell {

namespace {

bool IsDate(std::string_view cell) {
  return DateFrom(cell, DateOrder::DayFirst) || DateFrom(cell, DateOrder::MonthFirst);
}

bool IsKeyLine(const DelimitedLine& line) {
  return line.Width() == 2 && KeyFieldOf(line.Cell(0));
}

}  // namespace

std::optional<NumberCell> NumberIn(std::string_view cell) {
  cell = WithoutReferenceMark(cell);
  const std::size_t last = cell.find_last_of("0123456789");
  if (last == std::string_view::npos) {
    return std::nullopt;
  }
  const NumberCell parts = {cell.substr(0, last + 1), WithoutBlanks(cell.substr(last + 1))};
  const bool isNumber = PlainNumber(parts.number, DecimalSign::Point) ||
                        PlainNumber(parts.number, DecimalSign::Comma);
  return isNumber && (parts.unit.empty() || UnitFrom(parts.unit)) ? std::optional(parts)
                                                                  : std::nullopt;
}

bool IsBlank(const DelimitedLine& line) {
  return line.Width() == 0;
}

bool IsDataLine(const DelimitedLine& line) {
  const std::size_t width = line.Width();
  if (width < 2 || line.Cell(0).empty()) {
    return false;
  }
  if (NumberIn(line.Cell(0))) {
    return true;
  }
  std::size_t numbers = 0;
  for (std::size_t column = 1; column < width; ++column) {
    const bool isNumber = NumberIn(line.Cell(column)).has_value();
    if (!isNumber && !line.Cell(column).empty()) {
      return false;
    }
    numbers += isNumber ? 1 : 0;
  }
  return numbers > 1 && !KeyFieldOf(line.Cell(0));
}

bool IsCaptionLine(const DelimitedLine& line) {
  if (line.Width() < 2 || IsKeyLine(line) || IsDataLine(line)) {
    return false;
  }
  for (std::size_t column = 0; column < line.Width(); ++column) {
    const std::string_view cell = line.Cell(column);
    const bool isKey = cell.ends_with(':') && KeyFieldOf(cell);
    if (isKey || (NumberIn(cell) && cell != "1") || IsDate(cell)) {
      return false;
    }
  }
  return true;
}

std::string_view UnitOnly(std::string_view cell) {
  if (cell.size() > 2 && (cell.front() == '[' || cell.front() == '(')) {
    cell = WithoutBlanks(cell.substr(1, cell.size() - 2));
  }
  // "% (k=2)"
  if (const std::size_t bracket = cell.find('(');
      bracket != std::string_view::npos && cell.find('=', bracket) != std::string_view::npos) {
    cell = WithoutBlanks(cell.substr(0, bracket));
  }
  return UnitFrom(cell) ? cell : std::string_view();
}

bool HasOnlyUnits(const DelimitedLine& line) {
  for (std::size_t column = 0; column < line.Width(); ++column) {
    if (!line.Cell(column).empty() && UnitOnly(line.Cell(column)).empty()) {
      return false;
    }
  }
  return true;
}

}  // namespace tarvell
