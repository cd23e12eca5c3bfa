// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_APP_PROFILES_H
#define TARVELL_APP_PROFILES_H

#include <string>

/// The INI file "tarvell.ini" in the Windows directory, which remembers the two data roots. It is
/// read by position, not by section and key: the roots are items 8 and 11.
namespace tarvell {

/// The Windows directory, as path text of the program.
[[nodiscard]] std::string GetWindowsDir();

/// Reads both roots. One that is empty is the default "c:\calfactors" or "c:\stations"; both are
/// when the file is missing, too short or unreadable. Never fails.
void ReadProfile(std::string& calibrationDir, std::string& stationDir);

/// Writes the file anew with the roots exactly as given. Throws the error of a failed save.
void WriteProfile(const std::string& calibrationDir, const std::string& stationDir);

}  // namespace tarvell

#endif
