// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_QUESTIONS_H
#define TARVELL_SCREENS_WIDGETS_QUESTIONS_H

#include <QMessageBox>
#include <QString>
#include <QStringList>
#include <QWidget>

namespace tarvell {

/// A message box. `detail`, when there is one, stands below the text in smaller type.
struct Question {
  QString text = {};
  QString title = {};  ///< "" means the application title
  QMessageBox::Icon icon = QMessageBox::Information;
  QMessageBox::StandardButtons buttons = QMessageBox::Ok;
  QMessageBox::StandardButton defaultButton = QMessageBox::Ok;
  QString detail = {};
};

/// What a file dialog is asked for.
struct FileRequest {
  enum class Purpose { Open, Save };

  Purpose purpose = Purpose::Open;
  QString title = {};
  QString initialDir = {};  ///< native
  QString fileName = {};
  QStringList filters = {};  ///< as QFileDialog takes them
  int filterIndex = 0;       ///< of the filter that is selected, before and after
};

/// Every message box and picker of the program goes through here, so that a test can answer in
/// the user's place.
class Questions {
 public:
  Questions() = default;
  Questions(const Questions&) = delete;
  Questions& operator=(const Questions&) = delete;
  virtual ~Questions() = default;

  /// The button that closed the box; its escape button when it was closed by its frame.
  virtual QMessageBox::StandardButton Ask(QWidget* owner, const Question& question);
  /// Native path of the file that was chosen, "" when none was.
  virtual QString PickFile(QWidget* owner, FileRequest& request);
  /// Native path of the folder that was picked, "" when none was.
  virtual QString PickFolder(QWidget* owner, const QString& title, const QString& initialDir);
};

[[nodiscard]] Questions& CurrentQuestions();

/// Puts `questions` in the place of the real boxes, or these back with nullptr. The caller keeps
/// it alive; returns what was there before.
Questions* SetCurrentQuestions(Questions* questions);

/// Shows a notice: information icon, OK.
void Tell(QWidget* owner, const QString& text);

}  // namespace tarvell

#endif
