// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CertificateFiles.h"

#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QList>
#include <QLocale>
#include <QMimeData>
#include <QUrl>

#include <string>
#include <utility>

#include "core/platform/Error.h"
#include "exchange/ReadCertificate.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/DataSetExport.h"
#include "screens/caldata/ImportPreview.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtPath.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/UserSettings.h"
#include "screens/widgets/cFileDialog.h"

namespace tarvell {

namespace {

/// The subject of a notice.
constexpr const char* kExport = "export";

constexpr const char* kImportFolder = "certificates/import-folder";

/// The file that was dropped. Throws for anything else than one file.
QString FileOf(const QList<QUrl>& dropped) {
  if (dropped.size() > 1) {
    throw Error(ErrorKind::Type, std::to_string(dropped.size()) +
                                     " files were dropped, and a certificate is one file. Drop "
                                     "only that one.");
  }
  if (!dropped.front().isLocalFile()) {
    throw Error(ErrorKind::Type,
                "What was dropped is an address, not a file on this computer. Save the certificate "
                "from there as a file, then drop that file.",
                FromQt(dropped.front().toDisplayString()));
  }
  return dropped.front().toLocalFile();
}

}  // namespace

CertificateFiles::CertificateFiles(Editor editor)
    : QObject(editor.screen), editor_(std::move(editor)) {
  editor_.menu->addAction(tr("&Import..."), this, &CertificateFiles::ChooseFile)
      ->setObjectName("mnuImport");
  editor_.menu->addAction(tr("&Export..."), this, &CertificateFiles::Export)
      ->setObjectName("mnuExport");
  editor_.grid->viewport()->setAcceptDrops(true);
  editor_.grid->viewport()->installEventFilter(this);
  // The other program waits until the drop is done.
  connect(this, &CertificateFiles::Dropped, this, &CertificateFiles::TakeDropped,
          Qt::QueuedConnection);
}

bool CertificateFiles::eventFilter(QObject* watched, QEvent* event) {
  const bool isDrag = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove;
  if (!isDrag && event->type() != QEvent::Drop) {
    return QObject::eventFilter(watched, event);
  }
  auto& drop = static_cast<QDropEvent&>(*event);  // the base of all of them
  const QList<QUrl> urls = drop.mimeData()->urls();
  // The file stays where it is, even if the other program proposes to move it.
  drop.setDropAction(Qt::CopyAction);
  drop.setAccepted(!urls.isEmpty());
  if (event->type() == QEvent::Drop && !urls.isEmpty()) {
    emit Dropped(urls);
  }
  return true;
}

void CertificateFiles::TakeDropped(const QList<QUrl>& urls) const {
  QString file;
  if (Guarded(editor_.screen, [&] { file = FileOf(urls); })) {
    Import(file);
  }
}

void CertificateFiles::ChooseFile() const {
  cFileDialog dialog;
  dialog.SetCaption(tr("Import a certificate"));
  dialog.SetFilter(tr("Certificates|*.csv *.tsv *.txt *.xml *.dcc|All files|*.*"));
  dialog.SetInitialDir(RememberedText(kImportFolder));
  dialog.SetOwnerWnd(editor_.screen);
  if (dialog.ShowOpen()) {
    Remember(kImportFolder, QFileInfo(dialog.FileName()).path());
    Import(dialog.FileName());
  }
}

void CertificateFiles::Import(const QString& file) const {
  Guarded(editor_.screen, [&] {
    const EditorState now = editor_.contents();
    const ImportTarget target = {.model = editor_.model(),
                                 .data = editor_.data(),
                                 .now = now,
                                 .isSerialFixed = editor_.isSerialFixed(),
                                 .language = FromQt(QLocale().name().section('_', 0, 0)),
                                 .templateSerial = editor_.templateSerial()};
    std::string bytes;
    Certificate certificate;
    {
      const BusyPointer busy;
      bytes = CertificateBytes(SystemPath(file));
      certificate = ReadCertificate(bytes);
    }
    ImportPreview preview(target, *editor_.earlier, std::move(bytes), std::move(certificate),
                          QFileInfo(file).fileName(), editor_.screen);
    if (preview.exec() == QDialog::Accepted) {
      editor_.take(tr("importing %1").arg(QFileInfo(file).fileName()), preview.After());
    }
  });
}

void CertificateFiles::Export() const {
  Guarded(editor_.screen, [&] {
    const EditorState now = editor_.contents();
    const QString saved = ExportDataSet(editor_.screen, editor_.model(), editor_.data(), now);
    if (!saved.isEmpty()) {
      editor_.notices->Report(kExport, saved);
    }
  });
}

void CertificateFiles::ForgetExport() const {
  editor_.notices->Report(kExport, {});
}

}  // namespace tarvell
