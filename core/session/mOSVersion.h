// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SESSION_MOSVERSION_H
#define TARVELL_CORE_SESSION_MOSVERSION_H

#include <string>

#include "core/platform/Platform.h"

namespace tarvell {

/// The texts about the operating system on the screens.
struct OSVersionTexts {
  std::string platform;  ///< "95" or "NT"; elsewhere the system's own name
  std::string version;   ///< major, minor and build number: "4.10.2222"
  std::string name;      ///< name and version: "Windows(R) 98(4.10.1998)"
};

[[nodiscard]] OSVersionTexts DescribeOSVersion(const OSVersionRecord& record);

/// Sets `gOSPlatform`, `gOSVersion` and `gOSName` to the texts of the running system. If it does
/// not report its version, the last two become "FAIL" and the first stays as it was.
void GetOSVersion();

}  // namespace tarvell

#endif
