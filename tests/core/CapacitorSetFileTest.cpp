// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "caldata/MemoryGrid.h"
#include "caldata/cInstrRT520A.h"
#include "caldata/cInstrRT520C.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::Lines;
using Texts = std::vector<std::string>;
using Row = std::array<std::string, 5>;
using Rows = std::vector<Row>;

constexpr const char* kFile = "c:\\data\\SN12345";

/// In what the two sets differ.
struct Set {
  const char* code;
  const char* otherCode;
  std::unique_ptr<cifCaldata> (*create)();
  std::array<const char*, 4> pages;
  std::array<const char*, 4> captions;  ///< of the capacitance
};

template <typename Class>
std::unique_ptr<cifCaldata> Create() {
  return std::make_unique<Class>();
}

// clang-format off
const Set kSetA = {
    "RT520A", "RT520C", &Create<cInstrRT520A>, {"RT521A", "RT522A", "RT523A", "RT524A"},
    {"Capacitance[pF]", "Capacitance[pF]", "Capacitance[pF]", "Capacitance[pF]"}};
const Set kSetC = {
    "RT520C", "RT520A", &Create<cInstrRT520C>, {"RT525A", "RT526A", "RT527A", "RT528A"},
    {"Capacitance[nF]", "Capacitance[nF]", "Capacitance[uF]", "Capacitance[uF]"}};
// clang-format on

void PrintTo(const Set& set, std::ostream* stream) {
  *stream << set.code;
}

const Texts kBlock = {
    "!", "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)", "!"};

Texts Joined(const std::vector<Texts>& parts) {
  Texts lines;
  for (const Texts& part : parts) {
    lines.insert(lines.end(), part.begin(), part.end());
  }
  return lines;
}

/// A set in its file.
class SetStage {
 public:
  explicit SetStage(const Set& set) : set_(set), data_(set.create()) {
    tree_.MakeFolders("c:\\data");
  }

 protected:
  void SetRows(std::int16_t page, const Rows& rows) {
    MemoryGrid grid(5);
    for (const Row& row : rows) {
      grid.AddRow(row[0] + "\t" + row[1] + "\t" + row[2] + "\t" + row[3] + "\t" + row[4]);
    }
    data_->SetCalData(page, grid);
  }

  /// All rows of a page; an empty page shows one empty row.
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

  [[nodiscard]] Texts Frequencies(std::int16_t page) const {
    Texts frequencies;
    for (const Row& row : ShownRows(page)) {
      frequencies.push_back(row[0]);
    }
    return frequencies;
  }

  [[nodiscard]] std::string Saved() const {
    EXPECT_EQ(data_->SaveCalibrationDataToFile(kFile), 0);
    return tree_.Read(kFile);
  }

  /// Loads a file of these lines into a new object.
  void Load(const Texts& lines) {
    data_ = set_.create();
    LoadOver(lines);
  }

  void LoadOver(const Texts& lines) {
    tree_.Write(kFile, Lines(lines));
    EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  }

  /// The error of loading a file of these lines into a new object.
  [[nodiscard]] Error LoadError(const Texts& lines) {
    data_ = set_.create();
    tree_.Write(kFile, Lines(lines));
    return ErrorOf([&] { data_->LoadCalibrationDataFromFile(kFile); });
  }

  /// The header of an object without header values.
  [[nodiscard]] Texts Header() const {
    return {std::string("#MODEL_NO : ") + set_.code,
            "#SER_NO   : ",
            "#CAL_DATE : 00000",
            "#CAL_NO   : ",
            "#DUE_DATE : 00000",
            "#COMMENT  : "};
  }

  /// One page of a file. No "!" stands behind its end.
  [[nodiscard]] Texts Page(std::size_t page, const std::string& serial,
                           const Texts& dataLines) const {
    return Joined(
        {{std::string("#") + set_.pages.at(page) + "    :     " + serial}, dataLines, {"!END"}});
  }

  /// Pages of the file with one row each, all but these.
  [[nodiscard]] Texts PagesBut(const std::vector<std::size_t>& others) const {
    Texts lines;
    for (std::size_t page = 0; page < 4; ++page) {
      bool isOther = false;
      for (const std::size_t other : others) {
        isOther = isOther || page == other;
      }
      if (!isOther) {
        lines = Joined({lines, Page(page, "S" + std::to_string(page), {"*7"}), {"!"}});
      }
    }
    return lines;
  }

  /// Exactly one notice, which holds these parts.
  void ExpectNotice(const Texts& parts) const {
    ASSERT_EQ(data_->LoadNotices().size(), 1U);
    for (const std::string& part : parts) {
      EXPECT_TRUE(Contains(data_->LoadNotices()[0], part))
          << part << " in: " << data_->LoadNotices()[0];
    }
  }

  void ExpectNotices(const std::vector<Texts>& notices) const {
    ASSERT_EQ(data_->LoadNotices().size(), notices.size());
    for (std::size_t i = 0; i < notices.size(); ++i) {
      for (const std::string& part : notices[i]) {
        EXPECT_TRUE(Contains(data_->LoadNotices()[i], part))
            << part << " in: " << data_->LoadNotices()[i];
      }
    }
  }

