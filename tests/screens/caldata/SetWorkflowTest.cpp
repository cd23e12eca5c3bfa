// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCheckBox>
#include <QDir>
#include <QMenu>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "screens/caldata/CalGrid.h"
#include "screens/caldata/TabEditorFixture.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/main/frmMain.h"
#include "support/DesktopTestPlatform.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// A data file: the header lines' values and the lines behind them.
std::string FileOf(const SetHeader& header, const Texts& body) {
  Texts lines = HeaderLines(header);
  lines.resize(6);
  lines.insert(lines.end(), body.begin(), body.end());
  return Lines(lines);
}

/// `lines` with the first one that equals `line` replaced.
Texts With(Texts lines, const std::string& line, const std::string& other) {
  const auto found = std::find(lines.begin(), lines.end(), line);
  EXPECT_NE(found, lines.end()) << line;
  if (found != lines.end()) {
    *found = other;
  }
  return lines;
}

// The lines of the files as they are saved first: the shipped templates with what is typed.

const Texts kSetA = {
    "!",
    "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)",
    "!",
    "#RT521A    :     1234A00567",
    "*         1000 :       1.000012pF :    0.0012 :            0.00001 :   0.00002",
    "*        10000 :        1.00003pF :    0.0085 :            0.00000 :   0.00010",
    "*       100000 :        1.00000pF :     0.010 :            0.00000 :   0.00010",
    "*      1000000 :        1.00000pF :     0.010 :            0.00000 :   0.00010",
    "*      2000000 :        1.00000pF :     0.020 :            0.00000 :   0.00010",
    "*      5000000 :         1.0002pF :      0.05 :            0.00000 :   0.00010",
    "*     10000000 :         1.0005pF :      0.08 :            0.00000 :   0.00010",
    "*     13000000 :         1.0000pF :      0.10 :            0.00000 :   0.00010",
    "!END",
    "!",
    "#RT522A    :     ",
    "*         1000 :       10.00000pF :    0.0030 :            0.00000 :   0.00010",
    "*        10000 :       10.00000pF :    0.0030 :            0.00000 :   0.00010",
    "*       100000 :       10.00000pF :    0.0040 :            0.00000 :   0.00010",
    "*      1000000 :       10.00000pF :    0.0080 :            0.00000 :   0.00010",
    "*      2000000 :       10.00000pF :    0.0150 :            0.00000 :   0.00010",
    "*      5000000 :       10.00000pF :    0.0300 :            0.00000 :   0.00010",
    "*     10000000 :        10.0000pF :     0.050 :            0.00000 :   0.00010",
    "*     13000000 :        10.0000pF :     0.080 :            0.00000 :   0.00010",
    "!END",
    "!",
    "#RT523A    :     ",
    "*         1000 :       100.0000pF :    0.0030 :            0.00000 :   0.00010",
    "*        10000 :       100.0000pF :    0.0030 :            0.00000 :   0.00010",
    "*       100000 :       100.0000pF :    0.0050 :            0.00000 :   0.00010",
    "*      1000000 :       100.0000pF :    0.0080 :            0.00000 :   0.00010",
    "*      2000000 :        100.000pF :     0.015 :            0.00000 :   0.00010",
    "*      5000000 :        100.000pF :     0.030 :            0.00000 :   0.00010",
    "*     10000000 :        100.000pF :     0.050 :            0.00000 :   0.00010",
    "*     13000000 :        100.000pF :     0.080 :            0.00000 :   0.00010",
    "!END",
    "!",
    "#RT524A    :     1234A00570",
    "*         1000 :       1000.000pF :    0.0050 :            0.00000 :   0.00010",
    "*        10000 :       1000.000pF :    0.0050 :            0.00000 :   0.00010",
    "*       100000 :        1000.00pF :     0.010 :            0.00000 :   0.00010",
    "*      1000000 :        1000.00pF :     0.020 :            0.00000 :   0.00010",
    "*      2000000 :        1000.00pF :     0.040 :            0.00000 :   0.00010",
    "*      5000000 :        1000.00pF :     0.080 :            0.00000 :   0.00010",
    "*     10000000 :         1000.0pF :      0.15 :            0.00000 :   0.00010",
    "*     13000000 :         1000.0pF :      0.25 :             0.0002 :   0.0010",
    "!END",
    "!",
};

