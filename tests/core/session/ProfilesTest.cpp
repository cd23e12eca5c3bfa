// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "core/session/Profiles.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/session/Version.h"
#include "core/text/Text.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

namespace fs = std::filesystem;

using test::Contains;
using test::Lines;
using test::TestTree;

constexpr const char* kIni = "c:\\windows\\tarvell.ini";

std::vector<std::string> IniLines(const std::string& calibration, const std::string& stations) {
  return {";",
          ";  Tar vell    Ini file",
          ";",
          "[Tarvell]",
          "SysRevision=A.02.61",
          "",
          "[Calfactors]",
          "Dir=" + calibration,
          "",
          "[Stations]",
          "Dir=" + stations};
}

struct Roots {
  std::string calibration = "not set";
  std::string stations = "not set";

  bool operator==(const Roots&) const = default;
};

const Roots kDefaults{"c:\\calfactors", "c:\\stations"};

Roots ReadRoots() {
  Roots roots;
  ReadProfile(roots.calibration, roots.stations);
  return roots;
}

Roots RootsOf(const TestTree& tree, std::string_view bytes) {
  tree.Write(kIni, bytes);
  return ReadRoots();
}

/// The roots of a file with these two lines in the places of the directories.
Roots RootsOfLines(const TestTree& tree, const std::string& line8, const std::string& line11) {
  std::vector<std::string> lines = IniLines("", "");
  lines[7] = line8;
  lines[10] = line11;
  return RootsOf(tree, Lines(lines));
}

TEST(WriteProfile, WritesElevenLinesToTheWindowsDirectoryWhichItMakes) {
  const TestTree tree;
  EXPECT_EQ(ToUpper(SystemPlatform().WindowsDirectory()), "C:\\WINDOWS");
  for (const std::string calibration : {"c:\\a longer directory", "c:\\calfactors"}) {
    WriteProfile(calibration, "d:\\my stations");
    std::vector<std::string> lines = IniLines(calibration, "d:\\my stations");
    lines[4] = "SysRevision=" + RevisionText(kMajorVersion, kMinorVersion);
    EXPECT_EQ(tree.Read(kIni), Lines(lines));
    EXPECT_EQ(tree.Names("c:\\windows"), std::vector<std::string>{"tarvell.ini"});
  }
}

/// A system on which this user may not write into the Windows directory, where an administrator has
/// written the two roots.
class OrdinaryWindowsUser : public test::TestPlatform {
 public:
  OrdinaryWindowsUser() : before_(SetCurrentPlatform(this)) { AdministratorWrites(kOfAll); }
  ~OrdinaryWindowsUser() override { SetCurrentPlatform(before_); }

  [[nodiscard]] std::string OwnWindowsDirectory() override { return R"(c:\users\anna\tarvell)"; }
  [[nodiscard]] std::error_code MayChange(const fs::path& folder) override {
    return Refuses(folder) ? Refused() : TestPlatform::MayChange(folder);
  }
  [[nodiscard]] std::error_code OpenInPlace(const fs::path& path,
                                            std::unique_ptr<OutputFile>& file) override {
    return refusesFile && Refuses(path.parent_path()) ? Refused()
                                                      : TestPlatform::OpenInPlace(path, file);
  }
  [[nodiscard]] std::error_code CreateTemporary(const fs::path& folder, fs::path& path,
                                                std::unique_ptr<OutputFile>& file) override {
    return Refuses(folder) ? Refused() : TestPlatform::CreateTemporary(folder, path, file);
  }

  void AdministratorWrites(const Roots& roots) const {
    tree.Write(kIni, Lines(IniLines(roots.calibration, roots.stations)));
  }

  inline static const Roots kOfAll{"d:\\all", "d:\\stations"};
  TestTree tree;
  bool isAdministrator = false;
  bool refusesFile = true;

 private:
  [[nodiscard]] bool Refuses(const fs::path& folder) const {
    return !isAdministrator && folder.filename() == "windows";
  }
  static std::error_code Refused() { return std::make_error_code(std::errc::permission_denied); }

  Platform* before_;
};

constexpr const char* kOwnIni = R"(c:\users\anna\tarvell\tarvell.ini)";

