// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/frmInput.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

/// Typing values into cells, on a file of four rows whose second factor has two decimals.
class CellEditing : public SensorStage {
 protected:
  CellEditing() {
    file_.rows = {{"0.10", "98.80"}, {"50.00", "100.0"}, {"100.00", "98.84"}, {"1000.00", "97.0"}};
  }

  void Show(const Act& act) { ShowFile(file_, act); }

  /// What the file holds when only the factor of row `row` has become `factor`.
  [[nodiscard]] std::string BytesWith(std::size_t row, const std::string& factor) const {
    SensorFile changed = file_;
    changed.rows.at(row - 1).second = factor;
    return changed.Bytes();
  }

  SensorFile file_;
};

QLineEdit& BoxOf(frmCalDataInput& editor) {
  return Find<QLineEdit>(editor, "txtCell");
}

/// The box is open with this text, has the keyboard, and its cursor stands behind the text.
void ExpectOpen(frmCalDataInput& editor, const QString& text) {
  const QLineEdit& box = BoxOf(editor);
  EXPECT_TRUE(box.isVisible());
  EXPECT_TRUE(box.hasFocus());
  EXPECT_EQ(box.text().toStdString(), text.toStdString());
  EXPECT_EQ(box.cursorPosition(), text.size());
  EXPECT_FALSE(box.hasSelectedText());
}

/// No edit is open, and the grid has the keyboard on this cell.
void ExpectBackIn(frmCalDataInput& editor, int row, int column = 1) {
  EXPECT_FALSE(BoxOf(editor).isVisible());
  EXPECT_TRUE(GridOf(editor).hasFocus());
  EXPECT_EQ(GridOf(editor).CurrentRow(), row);
  EXPECT_EQ(GridOf(editor).CurrentColumn(), column);
  EXPECT_TRUE(editor.isVisible());
}

/// A key that gives a text of its own, such as one of another keyboard.
void PressText(QWidget& target, const QString& text) {
  QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, text);
  QApplication::sendEvent(&target, &press);
}

// ---- Keys that start an edit.

TEST_F(CellEditing, APrintableKeyStartsTheTextWithItsCharacter) {
  Show([&](frmCalDataInput& editor) {
    for (const char* key : {"7", "0", "-", "+", ".", ",", "e", "Z", "!", "~"}) {
      SCOPED_TRACE(key);
      ClickCell(GridOf(editor), 1, 1);
      Type(key);
      ExpectOpen(editor, key);
      Press(Qt::Key_Escape);
      ExpectBackIn(editor, 1);
    }
  });
}

TEST_F(CellEditing, AKeyOutsideLatinStartsTheTextToo) {
  Show([&](frmCalDataInput& editor) {
    for (const QString& key : {QString("\u00e9"), QString("\u0161"), QString("\u6f22")}) {
      SCOPED_TRACE(key.toStdString());
      ClickCell(GridOf(editor), 1, 1);
      PressText(GridOf(editor), key);
      ExpectOpen(editor, key);
      Press(Qt::Key_Escape);
    }
  });
}

TEST_F(CellEditing, FurtherKeysGoOnInTheBox) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Type("97.26");
    ExpectOpen(editor, "97.26");
    Press(Qt::Key_Home);
    Press(Qt::Key_Delete);
    Press(Qt::Key_End);
    Press(Qt::Key_Backspace);
    ExpectOpen(editor, "7.2");
  });
}

TEST_F(CellEditing, EnterBlankBackspaceAndF2StartWithTheNumberOfTheCell) {
  Show([&](frmCalDataInput& editor) {
    const std::vector<const char*> numbers = {"98.8", "100", "98.84", "97"};
    for (const Qt::Key key :
         {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Backspace, Qt::Key_F2}) {
      for (int row = 1; row <= 4; ++row) {
        SCOPED_TRACE(testing::Message() << "key " << key << ", row " << row);
        ClickCell(GridOf(editor), row, 1);
        Press(key);
        ExpectOpen(editor, numbers.at(static_cast<std::size_t>(row - 1)));
        Press(Qt::Key_Escape);
      }
    }
    EXPECT_EQ(ColumnOf(GridOf(editor), 1),
              (std::vector<std::string>{"98.80", "100.0", "98.84", "97.0"}));
  });
}

