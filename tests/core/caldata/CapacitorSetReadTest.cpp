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

TEST_F(CapacitorSetAFile, ReadsAnUncertaintyOfUpToFiveCharactersAsPerCentAndALongerOneAsPpm) {
  // Row 1 has whole ppm, row 2 three decimals, row 6 two.
  const std::vector<std::array<const char*, 4>> table = {
      {"0.005", "0.0050 %", "0.005 %", "0.01 %"},
      {"0.0012", "12 ppm", "12.000 ppm", "12.00 ppm"},
      {"0.0050", "50 ppm", "50.000 ppm", "50.00 ppm"},
      {"0.00125", "13 ppm", "12.500 ppm", "12.50 ppm"},
      {"0.0000125", "0 ppm", "0.125 ppm", "0.13 ppm"},
      {"1.234", "1.2340 %", "1.234 %", "1.23 %"},
      {"12.34", "12.3400 %", "12.340 %", "12.34 %"},
      {"12.345", "123450 ppm", "123450.000 ppm", "123450.00 ppm"},
      {"100.00", "1000000 ppm", "1000000.000 ppm", "1000000.00 ppm"},
      {"12", "12.0000 %", "12.000 %", "12.00 %"},
      {"0", "0.0000 %", "0.000 %", "0.00 %"},
      {"0.0000", "0 ppm", "0.000 ppm", "0.00 ppm"},
      {"-0.01", "-0.0100 %", "-0.010 %", "-0.01 %"},
      {"-0.001", "-10 ppm", "-10.000 ppm", "-10.00 ppm"},
      {"0.05%", "0.0500 %", "0.050 %", "0.05 %"},
      {"0.005%", "50 ppm", "50.000 ppm", "50.00 ppm"},
      {"12ppm", "12.0000 %", "12.000 %", "12.00 %"},
      {"abc", "0.0000 %", "0.000 %", "0.00 %"},
      {"abcdef", "0 ppm", "0.000 ppm", "0.00 ppm"},
      {"\xB5\xB5\xB5\xB5\xB5", "0.0000 %", "0.000 %", "0.00 %"}};
  for (const std::array<const char*, 4>& test : table) {
    const std::string line = std::string("*1:1.0pF:") + test[0] + ":0:0";
    Load({"#RT521A : x", line, line, line, line, line, line, "!END", "!"});
    const Rows rows = ShownRows(0);
    ASSERT_EQ(rows.size(), 6U);
    EXPECT_EQ(rows[0][2], test[1]) << test[0];
    EXPECT_EQ(rows[1][2], test[2]) << test[0];
    EXPECT_EQ(rows[5][2], test[3]) << test[0];
  }
}

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

