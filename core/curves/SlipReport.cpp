// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/SlipReport.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "core/text/Text.h"

namespace tarvell {

namespace {

/// "12.4 GHz, Calibration factor".
std::string CellName(const PageTable& table, Cell cell) {
  std::string point = PointName(table, cell.row);
  for (const ValueColumn& column : ValueColumnsOf(table)) {
    if (column.column == cell.column) {
      return point.empty() ? column.name : point + ", " + column.name;
    }
  }
  return point;
}

/// Where something is that is not on the shown page.
std::string Elsewhere(const PageSlips& found, std::int16_t page) {
  return found.table.page == page ? "" : "On the page " + found.name + ", ";
}

/// The notices of all pages, each followed by a blank.
std::string NoticesOf(std::span<const PageSlips> pages, std::int16_t page) {
  std::string notices;
  for (const PageSlips& each : pages) {
    if (!each.slips.notice.empty()) {
      notices += Elsewhere(each, page) + each.slips.notice + " ";
    }
  }
  return notices;
}

std::string CountOf(const std::vector<const PageSlips*>& marked) {
  std::size_t count = 0;
  std::vector<std::string> names;
  for (const PageSlips* each : marked) {
    count += each->slips.marks.size();
    names.push_back(each->name);
  }
  std::string where;
  if (!names.front().empty()) {
    where = (names.size() == 1 ? " on the page " : " on the pages ") + Listed(names);
  }
  return count == 1 ? "1 value" + where + " may be a slip of typing. "
                    : std::to_string(count) + " values" + where + " may be slips of typing. ";
}

}  // namespace

std::string SlipReport(std::span<const PageSlips> pages, std::int16_t page, Cell current) {
  const std::string notices = NoticesOf(pages, page);
  std::vector<const PageSlips*> marked;
  for (const PageSlips& each : pages) {
    if (!each.slips.marks.empty()) {
      marked.push_back(&each);
    }
  }
  if (marked.empty()) {
    return std::string(TrimRight(notices));
  }
  const auto shown =
      std::ranges::find(marked, page, [](const PageSlips* each) { return each->table.page; });
  const PageSlips& named = shown == marked.end() ? *marked.front() : **shown;
  const auto& marks = named.slips.marks;
  const auto found = shown == marked.end() ? marks.end() : marks.find(current);
  const auto& [cell, why] = found == marks.end() ? *marks.begin() : *found;
  return notices + CountOf(marked) + Elsewhere(named, page) + CellName(named.table, cell) + ": " +
         why;
}

std::vector<std::string> SlipSentences(const PageSlips& found) {
  const std::string page = found.name.empty() ? std::string() : found.name + ": ";
  std::vector<std::string> sentences;
  if (!found.slips.notice.empty()) {
    sentences.push_back(page + found.slips.notice);
  }
  for (const auto& [cell, why] : found.slips.marks) {
    sentences.push_back(page + CellName(found.table, cell) + ": " + why);
  }
  return sentences;
}

}  // namespace tarvell
