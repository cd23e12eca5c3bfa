// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QLineEdit>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/SensorStage.h"

/// A file that another program wrote, opened and corrected by keys and mouse.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

using StraySerial = SensorStage;

TEST_F(StraySerial, CanBeTypedOverWhereItDoesNotFitTheName) {
  SensorFile file;
  file.rows = {{"10.00", "98.0"}, {"50.00", "100.0"}};
  std::string bytes = file.Bytes();
  // The list finds the calibration date in the place of the serial number.
  const std::string line = "#SER_NO   : " + file.serial + "\r\n";
  tree_.Write(kPath, bytes.replace(bytes.find(line), line.size(), ""));
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    ClickEntry(menu, "lstSerialNumber", "20010305");
    questions_.ExpectError({"\"20010305\", was taken", "Saving writes the file SN10305"});
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      EXPECT_EQ(TextOf(editor, "txtSerial"), "20010305");
      EXPECT_EQ(QApplication::focusWidget(), &Find<QLineEdit>(editor, "txtSerial"));
      Press(Qt::Key_A, Qt::ControlModifier);
      Type("3318A12345");
      Click(editor, "btnOk");
      EXPECT_FALSE(editor.isVisible());
    });
    Click(menu, "btnEdit");
  });
  RunMenu();
  EXPECT_EQ(tree_.Read(kPath), file.Bytes());
  EXPECT_EQ(tree_.Names(R"(c:\calfactors\PX12A)"), std::vector<std::string>{"SN12345"});
}

}  // namespace
}  // namespace tarvell
