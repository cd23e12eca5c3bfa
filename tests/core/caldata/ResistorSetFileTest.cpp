// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "support/ErrorOf.h"
#include "support/SetStage.h"

/// The file of the resistor set, and what the grid shows of it.
namespace tarvell::test {
namespace {

/// The resistor set in its file.
class ResistorSetFile : public testing::Test, public SetStage {
 protected:
  static constexpr std::int16_t kPages = 7;

  ResistorSetFile() : SetStage(ResistorSet()) {}

  /// Only that page holds rows, whose first cells are these.
  void ExpectRowsOnlyOnPage(std::int16_t page, const Texts& firstColumn,
                            const std::string& what) const {
    for (std::int16_t other = 0; other < kPages; ++other) {
      EXPECT_EQ(FirstColumn(other), other == page ? firstColumn : Texts()) << what << ", " << other;
    }
  }
};

/// A text, and what becomes of it.
using FieldCases = std::vector<std::pair<const char*, const char*>>;

// clang-format off
const Texts kWholePages = {
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

TEST_F(ResistorSetFile, IsWrittenAndReadByteForByteWithBothUnits) {
  const std::string whole = Lines(Joined({WholeHeader(), kWholePages}));
  SetHeader();
  for (std::int16_t page = 0; page < kPages; ++page) {
    SetRows(page, kWholeTable.at(static_cast<std::size_t>(page)));
  }
  EXPECT_EQ(Saved(), whole);
  LoadAgain();
  for (std::int16_t page = 0; page < kPages; ++page) {
    EXPECT_EQ(ShownRows(page), kWholeTable.at(static_cast<std::size_t>(page))) << page;
  }
  EXPECT_TRUE(data_->LoadNotices().empty());
  EXPECT_EQ(Saved(), whole);
}

TEST_F(ResistorSetFile, AlignsTextsToTheRightOfTheirFields) {
  EXPECT_EQ(SavedLineOf(0, {"a", "b", "c", "0 %"}),
            "*        a :             b :                c :         0 % ");
  EXPECT_EQ(SavedLineOf(0, {"123456789", "1234567890123", "1234567890123456", "123456789 %"}),
            "*123456789 : 1234567890123 : 1234567890123456 : 123456789 % ");
  EXPECT_EQ(SavedLineOf(1, {"a", "b", "c"}), "*        a :                b :       c");
  EXPECT_EQ(SavedLineOf(1, {"123456789", "1234567890123456", "1234567"}),
            "*123456789 : 1234567890123456 : 1234567");
  for (std::int16_t page = 2; page < kPages; ++page) {
    // The resistance has one more place where it is in kohm.
    const std::string more = page < 4 ? "" : " ";
    EXPECT_EQ(SavedLineOf(page, {"a", "b", "0 %", "d", "e"}),
              "*        a : " + more + "           b :         0 % :              d :           e");
    const std::string resistance = page < 4 ? "123456789012" : "1234567890123";
    EXPECT_EQ(SavedLineOf(
                  page, {"123456789", resistance, "123456789 %", "12345678901234", "12345678901"}),
              "*123456789 : " + resistance + " : 123456789 % : 12345678901234 : 12345678901");
  }
}

TEST_F(ResistorSetFile, WritesARelativeUncertaintyInPerCent) {
  const FieldCases table = {
      // stored, written in a field of nine characters
      {"0.10 %", "     0.10"},    {"-0.5 %", "     -0.5"},     {"5%", "         "},
      {"12.34 ppm", "  0.00123"}, {"12.35 ppm", "  0.00124"},  {"0.05 ppm", "  0.00001"},
      {"0.04 ppm", "  0.00000"},  {"-12.35 ppm", " -0.00124"}, {"100000 ppm", " 10.00000"},
      {"1", "  0.00010"},         {"12.35 PPM", "  0.00124"},  {"abc", "  0.00000"}};
  for (const auto& [stored, field] : table) {
    for (std::int16_t page = 2; page < kPages; ++page) {
      EXPECT_EQ(SavedLineOf(page, {"a", "b", stored, "d", "e"}),
                (page < 4 ? "*        a :            b : " : "*        a :             b : ") +
                    std::string(field) + " % :              d :           e")
          << stored;
    }
  }
}

TEST_F(ResistorSetFile, WritesAnUncertaintyAtDirectCurrentWithThePerCentSignInsideOrAfterTheField) {
  const FieldCases table = {
      {"0.1 %", "      0.1 % "},   {"100.25 %", "   100.25 % "}, {"5%", "          % "},
      {"12.5 ppm", "0.00125 %"},   {"12.54 ppm", "0.00125 %"},   {"12.55 ppm", "0.00126 %"},
      {"-12.5 ppm", "-0.00125 %"}, {"100000 ppm", "10.00000 %"}, {"1", "0.00010 %"},
      {"", "0.00000 %"},           {"abc", "0.00000 %"}};
  for (const auto& [stored, field] : table) {
    EXPECT_EQ(SavedLineOf(0, {"a", "b", "c", stored, "e"}),
              std::string("*        a :             b :                c : ") + field)
        << stored;
  }
}

TEST_F(ResistorSetFile, IsShownWithTheCaptionsOfEachPageAndNoOthers) {
  const Texts inOhm = {"Frequency[MHz]", "Resistance[ohm]", "Unc.  [%]", "Reactance [ohm]",
                       "Unc. (%)"};
  const Texts inKohm = {"Frequency[MHz]", "Resistance[kohm]", "Unc.  [%]", "Susceptance [uS]",
                        "Unc. (uS)"};
  const std::vector<Texts> captionsOfPages = {
      {"Model", "Nominal Value", "Calibrated Value", "Unc. (%)", ""},
      {"Model", "Calibrated Value", "Unc. (%)", "", ""},
      inOhm,
      inOhm,
      inKohm,
      inKohm,
      inKohm,
      {"", "", "", "", ""}};
  for (std::int16_t page = 0; page < 8; ++page) {
    MemoryGrid grid(5);
    grid.AddRow("left\tover");
    Texts captions;
    for (std::int16_t column = 0; column < 5; ++column) {
      grid.SetCellText(0, column, "before");
    }
    data_->GetCalData(page, grid);
    for (std::int16_t column = 0; column < 5; ++column) {
      captions.push_back(grid.CellText(0, column));
    }
    EXPECT_EQ(captions, captionsOfPages.at(static_cast<std::size_t>(page))) << page;
  }
}

TEST_F(ResistorSetFile, TakesGridsOfUpToSixColumnsAndWritesNoSerialNumberOfAPage) {
  SetRows(2, {{"a", "b", "c"}}, 3);
  EXPECT_EQ(ShownRows(2), (Rows{{"a", "b", "c", "", ""}}));
  SetRows(2, {{"a", "b", "c", "d", "e", "f"}}, 6);
  EXPECT_EQ(ShownRows(2), (Rows{{"a", "b", "c", "d", "e"}}));
  EXPECT_EQ(ErrorOf([&] { SetRows(2, {{"g"}}, 7); }).Kind(), ErrorKind::Index);
  data_->SetCalPageSerial(3, "serial");
  EXPECT_FALSE(Contains(Saved(), "serial"));
  LoadOver(PagesBut({}));
  EXPECT_EQ(data_->GetCalPageSerial(3), "serial");
  data_->SetCalPageSerial(3, "*");
  EXPECT_EQ(data_->GetCalPageSerial(3), "*");
  EXPECT_EQ(data_->GetCalPageCount(), kPages);
}

TEST_F(ResistorSetFile, FindsTheSectionOfATitleByItsFirstWords) {
  const std::vector<Texts> titlesOfPages = {{"!DC Resistance", "!dc", "!  Dc\tvalues"},
                                            {"!Series Inductance", "! SERIES"},
                                            {"!High", "!HIGH Freqency"},
                                            {"! 100 ohm", "!100 ohm (MODEL QZ RT736A)"},
                                            {"! 1 kohm", "! 1", "!1 Mohm"},
                                            {"! 10 kohm", "! 10", "!10 Mohm", "! 10 OHM"},
                                            {"! 100 kohm", "!100   kohm x"}};
  for (std::int16_t page = 0; page < kPages; ++page) {
    for (const std::string& title : titlesOfPages.at(static_cast<std::size_t>(page))) {
      // After the title of the high frequencies comes that of its first page.
      const Texts rest = page == 2 ? Texts{"! 10 ohm", "!"} : Texts{"!"};
      Load(Joined({{title}, rest, {"*a", "*b", "!END"}}));
      ExpectRowsOnlyOnPage(page, {"a", "b"}, title);
    }
  }
}

TEST_F(ResistorSetFile, PassesOverEveryOtherTitle) {
  const Texts titles = {"!",          "!DCResistance", "!Parallel Capacitance",
                        "!END",       "!End DC",       "! 100",
                        "! 100 Mohm", "! 100 OHM",     "! 100 ohms",
                        "! 100ohm",   "! 10ohm",       "! 1kohm",
                        "! 1000 ohm", "! 10 ohm",      "DC Resistance",
                        "#100 ohm"};
  for (const std::string& title : titles) {
    Load({title, "!", "*a", "*b", "!END", "!"});
    ExpectRowsOnlyOnPage(kPages, {}, title);
  }
}

TEST_F(ResistorSetFile, KeepsThePageWhoseTitleIsMissingOrDamagedAndSaysSo) {
  const std::vector<std::pair<std::size_t, const char*>> damaged = {
      {0, "!D"}, {1, "!Ser"},   {2, "!"},        {3, "! 100 o"},
      {4, "!"},  {5, "! kohm"}, {5, "! 10 ohm"}, {6, "! 100"}};
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
               {FullLine("a")},
               set_.openings[4],
               {FullLine("b"), "!END"},
               PagesBut({3, 4})}));
  // The "!" is dropped.
  EXPECT_EQ(FirstColumn(3), (Texts{"a", "1 kohm (MODEL QZ RT737A)", "Frequency", "b"}));
  EXPECT_EQ(FirstColumn(4), Texts());
  ExpectNotices({{"\"" + set_.pages[3] + "\"", "!END", "one of its rows", set_.openings[4][1]},
                 {"\"" + set_.pages[3] + "\"", "!END", "one of its rows", set_.openings[4][2]},
                 {"\"" + set_.pages[3] + "\"", "too few values", "row 2."},
                 {"no section \"" + set_.pages[4] + "\""}});
}

