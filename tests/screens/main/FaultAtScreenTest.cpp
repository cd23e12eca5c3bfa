// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/main/ScreenFaults.h"
#include "screens/main/frmMain.h"
#include "screens/station/StationFixture.h"
#include "support/FaultPlatform.h"

/// Every other screen that writes a file, while a step of saving fails: it is told, nothing that
/// was typed is lost, and when the fault is gone the same button does its work.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class FaultAtScreen : public StationStage {};

// ---- A station's instruments.

TEST_F(FaultAtScreen, SaveOfAnInstrumentKeepsWhatWasTyped) {
  WriteInstrument();
  const std::string earlier = ReadInstrument("PX12A");
  const std::string saved = InstrumentFile({.comment = "typed", .calData = "own"}).Bytes();
  FaultPlatform platform;
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_11", "typed");
    Fill(screen, "txtData_12", "own");
    const Texts typed = ShownFields(screen);
    PressUnderEachFault(
        platform,
        [&](const ScreenFault& fault) {
          ExpectCannotSave();
          Click(screen, "btnSave");
          EXPECT_TRUE(Contains(questions_.details.back().toStdString(), fault.reason));
          EXPECT_TRUE(screen.isVisible());
          EXPECT_EQ(ShownFields(screen), typed);
          EXPECT_TRUE(CanSave(screen));
          EXPECT_EQ(ReadInstrument("PX12A"), fault.isReplaced ? saved : earlier);
          EXPECT_EQ(tree_.Names(kStation), Texts{"PX12A"});
        },
        [&] { Click(screen, "btnSave"); });
    EXPECT_FALSE(CanSave(screen));
    EXPECT_EQ(ReadInstrument("PX12A"), saved);
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), saved);
}

TEST_F(FaultAtScreen, ReturnKeepsTheStationOpenWithWhatWasTyped) {
  WriteInstrument();
  const std::string earlier = ReadInstrument("PX12A");
  const std::string saved = InstrumentFile({.comment = "typed", .calData = ""}).Bytes();
  FaultPlatform platform;
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_11", "typed");
    const Texts typed = ShownFields(screen);
    PressUnderEachFault(
        platform,
        [&](const ScreenFault& fault) {
          ExpectReturnQuestion(QMessageBox::Yes);
          ExpectCannotSave();
          Click(screen, "btnReturn");
          EXPECT_TRUE(Contains(questions_.details.back().toStdString(), fault.reason));
          EXPECT_TRUE(screen.isVisible());
          EXPECT_EQ(ShownFields(screen), typed);
          EXPECT_EQ(ReadInstrument("PX12A"), fault.isReplaced ? saved : earlier);
          EXPECT_EQ(tree_.Names(kStation), Texts{"PX12A"});
        },
        [&] {
          ExpectReturnQuestion(QMessageBox::Yes);
          Click(screen, "btnReturn");
        });
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(ReadInstrument("PX12A"), saved);
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
}

