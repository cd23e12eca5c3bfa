// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "core/station/StationFilesStage.h"
#include "support/OrdinaryUser.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

// ---- Lists.

TEST_F(StationFiles, EveryNameWithoutADotIsAStation) {
  tree_.MakeFolders("c:\\stations\\rack 2");
  tree_.MakeFolders("c:\\stations\\with.dot");
  tree_.Write("c:\\stations\\NOTES", "x");
  tree_.Write("c:\\stations\\notes.txt", "x");
  tree_.Write("c:\\stations\\INDEX", "x");
  fs::create_directory_symlink(tree_.Native("c:\\"), tree_.Native("c:\\stations\\LINK"));
  EXPECT_EQ(Sorted(ListStations(kRoot)), (Names{"LINK", "NOTES", "ST1", "rack 2"}));
}

TEST_F(StationFiles, OnlyTheExactNameIsTheIndex) {
  tree_.MakeFolders("c:\\stations\\index");
  EXPECT_EQ(Sorted(ListStations(kRoot)), (Names{"ST1", "index"}));
  tree_.Write(R"(c:\stations\ST1\Index)", "x");
  tree_.Write(kIndex, "x");
  EXPECT_EQ(ListInstruments(kStation), Names{"Index"});
}

TEST_F(StationFiles, WithoutTheExactNameTheFileThatSavingWouldReplaceIsTheIndex) {
  tree_.Write(R"(c:\stations\index)", "x");
  EXPECT_EQ(ListStations(kRoot), Names{"ST1"});
  tree_.Write(R"(c:\stations\ST1\Index)", "x");
  tree_.Write(kFile, "x");
  EXPECT_EQ(ListInstruments(kStation), Names{"PX12A"});
}

TEST_F(StationFiles, EveryOrdinaryFileIsAnInstrument) {
  tree_.Write(kFile, "x");
  tree_.Write(R"(c:\stations\ST1\PX13A.old)", "x");
  tree_.Write(R"(c:\stations\ST1\No Model)", "x");
  tree_.Write(kIndex, "x");
  tree_.MakeFolders(R"(c:\stations\ST1\folder)");
  ASSERT_EQ(::mkfifo(tree_.Native(R"(c:\stations\ST1\pipe)").c_str(), 0600), 0);
  EXPECT_EQ(Sorted(ListInstruments(kStation)), (Names{"No Model", "PX12A", "PX13A.old"}));
}

TEST_F(StationFiles, NothingThereIsAnEmptyList) {
  EXPECT_EQ(ListInstruments(kStation), Names{});
  fs::remove(tree_.Native(kStation));
  EXPECT_EQ(ListStations(kRoot), Names{});
}

TEST_F(StationFiles, AFolderThatVanishedIsAnError) {
  for (const char* folder : {R"(c:\stations\GONE)", R"(c:\gone)"}) {
    for (const auto& list : {ListStations, ListInstruments}) {
      const Error error = ErrorOf([&] { static_cast<void>(list(folder)); });
      EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
      EXPECT_EQ(error.Path(), folder);
      EXPECT_TRUE(Contains(error.Text(), "Cannot list the folder")) << error.Text();
    }
  }
}

// ---- Making a station.

TEST_F(StationFiles, AStationIsAFolder) {
  MakeStation(kRoot, "ST2");
  MakeStation(kRoot, " rack 2");
  MakeStation(kRoot, "Caf\u00E9");
  MakeStation(kRoot, "No Stations");
  EXPECT_EQ(tree_.Names(kRoot), (Names{" rack 2", "Caf\u00E9", "No Stations", "ST1", "ST2"}));
  EXPECT_TRUE(fs::is_directory(tree_.Native("c:\\stations\\ST2")));
  EXPECT_TRUE(fs::is_empty(tree_.Native("c:\\stations\\ST2")));
}

