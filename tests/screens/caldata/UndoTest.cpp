// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCalendarWidget>
#include <QCheckBox>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>

#include "screens/caldata/EitherEditor.h"
#include "screens/caldata/PastePreview.h"
#include "screens/caldata/frmInputPX60H.h"
#include "screens/widgets/frmInput.h"

/// Undo and redo, and where values come from.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

void Undo() {
  Press(Qt::Key_Z, Qt::ControlModifier);
}

void Redo() {
  Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
}

/// Opens the table's menu as the menu key does.
QMenu& OpenMenu(CalGrid& grid) {
  QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
  QApplication::sendEvent(&grid, &event);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  if (menu == nullptr) {
    ADD_FAILURE() << "no menu";
    std::abort();
  }
  return *menu;
}

/// The entries of the table's menu; those that are disabled are in brackets.
Texts MenuOf(CalGrid& grid) {
  QMenu& menu = OpenMenu(grid);
  Texts entries;
  for (const QAction* entry : menu.actions()) {
    const std::string text = entry->text().remove('&').toStdString();
    if (!entry->isSeparator()) {
      entries.push_back(entry->isEnabled() ? text : "(" + text + ")");
    }
  }
  menu.close();
  return entries;
}

void ChooseInMenu(CalGrid& grid, const QString& beginning) {
  QMenu& menu = OpenMenu(grid);
  for (QAction* entry : menu.actions()) {
    if (entry->text().remove('&').startsWith(beginning)) {
      QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(entry).center());
      return;
    }
  }
  ADD_FAILURE() << "no entry " << beginning.toStdString();
}

// ---- Any acts.

/// Answers Yes wherever it is offered.
class YesAlways final : public Questions {
 public:
  QMessageBox::StandardButton Ask(QWidget* /*owner*/, const Question& question) override {
    return question.buttons.testFlag(QMessageBox::Yes) ? QMessageBox::Yes : QMessageBox::Ok;
  }
  QString PickFile(QWidget* /*owner*/, FileRequest& /*request*/) override { return {}; }
  QString PickFolder(QWidget* /*owner*/, const QString& /*title*/,
                     const QString& /*dir*/) override {
    return {};
  }
};

/// Random hands on a data set of one table or of pages.
class RandomActs : public TabEditorFixture, public testing::WithParamInterface<const char*> {
 protected:
  RandomActs() {
    WriteTemplates();
    SetCurrentQuestions(&answers_);
  }

  static std::string Code() { return GetParam(); }
  static bool HasPages() { return !IsSensor() && !IsAttenuator(); }
  static bool IsSensor() { return Code() == "PX12A"; }
  static bool IsAttenuator() { return Code() == "PX60H"; }
  static std::string Path() { return R"(c:\calfactors\)" + Code() + R"(\SN12345)"; }
  static std::string AttenuatorFile() {
    return Lines({"#MODEL_NO : PX60H", "#SER_NO   : 3318A12345", "#CAL_DATE : 20010305",
                  "#CAL_NO   : C-0042", "#DUE_DATE : 20020305", "#COMMENT  : lab", "!",
                  "! Setting  /  Freq  /  CalData ", "! 50M/1000MHz are calibration points.",
                  "*  0  :   5.00E07   :   0.0000", "* 10  :   5.00E07   :  10.0000",
                  "* 10  :   1.00E09   :  10.0100", "!End"});
  }
  static std::string Bytes() {
    const SetHeader header = {Code(), "3318A12345"};
    return Code() == "RT730A"   ? ResistorFile(header, SetRRows())
           : Code() == "RT520C" ? CapacitorFile(header, SetCMembers())
           : IsAttenuator()     ? AttenuatorFile()
                                : SensorFile{.rows = ManyRows(6)}.Bytes();
  }

  int Below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

  /// Everything that is shown of the tables, with the marks of the cells.
  static Texts Shown(CalEditor& editor) {
    Texts shown;
    for (int tab = 1; tab <= (HasPages() ? TabsOf(editor).count() : 1); ++tab) {
      if (HasPages()) {
        KeyToTab(editor, tab);
        shown.push_back(TextOf(editor, "txtTabSerial"));
      }
      const QAbstractItemModel& cells = *GridOf(editor).model();
      for (int row = 0; row < cells.rowCount(); ++row) {
        for (int column = 0; column < cells.columnCount(); ++column) {
          const QModelIndex cell = cells.index(row, column);
          shown.push_back((cell.data().toString() + '|' +
                           cell.data(Qt::AccessibleTextRole).toString() + '|' +
                           cell.data(Qt::ToolTipRole).toString())
                              .toStdString());
        }
      }
    }
    return shown;
  }

