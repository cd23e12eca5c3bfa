// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/session/Profiles.h"

#include <memory>
#include <string_view>
#include <system_error>

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

std::string IniPath() {
  return Joined(GetWindowsDir(), kIniName);
}

bool IsThere(const std::string& path) {
  EntryFacts facts;
  return !CurrentPlatform().Facts(NativePath(path), facts) && facts.kind == EntryKind::File;
}

bool IsRefused(std::error_code code) {
  return code == std::errc::permission_denied || code == std::errc::read_only_file_system;
}

/// Whether this user may write the file in the Windows directory, which all users share.
bool MayWriteIni() {
  std::unique_ptr<OutputFile> opened;
  return !IsRefused(IsThere(IniPath())
                        ? CurrentPlatform().OpenInPlace(NativePath(IniPath()), opened)
                        : CurrentPlatform().MayChange(NativePath(GetWindowsDir())));
}

/// Whether this user has a file of the user's own, or needs one. It holds only what the user has
/// changed: everything else comes from the file that all users share.
bool HasOwnIni() {
  return !OwnIniPath().empty() && !MayWriteIni();
}

/// The directory in an item of the file. The file is in UTF-8 or, if it is from an older system, in
/// the character set of the data files.
std::string DirectoryOf(const std::string& bytes, bool isUtf8, const std::string& fallback) {
  const std::string item = isUtf8 ? bytes : DecodeFileText(bytes);
  const std::string_view text = StripNull(item);
  return CharacterCount(Trim(text)) > kKeyLength ? std::string(WithoutFirst(text, kKeyLength))
                                                 : fallback;
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

struct Roots {
  std::string calibration;
  std::string station;

  bool operator==(const Roots&) const = default;
};

/// What the last ReadProfile has returned.
Roots& RootsAtStart() {
  static Roots roots;
  return roots;
}

/// The roots in the file at `path`. Those of a missing, short or unreadable file, and an empty one,
/// are as in `fallback`.
Roots RootsIn(const std::string& path, const Roots& fallback) {
  std::string calibrationItem;
  std::string item;
  try {
    ItemReader reader(NativePath(path), path, TextEncoding::Utf8);
    for (int number = 1; number <= kStationItem; ++number) {
      item = reader.ReadItem();
      if (number == kCalibrationItem) {
        calibrationItem = item;
      }
    }
  } catch (const Error&) {
    return fallback;
  }
  const bool areUtf8 = IsUtf8(calibrationItem) && IsUtf8(item);
  return {DirectoryOf(calibrationItem, areUtf8, fallback.calibration),
          DirectoryOf(item, areUtf8, fallback.station)};
}

/// What the user's own file holds of a root; "" if the user has the one that all users share.
/// `own` is what the file holds so far, `start` what the user began with.
std::string OwnRoot(const std::string& chosen, const std::string& start, const std::string& shared,
                    const std::string& own) {
  if (chosen == shared) {
    return {};
  }
  // The shared root may have changed since the start; the user has not chosen the earlier one.
  return chosen == start ? own : chosen;
}

/// Writes the whole file with the roots exactly as given.
void WriteIni(const std::string& path, const Roots& roots) {
  const std::string folder(FolderOf(path));
  // On a system without drive letters the Windows directory may be missing, too.
  if (!FolderExists(folder)) {
    MakeFolder(folder);
  }
  FileText text;
  for (const std::string& line :
       {std::string(";"), std::string(";  Tar vell    Ini file"), std::string(";"),
        std::string("[Tarvell]"), "SysRevision=" + RevisionText(kMajorVersion, kMinorVersion),
        std::string(), std::string("[Calfactors]"), "Dir=" + roots.calibration, std::string(),
        std::string("[Stations]"), "Dir=" + roots.station}) {
    text.RawLine(line);
  }
  SaveFile(path, text.Bytes());
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
  Roots roots = RootsIn(IniPath(), {kDefaultCalibrationDir, kDefaultStationDir});
  if (HasOwnIni()) {
    roots = RootsIn(OwnIniPath(), roots);
  }
  RootsAtStart() = roots;
  calibrationDir = roots.calibration;
  stationDir = roots.station;
}

std::string WriteProfile(const std::string& calibrationDir, const std::string& stationDir) {
  if (!HasOwnIni()) {
    WriteIni(IniPath(), {calibrationDir, stationDir});
    return {};
  }
  const std::string path = OwnIniPath();
  const Roots own = RootsIn(path, {});
  const Roots shared = RootsIn(IniPath(), {kDefaultCalibrationDir, kDefaultStationDir});
  const Roots start = RootsAtStart();
  const Roots changed{
      OwnRoot(calibrationDir, start.calibration, shared.calibration, own.calibration),
      OwnRoot(stationDir, start.station, shared.station, own.station)};
  if (changed == own) {
    return {};
  }
  const bool isFirst = !IsThere(path);
  WriteIni(path, changed);
  return isFirst ? "You have no permission to write into " + GetWindowsDir() +
                       ", so the two directories are remembered only for you, in " + path + "."
                 : std::string();
}

}  // namespace tarvell
