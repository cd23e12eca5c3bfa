// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SESSION_MOSVERSION_H
#define TARVELL_CORE_SESSION_MOSVERSION_H

#include <string>

#include "core/platform/Platform.h"

namespace tarvell {

/// The operating system's texts as the screens show them.
struct OSVersionTexts {
  std::string platform;  ///< "95" or "NT"; elsewhere the system's own name
  std::string version;   ///< major, minor and build number: "4.10.2222"
  std::string name;      ///< name and version: "Windows(R) 98(4.10.1998)"
};

[[nodiscard]] OSVersionTexts DescribeOSVersion(const OSVersionRecord& record);

/// Asks the system for its version and fills `gOSPlatform`, `gOSVersion` and `gOSName`. Where it
/// does not tell, the last two are "FAIL" and the first keeps what it held.
void GetOSVersion();

}  // namespace tarvell

#endif
