// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/platform/PathText.h"

#include <algorithm>
#include <cstddef>

namespace tarvell {

bool IsDriveLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsPathSeparator(char c) {
  return c == '\\' || c == '/';
}

bool BeginsWithDrive(std::string_view path) {
  return path.size() >= 2 && path[1] == ':' && IsDriveLetter(path[0]);
}

std::string ShownPath(std::string_view path) {
  std::string shown(path);
  const std::size_t separator = path.find_first_of("\\/");
  if (separator == std::string_view::npos) {
    return shown;
  }
  const char kept = BeginsWithDrive(path) ? '\\' : path[separator];
  std::replace(shown.begin(), shown.end(), kept == '/' ? '\\' : '/', kept);
  return shown;
}

}  // namespace tarvell
