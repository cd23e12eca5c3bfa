// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/station/StationFiles.h"
#include "core/station/StationIndex.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using Names = std::vector<std::string>;

constexpr const char* kStation = R"(c:\stations\ST1)";
constexpr const char* kIndex = R"(c:\stations\ST1\INDEX)";

/// What the screen of a station does with its index while one user works in it.
class Visit {
 public:
  Visit() {
    index_.Begin(kStation);
    List();
  }

  void List() {
    shown = ListInstruments(kStation);
    std::ranges::sort(shown);
    index_.WasListed(shown);
  }
  void Leave() const {
    WriteStationInstrumentIndex(kStation, index_.Merged(shown, ListInstruments(kStation)));
  }

  Names shown;

 private:
  StationIndex index_;
};

class StationIndexFile : public testing::Test {
 protected:
  StationIndexFile() { tree_.MakeFolders(kStation); }

  void AddFile(const std::string& name) const {
    tree_.Write(std::string(kStation) + "\\" + name, "MODEL NUMBER " + name + "\r\n");
  }

  test::TestTree tree_;
};

TEST_F(StationIndexFile, KeepsWhatAnotherUserAddedMeanwhile) {
  AddFile("PX12A");
  Visit mine;
  const Visit other;
  AddFile("PX60H");
  other.Leave();
  mine.shown.emplace_back("RT730A");  // added, not saved
  mine.Leave();
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nRT730A\r\nPX60H\r\nINDEX\r\n");
}

TEST_F(StationIndexFile, KeepsWhatAnotherUserAddedAndDidNotSave) {
  tree_.Write(kIndex, "GONE\r\nINDEX\r\n");
  const Visit mine;
  Visit other;
  other.shown.emplace_back("caf\u00E9");
  other.Leave();
  ASSERT_EQ(tree_.Read(kIndex), "caf\xE9\r\nINDEX\r\n");
  mine.Leave();
  EXPECT_EQ(tree_.Read(kIndex), "caf\xE9\r\nINDEX\r\n")
      << "an entry from before both visits does not come back";
}

TEST_F(StationIndexFile, DropsWhatThisOrAnotherUserDeleted) {
  for (const char* name : {"PX12A", "PX60H", "RT730A"}) {
    AddFile(name);
  }
  Visit mine;
  Visit().Leave();
  DeleteInstrumentFile(kStation, "PX60H");
  mine.List();
  DeleteInstrumentFile(kStation, "PX12A");
  mine.Leave();
  EXPECT_EQ(tree_.Read(kIndex), "RT730A\r\nINDEX\r\n");
}

TEST_F(StationIndexFile, KeepsTheOrderOfTheScreenAndADuplicateEntry) {
  AddFile("A");
  AddFile("B");
  Visit mine;
  mine.shown = {"B", "A", "B"};
  mine.Leave();
  EXPECT_EQ(tree_.Read(kIndex), "B\r\nA\r\nB\r\nINDEX\r\n");
}

}  // namespace
}  // namespace tarvell
