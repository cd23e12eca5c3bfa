// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "support/ErrorOf.h"
#include "support/SetStage.h"

/// What the files of the three sets of standards have in common, whatever their pages.
namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::FullLine;
using test::Joined;
using test::Lines;
using test::ManyLines;
using test::ManyNames;
using test::ManyRows;
using test::Row;
using test::Rows;
using test::SetModel;
using test::Texts;

class EverySet : public testing::TestWithParam<SetModel>, public test::SetStage {
 protected:
  EverySet() : SetStage(GetParam()) {}

  [[nodiscard]] const std::string& Name(std::size_t page) const { return set_.pages.at(page); }
  /// What is reported of 51 rows on the first page.
  [[nodiscard]] std::vector<Texts> NoticesOfTheLargestPage() const {
    return set_.code == "RT520A" ? std::vector<Texts>{{"page RT521A", "more rows", "rows 9 to 51."}}
                                 : std::vector<Texts>();
  }
  [[nodiscard]] const Texts& Opening(std::size_t page) const { return set_.openings.at(page); }
};

// Reading.

TEST_P(EverySet, ReadsItsPagesInAnyOrder) {
  Texts lines;
  for (std::size_t page = set_.pages.size(); page-- > 0;) {
    lines = Joined({lines, Page(page, {FullLine("of" + std::to_string(page)), FullLine("b")})});
  }
  Load(lines);
  for (std::size_t page = 0; page < set_.pages.size(); ++page) {
    EXPECT_EQ(FirstColumn(static_cast<std::int16_t>(page)),
              (Texts{"of" + std::to_string(page), "b"}));
  }
  EXPECT_TRUE(data_->LoadNotices().empty());
}

TEST_P(EverySet, EndsAPageInAnyCase) {
  for (const char* end : {"!END", "!End", "!end", "  !eNd  "}) {
    Load(Joined({Opening(1), {"*a", end, "*b", "!"}}));
    EXPECT_EQ(FirstColumn(1), (Texts{"a"})) << end;
  }
}

TEST_P(EverySet, LosesDataLinesOutsideOfItsPages) {
  Load(Joined({{"*x"}, Page(0, {"*a"}), {"*y"}, PagesBut({0}), {"*z", "!"}}));
  EXPECT_EQ(FirstColumn(0), (Texts{"a"}));
  for (std::size_t page = 1; page < set_.pages.size(); ++page) {
    EXPECT_EQ(FirstColumn(static_cast<std::int16_t>(page)), (Texts{"7"})) << page;
  }
}

TEST_P(EverySet, KeepsTheRowsOfAPageThatItDoesNotFill) {
  SetRows(0, {{"a", "b", "c", "d", "e"}, {"f", "g", "h", "i", "j"}, {"k", "l", "m", "n", "o"}});
  LoadOver(Page(0, {"*1"}));
  EXPECT_EQ(FirstColumn(0), (Texts{"1", "f", "k"}));
  EXPECT_EQ(ShownRows(0)[1][1], "g");
}

TEST_P(EverySet, ReadsASecondPageOfTheSameNameOverItsEarlierRowsAndSaysSo) {
  Load(Joined({Page(1, {FullLine("a"), FullLine("b"), FullLine("c")}), PagesBut({1}),
               Page(1, {FullLine("d")})}));
  EXPECT_EQ(FirstColumn(1), (Texts{"d", "b", "c"}));
  ExpectNotice({Name(1), "more than once", "over those of the earlier one"});
}

TEST_P(EverySet, LosesTheLastLineOfAFileThatEndsInsideAPageAndSaysSo) {
  for (std::size_t page = 0; page < set_.pages.size(); ++page) {
    Load(Joined({PagesBut({page}), Opening(page), {FullLine("a"), FullLine("b"), FullLine("c")}}));
    EXPECT_EQ(FirstColumn(static_cast<std::int16_t>(page)), (Texts{"a", "b"})) << page;
    ExpectNotice({Name(page), "!END", "last line of the file was not read"});
  }
}

TEST_P(EverySet, OfAnotherModelIsReadAndSaysSo) {
  Load(Joined({{"#MODEL_NO : " + set_.otherCode, "#SER_NO   : 12"}, PagesBut({})}));
  EXPECT_EQ(data_->ModelNumber(), set_.code);
  EXPECT_EQ(data_->SerialNumber(), "12");
  EXPECT_EQ(FirstColumn(0), (Texts{"7"}));
  ExpectNotice({"\"" + set_.otherCode + "\"", "\"" + set_.code + "\""});
}

TEST_P(EverySet, WithoutAPageOrItsEndIsRefusedAsATemplate) {
  const std::filesystem::path path = tree_.ProgramFolder() / ("Temp" + set_.code);
  for (std::size_t page = 0; page < set_.requiredPages; ++page) {
    const Texts others = Joined({{"#MODEL_NO : " + set_.code}, PagesBut({page})});
    for (const Texts& lines : {others, Joined({others, Opening(page), {"*1", "*2"}})}) {
      test::WriteNative(path, Lines(lines));
      const Error error = ErrorOf([&] { data_->SetInitialDefaultData(); });
      EXPECT_EQ(error.Kind(), ErrorKind::Template) << page;
      EXPECT_EQ(error.Path(), path.string()) << page;
    }
  }
}

