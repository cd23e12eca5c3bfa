// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/ResistorSetFile.h"
#include "support/ErrorOf.h"
#include "support/SetStage.h"

/// What is written, what comes back from a whole file, and what the grid shows.
namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::Joined;
using test::Lines;
using test::ResistorSetFile;
using test::Row;
using test::Rows;
using test::Texts;

const Texts kHeader = {
    "#MODEL_NO : RT730A",
    "#SER_NO   : ",
    "#CAL_DATE : 00000",
    "#CAL_NO   : ",
    "#DUE_DATE : 00000",
    "#COMMENT  : ",
    "!",
    "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)",
    "!"};

// clang-format off
const Texts kWholeFile = {
    "#MODEL_NO : RT730A",
    "#SER_NO   : 1234R05678",
    "#CAL_DATE : 20010305",
    "#CAL_NO   : C-0042",
    "#DUE_DATE : 20021125",
    "#COMMENT  : factory",
    "!",
    "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)",
    "!",
    "!",
    "!DC Resistance",
    "!Model     : Nominal Value : Calibrated Value : Unc.(%)",
    "*   RT731A :        1 mohm :     1.0001  mohm :       0.1 % ",
    "*   RT732A :       10 mohm :     10.001  mohm : 0.00125 %",
    "*   RT733A :      100 mohm :     100.01  mohm :      0.25 % ",
    "*   RT734A :         1 ohm :      1.0001  ohm : 0.12345 %",
    "!END",
    "!",
    "!Series Inductance and/or Parallel Capacitance at 1MHz",
    "!Model     : Calibrated Value : Unc.(%)",
    "*   RT734A :          Ls/5 nH :  0.5 nH",
    "*   RT735A :      Ls/12.25 nH :    1 nH",
    "!END",
    "!",
    "!High Freqency Calibration Results",
    "! 10 ohm (MODEL QZ RT735A)",
    "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty",
    "*        1 :   10.001 ohm :      0.10 % :      0.001 ohm :   0.010 ohm",
    "*        3 :   10.002 ohm :   0.00123 % :     -0.001 ohm :   0.010 ohm",
    "!END",
    "!",
    "! 100 ohm (MODEL QZ RT736A)",
    "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty",
    "*      0.5 :   100.01 ohm :      0.10 % :       0.01 ohm :    0.10 ohm",
    "!END",
    "!",
    "! 1 kohm (MODEL QZ RT737A)",
    "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty",
    "*        1 :   1.0001 kohm :      0.10 % :        -0.1 uS :      1.0 uS",
    "!END",
    "!",
    "! 10 kohm (MODEL QZ RT738A)",
    "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty",
    "!END",
    "!",
    "! 100 kohm (MODEL QZ RT739A)",
    "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty",
    "*        1 :   100.01 kohm :      0.20 % :       0.001 uS :    0.010 uS",
    "*        2 :   100.02 kohm :   0.10000 % :       -0.01 uS :     0.10 uS",
    "!END"};

const std::vector<Rows> kWholeTable = {
    {{"RT731A", "1 mohm", "1.0001  mohm", "0.1 %", ""},
     {"RT732A", "10 mohm", "10.001  mohm", "12.5 ppm", ""},
     {"RT733A", "100 mohm", "100.01  mohm", "0.25 %", ""},
     {"RT734A", "1 ohm", "1.0001  ohm", "1234.5 ppm", ""}},
    {{"RT734A", "Ls/5 nH", "0.5 nH", "", ""},
     {"RT735A", "Ls/12.25 nH", "1 nH", "", ""}},
    {{"1", "10.001 ohm", "0.10 %", "0.001 ohm", "0.010 ohm"},
     {"3", "10.002 ohm", "12.30 ppm", "-0.001 ohm", "0.010 ohm"}},
    {{"0.5", "100.01 ohm", "0.10 %", "0.01 ohm", "0.10 ohm"}},
    {{"1", "1.0001 kohm", "0.10 %", "-0.1 uS", "1.0 uS"}},
    {},
    {{"1", "100.01 kohm", "0.20 %", "0.001 uS", "0.010 uS"},
     {"2", "100.02 kohm", "1000.00 ppm", "-0.01 uS", "0.10 uS"}}};
// clang-format on

