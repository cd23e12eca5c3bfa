// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_DELIBERATECHOICE_H
#define TARVELL_SCREENS_WIDGETS_DELIBERATECHOICE_H

#include <QComboBox>

namespace tarvell {

/// Keeps a drop-down list from changing by accident: the mouse wheel changes it only while it has
/// the focus, and only the left button of the mouse chooses an entry of its open list.
void ChangeOnlyDeliberately(QComboBox* box);

}  // namespace tarvell

#endif