  Set set_;
  test::TestTree tree_;
  std::unique_ptr<cifCaldata> data_;
};

class CapacitorSetFile : public testing::TestWithParam<Set>, public SetStage {
 protected:
  CapacitorSetFile() : SetStage(GetParam()) {}

  [[nodiscard]] static std::string Name(std::size_t page) { return GetParam().pages.at(page); }
};

class CapacitorSetAFile : public testing::Test, public SetStage {
 protected:
  CapacitorSetAFile() : SetStage(kSetA) {}
};

class CapacitorSetCFile : public testing::Test, public SetStage {
 protected:
  CapacitorSetCFile() : SetStage(kSetC) {}
};

Texts ManyLines(int count) {
  Texts lines;
  for (int i = 1; i <= count; ++i) {
    lines.push_back("*" + std::to_string(i));
  }
  return lines;
}

Texts ManyFrequencies(int count) {
  Texts frequencies;
  for (int i = 1; i <= count; ++i) {
    frequencies.push_back(std::to_string(i));
  }
  return frequencies;
}

Rows ManyRows(int count) {
  Rows rows;
  for (int i = 1; i <= count; ++i) {
    rows.push_back({std::to_string(i), "1.0pF", "0.005 %", "0.1", "0.2"});
  }
  return rows;
}

// The whole file.

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

TEST_F(CapacitorSetAFile, IsWrittenBackByteForByteWhereEachUnitSurvives) {
  // Less than six characters for per cent in the rows of four decimals, and no fraction of a ppm.
  const Texts lines = {
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
      "!END",
      "!",
      "#RT523A    :     ",
      "!END",
      "!",
      "#RT524A    :     1234A00570",
      "!END",
      "!"};
  Load(lines);
  EXPECT_EQ(ShownRows(0), (Rows{{"1000", "1.000012pF", "12 ppm", "0.00001", "0.00002"},
                                {"10000", "1.00001pF", "0.005 %", "0.00010", "0.00005"}}));
  EXPECT_TRUE(data_->LoadNotices().empty());
  EXPECT_EQ(Saved(), Lines(lines));
}

TEST_F(CapacitorSetCFile, IsWrittenBackByteForByteWithTheOption) {
  const Texts lines = Joined({{kFileOfC.begin(), kFileOfC.end() - 3},
                              {"*         1000 :       1.000001uF :    0.0800 :            0.00001 "
                               ":   0.00020",
                               "!END", "!"},
                              kOptionPageOfC});
  Load(lines);
  EXPECT_EQ(data_->GetCalPageCount(), 4);
  EXPECT_TRUE(data_->LoadNotices().empty());
  EXPECT_EQ(Saved(), Lines(lines));
}

TEST_F(CapacitorSetAFile, ReadsThePageBlock) {
  Load({"#RT521A    :     1234A00567",
        "*         1000 :       1.000012pF :    0.0012 :            0.00001 :   0.00002", "!END",
        "!"});
  EXPECT_EQ(data_->GetCalPageSerial(0), "1234A00567");
  EXPECT_EQ(ShownRows(0), (Rows{{"1000", "1.000012pF", "12 ppm", "0.00001", "0.00002"}}));
}

TEST_F(CapacitorSetAFile, WritesThePageBlock) {
  data_->SetCalPageSerial(0, "1234A00567");
  SetRows(0, {{"1000", "1.000012pF", "12 ppm", "0.00001", "0.00002"}});
  EXPECT_TRUE(Contains(
      Saved(),
      Lines({"!", "#RT521A    :     1234A00567",
             "*         1000 :       1.000012pF :    0.0012 :            0.00001 :   0.00002",
             "!END", "!", "#RT522A    :     "})));
}

TEST_P(CapacitorSetFile, OfANewObjectHoldsItsCodeAndEmptyPages) {
  Texts pages;
  for (std::int16_t page = 0; page < data_->GetCalPageCount(); ++page) {
    pages = Joined({pages, Page(static_cast<std::size_t>(page), "", {}), {"!"}});
  }
  EXPECT_EQ(Saved(), Lines(Joined({Header(), kBlock, pages})));
}

TEST_P(CapacitorSetFile, NamesItsOwnModelWhateverTheObjectIsTold) {
  data_->SetModelNumber(GetParam().otherCode);
  EXPECT_EQ(Saved().substr(0, 20), std::string("#MODEL_NO : ") + GetParam().code + "\r\n");
}

