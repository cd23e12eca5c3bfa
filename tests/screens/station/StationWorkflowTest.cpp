// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "screens/main/frmMain.h"
#include "screens/station/StationFixture.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/frmInput.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

/// The station screens from the main menu on, with real message boxes.
class StationWorkflow : public StationStage {
 protected:
  StationWorkflow() {
    SetCurrentQuestions(nullptr);
    fs::remove(tree_.Native(kRoot));
  }
};

TEST_F(StationWorkflow, AStationIsMadeFilledAndDeleted) {
  WriteCalFile("PX12A", "SN1", {.serial = "11111"});
  const std::string file = R"(c:\stations\rack 2\PX12A)";
  frmMain mainMenu;
  mainMenu.Form_Load(0);
  Click(mainMenu, "Option1");
  user_.AnswerBox(
      "Input station folder does not exist.\r\n"
      "If you want to create new folder, then press Ok button.",
      QMessageBox::Information, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel,
      QMessageBox::Ok);
  user_.At<frmStationMain>([&](frmStationMain& stations) {
    user_.At<frmInput>([](frmInput&) {
      Type("rack 2");
      Press(Qt::Key_Return);
    });
    Click(stations, "btnAdd");
    ClickEntry(stations, "lstStation", "rack 2");
    user_.At<frmStationModelList>([&](frmStationModelList& screen) {
      Add(screen, "PX12A", "11111");
      Choose(screen, "cmbAddressType", "GP-IB");
      Fill(screen, "txtData_2", "13");
      Fill(screen, "txtData_8", "31");
      Choose(screen, "cmbCalMonth", "APR");
      user_.AnswerBox("Error: Invailed Input Date", QMessageBox::Warning, QMessageBox::Ok,
                      QMessageBox::Ok, QMessageBox::Ok);
      Click(screen, "btnSave");
      EXPECT_FALSE(tree_.Exists(file));
      Fill(screen, "txtData_8", "30");
      user_.AnswerBox("Instruemnt Data was changed. Do you want to save it?",
                      QMessageBox::Information,
                      QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes,
                      QMessageBox::Yes, "Instrument data was changed.");
      Click(screen, "btnReturn");
    });
    Click(stations, "btnEdit");
    EXPECT_TRUE(Contains(tree_.Read(file), "ADDRESS TYPE GP-IB\r\nADDRESS 13\r\n"));
    EXPECT_TRUE(Contains(tree_.Read(file), "CAL DUE DATE 30 APR 2002\r\n"));
    EXPECT_EQ(tree_.Read(R"(c:\stations\rack 2\INDEX)"), "PX12A\r\nINDEX\r\n");
    ClickEntry(stations, "lstStation", "rack 2");
    user_.AnswerBox("Are you sure you want to delete \"rack 2\" station data?",
                    QMessageBox::Warning, QMessageBox::Ok | QMessageBox::Cancel,
                    QMessageBox::Cancel, QMessageBox::Ok);
    Click(stations, "btnDelete");
    Click(stations, "btnReturn");
  });
  Click(mainMenu, "btnStart");
  EXPECT_EQ(tree_.Names(kRoot), Texts{"INDEX"});
  EXPECT_EQ(tree_.Read(kRootIndex), "");
}

// ---- Trees that another program filled.

// Names with characters that mean something elsewhere, that are no UTF-8, or as long as can be.
const Texts kOddNames = {"a\nb",    "\"quoted\"", "a,b",          "*",
                         " blank ", "caf\u00E9",  "\xE9\xFF\xC3", std::string(255, 'n')};

/// Selects the entry of this name.
void Select(QWidget& screen, const QString& list, const std::string& name) {
  auto& control = Find<QListWidget>(screen, list);
  const auto found = control.findItems(ToQt(name), Qt::MatchExactly);
  ASSERT_EQ(found.size(), 1) << name;
  control.setCurrentItem(found.first());
}

using HostileTreeAtScreen = StationStage;

TEST_F(HostileTreeAtScreen, StationsAndInstrumentsOfOddNamesAreOpenedAndDeleted) {
  const fs::path root = tree_.Native(kRoot);
  for (const std::string& name : kOddNames) {
    fs::create_directory(root / name);
    WriteNative(root / name / name, InstrumentFile{.comment = "odd"}.Bytes());
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
        Select(station, "LstInstrment", name);
        EXPECT_EQ(TextOf(station, "txtData_11"), "odd");
        Clear(station);
        LeaveUnsaved(station);
      });
      Click(screen, "btnEdit");
      EXPECT_FALSE(fs::exists(root / name / name));
      EXPECT_EQ(ReadNative(root / name / "INDEX"), "INDEX\r\n");
      Select(screen, "lstStation", name);
      ExpectDeleteStationQuestion(ToQt(name), QMessageBox::Ok);
      Click(screen, "btnDelete");
      EXPECT_FALSE(fs::exists(root / name));
    }
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "");
}

// ---- Two visits at once.

using TwoVisits = StationStage;

TEST_F(TwoVisits, KeepInAnIndexWhatTheOtherWrote) {
  WriteInstrument({.model = "PX13A"});
  AtStationList([&](frmStationMain& stations) {
    ClickEntry(stations, "lstStation", "ST1");
    user_.At<frmStationModelList>([&](frmStationModelList& screen) {
      WriteInstrument({.model = "PX99"});
      WriteStationInstrumentIndex(kStation, {"PX13A", "PX99", "UNSAVED"});
      Fill(screen, "txtData_0", "PX99");
      ExpectDeleteInstrumentQuestion("PX99", QMessageBox::Ok);
      Click(screen, "btnDelete");
      WriteInstrument({.model = "PX11A"});
      Click(screen, "btnReturn");
    });
    Click(stations, "btnEdit");
    MakeStation(kRoot, "ST2");
    WriteStationIndex(kRoot, {"ST1", "ST2"});
    Click(stations, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kIndex), "PX13A\r\nPX11A\r\nUNSAVED\r\nINDEX\r\n");
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\nST2\r\n");
}

}  // namespace
}  // namespace tarvell
