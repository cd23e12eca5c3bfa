// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
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

/// Every file that the program writes, under a fault of every step of saving it.
namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::FaultPlatform;
using test::Lines;
using test::TestTree;
using Step = FaultPlatform::Step;
using Names = std::vector<std::string>;

constexpr std::string_view kOld = "an earlier file, of another length\r\n";
constexpr std::string_view kKit = "QZ RT410A\r\n3318A12345\r\n05MAR2001\r\nwhatever\r\n";

/// Saves the file, again and again if need be, and tells the bytes that it must then hold.
struct Saving {
  std::function<void()> save;
  std::string bytes;
};

/// A file that the program writes.
struct WrittenFile {
  std::string what;
  std::string folder;
  std::string name;
  std::function<Saving(const TestTree& tree, const std::string& path)> prepare;
};

void PrintTo(const WrittenFile& file, std::ostream* stream) {
  *stream << file.what;
}

/// The template less all data lines but the first of each table: a small data file of its model.
std::string Shortened(const std::string& bytes) {
  std::string result;
  bool wasDataLine = false;
  for (std::size_t start = 0; start < bytes.size();) {
    const std::size_t end = bytes.find("\r\n", start) + 2;
    const bool isDataLine = bytes[start] == '*';
    if (!isDataLine || !wasDataLine) {
      result += bytes.substr(start, end - start);
    }
    wasDataLine = isDataLine;
    start = end;
  }
  return result;
}

WrittenFile DataFileOf(const Model& model) {
  const std::string code(model.code);
  return {"DataFileOf" + code, "c:\\calfactors\\" + code, "SN12345",
          [&model, code](const TestTree& tree, const std::string& path) -> Saving {
            tree.InstallTemplate(code);
            const std::filesystem::path native = tree.ProgramFolder() / ("Temp" + code);
            const std::string bytes = Shortened(test::ReadNative(native));
            test::WriteNative(native, bytes);
            const std::shared_ptr<cifCaldata> data = model.create();
            data->SetInitialDefaultData();
            return {[data, path] { data->SaveCalibrationDataToFile(path); }, bytes};
          }};
}

WrittenFile KitCopy() {
  return {"KitCopy", "c:\\calfactors\\RT410A", "SN12345",
          [](const TestTree& tree, const std::string& /*path*/) -> Saving {
            const std::filesystem::path source = tree.Root() / "kit.dat";
            test::WriteNative(source, kKit);
            return {[source] { CopyTestKitFile(source.string(), "c:\\calfactors\\RT410A"); },
                    std::string(kKit)};
          }};
}

WrittenFile Instrument() {
  return {"InstrumentFile", "c:\\stations\\ST1", "PX12A",
          [](const TestTree& /*tree*/, const std::string& /*path*/) -> Saving {
            return {[] {
                      StoredFile file;
                      SaveInstrumentFile("c:\\stations\\ST1", test::SampleInstrument(), file);
                    },
                    test::kSampleInstrumentFile};
          }};
}

WrittenFile StationList() {
  return {
      "StationList", "c:\\stations", "INDEX",
      [](const TestTree& /*tree*/, const std::string& /*path*/) -> Saving {
        return {[] { WriteStationIndex("c:\\stations", {"ST2", "rack 7"}); }, "ST2\r\nrack 7\r\n"};
      }};
}

WrittenFile InstrumentList() {
  return {"InstrumentList", "c:\\stations\\ST1", "INDEX",
          [](const TestTree& /*tree*/, const std::string& /*path*/) -> Saving {
            return {[] {
                      WriteStationInstrumentIndex("c:\\stations\\ST1", {"PX12A", "RT730A"});
                    },
                    "PX12A\r\nRT730A\r\nINDEX\r\n"};
          }};
}

