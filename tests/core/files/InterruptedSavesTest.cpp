// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "core/files/SaveFile.h"
#include "support/FaultPlatform.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::FaultPlatform;
using test::TestTree;

constexpr const char* kDataFolder = R"(c:\calfactors\PX12A)";
constexpr const char* kDataFile = R"(c:\calfactors\PX12A\SN12345)";

constexpr int kKills = 200;
constexpr unsigned kSeed = 20260101;
constexpr int kLongestMicroseconds = 5000;

/// Saves both contents in turn until it is killed, and closes `begun` as soon as it begins. Runs in
/// a process of its own.
[[noreturn]] void SaveInTurn(const std::string& a, const std::string& b, int begun) {
  ::close(begun);
  try {
    while (true) {
      SaveFile(kDataFile, a);
      SaveFile(kDataFile, b);
    }
  } catch (...) {
    ::_exit(1);
  }
}

// A program that is killed during a save leaves the file wholly old or wholly new. It may leave
// its temporary file, too. Nobody removes that, because it could belong to another operator's save.
TEST(Kill, DuringASaveLeavesTheFileWhole) {
  const TestTree tree;
  const std::string bytesA = "QZ PX12A\r\n3318A12345\r\n05MAR2001\r\n";
  const std::string bytesB = bytesA + std::string(4000, 'x');
  tree.Write(kDataFile, bytesA);
  // Without waiting for the disk, or nearly every kill would meet the same step.
  FaultPlatform platform;
  platform.waits = false;

  std::mt19937 random(kSeed);
  std::uniform_int_distribution<useconds_t> microseconds(0, kLongestMicroseconds);
  int seenA = 0;
  int seenB = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      SaveInTurn(bytesA, bytesB, pipe[1]);
    }
    // The pipe closes when the child begins to save.
    ::close(pipe[1]);
    char nothing = 0;
    ASSERT_EQ(::read(pipe[0], &nothing, 1), 0);
    ::close(pipe[0]);
    ::usleep(microseconds(random));
    ASSERT_EQ(::kill(child, SIGKILL), 0);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "a save failed";
    const std::string bytes = tree.Read(kDataFile);
    ASSERT_TRUE(bytes == bytesA || bytes == bytesB) << "after kill " << kill << ":\n" << bytes;
    ++(bytes == bytesA ? seenA : seenB);
  }
  EXPECT_GT(seenA, 0);
  EXPECT_GT(seenB, 0);
  EXPECT_GT(tree.Names(kDataFolder).size(), 1U) << "no kill met the middle of a save";
}

}  // namespace
}  // namespace tarvell
