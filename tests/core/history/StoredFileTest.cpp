// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "core/caldata/TestKit.h"
#include "core/caldata/cInstrPX12A.h"
#include "core/history/Replacement.h"
#include "core/station/StationFiles.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/KeptFiles.h"
#include "support/SampleInstrument.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

namespace fs = std::filesystem;

using Kind = Replacement::Kind;
using Fields = std::vector<FileSummary::Field>;
using Texts = std::vector<std::string>;
using test::ErrorOf;

constexpr const char* kFile = R"(c:\calfactors\PX12A\SN12345)";
constexpr const char* kStation = R"(c:\stations\ST1)";

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
    tree_.MakeFolders(kStation);
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

  /// Gives a file a time of its last change: 5 March 2026, 14:03:07 of local time.
  void SetTime(const std::string& path) const {
    std::tm local = {};
    local.tm_year = 2026 - 1900;
    local.tm_mon = 2;
    local.tm_mday = 5;
    local.tm_hour = 14;
    local.tm_min = 3;
    local.tm_sec = 7;
    local.tm_isdst = -1;
    const auto time = std::chrono::system_clock::from_time_t(std::mktime(&local));
    fs::last_write_time(tree_.Native(path), std::chrono::file_clock::from_sys(time));
  }

  [[nodiscard]] Texts Kept(const std::string& root = R"(c:\calfactors)",
                           const std::string& file = R"(PX12A\SN12345)") const {
    return test::KeptOf(tree_, root, file);
  }

  test::TestTree tree_;
};

TEST_F(Replacing, NothingIsAskedIfTheFileWasOpenedOrIsEqualOrGone) {
  tree_.Write(kFile, SensorBytes("3318A12345", "factory and a remark", kRows));
  cInstrPX12A data;
  Open(data);
  data.SetComment("first");
  EXPECT_EQ(data.WouldReplace(kFile).kind, Kind::None);
  data.SaveCalibrationDataToFile(kFile);
  data.SetComment("mine");
  EXPECT_EQ(data.WouldReplace(kFile).kind, Kind::None);
  tree_.Write(kFile, SensorBytes("3318A12345", "mine", kRows));
  EXPECT_EQ(data.WouldReplace(kFile).kind, Kind::None);
  fs::remove(tree_.Native(kFile));
  EXPECT_EQ(data.WouldReplace(kFile).kind, Kind::None);
}

TEST_F(Replacing, AFileOfAnotherSerialNumberIsDescribedAsInTheLists) {
  tree_.Write(kFile, SensorBytes("OLD12345", "own of lab 7", kRows));
  SetTime(kFile);
  cInstrPX12A data;
  Make(data, "3318A12345");
  const Replacement replacement = data.WouldReplace(kFile);
  EXPECT_EQ(replacement.kind, Kind::AnotherSerialNumber);
  const ReplacementQuestion question = QuestionOf(replacement);
  EXPECT_EQ(
      question.text,
      "The file PX12A\\SN12345 holds the data of another serial number, \"OLD12345\". Do you want "
      "to replace it?");
  EXPECT_EQ(question.detail,
            "Serial number: OLD12345\n"
            "Calibration number: C-0042\n"
            "Calibrated: 5 MAR 2001\n"
            "Due: 5 MAR 2002\n"
            "Comment: own of lab 7\n"
            "Last changed: 5 MAR 2026 14:03:07\n\n"
            "No leaves the file as it is.");

  for (const char* bytes : {"no data\r\n", "#MODEL_NO : PX12A\r\n#CAL_DATE : 20010230\r\n"}) {
    tree_.Write(kFile, bytes);
    EXPECT_EQ(
        QuestionOf(data.WouldReplace(kFile)).text,
        "The file PX12A\\SN12345 holds data without a serial number. Do you want to replace it?");
  }
  EXPECT_TRUE(test::Contains(QuestionOf(data.WouldReplace(kFile)).detail,
                             "Calibration number: (none)\nCalibrated: 20010230 (no such day)\n"));
}

