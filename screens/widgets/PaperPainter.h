// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_PAPERPAINTER_H
#define TARVELL_SCREENS_WIDGETS_PAPERPAINTER_H

#include <QList>
#include <QPagedPaintDevice>
#include <QPicture>

#include "core/paper/PaperDocument.h"

namespace tarvell {

/// Paints a document on the sheets of a printer or a PDF, in black on white. Returns false if the
/// device does not take them.
[[nodiscard]] bool PaintPaper(const PaperDocument& document, const QList<QPicture>& pictures,
                              QPagedPaintDevice& device);

}  // namespace tarvell

#endif
