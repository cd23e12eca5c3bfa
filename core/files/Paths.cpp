// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/Paths.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

std::string& ChosenDriveFolder() {
  static std::string folder;
  return folder;
}

char LowerCase(char letter) {
  return static_cast<char>(letter | 0x20);
}

/// Whether an entry of this name stands there, a link that leads nowhere included.
bool EntryExists(const std::string& path) {
  EntryFacts facts;
  return !CurrentPlatform().Facts(path, facts) && (facts.kind != EntryKind::None || facts.isLink);
}

/// Folders and the name of a path, "." and ".." resolved. `rooted`: ".." at the top is dropped.
std::vector<std::string> Components(std::string_view path, bool rooted) {
  std::vector<std::string> components;
  std::string component;
  for (std::size_t i = 0; i <= path.size(); ++i) {
    if (i < path.size() && !IsPathSeparator(path[i])) {
      component += path[i];
      continue;
    }
    if (component == "..") {
      if (!components.empty() && components.back() != "..") {
        components.pop_back();
      } else if (!rooted) {
        components.push_back(component);
      }
    } else if (!component.empty() && component != ".") {
      components.push_back(component);
    }
    component.clear();
  }
  return components;
}

/// The name of the entry of `folder` that `name`, which is no entry's exact name, means.
std::string NameInFolder(const std::string& folder, const std::string& name) {
  std::string meant = name;
  // A folder that cannot be searched has no entry to be meant.
  static_cast<void>(
      CurrentPlatform().Search(folder, SearchKind::EveryName, [&](const std::string& entry) {
        if (!EqualsIgnoringCase(entry, name)) {
          return true;
        }
        meant = entry;
        return false;
      }));
  return meant;
}

}  // namespace

std::string NativePath(std::string_view path) {
  std::string native;
  bool rooted = true;
  const bool onDrive = BeginsWithDrive(path);
  if (onDrive) {
    native = DriveFolder();
    if (native.empty()) {
      return std::string(path);
    }
    native += {'/', LowerCase(path[0])};
    path.remove_prefix(2);
  } else if (IsRelative(path)) {
    native = ".";
    rooted = false;
  }
  const std::vector<std::string> components = Components(path, rooted);
  std::string exact = native;
  for (const std::string& component : components) {
    exact += "/" + component;
  }
  if (exact.empty()) {
    return "/";
  }
  if (EntryExists(exact)) {
    return exact;
  }
  if (onDrive && !EntryExists(native)) {
    // A drive always exists. Where it cannot be made, using it tells why.
    static_cast<void>(CurrentPlatform().MakeFolder(native));
  }
  for (const std::string& component : components) {
    const std::string entry = native + "/" + component;
    native = EntryExists(entry)
                 ? entry
                 : native + "/" + NameInFolder(native.empty() ? "/" : native, component);
  }
  return native;
}

std::string PathText(std::string_view native) {
  const std::string drives = DriveFolder() + "/";
  const std::size_t letter = drives.size();
  const bool onDrive = drives.size() > 1 && native.substr(0, letter) == drives &&
                       native.size() > letter && IsDriveLetter(native[letter]) &&
                       (native.size() == letter + 1 || native[letter + 1] == '/');
  if (!onDrive) {
    return std::string(native);
  }
  const std::string_view rest = native.substr(letter + 1);
  return std::string(1, native[letter]) + ":" + (rest.empty() ? "\\" : Replaced(rest, '/', '\\'));
}

bool IsRelative(std::string_view path) {
  return !BeginsWithDrive(path) && (path.empty() || !IsPathSeparator(path[0]));
}

std::string FullPathText(std::string_view path) {
  const std::string native = NativePath(path);
  std::error_code code;
  const std::filesystem::path whole = std::filesystem::absolute(native, code);
  return PathText(code ? native : whole.lexically_normal().string());
}

void CheckNamesNoShare(std::string_view path) {
  const std::string_view name = Trim(path);
  if (DriveFolder().empty() || name.size() < 2 || !IsPathSeparator(name[0]) ||
      !IsPathSeparator(name[1])) {
    return;
  }
  // A folder of this computer is never written with "\\".
  if (name[0] == '\\' || !EntryExists(NativePath(name))) {
    throw Error(ErrorKind::Name,
                "This computer reaches the share of another one by a folder of its own, in which "
                "the share is mounted. Have it mounted, then enter that folder here, for example "
                "/mnt/calfactors.",
                std::string(name));
  }
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
  const std::size_t separator = path.find_last_of("\\/");
  return path.substr(0, separator == std::string_view::npos ? 0 : separator);
}

std::string_view NameOf(std::string_view path) {
  return path.substr(path.find_last_of("\\/") + 1);
}

std::string DriveFolder() {
  const std::string& chosen = ChosenDriveFolder();
  return chosen.empty() ? CurrentPlatform().DriveFolder() : chosen;
}

void SetDriveFolder(const std::string& folder) {
  ChosenDriveFolder() = folder;
}

}  // namespace tarvell
