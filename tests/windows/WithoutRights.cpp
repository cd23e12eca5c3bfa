// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <windows.h>

#include <array>
#include <iostream>
#include <string>

/// Runs a program as a user who is no administrator: `without_rights PROGRAM ARGUMENT...`. Its
/// result is that of the program; 200 if the program could not be started.

namespace {

constexpr int kNotStarted = 200;

/// The command line without this program's own name, as it was typed.
std::wstring CommandToRun() {
  const std::wstring line = ::GetCommandLineW();
  const bool isQuoted = line.starts_with(L'"');
  const std::size_t end = line.find(isQuoted ? L'"' : L' ', 1);
  const std::size_t next = line.find_first_not_of(L' ', end + (isQuoted ? 1 : 0));
  return next == std::wstring::npos ? L"" : line.substr(next);
}

HANDLE TokenWithoutRights() {
  HANDLE own = nullptr;
  HANDLE reduced = nullptr;
  std::array<unsigned char, SECURITY_MAX_SID_SIZE> administrators{};
  auto size = static_cast<DWORD>(administrators.size());
  SID_AND_ATTRIBUTES refused{administrators.data(), 0};
  if (::CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, refused.Sid, &size) == 0 ||
      ::OpenProcessToken(::GetCurrentProcess(), TOKEN_ALL_ACCESS, &own) == 0 ||
      ::CreateRestrictedToken(own, DISABLE_MAX_PRIVILEGE, 1, &refused, 0, nullptr, 0, nullptr,
                              &reduced) == 0) {
    return nullptr;
  }
  return reduced;
}

}  // namespace

int main() {
  std::wstring command = CommandToRun();
  const HANDLE token = TokenWithoutRights();
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  PROCESS_INFORMATION process{};
  if (token == nullptr ||
      ::CreateProcessAsUserW(token, nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                             nullptr, &start, &process) == 0) {
    std::cerr << "not started: " << ::GetLastError() << '\n';
    return kNotStarted;
  }
  DWORD result = kNotStarted;
  ::WaitForSingleObject(process.hProcess, INFINITE);
  ::GetExitCodeProcess(process.hProcess, &result);
  return static_cast<int>(result);
}