  void ClickAnyCell(CalEditor& editor, int column) {
    CalGrid& grid = GridOf(editor);
    if (const int rows = grid.model()->rowCount(); rows > 0) {
      ClickCell(grid, 1 + Below(rows), column);
    } else {
      grid.setFocus();
    }
  }

  /// A column whose cells can be edited.
  static int ValueColumn() { return IsAttenuator() ? 2 : 1; }

  void Act(CalEditor& editor) {
    const int act = Below(9);
    if (act < 2) {
      ClickAnyCell(editor, 1 + Below(GridOf(editor).model()->columnCount() - 1));
      Type(QStringList({"7", "98.8", "abc", "1,5", "0.0000001"})[Below(5)]);
      Press(Below(2) == 0 ? Qt::Key_Return : Qt::Key_Down);
    } else if (act < 3) {
      QGuiApplication::clipboard()->setText(Below(2) == 0 ? "3" : "4\n5");
      ClickAnyCell(editor, ValueColumn());
      Press(Qt::Key_V, Qt::ControlModifier);
    } else if (act < 5) {
      ClickAnyCell(editor, 1);
      for (int steps = Below(8); steps > 0; --steps) {
        act == 3 ? Undo() : Redo();
      }
    } else if (act < 6) {
      ClickAnyCell(editor, 1);
      if (auto& restore = Find<QPushButton>(editor, "btnRestore"); restore.isVisible()) {
        Click(editor, "btnRestore");
      }
    } else if (HasPages()) {
      ActOnPages(editor);
    } else {
      ActOnPoints(editor, act - 6);
    }
  }

  void ActOnPoints(CalEditor& editor, int act) {
    if (act == 0) {
      AddAnyPoint(editor);
    } else if (act == 1) {
      ClickAnyCell(editor, 1);
      for (int rows = Below(3); rows > 0; --rows) {
        Press(Qt::Key_Down, Qt::ShiftModifier);
      }
      Press(Qt::Key_Delete);
    } else {
      PasteTable(editor);
    }
  }

  static void ComeBackTo(CalEditor& editor) {
    editor.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
  }

  void AddAnyPoint(CalEditor& editor) {
    if (IsAttenuator()) {
      user_.At<frmInputPX60H>([this](frmInputPX60H& dialog) {
        FillCombo(dialog, "cmbSetting", QString::number(10 * Below(9)));
        Click(dialog, "btnOk");
      });
    } else {
      user_.At<frmInput>([this](frmInput& dialog) {
        Type(QString::number(Below(9)) + ".5");
        Click(dialog, "btnOk");
      });
    }
    Click(editor, "btnAddPoint");
    ComeBackTo(editor);
  }

  /// Pastes a whole table, and lets it remove the other points or not.
  void PasteTable(CalEditor& editor) {
    QGuiApplication::clipboard()->setText(IsAttenuator() ? "0\t5E7\t0.5\n10\t3E9\t10.5"
                                                         : "0.2\t91\n50\t92\n7000\t93");
    ClickAnyCell(editor, 1);
    user_.At<PastePreview>([this](PastePreview& preview) {
      if (Below(2) == 0 && Find<QCheckBox>(preview, "chkRemove").isVisible()) {
        Press(Qt::Key_R, Qt::AltModifier);
      }
      Press(Qt::Key_Return);
    });
    Press(Qt::Key_V, Qt::ControlModifier);
    ComeBackTo(editor);
  }

  void ActOnPages(CalEditor& editor) {
    const int act = Below(4);
    if (act == 0) {
      KeyToTab(editor, 1 + Below(TabsOf(editor).count()));
    } else if (act == 1) {
      Fill(editor, "txtTabSerial", "N" + QString::number(Below(100)));
    } else if (act == 2) {
      ClickAnyCell(editor, 2);
      Press(Qt::Key_F2);
      if (UnitBoxOf(editor).isVisible()) {
        Press(Qt::Key_Tab);
        Press(Below(2) == 0 ? Qt::Key_Up : Qt::Key_Down);
      }
      Press(Qt::Key_Return);
    } else if (auto& option = Find<QCheckBox>(editor, "chkCheck"); option.isVisible()) {
      QTest::mouseClick(&option, Qt::LeftButton, {}, QPoint(8, option.height() / 2));
    }
  }

