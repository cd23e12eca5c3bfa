// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/PaperOutput.h"

#include <QAction>
#include <QBuffer>
#include <QFileInfo>
#include <QKeySequence>
#include <QLocale>
#include <QPageSize>
#include <QPdfWriter>

#include <memory>
#include <string_view>

#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/ExportedFile.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/PaperPainter.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/UserSettings.h"
#include "screens/widgets/cFileDialog.h"

namespace tarvell {

namespace {

constexpr const char* kFolder = "paper/folder";
constexpr const char* kSize = "paper/size";
constexpr const char* kLetter = "Letter";
constexpr const char* kA4 = "A4";

// The pairs of the file dialog.
constexpr int kA4Pair = 1;
constexpr int kLetterPair = 2;

bool TakesLetter() {
  const QString remembered = RememberedText(kSize);
  return remembered.isEmpty() ? QLocale().measurementSystem() == QLocale::ImperialUSSystem
                              : remembered == kLetter;
}

QByteArray PdfOf(const PaperWork& work, QPageSize::PageSizeId size) {
  const BusyPointer busy;
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setTitle(ToQt(work.document.title));
  writer.setCreator(ToQt(kApplicationTitle));
  writer.setPageSize(QPageSize(size));
  writer.setPageOrientation(work.document.isWide ? QPageLayout::Landscape : QPageLayout::Portrait);
  if (!PaintPaper(work.document, work.pictures, writer)) {
    throw Error(ErrorKind::System, "The PDF could not be made. Nothing was written.");
  }
  return bytes;
}

}  // namespace

void AddPaperEntries(QMenu* menu, QWidget* screen, const std::function<PaperWork()>& work) {
  const auto add = [&](const QString& text, const QString& name,
                       void (*act)(QWidget*, const PaperWork&)) {
    QAction* entry = menu->addAction(text);
    entry->setObjectName(name);
    QObject::connect(entry, &QAction::triggered, screen,
                     [=] { Guarded(screen, [&] { act(screen, work()); }); });
    return entry;
  };
  QAction* print = add(QMenu::tr("&Print..."), "mnuPrint", &PrintPaper);
  print->setShortcut(QKeySequence::Print);
  // The key also works while the menu is closed.
  screen->addAction(print);
  add(QMenu::tr("&Save as PDF..."), "mnuSavePdf", &SavePaperAsPdf);
}

void PrintPaper(QWidget* owner, const PaperWork& work) {
  const std::unique_ptr<QPagedPaintDevice> printer = CurrentQuestions().PickPrinter(
      owner, {.title = ToQt(work.document.title), .isWide = work.document.isWide});
  if (printer == nullptr) {
    return;
  }
  const BusyPointer busy;
  if (!PaintPaper(work.document, work.pictures, *printer)) {
    throw Error(ErrorKind::System,
                "The printer did not take the pages. Check that it is switched on and connected, "
                "then print again, or use \"Save as PDF\".");
  }
}

void SavePaperAsPdf(QWidget* owner, const PaperWork& work) {
  cFileDialog dialog;
  dialog.SetCaption(QMenu::tr("Save as PDF"));
  dialog.SetFilter(QMenu::tr("PDF, A4|*.pdf|PDF, Letter|*.pdf"));
  dialog.SetFilterIndex(TakesLetter() ? kLetterPair : kA4Pair);
  dialog.SetDefaultSuffix("pdf");
  dialog.SetInitialDir(RememberedText(kFolder));
  dialog.SetFileName(work.fileName);
  dialog.SetOwnerWnd(owner);
  if (!dialog.ShowSave()) {
    return;
  }
  const QString file = dialog.FileName();
  const bool isLetter = dialog.FilterIndex() == kLetterPair;
  Remember(kFolder, QFileInfo(file).path());
  Remember(kSize, QString(isLetter ? kLetter : kA4));
  const QByteArray bytes = PdfOf(work, isLetter ? QPageSize::Letter : QPageSize::A4);
  const std::string_view content(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  SaveExportedFile(file, content);
  if (work.saved) {
    work.saved(file);
  }
}

}  // namespace tarvell
