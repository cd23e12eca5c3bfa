// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "screens/caldata/EitherEditor.h"

/// Typing into the cells of a table: what starts an edit, what ends it, and where its box lies.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class CellEditing : public EitherEditor {
 protected:
  /// Expects the same text in every row of column 1 except in row `row`.
  void ExpectOnlyChanged(QWidget& editor, int row, const std::string& text) {
    Texts values = Values();
    values.at(static_cast<std::size_t>(row) - 1) = text;
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), values);
  }
  void ExpectUnchanged(QWidget& editor) { EXPECT_EQ(ColumnOf(GridOf(editor), 1), Values()); }
};

INSTANTIATE_TEST_SUITE_P(Editors, CellEditing, testing::ValuesIn(kBothEditors), KindName);

// ---- What starts an edit.

TEST_P(CellEditing, APrintableKeyStartsAnEditWithItsCharacter) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    for (const QString key : {"7", "-", ".", ",", "e", "~", "\u00e9", "\u6f22"}) {
      ClickCell(grid, 2, 1);
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, key);
      QApplication::sendEvent(&grid, &press);
      ExpectOpen(editor, key.toStdString());
      Press(Qt::Key_Escape);
      ExpectBackIn(editor, grid, 2);
    }
    // Further keys go on in the box.
    Type("97.26");
    Press(Qt::Key_Home);
    Press(Qt::Key_Delete);
    Press(Qt::Key_End);
    Press(Qt::Key_Backspace);
    Type(" x");
    ExpectOpen(editor, "7.2 x");
    ExpectUnchanged(editor);
  });
}

TEST_P(CellEditing, TheseKeysAndADoubleClickStartAnEditWithTheNumber) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    for (int row = 1; row <= 3; ++row) {
      const std::string number = Numbers().at(static_cast<std::size_t>(row) - 1);
      for (const Qt::Key key :
           {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Backspace, Qt::Key_F2}) {
        SCOPED_TRACE(key);
        ClickCell(grid, row, 1);
        Press(key);
        ExpectOpen(editor, number);
        Press(Qt::Key_Escape);
      }
      DoubleClickCell(grid, row, 1);
      ExpectOpen(editor, number);
      Press(Qt::Key_Escape);
    }
    ExpectUnchanged(editor);
  });
}

TEST_P(CellEditing, OtherKeysStartNothing) {
  const std::vector<std::pair<Qt::Key, Qt::KeyboardModifiers>> keys = {
      {Qt::Key_Delete, Qt::NoModifier},      {Qt::Key_Insert, Qt::NoModifier},
      {Qt::Key_F1, Qt::NoModifier},          {Qt::Key_Home, Qt::NoModifier},
      {Qt::Key_PageDown, Qt::NoModifier},    {Qt::Key_Shift, Qt::ShiftModifier},
      {Qt::Key_CapsLock, Qt::NoModifier},    {Qt::Key_7, Qt::ControlModifier},
      {Qt::Key_A, Qt::ControlModifier},      {Qt::Key_7, Qt::AltModifier},
      {Qt::Key_F2, Qt::ControlModifier},     {Qt::Key_7, Qt::MetaModifier},
      {Qt::Key_Return, Qt::ControlModifier}, {Qt::Key_Space, Qt::ControlModifier}};
  Edit([&](CalEditor& editor) {
    for (const auto& [key, modifiers] : keys) {
      SCOPED_TRACE(key);
      ClickCell(GridOf(editor), 2, 1);
      Press(key, modifiers);
      ExpectClosed(editor);
      ASSERT_TRUE(editor.isVisible());
    }
    ExpectUnchanged(editor);
  });
}

TEST_P(CellEditing, AFixedColumnTakesNoTypingAndSaysWhy) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    const Texts before = ColumnOf(grid, 0);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Backspace, Qt::Key_Delete}) {
      ClickCell(grid, 2, 0);
      Press(key);
      ExpectBackIn(editor, grid, 2, 0);
    }
    DoubleClickCell(grid, 2, 0);
    Type("1");
    ExpectBackIn(editor, grid, 2, 0);
    EXPECT_EQ(NoticesOf(editor),
              Texts{"Nothing was typed: the column \"" + CellOf(grid, 0, 0) + "\" is fixed. " +
                    (HasPages() ? "It comes from the file or the template."
                                : "Add or delete a calibration point to change it.")});
    Press(Qt::Key_Right);
    EXPECT_EQ(NoticesOf(editor), Texts());
    EXPECT_EQ(ColumnOf(grid, 0), before);
  });
}

