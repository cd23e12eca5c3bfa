// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "station/StationFiles.h"
#include "support/ErrorOf.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::FullDisk;
using test::Lines;
using test::LockedFolder;
using test::OrdinaryUser;
using test::TestTree;

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

constexpr const char* kRoot = "c:\\stations";
constexpr const char* kStation = R"(c:\stations\ST1)";
constexpr const char* kFile = R"(c:\stations\ST1\PX12A)";
constexpr const char* kIndex = R"(c:\stations\ST1\INDEX)";
constexpr std::string_view kOld = "MODEL NUMBER an earlier file, of another length\r\n\r\n\r\n";

StationInstrument Sensor() {
  return {.ModelNumber = "PX12A",
          .SerialNumber = "3318A12345",
          .AddressType = "GP-IB",
          .Address = "13",
          .Station = "rack 2",
          .Options = "001",
          .Availability = "yes",
          .DueDay = "5",
          .DueMonth = "MAR",
          .DueYear = "2002",
          .Asset = "A-77",
          .Trace = "lab 4",
          .Comment = "factory",
          .CalData = "own file"};
}

/// An instrument with these fields alone.
StationInstrument With(
    const std::vector<std::pair<std::string StationInstrument::*, std::string>>& fields) {
  StationInstrument instrument;
  for (const auto& [field, text] : fields) {
    instrument.*field = text;
  }
  return instrument;
}

/// Every field of `instrument`, in the order of the file.
Names FieldsOf(const StationInstrument& instrument) {
  return {instrument.ModelNumber,  instrument.SerialNumber, instrument.AddressType,
          instrument.Address,      instrument.Station,      instrument.Options,
          instrument.Availability, instrument.DueDay,       instrument.DueMonth,
          instrument.DueYear,      instrument.Asset,        instrument.Trace,
          instrument.Comment,      instrument.CalData};
}

Names Sorted(Names names) {
  std::sort(names.begin(), names.end());
  return names;
}

bool Load(StationInstrument& instrument) {
  StoredFile file;
  return LoadInstrumentFile(kFile, instrument, file);
}

void Save(const StationInstrument& instrument) {
  StoredFile file;
  SaveInstrumentFile(kStation, instrument, file);
}

class StationFiles : public testing::Test {
 protected:
  StationFiles() { tree_.MakeFolders(kStation); }

  /// What a file with these bytes makes of an instrument that is shown already.
  [[nodiscard]] StationInstrument Loaded(std::string_view bytes,
                                         StationInstrument instrument = {}) const {
    tree_.Write(kFile, bytes);
    EXPECT_TRUE(Load(instrument));
    return instrument;
  }
  /// The same of one line, followed by one that is never interpreted.
  [[nodiscard]] StationInstrument LoadedLine(const std::string& line) const {
    return Loaded(Lines({line, "CAL DATA last"}));
  }

  /// Reading the instrument's file is an error of this kind, told of the file, and leaves what
  /// was shown.
  static void ExpectUnreadable(ErrorKind kind) {
    StationInstrument instrument = Sensor();
    const Error error = ErrorOf([&] { Load(instrument); });
    EXPECT_EQ(error.Kind(), kind) << error.what();
    EXPECT_EQ(error.Path(), kFile);
    EXPECT_EQ(FieldsOf(instrument), FieldsOf(Sensor()));
  }

  /// Saving under this model number is refused, told with `why`, and writes nothing anywhere.
  void ExpectRefusedModel(const std::string& model, const std::string& why) const {
    SCOPED_TRACE(model);
    StationInstrument instrument = Sensor();
    instrument.ModelNumber = model;
    const Names station = tree_.Names(kStation);
    const Names root = tree_.Names(kRoot);
    const Error error = ErrorOf([&] { Save(instrument); });
    EXPECT_EQ(error.Kind(), ErrorKind::Name);
    EXPECT_TRUE(Contains(error.Text(), "\"" + model + "\"")) << error.Text();
    EXPECT_TRUE(Contains(error.Text(), why)) << error.Text();
    EXPECT_EQ(tree_.Names(kStation), station);
    EXPECT_EQ(tree_.Names(kRoot), root);
  }

