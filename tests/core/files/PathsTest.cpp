// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::TestTree;
using test::WriteNative;

TEST(NativePath, OfADriveIsAFolderInTheDriveFolder) {
  const TestTree tree;
  const std::filesystem::path drives = tree.Root() / "drives";
  const std::vector<std::pair<const char*, const char*>> paths = {
      {R"(c:\calfactors\PX12A\SN1)", "c/calfactors/PX12A/SN1"},
      {R"(D:\stations)", "d/stations"},
      {R"(c:/a/b)", "c/a/b"},
      {R"(c:\\a//b\/d)", "c/a/b/d"},
      {"c:", "c"},
      {"C:\\", "c"},
      // Dots are resolved and never lead out of the drive.
      {R"(c:\a\..\b)", "c/b"},
      {R"(c:\.\a\.\b)", "c/a/b"},
      {R"(c:\a\b\..\..\d)", "c/d"},
      {R"(c:\..\..\..\etc\passwd)", "c/etc/passwd"},
      {R"(c:\a\..\..\d\x)", "c/d/x"},
      {R"(c:..\a)", "c/a"},
      {R"(c:\a.b\..c\...\d.)", "c/a.b/..c/.../d."}};
  for (const auto& [path, expected] : paths) {
    EXPECT_EQ(NativePath(path), drives / expected) << path;
  }
}

TEST(NativePath, OfAnyOtherPathIsThatPath) {
  const TestTree tree;
  EXPECT_EQ(NativePath(R"(\no-such-folder\of\ours)"), "/no-such-folder/of/ours");
  EXPECT_EQ(NativePath(tree.Root().string()), tree.Root());
  EXPECT_EQ(NativePath("no-such-folder/x"), "./no-such-folder/x");
  EXPECT_EQ(NativePath("../../no-such-folder"), "./../../no-such-folder");
  // A drive is one letter and a colon, at the beginning.
  EXPECT_EQ(NativePath("/no-such-folder/c:/x"), "/no-such-folder/c:/x");
  EXPECT_EQ(NativePath("/1:/x"), "/1:/x");
  WriteNative(tree.Root() / "File", "x");
  EXPECT_EQ(NativePath(tree.Root().string() + "\\FILE"), tree.Root() / "File");
}

TEST(NativePath, FindsAnEntryThatDiffersOnlyInCaseAfterOneWithExactlyTheName) {
  const TestTree tree;
  tree.Write(R"(c:\CalFactors\Px12a\Sn1)", "x");
  tree.Write("c:\\Pr\u00FCf", "x");
  const std::filesystem::path c = tree.Root() / "drives" / "c";
  for (const char* path :
       {R"(c:\calfactors\PX12A\SN1)", R"(C:\CALFACTORS\..\calfactors\px12a\sN1)"}) {
    EXPECT_EQ(NativePath(path), c / "CalFactors" / "Px12a" / "Sn1") << path;
  }
  EXPECT_EQ(NativePath(R"(c:\calfactors\PX12A\SN2)"), c / "CalFactors" / "Px12a" / "SN2");
  EXPECT_EQ(NativePath("c:\\calfactorss"), c / "calfactorss");
  // An entry with exactly the name comes first, even a link that leads nowhere.
  tree.Write(R"(c:\CalFactors\px12a\Sn1)", "2");
  std::filesystem::create_symlink("missing", c / "CalFactors" / "px12a" / "SN1");
  EXPECT_EQ(NativePath(R"(c:\calfactors\px12a\SN1)"), c / "CalFactors" / "px12a" / "SN1");
  EXPECT_EQ(NativePath(R"(c:\calfactors\Px12a\Sn1)"), c / "CalFactors" / "Px12a" / "Sn1");
  // A name in the bytes of an older system, unless another has exactly the text.
  tree.Write("c:\\CalFactors\\P\xC4Z", "x");
  EXPECT_EQ(NativePath("c:\\CalFactors\\p\u00C4Z"), c / "CalFactors" / "P\xC4Z");
  WriteNative(c / "CalFactors" / "P\u00C4Z", "x");
  EXPECT_EQ(NativePath("c:\\CalFactors\\P\u00C4Z"), c / "CalFactors" / "P\u00C4Z");
  // Only the letters A to Z have a case.
  EXPECT_EQ(NativePath("c:\\PR\u00FCF"), c / "Pr\u00FCf");
  EXPECT_EQ(NativePath("c:\\Pr\u00DCf"), c / "Pr\u00DCf");
}

TEST(PathText, HasTheDriveLetterOfASystemPath) {
  const TestTree tree;
  const std::filesystem::path drives = tree.Root() / "drives";
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
  // A NUL does not end the text.
  EXPECT_EQ(Error(ErrorKind::Type, std::string("\"1\0\" is wrong.", 14), "c:\\a", 3).what(),
            std::string("\"1 \" is wrong.\n\nc:\\a, line 3"));
}

TEST(FullPathText, OfARelativePathBeginsWithTheCurrentFolder) {
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

TEST(Share, IsRefusedAndTheErrorSaysHowToReachIt) {
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

TEST(PathTexts, AreJoinedAndSplitAtEitherSeparator) {
  EXPECT_EQ(Joined("c:\\calfactors", "PX12A"), "c:\\calfactors\\PX12A");
  EXPECT_EQ(Joined("c:\\", "PX12A"), "c:\\PX12A");
  EXPECT_EQ(Joined("/srv/data/", "PX12A"), "/srv/data/PX12A");
  for (const auto& [path, folder, name] :
       {std::tuple("c:\\calfactors/PX12A", "c:\\calfactors", "PX12A"),
        std::tuple("c:/calfactors\\PX12A", "c:/calfactors", "PX12A"), std::tuple("SN1", "", "SN1"),
        std::tuple("c:\\", "c:", ""), std::tuple("", "", "")}) {
    EXPECT_EQ(FolderOf(path), folder);
    EXPECT_EQ(LastNameOf(path), name);
  }
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
