// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCheckBox>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "screens/caldata/CalGrid.h"
#include "screens/caldata/TabEditorFixture.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// Where a control lies in the grid's window on its cells.
QRect PlaceIn(CalGrid& grid, QWidget& control) {
  return {control.mapTo(grid.viewport(), QPoint(0, 0)), control.size()};
}

QRect CellRect(CalGrid& grid, int row, int column) {
  return grid.visualRect(grid.model()->index(row - 1, column));
}

/// Whether all of a control can be seen.
bool IsWhollySeen(QWidget& control) {
  return control.isVisible() && control.visibleRegion().boundingRect() == control.rect();
}

/// Whether the text of a list stands beside its arrow without being cut.
bool ShowsItsText(const QComboBox& combo) {
  QStyleOptionComboBox option;
  option.initFrom(&combo);
  option.subControls = QStyle::SC_All;
  option.editable = combo.isEditable();
  const QRect field = combo.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                    QStyle::SC_ComboBoxEditField, &combo);
  return field.width() >= combo.fontMetrics().horizontalAdvance(combo.currentText());
}

void ExpectUnits(QWidget& editor, const std::string& chosen) {
  QComboBox& units = UnitBoxOf(editor);
  ASSERT_TRUE(units.isVisible());
  ASSERT_EQ(units.count(), 2);
  EXPECT_EQ(units.itemText(0), "ppm");
  EXPECT_EQ(units.itemText(1), "%");
  EXPECT_EQ(units.currentText().toStdString(), chosen);
  EXPECT_FALSE(units.isEditable());
}

void ExpectClosed(QWidget& editor) {
  EXPECT_FALSE(CellBoxOf(editor).isVisible());
  EXPECT_FALSE(UnitBoxOf(editor).isVisible());
}

/// The edit stands open with this text, and has the keyboard.
void ExpectOpen(QWidget& editor, const std::string& text) {
  EXPECT_TRUE(CellBoxOf(editor).isVisible());
  EXPECT_EQ(TextOf(editor, "txtCell"), text);
  EXPECT_EQ(QApplication::focusWidget(), &CellBoxOf(editor));
}

class TabCellEditor : public TabEditorFixture {
 protected:
  TabCellEditor() { WriteTemplates(); }
};

TEST_F(TabCellEditor, ADigitOpensTheEditorWithThatDigitAlone) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    ExpectClosed(editor);
    Type("2");
    ExpectOpen(editor, "2");
    Type("5");
    ExpectOpen(editor, "25");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "1.000012pF") << "not before it is stored";
  });
}

TEST_F(TabCellEditor, ADoubleClickAndTheBlankOpenItWithTheCellsNumber) {
  // By model, tab and column: the number of row 1 without its unit.
  const std::map<std::string, std::map<int, Texts>> numbers = {
      {"RT520A",
       {{1, {"1.000012", "12", "0.00001", "0.00002"}},
        {2, {"10.00001", "30", "0.00011", "0.00012"}},
        {3, {"100.0001", "0.001", "0.00021", "0.00022"}},
        {4, {"1000.001", "40", "0.00031", "0.00032"}}}},
      {"RT520C",
       {{1, {"10.0001", "200", "0.0001", "0.0002"}},
        {2, {"100.001", "0.015", "0.0003", "0.0004"}},
        {3, {"1.00001", "100", "0.0005", "0.0006"}},
        {4, {"10.0002", "300", "0.0007", "0.0008"}}}},
      {"RT730A",
       {{1, {"1", "1", "0.1"}},
        {2, {"5", "0.5"}},
        {3, {"10", "0.1", "0", "0.01"}},
        {4, {"100", "0.1", "0", "0.1"}},
        {5, {"1", "0.1", "0", "1"}},
        {6, {"10", "0.1", "0", "0.1"}},
        {7, {"100", "0.2", "0", "0.01"}}}}};
  for (const auto& [model, tabs] : numbers) {
    EditNew(model, [&, tabs = tabs](frmCalDataTabInput& editor) {
      for (const auto& [tab, texts] : tabs) {
        KeyToTab(editor, tab);
        const Texts before = RowOf(editor, 1);
        for (int column = 1; column <= static_cast<int>(texts.size()); ++column) {
          SCOPED_TRACE(testing::Message() << model << ", tab " << tab << ", column " << column);
          const std::string& text = texts.at(static_cast<std::size_t>(column) - 1);
          DoubleClickCell(GridOf(editor), 1, column);
          ExpectOpen(editor, text);
          Press(Qt::Key_Escape);
          Press(Qt::Key_Space);
          ExpectOpen(editor, text);
          // Stored untouched, it leaves the cell as it was.
          Press(Qt::Key_Return);
          ExpectClosed(editor);
        }
        EXPECT_EQ(RowOf(editor, 1), before);
      }
    });
  }
}

