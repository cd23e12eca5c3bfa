// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "support/DesktopTestPlatform.h"
#include "support/SetModels.h"
#include "support/TestTree.h"
#include "support/User.h"

/// Adding and updating the finished files of test kits, by the real file dialog and message box.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)
namespace fs = std::filesystem;

std::string KitFile(const std::string& serial) {
  return "QZ RT410B\r\n" + serial + "\r\n05MAR2001\r\n";
}

class TestKitWorkflow : public testing::Test {
 public:
  TestKitWorkflow() : platform_(tree_.ProgramFolder()) {
    gCalibrationDir = R"(c:\calfactors)";
    tree_.MakeFolders(gCalibrationDir);
    fs::create_directories(Desktop());
  }

 protected:
  void TearDown() override { fs::remove_all(Desktop()); }

  static fs::path Desktop() { return QDir::homePath().toStdString() + "/Desktop"; }
  static fs::path Source() { return Desktop() / "kit.dat"; }

  /// Chooses a kit in the Add menu; `expect` adds the steps of what it shows.
  void Add(
      frmCalibrationMain& screen, const std::function<void()>& expect = [] {}) {
    user_.At<QMenu>([](QMenu& add) { ClickModel(add, "RT410B"); });
    expect();
    Click(screen, "btnAdd");
    EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() == nullptr; }));
  }

  static void Update(frmCalibrationMain& screen, const QString& serial) {
    ClickEntry(screen, "LstInstrment", "RT410B");
    ClickEntry(screen, "lstSerialNumber", serial);
    Click(screen, "btnEdit");
  }

  void Run(const std::function<void(frmCalibrationMain& screen)>& act) {
    frmCalibrationMain menu(nullptr);
    user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
      act(screen);
      user_.At<frmCalibrationMain>([](frmCalibrationMain& same) { Click(same, "btnReturn"); });
    });
    menu.ShowModally();
  }

  /// This kit is selected, and these are its serial numbers.
  static void ExpectShown(frmCalibrationMain& screen, const Texts& serials) {
    const auto selected = Find<QListWidget>(screen, "LstInstrment").selectedItems();
    ASSERT_EQ(selected.size(), 1);
    EXPECT_EQ(selected.first()->text(), "RT410B");
    Texts shown = EntriesOf(screen, "lstSerialNumber");
    std::sort(shown.begin(), shown.end());
    EXPECT_EQ(shown, serials);
    EXPECT_EQ(PlainCaption(Find<QPushButton>(screen, "btnEdit").text()), "Update");
  }

  const std::string kFolder = R"(c:\calfactors\RT410B)";
  TestTree tree_;
  DesktopTestPlatform platform_;
  User user_;
};

/// Opens a file by its name when the dialog shows exactly these files.
void PickFile(QFileDialog& dialog, const QStringList& names, const QString& name) {
  EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
  const auto& view = Find<QListView>(dialog, "listView");
  QStringList shown;
  const bool asExpected = QTest::qWaitFor([&] {
    shown.clear();
    for (int row = 0; row < view.model()->rowCount(view.rootIndex()); ++row) {
      shown << view.model()->index(row, 0, view.rootIndex()).data().toString();
    }
    shown.sort();
    return shown == names;
  });
  EXPECT_TRUE(asExpected) << shown.join(", ").toStdString();
  Fill(dialog, "fileNameEdit", name);
  if (QWidget* completions = QApplication::activePopupWidget()) {
    completions->close();
  }
  QTest::mouseClick(Find<QDialogButtonBox>(dialog, "buttonBox").button(QDialogButtonBox::Open),
                    Qt::LeftButton);
}

TEST_F(TestKitWorkflow, TheFileDialogTakesInAFileOfEitherKind) {
  WriteNative(Source(), KitFile("3318A12345"));
  WriteNative(Desktop() / "plain", KitFile("3318A67890"));
  WriteNative(Desktop() / "bad.dat", "QZ RT410B\r\n\r\n05MAR2001\r\n");
  const auto expectStart = [](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Choice RT410B Calibration Data File from Folder");
    EXPECT_EQ(dialog.directory().absolutePath().toStdString(), Desktop().string());
    EXPECT_EQ(ComboEntries(dialog, "fileTypeCombo"),
              (Texts{"Calibration Data(*.dat)", "All files(*.*)"}));
  };
  const auto pick = [&](const QString& name) {
    user_.At<QFileDialog>([=](QFileDialog& dialog) {
      expectStart(dialog);
      PickFile(dialog, {"bad.dat", "kit.dat"}, name);
    });
  };
  Run([&](frmCalibrationMain& screen) {
    tree_.Write(R"(c:\calfactors\PX12A\SN1)", "QZ PX12A\r\n1\r\n05MAR2001\r\n");
    Add(screen, [&] {
      user_.At<QFileDialog>([&](QFileDialog& /*dialog*/) {
        // The folder is made and the lists are read again before the question.
        EXPECT_TRUE(tree_.Exists(kFolder));
        EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
        Press(Qt::Key_Escape);
      });
    });
    EXPECT_EQ(tree_.Names(kFolder), Texts{});
    EXPECT_TRUE(Find<QListWidget>(screen, "LstInstrment").selectedItems().isEmpty());
    EXPECT_EQ(PlainCaption(Find<QPushButton>(screen, "btnEdit").text()), "Edit");
    Add(screen, [&] {
      pick("bad.dat");
      user_.At<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Morrand Tarvell");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_TRUE(box.text().contains("serial number")) << box.text().toStdString();
        QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
      });
    });
    Add(screen, [&] { pick("kit.dat"); });
    ExpectShown(screen, {"3318A12345"});
    user_.At<QFileDialog>([&](QFileDialog& dialog) {
      expectStart(dialog);
      Choose(dialog, "fileTypeCombo", "All files(*.*)");
      PickFile(dialog, {"bad.dat", "kit.dat", "plain"}, "plain");
    });
    Update(screen, "3318A12345");
    ExpectShown(screen, {"3318A12345", "3318A67890"});
    // Also when the user cancels, the lists are read again.
    user_.At<QFileDialog>([&](QFileDialog& /*dialog*/) {
      tree_.Write(kFolder + R"(\SN11111)", KitFile("3318A11111"));
      Press(Qt::Key_Escape);
    });
    Update(screen, "3318A12345");
    ExpectShown(screen, {"3318A11111", "3318A12345", "3318A67890"});
  });
  EXPECT_EQ(tree_.Names(kFolder), (Texts{"SN11111", "SN12345", "SN67890"}));
  EXPECT_EQ(tree_.Read(kFolder + R"(\SN12345)"), KitFile("3318A12345"));
}

}  // namespace
}  // namespace tarvell
