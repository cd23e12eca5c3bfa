// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/caldata/cInstrRT520A.h"
#include "core/caldata/cInstrRT520C.h"
#include "core/caldata/cInstrRT730A.h"
#include "support/ErrorOf.h"

/// What the cells of the three sets store and offer to edit.
namespace tarvell::test {
namespace {

using Texts = std::vector<std::string>;

/// What a cell stores for 5.1234565, 5 and 0, by its decimals: which are shown, how many of them
/// always, and whether a zero is shown at all.
using Stored = std::array<std::string, 3>;
constexpr std::array<const char*, 3> kTyped = {"5.1234565", "5", "0"};
const std::map<std::string, Stored> kByDecimals = {{"0", {"5", "5", "0"}},
                                                   {"1", {"5.1", "5.0", "0.0"}},
                                                   {"2", {"5.12", "5.00", "0.00"}},
                                                   {"3", {"5.123", "5.000", "0.000"}},
                                                   {"4", {"5.1235", "5.0000", "0.0000"}},
                                                   {"5", {"5.12346", "5.00000", "0.00000"}},
                                                   {"6", {"5.123457", "5.000000", "0.000000"}},
                                                   {"0 to 1", {"5.1", "5", "0"}},
                                                   {"0 to 2", {"5.12", "5", "0"}},
                                                   {"0 to 3", {"5.123", "5", "0"}},
                                                   {"1 to 2", {"5.12", "5.0", "0.0"}},
                                                   {"3 to 4", {"5.1235", "5.000", "0.000"}},
                                                   {"4 to 5", {"5.12346", "5.0000", "0.0000"}},
                                                   {"5 to 6", {"5.123457", "5.00000", "0.00000"}},
                                                   {"no zero", {"5 ", "5 ", " "}},
                                                   {"none", {"", "", ""}}};

void ExpectStored(const cifCaldata& set, std::int16_t page, Cell cell, const std::string& decimals,
                  const std::string& unit, const std::string& before, const std::string& after) {
  const Stored& texts = kByDecimals.at(decimals);
  for (std::size_t i = 0; i < kTyped.size(); ++i) {
    EXPECT_EQ(set.SetCalibrationDataFormat(page, cell.column, cell.row.number, kTyped.at(i), unit),
              before + texts.at(i) + after)
        << "page " << page << ", column " << cell.column << ", row " << cell.row.number << ", unit "
        << unit;
  }
  const std::optional<CellAffixes> affixes = set.AffixesOf(page, cell, unit);
  ASSERT_EQ(affixes.has_value(), decimals != "none");
  if (affixes) {
    EXPECT_EQ(affixes->before, before);
    EXPECT_EQ(affixes->after, after);
  }
}

struct EditCase {
  std::int16_t page;
  std::int16_t column;
  std::int16_t row;
  const char* text;
  const char* edited;
  const char* unit = "";
};

void ExpectEdited(const cifCaldata& set, const std::vector<EditCase>& cases) {
  for (const EditCase& test : cases) {
    std::string unit = "before";
    EXPECT_EQ(set.GetCalibrationDataFormat(test.page, test.column, test.row, test.text, unit),
              test.edited)
        << "page " << test.page << ", column " << test.column << ", row " << test.row << ", "
        << test.text;
    EXPECT_EQ(unit, test.unit) << test.text;
  }
}

ErrorKind KindOfStoring(const cifCaldata& set, std::int16_t page, std::int16_t column,
                        const std::string& text, const std::string& unit) {
  return ErrorOf(
             [&] { static_cast<void>(set.SetCalibrationDataFormat(page, column, 1, text, unit)); })
      .Kind();
}

Texts UnitsOf(const cifCaldata& set, std::int16_t page, std::int16_t column) {
  Texts units = {"x", "y", "z"};
  EXPECT_EQ(set.GetCalibrationUnit(page, column, units), 0);
  return units;
}

// The capacitor sets.

std::string Digit(const std::string& digits, int row) {
  return row >= 1 && row <= static_cast<int>(digits.size())
             ? digits.substr(static_cast<std::size_t>(row - 1), 1)
             : "none";
}

TEST(CapacitorSetFormat, OfSetAIsThatOfThePageAndTheRow) {
  // A digit for each of the eight rows; page 4 has no formats.
  const std::array<std::string, 5> capacitance = {"65555444", "55555544", "44443333", "33222211",
                                                  ""};
  const std::array<std::string, 5> ppm = {"03333222", "00000033", "00003333", "00333322", ""};
  const std::array<std::string, 5> percent = {"43333222", "44444433", "44443333", "44333322", ""};
  const cInstrRT520A set;
  for (std::int16_t page = 0; page < 5; ++page) {
    const auto index = static_cast<std::size_t>(page);
    for (std::int16_t row = 0; row <= 9; ++row) {
      ExpectStored(set, page, {{row}, 1}, Digit(capacitance.at(index), row), "", "", "pF");
      ExpectStored(set, page, {{row}, 2}, Digit(ppm.at(index), row), "ppm", "", " ppm");
      ExpectStored(set, page, {{row}, 2}, Digit(percent.at(index), row), "%", "", " %");
      for (const std::int16_t column : {std::int16_t{3}, std::int16_t{4}}) {
        ExpectStored(set, page, {{row}, column}, page == 3 && row == 8 ? "4" : "5", "", "", "");
      }
    }
  }
}

TEST(CapacitorSetFormat, OfSetCIsThatOfThePage) {
  const std::array<const char*, 4> decimals = {"4 to 5", "3 to 4", "5 to 6", "4 to 5"};
  const std::array<const char*, 4> units = {"nF", "nF", "uF", "uF"};
  const cInstrRT520C set;
  for (std::int16_t page = 0; page < 4; ++page) {
    const auto index = static_cast<std::size_t>(page);
    for (const int rowNumber : {INT16_MIN, 0, 1, 9, INT16_MAX}) {
      const GridRow row = {static_cast<std::int16_t>(rowNumber)};
      ExpectStored(set, page, {row, 1}, decimals.at(index), "", "", units.at(index));
      ExpectStored(set, page, {row, 2}, "0", "ppm", "", " ppm");
      ExpectStored(set, page, {row, 2}, "4", "%", "", " %");
      ExpectStored(set, page, {row, 3}, "5", "", "", "");
      ExpectStored(set, page, {row, 4}, "5", "", "", "");
    }
  }
  ExpectStored(set, 4, {{1}, 1}, "none", "", "", "");
  ExpectStored(set, -1, {{1}, 1}, "none", "", "", "");
}

TEST(CapacitorSetFormat, TakesTheUnitOfAnUncertaintyInAnyCaseButItsDigitsOnlyForPpm) {
  const cInstrRT520C set;
  for (const char* unit : {"PPM", " ppm ", "Ppm"}) {
    ExpectStored(set, 0, {{1}, 2}, "4", unit, "", " ppm");
  }
  ExpectStored(set, 0, {{1}, 2}, "4", " % ", "", " %");
  for (const char* unit : {"", "None", "*", "p pm", "%%"}) {
    ExpectStored(set, 0, {{1}, 2}, "4", unit, "", "");
  }
}

TEST(CapacitorSetFormat, ToEditIsTheShortestNumberWithoutItsUnit) {
  const std::vector<EditCase> ofBoth = {{0, 2, 1, "12.50 ppm", "12.5", "ppm"},
                                        {0, 2, 1, "12PPM", "12", "PPM"},
                                        {0, 2, 1, " ppm", "0", "ppm"},
                                        {0, 2, 1, " 0.0050 % ", "0.005", "%"},
                                        {0, 2, 1, "0.0012", "0.0012"},
                                        {0, 2, 1, "abc", "0"},
                                        {0, 2, 1, "  ", ""},
                                        {0, 3, 1, "-0.00020", "-0.0002"},
                                        {0, 3, 1, "", ""},
                                        {0, 4, 1, " 1.50000 ", "1.5"},
                                        {0, 0, 1, "1000", ""},
                                        {0, 5, 1, "1000", ""},
                                        {9, 2, -3, "12.0 ppm", "12", "ppm"}};
  ExpectEdited(cInstrRT520A(), ofBoth);
  ExpectEdited(cInstrRT520C(), ofBoth);
  ExpectEdited(cInstrRT520A(), {{0, 1, 1, " 1.000012pF ", "1.000012", "pF"},
                                {0, 1, 1, "1.5000 nF", "1.5", "nF"},
                                {0, 1, 1, "1.5000", "1.5", "00"},
                                {0, 1, 1, "pF", "0", "pF"},
                                {0, 1, 1, "", ""}});
  ExpectEdited(cInstrRT520C(), {{0, 1, 1, " -0.5000uF ", "-0.5000"},
                                {0, 1, 1, "1.5000", "1.50"},
                                {0, 1, 1, "nF", ""},
                                {0, 1, 1, "", ""}});
}

TEST(SetFormats, RefuseANumberTooLargeInItsUnit) {
  const cInstrRT520C set;
  for (const std::int16_t column : {std::int16_t{1}, std::int16_t{2}, std::int16_t{4}}) {
    EXPECT_EQ(KindOfStoring(set, 0, column, "1E999", "ppm"), ErrorKind::Type) << column;
  }
  // 1E304 % is 1E308 ppm, the longest that a double holds.
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 2, 1, "1E304", "%"),
            "1" + std::string(304, '0') + ".0000 %");
  EXPECT_EQ(KindOfStoring(set, 0, 2, "1.8E304", "%"), ErrorKind::Type);
  EXPECT_EQ(set.SetCalibrationDataFormat(0, 2, 1, "1E305", "ppm"),
            "1" + std::string(305, '0') + " ppm");
  const cInstrRT730A resistors;
  EXPECT_EQ(KindOfStoring(resistors, 1, 1, "1E999", ""), ErrorKind::Type);
  EXPECT_EQ(resistors.SetCalibrationDataFormat(0, 3, 1, "1E304", "%"),
            "1" + std::string(304, '0') + " %");
  EXPECT_EQ(KindOfStoring(resistors, 0, 3, "1.8E304", "%"), ErrorKind::Type);
  // Where no number is shown, only one in per cent has to be converted.
  EXPECT_EQ(cInstrRT520A().SetCalibrationDataFormat(0, 2, 9, "1E999", "ppm"), " ppm");
}

