// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <vector>

#include "core/files/SaveFile.h"
#include "core/files/SaveFileSample.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::ErrorOf;
using test::FaultPlatform;
using test::kDataFile;
using test::kDataFolder;
using test::kNewBytes;
using test::kOldBytes;
using test::StatOf;
using test::TestTree;
using Step = test::FaultPlatform::Step;

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

// ---- Steps that fail.

class SaveFileFaults : public testing::Test {
 public:
  // A failed save that leaves `content` ("" and no file when `content` is null) and nothing else.
  void ExpectFailure(const std::string_view* content) const {
    const Error error = ErrorOf([] { SaveFile(kDataFile, kNewBytes); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed) << error.what();
    EXPECT_EQ(error.Path(), kDataFile);
    EXPECT_GT(platform.faults, 0) << "the step was never taken";
    if (content == nullptr) {
      EXPECT_EQ(tree.Names(kDataFolder), Names{});
    } else {
      EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
      EXPECT_EQ(tree.Read(kDataFile), *content);
    }
  }

  // A save that fails once in `step`, and then overwrites the file instead of replacing it.
  void ExpectWrittenInPlace(Step step, std::errc fault) {
    tree.Write(kDataFile, kOldBytes);
    const ino_t before = StatOf(tree.Native(kDataFile)).st_ino;
    platform.Set(step, fault);
    SaveFile(kDataFile, kNewBytes);
    EXPECT_EQ(platform.faults, 1);
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
    EXPECT_EQ(StatOf(tree.Native(kDataFile)).st_ino, before);
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
  }

  TestTree tree;
  FaultPlatform platform;
};

TEST_F(SaveFileFaults, WritesOfOneByteAtATimeSucceed) {
  platform.portion = 1;
  tree.Write(kDataFile, kOldBytes);
  SaveFile(kDataFile, kNewBytes);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  fs::create_hard_link(tree.Native(kDataFile), tree.Native("c:\\other"));
  SaveFile(kDataFile, kOldBytes);
  EXPECT_EQ(tree.Read(kDataFile), kOldBytes);
  EXPECT_EQ(tree.Read("c:\\other"), kOldBytes);
  EXPECT_EQ(platform.opened, 1);
}

TEST_F(SaveFileFaults, AFailedStepLeavesTheOldFileOrNone) {
  const auto expectFailures = [this](Step step, std::errc fault) {
    for (const bool always : {false, true}) {
      SCOPED_TRACE(testing::Message()
                   << step << " at " << platform.failAtByte << ", always " << always);
      platform.always = always;
      tree.Write(kDataFile, kOldBytes);
      platform.Set(step, fault);
      ExpectFailure(&kOldBytes);
      EXPECT_EQ(platform.opened, 0) << "never in place after a failed write";
      EXPECT_LT(platform.faults, 1000) << "tried again without end";
      fs::remove(tree.Native(kDataFile));
      if (step != Step::Attributes) {  // a new file takes none
        platform.Set(step, fault);
        ExpectFailure(nullptr);
      }
    }
  };
  for (const Step step : {Step::Resolve, Step::Facts, Step::Create, Step::Length, Step::Attributes,
                          Step::Sync, Step::Close, Step::Replace}) {
    expectFailures(step, std::errc::io_error);
  }
  for (platform.failAtByte = 0; platform.failAtByte < kNewBytes.size(); ++platform.failAtByte) {
    expectFailures(Step::Write, std::errc::no_space_on_device);
    expectFailures(Step::Nothing, std::errc::no_space_on_device);
  }
}

TEST_F(SaveFileFaults, OverwritesInPlaceWhatTheFolderDoesNotLetReplace) {
  for (const std::errc fault : {std::errc::permission_denied, std::errc::read_only_file_system,
                                std::errc::operation_not_permitted}) {
    ExpectWrittenInPlace(Step::Create, fault);
  }
  // A group that cannot be kept, and a folder in which users may replace only their own files.
  ExpectWrittenInPlace(Step::Attributes, std::errc::operation_not_permitted);
  ExpectWrittenInPlace(Step::Replace, std::errc::operation_not_permitted);
}

TEST_F(SaveFileFaults, TheNewFileIsThereWhenOnlyTheSyncOfItsFolderFails) {
  tree.Write(kDataFile, kOldBytes);
  platform.Set(Step::SyncFolder);
  ExpectFailure(&kNewBytes);
}

// ---- The same in place, for a file with two names.

class SaveFileInPlaceFaults : public SaveFileFaults {
 public:
  SaveFileInPlaceFaults() {
    tree.Write(kDataFile, kOldBytes);
    fs::create_hard_link(tree.Native(kDataFile), tree.Native("c:\\other"));
  }

  void ExpectRestored(Step step, std::errc fault, std::string_view old) {
    SCOPED_TRACE(testing::Message() << step << " at " << platform.failAtByte << ' ' << old);
    tree.Write(kDataFile, old);
    platform.Set(step, fault);
    ExpectFailure(&old);
    EXPECT_EQ(tree.Read("c:\\other"), old);
    EXPECT_TRUE(fs::equivalent(tree.Native(kDataFile), tree.Native("c:\\other")));
  }
};

TEST_F(SaveFileInPlaceFaults, AFailedStepRestoresTheOldContent) {
  const std::string longer(200, 'o');
  for (const std::string_view old : {kOldBytes, std::string_view(longer), std::string_view("o")}) {
    for (platform.failAtByte = 0; platform.failAtByte < kNewBytes.size(); ++platform.failAtByte) {
      ExpectRestored(Step::Write, std::errc::no_space_on_device, old);
    }
    for (const Step step :
         {Step::Open, Step::Nothing, Step::Cut, Step::Length, Step::Sync, Step::Close}) {
      ExpectRestored(step, std::errc::io_error, old);
    }
  }
}

TEST_F(SaveFileInPlaceFaults, ADiskThatTakesNotAByteMoreLosesNothing) {
  platform.always = true;
  for (const Step step : {Step::Open, Step::Write, Step::Nothing}) {
    ExpectRestored(step, std::errc::no_space_on_device, kOldBytes);
    EXPECT_LT(platform.faults, 10) << "tried again without end";
  }
}

TEST_F(SaveFileInPlaceFaults, AContentThatCannotBePutBackIsReported) {
  platform.always = true;
  platform.failAtByte = 4;
  for (const Step step :
       {Step::Write, Step::Nothing, Step::Cut, Step::Length, Step::Sync, Step::Close}) {
    SCOPED_TRACE(step);
    tree.Write(kDataFile, kOldBytes);
    platform.Set(step);
    const Error error = ErrorOf([] { SaveFile(kDataFile, kNewBytes); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
    EXPECT_EQ(error.Path(), kDataFile);
    EXPECT_EQ(error.Text(),
              "Saving failed (Input/output error), and the earlier content could not be put back. "
              "Keep this screen open, see to the disk and save again.");
    EXPECT_EQ(platform.opened, 2) << "to save, and to put back";
    EXPECT_EQ(platform.faults, 2);
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
    // Saving again, as the message says, succeeds once the disk works.
    platform.Set(Step::None);
    SaveFile(kDataFile, kNewBytes);
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
    EXPECT_EQ(tree.Read("c:\\other"), kNewBytes);
  }
}

}  // namespace
}  // namespace tarvell