const Texts kSetCMembers = {
    "!",
    "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)",
    "!",
    "#RT525A    :     ",
    "*          100 :        10.0000nF :    0.0200 :            0.00000 :   0.00010",
    "*          120 :        10.0000nF :    0.0200 :            0.00000 :   0.00010",
    "*         1000 :       10.00012nF :    0.0150 :            0.00000 :   0.00010",
    "*        10000 :        10.0000nF :    0.0300 :            0.00000 :   0.00010",
    "*       100000 :        10.0000nF :    0.0800 :            0.00000 :   0.00010",
    "!END",
    "!",
    "#RT526A    :     ",
    "*          100 :        100.000nF :    0.0200 :            0.00000 :   0.00010",
    "*          120 :        100.000nF :    0.0200 :            0.00000 :   0.00010",
    "*         1000 :        100.000nF :    0.0150 :            0.00000 :   0.00010",
    "*        10000 :        100.000nF :    0.0300 :            0.00000 :   0.00010",
    "*       100000 :        100.000nF :    0.0795 :            0.00000 :   0.00010",
    "!END",
    "!",
    "#RT527A    :     2345C00003",
    "*          100 :        1.00000uF :    0.0200 :            0.00000 :   0.00010",
    "*          120 :        1.00000uF :    0.0200 :            0.00000 :   0.00010",
    "*         1000 :        1.00000uF :    0.0150 :            0.00000 :   0.00010",
    "*        10000 :        1.00000uF :    0.0300 :            0.00000 :   0.00010",
    "*       100000 :        1.00000uF :    0.0800 :            0.00000 :   0.00010",
    "!END",
    "!",
};

const Texts kSetCOption = {
    "#RT528A    :     ",
    "*          100 :        10.0000uF :    0.0200 :            0.00000 :   0.00010",
    "*          120 :        10.0000uF :    0.0200 :            0.00000 :   0.00010",
    "*         1000 :        10.0000uF :    0.0150 :            0.00000 :   0.00010",
    "*        10000 :        10.0000uF :    0.0300 :            0.00000 :   0.00010",
    "*       100000 :        10.0000uF :    0.0800 :            0.00000 :   0.00010",
    "!END",
    "!",
};