  /// Steps through the whole history.
  static void GoToEnd(CalEditor& editor, bool back) {
    constexpr int kStepLimit = 1000;
    GridOf(editor).setFocus();
    const auto isAtEnd = [&] {
      return back ? !editor.History().canUndo() : !editor.History().canRedo();
    };
    for (int step = 0; step < kStepLimit && !isAtEnd(); ++step) {
      back ? Undo() : Redo();
    }
    EXPECT_TRUE(isAtEnd());
  }

  YesAlways answers_;
  std::mt19937 random_;
};

TEST_P(RandomActs, CanAllBeUndoneAndRedone) {
  constexpr unsigned kSeeds = 4;
  constexpr int kActs = 40;
  constexpr int kActsOfDraft = 5;  // which can then be restored
  std::unique_ptr<CalEditor> editor;
  if (HasPages()) {
    editor = std::make_unique<frmCalDataTabInput>(nullptr);
  } else {
    editor = std::make_unique<frmCalDataInput>(nullptr);
  }
  gCalFiles[0].FilePath = Path();
  for (unsigned seed = 1; seed <= kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    random_.seed(seed);
    tree_.Write(Path(), Bytes());
    user_.At<CalEditor>([&](CalEditor& screen) {
      ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
      for (int act = 0; act < kActsOfDraft; ++act) {
        Act(screen);
      }
      screen.reject();
    });
    editor->SetupDat(0, Code());
    user_.At<CalEditor>([&](CalEditor& screen) {
      ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
      EXPECT_FALSE(screen.History().canUndo()) << "of the data set before";
      const Texts opened = Shown(screen);
      for (int act = 0; act < kActs; ++act) {
        Act(screen);
      }
      ClickAnyCell(screen, 1);  // stores an open edit
      GoToEnd(screen, false);
      const Texts last = Shown(screen);
      EXPECT_NE(last, opened);
      GoToEnd(screen, true);
      EXPECT_EQ(Shown(screen), opened);
      GoToEnd(screen, false);
      EXPECT_EQ(Shown(screen), last);
      GoToEnd(screen, true);
      Click(screen, "btnOk");
    });
    editor->SetupDat(0, Code());
    EXPECT_EQ(tree_.Read(Path()), Bytes());
  }
}

INSTANTIATE_TEST_SUITE_P(Models, RandomActs, testing::Values("PX12A", "PX60H", "RT520C", "RT730A"));

// ---- What the user sees.

class UndoInBothEditors : public EitherEditor {};

TEST_P(UndoInBothEditors, IsInTheMenuOfTheTableWithTheNamesOfTheSteps) {
  Edit([](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    Texts others = {"Copy", "Paste"};
    if (!HasPages()) {
      others.insert(others.end(), {"Add point...", "Delete points..."});
    }
    const auto expectMenu = [&](Texts entries) {
      entries.insert(entries.end(), others.begin(), others.end());
      EXPECT_EQ(MenuOf(grid), entries);
    };
    expectMenu({"(Undo)", "(Redo)"});
    TypeCell(editor, 2, 1, "3");
    TypeCell(editor, 3, 1, "4");
    expectMenu({"Undo typing \"4\"", "(Redo)"});
    ClickCell(grid, 1, 1);
    ChooseInMenu(grid, "Undo");
    EXPECT_EQ(ColumnOf(grid, 1), (Texts{Values()[0], Stored(2, "3"), Values()[2]}));
    ExpectBackIn(editor, grid, 3);
    expectMenu({"Undo typing \"3\"", "Redo typing \"4\""});
    Press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(CellOf(grid, 3, 1), Stored(3, "4"));
    ClickCell(grid, 3, 1);
    ChooseInMenu(grid, "Copy");
    ClickCell(grid, 1, 1);
    ChooseInMenu(grid, "Paste");
    EXPECT_EQ(CellOf(grid, 1, 1), Stored(1, "4"));
    expectMenu({"Undo paste", "(Redo)"});
  });
}