/// The first two pages of the resistor set have fewer columns than the others.
int LastUsedColumn(const std::string& model, int tab) {
  const bool isNarrow = model == "RT730A" && tab <= 2;
  return isNarrow ? 4 - tab : 4;
}

TEST_F(TabCellEditor, TheUnitIsOfferedWhereItCanBeChosenAndNowhereElse) {
  // By model, tab and column: the unit of row 1.
  const std::map<std::string, std::map<std::pair<int, int>, std::string>> chosen = {
      {"RT520A", {{{1, 2}, "ppm"}, {{2, 2}, "ppm"}, {{3, 2}, "%"}, {{4, 2}, "ppm"}}},
      {"RT520C", {{{1, 2}, "ppm"}, {{2, 2}, "%"}, {{3, 2}, "ppm"}, {{4, 2}, "ppm"}}},
      {"RT730A",
       {{{1, 3}, "%"}, {{3, 2}, "%"}, {{4, 2}, "%"}, {{5, 2}, "%"}, {{6, 2}, "%"}, {{7, 2}, "%"}}}};
  for (const auto& [model, units] : chosen) {
    EditNew(model, [&, units = units](frmCalDataTabInput& editor) {
      for (int tab = 1; tab <= TabsOf(editor).count(); ++tab) {
        KeyToTab(editor, tab);
        for (int column = 1; column <= LastUsedColumn(model, tab); ++column) {
          SCOPED_TRACE(testing::Message() << model << ", tab " << tab << ", column " << column);
          for (const bool typed : {false, true}) {
            if (typed) {
              ClickCell(GridOf(editor), 1, column);
              Type("7");
            } else {
              DoubleClickCell(GridOf(editor), 1, column);
            }
            ASSERT_TRUE(CellBoxOf(editor).isVisible());
            const auto unit = units.find({tab, column});
            if (unit == units.end()) {
              EXPECT_FALSE(UnitBoxOf(editor).isVisible());
            } else {
              ExpectUnits(editor, unit->second);
            }
            EXPECT_EQ(QApplication::focusWidget(), &CellBoxOf(editor));
            Press(Qt::Key_Escape);
            ExpectClosed(editor);
          }
        }
      }
    });
  }
}

TEST_F(TabCellEditor, TheUnitIsTheOneOfTheCellNotOfItsColumn) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    const std::vector<std::string> units = {"ppm", "%", "ppm"};
    for (const int row : {1, 2, 3, 2, 1}) {
      DoubleClickCell(GridOf(editor), row, 2);
      ExpectUnits(editor, units.at(static_cast<std::size_t>(row) - 1));
      Press(Qt::Key_Escape);
    }
  });
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    for (const auto& [tab, column] : {std::pair{1, 3}, {3, 2}}) {
      KeyToTab(editor, tab);
      DoubleClickCell(GridOf(editor), 1, column);
      ExpectUnits(editor, "%");
      DoubleClickCell(GridOf(editor), 2, column);
      ExpectUnits(editor, "ppm");
      Press(Qt::Key_Escape);
    }
  });
}

TEST_F(TabCellEditor, ACellWithoutAUnitIsOfferedPpm) {
  std::vector<Member> members = SetAMembers();
  members[1].rows.clear();
  WriteTemplate("RT520A", CapacitorFile({"RT520A", "TPLA0"}, members));
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ClickTab(editor, 2);
    ASSERT_EQ(RowOf(editor, 1), (Texts{"", "", "", "", ""}));
    DoubleClickCell(GridOf(editor), 1, 2);
    ExpectOpen(editor, "");
    ExpectUnits(editor, "ppm");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "") << "nothing was touched";
    TypeCell(editor, 1, 2, "5");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "5 ppm");
  });
  ResistorRows rows = SetRRows();
  rows[2][0] = "*        1 :   10.000 ohm";
  WriteTemplate("RT730A", ResistorFile({"RT730A", "TPLR0"}, rows));
  questions_.ExpectError({"HF Calibration at 10ohm", "too few values", "row 1."});
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    KeyToTab(editor, 3);
    ASSERT_EQ(RowOf(editor, 1), (Texts{"1", "10.000 ohm", "", "", ""}));
    DoubleClickCell(GridOf(editor), 1, 2);
    ExpectOpen(editor, "");
    ExpectUnits(editor, "ppm");
    Type("5");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "5.00 ppm");
  });
}

