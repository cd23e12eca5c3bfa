// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/PowerSensor.h"
#include "core/caldata/cInstrPX11A.h"
#include "core/caldata/cInstrPX11D.h"
#include "core/caldata/cInstrPX12A.h"
#include "core/caldata/cInstrPX13A.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::ErrorOf;
using test::Lines;
using Texts = std::vector<std::string>;
using Rows = std::vector<std::pair<std::string, std::string>>;

constexpr const char* kFile = "c:\\data\\SN12345";
constexpr const char* kReferenceTail = " (Ref.)    :     0.0    :    0.0    :     0.0  ";
constexpr const char* kPlainTail = "    0.0    :     0.0    :    0.0    :     0.0  ";

/// In what the four models differ.
struct Sensor {
  const char* code;
  std::unique_ptr<cifCaldata> (*create)();
  const char* frequencyCaption;        ///< of the grid
  const char* captionLine;             ///< tenth line of the file
  Texts referenceFrequencies;          ///< rows marked "(Ref.)"
  Texts otherFrequencies;              ///< rows that are not
  const char* unitAfterEmptyText;      ///< what becomes of the unit "before"
  Texts unitsAfterGetCalibrationUnit;  ///< what becomes of the units "x", "y"
};

template <typename Class>
std::unique_ptr<cifCaldata> Create() {
  return std::make_unique<Class>();
}

constexpr const char* kMHzLine =
    "!FEQ(MHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)";
constexpr const char* kGHzLine =
    "!FEQ(GHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)";

const Texts kMHzReferences = {"50", "50.0", "50.00", "050", "5E1", "+50", "50MHz"};
const Texts kMHzOthers = {"50.001", "49.999", "50.5", "0.05", "500", "5", "-50", "x50"};
const Texts kGHzReferences = {"0.05", "0.050", "0.0500", ".05", "5E-2"};
const Texts kGHzOthers = {"50", "50.0", "50.00", "0.0501", "0.050001", "0.5", "-0.05"};

// clang-format off
const std::vector<Sensor> kSensors = {
    {"PX12A", &Create<cInstrPX12A>, "Frequency  [MHz]", kMHzLine, kMHzReferences, kMHzOthers, "",       {"x", "y"}},
    {"PX11D", &Create<cInstrPX11D>, "Frequency  [MHz]", kMHzLine, kMHzReferences, kMHzOthers, "before", {"*"}},
    {"PX13A", &Create<cInstrPX13A>, "Frequency  [GHz]", kGHzLine, kGHzReferences, kGHzOthers, "",       {"x", "y"}},
    {"PX11A", &Create<cInstrPX11A>, "Frequency  [MHz]", kMHzLine, kMHzReferences, kMHzOthers, "before", {"*"}},
};
// clang-format on

void PrintTo(const Sensor& sensor, std::ostream* stream) {
  *stream << sensor.code;
}

std::string TextOf(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) {
    text += part;
  }
  return text;
}

/// Rows of a table of `count` rows: 1001 90.01, 1002 90.02, ...
Rows ManyRows(int count) {
  Rows rows;
  for (int i = 1; i <= count; ++i) {
    rows.emplace_back(std::to_string(1000 + i),
                      "90." + std::string(i < 10 ? "0" : "") + std::to_string(i));
  }
  return rows;
}

class PowerSensorTest : public testing::TestWithParam<Sensor> {
 protected:
  PowerSensorTest() { tree_.MakeFolders("c:\\data"); }

  /// Puts rows into the table, as an editor does.
  void SetRows(const Rows& rows, std::int16_t page = 0) {
    MemoryGrid grid;
    for (const auto& [frequency, factor] : rows) {
      grid.AddRow(TextOf({frequency, "\t", factor}));
    }
    data_->SetCalData(page, grid);
  }

