// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/platform/WindowsPlatform.h"

#include <windows.h>

#include <array>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "core/platform/SharedNames.h"
#include "core/platform/SystemName.h"
#include "core/platform/WindowsFile.h"
#include "core/platform/WindowsHandle.h"

namespace tarvell {

using windows::Handle;
using windows::kShareAll;
using windows::LastError;
using windows::LongPath;
using windows::Patiently;
using windows::ResultOf;

namespace {

constexpr std::uint64_t kUnixEpoch = 116'444'736'000'000'000;  // in the ticks of Windows
constexpr std::uint64_t kTicksPerSecond = 10'000'000;

class WindowsLock : public HeldLock {
 public:
  explicit WindowsLock(HANDLE handle) : handle_(handle) {}

 private:
  Handle handle_;
};

HANDLE Open(const std::filesystem::path& path, DWORD access, DWORD creation, DWORD flags = 0) {
  return ::CreateFileW(LongPath(path).c_str(), access, kShareAll, nullptr, creation,
                       FILE_ATTRIBUTE_NORMAL | flags, nullptr);
}

/// Opens what is at `path`, folders included, only to ask about it.
HANDLE OpenToAsk(const std::filesystem::path& path, DWORD flags = 0) {
  return Open(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags);
}

bool IsFolder(const std::filesystem::path& path) {
  const DWORD attributes = ::GetFileAttributesW(LongPath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Why a file could not be opened. Windows refuses the access to a folder.
std::error_code OpeningError(const std::filesystem::path& path) {
  const std::error_code code = LastError();
  return code == std::errc::permission_denied && IsFolder(path)
             ? std::make_error_code(std::errc::is_a_directory)
             : code;
}

/// A failure to use `folder` as a folder. Windows has one code for a file in its place and for
/// nothing there.
std::error_code FolderError(const std::filesystem::path& folder, std::error_code code) {
  const bool isFile = code == std::errc::no_such_file_or_directory && !IsFolder(folder) &&
                      ::GetFileAttributesW(LongPath(folder).c_str()) != INVALID_FILE_ATTRIBUTES;
  return isFile ? std::make_error_code(std::errc::not_a_directory) : code;
}

std::uint64_t Number(DWORD high, DWORD low) {
  return (std::uint64_t{high} << 32U) | low;
}

std::time_t UnixTime(const FILETIME& time) {
  const std::uint64_t ticks = Number(time.dwHighDateTime, time.dwLowDateTime);
  return ticks < kUnixEpoch ? 0 : static_cast<std::time_t>((ticks - kUnixEpoch) / kTicksPerSecond);
}

bool IsLink(const Handle& entry) {
  FILE_ATTRIBUTE_TAG_INFO tag{};
  return ::GetFileInformationByHandleEx(entry.Get(), FileAttributeTagInfo, &tag,
                                        static_cast<DWORD>(sizeof(tag))) != 0 &&
         (tag.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
         (tag.ReparseTag == IO_REPARSE_TAG_SYMLINK || tag.ReparseTag == IO_REPARSE_TAG_MOUNT_POINT);
}

bool IsWanted(SearchKind kind, std::string_view name, bool isFolder) {
  if (name == "." || name == ".." || IsTemporary(name)) {
    return false;
  }
  switch (kind) {
    case SearchKind::NamesWithoutDot:
      return name.find('.') == std::string_view::npos;
    case SearchKind::OrdinaryFiles:
      return !isFolder;
    case SearchKind::EveryName:
      break;
  }
  return true;
}

/// The characters in place of the X's of a temporary file's name.
std::string RandomName() {
  static constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
  std::random_device source;
  std::string name(6, ' ');
  for (char& c : name) {
    c = kLetters[source() % kLetters.size()];
  }
  return name;
}

/// Whether the user may rename and delete the new file at `path`. In a folder where users may add
/// files, but not delete any, it would stay.
std::error_code MayBeMoved(const std::filesystem::path& path) {
  const Handle handle(Open(path, DELETE, OPEN_EXISTING));
  const std::error_code code = ResultOf(handle.IsOpen() ? 1 : 0);
  // A virus scanner that looks at the file lets go of it again.
  return code == std::errc::device_or_resource_busy ? std::error_code() : code;
}

/// Deletes a file whose creator has it open, with the rights that only the creator has.
void DeleteOnClose(const Handle& file) {
  FILE_DISPOSITION_INFO disposition{};
  disposition.DeleteFile = TRUE;
  ::SetFileInformationByHandle(file.Get(), FileDispositionInfo, &disposition,
                               static_cast<DWORD>(sizeof(disposition)));
}

/// Where a link leads to, "" if there is nothing.
std::filesystem::path FinalPath(const Handle& entry) {
  const DWORD size = ::GetFinalPathNameByHandleW(entry.Get(), nullptr, 0, FILE_NAME_NORMALIZED);
  std::wstring path(size, L'\0');
  path.resize(::GetFinalPathNameByHandleW(entry.Get(), path.data(), size, FILE_NAME_NORMALIZED));
  return windows::PlainPath(path);
}

}  // namespace

std::error_code WindowsPlatform::OpenForReading(const std::filesystem::path& path,
                                                std::unique_ptr<InputFile>& file) {
  return Patiently([&] {
    Handle handle(Open(path, GENERIC_READ, OPEN_EXISTING));
    if (!handle.IsOpen()) {
      return OpeningError(path);
    }
    if (::GetFileType(handle.Get()) != FILE_TYPE_DISK) {
      return std::make_error_code(std::errc::not_supported);
    }
    file = windows::NewInputFile(handle.Release());
    return std::error_code();
  });
}

std::error_code WindowsPlatform::CreateTemporary(const std::filesystem::path& folder,
                                                 std::filesystem::path& path,
                                                 std::unique_ptr<OutputFile>& file) {
  constexpr int kTries = 100;
  std::error_code code = std::make_error_code(std::errc::file_exists);
  for (int i = 0; i < kTries && code == std::errc::file_exists; ++i) {
    path = folder /
           SystemName(std::string(kTemporaryPrefix) + RandomName() + std::string(kTemporarySuffix));
    Handle handle(Open(path, GENERIC_READ | GENERIC_WRITE | DELETE, CREATE_NEW));
    code = ResultOf(handle.IsOpen() ? 1 : 0);
    if (!code) {
      code = MayBeMoved(path);
      if (code) {
        DeleteOnClose(handle);
      } else {
        file = windows::NewOutputFile(handle.Release(), path);
      }
    }
  }
  return code;
}

std::error_code WindowsPlatform::OpenInPlace(const std::filesystem::path& path,
                                             std::unique_ptr<OutputFile>& file) {
  if (const std::error_code code = windows::MayWrite(path)) {
    return code;
  }
  return Patiently([&] {
    Handle handle(Open(path, GENERIC_WRITE, OPEN_EXISTING));
    if (!handle.IsOpen()) {
      return OpeningError(path);
    }
    file = windows::NewOutputFile(handle.Release(), path);
    return std::error_code();
  });
}

std::error_code WindowsPlatform::OpenForAppending(const std::filesystem::path& path,
                                                  std::unique_ptr<OutputFile>& file,
                                                  bool& beginsLine) {
  return Patiently([&] {
    Handle handle(Open(path, FILE_APPEND_DATA | GENERIC_READ, OPEN_EXISTING));
    if (!handle.IsOpen()) {
      return OpeningError(path);
    }
    if (::GetFileType(handle.Get()) != FILE_TYPE_DISK) {
      return std::make_error_code(std::errc::not_supported);
    }
    LARGE_INTEGER size{};
    char last = '\n';
    DWORD count = 1;
    if (::GetFileSizeEx(handle.Get(), &size) == 0) {
      return LastError();
    }
    LARGE_INTEGER place{};
    place.QuadPart = size.QuadPart - 1;
    if (size.QuadPart > 0 && (::SetFilePointerEx(handle.Get(), place, nullptr, FILE_BEGIN) == 0 ||
                              ::ReadFile(handle.Get(), &last, 1, &count, nullptr) == 0)) {
      return LastError();
    }
    if (count != 1) {
      return std::make_error_code(std::errc::io_error);
    }
    beginsLine = last == '\n';
    file = windows::NewOutputFile(handle.Release(), path);
    return std::error_code();
  });
}

std::error_code WindowsPlatform::Replace(const std::filesystem::path& from,
                                         const std::filesystem::path& to) {
  const std::wstring source = LongPath(from);
  const std::wstring target = LongPath(to);
  return Patiently([&] {
    const std::error_code code = ResultOf(::MoveFileExW(
        source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
    // An open file is also refused as if the user had no right to it.
    return code == std::errc::permission_denied && windows::IsInUse(to)
               ? std::make_error_code(std::errc::device_or_resource_busy)
               : code;
  });
}

std::error_code WindowsPlatform::SyncFolder(const std::filesystem::path&) {
  // Replace writes through to the disk.
  return {};
}

std::error_code WindowsPlatform::RemoveFile(const std::filesystem::path& path) {
  const std::wstring entry = LongPath(path);
  return Patiently([&] {
    // A link to a folder is removed as a folder is; a folder itself must not be.
    EntryFacts facts;
    const bool isFolderLink = !Facts(path, facts) && facts.isLink && IsFolder(path);
    return ResultOf(isFolderLink ? ::RemoveDirectoryW(entry.c_str())
                                 : ::DeleteFileW(entry.c_str()));
  });
}

std::error_code WindowsPlatform::Lock(const std::filesystem::path& path, std::uint32_t number,
                                      std::unique_ptr<HeldLock>& lock) {
  Handle handle(Open(path, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS));
  if (!handle.IsOpen()) {
    return OpeningError(path);
  }
  const std::uint64_t place = kFirstLockedByte + number;
  OVERLAPPED range{};
  range.Offset = static_cast<DWORD>(place);
  range.OffsetHigh = static_cast<DWORD>(place >> 32U);
  if (::LockFileEx(handle.Get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                   &range) == 0) {
    return LastError();
  }
  lock = std::make_unique<WindowsLock>(handle.Release());
  return {};
}

std::error_code WindowsPlatform::Facts(const std::filesystem::path& path, EntryFacts& facts) {
  facts = EntryFacts();
  const Handle entry(OpenToAsk(path, FILE_FLAG_OPEN_REPARSE_POINT));
  if (!entry.IsOpen()) {
    const std::error_code code = LastError();
    const bool missing =
        code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory;
    return missing ? std::error_code() : code;
  }
  facts.isLink = IsLink(entry);
  const Handle target(facts.isLink ? OpenToAsk(path) : INVALID_HANDLE_VALUE);
  if (facts.isLink && !target.IsOpen()) {
    return {};
  }
  const Handle& asked = facts.isLink ? target : entry;
  BY_HANDLE_FILE_INFORMATION found{};
  if (::GetFileType(asked.Get()) != FILE_TYPE_DISK ||
      ::GetFileInformationByHandle(asked.Get(), &found) == 0) {
    facts.kind = EntryKind::Other;
    return {};
  }
  const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  facts.kind = isFolder ? EntryKind::Folder : EntryKind::File;
  facts.linkCount = found.nNumberOfLinks;
  facts.modified = UnixTime(found.ftLastWriteTime);
  return {};
}

bool WindowsPlatform::IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b) {
  const Handle first(OpenToAsk(a));
  const Handle second(OpenToAsk(b));
  BY_HANDLE_FILE_INFORMATION one{};
  BY_HANDLE_FILE_INFORMATION other{};
  return first.IsOpen() && second.IsOpen() &&
         ::GetFileInformationByHandle(first.Get(), &one) != 0 &&
         ::GetFileInformationByHandle(second.Get(), &other) != 0 &&
         one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
         Number(one.nFileIndexHigh, one.nFileIndexLow) ==
             Number(other.nFileIndexHigh, other.nFileIndexLow);
}

std::error_code WindowsPlatform::ResolveLinks(const std::filesystem::path& path,
                                              std::filesystem::path& resolved) {
  resolved = path;
  EntryFacts facts;
  if (const std::error_code code = Facts(path, facts); code || !facts.isLink) {
    return code;
  }
  const Handle target(OpenToAsk(path));
  if (!target.IsOpen()) {
    return LastError();
  }
  resolved = FinalPath(target);
  return resolved.empty() ? LastError() : std::error_code();
}

std::error_code WindowsPlatform::MayChange(const std::filesystem::path& folder) {
  // Only an attempt tells: access rules, the disk and the share all have a say.
  if (!IsFolder(folder)) {
    return std::make_error_code(std::errc::no_such_file_or_directory);
  }
  const std::filesystem::path probe =
      folder /
      SystemName(std::string(kTemporaryPrefix) + RandomName() + std::string(kTemporarySuffix));
  const Handle handle(Open(probe, GENERIC_WRITE | DELETE, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE));
  return ResultOf(handle.IsOpen() ? 1 : 0);
}

std::error_code WindowsPlatform::MakeFolder(const std::filesystem::path& path) {
  const std::error_code code = ResultOf(::CreateDirectoryW(LongPath(path).c_str(), nullptr));
  return FolderError(path.parent_path(), code);
}

std::error_code WindowsPlatform::MakePrivateFolder(const std::filesystem::path& path) {
  // The user's own folders are closed to others, and a folder in them inherits that.
  return MakeFolder(path);
}

std::error_code WindowsPlatform::Search(const std::filesystem::path& folder, SearchKind kind,
                                        const SearchVisitor& visit) {
  WIN32_FIND_DATAW entry{};
  HANDLE search = ::FindFirstFileExW(LongPath(folder / L"*").c_str(), FindExInfoBasic, &entry,
                                     FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
  if (search == INVALID_HANDLE_VALUE) {
    const std::error_code code = FolderError(folder, LastError());
    // An empty drive has not even "." in it.
    return code == std::errc::no_such_file_or_directory && IsFolder(folder) ? std::error_code()
                                                                            : code;
  }
  const std::unique_ptr<void, BOOL (*)(HANDLE)> closed(search, &::FindClose);
  do {
    const std::wstring_view wide(static_cast<const wchar_t*>(entry.cFileName));
    std::string name = windows::Utf8Text(wide);
    const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const bool isKnown = (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
    // A name that UTF-8 cannot spell would not be found again.
    const bool isText = windows::WideText(name) == wide;
    const EntryKind found = !isKnown   ? EntryKind::None
                            : isFolder ? EntryKind::Folder
                                       : EntryKind::File;
    if (isText && IsWanted(kind, name, isFolder) && !visit({folder, std::move(name), found, -1})) {
      return {};
    }
  } while (::FindNextFileW(search, &entry) != 0);
  return ::GetLastError() == ERROR_NO_MORE_FILES ? std::error_code() : LastError();
}

}  // namespace tarvell
