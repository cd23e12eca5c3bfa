// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/FileNames.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/files/Paths.h"
#include "core/station/StationFiles.h"

/// Names that become files and folders. The input is what a user types: a station's name, a serial
/// number or a model number.
namespace tarvell::fuzz {
namespace {

/// Reserved with any extension, in any case; the digits of the last two may be superscripts.
bool IsDevice(const std::string& name) {
  static constexpr std::array<std::string_view, 6> kWhole = {"con", "prn",    "aux",
                                                             "nul", "conin$", "conout$"};
  static constexpr std::array<std::string_view, 13> kNumbers = {
      "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};
  std::string base;
  for (const char c : name.substr(0, name.find('.'))) {
    base += c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  }
  while (!base.empty() && base.back() == ' ') {
    base.pop_back();
  }
  base.erase(0, base.find_first_not_of(' '));
  return std::find(kWhole.begin(), kWhole.end(), base) != kWhole.end() ||
         std::any_of(kNumbers.begin(), kNumbers.end(), [&](std::string_view number) {
           return base == "com" + std::string(number) || base == "lpt" + std::string(number);
         });
}

/// Whether a name is one path component on every platform.
bool IsComponent(const std::string& name) {
  for (const char c : name) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 32 || code == 127) {
      return false;
    }
    switch (c) {
      case '/':
      case '\\':
      case ':':
      case '*':
      case '?':
      case '"':
      case '<':
      case '>':
      case '|':
        return false;
      default:
        break;
    }
  }
  return !name.empty() && name.back() != '.' && name.back() != ' ' && !IsDevice(name);
}

void CheckName(const std::string& name) {
  const bool accepted = Accepts([&] { CheckFileName(name, "The name"); });
  Require(accepted == IsComponent(name), "a name is accepted when it is one path component", name);
  if (accepted) {
    const MemoryPlatform disk;
    Require(NativePath(Joined("c:\\root", name)) == "/drives/c/root/" + name,
            "an accepted name lies in its folder", name);
  }
}

void CheckDataFileName(const std::string& serial) {
  std::string name;
  if (!Accepts([&] { name = DataFileName(serial); })) {
    return;
  }
  Require(name.rfind("SN", 0) == 0, "a data file's name begins with SN", name);
  const std::string last = name.substr(2);
  Require(serial.size() >= last.size() &&
              serial.compare(serial.size() - last.size(), last.size(), last) == 0,
          "the serial number ends as the name does", name);
  Require(IsComponent(name) && name.find('.') == std::string::npos,
          "the name is one that the lists show", name);
}

void CheckStation(const std::string& name) {
  MemoryPlatform disk;
  disk.MakeFolders("root");
  const std::size_t before = disk.EntryCount();
  if (!Accepts([&] { MakeStation("c:\\root", name); })) {
    Require(disk.EntryCount() == before, "a refused station changes nothing", name);
    return;
  }
  Require(IsComponent(name), "a station's name is one path component", name);
  Require(disk.HasFolder("root/" + name) && disk.EntryCount() == before + 1,
          "a station is one folder below the root", name);
  Require(ListStations("c:\\root") == std::vector<std::string>{name}, "the list shows the station",
          name);
}

void CheckInstrument(const std::string& name) {
  MemoryPlatform disk;
  disk.MakeFolders("root/S1");
  const std::size_t before = disk.EntryCount();
  StationInstrument instrument;
  instrument.ModelNumber = name;
  StoredFile file;
  if (!Accepts([&] { SaveInstrumentFile("c:\\root\\S1", instrument, file); })) {
    Require(disk.EntryCount() == before, "a refused instrument changes nothing", name);
    return;
  }
  Require(IsComponent(name), "a model number is one path component", name);
  Require(disk.Find("root/S1/" + name) != nullptr && disk.EntryCount() == before + 1,
          "an instrument is one file in its station", name);
  Require(ListInstruments("c:\\root\\S1") == std::vector<std::string>{name},
          "the list shows the instrument", name);
  DeleteInstrumentFile("c:\\root\\S1", name);
  Require(disk.EntryCount() == before, "deleting an instrument deletes its file", name);
}

void Run(Input input) {
  const std::string name = input.Rest();
  CheckName(name);
  CheckDataFileName(name);
  CheckStation(name);
  CheckInstrument(name);
}

}  // namespace
}  // namespace tarvell::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvell::fuzz::Run({data, size});
  return 0;
}
