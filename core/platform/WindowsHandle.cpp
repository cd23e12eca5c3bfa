// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/platform/WindowsHandle.h"

#include <algorithm>
#include <array>

#include "core/platform/SystemName.h"

namespace tarvell {

namespace windows {

namespace {

constexpr std::wstring_view kLong = L"\\\\?\\";
constexpr std::wstring_view kLongShare = L"\\\\?\\UNC\\";
constexpr std::wstring_view kDevice = L"\\\\.\\";

struct Meaning {
  DWORD result;
  std::errc meaning;
};

constexpr std::array<Meaning, 34> kMeanings = {{
    {ERROR_CANCELLED, std::errc::operation_canceled},
    {ERROR_UNEXP_NET_ERR, std::errc::io_error},
    {ERROR_NETNAME_DELETED, std::errc::io_error},
    {ERROR_FILE_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_PATH_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_INVALID_DRIVE, std::errc::no_such_file_or_directory},
    {ERROR_INVALID_NAME, std::errc::no_such_file_or_directory},
    {ERROR_BAD_PATHNAME, std::errc::no_such_file_or_directory},
    {ERROR_BAD_NETPATH, std::errc::no_such_file_or_directory},
    {ERROR_BAD_NET_NAME, std::errc::no_such_file_or_directory},
    {ERROR_NOT_READY, std::errc::no_such_file_or_directory},
    {ERROR_DIRECTORY, std::errc::not_a_directory},
    {ERROR_ACCESS_DENIED, std::errc::permission_denied},
    {ERROR_NETWORK_ACCESS_DENIED, std::errc::permission_denied},
    {ERROR_PRIVILEGE_NOT_HELD, std::errc::permission_denied},
    {ERROR_WRITE_PROTECT, std::errc::read_only_file_system},
    {ERROR_FILE_EXISTS, std::errc::file_exists},
    {ERROR_ALREADY_EXISTS, std::errc::file_exists},
    {ERROR_DIR_NOT_EMPTY, std::errc::directory_not_empty},
    {ERROR_DISK_FULL, std::errc::no_space_on_device},
    {ERROR_HANDLE_DISK_FULL, std::errc::no_space_on_device},
    {ERROR_FILE_TOO_LARGE, std::errc::file_too_large},
    {ERROR_FILENAME_EXCED_RANGE, std::errc::filename_too_long},
    {ERROR_BUFFER_OVERFLOW, std::errc::filename_too_long},
    {ERROR_CANT_RESOLVE_FILENAME, std::errc::too_many_symbolic_link_levels},
    {ERROR_SHARING_VIOLATION, std::errc::device_or_resource_busy},
    {ERROR_USER_MAPPED_FILE, std::errc::device_or_resource_busy},
    {ERROR_BUSY, std::errc::device_or_resource_busy},
    {ERROR_LOCK_VIOLATION, std::errc::resource_unavailable_try_again},
    {ERROR_IO_PENDING, std::errc::resource_unavailable_try_again},
    {ERROR_NOT_SUPPORTED, std::errc::not_supported},
    {ERROR_INVALID_FUNCTION, std::errc::not_supported},
    {ERROR_CRC, std::errc::io_error},
    {ERROR_IO_DEVICE, std::errc::io_error},
}};

}  // namespace

std::error_code ErrorOf(DWORD result) {
  const auto* known = std::ranges::find(kMeanings, result, &Meaning::result);
  return known == kMeanings.end()
             ? std::error_code(static_cast<int>(result), std::system_category())
             : std::make_error_code(known->meaning);
}

std::error_code ShellError(int result) {
  switch (result) {
    case 0x75:  // the user has refused
      return std::make_error_code(std::errc::operation_canceled);
    case 0x78:
    case 0x10078:
      return std::make_error_code(std::errc::permission_denied);
    case 0x79:
    case 0x81:
      return std::make_error_code(std::errc::filename_too_long);
    case 0x7C:
    case 0x402:
      return std::make_error_code(std::errc::no_such_file_or_directory);
    case 0x86:
    case 0x87:
    case 0x88:
      return std::make_error_code(std::errc::read_only_file_system);
    default:
      break;
  }
  constexpr int kFirstOwn = 0x71;
  constexpr int kLastOwn = 0xB7;
  const bool isOwn = (result >= kFirstOwn && result <= kLastOwn) || result >= 0x10000;
  return isOwn ? std::make_error_code(std::errc::io_error) : ErrorOf(static_cast<DWORD>(result));
}

std::error_code LastError() {
  return ErrorOf(::GetLastError());
}

std::error_code ResultOf(BOOL succeeded) {
  return succeeded != 0 ? std::error_code() : LastError();
}

std::wstring LongPath(const std::filesystem::path& path) {
  const std::wstring& text = path.native();
  if (text.starts_with(kLong) || text.starts_with(kDevice)) {
    return text;
  }
  const DWORD size = ::GetFullPathNameW(text.c_str(), 0, nullptr, nullptr);
  std::wstring full(size, L'\0');
  full.resize(::GetFullPathNameW(text.c_str(), size, full.data(), nullptr));
  if (full.empty() || full.starts_with(kDevice)) {
    return full.empty() ? text : full;
  }
  return full.starts_with(L"\\\\") ? std::wstring(kLongShare) + full.substr(2)
                                   : std::wstring(kLong) + full;
}

std::wstring PlainPath(std::wstring_view path) {
  if (path.starts_with(kLongShare)) {
    return L"\\\\" + std::wstring(path.substr(kLongShare.size()));
  }
  return std::wstring(path.starts_with(kLong) ? path.substr(kLong.size()) : path);
}

std::wstring WideText(std::string_view text) {
  // A name of an older system, such as a shared tree may name in a file, is not UTF-8.
  constexpr UINT kFileCharacters = 1252;
  const int bytes = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');  // never longer than the bytes
  int units =
      ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), bytes, wide.data(), bytes);
  if (units == 0) {
    units = ::MultiByteToWideChar(kFileCharacters, 0, text.data(), bytes, wide.data(), bytes);
  }
  wide.resize(static_cast<std::size_t>(units));
  return wide;
}

std::string Utf8Text(std::wstring_view text) {
  const int units = static_cast<int>(text.size());
  const int size =
      ::WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), units, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

}  // namespace windows

std::filesystem::path SystemName(std::string_view text) {
  return windows::WideText(text);
}

}  // namespace tarvell