TEST_P(CapacitorSetFile, EndsAPageAtTheFirstEmptyFrequency) {
  SetRows(0,
          {{"1", "a", "0 %", "b", "c"}, {"", "a", "0 %", "b", "c"}, {"3", "a", "0 %", "b", "c"}});
  const std::string file = Saved();
  EXPECT_TRUE(Contains(file, Lines({"#" + Name(0) + "    :     ",
                                    "*            1 :                a :         0 :           "
                                    "       b :   c",
                                    "!END", "!", "#" + Name(1) + "    :     ", "!END", "!"})))
      << file;
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

TEST_P(CapacitorSetLine, WritesATextWiderThanItsFieldWhole) {
  EXPECT_EQ(
      LineOf({"12345678901234", "12345678901234567", "1234567890 %", "1234567890123456789", " 5 "}),
      "*12345678901234 : 12345678901234567 : 1234567890 : 1234567890123456789 :    5 ");
}

TEST_P(CapacitorSetLine, CountsCharactersNotBytesInAField) {
  EXPECT_EQ(LineOf({"\xC2\xB5", "\xC2\xB5", "\xC2\xB5 %", "\xC2\xB5", "\xC2\xB5"}),
            "*            \xB5 :                \xB5 :         \xB5 :                  \xB5 :   "
            "\xB5");
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

TEST_P(CapacitorSetLine, WritesEmptyTextsAsBlankFields) {
  EXPECT_EQ(LineOf({"1", "", "0 %", "", ""}),
            "*            1 :                  :         0 :                    :   ");
}

TEST_P(CapacitorSetLine, WithACharacterThatNoFileHoldsIsRefused) {
  for (const char* text : {"\xCE\xA9", "1\r2", "1\n2"}) {
    SetRows(0, {{"1", "2", "3 %", "4", text}});
    EXPECT_EQ(ErrorOf([&] { data_->SaveCalibrationDataToFile(kFile); }).Kind(),
              ErrorKind::Character)
        << text;
    EXPECT_FALSE(tree_.Exists(kFile));
  }
}

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
    Load({std::string("#") + kSetC.pages.at(page) + " : x", "*1:1pF:0:0:0", "*2:10.000005xx:0:0:0",
          "!END", "!"});
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
  Load(Page(0, "x", lines));
  EXPECT_EQ(Frequencies(0), frequencies);
  EXPECT_TRUE(Contains(Saved(), "\r\n*        1.0E3 : "));
}

TEST_P(CapacitorSetFile, ReadsADataLineWhateverItsBlanksAndColons) {
  Load(Page(0, "x", {"*  1 :  2pF :: : 3 : 4 5", "  \t* 1\t2pF\t3 4  5 ", "*1:2pF:3:4:5"}));
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
  Load(Page(0, "x", {"*1", "!2", "x3", "44"}));
  EXPECT_EQ(Frequencies(0), (Texts{"1", "2", "3", "4"}));
}

TEST_P(CapacitorSetFile, PassesOverBlankLinesInAPage) {
  Load(Page(0, "x", {"", "*1", "   ", "*2", ""}));
  EXPECT_EQ(Frequencies(0), (Texts{"1", "2"}));
}

TEST_P(CapacitorSetFile, CutsALineInAPageAtItsFirstNul) {
  const std::string nul(1, '\0');
  Load(Page(0, "x", {"*1 2pF" + nul + " 3 4", nul + "*2", "*3"}));
  const Rows rows = ShownRows(0);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0][0], "1");
  EXPECT_EQ(rows[0][2], "0.0000 %");
  EXPECT_EQ(rows[1][0], "3");
}

TEST_P(CapacitorSetFile, ReadsALineThatIsAStarAloneAsARowThatEndsThePage) {
  Load(Page(0, "x", {"*1", "*", "*3"}));
  EXPECT_EQ(Frequencies(0), (Texts{"1"}));
}

TEST_P(CapacitorSetFile, ReadsNoMoreOfALineThanAComma) {
  Load(Page(0, "x", {"*1,*2", "*3"}));
  EXPECT_EQ(Frequencies(0), (Texts{"1", "2", "3"}));
}

// Pages.

TEST_P(CapacitorSetFile, ReadsItsPagesInAnyOrder) {
  Load(Joined({Page(3, "S3", {"*31", "*32"}),
               {"!"},
               Page(1, "S1", {"*11"}),
               {"!"},
               Page(2, "S2", {"*21"}),
               {"!"},
               Page(0, "S0", {"*1"}),
               {"!"}}));
  EXPECT_EQ(Frequencies(0), (Texts{"1"}));
  EXPECT_EQ(Frequencies(1), (Texts{"11"}));
  EXPECT_EQ(Frequencies(2), (Texts{"21"}));
  EXPECT_EQ(Frequencies(3), (Texts{"31", "32"}));
  for (std::int16_t page = 0; page < 4; ++page) {
    EXPECT_EQ(data_->GetCalPageSerial(page), "S" + std::to_string(page));
  }
  EXPECT_TRUE(data_->LoadNotices().empty());
}

TEST_P(CapacitorSetFile, ReadsPageLinesAndEndsInAnyCase) {
  for (const char* end : {"!END", "!End", "!end", "!eNd"}) {
    std::string lower = Name(1);
    lower[0] = 'r';
    lower[1] = 't';
    lower[5] = 'a';
    Load(Joined({{"#" + lower + " : s1", "*1", end, "*2", "!"}}));
    EXPECT_EQ(Frequencies(1), (Texts{"1"})) << end;
    EXPECT_EQ(data_->GetCalPageSerial(1), "s1") << end;
  }
}

