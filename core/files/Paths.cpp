// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/Paths.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/platform/SystemName.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

std::filesystem::path& ChosenDriveFolder() {
  static std::filesystem::path folder;
  return folder;
}

char LowerCase(char letter) {
  return static_cast<char>(letter | 0x20);
}

/// Whether there is an entry at `path`. A broken link is one.
bool EntryExists(const std::filesystem::path& path) {
  EntryFacts facts;
  return !CurrentPlatform().Facts(path, facts) && (facts.kind != EntryKind::None || facts.isLink);
}

/// The names in a path, "." and ".." resolved. With `rooted`, ".." at the top is dropped.
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

/// Whether the name of an entry differs from `name` only in case, or in that it has the characters
/// of an older system.
bool IsMeant(std::string_view entry, std::string_view name) {
  return EqualsIgnoringCase(entry, name) ||
         (!IsUtf8(entry) && EqualsIgnoringCase(NameText(entry), name));
}

/// The name of the first entry of `folder` that `name` means; `name` if there is none.
std::string NameInFolder(const std::filesystem::path& folder, const std::string& name) {
  std::string meant = name;
  const auto visit = [&](const FoundEntry& entry) {
    if (!IsMeant(entry.name, name)) {
      return true;
    }
    meant = entry.name;
    return false;
  };
  // In a folder that cannot be searched, no name is found.
  static_cast<void>(CurrentPlatform().Search(folder, SearchKind::EveryName, visit));
  return meant;
}

}  // namespace

std::filesystem::path NativePath(std::string_view path) {
  std::filesystem::path native = DriveFolder();
  if (native.empty()) {
    // A system with drive letters takes the path as it is: its names have no case, too.
    return SystemName(path.empty() ? "." : path);
  }
  bool rooted = true;
  const bool onDrive = BeginsWithDrive(path);
  if (onDrive && EqualsIgnoringCase(native.root_name().string(), path.substr(0, 2))) {
    // The folder of the drives is itself on this drive of the system.
    return SystemName(path);
  }
  if (onDrive) {
    native /= std::string(1, LowerCase(path[0]));
    path.remove_prefix(2);
  } else if (IsRelative(path)) {
    native = ".";
    rooted = false;
  } else {
    native = RootFolder();
  }
  const std::vector<std::string> components = Components(path, rooted);
  std::filesystem::path exact = native;
  for (const std::string& component : components) {
    exact /= SystemName(component);
  }
  if (EntryExists(exact)) {
    return exact;
  }
  if (onDrive && !EntryExists(native)) {
    // A drive always exists. If it cannot be made, the next access to it reports why.
    static_cast<void>(CurrentPlatform().MakeFolder(native));
  }
  for (const std::string& component : components) {
    const std::filesystem::path name = SystemName(component);
    native /= EntryExists(native / name) ? name : SystemName(NameInFolder(native, component));
  }
  return native;
}

std::string PathText(const std::filesystem::path& native) {
  const std::filesystem::path drives = DriveFolder();
  const auto [drivesEnd, letter] =
      std::mismatch(drives.begin(), drives.end(), native.begin(), native.end());
  const bool onDrive = !drives.empty() && drivesEnd == drives.end() && letter != native.end() &&
                       letter->native().size() == 1 && IsDriveLetter(letter->string()[0]);
  if (!onDrive) {
    return native.string();
  }
  std::string path = letter->string() + ":";
  for (auto component = std::next(letter); component != native.end(); ++component) {
    path += "\\" + component->string();
  }
  return path.back() == ':' ? path + "\\" : path;
}

std::string FullPathText(std::string_view path) {
  return PathText(WholePath(NativePath(path)));
}

void CheckNamesNoShare(std::string_view path) {
  const std::string_view name = Trim(path);
  if (DriveFolder().empty() || name.size() < 2 || !IsPathSeparator(name[0]) ||
      !IsPathSeparator(name[1])) {
    return;
  }
  // "\\" at the beginning never means a folder of this computer.
  if (name[0] == '\\' || !EntryExists(NativePath(name))) {
    throw Error(
        ErrorKind::Name,
        "On this computer, a share is reached through the folder where it is mounted. Have it "
        "mounted, then enter that folder here, for example "
        "/mnt/calfactors.",
        std::string(name));
  }
}

std::filesystem::path DriveFolder() {
  const std::filesystem::path& chosen = ChosenDriveFolder();
  return chosen.empty() ? CurrentPlatform().DriveFolder() : chosen;
}

void SetDriveFolder(const std::filesystem::path& folder) {
  ChosenDriveFolder() = folder;
}

}  // namespace tarvell