TEST_F(TabCellEditor, TheBoxLiesExactlyOverACellWithoutUnitChoice) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    for (int row = 1; row <= 3; ++row) {
      for (const int column : {1, 3, 4}) {
        DoubleClickCell(grid, row, column);
        EXPECT_EQ(PlaceIn(grid, CellBoxOf(editor)), CellRect(grid, row, column));
        EXPECT_TRUE(IsWhollySeen(CellBoxOf(editor)));
        EXPECT_EQ(CellBoxOf(editor).font().family(), grid.font().family());
        EXPECT_EQ(CellBoxOf(editor).font().pointSizeF(), grid.font().pointSizeF());
        Press(Qt::Key_Escape);
      }
    }
  });
}

TEST_F(TabCellEditor, BoxAndUnitShareTheCell) {
  for (const auto& [model, tab, column] :
       {std::tuple{"RT520A", 1, 2}, {"RT520C", 4, 2}, {"RT730A", 1, 3}, {"RT730A", 3, 2}}) {
    SCOPED_TRACE(testing::Message() << model << ", tab " << tab);
    EditNew(model, [&, tab = tab, column = column](frmCalDataTabInput& editor) {
      CalGrid& grid = GridOf(editor);
      KeyToTab(editor, tab);
      for (const int row : {1, 2}) {
        DoubleClickCell(grid, row, column);
        const QRect cell = CellRect(grid, row, column);
        const QRect box = PlaceIn(grid, CellBoxOf(editor));
        const QRect unit = PlaceIn(grid, UnitBoxOf(editor));
        EXPECT_TRUE(cell.contains(box));
        EXPECT_TRUE(cell.contains(unit));
        EXPECT_EQ(box.topLeft(), cell.topLeft());
        EXPECT_EQ(unit.top(), box.top());
        EXPECT_EQ(unit.left(), box.right() + 1);
        EXPECT_EQ(unit.right(), cell.right());
        EXPECT_EQ(box.height(), cell.height());
        EXPECT_EQ(unit.height(), cell.height());
        EXPECT_TRUE(IsWhollySeen(CellBoxOf(editor)));
        EXPECT_TRUE(IsWhollySeen(UnitBoxOf(editor)));
        EXPECT_TRUE(ShowsItsText(UnitBoxOf(editor)));
        EXPECT_GT(box.width(), CellBoxOf(editor).fontMetrics().horizontalAdvance("0.0000"));
        Press(Qt::Key_Escape);
      }
    });
  }
}

TEST_F(TabCellEditor, BothBoxesFollowTheirCell) {
  std::vector<Member> members = SetCMembers();
  members[0].rows.clear();
  for (int row = 1; row <= 51; ++row) {
    members[0].rows.push_back({std::to_string(row), "10.0001nF", "0.0200", "0.00030", "0.00040"});
  }
  WriteTemplate("RT520C", CapacitorFile({"RT520C", "TPLC0"}, members));
  EditNew("RT520C", [](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    ASSERT_GT(grid.verticalScrollBar()->maximum(), 0);
    const auto expectOver = [&](int row, int column) {
      const QRect cell = CellRect(grid, row, column);
      EXPECT_EQ(PlaceIn(grid, CellBoxOf(editor)).united(PlaceIn(grid, UnitBoxOf(editor))), cell);
    };
    DoubleClickCell(grid, 10, 2);
    Type("5");
    expectOver(10, 2);
    grid.verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    expectOver(10, 2);
    editor.resize(editor.width() - 60, editor.height());
    Settle();
    expectOver(10, 2);
    EXPECT_EQ(TextOf(editor, "txtCell"), "2005");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 10, 2), "2005 ppm");
    // A cell that is out of sight is scrolled to.
    grid.SetCurrentCell(51, 2);
    grid.verticalScrollBar()->setValue(0);
    Press(Qt::Key_Space);
    EXPECT_TRUE(IsWhollySeen(CellBoxOf(editor)));
    EXPECT_TRUE(IsWhollySeen(UnitBoxOf(editor)));
    expectOver(51, 2);
  });
}