// A kit is identified by the second item of its file, with or without a keyword.
TEST_F(Replacing, OnlyTheFileOfAnotherKitNeedsAnAnswer) {
  const fs::path source = tree_.Root() / "kit.dat";
  const auto ask = [&](const std::string& lines) {
    test::WriteNative(source, lines + "05MAR2001\r\nfinished\r\n");
    return TestKitWouldReplace(source, R"(c:\calfactors\RT410A)");
  };
  EXPECT_EQ(ask("QZ RT410A\r\n9999B12345\r\n").kind, Kind::None) << "there is no file yet";
  Replacement replacement;
  for (const std::string lines :
       {"# kit\r\n#SER_NO ", "# kit\r\n#ser_no: ", "# kit\r\n", "QZ RT410A\r\n"}) {
    SCOPED_TRACE(lines);
    tree_.Write(R"(c:\calfactors\RT410A\SN12345)",
                lines + "9999B12345\r\n29FEB2000\r\nearlier\r\n");
    EXPECT_EQ(ask("QZ RT410A\r\n9999B12345\r\n").kind, Kind::None) << "an update of the same kit";
    replacement = ask(lines + "3318A12345\r\n");
    EXPECT_EQ(replacement.kind, Kind::AnotherSerialNumber);
    EXPECT_EQ(replacement.file.serialNumber, "9999B12345");
  }
  EXPECT_EQ(replacement.file.fields, (Fields{{"Serial number", "9999B12345"},
                                             {"Calibrated", "29 FEB 2000"},
                                             {"Due", "29 FEB 2001 (no such day)"}}));
}

TEST_F(Replacing, OnlyTheChangesOfTheOtherUserAreListed) {
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows));
  cInstrPX12A data;
  Open(data);
  const std::string others = SensorBytes(
      "3318A12345", "others", {{"100.00", "98.1"}, {"200.00", "97.2"}, {"300.00", "97.3"}});
  tree_.Write(kFile, others);
  SetTime(kFile);

  data.SetCalibrationNumber("C-0043");
  const Replacement replacement = data.WouldReplace(kFile);
  EXPECT_EQ(replacement.kind, Kind::Changed);
  EXPECT_EQ(
      QuestionOf(replacement).text,
      "The file PX12A\\SN12345 has changed since it was opened here. Do you want to replace it?");
  EXPECT_EQ(QuestionOf(replacement).detail,
            "Last changed: 5 MAR 2026 14:03:07\n"
            "What would be replaced:\n"
            "Comment: others\n"
            "Cells of its tables: 2\n\n"
            "No leaves the file as it is.");
  data.SaveCalibrationDataToFile(kFile);
  EXPECT_EQ(Kept().back(), others);
  EXPECT_EQ(data.WouldReplace(kFile).kind, Kind::None);
}

TEST_F(Replacing, TheSecondOfTwoUsersWhoAddTheSameInstrumentIsAsked) {
  cInstrPX12A data;
  Make(data, "3318A12345");
  data.SetComment("mine");
  cInstrPX12A other;
  Make(other, "3318A12345");
  other.SetCalibrationNumber("C-1");
  other.SaveCalibrationDataToFile(kFile);
  const Replacement replacement = data.WouldReplace(kFile);
  EXPECT_EQ(replacement.kind, Kind::NotOpened);
  EXPECT_EQ(
      QuestionOf(replacement).text,
      "The file PX12A\\SN12345 with this serial number already exists. Do you want to replace it?");
  EXPECT_EQ(replacement.fields, (Fields{{"Calibration number", "C-1"}, {"Comment", "(none)"}}));
  EXPECT_EQ(replacement.cells, 0U);
}

TEST_F(Replacing, AnInsertedRowCountsByItsOwnCellsAndOtherChangesAreNamed) {
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows));
  cInstrPX12A data;
  Open(data);
  Rows more = kRows;
  more.insert(more.begin() + 1, {"150.00", "98.2"});
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", more));
  EXPECT_EQ(data.WouldReplace(kFile).cells, 2U);
  // A row that was removed, and another that was changed after it.
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", {{"100.00", "98.1"}, {"300.00", "9.3"}}));
  EXPECT_EQ(data.WouldReplace(kFile).cells, 4U);

  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows) + "a remark\r\n");
  const Replacement replacement = data.WouldReplace(kFile);
  EXPECT_EQ(replacement.kind, Kind::Changed);
  EXPECT_TRUE(test::Contains(QuestionOf(replacement).detail,
                             "Its fields and cells are the same; only remarks or blanks differ."));
}

TEST_F(Replacing, AFileThatCannotBeReadIsNotReplaced) {
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows));
  cInstrPX12A data;
  Make(data, "3318A12345");
  test::FaultPlatform platform;
  platform.Set(test::FaultPlatform::Step::OpenForReading, std::errc::permission_denied);
  const Error error = ErrorOf([&] { static_cast<void>(data.WouldReplace(kFile)); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), kFile);
}