  [[nodiscard]] Rows ShownRows() const {
    MemoryGrid grid;
    data_->GetCalData(0, grid);
    Rows rows;
    for (std::int16_t row = 1; row < grid.RowCount(); ++row) {
      rows.emplace_back(grid.CellText(row, 0), grid.CellText(row, 1));
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

  /// The whole file that an object without header values and with these data lines writes.
  [[nodiscard]] static std::string FileOf(const Texts& dataLines) {
    Texts lines = {"#MODEL_NO : ",
                   "#SER_NO   : ",
                   "#CAL_DATE : 00000",
                   "#CAL_NO   : ",
                   "#DUE_DATE : 00000",
                   "#COMMENT  : ",
                   "!",
                   "!",
                   "!        :              : Reflection Coefficient",
                   GetParam().captionLine};
    lines.insert(lines.end(), dataLines.begin(), dataLines.end());
    lines.emplace_back("!End");
    return Lines(lines);
  }

  test::TestTree tree_;
  std::unique_ptr<cifCaldata> data_ = GetParam().create();
};

// The file.

TEST_P(PowerSensorTest, WritesTheWholeFileByteForByte) {
  data_->SetModelNumber(GetParam().code);
  data_->SetSerialNumber("3318A12345");
  data_->SetCalDate(2001, "MAR", 5);
  data_->SetCalibrationNumber("C-0042");
  data_->SetDueDate(2002, "MAR", 5);
  data_->SetComment("factory");
  const std::string reference = GetParam().referenceFrequencies.front();
  SetRows({{"0.001", "98.8"}, {reference, "100.0"}, {"10000.00", "9.9"}});
  const std::string paddedReference = std::string(8 - reference.size(), ' ') + reference;
  EXPECT_EQ(Saved(), std::string("#MODEL_NO : ") + GetParam().code +
                         "\r\n"
                         "#SER_NO   : 3318A12345\r\n"
                         "#CAL_DATE : 20010305\r\n"
                         "#CAL_NO   : C-0042\r\n"
                         "#DUE_DATE : 20020305\r\n"
                         "#COMMENT  : factory\r\n"
                         "!\r\n"
                         "!\r\n"
                         "!        :              : Reflection Coefficient\r\n" +
                         GetParam().captionLine +
                         "\r\n"
                         "*   0.001:     98.8     :    0.0    :     0.0    :    0.0    :     0.0  "
                         "\r\n"
                         "*" +
                         paddedReference +
                         ":    100.0     : (Ref.)    :     0.0    :    0.0    :     0.0  \r\n"
                         "*10000.00:      9.9     :    0.0    :     0.0    :    0.0    :     0.0  "
                         "\r\n"
                         "!End\r\n");
}

TEST_P(PowerSensorTest, WritesAnEmptyTableWithoutDataLines) {
  EXPECT_EQ(Saved(), FileOf({}));
}

TEST_P(PowerSensorTest, MarksTheReferenceRowByItsNumber) {
  for (const std::string& frequency : GetParam().referenceFrequencies) {
    SetRows({{frequency, "100.0"}});
    EXPECT_EQ(Saved(), FileOf({"*" + std::string(8 - frequency.size(), ' ') + frequency +
                               ":    100.0     :" + kReferenceTail}));
  }
}

TEST_P(PowerSensorTest, MarksNoOtherRow) {
  for (const std::string& frequency : GetParam().otherFrequencies) {
    SetRows({{frequency, "100.0"}});
    EXPECT_EQ(Saved(), FileOf({"*" + std::string(8 - frequency.size(), ' ') + frequency +
                               ":    100.0     :" + kPlainTail}));
  }
}

TEST_P(PowerSensorTest, MarksEveryRowOfTheReferenceFrequency) {
  const std::string reference = GetParam().referenceFrequencies.front();
  const std::string line = "*" + std::string(8 - reference.size(), ' ') + reference +
                           ":     99.0     :" + kReferenceTail;
  SetRows({{reference, "99.0"}, {reference, "99.0"}});
  EXPECT_EQ(Saved(), FileOf({line, line}));
}

TEST_P(PowerSensorTest, AlignsTextsToTheRightOfTheirColumns) {
  SetRows({{"1000.0", "98.8"}, {"1", "5"}, {"12345678", "100.0"}});
  EXPECT_EQ(Saved(), FileOf({std::string("*  1000.0:     98.8     :") + kPlainTail,
                             std::string("*       1:        5     :") + kPlainTail,
                             std::string("*12345678:    100.0     :") + kPlainTail}));
}

TEST_P(PowerSensorTest, WritesATextWiderThanItsColumnWhole) {
  SetRows({{"123456789", "98.8"}, {"1", "1234.56"}, {"1234567890123", "100.001"}});
  EXPECT_EQ(Saved(), FileOf({std::string("*123456789:     98.8     :") + kPlainTail,
                             std::string("*       1:    1234.56     :") + kPlainTail,
                             std::string("*1234567890123:    100.001     :") + kPlainTail}));
}

TEST_P(PowerSensorTest, CountsCharactersNotBytesInAColumn) {
  SetRows({{"5\xC2\xB5", "\xC2\xB5"}});
  EXPECT_EQ(Saved(), FileOf({std::string("*      5\xB5:        \xB5     :") + kPlainTail}));
}

TEST_P(PowerSensorTest, WritesTextsAsTheyAre) {
  SetRows({{"1.50", "098.80"}, {"x", "none"}});
  EXPECT_EQ(Saved(), FileOf({std::string("*    1.50:    098.80     :") + kPlainTail,
                             std::string("*       x:     none     :") + kPlainTail}));
}

TEST_P(PowerSensorTest, WritesRowsUpToTheFirstEmptyFrequency) {
  SetRows({{"1", "91.0"}, {"2", "92.0"}, {"", "93.0"}, {"4", "94.0"}});
  EXPECT_EQ(Saved(), FileOf({std::string("*       1:     91.0     :") + kPlainTail,
                             std::string("*       2:     92.0     :") + kPlainTail}));
}

TEST_P(PowerSensorTest, ReadsFrequencyAndFactorOfADataLine) {
  Load({std::string("*     0.1:     98.8     :") + kPlainTail, "*2:3", "*4 5 6", "  * 7 :: 8", "*9",
        "!End"});
  EXPECT_EQ(ShownRows(), (Rows{{"0.1", "98.8"}, {"2", "3"}, {"4", "5"}, {"7", "8"}, {"9", ""}}));
}

TEST_P(PowerSensorTest, EndsTheTableAtADataLineWithoutWords) {
  Load({"*1:91.0", "*", "*3:93.0", "!End"});
  EXPECT_EQ(ShownRows(), (Rows{{"1", "91.0"}}));
}

TEST_P(PowerSensorTest, LosesUncertaintyAndReflectionWhenAFileIsSavedAgain) {
  Load({"*       1:     98.8     :    1.5    :     0.02   :    2.5    :   -90.0  ",
        "* " + GetParam().referenceFrequencies.front() +
            ":    100.0     :    0.5    :     0.01   :    1.5    :    45.0  ",
        "!End"});
  const std::string reference = GetParam().referenceFrequencies.front();
  EXPECT_EQ(Saved(), FileOf({std::string("*       1:     98.8     :") + kPlainTail,
                             "*" + std::string(8 - reference.size(), ' ') + reference +
                                 ":    100.0     :" + kReferenceTail}));
}

TEST_P(PowerSensorTest, WritesAFileBackByteForByte) {
  const std::string reference = GetParam().referenceFrequencies.front();
  const Texts lines = {std::string("#MODEL_NO : ") + GetParam().code,
                       "#SER_NO   : 3318A12345",
                       "#CAL_DATE : 20010305",
                       "#CAL_NO   : C-0042",
                       "#DUE_DATE : 20020305",
                       "#COMMENT  : factory",
                       "!",
                       "!",
                       "!        :              : Reflection Coefficient",
                       GetParam().captionLine,
                       std::string("*   0.001:     98.8     :") + kPlainTail,
                       "*" + std::string(8 - reference.size(), ' ') + reference +
                           ":    100.0     :" + kReferenceTail,
                       std::string("*  1E+300:     -1.5     :") + kPlainTail,
                       std::string("*123456789:    12345.6     :") + kPlainTail,
                       std::string("*       x:     -0.0     :") + kPlainTail,
                       "!End"};
  Load(lines);
  EXPECT_EQ(Saved(), Lines(lines));
}

// The largest table.

TEST_P(PowerSensorTest, ShowsSavesAndReadsATableOf51RowsWhole) {
  const Rows rows = ManyRows(51);
  SetRows(rows);
  EXPECT_EQ(ShownRows(), rows);

  Texts lines;
  for (const auto& [frequency, factor] : rows) {
    lines.push_back(TextOf({"*    ", frequency, ":    ", factor, "     :", kPlainTail}));
  }
  EXPECT_EQ(Saved(), FileOf(lines));

  data_ = GetParam().create();
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(ShownRows(), rows);
}

TEST_P(PowerSensorTest, The52ndDataLineIsAnIndexErrorOfItsFileAndLine) {
  Texts lines = {"#SER_NO   : 12", "!"};
  for (const auto& [frequency, factor] : ManyRows(52)) {
    lines.push_back(TextOf({"*", frequency, ":", factor}));
  }
  lines.insert(lines.end(), {"#SER_NO   : 13", "!End"});
  tree_.Write(kFile, Lines(lines));
  const Error error = ErrorOf([&] { data_->LoadCalibrationDataFromFile(kFile); });
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 2 + 52);
  EXPECT_EQ(data_->SerialNumber(), "12");
  EXPECT_EQ(ShownRows(), ManyRows(51));
}

TEST_P(PowerSensorTest, DataLinesWithoutWordsCountTowardsTheLargestTable) {
  Texts lines(52, "*");
  lines.emplace_back("!End");
  tree_.Write(kFile, Lines(lines));
  const Error error = ErrorOf([&] { data_->LoadCalibrationDataFromFile(kFile); });
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Line(), 52);
}

