// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDir>
#include <QMenu>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "screens/caldata/AttenuatorFile.h"
#include "screens/caldata/TabEditorFixture.h"
#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/caldata/frmInputPX60H.h"
#include "screens/main/frmMain.h"
#include "screens/widgets/frmInput.h"
#include "support/DesktopTestPlatform.h"
#include "support/SensorStage.h"

/// The whole way of an operator for each family of models: from the main menu through the real
/// screens and message boxes to the file on the disk.
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

  void AtMenu(const std::function<void(frmCalibrationMain& screen)>& act) {
    user_.At<frmCalibrationMain>(act);
  }

  template <typename Editor>
  void AtEditor(const std::function<void(Editor& editor)>& act) {
    user_.At<Editor>([act](Editor& editor) {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
      act(editor);
    });
  }

  /// Chooses the model in the Add menu and uses its editor.
  template <typename Editor>
  void Add(const QString& model, const std::function<void(Editor& editor)>& act) {
    AtMenu([](frmCalibrationMain& screen) { Click(screen, "btnAdd"); });
    user_.At<QMenu>([model](QMenu& add) { ClickModel(add, model); });
    AtEditor<Editor>(act);
  }

  /// Expects the only file with these bytes, and edits it.
  template <typename Editor>
  void Edit(const std::string& model, const std::string& bytes,
            const std::function<void(Editor& editor)>& act) {
    ExpectFile(model, bytes);
    AtMenu([](frmCalibrationMain& screen) {
      ClickEntry(screen, "lstSerialNumber", kSerial);
      Click(screen, "btnEdit");
    });
    AtEditor<Editor>(act);
  }

  void ExpectFile(const std::string& model, const std::string& bytes) {
    AtMenu([=, this](frmCalibrationMain& screen) {
      EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{model});
      EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), Texts{kSerial});
      EXPECT_EQ(tree_.Names(R"(c:\calfactors\)" + model), Texts{"SN12345"});
      EXPECT_EQ(tree_.Read(R"(c:\calfactors\)" + model + R"(\SN12345)"), bytes);
    });
  }

  /// Expects the only file with these bytes, deletes it after a first No, and leaves the menu. Runs
  /// all steps.
  void DeleteAndRun(const std::string& model, const std::string& bytes) {
    ExpectFile(model, bytes);
    AtMenu([=, this](frmCalibrationMain& screen) {
      for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
        EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), Texts{kSerial});
        ClickEntry(screen, "lstSerialNumber", kSerial);
        const std::string what = model + "(" + kSerial + ")";
        user_.AnswerBox("Are you sure you want to delete " + QString::fromStdString(what) + "?",
                        QMessageBox::Warning, QMessageBox::Yes | QMessageBox::No, QMessageBox::No,
                        answer);
        Click(screen, "btnDelete");
      }
      EXPECT_TRUE(EntriesOf(screen, "LstInstrment").empty());
      EXPECT_TRUE(EntriesOf(screen, "lstSerialNumber").empty());
      Click(screen, "btnReturn");
    });
    Run();
    EXPECT_TRUE(tree_.Names(R"(c:\calfactors\)" + model).empty());
    EXPECT_TRUE(QFile::exists(QDir::homePath() + "/data/Trash/files/SN12345"));
  }

  static void FillHeader(QWidget& editor) {
    Fill(editor, "txtSerial", kSerial);
    Fill(editor, "txtCalNo", "C-0042");
    Fill(editor, "txtCalYear", "2001");
    Choose(editor, "cmbCalMonth", "MAR");
    Fill(editor, "txtCalDay", "5");
    Fill(editor, "txtDueYear", "2002");
    Choose(editor, "cmbDueMonth", "MAR");
    Fill(editor, "txtDueDay", "5");
    Fill(editor, "txtComment", "lab");
  }

  /// Presses Delete Calibration Point and answers the question.
  void DeletePoint(QWidget& editor, const QString& point, QMessageBox::StandardButton answer) {
    user_.AnswerBox("Are you want delete? (" + point + ")", QMessageBox::Warning,
                    QMessageBox::Yes | QMessageBox::No, QMessageBox::No, answer);
    Click(editor, "btnDeletePoint");
  }

  using Changes = std::vector<std::pair<std::size_t, std::string>>;
  /// The shipped template with the header that FillHeader types and with these lines, counted from
  /// 1, in place of its own.
  [[nodiscard]] std::string Changed(const std::string& model, const Changes& changes) const {
    Texts lines;
    const std::string bytes = ReadNative(tree_.ProgramFolder() / ("Temp" + model));
    for (std::size_t start = 0; start < bytes.size();) {
      const std::size_t end = bytes.find("\r\n", start);
      lines.push_back(bytes.substr(start, end - start));
      start = end + 2;
    }
    const Texts header = HeaderLines({model, kSerial, "20010305", "C-0042", "20020305", "lab"});
    std::copy_n(header.begin(), 6, lines.begin());
    for (const auto& [line, text] : changes) {
      lines.at(line - 1) = text;
    }
    return Lines(lines);
  }

  static constexpr const char* kSerial = "3318A12345";
  TestTree tree_;
  DesktopTestPlatform platform_;
  User user_;
};