TEST_F(CellEditing, ADoubleClickStartsWithTheNumberOfTheCell) {
  Show([&](frmCalDataInput& editor) {
    DoubleClickCell(GridOf(editor), 1, 1);
    ExpectOpen(editor, "98.8");
  });
}

TEST_F(CellEditing, KeysWithoutTextAndShortcutsStartNothing) {
  const std::vector<std::pair<Qt::Key, Qt::KeyboardModifiers>> keys = {
      {Qt::Key_Delete, Qt::NoModifier},      {Qt::Key_Insert, Qt::NoModifier},
      {Qt::Key_F1, Qt::NoModifier},          {Qt::Key_F5, Qt::NoModifier},
      {Qt::Key_Home, Qt::NoModifier},        {Qt::Key_Left, Qt::NoModifier},
      {Qt::Key_PageDown, Qt::NoModifier},    {Qt::Key_Shift, Qt::ShiftModifier},
      {Qt::Key_Control, Qt::NoModifier},     {Qt::Key_CapsLock, Qt::NoModifier},
      {Qt::Key_Menu, Qt::NoModifier},        {Qt::Key_7, Qt::ControlModifier},
      {Qt::Key_C, Qt::ControlModifier},      {Qt::Key_A, Qt::ControlModifier},
      {Qt::Key_7, Qt::AltModifier},          {Qt::Key_F2, Qt::ControlModifier},
      {Qt::Key_Return, Qt::ControlModifier}, {Qt::Key_Space, Qt::ControlModifier}};
  Show([&](frmCalDataInput& editor) {
    for (const auto& [key, modifiers] : keys) {
      SCOPED_TRACE(key);
      ClickCell(GridOf(editor), 2, 1);
      Press(key, modifiers);
      EXPECT_FALSE(BoxOf(editor).isVisible());
      ASSERT_TRUE(editor.isVisible());
    }
    EXPECT_EQ(ColumnOf(GridOf(editor), 1),
              (std::vector<std::string>{"98.80", "100.0", "98.84", "97.0"}));
  });
}

TEST_F(CellEditing, TheFrequencyColumnIsNeverTyped) {
  Show([&](frmCalDataInput& editor) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Backspace,
                              Qt::Key_7, Qt::Key_F2, Qt::Key_Delete}) {
      SCOPED_TRACE(key);
      ClickCell(GridOf(editor), 2, 0);
      Press(key);
      EXPECT_FALSE(BoxOf(editor).isVisible());
      ASSERT_TRUE(editor.isVisible()) << "the key pressed the default button";
    }
    DoubleClickCell(GridOf(editor), 2, 0);
    EXPECT_FALSE(BoxOf(editor).isVisible());
    EXPECT_EQ(ColumnOf(GridOf(editor), 0),
              (std::vector<std::string>{"0.10", "50.00", "100.00", "1000.00"}));
  });
}

TEST_F(CellEditing, AnEmptyTableHasNothingToEdit) {
  file_.rows = {};
  Show([&](frmCalDataInput& editor) {
    GridOf(editor).setFocus();
    for (const Qt::Key key : {Qt::Key_7, Qt::Key_Return, Qt::Key_Space}) {
      Press(key);
      EXPECT_FALSE(BoxOf(editor).isVisible());
      EXPECT_TRUE(editor.isVisible());
    }
  });
}

// ---- Keys that end an edit.

TEST_F(CellEditing, EnterStoresTheNumberWithOneDecimal) {
  const std::vector<std::pair<const char*, const char*>> typed = {
      {"7", "7.0"},      {"97.26", "97.3"}, {"99.96", "100.0"}, {"1E2", "100.0"},
      {"-5.04", "-5.0"}, {"abc", "0.0"},    {"98.8x", "98.8"},  {".5", "0.5"}};
  Show([&](frmCalDataInput& editor) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
      for (const auto& [text, stored] : typed) {
        SCOPED_TRACE(text);
        ClickCell(GridOf(editor), 1, 1);
        Type(text);
        Press(key);
        EXPECT_EQ(CellOf(GridOf(editor), 1, 1), stored);
        ExpectBackIn(editor, 1);
      }
    }
  });
}

TEST_F(CellEditing, AnEmptiedTextIsZero) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Type("7");
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "0.0");
    ExpectBackIn(editor, 1);
  });
}

