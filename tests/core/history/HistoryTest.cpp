// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "core/caldata/CalFileList.h"
#include "core/files/SaveFile.h"
#include "core/history/History.h"
#include "core/history/KeptVersions.h"
#include "core/station/StationFiles.h"
#include "core/text/Sha256.h"
#include "support/CountingPlatform.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/OrdinaryUser.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

namespace fs = std::filesystem;

using Texts = std::vector<std::string>;
using test::ErrorOf;

constexpr const char* kFile = R"(c:\calfactors\PX12A\SN12345)";
constexpr const char* kTree = R"(c:\calfactors\history.tarvell)";
constexpr const char* kJournal = R"(c:\calfactors\history.tarvell\journal.txt)";
constexpr const char* kVersions = R"(c:\calfactors\history.tarvell\PX12A\SN12345)";

/// Another user.
class Operator : public ForwardingPlatform {
 public:
  explicit Operator(std::string name)
      : ForwardingPlatform(CurrentPlatform()),
        name_(std::move(name)),
        before_(SetCurrentPlatform(this)) {}
  Operator(const Operator&) = delete;
  Operator& operator=(const Operator&) = delete;
  ~Operator() override { SetCurrentPlatform(before_); }

  [[nodiscard]] std::string UserName() override { return name_; }

 private:
  std::string name_;
  Platform* before_;
};

class TheHistory : public testing::Test {
 protected:
  TheHistory() { tree_.MakeFolders(R"(c:\calfactors\PX12A)"); }

  [[nodiscard]] Texts JournalLines() const {
    const std::string bytes = tree_.Read(kJournal);
    Texts lines;
    std::string_view rest = bytes;
    while (!rest.empty()) {
      lines.emplace_back(rest.substr(0, rest.find("\r\n")));
      rest.remove_prefix(std::min(rest.size(), lines.back().size() + 2));
    }
    return lines;
  }
  /// What the versions hold, "" for one whose file is missing.
  [[nodiscard]] Texts ContentsOf(const FileHistory& history) const {
    Texts contents;
    for (const KeptVersion& version : history.versions) {
      contents.push_back(tree_.Exists(version.path) ? tree_.Read(version.path) : "");
    }
    return contents;
  }

  [[nodiscard]] static VersionState StateOfPresent(const FileHistory& history) {
    return StateOfCurrent(kFile, history.written);
  }

  test::TestTree tree_;
};

TEST_F(TheHistory, KeepsTheFileAndAddsALineForEverySave) {
  SaveWithHistory(kFile, "old");
  SaveWithHistory(kFile, "new");
  SaveWithHistory(kFile, "new");
  EXPECT_EQ(tree_.Names(kTree), (Texts{"PX12A", "journal.txt"}));
  EXPECT_EQ(tree_.Names(kVersions), Texts{"20260305T140307Z-anna"});
  EXPECT_EQ(tree_.Read(std::string(kVersions) + R"(\20260305T140307Z-anna)"), "old");
  const std::string begin = "2026-03-05T14:03:07Z\tanna\tbench3\tsaved\tPX12A/SN12345\t";
  EXPECT_EQ(JournalLines(),
            (Texts{begin + "-\t-\t" + Sha256("old"),
                   begin + "20260305T140307Z-anna\t" + Sha256("old") + "\t" + Sha256("new"),
                   begin + "-\t" + Sha256("new") + "\t" + Sha256("new")}));
}

TEST_F(TheHistory, NamesVersionsDifferentlyWhoeverSavesInTheSameSecond) {
  std::string content;
  for (const char* user : {"anna", "anna", "LAB\\an:na.", "anna", "\xE9t\xE9"}) {
    const Operator works(user);
    SaveWithHistory(kFile, content += "x");
  }
  EXPECT_EQ(tree_.Names(kVersions), (Texts{"20260305T140307Z-LAB_an_na_", "20260305T140307Z-_t_",
                                           "20260305T140307Z-anna", "20260305T140307Z.2-anna"}));
}

