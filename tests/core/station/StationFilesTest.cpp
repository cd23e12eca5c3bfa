// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/station/StationFilesStage.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

// ---- Writing an instrument.

TEST_F(StationFiles, AnInstrumentIsTwelveLines) {
  Save(SampleInstrument());
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
  EXPECT_EQ(tree_.Read(kFile), kSampleInstrumentFile);
}

TEST_F(StationFiles, AnEmptyFieldLeavesItsKeywordAndOneBlank) {
  Save(With({{&StationInstrument::ModelNumber, "X"}}));
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\X)"),
            "MODEL NUMBER X\r\nSERIAL NUMBER \r\nADDRESS TYPE \r\nADDRESS \r\nSTATION \r\n"
            "OPTIONS \r\nAVAILABILITY \r\nCAL DUE DATE   \r\nASSET \r\nTRACE \r\nCOMMENT \r\n"
            "CAL DATA \r\n");
}

TEST_F(StationFiles, OnlyThePartsOfTheDueDateAreTrimmed) {
  StationInstrument instrument = SampleInstrument();
  instrument.ModelNumber = " PX12A";
  instrument.SerialNumber = " 12 ";
  instrument.AddressType = " GPIO ";
  instrument.Address = " 13 ";
  instrument.DueDay = " 05 ";
  instrument.DueMonth = " MAR ";
  instrument.DueYear = " 2002 ";
  instrument.Comment = "  two  blanks ";
  Save(instrument);
  EXPECT_EQ(tree_.Names(kStation), Names{" PX12A"});
  EXPECT_EQ(
      tree_.Read(R"(c:\stations\ST1\ PX12A)"),
      Lines({"MODEL NUMBER  PX12A", "SERIAL NUMBER  12 ", "ADDRESS TYPE  GPIO ", "ADDRESS  13 ",
             "STATION rack 2", "OPTIONS 001", "AVAILABILITY yes", "CAL DUE DATE 05 MAR 2002",
             "ASSET A-77", "TRACE lab 4", "COMMENT   two  blanks ", "CAL DATA own file"}));
}

TEST_F(StationFiles, AFieldIsWrittenInTheBytesOfTheFiles) {
  StationInstrument instrument = SampleInstrument();
  instrument.Comment = "5 \u00B5W at 20 \u20AC, \"caf\u00E9\"";
  Save(instrument);
  EXPECT_TRUE(Contains(tree_.Read(kFile), "COMMENT 5 \xB5W at 20 \x80, \"caf\xE9\"\r\n"));
}

TEST_F(StationFiles, AnEarlierFileIsReplacedWhole) {
  tree_.Write(kFile, std::string(5000, 'x'));
  Save(SampleInstrument());
  const std::string bytes = tree_.Read(kFile);
  EXPECT_EQ(bytes.substr(0, 20), "MODEL NUMBER PX12A\r\n");
  EXPECT_EQ(bytes.substr(bytes.size() - 19), "CAL DATA own file\r\n");
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
}

TEST_F(StationFiles, AModelThatIsNoFileNameIsRefused) {
  ExpectRefusedModel("", "it is empty");
  ExpectRefusedModel("..", "it means a folder itself");
  ExpectRefusedModel(".", "it means a folder itself");
  ExpectRefusedModel("a/b", "it holds the character \"/\"");
  ExpectRefusedModel("a\\b", "it holds the character \"\\\"");
  ExpectRefusedModel("..\\b", "it holds the character \"\\\"");
  ExpectRefusedModel("a:b", "it holds the character \":\"");
  ExpectRefusedModel("a*", "it holds the character \"*\"");
  ExpectRefusedModel("a?", "it holds the character \"?\"");
  ExpectRefusedModel("a\"", "it holds the character \" (double quote)");
  ExpectRefusedModel("a<b", "it holds the character \"<\"");
  ExpectRefusedModel("a>b", "it holds the character \">\"");
  ExpectRefusedModel("a|b", "it holds the character \"|\"");
  ExpectRefusedModel("a\tb", "it holds a control character (number 9)");
  ExpectRefusedModel("PX12A.", "it ends with the character \".\"");
  ExpectRefusedModel("PX12A ", "it ends with a blank");
  ExpectRefusedModel("CON", "it is the name of a device");
  ExpectRefusedModel("lpt1.x", "it is the name of a device");
}

TEST_F(StationFiles, TheIndexIsNoInstrument) {
  tree_.Write(kIndex, "INDEX\r\n");
  for (const char* model : {"INDEX", "index", "Index"}) {
    ExpectRefusedModel(model, "it is the name of the station's list of instruments");
    EXPECT_EQ(ErrorOf([&] { DeleteInstrumentFile(kStation, model); }).Kind(), ErrorKind::Name);
  }
  EXPECT_EQ(tree_.Read(kIndex), "INDEX\r\n");
}

TEST_F(StationFiles, AModelWithADotIsAFileLikeAnyOther) {
  StationInstrument instrument = SampleInstrument();
  instrument.ModelNumber = "PX12A.1";
  Save(instrument);
  EXPECT_EQ(ListInstruments(kStation), Names{"PX12A.1"});
}

