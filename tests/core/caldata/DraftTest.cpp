// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "core/caldata/Draft.h"
#include "core/caldata/DraftFolder.h"
#include "core/caldata/Models.h"
#include "core/platform/Error.h"
#include "support/FaultPlatform.h"
#include "support/RealDisk.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

constexpr std::int64_t kNow = 1763784723;
constexpr const char* kFile = R"(c:\calfactors\PX12A\SN12345)";

EditorState StateOf(const std::string& factor) {
  return {.header = {.serialNumber = "3318A12345", .calDay = "3x", .comment = "100% \t\xC3\xA9"},
          .pages = {{"", {{"0.10", factor}, {"50.00", "100.0"}}, {{{{2}, 1}, Origin::Template}}}},
          .openCell = OpenCell{{{2}, 1}, "99.", ""}};
}

TEST(Draft, HasThisFileAndIsReadBack) {
  Draft draft{.model = "RT520C", .file = "c:\\x", .written = kNow, .state = StateOf("98.8\r\n")};
  draft.state.option = false;
  const std::string bytes = test::Lines({"Tarvell draft 1",
                                         "Written: 1763784723",
                                         "Model: RT520C",
                                         "File: c:\\x",
                                         "Serial number: 3318A12345",
                                         "Calibration number: ",
                                         "Calibration year: ",
                                         "Calibration month: ",
                                         "Calibration day: 3x",
                                         "Due year: ",
                                         "Due month: ",
                                         "Due day: ",
                                         "Comment: 100%25 %09\xC3\xA9",
                                         "Option: off",
                                         "Shown page: 0",
                                         "Page: ",
                                         "Row: 0.10\t98.8%0D%0A",
                                         "Row: 50.00\t100.0",
                                         "From: FT",
                                         "Open cell: 2\t1\t99.\t",
                                         "End"});
  EXPECT_EQ(DraftBytes(draft), bytes);
  EXPECT_EQ(DraftFrom(bytes), draft);
  // Cut off anywhere, it is not taken for a whole one.
  for (std::size_t length = 0; length < bytes.size() - 2; ++length) {
    EXPECT_FALSE(DraftFrom(bytes.substr(0, length))) << length;
  }
}

TEST(Draft, KeepsThePageThatTheOptionHides) {
  const Model& model = *FindModel("RT520C");
  const std::unique_ptr<cifCaldata> typed = model.create();
  EditorState state{.option = true, .pages = PagesOf(*typed, true)};
  ASSERT_EQ(state.pages.size(), 4U);
  state.pages[3] = {"C004", {{"100", "10.0002uF", "300 ppm", "0.0007", "0.0008"}}, {}};
  RestorePages(state, true, *typed);
  typed->SetCalPageSerial(3, "*");
  state = {.option = false, .pages = PagesOf(*typed, true)};
  EXPECT_EQ(typed->GetCalPageCount(), 3) << "looking at the pages changes nothing";

  const std::unique_ptr<cifCaldata> restored = model.create();
  RestorePages(state, true, *restored);
  EXPECT_EQ(restored->GetCalPageCount(), 3);
  restored->SetCalPageSerial(3, "/");
  EXPECT_EQ(PagesOf(*restored, true)[3].serialNumber, "C004");
  EXPECT_EQ(PagesOf(*restored, true)[3].rows[0][1], "10.0002uF");
}

class Drafts : public testing::Test {
 protected:
  [[nodiscard]] std::filesystem::path Folder() const { return tree_.UserFolder() / "drafts"; }
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
      if (entry.path().filename() != "locks") {
        names.push_back(entry.path().filename().string());
      }
    }
    std::ranges::sort(names);
    return names;
  }
  /// Leaves a draft, as an editor does that is closed without saving.
  static void Leave(const std::string& factor, std::int64_t when = kNow,
                    const std::string& file = kFile) {
    DraftFolder("PX12A", file, when).Write(StateOf(factor), when);
  }
  static std::string OfferedFactor(const DraftFolder& drafts) {
    return drafts.Offered() == nullptr ? "" : drafts.Offered()->state.pages[0].rows[0][1];
  }

  test::TestTree tree_;
};

TEST_F(Drafts, AreOfferedForTheirDataSetOnly) {
  Leave("1");
  Leave("2", kNow, "");
  EXPECT_EQ(OfferedFactor(DraftFolder("PX12A", kFile, kNow)), "1");
  EXPECT_EQ(OfferedFactor(DraftFolder("PX12A", "C:/calfactors/PX12A\\SN12345", kNow)), "1");
  EXPECT_EQ(OfferedFactor(DraftFolder("PX12A", "", kNow)), "2");
  EXPECT_EQ(OfferedFactor(DraftFolder("PX12A", R"(c:\other\PX12A\SN12345)", kNow)), "");
  EXPECT_EQ(OfferedFactor(DraftFolder("PX11A", "", kNow)), "");
  // The path of a data set may hold any character of any length.
  const std::string odd = "c:\\a\xC3\xA9 %\\" + std::string(150, 'x') + "\\SN\xFF.*";
  Leave("3", kNow, odd);
  EXPECT_EQ(OfferedFactor(DraftFolder("PX12A", odd, kNow)), "3");
}

