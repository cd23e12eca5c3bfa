// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Models.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

/// The models with a single table: their files, and what the grid shows and takes.
namespace tarvell::test {
namespace {

using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

constexpr const char* kFile = "c:\\data\\SN12345";

/// A row and the data line that it is written as.
struct Written {
  Texts row;
  std::string line;
};

/// In what the models differ.
struct SingleTable {
  const char* code;
  Texts captions;      ///< of the grid
  Texts commentLines;  ///< between the header and the data lines
  std::vector<Written> written;
  bool isSensor = true;
  const char* unitOfEmptyText = "";  ///< what becomes of the unit "before" for an empty text
  Texts units = {"*"};               ///< what becomes of the units "x", "y"
};

std::string Plain(const std::string& line) {
  return line + "     :    0.0    :     0.0    :    0.0    :     0.0  ";
}
std::string Reference(const std::string& line) {
  return line + "     : (Ref.)    :     0.0    :    0.0    :     0.0  ";
}

Texts SensorComments(const std::string& unit) {
  return {"!", "!", "!        :              : Reflection Coefficient",
          "!FEQ(" + unit + "): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)"};
}

const std::vector<Written> kSensorRows = {
    {{"0.001", "98.8"}, Plain("*   0.001:     98.8")},
    {{"1", "5"}, Plain("*       1:        5")},
    {{"12345678", "100.0"}, Plain("*12345678:    100.0")},
    // A text that is wider than its field is written whole; characters count, not bytes.
    {{"123456789", "1234.56"}, Plain("*123456789:    1234.56")},
    {{"5\xC2\xB5", "\xC2\xB5"}, Plain("*      5\xB5:        \xB5")},
    {{"1.50", "098.80"}, Plain("*    1.50:    098.80")},
    {{"x", "0"}, Plain("*       x:        0")},
};

std::vector<Written> WithReference(const std::vector<Written>& further) {
  std::vector<Written> rows = kSensorRows;
  rows.insert(rows.end(), further.begin(), further.end());
  return rows;
}

const std::vector<Written> kInMHz =
    WithReference({{{"50.00", "100.0"}, Reference("*   50.00:    100.0")},
                   {{"5E1", "99.0"}, Reference("*     5E1:     99.0")},
                   {{"50MHz", "99.0"}, Reference("*   50MHz:     99.0")},
                   {{"50.001", "99.0"}, Plain("*  50.001:     99.0")},
                   {{"-50", "99.0"}, Plain("*     -50:     99.0")},
                   {{"0.05", "99.0"}, Plain("*    0.05:     99.0")}});
const std::vector<Written> kInGHz =
    WithReference({{{"0.0500", "100.0"}, Reference("*  0.0500:    100.0")},
                   {{".05", "99.0"}, Reference("*     .05:     99.0")},
                   {{"0.0501", "99.0"}, Plain("*  0.0501:     99.0")},
                   {{"50", "99.0"}, Plain("*      50:     99.0")}});

const std::vector<Written> kAttenuatorRows = {
    {{"0", "6.9925E09", "0.0512"}, "*  0  :  6.9925E09   :   0.0512"},
    {{"10", "5.00E07", "10.0123"}, "* 10  :   5.00E07   :  10.0123"},
    {{"120", "1E5", "119.98"}, "*120  :       1E5   :   119.98"},
    {{"123", "12345678", "1234567"}, "*123  :  12345678   :  1234567"},
    {{"1000", "123456789", "-1234.56789"}, "*1000  :  123456789   :  -1234.56789"},
    {{"\xC2\xB5", "5\xC2\xB5", "\xC2\xB5"}, "*  \xB5  :        5\xB5   :        \xB5"},
    {{"010", "", ""}, "*010  :             :         "},
};

const std::vector<SingleTable>& Models() {
  const Texts inMHz = {"Frequency  [MHz]", "Calibration factor[%]"};
  const Texts inGHz = {"Frequency  [GHz]", "Calibration factor[%]"};
  static const std::vector<SingleTable> kModelsOfOneTable = {
      {"PX11A", inMHz, SensorComments("MHz"), kInMHz, true, "before"},
      {"PX11D", inMHz, SensorComments("MHz"), kInMHz, true, "before"},
      {"PX12A", inMHz, SensorComments("MHz"), kInMHz, true, "", {"x", "y"}},
      {"PX13A", inGHz, SensorComments("GHz"), kInGHz, true, "", {"x", "y"}},
      {"PX60G",
       {"Setting [dB]", "Freq[Hz]", "Cal Data [dB]"},
       {"!", "! Setting  /  Freq  /  CalData "},
       kAttenuatorRows,
       false},
      {"PX60H",
       {"Setting [dB]", "Frequency[Hz]", "Cal Data [dB]"},
       {"!", "! Setting  /  Freq  /  CalData ", "! 50M/1000MHz are calibration points."},
       kAttenuatorRows,
       false}};
  return kModelsOfOneTable;
}

void PrintTo(const SingleTable& model, std::ostream* stream) {
  *stream << model.code;
}

class SingleTableTest : public testing::TestWithParam<SingleTable> {
 protected:
  SingleTableTest() { tree_.MakeFolders("c:\\data"); }

