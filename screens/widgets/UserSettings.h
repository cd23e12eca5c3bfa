// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_USERSETTINGS_H
#define TARVELL_SCREENS_WIDGETS_USERSETTINGS_H

#include <QByteArray>
#include <QString>

#include <vector>

/// What the program remembers for each user: sizes of windows, widths of columns, last choices. It
/// is never needed: a setting that is missing, damaged or cannot be written changes nothing, and is
/// no error. Nothing of the data is in it.
namespace tarvell {

/// The file that the settings are kept in from now on, in the user's own folder. Without a file,
/// as at first, nothing is remembered.
void KeepUserSettingsIn(const QString& file);

/// The usual file of this user.
[[nodiscard]] QString UsualUserSettings();

/// A setting; "" or no numbers if it is missing or something else. `key` is "group/name".
[[nodiscard]] QString RememberedText(const QString& key);
[[nodiscard]] QByteArray RememberedBytes(const QString& key);
[[nodiscard]] std::vector<int> RememberedNumbers(const QString& key);

void Remember(const QString& key, const QString& text);
void Remember(const QString& key, const QByteArray& bytes);
void Remember(const QString& key, const std::vector<int>& numbers);

}  // namespace tarvell

#endif
