// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/ResistorSetFile.h"
#include "support/ErrorOf.h"
#include "support/SetStage.h"

namespace tarvell {
namespace {

using test::Contains;
using test::FullLine;
using test::Joined;
using test::Lines;
using test::ResistorSetFile;
using test::Row;
using test::Rows;
using test::Texts;

// Sections.

struct TitleCase {
  Texts lines;  ///< title and the lines that are skipped after it
  std::int16_t page;
};

TEST_F(ResistorSetFile, FindsTheSectionOfATitleByItsFirstWords) {
  for (const TitleCase& test : std::vector<TitleCase>{{{"!DC Resistance", "!"}, 0},
                                                      {{"!dc", "!"}, 0},
                                                      {{"!  Dc\tvalues", "!"}, 0},
                                                      {{"!Series Inductance", "!"}, 1},
                                                      {{"! SERIES", "!"}, 1},
                                                      {{"!High", "! 10 ohm", "!"}, 2},
                                                      {{"!HIGH Freqency", "! anything", "!"}, 2},
                                                      {{"! 100 ohm", "!"}, 3},
                                                      {{"!100 ohm (MODEL QZ RT736A)", "!"}, 3},
                                                      {{"! 100 kohm", "!"}, 6},
                                                      {{"!100   kohm x", "!"}, 6},
                                                      {{"! 1 kohm", "!"}, 4},
                                                      {{"! 1", "!"}, 4},
                                                      {{"!1 Mohm", "!"}, 4},
                                                      {{"! 10 kohm", "!"}, 5},
                                                      {{"! 10", "!"}, 5},
                                                      {{"!10 Mohm", "!"}, 5},
                                                      {{"! 10 OHM", "!"}, 5}}) {
    Load(Joined({test.lines, {"*a", "*b", "!END"}}));
    ExpectRowsOnlyOnPage(test.page, {"a", "b"}, test.lines[0]);
  }
}

TEST_F(ResistorSetFile, PassesOverEveryOtherTitle) {
  for (const char* title : {"!",
                            "!DCResistance",
                            "!Parallel Capacitance",
                            "!Freqency",
                            "!Frequency : Resistance",
                            "!Model     : Nominal Value",
                            "!END",
                            "!End DC",
                            "! 100",
                            "! 100 Mohm",
                            "! 100 OHM",
                            "! 100 ohms",
                            "! 100ohm",
                            "! 10ohm",
                            "! 1kohm",
                            "! 1000 ohm",
                            "! 10 ohm",
                            "! 10 ohm (MODEL QZ RT735A)",
                            "!10   ohm",
                            "DC Resistance",
                            "#DC Resistance",
                            "#100 ohm"}) {
    Load({title, "!", "*a", "*b", "!END", "!"});
    ExpectRowsOnlyOnPage(kPages, {}, title);
  }
}

TEST_F(ResistorSetFile, KeepsThePageWhoseTitleIsMissingOrDamagedAndSaysSo) {
  const std::vector<std::pair<std::size_t, const char*>> damaged = {
      {0, "!D"},     {0, ""},         {1, "!Ser"},    {1, "!Parallel"}, {2, "!Hi"},
      {2, "!"},      {3, "! 100"},    {3, "! 100 o"}, {4, "!"},         {4, "! kohm"},
      {5, "! kohm"}, {5, "! 10 ohm"}, {6, "! 100 k"}, {6, "! 100"}};
  for (const auto& [page, title] : damaged) {
    data_ = set_.create();
    const auto shown = static_cast<std::int16_t>(page);
    SetRows(shown, {{"before", "b", "c", "d", "e"}});
    Texts section = Page(page, {"*lost"});
    section[1] = title;
    LoadOver(Joined({PagesBut({page}), section}));
    EXPECT_EQ(FirstColumn(shown), (Texts{"before"})) << title;
    for (std::int16_t other = 0; other < kPages; ++other) {
      EXPECT_TRUE(other == shown || FirstColumn(other) == Texts{"7"}) << title << ", " << other;
    }
    ExpectNotices({{"no section \"" + set_.pages[page] + "\"", "title", "It is empty"}});
  }
}

TEST_F(ResistorSetFile, TakesADataLineInThePlaceOfATitleLineForOneAndSaysSo) {
  for (std::size_t page = 0; page < set_.pages.size(); ++page) {
    Texts titles = set_.openings[page];
    titles.pop_back();
    Load(Joined({PagesBut({page}), titles, {"*a", FullLine("b"), "!END"}}));
    EXPECT_EQ(FirstColumn(static_cast<std::int16_t>(page)), (Texts{"b"})) << page;
    ExpectNotices({{"\"" + set_.pages[page] + "\"", "title", "not read as one of its rows", "*a"}});
  }
}

TEST_F(ResistorSetFile, ReadsASectionWithoutItsEndThroughTheNextOneAndSaysSo) {
  Load(Joined({set_.openings[3],
               {"*a : 100.01 ohm : 0.10 % : 0.01 ohm : 0.10 ohm"},
               set_.openings[4],
               {"*b : 1 kohm : 0.10 % : 0 uS : 1 uS", "!END"},
               PagesBut({3, 4})}));
  // The "!" is dropped; "Uncertainty" less its last character is no number, and long enough
  // for ppm.
  EXPECT_EQ(ShownRows(3),
            (Rows{{"a", "100.01 ohm", "0.10 %", "0.01 ohm", "0.10 ohm"},
                  {"1 kohm (MODEL QZ RT737A)", "", "", "", ""},
                  {"Frequency", "Resistance", "0.00 ppm", "Susceptance", "Uncertainty"},
                  {"b", "1 kohm", "0.10 %", "0 uS", "1 uS"}}));
  EXPECT_EQ(FirstColumn(4), Texts());
  ExpectNotices({{"\"" + set_.pages[3] + "\"", "!END", "one of its rows", set_.openings[4][1]},
                 {"\"" + set_.pages[3] + "\"", "!END", "one of its rows", set_.openings[4][2]},
                 {"\"" + set_.pages[3] + "\"", "too few values", "row 2."},
                 {"no section \"" + set_.pages[4] + "\""}});
}

TEST_F(ResistorSetFile, KeepsTheCellsOfARowThatItsLineDoesNotFill) {
  SetRows(3, {{"a", "b", "c", "d", "e"}, {"f", "g", "h", "i", "j"}});
  LoadOver(Page(3, {"*x : y"}));
  EXPECT_EQ(ShownRows(3), (Rows{{"x", "y", "c", "d", "e"}, {"f", "g", "h", "i", "j"}}));
}

// Data lines.

TEST_F(ResistorSetFile, StoresFieldsTrimmedAndOtherwiseUnchanged) {
  Load(Page(1, {"*  RT 734A :  Ls/5  nH : x", "*a:b:c", "   * d :e:  f  ", "xg : h : i"}));
  EXPECT_EQ(ShownRows(1), (Rows{{"RT 734A", "Ls/5  nH", "x", "", ""},
                                {"a", "b", "c", "", ""},
                                {"d", "e", "f", "", ""},
                                {"g", "h", "i", "", ""}}));
}

TEST_F(ResistorSetFile, ReadsALineUpToItsFirstEmptyField) {
  Load(Page(1, {"*a", "*b : c", "*d :: e", "*f : : g", "*h : i : : j"}));
  EXPECT_EQ(ShownRows(1), (Rows{{"a", "", "", "", ""},
                                {"b", "c", "", "", ""},
                                {"d", "", "", "", ""},
                                {"f", "", "", "", ""},
                                {"h", "i", "", "", ""}}));
}

TEST_F(ResistorSetFile, CountsNoLineOnWhichNothingIsLeft) {
  const std::string nul(1, '\0');
  Load(Page(1, {"", "*a", "*", "   ", "!", "x", nul + "*y", "*" + nul + "z", "*b"}));
  EXPECT_EQ(FirstColumn(1), (Texts{"a", "b"}));
}

TEST_F(ResistorSetFile, CutsALineAtItsFirstNulAndTakesLineEndsInQuotesForBlanks) {
  const std::string nul(1, '\0');
  Load(Page(1, {"*a : b" + nul + " : c", "\"*d\r\ne : f\ng, h\""}));
  EXPECT_EQ(ShownRows(1), (Rows{{"a", "b", "", "", ""}, {"d  e", "f g, h", "", "", ""}}));
}

TEST_F(ResistorSetFile, TakesATabInARowForABlank) {
  Load(Page(1, {"*\tRT\t731A : Ls/1\tnH\t: 1 nH", "*b : c : \t : d"}));
  EXPECT_EQ(ShownRows(1), (Rows{{"RT 731A", "Ls/1 nH", "1 nH", "", ""}, {"b", "c", "", "", ""}}));
  EXPECT_TRUE(Contains(Saved(), "\r\n*  RT 731A :          Ls/1 nH :    1 nH\r\n"));
}

TEST_F(ResistorSetFile, MayHaveSixColumnsOnALineButNotSeven) {
  Load(Joined({Page(3, {"*1 : 2 : 0.1 % : 4 : 5 : 6"}), PagesBut({3})}));
  EXPECT_EQ(ShownRows(3), (Rows{{"1", "2", "0.10 %", "4", "5"}}));
  EXPECT_TRUE(data_->LoadNotices().empty());
  // The sixth is neither shown nor written.
  EXPECT_TRUE(Contains(
      Saved(),
      Lines({"*        1 :            2 :      0.10 % :              4 :           5", "!END"})));
  const Error error = LoadError(
      Joined({{"!"}, Page(3, {"*a", "*1 : 2 : 0.1 % : 4 : 5 : 6 : 7", "*b"}), PagesBut({3})}));
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 6);
  EXPECT_TRUE(Contains(error.Text(), "6 columns")) << error.Text();
  EXPECT_EQ(FirstColumn(3)[0], "a");
}

struct UncertaintyCase {
  const char* field;
  std::array<const char*, 3> texts;
};

// Less than six characters, the per cent sign left out, are per cent, all else is ppm.
TEST_F(ResistorSetFile, TakesALongUncertaintyForPpmAndAShortOneForPerCent) {
  const std::vector<UncertaintyCase> cases = {
      // as many decimals as needed up to two; two; one
      {"0.1 %", {"0.1 %", "0.10 %", "0.1 %"}},
      {"0.125%", {"0.13 %", "0.13 %", "0.1 %"}},
      {"12.35 %", {"12.35 %", "12.35 %", "12.4 %"}},
      {"0.00123 %", {"12.3 ppm", "12.30 ppm", "12.3 ppm"}},
      {"0.0012 %", {"12 ppm", "12.00 ppm", "12.0 ppm"}},
      {"0.00000 %", {"0 ppm", "0.00 ppm", "0.0 ppm"}},
      {"100.25 %", {"1002500 ppm", "1002500.00 ppm", "1002500.0 ppm"}},
      {"-0.5 %", {"-0.5 %", "-0.50 %", "-0.5 %"}},
      // The last character goes, whatever it is.
      {"0.125", {"0.12 %", "0.12 %", "0.1 %"}},
      {"0.001234", {"12.3 ppm", "12.30 ppm", "12.3 ppm"}},
      {"%", {"0 %", "0.00 %", "0.0 %"}},
      {"abc", {"0 %", "0.00 %", "0.0 %"}},
      {"abcdefg", {"0 ppm", "0.00 ppm", "0.0 ppm"}}};
  for (const UncertaintyCase& test : cases) {
    const std::string field(test.field);
    Load(Joined(
        {Page(0, {"*a : b : c : " + field}),
         Page(2, {"*1 : b : " + field + " : d", "*2", "*3", "*4", "*5 : b : " + field + " : d"})}));
    EXPECT_EQ(ShownRows(0)[0][3], test.texts[0]) << field;
    EXPECT_EQ(ShownRows(2)[0][2], test.texts[1]) << field;
    EXPECT_EQ(ShownRows(2)[4][2], test.texts[2]) << field;
    EXPECT_EQ(ShownRows(2)[4][3], "d") << field;
  }
}

TEST_F(ResistorSetFile, WithANumberTooLargeIsATypeErrorOfItsLine) {
  const Error error = LoadError(Page(3, {"*a", "*1 : 2 : 1E999 % : 4"}));
  EXPECT_EQ(error.Kind(), ErrorKind::Type);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 5);
}

TEST_F(ResistorSetFile, MayHaveAnyNumberOfWordsInARemarkOrATitle) {
  const std::string words =
      " 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27 28 29 30 31 32";
  Load({"!Note" + words, "!DC" + words, "!", "*a", "!END"});
  EXPECT_EQ(FirstColumn(0), (Texts{"a"}));
}

TEST_F(ResistorSetFile, PassesOverADataLineOutsideASectionHoweverManyWordsItHas) {
  Load({"*1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22", "!DC", "!", "*a", "!END"});
  EXPECT_EQ(FirstColumn(0), (Texts{"a"}));
}

}  // namespace
}  // namespace tarvell