TEST_F(ResistorSetFile, StoresFieldsTrimmedAndOtherwiseUnchangedUpToTheFirstEmptyOne) {
  const std::string nul(1, '\0');
  // A line on which nothing is left counts for no row.
  Load(Page(1, {"*  RT 734A :  Ls/5  nH : x", "   * d :e:  f  ", "", "*", "x", nul + "*y",
                "*" + nul + "z", "xg : h : i", "*j :: k", "*l : : m", "*n : o : : p"}));
  EXPECT_EQ(ShownRows(1), (Rows{{"RT 734A", "Ls/5  nH", "x", "", ""},
                                {"d", "e", "f", "", ""},
                                {"g", "h", "i", "", ""},
                                {"j", "", "", "", ""},
                                {"l", "", "", "", ""},
                                {"n", "o", "", "", ""}}));
}

TEST_F(ResistorSetFile, CutsALineAtItsFirstNulAndTakesLineEndsInQuotesAndTabsForBlanks) {
  const std::string nul(1, '\0');
  Load(Page(1, {"*a : b" + nul + " : c", "\"*d\r\ne : f\ng; h\"", "*\tRT\t731A : Ls/1\tnH\t: 1 nH",
                "*b : c : \t : d"}));
  EXPECT_EQ(ShownRows(1), (Rows{{"a", "b", "", "", ""},
                                {"d  e", "f g; h", "", "", ""},
                                {"RT 731A", "Ls/1 nH", "1 nH", "", ""},
                                {"b", "c", "", "", ""}}));
  EXPECT_TRUE(Contains(Saved(), "\r\n*  RT 731A :          Ls/1 nH :    1 nH\r\n"));
}