TEST_F(Replacing, AnInstrumentThatAnotherUserSavedMeanwhileNeedsAnAnswer) {
  const auto look = [](const StationInstrument& instrument, const StoredFile& file) {
    return InstrumentWouldReplace(kStation, instrument, file);
  };
  StationInstrument instrument = test::SampleInstrument();
  StoredFile file;
  EXPECT_EQ(look(instrument, file).kind, Kind::None);
  SaveInstrumentFile(kStation, instrument, file);
  // It may have a new serial number.
  instrument.SerialNumber = "3318A99999";
  EXPECT_EQ(look(instrument, file).kind, Kind::None);
  StationInstrument other = test::SampleInstrument();
  other.Address = "17";
  other.DueYear = "2003";
  StoredFile otherFile;
  SaveInstrumentFile(kStation, other, otherFile);
  const Replacement replacement = look(instrument, file);
  EXPECT_EQ(replacement.kind, Kind::Changed);
  EXPECT_EQ(replacement.fields, (Fields{{"ADDRESS", "17"}, {"CAL DUE DATE", "5 MAR 2003"}}));
}

TEST_F(Replacing, AFileThatChangesDuringTheQuestionNeedsAnotherAnswer) {
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

constexpr const char* kSerial = "A12345";
constexpr const char* kInstrument = R"(c:\stations\ST1\PX12A)";

// ---- What a save keeps of the file that it replaces.

class StoredFiles : public Replacing {};

TEST_F(StoredFiles, KeepEveryContentThatIsReplaced) {
  StoredFile file;
  for (const char* bytes : {"first", "second", "third"}) {
    file.Save(kFile, kSerial, bytes);
    EXPECT_EQ(tree_.Read(kFile), bytes);
  }
  EXPECT_EQ(Kept(), (Texts{"first", "second"}));
  // What others have written, and what was never read.
  tree_.Write(kFile, "by hand");
  file.Save(kFile, kSerial, "fourth");
  StoredFile().Save(kFile, "B12345", "fifth");
  EXPECT_EQ(Kept(), (Texts{"first", "second", "by hand", "fourth"}));
  // The same content again replaces nothing.
  file.Save(kFile, kSerial, "fifth");
  EXPECT_EQ(Kept().size(), 4U);
}

TEST_F(StoredFiles, HaveOneHistoryInAnotherCaseToo) {
  StoredFile file;
  file.Save(kFile, kSerial, "old");
  file.Save(R"(C:\CALFACTORS\px12a\sn12345)", kSerial, "new");
  file.Save(kFile, kSerial, "newer");
  EXPECT_EQ(tree_.Read(kFile), "newer");
  EXPECT_EQ(Kept(), (Texts{"old", "new"}));
}

TEST_F(StoredFiles, BehindALinkAreKeptUnderItsName) {
  tree_.Write(kFile, "old");
  fs::create_symlink("SN12345", tree_.Native(R"(c:\calfactors\PX12A\SN0)"));
  StoredFile().Save(R"(c:\calfactors\PX12A\SN0)", kSerial, "new");
  EXPECT_EQ(tree_.Read(kFile), "new");
  EXPECT_EQ(Kept(R"(c:\calfactors)", R"(PX12A\SN0)"), Texts{"old"});
}

TEST_F(StoredFiles, AreReplacedWithoutTheHistoryOnlyIfTheUserAgrees) {
  tree_.Write(kFile, "old");
  tree_.Write(R"(c:\calfactors\history.tarvell)", "a file");
  StoredFile file;
  const Error error = ErrorOf([&] { file.Save(kFile, kSerial, "new"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotKept);
  EXPECT_EQ(error.Path(), R"(c:\calfactors\history.tarvell)");
  EXPECT_EQ(tree_.Read(kFile), "old");
  file.Save(kFile, kSerial, "new", Earlier::LetGo);
  EXPECT_EQ(tree_.Read(kFile), "new");
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\history.tarvell)"), "a file");
}

TEST_F(StoredFiles, OfEveryKindAreKept) {
  tree_.Write(kFile, SensorBytes("3318A12345", "factory", kRows) + "a remark\r\n");
  const std::string whole = tree_.Read(kFile);
  cInstrPX12A data;
  Open(data);
  data.SaveCalibrationDataToFile(kFile);
  EXPECT_EQ(Kept(), Texts{whole});

  StationInstrument instrument = test::SampleInstrument();
  StoredFile file;
  SaveInstrumentFile(kStation, instrument, file);
  const std::string before = tree_.Read(kInstrument);
  instrument.Comment = "corrected";
  SaveInstrumentFile(kStation, instrument, file);
  EXPECT_EQ(Kept(R"(c:\stations)", R"(ST1\PX12A)"), Texts{before});

  const fs::path source = tree_.Root() / "kit.dat";
  for (const char* kit : {"RT410A\r\nA54321\r\n", "RT410A\r\nB54321\r\n"}) {
    test::WriteNative(source, kit);
    CopyTestKitFile(source, R"(c:\calfactors\RT410A)");
  }
  EXPECT_EQ(Kept(R"(c:\calfactors)", R"(RT410A\SN54321)"), Texts{"RT410A\r\nA54321\r\n"});
}

}  // namespace
}  // namespace tarvell
