// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/PasteRefusals.h"

#include "core/platform/Error.h"

namespace tarvell {

namespace {

/// So many cells are named in sentences of their own.
constexpr std::size_t kSentences = 8;

}  // namespace

std::string LinesText(const std::vector<std::size_t>& lines) {
  std::string text = lines.size() == 1 ? "line " : "lines ";
  for (std::size_t first = 0; first < lines.size();) {
    std::size_t last = first;
    while (last + 1 < lines.size() && lines[last + 1] == lines[last] + 1) {
      ++last;
    }
    text += (first == 0 ? "" : ", ") + std::to_string(lines[first]);
    if (last > first) {
      text += (last == first + 1 ? ", " : " to ") + std::to_string(lines[last]);
    }
    first = last + 1;
  }
  return text;
}

std::string PasteRefusals::ColumnName(std::size_t number) const {
  return number <= words_.columns.size() ? words_.columns[number - 1]
                                         : "column " + std::to_string(number);
}

void PasteRefusals::Add(std::size_t line, const std::string& sentence) {
  Add("Line " + std::to_string(line), sentence, line, 0);
}

void PasteRefusals::Add(std::size_t line, std::size_t column, const std::string& sentence) {
  Add("Line " + std::to_string(line) + ", " + ColumnName(column + 1), sentence, line, column + 1);
}

void PasteRefusals::Add(const std::string& where, const std::string& sentence, std::size_t line,
                        std::size_t columnNumber) {
  if (++count_ <= kSentences) {
    sentences_ += where + ": " + sentence + "\n";
    return;
  }
  std::vector<std::size_t>& lines = others_[columnNumber];
  if (lines.empty() || lines.back() != line) {
    lines.push_back(line);
  }
}

std::string PasteRefusals::Others() const {
  std::string text;
  for (const auto& [column, lines] : others_) {
    const std::string where = column == 0 ? "" : ColumnName(column) + " in ";
    text += (text.empty() ? "" : "; ") + where + LinesText(lines);
  }
  return text;
}

void PasteRefusals::ThrowIfAny() const {
  if (count_ == 0) {
    return;
  }
  const std::string others =
      others_.empty() ? "" : "These cannot be taken either: " + Others() + ".\n";
  throw Error(ErrorKind::Type, sentences_ + others + "\n" + words_.advice);
}

}  // namespace tarvell
