// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_FOLDERPICKER_H
#define TARVELL_SCREENS_WIDGETS_FOLDERPICKER_H

#include <QString>
#include <QWidget>

namespace tarvell {

/// Lets the user pick a folder. Starts in the folder `initialText`, if it exists. Returns the
/// folder as a path of the program, "" when the user cancelled.
[[nodiscard]] QString BrowseForFolder(QWidget* ownerWindow, const QString& initialText,
                                      const QString& title);

}  // namespace tarvell

#endif