  /// Making a station of this name is an error of this kind, told with `why`, and makes nothing.
  void ExpectRefusedStation(const std::string& name, ErrorKind kind, const std::string& why) const {
    SCOPED_TRACE(name);
    const Names root = tree_.Names(kRoot);
    const Names drive = tree_.Names("c:\\");
    const Error error = ErrorOf([&] { MakeStation(kRoot, name); });
    EXPECT_EQ(error.Kind(), kind) << error.what();
    EXPECT_TRUE(Contains(error.Text(), why)) << error.Text();
    EXPECT_EQ(tree_.Names(kRoot), root);
    EXPECT_EQ(tree_.Names("c:\\"), drive);
  }

  TestTree tree_;
};

// ---- Writing an instrument.

TEST_F(StationFiles, AnInstrumentIsTwelveLines) {
  Save(Sensor());
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
  EXPECT_EQ(tree_.Read(kFile),
            "MODEL NUMBER PX12A\r\n"
            "SERIAL NUMBER 3318A12345\r\n"
            "ADDRESS TYPE GP-IB\r\n"
            "ADDRESS 13\r\n"
            "STATION rack 2\r\n"
            "OPTIONS 001\r\n"
            "AVAILABILITY yes\r\n"
            "CAL DUE DATE 5 MAR 2002\r\n"
            "ASSET A-77\r\n"
            "TRACE lab 4\r\n"
            "COMMENT factory\r\n"
            "CAL DATA own file\r\n");
}

TEST_F(StationFiles, AnEmptyFieldLeavesItsKeywordAndOneBlank) {
  Save(With({{&StationInstrument::ModelNumber, "X"}}));
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\X)"),
            "MODEL NUMBER X\r\nSERIAL NUMBER \r\nADDRESS TYPE \r\nADDRESS \r\nSTATION \r\n"
            "OPTIONS \r\nAVAILABILITY \r\nCAL DUE DATE   \r\nASSET \r\nTRACE \r\nCOMMENT \r\n"
            "CAL DATA \r\n");
}

TEST_F(StationFiles, OnlyThePartsOfTheDueDateAreTrimmed) {
  StationInstrument instrument = Sensor();
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
  StationInstrument instrument = Sensor();
  instrument.Comment = "5 \u00B5W at 20 \u20AC, \"caf\u00E9\"";
  Save(instrument);
  EXPECT_TRUE(Contains(tree_.Read(kFile), "COMMENT 5 \xB5W at 20 \x80, \"caf\xE9\"\r\n"));
}

