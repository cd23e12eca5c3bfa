// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvSign.h"

#include <algorithm>
#include <string>

#include "core/numbers/Numbers.h"
#include "core/text/Text.h"
#include "exchange/CaptionUnit.h"
#include "exchange/CsvColumns.h"
#include "exchange/CsvLines.h"
#include "exchange/ModelColumns.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

enum class Kind { Value, Other, NoValue };

Kind KindOf(const std::string& caption, bool isSerial, bool hasUnits) {
  const std::string folded = Folded(caption);
  const std::string unit = UnitOfCaption(caption);
  // One letter, as in "Serial number (S)", is more often something else.
  const bool isUnitSure = unit.size() > 1 || unit == "%";
  if (isUnitSure || NamesMeasured(folded) || NamesNominal(folded) || NamesUncertainty(folded)) {
    return Kind::Value;
  }
  if (isSerial || NamesNoValue(folded)) {
    return Kind::NoValue;
  }
  return hasUnits || NamesQuantity(folded) ? Kind::Value : Kind::Other;
}

/// What each column holds. The lines may differ much in their widths.
std::vector<Kind> KindsOf(const std::vector<DelimitedLine>& lines, const TablePlace& table) {
  std::vector<bool> hasUnits;
  for (const std::size_t row : table.rows) {
    const DelimitedLine& line = lines[row];
    hasUnits.resize(std::max(hasUnits.size(), line.Width()));
    for (std::size_t column = 0; column < line.Width(); ++column) {
      const std::optional<NumberCell> cell = NumberIn(line.Cell(column));
      hasUnits[column] = hasUnits[column] || (cell && !cell->unit.empty());
    }
  }
  std::vector<Kind> kinds;
  for (std::size_t column = 0; column < hasUnits.size(); ++column) {
    kinds.push_back(
        KindOf(CaptionOf(lines, table, column), column == table.serialColumn, hasUnits[column]));
  }
  return kinds;
}

}  // namespace

void CsvSign::Numbers::Add(std::string_view number, std::size_t line) {
  const std::optional<std::string> point = PlainNumber(number, DecimalSign::Point);
  const std::optional<std::string> comma = PlainNumber(number, DecimalSign::Comma);
  unreadPoint += point ? 0 : 1;
  unreadComma += comma ? 0 : 1;
  if (std::string& only = point ? withPoint : withComma; point.has_value() != comma.has_value()) {
    only =
        only.empty() ? Quoted(std::string(number)) + " (line " + std::to_string(line) + ")" : only;
  }
  if (!first && point && comma && ParseNumber(*point) != ParseNumber(*comma)) {
    first = ReadingQuestion{ReadingQuestion::About::DecimalSign, std::string(number),
                            Normalised(*point), Normalised(*comma)};
  }
}

void CsvSign::Add(const std::vector<DelimitedLine>& lines, const TablePlace& table) {
  const std::vector<Kind> kinds = KindsOf(lines, table);
  for (const std::size_t row : table.rows) {
    for (std::size_t column = 0; column < lines[row].Width(); ++column) {
      const std::optional<NumberCell> cell = NumberIn(lines[row].Cell(column));
      if (cell && kinds[column] != Kind::NoValue) {
        hasComma_ = hasComma_ || cell->number.find(',') != std::string_view::npos;
        (kinds[column] == Kind::Value ? values_ : others_).Add(cell->number, lines[row].number);
      }
    }
  }
}

std::optional<DecimalSign> CsvSign::DecidedBy(const Numbers& numbers) const {
  // Who writes a decimal comma does not separate cells by commas, except with quotes.
  const std::size_t unreadComma = numbers.unreadComma + (separator_ == ',' && !hasComma_ ? 1 : 0);
  const bool isDecided = numbers.unreadPoint != unreadComma;
  return isDecided ? std::optional(numbers.unreadPoint < unreadComma ? DecimalSign::Point
                                                                     : DecimalSign::Comma)
                   : std::nullopt;
}

std::optional<DecimalSign> CsvSign::Decided() const {
  const std::optional<DecimalSign> decided = DecidedBy(values_);
  return decided || values_.first ? decided : DecidedBy(others_);
}

DecimalSign CsvSign::Sign(std::optional<DecimalSign> chosen) const {
  return Decided().value_or(chosen.value_or(DecimalSign::Point));
}

std::string CsvSign::Mixed() const {
  return values_.withComma.empty() || values_.withPoint.empty()
             ? std::string()
             : "The values have different decimal signs: " + values_.withComma +
                   " has a comma, and " + values_.withPoint +
                   " a point. Values with the other sign than most are not read. Write all with "
                   "the same one.";
}

std::optional<ReadingQuestion> CsvSign::Question() const {
  return Decided() ? std::nullopt : values_.first ? values_.first : others_.first;
}

}  // namespace tarvell
