// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_CSVPLACES_H
#define TARVELL_EXCHANGE_CSVPLACES_H

#include <cstddef>
#include <optional>
#include <vector>

#include "exchange/DelimitedText.h"

/// Where the tables of a CSV file are.
namespace tarvell {

/// Lines from `begin` to before `end`, by their indexes.
struct LineRange {
  std::size_t begin = 0;
  std::size_t end = 0;

  [[nodiscard]] bool IsEmpty() const { return begin == end; }
};

struct TablePlace {
  LineRange head = {};      ///< the lines after the table before it, without the captions
  LineRange captions = {};  ///< one line, or one and the units below it; empty without any
  std::vector<std::size_t> rows = {};  ///< the indexes of the rows' lines
  /// The column with the serial number of the instrument that each row is about.
  std::optional<std::size_t> serialColumn = {};
  std::optional<std::size_t> modelColumn = {};  ///< and the one with its model
  /// Columns with dates or certificate numbers, which are header fields.
  std::vector<std::size_t> headerColumns = {};

  /// Whether a column says what its rows are about, and has no values.
  [[nodiscard]] bool IsAboutRows(std::size_t column) const;
};

/// The tables of the lines. Blank lines do not end a table if the rows after them have its columns,
/// and rows without a value do not end it either.
/// A table without captions has those of the table above it, if it has the same columns and at most
/// a title between them.
[[nodiscard]] std::vector<TablePlace> TablePlaces(const std::vector<DelimitedLine>& lines);

}  // namespace tarvell

#endif
