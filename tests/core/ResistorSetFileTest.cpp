// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "caldata/MemoryGrid.h"
#include "caldata/cInstrRT730A.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::Lines;
using Texts = std::vector<std::string>;
using Row = Texts;
using Rows = std::vector<Row>;

constexpr const char* kFile = "c:\\data\\SN12345";
constexpr std::int16_t kPages = 7;

const Texts kNames = {"DC Registance",
                      "Indactance / Parallel Capacitance",
                      "HF Calibration at 10ohm",
                      "HF Calibration at 100ohm",
                      "HF Calibration at 1kohm",
                      "HF Calibration at 10kohm",
                      "HF Calibration at 100kohm"};

// clang-format off
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

/// Title lines of the seven sections.
const std::vector<Texts> kTitles = {
    {"!", "!DC Resistance",
     "!Model     : Nominal Value : Calibrated Value : Unc.(%)"},
    {"!", "!Series Inductance and/or Parallel Capacitance at 1MHz",
     "!Model     : Calibrated Value : Unc.(%)"},
    {"!", "!High Freqency Calibration Results", "! 10 ohm (MODEL QZ RT735A)",
     "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty"},
    {"!", "! 100 ohm (MODEL QZ RT736A)",
     "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty"},
    {"!", "! 1 kohm (MODEL QZ RT737A)",
     "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"},
    {"!", "! 10 kohm (MODEL QZ RT738A)",
     "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"},
    {"!", "! 100 kohm (MODEL QZ RT739A)",
     "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"}};
// clang-format on

Texts Joined(const std::vector<Texts>& parts) {
  Texts lines;
  for (const Texts& part : parts) {
    lines.insert(lines.end(), part.begin(), part.end());
  }
  return lines;
}

/// One section of a file.
Texts Section(std::size_t page, const Texts& dataLines) {
  return Joined({kTitles.at(page), dataLines, {"!END"}});
}

/// Sections with the row "7" each, all but those of these pages.
Texts SectionsBut(const std::vector<std::size_t>& others) {
  Texts lines;
  for (std::size_t page = 0; page < kTitles.size(); ++page) {
    if (std::find(others.begin(), others.end(), page) == others.end()) {
      lines = Joined({lines, Section(page, {"*7"})});
    }
  }
  return lines;
}

class ResistorSetFile : public testing::Test {
 protected:
  ResistorSetFile() { tree_.MakeFolders("c:\\data"); }

  void SetRows(std::int16_t page, const Rows& rows, std::int16_t columns = 5) {
    MemoryGrid grid(columns);
    for (const Row& row : rows) {
      std::string text;
      for (const std::string& cell : row) {
        text += cell + "\t";
      }
      grid.AddRow(text);
    }
    data_->SetCalData(page, grid);
  }

  [[nodiscard]] Rows ShownRows(std::int16_t page) const {
    MemoryGrid grid(5);
    data_->GetCalData(page, grid);
    Rows rows;
    for (std::int16_t row = 1; row < grid.RowCount(); ++row) {
      rows.push_back({grid.CellText(row, 0), grid.CellText(row, 1), grid.CellText(row, 2),
                      grid.CellText(row, 3), grid.CellText(row, 4)});
    }
    return rows;
  }

  [[nodiscard]] Texts FirstColumn(std::int16_t page) const {
    Texts texts;
    for (const Row& row : ShownRows(page)) {
      texts.push_back(row[0]);
    }
    return texts;
  }

  [[nodiscard]] std::string Saved() const {
    EXPECT_EQ(data_->SaveCalibrationDataToFile(kFile), 0);
    return tree_.Read(kFile);
  }

  /// Loads a file of these lines into a new object.
  void Load(const Texts& lines) {
    data_ = std::make_unique<cInstrRT730A>();
    LoadOver(lines);
  }

  void LoadOver(const Texts& lines) {
    tree_.Write(kFile, Lines(lines));
    EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  }

  /// The error of loading a file of these lines into a new object.
  [[nodiscard]] Error LoadError(const Texts& lines) {
    data_ = std::make_unique<cInstrRT730A>();
    tree_.Write(kFile, Lines(lines));
    return ErrorOf([&] { data_->LoadCalibrationDataFromFile(kFile); });
  }

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

  /// Exactly these notices, each with its parts.
  void ExpectNotices(const std::vector<Texts>& notices) const {
    ASSERT_EQ(data_->LoadNotices().size(), notices.size());
    for (std::size_t i = 0; i < notices.size(); ++i) {
      for (const std::string& part : notices[i]) {
        EXPECT_TRUE(Contains(data_->LoadNotices()[i], part))
            << part << " in: " << data_->LoadNotices()[i];
      }
    }
  }

