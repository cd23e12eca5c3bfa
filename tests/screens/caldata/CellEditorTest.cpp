// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QAccessible>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollBar>
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "screens/caldata/EitherEditor.h"

/// Typing into the cells of a table: what starts an edit, what ends it, and where its box lies.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class CellEditing : public EitherEditor {
 protected:
  void ExpectUnchanged(QWidget& editor) { EXPECT_EQ(ColumnOf(GridOf(editor), 1), Values()); }
  /// Delete in a table of points asks, and gets No.
  void ExpectQuestionAt(Qt::Key key) {
    if (key == Qt::Key_Delete && !HasPages()) {
      questions_.Expect({.text = "Are you want delete? (50MHz)",
                         .icon = QMessageBox::Warning,
                         .buttons = QMessageBox::Yes | QMessageBox::No,
                         .defaultButton = QMessageBox::No},
                        QMessageBox::No);
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Editors, CellEditing, testing::Bool(), KindName);

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
    Type(" x");
    ExpectOpen(editor, "7.26 x");
    ExpectUnchanged(editor);
  });
}

TEST_P(CellEditing, TheseKeysAndADoubleClickStartAnEditWithTheNumberAndOthersNone) {
  const std::vector<std::pair<Qt::Key, Qt::KeyboardModifiers>> others = {
      {Qt::Key_Delete, Qt::NoModifier},     {Qt::Key_F3, Qt::NoModifier},
      {Qt::Key_PageDown, Qt::NoModifier},   {Qt::Key_Shift, Qt::ShiftModifier},
      {Qt::Key_7, Qt::ControlModifier},     {Qt::Key_7, Qt::AltModifier},
      {Qt::Key_7, Qt::MetaModifier},        {Qt::Key_Return, Qt::ControlModifier},
      {Qt::Key_Space, Qt::ControlModifier}, {Qt::Key_F2, Qt::ControlModifier}};
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    for (const Qt::Key key :
         {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Backspace, Qt::Key_F2}) {
      SCOPED_TRACE(key);
      ClickCell(grid, 2, 1);
      Press(key);
      ExpectOpen(editor, Numbers()[1]);
      Press(Qt::Key_Escape);
    }
    for (int row = 1; row <= 3; ++row) {
      DoubleClickCell(grid, row, 1);
      ExpectOpen(editor, Numbers().at(static_cast<std::size_t>(row) - 1));
      Press(Qt::Key_Escape);
    }
    for (const auto& [key, modifiers] : others) {
      SCOPED_TRACE(key);
      ClickCell(grid, 2, 1);
      ExpectQuestionAt(key);
      Press(key, modifiers);
      ExpectClosed(editor);
    }
    ExpectUnchanged(editor);
  });
}

TEST_P(CellEditing, AFixedColumnTakesNoTypingAndSaysWhy) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    const Texts before = ColumnOf(grid, 0);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Delete}) {
      ClickCell(grid, 2, 0);
      ExpectQuestionAt(key);
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

TEST_P(CellEditing, EnterDownAndUpStoreTheNumberInTheFormatOfTheCell) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
      ClickCell(grid, 1, 1);
      Type("7");
      Press(key);
      ExpectBackIn(editor, grid, 1);
      EXPECT_EQ(CellOf(grid, 1, 1), Stored(1, "7"));
      // An empty text is zero.
      Type("7");
      Press(Qt::Key_Backspace);
      Press(key);
      EXPECT_EQ(CellOf(grid, 1, 1), Stored(1, "0"));
    }
    // The same number, typed again, gets the format.
    TypeCell(editor, 3, 1, HasPages() ? "1.000031" : "98.84");
    EXPECT_EQ(CellOf(grid, 3, 1), HasPages() ? "1.00003pF" : "98.8");
    // Down and Up go to the next row, if there is one.
    ClickCell(grid, 2, 1);
    for (const auto& [number, key, row] :
         {std::tuple("1", Qt::Key_Down, 3), std::tuple("2", Qt::Key_Down, 3),
          std::tuple("3", Qt::Key_Up, 2), std::tuple("4", Qt::Key_Up, 1),
          std::tuple("5", Qt::Key_Up, 1)}) {
      Type(number);
      Press(key);
      ExpectBackIn(editor, grid, row);
    }
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{Stored(1, "5"), Stored(2, "4"), Stored(3, "3")}));
    // So does Shift+Enter, upwards.
    ClickCell(grid, 2, 1);
    for (const auto& [number, key] :
         {std::pair("6", Qt::Key_Return), std::pair("7", Qt::Key_Enter)}) {
      Type(number);
      Press(key, Qt::ShiftModifier);
      ExpectBackIn(editor, grid, 1);
    }
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{Stored(1, "7"), Stored(2, "6"), Stored(3, "3")}));
  });
}

