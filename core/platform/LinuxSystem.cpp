// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <sstream>
#include <string>
#include <sys/utsname.h>
#include <unistd.h>

#include "core/platform/LinuxPlatform.h"
#include "core/platform/Shell.h"
#include "core/platform/SystemDialogs.h"
#include "core/platform/SystemName.h"

namespace tarvell {

namespace {

constexpr std::size_t kUserBuffer = 16384;  // as large as the longest entry of a user

/// The value of an environment variable that names a folder, "" unless that is a whole path.
std::filesystem::path FolderFrom(const char* variable) {
  const char* value = std::getenv(variable);  // NOLINT(concurrency-mt-unsafe): one thread
  const std::filesystem::path folder = value == nullptr ? "" : value;
  return folder.is_absolute() ? folder : std::filesystem::path();
}

}  // namespace

std::filesystem::path LinuxPlatform::ProgramFolder() {
  std::error_code code;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", code);
  return program.parent_path();
}

std::filesystem::path LinuxPlatform::DriveFolder() {
  return "/var/lib/tarvell/drives";
}

std::filesystem::path LinuxPlatform::UserFolder() {
  const std::filesystem::path data = FolderFrom("XDG_DATA_HOME");
  if (!data.empty()) {
    return data / "tarvell";
  }
  const std::filesystem::path home = FolderFrom("HOME");
  return home.empty() ? home : home / ".local" / "share" / "tarvell";
}

std::string LinuxPlatform::WindowsDirectory() {
  return "c:\\windows";
}

std::string LinuxPlatform::OwnWindowsDirectory() {
  return {};
}

std::string LinuxPlatform::UserName() {
  const uid_t user = ::geteuid();
  std::array<char, kUserBuffer> buffer{};
  struct passwd entry {};
  struct passwd* found = nullptr;
  const bool isKnown =
      ::getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr;
  return isKnown ? entry.pw_name : std::to_string(user);
}

std::string LinuxPlatform::HostName() {
  struct utsname name {};
  return ::uname(&name) == 0 ? static_cast<const char*>(name.nodename) : "";
}

std::time_t LinuxPlatform::Now() {
  return std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
}

bool LinuxPlatform::QueryOSVersion(OSVersionRecord& record) {
  struct utsname name {};
  if (::uname(&name) != 0) {
    return false;
  }
  record = OSVersionRecord();
  record.systemName = static_cast<const char*>(name.sysname);
  std::istringstream release(static_cast<const char*>(name.release));
  char dot = '.';
  const bool isKnown = static_cast<bool>(release >> record.major >> dot >> record.minor);
  release >> dot >> record.build;
  return isKnown;
}

std::filesystem::path RootFolder() {
  return "/";
}

std::filesystem::path WholePath(const std::filesystem::path& path) {
  std::error_code code;
  const std::filesystem::path whole = std::filesystem::absolute(path, code);
  return (code ? path : whole).lexically_normal();
}

bool HasSystemDialogs() {
  return false;
}

Platform& SystemPlatform() {
  static LinuxPlatform system;
  return system;
}

std::filesystem::path SystemName(std::string_view text) {
  return text;
}

std::vector<std::string> StartInShell(int argc, char** argv) {
  return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

}  // namespace tarvell
