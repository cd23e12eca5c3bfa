// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_PLATFORM_H
#define TARVELL_CORE_PLATFORM_PLATFORM_H

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include "core/platform/SystemName.h"

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

/// A file open for writing from its start. The caller closes it; the destructor of an open one
/// releases it and ignores errors.
class OutputFile {
 public:
  OutputFile() = default;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  virtual ~OutputFile() = default;

  /// Writes at least one byte of `bytes` (which must not be empty) and sets `count` to how many.
  [[nodiscard]] virtual std::error_code Write(std::string_view bytes, std::size_t& count) = 0;
  /// Ends the file after what was written. Does nothing on a device.
  [[nodiscard]] virtual std::error_code TruncateHere() = 0;
  /// Length of the file in bytes, 0 for a device.
  [[nodiscard]] virtual std::error_code Length(std::uintmax_t& length) = 0;
  /// Gives the file the mode and group of the file at `path`, and its owner where the system
  /// permits that. Fails when the user may not write that file or cannot set its group.
  [[nodiscard]] virtual std::error_code TakeAttributesOf(const std::filesystem::path& path) = 0;
  /// Returns when the content is on the disk.
  [[nodiscard]] virtual std::error_code Sync() = 0;
  [[nodiscard]] virtual std::error_code Close() = 0;
};

/// A lock that ends with the object, or with the program, even if that is killed.
class HeldLock {
 public:
  HeldLock() = default;
  HeldLock(const HeldLock&) = delete;
  HeldLock& operator=(const HeldLock&) = delete;
  virtual ~HeldLock() = default;
};

/// A folder that stays open as long as the object lives.
class OpenFolder {
 public:
  OpenFolder() = default;
  OpenFolder(const OpenFolder&) = delete;
  OpenFolder& operator=(const OpenFolder&) = delete;
  virtual ~OpenFolder() = default;

  /// See FoundEntry::openFolder.
  [[nodiscard]] virtual int Number() const = 0;
};

enum class EntryKind { None, File, Folder, Other };

/// What is at a path. Links are followed, and `isLink` is then true. The kind of a broken link is
/// None.
struct EntryFacts {
  EntryKind kind = EntryKind::None;
  bool isLink = false;
  std::uintmax_t linkCount = 0;
  std::time_t modified = 0;  ///< when its content was last written, 0 if unknown
};

/// An entry that a search has found; valid during the visit.
struct FoundEntry {
  const std::filesystem::path& folder;
  std::string name;
  EntryKind kind = EntryKind::None;  ///< if the folder records it, otherwise None
  int openFolder = -1;               ///< the platform's own number of the open folder, or -1
};

/// Takes an entry. Returns whether the search goes on.
using SearchVisitor = std::function<bool(const FoundEntry& entry)>;

enum class SearchKind {
  NamesWithoutDot,  ///< "*.": every name without a dot, folders included
  EveryName,        ///< "*": every name, folders included
  OrdinaryFiles     ///< "*.*": ordinary files only, whatever their name
};

/// Version record of the operating system. `family` is 1 or 2 for the two Windows families (see
/// mOSVersion.h); on any other system it is 0 and `systemName` holds the name.
struct OSVersionRecord {
  int family = 0;
  std::string systemName;
  int major = 0;
  int minor = 0;
  int build = 0;
  std::string servicePack;

  bool hasProductType = false;  ///< whether the extended record was available
  int productType = 0;
  int servicePackMajor = 0;
};

/// What the operating system does for the program. A survey reads and searches in a thread of its
/// own, at the same time as the screens use the object. Paths of the system are
/// std::filesystem::path; NativePath in Paths.h makes one from a path of the program. Only its
/// implementations, SystemName.h and Shell.h assume a particular system. Tests replace it, to make
/// a step fail.
class Platform {
 public:
  Platform() = default;
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;
  virtual ~Platform() = default;

  // Files.

  /// Opens an ordinary file. A folder fails with is_a_directory; a device or a pipe fails with
  /// not_supported, without waiting.
  [[nodiscard]] virtual std::error_code OpenForReading(const std::filesystem::path& path,
                                                       std::unique_ptr<InputFile>& file) = 0;
  /// The same for an entry that a search has just found. A file whose kind is known is not checked
  /// again.
  [[nodiscard]] virtual std::error_code OpenFound(const FoundEntry& entry,
                                                  std::unique_ptr<InputFile>& file) {
    return OpenForReading(entry.folder / SystemName(entry.name), file);
  }
  /// Keeps a folder open, from which many files are opened. nullptr if that cannot be done, or
  /// would save nothing.
  [[nodiscard]] virtual std::unique_ptr<OpenFolder> KeepOpen(
      const std::filesystem::path& /*folder*/) {
    return nullptr;
  }
  /// Creates an empty temporary file with a unique name in `folder`. Searches leave it out. A
  /// killed program may leave one. Nobody removes it, because it could belong to another operator's
  /// save.
  [[nodiscard]] virtual std::error_code CreateTemporary(const std::filesystem::path& folder,
                                                        std::filesystem::path& path,
                                                        std::unique_ptr<OutputFile>& file) = 0;
  /// Opens what is at `path` for overwriting from its start; never waits for a pipe's reader.
  [[nodiscard]] virtual std::error_code OpenInPlace(const std::filesystem::path& path,
                                                    std::unique_ptr<OutputFile>& file) = 0;
  /// Opens the ordinary file at `path`, which must exist, for writing after its end. `beginsLine`
  /// says whether its last byte, if it has one, is the end of a line.
  [[nodiscard]] virtual std::error_code OpenForAppending(const std::filesystem::path& path,
                                                         std::unique_ptr<OutputFile>& file,
                                                         bool& beginsLine) = 0;
  /// Renames the file `from` to `to` in one step. A file that was there is replaced.
  [[nodiscard]] virtual std::error_code Replace(const std::filesystem::path& from,
                                                const std::filesystem::path& to) = 0;
  /// Returns when the entries of `folder` are on the disk.
  [[nodiscard]] virtual std::error_code SyncFolder(const std::filesystem::path& folder) = 0;
  [[nodiscard]] virtual std::error_code RemoveFile(const std::filesystem::path& path) = 0;

