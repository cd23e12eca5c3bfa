// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/ColumnMatch.h"

#include <algorithm>

#include "core/numbers/Numbers.h"
#include "core/numbers/WrittenNumber.h"
#include "core/text/Text.h"
#include "exchange/CaptionUnit.h"
#include "exchange/TableParts.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

const std::vector<WrittenValue>& ValuesIn(const Series& series, const ColumnSource& source) {
  return source.isUncertainty ? series.uncertainties : series.values;
}

/// The first number with a unit, or else the first number; nullptr for none.
const WrittenValue* TypicalValue(const std::vector<WrittenValue>& values) {
  const auto isNumber = [](const WrittenValue& value) { return value.isNumber; };
  const auto found = std::ranges::find_if(
      values, [&](const WrittenValue& value) { return isNumber(value) && !value.unit.empty(); });
  if (found != values.end()) {
    return &*found;
  }
  const auto number = std::ranges::find_if(values, isNumber);
  return number == values.end() ? nullptr : &*number;
}

/// The first value in a unit that is not a known one; nullptr for none.
const WrittenValue* FirstUnknownUnit(const std::vector<WrittenValue>& values) {
  // The values of a column mostly have the same unit.
  const std::string* last = nullptr;
  for (const WrittenValue& value : values) {
    if (!value.isNumber || value.unit.empty() || (last != nullptr && value.unit == *last)) {
      continue;
    }
    if (!UnitFrom(value.unit)) {
      return &value;
    }
    last = &value.unit;
  }
  return nullptr;
}

/// Whether all units of these values are ones that the column takes. A missing unit is unknown.
enum class UnitFit { Wrong, Unknown, Right };

UnitFit FitOf(const std::vector<WrittenValue>& values, const ModelColumn& column) {
  const WrittenValue* typical = TypicalValue(values);
  if (values.empty()) {
    return UnitFit::Unknown;
  }
  if (typical == nullptr || FirstUnknownUnit(values) != nullptr) {
    return UnitFit::Wrong;
  }
  if (typical->unit.empty()) {
    return UnitFit::Unknown;
  }
  const std::optional<Unit> unit = UnitFrom(typical->unit);
  return unit && column.Takes(*unit) ? UnitFit::Right : UnitFit::Wrong;
}

/// Whether two values are the same, in any unit.
bool AreSame(const WrittenValue& one, const WrittenValue& other) {
  if (!one.isNumber || !other.isNumber) {
    return one == other;
  }
  const std::optional<Unit> unit = UnitFrom(one.unit);
  const std::optional<Unit> otherUnit = UnitFrom(other.unit);
  if (!unit || !otherUnit) {
    return ParseNumber(one.text) == ParseNumber(other.text);
  }
  return unit->IsLike(*otherUnit) && ParseNumber(Shifted(one.text, unit->power)) ==
                                         ParseNumber(Shifted(other.text, otherUnit->power));
}

/// A column of names has no numbers.
bool IsText(const std::vector<WrittenValue>& values) {
  return std::ranges::none_of(values, [](const WrittenValue& value) { return value.isNumber; }) &&
         std::ranges::any_of(values, [](const WrittenValue& value) { return !value.text.empty(); });
}

/// Chooses the sources of one table, one column of the model after the other.
class Matching {
 public:
  Matching(const CertificateTable& table, const std::vector<ModelColumn>& columns)
      : table_(table), columns_(columns), sources_(SourcesOf(table)) {
    for (const CertificateColumn& column : table.columns) {
      names_.push_back(FoldedNames(column));
      kinds_.push_back(Folded(column.refType));
    }
  }

