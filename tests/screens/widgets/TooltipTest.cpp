// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>

#include "screens/caldata/TabEditorFixture.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr const char* kEndsEarly = "ends before its first blank, colon or comma";

/// The three texts that a file may shorten have a note about it; so has a locked serial number.
void ExpectNotes(QWidget& editor, bool isLocked) {
  for (const char* name : {"txtSerial", "txtCalNo", "txtComment"}) {
    SCOPED_TRACE(name);
    const auto& box = Find<QLineEdit>(editor, name);
    for (const QString& note : {box.toolTip(), box.accessibleDescription()}) {
      const bool isSerial = box.objectName() == "txtSerial";
      EXPECT_TRUE(note.contains(kEndsEarly)) << note.toStdString();
      EXPECT_EQ(note.contains("last five characters"), isSerial) << note.toStdString();
      EXPECT_EQ(note.contains("is locked"), isSerial && isLocked) << note.toStdString();
    }
  }
  EXPECT_EQ(Find<QLineEdit>(editor, "txtSerial").isReadOnly(), isLocked);
}

using SensorTooltips = SensorStage;

TEST_F(SensorTooltips, SayWhatIsReadBackAndWhyTheSerialNumberIsLocked) {
  SensorFile file;
  file.calNo = "C-1:2";
  file.comment = "done in lab";
  ShowFile(file, [](frmCalDataInput& editor) {
    ExpectNotes(editor, true);
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-1");
    EXPECT_EQ(TextOf(editor, "txtComment"), "done");
  });
  ShowNew({}, [](frmCalDataInput& editor) { ExpectNotes(editor, false); });
}

using SetTooltips = TabEditorFixture;

TEST_F(SetTooltips, SayTheSameAndThatAUnitDoesNotConvertTheNumber) {
  WriteTemplates();
  const std::string path = R"(c:\calfactors\RT520A\SN00042)";
  tree_.Write(path, CapacitorFile({"RT520A", "00042"}, SetAMembers()));
  EditFile("RT520A", path, [](frmCalDataTabInput& editor) {
    ExpectNotes(editor, true);
    EXPECT_TRUE(UnitBoxOf(editor).toolTip().contains("does not convert"));
    EXPECT_TRUE(UnitBoxOf(editor).accessibleDescription().contains("does not convert"));
  });
  EditNew("RT730A", [](frmCalDataTabInput& editor) { ExpectNotes(editor, false); });
}

}  // namespace
}  // namespace tarvell
