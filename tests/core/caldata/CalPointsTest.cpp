// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/caldata/CalDataFile.h"
#include "core/caldata/CalPoints.h"
#include "core/caldata/MemoryGrid.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::ErrorOf;

/// Fills a grid with data rows of these frequencies, factors 100.0.
void Fill(MemoryGrid& grid, const std::vector<std::string>& frequencies) {
  grid.SetCellText(0, 0, "Frequency  [MHz]");
  grid.SetCellText(0, 1, "Calibration factor[%]");
  for (const std::string& frequency : frequencies) {
    grid.AddRow(frequency + "\t100.0");
  }
}

PointPosition Place(const std::vector<std::string>& frequencies, double frequency,
                    const std::string& unit = "MHz") {
  MemoryGrid grid;
  Fill(grid, frequencies);
  return PlaceSensorPoint(grid, frequency, unit);
}

void ExpectRow(const PointPosition& position, int row) {
  EXPECT_EQ(position.place, PointPlace::Row);
  EXPECT_EQ(position.row, row);
}

TEST(CalPoints, AFrequencyIsConvertedToMegahertz) {
  EXPECT_DOUBLE_EQ(SensorFrequency("2", "GHz", "MHz"), 2000.0);
  EXPECT_DOUBLE_EQ(SensorFrequency("12.4", "GHz", "MHz"), 12400.0);
  EXPECT_DOUBLE_EQ(SensorFrequency("50", "MHz", "MHz"), 50.0);
  EXPECT_DOUBLE_EQ(SensorFrequency("500", "KHz", "MHz"), 0.5);
}

TEST(CalPoints, AFrequencyIsConvertedToGigahertz) {
  EXPECT_DOUBLE_EQ(SensorFrequency("26.5", "GHz", "GHz"), 26.5);
  EXPECT_DOUBLE_EQ(SensorFrequency("0.5", "MHz", "GHz"), 0.0005);
  EXPECT_DOUBLE_EQ(SensorFrequency("100", "KHz", "GHz"), 0.0001);
}

TEST(CalPoints, AnyOtherUnitMeansTheTablesOwn) {
  for (const char* unit : {"", "Hz", "ghz", "GHZ", " GHz", "kHz", "None"}) {
    EXPECT_DOUBLE_EQ(SensorFrequency("7.5", unit, "MHz"), 7.5) << unit;
  }
  for (const char* unit : {"", "Hz", "mhz", "MHZ", " MHz", "kHz", "None"}) {
    EXPECT_DOUBLE_EQ(SensorFrequency("7.5", unit, "GHz"), 7.5) << unit;
  }
}

TEST(CalPoints, ATextWithoutANumberIsNoFrequency) {
  for (const char* text : {"", "  ", "abc", "MHz 50", "."}) {
    EXPECT_EQ(SensorFrequency(text, "GHz", "MHz"), 0.0) << text;
    EXPECT_EQ(SensorFrequency(text, "KHz", "GHz"), 0.0) << text;
  }
}

TEST(CalPoints, TheNumberThatATextBeginsWithIsItsFrequency) {
  EXPECT_DOUBLE_EQ(SensorFrequency(" 50 MHz", "MHz", "MHz"), 50.0);
  EXPECT_DOUBLE_EQ(SensorFrequency("1.5E3", "MHz", "MHz"), 1500.0);
  EXPECT_DOUBLE_EQ(SensorFrequency("1,5", "GHz", "MHz"), 1000.0);
  EXPECT_DOUBLE_EQ(SensorFrequency("-3", "MHz", "MHz"), -3.0);
}

TEST(CalPoints, AFrequencyTooLargeForANumberIsATypeError) {
  EXPECT_EQ(ErrorOf([] { static_cast<void>(SensorFrequency("1E999", "MHz", "MHz")); }).Kind(),
            ErrorKind::Type);
}

TEST(CalPoints, ARowInMegahertzHasTwoDecimalsUpTo10000) {
  EXPECT_EQ(SensorRow(0.1, "MHz"), "0.10\t100.0");
  EXPECT_EQ(SensorRow(100, "MHz"), "100.00\t100.0");
  EXPECT_EQ(SensorRow(2000, "MHz"), "2000.00\t100.0");
  EXPECT_EQ(SensorRow(50.001, "MHz"), "50.00\t100.0");
  EXPECT_EQ(SensorRow(0.125, "MHz"), "0.13\t100.0");
  EXPECT_EQ(SensorRow(9999.99, "MHz"), "9999.99\t100.0");
  EXPECT_EQ(SensorRow(9999.999, "MHz"), "10000.00\t100.0");
  EXPECT_EQ(SensorRow(10000, "MHz"), "10000.00\t100.0");
}