TEST_P(PowerSensorTest, AGridOf52DataRowsIsAnIndexError) {
  EXPECT_EQ(ErrorOf([&] { SetRows(ManyRows(52)); }).Kind(), ErrorKind::Index);
}

// The grid.

TEST_P(PowerSensorTest, ShowsCaptionsAndRows) {
  SetRows({{"0.1", "98.8"}, {"50.00", "100.0"}});
  MemoryGrid grid;
  grid.AddRow("left\tover");
  grid.AddRow("left\tover");
  grid.AddRow("left\tover");
  data_->GetCalData(0, grid);
  EXPECT_EQ(grid.CellText(0, 0), GetParam().frequencyCaption);
  EXPECT_EQ(grid.CellText(0, 1), "Calibration factor[%]");
  ASSERT_EQ(grid.RowCount(), 3);
  EXPECT_EQ(grid.CellText(1, 0), "0.1");
  EXPECT_EQ(grid.CellText(1, 1), "98.8");
  EXPECT_EQ(grid.CellText(2, 0), "50.00");
  EXPECT_EQ(grid.CellText(2, 1), "100.0");
}

TEST_P(PowerSensorTest, ShowsTheCaptionRowAloneForAnEmptyTable) {
  MemoryGrid grid;
  grid.AddRow("left\tover");
  data_->GetCalData(0, grid);
  EXPECT_EQ(grid.RowCount(), 1);
  EXPECT_EQ(grid.CellText(0, 0), GetParam().frequencyCaption);
}