  /// That page alone holds rows, whose first columns are these.
  void ExpectRowsOnPageAlone(std::int16_t page, const Texts& firstColumn,
                             const std::string& what) const {
    for (std::int16_t other = 0; other < kPages; ++other) {
      EXPECT_EQ(FirstColumn(other), other == page ? firstColumn : Texts()) << what << ", " << other;
    }
  }

  test::TestTree tree_;
  std::unique_ptr<cifCaldata> data_ = std::make_unique<cInstrRT730A>();
};

Texts ManyLines(int count) {
  Texts lines;
  for (int i = 1; i <= count; ++i) {
    lines.push_back("*" + std::to_string(i));
  }
  return lines;
}

Texts ManyNames(int count) {
  Texts names;
  for (int i = 1; i <= count; ++i) {
    names.push_back(std::to_string(i));
  }
  return names;
}

Rows ManyRows(int count) {
  Rows rows;
  for (int i = 1; i <= count; ++i) {
    rows.push_back({std::to_string(i), "1", "2", "3", "4"});
  }
  return rows;
}

// The whole file.

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

TEST_F(ResistorSetFile, OfANewObjectHoldsItsCodeTheTitlesAndSevenEnds) {
  Texts lines = kHeader;
  for (std::size_t page = 0; page < kTitles.size(); ++page) {
    lines = Joined({lines, Section(page, {})});
  }
  EXPECT_EQ(Saved(), Lines(lines));
}

TEST_F(ResistorSetFile, NamesItsOwnModelWhateverTheObjectIsTold) {
  data_->SetModelNumber("RT520A");
  EXPECT_EQ(Saved().substr(0, 20), "#MODEL_NO : RT730A\r\n");
}

TEST_F(ResistorSetFile, EndsASectionAtTheFirstEmptyFirstColumn) {
  SetRows(1, {{"a", "b", "c"}, {"", "b", "c"}, {"d", "e", "f"}}, 3);
  EXPECT_TRUE(Contains(Saved(), Lines({"!Model     : Calibrated Value : Unc.(%)",
                                       "*        a :                b :       c", "!END"})));
}