TEST(CalPoints, ARowInMegahertzHasOneDecimalAbove10000) {
  EXPECT_EQ(SensorRow(10000.01, "MHz"), "10000.0\t100.0");
  EXPECT_EQ(SensorRow(10000.25, "MHz"), "10000.3\t100.0");
  EXPECT_EQ(SensorRow(12000, "MHz"), "12000.0\t100.0");
  EXPECT_EQ(SensorRow(1234567.89, "MHz"), "1234567.9\t100.0");
}

TEST(CalPoints, ARowInGigahertzHasFourDecimals) {
  EXPECT_EQ(SensorRow(0.0005, "GHz"), "0.0005\t100.0");
  EXPECT_EQ(SensorRow(0.05, "GHz"), "0.0500\t100.0");
  EXPECT_EQ(SensorRow(26.5, "GHz"), "26.5000\t100.0");
  EXPECT_EQ(SensorRow(0.00005, "GHz"), "0.0001\t100.0");
  EXPECT_EQ(SensorRow(12000, "GHz"), "12000.0000\t100.0");
}

TEST(CalPoints, APointSmallerThanTheFirstGoesInFrontOfIt) {
  ExpectRow(Place({"10.00", "50.00", "100.00"}, 5), 1);
  ExpectRow(Place({"10.00"}, 9.99), 1);
}

TEST(CalPoints, APointBetweenTwoRowsGoesBetweenThem) {
  ExpectRow(Place({"10.00", "50.00", "100.00"}, 20), 2);
  ExpectRow(Place({"10.00", "50.00", "100.00"}, 99.9), 3);
}

TEST(CalPoints, APointGreaterThanTheLastGoesBehindIt) {
  ExpectRow(Place({"10.00", "50.00", "100.00"}, 100.5), 4);
  ExpectRow(Place({"10.00"}, 10.5), 2);
}

TEST(CalPoints, PointsAreComparedAsNumbersNotAsTexts) {
  ExpectRow(Place({"9.00", "10000.00", "12000.0"}, 100), 2);
  ExpectRow(Place({"9", "80"}, 100), 3);
}

TEST(CalPoints, AnEmptyTableTakesItsFirstPointBelowTheCaptions) {
  ExpectRow(Place({}, 50), 1);
}

TEST(CalPoints, APointThatTheTableHasIsTakenWhereverItStands) {
  for (const double frequency : {10.0, 50.0, 100.0}) {
    EXPECT_EQ(Place({"10.00", "50", "100.0"}, frequency).place, PointPlace::Taken) << frequency;
  }
}

TEST(CalPoints, APointThatItsRowRoundsToAnotherOneIsTaken) {
  for (const double frequency : {49.996, 49.999, 50.001, 50.004}) {
    EXPECT_EQ(Place({"10.00", "50.00", "100.00"}, frequency).place, PointPlace::Taken) << frequency;
  }
  ExpectRow(Place({"10.00", "50.00", "100.00"}, 50.006), 3);
  ExpectRow(Place({"10.00", "50.00", "100.00"}, 49.994), 2);
  // Above 10000 MHz a row has one decimal, in GHz four.
  EXPECT_EQ(Place({"12000.0"}, 12000.04).place, PointPlace::Taken);
  ExpectRow(Place({"12000.0"}, 12000.06), 2);
  EXPECT_EQ(Place({"1.0000", "2.0000"}, 2.00004, "GHz").place, PointPlace::Taken);
  EXPECT_EQ(Place({"1.0000", "2.0000"}, 1.99996, "GHz").place, PointPlace::Taken);
  ExpectRow(Place({"1.0000", "2.0000"}, 2.00006, "GHz"), 3);
}

TEST(CalPoints, ARowOfMoreDecimalsThanAnAddedOneIsAPointOfItsOwn) {
  ExpectRow(Place({"2.00004"}, 2, "GHz"), 1);
  EXPECT_EQ(Place({"2.00004"}, 2.00004, "GHz").place, PointPlace::Taken);
}

