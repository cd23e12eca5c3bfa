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

/// `text` as a part of a file name after its beginning: "_" stands for every character that
/// CheckFileName refuses, and for a dot or blank at the end. At most 64 characters of it.
[[nodiscard]] std::string FileNamePart(std::string_view text);

/// Whether a name is one of those that the lists take for data files: it begins with "SN", "Sn" or
/// "sn".
[[nodiscard]] bool IsDataFileName(std::string_view name);

/// "SN" and the last five characters of a serial number, even if that is not a valid name.
[[nodiscard]] std::string UncheckedDataFileName(std::string_view serialNumber);

/// Name of the data file of a serial number: UncheckedDataFileName. Throws a Name error when that
/// is not a valid name, or has a "." (the lists would never show it).
[[nodiscard]] std::string DataFileName(std::string_view serialNumber);

}  // namespace tarvell

#endif