TEST_F(ResistorSetFile, AlignsTextsToTheRightOfTheirFields) {
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

TEST_F(ResistorSetFile, WritesATextWiderThanItsFieldWhole) {
  EXPECT_EQ(LineOf(0, {"1234567890", "12345678901234", "12345678901234567", "1234567890 %"}),
            "*1234567890 : 12345678901234 : 12345678901234567 : 1234567890 % ");
  EXPECT_EQ(LineOf(0, {"a", "b", "c", "123456 ppm"}),
            "*        a :             b :                c : 12.34560 %");
  EXPECT_EQ(LineOf(1, {"1234567890", "12345678901234567", "12345678"}),
            "*1234567890 : 12345678901234567 : 12345678");
  EXPECT_EQ(
      LineOf(2, {"1234567890", "1234567890123", "1234567890 %", "123456789012345", "123456789012"}),
      "*1234567890 : 1234567890123 : 1234567890 % : 123456789012345 : 123456789012");
  EXPECT_EQ(LineOf(6, {"1234567890", "12345678901234", "12345678900 ppm", "123456789012345",
                       "123456789012"}),
            "*1234567890 : 12345678901234 : 1234567.89000 % : 123456789012345 : 123456789012");
}

TEST_F(ResistorSetFile, CountsCharactersNotBytesInAField) {
  EXPECT_EQ(LineOf(1, {"\xC2\xB5", "\xC2\xB5", "\xC2\xB5"}),
            "*        \xB5 :                \xB5 :       \xB5");
}

TEST_F(ResistorSetFile, WritesARelativeUncertaintyInPerCent) {
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

TEST_F(ResistorSetFile,
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

TEST_F(ResistorSetFile, TreatsNoColumnOfTheSecondPageSpecially) {
  EXPECT_EQ(LineOf(1, {"a", "5 ppm", "0.5 %"}), "*        a :            5 ppm :   0.5 %");
  Load(Section(1, {"* 5 ppm : 0.5 % : 0.00123 %"}));
  EXPECT_EQ(ShownRows(1), (Rows{{"5 ppm", "0.5 %", "0.00123 %", "", ""}}));
}

TEST_F(ResistorSetFile, WithACharacterThatNoFileHoldsIsRefused) {
  SetRows(3, {{"1", "5 \xCE\xA9", "0.1 %", "d", "e"}});
  EXPECT_EQ(ErrorOf([&] { data_->SaveCalibrationDataToFile(kFile); }).Kind(), ErrorKind::Character);
  EXPECT_FALSE(tree_.Exists(kFile));
}

// Sections.

TEST_F(ResistorSetFile, ReadsItsSectionsInAnyOrder) {
  Load(Joined({Section(6, {"*6"}), Section(2, {"*2"}), Section(5, {"*5"}), Section(0, {"*0"}),
               Section(4, {"*4"}), Section(1, {"*1"}), Section(3, {"*3"})}));
  for (std::int16_t page = 0; page < kPages; ++page) {
    EXPECT_EQ(FirstColumn(page), (Texts{std::to_string(page)})) << page;
  }
  EXPECT_TRUE(data_->LoadNotices().empty());
}

struct TitleCase {
  Texts lines;  ///< title and what is skipped behind it
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
    ExpectRowsOnPageAlone(test.page, {"a", "b"}, test.lines[0]);
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
    ExpectRowsOnPageAlone(kPages, {}, title);
  }
}

TEST_F(ResistorSetFile, ReadsTheTableOf10OhmBehindTheHighFrequencyTitleAlone) {
  Load(Joined({{"! 10 ohm (MODEL QZ RT735A)", "!Frequency", "*a", "!END"},
               Section(2, {"*b"}),
               {"! 10 ohm (MODEL QZ RT735A)", "!Frequency", "*c", "!END"}}));
  ExpectRowsOnPageAlone(2, {"b"}, "10 ohm");
}

TEST_F(ResistorSetFile, TellsTheSectionsOf100OhmAnd100KilohmAnd10KilohmApart) {
  Load(Joined({Section(3, {"*100"}), Section(5, {"*10k"}), Section(6, {"*100k"})}));
  EXPECT_EQ(FirstColumn(3), (Texts{"100"}));
  EXPECT_EQ(FirstColumn(5), (Texts{"10k"}));
  EXPECT_EQ(FirstColumn(6), (Texts{"100k"}));
  ExpectNotices({{kNames[0]}, {kNames[1]}, {kNames[2]}, {kNames[4]}});
}

TEST_F(ResistorSetFile, EndsASectionInAnyCase) {
  for (const char* end : {"!END", "!End", "!end", "  !eNd  "}) {
    Load(Joined({kTitles[3], {"*a", end, "*b", "!"}}));
    EXPECT_EQ(FirstColumn(3), (Texts{"a"})) << end;
  }
}

TEST_F(ResistorSetFile, LosesDataLinesOutsideOfItsSections) {
  Load(Joined({{"*x"}, Section(0, {"*a"}), {"*y"}, Section(1, {"*b"}), {"*z", "!"}}));
  EXPECT_EQ(FirstColumn(0), (Texts{"a"}));
  EXPECT_EQ(FirstColumn(1), (Texts{"b"}));
}

TEST_F(ResistorSetFile, KeepsThePageWhoseTitleIsMissingOrDamagedAndSaysSo) {
  const std::vector<std::pair<std::size_t, const char*>> damaged = {
      {0, "!D"},     {0, ""},         {1, "!Ser"},    {1, "!Parallel"}, {2, "!Hi"},
      {2, "!"},      {3, "! 100"},    {3, "! 100 o"}, {4, "!"},         {4, "! kohm"},
      {5, "! kohm"}, {5, "! 10 ohm"}, {6, "! 100 k"}, {6, "! 100"}};
  for (const auto& [page, title] : damaged) {
    data_ = std::make_unique<cInstrRT730A>();
    const auto shown = static_cast<std::int16_t>(page);
    SetRows(shown, {{"before", "b", "c", "d", "e"}});
    Texts section = Section(page, {"*lost"});
    section[1] = title;
    LoadOver(Joined({SectionsBut({page}), section}));
    EXPECT_EQ(FirstColumn(shown), (Texts{"before"})) << title;
    for (std::int16_t other = 0; other < kPages; ++other) {
      EXPECT_TRUE(other == shown || FirstColumn(other) == Texts{"7"}) << title << ", " << other;
    }
    ExpectNotices({{"no section \"" + kNames[page] + "\"", "title", "default data"}});
  }
}

TEST_F(ResistorSetFile, ReadsATitleCutOffToThatOfAnotherSectionOverItAndSaysSo) {
  Texts section = Section(5, {"*cut"});
  section[1] = "! 1";
  Load(Joined({SectionsBut({5}), section}));
  EXPECT_EQ(FirstColumn(4), (Texts{"cut"}));
  ExpectNotices(
      {{"\"" + kNames[4] + "\"", "more than once"}, {"no section \"" + kNames[5] + "\""}});
}

TEST_F(ResistorSetFile, TakesADataLineInThePlaceOfATitleLineForOneAndSaysSo) {
  for (std::size_t page = 0; page < kTitles.size(); ++page) {
    Texts titles = kTitles[page];
    titles.pop_back();
    Load(Joined({SectionsBut({page}), titles, {"*a", "*b", "!END"}}));
    EXPECT_EQ(FirstColumn(static_cast<std::int16_t>(page)), (Texts{"b"})) << page;
    ExpectNotices({{"\"" + kNames[page] + "\"", "title", "not read as one of its rows", "*a"}});
  }
}

TEST_F(ResistorSetFile, ReadsASectionThatStandsTwiceOverItsEarlierRowsAndSaysSo) {
  Load(Joined({Section(3, {"*a", "*b", "*c"}), SectionsBut({3}), Section(3, {"*d"})}));
  EXPECT_EQ(FirstColumn(3), (Texts{"d", "b", "c"}));
  ExpectNotices({{"\"" + kNames[3] + "\"", "more than once", "over those of the earlier one"}});
}

TEST_F(ResistorSetFile, ReadsASectionWithoutItsEndThroughTheNextOneAndSaysSo) {
  Load(Joined({kTitles[3],
               {"*a : 100.01 ohm : 0.10 % : 0.01 ohm : 0.10 ohm"},
               kTitles[4],
               {"*b : 1 kohm : 0.10 % : 0 uS : 1 uS", "!END"},
               SectionsBut({3, 4})}));
  // The "!" is dropped; "Uncertainty" less its last character is no number, and long enough
  // for ppm.
  EXPECT_EQ(ShownRows(3),
            (Rows{{"a", "100.01 ohm", "0.10 %", "0.01 ohm", "0.10 ohm"},
                  {"1 kohm (MODEL QZ RT737A)", "", "", "", ""},
                  {"Frequency", "Resistance", "0.00 ppm", "Susceptance", "Uncertainty"},
                  {"b", "1 kohm", "0.10 %", "0 uS", "1 uS"}}));
  EXPECT_EQ(FirstColumn(4), Texts());
  ExpectNotices({{"\"" + kNames[3] + "\"", "!END", "one of its rows", kTitles[4][1]},
                 {"\"" + kNames[3] + "\"", "!END", "one of its rows", kTitles[4][2]},
                 {"no section \"" + kNames[4] + "\"", "default data"}});
}

TEST_F(ResistorSetFile, LosesTheLastLineOfAFileThatEndsInsideASectionAndSaysSo) {
  for (std::size_t page = 0; page < kTitles.size(); ++page) {
    Load(Joined({SectionsBut({page}), kTitles[page], {"*a", "*b", "*c"}}));
    EXPECT_EQ(FirstColumn(static_cast<std::int16_t>(page)), (Texts{"a", "b"})) << page;
    ExpectNotices({{"\"" + kNames[page] + "\"", "!END", "last line of the file was not read"}});
  }
}

TEST_F(ResistorSetFile, EndingInTheTitleLinesOfASectionReadsNoRowAndSaysSo) {
  for (std::size_t page = 0; page < kTitles.size(); ++page) {
    const auto shown = static_cast<std::int16_t>(page);
    // With its column captions, or another line, as the last line of the file.
    Load(Joined({SectionsBut({page}), kTitles[page]}));
    EXPECT_EQ(FirstColumn(shown), Texts()) << page;
    ExpectNotices({{"\"" + kNames[page] + "\"", "!END"}});
    Load(Joined({SectionsBut({page}), kTitles[page], {"*a"}}));
    EXPECT_EQ(FirstColumn(shown), Texts()) << page;
    ExpectNotices({{"\"" + kNames[page] + "\"", "!END"}});
  }
  // The title itself as the last line is not read at all.
  Load(Joined({SectionsBut({3}), {"!", "! 100 ohm"}}));
  ExpectNotices({{"no section \"" + kNames[3] + "\""}});
  Load(Joined({SectionsBut({2}), {"!", "!High Freqency", "! 10 ohm"}}));
  ExpectNotices({{"\"" + kNames[2] + "\"", "!END"}});
}

TEST_F(ResistorSetFile, MayLackTheLineEndBehindItsLastLine) {
  std::string file = Lines(SectionsBut({}));
  file.resize(file.size() - 2);
  tree_.Write(kFile, file);
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(FirstColumn(6), (Texts{"7"}));
  EXPECT_TRUE(data_->LoadNotices().empty());
}

TEST_F(ResistorSetFile, KeepsTheRowsOfAPageThatItDoesNotFill) {
  SetRows(3, {{"a", "b", "c", "d", "e"}, {"f", "g", "h", "i", "j"}});
  LoadOver(Section(3, {"*x : y"}));
  EXPECT_EQ(ShownRows(3), (Rows{{"x", "y", "c", "d", "e"}, {"f", "g", "h", "i", "j"}}));
}

TEST_F(ResistorSetFile, OfAnotherModelIsReadAndSaysSo) {
  Load(Joined({{"#MODEL_NO : RT520A", "#SER_NO   : 12"}, SectionsBut({})}));
  EXPECT_EQ(data_->ModelNumber(), "RT730A");
  EXPECT_EQ(data_->SerialNumber(), "12");
  EXPECT_EQ(FirstColumn(0), (Texts{"7"}));
  ExpectNotices({{"\"RT520A\"", "\"RT730A\""}});
}

TEST_F(ResistorSetFile, OfACapacitorSetSaysThatItsSectionsAreMissing) {
  Load({"#MODEL_NO : RT520A", "#RT521A    :     x", "*1000 : 1pF : 0.1 : 0 : 0", "!END", "!"});
  std::vector<Texts> notices;
  for (const std::string& name : kNames) {
    notices.push_back({"no section \"" + name + "\""});
  }
  notices.push_back({"\"RT520A\""});
  ExpectNotices(notices);
}

TEST_F(ResistorSetFile, OfItsOwnModelOrOfNoneSaysNothing) {
  Load(Joined({{"#MODEL_NO : RT730A"}, SectionsBut({})}));
  EXPECT_TRUE(data_->LoadNotices().empty());
  Load(SectionsBut({}));
  EXPECT_TRUE(data_->LoadNotices().empty());
  Load(SectionsBut({0}));
  EXPECT_EQ(data_->LoadNotices().size(), 1U);
  LoadOver(SectionsBut({}));
  EXPECT_TRUE(data_->LoadNotices().empty());
}

// Data lines.

TEST_F(ResistorSetFile, StoresFieldsTrimmedAndOtherwiseAsTheyStand) {
  Load(Section(1, {"*  RT 734A :  Ls/5  nH : x", "*a:b:c", "   * d :e:  f  ", "xg : h : i"}));
  EXPECT_EQ(ShownRows(1), (Rows{{"RT 734A", "Ls/5  nH", "x", "", ""},
                                {"a", "b", "c", "", ""},
                                {"d", "e", "f", "", ""},
                                {"g", "h", "i", "", ""}}));
}

TEST_F(ResistorSetFile, ReadsALineUpToItsFirstEmptyField) {
  Load(Section(1, {"*a", "*b : c", "*d :: e", "*f : : g", "*h : i : : j"}));
  EXPECT_EQ(ShownRows(1), (Rows{{"a", "", "", "", ""},
                                {"b", "c", "", "", ""},
                                {"d", "", "", "", ""},
                                {"f", "", "", "", ""},
                                {"h", "i", "", "", ""}}));
}

TEST_F(ResistorSetFile, EndsTheShownRowsAtALineWhoseFirstFieldIsEmpty) {
  Load(Section(1, {"*a : b", "* : c", "*d : e"}));
  EXPECT_EQ(FirstColumn(1), (Texts{"a"}));
}

TEST_F(ResistorSetFile, CountsNoLineOnWhichNothingIsLeft) {
  const std::string nul(1, '\0');
  Load(Section(1, {"", "*a", "*", "   ", "!", "x", nul + "*y", "*" + nul + "z", "*b"}));
  EXPECT_EQ(FirstColumn(1), (Texts{"a", "b"}));
}

TEST_F(ResistorSetFile, CutsALineAtItsFirstNulAndTakesLineEndsInQuotesForBlanks) {
  const std::string nul(1, '\0');
  Load(Section(1, {"*a : b" + nul + " : c", "\"*d\r\ne : f\ng, h\""}));
  EXPECT_EQ(ShownRows(1), (Rows{{"a", "b", "", "", ""}, {"d  e", "f g, h", "", "", ""}}));
}

TEST_F(ResistorSetFile, TakesATabInARowForABlank) {
  Load(Section(1, {"*\tRT\t731A : Ls/1\tnH\t: 1 nH", "*b : c : \t : d"}));
  EXPECT_EQ(ShownRows(1), (Rows{{"RT 731A", "Ls/1 nH", "1 nH", "", ""}, {"b", "c", "", "", ""}}));
  EXPECT_TRUE(Contains(Saved(), "\r\n*  RT 731A :          Ls/1 nH :    1 nH\r\n"));
}

TEST_F(ResistorSetFile, MayHaveSixColumnsOnALineButNotSeven) {
  Load(Joined({Section(3, {"*1 : 2 : 0.1 % : 4 : 5 : 6"}), SectionsBut({3})}));
  EXPECT_EQ(ShownRows(3), (Rows{{"1", "2", "0.10 %", "4", "5"}}));
  EXPECT_TRUE(data_->LoadNotices().empty());
  // The sixth is neither shown nor written.
  EXPECT_TRUE(Contains(
      Saved(),
      Lines({"*        1 :            2 :      0.10 % :              4 :           5", "!END"})));
  const Error error = LoadError(Joined(
      {{"!"}, Section(3, {"*a", "*1 : 2 : 0.1 % : 4 : 5 : 6 : 7", "*b"}), SectionsBut({3})}));
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 6);
  EXPECT_TRUE(Contains(error.Text(), "6 columns")) << error.Text();
  EXPECT_EQ(FirstColumn(3)[0], "a");
}

TEST_F(ResistorSetFile, LooksAtNoColumnBehindAnEmptyField) {
  Load(Section(3, {"*1 : 2 : 0.1 % : 4 : 5 : : 7 : 8", "*1::::::::::::::::::::x"}));
  EXPECT_EQ(ShownRows(3), (Rows{{"1", "2", "0.10 %", "4", "5"}, {"1", "", "", "", ""}}));
}

struct UncertaintyCase {
  const char* field;
  std::array<const char*, 3> texts;
};

// Less than six characters, the per cent sign left out, are per cent, all else is ppm.
TEST_F(ResistorSetFile, TellsPerCentFromPpmByTheLengthOfAnUncertainty) {
  const std::vector<UncertaintyCase> cases = {
      // as many decimals as needed up to two; two; one
      {"0.1 %", {"0.1 %", "0.10 %", "0.1 %"}},
      {"0.10 %", {"0.1 %", "0.10 %", "0.1 %"}},
      {"0.125%", {"0.13 %", "0.13 %", "0.1 %"}},
      {"12.35 %", {"12.35 %", "12.35 %", "12.4 %"}},
      {"1 %", {"1 %", "1.00 %", "1.0 %"}},
      {"0.00123 %", {"12.3 ppm", "12.30 ppm", "12.3 ppm"}},
      {"0.0012 %", {"12 ppm", "12.00 ppm", "12.0 ppm"}},
      {"0.001235 %", {"12.35 ppm", "12.35 ppm", "12.4 ppm"}},
      {"0.00000 %", {"0 ppm", "0.00 ppm", "0.0 ppm"}},
      {"100.25 %", {"1002500 ppm", "1002500.00 ppm", "1002500.0 ppm"}},
      {"-0.5 %", {"-0.5 %", "-0.50 %", "-0.5 %"}},
      {"-12.35 %", {"-123500 ppm", "-123500.00 ppm", "-123500.0 ppm"}},
      {"-0.00123 %", {"-12.3 ppm", "-12.30 ppm", "-12.3 ppm"}},
      // The last character goes, whatever it is.
      {"0.125", {"0.12 %", "0.12 %", "0.1 %"}},
      {"0.001234", {"12.3 ppm", "12.30 ppm", "12.3 ppm"}},
      {"5", {"0 %", "0.00 %", "0.0 %"}},
      {"%", {"0 %", "0.00 %", "0.0 %"}},
      {"abc", {"0 %", "0.00 %", "0.0 %"}},
      {"abcdefg", {"0 ppm", "0.00 ppm", "0.0 ppm"}}};
  for (const UncertaintyCase& test : cases) {
    const std::string field(test.field);
    Load(Joined({Section(0, {"*a : b : c : " + field}),
                 Section(2, {"*1 : b : " + field + " : d", "*2", "*3", "*4",
                             "*5 : b : " + field + " : d"})}));
    EXPECT_EQ(ShownRows(0)[0][3], test.texts[0]) << field;
    EXPECT_EQ(ShownRows(2)[0][2], test.texts[1]) << field;
    EXPECT_EQ(ShownRows(2)[4][2], test.texts[2]) << field;
    EXPECT_EQ(ShownRows(2)[4][3], "d") << field;
  }
}

TEST_F(ResistorSetFile, ReadsAnUncertaintyByTheRowsOfItsPage) {
  // First row of each page with one decimal in per cent, and how many rows there are.
  const std::vector<std::array<std::size_t, 3>> pages = {
      {2, 5, 7}, {3, 6, 7}, {4, 7, 8}, {5, 3, 8}, {6, 3, 8}};
  for (const auto& [page, firstOfOne, rows] : pages) {
    Texts lines;
    for (std::size_t row = 1; row <= rows; ++row) {
      lines.push_back("*" + std::to_string(row) + " : b : " + (row % 2 == 0 ? "0.15" : "0.000150") +
                      " % : d : e");
    }
    // One row more than are planned.
    lines.emplace_back("*more : b : 0.15 % : d : e");
    Load(Section(page, lines));
    const Rows shown = ShownRows(static_cast<std::int16_t>(page));
    ASSERT_EQ(shown.size(), rows + 1) << page;
    for (std::size_t row = 1; row <= rows; ++row) {
      const std::string percent = row < firstOfOne ? "0.15 %" : "0.2 %";
      const std::string ppm = row < firstOfOne ? "1.50 ppm" : "1.5 ppm";
      EXPECT_EQ(shown[row - 1][2], row % 2 == 0 ? percent : ppm) << page << ", " << row;
    }
    EXPECT_EQ(shown[rows], (Row{"more", "b", "", "d", "e"})) << page;
  }
}

TEST_F(ResistorSetFile, ReadsAPerCentValueOfManyDecimalsAsPpm) {
  SetRows(4, {{"1", "b", "0.0012 %", "d", "e"}});
  EXPECT_TRUE(Contains(Saved(), " :    0.0012 % : "));
  data_ = std::make_unique<cInstrRT730A>();
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(ShownRows(4)[0][2], "12.00 ppm");
}

TEST_F(ResistorSetFile, KeepsATenthOfAPpm) {
  SetRows(0, {{"a", "b", "c", "12.34 ppm", ""}, {"a", "b", "c", "12.35 ppm", ""}});
  static_cast<void>(Saved());
  data_ = std::make_unique<cInstrRT730A>();
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(ShownRows(0)[0][3], "12.3 ppm");
  EXPECT_EQ(ShownRows(0)[1][3], "12.4 ppm");
}

TEST_F(ResistorSetFile, WithANumberTooLargeIsATypeErrorOfItsLine) {
  const Error error = LoadError(Section(3, {"*a", "*1 : 2 : 1E999 % : 4"}));
  EXPECT_EQ(error.Kind(), ErrorKind::Type);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 5);
}