TEST_F(TheHistory, KeepsWhatADeletionRemoves) {
  tree_.Write(kFile, "data");
  DeleteWithHistory(R"(c:\calfactors\PX12A)", "SN12345");
  EXPECT_FALSE(tree_.Exists(kFile));
  EXPECT_EQ(ContentsOf(HistoryOf(kFile)), Texts{"data"});
  EXPECT_EQ(JournalLines(), Texts{"2026-03-05T14:03:07Z\tanna\tbench3\tdeleted\tPX12A/SN12345\t"
                                  "20260305T140307Z-anna\t" +
                                  Sha256("data") + "\t-"});
  // Of a link, nothing is lost.
  tree_.Write(R"(c:\elsewhere)", "data");
  fs::create_symlink(tree_.Native(R"(c:\elsewhere)"), tree_.Native(kFile));
  DeleteWithHistory(R"(c:\calfactors\PX12A)", "SN12345");
  EXPECT_EQ(tree_.Read(R"(c:\elsewhere)"), "data");
  EXPECT_TRUE(JournalLines().back().ends_with("\tPX12A/SN12345\t-\t-\t-"));
  EXPECT_EQ(tree_.Names(kVersions).size(), 1U);
}

TEST_F(TheHistory, ListsTheFilesThatDoNotExistAnyMoreAndPutsThemBack) {
  constexpr const char* kFolder = R"(c:\calfactors\PX12A)";
  EXPECT_TRUE(LostFiles(R"(c:\calfactors)").empty());
  SaveWithHistory(kFile, "old");
  SaveWithHistory(kFile, "new");
  tree_.Write(R"(c:\calfactors\PX13A\SN00001)", "other");
  DeleteWithHistory(R"(c:\calfactors\PX13A)", "SN00001");
  EXPECT_EQ(LostFiles(R"(c:\calfactors)").size(), 1U);
  DeleteWithHistory(kFolder, "SN12345");
  const std::vector<LostFile> ofModel = LostFiles(R"(c:\calfactors)", "px12a");
  ASSERT_EQ(ofModel.size(), 1U);
  EXPECT_EQ(ofModel[0].path, kFile);
  EXPECT_EQ(ofModel[0].newest, std::string(kVersions) + R"(\20260305T140307Z.2-anna)");
  EXPECT_EQ(ofModel[0].last.done, kDeleted);
  EXPECT_EQ(ofModel[0].last.user, "anna");
  // A file that was removed by hand counts, too; a folder that is missing is made again.
  fs::remove_all(tree_.Native(kFolder));
  EXPECT_EQ(LostFiles(R"(c:\calfactors)").size(), 2U);
  PutBack(ofModel[0].newest, kFile);
  EXPECT_EQ(tree_.Read(kFile), "new");
  EXPECT_TRUE(LostFiles(R"(c:\calfactors)", "PX12A").empty());
  EXPECT_EQ(HistoryOf(kFile).written.done, kPutBack);
}

TEST_F(TheHistory, ListsADamagedFileOfWhichItKeepsVersions) {
  SaveWithHistory(kFile, "old");
  SaveWithHistory(kFile, "new");
  std::vector<std::string> asked;
  const auto isDamaged = [&](const std::string& path, const std::string& newest) {
    asked = {path, tree_.Read(newest)};
    return tree_.Read(path).empty();
  };
  EXPECT_TRUE(LostFiles(R"(c:\calfactors)", "", isDamaged).empty());
  EXPECT_EQ(asked, (std::vector<std::string>{kFile, "old"}));
  tree_.Write(kFile, "");
  const std::vector<LostFile> lost = LostFiles(R"(c:\calfactors)", "", isDamaged);
  ASSERT_EQ(lost.size(), 1U);
  EXPECT_TRUE(lost[0].isDamaged);
}

TEST_F(TheHistory, OfAStationKeepsEveryInstrumentWhateverDeletesIt) {
  const auto fill = [&](const std::string& content) {
    for (const char* name : {"INDEX", "PX12A", "PX13A"}) {
      tree_.Write(std::string(R"(c:\stations\ST1\)") + name, content);
    }
  };
  const auto kept = [&] {
    const Texts folders = tree_.Names(R"(c:\stations\history.tarvell\ST1)");
    EXPECT_EQ(folders, (Texts{"PX12A", "PX13A"}));
    return tree_.Names(R"(c:\stations\history.tarvell\ST1\PX13A)").size();
  };
  fill("first");
  DeleteAllInstrumentFiles(R"(c:\stations\ST1)");
  EXPECT_EQ(tree_.Names(R"(c:\stations\ST1)"), Texts{});
  EXPECT_EQ(kept(), 1U);
  fill("second");
  DeleteStation(R"(c:\stations)", "ST1");
  EXPECT_EQ(tree_.Names(R"(c:\stations)"), Texts{"history.tarvell"});
  EXPECT_EQ(kept(), 2U);
  fill("third");
  DeleteInstrumentFile(R"(c:\stations\ST1)", "px13a");
  EXPECT_EQ(kept(), 3U);
  EXPECT_EQ(ContentsOf(HistoryOf(R"(c:\stations\ST1\PX13A)")), (Texts{"third", "second", "first"}));
}

