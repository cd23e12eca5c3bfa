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

  static constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";
  SensorFile file_;
};

// ---- Copying.

TEST_F(SensorClipboard, CopiesWhatKeysSelect) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 0);
    EXPECT_EQ(Copied(), "50.00");
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "50.00\n100.00");
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "50.00\t100.0\n100.00\t98.84");
    // Without Shift it is one cell again.
    Press(Qt::Key_Up);
    EXPECT_EQ(Copied(), "100.0");
    // Upwards the order is still that of the table.
    ClickCell(GridOf(editor), 4, 1);
    Press(Qt::Key_Up, Qt::ShiftModifier);
    Press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "100.00\t98.84\n1000.00\t97.0");
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Copied(), "0.10\t98.80\n50.00\t100.0\n100.00\t98.84\n1000.00\t97.0");
  });
}

TEST_F(SensorClipboard, CopiesWhatTheMouseSelects) {
  Show([](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    const auto centre = [&](int row, int column) {
      return grid.visualRect(grid.model()->index(row - 1, column)).center();
    };
    ClickCell(grid, 4, 1);
    QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, centre(1, 0));
    QTest::mouseMove(grid.viewport(), centre(2, 0));
    QTest::mouseMove(grid.viewport(), centre(3, 1));
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, centre(3, 1));
    EXPECT_EQ(Copied(), "0.10\t98.80\n50.00\t100.0\n100.00\t98.84");
    // Typing and a double click are for the current cell only.
    Type("7");
    Press(Qt::Key_Return);
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"98.80", "100.0", "7.0", "97.0"}));
    Press(Qt::Key_Up, Qt::ShiftModifier);
    DoubleClickCell(grid, 2, 1);
    Press(Qt::Key_Escape);
    EXPECT_EQ(Copied(), "100.0");
  });
}

TEST_F(SensorClipboard, SelectsFromTheCellThatTheProgramMadeCurrent) {
  Show([this](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    const auto shiftClick = [&](int row, int column) {
      QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ShiftModifier,
                        grid.visualRect(grid.model()->index(row - 1, column)).center());
    };
    ClickCell(grid, 1, 1);
    Type("7");
    Press(Qt::Key_Down);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "100.0\n98.84");
    shiftClick(4, 0);
    EXPECT_EQ(Copied(), "50.00\t100.0\n100.00\t98.84\n1000.00\t97.0");
    // A click begins another selection.
    ClickCell(grid, 3, 0);
    shiftClick(4, 0);
    EXPECT_EQ(Copied(), "100.00\n1000.00");
    AddPoint(editor, "200", "MHz");
    EXPECT_EQ(Copied(), "100.0");
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "100.0\n97.0");
  });
}

TEST_F(SensorClipboard, InAnOpenBoxHoldsTheTextOfTheBox) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Type("12345");
    Press(Qt::Key_Home);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "1");
    Press(Qt::Key_V, Qt::ControlModifier);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(TextOf(editor, "txtCell"), "112345");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "98.80");
  });
}

TEST_F(SensorClipboard, OfAnEmptyTableIsLeftAsItIs) {
  file_.rows = {};
  Show([this](frmCalDataInput& editor) {
    GridOf(editor).setFocus();
    EXPECT_EQ(Copied(), "before");
    questions_.ExpectError({"no current cell"});
    Paste("1");
    for (const Qt::Key key : {Qt::Key_7, Qt::Key_Return}) {
      Press(key);
      ExpectClosed(editor);
    }
  });
}

// ---- Pasting.