// The largest page.

TEST_F(ResistorSetFile, HoldsPagesOf51RowsWhole) {
  Load(Joined({Section(3, ManyLines(51)), SectionsBut({3})}));
  EXPECT_EQ(FirstColumn(3), ManyNames(51));
  EXPECT_TRUE(data_->LoadNotices().empty());
  SetRows(1, ManyRows(51));
  static_cast<void>(Saved());
  data_ = std::make_unique<cInstrRT730A>();
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(FirstColumn(1), ManyNames(51));
  EXPECT_EQ(FirstColumn(3), ManyNames(51));
}

TEST_F(ResistorSetFile, With52RowsInASectionIsAnIndexErrorOfItsLine) {
  const Error error = LoadError(Joined(
      {{"#SER_NO   : 12"}, Section(3, ManyLines(52)), {"#SER_NO   : 13"}, SectionsBut({3})}));
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 4 + 52);
  EXPECT_TRUE(Contains(error.Text(), "51")) << error.Text();
  EXPECT_EQ(data_->SerialNumber(), "12");
  EXPECT_EQ(FirstColumn(3), ManyNames(51));
}

TEST_F(ResistorSetFile, With52RowsAsItsLastLineLosesThatLine) {
  Load(Joined({SectionsBut({3}), kTitles[3], ManyLines(52)}));
  EXPECT_EQ(FirstColumn(3), ManyNames(51));
  ExpectNotices({{"\"" + kNames[3] + "\"", "!END"}});
}

