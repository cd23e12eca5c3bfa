// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/EditorState.h"

#include <algorithm>
#include <cstddef>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/SetPages.h"
#include "core/caldata/TableRows.h"

namespace tarvell {

bool HaveSameContent(const EditorState& one, const EditorState& other) {
  const auto typedCell = [](const EditorState& state) {
    return state.openCell && state.openCell->isTyped ? state.openCell : std::nullopt;
  };
  return one.header == other.header && one.option == other.option && one.pages == other.pages &&
         typedCell(one) == typedCell(other);
}

bool HoldsAllOf(const EditorState& state, const EditorState& draft) {
  const auto withoutMarks = [](EditorState marked) {
    for (DraftPage& page : marked.pages) {
      page.origins.clear();
      page.notes.clear();
    }
    return marked;
  };
  if (!HaveSameContent(withoutMarks(state), withoutMarks(draft))) {
    return false;
  }
  for (std::size_t page = 0; page < state.pages.size(); ++page) {
    const CellOrigins& entered = draft.pages[page].origins;
    const bool isEnteredInDraft =
        std::ranges::any_of(state.pages[page].origins, [&](const auto& cell) {
          const auto found = entered.find(cell.first);
          return IsToEnter(cell.second) && found != entered.end() &&
                 found->second == Origin::Operator;
        });
    if (isEnteredInDraft) {
      return false;
    }
  }
  return true;
}

std::vector<std::vector<std::string>> RowsOf(const CalDataGrid& grid) {
  std::vector<std::vector<std::string>> rows;
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    std::vector<std::string>& cells = rows.emplace_back();
    for (std::int16_t column = 0; column < grid.ColumnCount(); ++column) {
      cells.push_back(grid.TextOf({row, column}));
    }
  }
  return rows;
}

std::vector<DraftPage> PagesOf(cifCaldata& data, bool hasOption) {
  // A page that its option hides shows its rows only while the option is on.
  const bool isHidden = hasOption && data.GetCalPageSerial(kOptionPage) == kOptionOff;
  if (isHidden) {
    data.SetCalPageSerial(kOptionPage, std::string(kOptionOn));
  }
  const std::int16_t count =
      hasOption ? static_cast<std::int16_t>(kOptionPage + 1) : data.GetCalPageCount();
  std::vector<DraftPage> pages;
  MemoryGrid grid;
  for (std::int16_t page = 0; page < count; ++page) {
    grid.Clear(kTableColumns);
    data.GetCalData(page, grid);
    pages.push_back({.serialNumber = data.GetCalPageSerial(page), .rows = RowsOf(grid)});
  }
  if (isHidden) {
    data.SetCalPageSerial(kOptionPage, std::string(kOptionOff));
  }
  return pages;
}

void FillPage(const cifCaldata& data, std::int16_t page, const DraftPage& shown,
              CalDataGrid& grid) {
  data.GetCalData(page, grid);
  grid.SetRowCount(1);
  for (const std::vector<std::string>& row : shown.rows) {
    AddCells(grid, row);
  }
}

std::vector<std::int16_t> ShownPages(const EditorState& state) {
  std::vector<std::int16_t> pages;
  for (std::size_t i = 0; i < state.pages.size(); ++i) {
    const auto page = static_cast<std::int16_t>(i);
    if (page != kOptionPage || state.option.value_or(true)) {
      pages.push_back(page);
    }
  }
  return pages;
}

void RestorePages(const EditorState& state, bool hasOption, cifCaldata& data) {
  const std::size_t known =
      hasOption ? std::size_t{kOptionPage} + 1 : static_cast<std::size_t>(data.GetCalPageCount());
  const std::size_t count = std::min(known, state.pages.size());
  for (std::size_t index = 0; index < count; ++index) {
    const auto page = static_cast<std::int16_t>(index);
    const DraftPage& draft = state.pages[index];
    MemoryGrid grid;
    grid.Clear(kTableColumns);
    for (const std::vector<std::string>& row : draft.rows) {
      grid.InsertRow(EndOf(grid), row);
    }
    data.SetCalData(page, grid);
    // While the page was shown, its box may have held any text.
    const bool isToken = hasOption && page == kOptionPage &&
                         (draft.serialNumber == kOptionOff || draft.serialNumber == kOptionOn);
    data.SetCalPageSerial(page, isToken ? std::string(kOptionOn) : draft.serialNumber);
  }
  if (hasOption && state.option == false) {
    data.SetCalPageSerial(kOptionPage, std::string(kOptionOff));
  }
}

}  // namespace tarvell
