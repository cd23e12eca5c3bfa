// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screens/caldata/TabEditorFixture.h"
#include "support/SensorStage.h"

/// Files that did not come from this program, opened and put right with keys and mouse.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

// ---- Numbers that are too large to be calculated with.

class LargeNumbers : public SensorStage {
 protected:
  LargeNumbers() {
    file_.rows = {{"10.00", "98.0"}, {"50.00", "1E999"}, {"1E999", "97.0"}};
    file_.reference = "50.00";
  }

  SensorFile file_;
};

TEST_F(LargeNumbers, AreTypedOverAndDeletedWithTheirRows) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 1);
    Type("97.5");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 2, 1), "97.5");
    AddPoint(editor, "60", "MHz");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0),
              (std::vector<std::string>{"10.00", "50.00", "60.00", "1E999"}));
    ClickCell(GridOf(editor), 4, 1);
    DeletePoint(editor, "1E999MHz", QMessageBox::Yes);
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  file_.rows = {{"10.00", "98.0"}, {"50.00", "97.5"}, {"60.00", "100.0"}};
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(LargeNumbers, AreShownToBeEditedAndPastedOver) {
  file_.rows.pop_back();
  ShowFile(file_, [&](frmCalDataInput& editor) {
    DoubleClickCell(GridOf(editor), 2, 1);
    EXPECT_EQ(TextOf(editor, "txtCell"), "1E999");
    Press(Qt::Key_Escape);
    EXPECT_EQ(CellOf(GridOf(editor), 2, 1), "1E999");
    QApplication::clipboard()->setText("96.25");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(CellOf(GridOf(editor), 2, 1), "96.3");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  file_.rows[1].second = "96.3";
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

class LargeNumbersOfASet : public TabEditorFixture {};

TEST_F(LargeNumbersOfASet, AreTypedOver) {
  WriteTemplates();
  ResistorRows rows = SetRRows();
  rows[1][0] = "*   RT734A :       Ls/1E999 nH :  0.5 nH";
  const std::string path = R"(c:\calfactors\RT730A\SN00042)";
  tree_.Write(path, ResistorFile({"RT730A", "00042"}, rows));
  EditFile("RT730A", path, [](frmCalDataTabInput& editor) {
    KeyToTab(editor, 2);
    DoubleClickCell(GridOf(editor), 1, 1);
    EXPECT_EQ(TextOf(editor, "txtCell"), "1E999");
    Press(Qt::Key_Escape);
    TypeCell(editor, 1, 1, "5.25");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "Ls/5.25 nH");
    Click(editor, "btnOk");
  });
  rows[1][0] = "*   RT734A :       Ls/5.25 nH :  0.5 nH";
  EXPECT_EQ(tree_.Read(path), ResistorFile({"RT730A", "00042"}, rows));
}

// ---- Serial numbers.

class StraySerials : public SensorStage {
 protected:
  StraySerials() { file_.rows = {{"10.00", "98.0"}, {"50.00", "100.0"}}; }

  /// Writes the file with another line in place of that of its serial number.
  void WriteWithLine(const std::string& line) const {
    std::string bytes = file_.Bytes();
    const std::string own = "#SER_NO   : " + file_.serial + "\r\n";
    bytes.replace(bytes.find(own), own.size(), line);
    tree_.Write(kPath, bytes);
  }

  /// Edits the only file of PX12A, which the list shows as `listed`.
  void EditAtMenu(const QString& listed, const std::vector<std::string>& told, const Act& act) {
    AtMenu([=, this](frmCalibrationMain& menu) {
      ClickEntry(menu, "LstInstrment", "PX12A");
      ClickEntry(menu, "lstSerialNumber", listed);
      questions_.ExpectError(told);
      if (act) {
        user_.At<frmCalDataInput>([act](frmCalDataInput& editor) {
          act(editor);
          if (editor.isVisible()) {
            editor.reject();
          }
        });
      }
      Click(menu, "btnEdit");
    });
    RunMenu();
  }

  SensorFile file_;
};

TEST_F(StraySerials, AreTakenFromTheListAndLockedWhereTheyFitTheName) {
  WriteWithLine("#SERIAL   : 3318A12345\r\n");
  EditAtMenu("3318A12345", {"no line \"#SER_NO\"", "\"3318A12345\", was taken"},
             [](frmCalDataInput& editor) {
               EXPECT_EQ(TextOf(editor, "txtSerial"), "3318A12345");
               EXPECT_TRUE(Find<QLineEdit>(editor, "txtSerial").isReadOnly());
               Click(editor, "btnOk");
               EXPECT_FALSE(editor.isVisible());
             });
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(StraySerials, CanBeTypedOverWhereTheyDoNotFitTheName) {
  // The list finds the calibration date in the place of the serial number.
  WriteWithLine("");
  EditAtMenu("20010305", {"\"20010305\", was taken", "Saving writes the file SN10305"},
             [](frmCalDataInput& editor) {
               EXPECT_EQ(TextOf(editor, "txtSerial"), "20010305");
               EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
               EXPECT_EQ(QApplication::focusWidget(), &Find<QLineEdit>(editor, "txtSerial"));
               Press(Qt::Key_A, Qt::ControlModifier);
               Type("3318A12345");
               Click(editor, "btnOk");
               EXPECT_FALSE(editor.isVisible());
             });
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
  EXPECT_EQ(tree_.Names(R"(c:\calfactors\PX12A)"), std::vector<std::string>{"SN12345"});
}

TEST_F(StraySerials, AreAskedForWhereTheListShowsNone) {
  WriteWithLine("#SER_NO   : \r\n");
  gCalFiles[0].FilePath = kPath;
  questions_.ExpectError({"no serial number. Enter"});
  user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
    EXPECT_FALSE(Find<QLineEdit>(editor, "txtSerial").isReadOnly());
    Fill(editor, "txtSerial", "3318A12345");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  editor_.SetupDat(0, "PX12A");
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(StraySerials, OfAFileInTheOldStyleOpenNoEditor) {
  const std::string bytes = Lines({"QZ PX12A", "3318A12345", "05MAR2001", "50.00 100.0"});
  tree_.Write(kPath, bytes);
  EditAtMenu("3318A12345", {"old style", "add new data", kPath}, nullptr);
  EXPECT_EQ(tree_.Read(kPath), bytes);
}

}  // namespace
}  // namespace tarvell
