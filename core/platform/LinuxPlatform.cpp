// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/platform/LinuxPlatform.h"

#include <array>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "core/platform/SharedNames.h"

namespace tarvell {

namespace {

constexpr int kLinkLimit = 40;
constexpr auto kSameOwner = static_cast<uid_t>(-1);

std::error_code LastError() {
  return {errno, std::generic_category()};
}

std::error_code ResultOf(int result) {
  return result < 0 ? LastError() : std::error_code();
}

/// Calls a system function again when a signal interrupted it.
template <typename Call>
auto Retry(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) {
    result = call();
  }
  return result;
}

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) {
      ::close(number_);
    }
  }

  [[nodiscard]] int Number() const { return number_; }
  [[nodiscard]] int Release() { return std::exchange(number_, -1); }

 private:
  int number_;
};

class LinuxInputFile : public InputFile {
 public:
  explicit LinuxInputFile(int descriptor) : descriptor_(descriptor) {}

  std::error_code Read(char* buffer, std::size_t size, std::size_t& count) override {
    const ssize_t result = Retry([&] { return ::read(descriptor_.Number(), buffer, size); });
    count = result < 0 ? 0 : static_cast<std::size_t>(result);
    return result < 0 ? LastError() : std::error_code();
  }

 private:
  Descriptor descriptor_;
};

class LinuxOpenFolder : public OpenFolder {
 public:
  explicit LinuxOpenFolder(int descriptor) : descriptor_(descriptor) {}

  [[nodiscard]] int Number() const override { return descriptor_.Number(); }

 private:
  Descriptor descriptor_;
};

class LinuxOutputFile : public OutputFile {
 public:
  explicit LinuxOutputFile(int descriptor) : descriptor_(descriptor) {}

  std::error_code Write(std::string_view bytes, std::size_t& count) override {
    const ssize_t result =
        Retry([&] { return ::write(descriptor_.Number(), bytes.data(), bytes.size()); });
    count = result < 0 ? 0 : static_cast<std::size_t>(result);
    return result < 0 ? LastError() : std::error_code();
  }

  std::error_code TruncateHere() override {
    const off_t position = ::lseek(descriptor_.Number(), 0, SEEK_CUR);
    struct stat status {};
    if (::fstat(descriptor_.Number(), &status) != 0) {
      return LastError();
    }
    if (!S_ISREG(status.st_mode)) {
      return {};
    }
    return ResultOf(::ftruncate(descriptor_.Number(), position));
  }

  std::error_code Length(std::uintmax_t& length) override {
    struct stat status {};
    if (::fstat(descriptor_.Number(), &status) != 0) {
      return LastError();
    }
    length = static_cast<std::uintmax_t>(status.st_size);
    return {};
  }

  std::error_code TakeAttributesOf(const std::filesystem::path& path) override {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
      return LastError();
    }
    // If the file belongs to another operator, its replacement can take over only its group. Users
    // who may not write the file must not replace it.
    if (::fchown(descriptor_.Number(), status.st_uid, status.st_gid) != 0 &&
        (errno != EPERM || ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0 ||
         ::fchown(descriptor_.Number(), kSameOwner, status.st_gid) != 0)) {
      return LastError();
    }
    return ResultOf(::fchmod(descriptor_.Number(), status.st_mode & 07777U));
  }

  std::error_code Sync() override {
    const std::error_code code = ResultOf(Retry([&] { return ::fsync(descriptor_.Number()); }));
    // A device or a pipe needs no sync.
    return code == std::errc::invalid_argument ? std::error_code() : code;
  }

  std::error_code Close() override { return ResultOf(::close(descriptor_.Release())); }

 private:
  Descriptor descriptor_;
};

class LinuxLock : public HeldLock {
 public:
  explicit LinuxLock(int descriptor) : descriptor_(descriptor) {}

 private:
  Descriptor descriptor_;
};

