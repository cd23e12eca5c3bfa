// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/platform/WindowsFile.h"

#include <windows.h>

#include <aclapi.h>
#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace tarvell::windows {

namespace {

// Those that a program may set. A file that is read-only is not replaced.
constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                  FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

/// One call reads or writes at most this many bytes.
DWORD CallSize(std::size_t size) {
  return static_cast<DWORD>(std::min<std::size_t>(size, std::numeric_limits<DWORD>::max()));
}

class WindowsInputFile : public InputFile {
 public:
  explicit WindowsInputFile(HANDLE handle) : handle_(handle) {}

  std::error_code Read(char* buffer, std::size_t size, std::size_t& count) override {
    DWORD read = 0;
    const std::error_code code =
        ResultOf(::ReadFile(handle_.Get(), buffer, CallSize(size), &read, nullptr));
    count = code ? 0 : read;
    return code;
  }

 private:
  Handle handle_;
};

/// The access rules of a file.
class AccessRules {
 public:
  explicit AccessRules(const std::filesystem::path& path) {
    result_ =
        ::GetNamedSecurityInfoW(LongPath(path).c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                nullptr, nullptr, &rules_, nullptr, &descriptor_);
  }
  AccessRules(const AccessRules&) = delete;
  AccessRules& operator=(const AccessRules&) = delete;
  ~AccessRules() { ::LocalFree(descriptor_); }

  /// Whether the file has only what every file of its folder gets. So it is on a disk without
  /// rules.
  [[nodiscard]] bool AreInherited() const {
    if (result_ != ERROR_SUCCESS || rules_ == nullptr) {
      return true;
    }
    for (DWORD i = 0; i < rules_->AceCount; ++i) {
      void* entry = nullptr;
      if (::GetAce(rules_, i, &entry) == 0 ||
          (static_cast<ACE_HEADER*>(entry)->AceFlags & INHERITED_ACE) == 0) {
        return false;
      }
    }
    return !AreProtected();
  }

  /// Gives the same rules to the file at `path`.
  [[nodiscard]] std::error_code GiveTo(const std::filesystem::path& path) const {
    const SECURITY_INFORMATION inheritance = AreProtected() ? PROTECTED_DACL_SECURITY_INFORMATION
                                                            : UNPROTECTED_DACL_SECURITY_INFORMATION;
    return ErrorOf(::SetNamedSecurityInfoW(LongPath(path).data(), SE_FILE_OBJECT,
                                           DACL_SECURITY_INFORMATION | inheritance, nullptr,
                                           nullptr, rules_, nullptr));
  }

 private:
  /// Whether the file takes no rules from its folder.
  [[nodiscard]] bool AreProtected() const {
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    return ::GetSecurityDescriptorControl(descriptor_, &control, &revision) != 0 &&
           (control & SE_DACL_PROTECTED) != 0;
  }

  DWORD result_ = ERROR_SUCCESS;
  PACL rules_ = nullptr;
  PSECURITY_DESCRIPTOR descriptor_ = nullptr;
};

class WindowsOutputFile : public OutputFile {
 public:
  WindowsOutputFile(HANDLE handle, std::filesystem::path path)
      : handle_(handle), path_(std::move(path)) {}

  std::error_code Write(std::string_view bytes, std::size_t& count) override {
    DWORD written = 0;
    const std::error_code code = ResultOf(
        ::WriteFile(handle_.Get(), bytes.data(), CallSize(bytes.size()), &written, nullptr));
    count = code ? 0 : written;
    return code;
  }

  std::error_code TruncateHere() override {
    return IsOnDisk() ? ResultOf(::SetEndOfFile(handle_.Get())) : std::error_code();
  }

  std::error_code Length(std::uintmax_t& length) override {
    length = 0;
    LARGE_INTEGER size{};
    if (IsOnDisk() && ::GetFileSizeEx(handle_.Get(), &size) == 0) {
      return LastError();
    }
    length = static_cast<std::uintmax_t>(size.QuadPart);
    return {};
  }

  std::error_code TakeAttributesOf(const std::filesystem::path& path) override {
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    if (::GetFileAttributesExW(LongPath(path).c_str(), GetFileExInfoStandard, &facts) == 0) {
      return LastError();
    }
    if (const std::error_code code = Patiently([&] { return MayReplace(path); })) {
      return code;
    }
    FILE_BASIC_INFO basic{};
    basic.CreationTime.LowPart = facts.ftCreationTime.dwLowDateTime;
    basic.CreationTime.HighPart = static_cast<LONG>(facts.ftCreationTime.dwHighDateTime);
    basic.FileAttributes = facts.dwFileAttributes & kKeptAttributes;
    if (basic.FileAttributes == 0) {
      basic.FileAttributes = FILE_ATTRIBUTE_NORMAL;
    }
    if (const std::error_code code = ResultOf(::SetFileInformationByHandle(
            handle_.Get(), FileBasicInfo, &basic, static_cast<DWORD>(sizeof(basic))))) {
      return code;
    }
    // An ordinary file has its folder's rules, and so has the temporary file already.
    const AccessRules rules(path);
    return rules.AreInherited() ? std::error_code() : rules.GiveTo(path_);
  }

  std::error_code Sync() override {
    return IsOnDisk() ? ResultOf(::FlushFileBuffers(handle_.Get())) : std::error_code();
  }

  std::error_code Close() override { return ResultOf(::CloseHandle(handle_.Release())); }

 private:
  [[nodiscard]] bool IsOnDisk() const { return ::GetFileType(handle_.Get()) == FILE_TYPE_DISK; }

  Handle handle_;
  std::filesystem::path path_;
};

}  // namespace

std::unique_ptr<InputFile> NewInputFile(HANDLE handle) {
  return std::make_unique<WindowsInputFile>(handle);
}

std::unique_ptr<OutputFile> NewOutputFile(HANDLE handle, std::filesystem::path path) {
  return std::make_unique<WindowsOutputFile>(handle, std::move(path));
}

std::error_code MayWrite(const std::filesystem::path& path) {
  const DWORD attributes = ::GetFileAttributesW(LongPath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0
             ? std::make_error_code(std::errc::read_only_file_system)
             : std::error_code();
}

std::error_code MayReplace(const std::filesystem::path& path) {
  if (const std::error_code code = MayWrite(path)) {
    return code;
  }
  const Handle handle(::CreateFileW(LongPath(path).c_str(), GENERIC_WRITE | DELETE, kShareAll,
                                    nullptr, OPEN_EXISTING, 0, nullptr));
  if (handle.IsOpen() || ::GetLastError() != ERROR_ACCESS_DENIED) {
    return handle.IsOpen() ? std::error_code() : LastError();
  }
  // The folder decides about replacing, too.
  const Handle written(::CreateFileW(LongPath(path).c_str(), GENERIC_WRITE, kShareAll, nullptr,
                                     OPEN_EXISTING, 0, nullptr));
  return written.IsOpen() ? std::error_code() : LastError();
}

bool IsInUse(const std::filesystem::path& path) {
  const Handle handle(::CreateFileW(LongPath(path).c_str(), GENERIC_WRITE | DELETE, kShareAll,
                                    nullptr, OPEN_EXISTING, 0, nullptr));
  return handle.IsOpen() || ::GetLastError() == ERROR_SHARING_VIOLATION;
}

}  // namespace tarvell::windows
