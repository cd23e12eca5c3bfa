// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_SCREENSIZE_H
#define TARVELL_SCREENS_WIDGETS_SCREENSIZE_H

#include <QWidget>

namespace tarvell {

/// Enlarges a window to suit its font. From then on it never opens larger than the display. A
/// screen opens where the user last closed it, in the same size. Call it after the window has all
/// its controls.
void FitToDisplay(QWidget* window);

/// Makes this part of a window scroll when the display has no room for it, so that the rest of the
/// window stays visible. The focused control is scrolled into view. If the display has room, the
/// window opens large enough for the whole part. The part must be in a layout.
void MakeScrollable(QWidget* part);

}  // namespace tarvell

#endif
