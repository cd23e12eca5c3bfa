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
           {"1\t2", "The control character number 9"},
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
