// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "FuzzTarget.h"

namespace {

std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.is_regular_file()) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

void Run(const std::filesystem::path& path) {
  // The last line of a run that ends here names the input.
  std::puts(path.c_str());
  static_cast<void>(std::fflush(stdout));
  std::ifstream file(path, std::ios::binary);
  file.exceptions(std::ios::badbit | std::ios::failbit);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file),
                                std::istreambuf_iterator<char>()};
  const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(data.data(), data.size());
}

}  // namespace

/// Runs the target that this is linked with on every file of the folder that is its argument.
int main(int argc, char** argv) {
  if (argc != 2) {
    std::puts("The argument is the folder with the corpus.");
    return 2;
  }
  try {
    const std::vector<std::filesystem::path> files = FilesIn(argv[1]);
    if (files.empty()) {
      std::puts("The corpus is empty.");
      return 1;
    }
    for (const std::filesystem::path& path : files) {
      Run(path);
    }
    std::printf("%zu inputs\n", files.size());
  } catch (const std::exception& error) {
    std::puts(error.what());
    return 1;
  }
  return 0;
}
