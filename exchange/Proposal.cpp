// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <map>
#include <utility>

#include "core/text/Text.h"
#include "exchange/HeaderPlan.h"
#include "exchange/ImportPlan.h"
#include "exchange/JoinedTables.h"
#include "exchange/ModelColumns.h"
#include "exchange/TableParts.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

bool NamesPage(const CertificateTable& table, std::string_view page) {
  const auto has = [&](std::string_view text) { return ContainsIgnoringCase(text, page); };
  return has(table.section) || has(table.part) ||
         std::ranges::any_of(table.name, [&](const LocalText& name) { return has(name.text); });
}

/// Proposes the tables of the pages.
class Proposal {
 public:
  Proposal(const ImportTarget& target, const Certificate& certificate,
           std::optional<std::size_t> item, const RememberedMatch& remembered)
      : target_(target), certificate_(certificate), item_(item), remembered_(remembered) {}

  [[nodiscard]] PageChoice For(std::int16_t page) const {
    const std::vector<ModelColumn> columns = ModelColumns(target_.model, target_.data, page);
    const std::vector<Candidate> candidates = CandidatesFor(page, columns);
    if (candidates.empty()) {
      return {};
    }
    const std::vector<std::vector<Candidate>> kinds = ByKind(candidates);
    if (kinds.size() == 1) {
      return ChoiceAmong(kinds.front(), columns);
    }
    PageChoice open;
    for (const std::vector<Candidate>& kind : kinds) {
      open.alternatives.push_back(ChoiceAmong(kind, columns).tables);
    }
    open.match = kinds.front().front().proposed.match;
    open.canJoinAlternatives = CanJoin(open.alternatives, candidates, columns);
    return open;
  }

 private:
  /// A table that can be meant for a page.
  struct Candidate {
    std::size_t table = 0;
    ProposedMatch proposed;
    int score = 0;
  };

  /// The best of these tables, and what can be joined with it.
  [[nodiscard]] PageChoice ChoiceAmong(const std::vector<Candidate>& candidates,
                                       const std::vector<ModelColumn>& columns) const {
    const auto best = std::ranges::max_element(candidates, {}, &Candidate::score);
    PageChoice choice = {{best->table}, best->proposed.match, best->proposed.asked, {}};
    JoinedPoints points(best->proposed.match, columns);
    (void)points.Add(certificate_.tables[best->table]);
    for (const Candidate& other : candidates) {
      if (&other == &*best) {
        continue;
      }
      if (IsPart(*best, other) && points.Add(certificate_.tables[other.table])) {
        choice.tables.push_back(other.table);
      } else if (other.score == best->score && choice.rivals.size() < kRivals) {
        choice.rivals.push_back(other.table);
      }
    }
    std::ranges::sort(choice.tables);
    return choice;
  }

  /// The tables by the kinds of their results, in the order of the file. Where tables name the
  /// page, the others only add to their kinds.
  [[nodiscard]] std::vector<std::vector<Candidate>> ByKind(
      const std::vector<Candidate>& candidates) const {
    const bool isNamed =
        std::ranges::any_of(candidates, [](const Candidate& each) { return each.score >= kNamed; });
    std::map<std::string, std::size_t> places;
    for (const Candidate& each : candidates) {
      if (!isNamed || each.score >= kNamed) {
        places.try_emplace(KindOfResults(certificate_.tables[each.table]), places.size());
      }
    }
    std::vector<std::vector<Candidate>> kinds(places.size());
    for (const Candidate& each : candidates) {
      const auto found = places.find(KindOfResults(certificate_.tables[each.table]));
      if (found != places.end()) {
        kinds[found->second].push_back(each);
      }
    }
    return kinds;
  }

  /// Whether the user may want all of these tables: none says when it was measured, and no point is
  /// in several of them.
  [[nodiscard]] bool CanJoin(const std::vector<std::vector<std::size_t>>& alternatives,
                             const std::vector<Candidate>& candidates,
                             const std::vector<ModelColumn>& columns) const {
    const Candidate* first = nullptr;
    std::optional<JoinedPoints> points;
    for (const std::vector<std::size_t>& tables : alternatives) {
      for (const std::size_t table : tables) {
        // They are in the order of their tables.
        const auto found = std::ranges::lower_bound(candidates, table, {}, &Candidate::table);
        if (first == nullptr) {
          first = &*found;
          points.emplace(first->proposed.match, columns);
        }
        if (HasState(certificate_.tables[table]) || !IsPart(*first, *found) ||
            !points->Add(certificate_.tables[table])) {
          return false;
        }
      }
    }
    return true;
  }

