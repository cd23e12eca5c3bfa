// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_COMMON_CALMWHEEL_H
#define TARVELL_COMMON_CALMWHEEL_H

#include <QComboBox>

namespace tarvell {

/// Lets the mouse wheel change a drop-down list only while that has the focus: scrolling over it
/// must not change data.
void IgnoreWheelWithoutFocus(QComboBox* box);

}  // namespace tarvell

#endif
