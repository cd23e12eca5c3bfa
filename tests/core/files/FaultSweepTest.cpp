// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/TestKit.h"
#include "core/session/Profiles.h"
#include "core/station/StationFiles.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/SampleInstrument.h"
#include "support/TestTree.h"

/// Each kind of file that the program writes is saved by SaveFile, whose own tests have every
/// failure of every step.
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

/// A kind of file, and how it is saved.
struct WrittenFile {
  const char* what;
  std::string folder;
  std::string name;
  std::function<void(const TestTree& tree, const std::string& path)> save;
};

void PrintTo(const WrittenFile& file, std::ostream* stream) {
  *stream << file.what;
}

std::filesystem::path KitSource(const TestTree& tree) {
  return tree.Root() / "kit.dat";
}

void CopyKit(const TestTree& tree) {
  test::WriteNative(KitSource(tree), kKit);
  CopyTestKitFile(KitSource(tree), kKitFolder);
}

std::vector<WrittenFile> EveryFile() {
  return {{"KitCopy", kKitFolder, "SN12345",
           [](const TestTree& tree, const std::string& /*path*/) { CopyKit(tree); }},
          {"DataFile", R"(c:\calfactors\PX12A)", "SN12345",
           [](const TestTree& /*tree*/, const std::string& path) {
             FindModel("PX12A")->create()->SaveCalibrationDataToFile(path);
           }},
          {"SetFile", R"(c:\calfactors\RT520A)", "SN12345",
           [](const TestTree& /*tree*/, const std::string& path) {
             FindModel("RT520A")->create()->SaveCalibrationDataToFile(path);
           }},
          {"InstrumentFile", R"(c:\stations\ST1)", "PX12A",
           [](const TestTree& /*tree*/, const std::string& /*path*/) {
             StoredFile file;
             SaveInstrumentFile(R"(c:\stations\ST1)", test::SampleInstrument(), file);
           }},
          {"StationList", R"(c:\stations)", "INDEX",
           [](const TestTree& /*tree*/, const std::string& /*path*/) {
             WriteStationIndex(R"(c:\stations)", {"ST2"});
           }},
          {"InstrumentList", R"(c:\stations\ST1)", "INDEX",
           [](const TestTree& /*tree*/, const std::string& /*path*/) {
             WriteStationInstrumentIndex(R"(c:\stations\ST1)", {"PX12A"});
           }},
          {"Profile", R"(c:\windows)", "tarvell.ini",
           [](const TestTree& /*tree*/, const std::string& /*path*/) {
             WriteProfile("c:\\cal", "c:\\st");
           }}};
}

class FaultSweep : public testing::TestWithParam<WrittenFile> {};

TEST_P(FaultSweep, AFailedSaveLeavesTheEarlierFileOrNone) {
  const WrittenFile& file = GetParam();
  const std::string path = file.folder + "\\" + file.name;
  const TestTree tree;
  tree.MakeFolders(file.folder);
  FaultPlatform platform;
  for (const bool hasEarlier : {false, true}) {
    if (hasEarlier) {
      tree.Write(path, kOld);
    }
    for (const Step step : {Step::Create, Step::Write, Step::Sync, Step::Close, Step::Replace}) {
      SCOPED_TRACE(testing::Message() << step << ", earlier file " << hasEarlier);
      platform.Set(step);
      const Error error = ErrorOf([&] { file.save(tree, path); });
      EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed) << error.what();
      EXPECT_EQ(error.Path(), path);
      EXPECT_EQ(platform.faults, 1) << "the step was never taken";
      EXPECT_EQ(tree.Names(file.folder), hasEarlier ? Names{file.name} : Names{});
      if (hasEarlier) {
        EXPECT_EQ(tree.Read(path), kOld);
      }
    }
  }
  // Without a fault the same save succeeds.
  platform.Set(Step::None);
  file.save(tree, path);
  EXPECT_NE(tree.Read(path), kOld);
  EXPECT_EQ(tree.Names(file.folder), Names{file.name});
}

INSTANTIATE_TEST_SUITE_P(Of, FaultSweep, testing::ValuesIn(EveryFile()),
                         [](const auto& test) { return test.param.what; });

// A kit's file is read before it is written.
TEST(KitSourceFaults, AFailedReadIsReportedForTheSourceAndWritesNothing) {
  const TestTree tree;
  const std::string target = std::string(kKitFolder) + R"(\SN12345)";
  tree.Write(target, kOld);
  FaultPlatform platform;
  // The source is opened for its serial number, and again to be copied: its bytes, then its end.
  for (const auto& [step, passes] :
       {std::pair(Step::OpenForReading, 0), std::pair(Step::OpenForReading, 1),
        std::pair(Step::Read, 0), std::pair(Step::Read, 1), std::pair(Step::Read, 2)}) {
    SCOPED_TRACE(testing::Message() << step << " after " << passes);
    platform.passes = passes;
    platform.Set(step);
    const Error error = ErrorOf([&] { CopyKit(tree); });
    EXPECT_EQ(error.Kind(), ErrorKind::System) << error.what();
    EXPECT_EQ(error.Path(), KitSource(tree).string());
    EXPECT_TRUE(Contains(error.Text(), "Cannot read the file")) << error.Text();
    EXPECT_EQ(platform.faults, 1) << "the step was never taken";
    EXPECT_EQ(tree.Names(kKitFolder), Names{"SN12345"});
    EXPECT_EQ(tree.Read(target), kOld);
  }
  platform.Set(Step::None);
  CopyKit(tree);
  EXPECT_EQ(tree.Read(target), kKit);
}

}  // namespace
}  // namespace tarvell
