// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <windows.h>

#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
#include <string>
#include <utility>

#include "core/platform/Shell.h"
#include "core/platform/SystemDialogs.h"
#include "core/platform/WindowsHandle.h"
#include "core/platform/WindowsPlatform.h"

namespace tarvell {

using windows::Utf8Text;

namespace {

/// The text that a system call writes into a buffer. The call takes the buffer and its size, and
/// returns the length of the text, or a larger size to try.
template <typename Call>
std::wstring TextFrom(Call call) {
  std::wstring text(MAX_PATH, L'\0');
  while (true) {
    const DWORD length = call(text.data(), static_cast<DWORD>(text.size()));
    if (length < text.size()) {
      text.resize(length);
      return text;
    }
    text.resize(text.size() * 2);
  }
}

/// The folder of this user and computer for the settings of programs; "" if there is none.
std::filesystem::path SettingsOfPrograms() {
  const std::wstring folder = TextFrom([](wchar_t* buffer, DWORD size) {
    return ::GetEnvironmentVariableW(L"LOCALAPPDATA", buffer, size);
  });
  if (!folder.empty()) {
    return folder;
  }
  wchar_t* known = nullptr;
  const bool isKnown = SUCCEEDED(::SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &known));
  const std::unique_ptr<wchar_t, void (*)(void*)> released(known, &::CoTaskMemFree);
  return isKnown ? std::filesystem::path(known) : std::filesystem::path();
}

/// Makes the console show UTF-8, until the program ends: the console stays for other programs.
class Utf8Console {
 public:
  Utf8Console() : before_(::GetConsoleOutputCP()) { ::SetConsoleOutputCP(CP_UTF8); }
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;
  ~Utf8Console() {
    if (before_ != 0) {
      ::SetConsoleOutputCP(before_);
    }
  }

 private:
  UINT before_;  // 0 without a console
};

}  // namespace

std::filesystem::path WindowsPlatform::ProgramFolder() {
  const std::filesystem::path program = TextFrom(
      [](wchar_t* buffer, DWORD size) { return ::GetModuleFileNameW(nullptr, buffer, size); });
  std::filesystem::path resolved;
  const bool isResolved = !ResolveLinks(program, resolved);
  return (isResolved ? resolved : program).parent_path();
}

std::filesystem::path WindowsPlatform::DriveFolder() {
  return {};
}

std::filesystem::path WindowsPlatform::UserFolder() {
  const std::filesystem::path settings = SettingsOfPrograms();
  return settings.empty() ? settings : settings / L"tarvell";
}

std::string WindowsPlatform::WindowsDirectory() {
  return Utf8Text(
      TextFrom([](wchar_t* buffer, DWORD size) { return ::GetWindowsDirectoryW(buffer, size); }));
}

std::string WindowsPlatform::OwnWindowsDirectory() {
  return Utf8Text(UserFolder().native());
}

std::string WindowsPlatform::UserName() {
  constexpr DWORD kLongestName = 257;
  std::wstring name(kLongestName, L'\0');
  DWORD size = kLongestName;
  const bool isKnown = ::GetUserNameW(name.data(), &size) != 0 && size > 0;
  return isKnown ? Utf8Text({name.data(), size - 1}) : "0";
}

std::string WindowsPlatform::HostName() {
  DWORD size = 0;
  ::GetComputerNameExW(ComputerNameDnsHostname, nullptr, &size);
  std::wstring name(size, L'\0');
  const bool isKnown = ::GetComputerNameExW(ComputerNameDnsHostname, name.data(), &size) != 0;
  return isKnown ? Utf8Text({name.data(), size}) : "";
}

std::time_t WindowsPlatform::Now() {
  return std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
}

bool WindowsPlatform::QueryOSVersion(OSVersionRecord& record) {
  record = OSVersionRecord();
  OSVERSIONINFOEXW version{};
  version.dwOSVersionInfoSize = sizeof(version);
  // The call takes both forms of the record.
  auto* plain = static_cast<OSVERSIONINFOW*>(static_cast<void*>(&version));
  record.hasProductType = ::GetVersionExW(plain) != 0;
  if (!record.hasProductType) {
    version.dwOSVersionInfoSize = sizeof(OSVERSIONINFOW);
    if (::GetVersionExW(plain) == 0) {
      return false;
    }
  }
  record.family = static_cast<int>(version.dwPlatformId);
  record.major = static_cast<int>(version.dwMajorVersion);
  record.minor = static_cast<int>(version.dwMinorVersion);
  // One of the two families keeps its number also in the upper half.
  record.build = static_cast<int>(version.dwBuildNumber & 0xFFFFU);
  record.servicePack = Utf8Text(static_cast<const wchar_t*>(version.szCSDVersion));
  record.productType = version.wProductType;
  record.servicePackMajor = version.wServicePackMajor;
  return true;
}

std::filesystem::path RootFolder() {
  return L"\\";
}

std::filesystem::path WholePath(const std::filesystem::path& path) {
  // The library would take a share for a folder of the current drive.
  return windows::PlainPath(windows::LongPath(path));
}

bool HasSystemDialogs() {
  return true;
}

Platform& SystemPlatform() {
  static WindowsPlatform system;
  return system;
}

std::vector<std::string> StartInShell(int, char**) {
  // Otherwise a line end would grow by a CR on its way.
  ::_setmode(::_fileno(stdout), _O_BINARY);
  ::_setmode(::_fileno(stderr), _O_BINARY);
  static const Utf8Console console;
  // Only here are arguments complete: those of main() are in an older character set.
  int count = 0;
  const std::unique_ptr<wchar_t*, HLOCAL (*)(HLOCAL)> line(
      ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) {
    arguments.push_back(Utf8Text(line.get()[i]));
  }
  return arguments;
}

}  // namespace tarvell
