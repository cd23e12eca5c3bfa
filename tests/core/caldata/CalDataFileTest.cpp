// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/CalDataFile.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/cInstrPX12A.h"
#include "support/Dates.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::CalDateOf;
using test::Contains;
using test::Date;
using test::DueDateOf;
using test::ErrorOf;
using test::Lines;

constexpr const char* kFile = R"(c:\calfactors\PX12A\SN12345)";
constexpr const char* kPlainTail = "    0.0    :     0.0    :    0.0    :     0.0  ";

/// Data rows of the table, "frequency factor".
std::vector<std::string> RowsOf(const cifCaldata& data) {
  MemoryGrid grid;
  data.GetCalData(0, grid);
  std::vector<std::string> rows;
  for (std::int16_t row = 1; row < grid.RowCount(); ++row) {
    rows.push_back(grid.CellText(row, 0) + ' ' + grid.CellText(row, 1));
  }
  return rows;
}

using Texts = std::vector<std::string>;

/// The header of the examples, and the comment and caption lines behind it.
Texts Header() {
  return {"#MODEL_NO : PX12A",
          "#SER_NO   : 3318A12345",
          "#CAL_DATE : 20010305",
          "#CAL_NO   : C-0042",
          "#DUE_DATE : 20020305",
          "#COMMENT  : factory",
          "!",
          "!",
          "!        :              : Reflection Coefficient",
          "!FEQ(MHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)"};
}

