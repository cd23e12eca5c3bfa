// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "core/caldata/CalDataFile.h"
#include "core/caldata/HeaderLines.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/cInstrPX12A.h"
#include "support/Dates.h"
#include "support/ErrorOf.h"
#include "support/SetStage.h"
#include "support/TestTree.h"

namespace tarvell::test {
namespace {

constexpr const char* kFile = R"(c:\calfactors\PX12A\SN12345)";
const std::string k20Words = "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20";

class CalDataFileTest : public testing::Test {
 protected:
  /// Loads a file of these lines.
  void Load(const Texts& lines) {
    tree_.Write(kFile, Lines(lines));
    EXPECT_EQ(data_.LoadCalibrationDataFromFile(kFile), 0);
  }

  /// What a save writes.
  std::string Saved() {
    tree_.MakeFolders("c:\\calfactors\\PX12A");
    EXPECT_EQ(data_.SaveCalibrationDataToFile(kFile), 0);
    return tree_.Read(kFile);
  }

  /// The header line `number`, counted from 0, that a save writes.
  std::string SavedLine(int number) {
    std::string text = Saved();
    for (int i = 0; i < number; ++i) {
      text.erase(0, text.find("\r\n") + 2);
    }
    return text.substr(0, text.find("\r\n"));
  }

  void WriteTemplate(const std::string& bytes) {
    WriteNative(tree_.ProgramFolder() / "TempPX12A", bytes);
  }

  /// The error of asking for the default data; it must name the template.
  Error TemplateError() {
    Error error = ErrorOf([&] { data_.SetInitialDefaultData(); });
    EXPECT_EQ(error.Path(), (tree_.ProgramFolder() / "TempPX12A").string());
    EXPECT_TRUE(Contains(error.what(), "TempPX12A")) << error.what();
    return error;
  }