TEST(WriteProfile, KeepsWhatAnOrdinaryWindowsUserHasChangedForThatUser) {
  OrdinaryWindowsUser user;
  user.tree.MakeFolders(R"(c:\users\anna)");
  ASSERT_EQ(ReadRoots(), user.kOfAll);
  EXPECT_EQ(WriteProfile("d:\\mine", "d:\\stations"),
            "You have no permission to write into c:\\windows, so the two directories are "
            R"(remembered only for you, in c:\users\anna\tarvell\tarvell.ini.)");
  // An empty root is the one that all users share.
  EXPECT_EQ(user.tree.Read(kOwnIni), Lines(IniLines("d:\\mine", "")));
  EXPECT_EQ(ReadRoots(), (Roots{"d:\\mine", "d:\\stations"}));
  // It is said once.
  EXPECT_EQ(WriteProfile("d:\\other", "d:\\stations"), "");
  EXPECT_EQ(ReadRoots(), (Roots{"d:\\other", "d:\\stations"}));
  EXPECT_EQ(user.tree.Read(kIni), Lines(IniLines("d:\\all", "d:\\stations")));
}

TEST(WriteProfile, LetsAnOrdinaryWindowsUserFollowEveryRootThatTheUserHasNotChanged) {
  OrdinaryWindowsUser user;
  user.tree.MakeFolders(R"(c:\users\anna)");
  ASSERT_EQ(ReadRoots(), user.kOfAll);
  // The administrator changes both while the user's program runs.
  user.AdministratorWrites({"e:\\new", "e:\\stations"});
  EXPECT_EQ(WriteProfile("d:\\all", "d:\\stations"), "");
  EXPECT_FALSE(user.tree.Exists(kOwnIni));
  EXPECT_EQ(ReadRoots(), (Roots{"e:\\new", "e:\\stations"}));

  WriteProfile("d:\\mine", "e:\\stations");
  user.AdministratorWrites({"f:\\newer", "f:\\stations"});
  EXPECT_EQ(ReadRoots(), (Roots{"d:\\mine", "f:\\stations"}));
  WriteProfile("d:\\mine", "f:\\stations");
  EXPECT_EQ(user.tree.Read(kOwnIni), Lines(IniLines("d:\\mine", "")));
  // Who goes back to the shared root follows it again.
  WriteProfile("f:\\newer", "f:\\stations");
  user.AdministratorWrites({"g:\\newest", "f:\\stations"});
  EXPECT_EQ(ReadRoots(), (Roots{"g:\\newest", "f:\\stations"}));
}

TEST(WriteProfile, WritesForAllUsersWhereAWindowsUserMay) {
  OrdinaryWindowsUser user;
  user.tree.MakeFolders(R"(c:\users\anna)");
  ASSERT_EQ(ReadRoots(), user.kOfAll);
  WriteProfile("d:\\mine", "d:\\stations");
  user.isAdministrator = true;
  EXPECT_EQ(ReadRoots(), user.kOfAll);
  EXPECT_EQ(WriteProfile("e:\\new", "d:\\stations"), "");
  EXPECT_EQ(user.tree.Read(kIni), Lines(IniLines("e:\\new", "d:\\stations")));
  EXPECT_EQ(ReadRoots(), (Roots{"e:\\new", "d:\\stations"}));
  // One file for all in a folder that takes no other.
  user.isAdministrator = false;
  user.refusesFile = false;
  EXPECT_EQ(WriteProfile("f:\\newer", "d:\\stations"), "");
  EXPECT_EQ(user.tree.Read(kIni), Lines(IniLines("f:\\newer", "d:\\stations")));
}

TEST(WriteProfile, MakesNoFileForAWindowsUserWhoHasChangedNothing) {
  OrdinaryWindowsUser user;
  user.tree.MakeFolders(R"(c:\users\anna)");
  fs::remove(user.tree.Native(kIni));
  ASSERT_EQ(ReadRoots(), kDefaults);
  EXPECT_EQ(WriteProfile("c:\\calfactors", "c:\\stations"), "");
  EXPECT_FALSE(user.tree.Exists(kOwnIni));
  EXPECT_NE(WriteProfile("c:\\calfactors", "d:\\mine"), "");
  EXPECT_EQ(ReadRoots(), (Roots{"c:\\calfactors", "d:\\mine"}));
}

TEST(ReadProfile, ReadsWhatWasWritten) {
  const TestTree tree;
  tree.MakeFolders("c:\\windows");
  for (const Roots& written :
       {Roots{"d:\\cal data\\new", "/srv/stations"}, Roots{"c:\\a=b;c", "[x]"},
        Roots{"  c:\\leading", "\tc:\\tab"}, Roots{R"(c:\"quoted")", R"("c:\x")"},
        Roots{"c:\\\u00FCber \u03A9", "c:\\\u20AC"}}) {
    WriteProfile(written.calibration, written.stations);
    EXPECT_EQ(ReadRoots(), written);
  }
}