// The resistor set.

constexpr const char* kRelative = "relative";

struct Rule {
  std::int16_t page;
  std::int16_t column;
  std::int16_t firstRow;
  std::int16_t lastRow;
  const char* decimals;
  const char* after;
  const char* before = "";
};

// On pages 2 to 6 the rules of column 3 are those of column 4, too.
// clang-format off
const std::vector<Rule> kRules = {
    {0, 1, 1, 3, "no zero", "mohm"},   {0, 1, 4, 6, "no zero", "ohm"},  {0, 1, 7, 9, "no zero", "kohm"},
    {0, 2, 1, 1, "4", "  mohm"},       {0, 2, 2, 2, "3", "  mohm"},     {0, 2, 3, 3, "2", "  mohm"},
    {0, 2, 4, 4, "4", "  ohm"},        {0, 2, 5, 5, "3", "  ohm"},      {0, 2, 6, 6, "3", " ohm"},
    {0, 2, 7, 7, "5", " kohm"},        {0, 2, 8, 8, "4", " kohm"},      {0, 2, 9, 9, "3", " kohm"},
    {0, 3, -1, 52, "0 to 2", kRelative},
    {1, 1, 1, 3, "0 to 2", " nH", "Ls/"}, {1, 1, 4, 6, "0 to 3", " pF", "Cp/"},
    {1, 2, 1, 2, "0 to 2", " nH"},     {1, 2, 3, 3, "0 to 1", " nH"},   {1, 2, 4, 6, "1 to 2", " pF"},
    {2, 1, 1, 4, "3", " ohm"},         {2, 1, 5, 7, "2", " ohm"},
    {2, 2, 1, 4, "2", kRelative},      {2, 2, 5, 7, "1", kRelative},
    {2, 3, 1, 4, "3", " ohm"},         {2, 3, 5, 7, "2", " ohm"},
    {3, 1, 1, 5, "2", " ohm"},         {3, 1, 6, 7, "1", " ohm"},
    {3, 2, 1, 5, "2", kRelative},      {3, 2, 6, 7, "1", kRelative},
    {3, 3, 1, 5, "2", " ohm"},         {3, 3, 6, 7, "1", " ohm"},
    {4, 1, 1, 6, "4", " kohm"},        {4, 1, 7, 8, "3", " kohm"},
    {4, 2, 1, 6, "2", kRelative},      {4, 2, 7, 8, "1", kRelative},
    {4, 3, 1, 6, "1", " uS"},          {4, 3, 7, 8, "0", " uS"},
    {5, 1, 1, 8, "3", " kohm"},        {5, 2, 1, 2, "2", kRelative},    {5, 2, 3, 8, "1", kRelative},
    {5, 3, 1, 2, "2", " uS"},          {5, 3, 3, 8, "0", " uS"},
    {6, 1, 1, 2, "2", " kohm"},        {6, 1, 3, 8, "3", " kohm"},
    {6, 2, 1, 2, "2", kRelative},      {6, 2, 3, 8, "1", kRelative},
    {6, 3, 1, 1, "3", " uS"},          {6, 3, 2, 8, "2", " uS"},
};
// clang-format on

