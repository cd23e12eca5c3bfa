// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "core/files/FileIOCommonModule.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/station/StationFixture.h"
#include "screens/widgets/QtText.h"

/// Trees that nobody meant for the program, before an operator: the screens come up, tell what is
/// wrong in one message, and can be left.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

const Texts kOddNames = {"a\nb",    "\"quoted\"", "a,b",          "*",
                         " blank ", "caf\u00E9",  "\xE9\xFF\xC3", std::string(255, 'n')};

class HostileTreeAtScreen : public StationStage {
 protected:
  [[nodiscard]] fs::path In(const char* folder, const std::string& name) const {
    return tree_.Native(folder) / name;
  }

  static void SelectRow(QWidget& screen, const QString& list, const std::string& shown) {
    auto& control = Find<QListWidget>(screen, list);
    for (int row = 0; row < control.count(); ++row) {
      if (control.item(row)->text().toStdString() == shown) {
        control.setCurrentRow(row);
        return;
      }
    }
    ADD_FAILURE() << "no entry " << shown;
  }

  /// A name as a screen shows it: bytes that are no UTF-8 become a mark each.
  static std::string Shown(const std::string& name) { return ToQt(name).toStdString(); }
};

TEST_F(HostileTreeAtScreen, StationsOfOddNamesAreOpenedAndDeletedEach) {
  for (const std::string& name : kOddNames) {
    fs::create_directory(In(kRoot, name));
    WriteNative(In(kRoot, name) / "PX12A", InstrumentFile{.comment = "odd"}.Bytes());
  }
  AtStationList([&](frmStationMain& screen) {
    EXPECT_EQ(EntriesOf(screen, "lstStation").size(), kOddNames.size());
    for (const std::string& name : kOddNames) {
      SCOPED_TRACE(name);
      SelectRow(screen, "lstStation", Shown(name));
      user_.At<frmStationModelList>([&](frmStationModelList& station) {
        ClickEntry(station, "LstInstrment", "PX12A");
        EXPECT_EQ(TextOf(station, "txtData_11"), "odd");
        LeaveUnsaved(station);
      });
      Click(screen, "btnEdit");
      EXPECT_EQ(ReadNative(In(kRoot, name) / "INDEX"), "PX12A\r\nINDEX\r\n");
      SelectRow(screen, "lstStation", Shown(name));
      ExpectDeleteStationQuestion(ToQt(name), QMessageBox::Ok);
      Click(screen, "btnDelete");
      EXPECT_FALSE(fs::exists(In(kRoot, name)));
    }
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Names(kRoot), Texts{"INDEX"});
}

TEST_F(HostileTreeAtScreen, AStationThatTheIndexCannotHoldIsToldAndTheListCanBeLeft) {
  fs::create_directory(In(kRoot, "a\nb"));
  tree_.Write(kRootIndex, "earlier\r\n");
  AtStationList([&](frmStationMain& screen) {
    questions_.ExpectError({"\"a\nb\"", "Rename", kRootIndex});
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "earlier\r\n");
}

TEST_F(HostileTreeAtScreen, InstrumentsOfOddNamesAreShownAndCleared) {
  tree_.MakeFolders(kStation);
  for (const std::string& name : kOddNames) {
    WriteNative(In(kStation, name), InstrumentFile{.comment = "odd"}.Bytes());
  }
  AtStation([&](frmStationModelList& screen) {
    for (const std::string& name : kOddNames) {
      SCOPED_TRACE(name);
      SelectRow(screen, "LstInstrment", Shown(name));
      EXPECT_EQ(TextOf(screen, "txtData_11"), "odd");
    }
    Clear(screen);
    EXPECT_EQ(tree_.Names(kStation), Texts{});
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Names(kStation), Texts{"INDEX"});
}

TEST_F(HostileTreeAtScreen, AStationOfPipesAndLinksGoesToTheTrashAndNothingElseDoes) {
  tree_.Write(R"(c:\outside\file)", "kept");
  tree_.MakeFolders(kStation);
  ASSERT_EQ(::mkfifo(In(kStation, "pipe").c_str(), 0600), 0);
  fs::create_symlink(tree_.Native(R"(c:\outside)"), In(kStation, "folder"));
  fs::create_symlink(tree_.Native(R"(c:\outside\file)"), In(kStation, "file"));
  fs::create_symlink("loop", In(kStation, "loop"));
  fs::create_symlink("/dev/zero", In(kStation, "zero"));
  fs::create_symlink(tree_.Native(R"(c:\outside)"), In(kRoot, "link"));
  Recycle(R"(c:\stations\link)");
  Recycle(kStation);
  EXPECT_EQ(tree_.Names(kRoot), Texts{});
  EXPECT_EQ(tree_.Names(R"(c:\outside)"), Texts{"file"});
  EXPECT_EQ(tree_.Read(R"(c:\outside\file)"), "kept");
}

TEST_F(HostileTreeAtScreen, WhatIsNoDataFileIsToldAtTheMenuWhichStays) {
  const std::string folder = R"(c:\calfactors\PX12A)";
  const std::string path = folder + "\\SN1";
  tree_.MakeFolders(folder);
  const fs::path native = tree_.Native(path);
  tree_.MakeFolders(R"(c:\calfactors\PX13A)");
  tree_.Write(R"(c:\calfactors\PX13A\SN2)", CalHeader{.serial = "good"}.Bytes());
  const std::vector<std::pair<std::function<void()>, std::string>> oddities = {
      {[&] { ASSERT_EQ(::mkfifo(native.c_str(), 0600), 0); }, "a device or a pipe"},
      {[&] { fs::create_symlink("SN1", native); }, "leads to itself"},
      {[&] { fs::create_symlink("gone", native); }, "does not exist"},
      {[&] { fs::create_symlink("/dev/zero", native); }, "a device or a pipe"},
      {[&] { fs::create_directory(native); }, "it is a folder"},
      {[&] {
         WriteNative(native, "");
         fs::resize_file(native, 1U << 30U);
       },
       "it is larger than any data file"},
  };
  frmCalibrationMain menu(nullptr);
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& at) {
    for (const auto& [make, reason] : oddities) {
      SCOPED_TRACE(reason);
      make();
      questions_.ExpectError({"Cannot read the file", reason, path});
      ClickEntry(at, "LstInstrment", "PX12A");
      EXPECT_EQ(EntriesOf(at, "lstSerialNumber"), Texts{});
      ClickEntry(at, "LstInstrment", "PX13A");
      EXPECT_EQ(EntriesOf(at, "lstSerialNumber"), Texts{"good"});
      fs::remove(native);
    }
    Click(at, "btnReturn");
  });
  tree_.Write(folder + "\\other", "so that the folder is listed");
  menu.ShowModally();
}

TEST_F(HostileTreeAtScreen, EntriesThatCannotBeReadAreNamedInOneMessageAndTheOthersAreListed) {
  const char* folder = R"(c:\calfactors\RT410A)";
  const std::string kit = "RT410A\r\n12345\r\n05MAR2001\r\n";
  tree_.Write(R"(c:\calfactors\RT410A\SN12345)", kit);
  fs::create_symlink("gone", In(folder, "SN00000"));
  tree_.Write(R"(c:\calfactors\RT410A\SN20000)", "RT410A\r\n20000\r\n");
  WriteInstrument({.model = "RT410A", .serial = "12345"});
  const auto expectMessage = [&] {
    questions_.ExpectError({"2 entries", "SN00000: Cannot read the file",
                            "SN20000, line 3: The file ends too early", folder});
  };
  frmCalibrationMain menu(nullptr);
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& at) {
    expectMessage();
    ClickEntry(at, "LstInstrment", "RT410A");
    EXPECT_EQ(EntriesOf(at, "lstSerialNumber"), Texts{"12345"});
    Click(at, "btnReturn");
  });
  menu.ShowModally();

  AtStation([&](frmStationModelList& screen) {
    expectMessage();
    ClickEntry(screen, "LstInstrment", "RT410A");
    auto& serials = Find<QComboBox>(screen, "cmbSerial");
    ASSERT_EQ(serials.count(), 1);
    EXPECT_EQ(serials.itemText(0), "12345");
    user_.At<frmStationGetInstr>([&](frmStationGetInstr& picker) {
      expectMessage();
      ClickEntry(picker, "LstInstrment", "RT410A");
      EXPECT_EQ(EntriesOf(picker, "lstSerialNumber"), Texts{"12345"});
      Click(picker, "btnCancel");
    });
    Click(screen, "btnAdd");
    LeaveUnsaved(screen);
  });
}

TEST_F(HostileTreeAtScreen, AStationOfVeryManyInstrumentsIsOpenedAndLeft) {
  constexpr std::size_t kMany = 20000;
  tree_.MakeFolders(kStation);
  fs::path file;
  for (std::size_t i = 0; i < kMany; ++i) {
    const fs::path next = In(kStation, std::to_string(100000 + i));
    if (i % 1000 == 0) {
      file = next;
      WriteNative(file, "");
    } else {
      fs::create_hard_link(file, next);
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