TEST_P(PowerSensorTest, ShowsTheSameTableForEveryPage) {
  SetRows({{"1", "91.0"}});
  for (const std::int16_t page : {std::int16_t{-1}, std::int16_t{1}, std::int16_t{INT16_MAX}}) {
    MemoryGrid grid;
    data_->GetCalData(page, grid);
    ASSERT_EQ(grid.RowCount(), 2) << page;
    EXPECT_EQ(grid.CellText(1, 0), "1") << page;
  }
}

TEST_P(PowerSensorTest, ShowsRowsUpToTheFirstEmptyFrequency) {
  SetRows({{"1", "91.0"}, {"", "92.0"}, {"3", "93.0"}});
  EXPECT_EQ(ShownRows(), (Rows{{"1", "91.0"}}));
}

TEST_P(PowerSensorTest, ShowsARowWithoutAFactor) {
  SetRows({{"1", ""}, {"2", "92.0"}});
  EXPECT_EQ(ShownRows(), (Rows{{"1", ""}, {"2", "92.0"}}));
}

TEST_P(PowerSensorTest, TakesTheTextsOfTheGridUnchanged) {
  const Rows rows = {{" 1 ", " 91 "}, {"x", "y"}, {"50", "100.00"}};
  SetRows(rows);
  EXPECT_EQ(ShownRows(), rows);
}

TEST_P(PowerSensorTest, ReplacesTheWholeTableByTheGrid) {
  SetRows(ManyRows(51));
  SetRows({{"1", "91.0"}});
  EXPECT_EQ(ShownRows(), (Rows{{"1", "91.0"}}));
  SetRows({});
  EXPECT_EQ(ShownRows(), Rows());
}

TEST_P(PowerSensorTest, EmptiesTheTableForAnyOtherPage) {
  for (const std::int16_t page : {std::int16_t{-1}, std::int16_t{1}}) {
    SetRows({{"1", "91.0"}});
    SetRows({{"2", "92.0"}}, page);
    EXPECT_EQ(ShownRows(), Rows()) << page;
  }
}

TEST_P(PowerSensorTest, LooksAtNoRowOfTheGridForAnyOtherPage) {
  SetRows({{"1", "91.0"}});
  SetRows(ManyRows(60), 1);
  EXPECT_EQ(ShownRows(), Rows());
}

// Cells.