TEST_F(Workflow, APowerSensorIsAddedCorrectedAndDeleted) {
  SensorFile file{.serial = "", .comment = "", .rows = {{"0.10", "100.0"}, {"50.00", "100.0"}}};
  WriteNative(tree_.ProgramFolder() / "TempPX12A", file.Bytes());
  Add<frmCalDataInput>("PX12A", [&](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    user_.AnswerBox("Please input serial number", QMessageBox::Information, QMessageBox::Ok,
                    QMessageBox::Ok, QMessageBox::Ok);
    Click(editor, "btnOk");
    FillHeader(editor);
    // The Down key stores a factor and goes on; a double click edits the number itself.
    ClickCell(grid, 1, 1);
    Type("98.84");
    Press(Qt::Key_Down);
    DoubleClickCell(grid, 2, 1);
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Return);
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"98.8", "10.0"}));
    for (const auto& [number, unit] : {std::pair{"2", "GHz"}, {"300", "KHz"}, {"12000", "MHz"}}) {
      user_.At<frmInput>([number = number, unit = unit](frmInput& dialog) {
        Type(number);
        Choose(dialog, "cmbUnit", unit);
        Press(Qt::Key_Return);
      });
      Click(editor, "btnAddPoint");
    }
    EXPECT_EQ(ColumnOf(grid, 0), (Texts{"0.10", "0.30", "50.00", "2000.00", "12000.0"}));
    user_.At<frmInput>([](frmInput& dialog) {
      Type("50");
      Click(dialog, "btnOk");
    });
    user_.AnswerBox("Cannot add to same calibration point", QMessageBox::Information,
                    QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok);
    Click(editor, "btnAddPoint");
    ClickCell(grid, 4, 1);
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
      DeletePoint(editor, "2000MHz", answer);
      EXPECT_EQ(grid.model()->rowCount(), answer == QMessageBox::No ? 5 : 4);
    }
    Click(editor, "btnOk");
  });
  file = {.comment = "lab",
          .rows = {{"0.10", "98.8"}, {"0.30", "100.0"}, {"50.00", "10.0"}, {"12000.0", "100.0"}}};
  Edit<frmCalDataInput>("PX12A", file.Bytes(), [&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 4, 1);
    Type("97.26");
    Press(Qt::Key_Return);
    Press(Qt::Key_Tab);  // Add Calibration Point
    Press(Qt::Key_Tab);  // Delete Calibration Point
    Press(Qt::Key_Tab);  // OK
    Press(Qt::Key_Space);
  });
  SensorFile corrected = file;
  corrected.rows.back().second = "97.3";
  DeleteAndRun("PX12A", corrected.Bytes());
}