const Texts kResistors = {
    "!",
    "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)",
    "!",
    "!",
    "!DC Resistance",
    "!Model     : Nominal Value : Calibrated Value : Unc.(%)",
    "*   RT731A :        1 mohm :     1.0000  mohm :       0.1 % ",
    "*   RT732A :       10 mohm :     10.000  mohm :       0.1 % ",
    "*   RT733A :      100 mohm :     100.00  mohm :       0.1 % ",
    "*   RT734A :         1 ohm :      1.0001  ohm :      0.05 % ",
    "*   RT735A :        10 ohm :      10.000  ohm :      0.02 % ",
    "*   RT736A :       100 ohm :      100.000 ohm :      0.01 % ",
    "*   RT737A :        1 kohm :     1.00000 kohm :      0.01 % ",
    "*   RT738A :       10 kohm :     10.0000 kohm :      0.01 % ",
    "*   RT739A :      100 kohm :     100.000 kohm : 0.01000 %",
    "!END",
    "!",
    "!Series Inductance and/or Parallel Capacitance at 1MHz",
    "!Model     : Calibrated Value : Unc.(%)",
    "*   RT734A :          Ls/5 nH :  0.5 nH",
    "*   RT735A :          Ls/5 nH :  0.5 nH",
    "*   RT736A :          Ls/5 nH :  1.3 nH",
    "*   RT737A :      Cp/0.124 pF : 0.02 pF",
    "*   RT738A :        Cp/0.1 pF : 0.02 pF",
    "*   RT739A :        Cp/0.1 pF : 0.02 pF",
    "!END",
    "!",
    "!High Freqency Calibration Results",
    "! 10 ohm (MODEL QZ RT735A)",
    "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty",
    "*        1 :   10.013 ohm :      0.10 % :      0.000 ohm :   0.010 ohm",
    "*        3 :   10.000 ohm :      0.10 % :      0.000 ohm :   0.010 ohm",
    "*        5 :   10.000 ohm :      0.10 % :      0.000 ohm :   0.010 ohm",
    "*       10 :   10.000 ohm :      0.10 % :      0.000 ohm :   0.010 ohm",
    "*       13 :    10.00 ohm :   0.02500 % :       0.00 ohm :    0.05 ohm",
    "*       20 :    10.00 ohm :       0.3 % :       0.00 ohm :    0.05 ohm",
    "*       30 :    10.00 ohm :       0.3 % :       0.00 ohm :    0.05 ohm",
    "!END",
    "!",
    "! 100 ohm (MODEL QZ RT736A)",
    "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty",
    "*        1 :   100.00 ohm :      0.10 % :       0.00 ohm :    0.10 ohm",
    "*        3 :   100.00 ohm :      0.10 % :       0.00 ohm :    0.10 ohm",
    "*        5 :   100.00 ohm :      0.10 % :       0.00 ohm :    0.10 ohm",
    "*       10 :   100.00 ohm :      0.10 % :       0.00 ohm :    0.10 ohm",
    "*       13 :   100.00 ohm :      0.10 % :       0.00 ohm :    0.10 ohm",
    "*       20 :    100.0 ohm :       0.3 % :        0.0 ohm :     0.3 ohm",
    "*       30 :    100.0 ohm :       0.3 % :        0.0 ohm :     0.3 ohm",
    "!END",
    "!",
    "! 1 kohm (MODEL QZ RT737A)",
    "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty",
    "*        1 :   1.0000 kohm :      0.10 % :         0.0 uS :      1.0 uS",
    "*        2 :   1.0000 kohm :      0.10 % :         0.0 uS :      1.0 uS",
    "*        3 :   1.0000 kohm :      0.10 % :         0.0 uS :      1.0 uS",
    "*        5 :   1.0000 kohm :      0.10 % :         0.0 uS :      1.0 uS",
    "*       10 :   1.0000 kohm :      0.10 % :         0.0 uS :      1.0 uS",
    "*       13 :   1.0000 kohm :      0.10 % :         0.0 uS :      1.0 uS",
    "*       20 :    1.000 kohm :       0.3 % :           0 uS :        3 uS",
    "*       30 :    1.000 kohm :       0.3 % :           0 uS :        3 uS",
    "!END",
    "!",
    "! 10 kohm (MODEL QZ RT738A)",
    "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty",
    "*        1 :   10.000 kohm :      0.10 % :        0.00 uS :     0.10 uS",
    "*        2 :   10.000 kohm :      0.10 % :        0.00 uS :     0.10 uS",
    "*        3 :   10.000 kohm :       0.3 % :           0 uS :        1 uS",
    "*        5 :   10.000 kohm :       0.3 % :           0 uS :        1 uS",
    "*       10 :   10.000 kohm :       0.3 % :           0 uS :        1 uS",
    "*       13 :   10.000 kohm :       0.3 % :           0 uS :        1 uS",
    "*       20 :   10.000 kohm :       0.3 % :           0 uS :        1 uS",
    "*       30 :   10.000 kohm :       0.3 % :           0 uS :        1 uS",
    "!END",
    "!",
    "! 100 kohm (MODEL QZ RT739A)",
    "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty",
    "*        1 :   100.00 kohm :      0.20 % :       0.000 uS :    0.010 uS",
    "*        2 :   100.00 kohm :      0.20 % :        0.00 uS :     0.10 uS",
    "*        3 :  100.000 kohm :       0.5 % :        0.00 uS :     0.10 uS",
    "*        5 :  100.000 kohm :       0.5 % :        0.00 uS :     0.10 uS",
    "*       10 :  100.000 kohm :       0.5 % :        0.00 uS :     0.10 uS",
    "*       13 :  100.000 kohm :       0.5 % :        0.00 uS :     0.10 uS",
    "*       20 :  100.000 kohm :       0.5 % :        0.00 uS :     0.10 uS",
    "*       30 :  100.000 kohm :       0.5 % :        0.00 uS :     0.13 uS",
    "!END",
};

