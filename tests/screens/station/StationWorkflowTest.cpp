// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "screens/main/frmMain.h"
#include "screens/station/StationFixture.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/frmInput.h"
#include "support/AnotherProcess.h"

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

  void ExpectFolderQuestion(const QString& text) {
    user_.AnswerBox(text + "\r\nIf you want to create new folder, then press Ok button.",
                    QMessageBox::Information, QMessageBox::Ok | QMessageBox::Cancel,
                    QMessageBox::Cancel, QMessageBox::Ok);
  }
  void ExpectNotice(const QString& text) {
    user_.AnswerBox(text, QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok,
                    QMessageBox::Ok);
  }
  void ExpectReturnQuestion(QMessageBox::StandardButton answer) {
    user_.AnswerBox("Instruemnt Data was changed. Do you want to save it?",
                    QMessageBox::Information,
                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes,
                    answer, "Instrument data was changed.");
  }
  void Add(frmStationModelList& screen, const QString& model, const QString& serial,
           bool isListed = false) {
    user_.At<frmStationGetInstr>([=](frmStationGetInstr& picker) {
      ClickEntry(picker, "LstInstrment", model);
      ClickEntry(picker, "lstSerialNumber", serial);
      Click(picker, "btnAdd");
    });
    if (isListed) {
      ExpectNotice("This instrment is already exist.");
    }
    Click(screen, "btnAdd");
  }
};

/// The station file of serial number 22222 with this comment.
std::string FileWithComment(const std::string& comment) {
  return InstrumentFile({.serial = "22222",
                         .station = "",
                         .options = "",
                         .availability = "",
                         .dueDate = "30 APR 2003",
                         .asset = "",
                         .trace = "",
                         .comment = comment,
                         .calData = "own file"})
      .Bytes();
}

TEST_F(StationWorkflow, AStationIsMadeFilledAndCleared) {
  WriteCalFile("PX12A", "SN1", {.serial = "11111", .comment = "one"});
  WriteCalFile("PX12A", "SN2", {.serial = "22222", .dueDate = "20031231", .comment = "two"});
  const std::string file = R"(c:\stations\rack 2\PX12A)";
  const std::string index = R"(c:\stations\rack 2\INDEX)";
  frmMain mainMenu;
  mainMenu.Form_Load(0);
  Click(mainMenu, "Option1");
  ExpectFolderQuestion("Input station folder does not exist.");
  user_.At<frmStationMain>([&](frmStationMain& stations) {
    EXPECT_EQ(EntriesOf(stations, "lstStation"), Texts{"No Stations"});
    ExpectNotice("No station is selected.");
    Click(stations, "btnEdit");
    ExpectNotice("No stations is selected.");
    Click(stations, "btnDelete");
    user_.At<frmInput>([](frmInput&) { Press(Qt::Key_Return); });
    ExpectNotice("Station name is no input.");
    Click(stations, "btnAdd");
    for (int i = 0; i < 2; ++i) {
      user_.At<frmInput>([](frmInput&) {
        Type("rack 2");
        Press(Qt::Key_Return);
      });
      if (i == 1) {
        ExpectNotice("This station name was already exist.");
      }
      Click(stations, "btnAdd");
    }
    user_.At<frmInput>([](frmInput&) {
      Type("RACK 2");
      Press(Qt::Key_Return);
    });
    user_.At<QMessageBox>([](QMessageBox& box) {
      EXPECT_EQ(box.text(), "Can't make a new station");
      EXPECT_EQ(box.icon(), QMessageBox::Information);
      EXPECT_EQ(box.windowTitle(), "Morrand Tarvell");
      EXPECT_TRUE(box.informativeText().contains("there is one of this name already"));
      Press(Qt::Key_Return);
    });
    Click(stations, "btnAdd");
    EXPECT_EQ(EntriesOf(stations, "lstStation"), Texts{"rack 2"});

    ClickEntry(stations, "lstStation", "rack 2");
    user_.At<frmStationModelList>([&](frmStationModelList& screen) {
      EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
      ExpectNotice("No model is selected.");
      Click(screen, "btnDelete");
      Add(screen, "PX12A", "11111");
      EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
      Choose(screen, "cmbSerial", "22222");
      EXPECT_EQ(TextOf(screen, "txtData_11"), "two");
      Choose(screen, "cmbAddressType", "GP-IB");
      Fill(screen, "txtData_2", "13");
      Fill(screen, "txtData_12", "own file");
      Fill(screen, "txtData_8", "31");
      Choose(screen, "cmbCalMonth", "APR");
      user_.AnswerBox("Error: Invailed Input Date", QMessageBox::Warning, QMessageBox::Ok,
                      QMessageBox::Ok, QMessageBox::Ok);
      Click(screen, "btnSave");
      EXPECT_FALSE(tree_.Exists(file));
      Fill(screen, "txtData_8", "30");
      Click(screen, "btnSave");
      EXPECT_FALSE(Find<QAbstractButton>(screen, "btnSave").isEnabled());
      EXPECT_EQ(tree_.Read(file), FileWithComment("two"));
      Add(screen, "PX12A", "11111", true);
      EXPECT_FALSE(tree_.Exists(index));
      ExpectReturnQuestion(QMessageBox::Cancel);
      Click(screen, "btnReturn");
      EXPECT_TRUE(screen.isVisible());
      EXPECT_FALSE(tree_.Exists(index));
      Fill(screen, "txtData_11", "typed");
      ExpectReturnQuestion(QMessageBox::Yes);
      Click(screen, "btnReturn");
    });
    Click(stations, "btnEdit");
    EXPECT_EQ(tree_.Read(file), FileWithComment("typed"));
    EXPECT_EQ(tree_.Read(index), "PX12A\r\nINDEX\r\n");

    ClickEntry(stations, "lstStation", "rack 2");
    user_.At<frmStationModelList>([&](frmStationModelList& screen) {
      ClickEntry(screen, "LstInstrment", "PX12A");
      EXPECT_EQ(TextOf(screen, "txtData_11"), "typed");
      EXPECT_EQ(TextOf(screen, "txtData_12"), "");
      for (const auto answer : {QMessageBox::Cancel, QMessageBox::Ok}) {
        user_.AnswerBox("Are you sure to want to delete PX12A?", QMessageBox::Warning,
                        QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel, answer);
        Click(screen, "btnDelete");
        EXPECT_EQ(tree_.Exists(file), answer == QMessageBox::Cancel);
      }
      Add(screen, "PX12A", "11111");
      Click(screen, "btnSave");
      for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
        user_.AnswerBox(
            "This action is current station instrment data be all lost.\r\n"
            "Do you wish to continue?",
            QMessageBox::Warning, QMessageBox::Yes | QMessageBox::No, QMessageBox::No, answer,
            "Station Data Delete");
        if (answer == QMessageBox::Yes) {
          ExpectNotice("Current station data delete completed.");
        }
        Click(screen, "btnClear");
        EXPECT_EQ(tree_.Names(R"(c:\stations\rack 2)").empty(), answer == QMessageBox::Yes);
      }
      ExpectReturnQuestion(QMessageBox::No);
      Click(screen, "btnReturn");
    });
    Click(stations, "btnEdit");
    EXPECT_EQ(tree_.Names(R"(c:\stations\rack 2)"), Texts{"INDEX"});
    EXPECT_EQ(tree_.Read(index), "INDEX\r\n");
    Click(stations, "btnReturn");
  });
  Click(mainMenu, "btnStart");
  EXPECT_EQ(tree_.Read(R"(c:\stations\INDEX)"), "rack 2\r\n");

  user_.At<frmStationMain>([&](frmStationMain& stations) {
    for (const auto answer : {QMessageBox::Cancel, QMessageBox::Ok}) {
      ClickEntry(stations, "lstStation", "rack 2");
      user_.AnswerBox("Are you sure you want to delete \"rack 2\" station data?",
                      QMessageBox::Warning, QMessageBox::Ok | QMessageBox::Cancel,
                      QMessageBox::Cancel, answer);
      Click(stations, "btnDelete");
    }
    EXPECT_EQ(EntriesOf(stations, "lstStation"), Texts{"No Stations"});
    Click(stations, "btnReturn");
  });
  Click(mainMenu, "btnStart");
  EXPECT_EQ(tree_.Names(R"(c:\stations)"), Texts{"INDEX"});
  EXPECT_EQ(tree_.Read(R"(c:\stations\INDEX)"), "");
}