TEST_P(UndoInBothEditors, LeavesTheKeysToTheFieldsOfTheHeaderAndToAnOpenCell) {
  Edit([this](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    TypeCell(editor, 1, 1, "3");
    Fill(editor, "txtComment", "typed");
    Undo();
    EXPECT_NE(TextOf(editor, "txtComment"), "typed");
    for (int i = 0; i < 10; ++i) {
      Undo();
    }
    EXPECT_EQ(TextOf(editor, "txtComment"), header_.comment);
    for (int i = 0; i < 10; ++i) {
      Press(Qt::Key_Y, Qt::ControlModifier);
    }
    EXPECT_EQ(TextOf(editor, "txtComment"), "typed");
    Find<QComboBox>(editor, "cmbCalMonth").setFocus();
    Undo();
    EXPECT_EQ(CellOf(grid, 1, 1), Stored(1, "3"));
    ClickCell(grid, 2, 1);
    Type("45");
    Undo();
    EXPECT_TRUE(CellBoxOf(editor).isVisible());
    EXPECT_EQ(CellOf(grid, 1, 1), Stored(1, "3"));
  });
}

INSTANTIATE_TEST_SUITE_P(Editors, UndoInBothEditors, testing::Bool(), KindName);

class UndoOnPages : public TabEditorFixture {
 protected:
  UndoOnPages() { WriteTemplates(); }
};

TEST_F(UndoOnPages, ShowsThePageOfEachStep) {
  EditNew("RT520C", [](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "N4");
    TypeCell(editor, 2, 1, "3");
    Click(editor, "chkCheck");  // goes to the page before
    ClickTab(editor, 1);
    GridOf(editor).setFocus();
    EXPECT_EQ(MenuOf(GridOf(editor))[0], "Undo option");
    Undo();
    EXPECT_TRUE(Find<QCheckBox>(editor, "chkCheck").isChecked());
    EXPECT_EQ(TabsOf(editor).currentIndex(), 3);
    EXPECT_EQ(CellOf(GridOf(editor), 2, 1), "3.0000uF");
    ClickTab(editor, 1);
    GridOf(editor).setFocus();
    Undo();
    EXPECT_EQ(TabsOf(editor).currentIndex(), 3);
    EXPECT_EQ(CellOf(GridOf(editor), 2, 1), "10.0003uF");
    EXPECT_EQ(MenuOf(GridOf(editor))[0], "Undo serial number of RT528A");
    // The whole visit of the box is one step, also for the keys in the box itself.
    Find<QLineEdit>(editor, "txtTabSerial").setFocus();
    Undo();
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C004");
    Redo();
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N4");
  });
}

TEST_F(UndoOnPages, ADraftStaysOnThePageThatCannotBeStored) {
  EditNew("RT520C", [](frmCalDataTabInput& editor) { TypeCell(editor, 1, 1, "3"); });
  EditNew("RT520C", [&](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "*");
    questions_.ExpectError({"cannot be the serial number of a member"});
    Click(editor, "btnRestore");
    EXPECT_EQ(TabsOf(editor).currentIndex(), 3);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "*");
  });
}

TEST_F(UndoOnPages, StaysInTheCellWhenASerialNumberIsUndone) {
  EditNew("RT520C", [](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "N4");
    ClickCell(GridOf(editor), 2, 3);
    Undo();
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C004");
    ExpectBackIn(editor, GridOf(editor), 2, 3);
  });
}

// ---- Where values come from.

class Origins : public EitherEditor {
 protected:
  static bool LooksEntered(CalEditor& editor, int row, int column = 1) {
    const QModelIndex cell = GridOf(editor).model()->index(row - 1, column);
    const bool isItalic = cell.data(Qt::FontRole).value<QFont>().italic();
    EXPECT_EQ(isItalic, cell.data(Qt::ForegroundRole).isValid());
    const QString spoken = cell.data(Qt::AccessibleTextRole).toString();
    EXPECT_EQ(isItalic, spoken.endsWith(" (default value, not entered)")) << spoken.toStdString();
    return !isItalic;
  }

  static std::string RemarkOf(CalEditor& editor) {
    EXPECT_EQ(NoticesOf(editor), Texts());
    return Find<NoticeLine>(editor, "notices").text().toStdString();
  }

  static std::string LeftNotice(int count) {
    return std::to_string(count) + (count == 1 ? " value" : " values") +
           " and both dates are defaults that nobody has entered.";
  }
};

