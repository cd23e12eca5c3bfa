// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/TestKit.h"
#include "core/files/Paths.h"
#include "core/session/Profiles.h"
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

}  // namespace
}  // namespace tarvell
