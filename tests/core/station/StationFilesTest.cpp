// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "core/files/Paths.h"
#include "core/station/StationFiles.h"
#include "support/ErrorOf.h"
#include "support/SampleInstrument.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

namespace fs = std::filesystem;

using test::Contains;
using test::ErrorOf;
using test::kSampleInstrumentFile;
using test::Lines;
using test::SampleInstrument;
using Names = std::vector<std::string>;

constexpr const char* kRoot = "c:\\stations";
constexpr const char* kStation = R"(c:\stations\ST1)";
constexpr const char* kFile = R"(c:\stations\ST1\PX12A)";
constexpr const char* kIndex = R"(c:\stations\ST1\INDEX)";
constexpr std::string_view kOld = "MODEL NUMBER an earlier file, of another length\r\n\r\n\r\n";

/// An instrument with only these fields.
StationInstrument With(
    const std::vector<std::pair<std::string StationInstrument::*, std::string>>& fields) {
  StationInstrument instrument;
  for (const auto& [field, text] : fields) {
    instrument.*field = text;
  }
  return instrument;
}

/// The sample with another text in one field.
StationInstrument SampleWith(std::string StationInstrument::*field, const std::string& text) {
  StationInstrument instrument = SampleInstrument();
  instrument.*field = text;
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

  /// `instrument` after a file with these bytes was read over it.
  StationInstrument Loaded(std::string_view bytes, StationInstrument instrument = {}) const {
    tree_.Write(kFile, bytes);
    EXPECT_TRUE(Load(instrument));
    return instrument;
  }
  /// The same of one line, followed by one that is never interpreted.
  StationInstrument LoadedLine(const std::string& line) const {
    return Loaded(Lines({line, "CAL DATA last"}));
  }

  /// Reading the instrument's file fails with an error of this kind, and leaves the instrument
  /// as it was.
  static Error ExpectUnreadable(ErrorKind kind) {
    StationInstrument instrument = SampleInstrument();
    const Error error = ErrorOf([&] { Load(instrument); });
    EXPECT_EQ(error.Kind(), kind) << error.what();
    EXPECT_EQ(error.Path(), kFile);
    EXPECT_EQ(FieldsOf(instrument), FieldsOf(SampleInstrument()));
    return error;
  }

  /// Saving under this model number fails for the reason `why`, and writes nothing.
  void ExpectRefusedModel(const std::string& model, const std::string& why) const {
    SCOPED_TRACE(model);
    const Names before = tree_.Names(kStation);
    const Error error = ErrorOf([&] { Save(SampleWith(&StationInstrument::ModelNumber, model)); });
    EXPECT_EQ(error.Kind(), ErrorKind::Name);
    EXPECT_TRUE(Contains(error.Text(), why)) << error.Text();
    EXPECT_EQ(tree_.Names(kStation), before);
  }

  /// Making a station of this name fails with an error of this kind and for the reason `why`, and
  /// makes nothing.
  void ExpectRefusedStation(const std::string& name, ErrorKind kind, const std::string& why) const {
    SCOPED_TRACE(name);
    const Names before = tree_.Names(kRoot);
    const Error error = ErrorOf([&] { MakeStation(kRoot, name); });
    EXPECT_EQ(error.Kind(), kind) << error.what();
    EXPECT_TRUE(Contains(error.Text(), why)) << error.Text();
    EXPECT_EQ(tree_.Names(kRoot), before);
  }

  test::TestTree tree_;
};

// ---- Writing an instrument.

TEST_F(StationFiles, WriteAnInstrumentAsTwelveLinesAlsoWhereAFieldIsEmpty) {
  Save(SampleInstrument());
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
  EXPECT_EQ(tree_.Read(kFile), kSampleInstrumentFile);
  Save(With({{&StationInstrument::ModelNumber, "X"}}));
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\X)"),
            "MODEL NUMBER X\r\nSERIAL NUMBER \r\nADDRESS TYPE \r\nADDRESS \r\nSTATION \r\n"
            "OPTIONS \r\nAVAILABILITY \r\nCAL DUE DATE   \r\nASSET \r\nTRACE \r\nCOMMENT \r\n"
            "CAL DATA \r\n");
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
       {&StationInstrument::SerialNumber, &StationInstrument::DueMonth,
        &StationInstrument::CalData}) {
    const Error error = ErrorOf([&] { Save(SampleWith(field, "10 k\u03A9")); });
    EXPECT_EQ(error.Kind(), ErrorKind::Character);
    EXPECT_TRUE(Contains(error.Text(), "\u03A9")) << error.Text();
    EXPECT_EQ(ErrorOf([&] { Save(SampleWith(field, "two\rlines")); }).Kind(), ErrorKind::Character);
  }
  EXPECT_EQ(tree_.Read(kFile), kOld);
  EXPECT_EQ(tree_.Names(kStation), Names{"PX12A"});
}

