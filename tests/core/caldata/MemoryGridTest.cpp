// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::ErrorOf;

/// The cells of every row, the caption row first.
std::vector<std::vector<std::string>> Cells(const MemoryGrid& grid) {
  std::vector<std::vector<std::string>> rows;
  for (std::int16_t row = 0; row < grid.RowCount(); ++row) {
    std::vector<std::string>& cells = rows.emplace_back();
    for (std::int16_t column = 0; column < grid.ColumnCount(); ++column) {
      cells.push_back(grid.CellText(row, column));
    }
  }
  return rows;
}

using Rows = std::vector<std::vector<std::string>>;

void ExpectIndexError(const std::function<void()>& action) {
  EXPECT_EQ(ErrorOf(action).Kind(), ErrorKind::Index);
}

TEST(MemoryGrid, ANewGridIsOneEmptyCaptionRowOfTwoColumns) {
  const MemoryGrid grid;
  EXPECT_EQ(Cells(grid), (Rows{{"", ""}}));
}

TEST(MemoryGrid, ANewGridHasTheColumnsAskedFor) {
  const MemoryGrid grid(4);
  EXPECT_EQ(Cells(grid), (Rows{{"", "", "", ""}}));
}

TEST(MemoryGrid, ACellGivesBackTheTextThatWasSet) {
  MemoryGrid grid;
  grid.AddRow("a\tb");
  grid.SetCellText(0, 1, "caption");
  grid.SetCellText(1, 0, " \xC2\xB5 ");
  EXPECT_EQ(Cells(grid), (Rows{{"", "caption"}, {" \xC2\xB5 ", "b"}}));
}

TEST(MemoryGrid, ACellThatDoesNotExistIsAnIndexErrorOnReadingAndWriting) {
  MemoryGrid grid;
  grid.AddRow("a\tb");
  for (const std::int16_t row :
       {std::int16_t{-1}, std::int16_t{2}, std::int16_t{INT16_MAX}, std::int16_t{INT16_MIN}}) {
    ExpectIndexError([&] { static_cast<void>(grid.CellText(row, 0)); });
    ExpectIndexError([&] { grid.SetCellText(row, 0, "x"); });
  }
  for (const std::int16_t column :
       {std::int16_t{-1}, std::int16_t{2}, std::int16_t{INT16_MAX}, std::int16_t{INT16_MIN}}) {
    ExpectIndexError([&] { static_cast<void>(grid.CellText(1, column)); });
    ExpectIndexError([&] { grid.SetCellText(1, column, "x"); });
  }
  EXPECT_EQ(Cells(grid), (Rows{{"", ""}, {"a", "b"}}));
}

TEST(MemoryGrid, AnAddedRowStandsBelowTheLast) {
  MemoryGrid grid;
  grid.AddRow("1\t2");
  grid.AddRow("3\t4");
  EXPECT_EQ(Cells(grid), (Rows{{"", ""}, {"1", "2"}, {"3", "4"}}));
}

TEST(MemoryGrid, CellsThatAnAddedRowLacksAreEmpty) {
  MemoryGrid grid(3);
  grid.AddRow("1");
  grid.AddRow("");
  grid.AddRow("\t2");
  grid.AddRow("\t\t3");
  EXPECT_EQ(Cells(grid),
            (Rows{{"", "", ""}, {"1", "", ""}, {"", "", ""}, {"", "2", ""}, {"", "", "3"}}));
}

TEST(MemoryGrid, CellsBeyondTheLastColumnAreLeftOut) {
  MemoryGrid grid;
  grid.AddRow("1\t2\t3\t4");
  EXPECT_EQ(Cells(grid), (Rows{{"", ""}, {"1", "2"}}));
}

TEST(MemoryGrid, MoreRowsAreEmptyOnes) {
  MemoryGrid grid;
  grid.AddRow("1\t2");
  grid.SetRowCount(4);
  EXPECT_EQ(Cells(grid), (Rows{{"", ""}, {"1", "2"}, {"", ""}, {"", ""}}));
}

TEST(MemoryGrid, FewerRowsCutTheLastOnes) {
  MemoryGrid grid;
  grid.SetCellText(0, 0, "caption");
  grid.AddRow("1\t2");
  grid.AddRow("3\t4");
  grid.SetRowCount(2);
  EXPECT_EQ(Cells(grid), (Rows{{"caption", ""}, {"1", "2"}}));
  grid.SetRowCount(1);
  EXPECT_EQ(Cells(grid), (Rows{{"caption", ""}}));
}

TEST(MemoryGrid, ARowThatWasCutComesBackEmpty) {
  MemoryGrid grid;
  grid.AddRow("1\t2");
  grid.SetRowCount(1);
  grid.SetRowCount(2);
  EXPECT_EQ(Cells(grid), (Rows{{"", ""}, {"", ""}}));
}