TEST(ReadProfile, GivesTheDefaultsForAMissingFileAFolderAShortFileAndAnEmptyRoot) {
  const TestTree tree;
  EXPECT_EQ(ReadRoots(), kDefaults);
  EXPECT_FALSE(tree.Exists(kIni));
  std::vector<std::string> lines = IniLines("d:\\cal", "d:\\sta");
  while (!lines.empty()) {
    lines.pop_back();
    SCOPED_TRACE(lines.size());
    EXPECT_EQ(RootsOf(tree, Lines(lines)), kDefaults);
  }
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("   ", "d:\\sta"))), (Roots{"c:\\calfactors", "d:\\sta"}));
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("d:\\cal", ""))), (Roots{"d:\\cal", "c:\\stations"}));
  fs::remove(tree.Native(kIni));
  tree.MakeFolders(kIni);
  EXPECT_EQ(ReadRoots(), kDefaults);
}

TEST(ReadProfile, SkipsFourCharactersWhateverTheyAreAndEndsARootAtANul) {
  const TestTree tree;
  EXPECT_EQ(RootsOfLines(tree, "PathX", "\xC2\xB5\xC2\xB5\xC2\xB5\xC2\xB5Y"), (Roots{"X", "Y"}));
  EXPECT_EQ(RootsOfLines(tree, "Path", "Dir"), kDefaults);
  EXPECT_EQ(RootsOfLines(tree, std::string("Dir=c:\\a  \0junk", 15), std::string("Dir=\0junk", 9)),
            (Roots{"c:\\a", "c:\\stations"}));
}

TEST(ReadProfile, CountsItemsWhichACommaEnds) {
  const TestTree tree;
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("d:\\cal", "c:\\a,b"))), (Roots{"d:\\cal", "c:\\a"}));
  // The rest of the line counts as an item, so that item 11 is the line "[Stations]".
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("c:\\a,b", "d:\\sta"))), (Roots{"c:\\a", "tions]"}));

  std::vector<std::string> lines = IniLines("d:\\cal", "d:\\sta");
  lines.insert(lines.begin() + 5, "Remark=1");
  EXPECT_EQ(RootsOf(tree, Lines(lines)), (Roots{"factors]", "tions]"}));
}

TEST(DirectoryNotice, SaysWhatTheNextStartReadsInsteadOfADirectoryWithAComma) {
  for (const char* kept : {"c:\\a", "", " ", "c:\\\"a;b.c\""}) {
    EXPECT_EQ(CalibrationDirNotice(kept), "");
    EXPECT_EQ(StationDirNotice(kept), "");
  }
  EXPECT_EQ(CalibrationDirNotice("c:\\a,b"),
            "The calibration data directory holds a comma. The next start reads \"c:\\a\" in its "
            "place, and a wrong station data directory. Choose one without a comma.");
  EXPECT_EQ(StationDirNotice("c:\\a \t,b,c"),
            "The station data directory holds a comma. The next start reads \"c:\\a\" in its "
            "place. Choose one without a comma.");
  EXPECT_TRUE(Contains(CalibrationDirNotice(" ,c"), "reads \"c:\\calfactors\""));
  // The notice agrees with what is read.
  const TestTree tree;
  for (const std::string directory : {"c:\\a,b", "c:\\a \t,b,c", " ,c", ",", "c:\\a ,"}) {
    WriteProfile("c:\\cal", directory);
    EXPECT_TRUE(Contains(StationDirNotice(directory), "reads \"" + ReadRoots().stations + "\""))
        << directory;
  }
}

// 0xFC and 0x80 are a letter and the Euro sign in Windows-1252, and invalid in UTF-8.
TEST(ReadProfile, ReadsAFileThatIsNotUtf8AsWindows1252) {
  const TestTree tree;
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("d:\\Pr\xFC", "d:\\\x80"))),
            (Roots{"d:\\Pr\u00FC", "d:\\\u20AC"}));
  // One root that is not UTF-8 decides for both.
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("d:\\\xFC", "d:\\\xC3\xBC"))),
            (Roots{"d:\\\u00FC", "d:\\\u00C3\u00BC"}));
}

}  // namespace
}  // namespace tarvell
