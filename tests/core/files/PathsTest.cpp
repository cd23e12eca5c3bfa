// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::TestTree;
using test::WriteNative;

std::string Drives(const TestTree& tree) {
  return (tree.Root() / "drives").string();
}

TEST(NativePath, OfADriveLiesBelowTheDriveFolder) {
  const TestTree tree;
  const std::string drives = Drives(tree);
  EXPECT_EQ(NativePath("c:\\calfactors"), drives + "/c/calfactors");
  EXPECT_EQ(NativePath("c:\\calfactors\\PX12A\\SN12345"), drives + "/c/calfactors/PX12A/SN12345");
  EXPECT_EQ(NativePath("d:\\stations"), drives + "/d/stations");
  EXPECT_EQ(NativePath("z:\\x"), drives + "/z/x");
}

TEST(NativePath, BothSeparatorsSeparate) {
  const TestTree tree;
  const std::string expected = Drives(tree) + "/c/a/b/d";
  EXPECT_EQ(NativePath("c:\\a\\b\\d"), expected);
  EXPECT_EQ(NativePath("c:/a/b/d"), expected);
  EXPECT_EQ(NativePath("c:\\a/b\\d"), expected);
  EXPECT_EQ(NativePath("c:\\\\a//b\\/d"), expected);
}

TEST(NativePath, OfADriveLetterInEitherCaseIsTheSame) {
  const TestTree tree;
  EXPECT_EQ(NativePath("C:\\calfactors"), Drives(tree) + "/c/calfactors");
  EXPECT_EQ(NativePath("D:/x"), Drives(tree) + "/d/x");
}

TEST(NativePath, OfTheRootOfADrive) {
  const TestTree tree;
  const std::filesystem::path root = tree.Root() / "drives" / "c";
  for (const char* path : {"c:", "c:\\", "c:/", "C:\\", "c:\\.", "c:\\a\\.."}) {
    SCOPED_TRACE(path);
    EXPECT_TRUE(std::filesystem::equivalent(NativePath(path), root)) << NativePath(path);
  }
}

TEST(NativePath, DotsAreResolvedAndNeverLeadOutOfADrive) {
  const TestTree tree;
  const std::string c = Drives(tree) + "/c";
  EXPECT_EQ(NativePath("c:\\a\\..\\b"), c + "/b");
  EXPECT_EQ(NativePath("c:\\.\\a\\.\\b"), c + "/a/b");
  EXPECT_EQ(NativePath("c:\\a\\b\\..\\..\\d"), c + "/d");
  EXPECT_EQ(NativePath("c:\\..\\a"), c + "/a");
  EXPECT_EQ(NativePath("c:\\..\\..\\..\\..\\etc\\passwd"), c + "/etc/passwd");
  EXPECT_EQ(NativePath("c:\\a\\..\\..\\d\\x"), c + "/d/x");
  EXPECT_EQ(NativePath("c:..\\a"), c + "/a");
  EXPECT_EQ(NativePath("c:/../../a"), c + "/a");
}

TEST(NativePath, NamesWithDotsInThemAreNames) {
  const TestTree tree;
  const std::string c = Drives(tree) + "/c";
  EXPECT_EQ(NativePath("c:\\a.b\\..c\\...\\d."), c + "/a.b/..c/.../d.");
}

TEST(NativePath, AnyOtherPathIsTakenAsItIs) {
  const TestTree tree;
  EXPECT_EQ(NativePath("/no-such-folder/of/ours"), "/no-such-folder/of/ours");
  EXPECT_EQ(NativePath("\\no-such-folder\\of\\ours"), "/no-such-folder/of/ours");
  EXPECT_EQ(NativePath(tree.Root().string()), tree.Root().string());
  // A drive is one letter and a colon, at the start.
  EXPECT_EQ(NativePath("/no-such-folder/c:/x"), "/no-such-folder/c:/x");
  EXPECT_EQ(NativePath("/1:/x"), "/1:/x");
}

TEST(NativePath, AnEntryThatDiffersOnlyInCaseIsMeant) {
  const TestTree tree;
  tree.Write(R"(c:\CalFactors\Px12a\Sn1)", "x");
  const std::string expected = Drives(tree) + "/c/CalFactors/Px12a/Sn1";
  EXPECT_EQ(NativePath("c:\\CalFactors\\Px12a\\Sn1"), expected);
  EXPECT_EQ(NativePath("c:\\calfactors\\PX12A\\SN1"), expected);
  EXPECT_EQ(NativePath("C:\\CALFACTORS\\px12a\\sN1"), expected);
  EXPECT_EQ(NativePath("c:\\CALFACTORS\\..\\calfactors\\PX12A\\sn1"), expected);
}