TEST_F(TabCellEditor, EnterStoresWhatTheObjectMakesOfTheText) {
  struct Typed {
    int tab;
    int row;
    int column;
    const char* text;
    const char* stored;
  };
  const std::map<std::string, std::vector<Typed>> cases = {{"RT520A",
                                                            {{1, 1, 1, "1.0000123", "1.000012pF"},
                                                             {1, 1, 1, "1.0000125", "1.000013pF"},
                                                             {1, 2, 1, "1.000025", "1.00003pF"},
                                                             {1, 1, 1, "-1", "-1.000000pF"},
                                                             {1, 1, 1, "1E1", "10.000000pF"},
                                                             {1, 1, 1, "1.5 pF", "1.500000pF"},
                                                             {1, 1, 1, "1,5", "1.000000pF"},
                                                             {1, 1, 1, "abc", "0.000000pF"},
                                                             {1, 1, 2, "12.5", "13 ppm"},
                                                             {1, 2, 2, "0.0125", "0.013 %"},
                                                             {1, 3, 2, "61.00049", "61.000 ppm"},
                                                             {1, 1, 3, "0.000015", "0.00002"},
                                                             {1, 1, 4, "0.000014", "0.00001"},
                                                             {4, 1, 1, "999.9996", "1000.000pF"},
                                                             {4, 1, 2, "39.4", "39 ppm"}}},
                                                           {"RT520C",
                                                            {{1, 1, 1, "10.00006", "10.00006nF"},
                                                             {1, 1, 1, "10.000004", "10.0000nF"},
                                                             {2, 1, 1, "100.00049", "100.0005nF"},
                                                             {2, 1, 2, "0.01505", "0.0151 %"},
                                                             {3, 1, 1, "1", "1.00000uF"},
                                                             {3, 1, 2, "99.5", "100 ppm"},
                                                             {4, 2, 1, "9.99999", "9.99999uF"},
                                                             {4, 2, 4, "1", "1.00000"}}},
                                                           {"RT730A",
                                                            {{1, 1, 1, "2.5", "3 mohm"},
                                                             {1, 1, 2, "1.00005", "1.0001  mohm"},
                                                             {1, 2, 2, "10.0005", "10.001  mohm"},
                                                             {1, 1, 3, "0.125", "0.13 %"},
                                                             {1, 2, 3, "5", "5 ppm"},
                                                             {2, 1, 1, "5.256", "Ls/5.26 nH"},
                                                             {2, 1, 2, "0.555", "0.56 nH"},
                                                             {3, 1, 1, "9.9995", "10.000 ohm"},
                                                             {3, 2, 2, "24.995", "25.00 ppm"},
                                                             {3, 1, 3, "-0.0015", "-0.002 ohm"},
                                                             {4, 1, 4, "0.105", "0.11 ohm"},
                                                             {5, 1, 1, "1.00005", "1.0001 kohm"},
                                                             {5, 1, 3, "0.25", "0.3 uS"},
                                                             {6, 1, 2, "0.105", "0.11 %"},
                                                             {7, 1, 3, "1.2345", "1.235 uS"}}}};
  for (const auto& [model, typed] : cases) {
    EditNew(model, [&, typed = typed](frmCalDataTabInput& editor) {
      for (const Typed& one : typed) {
        SCOPED_TRACE(testing::Message() << model << ", tab " << one.tab << ": " << one.text);
        KeyToTab(editor, one.tab);
        TypeCell(editor, one.row, one.column, one.text);
        ExpectClosed(editor);
        EXPECT_EQ(CellOf(GridOf(editor), one.row, one.column), one.stored);
        EXPECT_EQ(QApplication::focusWidget(), &GridOf(editor));
        EXPECT_EQ(GridOf(editor).CurrentRow(), one.row);
      }
    });
  }
}

