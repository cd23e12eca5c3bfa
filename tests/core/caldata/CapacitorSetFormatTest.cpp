// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/caldata/cInstrRT520A.h"
#include "core/caldata/cInstrRT520C.h"
#include "support/ErrorOf.h"
#include "support/NumberTexts.h"

namespace tarvell {
namespace {

using test::kFiveDecimals;
using test::kFiveOrSixDecimals;
using test::kFourDecimals;
using test::kFourOrFiveDecimals;
using test::kOneDecimal;
using test::kSixDecimals;
using test::kThreeDecimals;
using test::kThreeOrFourDecimals;
using test::kTwoDecimals;
using test::kWhole;
using test::NumberTexts;
using Texts = std::vector<std::string>;

using Indices = std::vector<std::int16_t>;
const Indices kMembers = {0, 1, 2, 3};
const Indices kOtherPages = {INT16_MIN, -1, 4, 5, INT16_MAX};
const Indices kFormatRows = {1, 2, 3, 4, 5, 6, 7, 8};
const Indices kOtherRows = {INT16_MIN, -1, 0, 9, 10, 50, 51, INT16_MAX};
const Indices kEveryRow = {INT16_MIN, -1, 0, 1, 2, 5, 6, 7, 8, 9, 51, INT16_MAX};
const Indices kEveryPage = {INT16_MIN, -1, 0, 1, 2, 3, 4, 5, INT16_MAX};

/// A unit as it is given, and what it puts behind the number.
struct UnitText {
  const char* unit;
  const char* appended;
};

// "ppm" alone chooses the pattern; what is appended is looked up trimmed and in any case.
constexpr UnitText kPpm = {"ppm", " ppm"};
const std::vector<UnitText> kOtherUnits = {
    {"%", " %"},      {" % ", " %"}, {"PPM", " ppm"}, {" PPM ", " ppm"}, {"ppm ", " ppm"},
    {" Ppm", " ppm"}, {"", ""},      {" ", ""},       {"None", ""},      {"*", ""},
    {"p pm", ""},     {"pp", ""},    {"%%", ""},      {"pF", ""}};

/// How an uncertainty is written in ppm and otherwise.
struct UncertaintyTexts {
  const NumberTexts* ppm;
  const NumberTexts* other;
};

const NumberTexts kNothing = {{"12", ""}, {"0.0005", ""}, {"-1", ""}, {"", ""}, {"abc", ""}};
const UncertaintyTexts kWholePpm = {&kWhole, &kFourDecimals};
const UncertaintyTexts kThree = {&kThreeDecimals, &kThreeDecimals};
const UncertaintyTexts kTwo = {&kTwoDecimals, &kTwoDecimals};
const UncertaintyTexts kNone = {&kNothing, &kNothing};

void ExpectCapacitance(const cifCaldata& set, std::int16_t page, std::int16_t row,
                       const NumberTexts& numbers, const std::string& unit) {
  for (const auto& [typed, text] : numbers) {
    for (const char* chosen : {"", "pF", "ppm", "%"}) {
      EXPECT_EQ(set.SetCalibrationDataFormat(page, 1, row, typed, chosen), text + unit)
          << "page " << page << ", row " << row << ", \"" << typed << "\", unit " << chosen;
    }
  }
}

void ExpectUncertainty(const cifCaldata& set, std::int16_t page, std::int16_t row,
                       const UncertaintyTexts& texts) {
  for (const auto& [typed, text] : *texts.ppm) {
    EXPECT_EQ(set.SetCalibrationDataFormat(page, 2, row, typed, kPpm.unit),
              std::string(text) + kPpm.appended)
        << "page " << page << ", row " << row << ", \"" << typed << '"';
  }
  for (const auto& [typed, text] : *texts.other) {
    for (const auto& [unit, appended] : kOtherUnits) {
      EXPECT_EQ(set.SetCalibrationDataFormat(page, 2, row, typed, unit),
                std::string(text) + appended)
          << "page " << page << ", row " << row << ", \"" << typed << "\", unit \"" << unit << '"';
    }
  }
}

void ExpectDissipation(const cifCaldata& set, std::int16_t page, std::int16_t row,
                       const NumberTexts& numbers) {
  for (const auto& [typed, text] : numbers) {
    for (const std::int16_t column : {std::int16_t{3}, std::int16_t{4}}) {
      for (const char* unit : {"", "ppm", "%"}) {
        EXPECT_EQ(set.SetCalibrationDataFormat(page, column, row, typed, unit), text)
            << "page " << page << ", column " << column << ", row " << row << ", \"" << typed
            << '"';
      }
    }
  }
}

/// The text to edit for a cell, and the unit that it has.
struct EditCase {
  std::int16_t column;
  const char* text;
  const char* edited;
  const char* unit;
};

void ExpectEdited(const cifCaldata& set, const std::vector<EditCase>& cases) {
  for (const EditCase& test : cases) {
    for (const std::int16_t page : kEveryPage) {
      for (const std::int16_t row : kEveryRow) {
        std::string unit = "before";
        EXPECT_EQ(set.GetCalibrationDataFormat(page, test.column, row, test.text, unit),
                  test.edited)
            << "page " << page << ", column " << test.column << ", row " << row << ", \""
            << test.text << '"';
        EXPECT_EQ(unit, test.unit) << "column " << test.column << ", \"" << test.text << '"';
      }
    }
  }
}

void ExpectNothingInOtherColumns(const cifCaldata& set) {
  for (const std::int16_t column : Indices{INT16_MIN, -1, 0, 5, 6, INT16_MAX}) {
    for (const std::int16_t page : kEveryPage) {
      for (const char* text : {"1000", "12 ppm", "", "abc"}) {
        EXPECT_EQ(set.SetCalibrationDataFormat(page, column, 1, text, "ppm"), "")
            << page << ", " << column << ", " << text;
        std::string unit = "before";
        EXPECT_EQ(set.GetCalibrationDataFormat(page, column, 1, text, unit), "")
            << page << ", " << column << ", " << text;
        EXPECT_EQ(unit, "") << page << ", " << column << ", " << text;
      }
    }
  }
}

void ExpectATooLargeNumberIsRefused(const cifCaldata& set) {
  for (const std::int16_t column : Indices{1, 2, 3, 4}) {
    EXPECT_EQ(test::ErrorOf([&] {
                static_cast<void>(set.SetCalibrationDataFormat(0, column, 1, "1E999", "ppm"));
              }).Kind(),
              ErrorKind::Type)
        << column;
  }
  for (const std::int16_t column : Indices{2, 3, 4}) {
    std::string unit;
    EXPECT_EQ(test::ErrorOf([&] {
                static_cast<void>(set.GetCalibrationDataFormat(0, column, 1, "1E999", unit));
              }).Kind(),
              ErrorKind::Type)
        << column;
  }
}

void ExpectUnitsOfTheUncertaintyAlone(const cifCaldata& set) {
  for (const std::int16_t page : kEveryPage) {
    for (const std::int16_t column : Indices{INT16_MIN, -1, 0, 1, 2, 3, 4, 5, INT16_MAX}) {
      Texts units = {"x", "y", "z"};
      EXPECT_EQ(set.GetCalibrationUnit(page, column, units), 0);
      EXPECT_EQ(units, column == 2 ? (Texts{"ppm", "%"}) : (Texts{"*"})) << page << ", " << column;
    }
  }
}

// Set A.

// clang-format off
using PageNumbers = std::array<const NumberTexts*, 8>;
const std::array<PageNumbers, 4> kCapacitancesOfA = {{
    // rows 1 to 8
    {&kSixDecimals, &kFiveDecimals, &kFiveDecimals, &kFiveDecimals, &kFiveDecimals, &kFourDecimals, &kFourDecimals, &kFourDecimals},
    {&kFiveDecimals, &kFiveDecimals, &kFiveDecimals, &kFiveDecimals, &kFiveDecimals, &kFiveDecimals, &kFourDecimals, &kFourDecimals},
    {&kFourDecimals, &kFourDecimals, &kFourDecimals, &kFourDecimals, &kThreeDecimals, &kThreeDecimals, &kThreeDecimals, &kThreeDecimals},
    {&kThreeDecimals, &kThreeDecimals, &kTwoDecimals, &kTwoDecimals, &kTwoDecimals, &kTwoDecimals, &kOneDecimal, &kOneDecimal},
}};

using PageUncertainties = std::array<const UncertaintyTexts*, 8>;
const std::array<PageUncertainties, 4> kUncertaintiesOfA = {{
    {&kWholePpm, &kThree, &kThree, &kThree, &kThree, &kTwo, &kTwo, &kTwo},
    {&kWholePpm, &kWholePpm, &kWholePpm, &kWholePpm, &kWholePpm, &kWholePpm, &kThree, &kThree},
    {&kWholePpm, &kWholePpm, &kWholePpm, &kWholePpm, &kThree, &kThree, &kThree, &kThree},
    {&kWholePpm, &kWholePpm, &kThree, &kThree, &kThree, &kThree, &kTwo, &kTwo},
}};
// clang-format on

TEST(CapacitorSetAFormat, StoresACapacitanceByPageAndRow) {
  const cInstrRT520A set;
  for (const std::int16_t page : kMembers) {
    for (const std::int16_t row : kFormatRows) {
      ExpectCapacitance(set, page, row,
                        *kCapacitancesOfA.at(static_cast<std::size_t>(page))
                             .at(static_cast<std::size_t>(row - 1)),
                        "pF");
    }
  }
}

TEST(CapacitorSetAFormat, StoresTheUnitOfACapacitanceAloneWhereNoRowIsPlanned) {
  const cInstrRT520A set;
  for (const std::int16_t page : kMembers) {
    for (const std::int16_t row : kOtherRows) {
      ExpectCapacitance(set, page, row, kNothing, "pF");
    }
  }
  for (const std::int16_t page : kOtherPages) {
    for (const std::int16_t row : kEveryRow) {
      ExpectCapacitance(set, page, row, kNothing, "pF");
    }
  }
}

TEST(CapacitorSetAFormat, StoresAnUncertaintyByPageRowAndUnit) {
  const cInstrRT520A set;
  for (const std::int16_t page : kMembers) {
    for (const std::int16_t row : kFormatRows) {
      ExpectUncertainty(set, page, row,
                        *kUncertaintiesOfA.at(static_cast<std::size_t>(page))
                             .at(static_cast<std::size_t>(row - 1)));
    }
  }
}

TEST(CapacitorSetAFormat, StoresTheUnitOfAnUncertaintyAloneWhereNoRowIsPlanned) {
  const cInstrRT520A set;
  for (const std::int16_t page : kMembers) {
    for (const std::int16_t row : kOtherRows) {
      ExpectUncertainty(set, page, row, kNone);
    }
  }
  for (const std::int16_t page : kOtherPages) {
    for (const std::int16_t row : kEveryRow) {
      ExpectUncertainty(set, page, row, kNone);
    }
  }
}

TEST(CapacitorSetAFormat, StoresADissipationFactorWithFiveDecimalsButInItsLastRow) {
  const cInstrRT520A set;
  for (const std::int16_t page : kEveryPage) {
    for (std::int16_t row = -1; row <= 10; ++row) {
      ExpectDissipation(set, page, row, page == 3 && row == 8 ? kFourDecimals : kFiveDecimals);
    }
    ExpectDissipation(set, page, INT16_MIN, kFiveDecimals);
    ExpectDissipation(set, page, INT16_MAX, kFiveDecimals);
  }
}

TEST(CapacitorSetAFormat, StoresAndEditsNothingInTheFrequencyAndUnknownColumns) {
  ExpectNothingInOtherColumns(cInstrRT520A());
}

TEST(CapacitorSetAFormat, EditsACapacitanceWithItsUnitInItsShortestForm) {
  ExpectEdited(cInstrRT520A(), {{1, "1.000012pF", "1.000012", "pF"},
                                {1, "1.000000pF", "1", "pF"},
                                {1, "1000.0pF", "1000", "pF"},
                                {1, "10.00000pF", "10", "pF"},
                                {1, "-0.50000pF", "-0.5", "pF"},
                                {1, "  1.5000pF  ", "1.5", "pF"},
                                {1, "1.5000 nF", "1.5", "nF"},
                                {1, "1.5000", "1.5", "00"},
                                {1, "pF", "0", "pF"},
                                {1, "abcpF", "0", "pF"},
                                {1, "1E15pF", "1E+15", "pF"},
                                {1, "", "", ""},
                                {1, "   ", "", ""}});
}

const std::vector<EditCase> kUncertaintiesToEdit = {{2, "12 ppm", "12", "ppm"},
                                                    {2, "12.000 ppm", "12", "ppm"},
                                                    {2, "12.50 ppm", "12.5", "ppm"},
                                                    {2, "12 PPM", "12", "PPM"},
                                                    {2, "12ppm", "12", "ppm"},
                                                    {2, " 12 ppm ", "12", "ppm"},
                                                    {2, "-3 ppm", "-3", "ppm"},
                                                    {2, " ppm", "0", "ppm"},
                                                    {2, "0.0050 %", "0.005", "%"},
                                                    {2, "0.0050%", "0.005", "%"},
                                                    {2, " 0.0050 % ", "0.005", "%"},
                                                    {2, "-0.0050 %", "-0.005", "%"},
                                                    {2, "12.0000 %", "12", "%"},
                                                    {2, " %", "0", "%"},
                                                    {2, "0.0012", "0.0012", ""},
                                                    {2, "12.50", "12.5", ""},
                                                    {2, "12 pF", "12", ""},
                                                    {2, "abc", "0", ""},
                                                    {2, "", "", ""},
                                                    {2, "   ", "", ""}};

const std::vector<EditCase> kDissipationsToEdit = {{3, "0.00001", "0.00001", ""},
                                                   {3, "0.00010", "0.0001", ""},
                                                   {3, "0.00000", "0", ""},
                                                   {3, "-0.00020", "-0.0002", ""},
                                                   {3, " 1.50000 ", "1.5", ""},
                                                   {3, "0.5 %", "0.5", ""},
                                                   {3, "abc", "0", ""},
                                                   {3, "", "", ""},
                                                   {3, "  ", "", ""},
                                                   {4, "0.00001", "0.00001", ""},
                                                   {4, "0.0010", "0.001", ""},
                                                   {4, "0.00000", "0", ""},
                                                   {4, "-0.00020", "-0.0002", ""},
                                                   {4, " 1.50000 ", "1.5", ""},
                                                   {4, "5 ppm", "5", ""},
                                                   {4, "abc", "0", ""},
                                                   {4, "", "", ""},
                                                   {4, "  ", "", ""}};

TEST(CapacitorSetAFormat, EditsAnUncertaintyWithTheUnitThatItEndsIn) {
  ExpectEdited(cInstrRT520A(), kUncertaintiesToEdit);
}

TEST(CapacitorSetAFormat, EditsADissipationFactorInItsShortestForm) {
  ExpectEdited(cInstrRT520A(), kDissipationsToEdit);
}

TEST(CapacitorSetAFormat, RefusesANumberTooLarge) {
  const cInstrRT520A set;
  ExpectATooLargeNumberIsRefused(set);
  std::string unit;
  EXPECT_EQ(test::ErrorOf([&] {
              static_cast<void>(set.GetCalibrationDataFormat(0, 1, 1, "1E999pF", unit));
            }).Kind(),
            ErrorKind::Type);
}

TEST(CapacitorSetAFormat, OffersPpmAndPercentForTheUncertaintyAlone) {
  ExpectUnitsOfTheUncertaintyAlone(cInstrRT520A());
}

TEST(CapacitorSetAFormat, NamesItsFourMembers) {
  const cInstrRT520A set;
  EXPECT_EQ(set.GetCalPageCount(), 4);
  EXPECT_EQ(set.GetCalPageName(0), "RT521A");
  EXPECT_EQ(set.GetCalPageName(1), "RT522A");
  EXPECT_EQ(set.GetCalPageName(2), "RT523A");
  EXPECT_EQ(set.GetCalPageName(3), "RT524A");
  for (const std::int16_t page : kOtherPages) {
    EXPECT_EQ(set.GetCalPageName(page), "") << page;
  }
}

// Set C.

struct CapacitancesOfPage {
  std::int16_t page;
  const NumberTexts* numbers;
  const char* unit;
};

TEST(CapacitorSetCFormat, StoresACapacitanceByPageInEveryRow) {
  const cInstrRT520C set;
  for (const CapacitancesOfPage& test : {CapacitancesOfPage{0, &kFourOrFiveDecimals, "nF"},
                                         {1, &kThreeOrFourDecimals, "nF"},
                                         {2, &kFiveOrSixDecimals, "uF"},
                                         {3, &kFourOrFiveDecimals, "uF"}}) {
    for (const std::int16_t row : kEveryRow) {
      ExpectCapacitance(set, test.page, row, *test.numbers, test.unit);
    }
  }
}

TEST(CapacitorSetCFormat, StoresNoCapacitanceOnAnyOtherPage) {
  const cInstrRT520C set;
  for (const std::int16_t page : kOtherPages) {
    for (const std::int16_t row : kEveryRow) {
      ExpectCapacitance(set, page, row, kNothing, "");
    }
  }
}

TEST(CapacitorSetCFormat, StoresAnUncertaintyByUnitOnEveryPageAndRow) {
  const cInstrRT520C set;
  for (const std::int16_t page : kEveryPage) {
    for (const std::int16_t row : kEveryRow) {
      ExpectUncertainty(set, page, row, kWholePpm);
    }
  }
}

TEST(CapacitorSetCFormat, StoresADissipationFactorWithFiveDecimalsEverywhere) {
  const cInstrRT520C set;
  for (const std::int16_t page : kEveryPage) {
    for (const std::int16_t row : kEveryRow) {
      ExpectDissipation(set, page, row, kFiveDecimals);
    }
  }
}

TEST(CapacitorSetCFormat, StoresAndEditsNothingInTheFrequencyAndUnknownColumns) {
  ExpectNothingInOtherColumns(cInstrRT520C());
}

TEST(CapacitorSetCFormat, EditsACapacitanceLessItsLastTwoCharactersAndTellsNoUnit) {
  ExpectEdited(cInstrRT520C(), {{1, "10.0000nF", "10.0000", ""},
                                {1, "100.000nF", "100.000", ""},
                                {1, "1.00000uF", "1.00000", ""},
                                {1, "  -0.5000uF  ", "-0.5000", ""},
                                {1, "1.5000", "1.50", ""},
                                {1, "nF", "", ""},
                                {1, "abcnF", "abc", ""},
                                {1, "", "", ""},
                                {1, "   ", "", ""}});
}

TEST(CapacitorSetCFormat, EditsAnUncertaintyWithTheUnitThatItEndsIn) {
  ExpectEdited(cInstrRT520C(), kUncertaintiesToEdit);
}

TEST(CapacitorSetCFormat, EditsADissipationFactorInItsShortestForm) {
  ExpectEdited(cInstrRT520C(), kDissipationsToEdit);
}

TEST(CapacitorSetFormat, RefusesAPercentValueThatIsTooLargeInPpm) {
  const cInstrRT520C set;
  // 1E304 % is 1E308 ppm, the longest that a double holds.
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 2, 1, "1E304", "%"),
            "1" + std::string(304, '0') + ".0000 %");
  for (const char* text : {"1.8E304", "1E305", "-1E305"}) {
    EXPECT_EQ(test::ErrorOf([&] {
                static_cast<void>(set.SetCalibrationDataFormat(0, 2, 1, text, "%"));
              }).Kind(),
              ErrorKind::Type)
        << text;
  }
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 2, 1, "1E305", "ppm"),
            "1" + std::string(305, '0') + " ppm");
}

TEST(CapacitorSetCFormat, RefusesANumberTooLarge) {
  ExpectATooLargeNumberIsRefused(cInstrRT520C());
}

TEST(CapacitorSetCFormat, OffersPpmAndPercentForTheUncertaintyAlone) {
  ExpectUnitsOfTheUncertaintyAlone(cInstrRT520C());
}

TEST(CapacitorSetCFormat, NamesItsFourMembersAndCountsThreeUntilTheOptionIsThere) {
  cInstrRT520C set;
  EXPECT_EQ(set.GetCalPageCount(), 3);
  EXPECT_EQ(set.GetCalPageName(0), "RT525A");
  EXPECT_EQ(set.GetCalPageName(1), "RT526A");
  EXPECT_EQ(set.GetCalPageName(2), "RT527A");
  EXPECT_EQ(set.GetCalPageName(3), "RT528A");
  for (const std::int16_t page : kOtherPages) {
    EXPECT_EQ(set.GetCalPageName(page), "") << page;
  }
  set.SetCalPageSerial(3, "1234C00004");
  EXPECT_EQ(set.GetCalPageCount(), 4);
}

}  // namespace
}  // namespace tarvell