/// The folder that an entry is in, "." for a path without a separator.
std::filesystem::path FolderHolding(const std::filesystem::path& path) {
  const std::filesystem::path folder = path.parent_path();
  return folder.empty() ? "." : folder;
}

/// The permissions of a folder that a group shares (set-group-ID), 0 for any other folder. New
/// entries get these permissions, whatever the operator's own umask is.
mode_t SharedMode(const std::filesystem::path& folder) {
  struct stat status {};
  return ::stat(folder.c_str(), &status) == 0 && (status.st_mode & S_ISGID) != 0
             ? status.st_mode & 0777U
             : 0U;
}

/// The permissions of a new file in a folder. In a folder that only its owner may open, the file is
/// the owner's, too.
mode_t ModeOfNewFile(const std::filesystem::path& folder) {
  if (const mode_t shared = SharedMode(folder) & 0666U; shared != 0) {
    return shared;
  }
  struct stat status {};
  if (::stat(folder.c_str(), &status) == 0 && (status.st_mode & 0077U) == 0) {
    return 0600U;
  }
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666U & ~mask;
}

/// Opens the file at `path`, or makes an empty one with the permissions of its folder.
int OpenOrCreate(const std::filesystem::path& path) {
  const int made = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (made < 0) {
    return errno == EEXIST ? ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK) : made;
  }
  // If this fails, the user can go on, and the others get an error that says why.
  if (const mode_t shared = SharedMode(FolderHolding(path)) & 0666U; shared != 0) {
    static_cast<void>(::fchmod(made, shared));
  }
  return made;
}

/// The kind of an entry as its folder records it. None for a link, or if the folder does not record
/// it.
EntryKind KindIn(const dirent& entry) {
  switch (entry.d_type) {
    case DT_UNKNOWN:
    case DT_LNK:
      return EntryKind::None;
    case DT_REG:
      return EntryKind::File;
    case DT_DIR:
      return EntryKind::Folder;
    default:
      return EntryKind::Other;
  }
}

bool IsOrdinaryFile(int folder, const dirent& entry) {
  if (KindIn(entry) != EntryKind::None) {
    return KindIn(entry) == EntryKind::File;
  }
  struct stat status {};
  return ::fstatat(folder, static_cast<const char*>(entry.d_name), &status, 0) == 0 &&
         S_ISREG(status.st_mode);
}

/// Opens the file at `path`, which is relative to `folder`. Only a file of unknown kind is asked
/// what it is.
std::error_code OpenOrdinary(int folder, const char* path, EntryKind kind,
                             std::unique_ptr<InputFile>& file) {
  // Non-blocking, because otherwise opening a pipe without a writer would never return.
  Descriptor descriptor(
      Retry([&] { return ::openat(folder, path, O_RDONLY | O_CLOEXEC | O_NONBLOCK); }));
  struct stat status {};
  const bool isKnown = kind == EntryKind::File;
  if (descriptor.Number() < 0 || (!isKnown && ::fstat(descriptor.Number(), &status) != 0)) {
    return LastError();
  }
  if (!isKnown && !S_ISREG(status.st_mode)) {
    return std::make_error_code(S_ISDIR(status.st_mode) ? std::errc::is_a_directory
                                                        : std::errc::not_supported);
  }
  file = std::make_unique<LinuxInputFile>(descriptor.Release());
  return {};
}

bool IsWanted(int folder, SearchKind kind, const dirent& entry) {
  const std::string_view name(static_cast<const char*>(entry.d_name));
  // A name with the program's separator would be read as a path, perhaps to another folder.
  const bool isAmbiguous = name.find('\\') != std::string_view::npos;
  if (name == "." || name == ".." || IsTemporary(name) || isAmbiguous) {
    return false;
  }
  switch (kind) {
    case SearchKind::NamesWithoutDot:
      return name.find('.') == std::string_view::npos;
    case SearchKind::OrdinaryFiles:
      return IsOrdinaryFile(folder, entry);
    case SearchKind::EveryName:
      break;
  }
  return true;
}

}  // namespace

