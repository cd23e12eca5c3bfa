// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "app/Tarvell_MainModule.h"
#include "calscreens/frmCalibrationMain.h"
#include "support/ScriptedQuestions.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

std::string HeaderOf(const std::string& serial) {
  return Lines({"#MODEL_NO : PX12A", "#SER_NO   : " + serial, "#CAL_DATE : 20010305",
                "#CAL_NO   : ", "#DUE_DATE : 20020305", "#COMMENT  : ", "!End"});
}

TEST(ModelList, AClickOnTheSelectedModelReadsItsFolderAgain) {
  const TestTree tree;
  gCalibrationDir = R"(c:\calfactors)";
  tree.Write(R"(c:\calfactors\PX12A\SN1)", HeaderOf("1"));
  frmCalibrationMain menu(nullptr);
  User user;
  user.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), (std::vector<std::string>{"1"}));
    std::filesystem::remove(tree.Native(R"(c:\calfactors\PX12A\SN1)"));
    tree.Write(R"(c:\calfactors\PX12A\SN2)", HeaderOf("2"));
    QTest::qWait(1);
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), (std::vector<std::string>{"2"}));
    Click(screen, "btnReturn");
  });
  menu.ShowModally();
}

TEST(ModelList, AnAddThatFailsLeavesTheSelectionAsItWas) {
  const TestTree tree;
  gCalibrationDir = R"(c:\calfactors)";
  tree.Write(R"(c:\calfactors\PX12A\SN1)", HeaderOf("1"));
  frmCalibrationMain menu(nullptr);
  ScriptedQuestions questions;
  questions.ExpectError({"template file of the model is missing", "TempPX13A"});
  User user;
  user.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    screen.findChild<QAction*>("mnuPX13A")->trigger();
    const auto& models = Find<QListWidget>(screen, "LstInstrment");
    ASSERT_EQ(models.selectedItems().size(), 1);
    EXPECT_EQ(models.selectedItems().first()->text(), "PX12A");
    EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), (std::vector<std::string>{"1"}));
    Click(screen, "btnReturn");
  });
  menu.ShowModally();
}

}  // namespace
}  // namespace tarvell
