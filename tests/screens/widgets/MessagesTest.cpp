// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/main/frmMain.h"
#include "support/ErrorOf.h"
#include "support/OrdinaryUser.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

/// The messages of the main menu, the calibration data menu and the sensor editor, as real boxes.
/// StationWorkflowTest has those of the station screens.
class RealMessages : public SensorStage {
 protected:
  RealMessages() {
    SetCurrentQuestions(nullptr);
    file_.rows = {{"50.00", "100.0"}, {"100.00", "98.0"}};
  }

  void ExpectNotice(const QString& text) {
    user_.AnswerBox(text, QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok,
                    QMessageBox::Ok);
  }
  void ExpectFolderQuestion(const QString& firstLine, QMessageBox::StandardButton answer) {
    user_.AnswerBox(firstLine + "\r\nIf you want to create new folder, then press Ok button.",
                    QMessageBox::Information, QMessageBox::Ok | QMessageBox::Cancel,
                    QMessageBox::Cancel, answer);
  }
  void ExpectDeleteQuestion(const QString& text, QMessageBox::StandardButton answer) {
    user_.AnswerBox(text, QMessageBox::Warning, QMessageBox::Yes | QMessageBox::No, QMessageBox::No,
                    answer);
  }
  /// Expects an error message that contains all of `parts`.
  void ExpectError(const std::vector<std::string>& parts) {
    user_.At<QMessageBox>([=, this](QMessageBox& box) {
      for (const std::string& part : parts) {
        EXPECT_TRUE(Contains(box.text().toStdString(), part))
            << "\"" << part << "\" is missing in: " << box.text().toStdString();
      }
      EXPECT_EQ(box.windowTitle(), "Morrand Tarvell");
      EXPECT_EQ(box.icon(), QMessageBox::Warning);
      EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
      QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
      ++answered_;
    });
  }

  SensorFile file_;
  int answered_ = 0;  ///< error messages so far
};

/// A desktop whose trash takes nothing.
class NoTrash : public DesktopTestPlatform {
 public:
  using DesktopTestPlatform::DesktopTestPlatform;

  [[nodiscard]] std::error_code Recycle(const std::string& /*path*/) override {
    return std::make_error_code(std::errc::permission_denied);
  }
};

TEST_F(RealMessages, OfTheMainMenu) {
  frmMain menu;
  menu.Form_Load(0);
  const auto start = [&](const QString& stationDir, const QString& calibrationDir) {
    Fill(menu, "txtStationDir", stationDir);
    Fill(menu, "txtCalibrationDir", calibrationDir);
    Click(menu, "btnStart");
  };
  ExpectNotice("Station directory does not set.");
  start("", "");
  ExpectFolderQuestion("Input station folder does not exist.", QMessageBox::Cancel);
  start(R"(c:\st)", R"(c:\cal)");
  EXPECT_FALSE(tree_.Exists(R"(c:\st)"));
  ExpectFolderQuestion("Input station folder does not exist.", QMessageBox::Ok);
  ExpectNotice("Calibration data directory does not set.");
  start(R"(c:\st)", "");
  EXPECT_TRUE(tree_.Exists(R"(c:\st)"));
  ExpectFolderQuestion("Select calibration data folder is not exist.", QMessageBox::Ok);
  user_.AnswerBox("Cannot make folder!", QMessageBox::Critical, QMessageBox::Ok, QMessageBox::Ok,
                  QMessageBox::Ok);
  start(R"(c:\st)", R"(c:\no\where)");
  const OrdinaryUser user(tree_.Root());
  tree_.MakeFolders(R"(c:\windows)");
  const LockedFolder locked(tree_.Native(R"(c:\windows)"));
  ExpectError({"Cannot save the file", R"(c:\windows\tarvell.ini)"});
  Click(menu, "btnExit");
  EXPECT_FALSE(menu.isVisible());
}

