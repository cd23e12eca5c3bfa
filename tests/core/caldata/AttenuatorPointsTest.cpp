// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/CalPoints.h"
#include "core/caldata/MemoryGrid.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using Points = std::vector<std::pair<std::string, std::string>>;

/// What the point dialog offers.
const std::vector<std::string> kDialogSettings = {"0",  "10", "20", "30",  "40",  "50", "60",
                                                  "70", "80", "90", "100", "110", "120"};
const std::vector<std::string> kDialogFrequencies = {"1.00E05", "3.00E05", "1.00E06",
                                                     "1.00E07", "5.00E07", "1.00E08",
                                                     "1.00E09", "3.00E09", "6.9925E09"};

/// Fills a grid with data rows of these settings and frequencies.
void Fill(MemoryGrid& grid, const Points& points) {
  grid.SetCellText(0, 0, "Setting [dB]");
  grid.SetCellText(0, 1, "Freq[Hz]");
  grid.SetCellText(0, 2, "Cal Data [dB]");
  for (const auto& [setting, frequency] : points) {
    grid.AddRow(setting + "\t" + frequency + "\t1.0000");
  }
}

PointPosition Place(const Points& points, const AttenuatorPoint& point) {
  MemoryGrid grid(3);
  Fill(grid, points);
  return PlaceAttenuatorPoint(grid, point);
}

void ExpectRow(const PointPosition& position, int row) {
  EXPECT_EQ(position.place, PointPlace::Row);
  EXPECT_EQ(position.row, row);
}

std::string NameOf(const std::string& setting, const std::string& frequency) {
  MemoryGrid grid(3);
  Fill(grid, {{setting, frequency}});
  return AttenuatorPointName(grid, 1);
}

Error ErrorOfPoint(const std::string& setting, const std::string& frequency) {
  return ErrorOf([&] { static_cast<void>(AttenuatorPointFrom(setting, frequency)); });
}

// What was chosen or typed.

TEST(AttenuatorPoints, NumbersMakeAPoint) {
  const AttenuatorPoint point = AttenuatorPointFrom("10", "5.00E07");
  EXPECT_EQ(point.setting, 10);
  EXPECT_EQ(point.frequency, 5E7);
  const AttenuatorPoint last = AttenuatorPointFrom("120", "6.9925E09");
  EXPECT_EQ(last.setting, 120);
  EXPECT_EQ(last.frequency, 6992500000.0);
  const AttenuatorPoint zero = AttenuatorPointFrom("0", "0");
  EXPECT_EQ(zero.setting, 0);
  EXPECT_EQ(zero.frequency, 0);
}

TEST(AttenuatorPoints, ASettingIsRoundedHalfAwayFromZero) {
  const std::vector<std::pair<const char*, int>> table = {
      {"10.5", 11},       {"10.4999", 10},  {"0.5", 1},         {"0.49", 0},
      {"-0.5", -1},       {"-10.5", -11},   {"-10.4", -10},     {"1.05E1", 11},
      {"32767.4", 32767}, {"32767", 32767}, {"-32768", -32768}, {"-32768.4", -32768}};
  for (const auto& [text, setting] : table) {
    EXPECT_EQ(AttenuatorPointFrom(text, "5.00E07").setting, setting) << text;
  }
}

TEST(AttenuatorPoints, TheNumberThatATextBeginsWithCounts) {
  const AttenuatorPoint point = AttenuatorPointFrom(" 10 dB", " 50000000 Hz");
  EXPECT_EQ(point.setting, 10);
  EXPECT_EQ(point.frequency, 5E7);
  EXPECT_EQ(AttenuatorPointFrom("10", "5,5").frequency, 5);
  EXPECT_EQ(AttenuatorPointFrom("10", "-3").frequency, -3);
}

TEST(AttenuatorPoints, ASettingWithoutANumberIsATypeErrorThatNamesIt) {
  for (const char* text : {"", "  ", "abc", "dB 10", ".", "-", "E5"}) {
    const Error error = ErrorOfPoint(text, "5.00E07");
    EXPECT_EQ(error.Kind(), ErrorKind::Type) << text;
    EXPECT_TRUE(Contains(error.Text(), "Setting")) << error.Text();
    EXPECT_TRUE(Contains(error.Text(), std::string("\"") + text + "\"")) << error.Text();
  }
}

