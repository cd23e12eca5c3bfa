// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_QUESTIONS_H
#define TARVELL_SCREENS_WIDGETS_QUESTIONS_H

#include <QMessageBox>
#include <QPagedPaintDevice>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

#include "screens/paper/PrinterDialog.h"

namespace tarvell {

/// The contents of a message box. `detail`, if given, appears below the text in smaller type.
struct Question {
  QString text = {};
  QString title = {};  ///< "" means the application title
  QMessageBox::Icon icon = QMessageBox::Information;
  QMessageBox::StandardButtons buttons = QMessageBox::Ok;
  QMessageBox::StandardButton defaultButton = QMessageBox::Ok;
  QString detail = {};
};

/// The settings of a file dialog.
struct FileRequest {
  enum class Purpose { Open, Save };

  Purpose purpose = Purpose::Open;
  QString title = {};
  QString initialDir = {};  ///< native
  QString fileName = {};
  QStringList filters = {};  ///< as QFileDialog takes them
  int filterIndex = 0;       ///< of the selected filter, on input and on output
  QString suffix = {};       ///< of a file to save whose name is typed without one, "" for none
};

/// Shows every message box and picker of the program. A test replaces it to answer instead of a
/// user.
class Questions {
 public:
  Questions() = default;
  Questions(const Questions&) = delete;
  Questions& operator=(const Questions&) = delete;
  virtual ~Questions() = default;

  /// The button that closed the box; the button for Escape when the frame closed it.
  virtual QMessageBox::StandardButton Ask(QWidget* owner, const Question& question);
  /// Native path of the file that was chosen, "" when none was.
  virtual QString PickFile(QWidget* owner, FileRequest& request);
  /// Native path of the folder that was picked, "" when none was.
  virtual QString PickFolder(QWidget* owner, const QString& title, const QString& initialDir);
  /// The printer that was chosen, nullptr when none was. Throws a NotFound error where none can be
  /// chosen.
  virtual std::unique_ptr<QPagedPaintDevice> PickPrinter(QWidget* owner,
                                                         const PrinterRequest& request);
};

[[nodiscard]] Questions& CurrentQuestions();

/// Replaces the real boxes by `questions`; nullptr restores them. The caller must keep `questions`
/// alive. Returns the previous replacement, nullptr when there was none.
Questions* SetCurrentQuestions(Questions* questions);

/// Shows a message with an information icon and an OK button.
void Tell(QWidget* owner, const QString& text);

}  // namespace tarvell

#endif
