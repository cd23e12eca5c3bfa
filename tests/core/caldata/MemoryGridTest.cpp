// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "support/ErrorOf.h"

namespace tarvell::test {
namespace {

using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

/// The cells of every row, the caption row first.
Rows Cells(const MemoryGrid& grid) {
  Rows rows;
  for (GridRow row = kCaptionRow; row < EndOf(grid); ++row) {
    Texts& cells = rows.emplace_back();
    for (std::int16_t column = 0; column < grid.ColumnCount(); ++column) {
      cells.push_back(grid.TextOf({row, column}));
    }
  }
  return rows;
}

void ExpectIndexError(const std::function<void()>& action) {
  EXPECT_EQ(ErrorOf(action).Kind(), ErrorKind::Index);
}

TEST(MemoryGrid, OnlyCellsThatExistAreReadAndWritten) {
  MemoryGrid grid;
  grid.AddRow("a\tb");
  grid.SetCellText(0, 1, "caption");
  for (const std::int16_t place : {std::int16_t{-1}, std::int16_t{2}}) {
    ExpectIndexError([&] { static_cast<void>(grid.CellText(place, 0)); });
    ExpectIndexError([&] { grid.SetCellText(place, 0, "x"); });
    ExpectIndexError([&] { static_cast<void>(grid.CellText(1, place)); });
    ExpectIndexError([&] { grid.SetCellText(1, place, "x"); });
  }
  EXPECT_EQ(Cells(grid), (Rows{{"", "caption"}, {"a", "b"}}));
}

TEST(MemoryGrid, AnAddedRowIsTheLastOneAndHasAllColumns) {
  MemoryGrid grid;
  grid.AddRow("1\t2");
  grid.AddRow("3");
  grid.AddRow("\t4");
  grid.AddRow("5\t6\t7");
  // A tab in a cell does not split it.
  AddCells(grid, Texts{"a\tb", "c\t"});
  AddCells(grid, Texts{"d"});
  EXPECT_EQ(
      Cells(grid),
      (Rows{{"", ""}, {"1", "2"}, {"3", ""}, {"", "4"}, {"5", "6"}, {"a b", "c "}, {"d", ""}}));
}

TEST(MemoryGrid, RowsAndColumnsAreAddedEmptyAndCutAtTheEnd) {
  MemoryGrid grid;
  grid.SetCellText(0, 0, "caption");
  grid.AddRow("1\t2");
  grid.AddRow("3\t4");
  grid.SetRowCount(2);
  grid.SetRowCount(3);
  EXPECT_EQ(Cells(grid), (Rows{{"caption", ""}, {"1", "2"}, {"", ""}}));
  grid.SetColumnCount(1);
  grid.SetColumnCount(2);
  EXPECT_EQ(Cells(grid), (Rows{{"caption", ""}, {"1", ""}, {"", ""}}));
  ExpectIndexError([&] { grid.SetRowCount(0); });
  ExpectIndexError([&] { grid.SetColumnCount(-1); });
}

TEST(MemoryGrid, ARowIsInsertedBeforeItsPositionOrAfterTheLastAndOnlyADataRowIsRemoved) {
  MemoryGrid grid;
  grid.SetCellText(0, 0, "caption");
  grid.InsertRow({1}, Texts{"2", "b", "beyond"});
  grid.InsertRow({2}, Texts{"3", "c"});
  grid.InsertRow({1}, Texts{"1"});
  ExpectIndexError([&] { grid.InsertRow({0}, Texts{"x"}); });
  ExpectIndexError([&] { grid.InsertRow({5}, Texts{"x"}); });
  ExpectIndexError([&] { grid.RemoveRow({0}); });
  ExpectIndexError([&] { grid.RemoveRow({4}); });
  EXPECT_EQ(Cells(grid), (Rows{{"caption", ""}, {"1", ""}, {"2", "b"}, {"3", "c"}}));
  grid.RemoveRow({2});
  EXPECT_EQ(Cells(grid), (Rows{{"caption", ""}, {"1", ""}, {"3", "c"}}));
}

}  // namespace
}  // namespace tarvell::test