TEST_F(ResistorSetFile, MayHave21WordsInATitleButNot22) {
  const std::string title = "!DC 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21";
  Load({title, "!", "*a", "!END"});
  EXPECT_EQ(FirstColumn(0), (Texts{"a"}));
  const Error error = LoadError({"!", title + " 22", "!", "*a", "!END"});
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Line(), 2);
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

TEST_F(ResistorSetFile, IsShownWithTheCaptionRowAloneForAnEmptyPage) {
  for (std::int16_t page = 0; page < 8; ++page) {
    MemoryGrid grid(5);
    grid.AddRow("left\tover");
    grid.AddRow("left\tover");
    data_->GetCalData(page, grid);
    EXPECT_EQ(grid.RowCount(), 1) << page;
  }
}

TEST_F(ResistorSetFile, IsShownUpToTheFirstEmptyFirstColumn) {
  SetRows(2, {{"a", "", "", "", "e"}, {"", "b", "c", "d", "e"}, {"f", "b", "c", "d", "e"}});
  EXPECT_EQ(ShownRows(2), (Rows{{"a", "", "", "", "e"}}));
}

TEST_F(ResistorSetFile, TakesTheTextsOfTheGridUnchanged) {
  const Rows rows = {{" a ", " 5", "b ", "%", "ppm"}, {"x", "", "", "", "\xCE\xA9"}};
  SetRows(2, rows);
  EXPECT_EQ(ShownRows(2), rows);
  EXPECT_EQ(ShownRows(3), Rows());
}