TEST_F(FaultAtScreen, ReturnStaysWhereTheListOfInstrumentsCannotBeWritten) {
  WriteInstrument();
  const std::string earlier = "PX9\r\nINDEX\r\n";
  tree_.Write(kIndex, earlier);
  FaultPlatform platform;
  AtStation([&](frmStationModelList& screen) {
    PressUnderEachFault(
        platform,
        [&](const ScreenFault& fault) {
          questions_.ExpectError({"Cannot save the file: " + fault.reason, kIndex});
          Click(screen, "btnReturn");
          EXPECT_TRUE(screen.isVisible());
          EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
          EXPECT_EQ(tree_.Read(kIndex), fault.isReplaced ? "PX12A\r\nINDEX\r\n" : earlier);
          EXPECT_EQ(tree_.Names(kStation), (Texts{"INDEX", "PX12A"}));
        },
        [&] { Click(screen, "btnReturn"); });
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
}

// ---- The list of stations.

TEST_F(FaultAtScreen, ReturnStaysWhereTheListOfStationsCannotBeWritten) {
  tree_.MakeFolders(kStation);
  const std::string earlier = "an earlier list\r\n";
  tree_.Write(kRootIndex, earlier);
  FaultPlatform platform;
  AtStationList([&](frmStationMain& screen) {
    PressUnderEachFault(
        platform,
        [&](const ScreenFault& fault) {
          questions_.ExpectError({"Cannot save the file: " + fault.reason, kRootIndex});
          Click(screen, "btnReturn");
          EXPECT_TRUE(screen.isVisible());
          EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"ST1"});
          EXPECT_EQ(tree_.Read(kRootIndex), fault.isReplaced ? "ST1\r\n" : earlier);
          EXPECT_EQ(tree_.Names(kRoot), (Texts{"INDEX", "ST1"}));
        },
        [&] { Click(screen, "btnReturn"); });
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\n");
}

// ---- The main menu: an exit that cannot write says so once, and the program ends.

TEST_F(FaultAtScreen, ExitTellsThatTheDirectoriesCouldNotBeKeptAndEnds) {
  const std::string ini = R"(c:\windows\tarvell.ini)";
  const auto bytes = [](const std::string& calibrationDir) {
    return Lines({";", ";  Tar vell    Ini file", ";", "[Tarvell]", "SysRevision=A.02.61", "",
                  "[Calfactors]", "Dir=" + calibrationDir, "", "[Stations]", "Dir=c:\\stations"});
  };
  tree_.Write(ini, bytes("c:\\old"));
  FaultPlatform platform;
  const auto exit = [](const std::string& shownFirst) {
    frmMain menu;
    menu.Form_Load(0);
    EXPECT_EQ(TextOf(menu, "txtCalibrationDir"), shownFirst);
    Fill(menu, "txtCalibrationDir", "c:\\typed");
    Click(menu, "btnExit");
    EXPECT_FALSE(menu.isVisible());
  };
  PressUnderEachFault(
      platform,
      [&](const ScreenFault& fault) {
        questions_.ExpectError({"Cannot save the file: " + fault.reason, ini});
        exit("c:\\old");
        EXPECT_EQ(tree_.Read(ini), bytes(fault.isReplaced ? "c:\\typed" : "c:\\old"));
        EXPECT_EQ(tree_.Names("c:\\windows"), Texts{"tarvell.ini"});
      },
      [&] { exit("c:\\typed"); });
  EXPECT_EQ(tree_.Read(ini), bytes("c:\\typed"));
}

// ---- A kit's file.

class FaultAtKitCopy : public FaultAtScreen {
 protected:
  static constexpr const char* kTarget = R"(c:\calfactors\RT410A\SN12345)";
  static constexpr const char* kFolder = R"(c:\calfactors\RT410A)";

  FaultAtKitCopy() {
    tree_.Write(kTarget, Kit("earlier"));
    WriteNative(Source(), Kit("finished"));
  }

  static std::string Kit(const std::string& data) {
    return "QZ RT410A\r\n3318A12345\r\n05MAR2001\r\n" + data + "\r\n";
  }
  [[nodiscard]] std::string Source() const { return (tree_.Root() / "kit.dat").string(); }

  /// Presses Update at the calibration data menu and picks the finished file; an error with these
  /// parts follows.
  void Update(frmCalibrationMain& menu, const std::vector<std::string>& error = {}) {
    ClickEntry(menu, "lstSerialNumber", "3318A12345");
    questions_.ExpectFilePicker("Choice RT410A Calibration Data File from Folder",
                                {"Calibration Data(*.dat) (*.dat)", "All files(*.*) (*)"},
                                QString::fromStdString(Source()));
    if (!error.empty()) {
      questions_.ExpectError(error);
    }
    Click(menu, "btnEdit");
  }

  void AtMenu(const std::function<void(frmCalibrationMain& menu)>& act) {
    frmCalibrationMain menu(nullptr);
    user_.At<frmCalibrationMain>([&](frmCalibrationMain& at) {
      ClickEntry(at, "LstInstrment", "RT410A");
      act(at);
      Click(at, "btnReturn");
    });
    menu.ShowModally();
  }
};

TEST_F(FaultAtKitCopy, UpdateKeepsTheEarlierFileAndTheLists) {
  FaultPlatform platform;
  AtMenu([&](frmCalibrationMain& menu) {
    PressUnderEachFault(
        platform,
        [&](const ScreenFault& fault) {
          Update(menu, {"Cannot save the file: " + fault.reason, kTarget});
          EXPECT_TRUE(menu.isVisible());
          EXPECT_EQ(EntriesOf(menu, "LstInstrment"), Texts{"RT410A"});
          EXPECT_EQ(EntriesOf(menu, "lstSerialNumber"), Texts{"3318A12345"});
          EXPECT_EQ(tree_.Read(kTarget), Kit(fault.isReplaced ? "finished" : "earlier"));
          EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12345"});
        },
        [&] { Update(menu); });
  });
  EXPECT_EQ(tree_.Read(kTarget), Kit("finished"));
}

TEST_F(FaultAtKitCopy, ASourceThatCannotBeReadIsToldAndChangesNothing) {
  FaultPlatform platform;
  AtMenu([&](frmCalibrationMain& menu) {
    for (const FaultPlatform::Step step :
         {FaultPlatform::Step::OpenForReading, FaultPlatform::Step::Read}) {
      SCOPED_TRACE(step);
      platform.Set(step);
      Update(menu, {"Cannot read the file: Input/output error. Check the disk, then try again.",
                    Source()});
      EXPECT_EQ(platform.faults, 1) << "the step was never taken";
      EXPECT_EQ(tree_.Read(kTarget), Kit("earlier"));
      EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12345"});
    }
    platform.Set(FaultPlatform::Step::None);
    Update(menu);
  });
  EXPECT_EQ(tree_.Read(kTarget), Kit("finished"));
}

}  // namespace
}  // namespace tarvell