// ---- The INDEX files.

TEST_F(StationFiles, AnIndexHasOneNamePerLineAndThatOfAStationNamesItselfLast) {
  WriteStationIndex(kRoot, {"ST2", "Caf\u00E9", "rack 2"});
  EXPECT_EQ(tree_.Read("c:\\stations\\INDEX"), "ST2\r\nCaf\xE9\r\nrack 2\r\n");
  WriteStationIndex(kRoot, {});
  EXPECT_EQ(tree_.Read("c:\\stations\\INDEX"), "");
  WriteStationInstrumentIndex(kStation, {"PX13A", "\u00B5W", "RT 730.A"});
  EXPECT_EQ(tree_.Read(kIndex), "PX13A\r\n\xB5W\r\nRT 730.A\r\nINDEX\r\n");
}

// ---- Parsing a line.

struct LineParts {
  std::string item;
  std::string keyword;
  std::string value;
};

TEST(StationKeywords, SplitALineIntoKeywordAndValue) {
  const std::vector<LineParts> lines = {{"MODEL NUMBER PX12A", "MODEL NUMBER", "PX12A"},
                                        {"MODEL OTHER PX12A x", "MODEL OTHER", "PX12A x"},
                                        {"ADDRESS TYPE GP-IB", "ADDRESS TYPE", "GP-IB"},
                                        {"ADDRESS", "ADDRESS", ""},
                                        {"ADDRESS Type 13", "ADDRESS", "Type 13"},
                                        {"CAL DUE DATE", "CAL DUE DATE", ""},
                                        {"CAL DATA own file", "CAL DATA", "own file"},
                                        {"CAL OTHER WORDS x", "CAL OTHER WORDS", "x"},
                                        {"  COMMENT \t a\t\tb  ", "COMMENT", "a b"},
                                        {"COMMENT a\r\nb", "COMMENT", "a b"},
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

TEST(StationKeywords, KeepThirtyWordsOfALine) {
  EXPECT_EQ(ParseKeywordLine("COMMENT " + Words(29)).value, Words(29));
  EXPECT_EQ(ParseKeywordLine("COMMENT " + Words(30)).value, Words(29));
  EXPECT_EQ(ParseKeywordLine("MODEL NUMBER " + Words(30)).value, Words(28));
  EXPECT_EQ(ParseKeywordLine("CAL DUE DATE " + Words(30)).value, Words(27));
  EXPECT_EQ(ParseKeywordLine("CAL DATA " + Words(30)).value, Words(28));
}

TEST(StationKeywords, SetTheirField) {
  using I = StationInstrument;
  const std::vector<std::pair<std::string, std::string I::*>> fields = {
      {"MODEL NUMBER", &I::ModelNumber},
      {"SERIAL NUMBER", &I::SerialNumber},
      {"ADDRESS TYPE", &I::AddressType},
      {"ADDRESS", &I::Address},
      {"STATION", &I::Station},
      {"OPTIONS", &I::Options},
      {"AVAILABILITY", &I::Availability},
      {"ASSET", &I::Asset},
      {"TRACE", &I::Trace},
      {"COMMENT", &I::Comment},
      {"CAL DATA", &I::CalData}};
  for (const auto& [keyword, field] : fields) {
    SCOPED_TRACE(keyword);
    I instrument = SampleInstrument();
    I expected = SampleInstrument();
    expected.*field = "new text";
    ApplyKeywordLine({keyword, "new text"}, instrument);
    EXPECT_EQ(FieldsOf(instrument), FieldsOf(expected));
    ApplyKeywordLine({keyword, ""}, instrument);
    EXPECT_EQ(instrument.*field, keyword == "ADDRESS TYPE" ? "NONE" : "");
  }
}

TEST(StationKeywords, OfNoFieldAreIgnored) {
  for (const char* keyword : {"Model Number", "MODEL", "ADDRESS  TYPE", "CAL DUE", "INDEX", ""}) {
    StationInstrument instrument = SampleInstrument();
    ApplyKeywordLine({keyword, "x"}, instrument);
    EXPECT_EQ(FieldsOf(instrument), FieldsOf(SampleInstrument())) << keyword;
  }
}

TEST(StationKeywords, SetThePartsOfTheDueDate) {
  const std::vector<std::pair<std::string, Names>> dates = {
      {"05 MAR 2002", {"5", "MAR", "2002"}},
      {"31 APR 02002", {"31", "APR", "2002"}},
      {"1 1 2000", {"1", "1", "2000"}},
      {"5th Mar 2002x", {"5", "Mar", "2002"}},
      {"x MAR y", {"0", "MAR", "0"}},
      {"5 MAR", {"5", "MAR", "0"}},
      {"5", {"5", "", "0"}},
      {"5 MAR 2002 12:00", {"5", "MAR", "2002"}},
      {"", {"1", "1", "2000"}}};
  for (const auto& [value, parts] : dates) {
    StationInstrument instrument;
    ApplyKeywordLine({"CAL DUE DATE", value}, instrument);
    EXPECT_EQ((Names{instrument.DueDay, instrument.DueMonth, instrument.DueYear}), parts) << value;
  }
}

// ---- Reading an instrument.

TEST_F(StationFiles, AreReadButForTheLastItemAndWithoutAnEarlierSerialNumber) {
  StationInstrument before;
  before.CalData = "as it was";
  StationInstrument expected = SampleInstrument();
  expected.CalData = "as it was";
  EXPECT_EQ(FieldsOf(Loaded(kSampleInstrumentFile, before)), FieldsOf(expected));
  StationInstrument withoutSerialNumber = SampleInstrument();
  withoutSerialNumber.SerialNumber.clear();
  for (const char* bytes : {"COMMENT x\r\n", "COMMENT x", "\r\n"}) {
    SCOPED_TRACE(bytes);
    EXPECT_EQ(FieldsOf(Loaded(bytes, SampleInstrument())), FieldsOf(withoutSerialNumber));
  }
}

TEST_F(StationFiles, EndAValueAtAComma) {
  EXPECT_EQ(FieldsOf(LoadedLine("COMMENT a,b")),
            FieldsOf(With({{&StationInstrument::Comment, "a"}})));
  // The text after the comma is an item of its own.
  EXPECT_EQ(FieldsOf(LoadedLine("COMMENT a, ASSET b")),
            FieldsOf(With({{&StationInstrument::Asset, "b"}, {&StationInstrument::Comment, "a"}})));
  // The text after the comma is the last item, which is not interpreted.
  EXPECT_EQ(Loaded("COMMENT x\r\nCAL DATA own,file\r\n").CalData, "own");
  EXPECT_EQ(LoadedLine("\"COMMENT a, b\" rest").Comment, "a, b");
  // A quote within an item is an ordinary character.
  EXPECT_EQ(LoadedLine("COMMENT \"a, b\"").Comment, "\"a");
}

TEST_F(StationFiles, RefuseAValueThatWouldBeReadAsAnotherLineAfterItsComma) {
  tree_.Write(kFile, kOld);
  for (const char* value :
       {"a, STATION b", "a,b,\tASSET c", "a,ADDRESS TYPE GPIO", "a, CAL DUE DATE", "a,COMMENT",
        "a, \"STATION b\"", "a, \"b\", TRACE", "a, \"b", "a,b,\"c, d"}) {
    for (std::string StationInstrument::*field :
         {&StationInstrument::Comment, &StationInstrument::CalData}) {
      const Error error = ErrorOf([&, text = value] { Save(SampleWith(field, text)); });
      EXPECT_EQ(error.Kind(), ErrorKind::Character) << value;
      EXPECT_TRUE(Contains(error.what(), value)) << error.what();
    }
  }
  EXPECT_EQ(tree_.Read(kFile), kOld);
}

TEST_F(StationFiles, AreWrittenAsTheyAreButForBlanksAroundTheDueDate) {
  for (const char* value : {"a, b", "a, b \"c\"", "a, \"b, STATION c\" d", "a,", ",",
                            "a, station b", "a, MODEL b", "a,CAL", "  two  "}) {
    Save(SampleWith(&StationInstrument::Comment, value));
    EXPECT_TRUE(Contains(tree_.Read(kFile), std::string("\r\nCOMMENT ") + value + "\r\n")) << value;
  }
  Save(With({{&StationInstrument::ModelNumber, " PX12A"},
             {&StationInstrument::DueDay, " 05 "},
             {&StationInstrument::DueMonth, " MAR "},
             {&StationInstrument::DueYear, " 2002 "},
             {&StationInstrument::Comment, "\u00B5W \u20AC "}}));
  const std::string file = tree_.Read(R"(c:\stations\ST1\ PX12A)");
  for (const char* line :
       {"MODEL NUMBER  PX12A", "CAL DUE DATE 05 MAR 2002", "COMMENT \xB5W \x80 "}) {
    EXPECT_TRUE(Contains(file, std::string(line) + "\r\n")) << line;
  }
}

TEST_F(StationFiles, LeaveTheInstrumentAsItWasWhenItsFileCannotBeRead) {
  (void)ExpectUnreadable(ErrorKind::NotFound);
  tree_.Write(kFile, "COMMENT other\r\nCAL DUE DATE 1E999 MAR 2002\r\nx\r\n");
  EXPECT_EQ(ExpectUnreadable(ErrorKind::Type).Line(), 2);
  tree_.Write(kFile, "");
  StationInstrument instrument = SampleInstrument();
  EXPECT_FALSE(Load(instrument));
  EXPECT_EQ(FieldsOf(instrument), FieldsOf(SampleInstrument()));
}

// ---- The due date's check.

TEST(StationDueDate, MustExist) {
  const auto exists = [](const std::string& day, const std::string& month,
                         const std::string& year) {
    return HasValidDueDate(With({{&StationInstrument::DueDay, day},
                                 {&StationInstrument::DueMonth, month},
                                 {&StationInstrument::DueYear, year}}));
  };
  EXPECT_TRUE(exists(" 05 ", "MAR", " 2002 "));
  EXPECT_TRUE(exists("30", "APR", "2002"));
  EXPECT_FALSE(exists("31", "APR", "2002"));
  EXPECT_TRUE(exists("5x", "MAR", "2002y"));
  for (const char* month : {"", "jan", " JAN"}) {
    EXPECT_FALSE(exists("1", month, "2000")) << month;
  }
  EXPECT_FALSE(exists("x", "JAN", "2000"));
  for (const auto& [day, year] : {std::pair("5", "32768"), std::pair("99999", "2002")}) {
    const Error error = ErrorOf([&, d = day, y = year] { static_cast<void>(exists(d, "MAR", y)); });
    EXPECT_EQ(error.Kind(), ErrorKind::Type);
  }
}

// ---- What will not be read back.

struct ReadBackCase {
  std::string StationInstrument::*field;
  std::string value;
  std::string readBack;
  std::string notice;
};

TEST_F(StationFiles, ReportAValueThatIsReadBackDifferently) {
  using I = StationInstrument;
  const std::string comma = " only: a comma ends it. Write it without a comma.";
  const std::string words = " only: a line holds 30 words, its keyword included. Shorten it.";
  const std::string blanks = ": blanks at its beginning and runs of blanks are not kept.";
  const std::vector<ReadBackCase> cases = {
      {&I::ModelNumber, "PX12A,b", "PX12A", "MODEL NUMBER will be read back as \"PX12A\"" + comma},
      {&I::Comment, "1 ,2, 3", "1", "COMMENT will be read back as \"1\"" + comma},
      {&I::Comment, Words(30), Words(29),
       "COMMENT will be read back as \"... 17 18 19 20 21 22 23 24 25 26 27 28 29\"" + words},
      {&I::SerialNumber, Words(29), Words(28),
       "SERIAL NUMBER will be read back as \"... 16 17 18 19 20 21 22 23 24 25 26 27 28\"" + words},
      {&I::Trace, " lab  4", "lab 4", "TRACE will be read back as \"lab 4\"" + blanks},
      {&I::AddressType, "", "NONE", "ADDRESS TYPE will be read back as \"NONE\"."},
      {&I::AddressType, "QZ-IB", "GP-IB", "ADDRESS TYPE will be read back as \"GP-IB\"."},
      {&I::Address, "TYPE 5", "",
       "ADDRESS will be read back as the ADDRESS TYPE \"5\", because it "
       "begins with \"TYPE\". Write it another way."},
      {&I::DueDay, "5 x", "5",
       "CAL DUE DATE will be read back as \"5 x 0\". Write its day and its "
       "year as numbers only."},
      {&I::DueYear, "20 02", "20",
       "CAL DUE DATE will be read back as \"5 MAR 20\". Write its day "
       "and its year as numbers only."}};
  for (const ReadBackCase& each : cases) {
    SCOPED_TRACE(each.value);
    const I instrument = SampleWith(each.field, each.value);
    const auto notices = ReadBackNotices(instrument);
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0].field, each.field);
    EXPECT_EQ(notices[0].text, each.notice);
    // The notice agrees with what is read.
    Save(instrument);
    StoredFile file;
    I read;
    ASSERT_TRUE(LoadInstrumentFile(Joined(kStation, instrument.ModelNumber), read, file));
    EXPECT_EQ(read.*(each.field), each.readBack);
  }
}