TEST_F(CellEditing, TypingTheSameNumberFormatsIt) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 4, 1);
    Type("97");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 4, 1), "97.0");
    ClickCell(GridOf(editor), 3, 1);
    Type("98.84");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 3, 1), "98.8");
  });
}

TEST_F(CellEditing, ASingleTypedCharacterIsStoredLikeAnyText) {
  file_.rows.at(0).second = "7";
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Type("7");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "7.0");
  });
}

TEST_F(CellEditing, EscapeLeavesTheCellAndTheScreen) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Type("7");
    Press(Qt::Key_Escape);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "98.80");
    ExpectBackIn(editor, 1);
    // The next edit starts afresh.
    Press(Qt::Key_Return);
    ExpectOpen(editor, "98.8");
  });
}

TEST_F(CellEditing, DownStoresAndGoesToTheNextRowButNotBelowTheLast) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 3, 1);
    Type("1");
    Press(Qt::Key_Down);
    EXPECT_EQ(CellOf(GridOf(editor), 3, 1), "1.0");
    ExpectBackIn(editor, 4);
    Type("2");
    Press(Qt::Key_Down);
    EXPECT_EQ(CellOf(GridOf(editor), 4, 1), "2.0");
    ExpectBackIn(editor, 4);
  });
}

TEST_F(CellEditing, UpStoresAndGoesToTheRowBeforeButNotAboveTheFirst) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 1);
    Type("2");
    Press(Qt::Key_Up);
    EXPECT_EQ(CellOf(GridOf(editor), 2, 1), "2.0");
    ExpectBackIn(editor, 1);
    Type("1");
    Press(Qt::Key_Up);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "1.0");
    ExpectBackIn(editor, 1);
    EXPECT_EQ(CellOf(GridOf(editor), 0, 1), "Calibration factor[%]");
  });
}

TEST_F(CellEditing, TabStoresAndGoesToTheNextCellThatTakesTyping) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    for (const char* factor : {"91", "92", "93"}) {
      Type(factor);
      Press(Qt::Key_Tab);
    }
    ExpectBackIn(editor, 4);
    Type("94");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    ExpectBackIn(editor, 3);
    EXPECT_EQ(ColumnOf(GridOf(editor), 1),
              (std::vector<std::string>{"91.0", "92.0", "93.0", "94.0"}));
  });
}

TEST_F(CellEditing, TabGoesOnFromCellToCellUntilAnotherKey) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Type("91");
    Press(Qt::Key_Tab);
    Press(Qt::Key_Tab);
    ExpectBackIn(editor, 3);
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    ExpectBackIn(editor, 2);
    Type("92");
    Press(Qt::Key_Tab);
    Press(Qt::Key_Down);
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "btnAddPoint");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1),
              (std::vector<std::string>{"91.0", "92.0", "98.84", "97.0"}));
  });
}

TEST_F(CellEditing, TabLeavesTheTableAtItsEnds) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 4, 1);
    Type("9");
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "btnAddPoint");
    ClickCell(GridOf(editor), 1, 1);
    Type("8");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "txtComment");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1),
              (std::vector<std::string>{"8.0", "100.0", "98.84", "9.0"}));
  });
}

TEST_F(CellEditing, HomeAndEndGoToCellsThatTakeTyping) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 3, 1);
    Press(Qt::Key_Home, Qt::ControlModifier);
    ExpectBackIn(editor, 1);
    Press(Qt::Key_End, Qt::ControlModifier);
    ExpectBackIn(editor, 4);
    Press(Qt::Key_Home);
    ExpectBackIn(editor, 4);
  });
}

TEST_F(CellEditing, TypingOnAFixedCellIsReportedAndChangesNothing) {
  Show([&](frmCalDataInput& editor) {
    const NoticeLine& notices = Find<NoticeLine>(editor, "notices");
    ClickCell(GridOf(editor), 2, 0);
    Type("5");
    EXPECT_EQ(notices.Notices(),
              QStringList{"Nothing was typed: the column \"Frequency  [MHz]\" is fixed. Add or "
                          "delete a calibration point to change it."});
    EXPECT_EQ(notices.text(), notices.Notices().first());
    ExpectBackIn(editor, 2, 0);
    Press(Qt::Key_Right);
    EXPECT_EQ(notices.Notices(), QStringList());
  });
}

