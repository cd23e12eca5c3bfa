// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QMenu>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/main/frmMain.h"
#include "screens/station/frmStationGetInstr.h"
#include "screens/station/frmStationMain.h"
#include "screens/station/frmStationModelList.h"
#include "screens/widgets/frmInput.h"
#include "support/DesktopTestPlatform.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

using Texts = std::vector<std::string>;

/// An operator's whole way from the main menu through the stations, with real message boxes.
class StationWorkflow : public testing::Test {
 protected:
  StationWorkflow() : platform_(tree_.ProgramFolder()) {}

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
  void WriteCalFile(const std::string& serial, const std::string& due, const std::string& comment) {
    tree_.Write(
        R"(c:\calfactors\PX12A\SN)" + serial,
        Lines({"#MODEL_NO : PX12A", "#SER_NO   : " + serial, "#CAL_DATE : 20010305",
               "#CAL_NO   : C-0042", "#DUE_DATE : " + due, "#COMMENT  : " + comment, "!End"}));
  }

  TestTree tree_;
  DesktopTestPlatform platform_;
  User user_;
};

Texts InstrumentLines(const std::string& serial, const std::string& type,
                      const std::string& address, const std::string& due,
                      const std::string& comment, const std::string& calData) {
  return {"MODEL NUMBER PX12A",
          "SERIAL NUMBER " + serial,
          "ADDRESS TYPE " + type,
          "ADDRESS " + address,
          "STATION ",
          "OPTIONS ",
          "AVAILABILITY ",
          "CAL DUE DATE " + due,
          "ASSET ",
          "TRACE ",
          "COMMENT " + comment,
          "CAL DATA " + calData};
}

TEST_F(StationWorkflow, AStationIsMadeFilledAndCleared) {
  WriteCalFile("11111", "20020305", "one");
  WriteCalFile("22222", "20031231", "two");
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
      EXPECT_EQ(tree_.Read(file),
                Lines(InstrumentLines("22222", "GP-IB", "13", "30 APR 2003", "two", "own file")));
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
    EXPECT_EQ(tree_.Read(file),
              Lines(InstrumentLines("22222", "GP-IB", "13", "30 APR 2003", "typed", "own file")));
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

TEST_F(StationWorkflow, ASensorSavedInTheEditorIsOfferedToAStation) {
  WriteNative(tree_.ProgramFolder() / "TempPX12A",
              "#MODEL_NO : PX12A\r\n#SER_NO   : \r\n#CAL_DATE : 20000131\r\n#CAL_NO   : \r\n"
              "#DUE_DATE : 20010101\r\n#COMMENT  : \r\n!\r\n"
              "*   50.00:    100.0     : (Ref.)    :     0.0    :    0.0    :     0.0  \r\n"
              "!End\r\n");
  tree_.MakeFolders(R"(c:\stations\ST1)");
  frmMain mainMenu;
  mainMenu.Form_Load(0);
  Click(mainMenu, "Option2");
  ExpectFolderQuestion("Select calibration data folder is not exist.");
  user_.At<frmCalibrationMain>([](frmCalibrationMain& screen) { Click(screen, "btnAdd"); });
  user_.At<QMenu>([](QMenu& add) { ClickModel(add, "PX12A"); });
  user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
    Fill(editor, "txtSerial", "3318A12345");
    Fill(editor, "txtDueYear", "2004");
    Choose(editor, "cmbDueMonth", "FEB");
    Fill(editor, "txtDueDay", "29");
    Fill(editor, "txtComment", "factory");
    Click(editor, "btnOk");
  });
  user_.At<frmCalibrationMain>([](frmCalibrationMain& screen) { Click(screen, "btnReturn"); });
  Click(mainMenu, "btnStart");

  Click(mainMenu, "Option1");
  user_.At<frmStationMain>([&](frmStationMain& stations) {
    ClickEntry(stations, "lstStation", "ST1");
    user_.At<frmStationModelList>([&](frmStationModelList& screen) {
      user_.At<frmStationGetInstr>([](frmStationGetInstr& picker) {
        EXPECT_EQ(EntriesOf(picker, "LstInstrment"), Texts{"PX12A"});
        ClickEntry(picker, "LstInstrment", "PX12A");
        EXPECT_EQ(EntriesOf(picker, "lstSerialNumber"), Texts{"3318A12345"});
        ClickEntry(picker, "lstSerialNumber", "3318A12345");
        Click(picker, "btnAdd");
      });
      Click(screen, "btnAdd");
      EXPECT_EQ(TextOf(screen, "txtData_0"), "PX12A");
      EXPECT_EQ(Find<QComboBox>(screen, "cmbSerial").currentText(), "3318A12345");
      EXPECT_EQ(TextOf(screen, "txtData_8"), "29");
      EXPECT_EQ(Find<QComboBox>(screen, "cmbCalMonth").currentText(), "FEB");
      EXPECT_EQ(TextOf(screen, "txtData_6"), "2004");
      EXPECT_EQ(TextOf(screen, "txtData_11"), "factory");
      ExpectReturnQuestion(QMessageBox::Yes);
      Click(screen, "btnReturn");
    });
    Click(stations, "btnEdit");
    Click(stations, "btnReturn");
  });
  Click(mainMenu, "btnStart");
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\PX12A)"),
            Lines(InstrumentLines("3318A12345", "NONE", "", "29 FEB 2004", "factory", "")));
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\INDEX)"), "PX12A\r\nINDEX\r\n");
  EXPECT_EQ(tree_.Read(R"(c:\stations\INDEX)"), "ST1\r\n");
}

}  // namespace
}  // namespace tarvell