TEST(MemoryGrid, ARowIsInsertedInFrontOfItsPosition) {
  MemoryGrid grid;
  grid.SetCellText(0, 0, "caption");
  grid.AddRow("1\ta");
  grid.AddRow("3\tc");
  grid.InsertRow(2, "2\tb");
  grid.InsertRow(1, "0");
  EXPECT_EQ(Cells(grid), (Rows{{"caption", ""}, {"0", ""}, {"1", "a"}, {"2", "b"}, {"3", "c"}}));
}

TEST(MemoryGrid, ARowInsertedBehindTheLastIsAppended) {
  MemoryGrid grid;
  grid.InsertRow(1, "1\ta");
  grid.InsertRow(2, "2\tb\tbeyond");
  EXPECT_EQ(Cells(grid), (Rows{{"", ""}, {"1", "a"}, {"2", "b"}}));
}

TEST(MemoryGrid, NoRowIsInsertedAboveTheCaptionsNorFarBehindTheLast) {
  MemoryGrid grid;
  grid.AddRow("1\ta");
  for (const std::int16_t position :
       {std::int16_t{-1}, std::int16_t{0}, std::int16_t{3}, std::int16_t{INT16_MAX}}) {
    ExpectIndexError([&] { grid.InsertRow(position, "x"); });
  }
  EXPECT_EQ(Cells(grid), (Rows{{"", ""}, {"1", "a"}}));
}

TEST(MemoryGrid, ARemovedRowLetsTheOthersMoveUp) {
  MemoryGrid grid;
  grid.AddRow("1\ta");
  grid.AddRow("2\tb");
  grid.AddRow("3\tc");
  grid.RemoveRow(2);
  EXPECT_EQ(Cells(grid), (Rows{{"", ""}, {"1", "a"}, {"3", "c"}}));
  grid.RemoveRow(2);
  grid.RemoveRow(1);
  EXPECT_EQ(Cells(grid), (Rows{{"", ""}}));
}

TEST(MemoryGrid, TheCaptionRowAndRowsThatDoNotExistAreNotRemoved) {
  MemoryGrid grid;
  grid.AddRow("1\ta");
  for (const std::int16_t row :
       {std::int16_t{-1}, std::int16_t{0}, std::int16_t{2}, std::int16_t{INT16_MAX}}) {
    ExpectIndexError([&] { grid.RemoveRow(row); });
  }
  EXPECT_EQ(Cells(grid), (Rows{{"", ""}, {"1", "a"}}));
}

TEST(MemoryGrid, MoreColumnsAreEmptyInEveryRow) {
  MemoryGrid grid;
  grid.SetCellText(0, 1, "caption");
  grid.AddRow("1\t2");
  grid.SetColumnCount(3);
  EXPECT_EQ(grid.ColumnCount(), 3);
  EXPECT_EQ(Cells(grid), (Rows{{"", "caption", ""}, {"1", "2", ""}}));
  grid.AddRow("3\t4\t5");
  EXPECT_EQ(grid.CellText(2, 2), "5");
}

TEST(MemoryGrid, FewerColumnsCutTheLastOnes) {
  MemoryGrid grid(3);
  grid.AddRow("1\t2\t3");
  grid.SetColumnCount(1);
  EXPECT_EQ(Cells(grid), (Rows{{""}, {"1"}}));
  ExpectIndexError([&] { static_cast<void>(grid.CellText(1, 1)); });
  grid.SetColumnCount(3);
  EXPECT_EQ(Cells(grid), (Rows{{"", "", ""}, {"1", "", ""}}));
}

TEST(MemoryGrid, AColumnHasTheWidthThatWasSetAndNoneBefore) {
  MemoryGrid grid;
  EXPECT_EQ(grid.ColumnWidth(0), 0);
  grid.SetColumnWidth(1, 1500);
  EXPECT_EQ(grid.ColumnWidth(0), 0);
  EXPECT_EQ(grid.ColumnWidth(1), 1500);
  grid.SetColumnCount(3);
  EXPECT_EQ(grid.ColumnWidth(1), 1500);
  EXPECT_EQ(grid.ColumnWidth(2), 0);
}

TEST(MemoryGrid, TheWidthOfAColumnThatDoesNotExistIsAnIndexError) {
  MemoryGrid grid;
  for (const std::int16_t column : {std::int16_t{-1}, std::int16_t{2}}) {
    ExpectIndexError([&] { grid.SetColumnWidth(column, 1500); });
    ExpectIndexError([&] { static_cast<void>(grid.ColumnWidth(column)); });
  }
}

TEST(MemoryGrid, TheWholeGridHasTheWidthThatWasSet) {
  MemoryGrid grid;
  EXPECT_EQ(grid.Width(), 0.0F);
  grid.SetWidth(9000.5F);
  EXPECT_EQ(grid.Width(), 9000.5F);
}

}  // namespace
}  // namespace tarvell
