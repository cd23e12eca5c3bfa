// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/StepAttenuator.h"
#include "core/caldata/cInstrPX60G.h"
#include "core/caldata/cInstrPX60H.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::ErrorOf;
using test::Lines;
using Texts = std::vector<std::string>;
using Row = std::array<std::string, 3>;
using Rows = std::vector<Row>;
using Widths = std::array<std::int32_t, 3>;

constexpr const char* kFile = "c:\\data\\SN12345";

struct WidthCase {
  float gridWidth;
  Widths columns;
};

/// In what the two models differ.
struct Attenuator {
  const char* code;
  std::unique_ptr<cifCaldata> (*create)();
  const char* frequencyCaption;  ///< of the grid
  Texts commentLines;            ///< between the header and the data lines
  std::vector<WidthCase> widths;
};

template <typename Class>
std::unique_ptr<cifCaldata> Create() {
  return std::make_unique<Class>();
}

// clang-format off
const std::vector<Attenuator> kAttenuators = {
    {"PX60H", &Create<cInstrPX60H>, "Frequency[Hz]",
     {"!", "! Setting  /  Freq  /  CalData ", "! 50M/1000MHz are calibration points."},
     {{9000.0F,  {2900, 2985, 2985}},
      {10000.0F, {3233, 3318, 3318}},    // a third is 3333.33
      {10001.0F, {3234, 3319, 3319}},    // 3333.67
      {1000.75F, { 234,  319,  319}},    // 333.58
      {0.0F,     {-100,  -15,  -15}}}},
    {"PX60G", &Create<cInstrPX60G>, "Freq[Hz]",
     {"!", "! Setting  /  Freq  /  CalData "},
     {{9000.0F,  {2830, 2890, 2910}},
      {10000.0F, {3163, 3223, 3243}},
      {10001.0F, {3164, 3224, 3244}},
      {1000.75F, { 164,  224,  244}},
      {0.0F,     {-170, -110,  -90}}}},
};
// clang-format on

void PrintTo(const Attenuator& attenuator, std::ostream* stream) {
  *stream << attenuator.code;
}

/// Settings 1 to `count`, all at 50 MHz.
Rows ManyRows(int count) {
  Rows rows;
  for (int i = 1; i <= count; ++i) {
    rows.push_back({std::to_string(i), "5.00E07", std::to_string(i) + ".0000"});
  }
  return rows;
}

/// The data line of the `i`-th of those.
std::string LineOfMany(int i) {
  const std::string blanks(i < 10 ? 1 : 0, ' ');
  const std::string number = blanks + std::to_string(i);
  return "* " + number + "  :   5.00E07   :  " + number + ".0000";
}

class StepAttenuatorTest : public testing::TestWithParam<Attenuator> {
 protected:
  StepAttenuatorTest() { tree_.MakeFolders("c:\\data"); }

  /// Puts rows into the table, as an editor does.
  void SetRows(const Rows& rows, std::int16_t page = 0) {
    MemoryGrid grid(3);
    for (const Row& row : rows) {
      grid.AddRow(row[0] + "\t" + row[1] + "\t" + row[2]);
    }
    data_->SetCalData(page, grid);
  }

  [[nodiscard]] Rows ShownRows() const {
    MemoryGrid grid;
    data_->GetCalData(0, grid);
    Rows rows;
    for (std::int16_t row = 1; row < grid.RowCount(); ++row) {
      rows.push_back({grid.CellText(row, 0), grid.CellText(row, 1), grid.CellText(row, 2)});
    }
    return rows;
  }

  std::string Saved() {
    EXPECT_EQ(data_->SaveCalibrationDataToFile(kFile), 0);
    return tree_.Read(kFile);
  }

  void Load(const Texts& lines) {
    tree_.Write(kFile, Lines(lines));
    EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  }

  [[nodiscard]] static std::string FileOf(const Texts& header, const Texts& dataLines) {
    Texts lines = header;
    lines.insert(lines.end(), GetParam().commentLines.begin(), GetParam().commentLines.end());
    lines.insert(lines.end(), dataLines.begin(), dataLines.end());
    lines.emplace_back("!End");
    return Lines(lines);
  }

  /// The whole file that an object without header values and with these data lines writes.
  [[nodiscard]] static std::string FileOf(const Texts& dataLines) {
    return FileOf({"#MODEL_NO : ", "#SER_NO   : ", "#CAL_DATE : 00000",
                   "#CAL_NO   : ", "#DUE_DATE : 00000", "#COMMENT  : "},
                  dataLines);
  }