TEST_F(TheHistory, IsInNoListOfModelsOrStations) {
  SaveWithHistory(kFile, "old");
  std::vector<std::string> names;
  ListModelFolders(R"(c:\calfactors)", names);
  EXPECT_EQ(ModelsWithData(names), Texts{"PX12A"});
  EXPECT_EQ(ListStations(R"(c:\calfactors)"), Texts{"PX12A"});
}

TEST_F(TheHistory, ListsTheVersionReplacedLastFirst) {
  for (const char* bytes : {"first", "second", "third"}) {
    SaveWithHistory(kFile, bytes);
  }
  const FileHistory history = HistoryOf(R"(C:\calfactors\px12a\sn12345)");
  EXPECT_EQ(history.current, "third");
  EXPECT_EQ(history.written.after, Sha256("third"));
  EXPECT_EQ(history.written.user, "anna");
  EXPECT_EQ(ContentsOf(history), (Texts{"second", "first"}));
  EXPECT_EQ(history.versions.at(0).event.user, "anna");
  EXPECT_EQ(history.versions.at(0).event.after, Sha256("third"));
  EXPECT_EQ(tree_.Read(history.versions.at(0).path), "second");
}

TEST_F(TheHistory, IsListedWithoutReadingItsVersions) {
  for (const char* bytes : {"first", "second", "third", "fourth"}) {
    SaveWithHistory(kFile, bytes);
  }
  test::CountingPlatform platform;
  EXPECT_EQ(HistoryOf(kFile).versions.size(), 3U);
  EXPECT_EQ(platform.opened, 2) << "the journal and the file itself";
}

TEST_F(TheHistory, SaysWhatWasChangedByHand) {
  for (const char* bytes : {"first", "second", "third", "fourth"}) {
    SaveWithHistory(kFile, bytes);
  }
  const std::string version = std::string(kVersions) + R"(\20260305T140307Z)";
  tree_.Write(version + "-anna", "firs");
  fs::remove(tree_.Native(version + ".2-anna"));
  tree_.Write(version + ".9-bert", "unknown");
  tree_.Write(kFile, "by hand");
  tree_.Write(kJournal, tree_.Read(kJournal) + "2026-03-0");
  const FileHistory history = HistoryOf(kFile);
  EXPECT_EQ(ContentsOf(history), (Texts{"third", "", "firs", "unknown"}));
  std::vector<VersionState> states;
  for (const KeptVersion& each : history.versions) {
    states.push_back(each.State());
  }
  EXPECT_EQ(states, (std::vector{VersionState::AsKept, VersionState::Missing, VersionState::Changed,
                                 VersionState::NoJournal}));
  EXPECT_EQ(history.versions.at(3).event.user, "bert");
  EXPECT_EQ(UtcText(history.versions.at(3).event.time), "2026-03-05T14:03:07Z");
  EXPECT_EQ(StateOfPresent(history), VersionState::Changed);
  EXPECT_EQ(history.written.user, "");
  EXPECT_EQ(history.damagedLines, 1U);
  // The next save ends the cut line.
  SaveWithHistory(kFile, "fifth");
  EXPECT_EQ(HistoryOf(kFile).damagedLines, 1U);
  EXPECT_EQ(StateOfPresent(HistoryOf(kFile)), VersionState::AsKept);
}

