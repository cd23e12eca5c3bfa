// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/JoinedTables.h"

#include <algorithm>
#include <cmath>

#include "core/numbers/Numbers.h"
#include "core/text/Text.h"
#include "exchange/CaptionUnit.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

/// Values in units of the same kind, or without a unit.
bool AreOfOneKind(const std::vector<WrittenValue>& one, const std::vector<WrittenValue>& other) {
  if (one.empty() || other.empty()) {
    return one.empty() == other.empty();
  }
  const std::optional<Unit> unit = UnitFrom(one.front().unit);
  const std::optional<Unit> otherUnit = UnitFrom(other.front().unit);
  return unit && otherUnit ? unit->IsLike(*otherUnit) : one.front().unit == other.front().unit;
}

/// The caption of a column without its unit. "(10 mW)" is no unit of it.
std::string ColumnTitle(const CertificateColumn& column) {
  std::string caption = NameIn(column.caption, "en");
  const std::string unit = UnitOfCaption(caption);
  const std::size_t at = caption.rfind(unit);
  if (!unit.empty() && at != std::string::npos) {
    const bool isInBrackets = at > 0 && (caption[at - 1] == '[' || caption[at - 1] == '(') &&
                              at + unit.size() < caption.size();
    caption.replace(isInBrackets ? at - 1 : at, unit.size() + (isInBrackets ? 2 : 0), " ");
  }
  return Folded(caption);
}

bool AreAlike(const CertificateColumn& one, const CertificateColumn& other) {
  const bool isNamedAlike = ColumnTitle(one) == ColumnTitle(other) ||
                            (!one.refType.empty() && one.refType == other.refType);
  return isNamedAlike &&
         std::ranges::equal(one.series, other.series,
                            [](const Series& first, const Series& second) {
                              return AreOfOneKind(first.values, second.values) &&
                                     AreOfOneKind(first.uncertainties, second.uncertainties);
                            });
}

/// A value as a text that is the same for the same number in any unit.
std::string Comparable(const WrittenValue& value) {
  if (!value.isNumber) {
    return ToUpper(value.text);
  }
  const std::optional<Unit> unit = UnitFrom(value.unit);
  const double number =
      NumericValueOrInfinity(unit ? Shifted(value.text, unit->power) : value.text);
  return std::isinf(number) ? value.text : ShortestText(number);
}

}  // namespace

bool HaveSameColumns(const CertificateTable& one, const CertificateTable& other) {
  return std::ranges::equal(one.columns, other.columns, AreAlike);
}

CertificateTable Joined(const std::vector<const CertificateTable*>& tables) {
  const auto append = [](auto& all, const auto& more) {
    all.insert(all.end(), more.begin(), more.end());
  };
  CertificateTable joined = *tables.front();
  for (std::size_t i = 1; i < tables.size(); ++i) {
    const CertificateTable& table = *tables[i];
    joined.where += ", " + table.where;
    joined.memberSerial = joined.memberSerial ? joined.memberSerial : table.memberSerial;
    append(joined.rowLines, table.rowLines);
    for (std::size_t column = 0; column < joined.columns.size(); ++column) {
      for (std::size_t form = 0; form < joined.columns[column].series.size(); ++form) {
        Series& all = joined.columns[column].series[form];
        const Series& more = table.columns.at(column).series.at(form);
        append(all.values, more.values);
        append(all.uncertainties, more.uncertainties);
      }
    }
  }
  return joined;
}

bool JoinedPoints::Add(const CertificateTable& table) {
  std::map<std::string, std::string> added;
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    std::string point;
    std::string values;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (match_.at(i)) {
        const std::vector<WrittenValue>& column = ValuesOf(table, *match_[i], columns_[i]);
        (columns_[i].IsPoint() ? point : values) +=
            (row < column.size() ? Comparable(column[row]) : std::string()) + "\t";
      }
    }
    const auto known = values_.find(point);
    if (known != values_.end() && known->second != values) {
      return false;
    }
    added.try_emplace(std::move(point), std::move(values));
  }
  values_.merge(added);
  return true;
}

}  // namespace tarvell
