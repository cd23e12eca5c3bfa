// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>

#include "screens/main/ScreenFaults.h"
#include "screens/main/frmMain.h"
#include "screens/station/StationFixture.h"
#include "support/FaultPlatform.h"

/// A step of saving fails at the main menu and at the station screens. The screen shows the error
/// and keeps what was typed; without the fault the same button saves.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class FaultAtScreen : public StationStage {
 protected:
  /// Presses Return under each fault, and then without one: it replaces the list.
  void ReturnUnderEachFault(QWidget& screen, const char* index, const std::string& list) {
    const std::string earlier = tree_.Read(index);
    FaultPlatform platform;
    PressUnderEachFault(
        platform,
        [&](const ScreenFault& fault) {
          questions_.ExpectError({"Cannot save the file: " + fault.reason, index});
          Click(screen, "btnReturn");
          EXPECT_TRUE(screen.isVisible());
          EXPECT_EQ(tree_.Read(index), fault.isReplaced ? list : earlier);
        },
        [&] { Click(screen, "btnReturn"); });
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(tree_.Read(index), list);
  }
};

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

// ---- Return, which writes the list of instruments or of stations.

TEST_F(FaultAtScreen, ReturnStaysWhileItsListCannotBeWritten) {
  WriteInstrument();
  tree_.Write(kIndex, "PX9\r\nINDEX\r\n");
  tree_.Write(kRootIndex, "ST9\r\n");
  AtStation([&](frmStationModelList& screen) {
    ReturnUnderEachFault(screen, kIndex, "PX12A\r\nINDEX\r\n");
  });
  AtStationList(
      [&](frmStationMain& screen) { ReturnUnderEachFault(screen, kRootIndex, "ST1\r\n"); });
}

// ---- The main menu: Exit reports once that it cannot write, and the program ends.

TEST_F(FaultAtScreen, ExitReportsThatTheDirectoriesAreNotRememberedAndEnds) {
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
        // The program ends, so the message does not say "try again".
        const std::string reason = fault.reason.substr(0, fault.reason.find(", then try again."));
        questions_.ExpectError(
            {"The two directories are not remembered for the next start. Cannot save the file: " +
                 reason,
             "then enter the directories again at the next start.", ini});
        exit("c:\\old");
        EXPECT_EQ(tree_.Read(ini), bytes(fault.isReplaced ? "c:\\typed" : "c:\\old"));
        EXPECT_EQ(tree_.Names("c:\\windows"), Texts{"tarvell.ini"});
      },
      [&] { exit("c:\\typed"); });
  EXPECT_EQ(tree_.Read(ini), bytes("c:\\typed"));
}

}  // namespace
}  // namespace tarvell