TEST_P(PowerSensorTest, EditsAFactorInItsShortestForm) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"100.0", "100"}, {"98.80", "98.8"}, {"98.8", "98.8"}, {"0.0", "0"},     {"-0.5", "-0.5"},
      {".5", "0.5"},    {"1E3", "1000"},   {" 7 ", "7"},     {"abc", "0"},     {"12x", "12"},
      {"1,5", "1"},     {"097.3", "97.3"}, {" ", "0"},       {"9 8.5", "98.5"}};
  for (const auto& [text, expected] : table) {
    std::string unit = "before";
    EXPECT_EQ(data_->GetCalibrationDataFormat(0, 1, 0, text, unit), expected) << text;
    EXPECT_EQ(unit, "") << text;
  }
}

TEST_P(PowerSensorTest, EditsNoOtherColumn) {
  for (const std::int16_t column : {std::int16_t{-1}, std::int16_t{0}, std::int16_t{2}}) {
    std::string unit = "before";
    EXPECT_EQ(data_->GetCalibrationDataFormat(0, column, 0, "97.26", unit), "") << column;
    EXPECT_EQ(unit, "") << column;
  }
}

TEST_P(PowerSensorTest, EditsAnEmptyCellAsAnEmptyText) {
  for (const std::int16_t column : {std::int16_t{0}, std::int16_t{1}}) {
    std::string unit = "before";
    EXPECT_EQ(data_->GetCalibrationDataFormat(0, column, 0, "", unit), "") << column;
    EXPECT_EQ(unit, GetParam().unitAfterEmptyText) << column;
  }
}

TEST_P(PowerSensorTest, EditsAlikeOnEveryPageAndRow) {
  std::string unit;
  EXPECT_EQ(data_->GetCalibrationDataFormat(9, 1, -3, "98.80", unit), "98.8");
  EXPECT_EQ(data_->SetCalibrationDataFormat(9, 1, -3, "98.84", "None"), "98.8");
}

TEST_P(PowerSensorTest, StoresAFactorWithOneDecimal) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"97.26", "97.3"}, {"99.96", "100.0"},      {"5", "5.0"},      {"", "0.0"},
      {"abc", "0.0"},    {"97.25", "97.3"},       {"97.24", "97.2"}, {"0.15", "0.2"},
      {".04", "0.0"},    {"-3.26", "-3.3"},       {"-0.01", "-0.0"}, {"-0.05", "-0.1"},
      {"1E3", "1000.0"}, {" 7 ", "7.0"},          {"12x", "12.0"},   {"1,5", "1.0"},
      {"100", "100.0"},  {"12345.67", "12345.7"}, {"0", "0.0"}};
  for (const auto& [text, expected] : table) {
    EXPECT_EQ(data_->SetCalibrationDataFormat(0, 1, 0, text, "None"), expected) << text;
  }
}

TEST_P(PowerSensorTest, StoresTheSameWhateverTheUnit) {
  for (const char* unit : {"", "None", "%", "GHz", "*"}) {
    EXPECT_EQ(data_->SetCalibrationDataFormat(0, 1, 0, "97.26", unit), "97.3") << unit;
  }
}

TEST_P(PowerSensorTest, StoresNothingInAnyOtherColumn) {
  for (const std::int16_t column : {std::int16_t{-1}, std::int16_t{0}, std::int16_t{2}}) {
    for (const char* text : {"97.26", "", "abc"}) {
      EXPECT_EQ(data_->SetCalibrationDataFormat(0, column, 0, text, "None"), "") << column;
    }
  }
}

TEST_P(PowerSensorTest, RefusesANumberTooLarge) {
  std::string unit;
  EXPECT_EQ(ErrorOf([&] {
              static_cast<void>(data_->SetCalibrationDataFormat(0, 1, 0, "1E999", "None"));
            }).Kind(),
            ErrorKind::Type);
  EXPECT_EQ(ErrorOf([&] {
              static_cast<void>(data_->GetCalibrationDataFormat(0, 1, 0, "1E999", unit));
            }).Kind(),
            ErrorKind::Type);
}

TEST_P(PowerSensorTest, OffersNoUnits) {
  for (const std::int16_t column : {std::int16_t{0}, std::int16_t{1}}) {
    Texts units = {"x", "y"};
    EXPECT_EQ(data_->GetCalibrationUnit(0, column, units), 0);
    EXPECT_EQ(units, GetParam().unitsAfterGetCalibrationUnit) << column;
  }
}

INSTANTIATE_TEST_SUITE_P(Models, PowerSensorTest, testing::ValuesIn(kSensors),
                         [](const auto& test) { return std::string(test.param.code); });

}  // namespace
}  // namespace tarvell
