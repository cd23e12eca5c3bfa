// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>

#include "core/caldata/cInstrPX12A.h"
#include "screens/station/StationFixture.h"
#include "support/AnotherProcess.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

// ---- Two editors at one file.

/// The real box, at a real editor.
class TwoEditors : public SensorStage {
 protected:
  TwoEditors() { SetCurrentQuestions(nullptr); }

  /// Another program opens the file, gives it this comment and saves it.
  static void CommentElsewhere(const std::string& comment) {
    InAnotherProcess([&] {
      cInstrPX12A other;
      other.LoadCalibrationDataFromFile(kPath);
      other.SetComment(comment);
      other.SaveCalibrationDataToFile(kPath);
    });
  }

  /// Waits for the question about the file's change, and presses these keys at it.
  void Answer(const std::vector<Qt::Key>& keys, const std::string& told) {
    user_.At<QMessageBox>([=](QMessageBox& box) {
      EXPECT_EQ(box.text(),
                "The file SN12345 has changed since it was opened here. Do you want to replace "
                "it?");
      EXPECT_TRUE(Contains(box.informativeText().toStdString(), told))
          << box.informativeText().toStdString();
      EXPECT_EQ(box.windowTitle(), "Morrand Tarvell");
      EXPECT_EQ(box.icon(), QMessageBox::Warning);
      EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
      EXPECT_EQ(box.standardButton(box.defaultButton()), QMessageBox::No);
      for (const Qt::Key key : keys) {
        Press(key);
      }
    });
  }
};

TEST_F(TwoEditors, TheSecondToSaveIsAskedByKeys) {
  SensorFile file{.comment = "factory", .rows = {{"50.00", "100.0"}}};
  SensorFile others = file;
  ShowFile(file, [&](frmCalDataInput& editor) {
    Fill(editor, "txtCalNo", "C-0043");
    CommentElsewhere("first");
    others.comment = "first";
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
      Answer({key}, "What would be replaced:\nComment: first\n\n");
      Click(editor, "btnOk");
      EXPECT_TRUE(editor.isVisible());
      EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-0043");
      EXPECT_EQ(tree_.Read(kPath), others.Bytes());
    }
    // What changes again is asked about again.
    CommentElsewhere("second");
    Answer({Qt::Key_Y}, "Comment: second");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  file.calNo = "C-0043";
  EXPECT_EQ(tree_.Read(kPath), file.Bytes());
}

// ---- Two visits to the stations.

class TwoVisits : public StationStage {};

TEST_F(TwoVisits, ToAStationBothStayInItsIndex) {
  WriteInstrument();
  WriteInstrument("PX60H", InstrumentFile{.model = "PX60H"}.Bytes());
  AtStation([&](frmStationModelList& screen) {
    InAnotherProcess([&] {
      WriteInstrument("RT730A", InstrumentFile{.model = "RT730A"}.Bytes());
      WriteStationInstrumentIndex(kStation, {"PX12A", "PX60H", "RT730A", "UNSAVED"});
    });
    ClickEntry(screen, "LstInstrment", "PX60H");
    ExpectDeleteInstrumentQuestion("PX60H", QMessageBox::Ok);
    Click(screen, "btnDelete");
    InAnotherProcess([&] { WriteInstrument("PX11A", InstrumentFile{.model = "PX11A"}.Bytes()); });
    LeaveUnsaved(screen);
  });
  const std::string index = tree_.Read(kIndex);
  const std::string end = "PX11A\r\nUNSAVED\r\nINDEX\r\n";
  // The first two stand in the order of the folder.
  EXPECT_TRUE(index == "PX12A\r\nRT730A\r\n" + end || index == "RT730A\r\nPX12A\r\n" + end)
      << index;
}

TEST_F(TwoVisits, DoNotBringBackWhatThisOneSavedAndDeleted) {
  tree_.MakeFolders(kStation);
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "3318A12345");
    Click(screen, "btnSave");
    InAnotherProcess([&] { WriteStationInstrumentIndex(kStation, ListInstruments(kStation)); });
    ASSERT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
    ExpectDeleteInstrumentQuestion("PX12A", QMessageBox::Ok);
    Click(screen, "btnDelete");
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Read(kIndex), "INDEX\r\n");
}

TEST_F(TwoVisits, DoNotBringBackWhatThisOneDeletedUnlisted) {
  WriteInstrument({.model = "PX13A"});
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX13A");
    InAnotherProcess([&] {
      WriteInstrument();
      WriteStationInstrumentIndex(kStation, {"PX13A", "PX12A"});
    });
    Fill(screen, "txtData_0", "PX12A");
    ExpectDeleteInstrumentQuestion("PX12A", QMessageBox::Ok);
    Click(screen, "btnDelete");
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Read(kIndex), "PX13A\r\nINDEX\r\n");
}

TEST_F(TwoVisits, ToTheStationListBothStayInItsIndex) {
  tree_.MakeFolders(kStation);
  AtStationList([&](frmStationMain& screen) {
    InAnotherProcess([&] {
      MakeStation(kRoot, "ST2");
      WriteStationIndex(kRoot, {"ST1", "ST2"});
    });
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\nST2\r\n");
}

}  // namespace
}  // namespace tarvell