TEST_F(SensorClipboard, IsPastedFromTheFirstSelectedCellOn) {
  Show([](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 2, 1);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Paste("97.26\r\n1E2\r\n");
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"98.80", "97.3", "100.0", "97.0"}));
    // What was stored is selected.
    ExpectBackIn(editor, grid, 2);
    EXPECT_EQ(Copied(), "97.3\n100.0");
    ClickCell(grid, 3, 1);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"98.80", "97.3", "97.3", "100.0"}));
    Click(editor, "btnOk");
  });
  file_.rows = {{"0.10", "98.80"}, {"50.00", "97.3"}, {"100.00", "97.3"}, {"1000.00", "100.0"}};
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(SensorClipboard, ChangesNothingWhenOneValueIsRefused) {
  const struct {
    QString text;
    int row;
    int column;
    Texts parts;
  } refused[] = {{"1\n2\n12,5\n", 1, 1, {"Nothing was pasted", "Line 3", "\"12,5\" is no number"}},
                 {"1\n9E999", 1, 1, {"Line 2", "9E999", "too large"}},
                 {"1\n2\n3", 3, 1, {"3 lines", "2 rows"}},
                 {"1", 1, 0, {"\"Frequency  [MHz]\" cannot be edited"}},
                 {"", 1, 1, {"no text to paste"}}};
  Show([&](frmCalDataInput& editor) {
    for (const auto& [text, row, column, parts] : refused) {
      SCOPED_TRACE(text.toStdString());
      ClickCell(GridOf(editor), row, column);
      questions_.ExpectError(parts);
      Paste(text);
      ExpectBackIn(editor, GridOf(editor), row, column);
    }
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

// ---- Sets.

class SetClipboard : public TabEditorFixture {
 protected:
  SetClipboard() { WriteTemplates(); }
};

TEST_F(SetClipboard, IsPastedInTheFormatAndUnitOfEachCell) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00001");
    ClickCell(GridOf(editor), 1, 1);
    Paste("1.0000126\t12.6\r\n1.000025\t0.0125\r\n1.5\t61.00049\r\n");
    EXPECT_EQ(Copied(), "1.000013pF\t13 ppm\n1.00003pF\t0.013 %\n1.50000pF\t61.000 ppm");
    Click(editor, "btnOk");
  });
  std::vector<Member> members = SetAMembers();
  members[0].rows = {{"1000", "1.000013pF", "0.0013", "0.00001", "0.00002"},
                     {"10000", "1.00003pF", "0.013", "0.00003", "0.00004"},
                     {"100000", "1.50000pF", "0.0061", "0.00005", "0.00006"}};
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520A\SN00001)"),
            CapacitorFile({"RT520A", "00001"}, members));
}

TEST_F(SetClipboard, TakesTheUnitWithTheNumberAndKeepsToTheColumnsOfThePage) {
  EditNew("RT730A", [this](frmCalDataTabInput& editor) {
    KeyToTab(editor, 2);
    ClickCell(GridOf(editor), 2, 1);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "Ls/5.2 nH\t0.6 nH");
    ClickCell(GridOf(editor), 1, 1);
    Press(Qt::Key_V, Qt::ControlModifier);
    const Texts pasted = {"RT734A", "Ls/5.2 nH", "0.6 nH", "", ""};
    EXPECT_EQ(RowOf(editor, 1), pasted);
    ClickCell(GridOf(editor), 1, 2);
    questions_.ExpectError({"Line 1", "no value in this place"});
    Paste("0.7\t1");
    EXPECT_EQ(RowOf(editor, 1), pasted);
  });
}

TEST_F(SetClipboard, IsComparedWithTheUnitOfTheCell) {
  EditNew("RT520A", [this](frmCalDataTabInput& editor) {
    ClickCell(GridOf(editor), 1, 2);
    questions_.ExpectError({"Nothing was pasted", "Line 2", "\"14 ppm\" is no number (in %)"});
    Paste("13 ppm\n14 ppm");
    questions_.ExpectError({"Line 2", "too large"});
    Paste("1\n1E305");  // too large in per cent only
    EXPECT_EQ(ColumnOf(GridOf(editor), 2), (Texts{"12 ppm", "0.005 %", "60.000 ppm"}));
    // A value that the file keeps differently is marked, as after typing.
    ClickCell(GridOf(editor), 3, 2);
    Paste("12.3456");
    EXPECT_EQ(NoticesOf(editor), Texts{"100000, Unc. of Capacitance[pF]: The cell shows \"12.346 "
                                       "ppm\", and the file will give back \"12.000 ppm\"."});
  });
}

TEST_F(SetClipboard, IsNeitherCopiedNorPastedInTheListOfUnits) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ClickCell(GridOf(editor), 1, 2);
    Type("5");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Copied(), "before");
    Paste("9");
    EXPECT_EQ(TextOf(editor, "txtCell"), "5");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "12 ppm");
  });
}

}  // namespace
}  // namespace tarvell
