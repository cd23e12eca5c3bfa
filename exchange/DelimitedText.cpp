// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/DelimitedText.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/numbers/WrittenNumber.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr char kQuote = '"';
constexpr std::string_view kNamed = "sep=";
constexpr std::size_t kCellLimit = 500'000;

/// In the order of preference: a decimal comma or a sentence may add commas to a file with tabs.
constexpr std::array<char, 4> kSeparators = {'\t', ';', '|', ','};

/// In how many lines of `text` each separator is, outside quotes.
std::array<std::size_t, kSeparators.size()> LinesWith(std::string_view text) {
  std::array<std::size_t, kSeparators.size()> lines = {};
  std::array<bool, kSeparators.size()> isFound = {};
  bool isQuoted = false;
  const auto finish = [&] {
    for (std::size_t i = 0; i < kSeparators.size(); ++i) {
      lines.at(i) += isFound.at(i) ? 1 : 0;
    }
    isFound = {};
  };
  for (const char c : text) {
    isQuoted = isQuoted != (c == kQuote);
    const auto* found = std::ranges::find(kSeparators, c);
    if (!isQuoted && found != kSeparators.end()) {
      isFound.at(static_cast<std::size_t>(found - kSeparators.begin())) = true;
    } else if (!isQuoted && (c == '\n' || c == '\r')) {
      finish();
    }
  }
  finish();
  return lines;
}

/// A cell, and whether its quote is not closed.
struct TakenCell {
  std::string text;
  bool isUnclosed = false;
};

/// Takes the quoted cell at the beginning of `rest`.
TakenCell TakeQuoted(std::string_view& rest) {
  std::string cell;
  bool isClosed = false;
  std::size_t i = 1;
  for (; i < rest.size(); ++i) {
    if (rest[i] != kQuote) {
      cell += rest[i];
    } else if (rest.substr(i + 1).starts_with(kQuote)) {
      cell += rest[i++];
    } else {
      ++i;
      isClosed = true;
      break;
    }
  }
  rest.remove_prefix(std::min(i, rest.size()));
  return {std::move(cell), !isClosed};
}

TakenCell TakeCell(std::string_view& rest, char separator) {
  TakenCell cell;
  std::string_view quoted = rest.substr(std::min(rest.find_first_not_of(' '), rest.size()));
  if (quoted.starts_with(kQuote)) {
    cell = TakeQuoted(quoted);
    rest = quoted;
  }
  const std::array<char, 3> ends = {separator, '\r', '\n'};
  const std::size_t end =
      std::min(rest.find_first_of(std::string_view(ends.data(), ends.size())), rest.size());
  cell.text += rest.substr(0, end);
  rest.remove_prefix(end);
  return cell;
}

/// Takes cells and lines off what a file may have, so that a small file cannot fill the memory.
void Count(std::size_t cells, std::size_t line, std::size_t& left) {
  if (cells > left) {
    throw Error(ErrorKind::Type, "Up to line " + std::to_string(line) +
                                     ", the file has more than " + std::to_string(kCellLimit) +
                                     " cells and lines, which no certificate has. Export only the "
                                     "certificate, then try again.");
  }
  left -= cells;
}

}  // namespace

std::string_view DelimitedLine::Cell(std::size_t column) const {
  return column < cells.size() ? WithoutBlanks(cells[column]) : std::string_view();
}

std::size_t DelimitedLine::Width() const {
  std::size_t width = cells.size();
  while (width > 0 && Cell(width - 1).empty()) {
    --width;
  }
  return width;
}

char SeparatorOf(std::string_view text) {
  if (text.starts_with(kNamed) && text.size() > kNamed.size()) {
    return text[kNamed.size()];
  }
  const std::array<std::size_t, kSeparators.size()> lines = LinesWith(text);
  const std::size_t most = *std::ranges::max_element(lines);
  for (std::size_t i = 0; i < kSeparators.size(); ++i) {
    if (most > 0 && 2 * lines.at(i) >= most) {
      return kSeparators.at(i);
    }
  }
  return ';';
}

std::vector<DelimitedLine> DelimitedLines(std::string_view text, char separator) {
  std::vector<DelimitedLine> lines;
  std::size_t number = 1;
  if (text.starts_with(kNamed)) {
    (void)TakeLine(text);
    ++number;
  }
  std::size_t left = kCellLimit;
  while (!text.empty()) {
    DelimitedLine line = {.number = number, .cells = {}};
    std::size_t empty = 0;
    while (true) {
      auto [cell, isUnclosed] = TakeCell(text, separator);
      line.isUnclosed = isUnclosed;
      number += static_cast<std::size_t>(std::ranges::count(cell, '\n'));
      ++empty;
      if (!cell.empty()) {
        Count(empty, line.number, left);
        line.cells.resize(line.cells.size() + empty);
        line.cells.back() = std::move(cell);
        empty = 0;
      }
      if (!text.starts_with(separator)) {
        break;
      }
      text.remove_prefix(1);
    }
    (void)TakeLine(text);
    ++number;
    Count(1, line.number, left);
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace tarvell
