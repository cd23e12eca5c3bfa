// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/DccTables.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"
#include "exchange/DccXml.h"
#include "exchange/Units.h"

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
    words.emplace_back(text.substr(0, text.find_first_of(kBlanks)));
    text.remove_prefix(words.back().size());
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

class TableReader {
 public:
  explicit TableReader(Certificate& certificate) : certificate_(certificate) {}

  /// Adds the tables of a result, in the order of the file.
  void TakeResult(pugi::xml_node result, const std::string& where) {
    where_ = where;
    lists_ = 0;
    resultName_ = NamesOf(result.child("dcc:name"));
    std::vector<pugi::xml_node> open = {result.child("dcc:data")};
    while (!open.empty()) {
      const pugi::xml_node list = open.back();
      open.pop_back();
      lists_ += std::string_view(list.name()) == "dcc:list" ? 1 : 0;
      AddOwnTable(list);
      if (AddTableOfLists(list)) {
        continue;
      }
      for (pugi::xml_node child = list.last_child(); !child.empty();
           child = child.previous_sibling()) {
        if (std::string_view(child.name()) == "dcc:list") {
          open.push_back(child);
        }
      }
    }
  }

 private:
  void AddOwnTable(pugi::xml_node list) {
    std::vector<CertificateColumn> columns = ColumnsOf(list);
    if (columns.size() > 1) {
      Add(list, std::move(columns));
    }
  }