Texts operator+(Texts left, const Texts& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

class CalDataFileTest : public testing::Test {
 protected:
  /// Loads a file of these lines.
  void Load(const Texts& lines) { LoadBytes(Lines(lines)); }

  void LoadBytes(const std::string& bytes) {
    tree_.Write(kFile, bytes);
    EXPECT_EQ(data_.LoadCalibrationDataFromFile(kFile), 0);
  }

  /// The error of loading a file of these lines.
  Error LoadError(const Texts& lines) {
    tree_.Write(kFile, Lines(lines));
    return ErrorOf([&] { data_.LoadCalibrationDataFromFile(kFile); });
  }

  /// What a save writes.
  std::string Saved() {
    tree_.MakeFolders("c:\\calfactors\\PX12A");
    EXPECT_EQ(data_.SaveCalibrationDataToFile(kFile), 0);
    return tree_.Read(kFile);
  }

  /// The header line `number`, counted from 1, that a save writes.
  std::string SavedLine(int number) {
    const std::string text = Saved();
    std::size_t from = 0;
    for (int i = 1; i < number; ++i) {
      from = text.find("\r\n", from) + 2;
    }
    return text.substr(from, text.find("\r\n", from) - from);
  }

  void WriteTemplate(const std::string& bytes) {
    test::WriteNative(tree_.ProgramFolder() / "TempPX12A", bytes);
  }

  /// The error of asking for the default data; it must name the template.
  Error TemplateError() {
    Error error = ErrorOf([&] { data_.SetInitialDefaultData(); });
    EXPECT_EQ(error.Path(), (tree_.ProgramFolder() / "TempPX12A").string());
    EXPECT_TRUE(Contains(error.what(), "TempPX12A")) << error.what();
    return error;
  }

  test::TestTree tree_;
  cInstrPX12A data_;
};

// Plain values.

TEST_F(CalDataFileTest, ANewObjectIsEmpty) {
  EXPECT_EQ(data_.Path(), "");
  EXPECT_EQ(data_.ModelNumber(), "");
  EXPECT_EQ(data_.SerialNumber(), "");
  EXPECT_EQ(data_.CalibrationNumber(), "");
  EXPECT_EQ(data_.Comment(), "");
  EXPECT_EQ(CalDateOf(data_), (Date{0, "", 0}));
  EXPECT_EQ(DueDateOf(data_), (Date{0, "", 0}));
  EXPECT_EQ(RowsOf(data_), Texts());
}

TEST_F(CalDataFileTest, PropertiesGiveBackWhatWasSet) {
  data_.SetPath(" a path ");
  data_.SetModelNumber("model");
  data_.SetSerialNumber("serial number");
  data_.SetCalibrationNumber("number:1");
  data_.SetComment("done in lab, twice ");
  EXPECT_EQ(data_.Path(), " a path ");
  EXPECT_EQ(data_.ModelNumber(), "model");
  EXPECT_EQ(data_.SerialNumber(), "serial number");
  EXPECT_EQ(data_.CalibrationNumber(), "number:1");
  EXPECT_EQ(data_.Comment(), "done in lab, twice ");
}

TEST_F(CalDataFileTest, DatesAreStoredWithoutATest) {
  data_.SetCalDate(2001, "FEB", 30);
  data_.SetDueDate(-1, "no month", 32767);
  EXPECT_EQ(CalDateOf(data_), (Date{2001, "FEB", 30}));
  EXPECT_EQ(DueDateOf(data_), (Date{-1, "no month", 32767}));
}

TEST_F(CalDataFileTest, ThePathIsNeitherSavedNorLoaded) {
  data_.SetPath("c:\\free\\text");
  EXPECT_FALSE(Contains(Saved(), "free"));
  EXPECT_EQ(data_.LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(data_.Path(), "c:\\free\\text");
}

// Writing.

TEST_F(CalDataFileTest, AHeaderLineWithoutAValueEndsWithTheBlankBehindTheColon) {
  EXPECT_EQ(SavedLine(1), "#MODEL_NO : ");
  EXPECT_EQ(SavedLine(2), "#SER_NO   : ");
  EXPECT_EQ(SavedLine(4), "#CAL_NO   : ");
  EXPECT_EQ(SavedLine(6), "#COMMENT  : ");
}

TEST_F(CalDataFileTest, HeaderValuesAreWrittenAsTheyAre) {
  data_.SetModelNumber("another model");
  data_.SetSerialNumber(" 12 ");
  data_.SetCalibrationNumber("a:b \"c\"");
  data_.SetComment("done in lab ");
  EXPECT_EQ(SavedLine(1), "#MODEL_NO : another model");
  EXPECT_EQ(SavedLine(2), "#SER_NO   :  12 ");
  EXPECT_EQ(SavedLine(4), "#CAL_NO   : a:b \"c\"");
  EXPECT_EQ(SavedLine(6), "#COMMENT  : done in lab ");
}

TEST_F(CalDataFileTest, ANumberWithACommaIsRefusedBecauseTheNextLineWouldBeReadFromIt) {
  data_.SetSerialNumber("AB,12345");
  const Error serial = ErrorOf([&] { SavedLine(1); });
  EXPECT_EQ(serial.Kind(), ErrorKind::Character);
  EXPECT_TRUE(Contains(serial.what(), "serial number \"AB,12345\"")) << serial.what();
  data_.SetSerialNumber("12");
  data_.SetCalibrationNumber("C,1");
  EXPECT_TRUE(Contains(ErrorOf([&] { SavedLine(1); }).what(), "calibration number \"C,1\""));
}

TEST_F(CalDataFileTest, ACommentMayHoldACommaButNothingBehindItThatBeginsALine) {
  data_.SetComment("checked, in order");
  EXPECT_EQ(SavedLine(6), "#COMMENT  : checked, in order");
  for (const std::string sign : {"*", "#", "!", "\""}) {
    SCOPED_TRACE(sign);
    data_.SetComment("a, b, " + sign + "50 99.0");
    const Error error = ErrorOf([&] { SavedLine(6); });
    EXPECT_EQ(error.Kind(), ErrorKind::Character);
    EXPECT_TRUE(Contains(error.what(), "comment")) << error.what();
  }
}

TEST_F(CalDataFileTest, ACommentOfMoreWordsThanALineMayHaveIsRefused) {
  std::string words = "1";
  for (int i = 2; i <= 20; ++i) {
    words += " " + std::to_string(i);
  }
  data_.SetComment(words);
  EXPECT_EQ(SavedLine(6), "#COMMENT  : " + words);
  data_.SetComment(words + ", 21 22 23");
  EXPECT_EQ(SavedLine(6), "#COMMENT  : " + words + ", 21 22 23");
  data_.SetComment(words + ":21");
  const Error error = ErrorOf([&] { SavedLine(6); });
  EXPECT_EQ(error.Kind(), ErrorKind::Character);
  EXPECT_TRUE(Contains(error.what(), "more than 20 words")) << error.what();
}

TEST(HeaderValueRead, IsTheFirstWordOfAnyNumberOfThem) {
  EXPECT_EQ(HeaderValueRead(""), "");
  EXPECT_EQ(HeaderValueRead(" C-1:2 x"), "C-1");
  EXPECT_EQ(HeaderValueRead("C-1,2"), "C-1");
  std::string words = "first";
  for (int i = 2; i <= 40; ++i) {
    words += " " + std::to_string(i);
  }
  EXPECT_EQ(HeaderValueRead(words), "first");
}

TEST_F(CalDataFileTest, MonthAndDayOfADateHaveTwoDigits) {
  static constexpr std::array<std::pair<const char*, const char*>, 12> kMonths = {{{"JAN", "01"},
                                                                                   {"FEB", "02"},
                                                                                   {"MAR", "03"},
                                                                                   {"APR", "04"},
                                                                                   {"MAY", "05"},
                                                                                   {"JUN", "06"},
                                                                                   {"JUL", "07"},
                                                                                   {"AUG", "08"},
                                                                                   {"SEP", "09"},
                                                                                   {"OCT", "10"},
                                                                                   {"NOV", "11"},
                                                                                   {"DEC", "12"}}};
  for (const auto& [name, digits] : kMonths) {
    data_.SetCalDate(1904, name, 9);
    data_.SetDueDate(2037, name, 31);
    EXPECT_EQ(SavedLine(3), std::string("#CAL_DATE : 1904") + digits + "09");
    EXPECT_EQ(SavedLine(5), std::string("#DUE_DATE : 2037") + digits + "31");
  }
}

TEST_F(CalDataFileTest, AMonthThatIsNoMonthNameIsWrittenAs00AndComesBackEmpty) {
  for (const char* month : {"", "Jan", "jan", "JANUARY", "1", "XYZ"}) {
    data_.SetCalDate(2001, month, 5);
    EXPECT_EQ(SavedLine(3), "#CAL_DATE : 20010005") << month;
    EXPECT_EQ(data_.LoadCalibrationDataFromFile(kFile), 0);
    EXPECT_EQ(CalDateOf(data_), (Date{2001, "", 5})) << month;
  }
}

TEST_F(CalDataFileTest, YearsAndDaysAreWrittenAsTheNumbersTheyAre) {
  data_.SetCalDate(0, "JAN", 0);
  data_.SetDueDate(12345, "DEC", 100);
  EXPECT_EQ(SavedLine(3), "#CAL_DATE : 00100");
  EXPECT_EQ(SavedLine(5), "#DUE_DATE : 1234512100");
}

TEST_F(CalDataFileTest, ASaveReplacesTheFileWhole) {
  tree_.Write(kFile, std::string(5000, 'x'));
  data_.SetModelNumber("PX12A");
  EXPECT_EQ(Saved().substr(0, 19), "#MODEL_NO : PX12A\r\n");
  EXPECT_FALSE(Contains(tree_.Read(kFile), "x"));
  EXPECT_EQ(tree_.Names("c:\\calfactors\\PX12A"), Texts{"SN12345"});
}

TEST_F(CalDataFileTest, AValueWithALineEndIsRefusedAndTheEarlierFileIsWhole) {
  tree_.Write(kFile, "earlier");
  for (const char* value : {"two\nlines", "two\rlines", "two\r\nlines", "end\n", "\r"}) {
    SCOPED_TRACE(value);
    cInstrPX12A serial;
    serial.SetSerialNumber(value);
    cInstrPX12A model;
    model.SetModelNumber(value);
    cInstrPX12A number;
    number.SetCalibrationNumber(value);
    cInstrPX12A comment;
    comment.SetComment(value);
    for (CalDataFile* data :
         std::initializer_list<CalDataFile*>{&serial, &model, &number, &comment}) {
      const Error error = ErrorOf([&] { data->SaveCalibrationDataToFile(kFile); });
      EXPECT_EQ(error.Kind(), ErrorKind::Character);
      EXPECT_EQ(tree_.Read(kFile), "earlier");
    }
  }
  EXPECT_EQ(tree_.Names("c:\\calfactors\\PX12A"), Texts{"SN12345"});
}

TEST_F(CalDataFileTest, ACharacterOutsideTheFilesIsRefusedAndTheEarlierFileIsWhole) {
  tree_.Write(kFile, "earlier");
  // Omega, Greek mu, C with caron, euro's neighbour, a control character of another number, an
  // emoji, and bytes that are no UTF-8.
  for (const char* value : {"5 k\xCE\xA9", "\xCE\xBC", "\xC4\x8C", "\xE2\x82\xAD", "\xC2\x80",
                            "\xF0\x9F\x98\x80", "\xFF", "\xC2"}) {
    SCOPED_TRACE(value);
    data_.SetComment(value);
    EXPECT_EQ(ErrorOf([&] { data_.SaveCalibrationDataToFile(kFile); }).Kind(),
              ErrorKind::Character);
    EXPECT_EQ(tree_.Read(kFile), "earlier");
  }
  EXPECT_EQ(tree_.Names("c:\\calfactors\\PX12A"), Texts{"SN12345"});
}

TEST_F(CalDataFileTest, ACellWithACharacterOutsideTheFilesIsRefusedAndTheEarlierFileIsWhole) {
  tree_.Write(kFile, "earlier");
  for (const char* row : {"50\t99.0\xCE\xA9", "5\xCE\xA9\t99.0", "50\n\t99.0", "50\t99\r"}) {
    SCOPED_TRACE(row);
    MemoryGrid grid;
    grid.AddRow(row);
    data_.SetCalData(0, grid);
    EXPECT_EQ(ErrorOf([&] { data_.SaveCalibrationDataToFile(kFile); }).Kind(),
              ErrorKind::Character);
    EXPECT_EQ(tree_.Read(kFile), "earlier");
  }
}

TEST_F(CalDataFileTest, EveryCharacterOfTheFilesComesBackAsItWas) {
  // The characters of bytes 80 to 9F; an unassigned one stands for itself.
  static constexpr std::array<char32_t, 32> kHigh = {
      0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
  std::string bytes;
  std::string utf8;
  for (unsigned int byte = 1; byte <= 255; ++byte) {
    // What separates words and items cannot stand in one.
    if ((byte >= 8 && byte <= 13) || byte == ' ' || byte == ':' || byte == ',') {
      continue;
    }
    bytes += static_cast<char>(byte);
    const char32_t character = byte >= 0x80 && byte <= 0x9F ? kHigh.at(byte - 0x80) : byte;
    if (character < 0x80) {
      utf8 += static_cast<char>(character);
    } else if (character < 0x800) {
      utf8 += static_cast<char>(0xC0U | (character >> 6U));
      utf8 += static_cast<char>(0x80U | (character & 0x3FU));
    } else {
      utf8 += static_cast<char>(0xE0U | (character >> 12U));
      utf8 += static_cast<char>(0x80U | ((character >> 6U) & 0x3FU));
      utf8 += static_cast<char>(0x80U | (character & 0x3FU));
    }
  }
  Texts lines = Header() + Texts{"!End"};
  lines[5] = "#COMMENT  : " + bytes;
  Load(lines);
  EXPECT_EQ(data_.Comment(), utf8);
  EXPECT_EQ(Saved(), Lines(lines));
}

TEST_F(CalDataFileTest, AFrequencyTooLargeForANumberIsRefusedAndTheEarlierFileIsWhole) {
  tree_.Write(kFile, "earlier");
  MemoryGrid grid;
  grid.AddRow("1E999\t100.0");
  data_.SetCalData(0, grid);
  EXPECT_EQ(ErrorOf([&] { data_.SaveCalibrationDataToFile(kFile); }).Kind(), ErrorKind::Type);
  EXPECT_EQ(tree_.Read(kFile), "earlier");
}

// Reading.

TEST_F(CalDataFileTest, AFileIsReadWhole) {
  Load(Header() + Texts{std::string("*     0.1:     98.8     :") + kPlainTail,
                        "*      50:    100.0     : (Ref.)    :     0.0    :    0.0    :     0.0  ",
                        "!End"});
  EXPECT_EQ(data_.ModelNumber(), "PX12A");
  EXPECT_EQ(data_.SerialNumber(), "3318A12345");
  EXPECT_EQ(CalDateOf(data_), (Date{2001, "MAR", 5}));
  EXPECT_EQ(data_.CalibrationNumber(), "C-0042");
  EXPECT_EQ(DueDateOf(data_), (Date{2002, "MAR", 5}));
  EXPECT_EQ(data_.Comment(), "factory");
  EXPECT_EQ(RowsOf(data_), (Texts{"0.1 98.8", "50 100.0"}));
}

TEST_F(CalDataFileTest, AValueKeepsItsCase) {
  Load({"#COMMENT  : FacTory", "!End"});
  EXPECT_EQ(data_.Comment(), "FacTory");
}

TEST_F(CalDataFileTest, OnlyTheFirstWordOfAValueIsTaken) {
  Load({"#SER_NO   : 33 18", "#CAL_NO   : C:42", "#COMMENT  : done in lab", "!End"});
  EXPECT_EQ(data_.SerialNumber(), "33");
  EXPECT_EQ(data_.CalibrationNumber(), "C");
  EXPECT_EQ(data_.Comment(), "done");
}

TEST_F(CalDataFileTest, AnItemAndItsValueEndAtAComma) {
  Load({"#COMMENT  : left,right", "#SER_NO   : 12", "!End"});
  EXPECT_EQ(data_.Comment(), "left");
  EXPECT_EQ(data_.SerialNumber(), "12");
}

TEST_F(CalDataFileTest, AnEmptyValueEmptiesItsField) {
  data_.SetSerialNumber("serial");
  data_.SetCalibrationNumber("number");
  data_.SetComment("comment");
  Load({"#SER_NO   : ", "#CAL_NO", "#COMMENT  :", "!End"});
  EXPECT_EQ(data_.SerialNumber(), "");
  EXPECT_EQ(data_.CalibrationNumber(), "");
  EXPECT_EQ(data_.Comment(), "");
}

TEST_F(CalDataFileTest, SpacesAndColonsBetweenKeywordAndValueDoNotMatter) {
  Load({"#SER_NO:12", "#CAL_NO 13", "  # COMMENT ::  \t 14  ", "!End"});
  EXPECT_EQ(data_.SerialNumber(), "12");
  EXPECT_EQ(data_.CalibrationNumber(), "13");
  EXPECT_EQ(data_.Comment(), "14");
}

TEST_F(CalDataFileTest, AQuotedLineIsReadLessItsQuotes) {
  Load({"\"#COMMENT  : left,right\" passed over", "\"*50:99.5\"", "!End"});
  EXPECT_EQ(data_.Comment(), "left,right");
  EXPECT_EQ(RowsOf(data_), Texts{"50 99.5"});
}

TEST_F(CalDataFileTest, UnknownKeywordsAndOtherLinesAreIgnored) {
  data_.SetSerialNumber("kept");
  Load({"#SERIAL : 1", "#SER_NOX : 2", "#", "# : : ", "", "   ", "SER_NO   : 3", "!SER_NO   : 4",
        "!*  10: 99.0", "/#SER_NO : 5", "10: 99.0", "#COMMENT  : fine", "!End"});
  EXPECT_EQ(data_.SerialNumber(), "kept");
  EXPECT_EQ(data_.Comment(), "fine");
  EXPECT_EQ(RowsOf(data_), Texts());
}

TEST_F(CalDataFileTest, AMissingHeaderLineKeepsItsField) {
  data_.SetModelNumber("model");
  data_.SetSerialNumber("serial");
  data_.SetCalibrationNumber("number");
  data_.SetComment("comment");
  data_.SetCalDate(1999, "MAY", 7);
  data_.SetDueDate(2000, "JUN", 8);
  Load({"!", "!End"});
  EXPECT_EQ(data_.ModelNumber(), "model");
  EXPECT_EQ(data_.SerialNumber(), "serial");
  EXPECT_EQ(data_.CalibrationNumber(), "number");
  EXPECT_EQ(data_.Comment(), "comment");
  EXPECT_EQ(CalDateOf(data_), (Date{1999, "MAY", 7}));
  EXPECT_EQ(DueDateOf(data_), (Date{2000, "JUN", 8}));
}

TEST_F(CalDataFileTest, RowsAreReadOverWhatTheTableHeld) {
  Load({"*10:91", "*20:92", "*30:93", "!End"});
  Load({"*5:99", "!End"});
  EXPECT_EQ(RowsOf(data_), (Texts{"5 99", "20 92", "30 93"}));
}

TEST_F(CalDataFileTest, HeaderLinesAreReadWhereverTheyStand) {
  Load({"*10:91", "#COMMENT  : behind", "*20:92", "#SER_NO   : 12", "!", "#SER_NO   : 13", "!End"});
  EXPECT_EQ(RowsOf(data_), (Texts{"10 91", "20 92"}));
  EXPECT_EQ(data_.Comment(), "behind");
  EXPECT_EQ(data_.SerialNumber(), "13");
}

TEST_F(CalDataFileTest, TheTerminatorLineDoesNotEndTheReading) {
  Load({"*10:91", "!End", "*20:92", "#COMMENT  : behind", "!End"});
  EXPECT_EQ(RowsOf(data_), (Texts{"10 91", "20 92"}));
  EXPECT_EQ(data_.Comment(), "behind");
}

TEST_F(CalDataFileTest, TheLastItemIsNeverInterpreted) {
  Load({"#SER_NO   : 12", "*10:91", "*20:92"});
  EXPECT_EQ(data_.SerialNumber(), "12");
  EXPECT_EQ(RowsOf(data_), Texts{"10 91"});
}

TEST_F(CalDataFileTest, TheLastItemIsNeverInterpretedWithoutALineEndEither) {
  LoadBytes("#SER_NO   : 12\r\n*10:91\r\n*20:92");
  EXPECT_EQ(data_.SerialNumber(), "12");
  EXPECT_EQ(RowsOf(data_), Texts{"10 91"});
}

TEST_F(CalDataFileTest, AFileWithoutItsEndSaysWhatWasNotRead) {
  Load({"*10:91", "*20:92"});
  ASSERT_EQ(data_.LoadNotices().size(), 1U);
  EXPECT_TRUE(Contains(data_.LoadNotices()[0], "was not read: *20:92")) << data_.LoadNotices()[0];
  // The rows may be missing.
  Load({"#SER_NO   : 12", "!"});
  EXPECT_EQ(data_.LoadNotices().size(), 1U);
}

TEST_F(CalDataFileTest, AFileThatEndsInARemarkBehindItsRowsHasLostNothing) {
  for (const Texts& end : {Texts{"!"}, Texts{"!End", "!"}, Texts{"!", "! checked"}}) {
    Load(Texts{"*10:91", "*20:92"} + end);
    EXPECT_EQ(RowsOf(data_), (Texts{"10 91", "20 92"}));
    EXPECT_EQ(data_.LoadNotices(), Texts{}) << end[0];
  }
}

TEST_F(CalDataFileTest, AModelLineOfAnotherModelIsToldAndOneWithTheMakersPrefixIsNone) {
  for (const char* own : {"QZ PX12A", "QZPX12A", "QZ  PX12A Opt001", "px12a", "QZ"}) {
    Load({std::string("#MODEL_NO : ") + own, "*10:91", "!End"});
    EXPECT_EQ(data_.ModelNumber(), "PX12A");
    EXPECT_EQ(data_.LoadNotices(), Texts{}) << own;
  }
  for (const char* other : {"QZ PX13A", "QZPX13A", "PX13A"}) {
    Load({std::string("#MODEL_NO : ") + other, "*10:91", "!End"});
    ASSERT_EQ(data_.LoadNotices().size(), 1U) << other;
    EXPECT_TRUE(Contains(data_.LoadNotices()[0], "of the model \"PX13A\".")) << other;
  }
}

TEST_F(CalDataFileTest, ABlankLineAtTheEndIsALastItem) {
  Load({"*10:91", "*20:92", ""});
  EXPECT_EQ(RowsOf(data_), (Texts{"10 91", "20 92"}));
}

TEST_F(CalDataFileTest, AFileOfOneItemTellsNothing) {
  Load({"#SER_NO   : 12"});
  EXPECT_EQ(data_.SerialNumber(), "");
}

TEST_F(CalDataFileTest, AFileOfTheHeaderAloneLosesItsComment) {
  Texts header = Header();
  header.resize(6);
  Load(header);
  EXPECT_EQ(data_.ModelNumber(), "PX12A");
  EXPECT_EQ(data_.SerialNumber(), "3318A12345");
  EXPECT_EQ(CalDateOf(data_), (Date{2001, "MAR", 5}));
  EXPECT_EQ(data_.CalibrationNumber(), "C-0042");
  EXPECT_EQ(DueDateOf(data_), (Date{2002, "MAR", 5}));
  EXPECT_EQ(data_.Comment(), "");
}

TEST_F(CalDataFileTest, LinesThatEndWithALoneLfOrCrAreRead) {
  for (const char* end : {"\n", "\r"}) {
    std::string text;
    for (const char* line : {"#SER_NO   : 12", "", "#COMMENT  : fine", "*10:91", "!End"}) {
      text += std::string(line) + end;
    }
    cInstrPX12A data;
    tree_.Write(kFile, text);
    EXPECT_EQ(data.LoadCalibrationDataFromFile(kFile), 0);
    EXPECT_EQ(data.SerialNumber(), "12");
    EXPECT_EQ(data.Comment(), "fine");
    EXPECT_EQ(RowsOf(data), Texts{"10 91"});
  }
}

TEST_F(CalDataFileTest, ALineOf21WordsIsRead) {
  Load({"#COMMENT  : 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20",
        "* 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21", "!End"});
  EXPECT_EQ(data_.Comment(), "1");
  EXPECT_EQ(RowsOf(data_), Texts{"1 2"});
}

TEST_F(CalDataFileTest, AHeaderLineOfMoreThan21WordsIsAnIndexErrorOfItsFileAndLine) {
  const Error error = LoadError(
      {"#SER_NO   : 12", "!", "#COMMENT  : 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21",
       "#CAL_NO   : 13", "!End"});
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 3);
  EXPECT_TRUE(Contains(error.what(), kFile)) << error.what();
  EXPECT_EQ(data_.SerialNumber(), "12");
  EXPECT_EQ(data_.CalibrationNumber(), "");
}

TEST_F(CalDataFileTest, ADataLineOfMoreThan21WordsIsAnIndexErrorOfItsFileAndLine) {
  const Error error = LoadError(
      {"*10:91", "* 1:2:3:4:5:6:7:8:9:10:11:12:13:14:15:16:17:18:19:20:21:22", "*20:92", "!End"});
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 2);
  EXPECT_EQ(RowsOf(data_), Texts{"10 91"});
}

TEST_F(CalDataFileTest, AnUnknownHeaderLineOfMoreThan21WordsIsAnIndexErrorToo) {
  const Error error =
      LoadError({"#NOTE 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21", "!End"});
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Line(), 1);
}

