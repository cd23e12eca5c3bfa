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

/// The desktop platform; each call that may take long on a share checks the pointer.
class PointerCheck : public DesktopPlatform {
 public:
  PointerCheck() { SetCurrentPlatform(this); }
  PointerCheck(const PointerCheck&) = delete;
  PointerCheck& operator=(const PointerCheck&) = delete;
  ~PointerCheck() override { SetCurrentPlatform(nullptr); }

  std::error_code Search(const std::filesystem::path& folder, SearchKind kind,
                         const SearchVisitor& visit) override {
    CheckPointer();
    return DesktopPlatform::Search(folder, kind, visit);
  }
  std::error_code OpenForReading(const std::filesystem::path& path,
                                 std::unique_ptr<InputFile>& file) override {
    CheckPointer();
    return DesktopPlatform::OpenForReading(path, file);
  }
  std::error_code CreateTemporary(const std::filesystem::path& folder, std::filesystem::path& path,
                                  std::unique_ptr<OutputFile>& file) override {
    CheckPointer();
    return DesktopPlatform::CreateTemporary(folder, path, file);
  }

  /// The busy pointer was shown during every call since the last check, and is gone now.
  void ExpectBusy() {
    EXPECT_GT(calls_, 0);
    EXPECT_EQ(busyCalls_, calls_);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    calls_ = 0;
    busyCalls_ = 0;
  }

 private:
  void CheckPointer() {
    ++calls_;
    const QCursor* pointer = QGuiApplication::overrideCursor();
    busyCalls_ += pointer != nullptr && pointer->shape() == Qt::WaitCursor ? 1 : 0;
  }

  int calls_ = 0;
  int busyCalls_ = 0;
};

using ScreensBusyPointer = StationStage;

TEST_F(ScreensBusyPointer, IsShownWhileFilesAreListedReadAndWritten) {
  WriteInstrument();
  WriteCalFile("PX12A", "SN1", {.serial = "1"});
  PointerCheck check;
  frmCalibrationMain menu(nullptr);
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    check.ExpectBusy();
    ClickEntry(screen, "LstInstrment", "PX12A");
    check.ExpectBusy();
    Click(screen, "btnReturn");
  });
  menu.ShowModally();
  AtStation([&](frmStationModelList& screen) {
    check.ExpectBusy();
    ClickEntry(screen, "LstInstrment", "PX12A");
    check.ExpectBusy();
    Fill(screen, "txtData_11", "typed");
    Click(screen, "btnSave");
    check.ExpectBusy();
    LeaveUnsaved(screen);
    check.ExpectBusy();
  });
}

TEST_F(ScreensBusyPointer, IsGoneWhileAMessageIsShown) {
  tree_.Write(R"(c:\calfactors\PX12A\SN1)", "#MODEL_NO : PX12A\r\n");
  WriteInstrument();
  SetCurrentQuestions(nullptr);
  AtStation([&](frmStationModelList& screen) {
    user_.At<QMessageBox>([](QMessageBox& box) {
      EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
      box.accept();
    });
    ClickEntry(screen, "LstInstrment", "PX12A");
    SetCurrentQuestions(&questions_);
    LeaveUnsaved(screen);
  });
}

}  // namespace
}  // namespace tarvell