TEST_F(StationFiles, AStationThatIsNoFolderNameIsRefused) {
  const std::vector<std::pair<std::string, std::string>> names = {
      {"", "it is empty"},
      {".", "it means a folder itself"},
      {"..", "it means a folder itself"},
      {"a/b", "it holds the character \"/\""},
      {"a\\b", "it holds the character \"\\\""},
      {"..\\up", "it holds the character \"\\\""},
      {"../up", "it holds the character \"/\""},
      {"c:\\up", "it holds the character \":\""},
      {"a*b", "it holds the character \"*\""},
      {"a?b", "it holds the character \"?\""},
      {"a\"b", "it holds the character \" (double quote)"},
      {"a<b", "it holds the character \"<\""},
      {"a>b", "it holds the character \">\""},
      {"a|b", "it holds the character \"|\""},
      {"a\nb", "it holds a control character (number 10)"},
      {"a\x7F", "it holds a control character (number 127)"},
      {"a.", "it ends with the character \".\""},
      {"a ", "it ends with a blank"},
      {" ", "it ends with a blank"},
      {"NUL", "it is the name of a device"},
      {"com1", "it is the name of a device"},
      {"Lpt9", "it is the name of a device"},
      {"aux.x", "it is the name of a device"}};
  for (const auto& [name, why] : names) {
    ExpectRefusedStation(name, ErrorKind::Name, why);
  }
}

TEST_F(StationFiles, AStationThatNoListWouldShowIsRefused) {
  ExpectRefusedStation("rack.2", ErrorKind::Name,
                       "The station name \"rack.2\" holds the character \".\": the station list "
                       "would never show it");
  for (const char* name : {"INDEX", "index", "Index"}) {
    ExpectRefusedStation(
        name, ErrorKind::Name,
        "The station name \"" + std::string(name) + "\" is the name of the list of stations");
  }
}

TEST_F(StationFiles, AStationThatTheIndexCannotHoldIsRefused) {
  ExpectRefusedStation("10 k\u03A9", ErrorKind::Character, "\u03A9");
}

TEST_F(StationFiles, AStationThatIsThereIsRefused) {
  tree_.Write(R"(c:\stations\ST1\PX12A)", kOld);
  tree_.Write("c:\\stations\\NOTES", "x");
  for (const char* name : {"ST1", "st1", "St1", "NOTES", "notes"}) {
    ExpectRefusedStation(name, ErrorKind::Name, "there is one of this name already");
  }
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\PX12A)"), kOld);
}