TEST_F(StationFiles, AnEarlierFileIsReplacedWhole) {
  tree_.Write(kFile, std::string(5000, 'x'));
  Save(Sensor());
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
  StationInstrument instrument = Sensor();
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
    StationInstrument instrument = Sensor();
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
  const Error error = ErrorOf([&] { Save(Sensor()); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_TRUE(Contains(error.Text(), "the disk is full")) << error.Text();
  EXPECT_GT(disk.refused, 0);
  EXPECT_EQ(tree_.Read(kFile), kOld);
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
  disk.isFull = false;
  Save(Sensor());
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
  const Error error = ErrorOf([&] { Save(Sensor()); });
  EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
  EXPECT_TRUE(Contains(error.Text(), "you have no permission")) << error.Text();
  EXPECT_EQ(tree_.Names(kStation), Names{});
}

TEST_F(StationFiles, AStationThatVanishedIsNotMadeAgainBySaving) {
  fs::remove(tree_.Native(kStation));
  const Error error = ErrorOf([&] { Save(Sensor()); });
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

// ---- Taking a line apart.

struct LineParts {
  std::string item;
  std::string keyword;
  std::string value;
};

TEST(StationKeywords, ALineIsAKeywordAndAValue) {
  const std::vector<LineParts> lines = {{"MODEL NUMBER PX12A", "MODEL NUMBER", "PX12A"},
                                        {"MODEL OTHER PX12A x", "MODEL OTHER", "PX12A x"},
                                        {"SERIAL NUMBER 3318A12345", "SERIAL NUMBER", "3318A12345"},
                                        {"SERIAL NUMBER", "SERIAL NUMBER", ""},
                                        {"ADDRESS TYPE GP-IB", "ADDRESS TYPE", "GP-IB"},
                                        {"ADDRESS TYPE", "ADDRESS TYPE", ""},
                                        {"ADDRESS 13", "ADDRESS", "13"},
                                        {"ADDRESS", "ADDRESS", ""},
                                        {"ADDRESS Type 13", "ADDRESS", "Type 13"},
                                        {"STATION rack 2", "STATION", "rack 2"},
                                        {"OPTIONS 001", "OPTIONS", "001"},
                                        {"AVAILABILITY yes", "AVAILABILITY", "yes"},
                                        {"CAL DUE DATE 5 MAR 2002", "CAL DUE DATE", "5 MAR 2002"},
                                        {"CAL DUE DATE", "CAL DUE DATE", ""},
                                        {"CAL DATA own file", "CAL DATA", "own file"},
                                        {"CAL DATA", "CAL DATA", ""},
                                        {"CAL OTHER WORDS x", "CAL OTHER WORDS", "x"},
                                        {"ASSET A-77", "ASSET", "A-77"},
                                        {"TRACE lab 4", "TRACE", "lab 4"},
                                        {"COMMENT two  blanks", "COMMENT", "two blanks"},
                                        {"  COMMENT \t a\t\tb  ", "COMMENT", "a b"},
                                        {"COMMENT a\r\nb", "COMMENT", "a b"},
                                        {"COMMENT", "COMMENT", ""},
                                        {"comment x", "comment", "x"},
                                        {"anything else", "anything", "else"},
                                        {"", "", ""}};
  for (const LineParts& line : lines) {
    SCOPED_TRACE(line.item);
    const KeywordLine parts = ParseKeywordLine(line.item);
    EXPECT_EQ(parts.keyword, line.keyword);
    EXPECT_EQ(parts.value, line.value);
  }
}

/// `count` words "1", "2" and so on, separated by single blanks.
std::string Words(int count) {
  std::string text;
  for (int i = 1; i <= count; ++i) {
    text += (i == 1 ? "" : " ") + std::to_string(i);
  }
  return text;
}

TEST(StationKeywords, ALineIsThirtyWordsAtMost) {
  EXPECT_EQ(ParseKeywordLine("COMMENT " + Words(28)).value, Words(28));
  EXPECT_EQ(ParseKeywordLine("COMMENT " + Words(29)).value, Words(29));
  EXPECT_EQ(ParseKeywordLine("COMMENT " + Words(30)).value, Words(29));
  EXPECT_EQ(ParseKeywordLine("COMMENT " + Words(1000)).value, Words(29));
  EXPECT_EQ(ParseKeywordLine("MODEL NUMBER " + Words(30)).value, Words(28));
  EXPECT_EQ(ParseKeywordLine("CAL DUE DATE " + Words(30)).value, Words(27));
  EXPECT_EQ(ParseKeywordLine("CAL DATA " + Words(30)).value, Words(28));
}

TEST(StationKeywords, EachKeywordHasItsField) {
  const std::vector<std::pair<std::string, std::string StationInstrument::*>> fields = {
      {"MODEL NUMBER", &StationInstrument::ModelNumber},
      {"SERIAL NUMBER", &StationInstrument::SerialNumber},
      {"ADDRESS TYPE", &StationInstrument::AddressType},
      {"ADDRESS", &StationInstrument::Address},
      {"STATION", &StationInstrument::Station},
      {"OPTIONS", &StationInstrument::Options},
      {"AVAILABILITY", &StationInstrument::Availability},
      {"ASSET", &StationInstrument::Asset},
      {"TRACE", &StationInstrument::Trace},
      {"COMMENT", &StationInstrument::Comment},
      {"CAL DATA", &StationInstrument::CalData}};
  for (const auto& [keyword, field] : fields) {
    SCOPED_TRACE(keyword);
    StationInstrument instrument = Sensor();
    StationInstrument expected = Sensor();
    expected.*field = "new text";
    ApplyKeywordLine({keyword, "new text"}, instrument);
    EXPECT_EQ(FieldsOf(instrument), FieldsOf(expected));
  }
}

TEST(StationKeywords, AnEmptyValueEmptiesItsField) {
  StationInstrument instrument = Sensor();
  ApplyKeywordLine({"COMMENT", ""}, instrument);
  EXPECT_EQ(instrument.Comment, "");
  ApplyKeywordLine({"MODEL NUMBER", ""}, instrument);
  EXPECT_EQ(instrument.ModelNumber, "");
}

TEST(StationKeywords, OtherKeywordsAreIgnored) {
  for (const char* keyword : {"model number", "Model Number", "MODEL", "MODEL ", "NUMBER",
                              "ADDRESS  TYPE", "CAL", "CAL DUE", "CAL DUE DAY", "INDEX", ""}) {
    SCOPED_TRACE(keyword);
    StationInstrument instrument = Sensor();
    ApplyKeywordLine({keyword, "x"}, instrument);
    EXPECT_EQ(FieldsOf(instrument), FieldsOf(Sensor()));
  }
}

TEST(StationKeywords, TheOldAddressTypeGetsItsNewName) {
  const std::vector<std::pair<std::string, std::string>> types = {
      {"QZ-IB", "GP-IB"}, {"", "NONE"},       {"GP-IB", "GP-IB"}, {"GPIO", "GPIO"},
      {"NONE", "NONE"},   {"RS232", "RS232"}, {"qz-ib", "qz-ib"}, {"QZ-IB 2", "QZ-IB 2"}};
  for (const auto& [value, type] : types) {
    SCOPED_TRACE(value);
    StationInstrument instrument = Sensor();
    ApplyKeywordLine({"ADDRESS TYPE", value}, instrument);
    EXPECT_EQ(instrument.AddressType, type);
  }
}

struct DueDate {
  std::string value;
  std::string day;
  std::string month;
  std::string year;
};

TEST(StationKeywords, TheDueDateIsThreeWords) {
  const std::vector<DueDate> dates = {{"5 MAR 2002", "5", "MAR", "2002"},
                                      {"05 MAR 2002", "5", "MAR", "2002"},
                                      {"31 APR 02002", "31", "APR", "2002"},
                                      {"1 1 2000", "1", "1", "2000"},
                                      {"5th Mar 2002x", "5", "Mar", "2002"},
                                      {"x MAR y", "0", "MAR", "0"},
                                      {"5 MAR", "5", "MAR", "0"},
                                      {"5", "5", "", "0"},
                                      {"5 MAR 2002 12:00", "5", "MAR", "2002"},
                                      {"", "1", "1", "2000"}};
  for (const DueDate& date : dates) {
    SCOPED_TRACE(date.value);
    StationInstrument instrument = Sensor();
    ApplyKeywordLine({"CAL DUE DATE", date.value}, instrument);
    EXPECT_EQ(instrument.DueDay, date.day);
    EXPECT_EQ(instrument.DueMonth, date.month);
    EXPECT_EQ(instrument.DueYear, date.year);
    EXPECT_EQ(instrument.Comment, "factory");
  }
}

// ---- Reading an instrument.

TEST_F(StationFiles, AFileOfTheProgramGivesEveryFieldButTheLast) {
  Save(Sensor());
  StationInstrument instrument;
  instrument.CalData = "as it was";
  EXPECT_TRUE(Load(instrument));
  StationInstrument expected = Sensor();
  expected.CalData = "as it was";
  EXPECT_EQ(FieldsOf(instrument), FieldsOf(expected));
}

TEST_F(StationFiles, CalibrationDataComesBackWhereALineFollows) {
  EXPECT_EQ(Loaded("CAL DATA own  file\r\n\r\n").CalData, "own file");
  EXPECT_EQ(Loaded("CAL DATA own file\r\nx").CalData, "own file");
}

TEST_F(StationFiles, OneLineGivesNothing) {
  for (const char* bytes : {"COMMENT x\r\n", "COMMENT x", "\r\n", "x"}) {
    SCOPED_TRACE(bytes);
    EXPECT_EQ(FieldsOf(Loaded(bytes, Sensor())), FieldsOf(Sensor()));
  }
}

TEST_F(StationFiles, AnEmptyFileGivesNothing) {
  tree_.Write(kFile, "");
  StationInstrument instrument = Sensor();
  EXPECT_FALSE(Load(instrument));
  EXPECT_EQ(FieldsOf(instrument), FieldsOf(Sensor()));
}

TEST_F(StationFiles, ACommaEndsAValue) {
  const StationInstrument instrument = LoadedLine("COMMENT a,b");
  EXPECT_EQ(instrument.Comment, "a");
  EXPECT_EQ(FieldsOf(instrument), FieldsOf(With({{&StationInstrument::Comment, "a"}})));
  // What stands behind the comma is an item of its own.
  EXPECT_EQ(FieldsOf(LoadedLine("COMMENT a, ASSET b")),
            FieldsOf(With({{&StationInstrument::Asset, "b"}, {&StationInstrument::Comment, "a"}})));
  // The remainder of the last line makes the one before it be read.
  EXPECT_EQ(Loaded("COMMENT x\r\nCAL DATA own,file\r\n").CalData, "own");
}

TEST_F(StationFiles, AValueThatWouldBeReadAsAnotherLineBehindItsCommaIsRefused) {
  tree_.Write(kFile, kOld);
  for (const char* value :
       {"a, STATION b", "a,b,\tASSET c", "a,ADDRESS TYPE GPIO", "a, CAL DUE DATE", "a,COMMENT",
        "a, \"STATION b\"", "a, \"b\", TRACE", "a, \"b", "a,b,\"c, d"}) {
    for (std::string StationInstrument::*field :
         {&StationInstrument::Comment, &StationInstrument::Options, &StationInstrument::CalData}) {
      StationInstrument instrument = Sensor();
      instrument.*field = value;
      const Error error = ErrorOf([&] { Save(instrument); });
      EXPECT_EQ(error.Kind(), ErrorKind::Character) << value;
      EXPECT_TRUE(Contains(error.what(), value)) << error.what();
      EXPECT_EQ(tree_.Read(kFile), kOld);
    }
  }
}

TEST_F(StationFiles, AValueMayHoldACommaWithAnyOtherText) {
  for (const char* value : {"a, b", "a, b \"c\"", "a, \"b, STATION c\" d", "a,", ",",
                            "a, station b", "a, MODEL b", "a,CAL"}) {
    StationInstrument instrument = Sensor();
    instrument.Comment = value;
    Save(instrument);
    EXPECT_TRUE(Contains(tree_.Read(kFile), std::string("\r\nCOMMENT ") + value + "\r\n")) << value;
  }
}

TEST_F(StationFiles, RunsOfBlanksBecomeOne) {
  EXPECT_EQ(LoadedLine("COMMENT two  blanks").Comment, "two blanks");
  EXPECT_EQ(LoadedLine("  COMMENT   a \t b ").Comment, "a b");
}

TEST_F(StationFiles, AQuotedLineIsOneItem) {
  EXPECT_EQ(LoadedLine("\"COMMENT a, b\" rest").Comment, "a, b");
  EXPECT_EQ(LoadedLine("\"COMMENT a\r\nb\"").Comment, "a b");
  // A quote within an item is a character like any other.
  EXPECT_EQ(LoadedLine("COMMENT \"a, b\"").Comment, "\"a");
}

TEST_F(StationFiles, TheAddressTypesOfFiles) {
  EXPECT_EQ(LoadedLine("ADDRESS TYPE QZ-IB").AddressType, "GP-IB");
  EXPECT_EQ(LoadedLine("ADDRESS TYPE ").AddressType, "NONE");
  EXPECT_EQ(LoadedLine("ADDRESS TYPE RS232").AddressType, "RS232");
}

TEST_F(StationFiles, TheDueDatesOfFiles) {
  const StationInstrument padded = LoadedLine("CAL DUE DATE 05 MAR 2002");
  EXPECT_EQ(padded.DueDay, "5");
  EXPECT_EQ(padded.DueMonth, "MAR");
  EXPECT_EQ(padded.DueYear, "2002");
  for (const char* line : {"CAL DUE DATE", "CAL DUE DATE  "}) {
    const StationInstrument empty = LoadedLine(line);
    EXPECT_EQ(empty.DueDay, "1");
    EXPECT_EQ(empty.DueMonth, "1");
    EXPECT_EQ(empty.DueYear, "2000");
  }
}

TEST_F(StationFiles, AKeywordInLowerCaseIsIgnored) {
  EXPECT_EQ(FieldsOf(LoadedLine("model number X")), FieldsOf(With({})));
}

TEST_F(StationFiles, TheLaterOfTwoLinesCounts) {
  EXPECT_EQ(Loaded("COMMENT a\r\nCOMMENT b\r\nx\r\n").Comment, "b");
}

TEST_F(StationFiles, AFileFromAnotherSystemIsReadable) {
  const StationInstrument lf = Loaded("MODEL NUMBER PX12A\nCOMMENT a b\nCAL DATA x\n");
  EXPECT_EQ(FieldsOf(lf), FieldsOf(With({{&StationInstrument::ModelNumber, "PX12A"},
                                         {&StationInstrument::Comment, "a b"}})));
  const StationInstrument cr = Loaded("MODEL NUMBER PX12A\rCOMMENT a b\rCAL DATA x\r");
  EXPECT_EQ(FieldsOf(cr), FieldsOf(With({{&StationInstrument::ModelNumber, "PX12A"},
                                         {&StationInstrument::Comment, "a b"}})));
}

TEST_F(StationFiles, EveryCharacterComesBack) {
  EXPECT_EQ(LoadedLine("COMMENT 5 \xB5W \x80 \x81 \xE9").Comment, "5 \u00B5W \u20AC \u0081 \u00E9");
}

TEST_F(StationFiles, AMissingFileIsAnError) {
  ExpectUnreadable(ErrorKind::NotFound);
}

TEST_F(StationFiles, AFolderIsNoInstrument) {
  tree_.MakeFolders(kFile);
  ExpectUnreadable(ErrorKind::NotAFile);
}

TEST_F(StationFiles, APipeIsNoInstrumentAndIsNotWaitedFor) {
  ASSERT_EQ(::mkfifo(tree_.Native(kFile).c_str(), 0600), 0);
  ExpectUnreadable(ErrorKind::NotAFile);
}

TEST_F(StationFiles, AFileThatMayNotBeReadIsAnError) {
  tree_.Write(kFile, kOld);
  ASSERT_EQ(::chmod(tree_.Native(kFile).c_str(), 0), 0);
  const OrdinaryUser user(tree_.Root());
  ExpectUnreadable(ErrorKind::NoPermission);
}

TEST_F(StationFiles, ADueDateBeyondEveryNumberLeavesWhatWasShown) {
  tree_.Write(kFile, Lines({"COMMENT other", "CAL DUE DATE 1E999 MAR 2002", "x"}));
  StationInstrument instrument = Sensor();
  const Error error = ErrorOf([&] { Load(instrument); });
  EXPECT_EQ(error.Kind(), ErrorKind::Type);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(error.Line(), 2);
  EXPECT_EQ(FieldsOf(instrument), FieldsOf(Sensor()));
}

TEST_F(StationFiles, NoiseIsReadAndGivesNothing) {
  std::mt19937 random(5);
  std::string noise(std::size_t{1} << 21U, '\0');
  std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>(random() & 0xFFU); });
  const std::vector<std::string> files = {noise,
                                          std::string(noise.size(), 'x'),
                                          std::string(noise.size(), '\0'),
                                          "\"" + std::string(noise.size(), ','),
                                          std::string(noise.size(), ','),
                                          std::string(noise.size(), ' ')};
  for (const std::string& bytes : files) {
    EXPECT_EQ(FieldsOf(Loaded(bytes, Sensor())), FieldsOf(Sensor()));
  }
}

// ---- The due date's check.

TEST(StationDueDate, ADateExistsOrNot) {
  struct Row {
    const char* day;
    const char* month;
    const char* year;
    bool exists;
  };
  const std::vector<Row> rows = {
      {"5", "MAR", "2002", true},   {"05", "MAR", "2002", true},  {" 5 ", "MAR", " 2002 ", true},
      {"31", "APR", "2002", false}, {"30", "APR", "2002", true},  {"29", "FEB", "2001", false},
      {"29", "FEB", "2000", true},  {"29", "FEB", "1900", false}, {"29", "FEB", "2004", true},
      {"0", "JAN", "2000", false},  {"-1", "JAN", "2000", false}, {"32", "JAN", "2000", false},
      {"1", "", "2000", false},     {"1", "1", "2000", false},    {"1", "jan", "2000", false},
      {"1", " JAN", "2000", false}, {"", "JAN", "2000", false},   {"x", "JAN", "2000", false},
      {"5x", "MAR", "2002y", true}, {"31", "DEC", "2037", true}};
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.day) + " " + row.month + " " + row.year);
    EXPECT_EQ(HasValidDueDate(With({{&StationInstrument::DueDay, row.day},
                                    {&StationInstrument::DueMonth, row.month},
                                    {&StationInstrument::DueYear, row.year}})),
              row.exists);
  }
}

TEST(StationDueDate, ANumberOutsideItsFieldIsAnError) {
  const auto check = [](const char* day, const char* year) {
    return ErrorOf([&] {
             static_cast<void>(HasValidDueDate(With({{&StationInstrument::DueDay, day},
                                                     {&StationInstrument::DueMonth, "MAR"},
                                                     {&StationInstrument::DueYear, year}})));
           })
        .Kind();
  };
  EXPECT_EQ(check("5", "32768"), ErrorKind::Type);
  EXPECT_EQ(check("99999", "2002"), ErrorKind::Type);
}

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
