// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "core/caldata/DataSetDrafts.h"
#include "core/caldata/Draft.h"
#include "core/caldata/Models.h"
#include "core/platform/Error.h"
#include "core/platform/ForwardingPlatform.h"
#include "support/FaultPlatform.h"
#include "support/RealDisk.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

constexpr std::int64_t kNow = 1763784723;
constexpr const char* kFile = R"(c:\calfactors\PX12A\SN12345)";

EditorState StateOf(const std::string& factor) {
  return {.header = {.serialNumber = "3318A12345", .calDay = "3x", .comment = "100% \t\xC3\xA9"},
          .pages = {{"",
                     {{"0.10", factor}, {"50.00", "100.0"}},
                     {{{{2}, 1}, Origin::Template}},
                     {{{{2}, 1}, "look\there"}}}},
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
                                         "Note: 1\tlook%09here",
                                         "Open cell: 2\t1\t99.\t",
                                         "End"});
  EXPECT_EQ(DraftBytes(draft), bytes);
  EXPECT_EQ(DraftFrom(bytes), draft);
  // Cut off anywhere, it is not taken for a whole one.
  for (std::size_t length = 0; length < bytes.size() - 2; ++length) {
    EXPECT_FALSE(DraftFrom(bytes.substr(0, length))) << length;
  }
}

TEST(Draft, OfAFileHoldsWhatWasOpened) {
  Draft draft{.model = "PX12A",
              .file = "c:\\x",
              .written = kNow,
              .fileContent = "0123",
              .state = StateOf("1"),
              .opened = StateOf("2")};
  draft.opened->openCell->isTyped = false;
  const std::string bytes = DraftBytes(draft);
  EXPECT_NE(bytes.find("File: c:\\x\r\nContent: 0123\r\nSerial number: "), std::string::npos);
  const std::string opened = bytes.substr(bytes.find("As opened\r\nSerial number: "));
  EXPECT_NE(opened.find("Row: 0.10\t2\r\n"), std::string::npos);
  EXPECT_TRUE(opened.ends_with("Open cell as it was: 2\t1\t99.\t\r\nEnd\r\n")) << opened;
  EXPECT_EQ(DraftFrom(bytes), draft);
}

TEST(Draft, OnlyHoldsWhatWasTyped) {
  const EditorState opened = StateOf("98.8");
  EditorState other = opened;
  other.shownPage = 2;
  EXPECT_TRUE(HaveSameContent(opened, other));
  other.openCell->isTyped = false;
  EXPECT_FALSE(HaveSameContent(opened, other));
  EditorState closed = opened;
  closed.openCell.reset();
  EXPECT_TRUE(HaveSameContent(closed, other)) << "the cell was only opened";
  EXPECT_FALSE(HoldsAllOf(closed, opened)) << "what is in the open cell is not saved";
  EXPECT_FALSE(HoldsAllOf(opened, StateOf("98.9")));
  // A save makes an entered value one of the file.
  EditorState entered = opened;
  entered.pages[0].origins = {{{{2}, 1}, Origin::Operator}};
  EditorState saved = opened;
  saved.pages[0].origins.clear();
  saved.pages[0].notes.clear();
  EXPECT_FALSE(HaveSameContent(saved, entered));
  EXPECT_TRUE(HoldsAllOf(saved, entered));
  EXPECT_FALSE(HoldsAllOf(opened, entered)) << "the default was entered again";
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
    DataSetDrafts("PX12A", file, when).Write(StateOf(factor), when);
  }
  static std::string OfferedFactor(const DataSetDrafts& drafts) {
    return drafts.Offered() == nullptr ? "" : drafts.Offered()->state.pages[0].rows[0][1];
  }

  test::TestTree tree_;
};

TEST_F(Drafts, AreOfferedForTheirDataSetOnly) {
  Leave("1");
  Leave("2", kNow, "");
  EXPECT_EQ(OfferedFactor(DataSetDrafts("PX12A", kFile, kNow)), "1");
  EXPECT_EQ(OfferedFactor(DataSetDrafts("PX12A", "C:/calfactors/PX12A\\SN12345", kNow)), "1");
  EXPECT_EQ(OfferedFactor(DataSetDrafts("PX12A", "", kNow)), "2");
  EXPECT_EQ(OfferedFactor(DataSetDrafts("PX12A", R"(c:\other\PX12A\SN12345)", kNow)), "");
  EXPECT_EQ(OfferedFactor(DataSetDrafts("PX11A", "", kNow)), "");
  // The path of a data set may hold any character of any length.
  const std::string odd = "c:\\a\xC3\xA9 %\\" + std::string(150, 'x') + "\\SN\xFF.*";
  Leave("3", kNow, odd);
  EXPECT_EQ(OfferedFactor(DataSetDrafts("PX12A", odd, kNow)), "3");
}

