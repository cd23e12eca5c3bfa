// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_SCRIPTEDQUESTIONS_H
#define TARVELL_TESTS_SUPPORT_SCRIPTEDQUESTIONS_H

#include <deque>
#include <string>
#include <vector>

#include "screens/widgets/Questions.h"

namespace tarvell::test {

/// Answers message boxes and pickers in the user's place while it lives. A box that was not
/// expected, that differs from what was expected, or that never came, fails the test.
class ScriptedQuestions : public Questions {
 public:
  ScriptedQuestions() { SetCurrentQuestions(this); }
  ~ScriptedQuestions() override;

  /// Expects a notice with exactly this text: information icon, OK.
  void ExpectNotice(const QString& text);
  /// Expects a box with exactly these properties; an empty title means the application title.
  void Expect(const Question& question, QMessageBox::StandardButton answer);
  /// Expects an error message (exclamation icon, OK) that holds each of these parts.
  void ExpectError(const std::vector<std::string>& parts);
  /// Expects the folder picker with this title, and picks.
  void ExpectFolderPicker(const QString& title, const QString& picked);
  /// Expects the file picker with this title and these filters, and picks.
  void ExpectFilePicker(const QString& title, const QStringList& filters, const QString& picked);

  QMessageBox::StandardButton Ask(QWidget* owner, const Question& question) override;
  QString PickFile(QWidget* owner, FileRequest& request) override;
  QString PickFolder(QWidget* owner, const QString& title, const QString& initialDir) override;

  /// Where the pickers started, in order.
  std::vector<QString> initialDirs;
  /// Details of the boxes, in order.
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

  /// The next expectation when it is of this kind; a failure of the test otherwise.
  bool Take(Kind kind, const QString& what, Expected& expected);

  std::deque<Expected> expected_;
};

}  // namespace tarvell::test

#endif