  [[nodiscard]] std::string TextToEdit(std::int16_t column, const std::string& text) const {
    std::string unit = "before";
    std::string shown = data_->GetCalibrationDataFormat(0, column, 0, text, unit);
    EXPECT_EQ(unit, "") << "column " << column << ", " << text;
    return shown;
  }

  [[nodiscard]] std::string TextToStore(std::int16_t column, const std::string& text) const {
    return data_->SetCalibrationDataFormat(0, column, 0, text, "None");
  }

  test::TestTree tree_;
  std::unique_ptr<cifCaldata> data_ = GetParam().create();
};

// The file.

TEST_P(StepAttenuatorTest, WritesTheWholeFileByteForByte) {
  data_->SetModelNumber(GetParam().code);
  data_->SetSerialNumber("3318A12345");
  data_->SetCalDate(2001, "MAR", 5);
  data_->SetCalibrationNumber("C-0042");
  data_->SetDueDate(2002, "NOV", 25);
  data_->SetComment("factory");
  SetRows({{"0", "6.9925E09", "0.0512"}, {"10", "5.00E07", "10.0123"}, {"120", "1E5", "119.98"}});
  const std::string note =
      std::string(GetParam().code) == "PX60H" ? "! 50M/1000MHz are calibration points.\r\n" : "";
  EXPECT_EQ(Saved(), std::string("#MODEL_NO : ") + GetParam().code +
                         "\r\n"
                         "#SER_NO   : 3318A12345\r\n"
                         "#CAL_DATE : 20010305\r\n"
                         "#CAL_NO   : C-0042\r\n"
                         "#DUE_DATE : 20021125\r\n"
                         "#COMMENT  : factory\r\n"
                         "!\r\n"
                         "! Setting  /  Freq  /  CalData \r\n" +
                         note +
                         "*  0  :  6.9925E09   :   0.0512\r\n"
                         "* 10  :   5.00E07   :  10.0123\r\n"
                         "*120  :       1E5   :   119.98\r\n"
                         "!End\r\n");
}

TEST_P(StepAttenuatorTest, WritesAnEmptyTableWithoutDataLines) {
  EXPECT_EQ(Saved(), FileOf({}));
}

TEST_P(StepAttenuatorTest, AlignsTextsToTheRightOfTheirFields) {
  SetRows({{"1", "2", "3"}, {"123", "12345678", "1234567"}, {"12", "1234567", "123456"}});
  EXPECT_EQ(Saved(), FileOf({"*  1  :         2   :        3", "*123  :  12345678   :  1234567",
                             "* 12  :   1234567   :   123456"}));
}

TEST_P(StepAttenuatorTest, WritesATextWiderThanItsFieldWhole) {
  SetRows({{"1000", "5.00E07", "1.0000"},
           {"1", "123456789", "1.0000"},
           {"1", "5.00E07", "100.0000"},
           {"12345", "1234567890123", "-1234.56789"}});
  EXPECT_EQ(Saved(), FileOf({"*1000  :   5.00E07   :   1.0000", "*  1  :  123456789   :   1.0000",
                             "*  1  :   5.00E07   :  100.0000",
                             "*12345  :  1234567890123   :  -1234.56789"}));
}

TEST_P(StepAttenuatorTest, LoadsAndSavesWideTextsWhole) {
  const Texts lines = {"* 10  :  6.9925E09   :  10.01234",
                       "*1000  :  123456789012   :  1000.00001"};
  Load({lines[0], lines[1], "!End"});
  EXPECT_EQ(ShownRows(),
            (Rows{{"10", "6.9925E09", "10.01234"}, {"1000", "123456789012", "1000.00001"}}));
  EXPECT_EQ(Saved(), FileOf(lines));
}

TEST_P(StepAttenuatorTest, CountsCharactersNotBytesInAField) {
  SetRows({{"\xC2\xB5", "5\xC2\xB5", "\xC2\xB5"}});
  EXPECT_EQ(Saved(), FileOf({"*  \xB5  :        5\xB5   :        \xB5"}));
}

TEST_P(StepAttenuatorTest, WritesTextsAsTheyAre) {
  SetRows({{"010", "50000000", "10"}, {"x", "none", "?"}});
  EXPECT_EQ(Saved(), FileOf({"*010  :  50000000   :       10", "*  x  :      none   :        ?"}));
}