TEST_P(CapacitorSetFile, LosesDataLinesOutsideOfItsPages) {
  Load(Joined({{"*1"}, Page(0, "x", {"*2"}), {"*3", "!"}, PagesBut({0}), {"*4", "!"}}));
  EXPECT_EQ(Frequencies(0), (Texts{"2"}));
  EXPECT_EQ(Frequencies(1), (Texts{"7"}));
  EXPECT_EQ(Frequencies(2), (Texts{"7"}));
  EXPECT_EQ(Frequencies(3), (Texts{"7"}));
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
    EXPECT_EQ(Frequencies(0), (Texts{"1"})) << text;
  }
}

TEST_P(CapacitorSetFile, KeepsWhatThePageHeldThatItDoesNotName) {
  SetRows(1, {{"11", "a", "b", "c", "d"}, {"12", "a", "b", "c", "d"}});
  data_->SetCalPageSerial(1, "before");
  LoadOver(PagesBut({1}));
  EXPECT_EQ(Frequencies(1), (Texts{"11", "12"}));
  EXPECT_EQ(data_->GetCalPageSerial(1), "before");
  EXPECT_EQ(Frequencies(0), (Texts{"7"}));
  ExpectNotice({"no page " + Name(1), "default data"});
}

TEST_P(CapacitorSetFile, KeepsTheRowsOfAPageThatItDoesNotFill) {
  SetRows(0, {{"11", "a", "b", "c", "d"}, {"12", "a", "b", "c", "d"}, {"13", "a", "b", "c", "d"}});
  LoadOver(Joined({Page(0, "x", {"*1"}), {"!"}}));
  EXPECT_EQ(Frequencies(0), (Texts{"1", "12", "13"}));
  EXPECT_EQ(ShownRows(0)[1], (Row{"12", "a", "b", "c", "d"}));
}

TEST_P(CapacitorSetFile, ReadsAPageThatStandsTwiceOverItsEarlierRowsAndSaysSo) {
  Load(Joined(
      {Page(0, "S0", {"*1", "*2", "*3"}), {"!"}, PagesBut({0}), Page(0, "S9", {"*4"}), {"!"}}));
  EXPECT_EQ(Frequencies(0), (Texts{"4", "2", "3"}));
  EXPECT_EQ(data_->GetCalPageSerial(0), "S9");
  ExpectNotice({"page " + Name(0), "more than once", "over those of the earlier one"});
}

TEST_P(CapacitorSetFile, TellsAPageThatStandsThreeTimesOnce) {
  Load(Joined({Page(0, "a", {"*1"}), Page(0, "b", {"*2"}), Page(0, "c", {"*3"}), PagesBut({0})}));
  EXPECT_EQ(Frequencies(0), (Texts{"3"}));
  ExpectNotice({"page " + Name(0), "more than once"});
}

TEST_P(CapacitorSetFile, ReadsAPageWithoutItsEndThroughTheNextPageLineAndSaysSo) {
  Load(Joined({{"#" + Name(0) + " : S0", "*1", "*2", "#" + Name(1) + " : S1", "*3", "!END", "!"},
               PagesBut({0, 1})}));
  // The "#" is dropped, the page's name taken for a frequency.
  EXPECT_EQ(Frequencies(0), (Texts{"1", "2", Name(1), "3"}));
  EXPECT_EQ(data_->GetCalPageSerial(0), "S0");
  EXPECT_EQ(data_->GetCalPageSerial(1), "");
  EXPECT_EQ(Frequencies(1), (Texts{""}));
  ExpectNotices({{"page " + Name(0), "!END", "one of its rows", "#" + Name(1) + " : S1"},
                 {"no page " + Name(1), "default data"}});
}

TEST_P(CapacitorSetFile, HidesWhatStandsBehindAnExclamationMarkInAPageWithoutItsEnd) {
  Load(Joined({{"#" + Name(0) + " : S0", "*1", "!", "#" + Name(1) + " : S1", "*3", "!END", "!"},
               PagesBut({0, 1})}));
  EXPECT_EQ(Frequencies(0), (Texts{"1"}));
  ExpectNotices({{"page " + Name(0), "no data line", ": !"},
                 {"page " + Name(0), "!END", "#" + Name(1) + " : S1"},
                 {"no page " + Name(1)}});
}

TEST_P(CapacitorSetFile, TellsOfARowWithoutAFrequency) {
  Load(Joined({{"#" + Name(0) + " : S0", "*1", "*", "*3", "!END", "!"}, PagesBut({0})}));
  EXPECT_EQ(Frequencies(0), (Texts{"1"}));
  ExpectNotice({"page " + Name(0), "row 2", "no frequency"});
}

TEST_P(CapacitorSetFile, LosesTheLastLineOfAFileThatEndsInsideAPageAndSaysSo) {
  Load(Joined({PagesBut({2}), {"#" + Name(2) + " : S2", "*1", "*2", "*3"}}));
  EXPECT_EQ(Frequencies(2), (Texts{"1", "2"}));
  EXPECT_EQ(data_->GetCalPageSerial(2), "S2");
  ExpectNotice({"page " + Name(2), "!END", "last line of the file was not read"});
}