TEST_F(TheHistory, KnowsWhoWroteAFileWhateverWasNotedAndThenFailed) {
  SaveWithHistory(kFile, "first");
  {
    const Operator bert("bert");
    test::FaultPlatform platform;
    platform.sparesHistory = true;
    platform.Set(test::FaultPlatform::Step::Create);
    EXPECT_EQ(ErrorOf([] { SaveWithHistory(kFile, "second"); }).Kind(), ErrorKind::WriteFailed);
  }
  EXPECT_EQ(JournalLines().size(), 2U);
  FileHistory history = HistoryOf(kFile);
  EXPECT_EQ(history.written.user, "anna");
  EXPECT_EQ(StateOfPresent(history), VersionState::AsKept);
  EXPECT_EQ(history.versions.size(), 0U);
  const Operator carl("carl");
  SaveWithHistory(kFile, "third");
  tree_.Write(kFile, "by hand");
  SaveWithHistory(kFile, "fourth");
  history = HistoryOf(kFile);
  EXPECT_EQ(history.written.user, "carl");
  EXPECT_EQ(ContentsOf(history), (Texts{"by hand", "first"}));
  EXPECT_EQ(history.versions.at(0).State(), VersionState::NotSaved);
  EXPECT_EQ(history.versions.at(1).State(), VersionState::AsKept);
}

TEST_F(TheHistory, TellsAVersionThatCannotBeReadFromOneThatWasChanged) {
  SaveWithHistory(kFile, "first");
  SaveWithHistory(kFile, "second");
  const KeptVersion version = HistoryOf(kFile).versions.at(0);
  test::FaultPlatform platform;
  platform.Set(test::FaultPlatform::Step::OpenForReading, std::errc::permission_denied);
  EXPECT_EQ(StateOfKept(version.path, version.event, version.wasSaved), VersionState::Unreadable);
}

TEST_F(TheHistory, IsInTheOrderOfTheJournalWhateverTheClocksSay) {
  /// A host whose clock is a day slow.
  class SlowClock : public Operator {
   public:
    using Operator::Operator;
    [[nodiscard]] std::time_t Now() override { return Operator::Now() - 24 * 60 * 60; }
  };
  SaveWithHistory(kFile, "first");
  SaveWithHistory(kFile, "second");
  const SlowClock slow(test::kUser);
  SaveWithHistory(kFile, "third");
  EXPECT_EQ(ContentsOf(HistoryOf(kFile)), (Texts{"second", "first"}));
  DeleteWithHistory(R"(c:\calfactors\PX12A)", "SN12345");
  const std::string newest = LostFiles(R"(c:\calfactors)").at(0).newest;
  EXPECT_EQ(tree_.Read(newest), "third");
}

/// Something that is wrong with the place of the history, and a part of the message about it.
struct BadPlace {
  const char* name;
  void (*spoil)(const test::TestTree& tree);
  const char* path;
  const char* message;
};

class ABadPlace : public TheHistory, public testing::WithParamInterface<BadPlace> {};

TEST_P(ABadPlace, LeavesTheFileAsItIsAndSaysWhy) {
  tree_.Write(kFile, "old");
  GetParam().spoil(tree_);
  const test::OrdinaryUser user(tree_.Root());
  for (const auto& change :
       {std::function<void()>([] { SaveWithHistory(kFile, "new"); }),
        std::function<void()>([] { DeleteWithHistory(R"(c:\calfactors\PX12A)", "SN12345"); })}) {
    const Error error = ErrorOf(change);
    EXPECT_EQ(error.Kind(), ErrorKind::NotKept);
    EXPECT_EQ(error.Path(), GetParam().path);
    EXPECT_TRUE(test::Contains(error.Text(), GetParam().message)) << error.Text();
    EXPECT_EQ(tree_.Read(kFile), "old");
  }
}

