// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "core/caldata/cInstrRT730A.h"
#include "support/ErrorOf.h"
#include "support/NumberTexts.h"

namespace tarvell {
namespace {

using test::kFiveDecimals;
using test::kFourDecimals;
using test::kNominalValue;
using test::kOneDecimal;
using test::kOneOrTwoDecimals;
using test::kThreeDecimals;
using test::kTwoDecimals;
using test::kUpToOneDecimal;
using test::kUpToThreeDecimals;
using test::kUpToTwoDecimals;
using test::kWhole;
using test::NumberTexts;
using Indices = std::vector<std::int16_t>;
using Texts = std::vector<std::string>;

/// Stands for a relative uncertainty: " ppm" or " %".
constexpr const char* kRelative = "relative";
constexpr std::int16_t kAnyRow = INT16_MAX;

/// What the cells of columns store in a range of grid rows.
struct Rule {
  std::int16_t page;
  Indices columns;
  std::int16_t firstRow;
  std::int16_t lastRow;
  const NumberTexts* numbers;
  const char* unit;
  const char* prefix = "";
};

// clang-format off
const std::vector<Rule> kRules = {
    {0, {1}, 1, 3, &kNominalValue, "mohm"},
    {0, {1}, 4, 6, &kNominalValue, "ohm"},
    {0, {1}, 7, 9, &kNominalValue, "kohm"},
    {0, {2}, 1, 1, &kFourDecimals, "  mohm"},
    {0, {2}, 2, 2, &kThreeDecimals, "  mohm"},
    {0, {2}, 3, 3, &kTwoDecimals, "  mohm"},
    {0, {2}, 4, 4, &kFourDecimals, "  ohm"},
    {0, {2}, 5, 5, &kThreeDecimals, "  ohm"},
    {0, {2}, 6, 6, &kThreeDecimals, " ohm"},
    {0, {2}, 7, 7, &kFiveDecimals, " kohm"},
    {0, {2}, 8, 8, &kFourDecimals, " kohm"},
    {0, {2}, 9, 9, &kThreeDecimals, " kohm"},
    {0, {3}, -1, kAnyRow, &kUpToTwoDecimals, kRelative},
    {1, {1}, 1, 3, &kUpToTwoDecimals, " nH", "Ls/"},
    {1, {1}, 4, 6, &kUpToThreeDecimals, " pF", "Cp/"},
    {1, {2}, 1, 2, &kUpToTwoDecimals, " nH"},
    {1, {2}, 3, 3, &kUpToOneDecimal, " nH"},
    {1, {2}, 4, 6, &kOneOrTwoDecimals, " pF"},
    {2, {1, 3, 4}, 1, 4, &kThreeDecimals, " ohm"},
    {2, {1, 3, 4}, 5, 7, &kTwoDecimals, " ohm"},
    {2, {2}, 1, 4, &kTwoDecimals, kRelative},
    {2, {2}, 5, 7, &kOneDecimal, kRelative},
    {3, {1, 3, 4}, 1, 5, &kTwoDecimals, " ohm"},
    {3, {1, 3, 4}, 6, 7, &kOneDecimal, " ohm"},
    {3, {2}, 1, 5, &kTwoDecimals, kRelative},
    {3, {2}, 6, 7, &kOneDecimal, kRelative},
    {4, {1}, 1, 6, &kFourDecimals, " kohm"},
    {4, {1}, 7, 8, &kThreeDecimals, " kohm"},
    {4, {2}, 1, 6, &kTwoDecimals, kRelative},
    {4, {2}, 7, 8, &kOneDecimal, kRelative},
    {4, {3, 4}, 1, 6, &kOneDecimal, " uS"},
    {4, {3, 4}, 7, 8, &kWhole, " uS"},
    {5, {1}, 1, 8, &kThreeDecimals, " kohm"},
    {5, {2}, 1, 2, &kTwoDecimals, kRelative},
    {5, {2}, 3, 8, &kOneDecimal, kRelative},
    {5, {3, 4}, 1, 2, &kTwoDecimals, " uS"},
    {5, {3, 4}, 3, 8, &kWhole, " uS"},
    {6, {1}, 1, 2, &kTwoDecimals, " kohm"},
    {6, {1}, 3, 8, &kThreeDecimals, " kohm"},
    {6, {2}, 1, 2, &kTwoDecimals, kRelative},
    {6, {2}, 3, 8, &kOneDecimal, kRelative},
    {6, {3, 4}, 1, 1, &kThreeDecimals, " uS"},
    {6, {3, 4}, 2, 8, &kTwoDecimals, " uS"},
};
// clang-format on

/// The rule of a cell, nullptr when it has none.
const Rule* RuleOf(std::int16_t page, std::int16_t column, std::int16_t row) {
  const auto found = std::find_if(kRules.begin(), kRules.end(), [&](const Rule& rule) {
    return rule.page == page && row >= rule.firstRow && row <= rule.lastRow &&
           std::find(rule.columns.begin(), rule.columns.end(), column) != rule.columns.end();
  });
  return found == kRules.end() ? nullptr : &*found;
}

/// Texts of a cell in the units that may be given: "ppm" is compared exactly, all else is per cent.
void ExpectStored(const cInstrRT730A& set, const Rule& rule, std::int16_t column,
                  std::int16_t row) {
  for (const auto& [typed, number] : *rule.numbers) {
    for (const char* unit : {"ppm", "%", "PPM", " ppm ", "", "None", "*"}) {
      const bool relative = std::string(rule.unit) == kRelative;
      const std::string appended =
          !relative ? rule.unit : (std::string(unit) == "ppm" ? " ppm" : " %");
      EXPECT_EQ(set.SetCalibrationDataFormat(rule.page, column, row, typed, unit),
                std::string(rule.prefix) + number + appended)
          << "page " << rule.page << ", column " << column << ", row " << row << ", \"" << typed
          << "\", unit \"" << unit << '"';
    }
  }
}

TEST(ResistorSetFormat, StoresEachCellByPageColumnAndRow) {
  const cInstrRT730A set;
  for (std::int16_t page = -1; page <= 9; ++page) {
    for (std::int16_t column = -1; column <= 7; ++column) {
      for (std::int16_t row = -1; row <= 12; ++row) {
        if (const Rule* rule = RuleOf(page, column, row)) {
          ExpectStored(set, *rule, column, row);
          continue;
        }
        for (const char* typed : {"12.5", "-1", "", "abc"}) {
          for (const char* unit : {"ppm", "%", ""}) {
            EXPECT_EQ(set.SetCalibrationDataFormat(page, column, row, typed, unit), "")
                << "page " << page << ", column " << column << ", row " << row << ", " << typed;
          }
        }
      }
    }
  }
}

TEST(ResistorSetFormat, StoresTheUncertaintyAtDirectCurrentAlikeInEveryRow) {
  const cInstrRT730A set;
  for (const std::int16_t row : Indices{-32767, -1, 0, 10, 51, 52, INT16_MAX}) {
    ExpectStored(set, {0, {3}, row, row, &kUpToTwoDecimals, kRelative}, 3, row);
  }
}

TEST(ResistorSetFormat, StoresNothingFarOutsideOfItsTables) {
  const cInstrRT730A set;
  for (const std::int16_t outside : Indices{INT16_MIN, 51, INT16_MAX}) {
    EXPECT_EQ(set.SetCalibrationDataFormat(outside, 1, 1, "1", "ppm"), "") << outside;
    EXPECT_EQ(set.SetCalibrationDataFormat(2, outside, 1, "1", "ppm"), "") << outside;
    EXPECT_EQ(set.SetCalibrationDataFormat(0, 1, outside, "1", "ppm"), "") << outside;
    EXPECT_EQ(set.SetCalibrationDataFormat(2, 2, outside, "1", "ppm"), "") << outside;
  }
}

// Texts as they look, one of each kind, written out.
TEST(ResistorSetFormat, StoresTheTextsOfTheSet) {
  const cInstrRT730A set;
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 1, 2, "10", ""), "10 mohm");
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 1, 1, "0", ""), " mohm");
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 2, 1, "1.00005", ""), "1.0001  mohm");
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 2, 5, "9.9995", ""), "10.000  ohm");
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 2, 6, "99.9995", ""), "100.000 ohm");
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 2, 7, "1.000005", ""), "1.00001 kohm");
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 3, 1, "0.1", "%"), "0.1 %");
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 3, 1, "5", "ppm"), "5 ppm");
  EXPECT_EQ(set.SetCalibrationDataFormat(1, 1, 1, "5", ""), "Ls/5 nH");
  EXPECT_EQ(set.SetCalibrationDataFormat(1, 1, 4, "-0.1", ""), "Cp/-0.1 pF");
  EXPECT_EQ(set.SetCalibrationDataFormat(1, 2, 6, "1", ""), "1.0 pF");
  EXPECT_EQ(set.SetCalibrationDataFormat(4, 1, 1, "1", ""), "1.0000 kohm");
  EXPECT_EQ(set.SetCalibrationDataFormat(4, 3, 8, "0.5", ""), "1 uS");
  EXPECT_EQ(set.SetCalibrationDataFormat(6, 2, 1, "0.2", "%"), "0.20 %");
}