// Writing.

TEST_P(EverySet, WritesItsOwnModelWhateverModelNumberIsSet) {
  data_->SetModelNumber(set_.otherCode);
  EXPECT_EQ(Saved().substr(0, 20), "#MODEL_NO : " + set_.code + "\r\n");
}

// The largest page.

TEST_P(EverySet, HoldsPagesOf51RowsWhole) {
  Load(Joined({Page(0, ManyLines(51)), PagesBut({0})}));
  EXPECT_EQ(FirstColumn(0), ManyNames(51));
  ExpectNotices(NoticesOfTheLargestPage());
  SetRows(1, ManyRows(51));
  static_cast<void>(Saved());
  LoadAgain();
  EXPECT_EQ(FirstColumn(0), ManyNames(51));
  EXPECT_EQ(FirstColumn(1), ManyNames(51));
}

TEST_P(EverySet, With52RowsInAPageIsAnIndexErrorOfItsLine) {
  const Error error = LoadError(
      Joined({{"#SER_NO   : 12"}, Page(0, ManyLines(52)), {"#SER_NO   : 13"}, PagesBut({0})}));
  EXPECT_EQ(error.Kind(), ErrorKind::Index);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(static_cast<std::size_t>(error.Line()), 1 + Opening(0).size() + 52);
  EXPECT_TRUE(Contains(error.Text(), "51")) << error.Text();
  // What was read stays.
  EXPECT_EQ(data_->SerialNumber(), "12");
  EXPECT_EQ(FirstColumn(0), ManyNames(51));
}

TEST_P(EverySet, TakesNoGridOf52DataRows) {
  SetRows(2, ManyRows(51));
  EXPECT_EQ(ShownRows(2), ManyRows(51));
  EXPECT_EQ(ErrorOf([&] { SetRows(2, ManyRows(52)); }).Kind(), ErrorKind::Index);
}

// The grid.

TEST_P(EverySet, TakesTheTextsOfTheGridUnchanged) {
  const Rows rows = {{" a ", " 5", "b ", "%", "ppm"}, {"x", "", "", "", "\xCE\xA9"}};
  SetRows(2, rows);
  EXPECT_EQ(ShownRows(2), rows);
  EXPECT_EQ(ShownRows(1), set_.emptyPage);
}

TEST_P(EverySet, ReplacesAWholePageByTheGrid) {
  SetRows(2, ManyRows(51));
  SetRows(2, {{"a", "b", "c", "d", "e"}});
  EXPECT_EQ(ShownRows(2), (Rows{{"a", "b", "c", "d", "e"}}));
  // The later rows are gone, not only hidden.
  LoadOver(Page(2, {"*1", "*2"}));
  EXPECT_EQ(FirstColumn(2), (Texts{"1", "2"}));
  SetRows(2, {});
  EXPECT_EQ(ShownRows(2), set_.emptyPage);
}

TEST_P(EverySet, KeepsOneFurtherPageThatIsNeverWritten) {
  const auto further = static_cast<std::int16_t>(set_.pages.size());
  SetRows(further, ManyRows(2));
  data_->SetCalPageSerial(further, "further");
  EXPECT_EQ(ShownRows(further), ManyRows(2));
  EXPECT_EQ(data_->GetCalPageSerial(further), "further");
  EXPECT_FALSE(Contains(Saved(), "further"));
  EXPECT_FALSE(Contains(Saved(), "\r\n*"));
}

TEST_P(EverySet, HasNoPageBeforeItsFirstOrAfterTheFurtherOne) {
  for (const std::int16_t page :
       {std::int16_t{INT16_MIN}, std::int16_t{-1}, static_cast<std::int16_t>(set_.pages.size() + 1),
        std::int16_t{INT16_MAX}}) {
    MemoryGrid grid(5);
    EXPECT_EQ(ErrorOf([&] { data_->GetCalData(page, grid); }).Kind(), ErrorKind::Index) << page;
    EXPECT_EQ(ErrorOf([&] { data_->SetCalData(page, grid); }).Kind(), ErrorKind::Index) << page;
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(data_->GetCalPageSerial(page)); }).Kind(),
              ErrorKind::Index)
        << page;
    EXPECT_EQ(ErrorOf([&] { data_->SetCalPageSerial(page, "x"); }).Kind(), ErrorKind::Index)
        << page;
  }
}

TEST_P(EverySet, KeepsASerialNumberForEachPage) {
  const auto further = static_cast<std::int16_t>(set_.pages.size());
  for (std::int16_t page = 0; page <= further; ++page) {
    EXPECT_EQ(data_->GetCalPageSerial(page), "") << page;
    data_->SetCalPageSerial(page, "S" + std::to_string(page));
  }
  for (std::int16_t page = 0; page <= further; ++page) {
    EXPECT_EQ(data_->GetCalPageSerial(page), "S" + std::to_string(page)) << page;
  }
}

INSTANTIATE_TEST_SUITE_P(Sets, EverySet,
                         testing::Values(test::CapacitorSetA(), test::CapacitorSetC(),
                                         test::ResistorSet()),
                         [](const auto& test) { return test.param.code; });

}  // namespace
}  // namespace tarvell
