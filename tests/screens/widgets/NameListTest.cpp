// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QKeyEvent>

#include "screens/station/StationFixture.h"
#include "screens/widgets/NameList.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// Gives a list the focus as Tab does, with the entry of this text current but not selected.
void FocusEntry(QWidget& screen, const QString& name, const QString& text) {
  auto& list = Find<QListWidget>(screen, name);
  const QList<QListWidgetItem*> found = list.findItems(text, Qt::MatchExactly);
  ASSERT_FALSE(found.isEmpty()) << text.toStdString();
  list.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(list.window()));
  list.setFocus();
  list.clearSelection();
  list.setCurrentItem(found.first(), QItemSelectionModel::NoUpdate);
}

// ---- A list of its own.

/// A list of two names that records which entries were opened and removed.
class EntryActionsOfAList : public testing::Test {
 protected:
  EntryActionsOfAList() {
    AddName(&list_, "one");
    AddName(&list_, "two");
    OnEntry(&list_, {.open = [this] { opened_.push_back(SelectedName(&list_)); },
                     .remove = [this] { removed_.push_back(SelectedName(&list_)); }});
    list_.show();
    list_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&list_));
    list_.setFocus();
    list_.setCurrentRow(1);
  }

  void Send(QEvent::Type type, Qt::Key key, bool isRepeated) {
    QKeyEvent event(type, key, Qt::NoModifier, QString(), isRepeated);
    QApplication::sendEvent(&list_, &event);
  }
  QPoint Centre(int row) { return list_.visualItemRect(list_.item(row)).center(); }
  void ExpectActions(const Texts& opened, const Texts& removed) {
    EXPECT_EQ(opened_, opened);
    EXPECT_EQ(removed_, removed);
    opened_.clear();
    removed_.clear();
  }

  QListWidget list_;
  Texts opened_;
  Texts removed_;
};

TEST_F(EntryActionsOfAList, EnterOpensAndDeleteRemovesTheSelectedEntryAndOtherKeysDoNothing) {
  Press(Qt::Key_Return);
  Press(Qt::Key_Enter);
  Press(Qt::Key_Enter, Qt::KeypadModifier);
  ExpectActions({"two", "two", "two"}, {});
  Press(Qt::Key_Delete);
  Press(Qt::Key_Delete, Qt::KeypadModifier);
  ExpectActions({}, {"two", "two"});
  for (const Qt::KeyboardModifier modifier :
       {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier}) {
    Press(Qt::Key_Return, modifier);
    Press(Qt::Key_Delete, modifier);
  }
  Press(Qt::Key_Backspace);
  Press(Qt::Key_Space);
  ExpectActions({}, {});
  list_.clearSelection();
  list_.setCurrentRow(0, QItemSelectionModel::NoUpdate);
  Press(Qt::Key_Delete);
  Press(Qt::Key_Return);
  ExpectActions({"one"}, {""});  // only Enter selects the current entry
  list_.clear();
  Press(Qt::Key_Return);
  Press(Qt::Key_Delete);
  ExpectActions({}, {});
}

TEST_F(EntryActionsOfAList, AnArrowKeyThatCanGoNoFurtherSelectsTheCurrentEntry) {
  for (const auto& [row, key, name] :
       {std::tuple(1, Qt::Key_Down, "two"), std::tuple(0, Qt::Key_Up, "one")}) {
    list_.clearSelection();
    list_.setCurrentRow(row, QItemSelectionModel::NoUpdate);
    Press(key);
    EXPECT_EQ(SelectedName(&list_), name);
  }
}

TEST_F(EntryActionsOfAList, AnEmptyListShowsThatItHasTheKeyboard) {
  list_.clear();
  const auto looks = [this] {
    Settle();
    return list_.viewport()->grab().toImage();
  };
  const QImage focused = looks();
  list_.clearFocus();
  EXPECT_NE(looks(), focused);
}