TEST_F(ResistorSetFile, ReplacesAWholePageByTheGrid) {
  SetRows(2, ManyRows(51));
  SetRows(2, {{"a", "b", "c", "d", "e"}});
  EXPECT_EQ(ShownRows(2), (Rows{{"a", "b", "c", "d", "e"}}));
  // What was behind it is gone as well, not just hidden.
  LoadOver(Section(2, {"*1", "*2"}));
  EXPECT_EQ(ShownRows(2), (Rows{{"1", "b", "c", "d", "e"}, {"2", "", "", "", ""}}));
  SetRows(2, {});
  EXPECT_EQ(ShownRows(2), Rows());
}

TEST_F(ResistorSetFile, TakesGridsOfUpToSixColumns) {
  SetRows(2, {{"a", "b", "c"}}, 3);
  EXPECT_EQ(ShownRows(2), (Rows{{"a", "b", "c", "", ""}}));
  SetRows(2, {{"a", "b", "c", "d", "e", "f"}}, 6);
  EXPECT_EQ(ShownRows(2), (Rows{{"a", "b", "c", "d", "e"}}));
  EXPECT_EQ(ErrorOf([&] { SetRows(2, {{"g"}}, 7); }).Kind(), ErrorKind::Index);
  EXPECT_EQ(ErrorOf([&] { SetRows(2, {{"g"}, {"h"}}, 20); }).Kind(), ErrorKind::Index);
}