  [[nodiscard]] std::size_t Columns() const { return GetParam().captions.size(); }

  /// Puts rows into the table, as an editor does.
  void SetRows(const Rows& rows, std::int16_t page = 0) {
    MemoryGrid grid(static_cast<std::int16_t>(Columns()));
    for (const Texts& row : rows) {
      AddCells(grid, row);
    }
    data_->SetCalData(page, grid);
  }

  [[nodiscard]] Rows ShownRows(std::int16_t page = 0) const {
    MemoryGrid grid;
    grid.AddRow("left\tover");
    data_->GetCalData(page, grid);
    EXPECT_EQ(static_cast<std::size_t>(grid.ColumnCount()), Columns());
    Rows rows;
    for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
      rows.emplace_back();
      for (std::int16_t column = 0; column < grid.ColumnCount(); ++column) {
        rows.back().push_back(grid.TextOf({row, column}));
      }
    }
    return rows;
  }

  /// `count` rows, whose first cells are 1, 2 and so on.
  [[nodiscard]] Rows ManyRows(int count) const {
    Rows rows;
    for (int i = 1; i <= count; ++i) {
      rows.emplace_back(Columns(), std::to_string(i));
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

  TestTree tree_;
  std::unique_ptr<cifCaldata> data_ = FindModel(GetParam().code)->create();
};

TEST_P(SingleTableTest, WritesTheWholeFileByteForByteAndReadsItAgain) {
  data_->SetModelNumber(GetParam().code);
  data_->SetSerialNumber("3318A12345");
  data_->SetCalDate(2001, "MAR", 5);
  data_->SetCalibrationNumber("C-0042");
  data_->SetDueDate(2002, "NOV", 25);
  data_->SetComment("factory");
  const Texts header = {std::string("#MODEL_NO : ") + GetParam().code,
                        "#SER_NO   : 3318A12345",
                        "#CAL_DATE : 20010305",
                        "#CAL_NO   : C-0042",
                        "#DUE_DATE : 20021125",
                        "#COMMENT  : factory"};
  Rows rows;
  Texts lines;
  for (const Written& written : GetParam().written) {
    rows.push_back(written.row);
    lines.push_back(written.line);
  }
  SetRows(rows);
  EXPECT_EQ(Saved(), FileOf(header, lines));
  data_ = FindModel(GetParam().code)->create();
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(ShownRows(), rows);
  EXPECT_EQ(Saved(), FileOf(header, lines));
}

TEST_P(SingleTableTest, ReadsTheFirstWordsOfADataLineUpToOneWithoutThem) {
  Load({"*1:2:3:4", "*4 5 6", "  * 7 :: 8\t9", "*10", "* : :", "*3:3:3", "!End"});
  Rows expected = {{"1", "2", "3"}, {"4", "5", "6"}, {"7", "8", "9"}, {"10", "", ""}};
  for (Texts& row : expected) {
    row.resize(Columns());
  }
  EXPECT_EQ(ShownRows(), expected);
}

TEST_P(SingleTableTest, HoldsAtMost51RowsUpToTheFirstWithoutAFirstCell) {
  SetRows(ManyRows(51));
  EXPECT_EQ(ShownRows(), ManyRows(51));
  EXPECT_EQ(ErrorOf([&] { SetRows(ManyRows(52)); }).Kind(), ErrorKind::Index);
  Texts lines = {"#SER_NO   : 12", "!"};
  for (const Texts& row : ManyRows(52)) {
    lines.push_back("*" + row[0] + ":" + row[0] + ":" + row[0]);
  }
  lines.insert(lines.end(), {"#SER_NO   : 13", "!End"});
  data_ = FindModel(GetParam().code)->create();
  const Error error = ErrorOf([&] { Load(lines); });
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 2 + 52);
  // What was read stays, and can be saved and read again.
  EXPECT_EQ(data_->SerialNumber(), "12");
  static_cast<void>(Saved());
  data_ = FindModel(GetParam().code)->create();
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(ShownRows(), ManyRows(51));

  SetRows({Texts(Columns(), "1"), {""}, Texts(Columns(), "3")});
  EXPECT_EQ(ShownRows(), ManyRows(1));
  const std::string file = Saved();
  EXPECT_FALSE(Contains(file, " 3")) << file;
}

TEST_P(SingleTableTest, HasOnePageOfTwoOrThreeCaptionsWithoutNameAndSerialNumber) {
  const std::string empty = Saved();
  EXPECT_EQ(empty, FileOf({"#MODEL_NO : ", "#SER_NO   : ", "#CAL_DATE : 00000",
                           "#CAL_NO   : ", "#DUE_DATE : 00000", "#COMMENT  : "},
                          {}));
  EXPECT_EQ(data_->GetCalPageCount(), 1);
  for (const std::int16_t page : {std::int16_t{-1}, std::int16_t{0}, std::int16_t{1}}) {
    data_->SetCalPageSerial(page, "page serial");
    EXPECT_EQ(data_->GetCalPageName(page), "") << page;
    EXPECT_EQ(data_->GetCalPageSerial(page), "") << page;
  }
  EXPECT_EQ(Saved(), empty);
  SetRows(ManyRows(2));
  // Every page shows the same table.
  for (const int page : {-1, 0, 1, INT16_MAX}) {
    MemoryGrid grid(5);
    data_->GetCalData(static_cast<std::int16_t>(page), grid);
    EXPECT_EQ(grid.RowCount(), 3) << page;
    for (std::size_t column = 0; column < Columns(); ++column) {
      EXPECT_EQ(grid.CellText(0, static_cast<std::int16_t>(column)), GetParam().captions[column]);
    }
  }
}

TEST_P(SingleTableTest, IsReplacedWholeByTheGrid) {
  SetRows(ManyRows(51));
  SetRows(ManyRows(1));
  EXPECT_EQ(ShownRows(), ManyRows(1));
  // The later rows are gone, not only hidden.
  Load({"*1:1:1", "*2:2:2", "!End"});
  EXPECT_EQ(ShownRows(), ManyRows(2));
  // The rows of a page that is not there clear the table.
  for (const std::int16_t page : {std::int16_t{-1}, std::int16_t{1}}) {
    SetRows(ManyRows(2));
    SetRows(ManyRows(60), page);
    Load({"*1:1:1", "!End"});
    EXPECT_EQ(ShownRows(), ManyRows(1)) << page;
  }
}

struct CellCase {
  const char* text;
  const char* result;
};

const std::vector<CellCase> kFactors = {{"97.26", "97.3"}, {"97.25", "97.3"}, {"97.24", "97.2"},
                                        {"-0.01", "-0.0"}, {"1E3", "1000.0"}, {"12x", "12.0"},
                                        {"", "0.0"},       {"abc", "0.0"}};
const std::vector<CellCase> kFrequencies = {
    {"50000000", "5.00E07"}, {"0.5", "5.00E-01"},      {"1005", "1.01E03"}, {"9.995E07", "1.00E08"},
    {"-0.5", "-5.00E-01"},   {"9.995E99", "1.00E100"}, {"", "0.00E00"},     {"abc", "0.00E00"}};
const std::vector<CellCase> kValues = {{"10.01235", "10.0124"}, {"10.01234", "10.0123"},
                                       {"10", "10.0000"},       {"-0.00004", "-0.0000"},
                                       {"10dB", "10.0000"},     {"", "0.0000"}};

/// What the cells of a column store; nothing for a column without a format.
const std::vector<CellCase>* StoredIn(const SingleTable& model, std::int16_t column) {
  if (model.isSensor) {
    return column == 1 ? &kFactors : nullptr;
  }
  return column == 1 ? &kFrequencies : column == 2 ? &kValues : nullptr;
}

TEST_P(SingleTableTest, StoresNumbersInTheFormatOfTheirColumn) {
  for (std::int16_t column = -1; column <= 3; ++column) {
    const std::vector<CellCase>* cases = StoredIn(GetParam(), column);
    const std::optional<CellAffixes> affixes = data_->AffixesOf(0, {{1}, column}, "");
    EXPECT_EQ(affixes.has_value(), cases != nullptr) << column;
    if (cases == nullptr) {
      EXPECT_EQ(data_->SetCalibrationDataFormat(0, column, 0, "10", "None"), "") << column;
      continue;
    }
    EXPECT_EQ(std::string(affixes->before) + std::string(affixes->after), "");
    for (const auto& [typed, stored] : *cases) {
      EXPECT_EQ(data_->SetCalibrationDataFormat(0, column, 0, typed, "None"), stored) << typed;
      EXPECT_EQ(data_->SetCalibrationDataFormat(9, column, -3, typed, "%"), stored) << typed;
    }
  }
}

TEST_P(SingleTableTest, EditsTheShortestNumberOfItsSecondColumnWithoutAUnit) {
  const std::vector<CellCase> cases = {{"98.80", "98.8"}, {"5.00E07", "50000000"},
                                       {" 7 ", "7"},      {"12x", "12"},
                                       {" ", "0"},        {"1E15", "1E+15"}};
  for (const auto& [text, edited] : cases) {
    std::string unit = "before";
    EXPECT_EQ(data_->GetCalibrationDataFormat(9, 1, -3, text, unit), edited) << text;
    EXPECT_EQ(unit, "") << text;
  }
  for (const std::int16_t column : {std::int16_t{-1}, std::int16_t{0}, std::int16_t{2}}) {
    std::string unit = "before";
    EXPECT_EQ(data_->GetCalibrationDataFormat(0, column, 0, "97.26", unit), "") << column;
    EXPECT_EQ(unit, "") << column;
    Texts units = {"x", "y"};
    EXPECT_EQ(data_->GetCalibrationUnit(0, column, units), 0);
    EXPECT_EQ(units, GetParam().units) << column;
  }
  std::string unit = "before";
  EXPECT_EQ(data_->GetCalibrationDataFormat(0, 1, 0, "", unit), "");
  EXPECT_EQ(unit, GetParam().unitOfEmptyText);
}

INSTANTIATE_TEST_SUITE_P(Models, SingleTableTest, testing::ValuesIn(Models()),
                         [](const auto& test) { return std::string(test.param.code); });

TEST(StepAttenuator, SetsColumnWidthsToTheNearestWholeNumber) {
  struct Case {
    const char* code;
    float gridWidth;
    std::array<std::int32_t, 3> widths;
  };
  // A third of 10001 is 3333.67, of 1000.75 it is 333.58.
  const std::vector<Case> table = {{"PX60H", 10001.0F, {3234, 3319, 3319}},
                                   {"PX60H", 1000.75F, {234, 319, 319}},
                                   {"PX60G", 9000.0F, {2830, 2890, 2910}}};
  for (const Case& test : table) {
    MemoryGrid grid;
    grid.SetWidth(test.gridWidth);
    FindModel(test.code)->create()->GetCalData(0, grid);
    for (std::int16_t column = 0; column < 3; ++column) {
      EXPECT_EQ(grid.ColumnWidth(column), test.widths.at(static_cast<std::size_t>(column)))
          << test.code << test.gridWidth;
    }
  }
}

TEST(StepAttenuator, CutsAHeaderLineAtItsFirstNul) {
  const TestTree tree;
  const std::string nul(1, '\0');
  tree.Write(kFile,
             Lines({"#CAL_NO   : C-1" + nul + "2",
                    "#SER_NO 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 " + nul + " 21 22 23",
                    "*1" + nul + "2" + nul + "3", "!End"}));
  const std::unique_ptr<cifCaldata> data = FindModel("PX60H")->create();
  data->LoadCalibrationDataFromFile(kFile);
  EXPECT_EQ(data->CalibrationNumber(), "C-1");
  EXPECT_EQ(data->SerialNumber(), "1");
  MemoryGrid grid;
  data->GetCalData(0, grid);
  // In a data line it counts as a blank.
  EXPECT_EQ(grid.CellText(1, 2), "3");
}

}  // namespace
}  // namespace tarvell::test
