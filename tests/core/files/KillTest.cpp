// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "core/caldata/cInstrPX12A.h"
#include "core/session/Tarvell_MainModule.h"
#include "support/FaultPlatform.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::FaultPlatform;
using test::TestTree;

constexpr const char* kFolder = R"(c:\calfactors\PX12A)";
constexpr const char* kFile = R"(c:\calfactors\PX12A\SN12345)";
constexpr int kKills = 200;
constexpr unsigned kSeed = 20260101;
constexpr int kLongestMicroseconds = 5000;

std::string BytesOf(const std::string& comment, int rows) {
  std::vector<std::string> lines = {
      "#MODEL_NO : PX12A",
      "#SER_NO   : 3318A12345",
      "#CAL_DATE : 20010305",
      "#CAL_NO   : C-0042",
      "#DUE_DATE : 20020305",
      "#COMMENT  : " + comment,
      "!",
      "!",
      "!        :              : Reflection Coefficient",
      "!FEQ(MHz): CAL FACTOR(%): Unc.(%)   : Magnitude  : Unc (%)   :   Phase(deg)"};
  for (int row = 0; row < rows; ++row) {
    lines.push_back("* " + std::to_string(1000 + row) +
                    ".00:    100.0     :    0.0    :     0.0    :    0.0    :     0.0  ");
  }
  lines.emplace_back("!End");
  return test::Lines(lines);
}

/// Saves both data sets in turn until it is killed, and closes `begun` as soon as it begins. Runs
/// in a process of its own.
[[noreturn]] void SaveInTurn(cInstrPX12A& a, cInstrPX12A& b, int begun) {
  ::close(begun);
  try {
    while (true) {
      a.SaveCalibrationDataToFile(kFile);
      b.SaveCalibrationDataToFile(kFile);
    }
  } catch (...) {
    ::_exit(1);
  }
}

bool IsLeftover(const std::string& name) {
  return name.starts_with(".tarvell-") && name.ends_with(".tmp");
}

// A program that is killed during a save leaves the file wholly old or wholly new. It may leave
// its temporary file, too. Nobody removes that, because it could belong to another operator's save.
TEST(Kill, DuringASaveLeavesTheFileWhole) {
  const TestTree tree;
  const std::string bytesA = BytesOf("short", 1);
  const std::string bytesB = BytesOf("long", 51);
  cInstrPX12A a;
  cInstrPX12A b;
  tree.Write(kFile, bytesB);
  b.LoadCalibrationDataFromFile(kFile);
  tree.Write(kFile, bytesA);
  a.LoadCalibrationDataFromFile(kFile);
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
      SaveInTurn(a, b, pipe[1]);
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
    const std::string bytes = tree.Read(kFile);
    ASSERT_TRUE(bytes == bytesA || bytes == bytesB) << "after kill " << kill << ":\n" << bytes;
    ++(bytes == bytesA ? seenA : seenB);
  }
  int leftovers = 0;
  for (const std::string& name : tree.Names(kFolder)) {
    EXPECT_TRUE(name == "SN12345" || IsLeftover(name)) << name;
    leftovers += IsLeftover(name) ? 1 : 0;
  }
  RecordProperty("leftovers", leftovers);
  EXPECT_GT(seenA, 0);
  EXPECT_GT(seenB, 0);
  EXPECT_GT(leftovers, 0) << "no kill met the middle of a save";

  // Leftovers disturb no list and no save.
  EXPECT_EQ(ReadCalFileHeaders(kFolder), 1);
  a.SaveCalibrationDataToFile(kFile);
  EXPECT_EQ(tree.Read(kFile), bytesA);
  std::filesystem::remove(tree.Native(kFile));
  std::vector<std::string> models;
  ListModelFolders("c:\\calfactors", models);
  EXPECT_EQ(models, (std::vector<std::string>{"*", ""})) << "a folder of leftovers counts as empty";
}

}  // namespace
}  // namespace tarvell
