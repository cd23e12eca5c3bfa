// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/ComparedTables.h"

#include <algorithm>
#include <optional>
#include <span>

#include "core/numbers/DecimalDifference.h"
#include "core/numbers/Numbers.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// A cell before, in and after its number.
struct CellParts {
  std::string_view before;
  std::string_view number;
  std::string_view after;
};

CellParts PartsOf(std::string_view cell) {
  constexpr std::string_view kOfNumber = "0123456789.";
  std::size_t start = std::min(cell.find_first_of(kOfNumber), cell.size());
  if (start > 0 && (cell[start - 1] == '-' || cell[start - 1] == '+')) {
    --start;
  }
  const std::size_t end = std::min(cell.find_first_not_of(kOfNumber, start + 1), cell.size());
  return {cell.substr(0, start), cell.substr(start, end - start), cell.substr(end)};
}

bool IsSameKey(std::string_view a, std::string_view b) {
  const std::optional<double> first = ParseNumber(a);
  const std::optional<double> second = ParseNumber(b);
  return first && second ? *first == *second : Trim(a) == Trim(b);
}

bool IsSameRow(const TableRow& a, const TableRow& b, std::size_t keys) {
  return std::ranges::equal(std::span(a).first(std::min(keys, a.size())),
                            std::span(b).first(std::min(keys, b.size())), &IsSameKey);
}

}  // namespace

std::vector<ComparedRow> ComparedRows(const TableRowList& earlier, const TableRowList& later,
                                      std::size_t keys) {
  const auto withoutCaptions = [](const TableRowList& rows) {
    return std::span(rows).subspan(std::min<std::size_t>(1, rows.size()));
  };
  const auto olds = withoutCaptions(earlier);
  const auto news = withoutCaptions(later);
  std::vector<ComparedRow> rows;
  std::size_t next = 0;
  for (const TableRow& row : news) {
    const auto rest = olds.subspan(next);
    const auto found =
        std::ranges::find_if(rest, [&](const TableRow& old) { return IsSameRow(old, row, keys); });
    if (found == rest.end()) {
      rows.push_back({{}, row});
      continue;
    }
    for (auto old = rest.begin(); old != found; ++old) {
      rows.push_back({*old, {}});
    }
    rows.push_back({*found, row});
    next += static_cast<std::size_t>(found - rest.begin()) + 1;
  }
  for (const TableRow& old : olds.subspan(next)) {
    rows.push_back({old, {}});
  }
  return rows;
}

std::string CellDifference(std::string_view earlier, std::string_view later) {
  const CellParts old = PartsOf(Trim(earlier));
  const CellParts now = PartsOf(Trim(later));
  const bool isEqual = old.number == now.number && old.after == now.after;
  if (old.number.empty() || now.number.empty() || old.before != now.before || isEqual) {
    return "";
  }
  const std::string difference =
      SignedDifference({now.number, Trim(now.after)}, {old.number, Trim(old.after)});
  return difference.empty() ? difference : difference + std::string(now.after);
}

}  // namespace tarvell