TEST_F(Drafts, SayWhetherTheDataSetHasBeenSavedSince) {
  tree_.Write(kFile, "");
  Leave("1", 1);
  EXPECT_TRUE(DraftFolder("PX12A", kFile, kNow).IsOfferedOutdated());
  Leave("2", std::numeric_limits<std::int32_t>::max());
  EXPECT_FALSE(DraftFolder("PX12A", kFile, kNow).IsOfferedOutdated());
}

TEST_F(Drafts, OfTwoProgramsDoNotMeet) {
  Leave("1");
  DraftFolder first("PX12A", kFile, kNow);
  DraftFolder second("PX12A", kFile, kNow);
  EXPECT_EQ(OfferedFactor(first), "1");
  EXPECT_EQ(OfferedFactor(second), "") << "the first program offers it";
  first.Write(StateOf("2"), kNow + 2);
  second.Write(StateOf("3"), kNow + 3);
  EXPECT_EQ(Names().size(), 3U);
  second.RemoveAllOf(StateOf("2"));
  EXPECT_EQ(Names().size(), 2U) << "only its own";
  test::InAnotherProcess([] {
    if (DraftFolder("PX12A", kFile, kNow).Offered() != nullptr) {
      throw Error(ErrorKind::System, "offered although it is held");
    }
  });
  EXPECT_EQ(Names().size(), 2U);
}

// A killed program holds its draft no longer.
TEST_F(Drafts, OfAKilledProgramAreOffered) {
  test::InAnotherProcess([] {
    auto* drafts = new DraftFolder("PX12A", kFile, kNow);  // NOLINT: never destroyed
    drafts->Write(StateOf("1"), kNow);
  });
  EXPECT_EQ(OfferedFactor(DraftFolder("PX12A", kFile, kNow)), "1");
}

TEST_F(Drafts, ChangePlacesWhenOneIsRestored) {
  Leave("1");
  DraftFolder drafts("PX12A", kFile, kNow);
  drafts.Write(StateOf("2"), kNow + 1);
  drafts.TakeOffered();
  EXPECT_EQ(OfferedFactor(drafts), "2");
  drafts.Write(StateOf("1 and more"), kNow + 2);
  drafts.RemoveAllOf(StateOf("1 and more"));
  EXPECT_EQ(OfferedFactor(drafts), "2") << "a save without it keeps it";
  EXPECT_EQ(Names().size(), 1U);
  drafts.DiscardOffered();
  EXPECT_EQ(OfferedFactor(drafts), "");
  EXPECT_TRUE(Names().empty());
}

TEST_F(Drafts, AreRemovedBySavesThatContainThemAndAfterThirtyDays) {
  Leave("1");
  {
    DraftFolder drafts("PX12A", kFile, kNow);
    drafts.RemoveAllOf(StateOf("other"));
    EXPECT_EQ(Names().size(), 1U);
    drafts.RemoveAllOf(StateOf("1"));
    EXPECT_EQ(drafts.Offered(), nullptr);
    EXPECT_TRUE(Names().empty());
  }
  Leave("1");
  const auto written = std::filesystem::last_write_time(Folder() / Names().at(0));
  const std::int64_t modified = std::chrono::duration_cast<std::chrono::seconds>(
                                    std::chrono::file_clock::to_sys(written).time_since_epoch())
                                    .count();
  // Opening any data set removes the old drafts of all.
  { const DraftFolder before("PX13A", "", modified + DraftFolder::kLifetime); }
  EXPECT_EQ(Names().size(), 1U);
  { const DraftFolder after("PX13A", "", modified + DraftFolder::kLifetime + 1); }
  EXPECT_TRUE(Names().empty());
}

TEST_F(Drafts, ThatCannotBeReadAreKeptAside) {
  Leave("1");
  const std::string name = Names().at(0);
  for (const std::string bytes : {"Tarvell draft 2\r\n", ""}) {
    test::WriteNative(Folder() / name, bytes);
    const DraftFolder drafts("PX12A", kFile, kNow);
    EXPECT_EQ(drafts.Offered(), nullptr);
    ASSERT_EQ(drafts.Damaged().size(), 1U);
    EXPECT_EQ(test::ReadNative(drafts.Damaged()[0]), bytes);
    EXPECT_TRUE(DraftFolder("PX12A", kFile, kNow).Damaged().empty()) << "it is reported once";
  }
  EXPECT_EQ(Names().size(), 2U);
}

TEST_F(Drafts, ThatCannotBeWrittenKeepTheEarlierOne) {
  DraftFolder drafts("PX12A", kFile, kNow);
  drafts.Write(StateOf("1"), kNow);
  {
    test::FaultPlatform disk;
    disk.Set(test::FaultPlatform::Step::Write, std::errc::no_space_on_device);
    try {
      drafts.Write(StateOf("2"), kNow);
      ADD_FAILURE() << "the failure is not reported";
    } catch (const Error& error) {
      EXPECT_NE(std::string(error.what()).find("the disk is full"), std::string::npos);
    }
  }
  EXPECT_NE(test::ReadNative(Folder() / Names().at(0)).find("0.10\t1\r\n"), std::string::npos);
}

}  // namespace
}  // namespace tarvell
