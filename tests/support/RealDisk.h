// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_REALDISK_H
#define TARVELL_TESTS_SUPPORT_REALDISK_H

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvell::test {

/// Runs `act` in a forked process, and waits for its end. An exception from it fails the test.
template <typename Act>
void InAnotherProcess(const Act& act) {
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    try {
      act();
      ::_exit(0);
    } catch (...) {
      ::_exit(1);
    }
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  ASSERT_EQ(WEXITSTATUS(status), 0) << "the other process met an error";
}

/// Limits the size of the files that this process writes, while it lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &before_), 0);
    signalBefore_ = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, before_.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &before_), 0);
    EXPECT_NE(std::signal(SIGXFSZ, signalBefore_), SIG_ERR);
  }

 private:
  rlimit before_{};
  void (*signalBefore_)(int) = nullptr;
};

inline bool WriteText(const char* path, const std::string& text) {
  const int file = ::open(path, O_WRONLY | O_CLOEXEC);
  if (file < 0) {
    return false;
  }
  const bool written = ::write(file, text.data(), static_cast<unsigned>(text.size())) ==
                       static_cast<ssize_t>(text.size());
  return ::close(file) == 0 && written;
}

/// Mounts a tiny file system at `folder`, for this process only. Returns the reason of a failure,
/// else "".
[[nodiscard]] inline std::string MountTinyDisk(const std::filesystem::path& folder) {
  const uid_t user = ::geteuid();
  const gid_t group = ::getegid();
  if (user != 0 || ::unshare(CLONE_NEWNS) != 0) {
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
      return std::string("no mount namespace can be had: ") + std::strerror(errno);
    }
    (void)WriteText("/proc/self/setgroups", "deny");
    if (!WriteText("/proc/self/uid_map", "0 " + std::to_string(user) + " 1") ||
        !WriteText("/proc/self/gid_map", "0 " + std::to_string(group) + " 1")) {
      return std::string("the user namespace cannot be set up: ") + std::strerror(errno);
    }
  }
  if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
    return std::string("the mount namespace cannot be made private: ") + std::strerror(errno);
  }
  if (::mount("none", folder.c_str(), "tmpfs", 0, "size=65536,mode=0777") != 0) {
    return std::string("no file system can be mounted: ") + std::strerror(errno);
  }
  return {};
}

/// Writes until the disk is full.
[[nodiscard]] inline bool FillDisk(const std::filesystem::path& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0) {
    return false;
  }
  const std::string block(4096, 'f');
  auto size = static_cast<unsigned>(block.size());
  bool full = false;
  for (int i = 0; i < 10000 && !full; ++i) {
    const ssize_t count = ::write(file, block.data(), size);
    if (count < 0) {
      full = size == 1 && errno == ENOSPC;
      size = 1;
    }
  }
  return ::close(file) == 0 && full;
}

}  // namespace tarvell::test

#endif
