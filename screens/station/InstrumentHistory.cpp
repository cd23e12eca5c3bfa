// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/station/InstrumentHistory.h"

#include <system_error>

#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/station/StationFiles.h"
#include "screens/caldata/frmDeleted.h"
#include "screens/caldata/frmHistory.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Questions.h"

namespace tarvell {

namespace {

/// The fields of an instrument, one in a row.
ReadableData FieldsOf(const Calibration& version) {
  const std::string& path = version.header.FilePath;
  std::string bytes;
  const std::error_code code = ReadNativeFile(NativePath(path), bytes, kDataFileLimit);
  if (code && code != kTooLargeForData) {
    throw SystemError(code, "read the version", path);
  }
  ReadablePage page;
  page.rows = {{"Field", "Value"}};
  for (const FileSummary::Field& field : SummaryOfInstrument(bytes).fields) {
    page.rows.push_back({field.name, field.value});
  }
  return {.pages = {page}, .notice = ""};
}

HistorySubject SubjectAt(const std::string& path) {
  return {.path = path, .read = FieldsOf};
}

}  // namespace

InstrumentHistory::InstrumentHistory(const Screen& screen)
    : QObject(screen.screen), screen_(screen), menu_(new QMenu(screen.screen)) {
  menu_->setObjectName("mnuHistory");
  const auto add = [this](const char* name, const QString& caption,
                          void (InstrumentHistory::*act)()) {
    QAction* entry = menu_->addAction(caption);
    entry->setObjectName(name);
    connect(entry, &QAction::triggered, this,
            [this, act] { Guarded(screen_.screen, [this, act] { (this->*act)(); }); });
  };
  add("mnuOfInstrument", tr("&History..."), &InstrumentHistory::ShowHistory);
  add("mnuDeleted", tr("&Deleted instruments..."), &InstrumentHistory::ShowDeleted);
  connect(screen_.button, &QPushButton::clicked, this, [this] {
    menu_->popup(screen_.button->mapToGlobal(screen_.button->rect().bottomLeft()));
  });
  screen_.list->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(screen_.list, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
    menu_->popup(screen_.list->viewport()->mapToGlobal(place));
  });
}

void InstrumentHistory::ShowHistory() {
  const std::string name = screen_.shown();
  if (name.empty()) {
    Tell(screen_.screen, tr("No model is selected."));
    return;
  }
  HistorySubject subject = SubjectAt(Joined(Joined(gStationDir, screen_.station()), name));
  if (screen_.isChanged()) {
    subject.whyNotPutBack =
        tr("Save the instrument first, or choose it again: what is typed would "
           "be lost.");
  }
  frmHistory history(subject, screen_.screen);
  history.exec();
  if (history.HasPutBack()) {
    screen_.readAgain();
  }
}

void InstrumentHistory::ShowDeleted() {
  frmDeleted deleted({.root = gStationDir,
                      .folder = screen_.station(),
                      .folderName = tr("Station"),
                      .subject = SubjectAt},
                     screen_.screen);
  deleted.exec();
  if (deleted.HasPutBack()) {
    screen_.readAgain();
  }
}

}  // namespace tarvell
