// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <sched.h>
#include <string>
#include <string_view>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

#include "common/LinuxPlatform.h"
#include "common/SaveFile.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"
#include "support/TestTree.h"
#include "support/TinyDisk.h"

namespace tarvell {
namespace {

using test::ErrorOf;
using test::FaultPlatform;
using test::FileSizeLimit;
using test::LockedFolder;
using test::OrdinaryUser;
using test::TestTree;
using Step = test::FaultPlatform::Step;

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

constexpr const char* kFolder = "c:\\calfactors\\PX12A";
constexpr const char* kFile = R"(c:\calfactors\PX12A\SN1)";
constexpr std::string_view kOld = "old content, of another length\r\n";
constexpr std::string_view kNew = "#MODEL_NO : PX12A\r\n!End\r\n";

struct stat StatOf(const fs::path& path) {
  struct stat facts = {};
  EXPECT_EQ(::stat(path.c_str(), &facts), 0) << path << ": " << std::strerror(errno);
  return facts;
}

// ---- What a save does.

TEST(SaveFile, WritesANewFileExactly) {
  const TestTree tree;
  tree.MakeFolders(kFolder);
  SaveFile(kFile, kNew);
  EXPECT_EQ(tree.Read(kFile), kNew);
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST(SaveFile, WritesEveryByteAndAnyLength) {
  const TestTree tree;
  tree.MakeFolders(kFolder);
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) {
    everyByte += static_cast<char>(byte);
  }
  std::string large;
  while (large.size() < 3000000) {
    large += everyByte;
  }
  for (const std::string& bytes : {everyByte, std::string(), std::string("x"), large}) {
    SaveFile(kFile, bytes);
    EXPECT_TRUE(tree.Read(kFile) == bytes) << bytes.size();
    EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
  }
}

TEST(SaveFile, ReplacesAFileWhetherLongerOrShorter) {
  const TestTree tree;
  for (const std::string_view old : {kOld, std::string_view("x"), std::string_view()}) {
    tree.Write(kFile, old);
    SaveFile(kFile, kNew);
    EXPECT_EQ(tree.Read(kFile), kNew);
    EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
  }
}

TEST(SaveFile, WhoReadsTheOldFileMeanwhileGetsItWhole) {
  const TestTree tree;
  tree.Write(kFile, kOld);
  std::ifstream reading(tree.Native(kFile), std::ios::binary);
  ASSERT_TRUE(reading.good());
  SaveFile(kFile, kNew);
  const std::string content{std::istreambuf_iterator<char>(reading),
                            std::istreambuf_iterator<char>()};
  EXPECT_EQ(content, kOld);
}

TEST(SaveFile, LeavesOtherFilesOfTheFolderAlone) {
  const TestTree tree;
  tree.Write(R"(c:\calfactors\PX12A\SN2)", "other");
  SaveFile(kFile, kNew);
  EXPECT_EQ(tree.Names(kFolder), (Names{"SN1", "SN2"}));
  EXPECT_EQ(tree.Read("c:\\calfactors\\PX12A\\SN2"), "other");
}

TEST(SaveFile, FindsAFileOfAnotherCase) {
  const TestTree tree;
  tree.Write(R"(c:\CalFactors\px12a\sn1)", kOld);
  SaveFile(kFile, kNew);
  EXPECT_EQ(tree.Read("c:\\CalFactors\\px12a\\sn1"), kNew);
  EXPECT_EQ(tree.Names("c:\\CalFactors\\px12a"), Names{"sn1"});
  EXPECT_EQ(tree.Names("c:\\"), Names{"CalFactors"});
}

TEST(SaveFile, KeepsModeOwnerAndGroup) {
  const TestTree tree;
  tree.Write(kFile, kOld);
  const fs::path native = tree.Native(kFile);
  // Whoever may give a file away sees that the new owner stays; others keep their own.
  if (::geteuid() == 0) {
    ASSERT_EQ(::chown(native.c_str(), 65534, 65534), 0);
  }
  for (const mode_t mode : {mode_t{0640}, mode_t{0606}, mode_t{0600}, mode_t{0777}}) {
    ASSERT_EQ(::chmod(native.c_str(), mode), 0);
    const struct stat before = StatOf(native);
    SaveFile(kFile, kNew);
    const struct stat after = StatOf(native);
    EXPECT_EQ(after.st_mode & 07777, mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(tree.Read(kFile), kNew);
  }
}

TEST(SaveFile, ANewFileHasTheModeOfAnyNewFile) {
  const TestTree tree;
  tree.MakeFolders(kFolder);
  const mode_t before = ::umask(027);
  SaveFile(kFile, kNew);
  (void)::umask(before);
  EXPECT_EQ(StatOf(tree.Native(kFile)).st_mode & 07777, mode_t{0640});
}

// Operators of one group share the tree, whatever each one's own mask says.
TEST(SaveFile, ANewFileIsOpenToTheGroupThatSharesItsFolder) {
  const TestTree tree;
  tree.MakeFolders(kFolder);
  ASSERT_EQ(::chmod(tree.Native(kFolder).c_str(), 02770), 0);
  const mode_t before = ::umask(077);
  SaveFile(kFile, kNew);
  (void)::umask(before);
  EXPECT_EQ(StatOf(tree.Native(kFile)).st_mode & 07777, mode_t{0660});
}

TEST(SaveFile, AReadOnlyFileIsReplacedAndStaysReadOnly) {
  const TestTree tree;
  tree.Write(kFile, kOld);
  const fs::path native = tree.Native(kFile);
  ASSERT_EQ(::chmod(native.c_str(), 0444), 0);
  const OrdinaryUser user(tree.Root());
  SaveFile(kFile, kNew);
  EXPECT_EQ(tree.Read(kFile), kNew);
  EXPECT_EQ(StatOf(native).st_mode & 07777, mode_t{0444});
}

// ---- Links.

TEST(SaveFile, FollowsALinkWhichStaysOne) {
  const TestTree tree;
  tree.Write("c:\\real\\file", kOld);
  tree.MakeFolders(kFolder);
  const fs::path link = tree.Native(kFile);
  for (const fs::path& target : {fs::path("../../real/file"), tree.Native("c:\\real\\file")}) {
    SCOPED_TRACE(target);
    fs::remove(link);
    fs::create_symlink(target, link);
    tree.Write("c:\\real\\file", kOld);
    SaveFile(kFile, kNew);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fs::read_symlink(link), target);
    EXPECT_FALSE(fs::is_symlink(tree.Native("c:\\real\\file")));
    EXPECT_EQ(tree.Read("c:\\real\\file"), kNew);
    EXPECT_EQ(tree.Names("c:\\real"), Names{"file"});
    EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
  }
}

TEST(SaveFile, FollowsALinkToALink) {
  const TestTree tree;
  tree.Write("c:\\real\\file", kOld);
  tree.MakeFolders("c:\\between");
  tree.MakeFolders(kFolder);
  fs::create_symlink("../real/file", tree.Native("c:\\between\\second"));
  fs::create_symlink("../../between/second", tree.Native(kFile));
  SaveFile(kFile, kNew);
  EXPECT_TRUE(fs::is_symlink(tree.Native(kFile)));
  EXPECT_TRUE(fs::is_symlink(tree.Native("c:\\between\\second")));
  EXPECT_EQ(tree.Read("c:\\real\\file"), kNew);
  EXPECT_EQ(tree.Names("c:\\between"), Names{"second"});
}

TEST(SaveFile, MakesTheFileThatALinkLeadsTo) {
  const TestTree tree;
  tree.MakeFolders("c:\\real");
  tree.MakeFolders(kFolder);
  fs::create_symlink("../../real/file", tree.Native(kFile));
  SaveFile(kFile, kNew);
  EXPECT_TRUE(fs::is_symlink(tree.Native(kFile)));
  EXPECT_EQ(tree.Read("c:\\real\\file"), kNew);
  EXPECT_EQ(tree.Names("c:\\real"), Names{"file"});
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST(SaveFile, ALinkThatLeadsIntoNoFolderIsAnError) {
  const TestTree tree;
  tree.MakeFolders(kFolder);
  fs::create_symlink("../../missing/file", tree.Native(kFile));
  const Error error = ErrorOf([] { SaveFile(kFile, kNew); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_TRUE(fs::is_symlink(tree.Native(kFile)));
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST(SaveFile, ALinkToItselfIsAnError) {
  const TestTree tree;
  tree.MakeFolders(kFolder);
  fs::create_symlink("SN1", tree.Native(kFile));
  EXPECT_EQ(ErrorOf([] { SaveFile(kFile, kNew); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_TRUE(fs::is_symlink(tree.Native(kFile)));
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST(SaveFile, OneOfSeveralHardLinksStaysOne) {
  const TestTree tree;
  for (const std::string& old : {std::string(kOld), std::string("x"), std::string(100000, 'y')}) {
    tree.Write(kFile, old);
    fs::remove(tree.Native("c:\\other"));
    fs::create_hard_link(tree.Native(kFile), tree.Native("c:\\other"));
    SaveFile(kFile, kNew);
    EXPECT_EQ(tree.Read(kFile), kNew);
    EXPECT_EQ(tree.Read("c:\\other"), kNew);
    EXPECT_TRUE(fs::equivalent(tree.Native(kFile), tree.Native("c:\\other")));
    EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
  }
}

// ---- Targets that are no ordinary file, folders that take none.

TEST(SaveFile, AFullDeviceBehindALinkIsAnError) {
  const TestTree tree;
  tree.MakeFolders(kFolder);
  fs::create_symlink("/dev/full", tree.Native(kFile));
  const Error error = ErrorOf([] { SaveFile(kFile, kNew); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_TRUE(fs::is_symlink(tree.Native(kFile)));
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST(SaveFile, ADeviceThatTakesEverythingIsWrittenInPlace) {
  const TestTree tree;
  tree.MakeFolders(kFolder);
  fs::create_symlink("/dev/null", tree.Native(kFile));
  EXPECT_NO_THROW(SaveFile(kFile, kNew));
  EXPECT_TRUE(fs::is_symlink(tree.Native(kFile)));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST(SaveFile, APipeThatNobodyReadsIsAnErrorAndIsNotWaitedFor) {
  const TestTree tree;
  tree.MakeFolders(kFolder);
  ASSERT_EQ(::mkfifo(tree.Native(kFile).c_str(), 0600), 0);
  EXPECT_EQ(ErrorOf([] { SaveFile(kFile, kNew); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_TRUE(fs::is_fifo(tree.Native(kFile)));
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST(SaveFile, AFolderInItsPlaceIsAnError) {
  const TestTree tree;
  tree.Write(std::string(kFile) + "\\inside", "x");
  const Error error = ErrorOf([] { SaveFile(kFile, kNew); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(tree.Read(std::string(kFile) + "\\inside"), "x");
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST(SaveFile, AMissingFolderIsAnErrorAndIsNotMade) {
  const TestTree tree;
  tree.MakeFolders("c:\\calfactors");
  const Error error = ErrorOf([] { SaveFile(kFile, kNew); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(tree.Names("c:\\calfactors"), Names{});
}

TEST(SaveFile, AFileWhereTheFolderShouldBeIsAnError) {
  const TestTree tree;
  tree.Write(kFolder, "x");
  EXPECT_EQ(ErrorOf([] { SaveFile(kFile, kNew); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Read(kFolder), "x");
}

TEST(SaveFile, InAFolderThatTakesNoNewFileTheOldOneIsWrittenInPlace) {
  const TestTree tree;
  tree.Write(kFile, kOld);
  const ino_t before = StatOf(tree.Native(kFile)).st_ino;
  const OrdinaryUser user(tree.Root());
  const LockedFolder locked(tree.Native(kFolder));
  SaveFile(kFile, kNew);
  EXPECT_EQ(tree.Read(kFile), kNew);
  EXPECT_EQ(StatOf(tree.Native(kFile)).st_ino, before);
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST(SaveFile, InAFolderThatTakesNoNewFileANewOneIsAnError) {
  const TestTree tree;
  tree.MakeFolders(kFolder);
  const OrdinaryUser user(tree.Root());
  const LockedFolder locked(tree.Native(kFolder));
  EXPECT_EQ(ErrorOf([] { SaveFile(kFile, kNew); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Names(kFolder), Names{});
}

TEST(SaveFile, AReadOnlyFileInAFolderThatTakesNoNewFileIsAnError) {
  const TestTree tree;
  tree.Write(kFile, kOld);
  ASSERT_EQ(::chmod(tree.Native(kFile).c_str(), 0444), 0);
  const OrdinaryUser user(tree.Root());
  const LockedFolder locked(tree.Native(kFolder));
  EXPECT_EQ(ErrorOf([] { SaveFile(kFile, kNew); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Read(kFile), kOld);
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST(SaveFile, TheTemporaryIsFoundByNoSearch) {
  const TestTree tree;
  tree.Write(R"(c:\calfactors\PX12A\SN1)", kOld);
  LinuxPlatform platform;
  std::string path;
  std::unique_ptr<OutputFile> file;
  ASSERT_FALSE(platform.CreateTemporary(tree.Native(kFolder).string(), path, file));
  EXPECT_EQ(tree.Names(kFolder).size(), 2U);
  EXPECT_EQ(fs::path(path).parent_path(), tree.Native(kFolder));
  for (const SearchKind kind :
       {SearchKind::NamesWithoutDot, SearchKind::EveryName, SearchKind::OrdinaryFiles}) {
    Names found;
    ASSERT_FALSE(platform.Search(tree.Native(kFolder).string(), kind, [&](const std::string& name) {
      found.push_back(name);
      return true;
    }));
    EXPECT_EQ(found, Names{"SN1"});
  }
}

// ---- Steps that fail.

class SaveFileFaults : public testing::Test {
 public:
  void Set(Step step, std::errc fault = std::errc::io_error) { platform.Set(step, fault); }

  // A failed save that leaves `content` ("" and no file when `content` is null) and nothing else.
  void ExpectFailure(const std::string_view* content) const {
    const Error error = ErrorOf([] { SaveFile(kFile, kNew); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed) << error.what();
    EXPECT_EQ(error.Path(), kFile);
    EXPECT_GT(platform.faults, 0) << "the step was never taken";
    if (content == nullptr) {
      EXPECT_EQ(tree.Names(kFolder), Names{});
    } else {
      EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
      EXPECT_EQ(tree.Read(kFile), *content);
    }
  }

  TestTree tree;
  FaultPlatform platform;
};

TEST_F(SaveFileFaults, WithoutAFaultTheSaveSucceeds) {
  tree.Write(kFile, kOld);
  SaveFile(kFile, kNew);
  EXPECT_EQ(tree.Read(kFile), kNew);
  EXPECT_EQ(platform.opened, 0);
}

TEST_F(SaveFileFaults, WritesOfOneByteAtATimeSucceed) {
  platform.portion = 1;
  tree.Write(kFile, kOld);
  SaveFile(kFile, kNew);
  EXPECT_EQ(tree.Read(kFile), kNew);
  fs::create_hard_link(tree.Native(kFile), tree.Native("c:\\other"));
  SaveFile(kFile, kOld);
  EXPECT_EQ(tree.Read(kFile), kOld);
  EXPECT_EQ(tree.Read("c:\\other"), kOld);
  EXPECT_EQ(platform.opened, 1);
}

TEST_F(SaveFileFaults, AnyStepBeforeTheLastLeavesTheOldFileWhole) {
  for (const bool always : {false, true}) {
    platform.always = always;
    for (const Step step : {Step::Nothing, Step::Length, Step::Sync, Step::Close, Step::Replace}) {
      SCOPED_TRACE(testing::Message() << "step " << static_cast<int>(step) << always);
      tree.Write(kFile, kOld);
      Set(step);
      ExpectFailure(&kOld);
      EXPECT_EQ(platform.opened, 0) << "never in place after a failed write";
    }
  }
}

TEST_F(SaveFileFaults, AnyStepBeforeTheLastLeavesNoNewFile) {
  tree.MakeFolders(kFolder);
  for (const bool always : {false, true}) {
    platform.always = always;
    for (const Step step : {Step::Nothing, Step::Length, Step::Sync, Step::Close, Step::Replace}) {
      SCOPED_TRACE(testing::Message() << "step " << static_cast<int>(step) << always);
      Set(step);
      ExpectFailure(nullptr);
    }
  }
}

TEST_F(SaveFileFaults, AWriteMayFailAtAnyByte) {
  for (const bool always : {false, true}) {
    platform.always = always;
    for (std::size_t byte = 0; byte < kNew.size(); ++byte) {
      SCOPED_TRACE(byte);
      platform.failAtByte = byte;
      tree.Write(kFile, kOld);
      Set(Step::Write, std::errc::no_space_on_device);
      ExpectFailure(&kOld);
      EXPECT_EQ(platform.opened, 0) << "never in place after a failed write";
      fs::remove(tree.Native(kFile));
      Set(Step::Write, std::errc::no_space_on_device);
      ExpectFailure(nullptr);
    }
  }
}

TEST_F(SaveFileFaults, AWriteThatWritesNothingIsAFailureAtAnyByte) {
  platform.always = true;
  for (std::size_t byte = 0; byte < kNew.size(); ++byte) {
    SCOPED_TRACE(byte);
    platform.failAtByte = byte;
    tree.Write(kFile, kOld);
    Set(Step::Nothing);
    ExpectFailure(&kOld);
    EXPECT_LT(platform.faults, 1000) << "tried again without end";
  }
}

TEST_F(SaveFileFaults, ALengthThatIsTooLongIsWrongToo) {
  platform.wrongBy = static_cast<std::uintmax_t>(-1);
  tree.Write(kFile, kOld);
  Set(Step::Length);
  ExpectFailure(&kOld);
}

TEST_F(SaveFileFaults, WhereNoTemporaryCanBeMadeForWantOfSpaceNothingIsWritten) {
  for (const std::errc fault :
       {std::errc::no_space_on_device, std::errc::io_error, std::errc::too_many_files_open}) {
    tree.Write(kFile, kOld);
    Set(Step::Create, fault);
    ExpectFailure(&kOld);
    EXPECT_EQ(platform.opened, 0);
    fs::remove(tree.Native(kFile));
    Set(Step::Create, fault);
    ExpectFailure(nullptr);
  }
}

TEST_F(SaveFileFaults, WhereTheFolderTakesNoNewFileTheOldOneIsWrittenInPlace) {
  for (const std::errc fault : {std::errc::permission_denied, std::errc::read_only_file_system,
                                std::errc::operation_not_permitted}) {
    tree.Write(kFile, kOld);
    const ino_t before = StatOf(tree.Native(kFile)).st_ino;
    Set(Step::Create, fault);
    SaveFile(kFile, kNew);
    EXPECT_EQ(tree.Read(kFile), kNew);
    EXPECT_EQ(StatOf(tree.Native(kFile)).st_ino, before);
    EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
  }
}

TEST_F(SaveFileFaults, AnOwnerThatCannotBeKeptIsKeptByWritingInPlace) {
  tree.Write(kFile, kOld);
  const ino_t before = StatOf(tree.Native(kFile)).st_ino;
  Set(Step::Attributes, std::errc::operation_not_permitted);
  SaveFile(kFile, kNew);
  EXPECT_EQ(platform.faults, 1);
  EXPECT_EQ(tree.Read(kFile), kNew);
  EXPECT_EQ(StatOf(tree.Native(kFile)).st_ino, before);
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST_F(SaveFileFaults, AttributesThatFailOtherwiseLeaveTheOldFileWhole) {
  platform.always = true;
  tree.Write(kFile, kOld);
  Set(Step::Attributes, std::errc::io_error);
  ExpectFailure(&kOld);
}

TEST_F(SaveFileFaults, OnlyTheSyncOfTheFolderFailsBehindTheReplacement) {
  tree.Write(kFile, kOld);
  Set(Step::SyncFolder);
  ExpectFailure(&kNew);
  fs::remove(tree.Native(kFile));
  Set(Step::SyncFolder);
  ExpectFailure(&kNew);
}

// ---- The same in place, where the file has a second name.

class SaveFileInPlaceFaults : public SaveFileFaults {
 public:
  void Prepare(std::string_view old) {
    tree.Write(kFile, old);
    if (!tree.Exists("c:\\other")) {
      fs::create_hard_link(tree.Native(kFile), tree.Native("c:\\other"));
    }
  }
  void ExpectOld(std::string_view old) {
    ExpectFailure(&old);
    EXPECT_EQ(tree.Read("c:\\other"), old);
    EXPECT_TRUE(fs::equivalent(tree.Native(kFile), tree.Native("c:\\other")));
  }
};

TEST_F(SaveFileInPlaceFaults, AWriteThatFailsAtAnyByteRestoresTheOldContent) {
  const std::string longer(200, 'o');
  for (const std::string_view old :
       {kOld, std::string_view(longer), std::string_view("o"), std::string_view()}) {
    for (std::size_t byte = 0; byte < kNew.size(); ++byte) {
      SCOPED_TRACE(testing::Message() << old.size() << ' ' << byte);
      platform.failAtByte = byte;
      Prepare(old);
      Set(Step::Write, std::errc::no_space_on_device);
      ExpectOld(old);
    }
  }
}

TEST_F(SaveFileInPlaceFaults, AnyOtherStepRestoresTheOldContent) {
  const std::string longer(200, 'o');
  for (const std::string_view old : {kOld, std::string_view(longer), std::string_view("o")}) {
    for (const Step step :
         {Step::Open, Step::Nothing, Step::Cut, Step::Length, Step::Sync, Step::Close}) {
      SCOPED_TRACE(testing::Message() << old.size() << " step " << static_cast<int>(step));
      Prepare(old);
      Set(step);
      ExpectOld(old);
    }
  }
}

TEST_F(SaveFileInPlaceFaults, ADiskThatTakesNothingMoreIsToldAndNotTriedWithoutEnd) {
  platform.always = true;
  for (const Step step : {Step::Open, Step::Write, Step::Nothing}) {
    SCOPED_TRACE(static_cast<int>(step));
    Prepare(kOld);
    Set(step, std::errc::no_space_on_device);
    ExpectOld(kOld);  // not a byte was changed, so nothing is lost
    EXPECT_LT(platform.faults, 10);
  }
}

TEST_F(SaveFileInPlaceFaults, WhatCannotBePutBackEitherIsToldAtAnyByte) {
  platform.always = true;
  const std::string text =
      "Saving failed (No space left on device), and the earlier content could not be put back. "
      "Keep this screen open, see to the disk and save again.";
  for (std::size_t byte = 1; byte < kNew.size(); ++byte) {
    SCOPED_TRACE(byte);
    platform.failAtByte = byte;
    Prepare(kOld);
    Set(Step::Write, std::errc::no_space_on_device);
    const Error error = ErrorOf([] { SaveFile(kFile, kNew); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
    EXPECT_EQ(error.Path(), kFile);
    EXPECT_EQ(error.Text(), text);
    EXPECT_EQ(platform.opened, 2);  // to save, and to put back
    EXPECT_EQ(platform.faults, 2);
    // As much as the disk took was put back over what the save had written.
    EXPECT_EQ(tree.Read(kFile), kOld);
    EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
    // Saving again, as the message says, helps when the disk takes it.
    Set(Step::None);
    SaveFile(kFile, kNew);
    EXPECT_EQ(tree.Read(kFile), kNew);
    EXPECT_EQ(tree.Read("c:\\other"), kNew);
  }
}

TEST_F(SaveFileInPlaceFaults, AnyOtherStepThatFailsAgainWhilePuttingBackIsTold) {
  platform.always = true;
  for (const Step step : {Step::Nothing, Step::Cut, Step::Length, Step::Sync, Step::Close}) {
    SCOPED_TRACE(step);
    platform.failAtByte = 4;
    Prepare(kOld);
    Set(step);
    const Error error = ErrorOf([] { SaveFile(kFile, kNew); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
    EXPECT_EQ(error.Path(), kFile);
    EXPECT_EQ(error.Text(),
              "Saving failed (Input/output error), and the earlier content could not be put back. "
              "Keep this screen open, see to the disk and save again.");
    EXPECT_EQ(platform.opened, 2);
    EXPECT_EQ(platform.faults, 2);
    Set(Step::None);
    SaveFile(kFile, kNew);
    EXPECT_EQ(tree.Read(kFile), kNew);
  }
}

// ---- Limits and disks that are really full.

Error SavedUnderALimit(const std::string& bytes) {
  return ErrorOf([&] {
    const FileSizeLimit limit(1000);
    SaveFile(kFile, bytes);
  });
}

TEST(SaveFileLimits, AFileThatMayNotGrowSoFarIsAnErrorAndStaysAsItWas) {
  const TestTree tree;
  tree.Write(kFile, kOld);
  EXPECT_EQ(SavedUnderALimit(std::string(5000, 'n')).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Read(kFile), kOld);
  EXPECT_EQ(tree.Names(kFolder), Names{"SN1"});
}

TEST(SaveFileLimits, ANewFileThatMayNotGrowSoFarDoesNotComeToBe) {
  const TestTree tree;
  tree.MakeFolders(kFolder);
  EXPECT_EQ(SavedUnderALimit(std::string(5000, 'n')).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Names(kFolder), Names{});
}

TEST(SaveFileLimits, AFileInPlaceThatMayNotGrowSoFarGetsItsContentBack) {
  const TestTree tree;
  const std::string old(500, 'o');
  tree.Write(kFile, old);
  fs::create_hard_link(tree.Native(kFile), tree.Native("c:\\other"));
  EXPECT_EQ(SavedUnderALimit(std::string(5000, 'n')).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Read(kFile), old);
  EXPECT_EQ(tree.Read("c:\\other"), old);
}

TEST(SaveFileLimits, AFileJustWithinTheLimitIsSaved) {
  const TestTree tree;
  tree.Write(kFile, kOld);
  const std::string bytes(1000, 'n');
  {
    const FileSizeLimit limit(1000);
    SaveFile(kFile, bytes);
  }
  EXPECT_EQ(tree.Read(kFile), bytes);
}

// What the child process below finds wrong, line by line; it cannot use the test's own checks.
class Findings {
 public:
  void Check(bool holds, const std::string& what) {
    if (!holds) {
      text_ += what + '\n';
    }
  }
  [[nodiscard]] const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

void ExpectRefusal(Findings& findings, const TestTree& tree, const std::string& what,
                   const std::string& path, const std::string& bytes, const std::string& old,
                   const Names& names) {
  bool refused = false;
  try {
    SaveFile(path, bytes);
  } catch (const Error& error) {
    refused = error.Kind() == ErrorKind::WriteFailed;
  }
  findings.Check(refused, what + ": no error of a failed write");
  findings.Check(tree.Names("c:\\full") == names, what + ": another set of files");
  const bool there = tree.Exists(path);
  findings.Check(old.empty() ? !there : there && tree.Read(path) == old,
                 what + ": the file is not as it was");
}

std::string OnAFullFileSystem(const TestTree& tree) {
  const std::string trouble = test::MountTinyDisk(tree.Native("c:\\full"));
  if (!trouble.empty()) {
    return "this check needs a file system that can be filled, and " + trouble;
  }
  Findings findings;
  const std::string old(100, 'o');
  tree.Write("c:\\full\\SN1", old);
  tree.Write("c:\\full\\SN2", old);
  fs::create_hard_link(tree.Native("c:\\full\\SN2"), tree.Native("c:\\full\\SN3"));
  const fs::path filler = tree.Native("c:\\full\\filler");
  const Names names = {"SN1", "SN2", "SN3", "filler"};
  findings.Check(test::FillDisk(filler), "the file system could not be filled");

  const std::string small = "ten bytes.";
  const std::string large(40000, 'n');
  ExpectRefusal(findings, tree, "small, replacing", "c:\\full\\SN1", small, old, names);
  ExpectRefusal(findings, tree, "large, replacing", "c:\\full\\SN1", large, old, names);
  ExpectRefusal(findings, tree, "small, new", "c:\\full\\SN9", small, "", names);
  ExpectRefusal(findings, tree, "large, new", "c:\\full\\SN9", large, "", names);
  ExpectRefusal(findings, tree, "large, in place", "c:\\full\\SN2", large, old, names);

  // Room for the beginning of a file only.
  fs::resize_file(filler, fs::file_size(filler) - 8192);
  ExpectRefusal(findings, tree, "large, replacing, some room", "c:\\full\\SN1", large, old, names);
  ExpectRefusal(findings, tree, "large, new, some room", "c:\\full\\SN9", large, "", names);
  ExpectRefusal(findings, tree, "large, in place, some room", "c:\\full\\SN2", large, old, names);

  fs::remove(filler);
  SaveFile("c:\\full\\SN1", large);
  findings.Check(tree.Read("c:\\full\\SN1") == large, "with room again: another content");
  return findings.Text();
}

TEST(SaveFileLimits, AFullFileSystemIsAnErrorAndEveryFileStaysAsItWas) {
  const TestTree tree;
  tree.MakeFolders("c:\\full");
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    std::string text;
    try {
      text = OnAFullFileSystem(tree);
    } catch (const std::exception& error) {
      text = error.what();
    }
    text += '!';
    ::_exit(::write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size()) ? 0
                                                                                            : 1);
  }
  ::close(ends[1]);
  std::string told;
  std::array<char, 512> buffer{};
  for (ssize_t count = 0; (count = ::read(ends[0], buffer.data(), buffer.size())) > 0;) {
    told.append(buffer.data(), static_cast<std::size_t>(count));
  }
  ::close(ends[0]);
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  EXPECT_EQ(told, "!");  // nothing found wrong, and the child came to its end
}

}  // namespace
}  // namespace tarvell