TEST_P(StepAttenuatorTest, AnEmptySettingHidesEveryRowBehindItFromTheFile) {
  SetRows({{"0", "5.00E07", "0.0000"}, {"", "5.00E07", "5.0000"}, {"10", "5.00E07", "10.0000"}});
  EXPECT_EQ(Saved(), FileOf({"*  0  :   5.00E07   :   0.0000"}));
  SetRows({{"", "5.00E07", "5.0000"}, {"10", "5.00E07", "10.0000"}});
  EXPECT_EQ(Saved(), FileOf({}));
}

TEST_P(StepAttenuatorTest, WritesARowWithoutFrequencyAndValue) {
  SetRows({{"10", "", ""}, {"20", "5.00E07", ""}});
  EXPECT_EQ(Saved(), FileOf({"* 10  :             :         ", "* 20  :   5.00E07   :         "}));
}

TEST_P(StepAttenuatorTest, ReadsTheThreeWordsOfADataLine) {
  Load({"* 10  :   5.00E07   :  10.0123", "*  0  :  6.9925E09   :   0.0512", "*1:2:3", "*4 5 6 7",
        "* 8 :: 9\t10", "!End"});
  EXPECT_EQ(ShownRows(), (Rows{{"10", "5.00E07", "10.0123"},
                               {"0", "6.9925E09", "0.0512"},
                               {"1", "2", "3"},
                               {"4", "5", "6"},
                               {"8", "9", "10"}}));
}

TEST_P(StepAttenuatorTest, ADataLineWithFewerWordsLeavesTheMissingFieldsEmpty) {
  Load({"*10:5.00E07:10.0123", "*20:1.00E09", "*30", "!End"});
  EXPECT_EQ(ShownRows(),
            (Rows{{"10", "5.00E07", "10.0123"}, {"20", "1.00E09", ""}, {"30", "", ""}}));
}

TEST_P(StepAttenuatorTest, EndsTheTableAtADataLineWithoutWords) {
  Load({"*10:5.00E07:10.0123", "* : :", "*30:5.00E07:30.0123", "!End"});
  EXPECT_EQ(ShownRows(), (Rows{{"10", "5.00E07", "10.0123"}}));
}

TEST_P(StepAttenuatorTest, LosesADataLineThatIsTheLastLineOfItsFile) {
  Load({"*10:5.00E07:10.0123", "*20:5.00E07:20.0123"});
  EXPECT_EQ(ShownRows(), (Rows{{"10", "5.00E07", "10.0123"}}));
}

TEST_P(StepAttenuatorTest, SkipsLinesOfEveryOtherKind) {
  Load({"! 1 2 3", "", " leading", "10:5.00E07:10.0123", "*10:5.00E07:10.0123", "", "!End",
        "*20:5.00E07:20.0123", "!End"});
  EXPECT_EQ(ShownRows(), (Rows{{"10", "5.00E07", "10.0123"}, {"20", "5.00E07", "20.0123"}}));
}

TEST_P(StepAttenuatorTest, CutsAHeaderLineAtItsFirstNulAndTakesOneInADataLineForABlank) {
  const std::string nul(1, '\0');
  data_->SetComment("before");
  Load({"#COMMENT  : " + nul + "z", "#CAL_NO   : C-1" + nul + "2",
        "#SER_NO 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 " + nul + " 21 22 23",
        "*1" + nul + "2" + nul + "3", "!End"});
  EXPECT_EQ(data_->Comment(), "");
  EXPECT_EQ(data_->CalibrationNumber(), "C-1");
  EXPECT_EQ(data_->SerialNumber(), "1");
  EXPECT_EQ(ShownRows(), (Rows{{"1", "2", "3"}}));
}

TEST_P(StepAttenuatorTest, ALoadKeepsTheRowsThatTheFileDoesNotFill) {
  SetRows({{"1", "2", "3"}, {"4", "5", "6"}, {"7", "8", "9"}});
  Load({"*10:5.00E07:10.0123", "!End"});
  EXPECT_EQ(ShownRows(), (Rows{{"10", "5.00E07", "10.0123"}, {"4", "5", "6"}, {"7", "8", "9"}}));
}

