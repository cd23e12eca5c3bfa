// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "core/files/SaveFile.h"
#include "core/files/SaveFileSample.h"
#include "core/platform/ForwardingPlatform.h"
#include "support/ErrorOf.h"
#include "support/OrdinaryUser.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::kDataFile;
using test::kDataFolder;
using test::kNewBytes;
using test::kOldBytes;
using test::LockedFolder;
using test::OrdinaryUser;
using test::StatOf;
using test::TestTree;

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

// ---- What a save does.

TEST(SaveFile, WritesANewFileExactly) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  SaveFile(kDataFile, kNewBytes);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, WritesEveryByteAndAnyLength) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) {
    everyByte += static_cast<char>(byte);
  }
  std::string large;
  while (large.size() < 3000000) {
    large += everyByte;
  }
  for (const std::string& bytes : {everyByte, std::string(), std::string("x"), large}) {
    SaveFile(kDataFile, bytes);
    EXPECT_TRUE(tree.Read(kDataFile) == bytes) << bytes.size();
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
  }
}

TEST(SaveFile, ReplacesAFileWhetherLongerOrShorter) {
  const TestTree tree;
  for (const std::string_view old : {kOldBytes, std::string_view("x"), std::string_view()}) {
    tree.Write(kDataFile, old);
    SaveFile(kDataFile, kNewBytes);
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
  }
}

TEST(SaveFile, WhoReadsTheOldFileMeanwhileGetsItWhole) {
  const TestTree tree;
  tree.Write(kDataFile, kOldBytes);
  std::ifstream reading(tree.Native(kDataFile), std::ios::binary);
  ASSERT_TRUE(reading.good());
  SaveFile(kDataFile, kNewBytes);
  const std::string content{std::istreambuf_iterator<char>(reading),
                            std::istreambuf_iterator<char>()};
  EXPECT_EQ(content, kOldBytes);
}

TEST(SaveFile, LeavesOtherFilesOfTheFolderAlone) {
  const TestTree tree;
  tree.Write(R"(c:\calfactors\PX12A\SN2)", "other");
  SaveFile(kDataFile, kNewBytes);
  EXPECT_EQ(tree.Names(kDataFolder), (Names{"SN1", "SN2"}));
  EXPECT_EQ(tree.Read("c:\\calfactors\\PX12A\\SN2"), "other");
}

TEST(SaveFile, FindsAFileOfAnotherCase) {
  const TestTree tree;
  tree.Write(R"(c:\CalFactors\px12a\sn1)", kOldBytes);
  SaveFile(kDataFile, kNewBytes);
  EXPECT_EQ(tree.Read("c:\\CalFactors\\px12a\\sn1"), kNewBytes);
  EXPECT_EQ(tree.Names("c:\\CalFactors\\px12a"), Names{"sn1"});
  EXPECT_EQ(tree.Names("c:\\"), Names{"CalFactors"});
}

TEST(SaveFile, KeepsModeOwnerAndGroup) {
  const TestTree tree;
  tree.Write(kDataFile, kOldBytes);
  const fs::path native = tree.Native(kDataFile);
  // Whoever may give a file away sees that the new owner stays; others keep their own.
  if (::geteuid() == 0) {
    ASSERT_EQ(::chown(native.c_str(), 65534, 65534), 0);
  }
  for (const mode_t mode : {mode_t{0640}, mode_t{0606}, mode_t{0600}, mode_t{0777}}) {
    ASSERT_EQ(::chmod(native.c_str(), mode), 0);
    const struct stat before = StatOf(native);
    SaveFile(kDataFile, kNewBytes);
    const struct stat after = StatOf(native);
    EXPECT_EQ(after.st_mode & 07777, mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  }
}

TEST(SaveFile, ANewFileHasTheModeOfAnyNewFile) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  const mode_t before = ::umask(027);
  SaveFile(kDataFile, kNewBytes);
  (void)::umask(before);
  EXPECT_EQ(StatOf(tree.Native(kDataFile)).st_mode & 07777, mode_t{0640});
}