TEST_F(ResistorSetFile, IsWrittenByteForByte) {
  data_->SetModelNumber("RT730A");
  data_->SetSerialNumber("1234R05678");
  data_->SetCalDate(2001, "MAR", 5);
  data_->SetCalibrationNumber("C-0042");
  data_->SetDueDate(2002, "NOV", 25);
  data_->SetComment("factory");
  for (std::int16_t page = 0; page < kPages; ++page) {
    SetRows(page, kWholeTable.at(static_cast<std::size_t>(page)));
  }
  EXPECT_EQ(Saved(), Lines(kWholeFile));
}

TEST_F(ResistorSetFile, IsReadWithBothUnitsAndWrittenBackByteForByte) {
  Load(kWholeFile);
  for (std::int16_t page = 0; page < kPages; ++page) {
    EXPECT_EQ(ShownRows(page), kWholeTable.at(static_cast<std::size_t>(page))) << page;
  }
  EXPECT_EQ(data_->SerialNumber(), "1234R05678");
  EXPECT_EQ(data_->CalibrationNumber(), "C-0042");
  EXPECT_EQ(data_->Comment(), "factory");
  EXPECT_TRUE(data_->LoadNotices().empty());
  EXPECT_EQ(Saved(), Lines(kWholeFile));
}

class ResistorSetLine : public ResistorSetFile {
 protected:
  /// The data line of the first row of a page.
  [[nodiscard]] std::string LineOf(std::int16_t page, const Row& row) {
    for (std::int16_t other = 0; other < kPages; ++other) {
      SetRows(other, {});
    }
    SetRows(page, {row});
    const std::string file = Saved();
    const std::size_t start = file.find("\r\n*");
    if (start == std::string::npos) {
      return "no line";
    }
    return file.substr(start + 2, file.find("\r\n", start + 2) - start - 2);
  }
};

TEST_F(ResistorSetLine, AlignsTextsToTheRightOfTheirFields) {
  EXPECT_EQ(LineOf(0, {"a", "b", "c", "0 %"}),
            "*        a :             b :                c :         0 % ");
  EXPECT_EQ(LineOf(0, {"123456789", "1234567890123", "1234567890123456", "123456789 %"}),
            "*123456789 : 1234567890123 : 1234567890123456 : 123456789 % ");
  EXPECT_EQ(LineOf(1, {"a", "b", "c"}), "*        a :                b :       c");
  EXPECT_EQ(LineOf(1, {"123456789", "1234567890123456", "1234567"}),
            "*123456789 : 1234567890123456 : 1234567");
  for (const std::int16_t page : {std::int16_t{2}, std::int16_t{3}}) {
    EXPECT_EQ(LineOf(page, {"a", "b", "0 %", "d", "e"}),
              "*        a :            b :         0 % :              d :           e");
    EXPECT_EQ(
        LineOf(page, {"123456789", "123456789012", "123456789 %", "12345678901234", "12345678901"}),
        "*123456789 : 123456789012 : 123456789 % : 12345678901234 : 12345678901");
  }
  for (const std::int16_t page : {std::int16_t{4}, std::int16_t{5}, std::int16_t{6}}) {
    EXPECT_EQ(LineOf(page, {"a", "b", "0 %", "d", "e"}),
              "*        a :             b :         0 % :              d :           e");
    EXPECT_EQ(LineOf(page, {"123456789", "1234567890123", "123456789 %", "12345678901234",
                            "12345678901"}),
              "*123456789 : 1234567890123 : 123456789 % : 12345678901234 : 12345678901");
  }
}

TEST_F(ResistorSetLine, WritesARelativeUncertaintyInPerCent) {
  const std::vector<std::pair<const char*, const char*>> table = {
      // stored, written in a field of nine characters
      {"0.10 %", "     0.10"},     {"-0.5 %", "     -0.5"},     {"5%", "         "},
      {" %", "         "},         {"12.3 ppm", "  0.00123"},   {"12.34 ppm", "  0.00123"},
      {"12.35 ppm", "  0.00124"},  {"0.05 ppm", "  0.00001"},   {"0.04 ppm", "  0.00000"},
      {"-12.35 ppm", " -0.00124"}, {"100000 ppm", " 10.00000"}, {"1", "  0.00010"},
      {"12.35 PPM", "  0.00124"},  {"", "  0.00000"},           {"abc", "  0.00000"}};
  for (const auto& [stored, field] : table) {
    for (const std::int16_t page : {std::int16_t{2}, std::int16_t{3}}) {
      EXPECT_EQ(
          LineOf(page, {"a", "b", stored, "d", "e"}),
          std::string("*        a :            b : ") + field + " % :              d :           e")
          << stored;
    }
    for (const std::int16_t page : {std::int16_t{4}, std::int16_t{5}, std::int16_t{6}}) {
      EXPECT_EQ(LineOf(page, {"a", "b", stored, "d", "e"}),
                std::string("*        a :             b : ") + field +
                    " % :              d :           e")
          << stored;
    }
  }
}

