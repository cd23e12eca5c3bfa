// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_PAPEROUTPUT_H
#define TARVELL_SCREENS_WIDGETS_PAPEROUTPUT_H

#include <QList>
#include <QMenu>
#include <QPicture>
#include <QString>
#include <QWidget>

#include <functional>

#include "core/paper/PaperDocument.h"

namespace tarvell {

/// A document, and its pictures by their numbers.
struct PaperWork {
  PaperDocument document;
  QList<QPicture> pictures = {};
  QString fileName = {};  ///< what is proposed for a PDF file, "PX12A 3318A12345.pdf"
  /// Called with the file when a PDF has been saved; may be empty.
  std::function<void(const QString& file)> saved = {};
};

/// Adds "Print..." and "Save as PDF..." to the menu of a screen. `work` makes what is printed; it
/// is called when the user has chosen one of them. Errors, its own too, are reported.
void AddPaperEntries(QMenu* menu, QWidget* screen, const std::function<PaperWork()>& work);

/// Asks for a printer and prints. Throws the error of a printer that takes nothing.
void PrintPaper(QWidget* owner, const PaperWork& work);

/// Asks for a file and for A4 or Letter, and writes it. Throws the error of a file that cannot be
/// written.
void SavePaperAsPdf(QWidget* owner, const PaperWork& work);

}  // namespace tarvell

#endif
