// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/curves/CurvesBeside.h"
#include "support/TableOf.h"

namespace tarvell::test {
namespace {

using Names = std::vector<std::string>;

Names NamesBeside(const char* model, const MemoryGrid& grid, Cell cell) {
  Names names;
  for (const Curve& curve : CurvesBeside(CurvesOf(*FindModel(model), 1, grid), cell)) {
    names.push_back(curve.name + " [" + curve.yUnit + "]");
  }
  return names;
}

TEST(CurvesBeside, AreThoseOfTheColumnAndOfTheUnitOfTheCell) {
  // Only one page of the resistor set has two units in a column.
  const auto table = TableOf({{"Model", "Calibrated Value", "Unc."},
                              {"RT734A", "Ls/5.2 nH", "0.5 nH"},
                              {"RT737A", "Cp/0.1 pF", "0.02 pF"},
                              {"RT738A", "none", "0.03 pF"}});
  const MemoryGrid& grid = *table;
  EXPECT_EQ(NamesBeside("RT730A", grid, {{1}, 1}), (Names{"Calibrated Value [nH]"}));
  EXPECT_EQ(NamesBeside("RT730A", grid, {{2}, 1}), (Names{"Calibrated Value [pF]"}));
  EXPECT_EQ(NamesBeside("RT730A", grid, {{3}, 2}), (Names{"Unc. of Calibrated Value [pF]"}));
  // A cell without a value, and a column without values.
  EXPECT_EQ(NamesBeside("RT730A", grid, {{3}, 1}), (Names{"Calibrated Value [nH]"}));
  EXPECT_EQ(NamesBeside("RT730A", grid, {{2}, 0}), (Names{"Calibrated Value [nH]"}));
}

TEST(CurvesBeside, AreAllSettingsOfAnAttenuatorAndNoneOfAnEmptyTable) {
  const std::vector<std::string> captions = {"Setting [dB]", "Freq[Hz]", "Cal Data [dB]"};
  EXPECT_EQ(NamesBeside("PX60G", *TableOf({captions, {"0", "1E8", "0.1"}, {"10", "1E8", "10.1"}}),
                        {{1}, 2}),
            (Names{"0 dB [dB]", "10 dB [dB]"}));
  EXPECT_EQ(NamesBeside("PX60G", *TableOf({captions}), {{0}, 0}), Names());
}

}  // namespace
}  // namespace tarvell::test