TEST_F(StationFiles, ReportADueDateThatMakesTheFileUnreadable) {
  const StationInstrument instrument = SampleWith(&StationInstrument::DueDay, "5 x 1E999");
  ASSERT_TRUE(HasValidDueDate(instrument));
  const auto notices = ReadBackNotices(instrument);
  ASSERT_EQ(notices.size(), 1U);
  EXPECT_EQ(
      notices[0].text,
      "CAL DUE DATE will make the file unreadable. Write its day and its year as numbers only.");
  Save(instrument);
  (void)ExpectUnreadable(ErrorKind::Type);
}

TEST_F(StationFiles, ReportNothingThatIsReadBackAsItIs) {
  using I = StationInstrument;
  EXPECT_TRUE(ReadBackNotices(SampleInstrument()).empty());
  const std::vector<std::pair<std::string I::*, std::string>> values = {
      {&I::Comment, Words(29)},   {&I::SerialNumber, Words(28)},    {&I::Comment, "own "},
      {&I::Comment, ""},          {&I::Comment, "\"a\" b"},         {&I::Address, "Type 5"},
      {&I::AddressType, "qz-ib"}, {&I::AddressType, "QZ-IB 2"},     {&I::DueDay, " 05"},
      {&I::DueYear, "2002 "},     {&I::CalData, "a, b  c"},         {&I::DueDay, ""},
      {&I::DueYear, "99999"},     {&I::Comment, "caf\u00E9 \u20AC"}};
  for (const auto& [field, value] : values) {
    EXPECT_TRUE(ReadBackNotices(SampleWith(field, value)).empty()) << value;
  }
  // A day that does not exist.
  I instrument = SampleWith(&I::DueDay, "31 x");
  instrument.DueMonth = "APR";
  EXPECT_TRUE(ReadBackNotices(instrument).empty());
  EXPECT_TRUE(ReadBackNotices(With({{&I::AddressType, "NONE"}, {&I::DueMonth, "JAN"}})).empty());
}