TEST_F(Drafts, OfANewCalibrationAreApartFromThoseOfTheDataAsTheyAre) {
  const auto open = [](DraftKind kind) { return DataSetDrafts("PX12A", kFile, kNow, kind); };
  EXPECT_FALSE(open(DraftKind::Data).HasDraftsOfOtherKind());
  {
    DataSetDrafts calibration = open(DraftKind::NewCalibration);
    calibration.Write(StateOf("2"), kNow);
    EXPECT_FALSE(open(DraftKind::Data).HasDraftsOfOtherKind()) << "another program shows it";
  }
  EXPECT_EQ(open(DraftKind::Data).Offered(), nullptr);
  EXPECT_TRUE(open(DraftKind::Data).HasDraftsOfOtherKind());
  EXPECT_FALSE(DataSetDrafts("PX12A", "", kNow).HasDraftsOfOtherKind());
  EXPECT_EQ(OfferedFactor(open(DraftKind::NewCalibration)), "2");
  EXPECT_FALSE(open(DraftKind::NewCalibration).HasDraftsOfOtherKind());
  Leave("1");
  EXPECT_EQ(OfferedFactor(open(DraftKind::Data)), "1");
  EXPECT_TRUE(open(DraftKind::NewCalibration).HasDraftsOfOtherKind());
}

TEST_F(Drafts, CanBeOpenedByTheirUserOnly) {
  Leave("1");
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(Folder()).permissions(), perms::owner_all);
  EXPECT_EQ(std::filesystem::status(Folder() / Names().at(0)).permissions(),
            perms::owner_read | perms::owner_write);
}

// Not by the times: two computers may have different clocks.
TEST_F(Drafts, SayWhetherTheFileIsAnotherOne) {
  tree_.Write(kFile, "one");
  {
    DataSetDrafts drafts("PX12A", kFile, kNow);
    drafts.Begin(StateOf("0"));
    drafts.Write(StateOf("1"), kNow);
  }
  tree_.Write(kFile, "one");
  EXPECT_FALSE(DataSetDrafts("PX12A", kFile, kNow).IsOfferedOutdated());
  tree_.Write(kFile, "two");
  const DataSetDrafts later("PX12A", kFile, kNow);
  EXPECT_TRUE(later.IsOfferedOutdated());
  EXPECT_EQ(later.Offered()->opened, StateOf("0"));
}

TEST_F(Drafts, OfTwoProgramsDoNotMeet) {
  Leave("1");
  DataSetDrafts first("PX12A", kFile, kNow);
  DataSetDrafts second("PX12A", kFile, kNow);
  EXPECT_EQ(OfferedFactor(first), "1");
  EXPECT_EQ(OfferedFactor(second), "") << "the first program offers it";
  first.Write(StateOf("2"), kNow + 2);
  second.Write(StateOf("3"), kNow + 3);
  EXPECT_EQ(Names().size(), 3U);
  second.RemoveAllOf(StateOf("2"));
  EXPECT_EQ(Names().size(), 2U) << "only its own";
  test::InAnotherProcess([] {
    if (DataSetDrafts("PX12A", kFile, kNow).Offered() != nullptr) {
      throw Error(ErrorKind::System, "offered although it is held");
    }
  });
  EXPECT_EQ(Names().size(), 2U);
}

// A killed program holds its draft no longer.
TEST_F(Drafts, OfAKilledProgramAreOffered) {
  test::InAnotherProcess([] {
    auto* drafts = new DataSetDrafts("PX12A", kFile, kNow);  // NOLINT: never destroyed
    drafts->Write(StateOf("1"), kNow);
  });
  EXPECT_EQ(OfferedFactor(DataSetDrafts("PX12A", kFile, kNow)), "1");
}

