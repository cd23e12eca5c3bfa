// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/cFileDialog.h"

#include <QStandardPaths>

#include "core/text/Text.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

constexpr int kDesktop = 0;
constexpr int kDocuments = 5;
constexpr QChar kNul(u'\0');

}  // namespace

void cFileDialog::SetFileName(const QString& value) {
  fileName_ = ToQt(Trim(FromQt(value.section(kNul, 0, 0))));
}

void cFileDialog::SetFilter(const QString& value) {
  filter_ = value;
  filter_.replace(u'|', kNul);
  filter_ += kNul;
}

bool cFileDialog::SetInitialDirToSpecialFolder(int folder) {
  if (folder != kDesktop && folder != kDocuments) {
    return false;
  }
  const QString path = QStandardPaths::writableLocation(
      folder == kDesktop ? QStandardPaths::DesktopLocation : QStandardPaths::DocumentsLocation);
  if (path.isEmpty()) {
    return false;
  }
  initialDir_ = path;
  return true;
}

bool cFileDialog::ShowOpen() {
  return Show(FileRequest::Purpose::Open, "GetOpenFileName");
}

bool cFileDialog::ShowSave() {
  return Show(FileRequest::Purpose::Save, "GetSaveFileName");
}

bool cFileDialog::Show(FileRequest::Purpose purpose, const QString& functionName) {
  QString chosen;
  const auto run = [&] {
    FileRequest request{.purpose = purpose,
                        .title = caption_,
                        .initialDir = initialDir_,
                        .fileName = fileName_,
                        .filters = NameFilters(),
                        .filterIndex = filterIndex_ - 1,
                        .suffix = suffix_};
    chosen = CurrentQuestions().PickFile(ownerWnd_, request);
    filterIndex_ = request.filterIndex + 1;
  };
  const auto showError = [&](const Error& error) {
    CurrentQuestions().Ask(ownerWnd_, {.text = QString::number(static_cast<int>(error.Kind())) +
                                               "\n" + ToQt(error.what()),
                                       .title = functionName,
                                       .icon = QMessageBox::Warning});
  };
  if (!Guarded(ownerWnd_, run, showError) || chosen.isEmpty()) {
    return false;
  }
  SetFileName(chosen);
  return true;
}

QStringList cFileDialog::NameFilters() const {
  QStringList filters;
  const QStringList parts = filter_.split(kNul, Qt::KeepEmptyParts);
  for (qsizetype i = 0; i < parts.size() && !parts.at(i).isEmpty(); i += 2) {
    // "*.*" means every file, even one without a dot.
    const QString pattern = parts.value(i + 1);
    const bool everyFile = pattern.isEmpty() || pattern == "*.*";
    filters << parts.at(i) + " (" + (everyFile ? QString("*") : pattern) + ")";
  }
  return filters;
}

}  // namespace tarvell