// ---- Trees that another program filled.

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
    fs::create_directory(In(kRoot, name));
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
  tree_.MakeFolders(kStation);
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

// ---- Two visits at once.

class TwoVisits : public StationStage {};

TEST_F(TwoVisits, ToAStationBothStayInItsIndex) {
  WriteInstrument();
  WriteInstrument("PX60H", InstrumentFile{.model = "PX60H"}.Bytes());
  AtStation([&](frmStationModelList& screen) {
    InAnotherProcess([&] {
      WriteInstrument("RT730A", InstrumentFile{.model = "RT730A"}.Bytes());
      WriteStationInstrumentIndex(kStation, {"PX12A", "PX60H", "RT730A", "UNSAVED"});
    });
    ClickEntry(screen, "LstInstrment", "PX60H");
    ExpectDeleteInstrumentQuestion("PX60H", QMessageBox::Ok);
    Click(screen, "btnDelete");
    InAnotherProcess([&] { WriteInstrument("PX11A", InstrumentFile{.model = "PX11A"}.Bytes()); });
    LeaveUnsaved(screen);
  });
  const std::string index = tree_.Read(kIndex);
  const std::string end = "PX11A\r\nUNSAVED\r\nINDEX\r\n";
  // The first two are in the order of the directory.
  EXPECT_TRUE(index == "PX12A\r\nRT730A\r\n" + end || index == "RT730A\r\nPX12A\r\n" + end)
      << index;
}

TEST_F(TwoVisits, DoNotBringBackWhatThisOneDeleted) {
  WriteInstrument({.model = "PX13A"});
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "3318A12345");
    Click(screen, "btnSave");
    ClickEntry(screen, "LstInstrment", "PX13A");
    InAnotherProcess([&] {
      WriteInstrument({.model = "PX99"});
      WriteStationInstrumentIndex(kStation, {"PX13A", "PX12A", "PX99"});
    });
    for (const char* model : {"PX12A", "PX99"}) {
      Fill(screen, "txtData_0", model);
      ExpectDeleteInstrumentQuestion(model, QMessageBox::Ok);
      Click(screen, "btnDelete");
    }
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Read(kIndex), "PX13A\r\nINDEX\r\n");
}

TEST_F(TwoVisits, ToTheStationListBothStayInItsIndex) {
  tree_.MakeFolders(kStation);
  AtStationList([&](frmStationMain& screen) {
    InAnotherProcess([&] {
      MakeStation(kRoot, "ST2");
      WriteStationIndex(kRoot, {"ST1", "ST2"});
    });
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\nST2\r\n");
}

}  // namespace
}  // namespace tarvell
