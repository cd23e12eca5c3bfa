// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <QScrollBar>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screens/caldata/TabEditorFixture.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

std::string Clipboard() {
  return QApplication::clipboard()->text().toStdString();
}

/// What Ctrl+C puts on the clipboard.
std::string Copied() {
  QApplication::clipboard()->setText("before");
  Press(Qt::Key_C, Qt::ControlModifier);
  return Clipboard();
}

/// Selecting cells of a sensor's table and copying them.
class GridCopying : public SensorStage {
 protected:
  GridCopying() {
    file_.rows = {{"0.10", "98.80"}, {"50.00", "100.0"}, {"100.00", "98.84"}, {"1000.00", "97.0"}};
  }

  void Show(const Act& act) { ShowFile(file_, act); }

  SensorFile file_;
};

TEST_F(GridCopying, TakesTheCurrentCellAsItIsShown) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    EXPECT_EQ(Copied(), "98.80");
    Press(Qt::Key_Down);
    EXPECT_EQ(Copied(), "100.0");
    ClickCell(GridOf(editor), 4, 0);
    EXPECT_EQ(Copied(), "1000.00");
  });
}

TEST_F(GridCopying, TakesARectangleOfShiftAndArrowsAsLinesAndTabs) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 0);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "50.00\n100.00");
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "50.00\t100.0\n100.00\t98.84");
    Press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "50.00\t100.0");
    // Without Shift it is one cell again.
    Press(Qt::Key_Up);
    EXPECT_EQ(Copied(), "98.80");
  });
}

TEST_F(GridCopying, TakesARectangleThatWasSelectedUpwardsInTheOrderOfTheTable) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 4, 1);
    Press(Qt::Key_Up, Qt::ShiftModifier);
    Press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "100.00\t98.84\n1000.00\t97.0");
  });
}

TEST_F(GridCopying, TakesARectangleThatTheMouseWasDrawnOver) {
  Show([](frmCalDataInput& editor) {
    auto& grid = GridOf(editor);
    const auto centre = [&](int row, int column) {
      return grid.visualRect(grid.model()->index(row - 1, column)).center();
    };
    ClickCell(grid, 4, 1);
    QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, centre(1, 0));
    QTest::mouseMove(grid.viewport(), centre(2, 0));
    QTest::mouseMove(grid.viewport(), centre(3, 1));
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, centre(3, 1));
    EXPECT_EQ(Copied(), "0.10\t98.80\n50.00\t100.0\n100.00\t98.84");
  });
}

TEST_F(GridCopying, TakesARectangleThatShiftAndAClickEnded) {
  Show([](frmCalDataInput& editor) {
    auto& grid = GridOf(editor);
    ClickCell(grid, 2, 1);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ShiftModifier,
                      grid.visualRect(grid.model()->index(3, 1)).center());
    EXPECT_EQ(Copied(), "100.0\n98.84\n97.0");
  });
}

TEST_F(GridCopying, TakesTheWholeTableAfterCtrlA) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 1);
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Copied(), "0.10\t98.80\n50.00\t100.0\n100.00\t98.84\n1000.00\t97.0");
    EXPECT_EQ(GridOf(editor).CurrentRow(), 2);
  });
}

TEST_F(GridCopying, SelectsFromTheCellThatTheCellEditorWentTo) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Type("7");
    Press(Qt::Key_Down);
    EXPECT_EQ(Copied(), "100.0");
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "100.0\n98.84");
  });
}

TEST_F(GridCopying, SelectsFromTheRowOfANewPoint) {
  Show([this](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    AddPoint(editor, "200", "MHz");
    EXPECT_EQ(Copied(), "100.0");
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "100.0\n97.0");
  });
}

TEST_F(GridCopying, SelectsFromWhereTheMouseWentAfterTheCellEditor) {
  Show([](frmCalDataInput& editor) {
    auto& grid = GridOf(editor);
    ClickCell(grid, 1, 1);
    Type("7");
    Press(Qt::Key_Down);
    // Shift and a click end a rectangle that begins there; a click alone begins another.
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ShiftModifier,
                      grid.visualRect(grid.model()->index(3, 0)).center());
    EXPECT_EQ(Copied(), "50.00\t100.0\n100.00\t98.84\n1000.00\t97.0");
    ClickCell(grid, 3, 0);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "100.00\n1000.00");
    Press(Qt::Key_Up);
    Press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "50.00\n100.00");
  });
}

TEST_F(GridCopying, ScrollsWithTheSelection) {
  file_.rows = ManyRows(51);
  Show([](frmCalDataInput& editor) {
    auto& grid = GridOf(editor);
    ClickCell(grid, 1, 0);
    for (int row = 2; row <= 51; ++row) {
      Press(Qt::Key_Down, Qt::ShiftModifier);
    }
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(grid.verticalScrollBar()->value(), grid.verticalScrollBar()->maximum());
    EXPECT_GT(grid.verticalScrollBar()->value(), 0);
    std::string expected;
    for (int row = 1; row <= 51; ++row) {
      expected += (row == 1 ? "" : "\n") + std::to_string(row) + ".00\t100.0";
    }
    EXPECT_EQ(Copied(), expected);
  });
}

TEST_F(GridCopying, ARectangleLeavesTypingAndDoubleClicksToTheCurrentCell) {
  Show([](frmCalDataInput& editor) {
    auto& grid = GridOf(editor);
    ClickCell(grid, 1, 1);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Type("7");
    Press(Qt::Key_Return);
    EXPECT_EQ(ColumnOf(grid, 1), (std::vector<std::string>{"98.80", "7.0", "98.84", "97.0"}));
    Press(Qt::Key_Up, Qt::ShiftModifier);
    DoubleClickCell(grid, 2, 1);
    EXPECT_EQ(TextOf(editor, "txtCell"), "7");
    Press(Qt::Key_Escape);
    EXPECT_EQ(Copied(), "7.0") << "a double click selects its cell alone";
  });
}

TEST_F(GridCopying, OfAnEmptyTableLeavesTheClipboard) {
  file_.rows = {};
  Show([](frmCalDataInput& editor) {
    GridOf(editor).setFocus();
    EXPECT_EQ(Copied(), "before");
  });
}

TEST_F(GridCopying, InAnOpenBoxTakesTheTextOfTheBox) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Type("12345");
    Press(Qt::Key_Home);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "12");
    Press(Qt::Key_V, Qt::ControlModifier);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(TextOf(editor, "txtCell"), "1212345");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "98.80");
  });
}

class TabGridCopying : public TabEditorFixture {
 protected:
  TabGridCopying() { WriteTemplates(); }
};

TEST_F(TabGridCopying, TakesTheTextsOfACapacitorSetAndAResistorSetWithTheirUnits) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "1.000012pF\t12 ppm\n1.00002pF\t0.005 %");
  });
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    KeyToTab(editor, 2);
    ClickCell(GridOf(editor), 1, 0);
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Copied(), "RT734A\tLs/5 nH\t0.5 nH\t\t\nRT735A\tLs/5.2 nH\t0.6 nH\t\t");
  });
}

TEST_F(TabGridCopying, WhileTheListOfUnitsHasTheKeyboardTakesNothingFromTheTable) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ClickCell(GridOf(editor), 1, 2);
    Type("5");
    Press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), &UnitBoxOf(editor));
    EXPECT_EQ(Copied(), "before");
    QApplication::clipboard()->setText("9");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(CellBoxOf(editor).isVisible());
    EXPECT_EQ(TextOf(editor, "txtCell"), "5");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "12 ppm");
  });
}

}  // namespace
}  // namespace tarvell
