// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/ImportPlan.h"

#include <algorithm>
#include <set>
#include <utility>

#include "core/caldata/SetPages.h"
#include "core/text/Text.h"
#include "exchange/HeaderPlan.h"
#include "exchange/JoinedTables.h"
#include "exchange/ModelColumns.h"
#include "exchange/TableParts.h"

namespace tarvell {

namespace {

std::string Rows(const CertificateTable& table) {
  return std::to_string(table.RowCount()) + (table.RowCount() == 1 ? " row" : " rows");
}

/// What a certificate without a table for the model has instead.
std::string NoTable(const ImportTarget& target, const Certificate& certificate) {
  std::string wanted;
  for (const ModelColumn& column : ModelColumns(target.model, target.data, 0)) {
    wanted += (wanted.empty() ? "" : ", ") + column.caption;
  }
  std::string text = "The certificate has no table for the model " +
                     std::string(target.model.code) + ", which has the columns " + wanted + ". ";
  if (certificate.tables.empty()) {
    return text + "It has no table at all.";
  }
  text += "It has:";
  for (const CertificateTable& table : certificate.tables) {
    std::string columns;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      columns += (columns.empty() ? "" : ", ") + SourceName(table, {i, false}, target.language);
    }
    text += "\n" + TitleOf(table, target.language) + " (" + table.where + "): " + columns + ", " +
            Rows(table) + ".";
  }
  return text;
}

std::string TableName(const ImportTarget& target, const CertificateTable& table) {
  return Quoted(TitleOf(table, target.language)) + " (" + table.where + ")";
}

void AppendAll(std::vector<std::string>& all, const std::vector<std::string>& more) {
  all.insert(all.end(), more.begin(), more.end());
}

/// Leaves each sentence once: a point may be in a table many times.
void DropRepeated(std::vector<std::string>& sentences) {
  std::set<std::string> known;
  std::erase_if(sentences,
                [&](const std::string& sentence) { return !known.insert(sentence).second; });
}

/// The rows of a page after the import, and where their values come from.
DraftPage AfterPage(const DraftPage& now, const PagePlan& plan, bool removesMissing,
                    bool hasFixedRows) {
  DraftPage page = {plan.memberSerial.value_or(now.serialNumber), {}, {}};
  GridRow before = kFirstDataRow;
  for (const PlannedRow& planned : plan.rows) {
    const bool isOld = planned.row.change != PastedRow::Change::Added;
    const GridRow from = before;
    before = before + (isOld ? 1 : 0);
    if (removesMissing && !hasFixedRows && planned.row.change == PastedRow::Change::Missing) {
      continue;
    }
    page.rows.push_back(planned.row.after);
    const GridRow to = {static_cast<std::int16_t>(page.rows.size())};
    const auto columns = static_cast<std::int16_t>(planned.row.after.size());
    for (std::int16_t column = 0; column < columns; ++column) {
      const bool isTaken = std::ranges::find(planned.taken, column) != planned.taken.end();
      const auto known = now.origins.find({from, column});
      if (isTaken) {
        page.origins[{to, column}] = Origin::Operator;
      } else if (isOld && known != now.origins.end()) {
        page.origins[{to, column}] = known->second;
      }
    }
  }
  return page;
}

/// Builds the plan of an import.
class Planning {
 public:
  Planning(const ImportTarget& target, const Certificate& certificate, const ImportChoices& choices)
      : target_(target), certificate_(certificate), choices_(choices) {}

  ImportPlan Run() {
    PlanHeader(target_, certificate_, choices_, plan_);
    const std::size_t pages = std::min(choices_.pages.size(), target_.now.pages.size());
    for (std::size_t i = 0; i < pages; ++i) {
      if (!choices_.pages[i].tables.empty()) {
        Take(static_cast<std::int16_t>(i), choices_.pages[i]);
      } else if (choices_.pages[i].IsOpen()) {
        AskForTable(static_cast<std::int16_t>(i), choices_.pages[i].alternatives);
      }
    }
    PlanMembers(target_, certificate_, choices_, plan_);
    if (used_.empty() && offered_.empty()) {
      plan_.notes.insert(plan_.notes.begin(),
                         HasTables() ? "No table is chosen." : NoTable(target_, certificate_));
    }
    NoteUnused();
    AppendAll(plan_.doubts, certificate_.doubts);
    AppendAll(plan_.notes, certificate_.notes);
    DropRepeated(plan_.doubts);
    DropRepeated(plan_.notes);
    return std::move(plan_);
  }

