// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
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

/// A system on which this user may not write into the Windows directory.
class OrdinaryWindowsUser : public test::TestPlatform {
 public:
  OrdinaryWindowsUser() : before_(SetCurrentPlatform(this)) {}
  ~OrdinaryWindowsUser() override { SetCurrentPlatform(before_); }

  [[nodiscard]] std::string OwnWindowsDirectory() override { return R"(c:\users\anna\tarvell)"; }
  [[nodiscard]] std::error_code MayChange(const fs::path& folder) override {
    return mayWrite || folder.filename() != "windows"
               ? TestPlatform::MayChange(folder)
               : std::make_error_code(std::errc::permission_denied);
  }

  bool mayWrite = false;

 private:
  Platform* before_;
};

TEST(WriteProfile, KeepsTheRootsForOneUserWhoMayNotWriteIntoTheWindowsDirectory) {
  const TestTree tree;
  const Roots ofAll{"d:\\all", "d:\\stations"};
  WriteProfile(ofAll.calibration, ofAll.stations);
  tree.MakeFolders(R"(c:\users\anna)");
  OrdinaryWindowsUser user;
  EXPECT_EQ(ReadRoots(), ofAll);
  EXPECT_EQ(WriteProfile("d:\\mine", ofAll.stations),
            "You have no permission to write into c:\\windows, so the two directories are "
            R"(remembered only for you, in c:\users\anna\tarvell\tarvell.ini.)");
  EXPECT_EQ(ReadRoots(), (Roots{"d:\\mine", ofAll.stations}));
  // It is said once, and the user's own file stays in use.
  user.mayWrite = true;
  EXPECT_EQ(WriteProfile("d:\\other", ofAll.stations), "");
  EXPECT_EQ(ReadRoots(), (Roots{"d:\\other", ofAll.stations}));
  EXPECT_EQ(tree.Read(kIni), Lines(IniLines(ofAll.calibration, ofAll.stations)));
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
