// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_COMMON_SCREENSIZE_H
#define TARVELL_COMMON_SCREENSIZE_H

#include <QWidget>

namespace tarvell {

/// Makes a window, which has its controls, as large as its font needs; from then on it never opens
/// larger than the display, however large it was before.
void SuitDisplay(QWidget* window);

}  // namespace tarvell

#endif
