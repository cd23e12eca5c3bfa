// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/Profiles.h"

#include <string_view>

#include "app/Tarvell_MainModule.h"
#include "app/Version.h"
#include "common/CommonStringModule.h"
#include "common/FileIOCommonModule.h"
#include "common/ItemReader.h"
#include "common/Paths.h"
#include "common/Platform.h"
#include "common/SaveFile.h"
#include "common/Text.h"

namespace tarvell {

namespace {

constexpr const char* kDefaultCalibrationDir = "c:\\calfactors";
constexpr const char* kDefaultStationDir = "c:\\stations";
constexpr int kCalibrationItem = 8;
constexpr int kStationItem = 11;
constexpr std::size_t kKeyLength = 4;  // "Dir="

std::string IniPath() {
  return Joined(GetWindowsDir(), "tarvell.ini");
}

std::string DirectoryOf(std::string_view item, const char* fallback) {
  const std::string_view text = StripNull(item);
  return CharacterCount(Trim(text)) > kKeyLength ? std::string(WithoutFirst(text, kKeyLength))
                                                 : std::string(fallback);
}

}  // namespace

std::string GetWindowsDir() {
  const std::string directory = CurrentPlatform().WindowsDirectory();
  return std::string(StripNull(directory));
}

void ReadProfile(std::string& calibrationDir, std::string& stationDir) {
  calibrationDir = kDefaultCalibrationDir;
  stationDir = kDefaultStationDir;
  ItemReader reader;
  if (reader.Open(NativePath(IniPath()), TextEncoding::Utf8)) {
    return;
  }
  std::string calibrationItem;
  std::string item;
  for (int number = 1; number <= kStationItem; ++number) {
    if (!reader.TryReadItem(item)) {
      return;
    }
    if (number == kCalibrationItem) {
      calibrationItem = item;
    }
  }
  calibrationDir = DirectoryOf(calibrationItem, kDefaultCalibrationDir);
  stationDir = DirectoryOf(item, kDefaultStationDir);
}

void WriteProfile(const std::string& calibrationDir, const std::string& stationDir) {
  // Every Windows has its directory; on a drive that the program keeps it may be missing.
  if (!FolderExists(GetWindowsDir())) {
    MakeFolder(GetWindowsDir());
  }
  SaveFile(IniPath(),
           ";\r\n"
           ";  Tar vell    Ini file\r\n"
           ";\r\n"
           "[Tarvell]\r\n"
           "SysRevision=" +
               RevisionText(kMajorVersion, kMinorVersion) +
               "\r\n"
               "\r\n"
               "[Calfactors]\r\n"
               "Dir=" +
               calibrationDir +
               "\r\n"
               "\r\n"
               "[Stations]\r\n"
               "Dir=" +
               stationDir + "\r\n");
}

}  // namespace tarvell