  [[nodiscard]] std::vector<Candidate> CandidatesFor(
      std::int16_t page, const std::vector<ModelColumn>& columns) const {
    std::vector<Candidate> candidates;
    for (std::size_t i = 0; i < certificate_.tables.size(); ++i) {
      const CertificateTable& table = certificate_.tables[i];
      const std::string chosen = remembered_ ? remembered_(table, page) : std::string();
      Candidate candidate = {i, ChosenOrMatched(chosen, table, columns), 0};
      candidate.score = Score(page, table, candidate.proposed, columns);
      if (candidate.score > 0) {
        candidates.push_back(std::move(candidate));
      }
    }
    return candidates;
  }

  /// Whether the rows of a table can follow those of another one.
  [[nodiscard]] bool IsPart(const Candidate& one, const Candidate& other) const {
    return one.proposed.asked.empty() && other.proposed.asked.empty() &&
           one.proposed.match == other.proposed.match &&
           HaveSameColumns(certificate_.tables[one.table], certificate_.tables[other.table]);
  }

  /// 0 for a table that is not meant for the page.
  [[nodiscard]] int Score(std::int16_t page, const CertificateTable& table,
                          const ProposedMatch& proposed,
                          const std::vector<ModelColumn>& columns) const {
    ColumnMatch match = proposed.match;
    for (const AskedColumn& asked : proposed.asked) {
      match.at(asked.column) = asked.sources.front();
    }
    if (!IsUsable(match, columns) || IsOfAnotherItem(table)) {
      return 0;
    }
    const int score = static_cast<int>(
        std::ranges::count_if(match, [](const auto& source) { return source.has_value(); }));
    const std::string name = target_.data.GetCalPageName(page);
    if (!HasPages(target_.model)) {
      return score + (NamesPage(table, Serial()) && !Serial().empty() ? kNamed : 0);
    }
    if (!table.page.empty()) {
      return EqualsIgnoringCase(table.page, name) ? kNamed + score : 0;
    }
    const bool isNamed = NamesPage(table, name);
    if (!isNamed && IsOfAnotherMember(table, page)) {
      return 0;
    }
    const PageSource source = {
        target_.model, target_.data,
        page,          target_.now.pages.at(static_cast<std::size_t>(page)).rows,
        table,         match};
    return isNamed ? kNamed + score : IsNearPage(source) ? score : 0;
  }

  [[nodiscard]] bool IsOfAnotherItem(const CertificateTable& table) const {
    return table.item && item_ && *table.item != *item_ &&
           !IsMember(target_, certificate_.items.at(*table.item));
  }

  /// Whether a table names another page of the set, or is about its member.
  [[nodiscard]] bool IsOfAnotherMember(const CertificateTable& table, std::int16_t page) const {
    const auto isAbout = [&](const std::string& name) {
      return table.item && IsMemberOf(certificate_.items.at(*table.item), name);
    };
    if (isAbout(target_.data.GetCalPageName(page))) {
      return false;
    }
    for (std::size_t i = 0; i < target_.now.pages.size(); ++i) {
      const std::string name = target_.data.GetCalPageName(static_cast<std::int16_t>(i));
      if (!name.empty() && (isAbout(name) || NamesPage(table, name))) {
        return true;
      }
    }
    return false;
  }

  [[nodiscard]] std::string Serial() const {
    return item_ && *item_ < certificate_.items.size() ? certificate_.items[*item_].serialNumber
                                                       : target_.now.header.serialNumber;
  }

  static constexpr int kNamed = 100;
  static constexpr std::size_t kRivals = 20;  ///< more are not worth naming

  const ImportTarget& target_;
  const Certificate& certificate_;
  std::optional<std::size_t> item_;
  const RememberedMatch& remembered_;
};

std::optional<std::size_t> ProposedItem(const ImportTarget& target,
                                        const Certificate& certificate) {
  const std::vector<CertificateItem>& items = certificate.items;
  const std::string& present = target.now.header.serialNumber;
  auto found = present.empty() ? items.end()
                               : std::ranges::find(items, present, &CertificateItem::serialNumber);
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

ImportChoices ChoicesFor(const ImportTarget& target, const Certificate& certificate,
                         std::optional<std::size_t> item, const RememberedMatch& remembered) {
  ImportChoices choices = {item, {}};
  const Proposal proposal(target, certificate, item, remembered);
  for (std::size_t page = 0; page < target.now.pages.size(); ++page) {
    choices.pages.push_back(proposal.For(static_cast<std::int16_t>(page)));
  }
  return choices;
}

}  // namespace

ImportChoices ProposedChoices(const ImportTarget& target, const Certificate& certificate,
                              const RememberedMatch& remembered) {
  return ChoicesFor(target, certificate, ProposedItem(target, certificate), remembered);
}

ImportChoices ProposedChoices(const ImportTarget& target, const Certificate& certificate,
                              std::size_t item, const RememberedMatch& remembered) {
  return ChoicesFor(target, certificate, item, remembered);
}

}  // namespace tarvell
