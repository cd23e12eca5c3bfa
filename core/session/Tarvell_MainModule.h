// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SESSION_TARVELL_MAINMODULE_H
#define TARVELL_CORE_SESSION_TARVELL_MAINMODULE_H

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/caldata/CalFileList.h"
#include "core/caldata/TableRows.h"
#include "core/caldata/mTypeDef.h"
#include "core/dates/FileDate.h"
#include "core/dates/Months.h"
#include "core/text/Words.h"

/// The state that the screens share, and the functions of the module. Functions of one subject are
/// in its folder; the headers above declare them.
namespace tarvell {

inline constexpr std::string_view kApplicationTitle = "Morrand Tarvell";

// The state of the program: one user, one screen at a time.

inline std::string gStationDir;              ///< station data root, no trailing separator
inline std::string gCalibrationDir;          ///< calibration data root, no trailing separator
inline std::int16_t gVersionLabelLevel = 0;  ///< the version label is shown from level 2 on
inline std::array<CalFileInfo, kTableRows> gCalFiles;  ///< see ReadCalFileHeaders
inline std::string gOSPlatform;
inline std::string gOSVersion;
inline std::string gOSName;
inline std::string DialogResult;  ///< how the attenuator point dialog was closed: "OK", "CANCEL"

/// "A." and the two numbers of the version, two digits each: "A.02.61".
[[nodiscard]] std::string RevisionText(int major, int minor);

/// Reads the headers of the data files of `modelFolder` into `gCalFiles` as ReadHeadersIn does.
/// Returns the number of rows filled, -1 when `modelFolder` is ""; further rows keep what they
/// held. Throws what ReadHeadersIn throws, after all rows read are filled and reported.
std::int16_t ReadCalFileHeaders(
    const std::string& modelFolder,
    const std::function<void(const CalFileInfo& row)>& rowRead = nullptr,
    std::string_view filter = {});

/// Row of the first of `gCalFiles` with exactly this serial number, kTableRows if none exists.
[[nodiscard]] std::int16_t FindCalFile(std::string_view serialNumber);

}  // namespace tarvell

#endif
