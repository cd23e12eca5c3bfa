// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/TestKit.h"
#include "core/caldata/cInstrPX12A.h"
#include "core/caldata/cInstrRT520A.h"
#include "core/files/Replacement.h"
#include "core/station/StationFiles.h"
#include "support/AnotherProcess.h"
#include "support/BinPlatform.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

namespace fs = std::filesystem;

using Kind = Replacement::Kind;
using Fields = std::vector<FileSummary::Field>;
using Texts = std::vector<std::string>;
using test::InAnotherProcess;

constexpr const char* kFile = R"(c:\calfactors\PX12A\SN12345)";
constexpr const char* kInstrument = R"(c:\stations\ST1\PX12A)";

/// The rows of a sensor: frequency and factor.
using Rows = std::vector<std::pair<std::string, std::string>>;

std::string SensorBytes(const std::string& serial, const std::string& comment, const Rows& rows) {
  Texts lines = {"#MODEL_NO : PX12A",
                 "#SER_NO   : " + serial,
                 "#CAL_DATE : 20010305",
                 "#CAL_NO   : C-0042",
                 "#DUE_DATE : 20020305",
                 "#COMMENT  : " + comment,
                 "!",
                 "!",
                 "!        :              : Reflection Coefficient",
                 "!FEQ(MHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)"};
  for (const auto& [frequency, factor] : rows) {
    lines.push_back("*  " + frequency + ":     " + factor +
                    "     :    0.0    :     0.0    :    0.0    :     0.0  ");
  }
  lines.emplace_back("!End");
  return test::Lines(lines);
}

const Rows kRows = {{"100.00", "98.1"}, {"200.00", "98.2"}, {"300.00", "98.3"}};

class Replacing : public testing::Test {
 protected:
  Replacing() {
    tree_.MakeFolders(R"(c:\calfactors\PX12A)");
    tree_.MakeFolders(R"(c:\calfactors\RT410A)");
    tree_.MakeFolders(R"(c:\stations\ST1)");
  }

  /// Reads the data set as an editor does.
  static void Open(cifCaldata& data, const std::string& path = kFile) {
    data.LoadCalibrationDataFromFile(path);
    data.RememberUnchangedSave();
  }
  /// A new data set of this serial number.
  static void Make(cifCaldata& data, const std::string& serial) {
    data.SetModelNumber("PX12A");
    data.SetSerialNumber(serial);
  }

  /// Gives a file a time of its last change: 5 March 2026, 14:03:07 UTC.
  void SetTime(const std::string& path) const {
    const auto time = std::chrono::sys_days(std::chrono::year(2026) / 3 / 5) +
                      std::chrono::hours(14) + std::chrono::minutes(3) + std::chrono::seconds(7);
    fs::last_write_time(tree_.Native(path), std::chrono::file_clock::from_sys(time));
  }

  test::TestTree tree_;
  test::BinPlatform platform_;
};

/// The clock of this place is UTC while it lives.
class InUtc {
 public:
  InUtc() { Set("UTC0"); }
  InUtc(const InUtc&) = delete;
  InUtc& operator=(const InUtc&) = delete;
  ~InUtc() {
    if (before_.empty()) {
      ::unsetenv("TZ");
      ::tzset();
    } else {
      Set(before_.c_str());
    }
  }

 private:
  static void Set(const char* zone) {
    ::setenv("TZ", zone, 1);
    ::tzset();
  }
  std::string before_ = std::getenv("TZ") == nullptr ? "" : std::getenv("TZ");
};

// ---- Nobody is asked.

TEST_F(Replacing, NothingIsAskedOfNewDataThatMeetNoFile) {
  cInstrPX12A data;
  Make(data, "3318A12345");
  EXPECT_EQ(data.WouldReplace(kFile).kind, Kind::None);
}

TEST_F(Replacing, NothingIsAskedOfTheFileThatWasOpenedAsOftenAsItIsSaved) {
  tree_.Write(kFile, SensorBytes("3318A12345", "factory and a remark", kRows));
  cInstrPX12A data;
  Open(data);
  for (const char* comment : {"first", "second"}) {
    data.SetComment(comment);
    EXPECT_EQ(data.WouldReplace(kFile).kind, Kind::None);
    data.SaveCalibrationDataToFile(kFile);
  }
}

