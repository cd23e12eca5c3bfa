// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/paper/FileOnPaper.h"

#include <cstddef>
#include <ctime>
#include <string_view>
#include <system_error>

#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/history/Replacement.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/session/Version.h"
#include "core/text/Sha256.h"

namespace tarvell {

namespace {

constexpr std::string_view kHash = "SHA-256";
constexpr std::string_view kHashOfSave = "SHA-256 if saved";
constexpr std::string_view kHashOfFile = "SHA-256 of the file";

/// Enough digits to tell two files apart at a glance.
std::string ShortHash(const std::string& hash) {
  constexpr std::size_t kDigits = 16;
  return std::string(kHash) + " " + hash.substr(0, kDigits) + "...";
}

/// What matters most comes first: a foot has only one line.
std::string FootOf(const std::string& path, const std::string& hash, bool isSaved) {
  std::string foot = isSaved ? "" : "NOT SAVED, ";
  foot += path.empty() ? "(no file)" : path;
  return foot + (hash.empty() ? "" : ", " + ShortHash(hash));
}

/// Who has done something, and when: "5 MAR 2026 14:03:07 by anna on bench3".
std::string TimeAndUser(std::time_t time, const std::string& user, const std::string& host) {
  return LocalTimeText(time) + (user.empty() ? "" : " by " + user) +
         (host.empty() ? "" : " on " + host);
}

/// The hash of what a save would write, or why nothing can be written.
struct SaveHash {
  std::string hash;
  std::string problem;
};

SaveHash HashOfSave(const std::function<std::string()>& bytesToSave) {
  try {
    return {Sha256(bytesToSave()), {}};
  } catch (const Error& error) {
    // What is on the screen can be printed anyway.
    return {{}, "none, because these data cannot be saved. " + error.Text()};
  }
}

std::string EndOf(const Calibration& version) {
  const HistoryEvent& event = version.event;
  const std::string when = TimeAndUser(event.time, event.user, event.host);
  if (version.isCurrent) {
    return event.time == 0 ? "the present file" : "the present file, " + event.done + " " + when;
  }
  return (event.done == kDeleted ? "deleted " : "replaced ") + when;
}

}  // namespace

FileOnPaper EditedFileOnPaper(const std::string& path,
                              const std::function<std::string()>& bytesToSave) {
  const SaveHash save = HashOfSave(bytesToSave);
  std::string bytes;
  std::error_code code;
  if (!path.empty()) {
    code = ReadNativeFile(NativePath(path), bytes);
  }
  const std::string inFile = path.empty() || code ? std::string() : Sha256(bytes);
  const bool isSaved = !inFile.empty() && inFile == save.hash;
  FileOnPaper paper;
  paper.fields.push_back({"File", path.empty() ? "(none)" : path});
  paper.fields.push_back(
      {"State", isSaved        ? "Saved: the file holds exactly these data."
                : path.empty() ? "NOT SAVED. These data have no file yet."
                : code         ? "NOT SAVED. " + SystemError(code, "read the file", path).Text()
                               : "NOT SAVED. The file holds other data than those printed here."});
  if (isSaved) {
    paper.fields.push_back({std::string(kHash), inFile});
  } else {
    paper.fields.push_back(
        {std::string(kHashOfSave), save.hash.empty() ? save.problem : save.hash});
    if (!inFile.empty()) {
      paper.fields.push_back({std::string(kHashOfFile), inFile});
    }
  }
  paper.foot = FootOf(path, save.hash, isSaved);
  return paper;
}

FileOnPaper VersionOnPaper(const std::string& path, const Calibration& version) {
  std::string bytes;
  const std::string& place = version.header.FilePath;
  if (const std::error_code code = ReadNativeFile(NativePath(place), bytes)) {
    throw SystemError(code, "read the version", place);
  }
  const std::string hash = Sha256(bytes);
  const std::string_view state = TextOf(version.State());
  return {{{"File", path},
           {"Version", EndOf(version)},
           {"State", state.empty() ? "As saved." : std::string(state)},
           {std::string(kHash), hash}},
          FootOf(path, hash, true)};
}

std::string PrintedNow() {
  Platform& platform = CurrentPlatform();
  return TimeAndUser(platform.Now(), platform.UserName(), platform.HostName()) + ", " +
         std::string(kApplicationTitle) + " " + RevisionText(kMajorVersion, kMinorVersion);
}

}  // namespace tarvell