TEST(AttenuatorPoints, AFrequencyWithoutANumberIsATypeErrorThatNamesIt) {
  for (const char* text : {"", "  ", "abc", "Hz 10", ".", "-", "E5"}) {
    const Error error = ErrorOfPoint("10", text);
    EXPECT_EQ(error.Kind(), ErrorKind::Type) << text;
    EXPECT_TRUE(Contains(error.Text(), "Frequency")) << error.Text();
    EXPECT_TRUE(Contains(error.Text(), std::string("\"") + text + "\"")) << error.Text();
  }
}

TEST(AttenuatorPoints, ASettingOutside16BitsIsATypeErrorThatNamesIt) {
  for (const char* text : {"32768", "32767.5", "-32769", "-32768.5", "40000", "1E20"}) {
    const Error error = ErrorOfPoint(text, "5.00E07");
    EXPECT_EQ(error.Kind(), ErrorKind::Type) << text;
    EXPECT_TRUE(Contains(error.Text(), "Setting")) << error.Text();
    EXPECT_TRUE(Contains(error.Text(), "32767")) << error.Text();
  }
}

TEST(AttenuatorPoints, ANumberTooLargeForAnyIsATypeError) {
  EXPECT_EQ(ErrorOfPoint("1E999", "5.00E07").Kind(), ErrorKind::Type);
  EXPECT_EQ(ErrorOfPoint("10", "1E999").Kind(), ErrorKind::Type);
}

// The new row.

TEST(AttenuatorPoints, TheRowHasThreeCells) {
  EXPECT_EQ(AttenuatorRow({10, 50000000}), "10\t5.00E07\t10.0000");
  EXPECT_EQ(AttenuatorRow({0, 100000}), "0\t1.00E05\t0.0000");
  EXPECT_EQ(AttenuatorRow({120, 6992500000}), "120\t6.9925E09\t120.0000");
  EXPECT_EQ(AttenuatorRow({5, 0}), "5\t0.00E00\t5.0000");
}

TEST(AttenuatorPoints, TheFrequencyHasTwoToFourDecimals) {
  const std::vector<std::pair<double, const char*>> table = {
      {1, "1.00E00"},         {1234, "1.234E03"},
      {1200000, "1.20E06"},   {123456, "1.2346E05"},
      {123450, "1.2345E05"},  {1.23405E5, "1.2341E05"},
      {9.99995E7, "1.00E08"}, {9.99994E7, "9.9999E07"},
      {0.5, "5.00E-01"},      {0.00012345, "1.2345E-04"},
      {1E100, "1.00E100"}};
  for (const auto& [frequency, text] : table) {
    EXPECT_EQ(AttenuatorRow({0, frequency}), std::string("0\t") + text + "\t0.0000") << frequency;
  }
}

TEST(AttenuatorPoints, EveryPointOfTheDialogComesThroughUnchanged) {
  for (const std::string& setting : kDialogSettings) {
    for (const std::string& frequency : kDialogFrequencies) {
      const std::string row = AttenuatorRow(AttenuatorPointFrom(setting, frequency));
      EXPECT_EQ(row, setting + "\t" + frequency + "\t" + setting + ".0000");
    }
  }
}

TEST(AttenuatorPoints, EveryFrequencyOfTheDialogButTheLastFitsItsField) {
  constexpr std::size_t kField = 8;
  for (const std::string& frequency : kDialogFrequencies) {
    const std::string row = AttenuatorRow(AttenuatorPointFrom("0", frequency));
    const std::size_t width = row.rfind('\t') - row.find('\t') - 1;
    EXPECT_EQ(width <= kField, frequency != "6.9925E09") << frequency;
  }
}

// Its place.