INSTANTIATE_TEST_SUITE_P(
    Each, ABadPlace,
    testing::Values(BadPlace{"AFile", [](const test::TestTree& tree) { tree.Write(kTree, ""); },
                             kTree, "In the place of its folder there is a file."},
                    BadPlace{"ALink",
                             [](const test::TestTree& tree) {
                               tree.MakeFolders(R"(c:\elsewhere)");
                               fs::create_directory_symlink(tree.Native(R"(c:\elsewhere)"),
                                                            tree.Native(kTree));
                             },
                             kTree, "In the place of its folder there is a link"},
                    BadPlace{"ALinkForTheJournal",
                             [](const test::TestTree& tree) {
                               tree.MakeFolders(kTree);
                               tree.Write(R"(c:\elsewhere)", "");
                               fs::create_symlink(tree.Native(R"(c:\elsewhere)"),
                                                  tree.Native(kJournal));
                             },
                             kJournal, "In the place of its file there is a link"},
                    BadPlace{"ALinkForTheVersions",
                             [](const test::TestTree& tree) {
                               tree.MakeFolders(kTree);
                               tree.MakeFolders(R"(c:\elsewhere)");
                               fs::create_directory_symlink(
                                   tree.Native(R"(c:\elsewhere)"),
                                   tree.Native(R"(c:\calfactors\history.tarvell\PX12A)"));
                             },
                             R"(c:\calfactors\history.tarvell\PX12A)",
                             "In the place of its folder there is a link"},
                    BadPlace{"AFolderForTheJournal",
                             [](const test::TestTree& tree) { tree.MakeFolders(kJournal); },
                             kJournal, "it is a folder, not a file"},
                    BadPlace{"AFileForTheVersions",
                             [](const test::TestTree& tree) {
                               tree.Write(R"(c:\calfactors\history.tarvell\PX12A)", "");
                             },
                             kVersions, "where a folder is expected, there is something else"},
                    BadPlace{"NotWritable",
                             [](const test::TestTree& tree) {
                               tree.MakeFolders(kTree);
                               fs::permissions(tree.Native(kTree), fs::perms(0555));
                             },
                             kJournal, "you have no permission"}),
    [](const auto& place) { return std::string(place.param.name); });

TEST_F(TheHistory, OnAFullDiskLeavesTheFileAsItIs) {
  using Step = test::FaultPlatform::Step;
  SaveWithHistory(kFile, "old");
  for (const Step step : {Step::Lock, Step::MakeFolder, Step::Create, Step::Append, Step::Write}) {
    SCOPED_TRACE(step);
    test::FaultPlatform platform;
    platform.Set(step, std::errc::no_space_on_device);
    const Error error = ErrorOf([] { SaveWithHistory(kFile, "new"); });
    EXPECT_EQ(error.Kind(), ErrorKind::NotKept);
    EXPECT_TRUE(test::Contains(error.Text(), "the disk is full")) << error.Text();
    EXPECT_EQ(tree_.Read(kFile), "old");
  }
}

TEST_F(TheHistory, KeepsNothingOfASaveThatItCouldNotNote) {
  using Step = test::FaultPlatform::Step;
  SaveWithHistory(kFile, "old");
  test::FaultPlatform platform;
  platform.Set(Step::Append);
  EXPECT_EQ(ErrorOf([] { SaveWithHistory(kFile, "new"); }).Kind(), ErrorKind::NotKept);
  EXPECT_EQ(tree_.Names(kVersions), Texts{});
  // Its line is in the journal, though perhaps not for long: the version stays.
  platform.Set(Step::Sync);
  platform.passes = 1;
  EXPECT_EQ(ErrorOf([] { SaveWithHistory(kFile, "new"); }).Kind(), ErrorKind::NotKept);
  EXPECT_EQ(tree_.Names(kVersions).size(), 1U);
}

TEST_F(TheHistory, InUseByAnotherProgramIsWaitedFor) {
  std::unique_ptr<HeldLock> lock;
  tree_.MakeFolders(kTree);
  ASSERT_FALSE(CurrentPlatform().Lock(tree_.Native(kJournal), 0, lock));
  /// Ends the lock when the save looks for the second time.
  class Busy : public Operator {
   public:
    explicit Busy(std::unique_ptr<HeldLock>& held) : Operator(test::kUser), held_(held) {}
    [[nodiscard]] std::error_code Lock(const fs::path& path, std::uint32_t number,
                                       std::unique_ptr<HeldLock>& mine) override {
      if (++looks == 2) {
        held_.reset();
      }
      return Operator::Lock(path, number, mine);
    }
    int looks = 0;

   private:
    std::unique_ptr<HeldLock>& held_;
  };
  Busy platform(lock);
  SaveWithHistory(kFile, "new");
  EXPECT_EQ(platform.looks, 2);
  EXPECT_EQ(JournalLines().size(), 1U);
}