TEST_P(CapacitorSetFile, ReadsNoRowOfAPageWhoseOnlyLineIsTheLastOfTheFile) {
  Load(Joined({PagesBut({2}), {"#" + Name(2) + " : S2", "*1"}}));
  EXPECT_EQ(Frequencies(2), (Texts{""}));
  EXPECT_EQ(data_->GetCalPageSerial(2), "S2");
  ExpectNotice({"page " + Name(2), "!END"});
}

TEST_P(CapacitorSetFile, DoesNotReadAPageLineThatIsTheLastLineOfTheFile) {
  Load(Joined({PagesBut({2}), {"#" + Name(2) + " : S2"}}));
  EXPECT_EQ(data_->GetCalPageSerial(2), "");
  ExpectNotice({"no page " + Name(2)});
}

TEST_P(CapacitorSetFile, MayEndWithTheEndOfItsLastPage) {
  Load(Joined({PagesBut({2}), Page(2, "S2", {"*1", "*2"})}));
  EXPECT_EQ(Frequencies(2), (Texts{"1", "2"}));
  EXPECT_TRUE(data_->LoadNotices().empty());
}

TEST_P(CapacitorSetFile, MayLackTheLineEndBehindItsLastLine) {
  std::string file = Lines(Joined({PagesBut({2}), Page(2, "S2", {"*1", "*2"})}));
  file.resize(file.size() - 2);
  tree_.Write(kFile, file);
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(Frequencies(2), (Texts{"1", "2"}));
  EXPECT_TRUE(data_->LoadNotices().empty());
}

TEST_P(CapacitorSetFile, OfAnotherModelIsReadAndSaysSo) {
  Load(Joined(
      {{std::string("#MODEL_NO : ") + GetParam().otherCode, "#SER_NO   : 12"}, PagesBut({})}));
  EXPECT_EQ(data_->ModelNumber(), GetParam().code);
  EXPECT_EQ(data_->SerialNumber(), "12");
  EXPECT_EQ(Frequencies(0), (Texts{"7"}));
  ExpectNotice({std::string("\"") + GetParam().otherCode + "\"",
                std::string("\"") + GetParam().code + "\""});
}

TEST_P(CapacitorSetFile, OfTheOtherSetSaysThatItsPagesAreMissing) {
  const Set& other = std::string(GetParam().code) == "RT520A" ? kSetC : kSetA;
  Texts lines = {std::string("#MODEL_NO : ") + other.code};
  for (const char* page : other.pages) {
    lines = Joined({lines, {std::string("#") + page + " : x", "*1", "!END", "!"}});
  }
  Load(lines);
  std::vector<Texts> notices = {
      {"no page " + Name(0)}, {"no page " + Name(1)}, {"no page " + Name(2)}};
  if (std::string(GetParam().code) == "RT520A") {
    notices.push_back({"no page " + Name(3)});
  }
  notices.push_back({std::string("\"") + other.code + "\""});
  ExpectNotices(notices);
  EXPECT_EQ(Frequencies(0), (Texts{""}));
}

TEST_P(CapacitorSetFile, OfItsOwnModelOrOfNoneSaysNothing) {
  Load(Joined({{std::string("#MODEL_NO : ") + GetParam().code}, PagesBut({})}));
  EXPECT_TRUE(data_->LoadNotices().empty());
  Load(PagesBut({}));
  EXPECT_TRUE(data_->LoadNotices().empty());
  Load(Joined({{"#MODEL_NO : "}, PagesBut({})}));
  EXPECT_EQ(data_->ModelNumber(), GetParam().code);
  EXPECT_TRUE(data_->LoadNotices().empty());
}

TEST_P(CapacitorSetFile, ForgetsTheNoticesOfAnEarlierLoad) {
  Load(PagesBut({0}));
  EXPECT_EQ(data_->LoadNotices().size(), 1U);
  LoadOver(PagesBut({}));
  EXPECT_TRUE(data_->LoadNotices().empty());
  LoadOver(Joined({PagesBut({}), PagesBut({1, 2, 3})}));
  ExpectNotice({"page " + Name(0), "more than once"});
}

// The largest page and the longest line.

TEST_P(CapacitorSetFile, HoldsPagesOf51RowsWhole) {
  Load(Joined({Page(0, "x", ManyLines(51)), {"!"}, PagesBut({0})}));
  EXPECT_EQ(Frequencies(0), ManyFrequencies(51));
  EXPECT_TRUE(data_->LoadNotices().empty());
  SetRows(1, ManyRows(51));
  const std::string file = Saved();
  data_ = set_.create();
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(Frequencies(0), ManyFrequencies(51));
  EXPECT_EQ(Frequencies(1), ManyFrequencies(51));
  EXPECT_TRUE(Contains(file, "\r\n*           51 : "));
}