// ---- Lists.

TEST_F(StationFiles, ListEveryNameWithoutADotAsAStation) {
  tree_.MakeFolders("c:\\stations\\rack 2");
  tree_.MakeFolders("c:\\stations\\with.dot");
  tree_.Write("c:\\stations\\NOTES", "x");
  tree_.MakeFolders("c:\\stations\\index");
  tree_.Write("c:\\stations\\INDEX", "x");
  fs::create_directory_symlink(tree_.Native("c:\\"), tree_.Native("c:\\stations\\LINK"));
  EXPECT_EQ(Sorted(ListStations(kRoot)), (Names{"LINK", "NOTES", "ST1", "index", "rack 2"}));
}

TEST_F(StationFiles, ListEveryOrdinaryFileAsAnInstrumentButTheIndexThatSavingWouldReplace) {
  tree_.Write(kFile, "x");
  tree_.Write(R"(c:\stations\ST1\PX13A.old)", "x");
  tree_.Write(R"(c:\stations\ST1\Index)", "x");
  tree_.MakeFolders(R"(c:\stations\ST1\folder)");
  ASSERT_EQ(::mkfifo(tree_.Native(R"(c:\stations\ST1\pipe)").c_str(), 0600), 0);
  EXPECT_EQ(Sorted(ListInstruments(kStation)), (Names{"PX12A", "PX13A.old"}));
  tree_.Write(kIndex, "x");
  EXPECT_EQ(Sorted(ListInstruments(kStation)), (Names{"Index", "PX12A", "PX13A.old"}));
}