TEST_F(TabCellEditor, ACellBeyondTheFormatsOfSetAKeepsItsUnitOnly) {
  std::vector<Member> members = SetAMembers();
  while (members[0].rows.size() < 9) {
    members[0].rows.push_back(
        {std::to_string(members[0].rows.size() + 1), "1.0000pF", "0.05", "0.00001", "0.00002"});
  }
  WriteTemplate("RT520A", CapacitorFile({"RT520A", "TPLA0"}, members));
  questions_.ExpectError({"RT521A", "more rows", "row 9."});
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    EXPECT_EQ(RowOf(editor, 8), (Texts{"8", "1.0000pF", "0.05 %", "0.00001", "0.00002"}));
    EXPECT_EQ(RowOf(editor, 9), (Texts{"9", "pF", " %", "0.00001", "0.00002"}));
    TypeCell(editor, 9, 1, "5");
    EXPECT_EQ(CellOf(GridOf(editor), 9, 1), "pF");
    TypeCell(editor, 9, 3, "5");
    EXPECT_EQ(CellOf(GridOf(editor), 9, 3), "5.00000");
  });
}

TEST_F(TabCellEditor, AColumnThatAPageDoesNotUseTakesNoTypingAndStaysEmpty) {
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    const auto type = [&](int row, int column) {
      ClickCell(GridOf(editor), row, column);
      for (const Qt::Key key : {Qt::Key_5, Qt::Key_Return, Qt::Key_F2}) {
        Press(key);
        ExpectClosed(editor);
        ASSERT_TRUE(editor.isVisible()) << "the key pressed the default button";
      }
      DoubleClickCell(GridOf(editor), row, column);
      ExpectClosed(editor);
      EXPECT_EQ(CellOf(GridOf(editor), row, column), "");
    };
    type(1, 4);
    KeyToTab(editor, 2);
    type(1, 3);
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT734A", "Ls/5 nH", "0.5 nH", "", ""}));
  });
}

TEST_F(TabCellEditor, EscapeLeavesTheCellAndTheScreen) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    const Texts before = RowOf(editor, 1);
    for (int column = 1; column <= 4; ++column) {
      ClickCell(GridOf(editor), 1, column);
      Type("5");
      Press(Qt::Key_Escape);
      ExpectClosed(editor);
      EXPECT_EQ(QApplication::focusWidget(), &GridOf(editor));
      EXPECT_TRUE(editor.isVisible());
    }
    DoubleClickCell(GridOf(editor), 1, 2);
    Choose(editor, "txtCellCmb", "%");
    Press(Qt::Key_Escape);  // in the list of units
    ExpectClosed(editor);
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(QApplication::focusWidget(), &GridOf(editor));
    EXPECT_EQ(RowOf(editor, 1), before);
  });
}

TEST_F(TabCellEditor, DownAndUpStoreAndGoOn) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 1, 1);
    Type("1");
    Press(Qt::Key_Down);
    EXPECT_EQ(grid.CurrentRow(), 2);
    EXPECT_EQ(grid.CurrentColumn(), 1);
    Type("2");
    Press(Qt::Key_Down);
    EXPECT_EQ(grid.CurrentRow(), 3);
    Type("3");
    Press(Qt::Key_Down);
    EXPECT_EQ(grid.CurrentRow(), 3) << "the last row";
    ExpectClosed(editor);
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"1.000000pF", "2.00000pF", "3.00000pF"}));
    Type("4");
    Press(Qt::Key_Up);
    EXPECT_EQ(grid.CurrentRow(), 2);
    Type("5");
    Press(Qt::Key_Up);
    EXPECT_EQ(grid.CurrentRow(), 1);
    Type("6");
    Press(Qt::Key_Up);
    EXPECT_EQ(grid.CurrentRow(), 1) << "never onto the captions";
    ExpectClosed(editor);
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"6.000000pF", "5.00000pF", "4.00000pF"}));
    EXPECT_EQ(CellOf(grid, 0, 1), "Capacitance[pF]");
  });
}

TEST_F(TabCellEditor, OtherKeysAreTypedIntoTheBox) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    DoubleClickCell(GridOf(editor), 2, 2);
    ExpectOpen(editor, "0.005");
    Press(Qt::Key_Backspace);
    ExpectOpen(editor, "0.00");
    Press(Qt::Key_Left);
    Type("1");
    ExpectOpen(editor, "0.010");
    Press(Qt::Key_Home);
    Press(Qt::Key_Delete);
    ExpectOpen(editor, ".010");
    Press(Qt::Key_End);
    Type(" x*/");
    ExpectOpen(editor, ".010 x*/");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 2, 2), "0.010 %");
  });
}

