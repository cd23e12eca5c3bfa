// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_ENTERKEY_H
#define TARVELL_SCREENS_WIDGETS_ENTERKEY_H

#include <QKeyEvent>
#include <QWidget>

namespace tarvell {

/// Makes Enter press the button that has the focus, for every button that `screen` has by now. On
/// many desktops Enter would press the default button of the screen instead. A key that is held
/// presses one button once, whatever screen it opens.
void EnterPressesFocusedButton(QWidget* screen);

/// Whether this key is Enter, that of the number pad included, without Ctrl, Alt or Meta.
[[nodiscard]] bool IsPlainEnter(const QKeyEvent& key);

}  // namespace tarvell

#endif
