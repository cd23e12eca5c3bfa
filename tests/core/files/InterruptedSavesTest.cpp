// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/TestKit.h"
#include "core/files/Paths.h"
#include "core/files/SaveFile.h"
#include "core/session/Profiles.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/station/StationFiles.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/SampleInstrument.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::FaultPlatform;
using test::TestTree;
using Step = FaultPlatform::Step;
using Names = std::vector<std::string>;

constexpr std::string_view kOld = "an earlier file, of another length\r\n";
constexpr std::string_view kKit = "QZ RT410A\r\n3318A12345\r\n05MAR2001\r\nwhatever\r\n";
constexpr const char* kKitFolder = R"(c:\calfactors\RT410A)";
constexpr const char* kKitFile = R"(c:\calfactors\RT410A\SN12345)";
constexpr const char* kDataFolder = R"(c:\calfactors\PX12A)";
constexpr const char* kDataFile = R"(c:\calfactors\PX12A\SN12345)";
constexpr const char* kKitSource = R"(c:\kit.dat)";

class FaultSweep : public testing::Test {
 protected:
  FaultSweep() { tree_.Write(kKitSource, kKit); }

  void CopyKit() const { CopyTestKitFile(tree_.Native(kKitSource), kKitFolder); }

  TestTree tree_;
  FaultPlatform platform_;
};

// Each kind of file is saved by SaveFile, whose own tests have every failure of every step.
TEST_F(FaultSweep, AFailedSaveOfAnyKindOfFileLeavesTheEarlierFile) {
  const std::vector<std::pair<std::string, std::function<void()>>> files = {
      {kKitFile, [&] { CopyKit(); }},
      {kDataFile, [] { FindModel("PX12A")->create()->SaveCalibrationDataToFile(kDataFile); }},
      {R"(c:\stations\ST1\PX12A)",
       [] {
         StoredFile file;
         SaveInstrumentFile(R"(c:\stations\ST1)", test::SampleInstrument(), file);
       }},
      {R"(c:\stations\INDEX)", [] { WriteStationIndex(R"(c:\stations)", {"ST2"}); }},
      {R"(c:\windows\tarvell.ini)", [] { WriteProfile("c:\\cal", "c:\\st"); }}};
  for (const auto& [path, save] : files) {
    SCOPED_TRACE(path);
    tree_.Write(path, kOld);
    const std::string folder(FolderOf(path));
    const Names before = tree_.Names(folder);
    platform_.Set(Step::Replace);
    const Error error = ErrorOf(save);
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed) << error.what();
    EXPECT_EQ(error.Path(), path);
    EXPECT_EQ(tree_.Names(folder), before);
    EXPECT_EQ(tree_.Read(path), kOld);
    // Without a fault the same save succeeds.
    save();
    EXPECT_EQ(tree_.Names(folder), before);
    EXPECT_NE(tree_.Read(path), kOld);
  }
}

// A kit's file is read before it is written.
TEST_F(FaultSweep, AFailedReadOfAKitIsReportedForTheSourceAndWritesNothing) {
  tree_.Write(kKitFile, kOld);
  // The source is opened for its serial number, and again to be copied: its bytes, then its end.
  for (const auto& [step, passes] :
       {std::pair(Step::OpenForReading, 0), std::pair(Step::OpenForReading, 1),
        std::pair(Step::Read, 0), std::pair(Step::Read, 1), std::pair(Step::Read, 2)}) {
    SCOPED_TRACE(testing::Message() << step << " after " << passes);
    platform_.passes = passes;
    platform_.Set(step);
    const Error error = ErrorOf([&] { CopyKit(); });
    EXPECT_EQ(error.Kind(), ErrorKind::System) << error.what();
    EXPECT_EQ(error.Path(), tree_.Native(kKitSource).string());
    EXPECT_TRUE(Contains(error.Text(), "Cannot read the file")) << error.Text();
    EXPECT_EQ(platform_.faults, 1) << "the step was never taken";
    EXPECT_EQ(tree_.Names(kKitFolder), Names{"SN12345"});
    EXPECT_EQ(tree_.Read(kKitFile), kOld);
  }
}

// ---- A program that is killed.

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

bool IsLeftover(const std::string& name) {
  return name.starts_with(".tarvell-") && name.ends_with(".tmp");
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
  int leftovers = 0;
  for (const std::string& name : tree.Names(kDataFolder)) {
    EXPECT_TRUE(name == "SN12345" || IsLeftover(name)) << name;
    leftovers += IsLeftover(name) ? 1 : 0;
  }
  RecordProperty("leftovers", leftovers);
  EXPECT_GT(seenA, 0);
  EXPECT_GT(seenB, 0);
  EXPECT_GT(leftovers, 0) << "no kill met the middle of a save";

  // Leftovers disturb no list and no save.
  EXPECT_EQ(ReadCalFileHeaders(kDataFolder), 1);
  SaveFile(kDataFile, bytesA);
  EXPECT_EQ(tree.Read(kDataFile), bytesA);
  std::filesystem::remove(tree.Native(kDataFile));
  std::vector<std::string> models;
  ListModelFolders("c:\\calfactors", models);
  EXPECT_EQ(models, (std::vector<std::string>{"*", ""})) << "a folder of leftovers counts as empty";
}

}  // namespace
}  // namespace tarvell