TEST_F(TabCellEditor, TheKeysOfTheUnitChooseStoreAndGoBack) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    DoubleClickCell(grid, 1, 2);
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &UnitBoxOf(editor));
    Press(Qt::Key_Down);
    ExpectUnits(editor, "%");
    Press(Qt::Key_Up);
    ExpectUnits(editor, "ppm");
    EXPECT_EQ(grid.CurrentRow(), 1) << "the keys chose, they left nothing";
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    ExpectOpen(editor, "12");
    Press(Qt::Key_Tab);
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    ExpectClosed(editor);
    EXPECT_TRUE(editor.isVisible()) << "Enter pressed the default button";
    EXPECT_EQ(CellOf(grid, 1, 2), "12.0000 %");
    DoubleClickCell(grid, 1, 2);
    Press(Qt::Key_Tab);
    Press(Qt::Key_Up);
    Press(Qt::Key_Tab);
    ExpectClosed(editor);
    EXPECT_EQ(CellOf(grid, 1, 2), "12 ppm");
    EXPECT_EQ(QApplication::focusWidget(), &grid);
    // A cell without a choice is left at once.
    DoubleClickCell(grid, 1, 3);
    Type("1");
    Press(Qt::Key_Tab);
    ExpectClosed(editor);
    EXPECT_EQ(CellOf(grid, 1, 3), "0.00001") << "0.000011 with five decimals";
  });
}

TEST_F(TabCellEditor, ChangingTheUnitAloneConvertsAsTheObjectSays) {
  struct Change {
    std::string model;
    int tab;
    int row;
    int column;
    const char* unit;
    const char* stored;
  };
  const std::vector<Change> changes = {
      {"RT520A", 1, 1, 2, "%", "12.0000 %"},  {"RT520A", 1, 2, 2, "ppm", "0.005 ppm"},
      {"RT520A", 1, 3, 2, "%", "60.000 %"},   {"RT520A", 2, 1, 2, "%", "30.0000 %"},
      {"RT520A", 3, 1, 2, "ppm", "0 ppm"},    {"RT520C", 1, 1, 2, "%", "200.0000 %"},
      {"RT520C", 2, 1, 2, "ppm", "0 ppm"},    {"RT520C", 4, 2, 2, "%", "400.0000 %"},
      {"RT730A", 1, 1, 3, "ppm", "0.1 ppm"},  {"RT730A", 1, 2, 3, "%", "12 %"},
      {"RT730A", 3, 1, 2, "ppm", "0.10 ppm"}, {"RT730A", 3, 2, 2, "%", "25.00 %"},
      {"RT730A", 7, 1, 2, "ppm", "0.20 ppm"},
  };
  for (const Change& change : changes) {
    SCOPED_TRACE(testing::Message()
                 << change.model << ", tab " << change.tab << ", row " << change.row);
    EditNew(change.model, [&](frmCalDataTabInput& editor) {
      KeyToTab(editor, change.tab);
      DoubleClickCell(GridOf(editor), change.row, change.column);
      Choose(editor, "txtCellCmb", change.unit);
      Press(Qt::Key_Return);
      EXPECT_EQ(CellOf(GridOf(editor), change.row, change.column), change.stored);
    });
  }
}

TEST_F(TabCellEditor, AUnitThatIsChosenBackLeavesTheCell) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    DoubleClickCell(GridOf(editor), 1, 2);
    Choose(editor, "txtCellCmb", "%");
    Choose(editor, "txtCellCmb", "ppm");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "12 ppm");
  });
}

TEST_F(TabCellEditor, TextAndUnitAreStoredTogether) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ClickCell(GridOf(editor), 1, 2);
    Type("0.0034");
    Choose(editor, "txtCellCmb", "%");
    ClickCell(GridOf(editor), 2, 3);  // the grid gets the keyboard back
    ExpectClosed(editor);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "0.0034 %");
    EXPECT_EQ(GridOf(editor).CurrentRow(), 2);
    EXPECT_EQ(GridOf(editor).CurrentColumn(), 3);
  });
}

TEST_F(TabCellEditor, TheMouseChoosesAUnit) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ClickCell(GridOf(editor), 1, 2);
    Type("0.1");
    ChooseByMouse(UnitBoxOf(editor), 1);
    ExpectUnits(editor, "%");
    EXPECT_TRUE(CellBoxOf(editor).isVisible()) << "the edit is still open";
    EXPECT_EQ(TextOf(editor, "txtCell"), "0.1");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "0.1000 %");
  });
}

