// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/DccTables.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/text/Text.h"
#include "exchange/DccItems.h"
#include "exchange/DccValues.h"
#include "exchange/DccXml.h"
#include "exchange/TableParts.h"
#include "exchange/Units.h"

namespace tarvell {

namespace {

constexpr std::size_t kNoteLimit = 100;

class TableReader {
 public:
  TableReader(pugi::xml_node root, Certificate& certificate)
      : items_(root, certificate.items), certificate_(certificate) {}

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
      if (TakeLists(list)) {
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
    NoteProblems();
    if (columns.size() > 1) {
      Add(list, std::move(columns));
    } else if (!columns.empty()) {
      Note(columns.front(), "it is not a column of a table");
    }
  }

  /// Takes the lists in a list as one table. False if they are tables of their own.
  bool TakeLists(pugi::xml_node list) {
    bool isTaken = AddTableOfLists(list);
    if (!isTaken) {
      // Whoever reads these lists again names them.
      problems_.clear();
      isTaken = AddTableOfColumns(list);
    }
    if (isTaken) {
      NoteProblems();
    }
    problems_.clear();
    return isTaken;
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
    const bool isByRow = AreAlike(lists, [&](std::size_t i, std::size_t) { return lists[0][i]; }) &&
                         AreNamedAlike(lists);
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
      TakeNames(nodes[l], columns.back());
    }
    Add(list, std::move(columns));
    return true;
  }

  /// One list for each column, with all values of it.
  bool AddTableOfColumns(pugi::xml_node list) {
    std::vector<CertificateColumn> columns;
    std::size_t rows = 1;
    for (const pugi::xml_node child : list.children("dcc:list")) {
      const pugi::xml_node only = child.child("dcc:quantity");
      if (only.empty() || !only.next_sibling("dcc:quantity").empty() ||
          !child.child("dcc:list").empty()) {
        return false;
      }
      std::vector<CertificateColumn> own = ColumnsOf(child);
      if (own.empty()) {
        return false;
      }
      TakeNames(child, own.front());
      rows = std::max(rows, own.front().series.front().values.size());
      columns.push_back(std::move(own.front()));
    }
    const bool fits = std::ranges::all_of(columns, [&](const CertificateColumn& column) {
      const std::size_t values = column.series.front().values.size();
      return values == rows || values == 1;
    });
    if (columns.size() < 2 || rows == 1 || !fits) {
      return false;
    }
    Add(list, std::move(columns));
    return true;
  }

