// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/CapacitorSetFile.h"
#include "support/ErrorOf.h"
#include "support/SetStage.h"

namespace tarvell {
namespace {

using test::CapacitorSetAFile;
using test::CapacitorSetCFile;
using test::CapacitorSetFile;
using test::Contains;
using test::FullLine;
using test::Joined;
using test::Row;
using test::Rows;
using test::Texts;

// Reading cells.

struct FieldCase {
  const char* field;
  const char* text;
};

TEST_F(CapacitorSetCFile, ReadsAnUncertaintyOfUpToFiveCharactersAsPerCentAndALongerOneAsPpm) {
  for (const FieldCase& test : std::vector<FieldCase>{{"0.005", "0.0050 %"},
                                                      {"0.0012", "12 ppm"},
                                                      {"0.00125", "13 ppm"},
                                                      {"12.34", "12.3400 %"},
                                                      {"12.345", "123450 ppm"},
                                                      {"-0.01", "-0.0100 %"},
                                                      {"-0.001", "-10 ppm"}}) {
    Load({"#RT526A : x", std::string("*1:1.0nF:") + test.field + ":0:0", "!END", "!"});
    EXPECT_EQ(ShownRows(1)[0][2], test.text) << test.field;
  }
}

TEST_F(CapacitorSetAFile, ReadsACapacitanceLessItsLastTwoCharacters) {
  for (const FieldCase& test : std::vector<FieldCase>{{"1.000012pF", "1.000012pF"},
                                                      {"1.0000125pF", "1.000013pF"},
                                                      {"-0.5pF", "-0.500000pF"},
                                                      {"1.5nF", "1.500000pF"},
                                                      {"1.0E1pF", "10.000000pF"},
                                                      {"10", "0.000000pF"},
                                                      {"10.75", "10.000000pF"},
                                                      {"abcpF", "0.000000pF"}}) {
    Load({"#RT521A : x", std::string("*1:") + test.field + ":0:0:0", "!END", "!"});
    EXPECT_EQ(ShownRows(0)[0][1], test.text) << test.field;
  }
}

TEST_F(CapacitorSetCFile, ReadsACapacitanceInTheUnitOfItsPage) {
  const std::array<std::array<const char*, 2>, 4> texts = {{{"1.0000nF", "10.00001nF"},
                                                            {"1.000nF", "10.000nF"},
                                                            {"1.00000uF", "10.000005uF"},
                                                            {"1.0000uF", "10.00001uF"}}};
  for (std::size_t page = 0; page < 4; ++page) {
    Load({"#" + set_.pages.at(page) + " : x", "*1:1pF:0:0:0", "*2:10.000005xx:0:0:0", "!END", "!"});
    if (page == 3) {
      ASSERT_EQ(data_->GetCalPageCount(), 4);
    }
    const Rows rows = ShownRows(static_cast<std::int16_t>(page));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0][1], texts.at(page)[0]) << page;
    EXPECT_EQ(rows[1][1], texts.at(page)[1]) << page;
  }
}

TEST_F(CapacitorSetAFile, ReadsMissingFieldsAsFormattedZeros) {
  Load({"#RT521A : x", "*1000", "*2000 : 1.5pF", "*3000 : 1.5pF : 0.5", "*4000 : 1.5pF : 0.5 : 0.1",
        "!END", "!"});
  EXPECT_EQ(ShownRows(0), (Rows{{"1000", "0.000000pF", "0.0000 %", "0.00000", "0.00000"},
                                {"2000", "1.50000pF", "0.000 %", "0.00000", "0.00000"},
                                {"3000", "1.50000pF", "0.500 %", "0.00000", "0.00000"},
                                {"4000", "1.50000pF", "0.500 %", "0.10000", "0.00000"}}));
}