TEST_F(CellEditing, AValueThatIsStoredDifferentlyIsReportedAndMarkedUntilItIsEdited) {
  Show([&](frmCalDataInput& editor) {
    const NoticeLine& notices = Find<NoticeLine>(editor, "notices");
    ClickCell(GridOf(editor), 2, 1);
    Type("98,57");
    Press(Qt::Key_Return);
    const QString notice =
        "\"98,57\" is not a number; the cell holds \"98.0\". Type digits with a point for the "
        "decimals.";
    EXPECT_EQ(notices.Notices(), QStringList{"50.00, Calibration factor[%]: " + notice});
    EXPECT_FALSE(GridOf(editor).hasFocus() && notices.hasFocus());
    const auto mark = [&](int row) {
      return GridOf(editor).model()->index(row - 1, 1).data(Qt::AccessibleDescriptionRole);
    };
    EXPECT_EQ(mark(2), notice);
    EXPECT_FALSE(GridOf(editor).model()->index(1, 1).data(Qt::DecorationRole).isNull());
    // The mark moves with its row.
    AddPoint(editor, "20", "MHz");
    EXPECT_EQ(mark(2), "");
    EXPECT_EQ(mark(3), notice);
    EXPECT_EQ(notices.Notices(), QStringList{"50.00, Calibration factor[%]: " + notice});
    ClickCell(GridOf(editor), 1, 1);
    DeletePoint(editor, "0.1MHz", QMessageBox::Yes);
    EXPECT_EQ(mark(2), notice);
    ClickCell(GridOf(editor), 2, 1);
    Type("98.57");
    Press(Qt::Key_Return);
    EXPECT_EQ(mark(2), "");
    EXPECT_EQ(notices.Notices(), QStringList());
    EXPECT_EQ(notices.text(), "");
  });
}

TEST_F(CellEditing, AMarkGoesWithItsRow) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 3, 1);
    Type("abc");
    Press(Qt::Key_Return);
    EXPECT_FALSE(Find<NoticeLine>(editor, "notices").Notices().isEmpty());
    DeletePoint(editor, "100MHz", QMessageBox::Yes);
    EXPECT_EQ(Find<NoticeLine>(editor, "notices").Notices(), QStringList());
  });
}

TEST_F(CellEditing, AWholeColumnIsTypedByTheKeyboardAlone) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    for (const char* factor : {"91", "92", "93", "94"}) {
      Type(factor);
      Press(Qt::Key_Down);
    }
    EXPECT_EQ(ColumnOf(GridOf(editor), 1),
              (std::vector<std::string>{"91.0", "92.0", "93.0", "94.0"}));
  });
}

// ---- An untouched edit.

TEST_F(CellEditing, AnUntouchedTextLeavesTheCellAsItWas) {
  Show([&](frmCalDataInput& editor) {
    for (const Qt::Key key :
         {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Tab, Qt::Key_Up, Qt::Key_Down, Qt::Key_Escape}) {
      SCOPED_TRACE(key);
      for (const int row : {1, 3}) {
        ClickCell(GridOf(editor), row, 1);
        Press(Qt::Key_Return);
        EXPECT_TRUE(BoxOf(editor).isVisible());
        Press(key);
        EXPECT_FALSE(BoxOf(editor).isVisible());
      }
    }
    DoubleClickCell(GridOf(editor), 3, 1);
    ClickCell(GridOf(editor), 1, 1);
    EXPECT_EQ(ColumnOf(GridOf(editor), 1),
              (std::vector<std::string>{"98.80", "100.0", "98.84", "97.0"}));
  });
}

TEST_F(CellEditing, AnUntouchedEditThatOkEndsSavesTheTextAsItWas) {
  Show([&](frmCalDataInput& editor) {
    DoubleClickCell(GridOf(editor), 3, 1);
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

// ---- Other ways out of an edit.

TEST_F(CellEditing, AClickElsewhereInTheGridStores) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Type("7");
    ClickCell(GridOf(editor), 3, 1);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "7.0");
    EXPECT_EQ(CellOf(GridOf(editor), 3, 1), "98.84");
    ExpectBackIn(editor, 3);
    Type("8");
    ClickCell(GridOf(editor), 2, 0);
    EXPECT_EQ(CellOf(GridOf(editor), 3, 1), "8.0");
    ExpectBackIn(editor, 2, 0);
  });
}

TEST_F(CellEditing, ADoubleClickElsewhereStoresAndStartsThere) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Type("7");
    DoubleClickCell(GridOf(editor), 2, 1);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "7.0");
    ExpectOpen(editor, "100");
  });
}