TEST_F(TabCellEditor, AnUntouchedEditLeavesATextThatFormattingWouldChange) {
  // More decimals than the screen would store.
  ResistorRows rows = SetRRows();
  rows[0][0] = "*   RT731A :        1 mohm :  1.0000567  mohm :       0.1 % ";
  rows[1][0] = "*   RT734A :    Ls/5.12345 nH :  0.5 nH";
  rows[2][0] = "*        1 : 10.00049 ohm :      0.10 % :      0.000 ohm :   0.010 ohm";
  WriteTemplate("RT730A", ResistorFile({"RT730A", "TPLR0"}, rows));
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00001");
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Down, Qt::Key_Up, Qt::Key_Tab}) {
      DoubleClickCell(GridOf(editor), 1, 2);
      ExpectOpen(editor, "1.0000567");
      Press(key);
      ExpectClosed(editor);
      EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "1.0000567  mohm");
    }
    DoubleClickCell(GridOf(editor), 1, 2);
    KeyToTab(editor, 2);
    DoubleClickCell(GridOf(editor), 1, 1);
    ExpectOpen(editor, "5.12345");
    KeyToTab(editor, 3);
    DoubleClickCell(GridOf(editor), 1, 1);
    ExpectOpen(editor, "10.00049");
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT730A\SN00001)"), ResistorFile({"RT730A", "00001"}, rows));
}

TEST_F(TabCellEditor, TheFirstColumnStartsNoEdit) {
  for (const char* model : {"RT520A", "RT520C", "RT730A"}) {
    SCOPED_TRACE(model);
    EditNew(model, [](frmCalDataTabInput& editor) {
      for (int tab = 1; tab <= TabsOf(editor).count(); ++tab) {
        KeyToTab(editor, tab);
        const Texts before = ColumnOf(GridOf(editor), 0);
        for (const Qt::Key key : {Qt::Key_1, Qt::Key_R, Qt::Key_Space, Qt::Key_Return,
                                  Qt::Key_Backspace, Qt::Key_Delete}) {
          SCOPED_TRACE(key);
          ClickCell(GridOf(editor), 1, 0);
          Press(key);
          ExpectClosed(editor);
          ASSERT_TRUE(editor.isVisible());
          EXPECT_EQ(GridOf(editor).CurrentRow(), 1) << "nothing happens";
          EXPECT_EQ(GridOf(editor).CurrentColumn(), 0);
        }
        DoubleClickCell(GridOf(editor), 1, 0);
        ExpectClosed(editor);
        EXPECT_EQ(ColumnOf(GridOf(editor), 0), before);
      }
    });
  }
}

TEST_F(TabCellEditor, OkStoresAnEditWhoseUnitHasTheKeyboard) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00001");
    ClickCell(GridOf(editor), 1, 2);
    Type("0.25");
    Choose(editor, "txtCellCmb", "%");
    Click(editor, "btnOk");
  });
  std::vector<Member> members = SetAMembersSaved();
  members[0].rows[0][2] = "0.2500";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520A\SN00001)"),
            CapacitorFile({"RT520A", "00001"}, members));
}

/// A number that no table can hold keeps its edit open, whatever the user does next.
class TabTooLargeANumber : public TabCellEditor {
 protected:
  /// Types it on the second tab, tries to leave it by `leave`, which is told once, and gives up.
  void ExpectKept(const std::function<void(frmCalDataTabInput& editor)>& leave) {
    EditNew("RT520A", [&](frmCalDataTabInput& editor) {
      Fill(editor, "txtSerial", "00001");
      ClickTab(editor, 2);
      Fill(editor, "txtTabSerial", "N2");
      ClickCell(GridOf(editor), 2, 2);
      Type("9E999");
      questions_.ExpectError({"9E999"});
      leave(editor);
      ASSERT_TRUE(editor.isVisible());
      EXPECT_EQ(SelectedTab(editor), 2);
      EXPECT_TRUE(CellBoxOf(editor).isVisible());
      EXPECT_EQ(TextOf(editor, "txtCell"), "9E999");
      ExpectUnits(editor, "%");
      EXPECT_EQ(PlaceIn(GridOf(editor), CellBoxOf(editor)).topLeft(),
                CellRect(GridOf(editor), 2, 2).topLeft());
      EXPECT_EQ(RowOf(editor, 2), (Texts{"2000", "10.00002pF", "0.0200 %", "0.00013", "0.00014"}));
      EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N2");
      EXPECT_EQ(TextOf(editor, "txtSerial"), "00001");
      EXPECT_TRUE(tree_.Names(R"(c:\calfactors\RT520A)").empty());
      // Given up, it keeps nothing back.
      CellBoxOf(editor).setFocus();
      Press(Qt::Key_Escape);
      ExpectClosed(editor);
      ClickTab(editor, 3);
      EXPECT_EQ(SelectedTab(editor), 3);
      EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M003");
      Click(editor, "btnOk");
    });
    std::vector<Member> members = SetAMembersSaved();
    members[1].serial = "N2";
    EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520A\SN00001)"),
              CapacitorFile({"RT520A", "00001"}, members));
  }
};

