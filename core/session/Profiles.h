// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SESSION_PROFILES_H
#define TARVELL_CORE_SESSION_PROFILES_H

#include <string>
#include <string_view>

/// The INI file "tarvell.ini" in the Windows directory, which remembers the two data roots. It is
/// read by position, not by section and key: the roots are items 8 and 11.
namespace tarvell {

/// The Windows directory, as path text of the program.
[[nodiscard]] std::string GetWindowsDir();

/// Reads both roots. One that is empty is the default "c:\calfactors" or "c:\stations"; both are
/// when the file is missing, too short or unreadable. Never fails.
void ReadProfile(std::string& calibrationDir, std::string& stationDir);

/// What an operator should know of a directory that the next start will not read back, since a
/// comma ends it; "" for any other one.
[[nodiscard]] std::string CalibrationDirNotice(std::string_view directory);
[[nodiscard]] std::string StationDirNotice(std::string_view directory);

/// Writes the file anew with the roots exactly as given. Throws the error of a failed save.
void WriteProfile(const std::string& calibrationDir, const std::string& stationDir);

}  // namespace tarvell

#endif