TEST_P(StepAttenuatorTest, WritesAFileBackByteForByte) {
  const Texts header = {std::string("#MODEL_NO : ") + GetParam().code,
                        "#SER_NO   : 3318A12345",
                        "#CAL_DATE : 20010305",
                        "#CAL_NO   : C-0042",
                        "#DUE_DATE : 20020305",
                        "#COMMENT  : factory"};
  const std::string file =
      FileOf(header, {"*  0  :   1.00E05   :   0.0512", "*  0  :  6.9925E09   :  -0.0001",
                      "* 10  :   5.00E07   :  10.0123", "*120  :   1.00E09   :  119.9876",
                      "*1000  :  123456789   :  1000.0000", "*  1  :         x   :  -0.0000"});
  tree_.Write(kFile, file);
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(Saved(), file);
}

// The largest table.

TEST_P(StepAttenuatorTest, ShowsSavesAndReadsATableOf51RowsWhole) {
  const Rows rows = ManyRows(51);
  SetRows(rows);
  EXPECT_EQ(ShownRows(), rows);

  Texts lines;
  for (int i = 1; i <= 51; ++i) {
    lines.push_back(LineOfMany(i));
  }
  EXPECT_EQ(Saved(), FileOf(lines));

  data_ = GetParam().create();
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(ShownRows(), rows);
}

TEST_P(StepAttenuatorTest, The52ndDataLineIsAnIndexErrorOfItsFileAndLine) {
  Texts lines = {"#SER_NO   : 12", "!"};
  for (int i = 1; i <= 52; ++i) {
    lines.push_back(LineOfMany(i));
  }
  lines.insert(lines.end(), {"#SER_NO   : 13", "!End"});
  tree_.Write(kFile, Lines(lines));
  const Error error = ErrorOf([&] { data_->LoadCalibrationDataFromFile(kFile); });
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 2 + 52);
  EXPECT_TRUE(test::Contains(error.Text(), "51")) << error.Text();
  EXPECT_EQ(data_->SerialNumber(), "12");
  EXPECT_EQ(ShownRows(), ManyRows(51));
}

TEST_P(StepAttenuatorTest, The52ndDataLineAsTheLastLineOfItsFileIsNotRead) {
  Texts lines;
  for (int i = 1; i <= 52; ++i) {
    lines.push_back(LineOfMany(i));
  }
  Load(lines);
  EXPECT_EQ(ShownRows(), ManyRows(51));
}

TEST_P(StepAttenuatorTest, AGridOf52DataRowsIsAnIndexError) {
  EXPECT_EQ(ErrorOf([&] { SetRows(ManyRows(52)); }).Kind(), ErrorKind::Index);
}

// The grid.

TEST_P(StepAttenuatorTest, ShowsCaptionsAndRowsInThreeColumns) {
  SetRows({{"0", "1.00E05", "0.0512"}, {"10", "6.9925E09", "10.0123"}});
  MemoryGrid grid;
  grid.AddRow("left\tover");
  grid.AddRow("left\tover");
  grid.AddRow("left\tover");
  data_->GetCalData(0, grid);
  EXPECT_EQ(grid.ColumnCount(), 3);
  EXPECT_EQ(grid.CellText(0, 0), "Setting [dB]");
  EXPECT_EQ(grid.CellText(0, 1), GetParam().frequencyCaption);
  EXPECT_EQ(grid.CellText(0, 2), "Cal Data [dB]");
  ASSERT_EQ(grid.RowCount(), 3);
  EXPECT_EQ(ShownRows(), (Rows{{"0", "1.00E05", "0.0512"}, {"10", "6.9925E09", "10.0123"}}));
  EXPECT_EQ(grid.CellText(2, 0), "10");
  EXPECT_EQ(grid.CellText(2, 1), "6.9925E09");
  EXPECT_EQ(grid.CellText(2, 2), "10.0123");
}

TEST_P(StepAttenuatorTest, NarrowsAWiderGridToItsThreeColumns) {
  MemoryGrid grid(5);
  data_->GetCalData(0, grid);
  EXPECT_EQ(grid.ColumnCount(), 3);
}

TEST_P(StepAttenuatorTest, SetsColumnWidthsToTheNearestWholeNumber) {
  for (const WidthCase& test : GetParam().widths) {
    MemoryGrid grid;
    grid.SetWidth(test.gridWidth);
    data_->GetCalData(0, grid);
    EXPECT_EQ((Widths{grid.ColumnWidth(0), grid.ColumnWidth(1), grid.ColumnWidth(2)}), test.columns)
        << test.gridWidth;
  }
}

TEST_P(StepAttenuatorTest, ShowsTheCaptionRowAloneForAnEmptyTable) {
  MemoryGrid grid;
  grid.AddRow("left\tover");
  data_->GetCalData(0, grid);
  EXPECT_EQ(grid.RowCount(), 1);
  EXPECT_EQ(grid.CellText(0, 2), "Cal Data [dB]");
}

