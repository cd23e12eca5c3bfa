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

/// What two rows share that belong together: their point, and how many rows of the page before have
/// it, too.
struct RowKey {
  Row point;
  std::ptrdiff_t earlier = 0;

  bool operator==(const RowKey&) const = default;
};

/// A row of a page with what is known of its cells.
struct MarkedRow {
  RowKey key;
  Row cells;
  std::vector<Origin> origins;
  Row notes;
};

std::vector<MarkedRow> RowsWithMarks(const DraftPage& page, std::size_t pointColumns) {
  std::vector<MarkedRow> rows;
  for (const Row& cells : page.rows) {
    RowKey key = {Row(cells.begin(), cells.begin() + static_cast<std::ptrdiff_t>(
                                                         std::min(pointColumns, cells.size())))};
    key.earlier = std::ranges::count(rows, key.point,
                                     [](const MarkedRow& before) { return before.key.point; });
    rows.push_back({std::move(key), cells, std::vector<Origin>(cells.size(), Origin::File),
                    Row(cells.size())});
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
  /// `open` is the row of the open cell among the typed ones, if anything was typed in it.
  PageMerge(const DraftPage& opened, const DraftPage& typed, const DraftPage& now,
            std::size_t pointColumns, std::optional<std::size_t> open)
      : opened_(RowsWithMarks(opened, pointColumns)),
        typed_(RowsWithMarks(typed, pointColumns)),
        rows_(RowsWithMarks(now, pointColumns)),
        open_(open) {}

  void Merge() {
    for (const MarkedRow& opened : opened_) {
      TakeDeletion(opened);
    }
    for (const MarkedRow& typed : typed_) {
      TakeRow(typed);
    }
  }

  [[nodiscard]] const std::vector<MarkedRow>& Rows() const { return rows_; }
  [[nodiscard]] std::size_t Kept() const { return kept_; }
  [[nodiscard]] std::size_t WithoutRoom() const { return withoutRoom_; }

 private:
  static std::vector<MarkedRow>::iterator Find(std::vector<MarkedRow>& rows, const RowKey& key) {
    return std::ranges::find(rows, key, &MarkedRow::key);
  }

  [[nodiscard]] bool IsOpen(const MarkedRow& typed) const {
    return open_ && &typed == &typed_[*open_];
  }

  void TakeDeletion(const MarkedRow& opened) {
    if (Find(typed_, opened.key) != typed_.end()) {
      return;
    }
    const auto newer = Find(rows_, opened.key);
    if (newer != rows_.end() && newer->cells == opened.cells) {
      rows_.erase(newer);
    } else if (newer != rows_.end()) {
      ++kept_;
    }
  }

  void TakeRow(const MarkedRow& typed) {
    const auto opened = Find(opened_, typed.key);
    const auto newer = Find(rows_, typed.key);
    if (newer != rows_.end()) {
      TakeCells(typed, opened == opened_.end() ? nullptr : &opened->cells, *newer);
      next_ = newer - rows_.begin() + 1;
    } else if (opened == opened_.end() || opened->cells != typed.cells || IsOpen(typed)) {
      TakeNewRow(typed);
    }
  }

  /// A row that the newer data lack. It follows the row that it follows in the draft.
  void TakeNewRow(const MarkedRow& typed) {
    if (rows_.size() < kTableRows) {
      rows_.insert(rows_.begin() + next_, typed);
      ++next_;
    } else {
      ++withoutRoom_;
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

  std::vector<MarkedRow> opened_;
  std::vector<MarkedRow> typed_;
  std::vector<MarkedRow> rows_;
  std::optional<std::size_t> open_;
  std::ptrdiff_t next_ = 0;  ///< where a row goes that follows the one that was merged last
  std::size_t kept_ = 0;
  std::size_t withoutRoom_ = 0;
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
  for (const auto box : kHeaderBoxes) {
    kept += TakeText(opened.*box, typed.*box, now.*box);
  }
  return kept;
}

/// The row of a page of the draft that has the open cell; none if nothing was typed in it.
std::optional<std::size_t> OpenRowOf(const EditorState& typed, std::size_t page) {
  const std::optional<OpenCell>& open = typed.openCell;
  if (!open || !open->isTyped || static_cast<std::size_t>(typed.shownPage) != page ||
      page >= typed.pages.size() || open->cell.row < kFirstDataRow ||
      IndexOf(open->cell.row).value >= typed.pages[page].rows.size()) {
    return std::nullopt;
  }
  return IndexOf(open->cell.row).value;
}

/// The open cell of a draft at its new place; none if nothing was typed in it.
std::optional<OpenCell> OpenCellIn(const EditorState& now, const EditorState& typed,
                                   std::size_t pointColumns) {
  const auto page = static_cast<std::size_t>(typed.shownPage);
  const std::optional<std::size_t> row = OpenRowOf(typed, page);
  if (!row || page >= now.pages.size()) {
    return std::nullopt;
  }
  const std::vector<MarkedRow> rows = RowsWithMarks(now.pages[page], pointColumns);
  const auto found = std::ranges::find(
      rows, RowsWithMarks(typed.pages[page], pointColumns)[*row].key, &MarkedRow::key);
  if (found == rows.end()) {
    return std::nullopt;
  }
  std::optional<OpenCell> open = typed.openCell;
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
    PageMerge rows(opened.pages[index], typed.pages[index], page, pointColumns,
                   OpenRowOf(typed, index));
    rows.Merge();
    merged.kept += rows.Kept();
    merged.withoutRoom += rows.WithoutRoom();
    SetRows(rows.Rows(), page);
    merged.kept += TakeText(opened.pages[index].serialNumber, typed.pages[index].serialNumber,
                            page.serialNumber);
  }
  merged.state.shownPage = typed.shownPage;
  merged.state.openCell = OpenCellIn(merged.state, typed, pointColumns);
  return merged;
}

}  // namespace tarvell
