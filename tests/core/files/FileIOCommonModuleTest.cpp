// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "core/files/FileIOCommonModule.h"
#include "core/platform/Platform.h"
#include "support/ErrorOf.h"
#include "support/OrdinaryUser.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::ErrorOf;
using test::LockedFolder;
using test::OrdinaryUser;
using test::TestTree;

using Names = std::vector<std::string>;

TEST(FolderExists, IsTrueForAFolderWithAndWithoutATrailingSeparator) {
  const TestTree tree;
  tree.MakeFolders("c:\\stations\\one");
  for (const char* path :
       {"c:\\stations", "c:\\stations\\", "c:\\stations\\one", R"(c:\stations\one\)", "c:/stations",
        "c:/stations/", "C:\\STATIONS", R"(C:\Stations\ONE\)", "c:\\", "c:/"}) {
    SCOPED_TRACE(path);
    EXPECT_TRUE(FolderExists(path));
  }
  EXPECT_TRUE(FolderExists(tree.Root().string()));
  EXPECT_TRUE(FolderExists(tree.Root().string() + "/"));
}

TEST(FolderExists, IsFalseForAFileAndForNothing) {
  const TestTree tree;
  tree.Write("c:\\stations\\file", "x");
  for (const char* path : {"c:\\stations\\file", R"(c:\stations\file\)", "c:\\calfactors",
                           "c:\\calfactors\\", R"(c:\stations\file\below)", "c:\\a\\b"}) {
    SCOPED_TRACE(path);
    EXPECT_FALSE(FolderExists(path));
  }
  EXPECT_FALSE(FolderExists((tree.Root() / "missing").string()));
}

TEST(FolderExists, FollowsLinks) {
  const TestTree tree;
  tree.MakeFolders("c:\\stations");
  tree.Write("c:\\file", "x");
  std::filesystem::create_symlink("stations", tree.Native("c:\\toFolder"));
  std::filesystem::create_symlink("file", tree.Native("c:\\toFile"));
  std::filesystem::create_symlink("missing", tree.Native("c:\\toNothing"));
  EXPECT_TRUE(FolderExists("c:\\toFolder"));
  EXPECT_FALSE(FolderExists("c:\\toFile"));
  EXPECT_FALSE(FolderExists("c:\\toNothing"));
}

TEST(FolderExists, IsTrueForTheRootOfEveryDrive) {
  const TestTree tree;
  for (const char* path : {"d:\\", "e:/", "Z:\\"}) {
    SCOPED_TRACE(path);
    EXPECT_TRUE(FolderExists(path));
  }
  MakeFolder("f:\\stations");
  EXPECT_TRUE(FolderExists("f:\\stations"));
}

TEST(MakeFolder, MakesOneFolder) {
  const TestTree tree;
  MakeFolder("c:\\calfactors");
  MakeFolder("c:\\calfactors\\PX12A");
  EXPECT_EQ(tree.Names("c:\\"), Names{"calfactors"});
  EXPECT_EQ(tree.Names("c:\\calfactors"), Names{"PX12A"});
  EXPECT_TRUE(std::filesystem::is_directory(tree.Native("c:\\calfactors\\PX12A")));
}

TEST(MakeFolder, MakesNothingBesideATreeOfAnotherCase) {
  const TestTree tree;
  tree.MakeFolders("c:\\CalFactors");
  MakeFolder("c:\\calfactors\\PX12A");
  EXPECT_EQ(tree.Names("c:\\"), Names{"CalFactors"});
  EXPECT_EQ(tree.Names("c:\\CalFactors"), Names{"PX12A"});
}