WrittenFile Profile() {
  return {"Profile", "c:\\windows", "tarvell.ini",
          [](const TestTree& /*tree*/, const std::string& /*path*/) -> Saving {
            return {[] { WriteProfile("c:\\cal", "c:\\st"); },
                    Lines({";", ";  Tar vell    Ini file", ";", "[Tarvell]", "SysRevision=A.02.61",
                           "", "[Calfactors]", "Dir=c:\\cal", "", "[Stations]", "Dir=c:\\st"})};
          }};
}

std::vector<WrittenFile> EveryFile() {
  std::vector<WrittenFile> files = {KitCopy(), Instrument(), StationList(), InstrumentList(),
                                    Profile()};
  for (const Model& model : kModels) {
    if (model.create != nullptr) {
      files.push_back(DataFileOf(model));
    }
  }
  return files;
}

class FaultSweep : public testing::TestWithParam<WrittenFile> {
 protected:
  FaultSweep() {
    tree_.MakeFolders(GetParam().folder);
    tree_.Write(Neighbour(), "neighbour");
    saving_ = GetParam().prepare(tree_, Path());
    platform_ = std::make_unique<FaultPlatform>();
    platform_->waits = false;
  }

  [[nodiscard]] static std::string Path() { return GetParam().folder + "\\" + GetParam().name; }
  [[nodiscard]] static std::string Neighbour() { return GetParam().folder + "\\neighbour"; }

  /// The folder holds the file with these bytes, or none, and beside it what was there.
  void ExpectFile(const std::string_view* bytes) const {
    Names names = {"neighbour"};
    if (bytes != nullptr) {
      names.push_back(GetParam().name);
      EXPECT_EQ(tree_.Read(Path()), *bytes);
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(tree_.Names(GetParam().folder), names);
  }

  /// Puts the earlier file into its place, or none.
  void Reset(bool hasEarlier) const {
    if (hasEarlier) {
      tree_.Write(Path(), kOld);
    } else {
      std::filesystem::remove(tree_.Native(Path()));
    }
  }

  /// A save that fails with an error of this file, and leaves the earlier file, or none, as it was.
  void ExpectFailure(bool hasEarlier) const {
    ExpectError();
    ExpectFile(hasEarlier ? &kOld : nullptr);
    EXPECT_EQ(platform_->opened, 0) << "never in place after a failed write";
  }

  void ExpectError() const {
    const Error error = ErrorOf(saving_.save);
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed) << error.what();
    EXPECT_EQ(error.Path(), Path());
    EXPECT_TRUE(Contains(error.what(), Path())) << error.what();
    EXPECT_GT(platform_->faults, 0) << "the step was never taken";
  }

  /// Without a fault the same save succeeds.
  void ExpectSuccess() const {
    platform_->Set(Step::None);
    saving_.save();
    const std::string_view bytes = saving_.bytes;
    ExpectFile(&bytes);
  }

  TestTree tree_;
  Saving saving_;
  std::unique_ptr<FaultPlatform> platform_;
};

TEST_P(FaultSweep, AWriteThatFailsAtAnyByteLeavesTheEarlierFile) {
  for (const bool hasEarlier : {true, false}) {
    Reset(hasEarlier);
    for (std::size_t byte = 0; byte < saving_.bytes.size(); ++byte) {
      SCOPED_TRACE(testing::Message() << "earlier file " << hasEarlier << ", byte " << byte);
      platform_->failAtByte = byte;
      platform_->Set(Step::Write,
                     byte % 2 == 0 ? std::errc::no_space_on_device : std::errc::io_error);
      ExpectFailure(hasEarlier);
      if (HasFailure()) {
        return;  // thousands more would say the same
      }
    }
    ExpectSuccess();
  }
}

TEST_P(FaultSweep, AWriteThatTakesNothingMoreLeavesTheEarlierFile) {
  for (const bool hasEarlier : {true, false}) {
    Reset(hasEarlier);
    for (std::size_t byte = 0; byte < saving_.bytes.size(); byte += 97) {
      SCOPED_TRACE(testing::Message() << "earlier file " << hasEarlier << ", byte " << byte);
      platform_->failAtByte = byte;
      platform_->Set(Step::Nothing);
      ExpectFailure(hasEarlier);
    }
    ExpectSuccess();
  }
}