TEST_F(StationFiles, AStationNeedsItsRoot) {
  const Error error = ErrorOf([] { MakeStation("c:\\gone", "ST1"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_FALSE(tree_.Exists("c:\\gone"));
}

TEST_F(StationFiles, AStationNameThatIsTooLongIsRefused) {
  ExpectRefusedStation(std::string(300, 'x'), ErrorKind::Name, "its name is too long");
}

TEST_F(StationFiles, AReadOnlyRootTakesNoStation) {
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(kRoot));
  ExpectRefusedStation("ST2", ErrorKind::NoPermission, "you have no permission");
}

// ---- Deleting.

TEST_F(StationFiles, OneInstrumentIsDeleted) {
  tree_.Write(kFile, "x");
  tree_.Write(R"(c:\stations\ST1\PX13A)", "x");
  tree_.Write(kIndex, "x");
  DeleteInstrumentFile(kStation, "PX12A");
  EXPECT_EQ(tree_.Names(kStation), (Names{"INDEX", "PX13A"}));
}

TEST_F(StationFiles, DeletingWhatIsNotThereChangesNothing) {
  tree_.Write(R"(c:\stations\ST1\PX13A)", "x");
  EXPECT_NO_THROW(DeleteInstrumentFile(kStation, "PX12A"));
  EXPECT_EQ(tree_.Names(kStation), Names{"PX13A"});
}

TEST_F(StationFiles, DeletingUnderANameTooLongForAFileChangesNothing) {
  tree_.Write(R"(c:\stations\ST1\PX13A)", "x");
  EXPECT_NO_THROW(DeleteInstrumentFile(kStation, std::string(300, 'P')));
  EXPECT_EQ(tree_.Names(kStation), Names{"PX13A"});
}

TEST_F(StationFiles, DeletingALinkKeepsWhatItLeadsTo) {
  tree_.Write(R"(c:\other\PX12A)", kOld);
  fs::create_symlink(tree_.Native(R"(c:\other\PX12A)"), tree_.Native(kFile));
  DeleteInstrumentFile(kStation, "PX12A");
  EXPECT_EQ(tree_.Names(kStation), Names{});
  EXPECT_EQ(tree_.Read(R"(c:\other\PX12A)"), kOld);
  fs::create_symlink("nowhere", tree_.Native(kFile));
  DeleteInstrumentFile(kStation, "PX12A");
  EXPECT_EQ(tree_.Names(kStation), Names{});
}

TEST_F(StationFiles, NothingOutsideTheStationIsDeleted) {
  tree_.Write("c:\\stations\\NOTES", "x");
  tree_.Write(kFile, "x");
  for (const char* model : {"", ".", "..", "..\\NOTES", "../NOTES", "c:\\stations\\NOTES",
                            "/stations/NOTES", "*", "PX12?", "PX12A\\", "PX12A.", "PX12A "}) {
    SCOPED_TRACE(model);
    EXPECT_EQ(ErrorOf([&] { DeleteInstrumentFile(kStation, model); }).Kind(), ErrorKind::Name);
  }
  EXPECT_EQ(tree_.Names(kRoot), (Names{"NOTES", "ST1"}));
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
}

TEST_F(StationFiles, ClearingDeletesEveryFileAndNothingElse) {
  tree_.Write(kFile, "x");
  tree_.Write(R"(c:\stations\ST1\PX13A.old)", "x");
  tree_.Write(kIndex, "x");
  tree_.Write(R"(c:\stations\ST1\folder\inside)", "x");
  tree_.Write(R"(c:\other\PX60G)", kOld);
  tree_.Write("c:\\stations\\NOTES", "x");
  fs::create_symlink(tree_.Native(R"(c:\other\PX60G)"), tree_.Native(R"(c:\stations\ST1\PX60G)"));
  fs::create_directory_symlink(tree_.Native("c:\\other"), tree_.Native(R"(c:\stations\ST1\away)"));
  DeleteAllInstrumentFiles(kStation);
  EXPECT_EQ(tree_.Names(kStation), (Names{"away", "folder"}));
  EXPECT_EQ(tree_.Names(R"(c:\stations\ST1\folder)"), Names{"inside"});
  EXPECT_EQ(tree_.Read(R"(c:\other\PX60G)"), kOld);
  EXPECT_EQ(tree_.Names("c:\\other"), Names{"PX60G"});
  EXPECT_EQ(tree_.Names(kRoot), (Names{"NOTES", "ST1"}));
}

TEST_F(StationFiles, ClearingAnEmptyStationIsNoError) {
  EXPECT_NO_THROW(DeleteAllInstrumentFiles(kStation));
  EXPECT_TRUE(tree_.Exists(kStation));
}

TEST_F(StationFiles, ClearingAStationThatVanishedIsAnError) {
  const Error error = ErrorOf([] { DeleteAllInstrumentFiles(R"(c:\stations\GONE)"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_EQ(tree_.Names(kRoot), Names{"ST1"});
}

TEST_F(StationFiles, DeletingInAReadOnlyFolderIsAnError) {
  tree_.Write(kFile, kOld);
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(kStation));
  EXPECT_EQ(ErrorOf([] { DeleteInstrumentFile(kStation, "PX12A"); }).Kind(),
            ErrorKind::NoPermission);
  EXPECT_EQ(ErrorOf([] { DeleteAllInstrumentFiles(kStation); }).Kind(), ErrorKind::NoPermission);
  EXPECT_EQ(tree_.Read(kFile), kOld);
}

}  // namespace
}  // namespace tarvell
