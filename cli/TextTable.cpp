// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/TextTable.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell::cli {

void TextTable::Add(std::vector<std::string> cells) {
  for (std::string& cell : cells) {
    cell = WithoutControls(cell);
  }
  lines_.push_back(std::move(cells));
}

std::string TextTable::Text() const {
  std::vector<std::size_t> widths;
  for (const std::vector<std::string>& cells : lines_) {
    widths.resize(std::max(widths.size(), cells.size()));
    for (std::size_t column = 0; column < cells.size(); ++column) {
      widths[column] = std::max(widths[column], CharacterCount(cells[column]));
    }
  }
  std::string text;
  for (const std::vector<std::string>& cells : lines_) {
    std::string line;
    for (std::size_t column = 0; column < cells.size(); ++column) {
      line += cells[column];
      line.append(widths[column] + 2 - CharacterCount(cells[column]), ' ');
    }
    text.append(TrimRight(line)).append("\n");
  }
  return text;
}

std::string ForColumn(const std::string& text) {
  static constexpr std::size_t kWidth = 60;
  static constexpr std::string_view kCut = "...";
  return CharacterCount(text) <= kWidth
             ? text
             : std::string(FirstCharacters(text, kWidth - kCut.size())).append(kCut);
}

std::string WithoutControls(const std::string& name) {
  std::string text = NameText(name);
  std::ranges::replace_if(
      text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
  return text;
}

}  // namespace tarvell::cli
