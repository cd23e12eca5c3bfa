// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "core/files/SaveFile.h"
#include "core/files/SaveFileSample.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/TestTree.h"
#include "support/TinyDisk.h"

namespace tarvell {
namespace {

using test::ErrorOf;
using test::FaultPlatform;
using test::kDataFile;
using test::kDataFolder;
using test::kNewBytes;
using test::kOldBytes;
using test::StatOf;
using test::TestTree;
using Step = test::FaultPlatform::Step;

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

// ---- Steps that fail.

class SaveFileFaults : public testing::Test {
 public:
  void Set(Step step, std::errc fault = std::errc::io_error) { platform.Set(step, fault); }

  // A failed save that leaves `content` ("" and no file when `content` is null) and nothing else.
  void ExpectFailure(const std::string_view* content) const {
    const Error error = ErrorOf([] { SaveFile(kDataFile, kNewBytes); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed) << error.what();
    EXPECT_EQ(error.Path(), kDataFile);
    EXPECT_GT(platform.faults, 0) << "the step was never taken";
    if (content == nullptr) {
      EXPECT_EQ(tree.Names(kDataFolder), Names{});
    } else {
      EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
      EXPECT_EQ(tree.Read(kDataFile), *content);
    }
  }

  // A save that fails once in `step`, and then overwrites the file instead of replacing it.
  void ExpectWrittenInPlace(Step step, std::errc fault) {
    tree.Write(kDataFile, kOldBytes);
    const ino_t before = StatOf(tree.Native(kDataFile)).st_ino;
    Set(step, fault);
    SaveFile(kDataFile, kNewBytes);
    EXPECT_EQ(platform.faults, 1);
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
    EXPECT_EQ(StatOf(tree.Native(kDataFile)).st_ino, before);
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
  }

  TestTree tree;
  FaultPlatform platform;
};

TEST_F(SaveFileFaults, WritesOfOneByteAtATimeSucceed) {
  platform.portion = 1;
  tree.Write(kDataFile, kOldBytes);
  SaveFile(kDataFile, kNewBytes);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  fs::create_hard_link(tree.Native(kDataFile), tree.Native("c:\\other"));
  SaveFile(kDataFile, kOldBytes);
  EXPECT_EQ(tree.Read(kDataFile), kOldBytes);
  EXPECT_EQ(tree.Read("c:\\other"), kOldBytes);
  EXPECT_EQ(platform.opened, 1);
}

TEST_F(SaveFileFaults, AFailedStepLeavesTheOldFileOrNone) {
  for (const bool always : {false, true}) {
    platform.always = always;
    for (const Step step : {Step::Resolve, Step::Facts, Step::Create, Step::Nothing, Step::Length,
                            Step::Attributes, Step::Sync, Step::Close, Step::Replace}) {
      SCOPED_TRACE(testing::Message() << step << ", always " << always);
      tree.Write(kDataFile, kOldBytes);
      Set(step);
      ExpectFailure(&kOldBytes);
      EXPECT_EQ(platform.opened, 0) << "never in place after a failed write";
      fs::remove(tree.Native(kDataFile));
      if (step != Step::Attributes) {  // a new file takes none
        Set(step);
        ExpectFailure(nullptr);
      }
    }
  }
}

TEST_F(SaveFileFaults, AWriteMayFailAtAnyByte) {
  for (const bool always : {false, true}) {
    platform.always = always;
    for (std::size_t byte = 0; byte < kNewBytes.size(); ++byte) {
      for (const Step step : {Step::Write, Step::Nothing}) {
        SCOPED_TRACE(testing::Message() << step << " at " << byte);
        platform.failAtByte = byte;
        tree.Write(kDataFile, kOldBytes);
        Set(step, std::errc::no_space_on_device);
        ExpectFailure(&kOldBytes);
        EXPECT_EQ(platform.opened, 0) << "never in place after a failed write";
        EXPECT_LT(platform.faults, 1000) << "tried again without end";
        fs::remove(tree.Native(kDataFile));
        Set(step, std::errc::no_space_on_device);
        ExpectFailure(nullptr);
      }
    }
  }
}

TEST_F(SaveFileFaults, ALengthThatIsTooLongIsAFailure) {
  platform.wrongBy = static_cast<std::uintmax_t>(-1);
  tree.Write(kDataFile, kOldBytes);
  Set(Step::Length);
  ExpectFailure(&kOldBytes);
}

TEST_F(SaveFileFaults, OverwritesInPlaceWhatTheFolderDoesNotLetReplace) {
  for (const std::errc fault : {std::errc::permission_denied, std::errc::read_only_file_system,
                                std::errc::operation_not_permitted}) {
    ExpectWrittenInPlace(Step::Create, fault);
  }
  // A group that cannot be kept, and a folder in which users may replace only their own files.
  ExpectWrittenInPlace(Step::Attributes, std::errc::operation_not_permitted);
  ExpectWrittenInPlace(Step::Replace, std::errc::operation_not_permitted);
}

TEST_F(SaveFileFaults, TheNewFileIsThereWhenOnlyTheSyncOfItsFolderFails) {
  tree.Write(kDataFile, kOldBytes);
  Set(Step::SyncFolder);
  ExpectFailure(&kNewBytes);
  fs::remove(tree.Native(kDataFile));
  Set(Step::SyncFolder);
  ExpectFailure(&kNewBytes);
}

// ---- The same in place, for a file with two names.

class SaveFileInPlaceFaults : public SaveFileFaults {
 public:
  void Prepare(std::string_view old) {
    tree.Write(kDataFile, old);
    if (!tree.Exists("c:\\other")) {
      fs::create_hard_link(tree.Native(kDataFile), tree.Native("c:\\other"));
    }
  }
  void ExpectOld(std::string_view old) {
    ExpectFailure(&old);
    EXPECT_EQ(tree.Read("c:\\other"), old);
    EXPECT_TRUE(fs::equivalent(tree.Native(kDataFile), tree.Native("c:\\other")));
  }
};

TEST_F(SaveFileInPlaceFaults, AWriteThatFailsAtAnyByteRestoresTheOldContent) {
  const std::string longer(200, 'o');
  for (const std::string_view old :
       {kOldBytes, std::string_view(longer), std::string_view("o"), std::string_view()}) {
    for (std::size_t byte = 0; byte < kNewBytes.size(); ++byte) {
      SCOPED_TRACE(testing::Message() << old.size() << ' ' << byte);
      platform.failAtByte = byte;
      Prepare(old);
      Set(Step::Write, std::errc::no_space_on_device);
      ExpectOld(old);
    }
  }
}

TEST_F(SaveFileInPlaceFaults, AnyOtherStepRestoresTheOldContent) {
  const std::string longer(200, 'o');
  for (const std::string_view old : {kOldBytes, std::string_view(longer), std::string_view("o")}) {
    for (const Step step :
         {Step::Open, Step::Nothing, Step::Cut, Step::Length, Step::Sync, Step::Close}) {
      SCOPED_TRACE(testing::Message() << old.size() << " step " << static_cast<int>(step));
      Prepare(old);
      Set(step);
      ExpectOld(old);
    }
  }
}

TEST_F(SaveFileInPlaceFaults, ADiskThatTakesNotAByteMoreLosesNothing) {
  platform.always = true;
  for (const Step step : {Step::Open, Step::Write, Step::Nothing}) {
    SCOPED_TRACE(step);
    Prepare(kOldBytes);
    Set(step, std::errc::no_space_on_device);
    ExpectOld(kOldBytes);
    EXPECT_LT(platform.faults, 10) << "tried again without end";
  }
}

TEST_F(SaveFileInPlaceFaults, AContentThatCannotBePutBackIsReported) {
  platform.always = true;
  platform.failAtByte = 4;
  for (const Step step :
       {Step::Write, Step::Nothing, Step::Cut, Step::Length, Step::Sync, Step::Close}) {
    SCOPED_TRACE(step);
    Prepare(kOldBytes);
    Set(step);
    const Error error = ErrorOf([] { SaveFile(kDataFile, kNewBytes); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
    EXPECT_EQ(error.Path(), kDataFile);
    EXPECT_EQ(error.Text(),
              "Saving failed (Input/output error), and the earlier content could not be put back. "
              "Keep this screen open, see to the disk and save again.");
    EXPECT_EQ(platform.opened, 2) << "to save, and to put back";
    EXPECT_EQ(platform.faults, 2);
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
    // Saving again, as the message says, succeeds once the disk works.
    Set(Step::None);
    SaveFile(kDataFile, kNewBytes);
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
    EXPECT_EQ(tree.Read("c:\\other"), kNewBytes);
  }
}

// ---- Disks that are really full.

// The failed checks of the child process below, one per line: it cannot use the test's own.
class Findings {
 public:
  void Check(bool holds, const std::string& what) {
    if (!holds) {
      text_ += what + '\n';
    }
  }
  [[nodiscard]] const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

void ExpectRefusal(Findings& findings, const TestTree& tree, const std::string& what,
                   const std::string& path, const std::string& bytes, const std::string& old,
                   const Names& names) {
  bool refused = false;
  try {
    SaveFile(path, bytes);
  } catch (const Error& error) {
    refused = error.Kind() == ErrorKind::WriteFailed;
  }
  findings.Check(refused, what + ": no error of a failed write");
  findings.Check(tree.Names("c:\\full") == names, what + ": another set of files");
  const bool there = tree.Exists(path);
  findings.Check(old.empty() ? !there : there && tree.Read(path) == old,
                 what + ": the file is not as it was");
}

std::string OnAFullFileSystem(const TestTree& tree) {
  const std::string trouble = test::MountTinyDisk(tree.Native("c:\\full"));
  if (!trouble.empty()) {
    return "this check needs a file system that can be filled, and " + trouble;
  }
  Findings findings;
  const std::string old(100, 'o');
  tree.Write("c:\\full\\SN1", old);
  tree.Write("c:\\full\\SN2", old);
  fs::create_hard_link(tree.Native("c:\\full\\SN2"), tree.Native("c:\\full\\SN3"));
  const fs::path filler = tree.Native("c:\\full\\filler");
  const Names names = {"SN1", "SN2", "SN3", "filler"};
  findings.Check(test::FillDisk(filler), "the file system could not be filled");

  const std::string small = "ten bytes.";
  const std::string large(40000, 'n');
  ExpectRefusal(findings, tree, "small, replacing", "c:\\full\\SN1", small, old, names);
  ExpectRefusal(findings, tree, "large, replacing", "c:\\full\\SN1", large, old, names);
  ExpectRefusal(findings, tree, "small, new", "c:\\full\\SN9", small, "", names);
  ExpectRefusal(findings, tree, "large, new", "c:\\full\\SN9", large, "", names);
  ExpectRefusal(findings, tree, "large, in place", "c:\\full\\SN2", large, old, names);

  // Room for the beginning of a file only.
  fs::resize_file(filler, fs::file_size(filler) - 8192);
  ExpectRefusal(findings, tree, "large, replacing, some room", "c:\\full\\SN1", large, old, names);
  ExpectRefusal(findings, tree, "large, new, some room", "c:\\full\\SN9", large, "", names);
  ExpectRefusal(findings, tree, "large, in place, some room", "c:\\full\\SN2", large, old, names);

  fs::remove(filler);
  SaveFile("c:\\full\\SN1", large);
  findings.Check(tree.Read("c:\\full\\SN1") == large, "with room again: another content");
  return findings.Text();
}

TEST(SaveFile, ToAFullFileSystemFailsAndLeavesEveryFileAsItWas) {
  const TestTree tree;
  tree.MakeFolders("c:\\full");
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    std::string text;
    try {
      text = OnAFullFileSystem(tree);
    } catch (const std::exception& error) {
      text = error.what();
    }
    text += '!';
    ::_exit(::write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size()) ? 0
                                                                                            : 1);
  }
  ::close(ends[1]);
  std::string findings;
  std::array<char, 512> buffer{};
  for (ssize_t count = 0; (count = ::read(ends[0], buffer.data(), buffer.size())) > 0;) {
    findings.append(buffer.data(), static_cast<std::size_t>(count));
  }
  ::close(ends[0]);
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  EXPECT_EQ(findings, "!");  // no failed check, and the child reached its end
}

}  // namespace
}  // namespace tarvell