TEST_F(ResistorSetFile, TakesNoGridOf52DataRows) {
  SetRows(2, ManyRows(51));
  EXPECT_EQ(ShownRows(2), ManyRows(51));
  EXPECT_EQ(ErrorOf([&] { SetRows(2, ManyRows(52)); }).Kind(), ErrorKind::Index);
}

TEST_F(ResistorSetFile, KeepsAnEighthPageThatIsNeverWritten) {
  SetRows(7, ManyRows(2));
  EXPECT_EQ(ShownRows(7), ManyRows(2));
  EXPECT_FALSE(Contains(Saved(), "\r\n*"));
  for (std::int16_t page = 0; page < kPages; ++page) {
    EXPECT_EQ(ShownRows(page), Rows()) << page;
  }
}

TEST_F(ResistorSetFile, HasNoPageOutside0To7) {
  for (const std::int16_t page :
       {std::int16_t{INT16_MIN}, std::int16_t{-1}, std::int16_t{8}, std::int16_t{INT16_MAX}}) {
    MemoryGrid grid(5);
    EXPECT_EQ(ErrorOf([&] { data_->GetCalData(page, grid); }).Kind(), ErrorKind::Index) << page;
    EXPECT_EQ(ErrorOf([&] { data_->SetCalData(page, grid); }).Kind(), ErrorKind::Index) << page;
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(data_->GetCalPageSerial(page)); }).Kind(),
              ErrorKind::Index)
        << page;
    EXPECT_EQ(ErrorOf([&] { data_->SetCalPageSerial(page, "x"); }).Kind(), ErrorKind::Index)
        << page;
  }
}

