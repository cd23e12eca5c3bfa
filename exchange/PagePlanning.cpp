// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/PagePlanning.h"

#include <algorithm>
#include <cmath>

#include "core/caldata/CellNotices.h"
#include "core/numbers/Numbers.h"
#include "core/text/Text.h"
#include "exchange/CaptionWords.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

/// More values that cannot be right are only counted: all have the same cause.
constexpr std::size_t kNamedDoubts = 10;

std::string ShownValue(const WrittenValue& value) {
  const std::string unit = ShownUnit(value.unit);
  return value.text + (unit.empty() || unit == "1" ? "" : " " + unit);
}

std::string FrequencyUnit(const ModelColumn& column) {
  return column.unit.power == 9 ? "GHz" : column.unit.power == 6 ? "MHz" : "Hz";
}

/// A frequency such as 1.24E10 Hz is in the unit of the table, so that its row is found there.
std::string ShownPoint(const WrittenValue& value, const ModelColumn& column) {
  const bool hasExponent = value.isNumber && value.text.find_first_of("eE") != std::string::npos;
  const std::optional<std::string> number =
      column.role == ColumnRole::Frequency && hasExponent && !value.unit.empty()
          ? Converted(value, column.unit)
          : std::nullopt;
  return number ? *number + " " + FrequencyUnit(column) : ShownValue(value);
}

/// The unit in which the table takes the numbers of a column, as a message names it.
std::string UnitOfTable(const ModelColumn& column) {
  const std::string unit = column.role == ColumnRole::Frequency ? FrequencyUnit(column)
                           : column.unit.special == "decibel"   ? "dB"
                           : column.role == ColumnRole::Value && column.unit.IsLike(Unit()) ? "%"
                                                                                            : "";
  return unit.empty() ? "the unit of the cell that each is for" : unit + ", as in the table";
}

bool IsOfStandardUncertainties(const CertificateColumn& column) {
  return NamesStandard(FoldedNames(column)) || NamesStandard(Folded(column.refType));
}

/// The captions that the user can judge: in their own language, in English and those for every
/// language; the one that is shown where there is none of these.
std::vector<std::string> CaptionsFor(const Names& names, std::string_view language) {
  std::vector<std::string> captions;
  for (const LocalText& name : names) {
    const std::string_view own = std::string_view(name.language).substr(0, 2);
    if (own.empty() || own == "en" || own == language.substr(0, 2)) {
      captions.push_back(name.text);
    }
  }
  return captions.empty() ? std::vector<std::string>{NameIn(names, language)} : captions;
}

/// "A", "B" and "C", in quotes.
std::string Listed(const std::vector<std::string>& words) {
  std::string list;
  for (std::size_t i = 0; i < words.size(); ++i) {
    list += i == 0 ? "" : i + 1 == words.size() ? " and " : ", ";
    list += Quoted(words[i]);
  }
  return list;
}

}  // namespace

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

bool IsRounded(const std::string& number, std::string_view stored) {
  return ParseNumber(number) != ParseNumber(PartsOfCell(stored).number);
}

PagePlanning::PagePlanning(const PageSource& source)
    : source_(source), columns_(ModelColumns(source.model, source.data, source.page)) {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const std::optional<ColumnSource>& from = source.match.at(i);
    values_.push_back(from ? &ValuesOf(source.table, *from, columns_[i]) : nullptr);
  }
  TakeRatios();
  plan_.page = source.page;
  plan_.name = source.data.GetCalPageName(source.page);
  plan_.memberSerial = source.table.memberSerial;
}

void PagePlanning::JudgeColumns() {
  NoteUnusedColumns();
  DoubtUnknownUnits();
  DoubtMissingUnits();
  DoubtCellsBesideTheCaptions();
  DoubtRepeatedValues();
  DoubtCutDecimals();
  DoubtPartsOfRatios();
  DoubtStandardUncertainties();
  DoubtCoverageFactors();
  DoubtCaptions();
}

const WrittenValue* PagePlanning::ValueAt(std::size_t row, std::size_t column) const {
  return values_[column] == nullptr || row >= values_[column]->size() ? nullptr
                                                                      : &values_[column]->at(row);
}

void PagePlanning::NoteUnusedColumns() {
  std::string unused;
  for (const ColumnSource& each : SourcesOf(source_.table)) {
    if (!IsUsed(source_.match, each)) {
      unused +=
          (unused.empty() ? "" : ", ") + Quoted(SourceName(source_.table, each, source_.language));
    }
  }
  if (!unused.empty()) {
    plan_.notes.push_back(Where() + "These columns are not used: " + unused + ".");
  }
  for (const std::string& unit : UnknownUnits(source_.table, source_.match, source_.language)) {
    plan_.notes.push_back(Where() + unit);
  }
}

