// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_SHELL_H
#define TARVELL_CORE_PLATFORM_SHELL_H

#include <string>
#include <vector>

namespace tarvell {

/// Prepares a program that is used in a shell: from now on, the standard streams pass every byte as
/// it is, as UTF-8. Returns what was typed after the program's name, in UTF-8.
[[nodiscard]] std::vector<std::string> StartInShell(int argc, char** argv);

}  // namespace tarvell

#endif
