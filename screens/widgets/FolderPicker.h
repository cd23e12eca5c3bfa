// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_FOLDERPICKER_H
#define TARVELL_SCREENS_WIDGETS_FOLDERPICKER_H

#include <QString>
#include <QWidget>

namespace tarvell {

/// Lets the user pick a folder, starting at the one that `initialText` names when it exists.
/// Returns it as path text of the program, "" when the user cancelled.
[[nodiscard]] QString BrowseForFolder(QWidget* ownerWindow, const QString& initialText,
                                      const QString& title);

}  // namespace tarvell

#endif
