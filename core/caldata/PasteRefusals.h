// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_PASTEREFUSALS_H
#define TARVELL_CORE_CALDATA_PASTEREFUSALS_H

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tarvell {

/// Numbers in rising order with runs: "line 3", "lines 3 to 5, 9".
[[nodiscard]] std::string LinesText(const std::vector<std::size_t>& lines);

/// How refusals name the columns, and what they advise.
struct RefusalWords {
  std::vector<std::string> columns = {};  ///< their names; none: "column 2"
  std::string advice = "Correct them in the spreadsheet, then copy and paste again.";
};

/// The cells of the clipboard's table that cannot be taken. Lines count from 1, columns from 0.
class PasteRefusals {
 public:
  explicit PasteRefusals(RefusalWords words = {}) : words_(std::move(words)) {}

  /// Refuses a whole line.
  void Add(std::size_t line, const std::string& sentence);
  void Add(std::size_t line, std::size_t column, const std::string& sentence);

  /// Throws an error that names every cell. The first ones have sentences of their own; the others
  /// are named by their columns and lines, so that the text stays short enough for a box.
  void ThrowIfAny() const;

 private:
  void Add(const std::string& where, const std::string& sentence, std::size_t line,
           std::size_t columnNumber);
  [[nodiscard]] std::string Others() const;
  [[nodiscard]] std::string ColumnName(std::size_t number) const;

  RefusalWords words_;
  std::size_t count_ = 0;
  std::string sentences_;
  /// Lines without a sentence of their own, by the number of the column; 0 for whole lines.
  std::map<std::size_t, std::vector<std::size_t>> others_;
};

}  // namespace tarvell

#endif
