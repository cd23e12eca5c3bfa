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

#include "core/platform/Error.h"
#include "core/platform/SystemDialogs.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/widgets/Handbook.h"
#include "screens/widgets/ProgramLibrary.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/ScreenSize.h"

namespace tarvell {

namespace {

constexpr QSize kDialogSize(860, 520);

Questions*& QuestionsReplacement() {
  static Questions* questions = nullptr;
  return questions;
}

/// The one file that the user chose in the dialog, "" when it was cancelled.
QString RunDialog(QFileDialog& dialog) {
  dialog.setOption(QFileDialog::DontUseNativeDialog, !HasSystemDialogs());
  // The default sizes cut off the names and dates of the files.
  dialog.resize(kDialogSize);
  if (auto* files = dialog.findChild<QTreeView*>("treeView")) {
    files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  }
  FitToDisplay(&dialog);
  if (dialog.exec() != QDialog::Accepted) {
    return {};
  }
  return dialog.selectedFiles().value(0);
}

/// A text short enough for a box. A text from a damaged file may have any length; of a long one the
/// beginning and the end remain.
QString Shortened(const QString& text) {
  constexpr qsizetype kMaxSize = 2000;
  constexpr qsizetype kEndSize = 500;
  if (text.size() <= kMaxSize) {
    return text;
  }
  return text.left(kMaxSize - kEndSize) + QString(QChar(0x2026)) + text.right(kEndSize);
}

/// Index of the filter with this name; the dialog gives the name without the patterns after it.
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
  OfferHandbook(&box, chapter::kMessages);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

QString Questions::PickFile(QWidget* owner, FileRequest& request) {
  // The dialog would take a folder that does not exist for a file name.
  const bool exists = QFileInfo(request.initialDir).isDir();
  QFileDialog dialog(owner, request.title, exists ? request.initialDir : QDir::homePath());
  const bool open = request.purpose == FileRequest::Purpose::Open;
  dialog.setAcceptMode(open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog.setFileMode(open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setNameFilters(request.filters);
  dialog.selectNameFilter(request.filters.value(request.filterIndex));
  dialog.setDefaultSuffix(request.suffix);
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

std::unique_ptr<QPagedPaintDevice> Questions::PickPrinter(QWidget* owner,
                                                          const PrinterRequest& request) {
  const LibraryFunction library = FunctionOf("tarvell_paper", kPickPrinter);
  if (library.function == nullptr) {
    throw Error(ErrorKind::NotFound,
                "The program cannot print, because a part of it is missing or damaged. Install it "
                "again, or use \"Save as PDF\". (" +
                    FromQt(library.error) + ")");
  }
  PickedPrinter picked;
  reinterpret_cast<PickPrinterFunction>(library.function)(owner, request, picked);
  if (!picked.isAnySetUp) {
    throw Error(ErrorKind::NotFound,
                "No printer is set up on this computer. Add one in the settings of the desktop, or "
                "use \"Save as PDF\".");
  }
  return std::move(picked.printer);
}

Questions& CurrentQuestions() {
  static Questions boxes;
  Questions* replacement = QuestionsReplacement();
  return replacement != nullptr ? *replacement : boxes;
}

Questions* SetCurrentQuestions(Questions* questions) {
  return std::exchange(QuestionsReplacement(), questions);
}

void Tell(QWidget* owner, const QString& text) {
  CurrentQuestions().Ask(owner, {.text = text});
}

}  // namespace tarvell