TEST_F(Workflow, AStepAttenuatorIsAddedCorrectedAndDeleted) {
  for (const std::string model : {"PX60H", "PX60G"}) {
    WriteNative(
        tree_.ProgramFolder() / ("Temp" + model),
        AttenuatorFile(model, {"*  0  :   5.00E07   :   0.0000", "* 10  :   1.00E08   :  10.0000"},
                       {"#SER_NO   : "}));
    Add<frmCalDataInput>(QString::fromStdString(model), [&](frmCalDataInput& editor) {
      CalGrid& grid = GridOf(editor);
      EXPECT_EQ(CellOf(grid, 0, 0), "Setting [dB]");
      EXPECT_EQ(CellOf(grid, 0, 1),
                TextOf(editor, "txtModel") == "PX60H" ? "Frequency[Hz]" : "Freq[Hz]");
      EXPECT_EQ(CellOf(grid, 0, 2), "Cal Data [dB]");
      FillHeader(editor);
      ClickCell(grid, 1, 2);
      Type("0.05124");
      Press(Qt::Key_Down);
      Type("10.01235");
      Press(Qt::Key_Return);
      // Points from the lists, and typed ones.
      for (const auto& [setting, frequency] : {std::pair{"120", "6.9925E09"}, {"20", "1.00E09"}}) {
        user_.At<frmInputPX60H>([setting = setting, frequency = frequency](frmInputPX60H& dialog) {
          Choose(dialog, "cmbSetting", setting);
          Choose(dialog, "cmbFreq", frequency);
          Click(dialog, "btnOk");
        });
        Click(editor, "btnAddPoint");
      }
      user_.At<frmInputPX60H>([](frmInputPX60H& dialog) {
        FillCombo(dialog, "cmbSetting", "10");
        FillCombo(dialog, "cmbFreq", "1234567");
        Press(Qt::Key_Return);
      });
      Click(editor, "btnAddPoint");
      EXPECT_EQ(ColumnOf(grid, 0), (Texts{"0", "10", "10", "20", "120"}));
      ClickCell(grid, 4, 0);
      DeletePoint(editor, "20dB, 1GHz", QMessageBox::Yes);
      Click(editor, "btnOk");
    });
    const auto file = [&](const std::string& corrected) {
      return AttenuatorFile(
          model, {"*  0  :   5.00E07   :   0.0512", "* 10  :  1.2346E06   :  " + corrected,
                  "* 10  :   1.00E08   :  10.0124", "*120  :  6.9925E09   :  120.0000"});
    };
    Edit<frmCalDataInput>(model, file("10.0000"), [](frmCalDataInput& editor) {
      ClickCell(GridOf(editor), 2, 2);
      Type("10.5");
      Click(editor, "btnOk");  // stores the edit
    });
    DeleteAndRun(model, file("10.5000"));
  }
}

