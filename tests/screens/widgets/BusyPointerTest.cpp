// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QGuiApplication>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "core/platform/ForwardingPlatform.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/station/StationFixture.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// The system, but that its calls, which may take long on a share, look at the pointer.
class PointerWatch : public DesktopPlatform {
 public:
  PointerWatch() { SetCurrentPlatform(this); }
  PointerWatch(const PointerWatch&) = delete;
  PointerWatch& operator=(const PointerWatch&) = delete;
  ~PointerWatch() override { SetCurrentPlatform(nullptr); }

  std::error_code Search(const std::filesystem::path& folder, SearchKind kind,
                         const SearchVisitor& visit) override {
    Look();
    return DesktopPlatform::Search(folder, kind, visit);
  }
  std::error_code OpenForReading(const std::filesystem::path& path, EntryKind kind,
                                 std::unique_ptr<InputFile>& file) override {
    Look();
    return DesktopPlatform::OpenForReading(path, kind, file);
  }
  std::error_code CreateTemporary(const std::filesystem::path& folder, std::filesystem::path& path,
                                  std::unique_ptr<OutputFile>& file) override {
    Look();
    return DesktopPlatform::CreateTemporary(folder, path, file);
  }

  int calls = 0;
  int busyCalls = 0;

 private:
  void Look() {
    ++calls;
    const QCursor* pointer = QGuiApplication::overrideCursor();
    busyCalls += pointer != nullptr && pointer->shape() == Qt::WaitCursor ? 1 : 0;
  }
};

class ScreensBusyPointer : public StationStage {
 protected:
  /// Every call since the last look was made under the busy pointer, which is gone now.
  void ExpectBusy() {
    EXPECT_GT(watch_.calls, 0);
    EXPECT_EQ(watch_.busyCalls, watch_.calls);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    watch_.calls = 0;
    watch_.busyCalls = 0;
  }

  PointerWatch watch_;
};

TEST_F(ScreensBusyPointer, IsShownWhileTheCalibrationDataAreListed) {
  for (int i = 0; i < 5; ++i) {
    WriteCalFile("M" + std::to_string(i), "SN1", {.serial = "1"});
  }
  frmCalibrationMain menu(nullptr);
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    EXPECT_GE(watch_.calls, 6);
    ExpectBusy();
    ClickEntry(screen, "LstInstrment", "M3");
    ExpectBusy();
    Click(screen, "btnReturn");
  });
  menu.ShowModally();
}

TEST_F(ScreensBusyPointer, IsShownWhileAStationIsListedReadAndWritten) {
  WriteInstrument();
  WriteCalFile("PX12A", "SN1", {.serial = "1"});
  AtStation([&](frmStationModelList& screen) {
    ExpectBusy();
    ClickEntry(screen, "LstInstrment", "PX12A");
    ExpectBusy();
    Fill(screen, "txtData_11", "typed");
    Click(screen, "btnSave");
    ExpectBusy();
    LeaveUnsaved(screen);
    ExpectBusy();
  });
}

TEST_F(ScreensBusyPointer, IsGoneWhileAMessageIsShown) {
  gCalibrationDir = R"(c:\calfactors)";
  tree_.Write(R"(c:\calfactors\PX12A\SN1)", "#MODEL_NO : PX12A\r\n");
  frmCalibrationMain menu(nullptr);
  SetCurrentQuestions(nullptr);
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    user_.At<QMessageBox>([](QMessageBox& box) {
      EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
      box.accept();
    });
    ClickEntry(screen, "LstInstrment", "PX12A");
    Click(screen, "btnReturn");
  });
  menu.ShowModally();
  SetCurrentQuestions(&questions_);
}

}  // namespace
}  // namespace tarvell
