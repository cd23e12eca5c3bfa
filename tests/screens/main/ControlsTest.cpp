// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QtWidgets>

#include "screens/caldata/TabEditorFixture.h"
#include "screens/widgets/DeliberateChoice.h"
#include "screens/widgets/FileTextValidator.h"
#include "screens/widgets/UpDown.h"
#include "screens/widgets/frmInput.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

// ---- A drop-down list.

void TurnWheelOver(QWidget& box) {
  const QPointF centre = box.rect().center();
  QWheelEvent wheel(centre, box.mapToGlobal(centre), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&box, &wheel);
}

/// A list of three entries, editable or not, and a box that has the focus.
class DeliberateChoice : public testing::TestWithParam<bool> {
 protected:
  DeliberateChoice() {
    auto* layout = new QVBoxLayout(&window_);
    box_.setEditable(GetParam());
    box_.addItems({"one", "two", "three"});
    layout->addWidget(&box_);
    layout->addWidget(&other_);
    ChangeOnlyDeliberately(&box_);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    other_.setFocus();
  }
  QWidget window_;
  QComboBox& box_ = *new QComboBox(&window_);  // the window owns them
  QLineEdit& other_ = *new QLineEdit(&window_);
};

TEST_P(DeliberateChoice, IsMadeByTheWheelWithTheFocusAndByTheLeftButtonInTheOpenList) {
  TurnWheelOver(box_);
  EXPECT_EQ(box_.currentText(), "one");
  box_.setFocus();
  TurnWheelOver(box_);
  EXPECT_EQ(box_.currentText(), "two");
  Press(Qt::Key_Down, Qt::AltModifier);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(box_.view()->window()));
  // Immediately after the list opens, a release counts as part of the click that opened it.
  QTest::qWait(QApplication::doubleClickInterval() + 50);
  const QPoint third = box_.view()->visualRect(box_.model()->index(2, 0)).center();
  for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
    QTest::mouseClick(box_.view()->viewport(), button, {}, third);
    EXPECT_EQ(box_.currentText(), "two");
    EXPECT_TRUE(box_.view()->isVisible());
  }
  QTest::mouseClick(box_.view()->viewport(), Qt::LeftButton, {}, third);
  EXPECT_EQ(box_.currentText(), "three");
}

INSTANTIATE_TEST_SUITE_P(Lists, DeliberateChoice, testing::Bool(),
                         [](const auto& tested) { return tested.param ? "Editable" : "Fixed"; });

using UnitOfACell = TabEditorFixture;

TEST_F(UnitOfACell, TheWheelOverTheUnitOfAnOpenCellChangesNothing) {
  WriteTemplates();
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ClickCell(GridOf(editor), 1, 2);
    Type("12");
    TurnWheelOver(UnitBoxOf(editor));
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "12 ppm");
  });
}

// ---- A number with its spinner.

/// A number's box with its spinner, from 1 to 31.
class Spinner : public testing::Test {
 protected:
  Spinner() {
    box_->setObjectName("txtDay");
    auto* layout = new QHBoxLayout(&screen_);
    layout->addWidget(box_);
    layout->addWidget(spinner_);
    spinner_->SetBuddy(box_);
    spinner_->SetRange(1, 31);
    spinner_->SetValue(5);
    screen_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&screen_));
  }

  void ClickArrow(const QString& name, int times = 1) {
    for (int i = 0; i < times; ++i) {
      Click(*spinner_, name);
    }
  }

  void ExpectBox(const char* text) const { EXPECT_EQ(box_->text(), text); }

  QWidget screen_;
  QLineEdit* box_ = new QLineEdit(&screen_);  // the screen owns them
  UpDown* spinner_ = new UpDown(&screen_);
};

