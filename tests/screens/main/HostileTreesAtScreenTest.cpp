// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>

#include "screens/station/StationFixture.h"
#include "screens/widgets/QtText.h"

/// The station screens on trees that another program filled.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

// Names with characters that mean something elsewhere, that are no UTF-8, or as long as can be.
const Texts kOddNames = {"a\nb",    "\"quoted\"", "a,b",          "*",
                         " blank ", "caf\u00E9",  "\xE9\xFF\xC3", std::string(255, 'n')};

class HostileTreeAtScreen : public StationStage {
 protected:
  [[nodiscard]] fs::path In(const char* folder, const std::string& name) const {
    return tree_.Native(folder) / name;
  }
  /// Selects the entry of this name.
  static void Select(QWidget& screen, const QString& list, const std::string& name) {
    auto& control = Find<QListWidget>(screen, list);
    const auto found = control.findItems(ToQt(name), Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1) << name;
    control.setCurrentItem(found.first());
  }
};

TEST_F(HostileTreeAtScreen, StationsOfOddNamesAreOpenedAndDeleted) {
  for (const std::string& name : kOddNames) {
    WriteNative(In(kRoot, name) / "PX12A", InstrumentFile{.comment = "odd"}.Bytes());
  }
  tree_.Write(kRootIndex, "earlier\r\n");
  AtStationList([&](frmStationMain& screen) {
    // INDEX cannot hold a name with a line end.
    questions_.ExpectError({"\"a\nb\"", "the list cannot hold", "Rename", kRootIndex});
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(tree_.Read(kRootIndex), "earlier\r\n");
    for (const std::string& name : kOddNames) {
      SCOPED_TRACE(name);
      Select(screen, "lstStation", name);
      user_.At<frmStationModelList>([&](frmStationModelList& station) {
        ClickEntry(station, "LstInstrment", "PX12A");
        EXPECT_EQ(TextOf(station, "txtData_11"), "odd");
        LeaveUnsaved(station);
      });
      Click(screen, "btnEdit");
      EXPECT_EQ(ReadNative(In(kRoot, name) / "INDEX"), "PX12A\r\nINDEX\r\n");
      Select(screen, "lstStation", name);
      ExpectDeleteStationQuestion(ToQt(name), QMessageBox::Ok);
      Click(screen, "btnDelete");
      EXPECT_FALSE(fs::exists(In(kRoot, name)));
    }
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "");
}

TEST_F(HostileTreeAtScreen, InstrumentsOfOddNamesAreShownAndCleared) {
  for (const std::string& name : kOddNames) {
    WriteNative(In(kStation, name), InstrumentFile{.comment = name.substr(0, 1)}.Bytes());
  }
  AtStation([&](frmStationModelList& screen) {
    for (const std::string& name : kOddNames) {
      SCOPED_TRACE(name);
      Select(screen, "LstInstrment", name);
      EXPECT_EQ(TextOf(screen, "txtData_0"), "PX12A");
    }
    Clear(screen);
    EXPECT_EQ(tree_.Names(kStation), Texts{});
    LeaveUnsaved(screen);
  });
}

TEST_F(HostileTreeAtScreen, AStationOfVeryManyInstrumentsIsOpenedAndLeft) {
  constexpr std::size_t kMany = 20000;
  WriteInstrument("100000", "");
  for (std::size_t i = 1; i < kMany; ++i) {
    // A file system limits the links of one file.
    const std::string name = std::to_string(100000 + i);
    if (i % 1000 == 0) {
      WriteInstrument(name, "");
    } else {
      fs::create_hard_link(In(kStation, std::to_string(100000 + i - i % 1000)), In(kStation, name));
    }
  }
  AtStation([&](frmStationModelList& screen) {
    EXPECT_EQ(Find<QListWidget>(screen, "LstInstrment").count(), static_cast<int>(kMany));
    Click(screen, "btnReturn");
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Read(kIndex).size(), kMany * 8 + 7);
}

}  // namespace
}  // namespace tarvell