TEST_P(StepAttenuatorTest, ShowsTheSameTableForEveryPage) {
  SetRows({{"10", "5.00E07", "10.0000"}});
  for (const std::int16_t page : {std::int16_t{-1}, std::int16_t{1}, std::int16_t{INT16_MAX}}) {
    MemoryGrid grid;
    data_->GetCalData(page, grid);
    ASSERT_EQ(grid.RowCount(), 2) << page;
    EXPECT_EQ(grid.CellText(1, 0), "10") << page;
  }
}

TEST_P(StepAttenuatorTest, ShowsRowsUpToTheFirstEmptySetting) {
  SetRows({{"10", "", ""}, {"", "5.00E07", "20.0000"}, {"30", "5.00E07", "30.0000"}});
  EXPECT_EQ(ShownRows(), (Rows{{"10", "", ""}}));
}

TEST_P(StepAttenuatorTest, TakesTheTextsOfTheGridUnchanged) {
  const Rows rows = {{" 1 ", " 5E7", "91 "}, {"x", "y", "z"}, {"50", "50", "50"}};
  SetRows(rows);
  EXPECT_EQ(ShownRows(), rows);
}

TEST_P(StepAttenuatorTest, ReplacesTheWholeTableByTheGrid) {
  SetRows(ManyRows(51));
  SetRows({{"10", "5.00E07", "10.0000"}});
  EXPECT_EQ(ShownRows(), (Rows{{"10", "5.00E07", "10.0000"}}));
  // What was behind it is gone as well, not just hidden.
  Load({"*1:2:3", "*4:5:6", "!End"});
  EXPECT_EQ(ShownRows(), (Rows{{"1", "2", "3"}, {"4", "5", "6"}}));
  SetRows({});
  EXPECT_EQ(ShownRows(), Rows());
}

TEST_P(StepAttenuatorTest, EmptiesTheTableForAnyOtherPage) {
  for (const std::int16_t page : {std::int16_t{-1}, std::int16_t{1}}) {
    SetRows(ManyRows(51));
    SetRows({{"10", "5.00E07", "10.0000"}}, page);
    EXPECT_EQ(ShownRows(), Rows()) << page;
    EXPECT_EQ(Saved(), FileOf({})) << page;
    // All 51 rows are empty, not the first alone.
    Load({"*1:2:3", "!End"});
    EXPECT_EQ(ShownRows(), (Rows{{"1", "2", "3"}})) << page;
  }
}

TEST_P(StepAttenuatorTest, LooksAtNoRowOfTheGridForAnyOtherPage) {
  SetRows(ManyRows(1));
  SetRows(ManyRows(60), 1);
  EXPECT_EQ(ShownRows(), Rows());
}

// Cells.

TEST_P(StepAttenuatorTest, EditsAFrequencyInItsShortestForm) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"5.00E07", "50000000"},
      {"1.00E05", "100000"},
      {"6.9925E09", "6992500000"},
      {"5.00E-01", "0.5"},
      {"-3.50E00", "-3.5"},
      {"0.00E00", "0"},
      {"50000000", "50000000"},
      {"1d3", "1000"},
      {"5.00E07Hz", "50000000"},
      {" 7 ", "7"},
      {"1,5", "1"},
      {"abc", "0"},
      {" ", "0"},
      {"9.99999999999999E14", "999999999999999"},
      {"1E15", "1E+15"},
      {"1.5E20", "1.5E+20"},
      {"", ""}};
  for (const auto& [text, expected] : table) {
    EXPECT_EQ(TextToEdit(1, text), expected) << text;
  }
}

TEST_P(StepAttenuatorTest, EditsEveryOtherColumnFromAnEmptyText) {
  for (const std::int16_t column : {std::int16_t{-1}, std::int16_t{0}, std::int16_t{2},
                                    std::int16_t{3}, std::int16_t{INT16_MAX}}) {
    for (const char* text : {"10.0123", "10", "abc", ""}) {
      EXPECT_EQ(TextToEdit(column, text), "") << column << ", " << text;
    }
  }
}