TEST_P(CapacitorSetFile, With52RowsInAPageIsAnIndexErrorOfItsLine) {
  const Error error = LoadError(Joined(
      {{"#SER_NO   : 12"}, Page(0, "x", ManyLines(52)), {"#SER_NO   : 13", "!"}, PagesBut({0})}));
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 2 + 52);
  EXPECT_TRUE(Contains(error.Text(), "51")) << error.Text();
  // What was read stays.
  EXPECT_EQ(data_->SerialNumber(), "12");
  EXPECT_EQ(data_->GetCalPageSerial(0), "x");
  EXPECT_EQ(Frequencies(0), ManyFrequencies(51));
}

TEST_P(CapacitorSetFile, With52RowsAsItsLastLineLosesThatLine) {
  Load(Joined({PagesBut({0}), {"#" + Name(0) + " : x"}, ManyLines(52)}));
  EXPECT_EQ(Frequencies(0), ManyFrequencies(51));
  ExpectNotice({"page " + Name(0), "!END"});
}

TEST_P(CapacitorSetFile, MayHave16WordsOnADataLineButNot17) {
  Load(Page(0, "x", {"*1 2pF 3 4 5 6 7 8 9 10 11 12 13 14 15 16", "*2"}));
  EXPECT_EQ(Frequencies(0), (Texts{"1", "2"}));
  const Error error =
      LoadError(Page(0, "x", {"*0", "*1 2pF 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17", "*2"}));
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 3);
  EXPECT_TRUE(Contains(error.Text(), "16 words")) << error.Text();
  EXPECT_EQ(Frequencies(0), (Texts{"0"}));
}

TEST_P(CapacitorSetFile, MayHave21WordsOnAHeaderLineButNot22) {
  const std::string words = " 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21";
  Load({"#COMMENT" + words, "!"});
  EXPECT_EQ(data_->Comment(), "2");
  const Error error = LoadError({"!", "#COMMENT" + words + " 22", "!"});
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Line(), 2);
}

TEST_P(CapacitorSetFile, WithANumberTooLargeIsATypeErrorOfItsLine) {
  for (const char* line : {"*1:1E999pF", "*1:1pF:1E999", "*1:1pF:0:1E999", "*1:1pF:0:0:1E999"}) {
    const Error error = LoadError(Page(0, "x", {"*0", line, "*2"}));
    EXPECT_EQ(error.Kind(), ErrorKind::Type) << line;
    EXPECT_EQ(error.Path(), kFile) << line;
    EXPECT_EQ(error.Line(), 3) << line;
    EXPECT_EQ(Frequencies(0), (Texts{"0"})) << line;
  }
}

class CapacitorSetTemplate : public CapacitorSetFile {
 protected:
  [[nodiscard]] std::filesystem::path Path() const {
    return tree_.ProgramFolder() / (std::string("Temp") + GetParam().code);
  }

  [[nodiscard]] Texts Model() const { return {std::string("#MODEL_NO : ") + GetParam().code}; }

  [[nodiscard]] Error TemplateError(const Texts& lines) {
    test::WriteNative(Path(), Lines(lines));
    return ErrorOf([&] { data_->SetInitialDefaultData(); });
  }
};

TEST_P(CapacitorSetTemplate, WithoutAPageOrItsEndIsRefused) {
  for (std::size_t page = 0; page < 3; ++page) {
    const Error missing = TemplateError(Joined({Model(), PagesBut({page})}));
    EXPECT_EQ(missing.Kind(), ErrorKind::Template) << page;
    EXPECT_EQ(missing.Path(), Path().string()) << page;
    const Error endless =
        TemplateError(Joined({Model(), PagesBut({page}), {"#" + Name(page) + " : x", "*1", "!"}}));
    EXPECT_EQ(endless.Kind(), ErrorKind::Template) << page;
  }
}

// The grid.

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
  for (std::int16_t page = 0; page < 4; ++page) {
    MemoryGrid grid(5);
    data_->GetCalData(page, grid);
    EXPECT_EQ(grid.CellText(0, 1), GetParam().captions.at(static_cast<std::size_t>(page))) << page;
  }
}

TEST_P(CapacitorSetFile, IsShownWithOneEmptyRowForAnEmptyPage) {
  for (std::int16_t page = 0; page < 5; ++page) {
    MemoryGrid grid(5);
    grid.AddRow("left\tover\tx\ty\tz");
    grid.AddRow("left\tover\tx\ty\tz");
    data_->GetCalData(page, grid);
    EXPECT_EQ(grid.RowCount(), 2) << page;
    for (std::int16_t column = 0; column < 5; ++column) {
      EXPECT_EQ(grid.CellText(1, column), "") << page << ", " << column;
    }
  }
}

TEST_P(CapacitorSetFile, IsShownUpToTheFirstEmptyFrequency) {
  SetRows(0, {{"1", "", "", "", ""}, {"", "a", "b", "c", "d"}, {"3", "a", "b", "c", "d"}});
  EXPECT_EQ(ShownRows(0), (Rows{{"1", "", "", "", ""}}));
  SetRows(0, {{"", "a", "b", "c", "d"}, {"2", "e", "f", "g", "h"}});
  EXPECT_EQ(ShownRows(0), (Rows{{"", "a", "b", "c", "d"}, {"2", "e", "f", "g", "h"}}));
}

