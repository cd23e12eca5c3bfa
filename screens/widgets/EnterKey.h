// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_ENTERKEY_H
#define TARVELL_SCREENS_WIDGETS_ENTERKEY_H

#include <QKeyEvent>
#include <QWidget>

namespace tarvell {

/// Makes Enter press the focused push button, for every one that `screen` has at this time. On many
/// desktops Enter would press the default button instead. A key that is held presses one button
/// once, even if that opens another screen. An Alt key presses a button of any kind at once. One
/// that belongs to nothing does nothing; in particular, it types no letter and chooses no entry of
/// a list.
void EnterPressesFocusedButton(QWidget* screen);

/// Whether this key is one of the two Enter keys, without Ctrl, Alt or Meta.
[[nodiscard]] bool IsPlainEnter(const QKeyEvent& key);

}  // namespace tarvell

#endif