/// An operator's way with the sets of standards, from the main menu to the file on the disk.
class SetWorkflow : public testing::Test {
 protected:
  SetWorkflow() : platform_(tree_.ProgramFolder()) {
    tree_.MakeFolders(R"(c:\stations)");
    tree_.MakeFolders(R"(c:\calfactors)");
  }

  /// Starts the program and goes to the calibration data, where the steps that were added go on.
  static void Run() {
    frmMain mainMenu;
    mainMenu.Form_Load(0);
    Click(mainMenu, "Option2");
    Click(mainMenu, "btnStart");
    EXPECT_TRUE(mainMenu.isVisible());
  }

  void AtEditor(const std::function<void(frmCalDataTabInput& editor)>& act) {
    user_.At<frmCalDataTabInput>([act](frmCalDataTabInput& editor) {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
      act(editor);
    });
  }

  /// Chooses the model in the menu of Add and uses its editor.
  void Add(const std::string& model, const std::function<void(frmCalDataTabInput& editor)>& act) {
    user_.At<frmCalibrationMain>([](frmCalibrationMain& screen) { Click(screen, "btnAdd"); });
    user_.At<QMenu>([model](QMenu& add) { ClickModel(add, QString::fromStdString(model)); });
    AtEditor(act);
  }

  /// Chooses the only file in the list, which carries `serial`, and uses its editor.
  void Edit(const std::string& model, const std::string& serial,
            const std::function<void(frmCalDataTabInput& editor)>& act) {
    user_.At<frmCalibrationMain>([=](frmCalibrationMain& screen) {
      EXPECT_EQ(EntriesOf(screen, "LstInstrment"), (Texts{model}));
      EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), (Texts{serial}));
      ClickEntry(screen, "lstSerialNumber", QString::fromStdString(serial));
      Click(screen, "btnEdit");
    });
    AtEditor(act);
  }

  /// Deletes the only file, after a first No, and leaves the screen.
  void Delete(const std::string& model, const std::string& serial, const std::string& path) {
    user_.At<frmCalibrationMain>([=, this](frmCalibrationMain& screen) {
      for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
        ClickEntry(screen, "lstSerialNumber", QString::fromStdString(serial));
        user_.AnswerBox(QString::fromStdString("Are you sure you want to delete " + model + "(" +
                                               serial + ")?"),
                        QMessageBox::Warning, QMessageBox::Yes | QMessageBox::No, QMessageBox::No,
                        answer);
        Click(screen, "btnDelete");
        EXPECT_EQ(tree_.Exists(path), answer == QMessageBox::No);
      }
      EXPECT_TRUE(EntriesOf(screen, "LstInstrment").empty());
      EXPECT_TRUE(EntriesOf(screen, "lstSerialNumber").empty());
      EXPECT_TRUE(tree_.Names(R"(c:\calfactors\)" + model).empty());
      Click(screen, "btnReturn");
    });
  }

  /// Compares the file as soon as the editor has gone.
  void ExpectFile(const std::string& path, const SetHeader& header, const Texts& body) {
    user_.At<frmCalibrationMain>([=, this](frmCalibrationMain& screen) {
      EXPECT_EQ(tree_.Read(path), FileOf(header, body));
      EXPECT_EQ(EntriesOf(screen, "LstInstrment"), (Texts{header.model}));
      EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), (Texts{header.serial}));
    });
  }

  static void FillHeader(frmCalDataTabInput& editor, const SetHeader& header) {
    Fill(editor, "txtSerial", QString::fromStdString(header.serial));
    Fill(editor, "txtCalNo", "C-0042");
    Fill(editor, "txtCalYear", "2001");
    Choose(editor, "cmbCalMonth", "MAR");
    Fill(editor, "txtCalDay", "5");
    Fill(editor, "txtDueYear", "2002");
    Choose(editor, "cmbDueMonth", "MAR");
    Fill(editor, "txtDueDay", "5");
    Fill(editor, "txtComment", "lab");
  }

  static SetHeader HeaderOf(const std::string& model, const std::string& serial) {
    return {model, serial, "20010305", "C-0042", "20020305", "lab"};
  }

  TestTree tree_;
  DesktopTestPlatform platform_;
  User user_;
};

