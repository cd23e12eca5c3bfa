// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "core/caldata/CalPoints.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/TableRows.h"
#include "support/ErrorOf.h"

namespace tarvell::test {
namespace {

using Texts = std::vector<std::string>;

void FillSensor(MemoryGrid& grid, const Texts& frequencies) {
  // A number in the caption row is no point.
  grid.SetCellText(0, 0, "70");
  for (const std::string& frequency : frequencies) {
    AddCells(grid, Texts{frequency, "100.0"});
  }
}

/// Where a point goes: before this row, or one of the other places.
struct Where {
  PointPlace place = PointPlace::Row;
  std::int16_t row = 0;

  Where(int number) : row(static_cast<std::int16_t>(number)) {}
  Where(PointPlace other) : place(other) {}
};

void ExpectPlace(const PointPosition& position, const Where& where) {
  EXPECT_EQ(position.place, where.place);
  if (where.place == PointPlace::Row) {
    EXPECT_EQ(position.row, GridRow{where.row});
  }
}

TEST(SensorPoints, AFrequencyIsConvertedExactly) {
  for (const auto& [typed, unit, tableUnit, frequency] :
       {std::tuple("12.4", "GHz", "MHz", 12400.0),
        // The products of these are a little less, and a little more.
        std::tuple("1.001", "GHz", "MHz", 1001.0), std::tuple("1.005", "GHz", "MHz", 1005.0),
        std::tuple("50", "MHz", "MHz", 50.0), std::tuple("500", "KHz", "MHz", 0.5),
        std::tuple("26.5", "GHz", "GHz", 26.5), std::tuple("0.5", "MHz", "GHz", 0.0005),
        std::tuple("100", "KHz", "GHz", 0.0001),
        // Any other unit means the table's own.
        std::tuple("7.5", "", "MHz", 7.5), std::tuple("7.5", "ghz", "MHz", 7.5),
        std::tuple("7.5", "kHz", "GHz", 7.5), std::tuple("7.5", " MHz", "GHz", 7.5),
        // A text that begins with a number has its value, any other 0.
        std::tuple(" 50 MHz", "MHz", "MHz", 50.0), std::tuple("1,5", "GHz", "MHz", 1000.0),
        std::tuple("1.5E3", "MHz", "MHz", 1500.0), std::tuple("-3", "MHz", "MHz", -3.0),
        std::tuple("", "GHz", "MHz", 0.0), std::tuple("MHz 50", "KHz", "GHz", 0.0)}) {
    EXPECT_EQ(SensorFrequency(typed, unit, tableUnit), frequency) << typed << unit;
  }
  EXPECT_EQ(ErrorOf([] { static_cast<void>(SensorFrequency("1E999", "MHz", "MHz")); }).Kind(),
            ErrorKind::Type);
}

TEST(SensorPoints, ARowHasTheDecimalsOfItsUnitAndTheDefaultFactor) {
  struct Case {
    double frequency;
    const char* unit;
    const char* text;
  };
  const std::vector<Case> table = {
      {0.1, "MHz", "0.10"},          {50.001, "MHz", "50.00"},         {0.125, "MHz", "0.13"},
      {9999.999, "MHz", "10000.00"}, {10000, "MHz", "10000.00"},       {10000.01, "MHz", "10000.0"},
      {10000.25, "MHz", "10000.3"},  {1234567.89, "MHz", "1234567.9"}, {0.0005, "GHz", "0.0005"},
      {26.5, "GHz", "26.5000"},      {0.00005, "GHz", "0.0001"},       {12000, "GHz", "12000.0000"},
  };
  for (const Case& test : table) {
    EXPECT_EQ(SensorRow(test.frequency, test.unit), (Texts{test.text, "100.0"}));
  }
}

TEST(SensorPoints, APointGoesBeforeTheFirstGreaterOne) {
  struct Case {
    Texts rows;
    double frequency;
    Where where;
    const char* unit = "MHz";
  };
  const std::vector<Case> table = {
      {{}, 50, 1},
      {{"10.00", "50.00", "100.00"}, 9.99, 1},
      {{"10.00", "50.00", "100.00"}, 20, 2},
      {{"10.00", "50.00", "100.00"}, 100.5, 4},
      {{"9.00", "10000.00", "12000.0"}, 100, 2},
      {{"100.00"}, 70, 1},
      // A point that the table has, as it is or as its row would be rounded.
      {{"10.00", "50", "100.0"}, 10, PointPlace::Taken},
      {{"10.00", "50", "100.0"}, 50, PointPlace::Taken},
      {{"1001.00"}, SensorFrequency("1.001", "GHz", "MHz"), PointPlace::Taken},
      {{"10.00", "50.00", "100.00"}, 49.996, PointPlace::Taken},
      {{"10.00", "50.00", "100.00"}, 50.004, PointPlace::Taken},
      {{"10.00", "50.00", "100.00"}, 49.994, 2},
      {{"10.00", "50.00", "100.00"}, 50.006, 3},
      {{"12000.0"}, 12000.04, PointPlace::Taken},
      {{"12000.0"}, 12000.06, 2},
      {{"1.0000", "2.0000"}, 2.00004, PointPlace::Taken, "GHz"},
      {{"1.0000", "2.0000"}, 2.00006, 3, "GHz"},
      {{"2.00004"}, 2, 1, "GHz"},
      {{"2.00004"}, 2.00004, PointPlace::Taken, "GHz"},
      // An unsorted table is scanned up to the first row that is greater.
      {{"100", "50", "200"}, 60, 1},
      {{"100", "50", "200"}, 150, 3},
      {{"100", "50", "200"}, 200, PointPlace::Taken},
      {{"50", "200", "100"}, 100, 2},
      // A row without a number counts as zero, one that is too large as the greatest.
      {{"abc", "20"}, 10, 2},
      {{"", "20"}, 30, 3},
      {{"1E999", "50.00"}, 1E300, 1},
      {{"10.00", "50.00"}, -0.001, PointPlace::BelowZero},
      {{}, -1, PointPlace::BelowZero},
      {{}, 0.004, PointPlace::TooSmall},
      {{}, 0.005, 1},
      {{}, 1E-5, PointPlace::TooSmall, "GHz"},
      {{}, 5E-5, 1, "GHz"},
  };
  for (const Case& test : table) {
    SCOPED_TRACE(testing::PrintToString(test.rows) + " " + std::to_string(test.frequency));
    MemoryGrid grid;
    FillSensor(grid, test.rows);
    ExpectPlace(PlaceSensorPoint(grid, test.frequency, test.unit), test.where);
  }
}

TEST(CalPoints, AFullTableTakesNoPoint) {
  MemoryGrid grid;
  FillSensor(grid, Texts(kTableRows - 1, "10.00"));
  CheckPlaceForPoint(grid);
  AddCells(grid, Texts{"20.00", "100.0"});
  const Error error = ErrorOf([&] { CheckPlaceForPoint(grid); });
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_TRUE(Contains(error.Text(), "at most 51 rows")) << error.Text();
}

TEST(AttenuatorPoints, NumbersMakeAPoint) {
  for (const auto& [setting, frequency, dB, hertz] :
       {std::tuple("10", "5.00E07", 10, 5E7), std::tuple("120", "6.9925E09", 120, 6992500000.0),
        std::tuple(" 20 ", " 1E6 ", 20, 1E6), std::tuple("10 dB", "50 Hz", 10, 50.0),
        std::tuple("10.5", "1.5", 11, 1.5), std::tuple("-10", "-5", -10, -5.0),
        std::tuple("32767.4", "0", 32767, 0.0), std::tuple("-32768.4", "1", -32768, 1.0)}) {
    const AttenuatorPoint point = AttenuatorPointFrom(setting, frequency);
    EXPECT_EQ(point.setting, dB) << setting;
    EXPECT_EQ(point.frequency, hertz) << frequency;
  }
}

TEST(AttenuatorPoints, WhatIsNoPointIsATypeErrorThatNamesTheField) {
  for (const auto& [setting, frequency, text] :
       {std::tuple("", "1", "Setting: \"\""), std::tuple("dB 10", "1", "Setting: \"dB 10\""),
        std::tuple("10", "", "Frequency: \"\""), std::tuple("10", "-", "Frequency: \"-\""),
        std::tuple("x", "x", "Setting"), std::tuple("32767.5", "1", "Setting"),
        std::tuple("-32769", "1", "32767"), std::tuple("1E999", "1", ""),
        std::tuple("10", "1E999", "")}) {
    const Error error =
        ErrorOf([dB = setting, hertz = frequency] { (void)AttenuatorPointFrom(dB, hertz); });
    EXPECT_EQ(error.Kind(), ErrorKind::Type) << setting << frequency;
    EXPECT_TRUE(Contains(error.Text(), text)) << error.Text();
  }
}

TEST(AttenuatorPoints, ARowHasTheSettingAsItsDefaultAndTwoToFourDecimalsInItsFrequency) {
  EXPECT_EQ(AttenuatorRow({10, 5E7}), (Texts{"10", "5.00E07", "10.0000"}));
  EXPECT_EQ(AttenuatorRow({120, 6992500000}), (Texts{"120", "6.9925E09", "120.0000"}));
  const std::vector<std::pair<double, const char*>> table = {
      {0, "0.00E00"},         {1, "1.00E00"},           {1234, "1.234E03"},
      {123456, "1.2346E05"},  {123450, "1.2345E05"},    {1.23405E5, "1.2341E05"},
      {9.99995E7, "1.00E08"}, {9.99994E7, "9.9999E07"}, {0.5, "5.00E-01"},
      {1E100, "1.00E100"}};
  for (const auto& [frequency, text] : table) {
    EXPECT_EQ(AttenuatorRow({0, frequency}), (Texts{"0", text, "0.0000"}));
  }
}

void FillAttenuator(MemoryGrid& grid, const std::vector<Texts>& points) {
  // Numbers in the caption row are no point.
  grid.SetCellText(0, 0, "70");
  grid.SetCellText(0, 1, "5E7");
  for (const Texts& point : points) {
    AddCells(grid, point);
  }
}

TEST(AttenuatorPoints, APointGoesBeforeTheFirstGreaterSettingAndThenFrequency) {
  struct Case {
    std::vector<Texts> rows;
    AttenuatorPoint point;
    Where where;
  };
  const std::vector<Texts> sorted = {
      {"10", "1.00E06"}, {"10", "1.00E08"}, {"20", "1.00E06"}, {"20", "6.9925E09"}};
  const std::vector<Texts> unsorted = {{"30", "5E7"}, {"10", "5E7"}, {"40", "5E7"}};
  const std::vector<Case> table = {
      {{}, {0, 0}, 1},
      {sorted, {0, 5E7}, 1},
      {sorted, {10, 1E5}, 1},
      {sorted, {10, 5E7}, 2},
      {sorted, {10, 1E9}, 3},
      {sorted, {15, 1}, 3},
      {sorted, {20, 1E9}, 4},
      {sorted, {20, 7E9}, 5},
      {sorted, {10, 1E8}, PointPlace::Taken},
      {sorted, {20, 6992500000}, PointPlace::Taken},
      {{{"10.0", "50000000"}}, {10, 5E7}, PointPlace::Taken},
      {{{"9", "5E7"}, {"100", "5E7"}}, {20, 5E7}, 2},
      {{{"10", "9E5"}, {"10", "5.00E07"}}, {10, 1E6}, 2},
      {{{"80", "5E7"}}, {70, 5E7}, 1},
      {unsorted, {20, 5E7}, 1},
      {unsorted, {35, 5E7}, 3},
      {unsorted, {40, 5E7}, PointPlace::Taken},
      {{{"abc", "abc"}, {"20", "5E7"}}, {10, 5E7}, 2},
      {{{"", ""}}, {0, 0}, PointPlace::Taken},
      {{{"10", "1E999"}, {"1E999", "5E7"}}, {10, 1E300}, 1},
      {{{"10", "1E999"}, {"1E999", "5E7"}}, {120, 5E7}, 2},
      {sorted, {-1, 5E7}, PointPlace::BelowZero},
      {sorted, {10, -0.5}, PointPlace::BelowZero},
  };
  for (const Case& test : table) {
    SCOPED_TRACE(testing::PrintToString(test.rows) + " " + std::to_string(test.point.setting) +
                 " " + std::to_string(test.point.frequency));
    MemoryGrid grid(3);
    FillAttenuator(grid, test.rows);
    ExpectPlace(PlaceAttenuatorPoint(grid, test.point), test.where);
  }
}

TEST(CalPoints, APointIsNamedByItsShortestNumbersAndTheirUnits) {
  MemoryGrid sensor;
  FillSensor(sensor, {"0.10", "50.00", " 1E999 "});
  EXPECT_EQ(SensorPointName(sensor, {1}, "MHz"), "0.1MHz");
  EXPECT_EQ(SensorPointName(sensor, {2}, "GHz"), "50GHz");
  EXPECT_EQ(SensorPointName(sensor, {3}, "MHz"), "1E999MHz");
  for (const auto& [setting, frequency, name] :
       {std::tuple("010.000", "3.00E05", "10dB, 0.3MHz"),
        std::tuple("30", "999999999", "30dB, 999.999999MHz"),
        std::tuple("30", "1.00E09", "30dB, 1GHz"),
        std::tuple("110", "6.9925E09", "110dB, 6.9925GHz"), std::tuple("abc", "abc", "0dB, 0MHz"),
        std::tuple("1E999", "1E999", "1E999dB, 1E999Hz")}) {
    MemoryGrid grid(3);
    FillAttenuator(grid, {{setting, frequency}});
    EXPECT_EQ(AttenuatorPointName(grid, {1}), name);
  }
}

}  // namespace
}  // namespace tarvell::test
