// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

#include "core/caldata/CalFileNotes.h"
#include "core/platform/ForwardingPlatform.h"
#include "core/session/Tarvell_MainModule.h"
#include "support/ErrorOf.h"
#include "support/OrdinaryUser.h"
#include "support/TestTree.h"

namespace tarvell::test {
namespace {

using Names = std::vector<std::string>;

// Directory searches in the order of the names, so that rows are known in advance.
class SortedPlatform : public ForwardingPlatform {
 public:
  [[nodiscard]] std::error_code Search(const std::filesystem::path& folder, SearchKind kind,
                                       const SearchVisitor& visit) override {
    Names names;
    const std::error_code code =
        ForwardingPlatform::Search(folder, kind, [&](const FoundEntry& entry) {
          names.push_back(entry.name);
          return true;
        });
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) {
      if (!visit({folder, name})) {
        break;
      }
    }
    return code;
  }
};

class MainModule : public testing::Test {
 public:
  MainModule() : before_(SetCurrentPlatform(&platform_)) {}
  MainModule(const MainModule&) = delete;
  MainModule& operator=(const MainModule&) = delete;
  ~MainModule() override {
    SetCurrentPlatform(before_);
    gCalFiles.fill({});
  }

  TestTree tree;

 private:
  SortedPlatform platform_;
  Platform* before_;
};

using ModelFolders = MainModule;

Names ModelFoldersOf(const std::string& root) {
  Names names = {"left", "over", "from", "before"};
  EXPECT_TRUE(ListModelFolders(root, names));
  return names;
}

TEST_F(ModelFolders, AreNamedInUpperCaseAndAStarWhereNothingIsInThem) {
  EXPECT_EQ(ModelFoldersOf("c:\\calfactors"), (Names{"*", ""}));
  EXPECT_FALSE(tree.Exists("c:\\calfactors"));
  tree.Write("c:\\calfactors\\a.txt", "x");
  tree.Write(R"(c:\calfactors\folder.old\SN1)", "x");
  tree.Write(R"(c:\calfactors\.hidden\SN1)", "x");
  EXPECT_EQ(ModelFoldersOf("c:\\calfactors"), (Names{"*", ""}));
  // Anything in a folder counts.
  tree.Write(R"(c:\calfactors\a\readme.txt)", "x");
  tree.MakeFolders(R"(c:\calfactors\B\inner)");
  tree.Write(R"(c:\calfactors\C\.hidden)", "x");
  tree.MakeFolders("c:\\calfactors\\EMPTY");
  EXPECT_EQ(ModelFoldersOf("c:\\calfactors"), (Names{"B", "C", "*", "A", ""}));
}

TEST_F(ModelFolders, OfARootThatCannotBeSearchedAreAnError) {
  tree.Write(R"(c:\calfactors\PX12A\SN1)", "x");
  const OrdinaryUser user(tree.Root());
  const std::filesystem::path root = tree.Native("c:\\calfactors");
  std::filesystem::permissions(root, std::filesystem::perms::none);
  Names names;
  const Error error = ErrorOf([&] { ListModelFolders("c:\\calfactors", names); });
  std::filesystem::permissions(root, std::filesystem::perms(0755));
  EXPECT_EQ(error.Kind(), ErrorKind::NoPermission);
  EXPECT_EQ(error.Path(), "c:\\calfactors");
}

std::string ThreeDigits(int number) {
  const std::string digits = std::to_string(number);
  return std::string(3 - digits.size(), '0') + digits;
}

TEST_F(ModelFolders, MayBeTwoHundredAndFiftySix) {
  for (int i = 0; i < 256; ++i) {
    tree.Write("c:\\calfactors\\m" + ThreeDigits(i) + "\\SN1", "x");
  }
  Names names = ModelFoldersOf("c:\\calfactors");
  ASSERT_EQ(names.size(), 257U);
  EXPECT_EQ(names[255], "M255");
  EXPECT_EQ(names[256], "");
  // One more is an error, and the first are listed.
  tree.Write(R"(c:\calfactors\m256\SN1)", "x");
  const Error error = ErrorOf([&] { ListModelFolders("c:\\calfactors", names); });
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_TRUE(Contains(error.Text(), "more than 256 entries")) << error.Text();
  ASSERT_GE(names.size(), 256U);
  EXPECT_EQ(names[0], "M000");
  EXPECT_EQ(names[255], "M255");
}

// ---- The headers of the data files.

constexpr const char* kModel = "c:\\calfactors\\PX12A";

std::string InModel(std::string_view name) {
  return std::string(kModel) + "\\" + std::string(name);
}

std::string NewStyle(const std::string& serial) {
  return Lines({"#MODEL_NO : PX12A", "#SER_NO   : " + serial, "#CAL_DATE : 20010305",
                "#CAL_NO   : C-0042", "#DUE_DATE : 20020406", "#COMMENT  : factory", "!Frequency",
                "*   50.00   100.0", "!End"});
}

class CalFileHeaders : public MainModule {
 public:
  // Reads the folder and notes the serial number of every row that is reported.
  std::int16_t Read() {
    return ReadCalFileHeaders(
        kModel, [this](const CalFileInfo& row) { reported.push_back(row.SerialNumber); });
  }