// Operators of one group share the tree, whatever each one's own mask says.
TEST(SaveFile, ANewFileIsOpenToTheGroupThatSharesItsFolder) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  ASSERT_EQ(::chmod(tree.Native(kDataFolder).c_str(), 02770), 0);
  const mode_t before = ::umask(077);
  SaveFile(kDataFile, kNewBytes);
  (void)::umask(before);
  EXPECT_EQ(StatOf(tree.Native(kDataFile)).st_mode & 07777, mode_t{0660});
}

TEST(SaveFile, AReadOnlyFileIsReplacedAndStaysReadOnly) {
  const TestTree tree;
  tree.Write(kDataFile, kOldBytes);
  const fs::path native = tree.Native(kDataFile);
  ASSERT_EQ(::chmod(native.c_str(), 0444), 0);
  const OrdinaryUser user(tree.Root());
  SaveFile(kDataFile, kNewBytes);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  EXPECT_EQ(StatOf(native).st_mode & 07777, mode_t{0444});
}

/// Makes the file another user's, of the test's own group; who is not root owns it as before.
void GiveAway(const fs::path& file) {
  const uid_t user = ::geteuid();
  if (::getuid() == 0) {
    EXPECT_EQ(::seteuid(0), 0);
    EXPECT_EQ(::chown(file.c_str(), 1234, ::getegid()), 0);
    EXPECT_EQ(::seteuid(user), 0);
  }
}

TEST(SaveFile, AnotherOperatorsFileIsReplacedInOneStepAndKeepsItsGroupAndMode) {
  const TestTree tree;
  tree.Write(kDataFile, kOldBytes);
  const fs::path native = tree.Native(kDataFile);
  ASSERT_EQ(::chmod(native.c_str(), 0664), 0);
  const OrdinaryUser user(tree.Root());
  GiveAway(native);
  const struct stat before = StatOf(native);
  SaveFile(kDataFile, kNewBytes);
  const struct stat after = StatOf(native);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  EXPECT_NE(after.st_ino, before.st_ino);
  EXPECT_EQ(after.st_mode & 07777, mode_t{0664});
  EXPECT_EQ(after.st_gid, before.st_gid);
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, AnotherOperatorsFileThatMayNotBeWrittenIsRefused) {
  const TestTree tree;
  tree.Write(kDataFile, kOldBytes);
  const fs::path native = tree.Native(kDataFile);
  ASSERT_EQ(::chmod(native.c_str(), 0644), 0);
  const OrdinaryUser user(tree.Root());
  GiveAway(native);
  if (StatOf(native).st_uid == ::geteuid()) {
    SaveFile(kDataFile, kNewBytes);  // nobody could give it away: it is the test's own
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
    return;
  }
  EXPECT_TRUE(Contains(ErrorOf([] { SaveFile(kDataFile, kNewBytes); }).Text(),
                       "Cannot save the file: you have no permission to do so."));
  EXPECT_EQ(tree.Read(kDataFile), kOldBytes);
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, ExactlyTheFileOfANativePathIsWrittenWhateverDiffersFromItInCase) {
  const TestTree tree;
  tree.Write("c:\\folder\\px12a", kOldBytes);
  const fs::path native = tree.Native("c:\\folder") / "PX12A";
  EXPECT_EQ(SaveNativeFile(native, kNewBytes), std::error_code());
  EXPECT_EQ(tree.Read("c:\\folder\\px12a"), kOldBytes);
  EXPECT_EQ(test::ReadNative(native), kNewBytes);
}

// ---- Links.