/// A program that is killed at a step: that step and all after it do nothing, and the write at
/// which it is killed takes half of its bytes.
class KilledPlatform : public ForwardingPlatform {
 public:
  explicit KilledPlatform(int steps)
      : ForwardingPlatform(CurrentPlatform()), left_(steps), before_(SetCurrentPlatform(this)) {}
  KilledPlatform(const KilledPlatform&) = delete;
  KilledPlatform& operator=(const KilledPlatform&) = delete;
  ~KilledPlatform() override { SetCurrentPlatform(before_); }

  [[nodiscard]] bool WasKilled() const { return left_ < 0; }

  [[nodiscard]] std::error_code CreateTemporary(const fs::path& folder, fs::path& path,
                                                std::unique_ptr<OutputFile>& file) override {
    return Step() ? Wrapped(ForwardingPlatform::CreateTemporary(folder, path, file), file) : Dead();
  }
  [[nodiscard]] std::error_code OpenForAppending(const fs::path& path,
                                                 std::unique_ptr<OutputFile>& file,
                                                 bool& beginsLine) override {
    return Step() ? Wrapped(ForwardingPlatform::OpenForAppending(path, file, beginsLine), file)
                  : Dead();
  }
  [[nodiscard]] std::error_code Replace(const fs::path& from, const fs::path& to) override {
    return Step() ? ForwardingPlatform::Replace(from, to) : Dead();
  }
  [[nodiscard]] std::error_code SyncFolder(const fs::path& /*folder*/) override {
    return Step() ? std::error_code() : Dead();
  }
  [[nodiscard]] std::error_code RemoveFile(const fs::path& path) override {
    return Step() ? ForwardingPlatform::RemoveFile(path) : Dead();
  }
  [[nodiscard]] std::error_code Lock(const fs::path& path, std::uint32_t number,
                                     std::unique_ptr<HeldLock>& lock) override {
    return Step() ? ForwardingPlatform::Lock(path, number, lock) : Dead();
  }
  [[nodiscard]] std::error_code MakeFolder(const fs::path& path) override {
    return Step() ? ForwardingPlatform::MakeFolder(path) : Dead();
  }

 private:
  class File : public ForwardingOutputFile {
   public:
    File(KilledPlatform& platform, std::unique_ptr<OutputFile> file)
        : ForwardingOutputFile(std::move(file)), platform_(platform) {}
    [[nodiscard]] std::error_code Write(std::string_view bytes, std::size_t& count) override {
      const bool wasAlive = !platform_.WasKilled();
      if (platform_.Step()) {
        return ForwardingOutputFile::Write(bytes, count);
      }
      if (wasAlive) {
        static_cast<void>(ForwardingOutputFile::Write(bytes.substr(0, bytes.size() / 2), count));
      }
      return Dead();
    }
    [[nodiscard]] std::error_code Sync() override {
      return platform_.Step() ? std::error_code() : Dead();
    }

   private:
    KilledPlatform& platform_;
  };

  /// Whether the program lives on after this step.
  [[nodiscard]] bool Step() { return left_ >= 0 && --left_ >= 0; }
  [[nodiscard]] static std::error_code Dead() { return std::make_error_code(std::errc::io_error); }
  [[nodiscard]] std::error_code Wrapped(std::error_code code, std::unique_ptr<OutputFile>& file) {
    if (file != nullptr) {
      file = std::make_unique<File>(*this, std::move(file));
    }
    return code;
  }

  int left_;
  Platform* before_;
};

// Whatever step the program is killed at: the file is whole, nothing that it held is lost, and the
// history goes on.
TEST_F(TheHistory, LosesNothingWhenTheProgramIsKilledAtAnyStep) {
  int cutLines = 0;
  bool wasKilled = true;
  int steps = 0;
  for (; wasKilled; ++steps) {
    SCOPED_TRACE(steps);
    const std::string file = R"(c:\calfactors\PX12A\SN)" + std::to_string(steps);
    fs::remove_all(tree_.Native(kTree));
    tree_.Write(file, "old");
    {
      KilledPlatform platform(steps);
      try {
        SaveWithHistory(file, "new");
      } catch (const Error&) {
        EXPECT_TRUE(platform.WasKilled());
      }
      wasKilled = platform.WasKilled();
    }
    const std::string now = tree_.Read(file);
    EXPECT_TRUE(now == "old" || now == "new") << now;
    const FileHistory history = HistoryOf(file);
    cutLines += static_cast<int>(history.damagedLines);
    EXPECT_EQ(ContentsOf(history), now == "old" ? Texts{} : Texts{"old"});
    if (now == "new") {
      EXPECT_EQ(history.versions.at(0).State(), VersionState::AsKept);
    }
    SaveWithHistory(file, "newest");
    EXPECT_EQ(ContentsOf(HistoryOf(file)), now == "old" ? Texts{"old"} : (Texts{"new", "old"}));
    EXPECT_EQ(HistoryOf(file).written.after, Sha256("newest"));
  }
  EXPECT_EQ(cutLines, 1);
  EXPECT_GT(steps, 15);
}