TEST_F(ResistorSetLine,
       WritesAnUncertaintyAtDirectCurrentWithThePerCentSignInsideOrBehindTheField) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"0.1 %", "      0.1 % "},   {"100.25 %", "   100.25 % "}, {"5%", "          % "},
      {"12.5 ppm", "0.00125 %"},   {"12.54 ppm", "0.00125 %"},   {"12.55 ppm", "0.00126 %"},
      {"-12.5 ppm", "-0.00125 %"}, {"100000 ppm", "10.00000 %"}, {"1", "0.00010 %"},
      {"", "0.00000 %"},           {"abc", "0.00000 %"}};
  for (const auto& [stored, field] : table) {
    EXPECT_EQ(LineOf(0, {"a", "b", "c", stored, "e"}),
              std::string("*        a :             b :                c : ") + field)
        << stored;
  }
}

// The grid.

const std::vector<Texts> kCaptions = {
    {"Model", "Nominal Value", "Calibrated Value", "Unc. (%)", ""},
    {"Model", "Calibrated Value", "Unc. (%)", "", ""},
    {"Frequency[MHz]", "Resistance[ohm]", "Unc.  [%]", "Reactance [ohm]", "Unc. (%)"},
    {"Frequency[MHz]", "Resistance[ohm]", "Unc.  [%]", "Reactance [ohm]", "Unc. (%)"},
    {"Frequency[MHz]", "Resistance[kohm]", "Unc.  [%]", "Susceptance [uS]", "Unc. (uS)"},
    {"Frequency[MHz]", "Resistance[kohm]", "Unc.  [%]", "Susceptance [uS]", "Unc. (uS)"},
    {"Frequency[MHz]", "Resistance[kohm]", "Unc.  [%]", "Susceptance [uS]", "Unc. (uS)"},
    {"", "", "", "", ""}};

TEST_F(ResistorSetFile, IsShownWithTheCaptionsOfEachPageAndNoOthers) {
  for (std::int16_t page = 0; page < 8; ++page) {
    for (std::int16_t before = 0; before < 8; ++before) {
      MemoryGrid grid(5);
      data_->GetCalData(before, grid);
      data_->GetCalData(page, grid);
      Texts captions;
      for (std::int16_t column = 0; column < 5; ++column) {
        captions.push_back(grid.CellText(0, column));
      }
      EXPECT_EQ(captions, kCaptions.at(static_cast<std::size_t>(page))) << page << ", " << before;
    }
  }
}

TEST_F(ResistorSetFile, TakesGridsOfUpToSixColumns) {
  SetRows(2, {{"a", "b", "c"}}, 3);
  EXPECT_EQ(ShownRows(2), (Rows{{"a", "b", "c", "", ""}}));
  SetRows(2, {{"a", "b", "c", "d", "e", "f"}}, 6);
  EXPECT_EQ(ShownRows(2), (Rows{{"a", "b", "c", "d", "e"}}));
  EXPECT_EQ(ErrorOf([&] { SetRows(2, {{"g"}}, 7); }).Kind(), ErrorKind::Index);
  EXPECT_EQ(ErrorOf([&] { SetRows(2, {{"g"}, {"h"}}, 20); }).Kind(), ErrorKind::Index);
}

TEST_F(ResistorSetFile, NeitherWritesNorReadsTheSerialNumberOfAPage) {
  for (std::int16_t page = 0; page < 8; ++page) {
    EXPECT_EQ(data_->GetCalPageSerial(page), "") << page;
    data_->SetCalPageSerial(page, "serial" + std::to_string(page));
  }
  EXPECT_FALSE(Contains(Saved(), "serial"));
  LoadOver(PagesBut({}));
  for (std::int16_t page = 0; page < 8; ++page) {
    EXPECT_EQ(data_->GetCalPageSerial(page), "serial" + std::to_string(page)) << page;
  }
  data_->SetCalPageSerial(3, "*");
  EXPECT_EQ(data_->GetCalPageSerial(3), "*");
  EXPECT_EQ(data_->GetCalPageCount(), kPages);
}

}  // namespace
}  // namespace tarvell
