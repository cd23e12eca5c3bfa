// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QLineEdit>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "support/SensorStage.h"

/// Files that another program wrote, opened and corrected by keys and mouse.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

class StraySerials : public SensorStage {
 protected:
  StraySerials() { file_.rows = {{"10.00", "98.0"}, {"50.00", "100.0"}}; }

  /// Writes the file with `line` instead of the line of its serial number.
  void WriteWithLine(const std::string& line) const {
    std::string bytes = file_.Bytes();
    const std::string own = "#SER_NO   : " + file_.serial + "\r\n";
    bytes.replace(bytes.find(own), own.size(), line);
    tree_.Write(kPath, bytes);
  }

  /// Opens the only file of PX12A, which the list shows as `listed`, and expects this message.
  void EditAtMenu(const QString& listed, const std::vector<std::string>& message, const Act& act) {
    AtMenu([=, this](frmCalibrationMain& menu) {
      ClickEntry(menu, "LstInstrment", "PX12A");
      ClickEntry(menu, "lstSerialNumber", listed);
      questions_.ExpectError(message);
      if (act) {
        user_.At<frmCalDataInput>([act](frmCalDataInput& editor) {
          act(editor);
          if (editor.isVisible()) {
            editor.reject();
          }
        });
      }
      Click(menu, "btnEdit");
    });
    RunMenu();
  }

  SensorFile file_;
};

TEST_F(StraySerials, AreTakenFromTheListAndLockedWhereTheyFitTheName) {
  WriteWithLine("#SERIAL   : 3318A12345\r\n");
  EditAtMenu("3318A12345", {"no line \"#SER_NO\"", "\"3318A12345\", was taken"},
             [](frmCalDataInput& editor) {
               EXPECT_EQ(TextOf(editor, "txtSerial"), "3318A12345");
               EXPECT_TRUE(Find<QLineEdit>(editor, "txtSerial").isReadOnly());
               Click(editor, "btnOk");
               EXPECT_FALSE(editor.isVisible());
             });
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(StraySerials, CanBeTypedOverWhereTheyDoNotFitTheName) {
  // The list finds the calibration date in the place of the serial number.
  WriteWithLine("");
  EditAtMenu("20010305", {"\"20010305\", was taken", "Saving writes the file SN10305"},
             [](frmCalDataInput& editor) {
               EXPECT_EQ(TextOf(editor, "txtSerial"), "20010305");
               EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
               EXPECT_EQ(QApplication::focusWidget(), &Find<QLineEdit>(editor, "txtSerial"));
               Press(Qt::Key_A, Qt::ControlModifier);
               Type("3318A12345");
               Click(editor, "btnOk");
               EXPECT_FALSE(editor.isVisible());
             });
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
  EXPECT_EQ(tree_.Names(R"(c:\calfactors\PX12A)"), std::vector<std::string>{"SN12345"});
}

TEST_F(StraySerials, AreAskedForWhereTheListShowsNone) {
  WriteWithLine("#SER_NO   : \r\n");
  gCalFiles[0].FilePath = kPath;
  questions_.ExpectError({"no serial number. Enter"});
  user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
    EXPECT_FALSE(Find<QLineEdit>(editor, "txtSerial").isReadOnly());
    Fill(editor, "txtSerial", "3318A12345");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  editor_.SetupDat(0, "PX12A");
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

}  // namespace
}  // namespace tarvell
