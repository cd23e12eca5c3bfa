// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDir>
#include <QMenu>
#include <gtest/gtest.h>

#include "screens/caldata/CalGrid.h"
#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/main/frmMain.h"
#include "screens/widgets/frmInput.h"
#include "support/DesktopTestPlatform.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// An operator's whole way through the real screens and message boxes, from the start of the
/// program to the file on the disk.
class PowerSensorWorkflow : public testing::Test {
 protected:
  PowerSensorWorkflow() : platform_(tree_.ProgramFolder()) {}

  void WriteTemplate(const std::string& model, const std::string& body) const {
    WriteNative(tree_.ProgramFolder() / ("Temp" + model), "#MODEL_NO : " + model +
                                                              "\r\n"
                                                              "#SER_NO   : \r\n"
                                                              "#CAL_DATE : 20000131\r\n"
                                                              "#CAL_NO   : \r\n"
                                                              "#DUE_DATE : 20010101\r\n"
                                                              "#COMMENT  : \r\n"
                                                              "!\r\n" +
                                                              body + "!End\r\n");
  }

  /// Starts the program, chooses the calibration data and answers both questions for folders.
  void OpenCalibrationMenu(frmMain& mainMenu) {
    Click(mainMenu, "Option2");
    user_.AnswerBox(
        "Input station folder does not exist.\r\n"
        "If you want to create new folder, then press Ok button.",
        QMessageBox::Information, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel,
        QMessageBox::Ok);
    user_.AnswerBox(
        "Select calibration data folder is not exist.\r\n"
        "If you want to create new folder, then press Ok button.",
        QMessageBox::Information, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel,
        QMessageBox::Ok);
  }

  /// Adds a point through the input dialog, whose unit is preset to `preset`.
  void AddPoint(frmCalDataInput& editor, const QString& number, const QString& preset,
                const QString& unit) {
    user_.At<frmInput>([=](frmInput& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Input calibration point...");
      EXPECT_EQ(Find<QLabel>(dialog, "lblCaption").text(), "Input calibration Point");
      EXPECT_EQ(Find<QComboBox>(dialog, "cmbUnit").currentText(), preset);
      Type(number);
      Choose(dialog, "cmbUnit", unit);
      Press(Qt::Key_Return);
    });
    Click(editor, "btnAddPoint");
  }

  /// Adds a point that the table has already, which is told.
  void AddTakenPoint(frmCalDataInput& editor, const QString& number, const QString& unit) {
    user_.At<frmInput>([=](frmInput& dialog) {
      Type(number);
      Choose(dialog, "cmbUnit", unit);
      Click(dialog, "btnOk");
    });
    user_.AnswerBox("Cannot add to same calibration point", QMessageBox::Information,
                    QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok);
    Click(editor, "btnAddPoint");
  }

  TestTree tree_;
  DesktopTestPlatform platform_;
  User user_;
};

std::string DataLine(const std::string& frequency, const std::string& factor, bool reference) {
  return "*" + frequency + ":    " + factor + "     :" + (reference ? " (Ref.)" : "    0.0") +
         "    :     0.0    :    0.0    :     0.0  ";
}

const std::vector<std::string> kMHzCaptions = {
    "!", "!", "!        :              : Reflection Coefficient",
    "!FEQ(MHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)"};

std::string FileOf(std::vector<std::string> lines, const std::vector<std::string>& captions,
                   const std::vector<std::string>& rows) {
  lines.insert(lines.end(), captions.begin(), captions.end());
  lines.insert(lines.end(), rows.begin(), rows.end());
  lines.emplace_back("!End");
  return Lines(lines);
}

