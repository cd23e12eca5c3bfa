// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_PATHTEXT_H
#define TARVELL_CORE_PLATFORM_PATHTEXT_H

#include <string>
#include <string_view>

/// The form of a path text, such as "c:\calfactors\PX12A"; what it means is the business of
/// Paths.h.
namespace tarvell {

[[nodiscard]] bool IsDriveLetter(char c);

/// Whether `c` is "\\" or "/", which both separate.
[[nodiscard]] bool IsPathSeparator(char c);

/// Whether `path` begins with a letter and a colon.
[[nodiscard]] bool BeginsWithDrive(std::string_view path);

/// `path` as a message shows it, with one kind of separator: "\\" after a drive letter, else the
/// one that stands first in it.
[[nodiscard]] std::string ShownPath(std::string_view path);

}  // namespace tarvell

#endif