TEST_P(CellEditing, AnUntouchedTextLeavesTheCellAsItIs) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Up, Qt::Key_Backtab}) {
      for (const int row : {1, 3}) {
        DoubleClickCell(grid, row, 1);
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

TEST_P(CellEditing, AClickElsewhereAndCtrlSStore) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 1, 1);
    Type("7");
    ClickCell(grid, 3, 0);
    ExpectBackIn(editor, grid, 3, 0);
    EXPECT_EQ(CellOf(grid, 1, 1), Stored(1, "7"));
    ClickCell(grid, 1, 1);
    Type("8");
    DoubleClickCell(grid, 2, 1);
    ExpectOpen(editor, Numbers()[1]);
    EXPECT_EQ(CellOf(grid, 1, 1), Stored(1, "8"));
    // A field of the header takes the keyboard; the key of OK stores the edit, which is still open.
    Type("5");
    Fill(editor, "txtComment", "factory");
    EXPECT_EQ(Find<QPushButton>(editor, "btnOk").toolTip(),
              "Saves the data and closes this screen (Ctrl+S).");
    Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !editor.isVisible(); }));
  });
  EXPECT_EQ(tree_.Read(Path()),
            Bytes(header_, {Stored(1, "8"), HasPages() ? "1.00003pF" : "1005.0", Values()[2]}));
}

TEST_P(CellEditing, ReportsAndMarksAValueThatIsStoredDifferently) {
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    TypeCell(editor, 2, 1, "98,57");
    const std::string notice = "\"98,57\" is not a number; the cell holds \"" + Stored(2, "98") +
                               "\". Type digits with a point for the decimals.";
    const Texts notices = {CellOf(grid, 2, 0) + ", " + CellOf(grid, 0, 1) + ": " + notice};
    EXPECT_EQ(NoticesOf(editor), notices);
    const QModelIndex cell = grid.model()->index(1, 1);
    EXPECT_EQ(cell.data(Qt::AccessibleDescriptionRole).toString().toStdString(), notice);
    EXPECT_EQ(cell.data(Qt::ToolTipRole).toString().toStdString(), notice);
    EXPECT_FALSE(cell.data(Qt::DecorationRole).isNull());
    // Another such cell: the notice is about the current one.
    TypeCell(editor, 3, 1, "abc");
    EXPECT_TRUE(NoticesOf(editor).front().starts_with("Marked cell 2 of 2: "));
    Press(Qt::Key_Up);
    EXPECT_EQ(NoticesOf(editor), Texts{"Marked cell 1 of 2: " + notices[0]});
    // Outside marked cells it is about the one that was stored last.
    Press(Qt::Key_Up);
    EXPECT_TRUE(NoticesOf(editor).front().starts_with("Marked cell 2 of 2: "));
    EXPECT_EQ(NoticesOf(editor).size(), 1U);
    for (const int row : {2, 3}) {
      TypeCell(editor, row, 1, "98");
      EXPECT_TRUE(grid.model()->index(row - 1, 1).data(Qt::DecorationRole).isNull());
    }
    EXPECT_EQ(NoticesOf(editor), Texts());
  });
}

// ---- A number that cannot be stored.

TEST_P(CellEditing, TakesNoTableFromTheClipboard) {
  Edit([&](CalEditor& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Press(Qt::Key_F2);
    QGuiApplication::clipboard()->setText("50\t99\r\n");
    const auto expectRefusal = [&] {
      questions_.ExpectNotice(
          "A table cannot be pasted into an open cell. Press Enter or Escape to close the cell, "
          "then paste again.");
    };
    expectRefusal();
    Press(Qt::Key_V, Qt::ControlModifier);
    ExpectOpen(editor, Numbers()[0]);
    expectRefusal();
    Find<QLineEdit>(editor, "txtCell").paste();  // as its menu does
    ExpectOpen(editor, Numbers()[0]);
  });
}

