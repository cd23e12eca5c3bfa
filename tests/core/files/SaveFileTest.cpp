// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <vector>

#include "core/files/SaveFile.h"
#include "core/files/SaveFileSample.h"
#include "core/platform/Platform.h"
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

TEST(SaveFile, WritesExactlyTheseBytesOverAnyEarlierOnes) {
  const TestTree tree;
  tree.Write(R"(c:\calfactors\PX12A\SN2)", "other");
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) {
    everyByte += static_cast<char>(byte);
  }
  const std::string large(300000, 'y');
  for (const std::string& bytes : {everyByte, std::string(), large, std::string("x")}) {
    SaveFile(kDataFile, bytes);
    EXPECT_TRUE(tree.Read(kDataFile) == bytes) << bytes.size();
    EXPECT_EQ(tree.Names(kDataFolder), (Names{"SN1", "SN2"}));
  }
  EXPECT_EQ(tree.Read(R"(c:\calfactors\PX12A\SN2)"), "other");
}

TEST(SaveFile, KeepsModeOwnerAndGroup) {
  const TestTree tree;
  tree.Write(kDataFile, kOldBytes);
  const fs::path native = tree.Native(kDataFile);
  // Only root can give a file away. For any other user the owner is the test's own.
  if (::geteuid() == 0) {
    ASSERT_EQ(::chown(native.c_str(), 65534, 65534), 0);
  }
  for (const mode_t mode : {mode_t{0606}, mode_t{0777}}) {
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

// In a folder that a group shares, the group gets access whatever the operator's own mask is.
TEST(SaveFile, ANewFileHasTheModeOfTheMaskOrOfASharedFolder) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  for (const auto& [mask, folderMode, expected] :
       {std::tuple(mode_t{027}, mode_t{0755}, mode_t{0640}),
        std::tuple(mode_t{077}, mode_t{02770}, mode_t{0660})}) {
    ASSERT_EQ(::chmod(tree.Native(kDataFolder).c_str(), folderMode), 0);
    const mode_t before = ::umask(mask);
    SaveFile(kDataFile, kNewBytes);
    (void)::umask(before);
    EXPECT_EQ(StatOf(tree.Native(kDataFile)).st_mode & 07777, expected);
    fs::remove(tree.Native(kDataFile));
  }
}

/// Makes another user the owner of the file, with the test's own group. Does nothing unless the
/// test runs as root.
void GiveAway(const fs::path& file) {
  const uid_t user = ::geteuid();
  if (::getuid() == 0) {
    EXPECT_EQ(::seteuid(0), 0);
    EXPECT_EQ(::chown(file.c_str(), 1234, ::getegid()), 0);
    EXPECT_EQ(::seteuid(user), 0);
  }
}

TEST(SaveFile, ReplacesAnotherOperatorsFileUnlessItMayNotBeWritten) {
  const TestTree tree;
  tree.Write(kDataFile, kOldBytes);
  const fs::path native = tree.Native(kDataFile);
  const OrdinaryUser user(tree.Root());
  ASSERT_EQ(::chmod(native.c_str(), 0664), 0);
  GiveAway(native);
  const struct stat before = StatOf(native);
  SaveFile(kDataFile, kNewBytes);
  const struct stat after = StatOf(native);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  EXPECT_NE(after.st_ino, before.st_ino) << "in one step";
  EXPECT_EQ(after.st_mode & 07777, mode_t{0664});
  EXPECT_EQ(after.st_gid, before.st_gid);

  ASSERT_EQ(::chmod(native.c_str(), 0644), 0);
  GiveAway(native);
  if (StatOf(native).st_uid != ::geteuid()) {  // only root can give it away
    EXPECT_TRUE(Contains(ErrorOf([] { SaveFile(kDataFile, kOldBytes); }).Text(),
                         "Cannot save the file: you have no permission to do so."));
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  }
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, WritesExactlyTheFileOfASystemPathWhateverItsCase) {
  const TestTree tree;
  tree.Write("c:\\folder\\px12a", kOldBytes);
  const fs::path native = tree.Native("c:\\folder") / "PX12A";
  EXPECT_EQ(SaveNativeFile(native, kNewBytes), std::error_code());
  EXPECT_EQ(tree.Read("c:\\folder\\px12a"), kOldBytes);
  EXPECT_EQ(test::ReadNative(native), kNewBytes);
}

// ---- Links.

TEST(SaveFile, FollowsLinksWhichStayLinks) {
  const TestTree tree;
  tree.MakeFolders("c:\\real");
  tree.MakeFolders("c:\\between");
  tree.MakeFolders(kDataFolder);
  const fs::path link = tree.Native(kDataFile);
  fs::create_symlink("../real/file", tree.Native("c:\\between\\second"));
  // The first target does not exist yet, and is reached through a second link.
  for (const fs::path& target : {fs::path("../../between/second"), fs::path("../../real/file"),
                                 tree.Native("c:\\real\\file")}) {
    SCOPED_TRACE(target);
    fs::remove(link);
    fs::create_symlink(target, link);
    SaveFile(kDataFile, kNewBytes);
    EXPECT_EQ(fs::read_symlink(link), target);
    EXPECT_TRUE(fs::is_symlink(tree.Native("c:\\between\\second")));
    EXPECT_EQ(tree.Read("c:\\real\\file"), kNewBytes);
    EXPECT_EQ(tree.Names("c:\\real"), Names{"file"});
    EXPECT_EQ(tree.Names("c:\\between"), Names{"second"});
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
    tree.Write("c:\\real\\file", kOldBytes);
  }
}

TEST(SaveFile, OneOfSeveralHardLinksStaysOne) {
  const TestTree tree;
  tree.Write(kDataFile, std::string(100000, 'y'));
  fs::create_hard_link(tree.Native(kDataFile), tree.Native("c:\\other"));
  for (const std::string_view bytes : {kNewBytes, std::string_view("x"), kOldBytes}) {
    SaveFile(kDataFile, bytes);
    EXPECT_EQ(tree.Read(kDataFile), bytes);
    EXPECT_TRUE(fs::equivalent(tree.Native(kDataFile), tree.Native("c:\\other")));
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
  }
}

// ---- Targets that are not ordinary files, and folders that accept none.

TEST(SaveFile, FailsWhereThePathLeadsToNoFile) {
  const TestTree tree;
  tree.MakeFolders(R"(c:\folders\folder\inside)");
  tree.Write(R"(c:\folders\file)", "x");
  const fs::path folders = tree.Native(R"(c:\folders)");
  fs::create_symlink("missing/file", folders / "toNoFolder");
  fs::create_symlink("toItself", folders / "toItself");
  fs::create_symlink("/dev/full", folders / "toFullDevice");
  // A pipe without a reader must not make the program wait.
  ASSERT_EQ(::mkfifo((folders / "pipe").c_str(), 0600), 0);
  const Names before = tree.Names(R"(c:\folders)");
  for (const std::string name : {"folder", "toNoFolder", "toItself", "toFullDevice", "pipe",
                                 R"(missing\SN1)", R"(file\SN1)"}) {
    SCOPED_TRACE(name);
    const std::string path = R"(c:\folders\)" + name;
    const Error error = ErrorOf([&] { SaveFile(path, kNewBytes); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
    EXPECT_EQ(error.Path(), path);
    EXPECT_EQ(tree.Names(R"(c:\folders)"), before);
  }
  EXPECT_TRUE(fs::is_symlink(folders / "toFullDevice"));
  EXPECT_TRUE(fs::is_fifo(folders / "pipe"));
  EXPECT_EQ(tree.Names(R"(c:\folders\folder)"), Names{"inside"});
}

TEST(SaveFile, WritesToADevice) {
  const TestTree tree;
  tree.MakeFolders(kDataFolder);
  fs::create_symlink("/dev/null", tree.Native(kDataFile));
  EXPECT_NO_THROW(SaveFile(kDataFile, kNewBytes));
  EXPECT_TRUE(fs::is_symlink(tree.Native(kDataFile)));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, OverwritesTheFileOfALockedFolderInPlaceUnlessItIsReadOnly) {
  const TestTree tree;
  tree.Write(kDataFile, kOldBytes);
  const fs::path native = tree.Native(kDataFile);
  const ino_t before = StatOf(native).st_ino;
  const OrdinaryUser user(tree.Root());
  const LockedFolder locked(tree.Native(kDataFolder));
  SaveFile(kDataFile, kNewBytes);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  EXPECT_EQ(StatOf(native).st_ino, before);
  ASSERT_EQ(::chmod(native.c_str(), 0444), 0);
  EXPECT_EQ(ErrorOf([] { SaveFile(kDataFile, kOldBytes); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  EXPECT_EQ(ErrorOf([] { SaveFile(R"(c:\calfactors\PX12A\SN2)", kNewBytes); }).Kind(),
            ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST(SaveFile, NoSearchFindsTheTemporaryFile) {
  const TestTree tree;
  tree.Write(R"(c:\calfactors\PX12A\SN1)", kOldBytes);
  fs::path path;
  std::unique_ptr<OutputFile> file;
  Platform& platform = CurrentPlatform();
  ASSERT_FALSE(platform.CreateTemporary(tree.Native(kDataFolder), path, file));
  EXPECT_EQ(tree.Names(kDataFolder).size(), 2U);
  EXPECT_EQ(path.parent_path(), tree.Native(kDataFolder));
  for (const SearchKind kind :
       {SearchKind::NamesWithoutDot, SearchKind::EveryName, SearchKind::OrdinaryFiles}) {
    Names found;
    ASSERT_FALSE(
        platform.Search(tree.Native(kDataFolder), kind, [&](const std::string& name, EntryKind) {
          found.push_back(name);
          return true;
        }));
    EXPECT_EQ(found, Names{"SN1"});
  }
}

}  // namespace
}  // namespace tarvell