TEST_F(Spinner, ArrowsAndKeysStepByOneWithinTheRange) {
  for (const char* arrow : {"up", "down"}) {
    EXPECT_GT(Find<QToolButton>(*spinner_, arrow).height(), 3);
  }
  ExpectBox("5");
  box_->setFocus();
  ClickArrow("up");
  ExpectBox("6");
  EXPECT_TRUE(box_->hasFocus());
  ClickArrow("down", 10);
  ExpectBox("1");
  ClickArrow("up", 40);
  ExpectBox("31");
  Press(Qt::Key_Up);
  ExpectBox("31");
  Press(Qt::Key_Down);
  ExpectBox("30");
  spinner_->SetValue(40);
  ExpectBox("31");
  spinner_->SetValue(-1);
  ExpectBox("1");
}

TEST_F(Spinner, FollowsTheTypedTextWithoutCorrectingIt) {
  struct Step {
    const char* typed;
    int value;
    const char* afterUp;
  };
  for (const Step& step : {Step{"17", 17, "18"}, Step{" 9 ", 9, "10"}, Step{"45", 31, "31"},
                           Step{"-8", 1, "2"}, Step{"abc", 2, "3"}, Step{"", 3, "4"}}) {
    Fill(screen_, "txtDay", step.typed);
    ExpectBox(step.typed);
    EXPECT_EQ(spinner_->Value(), step.value) << step.typed;
    ClickArrow("up");
    ExpectBox(step.afterUp);
  }
}

TEST_F(Spinner, ANewMaximumLeavesTheBoxAndLimitsTheValue) {
  Fill(screen_, "txtDay", "31");
  spinner_->SetMaximum(28);
  ExpectBox("31");
  EXPECT_EQ(spinner_->Value(), 28);
  ClickArrow("up");
  ExpectBox("28");
  spinner_->SetMaximum(31);
  ClickArrow("up");
  ExpectBox("29");
}

// ---- The dialog for one line.

class InputDialog : public testing::Test {
 protected:
  InputDialog() {
    dialog_.setWindowTitle("A title");
    dialog_.SetCaption("&Prompt");
    dialog_.SetUnit("MHz");
  }

  /// Shows the dialog, in which the user types 7; `close` closes it.
  void Run(const std::function<void(frmInput& dialog)>& close) {
    user_.At<frmInput>([&](frmInput& dialog) {
      EXPECT_EQ(TextOf(dialog, "txtText"), "");
      EXPECT_TRUE(Find<QLineEdit>(dialog, "txtText").hasFocus());
      Type(" 7 ");
      close(dialog);
      EXPECT_FALSE(dialog.isVisible());
    });
    dialog_.exec();
  }

  User user_;
  frmInput dialog_{nullptr};
};

TEST_F(InputDialog, OkGivesTheLineAndTheUnit) {
  Run([](frmInput& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "A title");
    EXPECT_EQ(PlainCaption(Find<QLabel>(dialog, "lblCaption").text()), "&Prompt");
    EXPECT_EQ(ComboEntries(dialog, "cmbUnit"), (std::vector<std::string>{"GHz", "MHz", "KHz"}));
    EXPECT_EQ(dialog.findChildren<QPushButton*>().size(), 1) << "there is no cancel button";
    EXPECT_EQ(PlainCaption(Find<QPushButton>(dialog, "btnOk").text()), "Ok");
    EXPECT_EQ(ComboText(dialog, "cmbUnit"), "MHz");
    Choose(dialog, "cmbUnit", "GHz");
    Press(Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(Find<QLineEdit>(dialog, "txtText").hasFocus()) << "the key of the prompt";
    Click(dialog, "btnOk");
  });
  EXPECT_EQ(dialog_.Text(), " 7 ");
  EXPECT_EQ(dialog_.Unit(), "GHz");
  dialog_.SetUnit("Hz");
  EXPECT_EQ(dialog_.Unit(), "GHz") << "an unknown unit changes nothing";
}