// ---- Two programs that save the same file, and are killed.

/// Saves one content after the other until it is killed, and reports how many were saved.
[[noreturn]] void SaveUntilKilled(const std::string& content, int report) {
  try {
    for (std::uint32_t number = 1;; ++number) {
      SaveWithHistory(kFile, content + std::to_string(number));
      if (::write(report, &number, sizeof number) != sizeof number) {
        ::_exit(1);
      }
      ::usleep(1000);  // lets the other one have the history
    }
  } catch (...) {
    ::_exit(1);
  }
}

struct Writer {
  std::string content;
  pid_t process = -1;
  int report = -1;
};

Writer Begin(const std::string& content) {
  std::array<int, 2> pipe{};
  EXPECT_EQ(::pipe(pipe.data()), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    SaveUntilKilled(content, pipe[1]);
  }
  ::close(pipe[1]);
  return {content, child, pipe[0]};
}

/// Waits until a writer has saved once, so that the result does not depend on the speed.
void AwaitFirst(const Writer& writer, std::set<std::string>& saved) {
  std::uint32_t number = 0;
  ASSERT_EQ(::read(writer.report, &number, sizeof number), ssize_t{sizeof number});
  saved.insert(writer.content + std::to_string(number));
}

/// Kills a writer, and adds the contents that it has saved.
void End(const Writer& writer, std::set<std::string>& saved) {
  EXPECT_EQ(::kill(writer.process, SIGKILL), 0);
  int status = 0;
  EXPECT_EQ(::waitpid(writer.process, &status, 0), writer.process);
  EXPECT_TRUE(WIFSIGNALED(status)) << "a save failed";
  std::uint32_t number = 0;
  while (::read(writer.report, &number, sizeof number) == sizeof number) {
    saved.insert(writer.content + std::to_string(number));
  }
  ::close(writer.report);
}

/// 500 with TARVELL_KILLS=500.
int Kills() {
  const char* kills = std::getenv("TARVELL_KILLS");
  return kills == nullptr ? 40 : std::atoi(kills);
}

TEST_F(TheHistory, LosesNoLineOfTwoProgramsThatAreKilled) {
  // Without waiting for the disk, or nearly every kill would meet the same step.
  test::FaultPlatform platform;
  platform.waits = false;
  std::mt19937 random(20260305);
  std::uniform_int_distribution<useconds_t> microseconds(0, 5000);
  std::set<std::string> saved;
  for (int kill = 0; kill < Kills(); kill += 2) {
    const Writer a = Begin("a" + std::to_string(kill) + "-");
    const Writer b = Begin("b" + std::to_string(kill) + "-");
    AwaitFirst(a, saved);
    AwaitFirst(b, saved);
    ::usleep(microseconds(random));
    End(a, saved);
    End(b, saved);
  }
  EXPECT_GE(saved.size(), static_cast<std::size_t>(Kills()));

  const Journal journal = ReadJournal(tree_.Read(kJournal), "PX12A/SN12345");
  std::set<std::string> lines;
  std::set<std::string> keptNames;
  for (const HistoryEvent& event : journal.events) {
    lines.insert(event.after);
    EXPECT_TRUE(event.kept.empty() || keptNames.insert(event.kept).second) << event.kept;
  }
  std::set<std::string> contents = {tree_.Read(kFile)};
  for (const std::string& name : tree_.Names(kVersions)) {
    contents.insert(tree_.Read(std::string(kVersions) + "\\" + name));
  }
  for (const std::string& content : saved) {
    EXPECT_TRUE(lines.contains(Sha256(content))) << content;
    EXPECT_TRUE(contents.contains(content)) << content;
  }
}

}  // namespace
}  // namespace tarvell