/// The rule of a cell, nullptr when it has none.
const Rule* RuleOf(std::int16_t page, std::int16_t column, std::int16_t row) {
  for (const Rule& rule : kRules) {
    const bool isColumn = rule.column == column || (page >= 2 && rule.column == 3 && column == 4);
    if (rule.page == page && isColumn && row >= rule.firstRow && row <= rule.lastRow) {
      return &rule;
    }
  }
  return nullptr;
}

TEST(ResistorSetFormat, IsThatOfThePageTheColumnAndTheRow) {
  const cInstrRT730A set;
  for (std::int16_t page = -1; page <= 8; ++page) {
    for (std::int16_t column = -1; column <= 6; ++column) {
      for (std::int16_t row = -1; row <= 10; ++row) {
        const Rule* rule = RuleOf(page, column, row);
        for (const std::string unit : {"ppm", "%", "PPM", ""}) {
          if (rule == nullptr) {
            ExpectStored(set, page, {{row}, column}, "none", unit, "", "");
          } else {
            const std::string relative = unit == "ppm" ? " ppm" : " %";
            ExpectStored(set, page, {{row}, column}, rule->decimals, unit, rule->before,
                         rule->after == std::string(kRelative) ? relative : rule->after);
          }
        }
      }
    }
  }
}

