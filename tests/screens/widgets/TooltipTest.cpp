// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>

#include "screens/caldata/TabEditorFixture.h"
#include "support/ErrorOf.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr const char* kEndsEarly = "ends before its first blank, colon or comma";

/// What hovering over a control tells.
std::string TooltipOf(QWidget& screen, const QString& control) {
  return Find<QWidget>(screen, control).toolTip().toStdString();
}

void ExpectToldEverywhere(QWidget& editor, bool isLocked) {
  for (const char* box : {"txtSerial", "txtCalNo", "txtComment"}) {
    SCOPED_TRACE(box);
    EXPECT_TRUE(Contains(TooltipOf(editor, box), kEndsEarly)) << TooltipOf(editor, box);
    EXPECT_TRUE(
        Contains(Find<QWidget>(editor, box).accessibleDescription().toStdString(), kEndsEarly));
  }
  EXPECT_EQ(Find<QLineEdit>(editor, "txtSerial").isReadOnly(), isLocked);
  for (const std::string& told :
       {TooltipOf(editor, "txtSerial"),
        Find<QWidget>(editor, "txtSerial").accessibleDescription().toStdString()}) {
    EXPECT_TRUE(Contains(told, "last five characters")) << told;
    EXPECT_EQ(Contains(told, "is locked"), isLocked) << told;
  }
}

class SensorTooltips : public SensorStage {};

TEST_F(SensorTooltips, TellWhyTheSerialNumberIsLockedAndWhatComesBack) {
  ShowFile({}, [](frmCalDataInput& editor) { ExpectToldEverywhere(editor, true); });
  ShowNew({}, [](frmCalDataInput& editor) { ExpectToldEverywhere(editor, false); });
}

TEST_F(SensorTooltips, TellTheTruthAboutWhatComesBack) {
  SensorFile file;
  file.calNo = "C-1:2";
  file.comment = "done in lab";
  ShowFile(file, [](frmCalDataInput& editor) {
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-1");
    EXPECT_EQ(TextOf(editor, "txtComment"), "done");
  });
  file.comment = "a,b";
  ShowFile(file, [](frmCalDataInput& editor) { EXPECT_EQ(TextOf(editor, "txtComment"), "a"); });
}

class SetTooltips : public TabEditorFixture {
 protected:
  SetTooltips() { WriteTemplates(); }
};

TEST_F(SetTooltips, TellWhyTheSerialNumberIsLockedAndWhatComesBack) {
  const std::string path = R"(c:\calfactors\RT520A\SN00042)";
  tree_.Write(path, CapacitorFile({"RT520A", "00042"}, SetAMembers()));
  EditFile("RT520A", path, [](frmCalDataTabInput& editor) { ExpectToldEverywhere(editor, true); });
  EditNew("RT730A", [](frmCalDataTabInput& editor) { ExpectToldEverywhere(editor, false); });
}

TEST_F(SetTooltips, TellThatChoosingAUnitDoesNotConvertTheNumber) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    EXPECT_TRUE(Contains(TooltipOf(editor, "txtCellCmb"), "does not convert"));
    EXPECT_TRUE(
        Contains(UnitBoxOf(editor).accessibleDescription().toStdString(), "does not convert"));
    DoubleClickCell(GridOf(editor), 1, 2);
    Choose(editor, "txtCellCmb", "%");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "12.0000 %");
  });
}

}  // namespace
}  // namespace tarvell