TEST_F(PowerSensorWorkflow, ASensorInMHzIsAddedCorrectedAndDeleted) {
  WriteTemplate("PX12A",
                "*    0.10:    100.0     :    0.0    :     0.0    :    0.0    :     0.0  \r\n"
                "*   50.00:    100.0     : (Ref.)    :     0.0    :    0.0    :     0.0  \r\n"
                "* 1000.00:    100.0     :    0.0    :     0.0    :    0.0    :     0.0  \r\n");
  const std::string path = R"(c:\calfactors\PX12A\SN12345)";
  frmMain mainMenu;
  mainMenu.Form_Load();
  ASSERT_TRUE(mainMenu.isVisible());
  EXPECT_EQ(mainMenu.windowTitle(), "Morrand Tarvell - A.02.61");
  EXPECT_EQ(TextOf(mainMenu, "txtCalibrationDir"), R"(c:\calfactors)");
  EXPECT_EQ(TextOf(mainMenu, "txtStationDir"), R"(c:\stations)");
  OpenCalibrationMenu(mainMenu);

  user_.At<frmCalibrationMain>([](frmCalibrationMain& screen) {
    EXPECT_EQ(screen.windowTitle(), "Calibration Data Menu - Morrand Tarvell");
    EXPECT_TRUE(EntriesOf(screen, "LstInstrment").empty());
    Click(screen, "btnAdd");
  });
  user_.At<QMenu>([](QMenu& add) { ClickModel(add, "PX12A"); });
  user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - )");
    EXPECT_EQ(TextOf(editor, "txtModel"), "PX12A");
    EXPECT_EQ(CellOf(grid, 0, 0), "Frequency  [MHz]");
    EXPECT_EQ(CellOf(grid, 0, 1), "Calibration factor[%]");
    EXPECT_EQ(ColumnOf(grid, 0), (std::vector<std::string>{"0.10", "50.00", "1000.00"}));

    Fill(editor, "txtSerial", "3318A12345");
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - 3318A12345)");
    Fill(editor, "txtCalNo", "C-0042");
    Fill(editor, "txtCalYear", "2001");
    Choose(editor, "cmbCalMonth", "FEB");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "28") << "the template's 31 is no day of February";
    Choose(editor, "cmbCalMonth", "MAR");
    Fill(editor, "txtCalDay", "5");
    Fill(editor, "txtDueYear", "2002");
    Choose(editor, "cmbDueMonth", "MAR");
    Fill(editor, "txtDueDay", "5");
    Fill(editor, "txtComment", "factory");

    // Typing over a factor; the Up and Down keys store it and go on.
    ClickCell(grid, 1, 1);
    Type("98.84");
    Press(Qt::Key_Down);
    EXPECT_EQ(CellOf(grid, 1, 1), "98.8");
    EXPECT_EQ(grid.CurrentRow(), 2);
    // A double click edits the number itself.
    DoubleClickCell(grid, 3, 1);
    EXPECT_EQ(TextOf(editor, "txtCell"), "100");
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Backspace);
    Type("7");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 3, 1), "7.0");

    AddPoint(editor, "100", "MHz", "MHz");
    AddPoint(editor, "2", "MHz", "GHz");
    AddPoint(editor, "300", "MHz", "KHz");
    AddPoint(editor, "12000", "MHz", "MHz");
    EXPECT_EQ(ColumnOf(grid, 0), (std::vector<std::string>{"0.10", "0.30", "50.00", "100.00",
                                                           "1000.00", "2000.00", "12000.0"}));
    AddTakenPoint(editor, "0.05", "GHz");
    EXPECT_EQ(grid.Data().RowCount(), 8);

    ClickCell(grid, 6, 1);
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
      user_.AnswerBox("Are you want delete? (2000MHz)", QMessageBox::Warning,
                      QMessageBox::Yes | QMessageBox::No, QMessageBox::No, answer);
      Click(editor, "btnDeletePoint");
      EXPECT_EQ(grid.Data().RowCount(), answer == QMessageBox::No ? 8 : 7);
    }
    Click(editor, "btnOk");
  });

  const std::vector<std::string> header = {"#MODEL_NO : PX12A",    "#SER_NO   : 3318A12345",
                                           "#CAL_DATE : 20010305", "#CAL_NO   : C-0042",
                                           "#DUE_DATE : 20020305", "#COMMENT  : factory"};
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    EXPECT_EQ(tree_.Read(path),
              FileOf(header, kMHzCaptions,
                     {DataLine("    0.10", " 98.8", false), DataLine("    0.30", "100.0", false),
                      DataLine("   50.00", "100.0", true), DataLine("  100.00", "100.0", false),
                      DataLine(" 1000.00", "  7.0", false), DataLine(" 12000.0", "100.0", false)}));
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), (std::vector<std::string>{"PX12A"}));
    EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), (std::vector<std::string>{"3318A12345"}));
    ClickEntry(screen, "lstSerialNumber", "3318A12345");
    Click(screen, "btnEdit");
  });
  user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - 3318A12345)");
    EXPECT_TRUE(Find<QLineEdit>(editor, "txtSerial").isReadOnly());
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-0042");
    EXPECT_EQ(TextOf(editor, "txtCalYear"), "2001");
    EXPECT_EQ(ComboText(editor, "cmbCalMonth"), "MAR");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "5");
    EXPECT_EQ(TextOf(editor, "txtComment"), "factory");
    ClickCell(grid, 5, 1);
    Type("97.26");
    Press(Qt::Key_Return);
    Press(Qt::Key_Tab);  // Add Calibration Point
    Press(Qt::Key_Tab);  // Delete Calibration Point
    Press(Qt::Key_Tab);  // OK
    Press(Qt::Key_Space);
  });
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    EXPECT_EQ(tree_.Read(path),
              FileOf(header, kMHzCaptions,
                     {DataLine("    0.10", " 98.8", false), DataLine("    0.30", "100.0", false),
                      DataLine("   50.00", "100.0", true), DataLine("  100.00", "100.0", false),
                      DataLine(" 1000.00", " 97.3", false), DataLine(" 12000.0", "100.0", false)}));
    EXPECT_EQ(tree_.Names(R"(c:\calfactors\PX12A)"), (std::vector<std::string>{"SN12345"}));
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
      ClickEntry(screen, "lstSerialNumber", "3318A12345");
      user_.AnswerBox("Are you sure you want to delete PX12A(3318A12345)?", QMessageBox::Warning,
                      QMessageBox::Yes | QMessageBox::No, QMessageBox::No, answer);
      Click(screen, "btnDelete");
      EXPECT_EQ(tree_.Exists(path), answer == QMessageBox::No);
    }
    EXPECT_TRUE(EntriesOf(screen, "LstInstrment").empty());
    EXPECT_TRUE(EntriesOf(screen, "lstSerialNumber").empty());
    Click(screen, "btnReturn");
  });
  Click(mainMenu, "btnStart");

  EXPECT_TRUE(QFile::exists(QDir::homePath() + "/data/Trash/files/SN12345"));
  Click(mainMenu, "btnExit");
  EXPECT_FALSE(mainMenu.isVisible());
  EXPECT_EQ(
      tree_.Read(R"(c:\windows\tarvell.ini)"),
      Lines({";", ";  Tar vell    Ini file", ";", "[Tarvell]", "SysRevision=A.02.61", "",
             "[Calfactors]", R"(Dir=c:\calfactors)", "", "[Stations]", R"(Dir=c:\stations)"}));
}