TEST_P(CellEditing, ANumberThatIsTooLargeStaysInItsBoxWhateverTheUserDoes) {
  using Leave = std::function<void(CalEditor & editor)>;
  std::vector<Leave> ways = {
      [](CalEditor&) { Press(Qt::Key_Return); },
      [](CalEditor&) { Press(Qt::Key_Tab); },
      [](CalEditor&) { Press(Qt::Key_Down); },
      [](CalEditor& editor) { ClickCell(GridOf(editor), 3, 1); },
      [](CalEditor& editor) { Click(editor, "btnOk"); },
  };
  if (HasPages()) {
    ways.emplace_back([](CalEditor& editor) { ClickTab(editor, 3); });
  } else {
    ways.emplace_back([](CalEditor& editor) { ClickWithoutDialog(editor, "btnAddPoint"); });
    ways.emplace_back([](CalEditor& editor) { ClickWithoutDialog(editor, "btnDeletePoint"); });
  }
  Edit([&](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    for (std::size_t way = 0; way < ways.size(); ++way) {
      SCOPED_TRACE(way);
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
        EXPECT_EQ(TabsOf(editor).currentIndex(), 0);
      }
      CellBoxOf(editor).setFocus();
      Press(Qt::Key_Escape);
      ExpectBackIn(editor, grid, 2);
    }
    EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
    // Corrected, it is stored; Cancel gives it up.
    Type("9E999");
    questions_.ExpectError({"9E999"});
    Press(Qt::Key_Return);
    CellBoxOf(editor).setText("9");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 2, 1), Stored(2, "9"));
    Type("9E999");
    Click(editor, "btnCancel");
    EXPECT_FALSE(editor.isVisible());
  });
}

// ---- Tab and the keys of the table, on the table of a sensor.

using TableKeys = SensorStage;

TEST_F(TableKeys, TabHomeAndEndGoToCellsThatCanBeEdited) {
  ShowFile({.rows = ManyRows(4)}, [&](frmCalDataInput& editor) {
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
    // After a key, a click or another control Tab leaves the table.
    const std::vector<std::function<void()>> acts = {
        [] { Press(Qt::Key_Up); }, [&] { ClickCell(grid, 1, 1); },
        [&] {
          Find<QWidget>(editor, "txtComment").setFocus();
          grid.setFocus();
        }};
    const auto focused = [] { return QApplication::focusWidget()->objectName(); };
    for (const auto& act : acts) {
      ClickCell(grid, 2, 1);
      Type("93");
      Press(Qt::Key_Tab);
      act();
      Press(Qt::Key_Tab);
      EXPECT_EQ(focused(), "btnAddPoint");
    }
    // So it does at the ends of the table.
    ClickCell(grid, 4, 1);
    Type("9");
    Press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "btnAddPoint");
    ClickCell(grid, 1, 1);
    Type("8");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "txtComment");
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{"8.0", "93.0", "100.0", "9.0"}));
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

/// The place of a control on the cells of a table.
QRect PlaceIn(CalGrid& grid, QWidget& control) {
  return {control.mapTo(grid.viewport(), QPoint(0, 0)), control.size()};
}

QRect CellRect(CalGrid& grid, int row, int column = 1) {
  return grid.visualRect(grid.model()->index(row - 1, column));
}

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
    int tab;
    int column;
    Texts units;  ///< of the rows
  };
  const std::vector<Offer> offers = {{1, 3, {"%", "ppm"}}, {2, 0, {}}, {3, 2, {"%", "ppm"}}};
  EditNew("RT730A", [&](frmCalDataTabInput& editor) {
    for (const Offer& offer : offers) {
      KeyToTab(editor, offer.tab);
      for (int column = 1; column <= 4 && !CellOf(GridOf(editor), 0, column).empty(); ++column) {
        SCOPED_TRACE(testing::Message() << offer.tab << ", " << column);
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
    }
    // It shares the cell with the number.
    const auto expectShared = [&] {
      const QRect box = PlaceIn(GridOf(editor), CellBoxOf(editor));
      const QRect unit = PlaceIn(GridOf(editor), UnitBoxOf(editor));
      EXPECT_EQ(box.united(unit), CellRect(GridOf(editor), 2, 2));
      EXPECT_EQ(unit.left(), box.right() + 1);
      EXPECT_EQ(unit.height(), box.height());
      EXPECT_EQ(unit.width(), UnitBoxOf(editor).sizeHint().width());
      EXPECT_GT(box.width(), CellBoxOf(editor).fontMetrics().horizontalAdvance("0.0000"));
    };
    expectShared();
    editor.resize(editor.width() + 60, editor.height());
    Settle();
    expectShared();
  });
}

TEST_F(CellUnit, OfACellWithoutUnitIsPpm) {
  std::vector<Member> members = SetAMembers();
  members[0].rows.clear();
  WriteTemplate("RT520A", CapacitorFile({"RT520A", "TPLA0"}, members));
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
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
    Type("25");
    Choose(editor, "txtCellCmb", "ppm");
    Click(editor, "btnOk");
  });
  std::vector<Member> members = SetAMembers();
  members[0].rows[0][2] = "0.0025";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520A\SN00001)"),
            CapacitorFile({"RT520A", "00001"}, members));
}