 private:
  void Take(std::int16_t page, const PageChoice& choice) {
    std::vector<const CertificateTable*> tables;
    for (const std::size_t table : choice.tables) {
      tables.push_back(&certificate_.tables.at(table));
      used_.insert(table);
      DoubtItem(*tables.back());
    }
    const CertificateTable joined = Joined(tables);
    const std::vector<ModelColumn> columns = ModelColumns(target_.model, target_.data, page);
    const std::string where = Where(page);
    for (const AskedColumn& asked : choice.asked) {
      plan_.open.push_back(where + columns.at(asked.column).caption + " can be " +
                           SourceNames(joined, asked) + ". Choose the column.");
    }
    if (!IsUsable(choice.match, columns)) {
      if (choice.asked.empty()) {
        plan_.notes.push_back(where + "Choose the columns of the point and of at least one value.");
      }
      AppendAll(plan_.notes, UnknownUnits(joined, choice.match, target_.language));
      return;
    }
    // The user chose alternatives together.
    if (choice.alternatives.empty()) {
      DoubtJoined(where, tables);
    }
    DoubtRivals(where, joined, choice);
    PagePlan planned = PlanPage({target_.model, target_.data, page,
                                 target_.now.pages.at(static_cast<std::size_t>(page)).rows, joined,
                                 choice.match, target_.language, certificate_.isUnchanged});
    AppendAll(plan_.doubts, planned.doubts);
    AppendAll(plan_.notes, planned.notes);
    const bool isWithoutRows = joined.RowCount() == 0;
    if (isWithoutRows) {
      plan_.notes.push_back(where + "The exported table has no rows. Only the header goes in.");
    }
    if (isWithoutRows || !planned.IsEmpty()) {
      plan_.pages.push_back(std::move(planned));
    }
  }

  /// Whether some table of the certificate suits the model.
  [[nodiscard]] bool HasTables() const {
    return std::ranges::any_of(
        ProposedChoices(target_, certificate_).pages,
        [](const PageChoice& page) { return !page.tables.empty() || !page.alternatives.empty(); });
  }

  /// The page as the beginning of a sentence.
  [[nodiscard]] std::string Where(std::int16_t page) const {
    return HasPages(target_.model) ? target_.data.GetCalPageName(page) + ": " : std::string();
  }

  void AskForTable(std::int16_t page, const std::vector<std::vector<std::size_t>>& alternatives) {
    std::string names;
    const std::size_t named = std::min(alternatives.size(), kNamedTables);
    for (std::size_t i = 0; i < named; ++i) {
      names += i == 0 ? "" : i + 1 == alternatives.size() ? " or " : ", ";
      names += TableName(target_, certificate_.tables.at(alternatives[i].front()));
    }
    if (named < alternatives.size()) {
      names += " or one of " + std::to_string(alternatives.size() - named) + " more";
    }
    for (const std::vector<std::size_t>& tables : alternatives) {
      offered_.insert(tables.begin(), tables.end());
    }
    plan_.open.push_back(Where(page) + "The values can be those of " + names +
                         ". Choose the table.");
  }

  /// Titles that say more than which part of a table follows.
  void DoubtJoined(const std::string& where, const std::vector<const CertificateTable*>& tables) {
    for (const CertificateTable* table : tables) {
      // Tables of different instruments are the rows of one.
      const bool areOfItems = table->item != tables.front()->item;
      if (!areOfItems && !AreTitledAsParts(*tables.front(), *table)) {
        plan_.doubts.push_back(where + "The tables " + TableName(target_, *tables.front()) +
                               " and " + TableName(target_, *table) +
                               " are taken together, as parts of one table.");
      }
    }
  }

  [[nodiscard]] std::string SourceNames(const CertificateTable& table,
                                        const AskedColumn& asked) const {
    std::string names;
    for (std::size_t i = 0; i < asked.sources.size(); ++i) {
      names += i == 0 ? "" : i + 1 == asked.sources.size() ? " or " : ", ";
      names += Quoted(SourceName(table, asked.sources[i], target_.language));
    }
    return names;
  }

  void DoubtItem(const CertificateTable& table) {
    if (table.isOfStandards) {
      plan_.doubts.push_back("The table " + TableName(target_, table) +
                             " is in a list of the standards that were used.");
    }
    const bool isOther = table.item && choices_.item && *table.item != *choices_.item &&
                         !IsMember(target_, certificate_.items.at(*table.item));
    if (isOther) {
      plan_.doubts.push_back("The table " + TableName(target_, table) +
                             " is about the instrument " +
                             Quoted(certificate_.items[*table.item].serialNumber) + ".");
    } else if (table.isItemOpen && !isOpenDoubted_ &&
               HasSeveralInstruments(target_, certificate_)) {
      isOpenDoubted_ = true;
      plan_.doubts.push_back(
          "The certificate is about several instruments, and does not say which "
          "of them its results are about, such as the table " +
          TableName(target_, table) + ".");
    }
  }