/// The text to edit for a cell, and its unit.
struct EditCase {
  std::int16_t page;
  std::int16_t column;
  std::int16_t row;
  const char* text;
  const char* edited;
  const char* unit = "";
};

void ExpectEdited(const std::vector<EditCase>& cases) {
  const cInstrRT730A set;
  for (const EditCase& test : cases) {
    std::string unit = "before";
    EXPECT_EQ(set.GetCalibrationDataFormat(test.page, test.column, test.row, test.text, unit),
              test.edited)
        << "page " << test.page << ", column " << test.column << ", row " << test.row << ", \""
        << test.text << '"';
    EXPECT_EQ(unit, test.unit) << "page " << test.page << ", column " << test.column << ", row "
                               << test.row << ", \"" << test.text << '"';
  }
}

TEST(ResistorSetFormat, EditsValuesAtDirectCurrentWithoutTheirUnits) {
  ExpectEdited({{0, 1, 1, "1 mohm", "1"},
                {0, 1, 2, "10 mohm", "10"},
                {0, 1, 3, "100 mohm", "100"},
                {0, 1, 4, "1 ohm", "1"},
                {0, 1, 5, "10 ohm", "10"},
                {0, 1, 6, "100 ohm", "100"},
                {0, 1, 7, "1 kohm", "1"},
                {0, 1, 8, "10 kohm", "10"},
                {0, 1, 9, "100 kohm", "100"},
                {0, 1, 1, " mohm", "0"},
                {0, 1, 1, "-5 mohm", "-5"},
                {0, 2, 1, "1.0001  mohm", "1.0001"},
                {0, 2, 2, "10.000  mohm", "10"},
                {0, 2, 3, "100.10  mohm", "100.1"},
                {0, 2, 4, "0.9990  ohm", "0.999"},
                {0, 2, 5, "10.001  ohm", "10.001"},
                {0, 2, 6, "100.010 ohm", "100.01"},
                {0, 2, 7, "1.00001 kohm", "1.00001"},
                {0, 2, 8, "10.0000 kohm", "10"},
                {0, 2, 9, "-100.500 kohm", "-100.5"},
                {0, 2, 9, "  100.500 kohm  ", "100.5"}});
}