TEST_F(PowerSensorWorkflow, ASensorInGHzIsAddedAndCorrected) {
  WriteTemplate("PX13A",
                "*  0.0500:    100.0     : (Ref.)    :     0.0    :    0.0    :     0.0  \r\n"
                "* 26.5000:    100.0     :    0.0    :     0.0    :    0.0    :     0.0  \r\n");
  const std::vector<std::string> captions = {
      "!", "!", "!        :              : Reflection Coefficient",
      "!FEQ(GHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)"};
  const std::vector<std::string> header = {
      "#MODEL_NO : PX13A", "#SER_NO   : 12",       "#CAL_DATE : 20000131",
      "#CAL_NO   : ",      "#DUE_DATE : 20010101", "#COMMENT  : "};
  const std::string path = R"(c:\calfactors\PX13A\SN12)";
  frmMain mainMenu;
  mainMenu.Form_Load(0);
  OpenCalibrationMenu(mainMenu);
  user_.At<frmCalibrationMain>([](frmCalibrationMain& screen) { Click(screen, "btnAdd"); });
  user_.At<QMenu>([](QMenu& add) { ClickModel(add, "PX13A"); });
  user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    EXPECT_EQ(CellOf(grid, 0, 0), "Frequency  [GHz]");
    Fill(editor, "txtSerial", "12");
    AddPoint(editor, "0.5", "GHz", "MHz");
    AddPoint(editor, "2", "GHz", "GHz");
    AddPoint(editor, "300", "GHz", "KHz");
    EXPECT_EQ(ColumnOf(grid, 0),
              (std::vector<std::string>{"0.0003", "0.0005", "0.0500", "2.0000", "26.5000"}));
    AddTakenPoint(editor, "50", "MHz");
    EXPECT_EQ(grid.Data().RowCount(), 6);
    ClickCell(grid, 1, 1);
    user_.AnswerBox("Are you want delete? (0.0003GHz)", QMessageBox::Warning,
                    QMessageBox::Yes | QMessageBox::No, QMessageBox::No, QMessageBox::Yes);
    Click(editor, "btnDeletePoint");
    ClickCell(grid, 3, 1);
    Type("96.05");
    Press(Qt::Key_Return);
    Click(editor, "btnOk");
  });
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    EXPECT_EQ(tree_.Read(path),
              FileOf(header, captions,
                     {DataLine("  0.0005", "100.0", false), DataLine("  0.0500", "100.0", true),
                      DataLine("  2.0000", " 96.1", false), DataLine(" 26.5000", "100.0", false)}));
    EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), (std::vector<std::string>{"12"}));
    ClickEntry(screen, "lstSerialNumber", "12");
    Click(screen, "btnEdit");
  });
  user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
    ClickCell(Find<CalGrid>(editor, "Grid"), 4, 1);
    Type("95");
    Click(editor, "btnOk");  // with the edit still open
  });
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    EXPECT_EQ(tree_.Read(path),
              FileOf(header, captions,
                     {DataLine("  0.0005", "100.0", false), DataLine("  0.0500", "100.0", true),
                      DataLine("  2.0000", " 96.1", false), DataLine(" 26.5000", " 95.0", false)}));
    Click(screen, "btnReturn");
  });
  Click(mainMenu, "btnStart");
}

}  // namespace
}  // namespace tarvell
