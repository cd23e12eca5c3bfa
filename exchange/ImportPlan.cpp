// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/ImportPlan.h"

#include <algorithm>

#include "core/caldata/SetPages.h"
#include "core/text/Text.h"
#include "exchange/HeaderPlan.h"
#include "exchange/ModelColumns.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

bool NamesPage(const CertificateTable& table, std::string_view page) {
  return std::ranges::any_of(
      table.name, [&](const LocalText& name) { return ContainsIgnoringCase(name.text, page); });
}

/// Proposes the tables of the pages.
class Proposal {
 public:
  Proposal(const ImportTarget& target, const Certificate& certificate)
      : target_(target), certificate_(certificate) {}

  [[nodiscard]] PageChoice For(std::int16_t page) const {
    const std::vector<ModelColumn> columns = ModelColumns(target_.model, target_.data, page);
    PageChoice best;
    int bestScore = 0;
    for (std::size_t i = 0; i < certificate_.tables.size(); ++i) {
      ColumnMatch match = MatchedColumns(certificate_.tables[i], columns);
      const int score = Score(page, certificate_.tables[i], match, columns);
      if (score > bestScore) {
        best = {i, std::move(match)};
        bestScore = score;
      }
    }
    return best;
  }

 private:
  /// 0 for a table that is not meant for the page.
  [[nodiscard]] int Score(std::int16_t page, const CertificateTable& table,
                          const ColumnMatch& match, const std::vector<ModelColumn>& columns) const {
    if (!IsUsable(match, columns)) {
      return 0;
    }
    int score = static_cast<int>(
        std::ranges::count_if(match, [](const auto& source) { return source.has_value(); }));
    if (!HasPages(target_.model)) {
      return score + NamedBonus(table, target_.now.header.serialNumber);
    }
    const std::string name = target_.data.GetCalPageName(page);
    if (!table.page.empty()) {
      return EqualsIgnoringCase(table.page, name) ? kNamed + score : 0;
    }
    const bool isNamed = NamesPage(table, name);
    const PageSource source = {
        target_.model, target_.data,
        page,          target_.now.pages.at(static_cast<std::size_t>(page)).rows,
        table,         match};
    return isNamed ? kNamed + score : IsNearPage(source) ? score : 0;
  }

  static int NamedBonus(const CertificateTable& table, const std::string& serial) {
    return !serial.empty() && NamesPage(table, serial) ? kNamed : 0;
  }

  static constexpr int kNamed = 100;

  const ImportTarget& target_;
  const Certificate& certificate_;
};

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
    text += "\n" + NameIn(table.name, target.language) + " (" + table.where + "): " + columns +
            ", " + std::to_string(table.RowCount()) + (table.RowCount() == 1 ? " row." : " rows.");
  }
  return text;
}

std::optional<std::size_t> ProposedItem(const ImportTarget& target,
                                        const Certificate& certificate) {
  const std::vector<CertificateItem>& items = certificate.items;
  auto found =
      std::ranges::find(items, target.now.header.serialNumber, &CertificateItem::serialNumber);
  if (found == items.end()) {
    found = std::ranges::find_if(items, [&](const CertificateItem& item) {
      return NamesModel(item.model, target.model.code);
    });
  }
  if (items.empty()) {
    return std::nullopt;
  }
  return found == items.end() ? 0 : static_cast<std::size_t>(found - items.begin());
}

void AppendAll(std::vector<std::string>& all, const std::vector<std::string>& more) {
  all.insert(all.end(), more.begin(), more.end());
}

/// The rows of a page after the import, and where their values come from.
DraftPage AfterPage(const DraftPage& now, const PagePlan& plan, bool removesMissing,
                    bool hasFixedRows) {
  DraftPage page = {plan.memberSerial.empty() ? now.serialNumber : plan.memberSerial, {}, {}};
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

}  // namespace

ImportChoices ProposedChoices(const ImportTarget& target, const Certificate& certificate) {
  ImportChoices choices = {ProposedItem(target, certificate), {}};
  const Proposal proposal(target, certificate);
  for (std::size_t page = 0; page < target.now.pages.size(); ++page) {
    choices.pages.push_back(proposal.For(static_cast<std::int16_t>(page)));
  }
  return choices;
}

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

ImportPlan PlanImport(const ImportTarget& target, const Certificate& certificate,
                      const ImportChoices& choices) {
  ImportPlan plan;
  PlanHeader(target, certificate, choices, plan);
  bool isChosen = false;
  for (std::size_t i = 0; i < std::min(choices.pages.size(), target.now.pages.size()); ++i) {
    const PageChoice& choice = choices.pages[i];
    const auto page = static_cast<std::int16_t>(i);
    if (!choice.table || *choice.table >= certificate.tables.size()) {
      continue;
    }
    if (!IsUsable(choice.match, ModelColumns(target.model, target.data, page))) {
      plan.notes.push_back(target.data.GetCalPageName(page) + (HasPages(target.model) ? ": " : "") +
                           "Choose the columns of the point and of at least one value.");
      isChosen = true;
      continue;
    }
    PagePlan planned = PlanPage({target.model, target.data, page, target.now.pages[i].rows,
                                 certificate.tables[*choice.table], choice.match, target.language,
                                 certificate.isExport});
    AppendAll(plan.doubts, planned.doubts);
    AppendAll(plan.notes, planned.notes);
    if (!planned.IsEmpty()) {
      plan.pages.push_back(std::move(planned));
    }
  }
  if (plan.pages.empty() && !isChosen) {
    plan.notes.insert(plan.notes.begin(), NoTable(target, certificate));
  }
  AppendAll(plan.notes, certificate.notes);
  return plan;
}

EditorState AfterImport(const EditorState& now, const ImportPlan& plan, bool removesMissing) {
  EditorState after = now;
  after.header = plan.header;
  after.openCell.reset();
  const bool hasFixedRows = now.pages.size() > 1;
  for (const PagePlan& page : plan.pages) {
    DraftPage& target = after.pages.at(static_cast<std::size_t>(page.page));
    target = AfterPage(target, page, removesMissing, hasFixedRows);
    if (now.option && page.page == kOptionPage) {
      after.option = true;
    }
  }
  if (plan.option) {
    after.option = plan.option;
  }
  return after;
}

}  // namespace tarvell