TEST(AttenuatorPoints, APointGoesInFrontOfTheFirstGreaterSetting) {
  const Points points = {{"10", "5.00E07"}, {"20", "5.00E07"}, {"30", "5.00E07"}};
  ExpectRow(Place(points, {0, 5E7}), 1);
  ExpectRow(Place(points, {15, 5E7}), 2);
  ExpectRow(Place(points, {29, 5E7}), 3);
}

TEST(AttenuatorPoints, WithinASettingAPointGoesInFrontOfTheFirstGreaterFrequency) {
  const Points points = {
      {"10", "1.00E06"}, {"10", "1.00E08"}, {"20", "1.00E06"}, {"20", "6.9925E09"}};
  ExpectRow(Place(points, {10, 1E5}), 1);
  ExpectRow(Place(points, {10, 5E7}), 2);
  ExpectRow(Place(points, {10, 1E9}), 3);
  ExpectRow(Place(points, {20, 1E5}), 3);
  ExpectRow(Place(points, {20, 1E9}), 4);
  ExpectRow(Place(points, {20, 7E9}), 5);
}

TEST(AttenuatorPoints, TheSettingCountsBeforeTheFrequency) {
  const Points points = {{"10", "5.00E07"}, {"20", "5.00E07"}};
  ExpectRow(Place(points, {5, 1E10}), 1);
  ExpectRow(Place(points, {15, 1}), 2);
  ExpectRow(Place(points, {15, 1E10}), 2);
  ExpectRow(Place(points, {25, 1}), 3);
}

TEST(AttenuatorPoints, APointGreaterThanTheLastGoesBehindIt) {
  ExpectRow(Place({{"10", "5.00E07"}}, {10, 50000001}), 2);
  ExpectRow(Place({{"10", "5.00E07"}}, {11, 0}), 2);
}

TEST(AttenuatorPoints, AnEmptyTableTakesItsFirstPointBelowTheCaptions) {
  ExpectRow(Place({}, {0, 1E5}), 1);
  ExpectRow(Place({}, {0, 0}), 1);
}

TEST(AttenuatorPoints, PointsAreComparedAsNumbersNotAsTexts) {
  ExpectRow(Place({{"9", "5.00E07"}, {"100", "5.00E07"}}, {20, 5E7}), 2);
  ExpectRow(Place({{"10", "9E5"}, {"10", "5.00E07"}}, {10, 1E6}), 2);
}

TEST(AttenuatorPoints, APointThatTheTableHasIsTakenWhereverItStands) {
  const Points points = {{"0", "1.00E05"}, {"10.0", "50000000"}, {"10", "6.9925E09"}};
  EXPECT_EQ(Place(points, {0, 1E5}).place, PointPlace::Taken);
  EXPECT_EQ(Place(points, {10, 5E7}).place, PointPlace::Taken);
  EXPECT_EQ(Place(points, {10, 6992500000}).place, PointPlace::Taken);
}

TEST(AttenuatorPoints, OnlyTheSamePairIsTaken) {
  const Points points = {{"10", "5.00E07"}, {"20", "1.00E09"}};
  ExpectRow(Place(points, {10, 1E9}), 2);
  ExpectRow(Place(points, {20, 5E7}), 2);
}

TEST(AttenuatorPoints, NothingStandsInFrontOfTheFirstRow) {
  // Unlike a row of zeros, the caption row takes no point.
  ExpectRow(Place({{"10", "5.00E07"}}, {0, 0}), 1);
  MemoryGrid grid(3);
  grid.SetCellText(0, 0, "70");
  grid.SetCellText(0, 1, "5.00E07");
  grid.AddRow("80\t5.00E07\t80.0000");
  ExpectRow(PlaceAttenuatorPoint(grid, {70, 5E7}), 1);
  ExpectRow(PlaceAttenuatorPoint(grid, {60, 5E7}), 1);
}

TEST(AttenuatorPoints, AnUnsortedTableTakesThePointAtTheFirstRowThatIsGreater) {
  const Points points = {{"30", "5.00E07"}, {"10", "5.00E07"}, {"40", "5.00E07"}};
  ExpectRow(Place(points, {20, 5E7}), 1);
  ExpectRow(Place(points, {35, 5E7}), 3);
  ExpectRow(Place(points, {50, 5E7}), 4);
  EXPECT_EQ(Place(points, {30, 5E7}).place, PointPlace::Taken);
  EXPECT_EQ(Place(points, {40, 5E7}).place, PointPlace::Taken);
}

