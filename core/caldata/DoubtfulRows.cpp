// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/DoubtfulRows.h"

#include <algorithm>
#include <vector>

#include "core/text/Text.h"

namespace tarvell {

std::string RowsText(const RowSet& rows) {
  std::vector<std::string> parts;
  for (std::size_t first = 0; first < rows.size(); ++first) {
    if (!rows[first]) {
      continue;
    }
    std::size_t last = first;
    while (last + 1 < rows.size() && rows[last + 1]) {
      ++last;
    }
    parts.push_back(std::to_string(first + 1));
    // Only three or more adjacent rows are named as a range.
    if (last - first >= 2) {
      parts.back() += " to " + std::to_string(last + 1);
      first = last;
    }
  }
  std::string text = rows.count() == 1 ? "row " : "rows ";
  for (std::size_t i = 0; i < parts.size(); ++i) {
    text += (i == 0 ? "" : i + 1 == parts.size() ? " and " : ", ") + parts[i];
  }
  return text;
}

RowSet RowsBetween(std::size_t first, std::size_t end) {
  RowSet rows;
  for (std::size_t row = first; row < std::min(end, rows.size()); ++row) {
    rows.set(row);
  }
  return rows;
}

bool HasEmptyField(std::string_view line, std::size_t columns) {
  std::string_view rest = WithoutFirst(line, 1);
  for (std::size_t column = 0; column < columns; ++column) {
    if (std::ranges::all_of(rest, [](char c) { return IsBlankOrTab(c) || c == ':'; })) {
      return false;
    }
    const std::size_t colon = std::min(rest.find(':'), rest.size());
    if (std::ranges::all_of(rest.substr(0, colon), &IsBlankOrTab)) {
      return true;
    }
    rest.remove_prefix(std::min(colon + 1, rest.size()));
  }
  return false;
}

void DoubtfulRows::Take(TableIndex index, bool hasEmptyField, bool isMissing, bool isBeyond) {
  const std::size_t row = index.value;
  count = std::max(count, row + 1);
  emptyField.set(row, hasEmptyField);
  missing.set(row, isMissing);
  beyond.set(row, isBeyond);
}

}  // namespace tarvell
