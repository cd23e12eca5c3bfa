// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/TestKit.h"
#include "core/files/StoredFile.h"
#include "core/station/StationFiles.h"
#include "support/BinPlatform.h"
#include "support/ErrorOf.h"
#include "support/SampleInstrument.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::ErrorOf;
using Texts = std::vector<std::string>;

constexpr const char* kFolder = "c:\\calfactors\\PX12A";
constexpr const char* kFile = R"(c:\calfactors\PX12A\SN12345)";
constexpr const char* kSerial = "A12345";

class StoredFiles : public testing::Test {
 protected:
  StoredFiles() { tree_.MakeFolders(kFolder); }

  /// A data set that was read from `path`, which holds `bytes`.
  StoredFile ReadFrom(const std::string& path, const std::string& bytes) {
    tree_.Write(path, bytes);
    StoredFile file;
    file.WasRead(path, bytes, kSerial);
    return file;
  }

  test::TestTree tree_;
  test::BinPlatform platform_;
};

TEST_F(StoredFiles, ReplaceWithoutACopyWhatTheDataSetKnows) {
  // A file that already holds the bytes, one that was read, and what was written before.
  tree_.Write(kFile, "same");
  StoredFile().Save(kFile, kSerial, "same");
  StoredFile file = ReadFrom(kFile, "old");
  file.SetUnchangedBytes("old");
  for (const char* bytes : {"first", "second", "third"}) {
    file.Save(kFile, kSerial, bytes);
    EXPECT_EQ(tree_.Read(kFile), bytes);
  }
  EXPECT_EQ(platform_.kept, Texts{});
}

TEST_F(StoredFiles, KeepAFileThatSomebodyElseChanged) {
  StoredFile file = ReadFrom(kFile, "old");
  tree_.Write(kFile, "old and more");
  file.Save(kFile, kSerial, "new");
  EXPECT_EQ(platform_.kept, Texts{"old and more"});
  // Even one of the same length.
  tree_.Write(kFile, "neu");
  file.Save(kFile, kSerial, "newest");
  EXPECT_EQ(platform_.kept, (Texts{"old and more", "neu"}));
  EXPECT_EQ(tree_.Read(kFile), "newest");
}

TEST_F(StoredFiles, KeepOnceAFileOfAnotherSerialNumber) {
  StoredFile file = ReadFrom(kFile, "old");
  for (const char* bytes : {"new", "newer"}) {
    file.Save(kFile, "B12345", bytes);
    EXPECT_EQ(platform_.kept, Texts{"old"});
  }
}

TEST_F(StoredFiles, KeepOnceAFileWithMoreThanTheDataSetHolds) {
  StoredFile file = ReadFrom(kFile, "old and a remark");
  file.SetUnchangedBytes("old");
  for (const char* bytes : {"new", "newer"}) {
    file.Save(kFile, kSerial, bytes);
    EXPECT_EQ(platform_.kept, Texts{"old and a remark"});
  }
}

TEST_F(StoredFiles, KeepAnotherFileThanTheOneThatWasRead) {
  StoredFile file = ReadFrom(R"(c:\calfactors\PX12A\SN9)", "old");
  // Even one with the same content.
  tree_.Write(kFile, "old");
  file.Save(kFile, kSerial, "new");
  EXPECT_EQ(platform_.kept, Texts{"old"});
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN9)"), "old");
}

TEST_F(StoredFiles, AreTheSameInAnotherCaseAndThroughALink) {
  StoredFile file = ReadFrom(kFile, "old");
  file.Save(R"(C:\CALFACTORS\px12a\sn12345)", kSerial, "new");
  EXPECT_EQ(tree_.Read(kFile), "new");
  std::filesystem::create_symlink("SN12345", tree_.Native(R"(c:\calfactors\PX12A\SN0)"));
  file.Save(R"(c:\calfactors\PX12A\SN0)", kSerial, "newer");
  EXPECT_EQ(tree_.Read(kFile), "newer");
  EXPECT_EQ(platform_.kept, Texts{});
}

