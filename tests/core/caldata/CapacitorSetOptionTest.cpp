// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "core/caldata/CapacitorSetFile.h"
#include "core/caldata/MemoryGrid.h"
#include "support/ErrorOf.h"
#include "support/SetStage.h"

/// Option 001, which adds a fourth page to set C; set A always has four.
namespace tarvell {
namespace {

using test::CapacitorSetAFile;
using test::CapacitorSetCFile;
using test::Contains;
using test::Joined;
using test::Lines;
using test::ManyRows;
using test::Texts;

TEST_F(CapacitorSetAFile, TakesTheSignsOfTheOptionForSerialNumbers) {
  for (const char* serial : {"*", "/", ""}) {
    data_->SetCalPageSerial(3, serial);
    EXPECT_EQ(data_->GetCalPageSerial(3), serial);
    EXPECT_EQ(data_->GetCalPageCount(), 4);
    EXPECT_TRUE(Contains(Saved(), Lines({std::string("#RT524A    :     ") + serial, "!END", "!"})));
  }
}

TEST_F(CapacitorSetCFile, SwitchesTheOptionOffAndOnWithTheSerialNumberThatItHad) {
  Load(Joined({PageOf(3, "S3", {"*1"}), {"!"}}));
  data_->SetCalPageSerial(3, "*");
  EXPECT_EQ(data_->GetCalPageCount(), 3);
  EXPECT_EQ(data_->GetCalPageSerial(3), "*");
  data_->SetCalPageSerial(3, "*");
  EXPECT_EQ(data_->GetCalPageSerial(3), "*");
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(data_->GetCalPageCount(), 4);
  EXPECT_EQ(data_->GetCalPageSerial(3), "S3");
  EXPECT_EQ(FirstColumn(3), (Texts{"1"}));
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(data_->GetCalPageSerial(3), "S3");
}

TEST_F(CapacitorSetCFile, SwitchesTheOptionOnWithAnyOtherSerialNumber) {
  for (const char* serial : {"S9", "", "**", "//", " * ", "/ "}) {
    data_->SetCalPageSerial(3, "*");
    data_->SetCalPageSerial(3, serial);
    EXPECT_EQ(data_->GetCalPageCount(), 4) << serial;
    EXPECT_EQ(data_->GetCalPageSerial(3), serial);
    data_->SetCalPageSerial(3, "*");
    data_->SetCalPageSerial(3, "/");
    EXPECT_EQ(data_->GetCalPageSerial(3), serial);
  }
}

TEST_F(CapacitorSetCFile, SwitchesTheOptionOnWithoutASerialNumberWhereItHadNone) {
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(data_->GetCalPageCount(), 4);
  EXPECT_EQ(data_->GetCalPageSerial(3), "");
}

TEST_F(CapacitorSetCFile, LeavesTheGridAsItIsForAnAbsentOption) {
  SetRows(3, ManyRows(2));
  data_->SetCalPageSerial(3, "*");
  MemoryGrid grid(5);
  grid.SetCellText(0, 0, "caption");
  grid.AddRow("left\tover");
  data_->GetCalData(3, grid);
  EXPECT_EQ(grid.RowCount(), 2);
  EXPECT_EQ(grid.CellText(0, 0), "caption");
  EXPECT_EQ(grid.CellText(1, 1), "over");
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(ShownRows(3), ManyRows(2));
}

TEST_F(CapacitorSetCFile, TakesAwayAnEarlierOptionWhenItHasNone) {
  data_->SetCalPageSerial(3, "S3");
  SetRows(3, ManyRows(1));
  LoadOver(PagesBut({3}));
  EXPECT_EQ(data_->GetCalPageCount(), 3);
  EXPECT_EQ(data_->GetCalPageSerial(3), "*");
  // The page is kept for the option's return.
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(data_->GetCalPageSerial(3), "S3");
  EXPECT_EQ(ShownRows(3), ManyRows(1));
}

TEST_F(CapacitorSetCFile, WhoseOptionPageHasNoEndSaysSo) {
  Load(Joined({PagesBut({3}), {"#RT528A : S3", test::FullLine("1"), test::FullLine("2")}}));
  EXPECT_EQ(data_->GetCalPageCount(), 4);
  EXPECT_EQ(FirstColumn(3), (Texts{"1"}));
  ExpectNotice({"page RT528A", "!END"});
}

TEST_F(CapacitorSetCFile, MayBeATemplateWithoutTheOption) {
  test::WriteNative(tree_.ProgramFolder() / "TempRT520C",
                    Lines(Joined({{"#MODEL_NO : RT520C"}, PagesBut({3})})));
  EXPECT_EQ(data_->SetInitialDefaultData(), 0);
  EXPECT_EQ(data_->GetCalPageCount(), 3);
}

}  // namespace
}  // namespace tarvell
