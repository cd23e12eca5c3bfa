// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <memory>

#include "screens/caldata/frmCalibrationMain.h"
#include "screens/station/StationFixture.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// Another platform; each call that may take long on a share checks the pointer.
class PointerCheck : public ForwardingPlatform {
 public:
  PointerCheck() : ForwardingPlatform(CurrentPlatform()), before_(SetCurrentPlatform(this)) {}
  PointerCheck(const PointerCheck&) = delete;
  PointerCheck& operator=(const PointerCheck&) = delete;
  ~PointerCheck() override { SetCurrentPlatform(before_); }

  std::error_code Search(const std::filesystem::path& folder, SearchKind kind,
                         const SearchVisitor& visit) override {
    CheckPointer();
    return ForwardingPlatform::Search(folder, kind, visit);
  }
  std::error_code OpenForReading(const std::filesystem::path& path,
                                 std::unique_ptr<InputFile>& file) override {
    CheckPointer();
    return ForwardingPlatform::OpenForReading(path, file);
  }
  std::error_code OpenFound(const FoundEntry& entry, std::unique_ptr<InputFile>& file) override {
    CheckPointer();
    return ForwardingPlatform::OpenFound(entry, file);
  }
  std::error_code CreateTemporary(const std::filesystem::path& folder, std::filesystem::path& path,
                                  std::unique_ptr<OutputFile>& file) override {
    CheckPointer();
    return ForwardingPlatform::CreateTemporary(folder, path, file);
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

  Platform* before_;
  int calls_ = 0;
  int busyCalls_ = 0;
};

using ScreensBusyPointer = StationStage;

TEST_F(ScreensBusyPointer, IsShownWhileFilesAreListedReadAndWrittenButNotWhileAMessageIs) {
  WriteInstrument();
  tree_.Write(R"(c:\calfactors\PX12A\SN1)", "#MODEL_NO : PX12A\r\n");
  PointerCheck check;
  frmCalibrationMain menu(nullptr);
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    check.ExpectBusy();
    SetCurrentQuestions(nullptr);
    user_.At<QMessageBox>([](QMessageBox& box) {
      EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
      box.accept();
    });
    // By a key: a click that chose twice would show a second box, which nobody answers.
    screen.findChild<QListWidget*>("LstInstrment")->setFocus();
    Press(Qt::Key_Space);
    check.ExpectBusy();
    SetCurrentQuestions(&questions_);
    Click(screen, "btnReturn");
  });
  menu.ShowModally();
  AtStation([&](frmStationModelList& screen) {
    check.ExpectBusy();
    questions_.ExpectError({"SN1"});
    ClickEntry(screen, "LstInstrment", "PX12A");
    check.ExpectBusy();
    Fill(screen, "txtData_11", "typed");
    Click(screen, "btnSave");
    check.ExpectBusy();
    LeaveUnsaved(screen);
    check.ExpectBusy();
  });
}

}  // namespace
}  // namespace tarvell
