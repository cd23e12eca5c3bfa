// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/DccValues.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "core/numbers/Numbers.h"
#include "core/numbers/WrittenNumber.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"
#include "exchange/DccXml.h"

namespace tarvell {

namespace {

/// Far more than any certificate has.
constexpr std::size_t kValueLimit = 200'000;

std::vector<std::string> WordsIn(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  std::vector<std::string> words;
  while (words.size() <= kValueLimit) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    if (text.empty()) {
      break;
    }
    const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
    words.push_back(Shortened(word));
    text.remove_prefix(word.size());
  }
  return words;
}

/// The element at the end of this path below `node`.
pugi::xml_node Below(pugi::xml_node node, std::initializer_list<const char*> path) {
  for (const char* name : path) {
    node = node.child(name);
  }
  return node;
}

std::string TextBelow(pugi::xml_node node, std::initializer_list<const char*> older,
                      std::initializer_list<const char*> newer) {
  const std::string text = TextOf(Below(node, older));
  return text.empty() ? TextOf(Below(node, newer)) : text;
}

/// Keeps the coverage factor that is farthest from 2.
void TakeFactor(std::string_view factors, Series& series) {
  constexpr double kUsual = 2;
  const auto distance = [](const std::string& factor) {
    return std::abs(NumericValueOrInfinity(factor) - kUsual);
  };
  for (std::string& factor : WordsIn(factors)) {
    if (series.coverageFactor.empty() || distance(factor) > distance(series.coverageFactor)) {
      series.coverageFactor = std::move(factor);
    }
  }
}

WrittenValue ValueOf(std::string text, std::string unit) {
  const bool isNumber = ParseNumber(text).has_value();
  return {std::move(text), std::move(unit), isNumber};
}

/// The first text that is a number only with a decimal comma, and its place; "" for none.
std::string DecimalCommaIn(const std::vector<WrittenValue>& values) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!values[i].isNumber && PlainNumber(values[i].text, DecimalSign::Comma)) {
      return "its value " + std::to_string(i + 1) + ", " + Quoted(values[i].text) +
             ", has a decimal comma, which a DCC never has";
    }
  }
  return {};
}

/// Even a ratio has a unit in a DCC: "\\one".
bool IsWithoutUnit(const WrittenValue& value) {
  return value.isNumber && value.unit.empty();
}

/// One unit holds for all values, and one uncertainty, too. Returns why the list cannot be used.
std::string ReadList(pugi::xml_node list, Series& series, ValueCount& count) {
  std::vector<std::string> units = WordsIn(TextOf(list.child("si:unitXMLList")));
  std::vector<std::string> values = WordsIn(TextOf(list.child("si:valueXMLList")));
  std::vector<std::string> uncertainties =
      WordsIn(TextBelow(list, {"si:expandedUncXMLList", "si:uncertaintyXMLList"},
                        {"si:measurementUncertaintyUnivariateXMLList", "si:expandedMUXMLList",
                         "si:valueExpandedMUXMLList"}));
  count.Add(values.size());
  TakeFactor(TextBelow(list, {"si:expandedUncXMLList", "si:coverageFactorXMLList"},
                       {"si:measurementUncertaintyUnivariateXMLList", "si:expandedMUXMLList",
                        "si:coverageFactorXMLList"}),
             series);
  const std::string counts = " for " + std::to_string(values.size()) + " values";
  if (units.size() > 1 && units.size() != values.size()) {
    return "it has " + std::to_string(units.size()) + " units" + counts;
  }
  if (uncertainties.size() > 1 && uncertainties.size() != values.size()) {
    return "it has " + std::to_string(uncertainties.size()) + " uncertainties" + counts;
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::string unit = units.empty() ? std::string() : units[units.size() == 1 ? 0 : i];
    series.values.push_back(ValueOf(std::move(values[i]), unit));
    if (!uncertainties.empty()) {
      series.uncertainties.push_back(
          ValueOf(uncertainties[uncertainties.size() == 1 ? 0 : i], unit));
    }
  }
  return {};
}

void AddSingle(pugi::xml_node single, Series& series) {
  const std::string unit = Shortened(TextOf(single.child("si:unit")));
  const std::string uncertainty = Shortened(
      TextBelow(single, {"si:expandedUnc", "si:uncertainty"},
                {"si:measurementUncertaintyUnivariate", "si:expandedMU", "si:valueExpandedMU"}));
  TakeFactor(
      TextBelow(single, {"si:expandedUnc", "si:coverageFactor"},
                {"si:measurementUncertaintyUnivariate", "si:expandedMU", "si:coverageFactor"}),
      series);
  AppendValue(ValueOf(Shortened(TextOf(single.child("si:value"))), unit),
              uncertainty.empty() ? std::nullopt : std::optional(ValueOf(uncertainty, unit)),
              series);
}

/// Adds one form of the values of a quantity. Returns why it cannot be used, "" if it can.
std::string AddForm(pugi::xml_node value, std::vector<Series>& series, ValueCount& count) {
  const std::string_view name = value.name();
  std::string problem;
  Series read;
  if (name == "si:hybrid") {
    for (const pugi::xml_node form : value.children()) {
      if (std::string_view(form.name()) != "si:hybrid") {
        const std::string other = AddForm(form, series, count);
        problem = other.empty() ? problem : other;
      }
    }
  } else if (name == "si:realListXMLList") {
    problem = ReadList(value, read, count);
  } else if (name == "si:real" || name == "si:constant") {
    count.Add(1);
    AddSingle(value, read);
  } else if (name == "si:list") {
    for (const pugi::xml_node single : value.children("si:real")) {
      count.Add(1);
      AddSingle(single, read);
    }
  } else if (name == "dcc:charsXMLList") {
    std::vector<std::string> words = WordsIn(TextOf(value));
    count.Add(words.size());
    for (std::string& word : words) {
      read.values.push_back({std::move(word), "", false});
    }
  }
  if (problem.empty() && name != "dcc:charsXMLList") {
    problem = DecimalCommaIn(read.values);
    problem = problem.empty() ? DecimalCommaIn(read.uncertainties) : problem;
  }
  if (problem.empty() && std::ranges::any_of(read.values, IsWithoutUnit)) {
    problem = "it has a number without a unit";
  }
  if (problem.empty() && !read.values.empty()) {
    series.push_back(std::move(read));
  }
  return problem;
}

}  // namespace

void ValueCount::Add(std::size_t values) {
  count_ += values;
  if (count_ > kValueLimit) {
    throw Error(ErrorKind::Type, "The certificate has more than " + std::to_string(kValueLimit) +
                                     " values. Ask for one with the results only.");
  }
}

void AppendValue(const WrittenValue& value, const std::optional<WrittenValue>& uncertainty,
                 Series& series) {
  if (uncertainty || !series.uncertainties.empty()) {
    series.uncertainties.resize(series.values.size(), {.text = {}, .unit = {}, .isNumber = false});
    series.uncertainties.push_back(
        uncertainty.value_or(WrittenValue{.text = {}, .unit = {}, .isNumber = false}));
  }
  series.values.push_back(value);
}

std::string AddSeries(pugi::xml_node quantity, std::vector<Series>& series, ValueCount& count) {
  std::string problem;
  for (const pugi::xml_node value : quantity.children()) {
    const std::string other = AddForm(value, series, count);
    problem = other.empty() ? problem : other;
  }
  return problem;
}

}  // namespace tarvell
