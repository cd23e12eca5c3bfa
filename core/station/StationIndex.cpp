// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/station/StationIndex.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/station/StationFiles.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// The line of a name in INDEX, or its own bytes if no line can hold it.
std::string LineOf(const std::string& name) {
  return IsUtf8(name) && IsFileText(name) ? EncodeFileText(name) : name;
}

std::set<std::string> LinesOf(const std::vector<std::string>& names) {
  std::set<std::string> lines;
  std::ranges::transform(names, std::inserter(lines, lines.end()), &LineOf);
  return lines;
}

/// The lines of the INDEX file at `path`, without that of INDEX itself.
std::vector<std::string> ReadIndex(const std::string& path) {
  std::string bytes;
  if (ReadNativeFile(NativePath(path), bytes, kDataFileLimit)) {
    return {};
  }
  std::vector<std::string> lines;
  std::string_view rest = bytes;
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    if (!line.empty() && line != kIndexName) {
      lines.emplace_back(line);
    }
  }
  return lines;
}

}  // namespace

void StationIndex::Begin(const std::string& folder) {
  path_ = Joined(folder, kIndexName);
  const std::vector<std::string> lines = ReadIndex(path_);
  atBegin_ = {lines.begin(), lines.end()};
  seen_.clear();
}

void StationIndex::WasListed(const std::vector<std::string>& names) {
  seen_.merge(LinesOf(names));
}

std::vector<std::string> StationIndex::Merged(const std::vector<std::string>& shown,
                                              const std::vector<std::string>& listed) const {
  const std::set<std::string> there = LinesOf(listed);
  std::set<std::string> taken;
  std::vector<std::string> names;
  for (const std::string& name : shown) {
    const std::string line = LineOf(name);
    if (there.contains(line) || !seen_.contains(line)) {
      taken.insert(line);
      names.push_back(name);
    }
  }
  const auto take = [&](const std::string& name, const std::string& line) {
    if (taken.insert(line).second) {
      names.push_back(name);
    }
  };
  for (const std::string& name : listed) {
    take(name, LineOf(name));
  }
  for (const std::string& line : ReadIndex(path_)) {
    if (!atBegin_.contains(line) && !seen_.contains(line)) {
      take(DecodeFileText(line), line);
    }
  }
  return names;
}

}  // namespace tarvell
