// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CertificateFiles.h"

#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLocale>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include <string>
#include <utility>

#include "exchange/ReadCertificate.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/DataSetExport.h"
#include "screens/caldata/ImportPreview.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/QtPath.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/UserSettings.h"
#include "screens/widgets/cFileDialog.h"

namespace tarvell {

namespace {

constexpr const char* kImportFolder = "certificates/import-folder";

/// The only file of a drag, "" if it has another number of files.
QString FileIn(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  return urls.size() == 1 ? urls.front().toLocalFile() : QString();
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
}

bool CertificateFiles::eventFilter(QObject* watched, QEvent* event) {
  const bool isDrag = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove;
  if (!isDrag && event->type() != QEvent::Drop) {
    return QObject::eventFilter(watched, event);
  }
  auto& drop = static_cast<QDropEvent&>(*event);  // the base of all of them
  const QString file = FileIn(*drop.mimeData());
  // The file stays where it is, even if the other program proposes to move it.
  drop.setDropAction(Qt::CopyAction);
  drop.setAccepted(!file.isEmpty());
  if (event->type() == QEvent::Drop && !file.isEmpty()) {
    // The other program waits until the drop is done.
    QTimer::singleShot(0, this, [this, file] { Import(file); });
  }
  return true;
}

void CertificateFiles::ChooseFile() {
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

void CertificateFiles::Import(const QString& file) {
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

void CertificateFiles::Export() {
  Guarded(editor_.screen, [&] {
    const EditorState now = editor_.contents();
    ExportDataSet(editor_.screen, editor_.model(), editor_.data(), now);
  });
}

}  // namespace tarvell