// ---- What ends an edit.

TEST_P(CellEditing, EnterStoresTheNumberInTheFormatOfTheCell) {
  Edit([&](CalEditor& editor) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
      ClickCell(GridOf(editor), 1, 1);
      Type("7");
      Press(key);
      ExpectBackIn(editor, GridOf(editor), 1);
      ExpectOnlyChanged(editor, 1, Stored(1, "7"));
      // An empty text is zero.
      Type("7");
      Press(Qt::Key_Backspace);
      Press(key);
      ExpectOnlyChanged(editor, 1, Stored(1, "0"));
    }
    // The same number, typed again, gets the format.
    ClickCell(GridOf(editor), 3, 1);
    Type(HasPages() ? "1.000031" : "98.84");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 3, 1), HasPages() ? "1.00003pF" : "98.8");
  });
}

TEST_P(CellEditing, DownAndUpStoreAndGoToTheNextRow) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 2, 1);
    Type("1");
    Press(Qt::Key_Down);
    ExpectBackIn(editor, grid, 3);
    Type("2");
    Press(Qt::Key_Down);
    ExpectBackIn(editor, grid, 3);
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{Values()[0], Stored(2, "1"), Stored(3, "2")}));
    Type("3");
    Press(Qt::Key_Up);
    ExpectBackIn(editor, grid, 2);
    Press(Qt::Key_Up);
    Type("4");
    Press(Qt::Key_Up);
    ExpectBackIn(editor, grid, 1);
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{Stored(1, "4"), Stored(2, "1"), Stored(3, "3")}));
  });
}

TEST_P(CellEditing, AnUntouchedTextLeavesTheCellAsItIs) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    for (const Qt::Key key :
         {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Tab, Qt::Key_Up, Qt::Key_Down, Qt::Key_Backtab}) {
      for (const int row : {1, 3}) {
        ClickCell(grid, row, 1);
        Press(Qt::Key_Return);
        Press(key);
        ExpectClosed(editor);
      }
    }
    DoubleClickCell(grid, 3, 1);
    ClickCell(grid, 1, 1);
    ExpectUnchanged(editor);
    DoubleClickCell(grid, 3, 1);
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
}

TEST_P(CellEditing, AClickElsewhereStores) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 1, 1);
    Type("7");
    ClickCell(grid, 3, 0);
    ExpectBackIn(editor, grid, 3, 0);
    ExpectOnlyChanged(editor, 1, Stored(1, "7"));
    ClickCell(grid, 1, 1);
    Type("8");
    DoubleClickCell(grid, 2, 1);
    ExpectOpen(editor, Numbers()[1]);
    ExpectOnlyChanged(editor, 1, Stored(1, "8"));
    // A field of the header takes the keyboard; OK stores the edit, which is still open.
    Type("5");
    Fill(editor, "txtComment", "factory");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(Path()),
            Bytes(header_, {Stored(1, "8"), HasPages() ? "1.00003pF" : "1005.0", Values()[2]}));
}