TEST_F(CapacitorSetAFile, ReadsEachRowByTheRulesOfItsPlace) {
  Load({"#RT524A : x", "*1:1.55555pF:0.0012:1.000005:1.000005",
        "*2:1.55555pF:0.0012:1.000005:1.000005", "*3:1.55555pF:0.0012:1.000005:1.000005",
        "*4:1.55555pF:0.0012:1.000005:1.000005", "*5:1.55555pF:0.0012:1.000005:1.000005",
        "*6:1.55555pF:0.0012:1.000005:1.000005", "*7:1.55555pF:0.0012:1.000005:1.000005",
        "*8:1.55555pF:0.0012:1.000005:1.000005", "*9:1.55555pF:0.0012:1.000005:1.000005",
        "*10:1.55555pF:0.005:1.000005:1.000005", "!END", "!"});
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

TEST_P(CapacitorSetFile, ReadsADataLineWhateverItsBlanksAndColons) {
  Load(PageOf(0, "x", {"*  1 :  2pF :: : 3 : 4 5", "  \t* 1\t2pF\t3 4  5 ", "*1:2pF:3:4:5"}));
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

TEST_P(CapacitorSetFile, DropsTheFirstCharacterOfALineInAPageWhateverItIs) {
  Load(PageOf(0, "x", {"*1", "!2", "x3", "44"}));
  EXPECT_EQ(FirstColumn(0), (Texts{"1", "2", "3", "4"}));
}

TEST_P(CapacitorSetFile, PassesOverBlankLinesInAPage) {
  Load(PageOf(0, "x", {"", "*1", "   ", "*2", ""}));
  EXPECT_EQ(FirstColumn(0), (Texts{"1", "2"}));
}

TEST_P(CapacitorSetFile, CutsALineInAPageAtItsFirstNul) {
  const std::string nul(1, '\0');
  Load(PageOf(0, "x", {"*1 2pF" + nul + " 3 4", nul + "*2", "*3"}));
  const Rows rows = ShownRows(0);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0][0], "1");
  EXPECT_EQ(rows[0][2], "0.0000 %");
  EXPECT_EQ(rows[1][0], "3");
}

// Pages.

TEST_P(CapacitorSetFile, KeepsOnlyTheFirstWordOfAPageSerial) {
  const std::vector<std::pair<const char*, const char*>> table = {
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
  Load(Joined(
      {{"#" + Name(0) + " : S0", FullLine("1"), "*", FullLine("3"), "!END", "!"}, PagesBut({0})}));
  EXPECT_EQ(FirstColumn(0), (Texts{"1"}));
  ExpectNotice({"page " + Name(0), "no frequency in row 2", "not shown"});
}

// The largest page and the longest line.

TEST_P(CapacitorSetFile, MayHave16WordsOnADataLineButNot17) {
  Load(PageOf(0, "x", {"*1 2pF 3 4 5 6 7 8 9 10 11 12 13 14 15 16", "*2"}));
  EXPECT_EQ(FirstColumn(0), (Texts{"1", "2"}));
  const Error error =
      LoadError(PageOf(0, "x", {"*0", "*1 2pF 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17", "*2"}));
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 3);
  EXPECT_TRUE(Contains(error.Text(), "16 words")) << error.Text();
  EXPECT_EQ(FirstColumn(0), (Texts{"0"}));
}

TEST_P(CapacitorSetFile, WithANumberTooLargeIsATypeErrorOfItsLine) {
  for (const char* line : {"*1:1E999pF", "*1:1pF:1E999", "*1:1pF:0:1E999", "*1:1pF:0:0:1E999"}) {
    const Error error = LoadError(PageOf(0, "x", {"*0", line, "*2"}));
    EXPECT_EQ(error.Kind(), ErrorKind::Type) << line;
    EXPECT_EQ(error.Path(), kFile) << line;
    EXPECT_EQ(error.Line(), 3) << line;
    EXPECT_EQ(FirstColumn(0), (Texts{"0"})) << line;
  }
}

}  // namespace
}  // namespace tarvell
