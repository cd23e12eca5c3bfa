// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
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

/// The paths of the files that a process has mapped, read at once: a new program may begin in it at
/// any time.
std::string MappedBy(pid_t process) {
  std::ifstream maps("/proc/" + std::to_string(process) + "/maps");
  return {std::istreambuf_iterator<char>(maps), std::istreambuf_iterator<char>()};
}

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
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
  const auto isStarted = [](const std::string& mapped) {
    return Contains(mapped, "libqsvg") && !Contains(mapped, "libQt6Test");
  };
  std::string mapped;
  for (int look = 0; look < 1000 && !isStarted(mapped); ++look) {
    ::usleep(20000);
    mapped = MappedBy(program);
  }
  EXPECT_TRUE(isStarted(mapped));
  EXPECT_FALSE(Contains(mapped, "QCustomPlot"));
  EXPECT_FALSE(Contains(mapped, "tarvell_curve"));
  EXPECT_FALSE(Contains(mapped, "PrintSupport"));
  EXPECT_FALSE(Contains(mapped, "tarvell_paper"));
  EXPECT_EQ(::kill(program, SIGKILL), 0);
  int status = 0;
  EXPECT_EQ(::waitpid(program, &status, 0), program);
}

}  // namespace
}  // namespace tarvell