TEST_F(Replacing, NothingIsAskedWhereSomebodyElseWroteTheSame) {
  const std::string bytes = SensorBytes("3318A12345", "mine", kRows);
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows));
  cInstrPX12A data;
  Open(data);
  data.SetComment("mine");
  tree_.Write(kFile, bytes);
  EXPECT_EQ(data.WouldReplace(kFile).kind, Kind::None);
}

TEST_F(Replacing, AFileThatWasDeletedMeanwhileIsWrittenAgain) {
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows));
  cInstrPX12A data;
  Open(data);
  fs::remove(tree_.Native(kFile));
  EXPECT_EQ(data.WouldReplace(kFile).kind, Kind::None);
}

// ---- Another serial number.

TEST_F(Replacing, AFileOfAnotherSerialNumberIsDescribedAsInTheLists) {
  const InUtc utc;
  tree_.Write(kFile, SensorBytes("OLD12345", "own of lab 7", kRows));
  SetTime(kFile);
  cInstrPX12A data;
  Make(data, "3318A12345");
  const Replacement replacement = data.WouldReplace(kFile);
  EXPECT_EQ(replacement.kind, Kind::AnotherSerialNumber);
  const ReplacementQuestion question = QuestionOf(replacement);
  EXPECT_EQ(question.text,
            "The file SN12345 holds the data of another serial number, \"OLD12345\". Do you want "
            "to replace it?");
  EXPECT_EQ(question.detail,
            "Serial number: OLD12345\n"
            "Calibration number: C-0042\n"
            "Calibrated: 5 MAR 2001\n"
            "Due: 5 MAR 2002\n"
            "Comment: own of lab 7\n"
            "Last changed: 5 MAR 2026 14:03:07\n\n"
            "No leaves the file as it is.");
}

TEST_F(Replacing, AFileThatNamesNoSerialNumberIsAnotherOne) {
  cInstrPX12A data;
  Make(data, "3318A12345");
  for (const char* bytes : {"no data\r\n", "#MODEL_NO : PX12A\r\n#CAL_DATE : 20010230\r\n"}) {
    tree_.Write(kFile, bytes);
    const Replacement replacement = data.WouldReplace(kFile);
    EXPECT_EQ(replacement.kind, Kind::AnotherSerialNumber);
    EXPECT_EQ(QuestionOf(replacement).text,
              "The file SN12345 holds data without a serial number. Do you want to replace it?");
  }
  EXPECT_TRUE(test::Contains(QuestionOf(data.WouldReplace(kFile)).detail,
                             "Calibration number: (none)\nCalibrated: 20010230 (no such day)\n"));
}

TEST_F(Replacing, AFileWithALineBeforeItsHeaderIsDescribedByItsHeader) {
  for (const char* before : {"\r\n", "! remark\r\n", "Sensor of room 3\r\n"}) {
    tree_.Write(kFile, before + SensorBytes("3318A12345", "factory", kRows));
    cInstrPX12A data;
    Open(data);
    tree_.Write(kFile, before + SensorBytes("3318A12345", "others", {kRows[0], kRows[1]}));
    const Replacement replacement = data.WouldReplace(kFile);
    EXPECT_EQ(replacement.kind, Kind::Changed) << before;
    EXPECT_EQ(replacement.fields, (Fields{{"Comment", "others"}})) << before;
    EXPECT_EQ(replacement.cells, 2U) << before << "those of the row that the table shows";
  }
}

TEST_F(Replacing, AHeaderLineWithoutAColonIsUnderstoodAsALoadDoes) {
  std::string bytes = SensorBytes("3318A12345", "factory", kRows);
  bytes.replace(bytes.find("#SER_NO   : "), 12, "\t#SER_NO ");
  tree_.Write(kFile, bytes);
  cInstrPX12A data;
  Open(data);
  ASSERT_EQ(data.SerialNumber(), "3318A12345");
  bytes.replace(bytes.find("C-0042"), 6, "C-0043");
  tree_.Write(kFile, bytes);
  const Replacement replacement = data.WouldReplace(kFile);
  EXPECT_EQ(replacement.kind, Kind::Changed);
  EXPECT_EQ(replacement.file.serialNumber, "3318A12345");
  EXPECT_EQ(replacement.fields, (Fields{{"Calibration number", "C-0043"}}));
}

