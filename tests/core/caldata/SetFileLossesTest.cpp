// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "support/SetStage.h"

/// What a file does to a row that it has no right place for, one example each.
namespace tarvell {
namespace {

using test::CapacitorSetA;
using test::CapacitorSetC;
using test::ResistorSet;
using test::Row;
using test::Rows;

class LossStage : public test::SetStage {
 public:
  using SetStage::Load;
  using SetStage::SetStage;
  using SetStage::ShownRows;

  /// The row that comes back when the first page holds these rows, the last of them.
  Row LastRowRead(const Rows& rows) {
    SetRows(0, rows);
    static_cast<void>(Saved());
    LoadAgain();
    const Rows read = ShownRows(0);
    EXPECT_EQ(read.size(), rows.size());
    return read.empty() ? Row() : read.back();
  }
};

Row LastRowRead(const test::SetModel& set, const Rows& rows) {
  return LossStage(set).LastRowRead(rows);
}

TEST(SetFileLosses, APercentValueOfSixCharactersComesBackInPpm) {
  EXPECT_EQ(
      LastRowRead(CapacitorSetA(), {{"1000", "1.000000pF", "0.0050 %", "0.00001", "0.00002"}}),
      (Row{"1000", "1.000000pF", "50 ppm", "0.00001", "0.00002"}));
  EXPECT_EQ(LastRowRead(CapacitorSetA(), {{"1000", "1.000000pF", "0.0050 %", "0", "0"},
                                          {"2000", "1.00000pF", "12.345 %", "0.00001", "0.00002"}}),
            (Row{"2000", "1.00000pF", "123450.000 ppm", "0.00001", "0.00002"}));
  EXPECT_EQ(LastRowRead(ResistorSet(), {{"RT731A", "1 mohm", "1.0000  mohm", "100.25 %", ""}}),
            (Row{"RT731A", "1 mohm", "1.0000  mohm", "1002500 ppm", ""}));
  EXPECT_EQ(LastRowRead(ResistorSet(), {{"RT731A", "1 mohm", "1.0000  mohm", "-12.35 %", ""}}),
            (Row{"RT731A", "1 mohm", "1.0000  mohm", "-123500 ppm", ""}));
}

TEST(SetFileLosses, AnEmptyUncertaintyComesBackAsZeroPpm) {
  EXPECT_EQ(LastRowRead(CapacitorSetA(), {{"1000", "1.000000pF", "", "0.00001", "0.00002"}}),
            (Row{"1000", "1.000000pF", "0 ppm", "0.00001", "0.00002"}));
  EXPECT_EQ(LastRowRead(ResistorSet(), {{"RT731A", "1 mohm", "1.0000  mohm", "", ""}}),
            (Row{"RT731A", "1 mohm", "1.0000  mohm", "0 ppm", ""}));
}

// The words of a capacitor's line are told apart by blanks alone: a field without text lets those
// behind it move up.
TEST(SetFileLosses, AnEmptyCapacitanceLetsTheCellsBehindItMoveUp) {
  EXPECT_EQ(LastRowRead(CapacitorSetA(), {{"1000", "", "0.0050 %", "0.00012", "0.00034"}}),
            (Row{"1000", "0.000000pF", "1 ppm", "0.00034", "0.00000"}));
  EXPECT_EQ(LastRowRead(CapacitorSetC(), {{"1000", "", "0.0050 %", "0.00012", "0.00034"}}),
            (Row{"1000", "0.0000nF", "1 ppm", "0.00034", "0.00000"}));
}

TEST(SetFileLosses, TheUnitAloneInPerCentBehindSetAsRowsLetsTheCellsBehindItMoveUp) {
  Rows rows(8, {"1000", "1.0000pF", "12 ppm", "0.00001", "0.00002"});
  rows.push_back({"9000", "pF", " %", "0.00012", "0.00034"});
  EXPECT_EQ(LastRowRead(CapacitorSetA(), rows), (Row{"9000", "pF", " ppm", "0.00034", "0.00000"}));
}

TEST(SetFileLosses, ABlankInAFrequencyMovesTheCellsBehindItDown) {
  EXPECT_EQ(LastRowRead(CapacitorSetC(), {{"1 kHz", "1.0000nF", "12 ppm", "0.00012", "0.00034"}}),
            (Row{"1", "0.0000nF", "10000 ppm", "0.00120", "0.00012"}));
}

}  // namespace
}  // namespace tarvell