  /// Older certificates have one list of single values for each row, or for each column.
  bool AddTableOfLists(pugi::xml_node list) {
    std::vector<std::vector<CertificateColumn>> lists;
    std::vector<pugi::xml_node> nodes;
    for (const pugi::xml_node child : list.children("dcc:list")) {
      if (!child.child("dcc:list").empty()) {
        return false;
      }
      lists.push_back(ColumnsOf(child));
      nodes.push_back(child);
      const bool isSingle = std::ranges::all_of(lists.back(), [](const CertificateColumn& column) {
        return column.series.front().values.size() == 1;
      });
      if (!isSingle || lists.back().size() != lists.front().size()) {
        return false;
      }
    }
    if (lists.size() < 2 || lists.front().empty()) {
      return false;
    }
    const bool isByRow = AreAlike(lists, [&](std::size_t i, std::size_t) { return lists[0][i]; });
    const bool isByColumn =
        AreAlike(lists, [&](std::size_t, std::size_t l) { return lists[l][0]; });
    if (!isByRow && !isByColumn) {
      return false;
    }
    if (isByRow && lists.front().size() > 1) {
      std::vector<CertificateColumn> columns = std::move(lists.front());
      for (std::size_t row = 1; row < lists.size(); ++row) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
          Append(columns[i], lists[row][i]);
        }
      }
      Add(list, std::move(columns));
      return true;
    }
    std::vector<CertificateColumn> columns;
    for (std::size_t l = 0; l < lists.size(); ++l) {
      columns.push_back(lists[l].front());
      for (std::size_t i = 1; i < lists[l].size(); ++i) {
        Append(columns.back(), lists[l][i]);
      }
      if (Names name = NamesOf(nodes[l].child("dcc:name")); !name.empty()) {
        columns.back().caption = std::move(name);
      }
      if (const std::string refType = nodes[l].attribute("refType").value(); !refType.empty()) {
        columns.back().refType = refType;
      }
    }
    Add(list, std::move(columns));
    return true;
  }

  /// Whether every quantity is in a unit like that of the one which `other` names.
  template <typename Other>
  static bool AreAlike(const std::vector<std::vector<CertificateColumn>>& lists,
                       const Other& other) {
    const auto unitOf = [](const CertificateColumn& column) {
      return UnitFrom(column.series.front().values.front().unit).value_or(Unit{.special = "?"});
    };
    for (std::size_t l = 0; l < lists.size(); ++l) {
      for (std::size_t i = 0; i < lists[l].size(); ++i) {
        if (!unitOf(lists[l][i]).IsLike(unitOf(other(i, l)))) {
          return false;
        }
      }
    }
    return true;
  }

  static void Append(CertificateColumn& column, const CertificateColumn& value) {
    for (std::size_t i = 0; i < column.series.size(); ++i) {
      const Series& from = value.series[std::min(i, value.series.size() - 1)];
      Series& to = column.series[i];
      to.values.push_back(from.values.front());
      if (!from.uncertainties.empty() && to.uncertainties.size() + 1 == to.values.size()) {
        to.uncertainties.push_back(from.uncertainties.front());
      }
    }
  }

  void Add(pugi::xml_node list, std::vector<CertificateColumn> columns) {
    std::size_t rows = 0;
    for (const CertificateColumn& column : columns) {
      rows = std::max(rows, column.series.front().values.size());
    }
    CertificateTable table;
    table.where = where_ + (lists_ == 0 ? "" : ", list " + std::to_string(lists_));
    table.name = NamesOf(list.child("dcc:name"));
    if (table.name.empty()) {
      table.name = resultName_;
    }
    for (CertificateColumn& column : columns) {
      if (!FitTo(rows, column)) {
        certificate_.notes.push_back(
            "The column " + Quoted(NameIn(column.caption, "")) + " (" + table.where +
            ") is not used, because it does not have a value for each row.");
        continue;
      }
      table.columns.push_back(std::move(column));
    }
    certificate_.tables.push_back(std::move(table));
  }

  /// A single value holds for every row. False for a column with another number of values.
  bool FitTo(std::size_t rows, CertificateColumn& column) {
    for (Series& series : column.series) {
      if (series.values.size() == 1 && rows > 1) {
        Count(rows);
        series.values.resize(rows, series.values.front());
      }
      if (series.values.size() != rows) {
        return false;
      }
      if (series.uncertainties.size() == 1 && rows > 1) {
        Count(rows);
        series.uncertainties.resize(rows, series.uncertainties.front());
      }
      if (series.uncertainties.size() != rows) {
        series.uncertainties.clear();
      }
    }
    return true;
  }

  std::vector<CertificateColumn> ColumnsOf(pugi::xml_node list) {
    std::vector<CertificateColumn> columns;
    for (const pugi::xml_node quantity : list.children("dcc:quantity")) {
      CertificateColumn column = {
          NamesOf(quantity.child("dcc:name")), quantity.attribute("refType").value(), {}};
      for (const pugi::xml_node value : quantity.children()) {
        AddSeries(value, column.series);
      }
      if (!column.series.empty()) {
        columns.push_back(std::move(column));
      }
    }
    return columns;
  }

  void AddSeries(pugi::xml_node value, std::vector<Series>& series) {
    const std::string_view name = value.name();
    Series read;
    if (name == "si:hybrid") {
      for (const pugi::xml_node form : value.children()) {
        if (std::string_view(form.name()) != "si:hybrid") {
          AddSeries(form, series);
        }
      }
    } else if (name == "si:realListXMLList") {
      read = ListOf(value);
    } else if (name == "si:real" || name == "si:constant") {
      AddSingle(value, read);
    } else if (name == "si:list") {
      for (const pugi::xml_node single : value.children("si:real")) {
        AddSingle(single, read);
      }
    } else if (name == "dcc:charsXMLList") {
      for (std::string& word : WordsIn(TextOf(value))) {
        read.values.push_back({std::move(word), "", false});
      }
    }
    if (!read.values.empty()) {
      Count(read.values.size());
      series.push_back(std::move(read));
    }
  }

  static WrittenValue ValueOf(std::string text, std::string unit) {
    const bool isNumber = ParseNumber(text).has_value();
    return {std::move(text), std::move(unit), isNumber};
  }

  static Series ListOf(pugi::xml_node list) {
    Series series;
    const std::vector<std::string> units = WordsIn(TextOf(list.child("si:unitXMLList")));
    const auto unitAt = [&](std::size_t index) {
      return units.empty() ? std::string() : units[std::min(index, units.size() - 1)];
    };
    const auto read = [&](const std::string& text, std::vector<WrittenValue>& values) {
      for (std::string& word : WordsIn(text)) {
        values.push_back(ValueOf(std::move(word), unitAt(values.size())));
      }
    };
    read(TextOf(list.child("si:valueXMLList")), series.values);
    read(TextBelow(list, {"si:expandedUncXMLList", "si:uncertaintyXMLList"},
                   {"si:measurementUncertaintyUnivariateXMLList", "si:expandedMUXMLList",
                    "si:valueExpandedMUXMLList"}),
         series.uncertainties);
    return series;
  }

  static void AddSingle(pugi::xml_node single, Series& series) {
    const std::string unit = TextOf(single.child("si:unit"));
    series.values.push_back(ValueOf(TextOf(single.child("si:value")), unit));
    const std::string uncertainty =
        TextBelow(single, {"si:expandedUnc", "si:uncertainty"},
                  {"si:measurementUncertaintyUnivariate", "si:expandedMU", "si:valueExpandedMU"});
    if (!uncertainty.empty() && series.uncertainties.size() + 1 == series.values.size()) {
      series.uncertainties.push_back(ValueOf(uncertainty, unit));
    }
  }

  void Count(std::size_t values) {
    count_ += values;
    if (count_ > kValueLimit) {
      throw Error(ErrorKind::Type, "The certificate has more than " + std::to_string(kValueLimit) +
                                       " values. Ask for one with the results only.");
    }
  }

  Certificate& certificate_;
  std::string where_;
  Names resultName_;
  std::size_t lists_ = 0;
  std::size_t count_ = 0;
};

}  // namespace

void AddDccTables(pugi::xml_node root, Certificate& certificate) {
  TableReader reader(certificate);
  std::size_t number = 0;
  for (const pugi::xml_node measured :
       root.child("dcc:measurementResults").children("dcc:measurementResult")) {
    for (const pugi::xml_node result : measured.child("dcc:results").children("dcc:result")) {
      reader.TakeResult(result, "result " + std::to_string(++number));
    }
  }
}

}  // namespace tarvell
