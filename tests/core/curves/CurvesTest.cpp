// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/curves/Curves.h"
#include "core/numbers/DecimalDifference.h"
#include "core/numbers/Numbers.h"
#include "support/TableOf.h"

namespace tarvell::test {
namespace {

using Texts = std::vector<std::string>;

std::vector<Curve> Curves(const char* model, const std::unique_ptr<MemoryGrid>& grid,
                          std::int16_t page = 0) {
  return CurvesOf(*FindModel(model), page, *grid);
}

/// A point as "row: x y at value".
Texts PointTexts(const Curve& curve) {
  Texts texts;
  for (const CurvePoint& point : curve.points) {
    texts.push_back(std::to_string(point.cell.row.number) + ": " + ShortestText(point.x) + " " +
                    ShortestText(point.y) + " " + point.at + " " + point.value);
  }
  return texts;
}

Texts Names(const std::vector<Curve>& curves) {
  Texts names;
  for (const Curve& curve : curves) {
    names.push_back(curve.name + " [" + curve.yUnit + "] over " + XCaption(curve));
  }
  return names;
}

const Texts kAttenuatorCaptions = {"Setting [dB]", "Freq[Hz]", "Cal Data [dB]"};
const Texts kHighFrequencyCaptions = {"Frequency[MHz]", "Resistance[ohm]", "Unc.  [%]",
                                      "Reactance [ohm]", "Unc. (%)"};

TEST(Curves, ASensorHasOneCurveUpwardByFrequencyInHz) {
  const auto curves = Curves("PX13A", SensorTable({{"12.4", "95.0"}, {"0.0001", "97.60"}}));
  EXPECT_EQ(Names(curves), (Texts{"Calibration factor [%] over Frequency [GHz]"}));
  EXPECT_EQ(PointTexts(curves.at(0)),
            (Texts{"2: 100000 97.6 0.0001 GHz 97.60", "1: 12400000000 95 12.4 GHz 95.0"}));
  EXPECT_EQ(YCaption(curves.at(0)), "Calibration factor [%]");
}

TEST(Curves, AnAttenuatorHasOneCurveASettingWithTheExactDeviation) {
  const auto curves = Curves("PX60G", TableOf({kAttenuatorCaptions,
                                               {"0", "1.00E05", "0.0021"},
                                               {"110", "6.9925E09", "110.0421"},
                                               {"110", "1E8", "109.98"},
                                               {"010", "1.00E05", "10.0000"}}));
  EXPECT_EQ(Names(curves),
            (Texts{"0 dB [dB] over Frequency [Hz]", "110 dB [dB] over Frequency [Hz]",
                   "10 dB [dB] over Frequency [Hz]"}));
  EXPECT_EQ(PointTexts(curves.at(0)), (Texts{"1: 100000 0.0021 100 kHz +0.0021"}));
  EXPECT_EQ(PointTexts(curves.at(1)),
            (Texts{"3: 100000000 -0.02 100 MHz -0.02", "2: 6992500000 0.0421 6.9925 GHz +0.0421"}));
  EXPECT_EQ(PointTexts(curves.at(2)), (Texts{"4: 100000 0 100 kHz 0.0000"}));
  EXPECT_EQ(YCaption(curves.at(0)), "Deviation [dB]");
}

TEST(Curves, ASetHasOneCurveForEachColumnOfValuesAndUnit) {
  const auto curves = Curves("RT730A",
                             TableOf({kHighFrequencyCaptions,
                                      {"1", "10.001 ohm", "0.10 %", "0.031 ohm", "0.010 ohm"},
                                      {"3", "10.002 ohm", "950 ppm", "0.092 ohm", "0.010 ohm"}}),
                             2);
  EXPECT_EQ(Names(curves), (Texts{"Resistance [ohm] over Frequency [MHz]",
                                  "Unc. of Resistance [%] over Frequency [MHz]",
                                  "Reactance [ohm] over Frequency [MHz]",
                                  "Unc. of Reactance [ohm] over Frequency [MHz]"}));
  EXPECT_EQ(PointTexts(curves.at(1)),
            (Texts{"1: 1000000 0.1 1 MHz 0.10", "2: 3000000 0.095 3 MHz 0.095"}));
  EXPECT_FALSE(curves.at(0).isUncertainty);
  EXPECT_TRUE(curves.at(1).isUncertainty);
}

TEST(Curves, ResistancesAreDrawnAsDeviationFromTheNominalValue) {
  const auto curves =
      Curves("RT730A", TableOf({{"Model", "Nominal Value", "Calibrated Value", "Unc. (%)", ""},
                                {"RT731A", "1 mohm", "1.0004  mohm", "0.1 %", ""},
                                {"RT739A", "100 kohm", "99.994 kohm", "0.01 %", ""}}));
  EXPECT_EQ(Names(curves), (Texts{"Calibrated Value [%] over Nominal Value [ohm]",
                                  "Unc. of Calibrated Value [%] over Nominal Value [ohm]"}));
  EXPECT_EQ(PointTexts(curves.at(0)),
            (Texts{"1: 0.001 0.04 RT731A +0.04", "2: 100000 -0.006 RT739A -0.006"}));
}

TEST(Curves, MembersWithoutANominalValueAreDrawnByRow) {
  const auto curves = Curves("RT730A",
                             TableOf({{"Model", "Calibrated Value", "Unc. (%)"},
                                      {"RT734A", "Ls/5.21 nH", "0.5 nH"},
                                      {"RT737A", "Cp/-0.104 pF", "0.02 pF"}}),
                             1);
  EXPECT_EQ(Names(curves),
            (Texts{"Calibrated Value [nH] over Model", "Calibrated Value [pF] over Model",
                   "Unc. of Calibrated Value [nH] over Model",
                   "Unc. of Calibrated Value [pF] over Model"}));
  EXPECT_EQ(PointTexts(curves.at(1)), (Texts{"2: 2 -0.104 RT737A -0.104"}));
}

TEST(Curves, ACellThatCannotBeDrawnGivesNoPoint) {
  const auto curves = Curves("PX13A", SensorTable({{"", "95.0"},
                                                   {"x", "95.0"},
                                                   {"1", ""},
                                                   {"2", "x95"},
                                                   {"3", "1E999"},
                                                   {"1E300", "95.0"},
                                                   {"4", "-1E300"}}));
  EXPECT_EQ(PointTexts(curves.at(0)), (Texts{"7: 4000000000 -1E+300 4 GHz -1E300"}));
  EXPECT_TRUE(Curves("PX13A", SensorTable({{"1", ""}})).empty());
  EXPECT_TRUE(Curves("RT410A", SensorTable({{"1", "95.0"}})).empty());
}

TEST(Curves, AreLogarithmicBeyondTwoDecades) {
  const auto isLogarithmic = [](const char* low, const char* high) {
    return IsLogarithmic(Curves("PX13A", SensorTable({{low, "1"}, {high, "1"}})));
  };
  EXPECT_FALSE(isLogarithmic("0.1", "10"));
  EXPECT_TRUE(isLogarithmic("0.1", "10.01"));
  EXPECT_FALSE(isLogarithmic("0", "10"));
  EXPECT_FALSE(isLogarithmic("-1", "1000"));
  EXPECT_FALSE(IsLogarithmic({}));
}

TEST(CurveSummary, NamesTheRangeAndTheLargestChange) {
  const auto now = Curves(
      "PX13A", SensorTable({{"1", "100.0"}, {"12.4", "84.1"}, {"18", "90.1"}, {"18", "91"}}));
  const auto earlier = Curves(
      "PX13A", SensorTable({{"1", "99.9"}, {"12.4", "84.5"}, {"18", "90.1"}, {"18", "91.2"}}));
  const auto other = Curves("PX13A", SensorTable({{"2", "100.0"}}));
  EXPECT_EQ(Summary(now.at(0)), "4 points, 84.1 to 100.0 %");
  EXPECT_EQ(Summary(now.at(0), &earlier.at(0)),
            "4 points, 84.1 to 100.0 %, largest change -0.4 at 12.4 GHz");
  EXPECT_EQ(Summary(now.at(0), &now.at(0)), "4 points, 84.1 to 100.0 %, no change");
  EXPECT_EQ(Summary(other.at(0), &now.at(0)),
            "1 point, 100.0 %, no point in common with the earlier calibration");
  EXPECT_EQ(Summary(Curve()), "no points");
}

TEST(SignedDifference, IsWorkedOutInDecimals) {
  const std::vector<Texts> differences = {{"84.1", "84.5", "-0.4"},
                                          {"1.005", "1", "+0.005"},
                                          {"0.3", "0.1", "+0.2"},
                                          {"110.0421", "110", "+0.0421"},
                                          {"9.5E1", "95", "0"},
                                          {"1.5E-03", "0.001", "+0.0005"},
                                          {"10.00", "10.0", "0.00"},
                                          {"x", "1", "-1"},
                                          {"1E300", "-1E300", "+2E+300"},
                                          {"1E999", "1", ""},
                                          {"100.003 ohm", "100", "+0.003"},
                                          {"1E15", "0.1", "+1E+15"}};
  for (const Texts& texts : differences) {
    EXPECT_EQ(SignedDifference(texts[0], texts[1]), texts[2]) << texts[0] << " - " << texts[1];
  }
}

}  // namespace
}  // namespace tarvell::test