  /// Locks the place `number` of the file at `path`, which is made if it is missing, for everybody
  /// who may use its folder; nothing is read or written. Fails at once, with
  /// resource_unavailable_try_again, while another lock holds that place, in this program or
  /// another one.
  [[nodiscard]] virtual std::error_code Lock(const std::filesystem::path& path,
                                             std::uint32_t number,
                                             std::unique_ptr<HeldLock>& lock) = 0;

  // The tree.

  [[nodiscard]] virtual std::error_code Facts(const std::filesystem::path& path,
                                              EntryFacts& facts) = 0;
  /// Whether both paths lead to the same existing file.
  [[nodiscard]] virtual bool IsSameFile(const std::filesystem::path& a,
                                        const std::filesystem::path& b) = 0;
  /// The path that a link finally leads to, which need not exist; `path` itself if it is no link.
  [[nodiscard]] virtual std::error_code ResolveLinks(const std::filesystem::path& path,
                                                     std::filesystem::path& resolved) = 0;
  /// Why the user may not add and remove entries of `folder`; no error where this is possible.
  [[nodiscard]] virtual std::error_code MayChange(const std::filesystem::path& folder) = 0;
  /// Makes one folder; its parent must exist.
  [[nodiscard]] virtual std::error_code MakeFolder(const std::filesystem::path& path) = 0;
  /// Makes one folder that only the user may open.
  [[nodiscard]] virtual std::error_code MakePrivateFolder(const std::filesystem::path& path) = 0;
  /// Calls `visit` with the names in `folder` in the platform's own order, until it returns false.
  /// Leaves out ".", "..", temporary files, and names that hold a separator of the program's paths.
  [[nodiscard]] virtual std::error_code Search(const std::filesystem::path& folder, SearchKind kind,
                                               const SearchVisitor& visit) = 0;
  /// Moves a file, or a folder with its contents, to the recycle bin. Where there is no recycle
  /// bin, deletes it. A link is deleted, never what it leads to.
  [[nodiscard]] virtual std::error_code Recycle(const std::filesystem::path& path) = 0;
  /// Whether this system has a recycle bin of its own. If not, the desktop may have one.
  [[nodiscard]] virtual bool HasRecycleBin() = 0;

  // The system.

  /// Folder of the running program, links resolved, without a trailing separator.
  [[nodiscard]] virtual std::filesystem::path ProgramFolder() = 0;
  /// Folder that holds the drives on a system without drive letters, "" on one with them.
  [[nodiscard]] virtual std::filesystem::path DriveFolder() = 0;
  /// The folder for what the program keeps for the user, outside the data folders. It may not
  /// exist.
  /// "" where the system names none.
  [[nodiscard]] virtual std::filesystem::path UserFolder() = 0;
  /// The Windows directory, as a path of the program.
  [[nodiscard]] virtual std::string WindowsDirectory() = 0;
  /// The folder that takes its place for a user who may not write there, as a path of the program.
  /// It may not exist. "" where every user needs the Windows directory.
  [[nodiscard]] virtual std::string OwnWindowsDirectory() = 0;
  /// The name of the user who runs the program, or a number where the user has no name.
  [[nodiscard]] virtual std::string UserName() = 0;
  /// The name of this computer, "" where it has none.
  [[nodiscard]] virtual std::string HostName() = 0;
  /// Seconds since the beginning of 1970, UTC.
  [[nodiscard]] virtual std::time_t Now() = 0;
  /// Returns false when the system does not report its version.
  [[nodiscard]] virtual bool QueryOSVersion(OSVersionRecord& record) = 0;
};

/// The folder in which a path that starts with a separator begins.
[[nodiscard]] std::filesystem::path RootFolder();

/// The path from its root on, without "." and "..". Links are left as they are, and nothing needs
/// to be there.
[[nodiscard]] std::filesystem::path WholePath(const std::filesystem::path& path);

/// The operating system itself.
[[nodiscard]] Platform& SystemPlatform();

/// The platform that the program uses: the operating system, or what was put in its place.
[[nodiscard]] Platform& CurrentPlatform();

/// Makes `platform` the current one; nullptr stands for SystemPlatform(). The caller must keep it
/// alive. Returns the argument of the previous call.
Platform* SetCurrentPlatform(Platform* platform);

}  // namespace tarvell

#endif