TEST(ResistorSetFormat, DropsThreeCharactersInRows4To6AtDirectCurrentAndFourInAllOthers) {
  for (const std::int16_t column : Indices{1, 2}) {
    for (const std::int16_t row : Indices{INT16_MIN, -1, 0, 1, 2, 3, 7, 8, 9, 10, 51, INT16_MAX}) {
      ExpectEdited({{0, column, row, "12345678", "1234"}, {0, column, row, "1234", "0"}});
    }
    for (const std::int16_t row : Indices{4, 5, 6}) {
      ExpectEdited({{0, column, row, "12345678", "12345"}, {0, column, row, "1234", "1"}});
    }
  }
}

TEST(ResistorSetFormat, EditsARelativeUncertaintyWithTheUnitThatItEndsIn) {
  for (const std::int16_t page : Indices{0, 2, 3, 4, 5, 6}) {
    const std::int16_t column = page == 0 ? 3 : 2;
    for (const std::int16_t row : Indices{-1, 0, 1, 5, 9, 10, 51}) {
      ExpectEdited({{page, column, row, "0.10 %", "0.1", "%"},
                    {page, column, row, "0.1%", "0.1", "%"},
                    {page, column, row, " 0.10 % ", "0.1", "%"},
                    {page, column, row, "-0.5 %", "-0.5", "%"},
                    {page, column, row, " %", "0", "%"},
                    {page, column, row, "12.50 ppm", "12.5", "ppm"},
                    {page, column, row, "12ppm", "12", "ppm"},
                    {page, column, row, " 12.0 ppm ", "12", "ppm"},
                    {page, column, row, " ppm", "0", "ppm"},
                    {page, column, row, "0.00123", "0.00123", ""},
                    {page, column, row, "5 PPM", "5", ""},
                    {page, column, row, "5.50 x", "5.5", ""},
                    {page, column, row, "abc", "0", ""},
                    {page, column, row, "1E15 ppm", "1E+15", "ppm"}});
    }
  }
}