TEST_F(Drafts, ChangePlacesWhenOneIsRestored) {
  Leave("1");
  DataSetDrafts drafts("PX12A", kFile, kNow);
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

TEST_F(Drafts, KeepTheirFilesWhenRestoringThemIsUndoneAndMadeAgain) {
  Leave("1", kNow - 1);
  Leave("2");
  DataSetDrafts drafts("PX12A", kFile, kNow);
  drafts.Write(StateOf("typed"), kNow + 1);
  drafts.TakeOffered();
  EXPECT_EQ(OfferedFactor(drafts), "typed");
  drafts.Write(StateOf("2 and more"), kNow + 2);

  drafts.LeaveTaken(0);
  EXPECT_EQ(OfferedFactor(drafts), "2") << "as it was when it was taken";
  drafts.Write(StateOf("typed and more"), kNow + 3);
  EXPECT_EQ(Names().size(), 3U);

  drafts.TakeAgain(0);
  EXPECT_EQ(OfferedFactor(drafts), "typed and more");
  drafts.LeaveTaken(0);
  drafts.DiscardOffered();
  drafts.TakeAgain(0);
  EXPECT_EQ(OfferedFactor(drafts), "1") << "a discarded draft is not taken again";
  drafts.Write(StateOf("2 once more"), kNow + 4);
  EXPECT_EQ(Names().size(), 2U);
}

TEST_F(Drafts, ThatWereRestoredAreOfferedAgainWhenNothingTypedIsLeft) {
  Leave("1");
  DataSetDrafts drafts("PX12A", kFile, kNow);
  drafts.TakeOffered();
  drafts.Write(StateOf("a part of it"), kNow + 1);
  drafts.LeaveOwn();
  EXPECT_EQ(OfferedFactor(drafts), "1");
  drafts.Write(StateOf("2"), kNow + 2);
  drafts.LeaveOwn();
  EXPECT_EQ(OfferedFactor(drafts), "1") << "only what was typed since is gone";
  EXPECT_EQ(Names().size(), 1U);
}

TEST_F(Drafts, AreRemovedBySavesThatContainThemAndAfterThirtyDays) {
  Leave("1");
  {
    DataSetDrafts drafts("PX12A", kFile, kNow);
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
  // Opening a data set removes the old drafts of the others, but offers its own: the clock may have
  // been wrong.
  { const DataSetDrafts before("PX13A", "", modified + DataSetDrafts::kLifetime); }
  EXPECT_EQ(Names().size(), 1U);
  EXPECT_EQ(OfferedFactor(DataSetDrafts("PX12A", kFile, modified + DataSetDrafts::kLifetime + 1)),
            "1");
  { const DataSetDrafts after("PX13A", "", modified + DataSetDrafts::kLifetime + 1); }
  EXPECT_TRUE(Names().empty());
}

/// Another editor ends, and removes its draft, while this one looks for drafts.
class EndingEditor final : public ForwardingPlatform {
 public:
  explicit EndingEditor(std::filesystem::path draft)
      : ForwardingPlatform(CurrentPlatform()),
        draft_(std::move(draft)),
        before_(SetCurrentPlatform(this)) {}
  EndingEditor(const EndingEditor&) = delete;
  EndingEditor& operator=(const EndingEditor&) = delete;
  ~EndingEditor() override { SetCurrentPlatform(before_); }

  [[nodiscard]] std::error_code Lock(const std::filesystem::path& path, std::uint32_t number,
                                     std::unique_ptr<HeldLock>& lock) override {
    std::filesystem::remove(draft_);
    return ForwardingPlatform::Lock(path, number, lock);
  }

 private:
  std::filesystem::path draft_;
  Platform* before_;
};

TEST_F(Drafts, ThatAreRemovedMeanwhileAreNotDamaged) {
  Leave("1");
  const EndingEditor other(Folder() / Names().at(0));
  const DataSetDrafts drafts("PX12A", kFile, kNow);
  EXPECT_EQ(drafts.Offered(), nullptr);
  EXPECT_TRUE(drafts.Damaged().empty());
}

TEST_F(Drafts, ThatCannotBeReadAreKeptAside) {
  Leave("1");
  const std::string name = Names().at(0);
  for (const std::string bytes : {"Tarvell draft 2\r\n", ""}) {
    test::WriteNative(Folder() / name, bytes);
    const DataSetDrafts drafts("PX12A", kFile, kNow);
    EXPECT_EQ(drafts.Offered(), nullptr);
    ASSERT_EQ(drafts.Damaged().size(), 1U);
    EXPECT_EQ(test::ReadNative(drafts.Damaged()[0]), bytes);
    EXPECT_TRUE(DataSetDrafts("PX12A", kFile, kNow).Damaged().empty()) << "it is reported once";
  }
  EXPECT_EQ(Names().size(), 2U);
}

TEST_F(Drafts, ThatCannotBeWrittenKeepTheEarlierOne) {
  DataSetDrafts drafts("PX12A", kFile, kNow);
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