TEST(AttenuatorPoints, ARowWithoutNumbersCountsAsZero) {
  ExpectRow(Place({{"abc", "abc"}, {"20", "5.00E07"}}, {10, 5E7}), 2);
  EXPECT_EQ(Place({{"", ""}}, {0, 0}).place, PointPlace::Taken);
}

TEST(AttenuatorPoints, ARowTooLargeForANumberIsTheGreatest) {
  ExpectRow(Place({{"10", "1E999"}, {"1E999", "5.00E07"}}, {10, 1E300}), 1);
  ExpectRow(Place({{"10", "1E999"}, {"1E999", "5.00E07"}}, {120, 5E7}), 2);
}

TEST(AttenuatorPoints, NoPointLiesBelowZero) {
  const Points points = {{"10", "5.00E07"}, {"-10", "5.00E07"}};
  EXPECT_EQ(Place(points, {-1, 5E7}).place, PointPlace::BelowZero);
  EXPECT_EQ(Place(points, {10, -0.5}).place, PointPlace::BelowZero);
  EXPECT_EQ(Place(points, {-10, 5E7}).place, PointPlace::BelowZero);
  EXPECT_EQ(Place({}, {-1, -1}).place, PointPlace::BelowZero);
}

// Its name.

TEST(AttenuatorPoints, APointBelowOneGigahertzIsNamedInMegahertz) {
  EXPECT_EQ(NameOf("10", "5.00E07"), "10dB, 50MHz");
  EXPECT_EQ(NameOf("0", "1.00E05"), "0dB, 0.1MHz");
  EXPECT_EQ(NameOf("0", "3.00E05"), "0dB, 0.3MHz");
  EXPECT_EQ(NameOf("120", "1.00E06"), "120dB, 1MHz");
  EXPECT_EQ(NameOf("30", "999999999"), "30dB, 999.999999MHz");
  EXPECT_EQ(NameOf("30", "1"), "30dB, 0.000001MHz");
  EXPECT_EQ(NameOf("30", "0.00E00"), "30dB, 0MHz");
}

TEST(AttenuatorPoints, APointFromOneGigahertzOnIsNamedInGigahertz) {
  EXPECT_EQ(NameOf("10", "1.00E09"), "10dB, 1GHz");
  EXPECT_EQ(NameOf("0", "3.00E09"), "0dB, 3GHz");
  EXPECT_EQ(NameOf("110", "6.9925E09"), "110dB, 6.9925GHz");
  EXPECT_EQ(NameOf("110", "1000000001"), "110dB, 1.000000001GHz");
  EXPECT_EQ(NameOf("110", "1.85E10"), "110dB, 18.5GHz");
}

TEST(AttenuatorPoints, ANameHasTheShortestNumberOfTheSetting) {
  EXPECT_EQ(NameOf("10.0000", "5.00E07"), "10dB, 50MHz");
  EXPECT_EQ(NameOf("010", "5.00E07"), "10dB, 50MHz");
  EXPECT_EQ(NameOf(".5", "5.00E07"), "0.5dB, 50MHz");
  EXPECT_EQ(NameOf("abc", "abc"), "0dB, 0MHz");
}

TEST(AttenuatorPoints, ANumberTooLargeIsNamedAsItStands) {
  EXPECT_EQ(NameOf("1E999", "5.00E07"), "1E999dB, 50MHz");
  EXPECT_EQ(NameOf("10", "1E999"), "10dB, 1E999Hz");
}

TEST(AttenuatorPoints, ARowThatDoesNotExistHasNoName) {
  MemoryGrid grid(3);
  Fill(grid, {{"10", "5.00E07"}});
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(AttenuatorPointName(grid, 2)); }).Kind(),
            ErrorKind::Index);
}

}  // namespace
}  // namespace tarvell
