// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <tuple>
#include <unistd.h>
#include <vector>

#include "core/files/SaveFile.h"
#include "core/platform/Platform.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/OrdinaryUser.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;
using test::FaultPlatform;
using test::LockedFolder;
using test::OrdinaryUser;
using test::TestTree;
using Step = test::FaultPlatform::Step;

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

constexpr const char* kDataFolder = "c:\\calfactors\\PX12A";
constexpr const char* kDataFile = R"(c:\calfactors\PX12A\SN1)";
constexpr std::string_view kOldBytes = "old content, of another length\r\n";
constexpr std::string_view kNewBytes = "#MODEL_NO : PX12A\r\n!End\r\n";

struct stat StatOf(const fs::path& path) {
  struct stat facts = {};
  EXPECT_EQ(::stat(path.c_str(), &facts), 0) << path << ": " << std::strerror(errno);
  return facts;
}

/// The file that the tests save. Its folder is there.
class SavedFile : public testing::Test {
 public:
  SavedFile() { tree.MakeFolders(kDataFolder); }

  TestTree tree;
  const fs::path native = tree.Native(kDataFolder) / "SN1";
};

TEST_F(SavedFile, WritesExactlyTheseBytesOverAnyEarlierOnes) {
  FaultPlatform platform;
  platform.portion = 1000;  // of one write
  tree.Write(R"(c:\calfactors\PX12A\SN2)", "other");
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) {
    everyByte += static_cast<char>(byte);
  }
  const std::string large(300000, 'y');
  for (const std::string& bytes : {everyByte, std::string(), large, std::string("x")}) {
    SaveFile(kDataFile, bytes);
    EXPECT_TRUE(tree.Read(kDataFile) == bytes) << bytes.size();
    EXPECT_EQ(tree.Names(kDataFolder), (Names{"SN1", "SN2"}));
  }
  EXPECT_EQ(tree.Read(R"(c:\calfactors\PX12A\SN2)"), "other");
}

