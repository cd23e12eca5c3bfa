// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/Questions.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QTreeView>

#include <algorithm>
#include <utility>

#include "core/session/Tarvell_MainModule.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/ScreenSize.h"

namespace tarvell {

namespace {

constexpr QSize kDialogSize(860, 520);

Questions*& ChosenQuestions() {
  static Questions* questions = nullptr;
  return questions;
}

/// The one file that the user chose in the toolkit's own dialog, "" when the dialog was cancelled.
QString RunDialog(QFileDialog& dialog) {
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  // The toolkit's own sizes cut the names and dates of the files.
  dialog.resize(kDialogSize);
  if (auto* files = dialog.findChild<QTreeView*>("treeView")) {
    files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  }
  SuitDisplay(&dialog);
  if (dialog.exec() != QDialog::Accepted) {
    return {};
  }
  return dialog.selectedFiles().value(0);
}

/// A text that a box can show: of one from a broken file, the beginning and the end.
QString Shortened(const QString& text) {
  constexpr qsizetype kMost = 2000;
  constexpr qsizetype kEnd = 500;
  if (text.size() <= kMost) {
    return text;
  }
  return text.left(kMost - kEnd) + QString(QChar(0x2026)) + text.right(kEnd);
}

/// The place of a filter by what the dialog calls it: its name without the patterns behind it.
int IndexOfFilter(const QStringList& filters, const QString& name) {
  const auto found = std::ranges::find_if(filters, [&](const QString& filter) {
    return filter.left(filter.lastIndexOf(u'(')).simplified() == name;
  });
  return static_cast<int>(found - filters.begin());
}

}  // namespace

QMessageBox::StandardButton Questions::Ask(QWidget* owner, const Question& question) {
  QMessageBox box(owner);
  box.setWindowTitle(question.title.isEmpty() ? ToQt(kApplicationTitle) : question.title);
  box.setTextFormat(Qt::PlainText);
  box.setText(Shortened(question.text));
  box.setInformativeText(Shortened(question.detail));
  box.setIcon(question.icon);
  box.setStandardButtons(question.buttons);
  box.setDefaultButton(question.defaultButton);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

QString Questions::PickFile(QWidget* owner, FileRequest& request) {
  // A folder that is not there, such as the desktop of a user without one, would become a name.
  const bool exists = QFileInfo(request.initialDir).isDir();
  QFileDialog dialog(owner, request.title, exists ? request.initialDir : QDir::homePath());
  const bool open = request.purpose == FileRequest::Purpose::Open;
  dialog.setAcceptMode(open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog.setFileMode(open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setNameFilters(request.filters);
  dialog.selectNameFilter(request.filters.value(request.filterIndex));
  if (!request.fileName.isEmpty()) {
    dialog.selectFile(request.fileName);
  }
  QString chosen = RunDialog(dialog);
  if (!chosen.isEmpty()) {
    request.filterIndex = IndexOfFilter(request.filters, dialog.selectedNameFilter());
  }
  return chosen;
}

QString Questions::PickFolder(QWidget* owner, const QString& title, const QString& initialDir) {
  QFileDialog dialog(owner, title, initialDir);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  return RunDialog(dialog);
}

Questions& CurrentQuestions() {
  static Questions boxes;
  Questions* chosen = ChosenQuestions();
  return chosen != nullptr ? *chosen : boxes;
}

Questions* SetCurrentQuestions(Questions* questions) {
  return std::exchange(ChosenQuestions(), questions);
}

void Tell(QWidget* owner, const QString& text) {
  CurrentQuestions().Ask(owner, {.text = text});
}

}  // namespace tarvell