TEST_F(RealMessages, OfTheCalibrationDataMenu) {
  const NoTrash platform(tree_.ProgramFolder());
  const std::string bytes = file_.Bytes();
  tree_.Write(kPath, bytes.substr(0, bytes.find("!End")));
  ChooseAdd("PX12A");
  ExpectError({"template", "TempPX12A"});
  AtMenu([&](frmCalibrationMain& menu) {
    for (const char* button : {"btnEdit", "btnDelete"}) {
      ExpectNotice("No calibration data is selected.");
      Click(menu, button);
    }
    ClickEntry(menu, "LstInstrment", "PX12A");
    ClickEntry(menu, "lstSerialNumber", "3318A12345");
    ExpectDeleteQuestion("Are you sure you want to delete PX12A(3318A12345)?", QMessageBox::No);
    Click(menu, "btnDelete");
    ExpectDeleteQuestion("Are you sure you want to delete PX12A(3318A12345)?", QMessageBox::Yes);
    ExpectNotice("Can't delete cal data");
    Click(menu, "btnDelete");
    EXPECT_TRUE(tree_.Exists(kPath));
    ClickEntry(menu, "lstSerialNumber", "3318A12345");
    ExpectError({"!End"});
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) { Click(editor, "btnCancel"); });
    Click(menu, "btnEdit");
    gCalFiles.fill(CalFileInfo());
    ExpectError({"not in the list any more"});
    Click(menu, "btnEdit");
    for (int i = 0; i < 51; ++i) {
      file_.serial = std::to_string(20000 + i);
      tree_.Write(R"(c:\calfactors\PX12A\SN)" + file_.serial, file_.Bytes());
    }
    ExpectError({"more than 51 data files", R"(c:\calfactors\PX12A)"});
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(EntriesOf(menu, "lstSerialNumber").size(), 51U);
  });
  RunMenu();
}

TEST_F(RealMessages, OfTheEditorOfNewData) {
  file_.serial = "";
  ShowNew(file_, [&](frmCalDataInput& editor) {
    ExpectNotice("Please input serial number");
    Click(editor, "btnOk");
    Fill(editor, "txtSerial", "A:B");
    ExpectError({"the character \":\""});
    Click(editor, "btnOk");
    Fill(editor, "txtSerial", "12");
    Fill(editor, "txtDueDay", "x");
    ExpectError({"Day of the due date", "\"x\" is not a number"});
    Click(editor, "btnOk");
    Fill(editor, "txtDueDay", "1");
    std::filesystem::remove(tree_.Native(R"(c:\calfactors\PX12A)"));
    ExpectError({"Cannot save the file", R"(c:\calfactors\PX12A\SN12)"});
    Click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
  });
}

TEST_F(RealMessages, OfTheTableOfTheEditor) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    const auto add = [&](const QString& number, const QString& notice) {
      user_.At<QDialog>([=](QDialog& dialog) {
        Type(number);
        Click(dialog, "btnOk");
      });
      ExpectNotice(notice);
      Click(editor, "btnAddPoint");
    };
    add("50", "Cannot add to same calibration point");
    add("-50", "A calibration point cannot lie below zero.");
    ClickCell(GridOf(editor), 1, 1);
    ExpectDeleteQuestion("Are you want delete? (50MHz)", QMessageBox::No);
    Click(editor, "btnDeletePoint");
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 3);
    ClickCell(GridOf(editor), 1, 1);
    ExpectDeleteQuestion("Are you want delete? (50MHz)", QMessageBox::Yes);
    Click(editor, "btnDeletePoint");
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 2);
    ClickCell(GridOf(editor), 1, 1);
    QApplication::clipboard()->setText("12,5");
    ExpectError({"Nothing was pasted", "Line 1", "\"12,5\" is no number"});
    Press(Qt::Key_V, Qt::ControlModifier);
    ExpectError({"The character \"\u03a9\" cannot be stored in a data file"});
    Find<QLineEdit>(editor, "txtComment").insert("\u03a9");
    EXPECT_TRUE(QTest::qWaitFor([&] { return answered_ == 2; })) << "the message comes later";
    ClickCell(GridOf(editor), 1, 1);
    Type("9E999");
    ExpectError({"9E999", "too large"});
    Press(Qt::Key_Return);
    EXPECT_EQ(TextOf(editor, "txtCell"), "9E999");
    Press(Qt::Key_Escape);
  });
  file_.rows = ManyRows(51);
  ShowFile(file_, [&](frmCalDataInput& editor) {
    ExpectError({"A table holds at most 51 rows"});
    Click(editor, "btnAddPoint");
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 52);
  });
}

}  // namespace
}  // namespace tarvell
