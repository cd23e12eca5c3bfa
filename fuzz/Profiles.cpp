// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/session/Profiles.h"

#include <string>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/text/FileCharacters.h"

/// The INI file. The first byte of an input chooses: an INI file of the bytes that follow is read,
/// or the two lines that follow are written as the roots and read back.
namespace tarvell::fuzz {
namespace {

/// Whether a root comes back: the file is read by items, so that a comma or a line end ends the
/// root, and blanks at its end are dropped. An empty one means the default.
bool IsKept(const std::string& root) {
  return !root.empty() && root.find_first_of(std::string(",\r\n\0", 4)) == std::string::npos &&
         root.back() != ' ' && root.back() != '\t';
}

std::string FileWith(const std::string& calibrationDir, const std::string& stationDir) {
  return ";\r\n;  Tar vell    Ini file\r\n;\r\n[Tarvell]\r\nSysRevision=A.02.61\r\n\r\n"
         "[Calfactors]\r\nDir=" +
         calibrationDir + "\r\n\r\n[Stations]\r\nDir=" + stationDir + "\r\n";
}

void CheckWriting(const std::string& calibrationDir, const std::string& stationDir) {
  MemoryPlatform disk;
  WriteProfile(calibrationDir, stationDir);
  const std::string* file = disk.Find("windows/tarvell.ini");
  Require(file != nullptr && *file == FileWith(calibrationDir, stationDir),
          "the file holds the roots exactly as given");
  std::string calibration;
  std::string station;
  ReadProfile(calibration, station);
  // Bytes that are no UTF-8 make the file one of an older system.
  if (IsUtf8(calibrationDir) && IsUtf8(stationDir) && IsKept(calibrationDir)) {
    Require(calibration == calibrationDir, "the calibration root comes back", calibration);
    if (IsKept(stationDir)) {
      Require(station == stationDir, "the station root comes back", station);
    }
  }
}

void CheckReading(const std::string& bytes) {
  MemoryPlatform disk;
  disk.Put("windows/tarvell.ini", bytes);
  std::string calibration;
  std::string station;
  ReadProfile(calibration, station);
  Require(!calibration.empty() && !station.empty(), "there always is a root");
  Require(IsUtf8(calibration) && IsUtf8(station), "a root is text");
  Require(*disk.Find("windows/tarvell.ini") == bytes, "reading changes nothing");

  // What was read is what a next start reads, once it is written.
  WriteProfile(calibration, station);
  std::string calibrationAgain;
  std::string stationAgain;
  ReadProfile(calibrationAgain, stationAgain);
  if (IsKept(calibration) && IsKept(station)) {
    Require(calibrationAgain == calibration && stationAgain == station,
            "roots that were read come back");
  }
}

void Run(Input input) {
  if ((input.Byte() & 1U) != 0) {
    CheckReading(input.Rest());
    return;
  }
  const std::string calibrationDir = input.Line();
  CheckWriting(calibrationDir, input.Line());
}

}  // namespace
}  // namespace tarvell::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvell::fuzz::Run({data, size});
  return 0;
}