TEST_F(CalDataFileTest, ALongLineOfAnotherClassIsSkipped) {
  Load({"! 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22", "#COMMENT  : fine", "!End"});
  EXPECT_EQ(data_.Comment(), "fine");
}

TEST_F(CalDataFileTest, ADateOfAnotherLengthIsTakenApartByPosition) {
  const std::vector<std::pair<std::string, Date>> dates = {
      {"", {0, "", 0}},
      {"1", {1, "", 1}},
      {"12", {12, "", 12}},
      {"2001", {2001, "", 1}},
      {"20011", {2001, "JAN", 11}},
      {"200103", {2001, "MAR", 3}},
      {"2001035", {2001, "MAR", 35}},
      {"2001030512", {2001, "MAR", 12}},
      {"20010005", {2001, "", 5}},
      {"20011305", {2001, "", 5}},
      {"20019905", {2001, "", 5}},
      {"20010399", {2001, "MAR", 99}},
      {"abcdefgh", {0, "", 0}},
      {"2001-3-5", {2001, "", -5}},
      {"20x103x5", {20, "MAR", 0}},
      {"20010305 7", {2001, "MAR", 5}},
  };
  for (const auto& [text, expected] : dates) {
    Load({"#CAL_DATE : " + text, "#DUE_DATE : " + text, "!End"});
    EXPECT_EQ(CalDateOf(data_), expected) << text;
    EXPECT_EQ(DueDateOf(data_), expected) << text;
  }
}