TEST_F(ResistorSetFile, KeepsASerialNumberForEachPageThatIsNeverWritten) {
  for (std::int16_t page = 0; page < 8; ++page) {
    EXPECT_EQ(data_->GetCalPageSerial(page), "") << page;
    data_->SetCalPageSerial(page, "serial" + std::to_string(page));
  }
  EXPECT_FALSE(Contains(Saved(), "serial"));
  LoadOver(SectionsBut({}));
  for (std::int16_t page = 0; page < 8; ++page) {
    EXPECT_EQ(data_->GetCalPageSerial(page), "serial" + std::to_string(page)) << page;
  }
  data_->SetCalPageSerial(3, "*");
  EXPECT_EQ(data_->GetCalPageSerial(3), "*");
  EXPECT_EQ(data_->GetCalPageCount(), kPages);
}

class ResistorSetTemplate : public ResistorSetFile {
 protected:
  [[nodiscard]] std::filesystem::path Path() const { return tree_.ProgramFolder() / "TempRT730A"; }

  [[nodiscard]] Error TemplateError(const Texts& lines) {
    test::WriteNative(Path(), Lines(lines));
    return ErrorOf([&] { data_->SetInitialDefaultData(); });
  }
};

TEST_F(ResistorSetTemplate, WithoutASectionOrItsEndIsRefused) {
  for (std::size_t page = 0; page < kTitles.size(); ++page) {
    const Error missing = TemplateError(Joined({{"#MODEL_NO : RT730A"}, SectionsBut({page})}));
    EXPECT_EQ(missing.Kind(), ErrorKind::Template) << page;
    EXPECT_EQ(missing.Path(), Path().string()) << page;
    const Error endless = TemplateError(
        Joined({{"#MODEL_NO : RT730A"}, SectionsBut({page}), kTitles[page], {"*1", "*2"}}));
    EXPECT_EQ(endless.Kind(), ErrorKind::Template) << page;
  }
}

}  // namespace
}  // namespace tarvell