TEST(SaveFile, FollowsALinkWhichStaysOne) {
  const TestTree tree;
  tree.Write("c:\\real\\file", kOldBytes);
  tree.MakeFolders(kDataFolder);
  const fs::path link = tree.Native(kDataFile);
  for (const fs::path& target : {fs::path("../../real/file"), tree.Native("c:\\real\\file")}) {
    SCOPED_TRACE(target);
    fs::remove(link);
    fs::create_symlink(target, link);
    tree.Write("c:\\real\\file", kOldBytes);
    SaveFile(kDataFile, kNewBytes);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fs::read_symlink(link), target);
    EXPECT_FALSE(fs::is_symlink(tree.Native("c:\\real\\file")));
    EXPECT_EQ(tree.Read("c:\\real\\file"), kNewBytes);
    EXPECT_EQ(tree.Names("c:\\real"), Names{"file"});
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
  }
}

TEST(SaveFile, FollowsALinkToALink) {
  const TestTree tree;
  tree.Write("c:\\real\\file", kOldBytes);
  tree.MakeFolders("c:\\between");
  tree.MakeFolders(kDataFolder);
  fs::create_symlink("../real/file", tree.Native("c:\\between\\second"));
  fs::create_symlink("../../between/second", tree.Native(kDataFile));
  SaveFile(kDataFile, kNewBytes);
  EXPECT_TRUE(fs::is_symlink(tree.Native(kDataFile)));
  EXPECT_TRUE(fs::is_symlink(tree.Native("c:\\between\\second")));
  EXPECT_EQ(tree.Read("c:\\real\\file"), kNewBytes);
  EXPECT_EQ(tree.Names("c:\\between"), Names{"second"});
}