TEST_F(StationFiles, ReportAMissingFolder) {
  const std::string folder = R"(c:\stations\GONE)";
  for (const auto& list : {ListStations, ListInstruments}) {
    const Error error = ErrorOf([&] { static_cast<void>(list(folder)); });
    EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
    EXPECT_EQ(error.Path(), folder);
    EXPECT_TRUE(Contains(error.Text(), "Cannot list the folder")) << error.Text();
  }
  EXPECT_EQ(ErrorOf([&] { DeleteAllInstrumentFiles(folder); }).Kind(), ErrorKind::NotFound);
}

// ---- Making a station.

TEST_F(StationFiles, MakeAFolderForAStationButNoRoot) {
  for (const char* name : {" rack 2", "Caf\u00E9"}) {
    MakeStation(kRoot, name);
    EXPECT_TRUE(fs::is_empty(tree_.Native(kRoot) / name));
  }
  EXPECT_EQ(tree_.Names(kRoot), (Names{" rack 2", "Caf\u00E9", "ST1"}));
  EXPECT_EQ(ErrorOf([] { MakeStation("c:\\gone", "ST1"); }).Kind(), ErrorKind::NotFound);
  EXPECT_FALSE(tree_.Exists("c:\\gone"));
}

TEST_F(StationFiles, RefuseAStationThatIsNoFolderNameExistsOrWouldNotBeListed) {
  tree_.Write("c:\\stations\\NOTES", "x");
  ExpectRefusedStation("../up", ErrorKind::Name, "it holds the character \"/\"");
  ExpectRefusedStation(std::string(300, 'x'), ErrorKind::Name, "its name is too long");
  ExpectRefusedStation("10 k\u03A9", ErrorKind::Character, "\u03A9");
  for (const char* name : {"ST1", "st1", "notes"}) {
    ExpectRefusedStation(name, ErrorKind::Name, "there already is one with this name");
  }
  ExpectRefusedStation("rack.2", ErrorKind::Name,
                       "The station name \"rack.2\" holds the character \".\": the station list "
                       "would never show it");
  ExpectRefusedStation("Index", ErrorKind::Name,
                       "The station name \"Index\" is the name of the list of stations");
}

