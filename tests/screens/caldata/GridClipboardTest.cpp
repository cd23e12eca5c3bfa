// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screens/caldata/EitherEditor.h"
#include "support/SensorStage.h"

/// Selecting, copying and pasting cells.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// The clipboard after Ctrl+C, "before" when nothing was copied.
std::string Copied() {
  QApplication::clipboard()->setText("before");
  Press(Qt::Key_C, Qt::ControlModifier);
  return QApplication::clipboard()->text().toStdString();
}

void Paste(const QString& text) {
  QApplication::clipboard()->setText(text);
  Press(Qt::Key_V, Qt::ControlModifier);
}

class SensorClipboard : public SensorStage {
 protected:
  SensorClipboard() {
    file_.rows = {{"0.10", "98.80"}, {"50.00", "100.0"}, {"100.00", "98.84"}, {"1000.00", "97.0"}};
  }

  void Show(const Act& act) { ShowFile(file_, act); }

  static QPoint Centre(CalGrid& grid, int row, int column) {
    return grid.visualRect(grid.model()->index(row - 1, column)).center();
  }

  static constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";
  /// Whole rows are copied with them.
  const std::string kCaptions = "Frequency  [MHz]\tCalibration factor[%]\n";
  SensorFile file_;
};

// ---- Copying.

TEST_F(SensorClipboard, CopiesWhatKeysSelect) {
  Show([this](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 0);
    EXPECT_EQ(Copied(), "50.00");
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), kCaptions + "50.00\t100.0\n100.00\t98.84");
    // Without Shift it is one cell again.
    Press(Qt::Key_Up);
    EXPECT_EQ(Copied(), "100.0");
    // Upwards the order is still that of the table.
    ClickCell(GridOf(editor), 4, 1);
    Press(Qt::Key_Up, Qt::ShiftModifier);
    Press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), kCaptions + "100.00\t98.84\n1000.00\t97.0");
    // In an open box it is the text of the box.
    ClickCell(GridOf(editor), 1, 1);
    Type("12345");
    Press(Qt::Key_Home);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "1");
    Press(Qt::Key_V, Qt::ControlModifier);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(TextOf(editor, "txtCell"), "112345");
  });
}

TEST_F(SensorClipboard, CopiesWhatTheMouseSelectsAndFromTheCellThatTheProgramMadeCurrent) {
  Show([this](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 4, 1);
    QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, Centre(grid, 1, 0));
    QTest::mouseMove(grid.viewport(), Centre(grid, 2, 0));
    QTest::mouseMove(grid.viewport(), Centre(grid, 3, 1));
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, Centre(grid, 3, 1));
    EXPECT_EQ(Copied(), kCaptions + "0.10\t98.80\n50.00\t100.0\n100.00\t98.84");
    // Typing is for the current cell only.
    Type("7");
    Press(Qt::Key_Down);
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"98.80", "100.0", "7.0", "97.0"}));
    Press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "7.0\n97.0");
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ShiftModifier, Centre(grid, 3, 0));
    EXPECT_EQ(Copied(), kCaptions + "100.00\t7.0\n1000.00\t97.0");
    // A click begins another selection.
    ClickCell(grid, 3, 0);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ShiftModifier, Centre(grid, 4, 0));
    EXPECT_EQ(Copied(), "100.00\n1000.00");
    AddPoint(editor, "200", "MHz");
    EXPECT_EQ(Copied(), "100.0");
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "100.0\n97.0");
  });
}

TEST_F(SensorClipboard, OfAnEmptyTableIsLeftAsItIs) {
  file_.rows = {};
  Show([this](frmCalDataInput& editor) {
    GridOf(editor).setFocus();
    EXPECT_EQ(Copied(), "before");
    questions_.ExpectError({"no current cell"});
    Paste("1");
    Press(Qt::Key_7);
    Press(Qt::Key_Return);
    ExpectClosed(editor);
  });
}

// ---- Pasting.

TEST_F(SensorClipboard, IsPastedFromTheFirstSelectedCellOnOrNotAtAll) {
  Show([this](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 2, 1);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Paste("97.26\r\n1E2\r\n");
    // What was stored is selected.
    ExpectBackIn(editor, grid, 2);
    EXPECT_EQ(Copied(), "97.3\n100.0");
    ClickCell(grid, 3, 1);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"98.80", "97.3", "97.3", "100.0"}));
    questions_.ExpectError({"Nothing was pasted", "Line 2", "\"12,5\" is not a number"});
    Paste("1\n12,5");
    ExpectBackIn(editor, grid, 3);
    ClickCell(grid, 1, 0);
    questions_.ExpectError({"\"Frequency  [MHz]\" cannot be edited"});
    Paste("1");
    Click(editor, "btnOk");
  });
  file_.rows = {{"0.10", "98.80"}, {"50.00", "97.3"}, {"100.00", "97.3"}, {"1000.00", "100.0"}};
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

// ---- Sets.

class SetClipboard : public TabEditorFixture {
 protected:
  SetClipboard() { WriteTemplates(); }
};

TEST_F(SetClipboard, IsPastedInTheFormatAndUnitOfEachCell) {
  EditNew("RT520A", [this](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 1, 1);
    Paste("1.0000126\t12.6\r\n1.000025\t0.0125\r\n1.5\t61.00049\r\n");
    EXPECT_EQ(Copied(), "1.000013pF\t13 ppm\n1.00003pF\t0.013 %\n1.50000pF\t61.000 ppm");
    // The value is compared with the unit of the cell.
    ClickCell(grid, 1, 2);
    questions_.ExpectError({"Nothing was pasted", "Line 2", "\"14 ppm\" is not a number (in %)"});
    Paste("13 ppm\n14 ppm");
    questions_.ExpectError({"Line 2", "too large"});
    Paste("1\n1E305");  // too large in per cent only
    EXPECT_EQ(ColumnOf(grid, 2), (Texts{"13 ppm", "0.013 %", "61.000 ppm"}));
    // A value that the file keeps differently is marked, as after typing.
    ClickCell(grid, 3, 2);
    Paste("12.3456");
    EXPECT_EQ(NoticesOf(editor), Texts{"100000, Unc. of Capacitance[pF]: The cell shows \"12.346 "
                                       "ppm\", and will be read back as \"12.000 ppm\"."});
    // In the list of units nothing is copied or pasted.
    ClickCell(grid, 1, 2);
    Type("5");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Copied(), "before");
    Paste("9");
    EXPECT_EQ(TextOf(editor, "txtCell"), "5");
    EXPECT_EQ(CellOf(grid, 1, 2), "13 ppm");
  });
}

TEST_F(SetClipboard, TakesTheUnitWithTheNumberAndKeepsToTheColumnsOfThePage) {
  EditNew("RT730A", [this](frmCalDataTabInput& editor) {
    KeyToTab(editor, 2);
    ClickCell(GridOf(editor), 2, 1);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "Ls/5.2 nH\t0.6 nH");
    ClickCell(GridOf(editor), 1, 1);
    Press(Qt::Key_V, Qt::ControlModifier);
    ClickCell(GridOf(editor), 1, 2);
    questions_.ExpectError({"Line 1", "no value in this place"});
    Paste("0.7\t1");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT734A", "Ls/5.2 nH", "0.6 nH", "", ""}));
  });
}

}  // namespace
}  // namespace tarvell