  ProposedMatch Run() {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      std::vector<ColumnSource> best =
          columns_[i].IsUncertainty() ? UncertaintiesFor(i) : BestFor(columns_[i]);
      const bool isSure = best.size() == 1 && !IsUnlikely(best.front(), columns_[i]);
      proposed_.match.push_back(isSure ? std::optional(best.front()) : std::nullopt);
      if (!isSure && !best.empty()) {
        proposed_.asked.push_back({i, std::move(best)});
      }
    }
    return std::move(proposed_);
  }

 private:
  /// The sources with the highest score.
  class Best {
   public:
    void Add(const ColumnSource& source, int score) {
      if (score > score_) {
        sources_.clear();
        score_ = score;
      }
      if (score > 0 && score == score_) {
        sources_.push_back(source);
      }
    }
    [[nodiscard]] const std::vector<ColumnSource>& Sources() const { return sources_; }

   private:
    int score_ = 0;
    std::vector<ColumnSource> sources_;
  };

  [[nodiscard]] std::vector<ColumnSource> BestFor(const ModelColumn& column) const {
    Best best;
    for (const ColumnSource& source : sources_) {
      if (!source.isUncertainty && !IsUsed(proposed_.match, source)) {
        best.Add(source, Score(source, column));
      }
    }
    return WithOtherChannels(WithoutEqual(best.Sources(), column), column);
  }

  /// Adds the columns of other channels, which may be named only by them.
  [[nodiscard]] std::vector<ColumnSource> WithOtherChannels(std::vector<ColumnSource> sources,
                                                            const ModelColumn& column) const {
    const std::string channel =
        sources.size() == 1 ? ChannelIn(names_[sources.front().column]) : std::string();
    for (const ColumnSource& other : sources_) {
      const std::string name = channel.empty() ? std::string() : ChannelIn(names_[other.column]);
      const bool isOther = !name.empty() && name != channel && !other.isUncertainty;
      if (isOther && FitOf(ValuesOf(table_, other, column), column) == UnitFit::Right &&
          !IsSomethingElse(names_[other.column], column)) {
        sources.push_back(other);
      }
    }
    return sources;
  }

  /// One of the sources if all of them have the same numbers, such as a frequency in two units. The
  /// one that surely has the right unit comes first.
  [[nodiscard]] std::vector<ColumnSource> WithoutEqual(std::vector<ColumnSource> sources,
                                                       const ModelColumn& column) const {
    const auto hasUnit = [&](const ColumnSource& source) {
      return FitOf(ValuesOf(table_, source, column), column) == UnitFit::Right;
    };
    if (const auto sure = std::ranges::find_if(sources, hasUnit); sure != sources.end()) {
      std::rotate(sources.begin(), sure, sure + 1);
    }
    const auto isEqual = [&](const ColumnSource& source) {
      return std::ranges::equal(ValuesOf(table_, sources.front(), column),
                                ValuesOf(table_, source, column), AreSame);
    };
    if (sources.size() > 1 && std::ranges::all_of(sources, isEqual)) {
      sources.resize(1);
    }
    return sources;
  }

  [[nodiscard]] bool IsUnlikely(const ColumnSource& source, const ModelColumn& column) const {
    // The points of a DCC are reference values.
    const bool isKind = !column.IsPoint() && NamesUnlikely(kinds_[source.column]);
    return column.role != ColumnRole::Member && (isKind || NamesUnlikely(names_[source.column]));
  }

  /// 0 for a source that cannot be meant.
  [[nodiscard]] int Score(const ColumnSource& source, const ModelColumn& column) const {
    const std::string& name = names_[source.column];
    const std::string& kind = kinds_[source.column];
    const bool isNamed = IsMeant(name, column);
    const bool isOfKind = IsMeant(kind, column);
    const std::vector<WrittenValue>& values = ValuesOf(table_, source, column);
    if (column.role == ColumnRole::Member) {
      return IsText(values) ? 1 + (isNamed ? 2 : 0) : 0;
    }
    const UnitFit fit = FitOf(values, column);
    if (fit == UnitFit::Wrong || IsSomethingElse(name, column) || IsSomethingElse(kind, column)) {
      return 0;
    }
    const bool isNameMissing = !isNamed && !isOfKind;
    if (isNameMissing && (column.needsName || fit == UnitFit::Unknown)) {
      return 0;
    }
    // A name says more than a unit, which several quantities may have.
    return (IsUnlikely(source, column) ? 0 : kLikely) + (isNamed ? 4 : 0) + (isOfKind ? 2 : 0) +
           (isNameMissing ? 1 : 0);
  }

  /// Any other column is better than one that is hardly a result.
  static constexpr int kLikely = 10;

  static bool IsMeant(std::string_view text, const ModelColumn& column) {
    const bool isAnyValue = column.role == ColumnRole::Value && !column.needsName;
    return HasWord(text, column.words) || (isAnyValue && NamesMeasured(text));
  }

  static bool IsSomethingElse(std::string_view text, const ModelColumn& column) {
    return NamesUncertainty(text) || NamesOther(text) || HasWord(text, column.others) ||
           (column.role == ColumnRole::Value && NamesNominal(text));
  }

  /// The expanded uncertainty that is given with the value before the column, or the columns of
  /// their own after that value.
  [[nodiscard]] std::vector<ColumnSource> UncertaintiesFor(std::size_t index) const {
    const std::optional<ColumnSource>& value = proposed_.match[index - 1];
    if (!value) {
      return {};
    }
    const ColumnSource own = {value->column, true};
    if (std::ranges::find(sources_, own) != sources_.end()) {
      return {own};
    }
    Best best;
    for (std::size_t i = value->column + 1; i < table_.columns.size(); ++i) {
      const ColumnSource source = {i, false};
      if (!NamesUncertainty(names_[i]) && !NamesUncertainty(kinds_[i])) {
        if (IsNoValue(names_[i]) || IsNoValue(kinds_[i])) {
          continue;
        }
        // The uncertainties after another value belong to that.
        break;
      }
      const UnitFit fit = FitOf(ValuesOf(table_, source, columns_[index]), columns_[index]);
      if (!IsUsed(proposed_.match, source) && fit != UnitFit::Wrong) {
        best.Add(source, (IsUnlikely(source, columns_[index]) ? 0 : kLikely) +
                             (NamesExpanded(names_[i]) ? 2 : 0) + (fit == UnitFit::Right ? 2 : 1));
      }
    }
    return best.Sources();
  }

  /// A deviation or a nominal value may be between a value and its uncertainty.
  static bool IsNoValue(std::string_view text) { return NamesOther(text) || NamesNominal(text); }

  const CertificateTable& table_;
  const std::vector<ModelColumn>& columns_;
  std::vector<ColumnSource> sources_;
  std::vector<std::string> names_;  ///< the captions of each column
  std::vector<std::string> kinds_;  ///< and its refType
  ProposedMatch proposed_;
};

}  // namespace