TEST(NativePath, WhatDoesNotExistKeepsItsNameBelowWhatDoes) {
  const TestTree tree;
  tree.MakeFolders("c:\\CalFactors\\Px12a");
  const std::string folder = Drives(tree) + "/c/CalFactors";
  EXPECT_EQ(NativePath("c:\\calfactors\\PX12A\\SN1"), folder + "/Px12a/SN1");
  EXPECT_EQ(NativePath("c:\\calfactors\\New\\Deep"), folder + "/New/Deep");
  EXPECT_EQ(NativePath("c:\\calfactorss"), Drives(tree) + "/c/calfactorss");
}

TEST(NativePath, AnEntryOfExactlyTheNameWins) {
  const TestTree tree;
  tree.Write("c:\\data\\abc", "1");
  tree.Write("c:\\data\\ABC", "2");
  tree.Write("c:\\data\\Abc", "3");
  tree.Write("c:\\DATA\\abc", "4");
  const std::string c = Drives(tree) + "/c";
  EXPECT_EQ(NativePath("c:\\data\\abc"), c + "/data/abc");
  EXPECT_EQ(NativePath("c:\\data\\ABC"), c + "/data/ABC");
  EXPECT_EQ(NativePath("c:\\data\\Abc"), c + "/data/Abc");
  EXPECT_EQ(NativePath("c:\\DATA\\abc"), c + "/DATA/abc");
  const std::string other = NativePath("c:\\data\\aBC");
  EXPECT_TRUE(other == c + "/data/abc" || other == c + "/data/ABC" || other == c + "/data/Abc")
      << other;
}

TEST(NativePath, ALinkOfExactlyTheNameWinsEvenWhenItLeadsNowhere) {
  const TestTree tree;
  tree.Write("c:\\ABC", "1");
  std::filesystem::create_symlink("missing", tree.Native("c:\\abc"));
  EXPECT_EQ(NativePath("c:\\abc"), Drives(tree) + "/c/abc");
}

TEST(NativePath, CaseIsThatOfTheLettersAToZ) {
  const TestTree tree;
  tree.Write(
      "c:\\Pr\xC3\xBC"
      "f",
      "x");
  EXPECT_EQ(NativePath("c:\\PR\xC3\xBC"
                       "F"),
            Drives(tree) +
                "/c/Pr\xC3\xBC"
                "f");
  EXPECT_EQ(NativePath("c:\\Pr\xC3\x9C"
                       "f"),
            Drives(tree) +
                "/c/Pr\xC3\x9C"
                "f");
}

TEST(NativePath, APathWithoutADriveFindsEntriesOfAnotherCaseToo) {
  const TestTree tree;
  WriteNative(tree.Root() / "File", "x");
  const std::string root = tree.Root().string();
  EXPECT_EQ(NativePath(root + "/file"), root + "/File");
  EXPECT_EQ(NativePath(root + "\\FILE"), root + "/File");
  EXPECT_EQ(NativePath(root + "/File"), root + "/File");
}

TEST(PathText, OfANativePathHasItsDriveLetter) {
  const TestTree tree;
  const std::filesystem::path drives = Drives(tree);
  EXPECT_EQ(PathText(drives / "c" / "calfactors" / "PX12A"), R"(c:\calfactors\PX12A)");
  EXPECT_EQ(PathText(drives / "d" / "x" / ""), R"(d:\x\)");
  EXPECT_EQ(PathText(drives / "c"), "c:\\");
  EXPECT_EQ(PathText(drives / "cd" / "x"), (drives / "cd" / "x").string());
  EXPECT_EQ(PathText(drives), drives.string());
  EXPECT_EQ(PathText(std::filesystem::path("/srv/data")), "/srv/data");
}

