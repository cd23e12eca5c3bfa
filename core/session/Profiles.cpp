// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/session/Profiles.h"

#include <string_view>

#include "core/files/FileIOCommonModule.h"
#include "core/files/FileText.h"
#include "core/files/ItemReader.h"
#include "core/files/Paths.h"
#include "core/files/SaveFile.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/session/CommonStringModule.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/session/Version.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr const char* kDefaultCalibrationDir = "c:\\calfactors";
constexpr const char* kDefaultStationDir = "c:\\stations";
constexpr const char* kIniName = "tarvell.ini";
constexpr int kCalibrationItem = 8;
constexpr int kStationItem = 11;
constexpr std::size_t kKeyLength = 4;  // "Dir="

/// The file in the folder of a user who may not write into the Windows directory; "" where there is
/// no such folder.
std::string OwnIniPath() {
  const std::string folder = CurrentPlatform().OwnWindowsDirectory();
  return folder.empty() ? folder : Joined(folder, kIniName);
}

bool IsThere(const std::string& path) {
  EntryFacts facts;
  return !path.empty() && !CurrentPlatform().Facts(NativePath(path), facts) &&
         facts.kind == EntryKind::File;
}

/// The file to read: a user's own is newer.
std::string IniPath() {
  const std::string own = OwnIniPath();
  return IsThere(own) ? own : Joined(GetWindowsDir(), kIniName);
}

bool MayWriteInto(const std::string& folder) {
  return !CurrentPlatform().MayChange(NativePath(folder));
}

/// The directory in an item of the file. The file is in UTF-8 or, if it is from an older system, in
/// the character set of the data files.
std::string DirectoryOf(const std::string& bytes, bool isUtf8, const char* fallback) {
  const std::string item = isUtf8 ? bytes : DecodeFileText(bytes);
  const std::string_view text = StripNull(item);
  return CharacterCount(Trim(text)) > kKeyLength ? std::string(WithoutFirst(text, kKeyLength))
                                                 : std::string(fallback);
}

/// "" for a directory without a comma.
std::string CommaNotice(const std::string& name, std::string_view directory, const char* fallback) {
  const std::size_t comma = directory.find(',');
  if (comma == std::string_view::npos) {
    return {};
  }
  const std::string item = "Dir=" + std::string(directory.substr(0, comma));
  return "The " + name + " directory holds a comma. The next start reads \"" +
         DirectoryOf(item.substr(0, item.find_last_not_of(" \t") + 1), true, fallback) +
         "\" in its place";
}

}  // namespace

std::string CalibrationDirNotice(std::string_view directory) {
  const std::string notice = CommaNotice("calibration data", directory, kDefaultCalibrationDir);
  return notice.empty() ? notice
                        : notice +
                              ", and a wrong station data directory. Choose one without a "
                              "comma.";
}

std::string StationDirNotice(std::string_view directory) {
  const std::string notice = CommaNotice("station data", directory, kDefaultStationDir);
  return notice.empty() ? notice : notice + ". Choose one without a comma.";
}

std::string GetWindowsDir() {
  const std::string directory = CurrentPlatform().WindowsDirectory();
  return std::string(StripNull(directory));
}

void ReadProfile(std::string& calibrationDir, std::string& stationDir) {
  calibrationDir = kDefaultCalibrationDir;
  stationDir = kDefaultStationDir;
  std::string calibrationItem;
  std::string item;
  try {
    ItemReader reader(NativePath(IniPath()), IniPath(), TextEncoding::Utf8);
    for (int number = 1; number <= kStationItem; ++number) {
      item = reader.ReadItem();
      if (number == kCalibrationItem) {
        calibrationItem = item;
      }
    }
  } catch (const Error&) {
    // A missing, short or unreadable file gives the defaults.
    return;
  }
  const bool areUtf8 = IsUtf8(calibrationItem) && IsUtf8(item);
  calibrationDir = DirectoryOf(calibrationItem, areUtf8, kDefaultCalibrationDir);
  stationDir = DirectoryOf(item, areUtf8, kDefaultStationDir);
}

std::string WriteProfile(const std::string& calibrationDir, const std::string& stationDir) {
  const std::string own = OwnIniPath();
  const bool ownIsFirst = !own.empty() && !IsThere(own) && !MayWriteInto(GetWindowsDir());
  const std::string path = ownIsFirst ? own : IniPath();
  const std::string folder(FolderOf(path));
  // On a system without drive letters the Windows directory may be missing, too.
  if (!FolderExists(folder)) {
    MakeFolder(folder);
  }
  FileText text;
  for (const std::string& line :
       {std::string(";"), std::string(";  Tar vell    Ini file"), std::string(";"),
        std::string("[Tarvell]"), "SysRevision=" + RevisionText(kMajorVersion, kMinorVersion),
        std::string(), std::string("[Calfactors]"), "Dir=" + calibrationDir, std::string(),
        std::string("[Stations]"), "Dir=" + stationDir}) {
    text.RawLine(line);
  }
  SaveFile(path, text.Bytes());
  return ownIsFirst ? "You have no permission to write into " + GetWindowsDir() +
                          ", so the two directories are remembered only for you, in " + own + "."
                    : std::string();
}

}  // namespace tarvell