TEST_P(FaultSweep, AnyStepThatFailsLeavesTheEarlierFile) {
  for (const bool hasEarlier : {true, false}) {
    for (const Step step :
         {Step::Resolve, Step::Facts, Step::Create, Step::Write, Step::Nothing, Step::Length,
          Step::Attributes, Step::Sync, Step::Close, Step::Replace}) {
      if (step == Step::Attributes && !hasEarlier) {
        continue;  // there are none to take
      }
      for (const bool always : {false, true}) {
        SCOPED_TRACE(testing::Message()
                     << step << ", earlier file " << hasEarlier << ", always " << always);
        Reset(hasEarlier);
        platform_->always = always;
        platform_->failAtByte = 0;
        platform_->Set(step);
        ExpectFailure(hasEarlier);
        ExpectSuccess();
      }
    }
  }
}

TEST_P(FaultSweep, WhenOnlyTheFolderIsNotSyncedTheNewFileIsThereWhole) {
  for (const bool hasEarlier : {true, false}) {
    SCOPED_TRACE(hasEarlier);
    Reset(hasEarlier);
    platform_->Set(Step::SyncFolder);
    ExpectError();
    const std::string_view bytes = saving_.bytes;
    ExpectFile(&bytes);
    ExpectSuccess();
  }
}

TEST_P(FaultSweep, WritesOfAFewBytesAtATimeMakeTheSameFile) {
  for (const std::size_t portion : {std::size_t{1}, std::size_t{7}}) {
    Reset(true);
    platform_->portion = portion;
    ExpectSuccess();
  }
}

INSTANTIATE_TEST_SUITE_P(Of, FaultSweep, testing::ValuesIn(EveryFile()),
                         [](const auto& test) { return test.param.what; });

// ---- A kit's file is read before it is written.

class KitSourceFaults : public testing::TestWithParam<bool> {};

TEST_P(KitSourceFaults, AReadThatFailsIsToldOfTheSourceAndWritesNothing) {
  const TestTree tree;
  const WrittenFile kit = KitCopy();
  const std::string target = kit.folder + "\\" + kit.name;
  tree.MakeFolders(kit.folder);
  const Saving saving = kit.prepare(tree, target);
  const std::string source = (tree.Root() / "kit.dat").string();
  const bool hasEarlier = GetParam();
  if (hasEarlier) {
    tree.Write(target, kOld);
  }
  FaultPlatform platform;
  const Names before = tree.Names(kit.folder);
  // The source is opened for its serial number, and again to be copied: one block, then its end.
  const std::vector<std::pair<Step, int>> faults = {{Step::OpenForReading, 0},
                                                    {Step::OpenForReading, 1},
                                                    {Step::Read, 0},
                                                    {Step::Read, 1},
                                                    {Step::Read, 2}};
  for (const auto& [step, passes] : faults) {
    SCOPED_TRACE(testing::Message() << step << " after " << passes);
    platform.passes = passes;
    platform.Set(step);
    const Error error = ErrorOf(saving.save);
    EXPECT_EQ(error.Kind(), ErrorKind::System) << error.what();
    EXPECT_EQ(error.Path(), source);
    EXPECT_TRUE(Contains(error.Text(), "Cannot read the file")) << error.Text();
    EXPECT_EQ(platform.faults, 1) << "the step was never taken";
    EXPECT_EQ(tree.Names(kit.folder), before);
    if (hasEarlier) {
      EXPECT_EQ(tree.Read(target), kOld);
    }
    EXPECT_EQ(test::ReadNative(source), kKit);
  }
  platform.Set(Step::None);
  saving.save();
  EXPECT_EQ(tree.Read(target), kKit);
}

INSTANTIATE_TEST_SUITE_P(WithAnEarlierFile, KitSourceFaults, testing::Bool());

}  // namespace
}  // namespace tarvell