TEST_F(Replacing, TheFileOfAnotherKitIsAnotherOneAndThatOfTheSameKitIsNot) {
  const std::string target = R"(c:\calfactors\RT410A\SN12345)";
  const std::string source = (tree_.Root() / "kit.dat").string();
  const auto ask = [&](const std::string& serial) {
    test::WriteNative(source, "QZ RT410A\r\n" + serial + "\r\n05MAR2001\r\nfinished\r\n");
    return TestKitWouldReplace(source, R"(c:\calfactors\RT410A)");
  };
  EXPECT_EQ(ask("9999B12345").kind, Kind::None) << "there is no file yet";
  tree_.Write(target, "QZ RT410A\r\n9999B12345\r\n29FEB2000\r\nearlier\r\n");
  EXPECT_EQ(ask("9999B12345").kind, Kind::None) << "an update of the same kit";
  const Replacement replacement = ask("3318A12345");
  EXPECT_EQ(replacement.kind, Kind::AnotherSerialNumber);
  EXPECT_EQ(replacement.file.fields, (Fields{{"Serial number", "9999B12345"},
                                             {"Calibrated", "29 FEB 2000"},
                                             {"Due", "29 FEB 2001 (no such day)"}}));
  EXPECT_EQ(tree_.Read(target), "QZ RT410A\r\n9999B12345\r\n29FEB2000\r\nearlier\r\n");
}

TEST_F(Replacing, AKitIsIdentifiedByTheSecondItemOfItsFile) {
  const std::string source = (tree_.Root() / "kit.dat").string();
  const auto ask = [&](const std::string& bytes) {
    test::WriteNative(source, bytes);
    return TestKitWouldReplace(source, R"(c:\calfactors\RT410A)");
  };
  for (const std::string second : {"", "#SER_NO ", "#ser_no: "}) {
    tree_.Write(R"(c:\calfactors\RT410A\SN12345)", "# kit\r\n" + second + "90012345\r\nold\r\n");
    EXPECT_EQ(ask("# kit\r\n90012345\r\nnew\r\n").kind, Kind::None) << second;
    const Replacement replacement = ask("# kit\r\n" + second + "77712345\r\nnew\r\n");
    EXPECT_EQ(replacement.kind, Kind::AnotherSerialNumber) << second;
    EXPECT_EQ(replacement.file.serialNumber, "90012345") << second;
    EXPECT_EQ(replacement.file.fields.at(0).value, "90012345") << second;
  }
}

TEST_F(Replacing, AKitsFileWithHeaderLinesIsThatOfTheSameKit) {
  const std::string source = (tree_.Root() / "kit.dat").string();
  const std::string header = "#MODEL_NO : RT410A\r\n#SER_NO   : 3318A12345\r\n";
  tree_.Write(R"(c:\calfactors\RT410A\SN12345)", header + "!End\r\n");
  test::WriteNative(source, header + "* new\r\n!End\r\n");
  EXPECT_EQ(TestKitWouldReplace(source, R"(c:\calfactors\RT410A)").kind, Kind::None);
}

// ---- Two programs at one file.

TEST_F(Replacing, WhatAnotherProcessSavedMeanwhileIsToldWithoutOnesOwnChanges) {
  const InUtc utc;
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows));
  cInstrPX12A data;
  Open(data);
  const std::string others = SensorBytes(
      "3318A12345", "others", {{"100.00", "98.1"}, {"200.00", "97.2"}, {"300.00", "97.3"}});
  InAnotherProcess([&] {
    cInstrPX12A other;
    Open(other);
    MemoryGrid grid;
    other.GetCalData(0, grid);
    grid.SetCellText(2, 1, "97.2");
    grid.SetCellText(3, 1, "97.3");
    other.SetCalData(0, grid);
    other.SetComment("others");
    if (other.WouldReplace(kFile).kind != Kind::None) {
      std::abort();
    }
    other.SaveCalibrationDataToFile(kFile);
  });
  ASSERT_EQ(tree_.Read(kFile), others);
  SetTime(kFile);

  data.SetCalibrationNumber("C-0043");
  const Replacement replacement = data.WouldReplace(kFile);
  EXPECT_EQ(replacement.kind, Kind::Changed);
  EXPECT_EQ(QuestionOf(replacement).text,
            "The file SN12345 has changed since it was opened here. Do you want to replace it?");
  EXPECT_EQ(QuestionOf(replacement).detail,
            "Last changed: 5 MAR 2026 14:03:07\n"
            "What would be replaced:\n"
            "Comment: others\n"
            "Cells of its tables: 2\n\n"
            "No leaves the file as it is.");
  EXPECT_EQ(tree_.Read(kFile), others);

  data.SaveCalibrationDataToFile(kFile);
  std::string mine = SensorBytes("3318A12345", "factory", kRows);
  mine.replace(mine.find("C-0042"), 6, "C-0043");
  EXPECT_EQ(tree_.Read(kFile), mine);
  EXPECT_EQ(platform_.kept, Texts{others});
  EXPECT_EQ(data.WouldReplace(kFile).kind, Kind::None);
}