TEST_P(StepAttenuatorTest, StoresAFrequencyWithAnExponentAndTwoDecimals) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"50000000", "5.00E07"},   {"6992500000", "6.99E09"}, {"0.5", "5.00E-01"},
      {"100000", "1.00E05"},     {"1", "1.00E00"},          {"12", "1.20E01"},
      {"1005", "1.01E03"},       {"1.0049E3", "1.00E03"},   {"1.015E6", "1.02E06"},
      {"9.994E07", "9.99E07"},   {"9.995E07", "1.00E08"},   {"99950000", "1.00E08"},
      {"9.995E99", "1.00E100"},  {"0.00995", "9.95E-03"},   {"0.09995", "1.00E-01"},
      {"-50000000", "-5.00E07"}, {"-9.995E07", "-1.00E08"}, {"-0.5", "-5.00E-01"},
      {"1E100", "1.00E100"},     {"1E-100", "1.00E-100"},   {"1d3", "1.00E03"},
      {" 5 000 ", "5.00E03"},    {"5.00E07Hz", "5.00E07"},  {"1,5", "1.00E00"},
      {"", "0.00E00"},           {"abc", "0.00E00"},        {"0", "0.00E00"}};
  for (const auto& [text, expected] : table) {
    EXPECT_EQ(TextToStore(1, text), expected) << text;
  }
}

TEST_P(StepAttenuatorTest, StoresAValueWithFourDecimals) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"10.01234", "10.0123"},  {"10.01235", "10.0124"},
      {"10.01225", "10.0123"},  {"10", "10.0000"},
      {"7.5", "7.5000"},        {".5", "0.5000"},
      {"99.99995", "100.0000"}, {"99.99994", "99.9999"},
      {"0.00005", "0.0001"},    {"0.00004999", "0.0000"},
      {"-3.25", "-3.2500"},     {"-0.00005", "-0.0001"},
      {"-0.00004", "-0.0000"},  {"-10.01235", "-10.0124"},
      {"1E3", "1000.0000"},     {"12345.67895", "12345.6790"},
      {" 7 ", "7.0000"},        {"10dB", "10.0000"},
      {"1,5", "1.0000"},        {"", "0.0000"},
      {"abc", "0.0000"}};
  for (const auto& [text, expected] : table) {
    EXPECT_EQ(TextToStore(2, text), expected) << text;
  }
}

TEST_P(StepAttenuatorTest, StoresNothingInAnyOtherColumn) {
  for (const std::int16_t column :
       {std::int16_t{-1}, std::int16_t{0}, std::int16_t{3}, std::int16_t{INT16_MAX}}) {
    for (const char* text : {"10", "", "abc"}) {
      EXPECT_EQ(TextToStore(column, text), "") << column << ", " << text;
    }
  }
}

TEST_P(StepAttenuatorTest, EditsAndStoresAlikeOnEveryPageAndRow) {
  std::string unit = "before";
  EXPECT_EQ(data_->GetCalibrationDataFormat(9, 1, -3, "5.00E07", unit), "50000000");
  EXPECT_EQ(unit, "");
  EXPECT_EQ(data_->SetCalibrationDataFormat(9, 2, -3, "10.01234", "None"), "10.0123");
}

TEST_P(StepAttenuatorTest, StoresTheSameWhateverTheUnit) {
  for (const char* unit : {"", "None", "dB", "Hz", "*"}) {
    EXPECT_EQ(data_->SetCalibrationDataFormat(0, 1, 0, "100000", unit), "1.00E05") << unit;
    EXPECT_EQ(data_->SetCalibrationDataFormat(0, 2, 0, "10", unit), "10.0000") << unit;
  }
}

TEST_P(StepAttenuatorTest, RefusesANumberTooLarge) {
  for (const std::int16_t column : {std::int16_t{1}, std::int16_t{2}}) {
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(TextToStore(column, "1E999")); }).Kind(),
              ErrorKind::Type)
        << column;
  }
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(TextToEdit(1, "1E999")); }).Kind(), ErrorKind::Type);
}

TEST_P(StepAttenuatorTest, OffersNoChoiceOfUnits) {
  for (const std::int16_t column : {std::int16_t{0}, std::int16_t{1}, std::int16_t{2}}) {
    Texts units = {"x", "y"};
    EXPECT_EQ(data_->GetCalibrationUnit(0, column, units), 0);
    EXPECT_EQ(units, (Texts{"*"})) << column;
  }
}

INSTANTIATE_TEST_SUITE_P(Models, StepAttenuatorTest, testing::ValuesIn(kAttenuators),
                         [](const auto& test) { return std::string(test.param.code); });

}  // namespace
}  // namespace tarvell
