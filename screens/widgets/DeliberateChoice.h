// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_DELIBERATECHOICE_H
#define TARVELL_SCREENS_WIDGETS_DELIBERATECHOICE_H

#include <QComboBox>

namespace tarvell {

/// Prevents accidental changes of a drop-down list: the mouse wheel changes it only while it has
/// the focus, and only the left mouse button chooses an entry of the open list.
void ChangeOnlyDeliberately(QComboBox* box);

}  // namespace tarvell

#endif
