// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "core/session/Profiles.h"
#include "core/session/Version.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

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

void PrintTo(const Roots& roots, std::ostream* out) {
  *out << roots.calibration << " | " << roots.stations;
}

const Roots kDefaults{"c:\\calfactors", "c:\\stations"};

Roots RootsOf(const TestTree& tree, std::string_view bytes) {
  tree.Write(kIni, bytes);
  Roots roots;
  ReadProfile(roots.calibration, roots.stations);
  return roots;
}

TEST(WriteProfile, WritesElevenLinesToTheWindowsDirectory) {
  const TestTree tree;
  tree.Write(kIni, std::string(5000, 'x'));
  EXPECT_EQ(GetWindowsDir(), "c:\\windows");
  WriteProfile("c:\\calfactors", "d:\\my stations");
  std::vector<std::string> lines = IniLines("c:\\calfactors", "d:\\my stations");
  const auto twoDigits = [](int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
  };
  lines[4] = "SysRevision=A." + twoDigits(kMajorVersion) + "." + twoDigits(kMinorVersion);
  EXPECT_EQ(tree.Read(kIni), Lines(lines));
  EXPECT_EQ(tree.Names("c:\\windows"), std::vector<std::string>{"tarvell.ini"});
}

TEST(WriteProfile, MakesTheWindowsDirectoryOnAnEmptyDrive) {
  const TestTree tree;
  WriteProfile("c:\\calfactors", "c:\\stations");
  EXPECT_TRUE(tree.Exists(kIni));
}

TEST(ReadProfile, ReadsWhatWasWritten) {
  const TestTree tree;
  tree.MakeFolders("c:\\windows");
  for (const Roots& written :
       {Roots{"c:\\calfactors", "c:\\stations"}, Roots{"d:\\cal data\\new", "e:\\s"},
        Roots{"/srv/cal", "/srv/stations"}, Roots{"x", "y"}, Roots{"c:\\a=b;c", "[x]"},
        Roots{"  c:\\leading", "\tc:\\tab"}, Roots{R"(c:\"quoted")", R"("c:\x")"},
        Roots{"c:\\\u00FCber \u03A9", "c:\\\u20AC"}}) {
    WriteProfile(written.calibration, written.stations);
    EXPECT_TRUE(tree.Read(kIni).ends_with("Dir=" + written.stations + "\r\n"));
    Roots roots;
    ReadProfile(roots.calibration, roots.stations);
    EXPECT_EQ(roots, written);
  }
}

TEST(ReadProfile, GivesTheDefaultsForAMissingFileAndDoesNotMakeIt) {
  const TestTree tree;
  Roots roots;
  ReadProfile(roots.calibration, roots.stations);
  EXPECT_EQ(roots, kDefaults);
  EXPECT_FALSE(tree.Exists(kIni));
}

TEST(ReadProfile, GivesBothDefaultsForAShortFile) {
  const TestTree tree;
  std::vector<std::string> lines = IniLines("d:\\cal", "d:\\sta");
  while (!lines.empty()) {
    lines.pop_back();
    SCOPED_TRACE(lines.size());
    EXPECT_EQ(RootsOf(tree, Lines(lines)), kDefaults);
  }
}

TEST(ReadProfile, GivesTheDefaultForAnEmptyRoot) {
  const TestTree tree;
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("", ""))), kDefaults);
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("   ", "   "))), kDefaults);
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("", "d:\\sta"))), (Roots{"c:\\calfactors", "d:\\sta"}));
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("d:\\cal", ""))), (Roots{"d:\\cal", "c:\\stations"}));
}

TEST(ReadProfile, SkipsFourCharactersWhateverTheyAre) {
  const TestTree tree;
  std::vector<std::string> lines = IniLines("", "");
  lines[7] = "PathX";
  lines[10] = "\xC2\xB5\xC2\xB5\xC2\xB5\xC2\xB5Y";
  EXPECT_EQ(RootsOf(tree, Lines(lines)), (Roots{"X", "Y"}));
  lines[7] = "Path";
  lines[10] = "Dir";
  EXPECT_EQ(RootsOf(tree, Lines(lines)), kDefaults);
}

TEST(ReadProfile, EndsARootAtItsCommaAndReadsOnAfterIt) {
  const TestTree tree;
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("d:\\cal", "c:\\a,b"))), (Roots{"d:\\cal", "c:\\a"}));
  // The rest of the line counts as an item, so that item 11 is the line "[Stations]".
  EXPECT_EQ(RootsOf(tree, Lines(IniLines("c:\\a,b", "d:\\sta"))), (Roots{"c:\\a", "tions]"}));
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
  EXPECT_TRUE(CalibrationDirNotice(" ,c").find("reads \"c:\\calfactors\"") != std::string::npos);
  // The notice agrees with what is read.
  const TestTree tree;
  for (const std::string directory : {"c:\\a,b", "c:\\a \t,b,c", " ,c", ",", "c:\\a ,"}) {
    WriteProfile("c:\\cal", directory);
    Roots roots;
    ReadProfile(roots.calibration, roots.stations);
    EXPECT_TRUE(StationDirNotice(directory).find("reads \"" + roots.stations + "\"") !=
                std::string::npos)
        << directory;
  }
}

TEST(ReadProfile, CountsItemsWhateverTheySay) {
  const TestTree tree;
  std::vector<std::string> lines = IniLines("d:\\cal", "d:\\sta");
  lines.insert(lines.begin() + 5, "Remark=1");
  EXPECT_EQ(RootsOf(tree, Lines(lines)), (Roots{"factors]", "tions]"}));
}

TEST(ReadProfile, EndsARootAtANul) {
  const TestTree tree;
  std::vector<std::string> lines = IniLines("", "");
  lines[7] = std::string("Dir=c:\\a  \0junk", 15);
  lines[10] = std::string("Dir=\0junk", 9);
  EXPECT_EQ(RootsOf(tree, Lines(lines)), (Roots{"c:\\a", "c:\\stations"}));
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

TEST(ReadProfile, GivesTheDefaultsWhereThereIsAFolder) {
  const TestTree tree;
  tree.MakeFolders(kIni);
  Roots roots;
  ReadProfile(roots.calibration, roots.stations);
  EXPECT_EQ(roots, kDefaults);
}

}  // namespace
}  // namespace tarvell
