// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <ctime>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "core/platform/Shell.h"

int main(int argc, char** argv) {
  tarvell::cli::SystemConsole console;
  const std::vector<std::string> arguments = tarvell::StartInShell(argc, argv);
  const int status = tarvell::cli::RunCommandLine(arguments, std::time(nullptr), console);
  // A list that was not written whole must not look like the answer.
  return console.Close() ? status : tarvell::cli::kCouldNotLook;
}