void PagePlanning::DoubtUnknownUnits() {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const std::string unit = values_[i] == nullptr ? std::string() : UnknownUnitIn(*values_[i]);
    if (!unit.empty()) {
      plan_.doubts.push_back(
          Where() + "The unit " + Quoted(unit) + " of the column " + Quoted(ColumnTitle(i)) +
          " is not known. Its numbers are taken as they are, for " + columns_[i].caption + ".");
    }
  }
}

void PagePlanning::DoubtMissingUnits() {
  const auto isWithoutUnit = [](const WrittenValue& value) {
    return value.isNumber && value.unit.empty();
  };
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const ModelColumn& column = columns_[i];
    if (ratios_.contains(i)) {
      plan_.doubts.push_back(
          Where() + "The column " + Quoted(ColumnTitle(i)) +
          " names no unit, and all its numbers are below 2. They are taken as ratios: 0.985 is "
          "98.5 %.");
      continue;
    }
    const bool hasUnit = column.role != ColumnRole::Member &&
                         !(column.unit.IsLike(Unit()) && column.unit.power == 0);
    if (!hasUnit || values_[i] == nullptr || std::ranges::none_of(*values_[i], isWithoutUnit)) {
      continue;
    }
    plan_.doubts.push_back(Where() + "The column " + Quoted(ColumnTitle(i)) +
                           " has numbers without a unit. They are taken in " + UnitOfTable(column) +
                           ".");
  }
}

void PagePlanning::DoubtCellsBesideTheCaptions() {
  const auto hasCaption = [this](const CertificateColumn& column) {
    return !NameIn(column.caption, source_.language).empty();
  };
  const std::vector<CertificateColumn>& all = source_.table.columns;
  if (all.empty() || !hasCaption(all.front()) || hasCaption(all.back())) {
    return;
  }
  const ColumnSource last{all.size() - 1, false};
  const bool hasNumbers =
      std::ranges::any_of(all.back().series.front().values, &WrittenValue::isNumber);
  if (hasNumbers && !IsUsed(source_.match, last)) {
    plan_.doubts.push_back(Where() + Quoted(SourceName(source_.table, last, source_.language)) +
                           " has numbers but no caption. If the certificate writes decimals with "
                           "the sign that separates the columns, each number is cut in two: "
                           "compare the values with the certificate.");
  }
}

void PagePlanning::DoubtCutDecimals() {
  const auto isWhole = [](const WrittenValue& value) {
    return value.isNumber && value.text.find_first_not_of("-0123456789") == std::string::npos;
  };
  const auto isDigits = [](const WrittenValue& value) {
    return value.text.find_first_not_of("0123456789") == std::string::npos;
  };
  for (std::size_t i = 0; i < columns_.size() && source_.table.hasCommas; ++i) {
    const std::optional<ColumnSource>& from = source_.match.at(i);
    if (!from || columns_[i].role == ColumnRole::Member ||
        from->column + 1 >= source_.table.columns.size()) {
      continue;
    }
    const ColumnSource next = {from->column + 1, false};
    const CertificateColumn& column = source_.table.columns[next.column];
    const std::vector<WrittenValue>& after = column.series.front().values;
    const bool hasDigits = !NameIn(column.caption, source_.language).empty() &&
                           std::ranges::all_of(after, isDigits) &&
                           std::ranges::any_of(after, &WrittenValue::isNumber);
    // A point of whole numbers before a value is usual.
    const bool isOther = !columns_[i].IsPoint() || !IsUsed(source_.match, next);
    if (hasDigits && isOther && std::ranges::all_of(*values_[i], isWhole)) {
      plan_.doubts.push_back(
          Where() + "Commas separate the columns, and " + Quoted(ColumnTitle(i)) + " and " +
          Quoted(SourceName(source_.table, next, source_.language)) +
          " have only whole numbers. If the certificate writes decimals with a comma, each number "
          "is cut in two: compare the values with the certificate.");
    }
  }
}

void PagePlanning::DoubtPartsOfRatios() {
  const auto powerOf = [](const std::vector<WrittenValue>& values) {
    const auto found = std::ranges::find_if(
        values, [](const WrittenValue& value) { return value.isNumber && UnitFrom(value.unit); });
    return found == values.end() ? 0 : UnitFrom(found->unit)->power;
  };
  for (std::size_t i = 1; i < columns_.size(); ++i) {
    const bool isOfRatio = columns_[i].role == ColumnRole::Uncertainty &&
                           columns_[i].unit.IsLike(Unit()) && values_[i] != nullptr &&
                           values_[i - 1] != nullptr && !source_.match[i]->isUncertainty;
    if (isOfRatio && powerOf(*values_[i]) != 0 && powerOf(*values_[i - 1]) == 0) {
      plan_.doubts.push_back(Where() + "The column " + Quoted(ColumnTitle(i)) +
                             " may be relative to the values before it, which have no unit. It is "
                             "taken as absolute: 1 % as 0.01.");
    }
  }
}