TEST_F(CalDataFileTest, ADateNumberOutside16BitsIsATypeErrorOfItsFileAndLine) {
  for (const char* date : {"1E050305", "4E4", "-9E9"}) {
    for (const char* keyword : {"#CAL_DATE : ", "#DUE_DATE : "}) {
      SCOPED_TRACE(std::string(keyword) + date);
      const Error error =
          LoadError({"#SER_NO   : 12", std::string(keyword) + date, "#COMMENT  : fine", "!End"});
      EXPECT_EQ(error.Kind(), ErrorKind::Type);
      EXPECT_EQ(error.Path(), kFile);
      EXPECT_EQ(error.Line(), 2);
      EXPECT_TRUE(Contains(error.what(), kFile)) << error.what();
      EXPECT_EQ(data_.SerialNumber(), "12");
      EXPECT_EQ(data_.Comment(), "");
    }
  }
}

TEST_F(CalDataFileTest, TheLargestNumberOf16BitsIsADateNumber) {
  Load({"#CAL_DATE : 3E4", "!End"});
  EXPECT_EQ(CalDateOf(data_), (Date{30000, "", 0}));
}

TEST_F(CalDataFileTest, ALoadWritesNothing) {
  const std::string bytes = Lines(Header() + Texts{"*10:91"});
  LoadBytes(bytes);
  EXPECT_EQ(tree_.Read(kFile), bytes);
  EXPECT_EQ(tree_.Names("c:\\calfactors\\PX12A"), Texts{"SN12345"});
}

