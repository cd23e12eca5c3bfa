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

/// The header of the examples, and the comment and caption lines after it.
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

// Writing.

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

TEST_F(CalDataFileTest, ACommentMayHoldACommaButNothingAfterItThatBeginsALine) {
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

TEST_F(CalDataFileTest, AMonthThatIsNoMonthNameIsWrittenAs00AndComesBackEmpty) {
  for (const char* month : {"", "Jan", "jan", "JANUARY", "1", "XYZ"}) {
    data_.SetCalDate(2001, month, 5);
    EXPECT_EQ(SavedLine(3), "#CAL_DATE : 20010005") << month;
    EXPECT_EQ(data_.LoadCalibrationDataFromFile(kFile), 0);
    EXPECT_EQ(CalDateOf(data_), (Date{2001, "", 5})) << month;
  }
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

TEST_F(CalDataFileTest, AFrequencyTooLargeForANumberIsRefusedAndTheEarlierFileIsWhole) {
  tree_.Write(kFile, "earlier");
  MemoryGrid grid;
  grid.AddRow("1E999\t100.0");
  data_.SetCalData(0, grid);
  EXPECT_EQ(ErrorOf([&] { data_.SaveCalibrationDataToFile(kFile); }).Kind(), ErrorKind::Type);
  EXPECT_EQ(tree_.Read(kFile), "earlier");
}

// Reading.

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

TEST_F(CalDataFileTest, HeaderLinesAreReadInAnyPlace) {
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

TEST_F(CalDataFileTest, AFileWithoutItsEndSaysWhatWasNotRead) {
  Load({"*10:91", "*20:92"});
  ASSERT_EQ(data_.LoadNotices().size(), 1U);
  EXPECT_TRUE(Contains(data_.LoadNotices()[0], "was not read: *20:92")) << data_.LoadNotices()[0];
  // The rows may be missing.
  Load({"#SER_NO   : 12", "!"});
  EXPECT_EQ(data_.LoadNotices().size(), 1U);
}

TEST_F(CalDataFileTest, AFileThatEndsInARemarkAfterItsRowsHasLostNothing) {
  for (const Texts& end : {Texts{"!"}, Texts{"!End", "!"}, Texts{"!", "! checked"}}) {
    Load(Texts{"*10:91", "*20:92"} + end);
    EXPECT_EQ(RowsOf(data_), (Texts{"10 91", "20 92"}));
    EXPECT_EQ(data_.LoadNotices(), Texts{}) << end[0];
  }
}

TEST_F(CalDataFileTest, AnotherModelIsReportedAndTheMakersPrefixIsIgnored) {
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

TEST_F(CalDataFileTest, ADateOfAnotherLengthIsTakenApartByPosition) {
  const std::vector<std::pair<std::string, Date>> dates = {
      {"1", {1, "", 1}},
      {"2001", {2001, "", 1}},
      {"2001030512", {2001, "MAR", 12}},
      {"20011305", {2001, "", 5}},
      {"20010399", {2001, "MAR", 99}},
      {"2001-3-5", {2001, "", -5}},
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

// The default data.

TEST_F(CalDataFileTest, TheTemplateIsReadFromTheProgramFolder) {
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

TEST_F(CalDataFileTest, ATruncatedTemplateIsAnErrorThatNamesIt) {
  for (const Texts& rest : {Texts{}, Texts{"*10:91"}, Texts{"*10:91", "*20:92"}}) {
    WriteTemplate(Lines(Header() + rest));
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

}  // namespace
}  // namespace tarvell