  TestTree tree_;
  cInstrPX12A data_;
};

TEST_F(CalDataFileTest, PropertiesGiveBackWhatWasSetUntilAFileHasALineForThem) {
  data_.SetPath(" a path ");
  data_.SetModelNumber("model");
  data_.SetSerialNumber("serial number");
  data_.SetCalibrationNumber("number:1");
  data_.SetComment("done in lab, twice ");
  // Dates are not checked.
  data_.SetCalDate(2001, "FEB", 30);
  data_.SetDueDate(-1, "no month", 32767);
  for (const bool isLoaded : {false, true}) {
    if (isLoaded) {
      Load({"!", "!End"});
    }
    EXPECT_EQ(data_.Path(), " a path ");
    EXPECT_EQ(data_.ModelNumber(), "model");
    EXPECT_EQ(data_.SerialNumber(), "serial number");
    EXPECT_EQ(data_.CalibrationNumber(), "number:1");
    EXPECT_EQ(data_.Comment(), "done in lab, twice ");
    EXPECT_EQ(CalDateOf(data_), (Date{2001, "FEB", 30}));
    EXPECT_EQ(DueDateOf(data_), (Date{-1, "no month", 32767}));
  }
}

TEST_F(CalDataFileTest, HeaderValuesAreWrittenAsTheyAre) {
  data_.SetModelNumber("another model");
  data_.SetSerialNumber(" 12 ");
  data_.SetCalibrationNumber("a:b \"c\"");
  EXPECT_EQ(SavedLine(0), "#MODEL_NO : another model");
  EXPECT_EQ(SavedLine(1), "#SER_NO   :  12 ");
  EXPECT_EQ(SavedLine(3), "#CAL_NO   : a:b \"c\"");
  for (const std::string& comment : {std::string("done in lab "), std::string("checked, in order"),
                                     k20Words, k20Words + ", 21 22 23"}) {
    data_.SetComment(comment);
    EXPECT_EQ(SavedLine(5), "#COMMENT  : " + comment);
  }
  // What is no name of a month is written as 00.
  for (const char* month : {"", "jan", "1"}) {
    data_.SetCalDate(2001, month, 5);
    EXPECT_EQ(SavedLine(2), "#CAL_DATE : 20010005") << month;
  }
  EXPECT_EQ(data_.LoadCalibrationDataFromFile(kFile), 0);
  EXPECT_EQ(CalDateOf(data_), (Date{2001, "", 5}));
}

TEST_F(CalDataFileTest, AHeaderValueIsRefusedWhereAnotherLineWouldBeReadFromItOrItIsTooLong) {
  struct Refused {
    std::string serialNumber;
    std::string calibrationNumber;
    std::string comment;
    std::string part;  ///< of the error's text
  };
  for (const Refused& refused :
       {Refused{"AB,12345", "", "", "serial number \"AB,12345\""},
        Refused{"12", "C,1", "", "calibration number \"C,1\""},
        Refused{"", "", "a, b, *50 99.0", "comment"}, Refused{"", "", "a,#50", "comment"},
        Refused{"", "", "a, !50", "comment"}, Refused{"", "", "a, \"50", "comment"},
        Refused{"", "", k20Words + ":21", "more than 20 words"}}) {
    data_.SetSerialNumber(refused.serialNumber);
    data_.SetCalibrationNumber(refused.calibrationNumber);
    data_.SetComment(refused.comment);
    const Error error = ErrorOf([&] { data_.SaveCalibrationDataToFile(kFile); });
    EXPECT_EQ(error.Kind(), ErrorKind::Character);
    EXPECT_TRUE(Contains(error.what(), refused.part)) << error.what();
  }
}

TEST_F(CalDataFileTest, ACellThatCannotBeSavedIsRefusedAndTheEarlierFileIsWhole) {
  tree_.Write(kFile, "earlier");
  for (const auto& [row, kind] :
       {std::pair("50\t99.0\xCE\xA9", ErrorKind::Character),
        std::pair("5\xCE\xA9\t99.0", ErrorKind::Character),
        std::pair("50\n\t99.0", ErrorKind::Character), std::pair("50\t99\r", ErrorKind::Character),
        std::pair("1E999\t100.0", ErrorKind::Type)}) {
    SCOPED_TRACE(row);
    MemoryGrid grid;
    grid.AddRow(row);
    data_.SetCalData(0, grid);
    EXPECT_EQ(ErrorOf([&] { data_.SaveCalibrationDataToFile(kFile); }).Kind(), kind);
    EXPECT_EQ(tree_.Read(kFile), "earlier");
  }
}

TEST_F(CalDataFileTest, AHeaderLineInAnyCaseSetsItsFieldToItsFirstWord) {
  const std::vector<std::pair<Texts, Texts>> table = {
      {{"#SER_NO   : 33 18", "#CAL_NO   : C:42", "#COMMENT  : done in lab"}, {"33", "C", "done"}},
      // The item ends at a comma unless it is quoted.
      {{"#COMMENT  : left,right", "#ser_no   : 12", "#CAL_NO 13"}, {"12", "13", "left"}},
      {{"\"#comment  : left,right\" passed over"}, {"12", "13", "left,right"}},
      {{"#SER_NO   : ", "#CAL_NO", "#COMMENT  :"}, {"", "", ""}},
      {{"#SER_NO:12", "#Cal_No 13", "  # COMMENT ::  \t 14  "}, {"12", "13", "14"}}};
  for (const auto& [lines, values] : table) {
    Load(Joined({lines, {"#Cal_Date : 20010305", "#due_DATE : 20020425", "!End"}}));
    EXPECT_EQ((Texts{data_.SerialNumber(), data_.CalibrationNumber(), data_.Comment()}), values);
    EXPECT_EQ(CalDateOf(data_), (Date{2001, "MAR", 5}));
    EXPECT_EQ(DueDateOf(data_), (Date{2002, "APR", 25}));
  }
}

TEST_F(CalDataFileTest, UnknownKeywordsAndOtherLinesAreIgnored) {
  data_.SetSerialNumber("kept");
  Load({"#SERIAL : 1", "#SER_NOX : 2", "#", "# : : ", "", "   ", "SER_NO   : 3", "!SER_NO   : 4",
        "!*  10: 99.0", "/#SER_NO : 5", "10: 99.0", "#COMMENT  : fine", "!End"});
  EXPECT_EQ(data_.SerialNumber(), "kept");
  EXPECT_EQ(data_.Comment(), "fine");
  EXPECT_EQ(RowsOf(data_), Texts());
}

TEST_F(CalDataFileTest, HeaderLinesAndRowsAreReadInAnyPlaceAlsoAfterTheTerminator) {
  Load({"*10:91", "#COMMENT  : before", "!End", "\"*20:92\"", "#SER_NO   : 12", "!",
        "#SER_NO   : 13", "!End"});
  EXPECT_EQ(RowsOf(data_), (Texts{"10|91", "20|92"}));
  EXPECT_EQ(data_.Comment(), "before");
  EXPECT_EQ(data_.SerialNumber(), "13");
  // Rows are read over what the table held.
  Load({"*5:99", "!End"});
  EXPECT_EQ(RowsOf(data_), (Texts{"5|99", "20|92"}));
}

TEST_F(CalDataFileTest, TheLastItemIsNeverInterpretedAndTheFileSaysWhatWasNotRead) {
  Load({"#SER_NO   : 12", "*10:91", "*20:92"});
  EXPECT_EQ(data_.SerialNumber(), "12");
  EXPECT_EQ(RowsOf(data_), Texts{"10|91"});
  ASSERT_EQ(data_.LoadNotices().size(), 1U);
  EXPECT_TRUE(Contains(data_.LoadNotices()[0], "was not read: *20:92")) << data_.LoadNotices()[0];
  // The rows may be missing.
  Load({"#SER_NO   : 12", "!"});
  EXPECT_EQ(data_.LoadNotices().size(), 1U);
  // A remark at the end is no loss.
  for (const Texts& end : {Texts{"!"}, Texts{"!End", "!"}, Texts{"!", "! checked"}}) {
    Load(Joined({{"*10:91", "*20:92"}, end}));
    EXPECT_EQ(RowsOf(data_), (Texts{"10|91", "20|92"}));
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

TEST_F(CalDataFileTest, ALineThatCannotBeReadIsAnErrorOfItsFileAndLine) {
  Load({"#COMMENT  : " + k20Words, "* " + k20Words + " 21", "!End"});
  for (const auto& [line, kind] :
       {std::pair("#COMMENT  : " + k20Words + " 21", ErrorKind::Index),
        std::pair("* " + k20Words + " 21 22", ErrorKind::Index),
        std::pair(std::string("#CAL_DATE : 4E4"), ErrorKind::Type),
        std::pair(std::string("#DUE_DATE : 1E050305"), ErrorKind::Type)}) {
    SCOPED_TRACE(line);
    const Texts lines = {"#SER_NO   : 12", "*10:91", line, "#CAL_NO   : 13", "*20:92", "!End"};
    const Error error = ErrorOf([&] { Load(lines); });
    EXPECT_EQ(error.Kind(), kind);
    EXPECT_EQ(error.Path(), kFile);
    EXPECT_EQ(error.Line(), 3);
    EXPECT_TRUE(Contains(error.what(), kFile)) << error.what();
    // What was read stays.
    EXPECT_EQ(data_.SerialNumber(), "12");
    EXPECT_EQ(data_.CalibrationNumber(), "");
    EXPECT_EQ(RowsOf(data_), Texts{"10|91"});
  }
}

TEST_F(CalDataFileTest, TheNameNewInAnyCaseMeansTheTemplateAndAnyOtherAFile) {
  for (const char* name : {"new", "NEW", "nEw"}) {
    WriteTemplate(Lines({"#COMMENT  : " + std::string(name), "*10:91", "!End"}));
    EXPECT_EQ(data_.LoadCalibrationDataFromFile(name), 0);
    EXPECT_EQ(data_.Comment(), name);
    EXPECT_EQ(data_.ModelNumber(), "PX12A");
    EXPECT_EQ(RowsOf(data_), Texts{"10|91"});
  }
  for (const std::string name : {"c:\\NEW", "NEWS", " NEW", "NEW "}) {
    const Error error = ErrorOf([&] { data_.LoadCalibrationDataFromFile(name); });
    EXPECT_EQ(error.Kind(), ErrorKind::NotFound) << name;
    EXPECT_EQ(error.Path(), name);
    EXPECT_EQ(data_.Comment(), "nEw") << name;
  }
}

TEST(StationModelOf, LeavesOutTheMakerItsBlankAndTheOption) {
  for (const auto& [listed, shown] :
       {std::pair("QZ PX12A", "PX12A"), std::pair("QZ RT520C Opt001", "RT520C"),
        std::pair("PX12A", "PX12A"), std::pair("RT520COpt001", "RT520C")}) {
    EXPECT_EQ(StationModelOf(listed), shown);
  }
}

TEST_F(CalDataFileTest, ATemplateMayNameItsModelInAnyWayOrNotAtAll) {
  for (const char* line : {"#MODEL_NO : px12a", "#MODEL_NO : QZ PX12A", "#model_no : qz Px12a",
                           "#MODEL_NO : QZPX12A", "#MODEL_NO : ", "!"}) {
    SCOPED_TRACE(line);
    // The file may have its name in another case, too.
    WriteNative(tree_.ProgramFolder() / "TEMPpx12a",
                Lines({line, "#SER_NO   : 12", "*10:91", "!End"}));
    cInstrPX12A data;
    EXPECT_EQ(data.SetInitialDefaultData(), 0);
    EXPECT_EQ(data.ModelNumber(), "PX12A");
    EXPECT_EQ(RowsOf(data), Texts{"10|91"});
  }
}

TEST_F(CalDataFileTest, ATemplateThatIsMissingCutOffOrOfAnotherModelIsAnErrorThatNamesIt) {
  Error error = TemplateError();
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_TRUE(Contains(error.Text(), "template")) << error.Text();
  for (const Texts& rest : {Texts{}, Texts{"*10:91"}, Texts{"*10:91", "*20:92"}}) {
    WriteTemplate(Lines(Joined({{"#COMMENT  : factory"}, rest})));
    EXPECT_EQ(TemplateError().Kind(), ErrorKind::Template);
  }
  WriteTemplate(Lines({"#MODEL_NO : QZ PX11A", "*10:91", "!End"}));
  error = TemplateError();
  EXPECT_EQ(error.Kind(), ErrorKind::Template);
  EXPECT_TRUE(Contains(error.Text(), "\"PX11A\", not for \"PX12A\"")) << error.Text();
}

}  // namespace
}  // namespace tarvell::test
