// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/station/InstrumentEnd.h"
#include "core/station/StationFiles.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Lines;

constexpr const char* kStation = R"(c:\stations\ST1)";
constexpr const char* kFile = R"(c:\stations\ST1\PX12A)";

const std::vector<std::string> kLines = {"MODEL NUMBER PX12A", "SERIAL NUMBER 3318A12345",
                                         "ADDRESS TYPE GP-IB", "ADDRESS 13",
                                         "STATION rack 2",     "OPTIONS 001",
                                         "AVAILABILITY yes",   "CAL DUE DATE 5 MAR 2002",
                                         "ASSET A-77",         "TRACE lab 4",
                                         "COMMENT own",        "CAL DATA file"};

/// The first lines of an instrument's file.
std::string FirstLines(std::size_t count) {
  return Lines({kLines.begin(), kLines.begin() + static_cast<std::ptrdiff_t>(count)});
}

TEST(EndOfAnInstrumentsFile, IsMissingWhereTheLastLineOfAFieldIsNotCalData) {
  const std::string whole = FirstLines(12);
  const std::string missing =
      "The file does not end with its line \"CAL DATA\": it may be cut off.";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {whole, ""},
      {whole.substr(0, whole.size() - 2), ""},
      {whole + "\r\n", ""},
      {FirstLines(11) + "CAL DATA own, file\r\n", ""},
      {FirstLines(11), missing + " Its last line was not read: line 11, \"COMMENT own\". What is "
                                 "shown for COMMENT is not from the file."},
      {FirstLines(11) + "\r\n", missing},
      {FirstLines(11) + "CAL DA", missing + " Its last line was not read: line 12, \"CAL DA\"."},
      {FirstLines(8) + "ASS",
       missing + " Its last line was not read: line 9, \"ASS\". What is shown for ASSET, TRACE and "
                 "COMMENT is not from the file."},
      {whole + "COMMENT after the end\r\n",
       missing + " Its last line was not read: line 13, \"COMMENT after the end\"."}};
  for (const auto& [bytes, notice] : cases) {
    EXPECT_EQ(NoticeOfMissingEnd(bytes), notice) << bytes;
  }
}

TEST(EndOfAnInstrumentsFile, IsAskedAboutBeforeASaveWouldLoseItsLastLine) {
  const test::TestTree tree;
  tree.Write(kFile, FirstLines(11));
  StationInstrument instrument;
  StoredFile file;
  ASSERT_TRUE(LoadInstrumentFile(kFile, instrument, file));
  EXPECT_EQ(instrument.Comment, "") << "the last line is not interpreted";
  EXPECT_EQ(file.Unread(), NoticeOfMissingEnd(FirstLines(11)));

  const Replacement replacement = InstrumentWouldReplace(kStation, instrument, file);
  EXPECT_EQ(replacement.kind, Replacement::Kind::ReadInPart);
  EXPECT_EQ(replacement.fields, (std::vector<FileSummary::Field>{{"COMMENT", "own"}}));
  EXPECT_EQ(QuestionOf(replacement).text,
            "The end of the file ST1\\PX12A is missing, and its last line was not read. Do you "
            "want to replace it?");

  instrument.Comment = "own";  // typed from the notice
  EXPECT_EQ(InstrumentWouldReplace(kStation, instrument, file).kind, Replacement::Kind::None);
  SaveInstrumentFile(kStation, instrument, file);
  EXPECT_EQ(tree.Read(kFile), FirstLines(11) + "CAL DATA \r\n");
  EXPECT_EQ(file.Unread(), "");
  instrument.Comment = "";
  EXPECT_EQ(InstrumentWouldReplace(kStation, instrument, file).kind, Replacement::Kind::None);
}

}  // namespace
}  // namespace tarvell