TEST(CalPoints, ANumberInTheCaptionRowIsNotRead) {
  MemoryGrid grid;
  grid.SetCellText(0, 0, "70");
  grid.AddRow("100.00\t100.0");
  ExpectRow(PlaceSensorPoint(grid, 60, "MHz"), 1);
  EXPECT_EQ(PlaceSensorPoint(grid, 70, "MHz").place, PointPlace::Row);
}

TEST(CalPoints, AnUnsortedTableTakesThePointAtTheFirstRowThatIsGreater) {
  ExpectRow(Place({"100", "50", "200"}, 60), 1);
  ExpectRow(Place({"100", "50", "200"}, 150), 3);
  ExpectRow(Place({"50", "200", "100"}, 150), 2);
  ExpectRow(Place({"300", "200", "100"}, 400), 4);
}

TEST(CalPoints, TheScanOfAnUnsortedTableEndsAtTheFirstRowThatIsGreater) {
  ExpectRow(Place({"50", "200", "100"}, 100), 2);
  EXPECT_EQ(Place({"100", "50", "200"}, 50).place, PointPlace::Row);
  EXPECT_EQ(Place({"100", "50", "200"}, 200).place, PointPlace::Taken);
}

TEST(CalPoints, ARowWithoutANumberCountsAsZero) {
  ExpectRow(Place({"abc", "20"}, 10), 2);
  ExpectRow(Place({"", "20"}, 30), 3);
}

TEST(CalPoints, ARowTooLargeForANumberIsTheGreatestAndKeepsItsText) {
  ExpectRow(Place({"50.00", "1E999"}, 60), 2);
  ExpectRow(Place({"1E999", "50.00"}, 1E300), 1);
  ExpectRow(Place({"-1E999", "50.00"}, 60), 3);
  MemoryGrid grid;
  Fill(grid, {" 1E999 "});
  EXPECT_EQ(SensorPointName(grid, 1, "MHz"), "1E999MHz");
}

TEST(CalPoints, NoPointLiesBelowZero) {
  EXPECT_EQ(Place({"10.00", "50.00"}, -0.001).place, PointPlace::BelowZero);
  EXPECT_EQ(Place({"10.00", "50.00"}, -50).place, PointPlace::BelowZero);
  EXPECT_EQ(Place({}, -1).place, PointPlace::BelowZero);
}

TEST(CalPoints, APointWhoseRowWouldShowZeroIsTooSmall) {
  MemoryGrid grid;
  Fill(grid, {});
  EXPECT_EQ(PlaceSensorPoint(grid, 1E-5, "GHz").place, PointPlace::TooSmall);
  EXPECT_EQ(PlaceSensorPoint(grid, 5E-5, "GHz").place, PointPlace::Row);
  EXPECT_EQ(PlaceSensorPoint(grid, 0.004, "MHz").place, PointPlace::TooSmall);
}

TEST(CalPoints, ATableOf51RowsIsFull) {
  std::vector<std::string> frequencies;
  for (int i = 1; i <= 50; ++i) {
    frequencies.push_back(std::to_string(10 * i));
  }
  ExpectRow(Place(frequencies, 5), 1);
  ExpectRow(Place(frequencies, 15), 2);
  ExpectRow(Place(frequencies, 505), 51);
  MemoryGrid grid;
  Fill(grid, frequencies);
  CheckPlaceForPoint(grid);
  frequencies.emplace_back("510");
  Fill(grid, frequencies);
  EXPECT_EQ(ErrorOf([&] { CheckPlaceForPoint(grid); }).Text(), FullTableError().Text());
}

TEST(CalPoints, APointIsNamedByItsShortestNumberAndTheUnit) {
  MemoryGrid grid;
  Fill(grid, {"0.10", "50.00", "12000.0", "0.0500"});
  EXPECT_EQ(SensorPointName(grid, 1, "MHz"), "0.1MHz");
  EXPECT_EQ(SensorPointName(grid, 2, "MHz"), "50MHz");
  EXPECT_EQ(SensorPointName(grid, 3, "MHz"), "12000MHz");
  EXPECT_EQ(SensorPointName(grid, 4, "GHz"), "0.05GHz");
}

TEST(CalPoints, ARowThatDoesNotExistHasNoName) {
  MemoryGrid grid;
  Fill(grid, {"50.00"});
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(SensorPointName(grid, 2, "MHz")); }).Kind(),
            ErrorKind::Index);
}

}  // namespace
}  // namespace tarvell
