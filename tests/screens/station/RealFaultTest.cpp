// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "screens/station/StationFixture.h"
#include "support/FileSizeLimit.h"
#include "support/SensorStage.h"
#include "support/TinyDisk.h"

/// Saves that the system itself makes fail: each is told, nothing is lost, and when there is room
/// again the same button saves.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

/// Runs part of a test in a process of its own, whose file systems it may change.
void InAProcessOfItsOwn(const std::function<void()>& part) {
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    part();
    (void)std::fflush(nullptr);
    ::_exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "see above";
}

constexpr const char* kFull = "the disk is full. Free some space";
constexpr const char* kLimit = "the file would grow beyond the size that this computer allows";

class RealFaultAtEditor : public SensorStage {
 protected:
  static constexpr const char* kFolder = R"(c:\calfactors\PX12A)";
  static constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

  RealFaultAtEditor() { file_.rows = {{"0.10", "98.8"}, {"50.00", "100.0"}}; }

  /// Types a comment and presses OK within `fails`, which must end with this message, and again.
  void Edit(const std::string& reason,
            const std::function<void(const std::function<void()>&)>& fails) {
    SensorFile saved = file_;
    saved.comment = "typed";
    ShowFile(file_, [&](frmCalDataInput& editor) {
      const Texts names = tree_.Names(kFolder);
      Fill(editor, "txtComment", "typed");
      questions_.ExpectError({"Cannot save the file: " + reason, kPath});
      fails([&] { Click(editor, "btnOk"); });
      EXPECT_EQ(questions_.details.size(), 1U) << "nothing was told";
      EXPECT_TRUE(editor.isVisible());
      EXPECT_EQ(TextOf(editor, "txtComment"), "typed");
      EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
      EXPECT_EQ(tree_.Names(kFolder), names);
      Click(editor, "btnOk");
      EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(tree_.Read(kPath), saved.Bytes());
  }

  SensorFile file_;
};

TEST_F(RealFaultAtEditor, AFullFileSystemIsToldAndLosesNothing) {
  tree_.MakeFolders(kFolder);
  InAProcessOfItsOwn([this] {
    ASSERT_EQ(MountTinyDisk(tree_.Native(kFolder)), "");
    const fs::path filler = tree_.Native(kFolder) / "filler";
    Edit(kFull, [&](const std::function<void()>& press) {
      ASSERT_TRUE(FillDisk(filler));
      press();
      fs::remove(filler);
    });
  });
}

TEST_F(RealFaultAtEditor, ALimitOfTheFileSizeIsToldAndLosesNothing) {
  Edit(kLimit, [](const std::function<void()>& press) {
    const FileSizeLimit limit(100);
    press();
  });
}

class RealFaultAtStation : public StationStage {
 protected:
  /// Types a comment and presses Save within `fails`, which must end with this message, and again.
  void Edit(const std::string& reason,
            const std::function<void(const std::function<void()>&)>& fails) {
    WriteInstrument();
    AtStation([&](frmStationModelList& screen) {
      ClickEntry(screen, "LstInstrment", "PX12A");
      Fill(screen, "txtData_11", "typed");
      Fill(screen, "txtData_12", "own");
      const Texts typed = ShownFields(screen);
      const Texts names = tree_.Names(kStation);
      ExpectCannotSave();
      fails([&] { Click(screen, "btnSave"); });
      ASSERT_EQ(questions_.details.size(), 1U) << "nothing was told";
      EXPECT_TRUE(Contains(questions_.details[0].toStdString(), reason));
      EXPECT_EQ(ShownFields(screen), typed);
      EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
      EXPECT_EQ(tree_.Names(kStation), names);
      Click(screen, "btnSave");
      EXPECT_FALSE(CanSave(screen));
      LeaveUnsaved(screen);
    });
    EXPECT_EQ(ReadInstrument("PX12A"),
              InstrumentFile({.comment = "typed", .calData = "own"}).Bytes());
  }
};

TEST_F(RealFaultAtStation, AFullFileSystemIsToldAndLosesNothing) {
  tree_.MakeFolders(kStation);
  InAProcessOfItsOwn([this] {
    ASSERT_EQ(MountTinyDisk(tree_.Native(kStation)), "");
    const fs::path filler = tree_.Native(kStation) / "filler";
    Edit(kFull, [&](const std::function<void()>& press) {
      ASSERT_TRUE(FillDisk(filler));
      press();
      fs::remove(filler);
    });
  });
}

TEST_F(RealFaultAtStation, ALimitOfTheFileSizeIsToldAndLosesNothing) {
  Edit(kLimit, [](const std::function<void()>& press) {
    const FileSizeLimit limit(100);
    press();
  });
}

}  // namespace
}  // namespace tarvell