void PagePlanning::TakeRatios() {
  constexpr double kLargestRatio = 2;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const ModelColumn& column = columns_[i];
    const bool isFactor =
        column.role == ColumnRole::Value && column.unit.IsLike(Unit()) && column.unit.power == -2;
    const auto mayBeRatio = [](const WrittenValue& value) {
      return !value.isNumber ||
             (value.unit.empty() && std::abs(NumericValueOrInfinity(value.text)) < kLargestRatio);
    };
    if (isFactor && values_[i] != nullptr && std::ranges::all_of(*values_[i], mayBeRatio) &&
        std::ranges::any_of(*values_[i], &WrittenValue::isNumber)) {
      std::vector<WrittenValue>& ratios = ratios_[i];
      ratios = *values_[i];
      for (WrittenValue& ratio : ratios) {
        ratio.unit = ratio.isNumber ? "1" : ratio.unit;
      }
      values_[i] = &ratios;
    }
  }
}

void PagePlanning::DoubtRepeatedValues() {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const std::optional<ColumnSource>& from = source_.match.at(i);
    if (columns_[i].role == ColumnRole::Value && from &&
        source_.table.columns.at(from->column).isRepeated) {
      plan_.doubts.push_back(Where() + "The column " + Quoted(ColumnTitle(i)) +
                             " has one value in the certificate. It is taken for all " +
                             std::to_string(source_.table.RowCount()) + " rows.");
    }
  }
}

void PagePlanning::DoubtStandardUncertainties() {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const std::optional<ColumnSource>& from = source_.match.at(i);
    if (columns_[i].IsUncertainty() && from && !from->isUncertainty &&
        IsOfStandardUncertainties(source_.table.columns.at(from->column))) {
      plan_.doubts.push_back(Where() + "The column " + Quoted(ColumnTitle(i)) +
                             " has standard uncertainties, and the table has expanded ones. They "
                             "are taken as they are.");
    }
  }
}

void PagePlanning::DoubtCoverageFactors() {
  constexpr double kLeastUsual = 1.6;
  constexpr double kLargestUsual = 2.6;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const std::optional<ColumnSource>& from = source_.match.at(i);
    if (!columns_[i].IsUncertainty() || !from) {
      continue;
    }
    const CertificateColumn& column = source_.table.columns.at(from->column);
    const std::string names = FoldedNames(column);
    const std::string factor =
        from->isUncertainty ? column.series.front().coverageFactor : CoverageFactorIn(names);
    const double number = NumericValueOrInfinity(factor);
    const bool isUsual = factor.empty() || (number >= kLeastUsual && number <= kLargestUsual);
    // A standard uncertainty is asked about anyway.
    if (!isUsual && (from->isUncertainty || !IsOfStandardUncertainties(column))) {
      plan_.doubts.push_back(Where() + "The column " + Quoted(ColumnTitle(i)) +
                             " has uncertainties with the coverage factor " + factor +
                             ", and the table has those with about 2. They are taken as they "
                             "are.");
    }
  }
}

void PagePlanning::DoubtCaptions() {
  if (source_.keepsTexts) {
    return;
  }
  const ColumnMatch proposed = MatchedColumns(source_.table, columns_).match;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const bool isProposed = source_.match.at(i) && source_.match[i] == proposed.at(i);
    // The uncertainties of a DCC's values have no caption of their own.
    if (isProposed && !source_.match[i]->isUncertainty && !columns_[i].quantity.empty()) {
      DoubtCaption(i);
    }
  }
}

void PagePlanning::DoubtCaption(std::size_t index) {
  const ModelColumn& column = columns_[index];
  const CertificateColumn& from = source_.table.columns.at(source_.match[index]->column);
  if (column.IsUncertainty() && IsOfStandardUncertainties(from)) {
    return;
  }
  const std::string kind = Folded(from.refType);
  bool hasWords = false;
  bool isNamed = HasWord(kind, column.words) || NamesMeasured(kind);
  std::vector<std::string> unknown;
  for (const std::string& caption : CaptionsFor(from.caption, source_.language)) {
    const CaptionReading reading = ReadingOf(caption, column);
    hasWords = hasWords || reading.hasWords;
    isNamed = isNamed || reading.isNamed || HasWord(Folded(caption), column.words) ||
              NamesMeasured(Folded(caption));
    unknown.insert(unknown.end(), reading.unknown.begin(), reading.unknown.end());
  }
  const std::string quantity(column.quantity);
  isNamed = isNamed && !IsTitledAsOther(index);
  if (column.role == ColumnRole::Value && hasWords && !isNamed) {
    plan_.doubts.push_back(Where() + "The column " + Quoted(ColumnTitle(index)) +
                           " is not named as " + quantity + ". It is taken as one.");
  } else if (!unknown.empty()) {
    plan_.doubts.push_back(
        Where() + "The column " + Quoted(ColumnTitle(index)) + " is taken as " +
        (column.IsUncertainty() ? "an expanded uncertainty of " + quantity : quantity) +
        ", though its caption also says " + Listed(unknown) + ".");
  }
}