// ---- Where the box lies.

using CellBox = SensorStage;

TEST_F(CellBox, LiesOverTheCellAndFollowsIt) {
  ShowFile({.rows = ManyRows(40)}, [&](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    const auto expectOver = [&](int row) {
      EXPECT_EQ(PlaceIn(grid, CellBoxOf(editor)), CellRect(grid, row));
    };
    const QByteArray scale = qgetenv("QT_SCALE_FACTOR");
    EXPECT_EQ(editor.devicePixelRatioF(), scale.isEmpty() ? 1.0 : scale.toDouble());
    QFont font = grid.font();
    font.setPointSize(font.pointSize() + 3);
    grid.setFont(font);
    // A cell that is out of sight is scrolled to.
    ClickCell(grid, 40, 1);
    grid.verticalScrollBar()->setValue(0);
    ASSERT_FALSE(grid.viewport()->rect().intersects(CellRect(grid, 40)));
    Type("7");
    expectOver(40);
    EXPECT_EQ(CellBoxOf(editor).font().pointSizeF(), font.pointSizeF());
    EXPECT_TRUE(grid.viewport()->rect().contains(CellBoxOf(editor).geometry()));
    Press(Qt::Key_Escape);
    // The window, the columns and the rows change their size.
    DoubleClickCell(grid, 10, 1);
    const int before = CellBoxOf(editor).width();
    editor.resize(1200, 800);
    Settle();
    expectOver(10);
    EXPECT_GT(CellBoxOf(editor).width(), before);
    grid.setColumnWidth(0, grid.columnWidth(0) + 40);
    expectOver(10);
    grid.setRowHeight(0, grid.rowHeight(0) + 9);
    expectOver(10);
    // The table is scrolled, with captions that are wider than the window.
    grid.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    grid.horizontalHeader()->setMinimumSectionSize(grid.viewport()->width());
    editor.resize(editor.width() + 1, editor.height());
    Settle();
    for (QScrollBar* bar : {grid.verticalScrollBar(), grid.horizontalScrollBar()}) {
      ASSERT_GT(bar->maximum(), 3);
      for (const int value : {1, 3, bar->maximum(), 0}) {
        bar->setValue(value);
        expectOver(10);
      }
    }
  });
}

// ---- Screen readers.

/// The visible text boxes and drop-down lists in the tree below `part`. Checks on the way that each
/// part is a child of its parent.
std::vector<QObject*> BoxesIn(QAccessibleInterface& part) {
  std::vector<QObject*> boxes;
  for (int i = 0; i < part.childCount(); ++i) {
    QAccessibleInterface* child = part.child(i);
    EXPECT_NE(child, nullptr);
    // Cells and captions are no objects.
    if (child == nullptr || child->object() == nullptr || child->state().invisible) {
      continue;
    }
    EXPECT_EQ(child->parent(), &part);
    EXPECT_EQ(part.indexOfChild(child), i);
    const bool isBox =
        child->role() == QAccessible::EditableText || child->role() == QAccessible::ComboBox;
    if (isBox) {
      boxes.push_back(child->object());
    } else {
      const auto inner = BoxesIn(*child);
      boxes.insert(boxes.end(), inner.begin(), inner.end());
    }
  }
  return boxes;
}

TEST_P(CellEditing, AScreenReaderFindsTheOpenBoxesInTheTreeOfTheTable) {
  Edit([](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    QAccessibleInterface& table = *QAccessible::queryAccessibleInterface(&grid);
    EXPECT_EQ(table.role(), QAccessible::Table);
    const int cells = table.childCount();
    ClickCell(grid, 2, 1);
    EXPECT_EQ(BoxesIn(table), std::vector<QObject*>{});
    Press(Qt::Key_F2);
    EXPECT_EQ(BoxesIn(table), std::vector<QObject*>{&CellBoxOf(editor)});
    EXPECT_EQ(table.focusChild()->object(), &CellBoxOf(editor));
    const QPoint inBox = CellBoxOf(editor).mapToGlobal(QPoint(2, 2));
    EXPECT_EQ(table.childAt(inBox.x(), inBox.y())->object(), grid.viewport());
    Press(Qt::Key_Escape);
    EXPECT_EQ(table.childCount(), cells);
    EXPECT_EQ(table.tableInterface()->cellAt(1, 1)->text(QAccessible::Name).toStdString(),
              CellOf(grid, 2, 1));
    if (HasPages()) {
      ClickCell(grid, 2, 2);
      Press(Qt::Key_F2);
      EXPECT_EQ(BoxesIn(table).size(), 2U) << "the number and its unit";
    }
  });
}

}  // namespace
}  // namespace tarvell
