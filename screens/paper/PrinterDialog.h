// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_PAPER_PRINTERDIALOG_H
#define TARVELL_SCREENS_PAPER_PRINTERDIALOG_H

#include <QPagedPaintDevice>
#include <QString>
#include <QWidget>

#include <memory>

/// The interface of the library `tarvell_paper`, which knows the printers. It is a library of its
/// own, so that the program starts without the printing library and its memory.
namespace tarvell {

struct PrinterRequest {
  QString title;        ///< of the printed document
  bool isWide = false;  ///< whether the long side of the sheet is its width
};

struct PickedPrinter {
  std::unique_ptr<QPagedPaintDevice> printer;  ///< nullptr if the user has cancelled
  bool isAnySetUp = true;                      ///< whether this computer has a printer
};

/// The function of the library, and its name. It lets the user choose a printer and its paper.
using PickPrinterFunction = void (*)(QWidget* owner, const PrinterRequest& request,
                                     PickedPrinter& picked);
inline constexpr const char* kPickPrinter = "TarvellPickPrinter";

}  // namespace tarvell

#endif