  void DoubtRivals(const std::string& where, const CertificateTable& used,
                   const PageChoice& choice) {
    for (const std::size_t rival : choice.rivals) {
      const bool isUsed = std::ranges::any_of(choices_.pages, [&](const PageChoice& page) {
        return std::ranges::find(page.tables, rival) != page.tables.end();
      });
      if (!isUsed) {
        plan_.doubts.push_back(where + "The table " +
                               TableName(target_, certificate_.tables.at(rival)) +
                               " fits as well as " + TableName(target_, used) + ", which is used.");
      }
    }
  }

  /// Names the tables of which no page takes anything.
  void NoteUnused() {
    std::size_t more = 0;
    std::size_t named = 0;
    for (std::size_t i = 0; i < certificate_.tables.size(); ++i) {
      const CertificateTable& table = certificate_.tables[i];
      if (used_.contains(i) || offered_.contains(i)) {
        continue;
      }
      if (++named > kNamedTables) {
        ++more;
        continue;
      }
      if (!used_.empty()) {
        plan_.notes.push_back("The table " + TableName(target_, table) + ", " + Rows(table) +
                              ", is not used, because " + WhyUnused(table) + ".");
      }
      AppendAll(plan_.notes, UnknownUnits(table, {}, target_.language));
    }
    if (more > 0 && !used_.empty()) {
      plan_.notes.push_back(std::to_string(more) + " more tables are not used.");
    }
  }

  [[nodiscard]] std::string WhyUnused(const CertificateTable& table) const {
    if (table.item && choices_.item && *table.item != *choices_.item) {
      return "it is about another instrument";
    }
    for (std::size_t page = 0; page < target_.now.pages.size(); ++page) {
      const std::vector<ModelColumn> columns =
          ModelColumns(target_.model, target_.data, static_cast<std::int16_t>(page));
      if (IsUsable(MatchedColumns(table, columns).match, columns)) {
        return HasPages(target_.model) ? "neither its name nor its values are those of a free page"
                                       : "another table is used";
      }
    }
    return "its columns are not those of the model";
  }

  static constexpr std::size_t kNamedTables = 20;

  const ImportTarget& target_;
  const Certificate& certificate_;
  const ImportChoices& choices_;
  std::set<std::size_t> used_;
  std::set<std::size_t> offered_;  ///< of which the user has to choose
  bool isOpenDoubted_ = false;
  ImportPlan plan_;
};

}  // namespace

std::vector<std::string> ImportPlan::Rounded() const {
  std::vector<std::string> all;
  for (const PagePlan& page : pages) {
    AppendAll(all, page.rounded);
  }
  return all;
}

std::size_t ImportPlan::Count(PastedRow::Change change) const {
  std::size_t count = 0;
  for (const PagePlan& page : pages) {
    count += static_cast<std::size_t>(std::ranges::count(
        page.rows, change, [](const PlannedRow& row) { return row.row.change; }));
  }
  return count;
}

bool ImportPlan::HasPlace(bool missingRemoved) const {
  return std::ranges::all_of(pages,
                             [&](const PagePlan& page) { return page.HasPlace(missingRemoved); });
}

bool HasOnlyDefaults(const EditorState& now) {
  if (now.pages.size() != 1) {
    return false;
  }
  const DraftPage& page = now.pages.front();
  for (std::size_t i = 0; i < page.rows.size(); ++i) {
    const auto value = static_cast<std::int16_t>(page.rows[i].size() - 1);
    const auto origin = page.origins.find({RowOf({i}), value});
    if (origin == page.origins.end() || origin->second != Origin::Template) {
      return false;
    }
  }
  return !page.rows.empty();
}

ImportPlan PlanImport(const ImportTarget& target, const Certificate& certificate,
                      const ImportChoices& choices) {
  return Planning(target, certificate, choices).Run();
}

EditorState AfterImport(const EditorState& now, const ImportPlan& plan, bool removesMissing) {
  EditorState after = now;
  after.header = plan.header;
  after.openCell.reset();
  const bool hasFixedRows = now.pages.size() > 1;
  for (const PagePlan& page : plan.pages) {
    DraftPage& target = after.pages.at(static_cast<std::size_t>(page.page));
    target = AfterPage(target, page, removesMissing, hasFixedRows);
  }
  if (plan.option) {
    after.option = plan.option;
  }
  return after;
}

}  // namespace tarvell
