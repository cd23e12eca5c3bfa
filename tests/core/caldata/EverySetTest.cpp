// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/caldata/MemoryGrid.h"
#include "support/ErrorOf.h"
#include "support/SetStage.h"

/// What the files of the three sets of standards have in common, whatever their pages.
namespace tarvell::test {
namespace {

class EverySet : public testing::TestWithParam<SetModel>, public SetStage {
 protected:
  EverySet() : SetStage(GetParam()) {}

  [[nodiscard]] const Texts& Opening(std::size_t page) const { return set_.openings.at(page); }
};

TEST_P(EverySet, ReadsItsPagesInAnyOrderAndNamesThem) {
  Texts lines;
  for (std::size_t page = set_.pages.size(); page-- > 0;) {
    lines = Joined({lines, Page(page, {FullLine("of" + std::to_string(page)), FullLine("b")})});
  }
  Load(lines);
  EXPECT_EQ(static_cast<std::size_t>(data_->GetCalPageCount()), set_.pages.size());
  for (std::size_t page = 0; page < set_.pages.size(); ++page) {
    const auto number = static_cast<std::int16_t>(page);
    EXPECT_EQ(FirstColumn(number), (Texts{"of" + std::to_string(page), "b"}));
    EXPECT_EQ(data_->GetCalPageName(number), Name(page));
  }
  EXPECT_EQ(data_->GetCalPageName(static_cast<std::int16_t>(set_.pages.size())), "");
  EXPECT_EQ(data_->GetCalPageName(-1), "");
  EXPECT_TRUE(data_->LoadNotices().empty());
}

TEST_P(EverySet, EndsAPageInAnyCaseAndLosesDataLinesOutsideOfItsPages) {
  for (const char* end : {"!END", "!End", "!end", "  !eNd  "}) {
    Load(Joined({{"*x"}, Opening(0), {"*a", end, "*y"}, Page(1, {"*b"}), {"*z", "!"}}));
    EXPECT_EQ(FirstColumn(0), (Texts{"a"})) << end;
    EXPECT_EQ(FirstColumn(1), (Texts{"b"})) << end;
  }
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

TEST_P(EverySet, OfAnotherModelIsReadAndSaysSoAndIsWrittenAsItsOwn) {
  Load(Joined({{"#MODEL_NO : " + set_.otherCode, "#SER_NO   : 12"}, PagesBut({})}));
  EXPECT_EQ(data_->ModelNumber(), set_.code);
  EXPECT_EQ(data_->SerialNumber(), "12");
  EXPECT_EQ(FirstColumn(0), (Texts{"7"}));
  ExpectNotice({"\"" + set_.otherCode + "\"", "\"" + set_.code + "\""});
  data_->SetModelNumber(set_.otherCode);
  EXPECT_EQ(Saved().substr(0, 20), "#MODEL_NO : " + set_.code + "\r\n");
}

TEST_P(EverySet, WithoutAPageOrItsEndIsRefusedAsATemplate) {
  const std::filesystem::path path = tree_.ProgramFolder() / ("Temp" + set_.code);
  for (std::size_t page = 0; page < set_.requiredPages; ++page) {
    const Texts others = Joined({{"#MODEL_NO : " + set_.code}, PagesBut({page})});
    for (const Texts& lines : {others, Joined({others, Opening(page), {"*1", "*2"}})}) {
      WriteNative(path, Lines(lines));
      const Error error = ErrorOf([&] { data_->SetInitialDefaultData(); });
      EXPECT_EQ(error.Kind(), ErrorKind::Template) << page;
      EXPECT_EQ(error.Path(), path.string()) << page;
    }
  }
}

TEST_P(EverySet, HoldsPagesOf51RowsWhole) {
  Load(Joined({Page(0, ManyLines(51)), PagesBut({0})}));
  EXPECT_EQ(FirstColumn(0), ManyNames(51));
  ExpectNotices(set_.code == "RT520A"
                    ? std::vector<Texts>{{"page RT521A", "more rows", "rows 9 to 51."}}
                    : std::vector<Texts>());
  SetRows(1, ManyRows(51));
  EXPECT_EQ(ErrorOf([&] { SetRows(2, ManyRows(52)); }).Kind(), ErrorKind::Index);
  static_cast<void>(Saved());
  LoadAgain();
  EXPECT_EQ(FirstColumn(0), ManyNames(51));
  EXPECT_EQ(FirstColumn(1), ManyNames(51));
}

TEST_P(EverySet, With52RowsInAPageIsAnIndexErrorOfItsLine) {
  ExpectLoadError(
      Joined({{"#SER_NO   : 12"}, Page(0, ManyLines(52)), {"#SER_NO   : 13"}, PagesBut({0})}),
      ErrorKind::Index, 1 + Opening(0).size() + 52, "51");
  // What was read stays.
  EXPECT_EQ(data_->SerialNumber(), "12");
  EXPECT_EQ(FirstColumn(0), ManyNames(51));
}

TEST_P(EverySet, ReplacesAWholePageByTheTextsOfTheGrid) {
  const Rows rows = {{" a ", " 5", "b ", "%", "ppm"}, {"x", "", "", "", "\xCE\xA9"}};
  SetRows(2, ManyRows(51));
  SetRows(2, rows);
  EXPECT_EQ(ShownRows(2), rows);
  EXPECT_EQ(ShownRows(1), set_.emptyPage);
  // The later rows are gone, not only hidden.
  LoadOver(Page(2, {"*1", "*2", "*3"}));
  EXPECT_EQ(FirstColumn(2), (Texts{"1", "2", "3"}));
  SetRows(2, {});
  EXPECT_EQ(ShownRows(2), set_.emptyPage);
}

TEST_P(EverySet, KeepsASerialNumberForEachPageAndOneFurtherPageThatIsNeverWritten) {
  const auto further = static_cast<std::int16_t>(set_.pages.size());
  for (std::int16_t page = 0; page <= further; ++page) {
    EXPECT_EQ(data_->GetCalPageSerial(page), "") << page;
    data_->SetCalPageSerial(page, "S" + std::to_string(page) + "of");
  }
  for (std::int16_t page = 0; page <= further; ++page) {
    EXPECT_EQ(data_->GetCalPageSerial(page), "S" + std::to_string(page) + "of") << page;
  }
  SetRows(further, ManyRows(2));
  EXPECT_EQ(ShownRows(further), ManyRows(2));
  EXPECT_FALSE(Contains(Saved(), "S" + std::to_string(further) + "of"));
  EXPECT_FALSE(Contains(Saved(), "\r\n*"));
  for (const int number : {-1, further + 1}) {
    const auto page = static_cast<std::int16_t>(number);
    MemoryGrid grid(5);
    for (const std::function<void()>& use : std::vector<std::function<void()>>{
             [&] { data_->GetCalData(page, grid); }, [&] { data_->SetCalData(page, grid); },
             [&] { static_cast<void>(data_->GetCalPageSerial(page)); },
             [&] { data_->SetCalPageSerial(page, "x"); }}) {
      EXPECT_EQ(ErrorOf(use).Kind(), ErrorKind::Index) << page;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Sets, EverySet,
                         testing::Values(CapacitorSetA(), CapacitorSetC(), ResistorSet()),
                         [](const auto& test) { return test.param.code; });

}  // namespace
}  // namespace tarvell::test