// ---- Deleting.

TEST_F(StationFiles, DeleteOneInstrumentOrNothingAndNothingOutside) {
  tree_.Write(kFile, "x");
  tree_.Write(R"(c:\stations\ST1\PX13A)", "x");
  tree_.Write(kIndex, "x");
  DeleteInstrumentFile(kStation, "PX12A");
  EXPECT_EQ(tree_.Names(kStation), (Names{"INDEX", "PX13A"}));
  EXPECT_NO_THROW(DeleteInstrumentFile(kStation, "PX12A"));
  EXPECT_NO_THROW(DeleteInstrumentFile(kStation, std::string(300, 'P')));
  tree_.MakeFolders(R"(c:\stations\ST1\folder)");
  EXPECT_EQ(ErrorOf([] { DeleteInstrumentFile(kStation, "folder"); }).Kind(), ErrorKind::NotAFile);
  tree_.Write("c:\\stations\\NOTES", "x");
  for (const char* model : {"", "..", "..\\NOTES", "../NOTES", "PX12?"}) {
    SCOPED_TRACE(model);
    EXPECT_EQ(ErrorOf([&] { DeleteInstrumentFile(kStation, model); }).Kind(), ErrorKind::Name);
  }
  EXPECT_EQ(tree_.Names(kStation), (Names{"INDEX", "PX13A", "folder"}));
  EXPECT_EQ(tree_.Names(kRoot), (Names{"NOTES", "ST1", "history.tarvell"}));
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
  EXPECT_EQ(tree_.Names(kRoot), (Names{"NOTES", "ST1", "history.tarvell"}));
}

}  // namespace
}  // namespace tarvell
