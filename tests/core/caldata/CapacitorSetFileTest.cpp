// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "support/ErrorOf.h"
#include "support/SetStage.h"

/// The files of the two capacitor sets, and what the grid shows of them.
namespace tarvell::test {
namespace {

/// A capacitor set in its file.
class CapacitorSetFile : public testing::TestWithParam<SetModel>, public SetStage {
 protected:
  CapacitorSetFile() : SetStage(GetParam()) {}

  /// One page with this serial number. No "!" follows its end.
  [[nodiscard]] Texts PageOf(std::size_t page, const std::string& serial,
                             const Texts& dataLines) const {
    return Joined({{"#" + Name(page) + "    :     " + serial}, dataLines, {"!END"}});
  }

  /// The data line of a row on the first page.
  [[nodiscard]] std::string LineOf(const Row& row) { return SavedLineOf(0, row); }
};

class CapacitorSetAFile : public testing::Test, public SetStage {
 protected:
  CapacitorSetAFile() : SetStage(CapacitorSetA()) {}
};

class CapacitorSetCFile : public testing::Test, public SetStage {
 protected:
  CapacitorSetCFile() : SetStage(CapacitorSetC()) {}
};

/// A text, and what becomes of it.
using FieldCases = std::vector<std::pair<const char*, const char*>>;

const Texts kPagesOfA = {
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
  SetHeader();
  data_->SetCalPageSerial(0, "1234A00567");
  data_->SetCalPageSerial(1, "1234A00568");
  data_->SetCalPageSerial(3, "1234A00570");
  SetRows(0, {{"1000", "1.000012pF", "12 ppm", "0.00001", "0.00002"},
              {"10000", "1.00001pF", "0.005 %", "0.00010", "0.00005"}});
  SetRows(1, {{"13000000", "10.00002pF", "0.0080 %", "0.00000", "0.00010"}});
  SetRows(3, {{"1.0E3", "1000.040pF", "1.500 %", "0.00010", "0.00100"},
              {"2.0E3", "1000.050pF", "7.4 ppm", "-0.00010", "0.00100"}});
  EXPECT_EQ(Saved(), Lines(Joined({WholeHeader(), kPagesOfA})));
}

const Texts kPagesOfC = {
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
  SetHeader();
  data_->SetCalPageSerial(0, "1234C00001");
  data_->SetCalPageSerial(1, "1234C00002");
  data_->SetCalPageSerial(2, "1234C00003");
  data_->SetCalPageSerial(3, "1234C00004");
  SetRows(0, {{"100", "10.00001nF", "200 ppm", "0.00020", "0.00010"}});
  SetRows(1, {{"120", "100.000nF", "0.0150 %", "0.00030", "0.00010"}});
  SetRows(2, {{"1000", "1.000001uF", "0.08 %", "0.00001", "0.00020"}});
  SetRows(3, {{"10000", "10.0000uF", "1234 ppm", "0.00040", "0.00020"}});
  EXPECT_EQ(Saved(), Lines(Joined({WholeHeader(), kPagesOfC, kOptionPageOfC})));
  data_->SetCalPageSerial(3, "*");
  EXPECT_EQ(Saved(), Lines(Joined({WholeHeader(), kPagesOfC})));
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(Saved(), Lines(Joined({WholeHeader(), kPagesOfC, kOptionPageOfC})));
}

TEST_P(CapacitorSetFile, ReportsAnErrorOfTheHeaderBeforeOneOfAMember) {
  data_->SetCalPageSerial(0, "S,1");
  EXPECT_TRUE(Contains(ErrorOf([&] { data_->SaveCalibrationDataToFile(kFile); }).Text(),
                       "serial number of the member " + Name(0)));
  data_->SetComment("a,*b");
  EXPECT_TRUE(
      Contains(ErrorOf([&] { data_->SaveCalibrationDataToFile(kFile); }).Text(), "The comment"));
}

TEST_P(CapacitorSetFile, IsShownWithTheCaptionsOfEachPageAndItsRows) {
  const Texts units = set_.code == "RT520A" ? Texts{"pF", "pF", "pF", "pF", "pF"}
                                            : Texts{"nF", "nF", "uF", "uF", ""};
  for (std::int16_t page = 0; page < 5; ++page) {
    MemoryGrid grid(5);
    grid.SetCellText(0, 1, "before");
    grid.AddRow("left\tover");
    data_->GetCalData(page, grid);
    const std::string& unit = units.at(static_cast<std::size_t>(page));
    Texts captions;
    for (std::int16_t column = 0; column < 5; ++column) {
      captions.push_back(grid.CellText(0, column));
    }
    EXPECT_EQ(captions,
              (Texts{"Frequency[Hz]", unit.empty() ? "before" : "Capacitance[" + unit + "]", "Unc.",
                     "Disspation Factor", "Unc."}));
  }
  // A page is shown whole also where its first frequency is empty.
  const Rows rows = {{"", "a", "b", "c", "d"}, {"2", "e", "f", "g", "h"}};
  SetRows(0, rows);
  EXPECT_EQ(ShownRows(0), rows);
}

TEST_P(CapacitorSetFile, AlignsTextsToTheRightOfTheirFieldsButTheLast) {
  EXPECT_EQ(LineOf({"1", "2", "3 %", "4", "5"}),
            "*            1 :                2 :         3 :                  4 :   5");
  EXPECT_EQ(LineOf({"1234567890123", "1234567890123456", "123456789 %", "123456789012345678",
                    "1234567890123456789012345"}),
            "*1234567890123 : 1234567890123456 : 123456789 : 123456789012345678 :   "
            "1234567890123456789012345");
}

TEST_P(CapacitorSetFile, WritesAnUncertaintyInPerCent) {
  const FieldCases table = {
      {"12.5 ppm", "   0.0013"}, {"12.49 ppm", "   0.0012"}, {"0.5 ppm", "   0.0001"},
      {"0.4 ppm", "   0.0000"},  {"-12.5 ppm", "  -0.0013"}, {"123456789 ppm", "12345.6789"},
      {"12 PPM", "   0.0012"},   {"12", "   0.0012"},        {"", "   0.0000"},
      {"abc", "   0.0000"},      {"0.005 %", "    0.005"},   {"-0.05 %", "    -0.05"},
      {"5%", "         "},       {"abc %", "      abc"}};
  for (const auto& [text, field] : table) {
    EXPECT_EQ(
        LineOf({"1", "2", text, "4", "5"}),
        std::string("*            1 :                2 : ") + field + " :                  4 :   5")
        << text;
  }
}

// Option 001 adds a fourth page to set C; set A always has four.

TEST_F(CapacitorSetAFile, TakesTheSignsOfTheOptionForSerialNumbers) {
  for (const char* serial : {"*", "/", ""}) {
    data_->SetCalPageSerial(3, serial);
    EXPECT_EQ(data_->GetCalPageSerial(3), serial);
    EXPECT_EQ(data_->GetCalPageCount(), 4);
    EXPECT_TRUE(Contains(Saved(), Lines({std::string("#RT524A    :     ") + serial, "!END", "!"})));
  }
}

TEST_F(CapacitorSetCFile, SwitchesTheOptionOffAndOnWithItsRowsAndTheSerialNumberThatItHad) {
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(data_->GetCalPageCount(), 4);
  EXPECT_EQ(data_->GetCalPageSerial(3), "");
  SetRows(3, ManyRows(2));
  // Any other text is a serial number, and switches the option on.
  for (const char* serial : {"S9", "", "**", "//", " * ", "/ "}) {
    data_->SetCalPageSerial(3, "*");
    data_->SetCalPageSerial(3, serial);
    EXPECT_EQ(data_->GetCalPageCount(), 4) << serial;
    EXPECT_EQ(data_->GetCalPageSerial(3), serial);
    for (int i = 0; i < 2; ++i) {
      data_->SetCalPageSerial(3, "*");
      EXPECT_EQ(data_->GetCalPageCount(), 3);
      EXPECT_EQ(data_->GetCalPageSerial(3), "*");
    }
    data_->SetCalPageSerial(3, "/");
    EXPECT_EQ(data_->GetCalPageCount(), 4);
    EXPECT_EQ(data_->GetCalPageSerial(3), serial);
    EXPECT_EQ(ShownRows(3), ManyRows(2));
  }
  // The grid of an absent option stays as it is.
  data_->SetCalPageSerial(3, "*");
  MemoryGrid grid(5);
  grid.SetCellText(0, 0, "caption");
  grid.AddRow("left\tover");
  data_->GetCalData(3, grid);
  EXPECT_EQ(grid.RowCount(), 2);
  EXPECT_EQ(grid.CellText(0, 0), "caption");
  EXPECT_EQ(grid.CellText(1, 1), "over");
}

TEST_F(CapacitorSetCFile, MayLackTheOptionWhosePageIsKeptForItsReturn) {
  data_->SetCalPageSerial(3, "S3");
  SetRows(3, ManyRows(1));
  LoadOver(PagesBut({3}));
  EXPECT_EQ(data_->GetCalPageCount(), 3);
  EXPECT_EQ(data_->GetCalPageSerial(3), "*");
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(data_->GetCalPageSerial(3), "S3");
  EXPECT_EQ(ShownRows(3), ManyRows(1));
  // A template may lack it, too.
  WriteNative(tree_.ProgramFolder() / "TempRT520C",
              Lines(Joined({{"#MODEL_NO : RT520C"}, PagesBut({3})})));
  data_ = set_.create();
  EXPECT_EQ(data_->SetInitialDefaultData(), 0);
  EXPECT_EQ(data_->GetCalPageCount(), 3);
}

TEST_F(CapacitorSetAFile, ReadsACapacitanceLessItsLastTwoCharacters) {
  const FieldCases table = {// in the file, in the cell
                            {"1.000012pF", "1.000012pF"}, {"1.0000125pF", "1.000013pF"},
                            {"-0.5pF", "-0.500000pF"},    {"1.5nF", "1.500000pF"},
                            {"1.0E1pF", "10.000000pF"},   {"10", "0.000000pF"},
                            {"10.75", "10.000000pF"},     {"abcpF", "0.000000pF"}};
  for (const auto& [field, text] : table) {
    Load(Page(0, {std::string("*1:") + field + ":0:0:0"}));
    EXPECT_EQ(ShownRows(0)[0][1], text) << field;
  }
}

TEST_F(CapacitorSetCFile, ReadsACapacitanceInTheUnitOfItsPageAndALongUncertaintyAsPpm) {
  const FieldCases texts = {{"1.0000nF", "10.00001nF"},
                            {"1.000nF", "10.000nF"},
                            {"1.00000uF", "10.000005uF"},
                            {"1.0000uF", "10.00001uF"}};
  for (std::int16_t page = 0; page < 4; ++page) {
    const auto index = static_cast<std::size_t>(page);
    Load(Page(index, {"*1:1pF:0:0:0", "*2:10.000005xx:0:0:0"}));
    EXPECT_EQ(data_->GetCalPageCount(), page == 3 ? 4 : 3);
    ASSERT_EQ(FirstColumn(page), (Texts{"1", "2"}));
    EXPECT_EQ(ShownRows(page)[0][1], texts[index].first) << page;
    EXPECT_EQ(ShownRows(page)[1][1], texts[index].second) << page;
  }
  const FieldCases uncertainties = {// in the file, in the cell; up to five characters are per cent
                                    {"0.005", "0.0050 %"},    {"0.0012", "12 ppm"},
                                    {"0.00125", "13 ppm"},    {"12.34", "12.3400 %"},
                                    {"12.345", "123450 ppm"}, {"-0.01", "-0.0100 %"},
                                    {"-0.001", "-10 ppm"}};
  for (const auto& [field, text] : uncertainties) {
    Load(Page(1, {std::string("*1:1.0nF:") + field + ":0:0"}));
    EXPECT_EQ(ShownRows(1)[0][2], text) << field;
  }
}

TEST_F(CapacitorSetAFile, ReadsMissingFieldsAsFormattedZeros) {
  Load(Page(0, {"*1000", "*2000 : 1.5pF", "*3000 : 1.5pF : 0.5", "*4000 : 1.5pF : 0.5 : 0.1"}));
  EXPECT_EQ(ShownRows(0), (Rows{{"1000", "0.000000pF", "0.0000 %", "0.00000", "0.00000"},
                                {"2000", "1.50000pF", "0.000 %", "0.00000", "0.00000"},
                                {"3000", "1.50000pF", "0.500 %", "0.00000", "0.00000"},
                                {"4000", "1.50000pF", "0.500 %", "0.10000", "0.00000"}}));
}

TEST_F(CapacitorSetAFile, ReadsEachRowByTheRulesOfItsPlace) {
  Texts lines;
  for (const std::string& row : ManyNames(9)) {
    lines.push_back("*" + row + ":1.55555pF:0.0012:1.000005:1.000005");
  }
  lines.emplace_back("*10:1.55555pF:0.005:1.000005:1.000005");
  Load(Page(3, lines));
  EXPECT_EQ(ShownRows(3), (Rows{{"1", "1.556pF", "12 ppm", "1.00001", "1.00001"},
                                {"2", "1.556pF", "12 ppm", "1.00001", "1.00001"},
                                {"3", "1.56pF", "12.000 ppm", "1.00001", "1.00001"},
                                {"4", "1.56pF", "12.000 ppm", "1.00001", "1.00001"},
                                {"5", "1.56pF", "12.000 ppm", "1.00001", "1.00001"},
                                {"6", "1.56pF", "12.000 ppm", "1.00001", "1.00001"},
                                {"7", "1.6pF", "12.00 ppm", "1.00001", "1.00001"},
                                {"8", "1.6pF", "12.00 ppm", "1.0000", "1.0000"},
                                {"9", "pF", " ppm", "1.00001", "1.00001"},
                                {"10", "pF", " %", "1.00001", "1.00001"}}));
}

TEST_P(CapacitorSetFile, ReadsADataLineWithoutItsFirstCharacterWhateverItsBlanksAndColons) {
  const std::string nul(1, '\0');
  Load(PageOf(
      0, "x",
      {"*  1 :  2pF :: : 3 : 4 5", "", "  \t! 1\t2pF\t3 4  5 ", nul + "*9", "11:2pF:3:4:5"}));
  const Rows rows = ShownRows(0);
  ASSERT_EQ(rows.size(), 3U);
  for (const Row& row : rows) {
    EXPECT_EQ(row[0], "1");
    EXPECT_EQ(row[1].substr(0, 2), "2.");
    EXPECT_EQ(row[2].substr(0, 2), "3.");
    EXPECT_EQ(row[3], "4.00000");
    EXPECT_EQ(row[4], "5.00000");
  }
}

TEST_P(CapacitorSetFile, KeepsOnlyTheFirstWordOfAPageSerial) {
  const FieldCases table = {// after the name of the page, serial number
                            {"    :     1234A00567", "1234A00567"},
                            {" 1234", "1234"},
                            {" : two words", "two"},
                            {" : a:b", "a"},
                            {" : ", ""},
                            {"", ""},
                            {":", ""}};
  for (const auto& [text, serial] : table) {
    Load({"#" + Name(0) + text, "*1", "!END", "!"});
    EXPECT_EQ(data_->GetCalPageSerial(0), serial) << text;
    EXPECT_EQ(FirstColumn(0), (Texts{"1"})) << text;
  }
}

TEST_P(CapacitorSetFile, KeepsWhatThePageHeldThatItDoesNotName) {
  SetRows(1, {{"11", "a", "b", "c", "d"}, {"12", "a", "b", "c", "d"}});
  data_->SetCalPageSerial(1, "before");
  LoadOver(PagesBut({1}));
  EXPECT_EQ(FirstColumn(1), (Texts{"11", "12"}));
  EXPECT_EQ(data_->GetCalPageSerial(1), "before");
  EXPECT_EQ(FirstColumn(0), (Texts{"7"}));
  ExpectNotice({"no page " + Name(1), "It is empty"});
}

TEST_P(CapacitorSetFile, ReadsAPageWithoutItsEndThroughTheNextPageLineAndSaysSo) {
  Load(Joined({{"#" + Name(0) + " : S0", FullLine("1"), FullLine("2"), "#" + Name(1) + " : S1",
                FullLine("3"), "!END", "!"},
               PagesBut({0, 1})}));
  // The "#" is dropped, the page's name taken for a frequency.
  EXPECT_EQ(FirstColumn(0), (Texts{"1", "2", Name(1), "3"}));
  EXPECT_EQ(data_->GetCalPageSerial(0), "S0");
  EXPECT_EQ(data_->GetCalPageSerial(1), "");
  EXPECT_EQ(FirstColumn(1), (Texts{""}));
  ExpectNotices({{"page " + Name(0), "!END", "one of its rows", "#" + Name(1) + " : S1"},
                 {"page " + Name(0), "too few values", "row 3."},
                 {"no page " + Name(1)}});
}

TEST_P(CapacitorSetFile, ReportsARowWithoutAFrequency) {
  Load(Joined({Page(0, {FullLine("1"), "*", FullLine("3")}), PagesBut({0})}));
  EXPECT_EQ(FirstColumn(0), (Texts{"1"}));
  ExpectNotice({"page " + Name(0), "no frequency in row 2", "not shown"});
}

TEST_P(CapacitorSetFile, MayHave16WordsOnADataLineAndNumbersThatAreNotTooLarge) {
  const std::string words = "*1 2pF 3 4 5 6 7 8 9 10 11 12 13 14 15 16";
  Load(PageOf(0, "x", {words, "*2"}));
  EXPECT_EQ(FirstColumn(0), (Texts{"1", "2"}));
  ExpectLoadError(PageOf(0, "x", {"*0", words + " 17", "*2"}), ErrorKind::Index, 3, "16 words");
  for (const char* line : {"*1:1E999pF", "*1:1pF:1E999", "*1:1pF:0:1E999", "*1:1pF:0:0:1E999"}) {
    SCOPED_TRACE(line);
    ExpectLoadError(PageOf(0, "x", {"*0", line, "*2"}), ErrorKind::Type, 3);
    EXPECT_EQ(FirstColumn(0), (Texts{"0"}));
  }
}

INSTANTIATE_TEST_SUITE_P(Sets, CapacitorSetFile, testing::Values(CapacitorSetA(), CapacitorSetC()),
                         [](const auto& test) { return test.param.code; });

}  // namespace
}  // namespace tarvell::test