TEST_P(CellEditing, ReportsAndMarksAValueThatIsStoredDifferently) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 2, 1);
    Type("98,57");
    Press(Qt::Key_Return);
    const std::string notice = "\"98,57\" is not a number; the cell holds \"" + Stored(2, "98") +
                               "\". Type digits with a point for the decimals.";
    const Texts notices = {CellOf(grid, 2, 0) + ", " + CellOf(grid, 0, 1) + ": " + notice};
    EXPECT_EQ(NoticesOf(editor), notices);
    const QModelIndex cell = grid.model()->index(1, 1);
    EXPECT_EQ(cell.data(Qt::AccessibleDescriptionRole).toString().toStdString(), notice);
    EXPECT_EQ(cell.data(Qt::ToolTipRole).toString().toStdString(), notice);
    EXPECT_FALSE(cell.data(Qt::DecorationRole).isNull());
    // Another such cell: the notice is about the current one.
    ClickCell(grid, 3, 1);
    Type("abc");
    Press(Qt::Key_Return);
    EXPECT_NE(NoticesOf(editor), notices);
    Press(Qt::Key_Up);
    EXPECT_EQ(NoticesOf(editor), notices);
    // Outside marked cells it is about the one that was stored last.
    Press(Qt::Key_Up);
    EXPECT_NE(NoticesOf(editor), notices);
    EXPECT_EQ(NoticesOf(editor).size(), 1U);
    for (const int row : {2, 3}) {
      ClickCell(grid, row, 1);
      Type("98");
      Press(Qt::Key_Return);
      EXPECT_TRUE(grid.model()->index(row - 1, 1).data(Qt::DecorationRole).isNull());
    }
    EXPECT_EQ(NoticesOf(editor), Texts());
  });
}

// ---- A number that cannot be stored.

TEST_P(CellEditing, ANumberThatIsTooLargeStaysInItsBoxWhateverTheUserDoes) {
  using Leave = std::function<void(CalEditor & editor)>;
  std::vector<Leave> ways = {
      [](CalEditor&) { Press(Qt::Key_Return); },
      [](CalEditor&) { Press(Qt::Key_Tab); },
      [](CalEditor&) { Press(Qt::Key_Backtab, Qt::ShiftModifier); },
      [](CalEditor&) { Press(Qt::Key_Up); },
      [](CalEditor&) { Press(Qt::Key_Down); },
      [](CalEditor& editor) { ClickCell(GridOf(editor), 3, 1); },
      [](CalEditor& editor) { Click(editor, "btnOk"); },
  };
  if (HasPages()) {
    ways.emplace_back([](CalEditor& editor) { ClickTab(editor, 3); });
    ways.emplace_back([](CalEditor& editor) {
      TabsOf(editor).setFocus();
      Press(Qt::Key_Right);
    });
  } else {
    ways.emplace_back([](CalEditor& editor) { ClickWithoutDialog(editor, "btnAddPoint"); });
    ways.emplace_back([](CalEditor& editor) { ClickWithoutDialog(editor, "btnDeletePoint"); });
  }
  for (std::size_t way = 0; way < ways.size(); ++way) {
    SCOPED_TRACE(way);
    Edit([&](CalEditor& editor) {
      CalGrid& grid = GridOf(editor);
      ClickCell(grid, 2, 1);
      Type("9E999");
      questions_.ExpectError({"9E999", "too large"});
      ways[way](editor);
      ASSERT_TRUE(editor.isVisible());
      EXPECT_TRUE(CellBoxOf(editor).isVisible());
      EXPECT_EQ(TextOf(editor, "txtCell"), "9E999");
      EXPECT_EQ(grid.currentIndex(), grid.model()->index(1, 1));
      ExpectUnchanged(editor);
      if (HasPages()) {
        EXPECT_EQ(SelectedTab(editor), 1);
      }
      // Corrected, it is stored; way 0 gives up instead.
      CellBoxOf(editor).setFocus();
      if (way == 0) {
        Press(Qt::Key_Escape);
        ExpectUnchanged(editor);
      } else {
        CellBoxOf(editor).setText("9");
        Press(Qt::Key_Return);
        ExpectOnlyChanged(editor, 2, Stored(2, "9"));
      }
      ExpectBackIn(editor, grid, 2);
    });
    EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
  }
  Edit([&](CalEditor& editor) {
    ClickCell(GridOf(editor), 2, 1);
    Type("9E999");
    Click(editor, "btnCancel");
    EXPECT_FALSE(editor.isVisible());
  });
}

// ---- Tab and the keys of the table, on the table of a sensor.

class TableKeys : public SensorStage {
 protected:
  TableKeys() {
    file_.rows = {{"0.10", "98.80"}, {"50.00", "100.0"}, {"100.00", "98.84"}, {"1000.00", "97.0"}};
  }

  SensorFile file_;
};