  /// A list of one column may have the names instead of its quantities.
  static void TakeNames(pugi::xml_node list, CertificateColumn& column) {
    if (Names name = NamesOf(list.child("dcc:name")); !name.empty()) {
      column.caption = std::move(name);
    }
    if (const std::string refType = Shortened(list.attribute("refType").value());
        !refType.empty()) {
      column.refType = refType;
    }
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

  /// Whether the quantities of each list have the names and the kinds of those in the first one.
  static bool AreNamedAlike(const std::vector<std::vector<CertificateColumn>>& lists) {
    return std::ranges::all_of(lists, [&](const std::vector<CertificateColumn>& list) {
      return std::ranges::equal(list, lists.front(), [](const auto& one, const auto& other) {
        return one.caption == other.caption && one.refType == other.refType;
      });
    });
  }

  static void Append(CertificateColumn& column, const CertificateColumn& value) {
    for (std::size_t i = 0; i < column.series.size(); ++i) {
      const Series& from = value.series[std::min(i, value.series.size() - 1)];
      AppendValue(
          from.values.front(),
          from.uncertainties.empty() ? std::nullopt : std::optional(from.uncertainties.front()),
          column.series[i]);
    }
  }

  void Add(pugi::xml_node list, std::vector<CertificateColumn> columns) {
    std::size_t rows = 0;
    for (const CertificateColumn& column : columns) {
      rows = std::max(rows, column.series.front().values.size());
    }
    CheckColumns(columns.size(), Where());
    CertificateTable table;
    table.where = Where();
    table.name = NamesOf(list.child("dcc:name"));
    if (table.name.empty()) {
      table.name = resultName_;
    }
    for (CertificateColumn& column : columns) {
      if (!FitTo(rows, column)) {
        Note(column, "it does not have a value for each row");
        continue;
      }
      table.columns.push_back(std::move(column));
    }
    table.section = Shortened(SectionOf(list));
    table.item = items_.Of(list, table.name);
    table.isItemOpen = !table.item && certificate_.items.size() > 1;
    certificate_.tables.push_back(std::move(table));
  }

  /// The nearest name or refType of a list, or of what it is in, that says something about its
  /// results, such as "As found" or "afterAdjustment".
  static std::string SectionOf(pugi::xml_node list) {
    for (const auto& find : {StateOf, ChannelOf}) {
      for (pugi::xml_node node = list; !node.empty(); node = node.parent()) {
        if (std::string text = find(node); !text.empty()) {
          return text;
        }
      }
    }
    return {};
  }

  static std::string StateOf(pugi::xml_node node) {
    const std::string status = StatusOf(node);
    return !status.empty()
               ? status
               : Telling(node, [](std::string_view text) { return !StateIn(text).empty(); });
  }

  /// What all influence conditions of a measurement say about its state; "" where they say nothing.
  static std::string StatusOf(pugi::xml_node measured) {
    std::string status;
    for (const pugi::xml_node condition :
         measured.child("dcc:influenceConditions").children("dcc:influenceCondition")) {
      const std::string text = TextOf(condition.child("dcc:status"));
      if (StateIn(text).empty() || text == status) {
        continue;
      }
      if (!status.empty()) {
        return {};
      }
      status = text;
    }
    return status;
  }

  static std::string ChannelOf(pugi::xml_node node) {
    return Telling(node, [](std::string_view text) { return !ChannelIn(text).empty(); });
  }

  /// The name or the refType of an element that fits; "" for none.
  template <typename Fits>
  static std::string Telling(pugi::xml_node node, const Fits& fits) {
    const Names names = NamesOf(node.child("dcc:name"));
    const auto found =
        std::ranges::find_if(names, [&](const LocalText& name) { return fits(name.text); });
    const std::string_view kind = node.attribute("refType").value();
    return found != names.end() ? found->text : std::string(fits(kind) ? kind : "");
  }

  [[nodiscard]] std::string Where() const {
    return where_ + (lists_ == 0 ? "" : ", list " + std::to_string(lists_));
  }

  void Note(const CertificateColumn& column, const std::string& why) {
    if (certificate_.notes.size() < kNoteLimit) {
      certificate_.notes.push_back("The column " + Quoted(NameIn(column.caption, "")) + " (" +
                                   Where() + ") is not used, because " + why + ".");
    }
  }

  void NoteProblems() {
    for (const auto& [column, why] : problems_) {
      Note(column, why);
    }
    problems_.clear();
  }

  /// A single value holds for every row. False for a column with another number of values.
  bool FitTo(std::size_t rows, CertificateColumn& column) {
    for (Series& series : column.series) {
      if (series.values.size() == 1 && rows > 1) {
        count_.Add(rows * 2);
        column.isRepeated = true;
        series.values.resize(rows, series.values.front());
        if (!series.uncertainties.empty()) {
          series.uncertainties.resize(rows, series.uncertainties.front());
        }
      }
      if (series.values.size() != rows) {
        return false;
      }
    }
    return true;
  }

  std::vector<CertificateColumn> ColumnsOf(pugi::xml_node list) {
    std::vector<CertificateColumn> columns;
    for (const pugi::xml_node quantity : list.children("dcc:quantity")) {
      CertificateColumn column = {NamesOf(quantity.child("dcc:name")),
                                  Shortened(quantity.attribute("refType").value()),
                                  {}};
      const std::string problem = AddSeries(quantity, column.series, count_);
      if (!problem.empty() && column.series.empty()) {
        problems_.emplace_back(column, problem);
      }
      if (!column.series.empty()) {
        columns.push_back(std::move(column));
      }
    }
    return columns;
  }

  DccItems items_;
  Certificate& certificate_;
  std::string where_;
  Names resultName_;
  std::size_t lists_ = 0;
  ValueCount count_;
  /// The quantities of the lists that are being read whose values cannot be used, and why.
  std::vector<std::pair<CertificateColumn, std::string>> problems_;
};

}  // namespace

void AddDccTables(pugi::xml_node root, Certificate& certificate) {
  TableReader reader(root, certificate);
  std::size_t number = 0;
  for (const pugi::xml_node measured :
       root.child("dcc:measurementResults").children("dcc:measurementResult")) {
    for (const pugi::xml_node result : measured.child("dcc:results").children("dcc:result")) {
      reader.TakeResult(result, "result " + std::to_string(++number));
    }
  }
}

}  // namespace tarvell
