// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_MONKEYINPUT_H
#define TARVELL_TESTS_SUPPORT_MONKEYINPUT_H

#include <QString>
#include <QStringList>
#include <Qt>

#include <array>

/// What the Monkey presses and types.
namespace tarvell::test {

inline const std::array<Qt::Key, 32> kKeys = {
    Qt::Key_Return,    Qt::Key_Enter,  Qt::Key_Escape,   Qt::Key_Tab,    Qt::Key_Tab,
    Qt::Key_Backtab,   Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Left,   Qt::Key_Right,
    Qt::Key_Up,        Qt::Key_Down,   Qt::Key_Delete,   Qt::Key_Home,   Qt::Key_End,
    Qt::Key_PageUp,    Qt::Key_F1,     Qt::Key_PageDown, Qt::Key_Insert, Qt::Key_Backspace,
    Qt::Key_Space,     Qt::Key_F2,     Qt::Key_F3,       Qt::Key_F4,     Qt::Key_F5,
    Qt::Key_F10,       Qt::Key_F12,    Qt::Key_Menu,     Qt::Key_Pause,  Qt::Key_Return,
    Qt::Key_Backspace, Qt::Key_Select,
};

inline const std::array<Qt::Key, 12> kShortcuts = {
    Qt::Key_C, Qt::Key_V, Qt::Key_X,    Qt::Key_Z,   Qt::Key_A,    Qt::Key_Y,
    Qt::Key_V, Qt::Key_Q, Qt::Key_Home, Qt::Key_End, Qt::Key_Left, Qt::Key_Delete,
};

inline const QString kCharacters = QStringLiteral(
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ01234567890123456789 .,-+eE\"'#*!:;/\\%&"
    "()<>|?_=@$~^`{}[]");

/// Characters of several code units, and characters that the files cannot hold. The last two are
/// half of a surrogate pair and a number that is no character.
inline const QStringList kOddCharacters =
    QString("\u00E9|\u00B5|\u20AC|\u2126|\u4F60|\U0001F600|\u0301|\u202E|\u00A0").split('|')
    << QString(QChar(0xD83D)) << QString(QChar(0xFFFE));

inline const QStringList kTexts =
    QString(
        "12345|3318A00007|C-0042|1|0|-1|10|28|31|1.5|0.05|99.25|100.00005|1E3|1E999|-1E-300|40000|"
        "32767|2002|1999|50|120|0.1|6.9925E09|MAR|JAN|ST3|Lab 7|INDEX|CON|a.b|..|PX12A|QZ PX13A "
        "Opt001|factory, second|says \"ok\"| 7 ppm||   |#MODEL_NO : X|!End|* 1 : 2|a b c d e f g h "
        "i j k l m n o p q r s t u v w x y z a b c d e f g h|one\r\ntwo|tab\tinside")
        .split('|')
    << QStringLiteral("null\0inside");

}  // namespace tarvell::test

#endif
