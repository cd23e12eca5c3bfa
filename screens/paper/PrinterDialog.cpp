// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/paper/PrinterDialog.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include <utility>

namespace tarvell {

extern "C" Q_DECL_EXPORT void TarvellPickPrinter(QWidget* owner, const PrinterRequest& request,
                                                 PickedPrinter& picked) {
  picked.isAnySetUp = !QPrinterInfo::availablePrinterNames().isEmpty();
  if (!picked.isAnySetUp) {
    return;
  }
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer->setDocName(request.title);
  printer->setPageOrientation(request.isWide ? QPageLayout::Landscape : QPageLayout::Portrait);
  QPrintDialog dialog(printer.get(), owner);
  // "Save as PDF" writes files, as safely as any other file of the program.
  dialog.setOptions(QAbstractPrintDialog::PrintCollateCopies);
  if (dialog.exec() == QDialog::Accepted) {
    picked.printer = std::move(printer);
  }
}

}  // namespace tarvell
