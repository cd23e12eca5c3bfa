// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_SCRIPTEDQUESTIONS_H
#define TARVELL_TESTS_SUPPORT_SCRIPTEDQUESTIONS_H

#include <QIODevice>
#include <QPdfWriter>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "screens/widgets/Questions.h"
#include "support/RecordedPaper.h"

namespace tarvell::test {

/// Answers message boxes and pickers while it lives. The test fails at a box that was not expected
/// or differs from the expected one, and at the end if an expected one did not appear.
class ScriptedQuestions : public Questions {
 public:
  ScriptedQuestions() { SetCurrentQuestions(this); }
  ~ScriptedQuestions() override {
    SetCurrentQuestions(nullptr);
    for (const Expected& expected : expected_) {
      ADD_FAILURE() << "did not appear: " << expected.question.text.toStdString() << " "
                    << expected.question.title.toStdString();
    }
  }

  /// Expects a notice with exactly this text: information icon, OK.
  void ExpectNotice(const QString& text) { Expect({.text = text}, QMessageBox::Ok); }
  /// Expects a box with exactly these properties; an empty title means the application title.
  /// While it is open, `meanwhile` happens.
  void Expect(const Question& question, QMessageBox::StandardButton answer,
              std::function<void()> meanwhile = {}) {
    expected_.push_back({.kind = Kind::Box,
                         .question = question,
                         .answer = answer,
                         .meanwhile = std::move(meanwhile)});
  }
  /// Expects an error message (exclamation icon, OK) that contains these parts.
  void ExpectError(const std::vector<std::string>& parts) {
    expected_.push_back({.kind = Kind::Error, .parts = parts});
  }
  /// Expects the folder picker with this title and returns `picked`.
  void ExpectFolderPicker(const QString& title, const QString& picked) {
    expected_.push_back({.kind = Kind::Folder, .question = {.title = title}, .picked = picked});
  }
  /// Expects the file picker with this title and these filters and returns `picked`.
  void ExpectFilePicker(const QString& title, const QStringList& filters, const QString& picked) {
    expected_.push_back(
        {.kind = Kind::File, .question = {.title = title}, .filters = filters, .picked = picked});
  }

  /// Expects the choice of a printer for a document with this title. What is printed goes, as a
  /// PDF, to `paper`, which must live as long.
  void ExpectPrinter(const QString& title, QIODevice* paper) {
    expected_.push_back({.kind = Kind::Printer, .question = {.title = title}, .paper = paper});
  }

  /// The same, but takes down what is painted.
  void ExpectPrinter(const QString& title, QIODevice* unused, Painted* painted) {
    ExpectPrinter(title, unused);
    expected_.back().painted = painted;
  }

  QMessageBox::StandardButton Ask(QWidget* /*owner*/, const Question& question) override {
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
    if (expected.meanwhile) {
      expected.meanwhile();
    }
    return expected.answer;
  }
  QString PickFile(QWidget* /*owner*/, FileRequest& request) override {
    Expected expected;
    if (!Take(Kind::File, request.title, expected)) {
      return {};
    }
    EXPECT_EQ(request.title.toStdString(), expected.question.title.toStdString());
    EXPECT_EQ(request.filters, expected.filters);
    initialDirs.push_back(request.initialDir);
    return expected.picked;
  }
  QString PickFolder(QWidget* /*owner*/, const QString& title, const QString& initialDir) override {
    Expected expected;
    if (!Take(Kind::Folder, title, expected)) {
      return {};
    }
    EXPECT_EQ(title.toStdString(), expected.question.title.toStdString());
    initialDirs.push_back(initialDir);
    return expected.picked;
  }

  std::unique_ptr<QPagedPaintDevice> PickPrinter(QWidget* /*owner*/,
                                                 const PrinterRequest& request) override {
    Expected expected;
    if (!Take(Kind::Printer, request.title, expected)) {
      return nullptr;
    }
    EXPECT_EQ(request.title.toStdString(), expected.question.title.toStdString());
    if (expected.painted != nullptr) {
      return std::make_unique<RecordedPaper>(expected.paper, *expected.painted);
    }
    return std::make_unique<QPdfWriter>(expected.paper);
  }

  /// The folders in which the pickers started, in order.
  std::vector<QString> initialDirs;
  /// The details of the boxes, in order.
  std::vector<QString> details;

 private:
  enum class Kind { Box, Error, Folder, File, Printer };

  struct Expected {
    Kind kind = Kind::Box;
    Question question = {};
    QMessageBox::StandardButton answer = QMessageBox::Ok;
    std::vector<std::string> parts = {};
    QStringList filters = {};
    QString picked = {};
    QIODevice* paper = nullptr;
    Painted* painted = nullptr;
    std::function<void()> meanwhile = {};
  };

  /// Takes the next expectation, which must be of this kind. Otherwise the test fails.
  bool Take(Kind kind, const QString& what, Expected& expected) {
    if (expected_.empty() || expected_.front().kind != kind) {
      ADD_FAILURE() << "unexpected box or picker: " << what.toStdString();
      return false;
    }
    expected = expected_.front();
    expected_.pop_front();
    return true;
  }

  std::deque<Expected> expected_;
};

}  // namespace tarvell::test

#endif
