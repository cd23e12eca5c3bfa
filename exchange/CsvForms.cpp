// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CsvForms.h"

#include <cstddef>
#include <string_view>

#include "exchange/CsvLines.h"
#include "exchange/ModelColumns.h"
#include "exchange/Units.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

/// More sentences have the same cause.
constexpr std::size_t kSentences = 5;
/// More columns than tables side by side, or points in a row, need to be looked at.
constexpr std::size_t kColumns = 200;

std::string LineOf(const DelimitedLine& line) {
  return "Line " + std::to_string(line.number);
}

/// Whether a line has the name of a quantity, and then only numbers.
bool IsTurnedColumn(const DelimitedLine& line) {
  const std::size_t width = line.Width();
  if (width < 3 || width > kColumns || NumberIn(line.Cell(0)) ||
      !NamesQuantity(Folded(line.Cell(0)))) {
    return false;
  }
  for (std::size_t column = 1; column < width; ++column) {
    if (!NumberIn(line.Cell(column))) {
      return false;
    }
  }
  return true;
}

/// Whether a line has frequencies after its first cell, in the place of captions.
bool HasFrequencies(const DelimitedLine& line) {
  const std::size_t width = line.Width();
  if (width < 3 || width > kColumns || NumberIn(line.Cell(0))) {
    return false;
  }
  for (std::size_t column = 1; column < width; ++column) {
    const std::optional<NumberCell> cell = NumberIn(line.Cell(column));
    const std::optional<Unit> unit = cell ? UnitFrom(cell->unit) : std::nullopt;
    if (!unit || !unit->IsLike(*UnitFrom("Hz"))) {
      return false;
    }
  }
  return true;
}

/// Whether captions begin again after a column without one.
bool AreSideBySide(const DelimitedLine& captions) {
  const std::size_t width = std::min(captions.Width(), kColumns);
  for (std::size_t column = 2; column < width; ++column) {
    if (captions.Cell(column - 1).empty() && captions.Cell(column) == captions.Cell(0)) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::vector<std::string> UnreadForms(const std::vector<DelimitedLine>& lines,
                                     const std::vector<TablePlace>& tables) {
  std::vector<std::string> sentences;
  const auto add = [&](std::string sentence) {
    if (sentences.size() < kSentences) {
      sentences.push_back(std::move(sentence));
    }
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].isUnclosed) {
      add(LineOf(lines[i]) +
          " has a quote that is not closed, so that all lines after it are one cell. Close the "
          "quote in the file, or remove it.");
    } else if (i + 1 < lines.size() && IsTurnedColumn(lines[i]) && IsTurnedColumn(lines[i + 1])) {
      add(LineOf(lines[i]) +
          " has a quantity with a column for each point, which is not read. Turn the table in a "
          "spreadsheet, so that each point has a line, or copy the points and the values as two "
          "columns and paste them.");
      ++i;
    } else if (HasFrequencies(lines[i])) {
      add(LineOf(lines[i]) +
          " has frequencies as captions, which are not read. Give each frequency and value a line "
          "of its own, or copy them as columns and paste them.");
    }
  }
  for (const TablePlace& table : tables) {
    if (!table.captions.IsEmpty() && AreSideBySide(lines[table.captions.begin])) {
      add(LineOf(lines[table.captions.begin]) +
          " has the captions of several tables side by side. Put the tables below each other in "
          "the "
          "file, or choose the columns of one of them.");
    }
  }
  return sentences;
}

}  // namespace tarvell
