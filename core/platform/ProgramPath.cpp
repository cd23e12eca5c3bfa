// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/platform/ProgramPath.h"

#include <algorithm>
#include <cstddef>

namespace tarvell {

namespace {

constexpr std::string_view kSeparators = "\\/";

}  // namespace

bool IsDriveLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsPathSeparator(char c) {
  return c == kSeparators[0] || c == kSeparators[1];
}

bool BeginsWithDrive(std::string_view path) {
  return path.size() >= 2 && path[1] == ':' && IsDriveLetter(path[0]);
}

bool IsRelative(std::string_view path) {
  return !BeginsWithDrive(path) && (path.empty() || !IsPathSeparator(path[0]));
}

std::string Joined(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (path.empty() || !IsPathSeparator(path.back())) {
    path += '\\';
  }
  path += name;
  return path;
}

std::string_view FolderOf(std::string_view path) {
  const std::size_t separator = path.find_last_of(kSeparators);
  return path.substr(0, separator == std::string_view::npos ? 0 : separator);
}

std::string_view LastNameOf(std::string_view path) {
  // A search for several characters, find_last_of, calls a function for each character.
  const auto separator = std::find_if(path.rbegin(), path.rend(), &IsPathSeparator);
  return path.substr(static_cast<std::size_t>(path.rend() - separator));
}

std::string ShownPath(std::string_view path) {
  std::string shown(path);
  const std::size_t separator = path.find_first_of(kSeparators);
  if (separator == std::string_view::npos) {
    return shown;
  }
  const char kept = BeginsWithDrive(path) ? '\\' : path[separator];
  std::replace(shown.begin(), shown.end(), kept == '/' ? '\\' : '/', kept);
  return shown;
}

}  // namespace tarvell
