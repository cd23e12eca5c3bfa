// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "core/station/StationFilesStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

// ---- Lists.

TEST_F(StationFiles, ListEveryNameWithoutADotAsAStation) {
  tree_.MakeFolders("c:\\stations\\rack 2");
  tree_.MakeFolders("c:\\stations\\with.dot");
  tree_.Write("c:\\stations\\NOTES", "x");
  tree_.Write("c:\\stations\\notes.txt", "x");
  tree_.Write("c:\\stations\\INDEX", "x");
  fs::create_directory_symlink(tree_.Native("c:\\"), tree_.Native("c:\\stations\\LINK"));
  EXPECT_EQ(Sorted(ListStations(kRoot)), (Names{"LINK", "NOTES", "ST1", "rack 2"}));
}

TEST_F(StationFiles, LeaveOutOnlyTheIndexThatSavingWouldReplace) {
  tree_.MakeFolders("c:\\stations\\index");
  EXPECT_EQ(Sorted(ListStations(kRoot)), (Names{"ST1", "index"}));
  tree_.Write(R"(c:\stations\ST1\Index)", "x");
  tree_.Write(kFile, "x");
  EXPECT_EQ(ListInstruments(kStation), Names{"PX12A"});
  tree_.Write(kIndex, "x");
  EXPECT_EQ(Sorted(ListInstruments(kStation)), (Names{"Index", "PX12A"}));
}

TEST_F(StationFiles, ListEveryOrdinaryFileAsAnInstrument) {
  tree_.Write(kFile, "x");
  tree_.Write(R"(c:\stations\ST1\PX13A.old)", "x");
  tree_.Write(R"(c:\stations\ST1\No Model)", "x");
  tree_.Write(kIndex, "x");
  tree_.MakeFolders(R"(c:\stations\ST1\folder)");
  ASSERT_EQ(::mkfifo(tree_.Native(R"(c:\stations\ST1\pipe)").c_str(), 0600), 0);
  EXPECT_EQ(Sorted(ListInstruments(kStation)), (Names{"No Model", "PX12A", "PX13A.old"}));
}

TEST_F(StationFiles, ReportAMissingFolder) {
  for (const char* folder : {R"(c:\stations\GONE)", R"(c:\gone)"}) {
    for (const auto& list : {ListStations, ListInstruments}) {
      const Error error = ErrorOf([&] { static_cast<void>(list(folder)); });
      EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
      EXPECT_EQ(error.Path(), folder);
      EXPECT_TRUE(Contains(error.Text(), "Cannot list the folder")) << error.Text();
    }
    EXPECT_EQ(ErrorOf([&] { DeleteAllInstrumentFiles(folder); }).Kind(), ErrorKind::NotFound);
  }
}

// ---- Making a station.

TEST_F(StationFiles, MakeAFolderForAStation) {
  for (const char* name : {" rack 2", "Caf\u00E9"}) {
    MakeStation(kRoot, name);
    EXPECT_TRUE(fs::is_empty(tree_.Native(kRoot) / name));
  }
  EXPECT_EQ(tree_.Names(kRoot), (Names{" rack 2", "Caf\u00E9", "ST1"}));
}

TEST_F(StationFiles, RefuseAStationThatIsNoFolderNameOrExists) {
  tree_.Write("c:\\stations\\NOTES", "x");
  ExpectRefusedStation("../up", ErrorKind::Name, "it holds the character \"/\"");
  ExpectRefusedStation(std::string(300, 'x'), ErrorKind::Name, "its name is too long");
  ExpectRefusedStation("10 k\u03A9", ErrorKind::Character, "\u03A9");
  for (const char* name : {"ST1", "st1", "notes"}) {
    ExpectRefusedStation(name, ErrorKind::Name, "there is one of this name already");
  }
}

TEST_F(StationFiles, RefuseAStationThatNoListWouldShow) {
  ExpectRefusedStation("rack.2", ErrorKind::Name,
                       "The station name \"rack.2\" holds the character \".\": the station list "
                       "would never show it");
  for (const std::string name : {"INDEX", "Index"}) {
    ExpectRefusedStation(name, ErrorKind::Name,
                         "The station name \"" + name + "\" is the name of the list of stations");
  }
}

TEST_F(StationFiles, MakeNoRoot) {
  const Error error = ErrorOf([] { MakeStation("c:\\gone", "ST1"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_FALSE(tree_.Exists("c:\\gone"));
}

// ---- Deleting.

TEST_F(StationFiles, DeleteOneInstrumentOrNothing) {
  tree_.Write(kFile, "x");
  tree_.Write(R"(c:\stations\ST1\PX13A)", "x");
  tree_.Write(kIndex, "x");
  DeleteInstrumentFile(kStation, "PX12A");
  EXPECT_EQ(tree_.Names(kStation), (Names{"INDEX", "PX13A"}));
  EXPECT_NO_THROW(DeleteInstrumentFile(kStation, "PX12A"));
  EXPECT_NO_THROW(DeleteInstrumentFile(kStation, std::string(300, 'P')));
  tree_.MakeFolders(R"(c:\stations\ST1\folder)");
  EXPECT_EQ(ErrorOf([] { DeleteInstrumentFile(kStation, "folder"); }).Kind(), ErrorKind::NotAFile);
  EXPECT_EQ(tree_.Names(kStation), (Names{"INDEX", "PX13A", "folder"}));
}

TEST_F(StationFiles, DeleteALinkAndKeepWhatItLeadsTo) {
  tree_.Write(R"(c:\other\PX12A)", kOld);
  for (const fs::path& target : {tree_.Native(R"(c:\other\PX12A)"), fs::path("nowhere")}) {
    fs::create_symlink(target, tree_.Native(kFile));
    DeleteInstrumentFile(kStation, "PX12A");
    EXPECT_EQ(tree_.Names(kStation), Names{});
  }
  EXPECT_EQ(tree_.Read(R"(c:\other\PX12A)"), kOld);
}

TEST_F(StationFiles, DeleteNothingOutsideTheStation) {
  tree_.Write("c:\\stations\\NOTES", "x");
  for (const char* model : {"", "..", "..\\NOTES", "../NOTES", "PX12?"}) {
    SCOPED_TRACE(model);
    EXPECT_EQ(ErrorOf([&] { DeleteInstrumentFile(kStation, model); }).Kind(), ErrorKind::Name);
  }
  EXPECT_EQ(tree_.Names(kRoot), (Names{"NOTES", "ST1"}));
}

TEST_F(StationFiles, DeleteEveryFileOfAStationAndNothingElse) {
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

}  // namespace
}  // namespace tarvell