TEST_F(SetWorkflow, SetAIsAddedCorrectedAndDeleted) {
  tree_.InstallTemplate("RT520A");
  const SetHeader header = HeaderOf("RT520A", "2031A00517");
  const std::string path = R"(c:\calfactors\RT520A\SN00517)";
  Add("RT520A", [&](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (RT520A - 1000A00000)");
    EXPECT_EQ(ColumnOf(grid, 0), (Texts{"1000", "10000", "100000", "1000000", "2000000", "5000000",
                                        "10000000", "13000000"}));
    FillHeader(editor, header);
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (RT520A - 2031A00517)");
    Fill(editor, "txtTabSerial", "1234A00567");
    ClickCell(grid, 1, 1);
    Type("1.0000123");
    Press(Qt::Key_Down);
    Type("1.000026");
    Press(Qt::Key_Return);
    TypeCell(editor, 1, 2, "12");
    EXPECT_EQ(CellOf(grid, 1, 2), "12 ppm");
    TypeCell(editor, 1, 3, "0.00001");
    TypeCell(editor, 1, 4, "0.00002");
    // From per cent to ppm.
    DoubleClickCell(grid, 2, 2);
    EXPECT_EQ(TextOf(editor, "txtCell"), "0.01");
    for (int i = 0; i < 4; ++i) {
      Press(Qt::Key_Backspace);
    }
    Type("85");
    Choose(editor, "txtCellCmb", "ppm");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 2, 2), "85.000 ppm");
    ClickCell(grid, 6, 1);
    Type("1.00016");
    Press(Qt::Key_Down);
    Type("1.00049");
    ClickTab(editor, 2);  // stores the edit
    ClickCell(grid, 3, 2);
    Type("0.004");
    Choose(editor, "txtCellCmb", "%");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 3, 2), "0.0040 %");
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "1234A00570");
    ClickCell(grid, 8, 3);
    Type("0.00015");
    Click(editor, "btnOk");  // stores the edit
  });
  ExpectFile(path, header, kSetA);
  Edit("RT520A", "2031A00517", [&](frmCalDataTabInput& editor) {
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (RT520A - 2031A00517)");
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-0042");
    EXPECT_EQ(ComboText(editor, "cmbCalMonth"), "MAR");
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "1234A00567");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"1000", "1.000012pF", "12 ppm", "0.00001", "0.00002"}));
    EXPECT_EQ(RowOf(editor, 2), (Texts{"10000", "1.00003pF", "85.000 ppm", "0.00000", "0.00010"}));
    EXPECT_EQ(RowOf(editor, 7), (Texts{"10000000", "1.0005pF", "0.08 %", "0.00000", "0.00010"}));
    ClickTab(editor, 2);
    EXPECT_EQ(CellOf(GridOf(editor), 3, 2), "40 ppm") << "six characters stand for ppm";
    ClickTab(editor, 3);
    TypeCell(editor, 1, 1, "100.00125");
    ClickTab(editor, 1);
    Fill(editor, "txtComment", "done in lab");
    Click(editor, "btnOk");
  });
  SetHeader corrected = header;
  corrected.comment = "done in lab";
  ExpectFile(
      path, corrected,
      With(kSetA, "*         1000 :       100.0000pF :    0.0030 :            0.00000 :   0.00010",
           "*         1000 :       100.0013pF :    0.0030 :            0.00000 :   0.00010"));
  Delete("RT520A", "2031A00517", path);
  Run();
  EXPECT_TRUE(QFile::exists(QDir::homePath() + "/data/Trash/files/SN00517"));
}

