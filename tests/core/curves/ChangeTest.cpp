// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/curves/Change.h"
#include "support/TableOf.h"

namespace tarvell::test {
namespace {

using Texts = std::vector<std::string>;

Texts ChangesOf(const PageChange& change) {
  Texts texts;
  for (const auto& [cell, what] : change.cells) {
    texts.push_back(std::to_string(cell.row.number) + "/" + std::to_string(cell.column) + ": " +
                    what.earlier + " " + what.difference);
  }
  return texts;
}

TEST(Change, RowsAreComparedByTheirPointWhereverTheyAre) {
  const auto now = SensorTable({{"1", "99.5"}, {"3", "90.0"}, {"12.40", "84.1"}});
  const auto before = SensorTable({{"12.4", "84.5"}, {"1.0", "99.50"}, {"2", "95"}, {"x", "1"}});
  const Model& model = *FindModel("PX13A");
  const PageChange change = ChangeOf({model, 0, *now}, {model, 0, *before});
  EXPECT_EQ(ChangesOf(change), (Texts{"1/1: 99.50 0.00", "3/1: 84.5 -0.4"}));
  EXPECT_EQ(PointsOfOneOnly(change),
            "Only this calibration has 3 GHz. Only the earlier calibration has 2 GHz.");
  EXPECT_EQ(PointsOfOneOnly(ChangeOf({model, 0, *now}, {model, 0, *now})), "");
}

TEST(Change, APointThatOccursTwiceHasTwoPartners) {
  const Texts captions = {"Setting [dB]", "Freq[Hz]", "Cal Data [dB]"};
  const auto now = TableOf(
      {captions, {"10", "1E8", "10.01"}, {"10", "1.00E08", "10.02"}, {"20", "1E8", "20.00"}});
  const auto before = TableOf({captions, {"10", "1E8", "10.00"}, {"10", "100E6", "10.05"}});
  const Model& model = *FindModel("PX60G");
  const PageChange change = ChangeOf({model, 0, *now}, {model, 0, *before});
  EXPECT_EQ(ChangesOf(change), (Texts{"1/2: 10.00 +0.01", "2/2: 10.05 -0.03"}));
  EXPECT_EQ(change.onlyNow, (Texts{"20 dB, 100 MHz"}));
}

TEST(Change, ADifferenceHasTheUnitOfItsCells) {
  EXPECT_EQ(DifferenceText("10.002 ohm", "10.001 ohm"), "+0.001 ohm");
  EXPECT_EQ(DifferenceText("Ls/5.2 nH", "Ls/5.21 nH"), "-0.01 nH");
  EXPECT_EQ(DifferenceText("0.1 %", "950 ppm"), "+0.005 %");
  EXPECT_EQ(DifferenceText("950 ppm", "0.1 %"), "-50 ppm");
  EXPECT_EQ(DifferenceText("1000 ppm", "0.1 %"), "0 ppm");
  EXPECT_EQ(DifferenceText("1 nF", "950 pF"), "");
  EXPECT_EQ(DifferenceText("", "1"), "");
  EXPECT_EQ(DifferenceText("1E301", "1"), "");
}

}  // namespace
}  // namespace tarvell::test