TEST(ShownPath, HasOneKindOfSeparator) {
  EXPECT_EQ(ShownPath(R"(/srv/data\PX12A\SN12345)"), "/srv/data/PX12A/SN12345");
  EXPECT_EQ(ShownPath(R"(c:/calfactors\PX12A)"), R"(c:\calfactors\PX12A)");
  EXPECT_EQ(ShownPath(R"(\srv\data/PX12A)"), R"(\srv\data\PX12A)");
  EXPECT_EQ(ShownPath(R"(data\PX12A/x)"), R"(data\PX12A\x)");
  EXPECT_EQ(ShownPath("data"), "data");
  EXPECT_EQ(ShownPath("c:"), "c:");
  EXPECT_EQ(Error(ErrorKind::System, "Text.", R"(/srv/data\x)", 3).what(),
            std::string("Text.\n\n/srv/data/x, line 3"));
}

TEST(FullPathText, OfARelativePathIsWhereItLies) {
  const TestTree tree;
  const std::string here = std::filesystem::current_path().string();
  for (const char* path : {"calfactors", " c:\\calfactors", "", ".", "../x"}) {
    EXPECT_TRUE(IsRelative(path)) << path;
  }
  for (const char* path : {"c:\\calfactors", "c:calfactors", "/calfactors", "\\calfactors"}) {
    EXPECT_FALSE(IsRelative(path)) << path;
  }
  EXPECT_EQ(FullPathText("calfactors"), here + "/calfactors");
  EXPECT_EQ(FullPathText(" c:\\calfactors"), here + "/ c:/calfactors");
  EXPECT_EQ(FullPathText("a/../b\\c"), here + "/b/c");
  EXPECT_EQ(FullPathText("c:x"), "c:\\x");
}

TEST(Share, IsRefusedWithTheWayToReachIt) {
  const TestTree tree;
  for (const char* path :
       {R"(\\server\share)", R"( \\server\share)", "//no-such-server/share", R"(\\tmp)"}) {
    SCOPED_TRACE(path);
    const Error error = test::ErrorOf([&] { CheckNamesNoShare(path); });
    EXPECT_EQ(error.Kind(), ErrorKind::Name);
    EXPECT_NE(error.Text().find("mounted"), std::string::npos) << error.Text();
  }
  const std::string existing = "/" + tree.Root().string();
  for (const std::string& path : {existing, std::string(R"(\srv\data)"), std::string("/srv/data"),
                                  std::string("c:\\\\x"), std::string("x"), std::string("\\")}) {
    EXPECT_NO_THROW(CheckNamesNoShare(path)) << path;
  }
}

TEST(Joined, HasOneSeparatorBetween) {
  EXPECT_EQ(Joined("c:\\calfactors", "PX12A"), "c:\\calfactors\\PX12A");
  EXPECT_EQ(Joined("c:\\", "PX12A"), "c:\\PX12A");
  EXPECT_EQ(Joined("c:\\calfactors\\", "PX12A"), "c:\\calfactors\\PX12A");
  EXPECT_EQ(Joined("/srv/data", "PX12A"), "/srv/data\\PX12A");
}

TEST(FolderOf, IsThePathUpToItsLastSeparator) {
  EXPECT_EQ(FolderOf("c:\\calfactors\\PX12A\\SN1"), "c:\\calfactors\\PX12A");
  EXPECT_EQ(FolderOf("c:/calfactors/PX12A"), "c:/calfactors");
  EXPECT_EQ(FolderOf("c:\\calfactors/PX12A"), "c:\\calfactors");
  EXPECT_EQ(FolderOf("c:/calfactors\\PX12A"), "c:/calfactors");
  EXPECT_EQ(FolderOf("SN1"), "");
  EXPECT_EQ(FolderOf(""), "");
}

TEST(LastNameOf, IsThePathAfterItsLastSeparator) {
  EXPECT_EQ(LastNameOf("c:\\calfactors\\PX12A\\SN1"), "SN1");
  EXPECT_EQ(LastNameOf("c:\\calfactors/PX12A"), "PX12A");
  EXPECT_EQ(LastNameOf("c:/calfactors\\PX12A"), "PX12A");
  EXPECT_EQ(LastNameOf("SN1"), "SN1");
  EXPECT_EQ(LastNameOf("c:\\"), "");
  EXPECT_EQ(LastNameOf(""), "");
}

TEST(DriveFolder, CanBePutElsewhereAndBack) {
  SetDriveFolder("/some/where");
  EXPECT_EQ(DriveFolder(), "/some/where");
  EXPECT_EQ(NativePath("c:\\windows\\tarvell.ini"), "/some/where/c/windows/tarvell.ini");
  SetDriveFolder("");
  EXPECT_EQ(DriveFolder(), "/var/lib/tarvell/drives");
}

}  // namespace
}  // namespace tarvell