std::error_code LinuxPlatform::OpenForReading(const std::filesystem::path& path,
                                              std::unique_ptr<InputFile>& file) {
  return OpenOrdinary(AT_FDCWD, path.c_str(), EntryKind::None, file);
}

std::error_code LinuxPlatform::OpenFound(const FoundEntry& entry,
                                         std::unique_ptr<InputFile>& file) {
  return entry.openFolder < 0
             ? Platform::OpenFound(entry, file)
             : OpenOrdinary(entry.openFolder, entry.name.c_str(), entry.kind, file);
}

std::unique_ptr<OpenFolder> LinuxPlatform::KeepOpen(const std::filesystem::path& folder) {
  const int number =
      Retry([&] { return ::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); });
  return number < 0 ? nullptr : std::make_unique<LinuxOpenFolder>(number);
}

std::error_code LinuxPlatform::CreateTemporary(const std::filesystem::path& folder,
                                               std::filesystem::path& path,
                                               std::unique_ptr<OutputFile>& file) {
  std::string name =
      (folder / (std::string(kTemporaryPrefix) + "XXXXXX" + std::string(kTemporarySuffix)))
          .string();
  const int number = ::mkostemps(name.data(), static_cast<int>(kTemporarySuffix.size()), O_CLOEXEC);
  if (number < 0) {
    return LastError();
  }
  path = name;
  file = std::make_unique<LinuxOutputFile>(number);
  // mkostemps gives only the owner access; a new data file gets the usual permissions.
  const std::error_code code = ResultOf(::fchmod(number, ModeOfNewFile(folder)));
  if (code) {
    file.reset();
    ::unlink(path.c_str());
  }
  return code;
}

std::error_code LinuxPlatform::OpenInPlace(const std::filesystem::path& path,
                                           std::unique_ptr<OutputFile>& file) {
  const int number = Retry([&] { return ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK); });
  if (number < 0) {
    return LastError();
  }
  file = std::make_unique<LinuxOutputFile>(number);
  return {};
}

std::error_code LinuxPlatform::OpenForAppending(const std::filesystem::path& path,
                                                std::unique_ptr<OutputFile>& file,
                                                bool& beginsLine) {
  Descriptor descriptor(
      Retry([&] { return ::open(path.c_str(), O_RDWR | O_APPEND | O_CLOEXEC | O_NONBLOCK); }));
  struct stat status {};
  if (descriptor.Number() < 0 || ::fstat(descriptor.Number(), &status) != 0) {
    return LastError();
  }
  if (!S_ISREG(status.st_mode)) {
    return std::make_error_code(std::errc::not_supported);
  }
  char last = '\n';
  if (status.st_size > 0 && ::pread(descriptor.Number(), &last, 1, status.st_size - 1) != 1) {
    return std::make_error_code(std::errc::io_error);
  }
  beginsLine = last == '\n';
  file = std::make_unique<LinuxOutputFile>(descriptor.Release());
  return {};
}

std::error_code LinuxPlatform::Replace(const std::filesystem::path& from,
                                       const std::filesystem::path& to) {
  return ResultOf(::rename(from.c_str(), to.c_str()));
}

std::error_code LinuxPlatform::SyncFolder(const std::filesystem::path& folder) {
  Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.Number() < 0) {
    return LastError();
  }
  const std::error_code code = ResultOf(Retry([&] { return ::fsync(descriptor.Number()); }));
  // Some network file systems cannot sync a folder.
  return code == std::errc::invalid_argument ? std::error_code() : code;
}

std::error_code LinuxPlatform::RemoveFile(const std::filesystem::path& path) {
  return ResultOf(::unlink(path.c_str()));
}

