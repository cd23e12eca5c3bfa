// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_FILENAMES_H
#define TARVELL_CORE_FILES_FILENAMES_H

#include <string>
#include <string_view>

namespace tarvell {

/// Throws a Name error unless `name` can be a file name on every system: no separator, none of
/// : * ? " < > |, no control character, not "." or "..", no dot or blank at its end, no reserved
/// device name. The message begins with `what`, and names the character.
void CheckFileName(std::string_view name, const std::string& what);

/// Name of the data file of a serial number: "SN" and its last five characters. Throws a Name
/// error when that is no valid name or holds a ".", because no list would show the file.
[[nodiscard]] std::string DataFileName(std::string_view serialNumber);

}  // namespace tarvell

#endif
