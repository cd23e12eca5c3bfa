// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/FileNames.h"

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

/// Whether a name is one component of a path.
bool IsComponent(const std::string& name) {
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of(std::string("/\\:\0", 4)) == std::string::npos;
}

void CheckName(const std::string& name) {
  if (Accepts([&] { CheckFileName(name, "The name"); })) {
    const MemoryPlatform disk;
    Require(IsComponent(name), "an accepted name is one path component", name);
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