TEST_F(TabTooLargeANumber, IsToldOnEnter) {
  ExpectKept([](frmCalDataTabInput& editor) {
    Press(Qt::Key_Return);
    ExpectOpen(editor, "9E999");
  });
}

TEST_F(TabTooLargeANumber, IsToldOnEnterInTheListOfUnits) {
  ExpectKept([](frmCalDataTabInput& editor) {
    Press(Qt::Key_Tab);
    Press(Qt::Key_Return);
    ExpectOpen(editor, "9E999");
  });
}

TEST_F(TabTooLargeANumber, IsToldOnDown) {
  ExpectKept([](frmCalDataTabInput& editor) {
    Press(Qt::Key_Down);
    ExpectOpen(editor, "9E999");
  });
}

TEST_F(TabTooLargeANumber, IsToldOnUp) {
  ExpectKept([](frmCalDataTabInput& editor) {
    Press(Qt::Key_Up);
    ExpectOpen(editor, "9E999");
  });
}

TEST_F(TabTooLargeANumber, IsToldOnAClickInTheGrid) {
  ExpectKept([](frmCalDataTabInput& editor) { ClickCell(GridOf(editor), 1, 1); });
}

TEST_F(TabTooLargeANumber, IsToldOnAClickOnATab) {
  ExpectKept([](frmCalDataTabInput& editor) { ClickTab(editor, 3); });
}

TEST_F(TabTooLargeANumber, IsToldOnAKeyOfTheTabStrip) {
  ExpectKept([](frmCalDataTabInput& editor) {
    TabsOf(editor).setFocus();
    Press(Qt::Key_Right);
  });
}

TEST_F(TabTooLargeANumber, IsToldOnOk) {
  ExpectKept([](frmCalDataTabInput& editor) { Click(editor, "btnOk"); });
}

TEST_F(TabTooLargeANumber, IsToldWhenTheOptionIsSwitchedOff) {
  EditNew("RT520C", [&](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    ClickCell(GridOf(editor), 2, 1);
    Type("9E999");
    questions_.ExpectError({"9E999"});
    Click(editor, "chkCheck");
    EXPECT_TRUE(Find<QCheckBox>(editor, "chkCheck").isChecked());
    EXPECT_EQ(TabsOf(editor).count(), 4);
    EXPECT_EQ(SelectedTab(editor), 4);
    EXPECT_TRUE(CellBoxOf(editor).isVisible());
    EXPECT_EQ(TextOf(editor, "txtCell"), "9E999");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"10.0002uF", "10.0003uF"}));
  });
}

TEST_F(TabTooLargeANumber, DoesNotKeepTheScreenFromBeingCancelled) {
  frmCalDataTabInput editor(nullptr);
  EditNew(editor, "RT520A", [](frmCalDataTabInput& screen) {
    ClickCell(GridOf(screen), 2, 2);
    Type("9E999");
    Click(screen, "btnCancel");
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_TRUE(tree_.Names(R"(c:\calfactors\RT520A)").empty());
  EditNew(editor, "RT730A", [](frmCalDataTabInput& screen) {
    ExpectClosed(screen);
    EXPECT_EQ(RowOf(screen, 2), (Texts{"RT732A", "10 mohm", "10.000  mohm", "12 ppm", ""}));
  });
}

}  // namespace
}  // namespace tarvell
