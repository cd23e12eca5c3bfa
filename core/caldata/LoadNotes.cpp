// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/LoadNotes.h"

namespace tarvell {

void LoadNotes::AddMissingEnd(const FileEnd& end) {
  // A file that ends in a remark after its rows has lost nothing.
  const bool endsInRemark = end.hasDataLines && end.lastItem.starts_with('!');
  if (!end.hasEndLine && !endsInRemark) {
    Add("The file does not end with its line \"!End\". Its last line was not read: " +
        end.lastItem);
  }
}

void LoadNotes::AddRows(const std::string& note, const RowSet& rows) {
  if (rows.any()) {
    Add(note + ": " + RowsText(rows) + ".");
  }
}

void LoadNotes::AddLackedCells(std::int16_t page, TableIndex row, std::size_t column) {
  // Without default data, nothing is shown in their place.
  if (isReadOverDefaults_) {
    lacked_[{page, row}] = column;
  }
}

void LoadNotes::AddLackedRows(std::int16_t page, TableIndex row) {
  for (; isReadOverDefaults_ && row.value < kTableRows; ++row.value) {
    AddLackedCells(page, row, 0);
  }
}

void LoadNotes::AddDoubtfulRows(const DoubtfulRows& rows, std::size_t shown,
                                const TableTexts& texts) {
  if (shown < rows.count) {
    Add(texts.table + " has no " + std::string(texts.firstColumn) + " in row " +
        std::to_string(shown + 1) +
        ": that row and the rows after it are not shown, and would not be saved.");
  } else if (isReadOverDefaults_) {
    AddRows(texts.table +
                " shows rows that the file does not hold. They come from the template, and would "
                "be saved",
            RowsBetween(rows.count, shown));
  }
  const RowSet others = RowsBetween(0, shown) & ~rows.beyond;
  AddRows(
      texts.table + " has more rows than the program has formats for. " + std::string(texts.beyond),
      RowsBetween(0, shown) & rows.beyond);
  AddRows(
      texts.table + " has rows with an empty field in the file. " + std::string(texts.emptyField),
      others & rows.emptyField);
  AddRows(texts.table + " has rows with too few values in the file. " + std::string(texts.missing),
          others & rows.missing & ~rows.emptyField);
}

}  // namespace tarvell
