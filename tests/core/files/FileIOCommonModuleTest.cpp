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

TEST(FolderExists, IsTrueOnlyForFoldersDrivesAndLinksToFolders) {
  const TestTree tree;
  tree.MakeFolders("c:\\stations\\one");
  tree.Write("c:\\stations\\file", "x");
  std::filesystem::create_symlink("stations", tree.Native("c:\\toFolder"));
  std::filesystem::create_symlink("stations/file", tree.Native("c:\\toFile"));
  std::filesystem::create_symlink("missing", tree.Native("c:\\toNothing"));
  for (const char* path : {"c:\\stations", "c:\\stations\\", R"(C:\Stations\ONE\)", "c:/stations/",
                           "c:\\", "c:/", "d:\\", "Z:\\", "c:\\toFolder"}) {
    EXPECT_TRUE(FolderExists(path)) << path;
  }
  EXPECT_TRUE(FolderExists(tree.Root().string()));
  for (const char* path : {"", "c:\\stations\\file", R"(c:\stations\file\)", "c:\\calfactors",
                           R"(c:\stations\file\below)", "c:\\toFile", "c:\\toNothing"}) {
    EXPECT_FALSE(FolderExists(path)) << path;
  }
}

// In a folder that a group shares, the group gets access whatever the operator's own mask is.
TEST(MakeFolder, MakesOneFolderAndGivesAccessToTheGroupThatSharesItsParent) {
  const TestTree tree;
  tree.MakeFolders("c:\\calfactors");
  ASSERT_EQ(::chmod(tree.Native("c:\\calfactors").c_str(), 02775), 0);
  const auto before = ::umask(077);
  MakeFolder("c:\\CALFACTORS\\PX12A");
  (void)::umask(before);
  EXPECT_EQ(tree.Names("c:\\"), Names{"calfactors"});
  struct stat facts = {};
  ASSERT_EQ(::stat(tree.Native("c:\\calfactors\\PX12A").c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 07777, mode_t{02775});
}

TEST(MakeFolder, MakesNoParentAndFailsWhereThereIsAnEntry) {
  const TestTree tree;
  tree.Write("c:\\calfactors\\file", "x");
  for (const auto& [path, kind] :
       {std::pair("c:\\missing\\PX12A", ErrorKind::NotFound),
        std::pair("c:\\calfactors", ErrorKind::Name), std::pair("c:\\CALFACTORS", ErrorKind::Name),
        std::pair("c:\\calfactors\\file", ErrorKind::Name)}) {
    SCOPED_TRACE(path);
    const Error error = ErrorOf([&, name = path] { MakeFolder(name); });
    EXPECT_EQ(error.Path(), path);
    EXPECT_EQ(error.Kind(), kind);
  }
  EXPECT_EQ(tree.Names("c:\\"), Names{"calfactors"});
  EXPECT_EQ(tree.Read("c:\\calfactors\\file"), "x");
}

// The platform of the tests has no recycle bin, so what is recycled is gone.

TEST(Recycle, TakesAnEntryWithItsContentsAndLeavesWhatALinkLeadsTo) {
  const TestTree tree;
  tree.Write("c:\\real\\file", "x");
  tree.Write(R"(c:\stations\SN1)", "x");
  tree.Write(R"(c:\stations\one\a\b)", "x");
  tree.MakeFolders("c:\\stations\\two");
  const std::filesystem::path stations = tree.Native("c:\\stations");
  std::filesystem::create_symlink("../real/file", stations / "toFile");
  std::filesystem::create_symlink("../real", stations / "toFolder");
  std::filesystem::create_symlink("nothing", stations / "toNothing");
  std::filesystem::create_symlink("../../real", stations / "one" / "link");
  for (const std::string name : {"sn1", "one", "toFile", "toFolder", "toNothing"}) {
    Recycle("c:\\stations\\" + name);
  }
  EXPECT_EQ(tree.Names("c:\\stations"), Names{"two"});
  EXPECT_EQ(tree.Read("c:\\real\\file"), "x");
}

TEST(Recycle, FailsForAMissingEntryAndInALockedFolder) {
  const TestTree tree;
  tree.Write("c:\\stations\\one", "x");
  const Error error = ErrorOf([] { Recycle("c:\\stations\\two"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_EQ(error.Path(), "c:\\stations\\two");
  // An entry of a list is exactly the named one.
  EXPECT_EQ(ErrorOf([] { RecycleEntry("c:\\STATIONS", "ONE"); }).Kind(), ErrorKind::NotFound);
  const OrdinaryUser user(tree.Root());
  const LockedFolder locked(tree.Native("c:\\stations"));
  EXPECT_EQ(ErrorOf([] { Recycle("c:\\stations\\one"); }).Kind(), ErrorKind::NoPermission);
  EXPECT_EQ(ErrorOf([] { MakeFolder("c:\\stations\\new"); }).Kind(), ErrorKind::NoPermission);
  EXPECT_EQ(tree.Names("c:\\stations"), Names{"one"});
}

TEST(Search, LeavesOutNamesThatHoldASeparator) {
  const test::TestTree tree;
  tree.Write(R"(c:\a\SN1)", "");
  test::WriteNative(tree.Native(R"(c:\a)") / R"(..\b)", "");
  test::WriteNative(tree.Native(R"(c:\a)") / R"(SN\2)", "");
  Names names;
  ASSERT_FALSE(CurrentPlatform().Search(tree.Native(R"(c:\a)").string(), SearchKind::EveryName,
                                        [&](const FoundEntry& entry) {
                                          names.push_back(entry.name);
                                          return true;
                                        }));
  EXPECT_EQ(names, Names{"SN1"});
}

}  // namespace
}  // namespace tarvell