TEST_F(CellEditing, OkStoresAnOpenEdit) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 4, 1);
    Type("96.04");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(kPath), BytesWith(4, "96.0"));
}

TEST_F(CellEditing, OkStoresAnEditThatWasLeftForAnotherBox) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 4, 1);
    Type("96");
    Fill(editor, "txtComment", "factory");
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(kPath), BytesWith(4, "96.0"));
}

TEST_F(CellEditing, CancelDropsAnOpenEdit) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 4, 1);
    Type("96");
    Click(editor, "btnCancel");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
  ShowAgain("PX12A", [&](frmCalDataInput& editor) {
    EXPECT_FALSE(BoxOf(editor).isVisible()) << "the edit of the last time is still open";
    EXPECT_EQ(CellOf(GridOf(editor), 4, 1), "97.0");
  });
}

TEST_F(CellEditing, AddingAPointStoresTheEditBeforeTheRowsMove) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 3, 1);
    Type("7");
    AddPoint(editor, "10", "MHz");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0),
              (std::vector<std::string>{"0.10", "10.00", "50.00", "100.00", "1000.00"}));
    EXPECT_EQ(ColumnOf(GridOf(editor), 1),
              (std::vector<std::string>{"98.80", "100.0", "100.0", "7.0", "97.0"}));
    ExpectBackIn(editor, 2);
  });
}

TEST_F(CellEditing, DeletingAPointStoresTheEditBeforeTheQuestion) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 3, 1);
    Type("7");
    DeletePoint(editor, "100MHz", QMessageBox::No);
    EXPECT_EQ(CellOf(GridOf(editor), 3, 1), "7.0");
    EXPECT_FALSE(BoxOf(editor).isVisible());
    ClickCell(GridOf(editor), 3, 1);
    Type("8");
    DeletePoint(editor, "100MHz", QMessageBox::Yes);
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (std::vector<std::string>{"98.80", "100.0", "97.0"}));
    EXPECT_FALSE(BoxOf(editor).isVisible());
  });
}

// ---- A number that cannot be stored.

class TooLargeANumber : public CellEditing {
 protected:
  /// Types the number into row 2 and leaves it by `leave`: one message, and the edit is as it was.
  void ExpectRefused(const std::function<void(frmCalDataInput& editor)>& leave) {
    Show([&](frmCalDataInput& editor) {
      ClickCell(GridOf(editor), 2, 1);
      Type("9E999");
      questions_.ExpectError({"9E999", "too large"});
      leave(editor);
      ASSERT_TRUE(editor.isVisible());
      ExpectOpen(editor, "9E999");
      EXPECT_EQ(GridOf(editor).CurrentRow(), 2);
      EXPECT_EQ(GridOf(editor).CurrentColumn(), 1);
      EXPECT_EQ(ColumnOf(GridOf(editor), 1),
                (std::vector<std::string>{"98.80", "100.0", "98.84", "97.0"}));
      // Corrected, it is stored.
      for (int i = 0; i < 3; ++i) {
        Press(Qt::Key_Backspace);
      }
      Press(Qt::Key_Backspace);
      Press(Qt::Key_Return);
      EXPECT_EQ(CellOf(GridOf(editor), 2, 1), "9.0");
      ExpectBackIn(editor, 2);
    });
    EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
  }
};

TEST_F(TooLargeANumber, IsToldOnEnter) {
  ExpectRefused([](frmCalDataInput&) { Press(Qt::Key_Return); });
}

TEST_F(TooLargeANumber, IsToldOnTab) {
  ExpectRefused([](frmCalDataInput&) { Press(Qt::Key_Tab); });
}

TEST_F(TooLargeANumber, IsToldOnUp) {
  ExpectRefused([](frmCalDataInput&) { Press(Qt::Key_Up); });
}

TEST_F(TooLargeANumber, IsToldOnDown) {
  ExpectRefused([](frmCalDataInput&) { Press(Qt::Key_Down); });
}

TEST_F(TooLargeANumber, IsToldOnceOnAClickElsewhereInTheGrid) {
  ExpectRefused([](frmCalDataInput& editor) { ClickCell(GridOf(editor), 4, 1); });
}