TEST_P(CapacitorSetFile, TakesTheTextsOfTheGridUnchanged) {
  const Rows rows = {{" 1 ", " a", "b ", "%", "ppm"}, {"x", "", "", "", "\xCE\xA9"}};
  SetRows(1, rows);
  EXPECT_EQ(ShownRows(1), rows);
  EXPECT_EQ(Frequencies(0), (Texts{""}));
}

TEST_P(CapacitorSetFile, ReplacesAWholePageByTheGrid) {
  SetRows(0, ManyRows(51));
  SetRows(0, {{"1", "a", "b", "c", "d"}});
  EXPECT_EQ(Frequencies(0), (Texts{"1"}));
  // What was behind it is gone as well, not just hidden.
  LoadOver(Page(0, "x", {"*1", "*2"}));
  EXPECT_EQ(Frequencies(0), (Texts{"1", "2"}));
  SetRows(0, {});
  EXPECT_EQ(ShownRows(0), (Rows{{"", "", "", "", ""}}));
}

TEST_P(CapacitorSetFile, TakesNoGridOf52DataRows) {
  SetRows(0, ManyRows(51));
  EXPECT_EQ(ShownRows(0), ManyRows(51));
  EXPECT_EQ(ErrorOf([&] { SetRows(0, ManyRows(52)); }).Kind(), ErrorKind::Index);
}

TEST_P(CapacitorSetFile, KeepsAFifthPageThatIsNeverWritten) {
  SetRows(4, ManyRows(2));
  data_->SetCalPageSerial(4, "fifth");
  EXPECT_EQ(ShownRows(4), ManyRows(2));
  EXPECT_EQ(data_->GetCalPageSerial(4), "fifth");
  EXPECT_FALSE(Contains(Saved(), "fifth"));
  EXPECT_FALSE(Contains(Saved(), "\r\n*"));
}