TEST_F(StationFiles, ACharacterThatTheFileCannotHoldIsNamed) {
  tree_.Write(kFile, kOld);
  for (std::string StationInstrument::*field :
       {&StationInstrument::SerialNumber, &StationInstrument::AddressType,
        &StationInstrument::Address, &StationInstrument::Station, &StationInstrument::Options,
        &StationInstrument::Availability, &StationInstrument::DueMonth, &StationInstrument::Asset,
        &StationInstrument::Trace, &StationInstrument::Comment, &StationInstrument::CalData}) {
    StationInstrument instrument = SampleInstrument();
    instrument.*field = "10 k\u03A9";
    const Error error = ErrorOf([&] { Save(instrument); });
    EXPECT_EQ(error.Kind(), ErrorKind::Character);
    EXPECT_TRUE(Contains(error.Text(), "\u03A9")) << error.Text();
    instrument.*field = "two\r\nlines";
    EXPECT_EQ(ErrorOf([&] { Save(instrument); }).Kind(), ErrorKind::Character);
  }
  EXPECT_EQ(tree_.Read(kFile), kOld);
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
}

TEST_F(StationFiles, AFullDiskKeepsTheEarlierFile) {
  tree_.Write(kFile, kOld);
  FullDisk disk;
  const Error error = ErrorOf([&] { Save(SampleInstrument()); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_TRUE(Contains(error.Text(), "the disk is full")) << error.Text();
  EXPECT_GT(disk.refused, 0);
  EXPECT_EQ(tree_.Read(kFile), kOld);
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
  disk.isFull = false;
  Save(SampleInstrument());
  EXPECT_EQ(tree_.Read(kFile).substr(0, 20), "MODEL NUMBER PX12A\r\n");
}

TEST_F(StationFiles, AFullDiskKeepsBothEarlierIndexFiles) {
  tree_.Write(kIndex, "PX9\r\nINDEX\r\n");
  tree_.Write("c:\\stations\\INDEX", "ST9\r\n");
  const FullDisk disk;
  EXPECT_EQ(ErrorOf([] { WriteStationInstrumentIndex(kStation, {"PX12A"}); }).Kind(),
            ErrorKind::WriteFailed);
  EXPECT_EQ(ErrorOf([] { WriteStationIndex(kRoot, {"ST1"}); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(disk.refused, 2);
  EXPECT_EQ(tree_.Read(kIndex), "PX9\r\nINDEX\r\n");
  EXPECT_EQ(tree_.Read("c:\\stations\\INDEX"), "ST9\r\n");
}

TEST_F(StationFiles, AReadOnlyFolderTakesNoNewInstrument) {
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(kStation));
  const Error error = ErrorOf([&] { Save(SampleInstrument()); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_TRUE(Contains(error.Text(), "you have no permission")) << error.Text();
  EXPECT_EQ(tree_.Names(kStation), Names{});
}

TEST_F(StationFiles, AStationThatVanishedIsNotMadeAgainBySaving) {
  fs::remove(tree_.Native(kStation));
  const Error error = ErrorOf([&] { Save(SampleInstrument()); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_TRUE(Contains(error.Text(), "does not exist")) << error.Text();
  EXPECT_EQ(tree_.Names(kRoot), Names{});
}

// ---- The INDEX files.

TEST_F(StationFiles, TheIndexOfTheRootHasOneNamePerLine) {
  WriteStationIndex(kRoot, {"ST2", "ST1", "rack 2"});
  EXPECT_EQ(tree_.Read("c:\\stations\\INDEX"), "ST2\r\nST1\r\nrack 2\r\n");
  WriteStationIndex(kRoot, {"ST1"});
  EXPECT_EQ(tree_.Read("c:\\stations\\INDEX"), "ST1\r\n");
  WriteStationIndex(kRoot, {});
  EXPECT_EQ(tree_.Read("c:\\stations\\INDEX"), "");
}

TEST_F(StationFiles, TheIndexOfAStationNamesItselfLast) {
  WriteStationInstrumentIndex(kStation, {"PX13A", "PX12A", "RT 730.A"});
  EXPECT_EQ(tree_.Read(kIndex), "PX13A\r\nPX12A\r\nRT 730.A\r\nINDEX\r\n");
  WriteStationInstrumentIndex(kStation, {"PX12A"});
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
  WriteStationInstrumentIndex(kStation, {});
  EXPECT_EQ(tree_.Read(kIndex), "INDEX\r\n");
}

TEST_F(StationFiles, TheIndexFilesAreWrittenInTheBytesOfTheFiles) {
  WriteStationIndex(kRoot, {"Caf\u00E9"});
  EXPECT_EQ(tree_.Read("c:\\stations\\INDEX"), "Caf\xE9\r\n");
  WriteStationInstrumentIndex(kStation, {"\u00B5W"});
  EXPECT_EQ(tree_.Read(kIndex), "\xB5W\r\nINDEX\r\n");
}

}  // namespace
}  // namespace tarvell
