// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/UnusedLines.h"

#include <algorithm>
#include <string_view>

#include "core/caldata/PasteRefusals.h"
#include "core/numbers/WrittenNumber.h"
#include "core/text/Text.h"
#include "exchange/CsvLines.h"
#include "exchange/WrittenDate.h"

namespace tarvell {

namespace {

constexpr std::size_t kQuotedLines = 12;
constexpr std::size_t kNamedTexts = 40;
/// More bytes of a line are not worth quoting.
constexpr std::size_t kLongestLine = 100;

bool IsValue(std::string_view cell) {
  return NumberIn(cell) || HasShortYear(cell) || DateFrom(cell, DateOrder::DayFirst) ||
         DateFrom(cell, DateOrder::MonthFirst);
}

std::string TextOf(const DelimitedLine& line) {
  std::string text;
  for (std::size_t column = 0; column < line.Width() && text.size() <= kLongestLine; ++column) {
    const std::string_view cell = line.Cell(column);
    text += (text.empty() || cell.empty() ? "" : "; ") + std::string(cell);
  }
  return text;
}

}  // namespace

bool UnusedLines::MayMatter(const DelimitedLine& line) {
  if (line.Width() == 1) {
    const std::string_view cell = line.Cell(0);
    return IsValue(WithoutBlanks(cell.substr(std::min(cell.find(':') + 1, cell.size()))));
  }
  for (std::size_t column = 0; column < line.Width(); ++column) {
    if (IsValue(line.Cell(column))) {
      return true;
    }
  }
  return false;
}

void UnusedLines::Add(const DelimitedLine& line) {
  const bool mayMatter = MayMatter(line);
  const std::string text = mayMatter ? TextOf(line) : std::string();
  if (!mayMatter || text.size() > kLongestLine) {
    texts_.push_back(line.number);
  } else if (quoted_.size() < kQuotedLines) {
    quoted_.push_back("Line " + std::to_string(line.number) +
                      " is not used, because no field takes it: " + Quoted(text) + ".");
  } else {
    ++more_;
  }
}

std::vector<std::string> UnusedLines::Sentences() const {
  std::vector<std::string> sentences = quoted_;
  if (more_ > 0) {
    sentences.push_back(std::to_string(more_) + " more lines with numbers or dates are not used.");
  }
  if (!texts_.empty()) {
    const std::size_t named = std::min(texts_.size(), kNamedTexts);
    const std::string lines =
        LinesText({texts_.begin(), texts_.begin() + static_cast<std::ptrdiff_t>(named)});
    const std::string more =
        texts_.size() > named ? " and " + std::to_string(texts_.size() - named) + " more" : "";
    sentences.push_back("Text that no field takes is not used: " + lines + more + ".");
  }
  return sentences;
}

}  // namespace tarvell