TEST_F(ResistorSetFile, MayHaveSixColumnsOnALineButNotSevenAndNoNumberThatIsTooLarge) {
  Load(Joined({Page(3, {"*1 : 2 : 0.1 % : 4 : 5 : 6"}), PagesBut({3})}));
  EXPECT_EQ(ShownRows(3), (Rows{{"1", "2", "0.10 %", "4", "5"}}));
  EXPECT_TRUE(data_->LoadNotices().empty());
  // The sixth is neither shown nor written.
  EXPECT_TRUE(Contains(
      Saved(),
      Lines({"*        1 :            2 :      0.10 % :              4 :           5", "!END"})));
  ExpectLoadError(
      Joined({{"!"}, Page(3, {"*a", "*1 : 2 : 0.1 % : 4 : 5 : 6 : 7", "*b"}), PagesBut({3})}),
      ErrorKind::Index, 6, "6 columns");
  EXPECT_EQ(FirstColumn(3)[0], "a");
  ExpectLoadError(Page(3, {"*a", "*1 : 2 : 1E999 % : 4"}), ErrorKind::Type, 5);
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
      {"0.00123 %", {"12.3 ppm", "12.30 ppm", "12.3 ppm"}},
      {"0.00000 %", {"0 ppm", "0.00 ppm", "0.0 ppm"}},
      {"100.25 %", {"1002500 ppm", "1002500.00 ppm", "1002500.0 ppm"}},
      {"-0.5 %", {"-0.5 %", "-0.50 %", "-0.5 %"}},
      // The last character goes, whatever it is.
      {"0.125", {"0.12 %", "0.12 %", "0.1 %"}},
      {"0.001234", {"12.3 ppm", "12.30 ppm", "12.3 ppm"}},
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

TEST_F(ResistorSetFile, MayHaveAnyNumberOfWordsOutsideItsRows) {
  std::string words;
  for (int i = 0; i < 32; ++i) {
    words += " word";
  }
  Load({"*1" + words, "!Note" + words, "!DC" + words, "!", "*a", "!END"});
  EXPECT_EQ(FirstColumn(0), (Texts{"a"}));
}

}  // namespace
}  // namespace tarvell::test
