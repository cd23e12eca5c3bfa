// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "core/caldata/CapacitorSetFile.h"
#include "core/caldata/MemoryGrid.h"
#include "support/SetStage.h"

namespace tarvell {
namespace {

using test::CapacitorSetAFile;
using test::CapacitorSetCFile;
using test::CapacitorSetFile;
using test::Rows;
using test::Texts;

TEST_P(CapacitorSetFile, IsShownWithCaptionsAndRows) {
  SetRows(2, {{"1", "a", "b", "c", "d"}, {"2", "e", "f", "g", "h"}});
  MemoryGrid grid(5);
  for (int i = 0; i < 5; ++i) {
    grid.AddRow("left\tover");
  }
  data_->GetCalData(2, grid);
  ASSERT_EQ(grid.RowCount(), 3);
  EXPECT_EQ(grid.CellText(0, 0), "Frequency[Hz]");
  EXPECT_EQ(grid.CellText(0, 2), "Unc.");
  EXPECT_EQ(grid.CellText(0, 3), "Disspation Factor");
  EXPECT_EQ(grid.CellText(0, 4), "Unc.");
  EXPECT_EQ(ShownRows(2), (Rows{{"1", "a", "b", "c", "d"}, {"2", "e", "f", "g", "h"}}));
}

TEST_P(CapacitorSetFile, IsShownWithTheUnitOfEachPageInItsCaption) {
  const Texts captions =
      set_.code == "RT520A"
          ? Texts{"Capacitance[pF]", "Capacitance[pF]", "Capacitance[pF]", "Capacitance[pF]"}
          : Texts{"Capacitance[nF]", "Capacitance[nF]", "Capacitance[uF]", "Capacitance[uF]"};
  for (std::int16_t page = 0; page < 4; ++page) {
    MemoryGrid grid(5);
    data_->GetCalData(page, grid);
    EXPECT_EQ(grid.CellText(0, 1), captions.at(static_cast<std::size_t>(page))) << page;
  }
}

TEST_P(CapacitorSetFile, IsShownWholeWhereTheFirstFrequencyIsEmpty) {
  SetRows(0, {{"", "a", "b", "c", "d"}, {"2", "e", "f", "g", "h"}});
  EXPECT_EQ(ShownRows(0), (Rows{{"", "a", "b", "c", "d"}, {"2", "e", "f", "g", "h"}}));
}

TEST_F(CapacitorSetAFile, IsShownOnAFifthPageInPicofarad) {
  MemoryGrid grid(5);
  data_->GetCalData(4, grid);
  EXPECT_EQ(grid.CellText(0, 1), "Capacitance[pF]");
}

TEST_F(CapacitorSetCFile, LeavesTheCaptionOfTheCapacitanceOnAFifthPage) {
  MemoryGrid grid(5);
  grid.SetCellText(0, 1, "before");
  data_->GetCalData(4, grid);
  EXPECT_EQ(grid.CellText(0, 0), "Frequency[Hz]");
  EXPECT_EQ(grid.CellText(0, 1), "before");
}

}  // namespace
}  // namespace tarvell
