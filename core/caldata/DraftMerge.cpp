// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/DraftMerge.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/TableRows.h"

namespace tarvell {

namespace {

using Row = std::vector<std::string>;

bool AreSamePoint(const Row& one, const Row& other, std::size_t pointColumns) {
  const auto count = static_cast<std::ptrdiff_t>(pointColumns);
  return one.size() >= pointColumns && other.size() >= pointColumns &&
         std::equal(one.begin(), one.begin() + count, other.begin());
}

/// A row of a page with what is known of its cells.
struct MarkedRow {
  Row cells;
  std::vector<Origin> origins;
  Row notes;
};

std::vector<MarkedRow> RowsWithMarks(const DraftPage& page) {
  std::vector<MarkedRow> rows;
  for (const Row& cells : page.rows) {
    rows.push_back({cells, std::vector<Origin>(cells.size(), Origin::File), Row(cells.size())});
    MarkedRow& row = rows.back();
    for (std::size_t column = 0; column < cells.size(); ++column) {
      const Cell cell = {RowOf(TableIndex{rows.size() - 1}), static_cast<std::int16_t>(column)};
      const auto origin = page.origins.find(cell);
      const auto note = page.notes.find(cell);
      row.origins[column] = origin == page.origins.end() ? Origin::File : origin->second;
      row.notes[column] = note == page.notes.end() ? std::string() : note->second;
    }
  }
  return rows;
}

void SetRows(const std::vector<MarkedRow>& rows, DraftPage& page) {
  page.rows.clear();
  page.origins.clear();
  page.notes.clear();
  for (const MarkedRow& row : rows) {
    page.rows.push_back(row.cells);
    for (std::size_t column = 0; column < row.cells.size(); ++column) {
      const Cell cell = {RowOf(TableIndex{page.rows.size() - 1}),
                         static_cast<std::int16_t>(column)};
      if (row.origins[column] != Origin::File) {
        page.origins[cell] = row.origins[column];
      }
      if (!row.notes[column].empty()) {
        page.notes[cell] = row.notes[column];
      }
    }
  }
}

/// Puts the typed rows of one page into the newer ones.
class PageMerge {
 public:
  PageMerge(const DraftPage& opened, const DraftPage& typed, const DraftPage& now,
            std::size_t pointColumns)
      : opened_(opened.rows),
        typed_(RowsWithMarks(typed)),
        rows_(RowsWithMarks(now)),
        pointColumns_(pointColumns) {}

  /// Returns how many newer values stay that the draft has otherwise.
  std::size_t Merge() {
    for (const Row& opened : opened_) {
      TakeDeletion(opened);
    }
    for (const MarkedRow& typed : typed_) {
      TakeRow(typed);
    }
    return kept_;
  }

  [[nodiscard]] const std::vector<MarkedRow>& Rows() const { return rows_; }

 private:
  [[nodiscard]] auto Find(std::vector<MarkedRow>& rows, const Row& point) const {
    return std::ranges::find_if(
        rows, [&](const MarkedRow& row) { return AreSamePoint(row.cells, point, pointColumns_); });
  }

  void TakeDeletion(const Row& opened) {
    if (Find(typed_, opened) != typed_.end()) {
      return;
    }
    const auto newer = Find(rows_, opened);
    if (newer != rows_.end() && newer->cells == opened) {
      rows_.erase(newer);
    } else if (newer != rows_.end()) {
      ++kept_;
    }
  }

  void TakeRow(const MarkedRow& typed) {
    const auto opened = std::ranges::find_if(
        opened_, [&](const Row& row) { return AreSamePoint(row, typed.cells, pointColumns_); });
    const auto newer = Find(rows_, typed.cells);
    if (newer != rows_.end()) {
      TakeCells(typed, opened == opened_.end() ? nullptr : &*opened, *newer);
      next_ = newer - rows_.begin() + 1;
    } else if (opened == opened_.end() || *opened != typed.cells) {
      TakeNewRow(typed);
    }
  }

  /// A row that the newer data lack. It follows the row that it follows in the draft.
  void TakeNewRow(const MarkedRow& typed) {
    if (rows_.size() < kTableRows) {
      rows_.insert(rows_.begin() + next_, typed);
      ++next_;
    } else {
      ++kept_;
    }
  }

