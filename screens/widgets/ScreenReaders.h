// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_SCREENREADERS_H
#define TARVELL_SCREENS_WIDGETS_SCREENREADERS_H

#include <QWidget>

/// What screen readers need beyond the names and descriptions of the controls.
namespace tarvell {

/// Relates every drop-down list in `part` that has a name to a label with this name, which is not
/// shown. Without a label a screen reader would read only the chosen entry.
void LabelDropDownLists(QWidget* part);

}  // namespace tarvell

#endif