TEST(ResistorSetFormat, EditsAnInductanceOrCapacitanceWithoutPrefixAndUnit) {
  for (const std::int16_t row : Indices{0, 1, 4, 6, 7}) {
    ExpectEdited({{1, 1, row, "Ls/5 nH", "5"},
                  {1, 1, row, "Ls/12.25 nH", "12.25"},
                  {1, 1, row, "Cp/0.1 pF", "0.1"},
                  {1, 1, row, "Cp/-0.125 pF", "-0.125"},
                  {1, 1, row, "  Ls/5.50 nH  ", "5.5"},
                  {1, 1, row, "Cp/ pF", "0"},
                  {1, 1, row, "12345678", "456"},
                  {1, 2, row, "0.5 nH", "0.5"},
                  {1, 2, row, "1.0 pF", "1"},
                  {1, 2, row, "0.50 %", "0.5"},
                  {1, 2, row, "-0.02 pF", "-0.02"},
                  {1, 2, row, "1234", "12"}});
  }
}

TEST(ResistorSetFormat, EditsAHighFrequencyValueWithoutItsLastThreeCharacters) {
  for (const std::int16_t page : Indices{2, 3, 4, 5, 6}) {
    for (const std::int16_t column : Indices{1, 3, 4}) {
      for (const std::int16_t row : Indices{0, 1, 5, 8, 9}) {
        ExpectEdited({{page, column, row, "10.010 ohm", "10.01"},
                      {page, column, row, "1.0000 kohm", "1"},
                      {page, column, row, "-0.50 uS", "-0.5"},
                      {page, column, row, "3 uS", "3"},
                      {page, column, row, "  0.100 uS  ", "0.1"},
                      {page, column, row, "12345", "12"},
                      {page, column, row, "abc uS", "0"},
                      {page, column, row, "12.5 ppm", "12.5"}});
      }
    }
  }
}

TEST(ResistorSetFormat, EditsAnEmptyTextAsAnEmptyOne) {
  for (std::int16_t page = -1; page <= 9; ++page) {
    for (std::int16_t column = -1; column <= 6; ++column) {
      ExpectEdited({{page, column, 1, "", ""}, {page, column, 1, "   ", ""}});
    }
  }
}

TEST(ResistorSetFormat, EditsAColumnWithoutARuleAsAnEmptyText) {
  for (std::int16_t page = 0; page <= 6; ++page) {
    for (const std::int16_t column : Indices{INT16_MIN, -1, 0, 5, 6, INT16_MAX}) {
      ExpectEdited({{page, column, 1, "12.5 ppm", ""}, {page, column, 5, "RT731A", ""}});
    }
  }
  ExpectEdited({{0, 4, 1, "12.5 ppm", ""}, {1, 3, 1, "5 nH", ""}, {1, 4, 1, "0.5 %", ""}});
}