  void TakeCells(const MarkedRow& typed, const Row* opened, MarkedRow& newer) {
    const std::size_t count = std::min(typed.cells.size(), newer.cells.size());
    for (std::size_t column = 0; column < count; ++column) {
      const bool isChanged =
          opened == nullptr || column >= opened->size() || (*opened)[column] != typed.cells[column];
      const bool isSame = newer.cells[column] == typed.cells[column];
      if (isChanged || (isSame && typed.origins[column] == Origin::Operator)) {
        newer.cells[column] = typed.cells[column];
        newer.origins[column] = typed.origins[column];
        newer.notes[column] = typed.notes[column];
      } else if (!isSame) {
        ++kept_;
      }
    }
  }

  std::vector<Row> opened_;
  std::vector<MarkedRow> typed_;
  std::vector<MarkedRow> rows_;
  std::size_t pointColumns_;
  std::ptrdiff_t next_ = 0;  ///< where a row goes that follows the one that was merged last
  std::size_t kept_ = 0;
};

/// Takes a text that was typed. Returns 1 if the newer one stays, and is another.
std::size_t TakeText(const std::string& opened, const std::string& typed, std::string& now) {
  if (typed != opened) {
    now = typed;
  }
  return typed == now ? 0 : 1;
}

std::size_t TakeHeader(const DraftHeader& opened, const DraftHeader& typed, DraftHeader& now) {
  std::size_t kept = 0;
  for (std::string DraftHeader::*text :
       {&DraftHeader::serialNumber, &DraftHeader::calibrationNumber, &DraftHeader::calYear,
        &DraftHeader::calMonth, &DraftHeader::calDay, &DraftHeader::dueYear, &DraftHeader::dueMonth,
        &DraftHeader::dueDay, &DraftHeader::comment}) {
    kept += TakeText(opened.*text, typed.*text, now.*text);
  }
  return kept;
}

/// The open cell of a draft at its new place; none if nothing was typed in it, or its row is gone.
std::optional<OpenCell> OpenCellIn(const EditorState& now, const EditorState& typed,
                                   std::size_t pointColumns) {
  std::optional<OpenCell> open = typed.openCell;
  const auto page = static_cast<std::size_t>(typed.shownPage);
  if (!open || !open->isTyped || page >= std::min(typed.pages.size(), now.pages.size()) ||
      open->cell.row < kFirstDataRow ||
      IndexOf(open->cell.row).value >= typed.pages[page].rows.size()) {
    return std::nullopt;
  }
  const Row& row = typed.pages[page].rows[IndexOf(open->cell.row).value];
  const std::vector<Row>& rows = now.pages[page].rows;
  const auto found = std::ranges::find_if(
      rows, [&](const Row& other) { return AreSamePoint(other, row, pointColumns); });
  if (found == rows.end()) {
    return std::nullopt;
  }
  open->cell.row = RowOf(TableIndex{static_cast<std::size_t>(found - rows.begin())});
  return open;
}

}  // namespace

MergedDraft Merged(const Draft& draft, const EditorState& now, std::size_t pointColumns) {
  if (!draft.opened) {
    return {.state = draft.state};
  }
  const EditorState& opened = *draft.opened;
  const EditorState& typed = draft.state;
  MergedDraft merged = {.state = now};
  merged.kept = TakeHeader(opened.header, typed.header, merged.state.header);
  if (typed.option != opened.option) {
    merged.state.option = typed.option;
  }
  const std::size_t count =
      std::min({opened.pages.size(), typed.pages.size(), merged.state.pages.size()});
  for (std::size_t index = 0; index < count; ++index) {
    DraftPage& page = merged.state.pages[index];
    PageMerge rows(opened.pages[index], typed.pages[index], page, pointColumns);
    merged.kept += rows.Merge();
    SetRows(rows.Rows(), page);
    merged.kept += TakeText(opened.pages[index].serialNumber, typed.pages[index].serialNumber,
                            page.serialNumber);
  }
  merged.state.shownPage = typed.shownPage;
  merged.state.openCell = OpenCellIn(merged.state, typed, pointColumns);
  return merged;
}

}  // namespace tarvell