TEST_F(Workflow, CapacitorSetAIsAddedCorrectedAndDeleted) {
  tree_.InstallTemplate("RT520A");
  Add<frmCalDataTabInput>("RT520A", [&](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    FillHeader(editor);
    Fill(editor, "txtTabSerial", "1234A00567");
    ClickCell(grid, 1, 1);
    Type("1.0000123");
    Press(Qt::Key_Down);
    Type("1.000026");
    Press(Qt::Key_Return);
    TypeCell(editor, 1, 2, "12");
    TypeCell(editor, 1, 4, "0.00002");
    DoubleClickCell(grid, 2, 2);
    for (int i = 0; i < 4; ++i) {
      Press(Qt::Key_Backspace);
    }
    Type("85");
    Choose(editor, "txtCellCmb", "ppm");
    Press(Qt::Key_Return);
    ClickCell(grid, 6, 1);
    Type("1.00016");
    ClickTab(editor, 4);  // stores the edit
    Fill(editor, "txtTabSerial", "1234A00570");
    ClickCell(grid, 8, 3);
    Type("0.00015");
    Click(editor, "btnOk");  // stores the edit
  });
  Changes changes = {
      {10, "#RT521A    :     1234A00567"},
      {11, "*         1000 :       1.000012pF :    0.0012 :            0.00000 :   0.00002"},
      {12, "*        10000 :        1.00003pF :    0.0085 :            0.00000 :   0.00010"},
      {16, "*      5000000 :         1.0002pF :      0.05 :            0.00000 :   0.00010"},
      {43, "#RT524A    :     1234A00570"},
      {51, "*     13000000 :         1000.0pF :      0.25 :             0.0002 :   0.0010"}};
  Edit<frmCalDataTabInput>("RT520A", Changed("RT520A", changes), [&](frmCalDataTabInput& editor) {
    EXPECT_EQ(RowOf(editor, 2), (Texts{"10000", "1.00003pF", "85.000 ppm", "0.00000", "0.00010"}));
    ClickTab(editor, 3);
    TypeCell(editor, 1, 1, "100.00125");
    Click(editor, "btnOk");
  });
  changes.emplace_back(
      33, "*         1000 :       100.0013pF :    0.0030 :            0.00000 :   0.00010");
  DeleteAndRun("RT520A", Changed("RT520A", changes));
}

TEST_F(Workflow, TheResistorSetIsAddedCorrectedAndDeleted) {
  tree_.InstallTemplate("RT730A");
  Add<frmCalDataTabInput>("RT730A", [&](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    FillHeader(editor);
    TypeCell(editor, 4, 2, "1.00005");
    EXPECT_EQ(CellOf(grid, 4, 2), "1.0001  ohm");
    ClickCell(grid, 9, 3);
    Type("100");
    Choose(editor, "txtCellCmb", "ppm");
    KeyToTab(editor, 2);
    TypeCell(editor, 3, 2, "1.25");
    TypeCell(editor, 4, 1, "0.1236");
    KeyToTab(editor, 3);
    TypeCell(editor, 1, 1, "10.0126");
    ClickCell(grid, 5, 2);
    Type("250");
    Choose(editor, "txtCellCmb", "ppm");
    KeyToTab(editor, 7);
    ClickCell(grid, 8, 4);
    Type("0.125");
    Click(editor, "btnOk");  // stores the edit
  });
  Changes changes = {
      {16, "*   RT734A :         1 ohm :      1.0001  ohm :      0.05 % "},
      {21, "*   RT739A :      100 kohm :     100.000 kohm : 0.01000 %"},
      {28, "*   RT736A :          Ls/5 nH :  1.3 nH"},
      {29, "*   RT737A :      Cp/0.124 pF : 0.02 pF"},
      {37, "*        1 :   10.013 ohm :      0.10 % :      0.000 ohm :   0.010 ohm"},
      {41, "*       13 :    10.00 ohm :   0.02500 % :       0.00 ohm :    0.05 ohm"},
      {90, "*       30 :  100.000 kohm :       0.5 % :        0.00 uS :     0.13 uS"}};
  Edit<frmCalDataTabInput>("RT730A", Changed("RT730A", changes), [](frmCalDataTabInput& editor) {
    EXPECT_EQ(RowOf(editor, 9), (Texts{"RT739A", "100 kohm", "100.000 kohm", "100 ppm", ""}));
    KeyToTab(editor, 3);
    EXPECT_EQ(CellOf(GridOf(editor), 5, 2), "250.0 ppm");
    KeyToTab(editor, 5);
    TypeCell(editor, 7, 3, "2.5");
    Click(editor, "btnOk");
  });
  changes.emplace_back(65,
                       "*       20 :    1.000 kohm :       0.3 % :           3 uS :        3 uS");
  DeleteAndRun("RT730A", Changed("RT730A", changes));
}

}  // namespace
}  // namespace tarvell