  Names reported;
};

void ExpectDates(const CalFileInfo& row, const std::vector<int>& dates) {
  EXPECT_EQ((std::vector<int>{row.CalYear, row.CalMonth, row.CalDay, row.DueYear, row.DueMonth,
                              row.DueDay}),
            dates);
}

TEST_F(CalFileHeaders, OfANewStyleFileReplaceWhatTheirRowHeldBefore) {
  gCalFiles[0].Option = "001";
  tree.Write(InModel("SN12345"), NewStyle("3318A12345"));
  EXPECT_EQ(Read(), 1);
  const CalFileInfo& row = gCalFiles[0];
  EXPECT_EQ(row.FilePath, "c:\\calfactors\\PX12A\\SN12345");
  EXPECT_EQ(row.ModelNumber, "PX12A");
  EXPECT_EQ(row.SerialNumber, "3318A12345");
  EXPECT_EQ(row.CalibrationNumber, "C-0042");
  EXPECT_EQ(row.Comment, "factory");
  EXPECT_EQ(row.Option, "");
  ExpectDates(row, {2001, 3, 5, 2002, 4, 6});
  EXPECT_EQ(reported, Names{"3318A12345"});
}

TEST_F(CalFileHeaders, TakeTheWholeTextAfterTheFirstColon) {
  tree.Write(InModel("SN1"), Lines({"#model:  QZ PX12A Opt001  ", "#", "#x",
                                    "#CAL_NO   :", "#:2002040", "#:a: b  c:"}));
  EXPECT_EQ(Read(), 1);
  const CalFileInfo& row = gCalFiles[0];
  EXPECT_EQ(row.ModelNumber, "QZ PX12A Opt001");
  EXPECT_EQ(row.SerialNumber, "");
  EXPECT_EQ(row.CalibrationNumber, "");
  EXPECT_EQ(row.Comment, "a: b  c:");
  EXPECT_EQ(row.Option, "");
  ExpectDates(row, {0, 0, 0, 2002, 4, 40});
}

TEST_F(CalFileHeaders, AreShiftedByAComma) {
  // A comma ends an item, so the text after it is taken for the next header line.
  tree.Write(InModel("SN1"), NewStyle("12,34"));
  EXPECT_EQ(Read(), 1);
  EXPECT_EQ(gCalFiles[0].SerialNumber, "12");
  EXPECT_EQ(gCalFiles[0].CalibrationNumber, "20010305");
  EXPECT_EQ(gCalFiles[0].Comment, "20020406");
  ExpectDates(gCalFiles[0], {0, 0, 0, 0, 42, 42});
}

TEST_F(CalFileHeaders, OfAnOldStyleFileNameModelAndOption) {
  for (const auto& [item, model, option] :
       {std::tuple("QZ PX12A Opt001", "PX12A", "001"), std::tuple("PX12A", "PX12A", ""),
        std::tuple("QZPX12A", "PX12A", ""), std::tuple("QZ   PX12A", "PX12A", ""),
        std::tuple("\"  QZ PX12A  \"", "PX12A", ""), std::tuple("PX12A Opt001", "PX12A", "001"),
        std::tuple("PX12AOpt001", "PX12AO", "001"),
        std::tuple("RT520A-XYZ Opt001", "RT520A", "001"), std::tuple("A Opt001", "A Opt0", "001"),
        std::tuple("qz PX12A", "qz PX12A", ""), std::tuple("Qz PX12A", "Qz PX12A", ""),
        std::tuple("PX12A opt001", "PX12A opt001", ""),
        std::tuple("PX12A Opt002", "PX12A Opt002", ""),
        std::tuple("PX12A Opt001 x", "PX12A Opt001 x", ""), std::tuple("QZ", "", ""),
        std::tuple("\"\"", "", "")}) {
    SCOPED_TRACE(item);
    gCalFiles[0].Comment = gCalFiles[0].CalibrationNumber = "before";
    tree.Write(InModel("SN1"), std::string(item) + "\r\n12345\r\n05MAR2001\r\n");
    EXPECT_EQ(Read(), 1);
    EXPECT_EQ(gCalFiles[0].ModelNumber, model);
    EXPECT_EQ(gCalFiles[0].Option, option);
    EXPECT_EQ(gCalFiles[0].SerialNumber, "12345");
    EXPECT_EQ(gCalFiles[0].Comment + gCalFiles[0].CalibrationNumber, "");
    ExpectDates(gCalFiles[0], {2001, 3, 5, 2002, 3, 5});
  }
}

TEST_F(CalFileHeaders, OfAnOldStyleFileAreDueAYearLater) {
  for (const auto& [text, dates] : std::vector<std::pair<const char*, std::vector<int>>>{
           {"05MAR2001", {2001, 3, 5, 2002, 3, 5}},
           {"29FEB2000", {2000, 2, 29, 2001, 2, 29}},
           {"31DEC1999", {1999, 12, 31, 2000, 12, 31}},
           {"05mar2001", {2001, 0, 5, 2002, 0, 5}},
           {"05XXX2001", {2001, 0, 5, 2002, 0, 5}},
           {"xxMARyyyy", {0, 3, 0, 1, 3, 0}},
           {"5MAR2001", {2001, 0, 5, 2002, 0, 5}},
           {"\"\"", {0, 0, 0, 1, 0, 0}}}) {
    SCOPED_TRACE(text);
    tree.Write(InModel("SN1"), std::string("PX12A, 12345 ,") + text);
    EXPECT_EQ(Read(), 1);
    EXPECT_EQ(gCalFiles[0].SerialNumber, "12345");
    ExpectDates(gCalFiles[0], dates);
  }
}

TEST_F(CalFileHeaders, AreReadFromFilesWithTheirPrefixWithoutAnExtensionAndOfEitherStyle) {
  for (const char* name : {"SN1", "Sn2", "sn3", "sN4", "SN5.dat", "sn6.", "XSN7", "S", "N1", "sn",
                           "SNABC", "SN 8", ".SN9", "INDEX"}) {
    tree.Write(InModel(name), NewStyle(name));
  }
  // Neither style: the first item holds a line end.
  for (const char* end : {"\r\n", "\r", "\n"}) {
    tree.Write(InModel("SN6"), std::string("\"PX") + end + "12A\"\r\n2\r\n05MAR2001\r\n");
    reported.clear();
    EXPECT_EQ(Read(), 6);
    EXPECT_EQ(reported, (Names{"SN 8", "SN1", "SNABC", "Sn2", "sn", "sn3"}));
    EXPECT_EQ(gCalFiles[2].FilePath, InModel("SNABC"));
  }
}

TEST_F(CalFileHeaders, LeaveFurtherRowsAsTheyWereAndOfNoFolderAreNone) {
  EXPECT_EQ(ReadCalFileHeaders(""), -1);
  for (const char* name : {"SN1", "SN2"}) {
    tree.Write(InModel(name), NewStyle(name));
  }
  EXPECT_EQ(Read(), 2);
  tree.Write(R"(c:\calfactors\OTHER\SN9)", NewStyle("SN9"));
  EXPECT_EQ(ReadCalFileHeaders("c:\\calfactors\\OTHER"), 1);
  EXPECT_EQ(ReadCalFileHeaders("c:\\calfactors\\missing"), 0);
  EXPECT_EQ(gCalFiles[0].SerialNumber, "SN9");
  EXPECT_EQ(gCalFiles[1].SerialNumber, "SN2");
  // A link that leads nowhere is listed as a model, and is an error.
  std::filesystem::create_symlink("/nowhere/at/all", tree.Native("c:\\calfactors\\lost"));
  Names names;
  ListModelFolders("c:\\calfactors", names);
  EXPECT_EQ(names, (Names{"OTHER", "PX12A", "LOST", ""}));
  const Error error = ErrorOf([] { (void)ReadCalFileHeaders("c:\\calfactors\\lost"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_EQ(error.Path(), "c:\\calfactors\\lost");
}

TEST_F(CalFileHeaders, OfAFiftySecondFileAreAnErrorThatNamesWhatCannotBeReadAsWell) {
  for (int i = 1; i <= 51; ++i) {
    tree.Write(InModel("SN" + ThreeDigits(i)), NewStyle(ThreeDigits(i)));
  }
  EXPECT_EQ(Read(), 51);
  tree.MakeFolders(InModel("SN000"));
  EXPECT_EQ(ErrorOf([this] { (void)Read(); }).Kind(), ErrorKind::NotAFile);
  tree.Write(InModel("SN052"), NewStyle("052"));
  reported.clear();
  const Error error = ErrorOf([this] { (void)Read(); });
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kModel);
  EXPECT_TRUE(Contains(error.Text(), "more than 51 data files")) << error.Text();
  EXPECT_TRUE(Contains(error.Text(),
                       "\n\nOne entry of the folder cannot be read as a data file:"
                       "\n\nSN000: Cannot read the file: it is a folder"))
      << error.Text();
  ASSERT_EQ(reported.size(), 51U);
  EXPECT_EQ(reported.back(), "051");
  EXPECT_EQ(gCalFiles[0].SerialNumber, "001");
  EXPECT_EQ(gCalFiles[50].SerialNumber, "051");
}

TEST_F(CalFileHeaders, ThatMatchAFilterAreReadFromAnyNumberOfFiles) {
  const auto write = [this](const std::string& name, const std::string& serial,
                            const std::string& number, const std::string& comment) {
    tree.Write(InModel(name), Lines({"#M : PX12A", "#S : " + serial, "#C : 20010305",
                                     "#N : " + number, "#D : 20020305", "#C : " + comment, "!"}));
  };
  for (int i = 1; i <= 120; ++i) {
    write("SN" + ThreeDigits(i), "A" + ThreeDigits(i), "C-" + ThreeDigits(1000 - i), "Room 7");
  }
  write("SN121", "B121", "C-1", "\xDC, for HALL 9");
  const auto listed = [this](const std::string& filter) {
    reported.clear();
    (void)ReadCalFileHeaders(
        kModel, [this](const CalFileInfo& row) { reported.push_back(row.SerialNumber); }, filter);
    return reported;
  };
  for (int i = 1; i <= 120; ++i) {
    EXPECT_EQ(listed("a" + ThreeDigits(i)), Names{"A" + ThreeDigits(i)});
  }
  EXPECT_EQ(listed(" c-99"), (Names{"A001", "A002", "A003", "A004", "A005", "A006", "A007", "A008",
                                    "A009", "A010"}));
  EXPECT_EQ(listed("Hall 9 "), Names());
  EXPECT_EQ(listed("hall"), Names());
  EXPECT_EQ(listed("\u00DC"), Names{"B121"}) << "the header ends at the comma";
  EXPECT_EQ(listed("A00 "),
            (Names{"A001", "A002", "A003", "A004", "A005", "A006", "A007", "A008", "A009"}));
  EXPECT_EQ(gCalFiles[8].SerialNumber, "A009");
  // Too many, and files that cannot be read.
  tree.MakeFolders(InModel("SN1000"));
  const Error error = ErrorOf([&] { (void)listed("Room 7"); });
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_TRUE(error.Text().starts_with("More than 51 data files match the filter")) << error.Text();
  EXPECT_EQ(reported.size(), 51U);
  EXPECT_EQ(listed("A12"), Names{"A120"}) << "the folder SN1000 does not match";
  EXPECT_EQ(ErrorOf([&] { (void)listed("00"); }).Kind(), ErrorKind::NotAFile);
  EXPECT_EQ(ErrorOf([&] { (void)listed("  "); }).Kind(), ErrorKind::Index);
}

TEST_F(CalFileHeaders, OfAFileThatCannotBeReadAreAnErrorOfItsLine) {
  tree.Write(InModel("SN1"), NewStyle("1"));
  tree.Write(InModel("SN3"), NewStyle("3"));
  const auto newStyle = [](const std::string& calDate, const std::string& dueDate) {
    return Lines({"#M : PX12A", "#S : 2", "#C : " + calDate, "#N : 1", "#D : " + dueDate});
  };
  const std::string tooEarly =
      "The file ends too early: more lines were expected (input past end of file). Check the file, "
      "or replace it by a complete one. All other data sets of its folder are listed.";
  // A number beyond sixteen bits is a type error.
  for (const auto& [bytes, line, text] :
       {std::tuple(std::string(), 1, tooEarly), std::tuple(std::string("PX12A"), 1, tooEarly),
        std::tuple(Lines({"PX12A", "12345"}), 3, tooEarly),
        std::tuple(Lines({"#MODEL_NO : PX12A"}), 2, tooEarly),
        std::tuple(newStyle("20010305", "20020305"), 6, tooEarly),
        std::tuple(newStyle("9E990305", "20020305") + "#C : ", 3, std::string()),
        std::tuple(newStyle("20010305", "9E990305") + "#C : ", 5, std::string()),
        std::tuple(Lines({"PX12A", "2", "05MAR 9E9"}), 3, std::string())}) {
    SCOPED_TRACE(bytes);
    tree.Write(InModel("SN2"), bytes);
    reported.clear();
    const Error error = ErrorOf([this] { (void)Read(); });
    EXPECT_EQ(error.Kind(), text.empty() ? ErrorKind::Type : ErrorKind::InputPastEnd);
    EXPECT_EQ(error.Path(), InModel("SN2"));
    EXPECT_EQ(error.Line(), line);
    EXPECT_TRUE(text.empty() || error.Text() == text) << error.Text();
    EXPECT_EQ(reported, (Names{"1", "3"}));
    EXPECT_EQ(gCalFiles[1].SerialNumber, "3");
  }
}

TEST_F(CalFileHeaders, OfEntriesThatCannotBeReadAreOneErrorAndAllOthersAreRead) {
  tree.Write(InModel("SN1"), NewStyle("1"));
  tree.Write(InModel("SN2"), "");
  tree.Write(InModel("SN3"), "PX12A\r\n3\r\n05MAR2001\r\n");
  tree.MakeFolders(InModel("SN4"));
  tree.Write(InModel("SN6"), NewStyle("6"));
  Error error = ErrorOf([this] { (void)Read(); });
  EXPECT_EQ(error.Kind(), ErrorKind::InputPastEnd);
  EXPECT_EQ(error.Path(), kModel);
  EXPECT_EQ(error.Text(),
            "2 entries of the folder cannot be read as a data file:\n\n"
            "SN2, line 1: The file ends too early: more lines were expected (input past end of "
            "file). Check the file, or replace it by a complete one.\n\n"
            "SN4: Cannot read the file: it is a folder, not a file. Rename or remove it, then try "
            "again.\n\n"
            "All other data sets of the folder are listed.");
  EXPECT_EQ(reported, (Names{"1", "3", "6"}));
  EXPECT_EQ(gCalFiles[2].FilePath, InModel("SN6"));

  // Five are named. A finished kit file of two items names no date.
  tree.Write(InModel("SN5"), "QZ RT410A\r\n3318A12345\r\n");
  for (const char* name : {"SN7", "SN8", "SN9", "SNA"}) {
    tree.MakeFolders(InModel(name));
  }
  error = ErrorOf([this] { (void)Read(); });
  EXPECT_TRUE(Contains(error.Text(), "7 entries")) << error.Text();
  for (const char* named : {"\nSN5, line 3: The file ends too early",
                            "\nSN7: ", "\nSN8: ", "\n\n... and 2 more.\n\n"}) {
    EXPECT_TRUE(Contains(error.Text(), named)) << error.Text();
  }
  EXPECT_FALSE(Contains(error.Text(), "SN9")) << error.Text();
}

// ---- One file, and what is said of it.

TEST(CalFileNotes, SayNumberDatesCommentAndWhatTheMarkMeansOrWhatIsMissing) {
  CalFileInfo row;
  row.CalibrationNumber = "C-0042";
  row.CalYear = 2001;
  row.CalMonth = 3;
  row.CalDay = 5;
  row.DueYear = 2002;
  row.DueMonth = 12;
  row.DueDay = 31;
  row.Comment = "factory";
  for (const auto& [state, words] :
       {std::pair(DueState::Fine, ""), std::pair(DueState::PastDue, ", past due"),
        std::pair(DueState::DueSoon, ", due within 30 days")}) {
    EXPECT_EQ(CalFileNotes(row, state),
              "Calibration number: C-0042\n"
              "Calibrated: 5 MAR 2001\n"
              "Due: 31 DEC 2002" +
                  std::string(words) + "\nComment: factory");
  }
  row = {};
  row.DueYear = 2002;
  row.DueMonth = 11;
  row.DueDay = 31;
  EXPECT_EQ(CalFileNotes(row, DueState::NoDate),
            "Calibration number: (none)\n"
            "Calibrated: (none)\n"
            "Due: 31 NOV 2002 (no such day)\n"
            "Comment: (none)");
}

TEST(CalFileHeader, OfOneFileIsReadWithoutChangingTheList) {
  const TestTree tree;
  const std::string path = InModel("SN12345");
  EXPECT_EQ(ErrorOf([&] { (void)ReadCalFileHeader(path); }).Path(), path);
  tree.Write(path, NewStyle("3318A12345"));
  const auto row = ReadCalFileHeader(path);
  ASSERT_TRUE(row.has_value());
  EXPECT_EQ(row->FilePath, path);
  EXPECT_EQ(row->SerialNumber, "3318A12345");
  EXPECT_EQ(gCalFiles.at(0).SerialNumber, "");
}

}  // namespace
}  // namespace tarvell::test