std::string FoldedNames(const CertificateColumn& column) {
  std::string text;
  for (const LocalText& name : column.caption) {
    text += Folded(name.text) + " ";
  }
  return text;
}

bool IsUsed(const ColumnMatch& match, const ColumnSource& source) {
  return std::ranges::find(match, std::optional(source)) != match.end();
}

std::vector<ColumnSource> SourcesOf(const CertificateTable& table) {
  std::vector<ColumnSource> sources;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    sources.push_back({i, false});
    if (!table.columns[i].series.front().uncertainties.empty()) {
      sources.push_back({i, true});
    }
  }
  return sources;
}

std::string SourceName(const CertificateTable& table, const ColumnSource& source,
                       std::string_view language) {
  const CertificateColumn& column = table.columns.at(source.column);
  const std::string caption = WithSingleBlanks(NameIn(column.caption, language));
  const std::string number = std::to_string(source.column + 1);
  std::string name = caption.empty() ? "Column " + number : caption;
  if (source.isUncertainty) {
    name = "Expanded uncertainty of " + name;
  }
  const WrittenValue* typical = TypicalValue(ValuesIn(column.series.front(), source));
  const std::string unit = typical == nullptr ? std::string() : ShownUnit(typical->unit);
  const bool isNamed = UnitOfCaption(name) == unit || UnknownUnitOf(name) == unit;
  if (!unit.empty() && !isNamed) {
    name += " [" + unit + "]";
  }
  const auto isAlike = [&](const CertificateColumn& other) {
    return WithSingleBlanks(NameIn(other.caption, language)) == caption;
  };
  const bool isAlone = std::ranges::count_if(table.columns, isAlike) == 1;
  return isAlone || caption.empty() ? name : name + " (column " + number + ")";
}