TEST_P(Origins, OfNewDataAreTheTemplateUntilTheValuesAreEntered) {
  New([](CalEditor& editor) {
    CalGrid& grid = GridOf(editor);
    const int all = HasPages() ? 7 * 4 : 3;
    EXPECT_EQ(RemarkOf(editor), LeftNotice(all));
    EXPECT_FALSE(LooksEntered(editor, 1));
    EXPECT_TRUE(LooksEntered(editor, 1, 0)) << "a point cannot be typed";
    // Opening a cell enters nothing; typing the text that it has does.
    ClickCell(grid, 1, 1);
    Press(Qt::Key_F2);
    Press(Qt::Key_Return);
    EXPECT_FALSE(LooksEntered(editor, 1));
    Press(Qt::Key_F2);
    const QString last = CellBoxOf(editor).text().right(1);
    Press(Qt::Key_Backspace);
    Type(last);
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 1, 1), Values()[0]);
    EXPECT_TRUE(LooksEntered(editor, 1));
    TypeCell(editor, 2, 1, ToQt(Numbers()[1]));
    EXPECT_EQ(CellOf(grid, 2, 1), Values()[1]);
    EXPECT_TRUE(LooksEntered(editor, 2));
    EXPECT_EQ(RemarkOf(editor), LeftNotice(all - 2));
    Undo();
    EXPECT_FALSE(LooksEntered(editor, 2));
    EXPECT_EQ(RemarkOf(editor), LeftNotice(all - 1));
    QGuiApplication::clipboard()->setText("3\n4");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(LooksEntered(editor, 2));
    if (!HasPages()) {
      EXPECT_EQ(RemarkOf(editor), "Both dates are defaults that nobody has entered.");
    }
  });
}

TEST_P(Origins, OfTheDatesOfNewDataAreTheTemplateUntilTheyAreEntered) {
  New([](CalEditor& editor) {
    const auto looksEntered = [&](const char* box) {
      const auto& day = Find<QLineEdit>(editor, box);
      EXPECT_EQ(day.font().italic(), day.accessibleName().endsWith("(default value, not entered)"));
      return !day.font().italic();
    };
    EXPECT_FALSE(looksEntered("txtCalDay"));
    EXPECT_FALSE(looksEntered("txtDueDay"));
    Choose(editor, "cmbCalMonth", "JUL");
    EXPECT_TRUE(looksEntered("txtCalDay"));
    EXPECT_FALSE(looksEntered("txtDueDay"));
    EXPECT_NE(RemarkOf(editor).find("and the due date are defaults"), std::string::npos);
    // Nobody looks for the template's year: the calendar begins with today.
    Find<QLineEdit>(editor, "txtDueDay").setFocus();
    Press(Qt::Key_F4);
    QWidget* popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr);
    const QDate chosen = popup->findChild<QCalendarWidget*>()->selectedDate();
    QTest::keyClick(popup->focusWidget(), Qt::Key_Return);
    EXPECT_LE(chosen.daysTo(QDate::currentDate()), 1);
    EXPECT_EQ(TextOf(editor, "txtDueYear"), chosen.toString("yyyy").toStdString());
    EXPECT_TRUE(looksEntered("txtDueDay"));
    EXPECT_EQ(RemarkOf(editor).find("date"), std::string::npos);
  });
  Edit([](CalEditor& editor) {
    EXPECT_FALSE(Find<QLineEdit>(editor, "txtCalDay").font().italic());
    EXPECT_EQ(RemarkOf(editor), "");
  });
}

TEST_P(Origins, AreCountedBesideOtherNotices) {
  New([](CalEditor& editor) {
    Fill(editor, "txtCalNo", "C 0042");
    const std::string count = LeftNotice(HasPages() ? 7 * 4 : 3) + " ";
    const auto& line = Find<NoticeLine>(editor, "notices");
    EXPECT_EQ(line.text().toStdString(), count + line.Notices().value(0).toStdString());
    TypeCell(editor, 1, 1, "1,5");
    EXPECT_TRUE(line.text().contains("nobody has entered. 1 of 2 notices"))
        << line.text().toStdString();
  });
}

INSTANTIATE_TEST_SUITE_P(Editors, Origins, testing::Bool(), KindName);

}  // namespace
}  // namespace tarvell
