// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/FileNames.h"

#include <filesystem>
#include <string>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/files/Paths.h"
#include "core/platform/SystemName.h"

/// Names that become files and folders. The input is what a user types: a station's name, a serial
/// number or a model number.
namespace tarvell::fuzz {
namespace {

/// Whether a name is one component of a path.
bool IsComponent(const std::string& name) {
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of(std::string("/\\:\0", 4)) == std::string::npos;
}

void CheckName(const std::string& name) {
  if (Accepts([&] { CheckFileName(name, "The name"); })) {
    const MemoryPlatform disk;
    Require(IsComponent(name), "an accepted name is one path component", name);
    const std::filesystem::path native = NativePath(Joined("c:\\root", name));
    Require(native.parent_path() == "/drives/c/root" && native.filename() == SystemName(name),
            "an accepted name is in its folder", name);
  }
}

void CheckDataFileName(const std::string& serial) {
  std::string name;
  if (Accepts([&] { name = DataFileName(serial); })) {
    Require(name.starts_with("SN"), "a data file's name begins with SN", name);
    Require(serial.ends_with(name.substr(2)), "the serial number ends as the name does", name);
    Require(IsComponent(name) && name.find('.') == std::string::npos,
            "the lists show a file of this name", name);
  }
}

}  // namespace

void Run(Input input) {
  const std::string name = input.Rest();
  CheckName(name);
  CheckDataFileName(name);
}

}  // namespace tarvell::fuzz