ProposedMatch MatchedColumns(const CertificateTable& table,
                             const std::vector<ModelColumn>& columns) {
  return Matching(table, columns).Run();
}

std::string UnknownUnitIn(const std::vector<WrittenValue>& values) {
  const WrittenValue* value = FirstUnknownUnit(values);
  return value == nullptr ? std::string() : value->unit;
}

std::vector<std::string> UnknownUnits(const CertificateTable& table, const ColumnMatch& used,
                                      std::string_view language) {
  std::vector<std::string> sentences;
  for (const ColumnSource& source : SourcesOf(table)) {
    const std::string unit =
        UnknownUnitIn(ValuesIn(table.columns[source.column].series.front(), source));
    if (!unit.empty() && !IsUsed(used, source)) {
      sentences.push_back("The column " + Quoted(SourceName(table, source, language)) + " (" +
                          table.where + ") is not used, because its unit " + Quoted(unit) +
                          " is not known. If it is right all the same, choose the column by hand.");
    }
  }
  return sentences;
}

bool IsUsable(const ColumnMatch& match, const std::vector<ModelColumn>& columns) {
  bool hasPoints = match.size() == columns.size();
  bool hasValue = false;
  for (std::size_t i = 0; i < columns.size() && hasPoints; ++i) {
    hasPoints = !columns[i].IsPoint() || match[i];
    const bool isMeasured = !columns[i].IsPoint() && columns[i].role != ColumnRole::Nominal;
    hasValue = hasValue || (isMeasured && match[i]);
  }
  return hasPoints && hasValue;
}

std::string CaptionsKey(const CertificateTable& table) {
  std::string key;
  for (const CertificateColumn& column : table.columns) {
    key += (key.empty() ? "" : "|") + Folded(NameIn(column.caption, "en"));
  }
  return key;
}

std::string MatchText(const ColumnMatch& match) {
  std::string text;
  for (const std::optional<ColumnSource>& source : match) {
    text += text.empty() ? "" : " ";
    text += source ? std::to_string(source->column) + (source->isUncertainty ? "u" : "") : "-";
  }
  return text;
}

std::optional<ColumnMatch> MatchFrom(std::string_view text, const CertificateTable& table,
                                     std::size_t columns) {
  const std::vector<ColumnSource> sources = SourcesOf(table);
  ColumnMatch match;
  while (!text.empty()) {
    std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(word.size() + 1, text.size()));
    if (word == "-") {
      match.emplace_back();
      continue;
    }
    const auto found = std::ranges::find_if(
        sources, [&](const ColumnSource& source) { return MatchText({source}) == word; });
    if (found == sources.end()) {
      return std::nullopt;
    }
    match.emplace_back(*found);
  }
  return match.size() == columns ? std::optional(match) : std::nullopt;
}

ProposedMatch ChosenOrMatched(std::string_view chosen, const CertificateTable& table,
                              const std::vector<ModelColumn>& columns) {
  std::optional<ColumnMatch> match = MatchFrom(chosen, table, columns.size());
  return match ? ProposedMatch{std::move(*match), {}} : MatchedColumns(table, columns);
}

const std::vector<WrittenValue>& ValuesOf(const CertificateTable& table, const ColumnSource& source,
                                          const ModelColumn& column) {
  const std::vector<Series>& all = table.columns.at(source.column).series;
  const Series* best = &all.front();
  for (const Series& series : all) {
    const WrittenValue* typical = TypicalValue(ValuesIn(series, source));
    const std::optional<Unit> unit = typical == nullptr ? std::nullopt : UnitFrom(typical->unit);
    const bool isTaken = FitOf(ValuesIn(series, source), column) == UnitFit::Right;
    if (isTaken && FitOf(ValuesIn(*best, source), column) != UnitFit::Right) {
      best = &series;
    }
    // The form in the table's own unit needs no conversion.
    if (isTaken && unit && unit->power == column.unit.power) {
      return ValuesIn(series, source);
    }
  }
  return ValuesIn(*best, source);
}

}  // namespace tarvell