TEST_F(SavedFile, KeepsModeOwnerAndGroup) {
  tree.Write(kDataFile, kOldBytes);
  // Only root can give a file away. For any other user the owner is the test's own.
  if (::geteuid() == 0) {
    ASSERT_EQ(::chown(native.c_str(), 65534, 65534), 0);
  }
  for (const mode_t mode : {mode_t{0606}, mode_t{0777}}) {
    ASSERT_EQ(::chmod(native.c_str(), mode), 0);
    const struct stat before = StatOf(native);
    SaveFile(kDataFile, kNewBytes);
    const struct stat after = StatOf(native);
    EXPECT_EQ(after.st_mode & 07777, mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  }
}

// In a folder that a group shares, the group gets access whatever the operator's own mask is.
TEST_F(SavedFile, ANewFileHasTheModeOfTheMaskOrOfASharedFolder) {
  for (const auto& [mask, folderMode, expected] :
       {std::tuple(mode_t{027}, mode_t{0755}, mode_t{0640}),
        std::tuple(mode_t{077}, mode_t{02770}, mode_t{0660})}) {
    ASSERT_EQ(::chmod(tree.Native(kDataFolder).c_str(), folderMode), 0);
    const auto before = ::umask(mask);
    SaveFile(kDataFile, kNewBytes);
    (void)::umask(before);
    EXPECT_EQ(StatOf(native).st_mode & 07777, expected);
    fs::remove(native);
  }
}

/// Makes another user the owner of the file, with the test's own group. Does nothing unless the
/// test runs as root.
void GiveAway(const fs::path& file) {
  const uid_t user = ::geteuid();
  if (::getuid() == 0) {
    EXPECT_EQ(::seteuid(0), 0);
    EXPECT_EQ(::chown(file.c_str(), 1234, ::getegid()), 0);
    EXPECT_EQ(::seteuid(user), 0);
  }
}

TEST_F(SavedFile, ReplacesAnotherOperatorsFileUnlessItMayNotBeWritten) {
  tree.Write(kDataFile, kOldBytes);
  const OrdinaryUser user(tree.Root());
  ASSERT_EQ(::chmod(native.c_str(), 0664), 0);
  GiveAway(native);
  const struct stat before = StatOf(native);
  SaveFile(kDataFile, kNewBytes);
  const struct stat after = StatOf(native);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  EXPECT_NE(after.st_ino, before.st_ino) << "in one step";
  EXPECT_EQ(after.st_mode & 07777, mode_t{0664});
  EXPECT_EQ(after.st_gid, before.st_gid);

  ASSERT_EQ(::chmod(native.c_str(), 0644), 0);
  GiveAway(native);
  if (static_cast<uid_t>(StatOf(native).st_uid) != ::geteuid()) {  // only root can give it away
    EXPECT_TRUE(Contains(ErrorOf([] { SaveFile(kDataFile, kOldBytes); }).Text(),
                         "Cannot save the file: you have no permission to do so."));
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  }
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

// ---- Links.

TEST_F(SavedFile, FollowsLinksWhichStayLinks) {
  tree.MakeFolders("c:\\real");
  tree.MakeFolders("c:\\between");
  fs::create_symlink("../real/file", tree.Native("c:\\between\\second"));
  // The first target does not exist yet, and is reached through a second link.
  for (const fs::path& target : {fs::path("../../between/second"), fs::path("../../real/file"),
                                 tree.Native("c:\\real\\file")}) {
    SCOPED_TRACE(target);
    fs::remove(native);
    fs::create_symlink(target, native);
    SaveFile(kDataFile, kNewBytes);
    EXPECT_EQ(fs::read_symlink(native), target);
    EXPECT_TRUE(fs::is_symlink(tree.Native("c:\\between\\second")));
    EXPECT_EQ(tree.Read("c:\\real\\file"), kNewBytes);
    EXPECT_EQ(tree.Names("c:\\real"), Names{"file"});
    EXPECT_EQ(tree.Names("c:\\between"), Names{"second"});
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
    tree.Write("c:\\real\\file", kOldBytes);
  }
}

TEST_F(SavedFile, OneOfSeveralHardLinksStaysOne) {
  FaultPlatform platform;
  platform.portion = 1;  // of one write
  tree.Write(kDataFile, std::string(100000, 'y'));
  fs::create_hard_link(native, tree.Native("c:\\other"));
  for (const std::string_view bytes : {kNewBytes, std::string_view("x"), kOldBytes}) {
    SaveFile(kDataFile, bytes);
    EXPECT_EQ(tree.Read(kDataFile), bytes);
    EXPECT_TRUE(fs::equivalent(native, tree.Native("c:\\other")));
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
  }
}

// ---- Targets that are not ordinary files, and folders that accept none.

TEST_F(SavedFile, FailsWhereThePathLeadsToNoFileOrDeviceThatTakesIt) {
  tree.MakeFolders(R"(c:\folders\folder\inside)");
  tree.Write(R"(c:\folders\file)", "x");
  const fs::path folders = tree.Native(R"(c:\folders)");
  fs::create_symlink("missing/file", folders / "toNoFolder");
  fs::create_symlink("toItself", folders / "toItself");
  fs::create_symlink("/dev/full", folders / "toFullDevice");
  // A pipe without a reader must not make the program wait.
  ASSERT_EQ(::mkfifo((folders / "pipe").c_str(), 0600), 0);
  const Names before = tree.Names(R"(c:\folders)");
  for (const std::string name : {"folder", "toNoFolder", "toItself", "toFullDevice", "pipe",
                                 R"(missing\SN1)", R"(file\SN1)"}) {
    SCOPED_TRACE(name);
    const std::string path = R"(c:\folders\)" + name;
    const Error error = ErrorOf([&] { SaveFile(path, kNewBytes); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
    EXPECT_EQ(error.Path(), path);
    EXPECT_EQ(tree.Names(R"(c:\folders)"), before);
  }
  EXPECT_TRUE(fs::is_symlink(folders / "toFullDevice"));
  fs::create_symlink("/dev/null", folders / "toNull");
  EXPECT_NO_THROW(SaveFile(R"(c:\folders\toNull)", kNewBytes));
  EXPECT_TRUE(fs::is_symlink(folders / "toNull"));
  EXPECT_TRUE(fs::is_fifo(folders / "pipe"));
  EXPECT_EQ(tree.Names(R"(c:\folders\folder)"), Names{"inside"});
}

TEST_F(SavedFile, OverwritesTheFileOfALockedFolderInPlaceUnlessItIsReadOnly) {
  tree.Write(kDataFile, kOldBytes);
  const ino_t before = StatOf(native).st_ino;
  const OrdinaryUser user(tree.Root());
  const LockedFolder locked(tree.Native(kDataFolder));
  SaveFile(kDataFile, kNewBytes);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  EXPECT_EQ(StatOf(native).st_ino, before);
  ASSERT_EQ(::chmod(native.c_str(), 0444), 0);
  EXPECT_EQ(ErrorOf([] { SaveFile(kDataFile, kOldBytes); }).Kind(), ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
  EXPECT_EQ(ErrorOf([] { SaveFile(R"(c:\calfactors\PX12A\SN2)", kNewBytes); }).Kind(),
            ErrorKind::WriteFailed);
  EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
}

TEST_F(SavedFile, NoSearchFindsTheTemporaryFile) {
  fs::path path;
  std::unique_ptr<OutputFile> file;
  Platform& platform = CurrentPlatform();
  ASSERT_FALSE(platform.CreateTemporary(tree.Native(kDataFolder), path, file));
  EXPECT_EQ(tree.Names(kDataFolder), Names{path.filename().string()});
  const auto fail = [](const FoundEntry& entry) {
    ADD_FAILURE() << entry.name;
    return true;
  };
  EXPECT_FALSE(platform.Search(tree.Native(kDataFolder), SearchKind::EveryName, fail));
}

// ---- Steps that fail.

class SaveFileFaults : public SavedFile {
 public:
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
    const ino_t before = StatOf(native).st_ino;
    platform.Set(step, fault);
    SaveFile(kDataFile, kNewBytes);
    EXPECT_EQ(platform.faults, 1);
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
    EXPECT_EQ(StatOf(native).st_ino, before);
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
  }

  FaultPlatform platform;
};

TEST_F(SaveFileFaults, AFailedStepLeavesTheOldFileOrNone) {
  const auto expectFailures = [this](Step step, std::errc fault) {
    for (const bool always : {false, true}) {
      SCOPED_TRACE(testing::Message()
                   << step << " at " << platform.failAtByte << ", always " << always);
      platform.always = always;
      tree.Write(kDataFile, kOldBytes);
      platform.Set(step, fault);
      ExpectFailure(&kOldBytes);
      EXPECT_EQ(platform.opened, 0) << "never in place after a failed write";
      EXPECT_LT(platform.faults, 1000) << "tried again without end";
      fs::remove(native);
      if (step != Step::Attributes) {  // a new file takes none
        platform.Set(step, fault);
        ExpectFailure(nullptr);
      }
    }
  };
  for (const Step step : {Step::Resolve, Step::Facts, Step::Create, Step::Length, Step::Attributes,
                          Step::Sync, Step::Close, Step::Replace}) {
    expectFailures(step, std::errc::io_error);
  }
  platform.wrongBy = static_cast<std::uintmax_t>(-1);  // too long
  expectFailures(Step::Length, std::errc::io_error);
  for (platform.failAtByte = 0; platform.failAtByte < kNewBytes.size(); ++platform.failAtByte) {
    expectFailures(Step::Write, std::errc::no_space_on_device);
    expectFailures(Step::Nothing, std::errc::no_space_on_device);
  }
}

TEST_F(SaveFileFaults, OverwritesInPlaceWhatTheFolderDoesNotLetReplace) {
  for (const std::errc fault : {std::errc::permission_denied, std::errc::read_only_file_system,
                                std::errc::operation_not_permitted}) {
    ExpectWrittenInPlace(Step::Create, fault);
  }
  // A group that cannot be kept, and a folder in which users may replace only their own files, or
  // none.
  ExpectWrittenInPlace(Step::Attributes, std::errc::operation_not_permitted);
  ExpectWrittenInPlace(Step::Replace, std::errc::operation_not_permitted);
  ExpectWrittenInPlace(Step::Replace, std::errc::permission_denied);
}

TEST_F(SaveFileFaults, TheNewFileIsThereWhenOnlyTheSyncOfItsFolderFails) {
  tree.Write(kDataFile, kOldBytes);
  platform.Set(Step::SyncFolder);
  ExpectFailure(&kNewBytes);
}

// ---- The same in place, for a file with two names.

class SaveFileInPlaceFaults : public SaveFileFaults {
 public:
  SaveFileInPlaceFaults() {
    tree.Write(kDataFile, kOldBytes);
    fs::create_hard_link(native, tree.Native("c:\\other"));
  }

  void ExpectRestored(Step step, std::errc fault, std::string_view old) {
    SCOPED_TRACE(testing::Message() << step << " at " << platform.failAtByte << ' ' << old);
    tree.Write(kDataFile, old);
    platform.Set(step, fault);
    ExpectFailure(&old);
    EXPECT_EQ(tree.Read("c:\\other"), old);
    EXPECT_TRUE(fs::equivalent(native, tree.Native("c:\\other")));
  }
};

TEST_F(SaveFileInPlaceFaults, AFailedStepRestoresTheOldContent) {
  const std::string longer(200, 'o');
  for (const std::string_view old : {kOldBytes, std::string_view(longer), std::string_view("o")}) {
    for (platform.failAtByte = 0; platform.failAtByte < kNewBytes.size(); ++platform.failAtByte) {
      ExpectRestored(Step::Write, std::errc::no_space_on_device, old);
      ExpectRestored(Step::Nothing, std::errc::io_error, old);
    }
    for (const Step step : {Step::Open, Step::Cut, Step::Length, Step::Sync, Step::Close}) {
      ExpectRestored(step, std::errc::io_error, old);
    }
  }
}

TEST_F(SaveFileInPlaceFaults, ADiskThatTakesNotAByteMoreLosesNothing) {
  platform.always = true;
  for (const Step step : {Step::Open, Step::Write, Step::Nothing}) {
    ExpectRestored(step, std::errc::no_space_on_device, kOldBytes);
    EXPECT_LT(platform.faults, 10) << "tried again without end";
  }
}

TEST_F(SaveFileInPlaceFaults, AContentThatCannotBePutBackIsReported) {
  platform.always = true;
  platform.failAtByte = 4;
  for (const Step step :
       {Step::Write, Step::Nothing, Step::Cut, Step::Length, Step::Sync, Step::Close}) {
    SCOPED_TRACE(step);
    tree.Write(kDataFile, kOldBytes);
    platform.Set(step);
    const Error error = ErrorOf([] { SaveFile(kDataFile, kNewBytes); });
    EXPECT_EQ(error.Kind(), ErrorKind::WriteFailed);
    EXPECT_EQ(error.Path(), kDataFile);
    EXPECT_EQ(error.Text(),
              "Saving failed (Input/output error), and the earlier content could not be put back. "
              "Keep this screen open, free or repair the disk, and save again.");
    EXPECT_EQ(platform.opened, 2) << "to save, and to put back";
    EXPECT_EQ(platform.faults, 2);
    EXPECT_EQ(tree.Names(kDataFolder), Names{"SN1"});
    // Saving again, as the message says, succeeds once the disk works.
    platform.Set(Step::None);
    SaveFile(kDataFile, kNewBytes);
    EXPECT_EQ(tree.Read(kDataFile), kNewBytes);
    EXPECT_EQ(tree.Read("c:\\other"), kNewBytes);
  }
}

}  // namespace
}  // namespace tarvell