TEST(ResistorSetFormat, ToEditIsTheShortestNumberWithoutItsPrefixAndUnit) {
  ExpectEdited(cInstrRT730A(), {{0, 1, 3, "100 mohm", "100"},
                                {0, 1, 7, "1 kohm", "1"},
                                {0, 2, 1, "  1.0001  mohm  ", "1.0001"},
                                // Three characters go in rows 4 to 6, four in all others.
                                {0, 2, 3, "12345678", "1234"},
                                {0, 2, 4, "12345678", "12345"},
                                {0, 2, 6, "12345678", "12345"},
                                {0, 2, 7, "12345678", "1234"},
                                {0, 2, 9, "-100.500 kohm", "-100.5"},
                                {0, 3, 1, "0.10 %", "0.1", "%"},
                                {1, 1, 1, "Ls/12.25 nH", "12.25"},
                                {1, 1, 4, " Cp/-0.10 pF ", "-0.1"},
                                {1, 2, 6, "1.0pF", "1"},
                                {2, 1, 1, "10.010 ohm", "10.01"},
                                {4, 1, 1, "1.0000 kohm", "1"},
                                {4, 3, 8, "-0.50 uS", "-0.5"},
                                {6, 4, 1, "12345", "12"},
                                {2, 2, 1, "12.50 ppm", "12.5", "ppm"},
                                {3, 2, 9, " %", "0", "%"},
                                {6, 2, 1, "0.00123", "0.00123"},
                                {6, 2, 1, "5 PPM", "5"},
                                {6, 2, 1, "abc", "0"},
                                {2, 2, 1, "  ", ""},
                                {0, 0, 1, "RT731A", ""},
                                {0, 4, 1, "5 ppm", ""},
                                {1, 3, 1, "5 nH", ""},
                                {2, 5, 1, "5 ohm", ""},
                                {7, 1, 1, "  abc def ", "abc"},
                                {-1, 1, 1, "12.50 ppm", "12.50"}});
}

TEST(SetFormats, OfferUnitsOnlyForRelativeUncertainties) {
  for (std::int16_t page = -1; page <= 8; ++page) {
    for (std::int16_t column = -1; column <= 6; ++column) {
      SCOPED_TRACE(testing::Message() << page << ", " << column);
      const bool isRelative = (page == 0 && column == 3) || (page >= 2 && page <= 6 && column == 2);
      const Texts relative = {"ppm", "%"};
      const Texts none = {"*"};
      EXPECT_EQ(UnitsOf(cInstrRT730A(), page, column), isRelative ? relative : none);
      EXPECT_EQ(UnitsOf(cInstrRT520A(), page, column), column == 2 ? relative : none);
      EXPECT_EQ(UnitsOf(cInstrRT520C(), page, column), column == 2 ? relative : none);
    }
  }
}

}  // namespace
}  // namespace tarvell::test
