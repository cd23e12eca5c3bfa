// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_TESTKIT_H
#define TARVELL_CORE_CALDATA_TESTKIT_H

#include <filesystem>
#include <string>

#include "core/history/Replacement.h"

namespace tarvell {

/// Copies a finished test kit file, byte for byte, to the data file in `modelFolder` that the
/// serial number in its second item names, replacing an earlier one, which the history keeps.
/// `source` is a system path. The file may be of any size; its first two items must end within
/// kDataFileLimit.
///
/// Throws, with nothing changed, when the file cannot be read or has fewer than two items, when
/// its serial number is empty or makes no valid file name, when it is the data file itself, or
/// when the copy cannot be saved.
void CopyTestKitFile(const std::filesystem::path& source, const std::string& modelFolder,
                     Earlier earlier = Earlier::Keep);
void CopyTestKitFile(const std::string& source, const std::string& modelFolder,
                     Earlier earlier = Earlier::Keep) = delete;

/// What CopyTestKitFile would replace: the data of another kit, or nothing to ask about. Throws as
/// it does.
[[nodiscard]] Replacement TestKitWouldReplace(const std::filesystem::path& source,
                                              const std::string& modelFolder);
Replacement TestKitWouldReplace(const std::string& source, const std::string& modelFolder) = delete;

}  // namespace tarvell

#endif