TEST_F(EntryActionsOfAList, AKeyThatIsHeldActsOnce) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Delete}) {
    Send(QEvent::KeyPress, key, false);
    for (int i = 0; i < 3; ++i) {
      Send(QEvent::KeyRelease, key, true);
      Send(QEvent::KeyPress, key, true);
    }
    Send(QEvent::KeyRelease, key, false);
  }
  ExpectActions({"two"}, {"two"});
}

TEST_F(EntryActionsOfAList, ADoubleClickOpensOnceAndAClickDoesNot) {
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, Centre(0));
  ExpectActions({}, {});
  QTest::mouseDClick(list_.viewport(), Qt::LeftButton, {}, Centre(0));
  ExpectActions({"one"}, {});
  // A click with Ctrl deselects the entry; the double click opens it all the same.
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, Qt::ControlModifier, Centre(0));
  ASSERT_TRUE(list_.selectedItems().isEmpty());
  QTest::mouseDClick(list_.viewport(), Qt::LeftButton, Qt::ControlModifier, Centre(0));
  ExpectActions({"one"}, {});
  const QPoint below(Centre(1).x(), list_.viewport()->height() - 2);
  ASSERT_EQ(list_.itemAt(below), nullptr);
  QTest::mouseDClick(list_.viewport(), Qt::LeftButton, {}, below);
  QTest::mouseDClick(list_.viewport(), Qt::RightButton, {}, Centre(0));
  ExpectActions({}, {});
}

TEST_F(EntryActionsOfAList, OnlyTheLeftMouseButtonChooses) {
  Texts chosen;
  OnChoice(&list_, [&] { chosen.push_back(SelectedName(&list_)); });
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, Centre(0));
  Settle();
  for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton, Qt::BackButton}) {
    QTest::mouseClick(list_.viewport(), button, {}, Centre(1));
    QTest::mouseClick(list_.viewport(), button, Qt::ControlModifier, Centre(0));
    Settle();
  }
  EXPECT_EQ(chosen, Texts{"one"});
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, Centre(0));
  EXPECT_EQ(chosen, (Texts{"one", "one"})) << "a click on the selected entry counts too";
}

// ---- The calibration data menu.

using CalibrationListEntries = SensorStage;

TEST_F(CalibrationListEntries, OpenTheEditorByEnterAndAreDeletedByTheDeleteKeyButModelsAreNot) {
  const std::string path = R"(c:\calfactors\PX12A\SN12345)";
  tree_.Write(path, SensorFile{.rows = {{"50.00", "100.0"}}}.Bytes());
  AtMenu([&](frmCalibrationMain& menu) {
    FocusEntry(menu, "LstInstrment", "PX12A");
    Press(Qt::Key_Return);
    EXPECT_TRUE(Find<QListWidget>(menu, "lstSerialNumber").hasFocus());
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - 3318A12345)");
      Press(Qt::Key_Escape);
    });
    Press(Qt::Key_Return);
    DoubleClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_TRUE(Find<QListWidget>(menu, "lstSerialNumber").hasFocus());
    Find<QListWidget>(menu, "LstInstrment").setFocus();
    Press(Qt::Key_Delete);
    EXPECT_TRUE(tree_.Exists(path));
    ClickEntry(menu, "lstSerialNumber", "3318A12345");
    questions_.Expect({.text = "Are you sure you want to delete PX12A(3318A12345)?",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      QMessageBox::Yes);
    Press(Qt::Key_Delete);
  });
  RunMenu();
  EXPECT_FALSE(tree_.Exists(path));
}

// ---- The stations.

using StationListEntries = StationStage;