bool PagePlanning::IsTitledAsOther(std::size_t index) const {
  const ModelColumn& column = columns_[index];
  const CertificateTable& table = source_.table;
  const CertificateColumn& from = table.columns.at(source_.match[index]->column);
  const bool isShared = column.unit.IsLike(Unit()) || column.unit.special == "decibel";
  const auto names = [&](const std::string& text) {
    return HasWord(Folded(text), column.words) || ReadingOf(text, column).isNamed;
  };
  const auto namesIt = [&](const LocalText& name) { return names(name.text); };
  const std::vector<std::string> titles = CaptionsFor(table.name, source_.language);
  return isShared && !names(from.refType) && std::ranges::none_of(from.caption, namesIt) &&
         std::ranges::none_of(table.name, namesIt) &&
         std::ranges::any_of(titles, [&](const std::string& title) {
           return !title.starts_with("Table of line ") && !ReadingOf(title, column).unknown.empty();
         });
}

std::string PagePlanning::ColumnTitle(std::size_t column) const {
  return SourceName(source_.table, *source_.match.at(column), source_.language);
}

std::string PagePlanning::Where() const {
  return plan_.name.empty() ? std::string() : plan_.name + ": ";
}

std::string PagePlanning::PointName(std::size_t row) const {
  if (!HasPoint(row)) {
    return "line " + std::to_string(LineInFile(row));
  }
  std::string name;
  for (std::size_t i = 0; i < columns_.size() && columns_[i].IsPoint(); ++i) {
    name += (name.empty() ? "" : ", ") + ShownPoint(*ValueAt(row, i), columns_[i]);
  }
  return name;
}

bool PagePlanning::HasPoint(std::size_t row) const {
  for (std::size_t i = 0; i < columns_.size() && columns_[i].IsPoint(); ++i) {
    const WrittenValue* value = ValueAt(row, i);
    if (value == nullptr || value->text.empty()) {
      return false;
    }
  }
  return true;
}

std::size_t PagePlanning::LineInFile(std::size_t row) const {
  const std::vector<std::size_t>& lines = source_.table.rowLines;
  return row < lines.size() ? lines[row] : row + 1;
}

std::string PagePlanning::Refusal(std::size_t row, const WrittenValue& value,
                                  const std::string& why) const {
  if (!HasPoint(row)) {
    return Where() + "Line " + std::to_string(LineInFile(row)) + ": there is no point.";
  }
  const std::string shown = ShownValue(value);
  return Where() + PointName(row) + ": " +
         (shown.empty() ? "there is no value" : Quoted(shown) + why) + ".";
}

void PagePlanning::DoubtValue(std::size_t row, std::size_t column, const std::string& why) {
  if (why.empty() || source_.keepsTexts || ++doubtedValues_ > kNamedDoubts) {
    return;
  }
  const std::string place =
      (source_.table.rowLines.empty() ? "value " : "line ") + std::to_string(LineInFile(row));
  plan_.doubts.push_back(Where() + PointName(row) + " (" + place +
                         "): " + ShownValue(*ValueAt(row, column)) + " " + why + ".");
}

void PagePlanning::FinishDoubts() {
  if (doubtedValues_ > kNamedDoubts) {
    plan_.doubts.push_back(Where() + std::to_string(doubtedValues_ - kNamedDoubts) +
                           " more values cannot be right for reasons like these.");
  }
}

void PagePlanning::NoteIfRounded(std::size_t row, std::size_t column, const std::string& number,
                                 const std::string& stored) {
  if (IsRounded(number, stored)) {
    NoteRounded(row, column, number == ValueAt(row, column)->text ? "" : number, stored);
  }
}

void PagePlanning::NoteRounded(std::size_t row, std::size_t column, const std::string& converted,
                               const std::string& stored) {
  plan_.rounded.push_back(Where() + PointName(row) + ": " + ShownValue(*ValueAt(row, column)) +
                          (converted.empty() ? "" : " (" + converted + ")") + " becomes " + stored +
                          ".");
}

std::string PagePlanning::Store(Cell cell, const NumberToStore& number) const {
  return source_.data.SetCalibrationDataFormat(source_.page, cell.column, cell.row.number,
                                               number.number, number.unit);
}

}  // namespace tarvell