TEST(ResistorSetFormat, EditsTheFirstWordOfATextOnPagesThatAreNotUsed) {
  for (const std::int16_t page : Indices{7, 8, INT16_MAX}) {
    for (const std::int16_t column : Indices{0, 1, 2, 3, 4, 5}) {
      ExpectEdited({{page, column, 1, "12.50 ppm", "12.50"},
                    {page, column, 1, "  abc def ", "abc"},
                    {page, column, 1, "0.10%", "0.10%"}});
    }
  }
}

TEST(ResistorSetFormat, RefusesAPercentValueThatIsTooLargeInPpm) {
  const cInstrRT730A set;
  // 1E304 % is 1E308 ppm, the longest that a double holds.
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 3, 1, "1E304", "%"),
            "1" + std::string(304, '0') + " %");
  for (const char* text : {"1.8E304", "1E305", "-1E305"}) {
    EXPECT_EQ(test::ErrorOf([&] {
                static_cast<void>(set.SetCalibrationDataFormat(0, 3, 1, text, "%"));
              }).Kind(),
              ErrorKind::Type)
        << text;
  }
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 3, 1, "1E305", "ppm"),
            "1" + std::string(305, '0') + " ppm");
}

TEST(ResistorSetFormat, RefusesANumberTooLarge) {
  const cInstrRT730A set;
  for (const Rule& rule : kRules) {
    const std::int16_t row = std::max(rule.firstRow, std::int16_t{1});
    for (const std::int16_t column : rule.columns) {
      SCOPED_TRACE(testing::Message() << rule.page << ", " << column);
      EXPECT_EQ(
          test::ErrorOf([&] {
            static_cast<void>(set.SetCalibrationDataFormat(rule.page, column, row, "1E999", "%"));
          }).Kind(),
          ErrorKind::Type);
      const char* text = rule.page == 1 && column == 1 ? "Ls/1E999 nH" : "1E999  ohm";
      std::string unit;
      EXPECT_EQ(
          test::ErrorOf([&] {
            static_cast<void>(set.GetCalibrationDataFormat(rule.page, column, row, text, unit));
          }).Kind(),
          ErrorKind::Type);
    }
  }
}

TEST(ResistorSetFormat, OffersPpmAndPercentForTheRelativeUncertaintiesAlone) {
  const cInstrRT730A set;
  for (std::int16_t page = -1; page <= 9; ++page) {
    for (std::int16_t column = -1; column <= 6; ++column) {
      Texts units = {"x", "y", "z"};
      EXPECT_EQ(set.GetCalibrationUnit(page, column, units), 0);
      const bool relative = (page == 0 && column == 3) || (page >= 2 && page <= 6 && column == 2);
      EXPECT_EQ(units, relative ? (Texts{"ppm", "%"}) : (Texts{"*"})) << page << ", " << column;
    }
  }
}

TEST(ResistorSetFormat, NamesItsSevenPages) {
  const cInstrRT730A set;
  EXPECT_EQ(set.GetCalPageCount(), 7);
  const Texts names = {"DC Registance",
                       "Indactance / Parallel Capacitance",
                       "HF Calibration at 10ohm",
                       "HF Calibration at 100ohm",
                       "HF Calibration at 1kohm",
                       "HF Calibration at 10kohm",
                       "HF Calibration at 100kohm"};
  for (std::int16_t page = 0; page < 7; ++page) {
    EXPECT_EQ(set.GetCalPageName(page), names.at(static_cast<std::size_t>(page)));
  }
  for (const std::int16_t page : Indices{INT16_MIN, -1, 7, 8, INT16_MAX}) {
    EXPECT_EQ(set.GetCalPageName(page), "") << page;
  }
}

}  // namespace
}  // namespace tarvell