TEST_F(TableKeys, TabHomeAndEndGoToCellsThatCanBeEdited) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 1, 1);
    Type("91");
    Press(Qt::Key_Tab);
    ExpectBackIn(editor, grid, 2);
    Press(Qt::Key_Tab);
    ExpectBackIn(editor, grid, 3);
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    ExpectBackIn(editor, grid, 2);
    Type("92");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    ExpectBackIn(editor, grid, 1);
    const auto expectLeaves = [&](const std::function<void()>& act) {
      ClickCell(grid, 2, 1);
      Type("93");
      Press(Qt::Key_Tab);
      act();
      Press(Qt::Key_Tab);
      EXPECT_EQ(QApplication::focusWidget()->objectName(), "btnAddPoint");
    };
    expectLeaves([] { Press(Qt::Key_Up); });
    expectLeaves([&] { ClickCell(grid, 1, 1); });
    expectLeaves([&] {
      Find<QWidget>(editor, "txtComment").setFocus();
      grid.setFocus();
    });
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"91.0", "93.0", "98.84", "97.0"}));
    // At the ends of the table Tab leaves it.
    ClickCell(grid, 4, 1);
    Type("9");
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "btnAddPoint");
    ClickCell(grid, 1, 1);
    Type("8");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "txtComment");
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"8.0", "93.0", "98.84", "9.0"}));
    // Home and End go to cells that can be edited.
    ClickCell(grid, 3, 1);
    Press(Qt::Key_Home, Qt::ControlModifier);
    ExpectBackIn(editor, grid, 1);
    Press(Qt::Key_End, Qt::ControlModifier);
    ExpectBackIn(editor, grid, 4);
    Press(Qt::Key_Home);
    ExpectBackIn(editor, grid, 4);
  });
}

// ---- The list of units.

class CellUnit : public TabEditorFixture {
 protected:
  CellUnit() { WriteTemplates(); }

  static void ExpectUnits(QWidget& editor, const std::string& chosen) {
    ASSERT_TRUE(UnitBoxOf(editor).isVisible());
    EXPECT_EQ(ComboEntries(editor, "txtCellCmb"), (Texts{"ppm", "%"}));
    EXPECT_EQ(ComboText(editor, "txtCellCmb"), chosen);
  }
};

TEST_F(CellUnit, IsOfferedWhereItCanBeChosenAndNowhereElse) {
  struct Offer {
    std::string model;
    int tab;
    int column;
    Texts units;  ///< of the rows
  };
  const std::vector<Offer> offers = {{"RT520A", 1, 2, {"ppm", "%", "ppm"}},
                                     {"RT520A", 3, 2, {"ppm"}},
                                     {"RT520C", 2, 2, {"ppm"}},
                                     {"RT520C", 4, 2, {"ppm", "ppm"}},
                                     {"RT730A", 1, 3, {"%", "ppm"}},
                                     {"RT730A", 2, 0, {}},
                                     {"RT730A", 3, 2, {"%", "ppm"}},
                                     {"RT730A", 7, 2, {"%"}}};
  for (const Offer& offer : offers) {
    EditNew(offer.model, [&](frmCalDataTabInput& editor) {
      KeyToTab(editor, offer.tab);
      for (int column = 1; column <= 4 && !CellOf(GridOf(editor), 0, column).empty(); ++column) {
        SCOPED_TRACE(testing::Message() << offer.model << ", " << offer.tab << ", " << column);
        for (const char* key : {" ", "7"}) {
          ClickCell(GridOf(editor), 1, column);
          Type(key);
          ASSERT_TRUE(CellBoxOf(editor).isVisible());
          EXPECT_EQ(UnitBoxOf(editor).isVisible(), column == offer.column);
          EXPECT_TRUE(CellBoxOf(editor).hasFocus());
          Press(Qt::Key_Escape);
          ExpectClosed(editor);
        }
      }
      for (std::size_t row = 0; row < offer.units.size(); ++row) {
        DoubleClickCell(GridOf(editor), static_cast<int>(row) + 1, offer.column);
        ExpectUnits(editor, offer.units[row]);
      }
    });
  }
}

