// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/TestKit.h"
#include "core/files/StoredFile.h"
#include "core/station/StationFiles.h"
#include "support/BinPlatform.h"
#include "support/ErrorOf.h"
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
    file.WasRead(path, FileStamp(bytes), kSerial);
    return file;
  }

  test::TestTree tree_;
  test::BinPlatform platform_;
};

TEST_F(StoredFiles, WhereNothingStoodNothingIsKept) {
  StoredFile().Save(kFile, kSerial, "new");
  EXPECT_EQ(tree_.Read(kFile), "new");
  EXPECT_TRUE(platform_.kept.empty());
}

TEST_F(StoredFiles, ANewDataSetKeepsTheFileThatItReplaces) {
  tree_.Write(kFile, "old");
  StoredFile().Save(kFile, kSerial, "new");
  EXPECT_EQ(tree_.Read(kFile), "new");
  EXPECT_EQ(platform_.kept, Texts{"old"});
}

TEST_F(StoredFiles, NothingIsKeptOfAFileThatStaysAsItIs) {
  tree_.Write(kFile, "same");
  StoredFile().Save(kFile, kSerial, "same");
  EXPECT_TRUE(platform_.kept.empty());
}

TEST_F(StoredFiles, TheFileThatWasReadIsReplacedWithoutACopy) {
  StoredFile file = ReadFrom(kFile, "old");
  file.Save(kFile, kSerial, "new");
  EXPECT_EQ(tree_.Read(kFile), "new");
  EXPECT_TRUE(platform_.kept.empty());
}

TEST_F(StoredFiles, WhatTheDataSetWroteItselfIsReplacedWithoutACopy) {
  StoredFile file;
  file.Save(kFile, kSerial, "first");
  file.Save(kFile, kSerial, "second");
  file.Save(kFile, kSerial, "third");
  EXPECT_EQ(tree_.Read(kFile), "third");
  EXPECT_TRUE(platform_.kept.empty());
}

TEST_F(StoredFiles, AFileThatSomebodyElseChangedIsKept) {
  StoredFile file = ReadFrom(kFile, "old");
  tree_.Write(kFile, "old and more");
  file.Save(kFile, kSerial, "new");
  EXPECT_EQ(platform_.kept, Texts{"old and more"});
  // One that has as many bytes as well.
  tree_.Write(kFile, "neu");
  file.Save(kFile, kSerial, "newest");
  EXPECT_EQ(platform_.kept, (Texts{"old and more", "neu"}));
  EXPECT_EQ(tree_.Read(kFile), "newest");
}

TEST_F(StoredFiles, AFileOfAnotherSerialNumberIsKept) {
  StoredFile file = ReadFrom(kFile, "old");
  file.Save(kFile, "B12345", "new");
  EXPECT_EQ(platform_.kept, Texts{"old"});
  file.Save(kFile, "B12345", "newer");
  EXPECT_EQ(platform_.kept, Texts{"old"});
}

TEST_F(StoredFiles, AFileWithMoreThanTheDataSetKeepsIsKeptOnce) {
  StoredFile file = ReadFrom(kFile, "old and a remark");
  file.WouldBeWrittenAs("old");
  file.Save(kFile, kSerial, "new");
  file.Save(kFile, kSerial, "newer");
  EXPECT_EQ(platform_.kept, Texts{"old and a remark"});
  EXPECT_EQ(tree_.Read(kFile), "newer");
}

TEST_F(StoredFiles, AFileThatWouldBeWrittenAsItIsIsNotKept) {
  StoredFile file = ReadFrom(kFile, "old");
  file.WouldBeWrittenAs("old");
  file.Save(kFile, kSerial, "new");
  EXPECT_TRUE(platform_.kept.empty());
}

TEST_F(StoredFiles, AnotherFileThanTheOneThatWasReadIsKept) {
  StoredFile file = ReadFrom(R"(c:\calfactors\PX12A\SN9)", "old");
  // Even one with the same content.
  tree_.Write(kFile, "old");
  file.Save(kFile, kSerial, "new");
  EXPECT_EQ(platform_.kept, Texts{"old"});
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN9)"), "old");
}

TEST_F(StoredFiles, AFileIsTheSameInAnotherCaseAndThroughALink) {
  StoredFile file = ReadFrom(kFile, "old");
  file.Save(R"(C:\CALFACTORS\px12a\sn12345)", kSerial, "new");
  EXPECT_EQ(tree_.Read(kFile), "new");
  std::filesystem::create_symlink("SN12345", tree_.Native(R"(c:\calfactors\PX12A\SN0)"));
  file.Save(R"(c:\calfactors\PX12A\SN0)", kSerial, "newer");
  EXPECT_EQ(tree_.Read(kFile), "newer");
  EXPECT_TRUE(platform_.kept.empty());
}

TEST_F(StoredFiles, WhereTheBinTakesNothingNothingIsWritten) {
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
  // As soon as it does, the same data set can be saved.
  platform_.failure = {};
  file.Save(kFile, kSerial, "new");
  EXPECT_EQ(tree_.Read(kFile), "new");
  EXPECT_EQ(platform_.kept, Texts{"old"});
}

TEST_F(StoredFiles, AFolderInItsPlaceIsTheSavesOwnError) {
  tree_.MakeFolders(kFile);
  const Error error = ErrorOf([&] { StoredFile().Save(kFile, kSerial, "new"); });
  EXPECT_TRUE(test::Contains(error.Text(), "Cannot save the file")) << error.Text();
  EXPECT_TRUE(platform_.kept.empty());
}

// ---- Every kind of file that holds a serial number.