TEST_F(TooLargeANumber, IsToldOnOk) {
  ExpectRefused([](frmCalDataInput& editor) {
    Click(editor, "btnOk");
    BoxOf(editor).setFocus();
    BoxOf(editor).end(false);
  });
}

TEST_F(TooLargeANumber, IsToldBeforeAPointIsAskedFor) {
  ExpectRefused([](frmCalDataInput& editor) {
    Click(editor, "btnAddPoint");
    BoxOf(editor).setFocus();
    BoxOf(editor).end(false);
  });
}

TEST_F(TooLargeANumber, IsToldBeforeAPointIsDeleted) {
  ExpectRefused([](frmCalDataInput& editor) {
    Click(editor, "btnDeletePoint");
    BoxOf(editor).setFocus();
    BoxOf(editor).end(false);
  });
}

TEST_F(TooLargeANumber, IsGivenUpWithEscape) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 1);
    Type("9E999");
    questions_.ExpectError({"9E999"});
    Press(Qt::Key_Return);
    Press(Qt::Key_Escape);
    EXPECT_EQ(CellOf(GridOf(editor), 2, 1), "100.0");
    ExpectBackIn(editor, 2);
  });
}

TEST_F(TooLargeANumber, DoesNotKeepTheScreenFromBeingCancelled) {
  Show([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 1);
    Type("9E999");
    Click(editor, "btnCancel");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

// ---- Where the box lies.

class CellBox : public CellEditing {
 protected:
  CellBox() { file_.rows = ManyRows(40); }

  static void ExpectOverCell(frmCalDataInput& editor, int row, int column = 1) {
    auto& grid = GridOf(editor);
    const QLineEdit& box = BoxOf(editor);
    const QRect cell = grid.visualRect(grid.model()->index(row - 1, column));
    ASSERT_TRUE(box.isVisible());
    ASSERT_FALSE(cell.isEmpty());
    EXPECT_EQ(QRect(box.mapToGlobal(QPoint(0, 0)), box.size()),
              QRect(grid.viewport()->mapToGlobal(cell.topLeft()), cell.size()))
        << "the box lies at " << box.x() << ", " << box.y() << " and the cell at " << cell.x()
        << ", " << cell.y();
  }
};

TEST_F(CellBox, IsShownAtTheScaleThatWasAskedFor) {
  Show([&](frmCalDataInput& editor) {
    const QByteArray scale = qgetenv("QT_SCALE_FACTOR");
    EXPECT_EQ(editor.devicePixelRatioF(), scale.isEmpty() ? 1.0 : scale.toDouble());
  });
}

TEST_F(CellBox, LiesExactlyOverTheCell) {
  Show([&](frmCalDataInput& editor) {
    for (const int row : {1, 2, 5, 39, 40}) {
      SCOPED_TRACE(row);
      DoubleClickCell(GridOf(editor), row, 1);
      ExpectOverCell(editor, row);
      Press(Qt::Key_Escape);
    }
  });
}

TEST_F(CellBox, HasTheFontOfTheCell) {
  Show([&](frmCalDataInput& editor) {
    QFont font = GridOf(editor).font();
    font.setPointSize(font.pointSize() + 3);
    GridOf(editor).setFont(font);
    DoubleClickCell(GridOf(editor), 1, 1);
    EXPECT_EQ(BoxOf(editor).font().pointSizeF(), font.pointSizeF());
    EXPECT_EQ(BoxOf(editor).font().family(), font.family());
    ExpectOverCell(editor, 1);
  });
}

TEST_F(CellBox, IsScrolledIntoViewWhenItOpens) {
  Show([&](frmCalDataInput& editor) {
    auto& grid = GridOf(editor);
    ClickCell(grid, 40, 1);
    grid.verticalScrollBar()->setValue(0);
    ASSERT_FALSE(grid.viewport()->rect().intersects(grid.visualRect(grid.model()->index(39, 1))));
    Type("7");
    ExpectOverCell(editor, 40);
    EXPECT_TRUE(grid.viewport()->rect().contains(BoxOf(editor).geometry()));
  });
}

TEST_F(CellBox, FollowsVerticalScrolling) {
  Show([&](frmCalDataInput& editor) {
    auto& grid = GridOf(editor);
    DoubleClickCell(grid, 10, 1);
    QScrollBar& bar = *grid.verticalScrollBar();
    ASSERT_GT(bar.maximum(), 3);
    bar.setValue(0);
    const int before = BoxOf(editor).y();
    for (const int value : {1, 3, bar.maximum(), 2, 0}) {
      SCOPED_TRACE(value);
      bar.setValue(value);
      ExpectOverCell(editor, 10);
    }
    bar.setValue(2);
    EXPECT_LT(BoxOf(editor).y(), before);
    EXPECT_EQ(BoxOf(editor).text(), "100");
  });
}

TEST_F(CellBox, FollowsTheMouseWheel) {
  Show([&](frmCalDataInput& editor) {
    auto& grid = GridOf(editor);
    DoubleClickCell(grid, 10, 1);
    const int before = BoxOf(editor).y();
    const QPointF place = grid.viewport()->rect().center();
    QWheelEvent wheel(place, grid.viewport()->mapToGlobal(place), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(grid.viewport(), &wheel);
    EXPECT_LT(BoxOf(editor).y(), before);
    ExpectOverCell(editor, 10);
  });
}

TEST_F(CellBox, FollowsHorizontalScrolling) {
  Show([&](frmCalDataInput& editor) {
    auto& grid = GridOf(editor);
    grid.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    // Captions that long keep their columns wider than the window.
    grid.horizontalHeader()->setMinimumSectionSize(grid.viewport()->width());
    editor.resize(editor.width() + 1, editor.height());
    Settle();
    DoubleClickCell(grid, 2, 1);
    ExpectOverCell(editor, 2);
    QScrollBar& bar = *grid.horizontalScrollBar();
    ASSERT_GT(bar.maximum(), 30);
    for (const int value : {30, bar.maximum(), 0, 7}) {
      SCOPED_TRACE(value);
      bar.setValue(value);
      ExpectOverCell(editor, 2);
    }
  });
}

TEST_F(CellBox, FollowsTheSizeOfTheWindow) {
  Show([&](frmCalDataInput& editor) {
    DoubleClickCell(GridOf(editor), 3, 1);
    const int before = BoxOf(editor).width();
    for (const QSize size : {QSize(1000, 800), QSize(1200, 500), QSize(700, 700)}) {
      SCOPED_TRACE(size.width());
      editor.resize(size);
      Settle();
      ExpectOverCell(editor, 3);
    }
    editor.resize(1000, 800);
    Settle();
    EXPECT_GT(BoxOf(editor).width(), before);
  });
}

TEST_F(CellBox, FollowsTheWidthOfTheColumns) {
  Show([&](frmCalDataInput& editor) {
    auto& grid = GridOf(editor);
    DoubleClickCell(grid, 3, 1);
    const int x = BoxOf(editor).x();
    grid.setColumnWidth(0, grid.columnWidth(0) + 40);
    ExpectOverCell(editor, 3);
    EXPECT_EQ(BoxOf(editor).x(), x + 40);
    grid.setColumnWidth(1, 77);
    ExpectOverCell(editor, 3);
    grid.setRowHeight(0, grid.rowHeight(0) + 9);
    ExpectOverCell(editor, 3);
    grid.setRowHeight(2, grid.rowHeight(2) + 5);
    ExpectOverCell(editor, 3);
  });
}

TEST_F(CellBox, TheCaptionsStayInPlaceWhileTheTableScrolls) {
  Show([&](frmCalDataInput& editor) {
    auto& grid = GridOf(editor);
    const QHeaderView& header = *grid.horizontalHeader();
    const QRect before = header.geometry();
    const int firstRow = grid.visualRect(grid.model()->index(0, 0)).top();
    grid.verticalScrollBar()->setValue(grid.verticalScrollBar()->maximum());
    ASSERT_LT(grid.visualRect(grid.model()->index(0, 0)).top(), firstRow);
    EXPECT_TRUE(header.isVisible());
    EXPECT_EQ(header.geometry(), before);
    EXPECT_LE(header.geometry().bottom(), grid.viewport()->geometry().top());
    EXPECT_EQ(CellOf(grid, 0, 0), "Frequency  [MHz]");
    EXPECT_EQ(CellOf(grid, 0, 1), "Calibration factor[%]");
    for (int column = 0; column < 2; ++column) {
      const QRect cell = grid.visualRect(grid.model()->index(39, column));
      EXPECT_EQ(header.sectionViewportPosition(column), cell.left()) << column;
    }
  });
}

}  // namespace
}  // namespace tarvell
