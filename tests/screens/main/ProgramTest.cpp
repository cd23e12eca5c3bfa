// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvell {
namespace {

/// The signals that a process ignores, one bit for each.
std::uint64_t IgnoredBy(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with("SigIgn:")) {
      return std::strtoull(line.c_str() + 7, nullptr, 16);
    }
  }
  return 0;
}

// Otherwise the program would end, with all that was typed, at the shell's file size limit or when
// it writes to a pipe.
TEST(Program, IsNotEndedByAWriteThatTheSystemRefuses) {
  const pid_t program = ::fork();
  ASSERT_GE(program, 0);
  if (program == 0) {
    (void)std::signal(SIGXFSZ, SIG_DFL);
    (void)std::signal(SIGPIPE, SIG_DFL);
    ::execl(TARVELL_PROGRAM, TARVELL_PROGRAM, static_cast<char*>(nullptr));
    ::_exit(127);
  }
  const std::uint64_t wanted = (1ULL << (SIGXFSZ - 1U)) | (1ULL << (SIGPIPE - 1U));
  std::uint64_t ignored = 0;
  for (int look = 0; look < 1000 && (ignored & wanted) != wanted; ++look) {
    ::usleep(20000);
    ignored = IgnoredBy(program);
  }
  EXPECT_EQ(ignored & wanted, wanted);
  EXPECT_EQ(::kill(program, SIGKILL), 0);
  int status = 0;
  EXPECT_EQ(::waitpid(program, &status, 0), program);
  EXPECT_TRUE(WIFSIGNALED(status)) << "the program did not start";
}

/// Whether a process has mapped a file whose path contains `name`.
bool HasLoaded(pid_t process, const std::string& name) {
  std::ifstream maps("/proc/" + std::to_string(process) + "/maps");
  std::string line;
  while (std::getline(maps, line)) {
    if (line.find(name) != std::string::npos) {
      return true;
    }
  }
  return false;
}

// Its start and its main menu do without the memory of the libraries that plot and print.
TEST(Program, StartsWithoutTheLibrariesThatPlotAndPrint) {
  const pid_t program = ::fork();
  ASSERT_GE(program, 0);
  if (program == 0) {
    ::execl(TARVELL_PROGRAM, TARVELL_PROGRAM, static_cast<char*>(nullptr));
    ::_exit(127);
  }
  // The picture of the splash screen is loaded after all that the program is linked with. Only this
  // test, from which the process begins, has Qt's library for tests.
  const auto isStarted = [program] {
    return HasLoaded(program, "libqsvg") && !HasLoaded(program, "libQt6Test");
  };
  for (int look = 0; look < 1000 && !isStarted(); ++look) {
    ::usleep(20000);
  }
  EXPECT_TRUE(isStarted());
  EXPECT_FALSE(HasLoaded(program, "QCustomPlot"));
  EXPECT_FALSE(HasLoaded(program, "tarvell_curve"));
  EXPECT_FALSE(HasLoaded(program, "PrintSupport"));
  EXPECT_FALSE(HasLoaded(program, "tarvell_paper"));
  EXPECT_EQ(::kill(program, SIGKILL), 0);
  int status = 0;
  EXPECT_EQ(::waitpid(program, &status, 0), program);
}

}  // namespace
}  // namespace tarvell
