// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/ScriptedQuestions.h"

#include <gtest/gtest.h>

namespace tarvell::test {

ScriptedQuestions::~ScriptedQuestions() {
  SetCurrentQuestions(nullptr);
  for (const Expected& expected : expected_) {
    ADD_FAILURE() << "did not appear: " << expected.question.text.toStdString() << " "
                  << expected.question.title.toStdString();
  }
}

void ScriptedQuestions::ExpectNotice(const QString& text) {
  Expect({.text = text}, QMessageBox::Ok);
}

void ScriptedQuestions::Expect(const Question& question, QMessageBox::StandardButton answer) {
  expected_.push_back({.kind = Kind::Box, .question = question, .answer = answer});
}

void ScriptedQuestions::ExpectError(const std::vector<std::string>& parts) {
  expected_.push_back({.kind = Kind::Error, .parts = parts});
}

void ScriptedQuestions::ExpectFolderPicker(const QString& title, const QString& picked) {
  expected_.push_back({.kind = Kind::Folder, .question = {.title = title}, .picked = picked});
}

void ScriptedQuestions::ExpectFilePicker(const QString& title, const QStringList& filters,
                                         const QString& picked) {
  expected_.push_back(
      {.kind = Kind::File, .question = {.title = title}, .filters = filters, .picked = picked});
}

QMessageBox::StandardButton ScriptedQuestions::Ask(QWidget* /*owner*/, const Question& question) {
  details.push_back(question.detail);
  const bool isError = !expected_.empty() && expected_.front().kind == Kind::Error;
  Expected expected;
  if (!Take(isError ? Kind::Error : Kind::Box, question.text, expected)) {
    return QMessageBox::Cancel;
  }
  if (expected.kind == Kind::Error) {
    EXPECT_EQ(question.icon, QMessageBox::Warning);
    EXPECT_EQ(question.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    for (const std::string& part : expected.parts) {
      EXPECT_NE(question.text.toStdString().find(part), std::string::npos)
          << "\"" << part << "\" is missing in: " << question.text.toStdString();
    }
    return QMessageBox::Ok;
  }
  EXPECT_EQ(question.text.toStdString(), expected.question.text.toStdString());
  EXPECT_EQ(question.title.toStdString(), expected.question.title.toStdString());
  EXPECT_EQ(question.icon, expected.question.icon);
  EXPECT_EQ(question.buttons, expected.question.buttons);
  EXPECT_EQ(question.defaultButton, expected.question.defaultButton);
  EXPECT_TRUE(question.buttons.testFlag(expected.answer)) << "the box has no such button";
  return expected.answer;
}

QString ScriptedQuestions::PickFile(QWidget* /*owner*/, FileRequest& request) {
  Expected expected;
  if (!Take(Kind::File, request.title, expected)) {
    return {};
  }
  EXPECT_EQ(request.title.toStdString(), expected.question.title.toStdString());
  EXPECT_EQ(request.filters, expected.filters);
  initialDirs.push_back(request.initialDir);
  return expected.picked;
}

QString ScriptedQuestions::PickFolder(QWidget* /*owner*/, const QString& title,
                                      const QString& initialDir) {
  Expected expected;
  if (!Take(Kind::Folder, title, expected)) {
    return {};
  }
  EXPECT_EQ(title.toStdString(), expected.question.title.toStdString());
  initialDirs.push_back(initialDir);
  return expected.picked;
}

bool ScriptedQuestions::Take(Kind kind, const QString& what, Expected& expected) {
  if (expected_.empty() || expected_.front().kind != kind) {
    ADD_FAILURE() << "unexpected box or picker: " << what.toStdString();
    return false;
  }
  expected = expected_.front();
  expected_.pop_front();
  return true;
}

}  // namespace tarvell::test