TEST_F(InputDialog, EscapeAndTheFrameEmptyTheLineAndEnterIsOk) {
  dialog_.HideUnit();
  Run([](frmInput&) { Press(Qt::Key_Escape); });
  EXPECT_EQ(dialog_.Text(), "");
  Run([](frmInput& dialog) { dialog.close(); });
  EXPECT_EQ(dialog_.Text(), "");
  Run([](frmInput& dialog) {
    EXPECT_FALSE(Find<QComboBox>(dialog, "cmbUnit").isVisible());
    Press(Qt::Key_Return);
  });
  EXPECT_EQ(dialog_.Text(), " 7 ");
}

// ---- A text box for what files can hold.

/// A box with the text "ab" and the cursor at its end.
class FileTextBox : public testing::Test {
 protected:
  FileTextBox() {
    FileTextValidator::Attach(&box_);
    box_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&box_));
    box_.setFocus();
    box_.setText("ab");
  }

  void Paste(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(&box_, Qt::Key_V, Qt::ControlModifier);
    Settle();
  }

  void ExpectRefusal(const std::string& name) {
    questions_.ExpectError(
        {name, "cannot be stored in a data file", "The text was left as it was"});
  }

  void ExpectText(const QString& text) const {
    EXPECT_EQ(box_.text().toStdString(), text.toStdString());
  }

  ScriptedQuestions questions_;
  QLineEdit box_;
};

TEST_F(FileTextBox, RefusesATableAndSaysWhereItBelongs) {
  questions_.ExpectError(
      {"A table of 2 lines cannot be pasted into a field.", "click a cell of their table"});
  Paste("50\t99\n60\t98\n");
  ExpectText("ab");
}

TEST_F(FileTextBox, TakesThePrintableCharactersOfTheFilesInAnyNumber) {
  // The first and the last of ASCII, of the bytes A0 to FF and of the bytes 80 to 9F.
  const QString ends = u" ~\u00a0\u00ff\u20ac\u0178"_qs;
  box_.clear();
  Paste(ends);
  ExpectText(ends);
  const QString large(40000, 'x');
  box_.setText(large);
  ExpectText(large);
}

TEST_F(FileTextBox, RefusesATextWithAnotherCharacterWholeAndNamesThatCharacter) {
  for (const auto& [text, name] : std::vector<std::pair<QString, std::string>>{
           {"5 k\u03a9 \u4e2d", "The character \"\u03a9\""},
           {"\U0001f600", "The character \"\U0001f600\""},
           {"\x1f", "The control character number 31"},
           {"\x7f", "The control character number 127"},
           {"1\n2", "A line end"},
           {"1\r2", "A line end"}}) {
    SCOPED_TRACE(name);
    box_.selectAll();
    ExpectRefusal(name);
    // Not by the clipboard: the toolkit would change some of these characters first.
    box_.insert(text);
    Settle();
    ExpectText("ab");
  }
  ExpectRefusal("The character \"\u03a9\"");
  Paste("\u03a9");
  box_.end(false);
  Type("c");
  ExpectText("abc");
}

TEST_F(FileTextBox, DropsOneLineEndAfterAPastedText) {
  for (const char* end : {"\n", "\r\n", "\r"}) {
    box_.setText("ab");
    box_.setCursorPosition(1);
    Paste("12" + QString(end));
    ExpectText("a12b");
    EXPECT_EQ(box_.cursorPosition(), 3);
  }
  ExpectRefusal("A line end");
  Paste("1\n\n");
  ExpectText("a12b");
}

TEST_F(FileTextBox, KeepsTheCharactersOfAFileWhileTheRestIsEdited) {
  box_.setText("a\u0001b");
  QTest::keyClicks(&box_, "c");
  ExpectText("a\u0001bc");
  ExpectRefusal("number 2");
  Paste("\u0002");
  for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Left, Qt::Key_Shift, Qt::Key_Insert}) {
    Press(key);  // keys without text show no message
    Settle();
  }
  ExpectText("a\u0001bc");
}

}  // namespace
}  // namespace tarvell
