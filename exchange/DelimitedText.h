// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_DELIMITEDTEXT_H
#define TARVELL_EXCHANGE_DELIMITEDTEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Text of lines and cells: CSV and TSV.
namespace tarvell {

struct DelimitedLine {
  std::size_t number = 0;  ///< of the line in the file, counted from 1
  std::vector<std::string> cells;
  bool isUnclosed = false;  ///< whether a quote of its last cell is not closed

  /// The cell without blanks around it; "" for one that the line does not have.
  [[nodiscard]] std::string_view Cell(std::size_t column) const;
  /// The number of cells up to the last one that is not blank.
  [[nodiscard]] std::size_t Width() const;
};

/// The character between the cells: tab, semicolon, vertical bar or comma. A first line "sep=;"
/// names it.
[[nodiscard]] char SeparatorOf(std::string_view text);

/// All lines, blank ones included, without the line "sep=;" and without the empty cells at the end
/// of a line. A cell in quotes may hold separators, line ends and doubled quotes; one without its
/// closing quote goes on to the end of the text. Throws a Type error for more cells or lines than
/// any certificate has.
[[nodiscard]] std::vector<DelimitedLine> DelimitedLines(std::string_view text, char separator);

}  // namespace tarvell

#endif
