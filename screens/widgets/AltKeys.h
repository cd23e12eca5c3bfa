// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_ALTKEYS_H
#define TARVELL_SCREENS_WIDGETS_ALTKEYS_H

#include <QString>
#include <QStringList>
#include <QWidget>

/// Keys that are pressed together with Alt. A caption with an "&" underlines the letter after it,
/// which is its key.
namespace tarvell {

/// The caption as it is read, without the mark of its key.
[[nodiscard]] QString PlainCaption(QString caption);

/// The caption with its first character as its key.
[[nodiscard]] QString WithFirstAsKey(QString caption);

/// Each caption with a key that no other one has: its last character that is still free.
[[nodiscard]] QStringList WithDistinctKeys(QStringList captions);

/// Makes Alt with this letter press a button, or give the focus to a control that has no caption,
/// or whose caption has no free letter. The letter is underlined in the caption of a button; the
/// description of another control names the key.
void GiveAltKey(QWidget* control, Qt::Key letter);

}  // namespace tarvell

#endif