TEST_F(Replacing, OfTwoProcessesThatAddTheSameInstrumentTheSecondIsAsked) {
  cInstrPX12A data;
  Make(data, "3318A12345");
  data.SetComment("mine");
  InAnotherProcess([&] {
    cInstrPX12A other;
    Make(other, "3318A12345");
    other.SetCalibrationNumber("C-1");
    other.SaveCalibrationDataToFile(kFile);
  });
  const Replacement replacement = data.WouldReplace(kFile);
  EXPECT_EQ(replacement.kind, Kind::NotOpened);
  EXPECT_EQ(QuestionOf(replacement).text,
            "The file SN12345 of this serial number is there already. Do you want to replace it?");
  EXPECT_EQ(replacement.fields, (Fields{{"Calibration number", "C-1"}, {"Comment", "(none)"}}));
  EXPECT_EQ(replacement.cells, 0U);
}

TEST_F(Replacing, AnotherInstrumentThatTookTheFileMeanwhileIsNamed) {
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows));
  cInstrPX12A data;
  Open(data);
  tree_.Write(kFile, SensorBytes("NEW12345", "factory", kRows));
  const Replacement replacement = data.WouldReplace(kFile);
  EXPECT_EQ(replacement.kind, Kind::AnotherSerialNumber);
  EXPECT_EQ(replacement.file.serialNumber, "NEW12345");
}

TEST_F(Replacing, ARowThatWasPutInCountsByItsOwnCells) {
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows));
  cInstrPX12A data;
  Open(data);
  Rows more = kRows;
  more.insert(more.begin() + 1, {"150.00", "98.2"});
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", more));
  EXPECT_EQ(data.WouldReplace(kFile).cells, 2U);
  // One that was taken out, and another that was changed below it.
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", {{"100.00", "98.1"}, {"300.00", "9.3"}}));
  EXPECT_EQ(data.WouldReplace(kFile).cells, 4U);
}

TEST_F(Replacing, AChangeBesidesTheFieldsAndCellsIsToldAsSuch) {
  const std::string bytes = SensorBytes("3318A12345", "factory", kRows);
  tree_.Write(kFile, bytes);
  cInstrPX12A data;
  Open(data);
  tree_.Write(kFile, bytes + "a remark\r\n");
  const Replacement replacement = data.WouldReplace(kFile);
  EXPECT_EQ(replacement.kind, Kind::Changed);
  EXPECT_TRUE(test::Contains(QuestionOf(replacement).detail,
                             "Its fields and cells are the same; only remarks or blanks differ."));
}

TEST_F(Replacing, OfASetTheMembersSerialNumberAndCellsAreTold) {
  const std::string path = R"(c:\calfactors\RT520A\SN05678)";
  const auto bytes = [](const std::string& member, const std::string& value) {
    return test::Lines(
        {"#MODEL_NO : RT520A", "#SER_NO   : 1234A05678", "#CAL_DATE : 20010305", "#CAL_NO   : C-1",
         "#DUE_DATE : 20020305", "#COMMENT  : factory", "!", "#RT521A    :     " + member,
         "*         1000 :       " + value + "pF :    0.0050 :            0.00002 :   0.00010",
         "!END", "!"});
  };
  tree_.Write(path, bytes("2519J1", "1.000214"));
  cInstrRT520A data;
  Open(data, path);
  tree_.Write(path, bytes("2519J2", "1.000215"));
  const Replacement replacement = data.WouldReplace(path);
  EXPECT_EQ(replacement.kind, Kind::Changed);
  EXPECT_EQ(replacement.fields, (Fields{{"Serial number of RT521A", "2519J2"}}));
  EXPECT_EQ(replacement.cells, 1U);
}

TEST_F(Replacing, AFileThatCannotBeReadIsNotReplacedUnseen) {
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows));
  cInstrPX12A data;
  Make(data, "3318A12345");
  test::FaultPlatform platform;
  platform.Set(test::FaultPlatform::Step::OpenForReading, std::errc::permission_denied);
  const Error error = test::ErrorOf([&] { static_cast<void>(data.WouldReplace(kFile)); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), kFile);
}