TEST_F(SetWorkflow, SetCIsAddedWithoutItsOptionAndGetsItLater) {
  tree_.InstallTemplate("RT520C");
  const SetHeader header = HeaderOf("RT520C", "2031C00618");
  const std::string path = R"(c:\calfactors\RT520C\SN00618)";
  Add("RT520C", [&](frmCalDataTabInput& editor) {
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (RT520C - 1000C00000)");
    EXPECT_TRUE(Find<QCheckBox>(editor, "chkCheck").isChecked());
    FillHeader(editor, header);
    TypeCell(editor, 3, 1, "10.00012");
    EXPECT_EQ(CellOf(GridOf(editor), 3, 1), "10.00012nF");
    ClickTab(editor, 2);
    ClickCell(GridOf(editor), 5, 2);
    Type("0.0795");
    Choose(editor, "txtCellCmb", "%");
    Press(Qt::Key_Return);
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "2345C00004");
    TypeCell(editor, 1, 1, "9.9");
    Click(editor, "chkCheck");
    EXPECT_EQ(TitlesOf(editor), (Texts{"RT525A", "RT526A", "RT527A"}));
    ClickTab(editor, 3);
    Fill(editor, "txtTabSerial", "2345C00003");
    Click(editor, "btnOk");
  });
  ExpectFile(path, header, kSetCMembers);
  Edit("RT520C", "2031C00618", [](frmCalDataTabInput& editor) {
    EXPECT_FALSE(Find<QCheckBox>(editor, "chkCheck").isChecked());
    EXPECT_EQ(TabsOf(editor).count(), 3);
    EXPECT_EQ(RowOf(editor, 3), (Texts{"1000", "10.00012nF", "150 ppm", "0.00000", "0.00010"}));
    Click(editor, "chkCheck");
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1),
              (Texts{"10.0000uF", "10.0000uF", "10.0000uF", "10.0000uF", "10.0000uF"}));
    Fill(editor, "txtTabSerial", "2345C00004");
    TypeCell(editor, 1, 1, "9.99876");
    Click(editor, "btnOk");
  });
  Texts four = kSetCMembers;
  four.insert(four.end(), kSetCOption.begin(), kSetCOption.end());
  four = With(four, "#RT528A    :     ", "#RT528A    :     2345C00004");
  four =
      With(four, "*          100 :        10.0000uF :    0.0200 :            0.00000 :   0.00010",
           "*          100 :        9.99876uF :    0.0200 :            0.00000 :   0.00010");
  ExpectFile(path, header, four);
  Edit("RT520C", "2031C00618", [](frmCalDataTabInput& editor) {
    EXPECT_TRUE(Find<QCheckBox>(editor, "chkCheck").isChecked());
    Click(editor, "btnOk");  // opened and closed, it is the same file
  });
  ExpectFile(path, header, four);
  Delete("RT520C", "2031C00618", path);
  Run();
}