// The default data.

TEST_F(CalDataFileTest, TheTemplateStandsBesideTheProgram) {
  WriteTemplate(Lines(Header() + Texts{"*10:91", "!End"}));
  EXPECT_EQ(data_.SetInitialDefaultData(), 0);
  EXPECT_EQ(data_.ModelNumber(), "PX12A");
  EXPECT_EQ(data_.SerialNumber(), "3318A12345");
  EXPECT_EQ(CalDateOf(data_), (Date{2001, "MAR", 5}));
  EXPECT_EQ(data_.CalibrationNumber(), "C-0042");
  EXPECT_EQ(DueDateOf(data_), (Date{2002, "MAR", 5}));
  EXPECT_EQ(data_.Comment(), "factory");
  EXPECT_EQ(RowsOf(data_), Texts{"10 91"});
}

TEST_F(CalDataFileTest, AnotherNameIsAFileName) {
  WriteTemplate(Lines(Header() + Texts{"*10:91", "!End"}));
  for (const char* name : {"c:\\NEW", "NEWS", " NEW", "NEW "}) {
    EXPECT_EQ(ErrorOf([&] { data_.LoadCalibrationDataFromFile(name); }).Kind(), ErrorKind::NotFound)
        << name;
    EXPECT_EQ(data_.Comment(), "") << name;
  }
}

