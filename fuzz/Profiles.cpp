// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/session/Profiles.h"

#include <string>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/text/FileCharacters.h"

/// The INI file. An input is one; the directories that are read from it are written and read back.
namespace tarvell::fuzz {
namespace {

constexpr const char* kIni = "windows/tarvell.ini";

/// Whether a directory is read back. A comma or a line end, which a quoted line may hold, ends it,
/// and a TAB at its end is dropped.
bool IsKept(const std::string& directory) {
  return directory.find_first_of(",\r\n") == std::string::npos && directory.back() != '\t';
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
  if (IsKept(calibrationDir)) {
    Require(calibration == calibrationDir, "the calibration directory is read back", calibration);
    Require(station == stationDir || !IsKept(stationDir), "the station directory is read back",
            station);
  }
}

}  // namespace

void Run(Input input) {
  const std::string bytes = input.Rest();
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

}  // namespace tarvell::fuzz
