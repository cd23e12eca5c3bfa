// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/PastedCells.h"

#include <cmath>
#include <optional>

#include "core/caldata/CellNotices.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  std::size_t end = 0;
  while ((end = text.find(separator)) != std::string_view::npos) {
    parts.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  parts.push_back(text);
  return parts;
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines = Split(text, '\n');
  if (lines.back().empty()) {
    lines.pop_back();
  }
  for (std::string_view& line : lines) {
    if (!line.empty() && line.back() == '\r') {
      line.remove_suffix(1);
    }
  }
  return lines;
}

/// What to do about a value that is not a number.
std::string Advice(std::string_view value, bool isFirstLine) {
  if (isFirstLine && value.find_first_of("0123456789") == std::string_view::npos) {
    return " If it is a caption, copy only the values below it.";
  }
  const bool hasSeparator = Trim(value).find_first_of(" ;") != std::string_view::npos;
  return std::string(
             " Copy numbers that have a point for their decimals and nothing between their "
             "digits.") +
         (hasSeparator ? " Copy several columns from a spreadsheet, which puts a TAB between them."
                       : "");
}

std::string NumberIn(std::string_view value, const std::optional<CellAffixes>& affixes,
                     bool isFirstLine) {
  if (!affixes) {
    throw Error(ErrorKind::Index,
                "The table has no value in this place. Begin in another cell, or copy less.");
  }
  if (Trim(value).empty()) {
    throw Error(ErrorKind::Type, "There is no value. Fill the gap or copy fewer lines.");
  }
  if (const std::string_view character = FirstForeignCharacter(value); !character.empty()) {
    throw Error(ErrorKind::Character,
                "The character \"" + std::string(character) + "\" in " + Quoted(value) +
                    " cannot be stored in a data file. Replace it by another one.");
  }
  const std::string_view number = WithoutUnit(value, *affixes);
  const std::string unit(Trim(affixes->after));
  const std::optional<double> parsed = ParseNumber(number);
  if (!parsed) {
    throw Error(ErrorKind::Type, Quoted(value) + " is not a number" +
                                     (unit.empty() ? "" : " (in " + unit + ")") + "." +
                                     Advice(value, isFirstLine));
  }
  if (std::isinf(*parsed)) {
    throw Error(ErrorKind::Type,
                Quoted(value) + " is too large to be calculated with. Correct it.");
  }
  return std::string(number);
}

/// What a cell stores for a number. Refuses to store zero for a value that is not zero, because it
/// would look like a measured value.
std::string Stored(const std::string& number, const std::string& stored) {
  if (*ParseNumber(number) != 0 && HoldsZero(stored)) {
    throw Error(ErrorKind::Type, Quoted(number) + " would be stored as " + Quoted(stored) +
                                     ", because it is too small for the decimals of its cell. "
                                     "Check its unit.");
  }
  return stored;
}

void CheckStart(const CalDataGrid& grid, const PasteStart& start) {
  if (start.cell.row < kFirstDataRow || start.cell.row >= EndOf(grid)) {
    throw Error(ErrorKind::Index, "The table has no current cell. Choose one, then paste again.");
  }
  if (start.cell.column < start.firstEditableColumn) {
    throw Error(ErrorKind::Index, "The column \"" + grid.TextOf({kCaptionRow, start.cell.column}) +
                                      "\" cannot be edited. Choose a cell of another column, then "
                                      "paste again.");
  }
}

}  // namespace

std::vector<PastedCell> PastedCells(const CalDataGrid& grid, const PasteStart& start,
                                    std::string_view text, const PasteRules& rules,
                                    std::size_t& line) {
  line = 0;
  CheckStart(grid, start);
  const std::vector<std::string_view> lines = LinesOf(text);
  if (lines.empty()) {
    throw Error(ErrorKind::Type, "There is no text to paste. Copy numbers, then paste again.");
  }
  const auto rowsLeft = static_cast<std::size_t>(grid.RowCount() - start.cell.row.number);
  if (lines.size() > rowsLeft) {
    throw Error(ErrorKind::Index,
                "The copied text has " + std::to_string(lines.size()) +
                    " lines, and the table has " + std::to_string(rowsLeft) +
                    " rows from the chosen one on. Begin in a row above, or copy fewer lines.");
  }
  const auto columnsLeft = static_cast<std::size_t>(grid.ColumnCount() - start.cell.column);
  std::vector<PastedCell> cells;
  for (const std::string_view values : lines) {
    Cell cell = {start.cell.row + static_cast<int>(line++), start.cell.column};
    const std::vector<std::string_view> parts = Split(values, '\t');
    if (parts.size() > columnsLeft) {
      throw Error(ErrorKind::Index,
                  "It has " + std::to_string(parts.size()) + " columns, and the table has " +
                      std::to_string(columnsLeft) + " from the chosen one on. Copy fewer columns.");
    }
    for (const std::string_view value : parts) {
      const std::string number = NumberIn(value, rules.affixes(cell), line == 1);
      cells.push_back({cell, Stored(number, rules.store(cell, number))});
      ++cell.column;
    }
  }
  line = 0;
  return cells;
}

}  // namespace tarvell