TEST_F(StoredFiles, AreNotWrittenWhereTheBinTakesNoCopy) {
  tree_.Write(kFile, "old");
  platform_.failure = std::make_error_code(std::errc::no_space_on_device);
  StoredFile file;
  const Error error = ErrorOf([&] { file.Save(kFile, kSerial, "new"); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_TRUE(test::Contains(error.Text(),
                             "Nothing was saved. Cannot keep the earlier file in the recycle bin"))
      << error.Text();
  EXPECT_EQ(tree_.Read(kFile), "old");
  EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12345"});
  platform_.failure = {};
  file.Save(kFile, kSerial, "new");
  EXPECT_EQ(tree_.Read(kFile), "new");
  EXPECT_EQ(platform_.kept, Texts{"old"});
}

TEST_F(StoredFiles, LetTheSaveReportAFolderAtTheirPath) {
  tree_.MakeFolders(kFile);
  const Error error = ErrorOf([&] { StoredFile().Save(kFile, kSerial, "new"); });
  EXPECT_TRUE(test::Contains(error.Text(), "Cannot save the file")) << error.Text();
  EXPECT_EQ(platform_.kept, Texts{});
}

// ---- The kinds of file that hold a serial number.

constexpr const char* kStation = R"(c:\stations\ST1)";
constexpr const char* kInstrument = R"(c:\stations\ST1\PX12A)";

TEST_F(StoredFiles, OfDataSetsKeepWhatTheDataSetDoesNotHold) {
  const auto data = FindModel("PX12A")->create();
  data->SetModelNumber("PX12A");
  data->SetSerialNumber(kSerial);
  data->SaveCalibrationDataToFile(kFile);
  const std::string withRemark = tree_.Read(kFile) + "REMARK of the lab\r\n";
  tree_.Write(kFile, withRemark);
  const auto opened = FindModel("PX12A")->create();
  opened->LoadCalibrationDataFromFile(kFile);
  opened->RememberUnchangedSave();
  for (const char* comment : {"first", "second"}) {
    opened->SetComment(comment);
    opened->SaveCalibrationDataToFile(kFile);
    EXPECT_EQ(platform_.kept, Texts{withRemark});
  }
}

TEST_F(StoredFiles, OfAnOpenedInstrumentKeepWhatItDoesNotHold) {
  const std::string sample = test::kSampleInstrumentFile;
  StationInstrument instrument;
  StoredFile file;
  // The last line is not read back. Here it is empty, so that the instrument holds the whole file.
  tree_.Write(kInstrument, sample.substr(0, sample.find("own file")) + "\r\n");
  ASSERT_TRUE(LoadInstrumentFile(kInstrument, instrument, file));
  instrument.Comment = "corrected";
  SaveInstrumentFile(kStation, instrument, file);
  EXPECT_EQ(platform_.kept, Texts{});
  tree_.Write(kInstrument, sample + "REMARK of the lab\r\n");
  ASSERT_TRUE(LoadInstrumentFile(kInstrument, instrument, file));
  for (const char* comment : {"first", "second"}) {
    instrument.Comment = comment;
    SaveInstrumentFile(kStation, instrument, file);
    EXPECT_EQ(platform_.kept, Texts{sample + "REMARK of the lab\r\n"});
  }
}

TEST_F(StoredFiles, OfATestKitKeepTheEarlierFile) {
  const std::filesystem::path source = tree_.Root() / "kit.dat";
  for (const char* kit : {"RT410A\r\nA12345\r\n", "RT410A\r\nA12345\r\n", "RT410A\r\nB12345\r\n"}) {
    EXPECT_EQ(platform_.kept, Texts{});
    test::WriteNative(source, kit);
    CopyTestKitFile(source, kFolder);
    EXPECT_EQ(tree_.Read(kFile), kit);
  }
  EXPECT_EQ(platform_.kept, Texts{"RT410A\r\nA12345\r\n"});
}

}  // namespace
}  // namespace tarvell
