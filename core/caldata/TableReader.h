// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_TABLEREADER_H
#define TARVELL_CORE_CALDATA_TABLEREADER_H

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "core/caldata/BodyReader.h"
#include "core/caldata/DoubtfulRows.h"
#include "core/caldata/LoadNotes.h"
#include "core/caldata/Table.h"

namespace tarvell {

/// Reads the body of a file with a single table, whose cells are the words of its data lines.
template <std::size_t Columns>
class TableReader final : public BodyReader {
 public:
  /// `table` and `notes` must outlive the object; `firstColumn` is the first column as notes name
  /// it.
  TableReader(Table<Columns>& table, LoadNotes& notes, std::string_view firstColumn)
      : table_(table), notes_(notes), firstColumn_(firstColumn) {}

  void TakeDataLine(TableIndex index, std::string_view item) override {
    const LineWords words = WordsOf(item);
    std::copy_n(words.begin(), Columns, table_.At(index).begin());
    rows_.Take(index, HasEmptyField(item, Columns), words[Columns - 1].empty());
  }

  bool End(const FileEnd& end) override {
    notes_.AddMissingEnd(end);
    notes_.AddLackedRows(0, {rows_.count});
    notes_.AddDoubtfulRows(rows_, table_.Rows().size(),
                           {.table = "The table",
                            .firstColumn = firstColumn_,
                            .emptyField = kValuesMovedLeft,
                            .missing = "Their cells are empty, and would be saved so"});
    return end.hasEndLine;
  }

 private:
  Table<Columns>& table_;
  LoadNotes& notes_;
  std::string_view firstColumn_;
  DoubtfulRows rows_;
};

}  // namespace tarvell

#endif
