// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "core/files/Paths.h"
#include "core/station/StationFilesStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

// ---- Parsing a line.

struct LineParts {
  std::string item;
  std::string keyword;
  std::string value;
};

TEST(StationKeywords, SplitALineIntoKeywordAndValue) {
  const std::vector<LineParts> lines = {{"MODEL NUMBER PX12A", "MODEL NUMBER", "PX12A"},
                                        {"SERIAL NUMBER", "SERIAL NUMBER", ""},
                                        {"MODEL OTHER PX12A x", "MODEL OTHER", "PX12A x"},
                                        {"ADDRESS TYPE GP-IB", "ADDRESS TYPE", "GP-IB"},
                                        {"ADDRESS 13", "ADDRESS", "13"},
                                        {"ADDRESS", "ADDRESS", ""},
                                        {"ADDRESS Type 13", "ADDRESS", "Type 13"},
                                        {"STATION rack 2", "STATION", "rack 2"},
                                        {"CAL DUE DATE 5 MAR 2002", "CAL DUE DATE", "5 MAR 2002"},
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
  for (const char* keyword : {"model number", "Model Number", "MODEL", "MODEL ", "NUMBER",
                              "ADDRESS  TYPE", "CAL", "CAL DUE", "CAL DUE DAY", "INDEX", ""}) {
    SCOPED_TRACE(keyword);
    StationInstrument instrument = SampleInstrument();
    ApplyKeywordLine({keyword, "x"}, instrument);
    EXPECT_EQ(FieldsOf(instrument), FieldsOf(SampleInstrument()));
  }
}

TEST(StationKeywords, RenameTheOldAddressType) {
  const std::vector<std::pair<std::string, std::string>> types = {
      {"QZ-IB", "GP-IB"}, {"", "NONE"}, {"qz-ib", "qz-ib"}, {"QZ-IB 2", "QZ-IB 2"}};
  for (const auto& [value, type] : types) {
    SCOPED_TRACE(value);
    StationInstrument instrument = SampleInstrument();
    ApplyKeywordLine({"ADDRESS TYPE", value}, instrument);
    EXPECT_EQ(instrument.AddressType, type);
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

TEST_F(StationFiles, ReadEveryFieldButTheLastFromAFileOfTheProgram) {
  Save(SampleInstrument());
  StationInstrument instrument;
  instrument.CalData = "as it was";
  EXPECT_TRUE(Load(instrument));
  StationInstrument expected = SampleInstrument();
  expected.CalData = "as it was";
  EXPECT_EQ(FieldsOf(instrument), FieldsOf(expected));
}

TEST_F(StationFiles, DoNotInterpretTheLastItem) {
  StationInstrument withoutSerialNumber = SampleInstrument();
  withoutSerialNumber.SerialNumber.clear();
  for (const char* bytes : {"COMMENT x\r\n", "COMMENT x", "\r\n"}) {
    SCOPED_TRACE(bytes);
    EXPECT_EQ(FieldsOf(Loaded(bytes, SampleInstrument())), FieldsOf(withoutSerialNumber));
  }
}

TEST_F(StationFiles, ReadTheSerialNumberOnlyFromTheFile) {
  for (const auto& [lines, serial] :
       {std::pair("SERIAL NUMBER 1234\r\nMODEL NUMBER PX13A\r\nMODEL NUMBER PX12A\r\nx", "1234"),
        std::pair("MODEL NUMBER PX13A\r\nx", "")}) {
    EXPECT_EQ(Loaded(lines, SampleInstrument()).SerialNumber, serial);
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

TEST_F(StationFiles, AcceptAnyOtherTextAfterAComma) {
  for (const char* value : {"a, b", "a, b \"c\"", "a, \"b, STATION c\" d", "a,", ",",
                            "a, station b", "a, MODEL b", "a,CAL"}) {
    Save(SampleWith(&StationInstrument::Comment, value));
    EXPECT_TRUE(Contains(tree_.Read(kFile), std::string("\r\nCOMMENT ") + value + "\r\n")) << value;
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
  struct Row {
    const char* day;
    const char* month;
    const char* year;
    bool exists;
  };
  const std::vector<Row> rows = {
      {" 05 ", "MAR", " 2002 ", true}, {"31", "APR", "2002", false}, {"30", "APR", "2002", true},
      {"29", "FEB", "1900", false},    {"1", "", "2000", false},     {"1", "jan", "2000", false},
      {"1", " JAN", "2000", false},    {"x", "JAN", "2000", false},  {"5x", "MAR", "2002y", true}};
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.day) + " " + row.month + " " + row.year);
    EXPECT_EQ(HasValidDueDate(With({{&StationInstrument::DueDay, row.day},
                                    {&StationInstrument::DueMonth, row.month},
                                    {&StationInstrument::DueYear, row.year}})),
              row.exists);
  }
  for (const auto& [day, year] : {std::pair("5", "32768"), std::pair("99999", "2002")}) {
    const StationInstrument instrument = With({{&StationInstrument::DueDay, day},
                                               {&StationInstrument::DueMonth, "MAR"},
                                               {&StationInstrument::DueYear, year}});
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(HasValidDueDate(instrument)); }).Kind(),
              ErrorKind::Type);
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
      {&I::Comment, Words(29)}, {&I::SerialNumber, Words(28)}, {&I::Comment, "own "},
      {&I::Comment, ""},        {&I::Comment, "\"a\" b"},      {&I::Address, "Type 5"},
      {&I::DueDay, " 05"},      {&I::DueYear, "2002 "},        {&I::CalData, "a, b  c"},
      {&I::DueDay, ""},         {&I::DueYear, "99999"},        {&I::Comment, "caf\u00E9 \u20AC"}};
  for (const auto& [field, value] : values) {
    EXPECT_TRUE(ReadBackNotices(SampleWith(field, value)).empty()) << value;
  }
  // A day that does not exist.
  I instrument = SampleWith(&I::DueDay, "31 x");
  instrument.DueMonth = "APR";
  EXPECT_TRUE(ReadBackNotices(instrument).empty());
  EXPECT_TRUE(ReadBackNotices(With({{&I::AddressType, "NONE"}, {&I::DueMonth, "JAN"}})).empty());
}

}  // namespace
}  // namespace tarvell