TEST_F(CellUnit, OfACellWithoutUnitIsPpm) {
  std::vector<Member> members = SetAMembers();
  members[1].rows.clear();
  WriteTemplate("RT520A", CapacitorFile({"RT520A", "TPLA0"}, members));
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ClickTab(editor, 2);
    DoubleClickCell(GridOf(editor), 1, 2);
    ExpectOpen(editor, "");
    ExpectUnits(editor, "ppm");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "") << "nothing was touched";
    TypeCell(editor, 1, 2, "5");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "5 ppm");
  });
}

TEST_F(CellUnit, IsChosenStoredAndLeftByKeys) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    DoubleClickCell(grid, 1, 2);
    Press(Qt::Key_Tab);
    EXPECT_TRUE(UnitBoxOf(editor).hasFocus());
    Press(Qt::Key_Down);
    ExpectUnits(editor, "%");
    Press(Qt::Key_Up);
    ExpectUnits(editor, "ppm");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(CellBoxOf(editor).hasFocus());
    Press(Qt::Key_Tab);
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 1, 2), "12 ppm") << "the unit was chosen back";
    DoubleClickCell(grid, 1, 2);
    Press(Qt::Key_Tab);
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    ExpectBackIn(editor, grid, 1, 2);
    EXPECT_EQ(CellOf(grid, 1, 2), "12.0000 %") << "the number is not converted";
    // Tab goes on to the next cell by way of the unit.
    DoubleClickCell(grid, 1, 2);
    Press(Qt::Key_Tab);
    Press(Qt::Key_Up);
    Press(Qt::Key_Tab);
    ExpectBackIn(editor, grid, 1, 3);
    EXPECT_EQ(CellOf(grid, 1, 2), "12 ppm");
    Type("1");
    Press(Qt::Key_Tab);
    ExpectBackIn(editor, grid, 1, 4);
    Press(Qt::Key_Tab);
    ExpectBackIn(editor, grid, 2, 1);
    // Escape in the list leaves the cell.
    DoubleClickCell(grid, 1, 2);
    Choose(editor, "txtCellCmb", "%");
    Press(Qt::Key_Escape);
    ExpectBackIn(editor, grid, 1, 2);
    EXPECT_EQ(RowOf(editor, 1), (Texts{"1000", "1.000012pF", "12 ppm", "1.00000", "0.00002"}));
  });
}

TEST_F(CellUnit, IsStoredWithTheNumberWhateverEndsTheEdit) {
  EditNew("RT520A", [&](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    Fill(editor, "txtSerial", "00001");
    ClickCell(grid, 1, 2);
    Type("0.1");
    ChooseByMouse(UnitBoxOf(editor), 1);
    ExpectUnits(editor, "%");
    EXPECT_EQ(TextOf(editor, "txtCell"), "0.1") << "the edit is still open";
    ClickCell(grid, 2, 3);
    ExpectBackIn(editor, grid, 2, 3);
    EXPECT_EQ(CellOf(grid, 1, 2), "0.1000 %");
    ClickCell(grid, 1, 2);
    Type("9E999");
    Choose(editor, "txtCellCmb", "ppm");
    questions_.ExpectError({"9E999"});
    Press(Qt::Key_Return);
    ExpectUnits(editor, "ppm");
    CellBoxOf(editor).setText("0.25");
    Choose(editor, "txtCellCmb", "%");
    Click(editor, "btnOk");
  });
  std::vector<Member> members = SetAMembers();
  members[0].rows[0][2] = "0.2500";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520A\SN00001)"),
            CapacitorFile({"RT520A", "00001"}, members));
}

// ---- Where the box lies.

class CellBox : public SensorStage {
 protected:
  CellBox() { file_.rows = ManyRows(40); }

  SensorFile file_;
};

/// The place of a control on the cells of a table.
QRect PlaceIn(CalGrid& grid, QWidget& control) {
  return {control.mapTo(grid.viewport(), QPoint(0, 0)), control.size()};
}

QRect CellRect(CalGrid& grid, int row, int column = 1) {
  return grid.visualRect(grid.model()->index(row - 1, column));
}

void ExpectOver(CalGrid& grid, int row) {
  EXPECT_EQ(PlaceIn(grid, CellBoxOf(grid)), CellRect(grid, row));
}

