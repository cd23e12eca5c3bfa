// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/curves/Change.h"
#include "core/curves/SlipReport.h"
#include "core/curves/Slips.h"
#include "support/TableOf.h"

namespace tarvell::test {
namespace {

using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

Slips SlipsOf(const char* code, const std::unique_ptr<MemoryGrid>& now,
              const std::unique_ptr<MemoryGrid>& earlier, const CellOrigins& origins = {}) {
  const Model& model = *FindModel(code);
  const PageTable before = {model, 0, earlier ? *earlier : *now};
  return FindSlips({.table = {model, 0, *now},
                    .origins = origins,
                    .earlier = earlier ? &before : nullptr,
                    .limit = DefaultLimit(model)});
}

/// The marked cells, as "row/column".
Texts Marked(const Slips& slips) {
  Texts cells;
  for (const auto& [cell, why] : slips.marks) {
    cells.push_back(std::to_string(cell.row.number) + "/" + std::to_string(cell.column));
  }
  return cells;
}

std::unique_ptr<MemoryGrid> Attenuator(Rows rows) {
  rows.insert(rows.begin(), {"Setting [dB]", "Freq[Hz]", "Cal Data [dB]"});
  return TableOf(rows);
}

std::unique_ptr<MemoryGrid> Capacitor(Rows rows) {
  rows.insert(rows.begin(),
              {"Frequency[Hz]", "Capacitance[pF]", "Unc.", "Disspation Factor", "Unc."});
  return TableOf(rows);
}

/// A sensor from 1 to 18 GHz with these factors.
std::unique_ptr<MemoryGrid> Sensor(const Texts& factors) {
  Rows rows;
  for (std::size_t i = 0; i < factors.size(); ++i) {
    rows.push_back({std::to_string(i + 1), factors[i]});
  }
  return SensorTable(rows);
}

const Texts kSmooth = {"100.0", "99.1", "98.4", "97.0", "95.9", "94.1", "92.6", "91.0"};

TEST(Slips, AChangeBeyondTheLimitIsMarked) {
  const auto earlier = SensorTable({{"1", "100.0"}, {"2", "95.0"}, {"3", "95.0"}, {"4", "5.0"}});
  const auto now = SensorTable({{"1", "101.0"}, {"2", "95.9"}, {"3", "96.0"}, {"4", "5.2"}});
  const Slips slips = SlipsOf("PX13A", now, earlier);
  EXPECT_EQ(Marked(slips), (Texts{"3/1"}));
  EXPECT_EQ(slips.marks.begin()->second,
            "The earlier calibration has 95.0, a change of +1.0; the limit is 0.95.");
}

TEST(Slips, TheLimitOfAnAttenuatorGrowsWithTheSetting) {
  EXPECT_EQ(Marked(SlipsOf("PX60G",
                           Attenuator({{"10", "1E8", "10.1000"},
                                       {"10", "1E9", "10.1001"},
                                       {"110", "1E8", "110.2200"},
                                       {"110", "1E9", "109.7799"}}),
                           Attenuator({{"10", "1E8", "10.0000"},
                                       {"10", "1E9", "10.0000"},
                                       {"110", "1E8", "110.0000"},
                                       {"110", "1E9", "110.0000"}}))),
            (Texts{"2/2", "4/2"}));
}

TEST(Slips, TheLimitOfASetIsThreeTimesTheUncertainty) {
  EXPECT_EQ(Marked(SlipsOf("RT520A",
                           Capacitor({{"1000", "1.000150pF", "0.0075 %", "0.00030", "0.00016"},
                                      {"2000", "1.000151pF", "76 ppm", "0.00031", "0.00010"}}),
                           Capacitor({{"1000", "1.000000pF", "50 ppm", "0.00000", "0.00010"},
                                      {"2000", "1.000000pF", "0.0050 %", "0.00000", "0.00010"}}))),
            (Texts{"1/4", "2/1", "2/2", "2/3"}));
}

TEST(Slips, WithoutAnEarlierCalibrationAValueThatDoesNotFitTheCurveIsMarked) {
  EXPECT_EQ(Marked(SlipsOf("PX13A", Sensor(kSmooth), nullptr)), Texts());
  for (std::size_t row = 0; row < kSmooth.size(); ++row) {
    Texts factors = kSmooth;
    std::swap(factors[row][factors[row].size() - 4], factors[row][factors[row].size() - 3]);
    // The first factor does not change: its digits are equal.
    EXPECT_EQ(
        Marked(SlipsOf("PX13A", Sensor(factors), nullptr)),
        row == 0 || factors[row] == kSmooth[row] ? Texts() : Texts{std::to_string(row + 1) + "/1"})
        << factors[row];
  }
}

TEST(Slips, AMarkSaysWhatTheNeighboursSuggest) {
  const Slips slips =
      SlipsOf("PX13A", Sensor({"99.0", "98.0", "97.0", "69.0", "95.0", "94.0", "93.0"}), nullptr);
  ASSERT_EQ(Marked(slips), (Texts{"4/1"}));
  EXPECT_EQ(slips.marks.begin()->second,
            "The value stands out from its neighbours on the curve, which suggest about 96.");
}

TEST(Slips, OnlyPointsThatTheEarlierCalibrationLacksAreComparedWithTheirNeighbours) {
  const auto earlier = Sensor({"99.0", "98.0", "97.0", "59.0", "95.0"});
  const auto now = Sensor({"99.0", "98.0", "97.0", "59.0", "95.0", "94.0", "39.0"});
  EXPECT_EQ(Marked(SlipsOf("PX13A", now, earlier)), (Texts{"7/1"}));
}

TEST(Slips, TheSettingsOfAnAttenuatorAreNeighbours) {
  Rows rows;
  for (int setting = 0; setting <= 50; setting += 10) {
    const std::string text = std::to_string(setting);
    rows.push_back({text, "1E8", text + ".0100"});
    rows.push_back({text, "1E9", text + ".0200"});
  }
  EXPECT_EQ(Marked(SlipsOf("PX60G", Attenuator(rows), nullptr)), Texts());
  rows[4][2] = "20.1900";
  EXPECT_EQ(Marked(SlipsOf("PX60G", Attenuator(rows), nullptr)), (Texts{"5/2"}));
}

TEST(Slips, DefaultsAreNotJudgedAndJudgeNothing) {
  const auto now = Sensor({"94.0", "93.0", "92.0", "100.0", "91.0", "100.0"});
  CellOrigins origins = {{{{4}, 1}, Origin::Template}, {{{6}, 1}, Origin::Template}};
  EXPECT_EQ(Marked(SlipsOf("PX13A", now, nullptr, origins)), Texts());
  EXPECT_EQ(Marked(SlipsOf("PX13A", now, Sensor({"94.0"}), origins)), Texts());
  origins.erase({{4}, 1});
  EXPECT_EQ(Marked(SlipsOf("PX13A", now, nullptr, origins)), (Texts{"4/1"}));
}

TEST(Slips, ARowThatWasLeftOutIsReported) {
  const auto earlier = Sensor(kSmooth);
  // The row of 98.4 was left out. The last row is as it was.
  const auto now = Sensor({"100.2", "99.1", "97.1", "95.8", "94.1", "92.5", "91.0", "91.0"});
  const CellOrigins origins = {{{{8}, 1}, Origin::Earlier}};
  const std::string notice =
      "Calibration factor: from 3 GHz on, all values fit the earlier calibration one row later. A "
      "row was probably left out.";
  EXPECT_EQ(SlipsOf("PX13A", now, earlier, origins).notice, notice);
  EXPECT_EQ(SlipsOf("PX13A", now, earlier).notice, notice);
  const auto other = Sensor({"100.2", "99.1", "97.1", "95.8", "94.1", "90.0", "91.0", "91.0"});
  EXPECT_EQ(SlipsOf("PX13A", other, earlier).notice, "");
  // One value in the wrong row is a slip of that value.
  const auto one = Sensor({"100.0", "99.1", "98.4", "97.0", "95.9", "94.1", "91.0", "91.0"});
  EXPECT_EQ(SlipsOf("PX13A", one, earlier).notice, "");
}

TEST(Slips, ARowThatWasEnteredTwiceIsReported) {
  const auto now = Sensor({"100.0", "99.1", "98.4", "97.1", "97.1", "95.9", "94.1", "92.6"});
  EXPECT_EQ(SlipsOf("PX13A", now, Sensor(kSmooth)).notice,
            "Calibration factor: from 5 GHz on, all values fit the earlier calibration one row "
            "earlier. A row was probably entered twice.");
}

TEST(Slips, AShiftIsReportedWhereNeighboursDifferByLessThanTheLimit) {
  const auto earlier = Sensor({"99.0", "99.2", "98.9", "99.1", "98.8", "99.0", "98.7", "98.9"});
  const std::string leftOut =
      "Calibration factor: from 3 GHz on, all values fit the earlier calibration one row later. A "
      "row was probably left out.";
  EXPECT_EQ(
      SlipsOf("PX13A", Sensor({"99.0", "99.2", "99.1", "98.8", "99.0", "98.7", "98.9", "98.9"}),
              earlier)
          .notice,
      leftOut);
  EXPECT_EQ(
      SlipsOf("PX13A", Sensor({"99.0", "99.2", "98.9", "98.9", "99.1", "98.8", "99.0", "98.7"}),
              earlier)
          .notice,
      "Calibration factor: from 4 GHz on, all values fit the earlier calibration one row "
      "earlier. A row was probably entered twice.");
  // All values went down by the difference of two neighbours.
  EXPECT_EQ(
      SlipsOf("PX13A", Sensor({"98.8", "98.6", "98.4", "98.2", "98.0", "97.8", "97.6", "97.4"}),
              Sensor({"99.0", "98.8", "98.6", "98.4", "98.2", "98.0", "97.8", "97.6"}))
          .notice,
      "");
}

TEST(Slips, WithoutAnEarlierCalibrationALastDefaultIsReported) {
  const auto now = Sensor({"94.0", "93.0", "92.0", "100.0"});
  const CellOrigins last = {{{{4}, 1}, Origin::Template}};
  EXPECT_EQ(SlipsOf("PX13A", now, nullptr, last).notice,
            "Calibration factor: the last value, at 4 GHz, is the only default left. Enter it, or "
            "look whether a row was left out.");
  EXPECT_EQ(SlipsOf("PX13A", now, Sensor(kSmooth), last).notice, "");
  const CellOrigins two = {{{{3}, 1}, Origin::Template}, {{{4}, 1}, Origin::Template}};
  EXPECT_EQ(SlipsOf("PX13A", now, nullptr, two).notice, "");
}

TEST(Slips, NoTableIsTooStrange) {
  Rows full;
  for (int row = 0; row < 51; ++row) {
    full.push_back({std::to_string(row), row % 3 == 0 ? "1E300" : "-1E300"});
  }
  const std::vector<Rows> tables = {{},
                                    {{"1", "95.0"}},
                                    {{"1", "95.0"}, {"1", "95.0"}, {"1", "59.0"}, {"1", "95.0"}},
                                    {{"", ""}, {"x", "y"}, {"1", ""}},
                                    {{"1E300", "1E300"}, {"1E301", "1E301"}, {"-1E300", "0"}},
                                    {{"0", "0"}, {"0", "0.0"}, {"-1", "-0"}, {"1", "1E-300"}},
                                    full};
  for (const Rows& now : tables) {
    EXPECT_NO_THROW(
        EXPECT_EQ(SlipsOf("PX13A", SensorTable(now), SensorTable(now)).marks.size(), 0U));
    for (const Rows& earlier : tables) {
      EXPECT_NO_THROW((void)SlipsOf("PX13A", SensorTable(now), SensorTable(earlier)));
      EXPECT_NO_THROW(
          (void)PointsOfOneOnly(ChangeOf({*FindModel("PX13A"), 0, *SensorTable(now)},
                                         {*FindModel("PX13A"), 0, *SensorTable(earlier)})));
    }
    EXPECT_NO_THROW((void)SlipsOf("PX13A", SensorTable(now), nullptr));
  }
}

TEST(SlipReport, NamesTheCurrentCellOrTheFirst) {
  const Slips slips = {.marks = {{{{1}, 1}, "One."}, {{{2}, 1}, "Two."}}, .notice = "Notice."};
  const Slips one = {.marks = {{{{1}, 1}, "One."}}, .notice = ""};
  const Slips none;
  const auto grid = SensorTable({{"1", "95.0"}, {"12.4", "95.0"}});
  const auto report = [&](const Slips& found) {
    const std::vector<PageSlips> pages = {{{*FindModel("PX13A"), 0, *grid}, "", found}};
    return SlipReport(pages, 0, {{2}, 1});
  };
  EXPECT_EQ(report(slips),
            "Notice. 2 values may be slips of typing. 12.4 GHz, Calibration factor: Two.");
  EXPECT_EQ(report(one), "1 value may be a slip of typing. 1 GHz, Calibration factor: One.");
  EXPECT_EQ(report(none), "");
}

TEST(SlipReport, CountsThePagesOfASetAndNamesThem) {
  const Slips slips = {.marks = {{{{1}, 1}, "One."}, {{{2}, 1}, "Two."}}, .notice = "Notice."};
  const Slips none;
  const auto grid = SensorTable({{"1", "95.0"}, {"12.4", "95.0"}});
  const Model& model = *FindModel("PX13A");
  const std::vector<PageSlips> pages = {{{model, 0, *grid}, "A", slips},
                                        {{model, 1, *grid}, "B", none},
                                        {{model, 2, *grid}, "C", slips}};
  EXPECT_EQ(SlipReport(pages, 2, {{2}, 1}),
            "On the page A, Notice. Notice. 4 values on the pages A and C may be slips of typing. "
            "12.4 GHz, Calibration factor: Two.");
  EXPECT_EQ(SlipReport(std::span(pages).first(2), 1, {{2}, 1}),
            "On the page A, Notice. 2 values on the page A may be slips of typing. On the page A, "
            "1 GHz, Calibration factor: One.");
}

}  // namespace
}  // namespace tarvell::test