TEST_F(StationListEntries, OpenTheStationByEnterAndByDoubleClick) {
  WriteInstrument();
  AtStationList([&](frmStationMain& screen) {
    user_.At<frmStationModelList>([&](frmStationModelList& station) {
      EXPECT_EQ(station.StationName, "ST1");
      ClickEntry(station, "LstInstrment", "PX12A");
      tree_.MakeFolders("c:\\stations\\ST2");
      LeaveUnsaved(station);
    });
    DoubleClickEntry(screen, "lstStation", "ST1");
    Settle();
    EXPECT_EQ(QApplication::activeModalWidget(), &screen);
    EXPECT_EQ(EntriesOf(screen, "lstStation").size(), 2U) << "the list is read again";
    FocusEntry(screen, "lstStation", "ST1");
    user_.At<frmStationModelList>([&](frmStationModelList& station) {
      EXPECT_EQ(ShownFields(station), kEmptyFields) << "each visit has a screen of its own";
      Click(station, "btnReturn");
    });
    Press(Qt::Key_Return);
    FocusEntry(screen, "lstStation", "ST1");
    questions_.ExpectNotice("No stations is selected.");
    Press(Qt::Key_Delete);
    Click(screen, "btnReturn");
  });
}

TEST_F(StationListEntries, TheFocusStaysInAListThatIsReadAgain) {
  WriteInstrument();
  WriteInstrument({.model = "PX13A"});
  AtStationList([&](frmStationMain& screen) {
    ClickEntry(screen, "lstStation", "ST1");
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      for (const QString name : {"PX12A", "PX13A"}) {
        ClickEntry(instruments, "LstInstrment", name);
        ExpectDeleteInstrumentQuestion(name, QMessageBox::Ok);
        Press(Qt::Key_Delete);
        EXPECT_EQ(instruments.focusWidget()->objectName(),
                  name == "PX13A" ? "btnAdd" : "LstInstrment");
      }
      LeaveUnsaved(instruments);
    });
    Press(Qt::Key_Return);
    EXPECT_EQ(screen.focusWidget()->objectName(), "lstStation");
    ExpectDeleteStationQuestion("ST1", QMessageBox::Ok);
    ClickEntry(screen, "lstStation", "ST1");
    Press(Qt::Key_Delete);
    EXPECT_EQ(screen.focusWidget()->objectName(), "btnAdd");
    Click(screen, "btnReturn");
  });
}

TEST_F(StationListEntries, ADoubleClickLoadsAnInstrumentOnceAndDeleteInABoxDeletesNoFile) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    auto& list = Find<QListWidget>(screen, "LstInstrment");
    ClickEntry(screen, "LstInstrment", "PX12A");
    // A second load would show this address.
    WriteInstrument({.address = "14"});
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {},
                       list.visualItemRect(list.item(0)).center());
    EXPECT_EQ(TextOf(screen, "txtData_2"), "13");
    Fill(screen, "txtData_2", "");
    Press(Qt::Key_Delete);
    LeaveUnsaved(screen);
  });
  EXPECT_TRUE(tree_.Exists(std::string(kStation) + "\\PX12A"));
}

TEST_F(StationListEntries, InThePickerEnterLeadsFromTheModelToTheSerialNumberAndAddsIt) {
  tree_.MakeFolders(kStation);
  WriteCalFile("PX13A", "SN9", {.model = "PX13A", .serial = "9"});
  tree_.Write(R"(c:\calfactors\PX14A\notes)", "x");
  AtStation([&](frmStationModelList& screen) {
    user_.At<frmStationGetInstr>([&](frmStationGetInstr& picker) {
      DoubleClickEntry(picker, "LstInstrment", "PX14A");
      // Without an entry Enter presses the default button, Add.
      questions_.ExpectNotice("Model number or serial number is no selected.");
      Press(Qt::Key_Return);
      FocusEntry(picker, "LstInstrment", "PX13A");
      Press(Qt::Key_Return);
      EXPECT_TRUE(picker.isVisible()) << "Enter did not press Add as well";
      EXPECT_TRUE(Find<QListWidget>(picker, "lstSerialNumber").hasFocus());
      Press(Qt::Key_Return);
      EXPECT_FALSE(picker.isVisible());
    });
    Click(screen, "btnAdd");
    EXPECT_EQ(ComboText(screen, "cmbSerial"), "9");
    LeaveUnsaved(screen);
  });
}

}  // namespace
}  // namespace tarvell
