// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_LONGTEXTS_H
#define TARVELL_SCREENS_WIDGETS_LONGTEXTS_H

#include <QComboBox>

namespace tarvell {

/// Makes the texts of a box readable where it is too narrow for them: its list is as wide as they
/// need, and a tool tip shows the chosen one. Call it before the box has any.
void ShowLongTexts(QComboBox* box);

}  // namespace tarvell

#endif
