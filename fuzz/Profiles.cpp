// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/session/Profiles.h"

#include <string>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/text/FileCharacters.h"

/// The INI file. The first byte of an input chooses: an INI file of the bytes that follow is read,
/// or the two lines that follow are written as the directories and read back.
namespace tarvell::fuzz {
namespace {

constexpr const char* kIni = "windows/tarvell.ini";

/// Whether a directory is read back. A comma or a line end ends it, blanks at its end are dropped,
/// and an empty one means the default.
bool IsKept(const std::string& directory) {
  return !directory.empty() &&
         directory.find_first_of(std::string(",\r\n\0", 4)) == std::string::npos &&
         directory.back() != ' ' && directory.back() != '\t';
}

void CheckWriting(const std::string& calibrationDir, const std::string& stationDir) {
  MemoryPlatform disk;
  WriteProfile(calibrationDir, stationDir);
  const std::string* file = disk.Find(kIni);
  Require(file != nullptr &&
              *file ==
                  ";\r\n;  Tar vell    Ini file\r\n;\r\n[Tarvell]\r\nSysRevision=A.02.61\r\n"
                  "\r\n[Calfactors]\r\nDir=" +
                      calibrationDir + "\r\n\r\n[Stations]\r\nDir=" + stationDir + "\r\n",
          "the file holds the directories exactly as given");
  std::string calibration;
  std::string station;
  ReadProfile(calibration, station);
  // A file with bytes that are not UTF-8 is read as one from an older system.
  if (IsUtf8(calibrationDir) && IsUtf8(stationDir) && IsKept(calibrationDir)) {
    Require(calibration == calibrationDir, "the calibration directory comes back", calibration);
    Require(station == stationDir || !IsKept(stationDir), "the station directory comes back",
            station);
  }
}

void CheckReading(const std::string& bytes) {
  MemoryPlatform disk;
  disk.Put(kIni, bytes);
  std::string calibration;
  std::string station;
  ReadProfile(calibration, station);
  Require(!calibration.empty() && !station.empty(), "there always is a directory");
  Require(IsUtf8(calibration) && IsUtf8(station), "a directory is text");
  Require(*disk.Find(kIni) == bytes, "reading changes nothing");
  CheckWriting(calibration, station);
}

}  // namespace

void Run(Input input) {
  if ((input.Byte() & 1U) != 0) {
    CheckReading(input.Rest());
    return;
  }
  const std::string calibrationDir = input.Line();
  CheckWriting(calibrationDir, input.Line());
}

}  // namespace tarvell::fuzz