std::error_code LinuxPlatform::Lock(const std::filesystem::path& path, std::uint32_t number,
                                    std::unique_ptr<HeldLock>& lock) {
  Descriptor descriptor(Retry([&] { return OpenOrCreate(path); }));
  if (descriptor.Number() < 0) {
    return LastError();
  }
  struct flock place {};
  place.l_type = F_WRLCK;
  place.l_whence = SEEK_SET;
  place.l_start = static_cast<off_t>(kFirstLockedByte + number);
  place.l_len = 1;
  // Such a lock belongs to the open file, not to the process: it ends when the file is closed.
  if (::fcntl(descriptor.Number(), F_OFD_SETLK, &place) != 0) {
    return errno == EACCES ? std::make_error_code(std::errc::resource_unavailable_try_again)
                           : LastError();
  }
  lock = std::make_unique<LinuxLock>(descriptor.Release());
  return {};
}

std::error_code LinuxPlatform::Facts(const std::filesystem::path& path, EntryFacts& facts) {
  facts = EntryFacts();
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) {
    const std::error_code code = LastError();
    const bool missing =
        code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory;
    return missing ? std::error_code() : code;
  }
  facts.isLink = S_ISLNK(status.st_mode);
  if (facts.isLink && ::stat(path.c_str(), &status) != 0) {
    return {};
  }
  facts.linkCount = status.st_nlink;
  facts.modified = status.st_mtime;
  facts.kind = S_ISREG(status.st_mode)   ? EntryKind::File
               : S_ISDIR(status.st_mode) ? EntryKind::Folder
                                         : EntryKind::Other;
  return {};
}

bool LinuxPlatform::IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b) {
  struct stat first {};
  struct stat second {};
  return ::stat(a.c_str(), &first) == 0 && ::stat(b.c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

std::error_code LinuxPlatform::ResolveLinks(const std::filesystem::path& path,
                                            std::filesystem::path& resolved) {
  resolved = path;
  for (int links = 0; links < kLinkLimit; ++links) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlink(resolved.c_str(), target.data(), target.size());
    if (length < 0) {
      const bool noLink = errno == EINVAL || errno == ENOENT;
      return noLink ? std::error_code() : LastError();
    }
    // An absolute target replaces the whole path.
    resolved =
        resolved.parent_path() / std::string_view(target.data(), static_cast<std::size_t>(length));
  }
  return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

std::error_code LinuxPlatform::MayChange(const std::filesystem::path& folder) {
  return ResultOf(::access(folder.c_str(), W_OK));
}

std::error_code LinuxPlatform::MakeFolder(const std::filesystem::path& path) {
  if (::mkdir(path.c_str(), 0777) != 0) {
    return LastError();
  }
  const mode_t shared = SharedMode(FolderHolding(path));
  // A failure is ignored: the folder exists, and its owner can use it even if the group cannot.
  if (shared != 0) {
    static_cast<void>(::chmod(path.c_str(), shared | S_ISGID));
  }
  return {};
}

std::error_code LinuxPlatform::MakePrivateFolder(const std::filesystem::path& path) {
  return ResultOf(::mkdir(path.c_str(), 0700));
}

std::error_code LinuxPlatform::Search(const std::filesystem::path& folder, SearchKind kind,
                                      const SearchVisitor& visit) {
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(folder.c_str()), &::closedir);
  if (!stream) {
    return LastError();
  }
  while (true) {
    errno = 0;
    const dirent* entry = ::readdir(stream.get());  // NOLINT(concurrency-mt-unsafe): one thread
    if (entry == nullptr) {
      return errno == 0 ? std::error_code() : LastError();
    }
    const int open = ::dirfd(stream.get());
    if (IsWanted(open, kind, *entry) &&
        !visit({folder, static_cast<const char*>(entry->d_name), KindIn(*entry), open})) {
      return {};
    }
  }
}

std::error_code LinuxPlatform::Recycle(const std::filesystem::path& path) {
  std::error_code code;
  const std::uintmax_t removed = std::filesystem::remove_all(path, code);
  return !code && removed == 0 ? std::make_error_code(std::errc::no_such_file_or_directory) : code;
}

bool LinuxPlatform::HasRecycleBin() {
  return false;
}

}  // namespace tarvell
