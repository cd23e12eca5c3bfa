// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screens/widgets/FileTextValidator.h"
#include "support/ScriptedQuestions.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

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

TEST_F(FileTextBox, TakesEveryPrintableCharacterOfTheFiles) {
  // Those of ASCII, of the bytes A0 to FF and of the bytes 80 to 9F.
  QString all;
  for (char16_t c = 0x20; c <= 0xFF; ++c) {
    all += c <= 0x7E || c >= 0xA0 ? QString(QChar(c)) : QString();
  }
  all += QString(
      "\u20ac\u201a\u0192\u201e\u2026\u2020\u2021\u02c6\u2030\u0160\u2039\u0152\u017d"
      "\u2018\u2019\u201c\u201d\u2022\u2013\u2014\u02dc\u2122\u0161\u203a\u0153\u017e\u0178");
  box_.clear();
  Paste(all);
  ExpectText(all);
  const QString large(40000, 'x');
  box_.setText(large);
  ExpectText(large);
}

TEST_F(FileTextBox, RefusesATextWithAnotherCharacterWholeAndNamesThatCharacter) {
  for (const auto& [text, name] : std::vector<std::pair<QString, std::string>>{
           {"\u03a9", "The character \"\u03a9\""},
           {"50 k\u03a9 \u00b1 5 \u4e2d", "The character \"\u03a9\""},
           {"\U0001f600", "The character \"\U0001f600\""},
           {QString("1") + QChar(u'\t') + "2", "The control character number 9"},
           {QString("1") + QChar(u'\x1f') + "2", "The control character number 31"},
           {QString("1") + QChar(u'\x7f') + "2", "The control character number 127"},
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
