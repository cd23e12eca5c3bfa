// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "FuzzTarget.h"

/// Runs the target on every file of the folder that is the argument.
int main(int argc, char** argv) {
  std::set<std::filesystem::path> files;
  if (argc == 2) {
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
      files.insert(entry.path());
    }
  }
  for (const std::filesystem::path& path : files) {
    // When a run ends here, its last line names the input.
    std::puts(path.string().c_str());
    static_cast<void>(std::fflush(stdout));
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    tarvell::fuzz::Require(bytes.size() == std::filesystem::file_size(path), "the input is read");
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  std::printf("%zu inputs\n", files.size());
  return files.empty() ? 1 : 0;
}