TEST_F(CapacitorSetCFile, ReadsMissingFieldsAsFormattedZeros) {
  Load({"#RT527A : x", "*1000", "*2000 : 1.5uF : 0.5", "!END", "!"});
  EXPECT_EQ(ShownRows(2), (Rows{{"1000", "0.00000uF", "0.0000 %", "0.00000", "0.00000"},
                                {"2000", "1.50000uF", "0.5000 %", "0.00000", "0.00000"}}));
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

TEST_P(CapacitorSetFile, KeepsAFrequencyExactlyAsItWasRead) {
  const Texts frequencies = {"1.0E3", "0100", "1kHz", "-5", "12345678901234567890"};
  Texts lines;
  for (const std::string& frequency : frequencies) {
    lines.push_back("*" + frequency);
  }
  Load(PageOf(0, "x", lines));
  EXPECT_EQ(FirstColumn(0), frequencies);
  EXPECT_TRUE(Contains(Saved(), "\r\n*        1.0E3 : "));
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

TEST_P(CapacitorSetFile, ReadsALineThatIsAStarAloneAsARowThatEndsThePage) {
  Load(PageOf(0, "x", {"*1", "*", "*3"}));
  EXPECT_EQ(FirstColumn(0), (Texts{"1"}));
}

TEST_P(CapacitorSetFile, ReadsNoMoreOfALineThanAComma) {
  Load(PageOf(0, "x", {"*1,*2", "*3"}));
  EXPECT_EQ(FirstColumn(0), (Texts{"1", "2", "3"}));
}

// Pages.

TEST_P(CapacitorSetFile, ReadsPageLinesAndEndsInAnyCase) {
  for (const char* end : {"!END", "!End", "!end", "!eNd"}) {
    std::string lower = Name(1);
    lower[0] = 'r';
    lower[1] = 't';
    lower[5] = 'a';
    Load(Joined({{"#" + lower + " : s1", "*1", end, "*2", "!"}}));
    EXPECT_EQ(FirstColumn(1), (Texts{"1"})) << end;
    EXPECT_EQ(data_->GetCalPageSerial(1), "s1") << end;
  }
}

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

TEST_P(CapacitorSetFile, TellsAPageThatStandsThreeTimesOnce) {
  Load(Joined({PageOf(0, "a", {FullLine("1")}), PageOf(0, "b", {FullLine("2")}),
               PageOf(0, "c", {FullLine("3")}), PagesBut({0})}));
  EXPECT_EQ(FirstColumn(0), (Texts{"3"}));
  EXPECT_EQ(data_->GetCalPageSerial(0), "c");
  ExpectNotice({"page " + Name(0), "more than once"});
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

TEST_P(CapacitorSetFile, HidesWhatStandsBehindAnExclamationMarkInAPageWithoutItsEnd) {
  Load(Joined(
      {{"#" + Name(0) + " : S0", FullLine("1"), "!", "#" + Name(1) + " : S1", "*3", "!END", "!"},
       PagesBut({0, 1})}));
  EXPECT_EQ(FirstColumn(0), (Texts{"1"}));
  ExpectNotices({{"page " + Name(0), "no data line", ": !"},
                 {"page " + Name(0), "!END", "#" + Name(1) + " : S1"},
                 {"page " + Name(0), "no frequency in row 2", "not shown"},
                 {"no page " + Name(1)}});
}

TEST_P(CapacitorSetFile, TellsOfARowWithoutAFrequency) {
  Load(Joined(
      {{"#" + Name(0) + " : S0", FullLine("1"), "*", FullLine("3"), "!END", "!"}, PagesBut({0})}));
  EXPECT_EQ(FirstColumn(0), (Texts{"1"}));
  ExpectNotice({"page " + Name(0), "no frequency in row 2", "not shown"});
}

TEST_P(CapacitorSetFile, ReadsNoRowOfAPageWhoseOnlyLineIsTheLastOfTheFile) {
  Load(Joined({PagesBut({2}), {"#" + Name(2) + " : S2", "*1"}}));
  EXPECT_EQ(FirstColumn(2), (Texts{""}));
  EXPECT_EQ(data_->GetCalPageSerial(2), "S2");
  ExpectNotice({"page " + Name(2), "!END"});
}

TEST_P(CapacitorSetFile, DoesNotReadAPageLineThatIsTheLastLineOfTheFile) {
  Load(Joined({PagesBut({2}), {"#" + Name(2) + " : S2"}}));
  EXPECT_EQ(data_->GetCalPageSerial(2), "");
  ExpectNotice({"no page " + Name(2)});
}

TEST_P(CapacitorSetFile, OfTheOtherSetSaysThatItsPagesAreMissing) {
  const test::SetModel& other =
      set_.code == "RT520A" ? test::CapacitorSetC() : test::CapacitorSetA();
  Texts lines = {"#MODEL_NO : " + other.code};
  for (const std::string& page : other.pages) {
    lines = Joined({lines, {"#" + page + " : x", "*1", "!END", "!"}});
  }
  Load(lines);
  std::vector<Texts> notices = {
      {"no page " + Name(0)}, {"no page " + Name(1)}, {"no page " + Name(2)}};
  if (set_.code == "RT520A") {
    notices.push_back({"no page " + Name(3)});
  }
  notices.push_back({"\"" + other.code + "\""});
  ExpectNotices(notices);
  EXPECT_EQ(FirstColumn(0), (Texts{""}));
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

TEST_P(CapacitorSetFile, MayHave21WordsOnAHeaderLineButNot22) {
  const std::string words = " 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21";
  Load({"#COMMENT" + words, "!"});
  EXPECT_EQ(data_->Comment(), "2");
  const Error error = LoadError({"!", "#COMMENT" + words + " 22", "!"});
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Line(), 2);
}

TEST_P(CapacitorSetFile, PassesOverADataLineOutsideAPageHoweverManyWordsItHas) {
  const std::string line = "*1:2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22";
  Load(Joined({{line}, PageOf(0, "x", {"*1"}), {line, "!"}}));
  EXPECT_EQ(FirstColumn(0), Texts{"1"});
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
