// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

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
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ExpectNotes(editor, false);
    EXPECT_TRUE(UnitBoxOf(editor).toolTip().contains("does not convert"));
    EXPECT_TRUE(UnitBoxOf(editor).accessibleDescription().contains("does not convert"));
  });
}

using StraySerial = SensorStage;

TEST_F(StraySerial, CanBeTypedOverWhereItDoesNotFitTheName) {
  const std::string path = R"(c:\calfactors\PX12A\SN12345)";
  const SensorFile file{.rows = {{"10.00", "98.0"}, {"50.00", "100.0"}}};
  std::string bytes = file.Bytes();
  // The list finds the calibration date in the place of the serial number.
  const std::string line = "#SER_NO   : " + file.serial + "\r\n";
  tree_.Write(path, bytes.replace(bytes.find(line), line.size(), ""));
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    ClickEntry(menu, "lstSerialNumber", "20010305");
    questions_.ExpectError({"\"20010305\", was taken", "Saving writes the file SN10305"});
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      EXPECT_TRUE(Find<QLineEdit>(editor, "txtSerial").hasFocus());
      Press(Qt::Key_A, Qt::ControlModifier);
      Type("3318A12345");
      Click(editor, "btnOk");
    });
    Click(menu, "btnEdit");
  });
  RunMenu();
  EXPECT_EQ(tree_.Read(path), file.Bytes());
}

}  // namespace
}  // namespace tarvell