TEST_P(CapacitorSetFile, HasNoPageOutside0To4) {
  for (const std::int16_t page :
       {std::int16_t{INT16_MIN}, std::int16_t{-1}, std::int16_t{5}, std::int16_t{INT16_MAX}}) {
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

TEST_P(CapacitorSetFile, KeepsASerialNumberForEachPage) {
  for (std::int16_t page = 0; page < 5; ++page) {
    EXPECT_EQ(data_->GetCalPageSerial(page), "") << page;
    data_->SetCalPageSerial(page, "S" + std::to_string(page));
  }
  for (std::int16_t page = 0; page < 5; ++page) {
    EXPECT_EQ(data_->GetCalPageSerial(page), "S" + std::to_string(page)) << page;
  }
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

TEST_F(CapacitorSetAFile, TakesTheSignsOfTheOptionForSerialNumbers) {
  for (const char* serial : {"*", "/", ""}) {
    data_->SetCalPageSerial(3, serial);
    EXPECT_EQ(data_->GetCalPageSerial(3), serial);
    EXPECT_EQ(data_->GetCalPageCount(), 4);
    EXPECT_TRUE(Contains(Saved(), Lines({std::string("#RT524A    :     ") + serial, "!END", "!"})));
  }
}

TEST_F(CapacitorSetAFile, WithoutItsFourthPageSaysSo) {
  Load(PagesBut({3}));
  EXPECT_EQ(data_->GetCalPageCount(), 4);
  ExpectNotice({"no page RT524A", "default data"});
}

// Option 001.

TEST_F(CapacitorSetCFile, OfANewObjectIsWithoutTheOption) {
  EXPECT_EQ(data_->GetCalPageCount(), 3);
  EXPECT_EQ(data_->GetCalPageSerial(3), "");
}

TEST_F(CapacitorSetCFile, WithoutTheOptionPageIsReadAndWrittenWithThreePages) {
  const Texts lines = Joined({Header(),
                              kBlock,
                              Page(0, "S0", {}),
                              {"!"},
                              Page(1, "S1", {}),
                              {"!"},
                              Page(2, "S2", {}),
                              {"!"}});
  Load(lines);
  EXPECT_EQ(data_->GetCalPageCount(), 3);
  EXPECT_EQ(data_->GetCalPageSerial(3), "*");
  EXPECT_TRUE(data_->LoadNotices().empty());
  EXPECT_EQ(Saved(), Lines(lines));
}

TEST_F(CapacitorSetCFile, WithTheOptionPageIsReadAndWrittenWithFour) {
  const Texts lines = Joined({Header(),
                              kBlock,
                              Page(0, "S0", {}),
                              {"!"},
                              Page(1, "S1", {}),
                              {"!"},
                              Page(2, "S2", {}),
                              {"!"},
                              Page(3, "S3", {}),
                              {"!"}});
  Load(lines);
  EXPECT_EQ(data_->GetCalPageCount(), 4);
  EXPECT_EQ(data_->GetCalPageSerial(3), "S3");
  EXPECT_EQ(Saved(), Lines(lines));
}

TEST_F(CapacitorSetCFile, WithTheOptionPageWithoutASerialNumberHasTheOption) {
  Load({"#RT528A", "*1", "!END", "!"});
  EXPECT_EQ(data_->GetCalPageCount(), 4);
  EXPECT_EQ(data_->GetCalPageSerial(3), "");
  EXPECT_EQ(Frequencies(3), (Texts{"1"}));
}

TEST_F(CapacitorSetCFile, SwitchesTheOptionOffAndOnWithTheSerialNumberThatItHad) {
  Load(Joined({Page(3, "S3", {"*1"}), {"!"}}));
  data_->SetCalPageSerial(3, "*");
  EXPECT_EQ(data_->GetCalPageCount(), 3);
  EXPECT_EQ(data_->GetCalPageSerial(3), "*");
  data_->SetCalPageSerial(3, "*");
  EXPECT_EQ(data_->GetCalPageSerial(3), "*");
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(data_->GetCalPageCount(), 4);
  EXPECT_EQ(data_->GetCalPageSerial(3), "S3");
  EXPECT_EQ(Frequencies(3), (Texts{"1"}));
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(data_->GetCalPageSerial(3), "S3");
}

TEST_F(CapacitorSetCFile, SwitchesTheOptionOnWithAnyOtherSerialNumber) {
  for (const char* serial : {"S9", "", "**", "//", " * ", "/ "}) {
    data_->SetCalPageSerial(3, "*");
    data_->SetCalPageSerial(3, serial);
    EXPECT_EQ(data_->GetCalPageCount(), 4) << serial;
    EXPECT_EQ(data_->GetCalPageSerial(3), serial);
    data_->SetCalPageSerial(3, "*");
    data_->SetCalPageSerial(3, "/");
    EXPECT_EQ(data_->GetCalPageSerial(3), serial);
  }
}

TEST_F(CapacitorSetCFile, SwitchesTheOptionOnWithoutASerialNumberWhereItHadNone) {
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(data_->GetCalPageCount(), 4);
  EXPECT_EQ(data_->GetCalPageSerial(3), "");
}

TEST_F(CapacitorSetCFile, TakesTheSignsOfTheOptionForSerialNumbersOnOtherPages) {
  for (const std::int16_t page : {std::int16_t{0}, std::int16_t{1}, std::int16_t{2}}) {
    for (const char* serial : {"*", "/"}) {
      data_->SetCalPageSerial(page, serial);
      EXPECT_EQ(data_->GetCalPageSerial(page), serial) << page;
      EXPECT_EQ(data_->GetCalPageCount(), 3) << page;
    }
  }
}

TEST_F(CapacitorSetCFile, LeavesTheGridAsItIsForAnAbsentOption) {
  SetRows(3, ManyRows(2));
  data_->SetCalPageSerial(3, "*");
  MemoryGrid grid(5);
  grid.SetCellText(0, 0, "caption");
  grid.AddRow("left\tover");
  data_->GetCalData(3, grid);
  EXPECT_EQ(grid.RowCount(), 2);
  EXPECT_EQ(grid.CellText(0, 0), "caption");
  EXPECT_EQ(grid.CellText(1, 1), "over");
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(ShownRows(3), ManyRows(2));
}

TEST_F(CapacitorSetCFile, TakesAwayAnEarlierOptionWhenItHasNone) {
  data_->SetCalPageSerial(3, "S3");
  SetRows(3, ManyRows(1));
  LoadOver(PagesBut({3}));
  EXPECT_EQ(data_->GetCalPageCount(), 3);
  EXPECT_EQ(data_->GetCalPageSerial(3), "*");
  // The page is kept for the option's return.
  data_->SetCalPageSerial(3, "/");
  EXPECT_EQ(data_->GetCalPageSerial(3), "S3");
  EXPECT_EQ(ShownRows(3), ManyRows(1));
}

TEST_F(CapacitorSetCFile, WhoseOptionPageHasNoEndSaysSo) {
  Load(Joined({PagesBut({3}), {"#RT528A : S3", "*1", "*2"}}));
  EXPECT_EQ(data_->GetCalPageCount(), 4);
  EXPECT_EQ(Frequencies(3), (Texts{"1"}));
  ExpectNotice({"page RT528A", "!END"});
}

TEST_F(CapacitorSetCFile, MayBeATemplateWithoutTheOption) {
  test::WriteNative(tree_.ProgramFolder() / "TempRT520C",
                    Lines(Joined({{"#MODEL_NO : RT520C"}, PagesBut({3})})));
  EXPECT_EQ(data_->SetInitialDefaultData(), 0);
  EXPECT_EQ(data_->GetCalPageCount(), 3);
}

INSTANTIATE_TEST_SUITE_P(Sets, CapacitorSetFile, testing::Values(kSetA, kSetC),
                         [](const auto& test) { return std::string(test.param.code); });
INSTANTIATE_TEST_SUITE_P(Sets, CapacitorSetLine, testing::Values(kSetA, kSetC),
                         [](const auto& test) { return std::string(test.param.code); });
INSTANTIATE_TEST_SUITE_P(Sets, CapacitorSetTemplate, testing::Values(kSetA, kSetC),
                         [](const auto& test) { return std::string(test.param.code); });

}  // namespace
}  // namespace tarvell
