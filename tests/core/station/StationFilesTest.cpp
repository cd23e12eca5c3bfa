// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

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
  instrument.DueDay = " 05 ";
  instrument.DueMonth = " MAR ";
  instrument.DueYear = " 2002 ";
  instrument.Comment = "  two  \u00B5W \u20AC ";
  Save(instrument);
  std::string expected = kSampleInstrumentFile;
  for (const auto& [old, text] : {std::pair("PX12A", " PX12A"), std::pair("5 MAR", "05 MAR"),
                                  std::pair("factory", "  two  \xB5W \x80 ")}) {
    expected.replace(expected.find(old), std::string(old).size(), text);
  }
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\ PX12A)"), expected);
}

TEST_F(StationFiles, RefuseAModelNumberThatIsNoFileNameOrTheIndex) {
  ExpectRefusedModel("..\\b", "it holds the character \"\\\"");
  tree_.Write(kIndex, "INDEX\r\n");
  for (const char* model : {"INDEX", "Index"}) {
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
    const Error error = ErrorOf([&] { Save(SampleWith(field, "10 k\u03A9")); });
    EXPECT_EQ(error.Kind(), ErrorKind::Character);
    EXPECT_TRUE(Contains(error.Text(), "\u03A9")) << error.Text();
    EXPECT_EQ(ErrorOf([&] { Save(SampleWith(field, "two\r\nlines")); }).Kind(),
              ErrorKind::Character);
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
