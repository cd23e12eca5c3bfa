// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SESSION_PROFILES_H
#define TARVELL_CORE_SESSION_PROFILES_H

#include <string>
#include <string_view>

/// The INI file "tarvell.ini" in the Windows directory holds the two data roots. It is read by
/// position, not by section and key: the roots are items 8 and 11.
namespace tarvell {

/// The Windows directory, as a path of the program.
[[nodiscard]] std::string GetWindowsDir();

/// Reads both roots. An empty one becomes the default "c:\calfactors" or "c:\stations". Both become
/// the default when the file is missing, too short or unreadable. Never fails.
void ReadProfile(std::string& calibrationDir, std::string& stationDir);

/// The warning about a directory with a comma, which the next start reads differently; "" for any
/// other directory.
[[nodiscard]] std::string CalibrationDirNotice(std::string_view directory);
[[nodiscard]] std::string StationDirNotice(std::string_view directory);

/// Writes the whole file with the roots exactly as given. Throws the error of a failed save. Where
/// the system has another place for users who may not write into the Windows directory, a root that
/// such a user has changed since ReadProfile goes into a file there; the first time, this returns a
/// notice that says so, otherwise "". ReadProfile reads that file for such users after the one that
/// all users share.
std::string WriteProfile(const std::string& calibrationDir, const std::string& stationDir);

}  // namespace tarvell

#endif