TEST_F(CellBox, LiesOverTheCellInTheFontOfTheTable) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    const QByteArray scale = qgetenv("QT_SCALE_FACTOR");
    EXPECT_EQ(editor.devicePixelRatioF(), scale.isEmpty() ? 1.0 : scale.toDouble());
    QFont font = grid.font();
    font.setPointSize(font.pointSize() + 3);
    grid.setFont(font);
    for (const int row : {1, 2, 39, 40}) {
      DoubleClickCell(grid, row, 1);
      ExpectOver(grid, row);
      EXPECT_EQ(CellBoxOf(editor).font().pointSizeF(), font.pointSizeF());
      Press(Qt::Key_Escape);
    }
    // A cell that is out of sight is scrolled to.
    ClickCell(grid, 40, 1);
    grid.verticalScrollBar()->setValue(0);
    ASSERT_FALSE(grid.viewport()->rect().intersects(CellRect(grid, 40)));
    Type("7");
    ExpectOver(grid, 40);
    EXPECT_TRUE(grid.viewport()->rect().contains(CellBoxOf(editor).geometry()));
  });
}

TEST_F(CellBox, FollowsTheCellWhenTheTableIsScrolled) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    grid.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    // Captions that are wider than the window.
    grid.horizontalHeader()->setMinimumSectionSize(grid.viewport()->width());
    editor.resize(editor.width() + 1, editor.height());
    Settle();
    DoubleClickCell(grid, 10, 1);
    for (QScrollBar* bar : {grid.verticalScrollBar(), grid.horizontalScrollBar()}) {
      ASSERT_GT(bar->maximum(), 3);
      for (const int value : {1, 3, bar->maximum(), 0}) {
        bar->setValue(value);
        ExpectOver(grid, 10);
      }
    }
    const int before = CellBoxOf(editor).y();
    const QPointF place = grid.viewport()->rect().center();
    QWheelEvent wheel(place, grid.viewport()->mapToGlobal(place), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(grid.viewport(), &wheel);
    EXPECT_LT(CellBoxOf(editor).y(), before);
    ExpectOver(grid, 10);
  });
}

TEST_F(CellBox, FollowsTheCellWhenWindowColumnsAndRowsChangeTheirSize) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    DoubleClickCell(grid, 3, 1);
    const int before = CellBoxOf(editor).width();
    for (const QSize size : {QSize(700, 700), QSize(1200, 500), QSize(1000, 800)}) {
      editor.resize(size);
      Settle();
      ExpectOver(grid, 3);
    }
    EXPECT_GT(CellBoxOf(editor).width(), before);
    grid.setColumnWidth(0, grid.columnWidth(0) + 40);
    ExpectOver(grid, 3);
    grid.setColumnWidth(1, 77);
    ExpectOver(grid, 3);
    grid.setRowHeight(0, grid.rowHeight(0) + 9);
    ExpectOver(grid, 3);
  });
}

TEST_F(CellUnit, SharesTheCellWithTheNumber) {
  EditNew("RT730A", [&](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    KeyToTab(editor, 3);
    DoubleClickCell(grid, 1, 2);
    const auto expectShared = [&] {
      const QRect box = PlaceIn(grid, CellBoxOf(editor));
      const QRect unit = PlaceIn(grid, UnitBoxOf(editor));
      EXPECT_EQ(box.united(unit), CellRect(grid, 1, 2));
      EXPECT_EQ(unit.left(), box.right() + 1);
      EXPECT_EQ(unit.height(), box.height());
      EXPECT_GT(box.width(), CellBoxOf(editor).fontMetrics().horizontalAdvance("0.0000"));
    };
    expectShared();
    QStyleOptionComboBox option;
    option.initFrom(&UnitBoxOf(editor));
    option.subControls = QStyle::SC_All;
    const QRect field = editor.style()->subControlRect(
        QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &UnitBoxOf(editor));
    EXPECT_GE(field.width(), UnitBoxOf(editor).fontMetrics().horizontalAdvance("ppm"));
    editor.resize(editor.width() + 60, editor.height());
    Settle();
    expectShared();
  });
}

}  // namespace
}  // namespace tarvell
