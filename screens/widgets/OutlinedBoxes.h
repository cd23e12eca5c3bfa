// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_OUTLINEDBOXES_H
#define TARVELL_SCREENS_WIDGETS_OUTLINEDBOXES_H

#include <QWidget>

namespace tarvell {

/// Gives the check boxes of a screen an outline that can be seen on a dark background, too.
void OutlineCheckBoxes(QWidget* screen);

}  // namespace tarvell

#endif
