// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_LOADNOTES_H
#define TARVELL_CORE_CALDATA_LOADNOTES_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/caldata/BodyReader.h"
#include "core/caldata/DoubtfulRows.h"

namespace tarvell {

/// The cells that a file lacks: in each of these rows of a page, those from this column on.
using LackedCells = std::map<std::pair<std::int16_t, TableIndex>, std::size_t>;

/// The notes of one load: a sentence about each thing that is doubtful in its file.
class LoadNotes {
 public:
  /// `isReadOverDefaults` says whether the default data were in the object when the load began.
  explicit LoadNotes(bool isReadOverDefaults) : isReadOverDefaults_(isReadOverDefaults) {}

  [[nodiscard]] bool IsReadOverDefaults() const { return isReadOverDefaults_; }

  /// Adds a note when a file of a single table has lost its end, and perhaps a row with it.
  void AddMissingEnd(const FileEnd& end);
  void Add(std::string note) { notes_.push_back(std::move(note)); }
  /// Adds a note that ends with these rows, when there are any.
  void AddRows(const std::string& note, const RowSet& rows);

  /// What the notes about a table's rows say.
  struct TableTexts {
    std::string table;             ///< the table, at the beginning of a sentence
    std::string_view firstColumn;  ///< the value without which a row is not shown
    std::string_view emptyField;   ///< what became of the values after an empty field
    std::string_view missing;      ///< what is shown for missing values
    std::string_view beyond = "";  ///< what became of values that there is no format for
  };
  /// Adds what is doubtful about the rows of a table, of which only the first `shown` are shown.
  void AddDoubtfulRows(const DoubtfulRows& rows, std::size_t shown, const TableTexts& texts);

  /// Notes that the file lacks the cells of a row from `column` on.
  void AddLackedCells(std::int16_t page, TableIndex row, std::size_t column);
  /// Notes that the file lacks the rows of a page from `row` on.
  void AddLackedRows(std::int16_t page, TableIndex row);
  [[nodiscard]] LackedCells TakenLackedCells() { return std::move(lacked_); }

  [[nodiscard]] std::vector<std::string> Taken() && { return std::move(notes_); }

 private:
  bool isReadOverDefaults_;
  std::vector<std::string> notes_;
  LackedCells lacked_;
};

}  // namespace tarvell

#endif
