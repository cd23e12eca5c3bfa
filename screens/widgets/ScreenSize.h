// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_SCREENSIZE_H
#define TARVELL_SCREENS_WIDGETS_SCREENSIZE_H

#include <QWidget>

namespace tarvell {

/// Makes a window, which has its controls, as large as its font needs; from then on it never opens
/// larger than the display, however large it was before.
void SuitDisplay(QWidget* window);

/// Lets this part of a window, which stands in a layout, be scrolled where the display has no room
/// for it, so that what stands beside it is always seen. The control in it that has the keyboard is
/// scrolled into view. The window opens large enough for the whole part where that is possible.
void ScrollWhereItCannotFit(QWidget* part);

}  // namespace tarvell

#endif
