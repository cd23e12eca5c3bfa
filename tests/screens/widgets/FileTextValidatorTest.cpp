// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <QKeyEvent>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screens/widgets/FileTextValidator.h"
#include "support/ScriptedQuestions.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// A box that holds "ab", its cursor at the end.
class FileTextBox : public testing::Test {
 protected:
  FileTextBox() {
    FileTextValidator::Attach(&box_);
    box_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&box_));
    box_.setFocus();
    box_.setText("ab");
  }

  void PressText(const QString& text) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, text);
    QApplication::sendEvent(&box_, &press);
    Settle();
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

TEST_F(FileTextBox, TakesEveryPrintableCharacterOfTheFiles) {
  // The printable ones of ASCII, those of bytes A0 to FF, and those of bytes 80 to 9F.
  QString all;
  for (char16_t c = 0x20; c <= 0x7E; ++c) {
    all += QChar(c);
  }
  for (char16_t c = 0xA0; c <= 0xFF; ++c) {
    all += QChar(c);
  }
  all += QString(
      "\u20ac\u201a\u0192\u201e\u2026\u2020\u2021\u02c6\u2030\u0160\u2039\u0152\u017d"
      "\u2018\u2019\u201c\u201d\u2022\u2013\u2014\u02dc\u2122\u0161\u203a\u0153\u017e\u0178");
  ASSERT_EQ(all.size(), 95 + 96 + 27);
  for (const QChar character : all) {
    box_.clear();
    PressText(QString(character));
    ExpectText(QString(character));
  }
  box_.clear();
  Paste(all);
  ExpectText(all);
}

TEST_F(FileTextBox, RefusesATypedCharacterThatTheFilesCannotHold) {
  for (const char* character : {"\u03a9", "\u0100", "\u00b5\u03bc", "\u4e2d", "\u20bd", "\ufb01"}) {
    SCOPED_TRACE(character);
    const QString text(character);
    ExpectRefusal("The character \"" + text.right(1).toStdString() + "\"");
    PressText(text);
    ExpectText("ab");
  }
}

TEST_F(FileTextBox, NamesACharacterBeyondSixteenBitsWhole) {
  ExpectRefusal("The character \"\U0001f600\"");
  Paste("\U0001f600");
  ExpectText("ab");
}

TEST_F(FileTextBox, RefusesAPastedTextWholeAndNamesTheFirstCharacterThatIsTooMuch) {
  ExpectRefusal("The character \"\u03a9\"");
  Paste("50 k\u03a9 \u00b1 5 \u2030 \u4e2d");
  ExpectText("ab");
  Type("c");
  ExpectText("abc");
}

TEST_F(FileTextBox, RefusesControlCharactersInAPastedText) {
  for (const auto& [text, name] : std::vector<std::pair<QString, std::string>>{
           {QString("1") + QChar(u'\t') + "2", "The control character number 9"},
           {QString("1") + QChar(u'\x1b') + "2", "The control character number 27"},
           {QString("1") + QChar(u'\x7f') + "2", "The control character number 127"}}) {
    SCOPED_TRACE(name);
    box_.setText("ab");
    ExpectRefusal(name);
    // As a program that hands over text does, which a paste of the toolkit may change first.
    box_.insert(text);
    Settle();
    ExpectText("ab");
  }
}

TEST_F(FileTextBox, RefusesALineEndInAPastedText) {
  for (const char* end : {"\n", "\r\n", "\r"}) {
    ExpectRefusal("A line end");
    Paste("1" + QString(end) + "2");
    ExpectText("ab");
  }
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

TEST_F(FileTextBox, ARefusalReplacesNoSelectedText) {
  box_.selectAll();
  ExpectRefusal("The character \"\u03a9\"");
  Paste("\u03a9");
  ExpectText("ab");
}

TEST_F(FileTextBox, EveryRefusalIsToldOnce) {
  ExpectRefusal("The character \"\u03a9\"");
  PressText("\u03a9");
  Type("c");
  Settle();
  ExpectRefusal("The character \"\u03a9\"");
  PressText("\u03a9");
  ExpectText("abc");
}

TEST_F(FileTextBox, WhatAFileBroughtInCanStayWhileTheRestIsEdited) {
  box_.setText("a\u0001b");
  QTest::keyClicks(&box_, "c");
  ExpectText("a\u0001bc");
  ExpectRefusal("\u03A9");
  Paste(QString(QChar(0x03A9)));
  ExpectText("a\u0001bc");
  ExpectRefusal("number 2");
  Paste("\u0002");
  ExpectText("a\u0001bc");
}

TEST_F(FileTextBox, ShowsALongTextOfAFileWhole) {
  const QString text(40000, 'x');
  box_.setText(text);
  ExpectText(text);
}

TEST_F(FileTextBox, KeysWithoutTextAreNoRefusal) {
  for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Left, Qt::Key_Shift, Qt::Key_Insert}) {
    Press(key);
    Settle();
  }
  ExpectText("ab");
}

}  // namespace
}  // namespace tarvell
