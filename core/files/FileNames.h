// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_FILENAMES_H
#define TARVELL_CORE_FILES_FILENAMES_H

#include <string>
#include <string_view>

namespace tarvell {

/// Throws a Name error unless `name` is one path component on every platform: no separator, none
/// of : * ? " < > |, no control character, not "." or "..", no trailing dot or blank, no reserved
/// device name. The message calls the name `what` and names the character.
void CheckFileName(std::string_view name, const std::string& what);

/// Name of the data file of a serial number: "SN" and its last five characters. Throws a Name
/// error when that is no valid name, or holds a "." (the lists would never show it).
[[nodiscard]] std::string DataFileName(std::string_view serialNumber);

}  // namespace tarvell

#endif