TEST_F(CalDataFileTest, AnEmptyTemplateEndsBeforeItsFirstItem) {
  WriteTemplate("");
  EXPECT_EQ(TemplateError().Kind(), ErrorKind::InputPastEnd);
}

TEST_F(CalDataFileTest, ATruncatedTemplateIsAnErrorThatNamesIt) {
  for (const Texts& rest : {Texts{}, Texts{"*10:91"}, Texts{"*10:91", "*20:92"}}) {
    WriteTemplate(Lines(Header() + rest));
    EXPECT_EQ(TemplateError().Kind(), ErrorKind::Template);
  }
}

TEST_F(CalDataFileTest, ATemplateCutInTheMiddleOfALineIsAnErrorThatNamesIt) {
  const std::string bytes = Lines(Header() + Texts{"*10:91", "!End"});
  for (const std::size_t length :
       {std::size_t{1}, std::size_t{40}, bytes.size() - 8, bytes.size() - 3}) {
    SCOPED_TRACE(length);
    WriteTemplate(bytes.substr(0, length));
    EXPECT_EQ(TemplateError().Kind(), ErrorKind::Template);
  }
}

TEST_F(CalDataFileTest, ATemplateMayNameItsModelInAnyWayOrNotAtAll) {
  for (const char* line : {"#MODEL_NO : px12a", "#MODEL_NO : QZ PX12A", "#model_no : qz Px12a",
                           "#MODEL_NO : QZPX12A", "#MODEL_NO : ", "!"}) {
    SCOPED_TRACE(line);
    WriteTemplate(Lines({line, "#SER_NO   : 12", "*10:91", "!End"}));
    cInstrPX12A data;
    EXPECT_EQ(data.SetInitialDefaultData(), 0);
    EXPECT_EQ(data.ModelNumber(), "PX12A");
    EXPECT_EQ(RowsOf(data), Texts{"10 91"});
  }
}

TEST_F(CalDataFileTest, ATemplateOfAnotherModelOfTheSameMakerIsAnErrorThatNamesBoth) {
  WriteTemplate(Lines({"#MODEL_NO : QZ PX11A", "*10:91", "!End"}));
  const Error error = TemplateError();
  EXPECT_EQ(error.Kind(), ErrorKind::Template);
  EXPECT_TRUE(Contains(error.Text(), "\"PX11A\", not for \"PX12A\"")) << error.Text();
}

TEST_F(CalDataFileTest, ATemplateOfTooManyRowsIsAnErrorThatNamesItAndTheLine) {
  Texts lines = Header();
  for (int i = 1; i <= 52; ++i) {
    lines.push_back("*" + std::to_string(i) + ":100.0");
  }
  lines.emplace_back("!End");
  WriteTemplate(Lines(lines));
  EXPECT_EQ(TemplateError().Line(), 10 + 52);
}

TEST_F(CalDataFileTest, AFolderInPlaceOfTheTemplateIsAnErrorThatNamesIt) {
  std::filesystem::create_directory(tree_.ProgramFolder() / "TempPX12A");
  EXPECT_NE(TemplateError().Text(), "");
}

}  // namespace
}  // namespace tarvell
