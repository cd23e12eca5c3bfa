// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "core/caldata/DraftMerge.h"

namespace tarvell {
namespace {

using Rows = std::vector<std::vector<std::string>>;

EditorState StateOf(const Rows& rows, const std::string& comment = "") {
  return {.header = {.comment = comment}, .pages = {{.rows = rows}}};
}

/// What the draft holds that was begun on `opened`, in the newer data.
MergedDraft Put(const EditorState& opened, const EditorState& typed, const EditorState& now) {
  return Merged({.state = typed, .opened = opened}, now, 1);
}

const Rows kOpened = {{"1", "100"}, {"2", "100"}, {"3", "100"}};

TEST(MergedDraft, TakesWhatWasTypedAndKeepsNewerValues) {
  EditorState typed = StateOf({{"1", "100"}, {"2", "98"}, {"3", "97"}}, "mine");
  typed.pages[0].origins[{{2}, 1}] = Origin::Operator;
  typed.pages[0].notes[{{3}, 1}] = "look here";
  EditorState now = StateOf({{"1", "91"}, {"2", "92"}, {"3", "100"}}, "newer");
  now.header.calibrationNumber = "C-2";
  const MergedDraft merged = Put(StateOf(kOpened), typed, now);
  EXPECT_EQ(merged.state.pages[0].rows, (Rows{{"1", "91"}, {"2", "98"}, {"3", "97"}}));
  EXPECT_EQ(merged.state.pages[0].origins, (CellOrigins{{{{2}, 1}, Origin::Operator}}));
  EXPECT_EQ(merged.state.pages[0].notes, typed.pages[0].notes);
  EXPECT_EQ(merged.state.header.comment, "mine");
  EXPECT_EQ(merged.state.header.calibrationNumber, "C-2");
  EXPECT_EQ(merged.kept, 2U) << "the first factor and the calibration number";
}

TEST(MergedDraft, TakesOptionMembersAndTheOpenCellThatWereTyped) {
  EditorState opened = StateOf(kOpened);
  opened.option = false;
  opened.pages[0].serialNumber = "C1";
  EditorState typed = opened;
  typed.shownPage = 0;
  typed.openCell = OpenCell{{{3}, 1}, "9", ""};
  EditorState now = StateOf({{"3", "99"}});
  now.option = true;
  now.pages[0].serialNumber = "C2";
  MergedDraft merged = Put(opened, typed, now);
  EXPECT_EQ(merged.state.option, true);
  EXPECT_EQ(merged.state.pages[0].serialNumber, "C2");
  EXPECT_EQ(merged.state.openCell, (OpenCell{{{1}, 1}, "9", ""})) << "in the row of its point";
  typed.option = true;
  typed.pages[0].serialNumber = "C3";
  typed.openCell->isTyped = false;
  now.option = false;
  merged = Put(opened, typed, now);
  EXPECT_EQ(merged.state.option, true);
  EXPECT_EQ(merged.state.pages[0].serialNumber, "C3");
  EXPECT_EQ(merged.state.openCell, std::nullopt);
}

TEST(MergedDraft, MatchesPointsThatWereAddedAndDeletedOnBothSides) {
  struct Case {
    const char* what;
    Rows typed;
    Rows now;
    Rows merged;
    std::size_t kept;
  };
  const std::vector<Case> cases = {{"deleted in the draft",
                                    {{"1", "100"}, {"3", "100"}},
                                    kOpened,
                                    {{"1", "100"}, {"3", "100"}},
                                    0},
                                   {"deleted in the draft, but measured again",
                                    {{"1", "100"}, {"3", "100"}},
                                    {{"1", "100"}, {"2", "95"}, {"3", "100"}},
                                    {{"1", "100"}, {"2", "95"}, {"3", "100"}},
                                    1},
                                   {"added in the draft",
                                    {{"1", "100"}, {"1.5", "90"}, {"2", "100"}, {"3", "100"}},
                                    {{"0.5", "91"}, {"1", "92"}, {"3", "100"}},
                                    {{"0.5", "91"}, {"1", "92"}, {"1.5", "90"}, {"3", "100"}},
                                    1},
                                   {"added on both sides",
                                    {{"1", "100"}, {"2", "100"}, {"3", "100"}, {"4", "90"}},
                                    {{"1", "100"}, {"2", "100"}, {"3", "100"}, {"4", "91"}},
                                    {{"1", "100"}, {"2", "100"}, {"3", "100"}, {"4", "90"}},
                                    0},
                                   {"typed, but deleted meanwhile",
                                    {{"1", "100"}, {"2", "98"}, {"3", "100"}},
                                    {{"1", "100"}},
                                    {{"1", "100"}, {"2", "98"}},
                                    0}};
  for (const Case& one : cases) {
    const MergedDraft merged = Put(StateOf(kOpened), StateOf(one.typed), StateOf(one.now));
    EXPECT_EQ(merged.state.pages[0].rows, one.merged) << one.what;
    EXPECT_EQ(merged.kept, one.kept) << one.what;
  }
}

TEST(MergedDraft, FillsAtMostTheRowsOfATable) {
  Rows full;
  for (int point = 1; point <= 51; ++point) {
    full.push_back({std::to_string(point), "100"});
  }
  const MergedDraft merged = Put(StateOf({}), StateOf({{"99", "90"}}), StateOf(full));
  EXPECT_EQ(merged.state.pages[0].rows, full);
  EXPECT_EQ(merged.kept, 0U);
  EXPECT_EQ(merged.withoutRoom, 1U);
}

TEST(MergedDraft, BringsTheRowOfTheOpenCellBack) {
  EditorState typed = StateOf(kOpened);
  typed.openCell = OpenCell{{{2}, 1}, "9", ""};
  const MergedDraft merged = Put(StateOf(kOpened), typed, StateOf({{"1", "100"}}));
  EXPECT_EQ(merged.state.pages[0].rows, (Rows{{"1", "100"}, {"2", "100"}}));
  EXPECT_EQ(merged.state.openCell, typed.openCell);
}

TEST(MergedDraft, KeepsRowsOfTheSamePointApart) {
  const Rows opened = {{"50", "100"}, {"50", "98"}, {"99", "97"}};
  MergedDraft merged =
      Put(StateOf(opened), StateOf({{"50", "100"}, {"50", "98"}, {"99", "96"}}), StateOf(opened));
  EXPECT_EQ(merged.state.pages[0].rows, (Rows{{"50", "100"}, {"50", "98"}, {"99", "96"}}));
  EditorState typed = StateOf({{"50", "100"}, {"50", "95"}, {"99", "97"}});
  typed.openCell = OpenCell{{{2}, 1}, "9", ""};
  merged = Put(StateOf(opened), typed, StateOf({{"50", "91"}, {"50", "98"}, {"99", "97"}}));
  EXPECT_EQ(merged.state.pages[0].rows, (Rows{{"50", "91"}, {"50", "95"}, {"99", "97"}}));
  EXPECT_EQ(merged.state.openCell, typed.openCell) << "in the second of the two rows";
}

}  // namespace
}  // namespace tarvell
