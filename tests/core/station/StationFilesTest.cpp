// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/station/StationFilesStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

// ---- Writing an instrument.

TEST_F(StationFiles, WriteAnInstrumentAsTwelveLines) {
  Save(SampleInstrument());
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
  EXPECT_EQ(tree_.Read(kFile), kSampleInstrumentFile);
}

TEST_F(StationFiles, WriteAnEmptyFieldAsItsKeywordAndABlank) {
  Save(With({{&StationInstrument::ModelNumber, "X"}}));
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\X)"),
            "MODEL NUMBER X\r\nSERIAL NUMBER \r\nADDRESS TYPE \r\nADDRESS \r\nSTATION \r\n"
            "OPTIONS \r\nAVAILABILITY \r\nCAL DUE DATE   \r\nASSET \r\nTRACE \r\nCOMMENT \r\n"
            "CAL DATA \r\n");
}

TEST_F(StationFiles, TrimOnlyThePartsOfTheDueDate) {
  StationInstrument instrument = SampleInstrument();
  instrument.ModelNumber = " PX12A";
  instrument.SerialNumber = " 12 ";
  instrument.AddressType = " GPIO ";
  instrument.Address = " 13 ";
  instrument.DueDay = " 05 ";
  instrument.DueMonth = " MAR ";
  instrument.DueYear = " 2002 ";
  instrument.Comment = "  two  \u00B5W \u20AC ";
  Save(instrument);
  EXPECT_EQ(tree_.Names(kStation), Names{" PX12A"});
  EXPECT_EQ(
      tree_.Read(R"(c:\stations\ST1\ PX12A)"),
      Lines({"MODEL NUMBER  PX12A", "SERIAL NUMBER  12 ", "ADDRESS TYPE  GPIO ", "ADDRESS  13 ",
             "STATION rack 2", "OPTIONS 001", "AVAILABILITY yes", "CAL DUE DATE 05 MAR 2002",
             "ASSET A-77", "TRACE lab 4", "COMMENT   two  \xB5W \x80 ", "CAL DATA own file"}));
}

TEST_F(StationFiles, RefuseAModelNumberThatIsNoFileName) {
  ExpectRefusedModel("", "it is empty");
  ExpectRefusedModel("..", "it means a folder itself");
  ExpectRefusedModel("..\\b", "it holds the character \"\\\"");
  ExpectRefusedModel("lpt1.x", "it is the name of a device");
}

TEST_F(StationFiles, RefuseTheNameOfTheIndex) {
  tree_.Write(kIndex, "INDEX\r\n");
  for (const char* model : {"INDEX", "index", "Index"}) {
    ExpectRefusedModel(model, "it is the name of the station's list of instruments");
    EXPECT_EQ(ErrorOf([&] { DeleteInstrumentFile(kStation, model); }).Kind(), ErrorKind::Name);
  }
  EXPECT_EQ(tree_.Read(kIndex), "INDEX\r\n");
}

TEST_F(StationFiles, NameACharacterThatTheFileCannotHold) {
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

TEST_F(StationFiles, DoNotMakeAMissingStationAgain) {
  fs::remove(tree_.Native(kStation));
  const Error error = ErrorOf([&] { Save(SampleInstrument()); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_TRUE(Contains(error.Text(), "does not exist")) << error.Text();
  EXPECT_EQ(tree_.Names(kRoot), Names{});
}

// ---- The INDEX files.

TEST_F(StationFiles, TheIndexOfTheRootHasOneNamePerLine) {
  WriteStationIndex(kRoot, {"ST2", "Caf\u00E9", "rack 2"});
  EXPECT_EQ(tree_.Read("c:\\stations\\INDEX"), "ST2\r\nCaf\xE9\r\nrack 2\r\n");
  WriteStationIndex(kRoot, {});
  EXPECT_EQ(tree_.Read("c:\\stations\\INDEX"), "");
}

TEST_F(StationFiles, TheIndexOfAStationNamesItselfLast) {
  WriteStationInstrumentIndex(kStation, {"PX13A", "\u00B5W", "RT 730.A"});
  EXPECT_EQ(tree_.Read(kIndex), "PX13A\r\n\xB5W\r\nRT 730.A\r\nINDEX\r\n");
  WriteStationInstrumentIndex(kStation, {});
  EXPECT_EQ(tree_.Read(kIndex), "INDEX\r\n");
}

}  // namespace
}  // namespace tarvell
