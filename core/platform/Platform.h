// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_PLATFORM_H
#define TARVELL_CORE_PLATFORM_PLATFORM_H

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace tarvell {

/// An ordinary file open for reading from its start.
class InputFile {
 public:
  InputFile() = default;
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  virtual ~InputFile() = default;

  /// Reads up to `size` bytes into `buffer`; `count` 0 means the end of the file.
  [[nodiscard]] virtual std::error_code Read(char* buffer, std::size_t size,
                                             std::size_t& count) = 0;
};

/// A file open for writing from its start. Closing is the caller's business; destroying an open
/// one gives it up.
class OutputFile {
 public:
  OutputFile() = default;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  virtual ~OutputFile() = default;

  /// Writes at least one byte of `bytes` (which must not be empty); `count` tells how many.
  [[nodiscard]] virtual std::error_code Write(std::string_view bytes, std::size_t& count) = 0;
  /// Cuts the file behind what was written. Does nothing on a device.
  [[nodiscard]] virtual std::error_code CutHere() = 0;
  /// Length of the file in bytes; that of a device is 0.
  [[nodiscard]] virtual std::error_code Length(std::uintmax_t& length) = 0;
  /// Gives the file the mode and group of the file at `path`, and its owner where the system
  /// permits that. Refuses what the user may not write, or cannot give the group of.
  [[nodiscard]] virtual std::error_code TakeAttributesOf(const std::string& path) = 0;
  /// Returns when the content is on the disk.
  [[nodiscard]] virtual std::error_code Sync() = 0;
  [[nodiscard]] virtual std::error_code Close() = 0;
};

enum class EntryKind { None, File, Folder, Other };

/// What stands at a path. Links are followed; `isLink` tells that there was one, and a link that
/// leads nowhere has kind None.
struct EntryFacts {
  EntryKind kind = EntryKind::None;
  bool isLink = false;
  std::uintmax_t linkCount = 0;
  std::time_t modified = 0;  ///< when its content was written last, 0 where that is not known
};

enum class SearchKind {
  NamesWithoutDot,  ///< "*.": every name without a dot, folders included
  EveryName,        ///< "*": every name, folders included
  OrdinaryFiles     ///< "*.*": ordinary files alone, whatever their name
};

/// Version record of the operating system. `family` is 1 or 2 for the two Windows families (see
/// mOSVersion.h); on any other system it is 0 and `systemName` tells the name.
struct OSVersionRecord {
  int family = 0;
  std::string systemName;
  int major = 0;
  int minor = 0;
  int build = 0;
  std::string servicePack;

  bool hasProductType = false;  ///< whether the extended record could be had
  int productType = 0;
  int servicePackMajor = 0;
};

/// What the operating system does for the program. Every path here is native; Paths.h makes one
/// from the path text that the program speaks. Nothing outside the implementations assumes a
/// particular system. Tests put a platform of their own in its place, to make a step fail.
class Platform {
 public:
  Platform() = default;
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;
  virtual ~Platform() = default;

  // Files.

  /// Opens an ordinary file; anything else (a folder, a device, a pipe) is refused at once with
  /// is_a_directory or not_supported.
  [[nodiscard]] virtual std::error_code OpenForReading(const std::string& path,
                                                       std::unique_ptr<InputFile>& file) = 0;
  /// Creates a new, empty file of a name of its own in `folder`, which no search ever finds. One
  /// that a killed program leaves behind stays until its folder is deleted: it cannot be told from
  /// that of another operator's save.
  [[nodiscard]] virtual std::error_code CreateTemporary(const std::string& folder,
                                                        std::string& path,
                                                        std::unique_ptr<OutputFile>& file) = 0;
  /// Opens what stands at `path` for overwriting from its start; never waits for a pipe's reader.
  [[nodiscard]] virtual std::error_code OpenInPlace(const std::string& path,
                                                    std::unique_ptr<OutputFile>& file) = 0;
  /// Puts the file `from` in the place of `to`, whatever was there, in one step.
  [[nodiscard]] virtual std::error_code Replace(const std::string& from, const std::string& to) = 0;
  /// Returns when the names in `folder` are on the disk.
  [[nodiscard]] virtual std::error_code SyncFolder(const std::string& folder) = 0;
  [[nodiscard]] virtual std::error_code RemoveFile(const std::string& path) = 0;

  // The tree.

  [[nodiscard]] virtual std::error_code Facts(const std::string& path, EntryFacts& facts) = 0;
  /// Whether both paths lead to one and the same existing file.
  [[nodiscard]] virtual bool IsSameFile(const std::string& a, const std::string& b) = 0;
  /// The path that a link finally leads to, which need not exist; `path` itself when it is none.
  [[nodiscard]] virtual std::error_code ResolveLinks(const std::string& path,
                                                     std::string& resolved) = 0;
  /// Makes one folder; its parent must exist.
  [[nodiscard]] virtual std::error_code MakeFolder(const std::string& path) = 0;
  /// Calls `visit` with the names in `folder` in the platform's own order, until it returns false.
  /// "." and ".." are left out, and names that path text cannot tell apart from paths.
  [[nodiscard]] virtual std::error_code Search(
      const std::string& folder, SearchKind kind,
      const std::function<bool(const std::string& name)>& visit) = 0;
  /// Moves a file, or a folder with all it holds, to the recycle bin; where there is none,
  /// deletes it. A link is deleted, never what it leads to.
  [[nodiscard]] virtual std::error_code Recycle(const std::string& path) = 0;

  /// Puts a copy of an ordinary file into the recycle bin, from which it can be restored to its
  /// place; links are followed. Where there is no recycle bin, does nothing.
  [[nodiscard]] virtual std::error_code RecycleCopy(const std::string& path) = 0;

  // The system.

  /// Native folder of the running program, links resolved, without a trailing separator.
  [[nodiscard]] virtual std::string ProgramFolder() = 0;
  /// Native folder in which a system without drive letters keeps the drives, "" on one with them.
  [[nodiscard]] virtual std::string DriveFolder() = 0;
  /// The Windows directory as path text of the program.
  [[nodiscard]] virtual std::string WindowsDirectory() = 0;
  /// Returns false when the system does not tell its version.
  [[nodiscard]] virtual bool QueryOSVersion(OSVersionRecord& record) = 0;
};

/// The platform that the program runs on.
[[nodiscard]] Platform& CurrentPlatform();

/// Puts `platform` in its place, or the system's own back with nullptr. The caller keeps it
/// alive; returns what was there before.
Platform* SetCurrentPlatform(Platform* platform);

}  // namespace tarvell

#endif
