// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_PLATFORM_WINDOWSHANDLE_H
#define TARVELL_CORE_PLATFORM_WINDOWSHANDLE_H

#include <windows.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

/// What the Windows body of the platform consists of.
namespace tarvell::windows {

/// What other programs may do with a file that the program has open: everything.
inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (IsOpen()) {
      ::CloseHandle(handle_);
    }
  }

  [[nodiscard]] HANDLE Get() const { return handle_; }
  [[nodiscard]] bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  [[nodiscard]] HANDLE Release() { return std::exchange(handle_, INVALID_HANDLE_VALUE); }

 private:
  HANDLE handle_;
};

/// A result of Windows as one that is the same on every system, if there is one.
[[nodiscard]] std::error_code ErrorOf(DWORD result);
/// The same of the shell's operation on files, which has numbers of its own: other functions of
/// Windows use them for something else.
[[nodiscard]] std::error_code ShellError(int result);
[[nodiscard]] std::error_code LastError();
/// LastError() unless the call succeeded.
[[nodiscard]] std::error_code ResultOf(BOOL succeeded);

/// The path as Windows takes it, whatever its length.
[[nodiscard]] std::wstring LongPath(const std::filesystem::path& path);
/// A path of Windows without what LongPath put before it.
[[nodiscard]] std::wstring PlainPath(std::wstring_view path);

/// The text in UTF-16. Bytes that are not UTF-8 have the characters of the files, Windows-1252.
[[nodiscard]] std::wstring WideText(std::string_view text);
[[nodiscard]] std::string Utf8Text(std::wstring_view text);

/// Makes a call again, for a short time, while another program has the file open: an indexer or a
/// virus scanner looks at every new file.
template <typename Call>
std::error_code Patiently(Call call) {
  constexpr int kTries = 20;
  constexpr DWORD kMilliseconds = 25;
  std::error_code code = call();
  for (int i = 1; i < kTries && code == std::errc::device_or_resource_busy; ++i) {
    ::Sleep(kMilliseconds);
    code = call();
  }
  return code;
}

}  // namespace tarvell::windows

#endif