TEST(SaveFile, MakesTheFileThatALinkLeadsTo) {
  const TestTree tree;
  tree.MakeFolders("c:\\real");
  tree.MakeFolders(kDataFolder);
  fs::create_symlink("../../real/file", tree.Native(kDataFile));
  SaveFile(kDataFile, kNewBytes);
  EXPECT_TRUE(fs::is_symlink(tree.Native(kDataFile)));
  EXPECT_EQ(tree.Read("c:\\real\\file"), kNewBytes);
  EXPECT_EQ(tree.Names("c:\\real"), Names{"file"});
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, ALinkThatLeadsIntoNoFolderIsAnError) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  fs::create_symlink("../../missing/file", tree.Native(kDataFile));
  const Error error = ErrorOf([] { SaveFile(kDataFile, kNewBytes); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_TRUE(fs::is_symlink(tree.Native(kDataFile)));
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, ALinkToItselfIsAnError) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  fs::create_symlink("SN1", tree.Native(kDataFile));
  EXPECT_EQ(ErrorOf([] { SaveFile(kDataFile, kNewBytes); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_TRUE(fs::is_symlink(tree.Native(kDataFile)));
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, OneOfSeveralHardLinksStaysOne) {
  const TestTree tree;
  for (const std::string& old :
       {std::string(kOldBytes), std::string("x"), std::string(100000, 'y')}) {
    tree.Write(kDataFile, old);
    fs::remove(tree.Native("c:\\other"));
    fs::create_hard_link(tree.Native(kDataFile), tree.Native("c:\\other"));
    SaveFile(kDataFile, kNewBytes);
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
    EXPECT_EQ(tree.Read("c:\\other"), kNewBytes);
    EXPECT_TRUE(fs::equivalent(tree.Native(kDataFile), tree.Native("c:\\other")));
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
  }
}

// ---- Targets that are no ordinary file, folders that take none.

TEST(SaveFile, AFullDeviceBehindALinkIsAnError) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  fs::create_symlink("/dev/full", tree.Native(kDataFile));
  const Error error = ErrorOf([] { SaveFile(kDataFile, kNewBytes); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), kDataFile);
  EXPECT_TRUE(fs::is_symlink(tree.Native(kDataFile)));
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, ADeviceThatTakesEverythingIsWrittenInPlace) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  fs::create_symlink("/dev/null", tree.Native(kDataFile));
  EXPECT_NO_THROW(SaveFile(kDataFile, kNewBytes));
  EXPECT_TRUE(fs::is_symlink(tree.Native(kDataFile)));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, APipeThatNobodyReadsIsAnErrorAndIsNotWaitedFor) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  ASSERT_EQ(::mkfifo(tree.Native(kDataFile).c_str(), 0600), 0);
  EXPECT_EQ(ErrorOf([] { SaveFile(kDataFile, kNewBytes); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_TRUE(fs::is_fifo(tree.Native(kDataFile)));
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, AFolderInItsPlaceIsAnError) {
  const TestTree tree;
  tree.Write(std::string(kDataFile) + "\\inside", "x");
  const Error error = ErrorOf([] { SaveFile(kDataFile, kNewBytes); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), kDataFile);
  EXPECT_EQ(tree.Read(std::string(kDataFile) + "\\inside"), "x");
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, AMissingFolderIsAnErrorAndIsNotMade) {
  const TestTree tree;
  tree.MakeFolders("c:\\calfactors");
  const Error error = ErrorOf([] { SaveFile(kDataFile, kNewBytes); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), kDataFile);
  EXPECT_EQ(tree.Names("c:\\calfactors"), Names{});
}

TEST(SaveFile, AFileWhereTheFolderShouldBeIsAnError) {
  const TestTree tree;
  tree.Write(kDataFolder, "x");
  EXPECT_EQ(ErrorOf([] { SaveFile(kDataFile, kNewBytes); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Read(kDataFolder), "x");
}

TEST(SaveFile, InAFolderThatTakesNoNewFileTheOldOneIsWrittenInPlace) {
  const TestTree tree;
  tree.Write(kDataFile, kOldBytes);
  const ino_t before = StatOf(tree.Native(kDataFile)).st_ino;
  const OrdinaryUser user(tree.Root());
  const LockedFolder locked(tree.Native(kDataFolder));
  SaveFile(kDataFile, kNewBytes);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  EXPECT_EQ(StatOf(tree.Native(kDataFile)).st_ino, before);
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, InAFolderThatTakesNoNewFileANewOneIsAnError) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  const OrdinaryUser user(tree.Root());
  const LockedFolder locked(tree.Native(kDataFolder));
  EXPECT_EQ(ErrorOf([] { SaveFile(kDataFile, kNewBytes); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Names(kDataFolder), Names{});
}

TEST(SaveFile, AReadOnlyFileInAFolderThatTakesNoNewFileIsAnError) {
  const TestTree tree;
  tree.Write(kDataFile, kOldBytes);
  ASSERT_EQ(::chmod(tree.Native(kDataFile).c_str(), 0444), 0);
  const OrdinaryUser user(tree.Root());
  const LockedFolder locked(tree.Native(kDataFolder));
  EXPECT_EQ(ErrorOf([] { SaveFile(kDataFile, kNewBytes); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Read(kDataFile), kOldBytes);
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, TheTemporaryIsFoundByNoSearch) {
  const TestTree tree;
  tree.Write(R"(c:\calfactors\PX12A\SN1)", kOldBytes);
  ForwardingPlatform platform;
  fs::path path;
  std::unique_ptr<OutputFile> file;
  ASSERT_FALSE(platform.CreateTemporary(tree.Native(kDataFolder).string(), path, file));
  EXPECT_EQ(tree.Names(kDataFolder).size(), 2U);
  EXPECT_EQ(path.parent_path(), tree.Native(kDataFolder));
  for (const SearchKind kind :
       {SearchKind::NamesWithoutDot, SearchKind::EveryName, SearchKind::OrdinaryFiles}) {
    Names found;
    ASSERT_FALSE(platform.Search(tree.Native(kDataFolder).string(), kind,
                                 [&](const std::string& name, EntryKind) {
                                   found.push_back(name);
                                   return true;
                                 }));
    EXPECT_EQ(found, Names{"SN1"});
  }
}

}  // namespace
}  // namespace tarvell
