// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/session/Tarvell_MainModule.h"

#include <algorithm>

#include "core/numbers/Numbers.h"

namespace tarvell {

std::string RevisionText(int major, int minor) {
  return "A." + AtLeastTwoDigits(major) + "." + AtLeastTwoDigits(minor);
}

std::int16_t ReadCalFileHeaders(const std::string& modelFolder,
                                const std::function<void(const CalFileInfo& row)>& rowRead,
                                std::string_view filter) {
  return modelFolder.empty()
             ? std::int16_t{-1}
             : static_cast<std::int16_t>(ReadHeadersIn(modelFolder, gCalFiles, rowRead, filter));
}

std::int16_t FindCalFile(std::string_view serialNumber) {
  const auto* found = std::find_if(gCalFiles.begin(), gCalFiles.end(), [&](const CalFileInfo& row) {
    return row.SerialNumber == serialNumber;
  });
  return static_cast<std::int16_t>(found - gCalFiles.begin());
}

}  // namespace tarvell
