// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/CapacitorSetFile.h"
#include "core/caldata/MemoryGrid.h"
#include "support/ErrorOf.h"
#include "support/SetStage.h"

/// What is written, and what comes back from whole files.
namespace tarvell {
namespace {

using test::CapacitorSetAFile;
using test::CapacitorSetCFile;
using test::CapacitorSetFile;
using test::Contains;
using test::ErrorOf;
using test::Joined;
using test::Lines;
using test::Row;
using test::Rows;
using test::Texts;

const Texts kFileOfA = {
    "#MODEL_NO : RT520A",
    "#SER_NO   : 1234A05678",
    "#CAL_DATE : 20010305",
    "#CAL_NO   : C-0042",
    "#DUE_DATE : 20021125",
    "#COMMENT  : factory",
    "!",
    "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)",
    "!",
    "#RT521A    :     1234A00567",
    "*         1000 :       1.000012pF :    0.0012 :            0.00001 :   0.00002",
    "*        10000 :        1.00001pF :     0.005 :            0.00010 :   0.00005",
    "!END",
    "!",
    "#RT522A    :     1234A00568",
    "*     13000000 :       10.00002pF :    0.0080 :            0.00000 :   0.00010",
    "!END",
    "!",
    "#RT523A    :     ",
    "!END",
    "!",
    "#RT524A    :     1234A00570",
    "*        1.0E3 :       1000.040pF :     1.500 :            0.00010 :   0.00100",
    "*        2.0E3 :       1000.050pF :    0.0007 :           -0.00010 :   0.00100",
    "!END",
    "!"};

TEST_F(CapacitorSetAFile, IsWrittenByteForByte) {
  data_->SetModelNumber("RT520A");
  data_->SetSerialNumber("1234A05678");
  data_->SetCalDate(2001, "MAR", 5);
  data_->SetCalibrationNumber("C-0042");
  data_->SetDueDate(2002, "NOV", 25);
  data_->SetComment("factory");
  data_->SetCalPageSerial(0, "1234A00567");
  data_->SetCalPageSerial(1, "1234A00568");
  data_->SetCalPageSerial(3, "1234A00570");
  SetRows(0, {{"1000", "1.000012pF", "12 ppm", "0.00001", "0.00002"},
              {"10000", "1.00001pF", "0.005 %", "0.00010", "0.00005"}});
  SetRows(1, {{"13000000", "10.00002pF", "0.0080 %", "0.00000", "0.00010"}});
  SetRows(3, {{"1.0E3", "1000.040pF", "1.500 %", "0.00010", "0.00100"},
              {"2.0E3", "1000.050pF", "7.4 ppm", "-0.00010", "0.00100"}});
  EXPECT_EQ(Saved(), Lines(kFileOfA));
}

const Texts kFileOfC = {
    "#MODEL_NO : RT520C",
    "#SER_NO   : 1234C05678",
    "#CAL_DATE : 20010305",
    "#CAL_NO   : C-0042",
    "#DUE_DATE : 20021125",
    "#COMMENT  : factory",
    "!",
    "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)",
    "!",
    "#RT525A    :     1234C00001",
    "*          100 :       10.00001nF :    0.0200 :            0.00020 :   0.00010",
    "!END",
    "!",
    "#RT526A    :     1234C00002",
    "*          120 :        100.000nF :    0.0150 :            0.00030 :   0.00010",
    "!END",
    "!",
    "#RT527A    :     1234C00003",
    "*         1000 :       1.000001uF :      0.08 :            0.00001 :   0.00020",
    "!END",
    "!"};

const Texts kOptionPageOfC = {
    "#RT528A    :     1234C00004",
    "*        10000 :        10.0000uF :    0.1234 :            0.00040 :   0.00020", "!END", "!"};

TEST_F(CapacitorSetCFile, IsWrittenByteForByteWithAndWithoutTheOption) {
  data_->SetModelNumber("RT520C");
  data_->SetSerialNumber("1234C05678");
  data_->SetCalDate(2001, "MAR", 5);
  data_->SetCalibrationNumber("C-0042");
  data_->SetDueDate(2002, "NOV", 25);
  data_->SetComment("factory");
  data_->SetCalPageSerial(0, "1234C00001");
  data_->SetCalPageSerial(1, "1234C00002");
  data_->SetCalPageSerial(2, "1234C00003");
  data_->SetCalPageSerial(3, "1234C00004");
  SetRows(0, {{"100", "10.00001nF", "200 ppm", "0.00020", "0.00010"}});
  SetRows(1, {{"120", "100.000nF", "0.0150 %", "0.00030", "0.00010"}});
  SetRows(2, {{"1000", "1.000001uF", "0.08 %", "0.00001", "0.00020"}});
  SetRows(3, {{"10000", "10.0000uF", "1234 ppm", "0.00040", "0.00020"}});
  EXPECT_EQ(Saved(), Lines(Joined({kFileOfC, kOptionPageOfC})));
  data_->SetCalPageSerial(3, "*");
  EXPECT_EQ(Saved(), Lines(kFileOfC));
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(Saved(), Lines(Joined({kFileOfC, kOptionPageOfC})));
}

TEST_P(CapacitorSetFile, ReportsAnErrorOfTheHeaderBeforeOneOfAMember) {
  data_->SetCalPageSerial(0, "S,1");
  EXPECT_TRUE(Contains(ErrorOf([&] { data_->SaveCalibrationDataToFile(kFile); }).Text(),
                       "serial number of the member " + Name(0)));
  data_->SetComment("a,*b");
  EXPECT_TRUE(
      Contains(ErrorOf([&] { data_->SaveCalibrationDataToFile(kFile); }).Text(), "The comment"));
}

TEST_P(CapacitorSetFile, OfANewObjectHoldsItsCodeAndEmptyPages) {
  Texts pages;
  for (std::int16_t page = 0; page < data_->GetCalPageCount(); ++page) {
    pages = Joined({pages, PageOf(static_cast<std::size_t>(page), "", {}), {"!"}});
  }
  EXPECT_EQ(Saved(), Lines(Joined({Header(), pages})));
}

TEST_P(CapacitorSetFile, IsShownWithCaptionsAndRows) {
  SetRows(2, {{"1", "a", "b", "c", "d"}, {"2", "e", "f", "g", "h"}});
  MemoryGrid grid(5);
  for (int i = 0; i < 5; ++i) {
    grid.AddRow("left\tover");
  }
  data_->GetCalData(2, grid);
  ASSERT_EQ(grid.RowCount(), 3);
  EXPECT_EQ(grid.CellText(0, 0), "Frequency[Hz]");
  EXPECT_EQ(grid.CellText(0, 2), "Unc.");
  EXPECT_EQ(grid.CellText(0, 3), "Disspation Factor");
  EXPECT_EQ(grid.CellText(0, 4), "Unc.");
  EXPECT_EQ(ShownRows(2), (Rows{{"1", "a", "b", "c", "d"}, {"2", "e", "f", "g", "h"}}));
}

TEST_P(CapacitorSetFile, IsShownWithTheUnitOfEachPageInItsCaption) {
  const Texts captions =
      set_.code == "RT520A"
          ? Texts{"Capacitance[pF]", "Capacitance[pF]", "Capacitance[pF]", "Capacitance[pF]"}
          : Texts{"Capacitance[nF]", "Capacitance[nF]", "Capacitance[uF]", "Capacitance[uF]"};
  for (std::int16_t page = 0; page < 4; ++page) {
    MemoryGrid grid(5);
    data_->GetCalData(page, grid);
    EXPECT_EQ(grid.CellText(0, 1), captions.at(static_cast<std::size_t>(page))) << page;
  }
}

TEST_P(CapacitorSetFile, IsShownWholeWhereTheFirstFrequencyIsEmpty) {
  SetRows(0, {{"", "a", "b", "c", "d"}, {"2", "e", "f", "g", "h"}});
  EXPECT_EQ(ShownRows(0), (Rows{{"", "a", "b", "c", "d"}, {"2", "e", "f", "g", "h"}}));
}

TEST_F(CapacitorSetAFile, IsShownOnAFifthPageInPicofarad) {
  MemoryGrid grid(5);
  data_->GetCalData(4, grid);
  EXPECT_EQ(grid.CellText(0, 1), "Capacitance[pF]");
}

TEST_F(CapacitorSetCFile, LeavesTheCaptionOfTheCapacitanceOnAFifthPage) {
  MemoryGrid grid(5);
  grid.SetCellText(0, 1, "before");
  data_->GetCalData(4, grid);
  EXPECT_EQ(grid.CellText(0, 0), "Frequency[Hz]");
  EXPECT_EQ(grid.CellText(0, 1), "before");
}

/// The data line of a row on the first page.
class CapacitorSetLine : public CapacitorSetFile {
 protected:
  [[nodiscard]] std::string LineOf(const Row& row) {
    SetRows(0, {row});
    const std::string file = Saved();
    const std::size_t start = file.find("\r\n*");
    const std::size_t end = file.find("\r\n!END");
    if (start == std::string::npos || end == std::string::npos) {
      return "no line";
    }
    return file.substr(start + 2, end - start - 2);
  }
};

TEST_P(CapacitorSetLine, AlignsTextsToTheRightOfTheirFieldsButTheLast) {
  EXPECT_EQ(LineOf({"1", "2", "3 %", "4", "5"}),
            "*            1 :                2 :         3 :                  4 :   5");
  EXPECT_EQ(LineOf({"1234567890123", "1234567890123456", "123456789 %", "123456789012345678",
                    "1234567890123456789012345"}),
            "*1234567890123 : 1234567890123456 : 123456789 : 123456789012345678 :   "
            "1234567890123456789012345");
}

TEST_P(CapacitorSetLine, WritesAnUncertaintyInPerCent) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"12 ppm", "   0.0012"},    {"12.000 ppm", "   0.0012"},
      {"12.5 ppm", "   0.0013"},  {"12.49 ppm", "   0.0012"},
      {"0.5 ppm", "   0.0001"},   {"0.4 ppm", "   0.0000"},
      {"-12.5 ppm", "  -0.0013"}, {"100000 ppm", "  10.0000"},
      {"12 PPM", "   0.0012"},    {"123456789 ppm", "12345.6789"},
      {"12ppm", "   0.0012"},     {"12", "   0.0012"},
      {"0.0050", "   0.0000"},    {"", "   0.0000"},
      {" ppm", "   0.0000"},      {"abc", "   0.0000"},
      {"0.0050 %", "   0.0050"},  {"0.005 %", "    0.005"},
      {"0.05 %", "     0.05"},    {"-0.05 %", "    -0.05"},
      {"5%", "         "},        {" %", "         "},
      {"%", "         "},         {"abc %", "      abc"}};
  for (const auto& [text, field] : table) {
    EXPECT_EQ(
        LineOf({"1", "2", text, "4", "5"}),
        std::string("*            1 :                2 : ") + field + " :                  4 :   5")
        << text;
  }
}

INSTANTIATE_TEST_SUITE_P(Sets, CapacitorSetFile,
                         testing::Values(test::CapacitorSetA(), test::CapacitorSetC()),
                         [](const auto& test) { return test.param.code; });
INSTANTIATE_TEST_SUITE_P(Sets, CapacitorSetLine,
                         testing::Values(test::CapacitorSetA(), test::CapacitorSetC()),
                         [](const auto& test) { return test.param.code; });

}  // namespace
}  // namespace tarvell
