// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_SCRIPTEDQUESTIONS_H
#define TARVELL_TESTS_SUPPORT_SCRIPTEDQUESTIONS_H

#include <deque>
#include <string>
#include <vector>

#include "screens/widgets/Questions.h"

namespace tarvell::test {

/// Answers message boxes and pickers while it lives. The test fails at a box that was not expected
/// or differs from the expected one, and at the end if an expected one did not appear.
class ScriptedQuestions : public Questions {
 public:
  ScriptedQuestions() { SetCurrentQuestions(this); }
  ~ScriptedQuestions() override;

  /// Expects a notice with exactly this text: information icon, OK.
  void ExpectNotice(const QString& text);
  /// Expects a box with exactly these properties; an empty title means the application title.
  void Expect(const Question& question, QMessageBox::StandardButton answer);
  /// Expects an error message (exclamation icon, OK) that contains these parts.
  void ExpectError(const std::vector<std::string>& parts);
  /// Expects the folder picker with this title and returns `picked`.
  void ExpectFolderPicker(const QString& title, const QString& picked);
  /// Expects the file picker with this title and these filters and returns `picked`.
  void ExpectFilePicker(const QString& title, const QStringList& filters, const QString& picked);

  QMessageBox::StandardButton Ask(QWidget* owner, const Question& question) override;
  QString PickFile(QWidget* owner, FileRequest& request) override;
  QString PickFolder(QWidget* owner, const QString& title, const QString& initialDir) override;

  /// The folders in which the pickers started, in order.
  std::vector<QString> initialDirs;
  /// The details of the boxes, in order.
  std::vector<QString> details;

 private:
  enum class Kind { Box, Error, Folder, File };

  struct Expected {
    Kind kind = Kind::Box;
    Question question = {};
    QMessageBox::StandardButton answer = QMessageBox::Ok;
    std::vector<std::string> parts = {};
    QStringList filters = {};
    QString picked = {};
  };

  /// Takes the next expectation, which must be of this kind. Otherwise the test fails.
  bool Take(Kind kind, const QString& what, Expected& expected);

  std::deque<Expected> expected_;
};

}  // namespace tarvell::test

#endif