/// New data of the model with this serial number, saved at `path`.
std::unique_ptr<cifCaldata> Written(const Model& model, const std::string& serial,
                                    const std::string& path) {
  std::unique_ptr<cifCaldata> data = model.create();
  data->SetModelNumber(std::string(model.code));
  data->SetSerialNumber(serial);
  data->SaveCalibrationDataToFile(path);
  return data;
}

TEST_F(StoredFiles, EveryModelKnowsTheFileItCameFrom) {
  for (const Model& model : kModels) {
    if (model.create == nullptr) {
      continue;
    }
    SCOPED_TRACE(model.code);
    platform_.kept.clear();
    const std::string path = "c:\\calfactors\\PX12A\\SN" + std::string(model.code);
    const auto written = Written(model, "1", path);

    const auto opened = model.create();
    opened->LoadCalibrationDataFromFile(path);
    opened->SetComment("corrected");
    opened->SaveCalibrationDataToFile(path);
    EXPECT_TRUE(platform_.kept.empty());

    // The first data set does not know of the correction.
    const std::string corrected = tree_.Read(path);
    written->SetComment("other");
    written->SaveCalibrationDataToFile(path);
    EXPECT_EQ(platform_.kept, Texts{corrected});

    const std::string other = tree_.Read(path);
    static_cast<void>(Written(model, "2", path));
    EXPECT_EQ(platform_.kept, (Texts{corrected, other}));
  }
}

TEST_F(StoredFiles, OfEveryModelAFileWithARemarkIsKeptOnce) {
  for (const Model& model : kModels) {
    if (model.create == nullptr) {
      continue;
    }
    SCOPED_TRACE(model.code);
    platform_.kept.clear();
    const std::string path = "c:\\calfactors\\PX12A\\SN" + std::string(model.code);
    static_cast<void>(Written(model, "1", path));

    const auto plain = model.create();
    plain->LoadCalibrationDataFromFile(path);
    plain->RememberUnchangedSave();
    plain->SetComment("corrected");
    plain->SaveCalibrationDataToFile(path);
    EXPECT_TRUE(platform_.kept.empty());

    // No field takes what stands behind the first word of a comment.
    std::string remark = tree_.Read(path);
    remark.replace(remark.find("corrected"), 9, "corrected in lab 7");
    tree_.Write(path, remark);
    const auto opened = model.create();
    opened->LoadCalibrationDataFromFile(path);
    opened->RememberUnchangedSave();
    opened->SaveCalibrationDataToFile(path);
    opened->SaveCalibrationDataToFile(path);
    EXPECT_EQ(platform_.kept, Texts{remark});
  }
}

TEST_F(StoredFiles, AnInstrumentsFileWithALineOfItsOwnIsKeptOnce) {
  tree_.MakeFolders(R"(c:\stations\ST1)");
  constexpr const char* kInstrument = R"(c:\stations\ST1\PX12A)";
  StationInstrument instrument;
  instrument.ModelNumber = "PX12A";
  StoredFile file;
  SaveInstrumentFile(R"(c:\stations\ST1)", instrument, file);
  const std::string remark = tree_.Read(kInstrument) + "REMARK left by the lab\r\n";
  tree_.Write(kInstrument, remark);
  StationInstrument opened;
  StoredFile openedFile;
  ASSERT_TRUE(LoadInstrumentFile(kInstrument, opened, openedFile));
  SaveInstrumentFile(R"(c:\stations\ST1)", opened, openedFile);
  SaveInstrumentFile(R"(c:\stations\ST1)", opened, openedFile);
  EXPECT_EQ(platform_.kept, Texts{remark});
}

TEST_F(StoredFiles, AnInstrumentKnowsTheFileItCameFrom) {
  tree_.MakeFolders(R"(c:\stations\ST1)");
  constexpr const char* kInstrument = R"(c:\stations\ST1\PX12A)";
  StationInstrument instrument;
  instrument.ModelNumber = "PX12A";
  instrument.SerialNumber = "1";
  instrument.AddressType = "GP-IB";
  instrument.DueDay = "5";
  instrument.DueMonth = "MAR";
  instrument.DueYear = "2002";
  StoredFile file;
  SaveInstrumentFile(R"(c:\stations\ST1)", instrument, file);
  StationInstrument opened;
  StoredFile openedFile;
  ASSERT_TRUE(LoadInstrumentFile(kInstrument, opened, openedFile));
  opened.Comment = "corrected";
  SaveInstrumentFile(R"(c:\stations\ST1)", opened, openedFile);
  EXPECT_TRUE(platform_.kept.empty());

  const std::string corrected = tree_.Read(kInstrument);
  SaveInstrumentFile(R"(c:\stations\ST1)", instrument, file);
  EXPECT_EQ(platform_.kept, Texts{corrected});

  const std::string first = tree_.Read(kInstrument);
  instrument.SerialNumber = "2";
  SaveInstrumentFile(R"(c:\stations\ST1)", instrument, file);
  EXPECT_EQ(platform_.kept, (Texts{corrected, first}));
}

TEST_F(StoredFiles, ATestKitsEarlierFileIsKept) {
  const std::string source = (tree_.Root() / "kit.dat").string();
  test::WriteNative(source, "RT410A\r\nA12345\r\nfirst\r\n");
  CopyTestKitFile(source, kFolder);
  CopyTestKitFile(source, kFolder);
  EXPECT_TRUE(platform_.kept.empty());
  test::WriteNative(source, "RT410A\r\nB12345\r\nsecond\r\n");
  CopyTestKitFile(source, kFolder);
  EXPECT_EQ(platform_.kept, Texts{"RT410A\r\nA12345\r\nfirst\r\n"});
  EXPECT_EQ(tree_.Read(kFile), "RT410A\r\nB12345\r\nsecond\r\n");
}

}  // namespace
}  // namespace tarvell