// ---- A station's instrument.

class ReplacingAnInstrument : public Replacing {
 protected:
  static StationInstrument Sample() {
    StationInstrument instrument;
    instrument.ModelNumber = "PX12A";
    instrument.SerialNumber = "3318A12345";
    instrument.AddressType = "GP-IB";
    instrument.DueDay = "5";
    instrument.DueMonth = "MAR";
    instrument.DueYear = "2002";
    return instrument;
  }
  static Replacement Look(const StationInstrument& instrument, const StoredFile& file) {
    return InstrumentWouldReplace(R"(c:\stations\ST1)", instrument, file);
  }
  static void Save(const StationInstrument& instrument, StoredFile& file) {
    SaveInstrumentFile(R"(c:\stations\ST1)", instrument, file);
  }
};

TEST_F(ReplacingAnInstrument, ThatAnotherProcessSavedMeanwhileIsAsked) {
  StationInstrument mine = Sample();
  StoredFile file;
  EXPECT_EQ(Look(mine, file).kind, Kind::None);
  Save(mine, file);
  StationInstrument opened;
  StoredFile openedFile;
  ASSERT_TRUE(LoadInstrumentFile(kInstrument, opened, openedFile));
  InAnotherProcess([&] {
    StationInstrument other = Sample();
    other.Address = "17";
    other.DueYear = "2003";
    StoredFile otherFile;
    Save(other, otherFile);
  });
  opened.Comment = "mine";
  const Replacement replacement = Look(opened, openedFile);
  EXPECT_EQ(replacement.kind, Kind::Changed);
  EXPECT_EQ(replacement.fields, (Fields{{"ADDRESS", "17"}, {"CAL DUE DATE", "5 MAR 2003"}}));
}

TEST_F(ReplacingAnInstrument, IsNotAskedWhereItsOwnSerialNumberWasChosenAgain) {
  StationInstrument mine = Sample();
  StoredFile file;
  Save(mine, file);
  mine.SerialNumber = "3318A99999";
  EXPECT_EQ(Look(mine, file).kind, Kind::None);
  // Not even where somebody else changed the file: it is still the same instrument's.
  tree_.Write(kInstrument, tree_.Read(kInstrument) + "REMARK by others\r\n");
  EXPECT_EQ(Look(mine, file).kind, Kind::Changed);
}

TEST_F(ReplacingAnInstrument, UnderTheNameOfAnotherOneIsAsked) {
  StationInstrument other = Sample();
  other.SerialNumber = "9";
  StoredFile otherFile;
  Save(other, otherFile);
  StationInstrument mine = Sample();
  mine.ModelNumber = "PX13A";
  StoredFile file;
  Save(mine, file);
  mine.ModelNumber = "PX12A";
  const Replacement replacement = Look(mine, file);
  EXPECT_EQ(replacement.kind, Kind::AnotherSerialNumber);
  EXPECT_TRUE(test::Contains(QuestionOf(replacement).detail,
                             "SERIAL NUMBER: 9\nADDRESS TYPE: GP-IB\nCAL DUE DATE: 5 MAR 2002\n"))
      << QuestionOf(replacement).detail;
}

// ---- The question and the save.

TEST_F(Replacing, WhatChangesAgainWhileTheUserIsAskedIsAskedAboutAgain) {
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows));
  cInstrPX12A data;
  Open(data);
  tree_.Write(kFile, SensorBytes("3318A12345", "others", kRows));
  Texts asked;
  const bool may = MayReplace([&] { return data.WouldReplace(kFile); },
                              [&](const Replacement& replacement) {
                                asked.push_back(replacement.fields.at(0).value);
                                if (asked.size() == 1) {
                                  tree_.Write(kFile, SensorBytes("3318A12345", "more", kRows));
                                }
                                return true;
                              });
  EXPECT_TRUE(may);
  EXPECT_EQ(asked, (Texts{"others", "more"}));
  EXPECT_FALSE(MayReplace([&] { return data.WouldReplace(kFile); },
                          [](const Replacement&) { return false; }));
}

TEST(LocalTime, OfATimeThatIsNotKnownIsToldAsSuch) {
  EXPECT_EQ(LocalTimeText(0), "(unknown)");
}

}  // namespace
}  // namespace tarvell
