// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDir>
#include <QMenu>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "screens/caldata/TabEditorFixture.h"
#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/main/frmMain.h"
#include "screens/widgets/frmInput.h"
#include "support/DesktopTestPlatform.h"
#include "support/SensorStage.h"

/// The whole way of an operator: from the main menu through the real screens and message boxes to
/// the file on the disk.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class Workflow : public testing::Test {
 protected:
  Workflow() : platform_(tree_.ProgramFolder()) {}

  /// Starts the program and opens the calibration data menu, where the steps of the test go on.
  void Run() {
    tree_.MakeFolders(R"(c:\stations)");
    tree_.MakeFolders(R"(c:\calfactors)");
    frmMain mainMenu;
    mainMenu.Form_Load(0);
    Click(mainMenu, "Option2");
    Click(mainMenu, "btnStart");
  }

  void AtEditor(const std::function<void(frmCalDataInput& editor)>& act) {
    user_.At<frmCalDataInput>([act](frmCalDataInput& editor) {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
      act(editor);
    });
  }

  /// Expects a message of a real box, which only has OK.
  void ExpectNotice(const QString& text) {
    user_.AnswerBox(text, QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok,
                    QMessageBox::Ok);
  }
  /// Answers a question of a real box, which proposes No.
  void Answer(const QString& question, QMessageBox::StandardButton answer) {
    user_.AnswerBox(question, QMessageBox::Warning, QMessageBox::Yes | QMessageBox::No,
                    QMessageBox::No, answer);
  }

  /// Expects the only file with these bytes, and chooses it.
  void ChooseFile(frmCalibrationMain& screen, const SensorFile& file) {
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
    EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), Texts{kSerial});
    EXPECT_EQ(tree_.Read(std::string(kFolder) + R"(\SN12345)"), file.Bytes());
    ClickEntry(screen, "lstSerialNumber", kSerial);
  }

  static constexpr const char* kFolder = R"(c:\calfactors\PX12A)";
  static constexpr const char* kSerial = "3318A12345";
  TestTree tree_;
  DesktopTestPlatform platform_;
  User user_;
};

TEST_F(Workflow, APowerSensorIsAddedCorrectedAndDeleted) {
  SensorFile file{.serial = "", .comment = "", .rows = {{"0.10", "100.0"}, {"50.00", "100.0"}}};
  WriteNative(tree_.ProgramFolder() / "TempPX12A", file.Bytes());
  file = {.calDate = "20100406",
          .calNo = "C-7",
          .dueDate = "20110207",
          .comment = "lab",
          .rows = {{"0.10", "98.8"}, {"50.00", "10.0"}, {"12000.0", "100.0"}}};
  user_.At<frmCalibrationMain>([](frmCalibrationMain& screen) { Click(screen, "btnAdd"); });
  user_.At<QMenu>([](QMenu& add) { ClickModel(add, "PX12A"); });
  AtEditor([&](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    ExpectNotice("Please input serial number");
    Click(editor, "btnOk");
    Fill(editor, "txtSerial", kSerial);
    FillHeader(editor);
    // The Down key stores a factor and goes on; a double click edits the number itself.
    ClickCell(grid, 1, 1);
    Type("98.84");
    Press(Qt::Key_Down);
    DoubleClickCell(grid, 2, 1);
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Return);
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"98.8", "10.0"}));
    for (const auto& [number, unit] : {std::pair{"2", "GHz"}, {"12000", "MHz"}, {"50", "MHz"}}) {
      user_.At<frmInput>([number = number, unit = unit](frmInput& dialog) {
        Type(number);
        Choose(dialog, "cmbUnit", unit);
        Press(Qt::Key_Return);
      });
      if (number == std::string("50")) {
        ExpectNotice("Cannot add to same calibration point");
      }
      Click(editor, "btnAddPoint");
    }
    EXPECT_EQ(ColumnOf(grid, 0), (Texts{"0.10", "50.00", "2000.00", "12000.0"}));
    ClickCell(grid, 3, 1);
    Answer("Are you want delete? (2000MHz)", QMessageBox::Yes);
    Click(editor, "btnDeletePoint");
    Click(editor, "btnOk");
  });
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    ChooseFile(screen, file);
    Click(screen, "btnEdit");
  });
  AtEditor([&](frmCalDataInput& editor) {
    TypeCell(editor, 3, 1, "97.26");
    Press(Qt::Key_Tab);  // Add Calibration Point
    Press(Qt::Key_Tab);  // Delete Calibration Point
    Press(Qt::Key_Tab);  // File
    Press(Qt::Key_Tab);  // OK
    Press(Qt::Key_Space);
  });
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    file.rows.back().second = "97.3";
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
      ChooseFile(screen, file);
      Answer("Are you sure you want to delete PX12A(3318A12345)?", answer);
      Click(screen, "btnDelete");
    }
    EXPECT_TRUE(EntriesOf(screen, "LstInstrment").empty());
    Click(screen, "btnReturn");
  });
  Run();
  EXPECT_TRUE(QFile::exists(QDir::homePath() + "/data/Trash/files/SN12345"));
}

}  // namespace
}  // namespace tarvell