TEST_F(SetWorkflow, TheResistorSetIsAddedCorrectedAndDeleted) {
  tree_.InstallTemplate("RT730A");
  const SetHeader header = HeaderOf("RT730A", "2031R00719");
  const std::string path = R"(c:\calfactors\RT730A\SN00719)";
  Add("RT730A", [&](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (RT730A - 1000R00000)");
    EXPECT_EQ(grid.Data().RowCount(), 10);
    FillHeader(editor, header);
    TypeCell(editor, 4, 2, "1.00005");
    EXPECT_EQ(CellOf(grid, 4, 2), "1.0001  ohm");
    ClickCell(grid, 9, 3);
    Type("100");
    Choose(editor, "txtCellCmb", "ppm");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 9, 3), "100 ppm");
    KeyToTab(editor, 2);
    EXPECT_EQ(grid.Data().RowCount(), 7);
    TypeCell(editor, 3, 2, "1.25");
    TypeCell(editor, 4, 1, "0.1236");
    EXPECT_EQ(CellOf(grid, 4, 1), "Cp/0.124 pF");
    KeyToTab(editor, 3);
    EXPECT_EQ(grid.Data().RowCount(), 8);
    TypeCell(editor, 1, 1, "10.0126");
    ClickCell(grid, 5, 2);
    Type("250");
    Choose(editor, "txtCellCmb", "ppm");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 5, 2), "250.0 ppm");
    KeyToTab(editor, 7);
    EXPECT_EQ(grid.Data().RowCount(), 9);
    ClickCell(grid, 8, 4);
    Type("0.125");
    Click(editor, "btnOk");  // stores the edit
  });
  ExpectFile(path, header, kResistors);
  Edit("RT730A", "2031R00719", [](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    EXPECT_EQ(RowOf(editor, 4), (Texts{"RT734A", "1 ohm", "1.0001  ohm", "0.05 %", ""}));
    EXPECT_EQ(RowOf(editor, 9), (Texts{"RT739A", "100 kohm", "100.000 kohm", "100 ppm", ""}));
    KeyToTab(editor, 3);
    EXPECT_EQ(RowOf(editor, 5), (Texts{"13", "10.00 ohm", "250.0 ppm", "0.00 ohm", "0.05 ohm"}));
    KeyToTab(editor, 7);
    EXPECT_EQ(CellOf(grid, 8, 4), "0.13 uS");
    KeyToTab(editor, 5);
    TypeCell(editor, 7, 3, "2.5");
    EXPECT_EQ(CellOf(grid, 7, 3), "3 uS");
    Click(editor, "btnOk");
  });
  ExpectFile(
      path, header,
      With(kResistors, "*       20 :    1.000 kohm :       0.3 % :           0 uS :        3 uS",
           "*       20 :    1.000 kohm :       0.3 % :           3 uS :        3 uS"));
  Delete("RT730A", "2031R00719", path);
  Run();
  EXPECT_TRUE(QFile::exists(QDir::homePath() + "/data/Trash/files/SN00719"));
}

TEST_F(SetWorkflow, AShippedTemplateIsSavedAsItStands) {
  for (const std::string model : {"RT520A", "RT520C", "RT730A"}) {
    tree_.InstallTemplate(model);
  }
  const auto save = [](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00001");
    // Every tab is shown, and stored, once.
    for (int tab = 2; tab <= TabsOf(editor).count(); ++tab) {
      KeyToTab(editor, tab);
    }
    Click(editor, "btnOk");
  };
  Add("RT520A", save);
  Add("RT520C", save);
  Add("RT730A", save);
  user_.At<frmCalibrationMain>([](frmCalibrationMain& screen) { Click(screen, "btnReturn"); });
  Run();
  for (const std::string model : {"RT520A", "RT520C", "RT730A"}) {
    std::string bytes = ReadNative(tree_.ProgramFolder() / ("Temp" + model));
    const std::string serial =
        std::string("1000") + (model == "RT730A" ? 'R' : model.back()) + "00000\r\n";
    const std::size_t place = bytes.find("#SER_NO   : " + serial);
    ASSERT_NE(place, std::string::npos);
    bytes.replace(place, 12 + serial.size(), "#SER_NO   : 00001\r\n");
    EXPECT_EQ(tree_.Read(R"(c:\calfactors\)" + model + R"(\SN00001)"), bytes);
  }
}

}  // namespace
}  // namespace tarvell