// Operators of one group share the tree, whatever each one's own mask says.
TEST(MakeFolder, IsOpenToTheGroupThatSharesTheFolderAbove) {
  const TestTree tree;
  tree.MakeFolders("c:\\calfactors");
  ASSERT_EQ(::chmod(tree.Native("c:\\calfactors").c_str(), 02775), 0);
  const mode_t before = ::umask(077);
  MakeFolder("c:\\calfactors\\PX12A");
  (void)::umask(before);
  struct stat facts = {};
  ASSERT_EQ(::stat(tree.Native("c:\\calfactors\\PX12A").c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 07777, mode_t{02775});
}

TEST(MakeFolder, MakesNoParents) {
  const TestTree tree;
  const Error error = ErrorOf([] { MakeFolder("c:\\calfactors\\PX12A"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_EQ(error.Path(), "c:\\calfactors\\PX12A");
  EXPECT_EQ(tree.Names("c:\\"), Names{});
}

TEST(MakeFolder, WhereSomethingStandsAlreadyIsAnError) {
  const TestTree tree;
  tree.Write("c:\\calfactors\\file", "x");
  for (const char* path : {"c:\\calfactors", "c:\\calfactors\\file", "c:\\CALFACTORS"}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(ErrorOf([&] { MakeFolder(path); }).Path(), path);
  }
  EXPECT_EQ(ErrorOf([] { MakeFolder("c:\\calfactors\\file\\below"); }).Path(),
            "c:\\calfactors\\file\\below");
  EXPECT_EQ(tree.Names("c:\\"), Names{"calfactors"});
  EXPECT_EQ(tree.Read("c:\\calfactors\\file"), "x");
}

TEST(MakeFolder, WithoutTheRightToIsAnError) {
  const TestTree tree;
  tree.MakeFolders("c:\\calfactors");
  const OrdinaryUser user(tree.Root());
  const LockedFolder locked(tree.Native("c:\\calfactors"));
  EXPECT_EQ(ErrorOf([] { MakeFolder("c:\\calfactors\\PX12A"); }).Kind(), ErrorKind::NoPermission);
  EXPECT_EQ(tree.Names("c:\\calfactors"), Names{});
}

// The platform of the tests has no recycle bin, so what is recycled is gone.

TEST(Recycle, TakesAFile) {
  const TestTree tree;
  tree.Write(R"(c:\calfactors\PX12A\SN1)", "x");
  tree.Write(R"(c:\calfactors\PX12A\SN2)", "y");
  Recycle(R"(c:\calfactors\PX12A\sn1)");
  EXPECT_EQ(tree.Names("c:\\calfactors\\PX12A"), Names{"SN2"});
}

TEST(Recycle, TakesAFolderWithAllItHolds) {
  const TestTree tree;
  tree.Write(R"(c:\stations\one\a\b)", "x");
  tree.Write(R"(c:\stations\one\INDEX)", "y");
  tree.MakeFolders("c:\\stations\\two");
  Recycle("c:\\stations\\one");
  EXPECT_EQ(tree.Names("c:\\stations"), Names{"two"});
}

TEST(Recycle, TakesALinkAndLeavesWhatItLeadsTo) {
  const TestTree tree;
  tree.Write("c:\\real\\file", "x");
  tree.MakeFolders("c:\\links");
  std::filesystem::create_symlink("../real/file", tree.Native("c:\\links\\toFile"));
  std::filesystem::create_symlink("../real", tree.Native("c:\\links\\toFolder"));
  std::filesystem::create_symlink("nothing", tree.Native("c:\\links\\toNothing"));
  for (const char* path : {"c:\\links\\toFile", "c:\\links\\toFolder", "c:\\links\\toNothing"}) {
    SCOPED_TRACE(path);
    ASSERT_TRUE(tree.Exists(path));
    Recycle(path);
    EXPECT_FALSE(tree.Exists(path));
  }
  EXPECT_EQ(tree.Read("c:\\real\\file"), "x");
  EXPECT_EQ(tree.Names("c:\\real"), Names{"file"});
}

TEST(Recycle, LeavesWhatLinksInAFolderLeadTo) {
  const TestTree tree;
  tree.Write("c:\\real\\file", "x");
  tree.MakeFolders("c:\\stations\\one");
  std::filesystem::create_symlink("../../real", tree.Native(R"(c:\stations\one\link)"));
  Recycle("c:\\stations\\one");
  EXPECT_EQ(tree.Names("c:\\stations"), Names{});
  EXPECT_EQ(tree.Read("c:\\real\\file"), "x");
}

TEST(Recycle, OfNothingIsAnError) {
  const TestTree tree;
  const Error error = ErrorOf([] { Recycle("c:\\stations\\one"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_EQ(error.Path(), "c:\\stations\\one");
}

TEST(Recycle, WithoutTheRightToIsAnErrorAndTakesNothing) {
  const TestTree tree;
  tree.Write("c:\\stations\\one", "x");
  const OrdinaryUser user(tree.Root());
  const LockedFolder locked(tree.Native("c:\\stations"));
  EXPECT_EQ(ErrorOf([] { Recycle("c:\\stations\\one"); }).Kind(), ErrorKind::NoPermission);
  EXPECT_EQ(tree.Read("c:\\stations\\one"), "x");
}

TEST(Search, LeavesOutNamesThatWouldMeanAnotherPath) {
  const test::TestTree tree;
  tree.Write(R"(c:\a\SN1)", "");
  test::WriteNative(tree.Native(R"(c:\a)") / R"(..\b)", "");
  test::WriteNative(tree.Native(R"(c:\a)") / R"(SN\2)", "");
  std::vector<std::string> names;
  ASSERT_FALSE(CurrentPlatform().Search(tree.Native(R"(c:\a)").string(), SearchKind::EveryName,
                                        [&](const std::string& name, EntryKind) {
                                          names.push_back(name);
                                          return true;
                                        }));
  EXPECT_EQ(names, (std::vector<std::string>{"SN1"}));
}

}  // namespace
}  // namespace tarvell
