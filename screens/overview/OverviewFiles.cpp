// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/overview/OverviewFiles.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <utility>
#include <vector>

#include "core/paper/SurveyPaper.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/survey/DueCalendar.h"
#include "core/survey/SurveyTable.h"
#include "screens/widgets/ExportedFile.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/PaperOutput.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/UserSettings.h"
#include "screens/widgets/cFileDialog.h"

namespace tarvell {

namespace {

constexpr const char* kFolder = "overview/folder";

std::string ShownCsv(const ShownRows& rows) {
  std::vector<SurveyRow> shown;
  shown.reserve(rows.Count());
  for (std::size_t place = 0; place < rows.Count(); ++place) {
    shown.push_back(rows.At(place));
  }
  return SurveyCsv(shown);
}

}  // namespace

OverviewFiles::OverviewFiles(Overview overview)
    : QObject(overview.screen), overview_(std::move(overview)) {
  Add("mnuCsv", tr("Save the table as &CSV..."),
      {.title = tr("Save the table"),
       .filter = tr("CSV for spreadsheets|*.csv"),
       .name = "overview.csv",
       .bytes = [this] { return ShownCsv(overview_.rows()); },
       .unread = Unread::Folders});
  // All due dates, whatever is shown: an import leaves entries that it lacks as they were.
  Add("mnuCalendar", tr("Save all &due dates as a calendar..."),
      {.title = tr("Save the due dates"),
       .filter = tr("Calendars|*.ics"),
       .name = "due.ics",
       .bytes = [this] { return DueCalendar(overview_.rows().All(), CurrentPlatform().Now()); },
       .unread = Unread::DueDates});
  AddPaperEntries(overview_.menu, overview_.screen, [this] {
    CheckIsWhole();
    const bool isAnyGone = overview_.takeOutGoneFiles();
    overview_.notices->SetRemark(isAnyGone ? GoneText() : QString());
    return PaperWork{
        .document = SurveyOnPaper(overview_.rows(), overview_.today()),
        .fileName = "overview.pdf",
        .saved = [=, this](const QString& file) { ReportSaved(file, isAnyGone, Unread::Folders); }};
  });
}

void OverviewFiles::Add(const char* name, const QString& caption, const Format& format) {
  QAction* entry = overview_.menu->addAction(caption);
  entry->setObjectName(name);
  connect(entry, &QAction::triggered, this,
          [this, format] { Guarded(overview_.screen, [&] { Save(format); }); });
}

void OverviewFiles::CheckIsWhole() const {
  if (!overview_.isWhole()) {
    throw Error(ErrorKind::Index,
                "Not all files have been read: what is saved or printed now would lack rows. Wait "
                "until all have been read, or press F5 to read them again.");
  }
}

void OverviewFiles::Save(const Format& format) {
  CheckIsWhole();
  // Where the same file is saved twice, the second time is announced, too.
  overview_.notices->SetRemark("");
  cFileDialog dialog;
  dialog.SetCaption(format.title);
  dialog.SetFilter(format.filter);
  dialog.SetDefaultSuffix(QFileInfo(format.name).suffix());
  dialog.SetInitialDir(RememberedText(kFolder));
  dialog.SetFileName(format.name);
  dialog.SetOwnerWnd(overview_.screen);
  if (!dialog.ShowSave()) {
    return;
  }
  const QString file = dialog.FileName();
  Remember(kFolder, QFileInfo(file).path());
  const bool isAnyGone = overview_.takeOutGoneFiles();
  SaveExportedFile(file, format.bytes());
  ReportSaved(file, isAnyGone, format.unread);
}

QString OverviewFiles::GoneText() {
  return tr("Files were deleted meanwhile: their rows were taken out.");
}

void OverviewFiles::ReportSaved(const QString& file, bool isAnyGone, Unread unread) const {
  const auto lacking =
      std::ranges::count_if(overview_.rows().All(),
                            [unread](const SurveyRow& row) { return LacksSomething(row, unread); });
  const QString what =
      unread == Unread::DueDates
          ? tr("It lacks due dates: files and folders that cannot be read, or without a date: %1.")
          : tr("It lacks the files of folders that cannot be read: %1.");
  overview_.notices->SetRemark(tr("Saved as %1.").arg(QDir::toNativeSeparators(file)) +
                               (lacking == 0 ? QString() : " " + what.arg(lacking)) +
                               (isAnyGone ? " " + GoneText() : ""));
}

}  // namespace tarvell
