// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/FileNames.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/files/Paths.h"
#include "core/station/StationFiles.h"

/// Names that become files and folders. The input is what a user types: a station's name, a serial
/// number or a model number.
namespace tarvell::fuzz {
namespace {

/// Reserved with any extension and in any case; the digits may be superscripts.
std::set<std::string> Devices() {
  std::set<std::string> names = {"con", "prn", "aux", "nul", "conin$", "conout$"};
  for (const char* digit :
       {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"}) {
    names.insert(std::string("com") + digit);
    names.insert(std::string("lpt") + digit);
  }
  return names;
}

/// Whether a name is one path component on every platform.
bool IsComponent(const std::string& name) {
  static const std::set<std::string> kDevices = Devices();
  const bool hasRefused = std::any_of(name.begin(), name.end(), [](char c) {
    const auto code = static_cast<unsigned char>(c);
    return code < 32 || code == 127 || std::string("/\\:*?\"<>|").find(c) != std::string::npos;
  });
  if (name.empty() || hasRefused || name.back() == '.' || name.back() == ' ') {
    return false;
  }
  std::string base = Stripped(name.substr(0, name.find('.')));
  std::transform(base.begin(), base.end(), base.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return !kDevices.contains(base);
}

void CheckName(const std::string& name) {
  const bool accepted = Accepts([&] { CheckFileName(name, "The name"); });
  Require(accepted == IsComponent(name), "a name is accepted when it is one path component", name);
  if (accepted) {
    const MemoryPlatform disk;
    Require(NativePath(Joined("c:\\root", name)) == "/drives/c/root/" + name,
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

/// Makes one entry of this name in an empty folder.
template <typename Make, typename List>
void CheckEntry(const MemoryPlatform& disk, const std::string& name, const Make& make,
                const List& list) {
  const std::size_t before = disk.EntryCount();
  const bool accepted = Accepts(make);
  Require(disk.EntryCount() == before + (accepted ? 1 : 0), "a refused name changes nothing", name);
  if (accepted) {
    Require(IsComponent(name), "an accepted name is one path component", name);
    Require(list() == std::vector<std::string>{name}, "the list shows the entry", name);
  }
}

}  // namespace

void Run(Input input) {
  const std::string name = input.Rest();
  CheckName(name);
  CheckDataFileName(name);

  MemoryPlatform disk;
  disk.MakeFolders("root");
  CheckEntry(
      disk, name, [&] { MakeStation("c:\\root", name); }, [] { return ListStations("c:\\root"); });

  disk.MakeFolders("other/S1");
  const std::size_t before = disk.EntryCount();
  const std::string station = R"(c:\other\S1)";
  StationInstrument instrument;
  instrument.ModelNumber = name;
  StoredFile file;
  CheckEntry(
      disk, name, [&] { SaveInstrumentFile(station, instrument, file); },
      [&] { return ListInstruments(station); });
  if (disk.EntryCount() > before) {
    Require(disk.Find("other/S1/" + name) != nullptr, "an instrument is a file in its station",
            name);
    DeleteInstrumentFile(station, name);
    Require(disk.EntryCount() == before, "deleting an instrument deletes its file", name);
  }
}

}  // namespace tarvell::fuzz
