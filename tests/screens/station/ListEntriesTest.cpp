// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QKeyEvent>
#include <QPushButton>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screens/station/StationFixture.h"
#include "screens/widgets/NameList.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// Gives a list the keyboard as Tab does, with the entry of this text under it but not selected.
void PutKeyboardOn(QListWidget& list, const QString& text) {
  const QList<QListWidgetItem*> found = list.findItems(text, Qt::MatchExactly);
  ASSERT_FALSE(found.isEmpty()) << text.toStdString();
  list.setFocus();
  list.clearSelection();
  list.setCurrentItem(found.first(), QItemSelectionModel::NoUpdate);
  ASSERT_TRUE(list.selectedItems().isEmpty());
}

void PutKeyboardOn(QWidget& screen, const QString& list, const QString& text) {
  PutKeyboardOn(Find<QListWidget>(screen, list), text);
}

// ---- Any list.

/// A list alone, which counts what is asked of it.
class EntryHands : public testing::Test {
 protected:
  EntryHands() {
    AddName(&list_, "one");
    AddName(&list_, "two");
    OnEntry(&list_, {.open = [this] { opened_.push_back(SelectedName(&list_)); },
                     .remove = [this] { removed_.push_back(SelectedName(&list_)); }});
    list_.show();
    list_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&list_));
    list_.setFocus();
  }

  void Send(QEvent::Type type, Qt::Key key, bool isRepeated) {
    QKeyEvent event(type, key, Qt::NoModifier, QString(), isRepeated);
    QApplication::sendEvent(&list_, &event);
  }
  QPoint Centre(int row) { return list_.visualItemRect(list_.item(row)).center(); }

  QListWidget list_;
  Texts opened_;
  Texts removed_;
};

TEST_F(EntryHands, EveryEnterKeyOpensTheSelectedEntry) {
  list_.setCurrentRow(1);
  Press(Qt::Key_Return);
  Press(Qt::Key_Enter);
  Press(Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(opened_, (Texts{"two", "two", "two"}));
  EXPECT_EQ(removed_, Texts{});
}

TEST_F(EntryHands, EveryDeleteKeyRemovesTheSelectedEntry) {
  list_.setCurrentRow(0);
  Press(Qt::Key_Delete);
  Press(Qt::Key_Delete, Qt::KeypadModifier);
  EXPECT_EQ(removed_, (Texts{"one", "one"}));
  EXPECT_EQ(opened_, Texts{});
}

TEST_F(EntryHands, KeysWithModifiersAndOtherKeysDoNothing) {
  list_.setCurrentRow(0);
  for (const Qt::KeyboardModifier modifier :
       {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier}) {
    Press(Qt::Key_Return, modifier);
    Press(Qt::Key_Delete, modifier);
  }
  Press(Qt::Key_Backspace);
  Press(Qt::Key_Space);
  EXPECT_EQ(opened_, Texts{});
  EXPECT_EQ(removed_, Texts{});
}

TEST_F(EntryHands, AKeyThatIsHeldActsOnce) {
  list_.setCurrentRow(0);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Delete}) {
    Send(QEvent::KeyPress, key, false);
    for (int i = 0; i < 3; ++i) {
      Send(QEvent::KeyRelease, key, true);
      Send(QEvent::KeyPress, key, true);
    }
    Send(QEvent::KeyRelease, key, false);
  }
  EXPECT_EQ(opened_, Texts{"one"});
  EXPECT_EQ(removed_, Texts{"one"});
}

TEST_F(EntryHands, EnterSelectsTheEntryThatHasTheKeyboardAndDeleteDoesNot) {
  PutKeyboardOn(list_, "two");
  Press(Qt::Key_Delete);
  Press(Qt::Key_Return);
  EXPECT_EQ(removed_, Texts{""});
  EXPECT_EQ(opened_, Texts{"two"});
}

TEST_F(EntryHands, WithoutAnEntryKeysDoNothing) {
  list_.clear();
  Press(Qt::Key_Return);
  Press(Qt::Key_Delete);
  EXPECT_EQ(opened_, Texts{});
  EXPECT_EQ(removed_, Texts{});
}

TEST_F(EntryHands, ADoubleClickOpensOnceAndAClickDoesNot) {
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, Centre(1));
  EXPECT_EQ(opened_, Texts{});
  QTest::mouseDClick(list_.viewport(), Qt::LeftButton, {}, Centre(1));
  EXPECT_EQ(opened_, Texts{"two"});
}

TEST_F(EntryHands, OnlyTheLeftButtonOfTheMouseChooses) {
  Texts chosen;
  OnChoice(&list_, [&] { chosen.push_back(SelectedName(&list_)); });
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, Centre(1));
  Settle();
  for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton, Qt::BackButton}) {
    for (const int row : {0, 1}) {
      QTest::mouseClick(list_.viewport(), button, {}, Centre(row));
      QTest::mouseClick(list_.viewport(), button, Qt::ControlModifier, Centre(row));
      Settle();
    }
  }
  EXPECT_EQ(chosen, Texts{"two"});
  EXPECT_EQ(SelectedName(&list_), "two");
  EXPECT_EQ(list_.currentRow(), 1);
}

TEST_F(EntryHands, ADoubleClickWithControlOpensTheEntryThatItTookOutOfTheSelection) {
  list_.setCurrentRow(1);
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, Qt::ControlModifier, Centre(1));
  ASSERT_TRUE(list_.selectedItems().isEmpty());
  QTest::mouseDClick(list_.viewport(), Qt::LeftButton, Qt::ControlModifier, Centre(1));
  EXPECT_EQ(opened_, Texts{"two"});
}

TEST_F(EntryHands, ADoubleClickBesideTheEntriesOrWithAnotherButtonDoesNothing) {
  const QPoint below(Centre(1).x(), list_.viewport()->height() - 2);
  ASSERT_EQ(list_.itemAt(below), nullptr);
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, below);
  QTest::mouseDClick(list_.viewport(), Qt::LeftButton, {}, below);
  QTest::mouseClick(list_.viewport(), Qt::RightButton, {}, Centre(0));
  QTest::mouseDClick(list_.viewport(), Qt::RightButton, {}, Centre(0));
  EXPECT_EQ(opened_, Texts{});
}

// ---- The calibration data menu.

class CalibrationListEntries : public SensorStage {
 protected:
  CalibrationListEntries() {
    const SensorFile file{.rows = {{"50.00", "100.0"}}};
    tree_.Write(R"(c:\calfactors\PX12A\SN12345)", file.Bytes());
  }

  void AtEditor(int& opened) {
    user_.At<frmCalDataInput>([&opened](frmCalDataInput& editor) {
      ++opened;
      EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - 3318A12345)");
      Press(Qt::Key_Escape);
      EXPECT_FALSE(editor.isVisible());
    });
  }
};

TEST_F(CalibrationListEntries, ADoubleClickOnASerialNumberOpensTheEditorOnce) {
  int opened = 0;
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    AtEditor(opened);
    DoubleClickEntry(menu, "lstSerialNumber", "3318A12345");
    Settle();
    EXPECT_EQ(QApplication::activeModalWidget(), &menu);
  });
  RunMenu();
  EXPECT_EQ(opened, 1);
}

TEST_F(CalibrationListEntries, FromTheModelTwoEntersOpenTheEditor) {
  int opened = 0;
  AtMenu([&](frmCalibrationMain& menu) {
    PutKeyboardOn(menu, "LstInstrment", "PX12A");
    Press(Qt::Key_Return);
    EXPECT_TRUE(Find<QListWidget>(menu, "lstSerialNumber").hasFocus());
    EXPECT_EQ(EntriesOf(menu, "lstSerialNumber"), Texts{"3318A12345"});
    AtEditor(opened);
    Press(Qt::Key_Return);
    EXPECT_EQ(QApplication::activeModalWidget(), &menu);
  });
  RunMenu();
  EXPECT_EQ(opened, 1);
}

TEST_F(CalibrationListEntries, ADoubleClickOnAModelMovesOnToItsSerialNumbers) {
  AtMenu([](frmCalibrationMain& menu) {
    DoubleClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_TRUE(Find<QListWidget>(menu, "lstSerialNumber").hasFocus());
    EXPECT_EQ(EntriesOf(menu, "lstSerialNumber"), Texts{"3318A12345"});
  });
  RunMenu();
}

TEST_F(CalibrationListEntries, TheDeleteKeyAsksAndDeletesTheChosenData) {
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    ClickEntry(menu, "lstSerialNumber", "3318A12345");
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
      EXPECT_TRUE(tree_.Exists(R"(c:\calfactors\PX12A\SN12345)"));
      questions_.Expect({.text = "Are you sure you want to delete PX12A(3318A12345)?",
                         .icon = QMessageBox::Warning,
                         .buttons = QMessageBox::Yes | QMessageBox::No,
                         .defaultButton = QMessageBox::No},
                        answer);
      Press(Qt::Key_Delete);
    }
    EXPECT_EQ(EntriesOf(menu, "lstSerialNumber"), Texts{});
  });
  RunMenu();
  EXPECT_FALSE(tree_.Exists(R"(c:\calfactors\PX12A\SN12345)"));
}

TEST_F(CalibrationListEntries, TheDeleteKeyOnAModelDeletesNothing) {
  AtMenu([](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    Press(Qt::Key_Delete);
    EXPECT_EQ(EntriesOf(menu, "LstInstrment"), Texts{"PX12A"});
  });
  RunMenu();
  EXPECT_TRUE(tree_.Exists(R"(c:\calfactors\PX12A\SN12345)"));
}

TEST_F(CalibrationListEntries, EnterOnATestKitAsksForANewFile) {
  tree_.Write(R"(c:\calfactors\RT410A\SN00042)",
              Lines({"#MODEL_NO : RT410A", "#SER_NO   : 00042", "#CAL_DATE : 20010305",
                     "#CAL_NO   : ", "#DUE_DATE : 20020305", "#COMMENT  : ", "!End"}));
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "RT410A");
    ClickEntry(menu, "lstSerialNumber", "00042");
    questions_.ExpectFilePicker("Choice RT410A Calibration Data File from Folder",
                                {"Calibration Data(*.dat) (*.dat)", "All files(*.*) (*)"}, "");
    Press(Qt::Key_Return);
  });
  RunMenu();
}

// ---- The stations.

class StationListEntries : public StationStage {
 protected:
  StationListEntries() {
    tree_.MakeFolders(kStation);
    WriteInstrument();
  }

  void AtInstruments(int& opened) {
    user_.At<frmStationModelList>([&opened](frmStationModelList& screen) {
      ++opened;
      EXPECT_EQ(screen.StationName, "ST1");
      Click(screen, "btnReturn");
    });
  }
};

TEST_F(StationListEntries, ADoubleClickOpensTheStationOnce) {
  int opened = 0;
  AtStationList([&](frmStationMain& screen) {
    AtInstruments(opened);
    DoubleClickEntry(screen, "lstStation", "ST1");
    Settle();
    EXPECT_EQ(QApplication::activeModalWidget(), &screen);
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(opened, 1);
}

TEST_F(StationListEntries, EnterOpensTheStationThatHasTheKeyboard) {
  int opened = 0;
  AtStationList([&](frmStationMain& screen) {
    PutKeyboardOn(screen, "lstStation", "ST1");
    AtInstruments(opened);
    Press(Qt::Key_Return);
    EXPECT_EQ(QApplication::activeModalWidget(), &screen);
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(opened, 1);
}

TEST_F(StationListEntries, TheDeleteKeyAsksAndDeletesTheStation) {
  AtStationList([&](frmStationMain& screen) {
    ClickEntry(screen, "lstStation", "ST1");
    for (const auto answer : {QMessageBox::Cancel, QMessageBox::Ok}) {
      EXPECT_TRUE(tree_.Exists(kStation));
      ExpectDeleteStationQuestion("ST1", answer);
      Press(Qt::Key_Delete);
    }
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    Click(screen, "btnReturn");
  });
  EXPECT_FALSE(tree_.Exists(kStation));
}

TEST_F(StationListEntries, TheKeyboardStaysInAListThatIsReadAgain) {
  tree_.MakeFolders(R"(c:\stations\ST2)");
  WriteInstrument({.model = "PX13A"});
  int opened = 0;
  AtStationList([&](frmStationMain& screen) {
    auto& list = Find<QListWidget>(screen, "lstStation");
    PutKeyboardOn(screen, "lstStation", "ST1");
    AtInstruments(opened);
    Press(Qt::Key_Return);
    EXPECT_EQ(screen.focusWidget(), &list) << "after the station was closed";
    ClickEntry(screen, "lstStation", "ST2");
    ExpectDeleteStationQuestion("ST2", QMessageBox::Ok);
    Press(Qt::Key_Delete);
    EXPECT_EQ(screen.focusWidget(), &list) << "after a station was deleted";
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      for (const char* name : {"PX12A", "PX13A"}) {
        ClickEntry(instruments, "LstInstrment", name);
        ExpectDeleteInstrumentQuestion(name, QMessageBox::Ok);
        Press(Qt::Key_Delete);
        const bool isLast = std::string(name) == "PX13A";
        EXPECT_EQ(instruments.focusWidget()->objectName(), isLast ? "btnAdd" : "LstInstrment");
      }
      LeaveUnsaved(instruments);
    });
    ClickEntry(screen, "lstStation", "ST1");
    Press(Qt::Key_Return);
    ClickEntry(screen, "lstStation", "ST1");
    ExpectDeleteStationQuestion("ST1", QMessageBox::Ok);
    Press(Qt::Key_Delete);
    EXPECT_EQ(screen.focusWidget()->objectName(), "btnAdd") << "no station is left";
    Click(screen, "btnReturn");
  });
}

TEST_F(StationListEntries, AClickWithAnotherButtonDropsNothingThatWasTyped) {
  AtStation([&](frmStationModelList& screen) {
    auto& list = Find<QListWidget>(screen, "LstInstrment");
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_2", "typed");
    Settle();
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
      QTest::mouseClick(list.viewport(), button, {}, list.visualItemRect(list.item(0)).center());
      Settle();
      EXPECT_EQ(TextOf(screen, "txtData_2"), "typed");
    }
    LeaveUnsaved(screen);
  });
}

TEST_F(StationListEntries, TheDeleteKeyWithoutAChosenStationTellsAsTheButtonDoes) {
  AtStationList([&](frmStationMain& screen) {
    PutKeyboardOn(screen, "lstStation", "ST1");
    questions_.ExpectNotice("No stations is selected.");
    Press(Qt::Key_Delete);
    Click(screen, "btnReturn");
  });
  EXPECT_TRUE(tree_.Exists(kStation));
}

TEST_F(StationListEntries, ThePlaceholderOpensAndDeletesNothing) {
  std::filesystem::remove_all(tree_.Native(kStation));
  AtStationList([](frmStationMain& screen) {
    DoubleClickEntry(screen, "lstStation", "No Stations");
    EXPECT_EQ(QApplication::activeModalWidget(), &screen);
    Click(screen, "btnReturn");
  });
}

TEST_F(StationListEntries, ADoubleClickLoadsAnInstrumentOnce) {
  AtStation([&](frmStationModelList& screen) {
    auto& list = Find<QListWidget>(screen, "LstInstrment");
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(TextOf(screen, "txtData_2"), "13");
    // Only a further load would show this.
    WriteInstrument({.address = "14"});
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {},
                       list.visualItemRect(list.item(0)).center());
    EXPECT_EQ(TextOf(screen, "txtData_2"), "13");
    LeaveUnsaved(screen);
  });
}

TEST_F(StationListEntries, TheDeleteKeyAsksAndDeletesTheShownInstrument) {
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    for (const auto answer : {QMessageBox::Cancel, QMessageBox::Ok}) {
      EXPECT_TRUE(tree_.Exists(std::string(kStation) + "\\PX12A"));
      ExpectDeleteInstrumentQuestion("PX12A", answer);
      Press(Qt::Key_Delete);
    }
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    EXPECT_EQ(ShownFields(screen), kNoFields);
    LeaveUnsaved(screen);
  });
  EXPECT_FALSE(tree_.Exists(std::string(kStation) + "\\PX12A"));
}

TEST_F(StationListEntries, TheDeleteKeyInATextBoxDeletesNoInstrument) {
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_2", "");
    Press(Qt::Key_Delete);
    LeaveUnsaved(screen);
  });
  EXPECT_TRUE(tree_.Exists(std::string(kStation) + "\\PX12A"));
}

// ---- The picker, whose Add is the default button.

TEST_F(StationListEntries, ADoubleClickOnASerialNumberAddsItOnce) {
  WriteCalFile("PX13A", "SN9", {.model = "PX13A", .serial = "9"});
  AtStation([&](frmStationModelList& screen) {
    user_.At<frmStationGetInstr>([](frmStationGetInstr& picker) {
      ClickEntry(picker, "LstInstrment", "PX13A");
      DoubleClickEntry(picker, "lstSerialNumber", "9");
      EXPECT_FALSE(picker.isVisible());
      EXPECT_EQ(picker.Result, 0);
    });
    Click(screen, "btnAdd");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), (Texts{"PX12A", "PX13A"}));
    LeaveUnsaved(screen);
  });
}

TEST_F(StationListEntries, FromThePickersModelTwoEntersAddTheFirstSerialNumber) {
  WriteCalFile("PX13A", "SN9", {.model = "PX13A", .serial = "9"});
  AtStation([&](frmStationModelList& screen) {
    user_.At<frmStationGetInstr>([](frmStationGetInstr& picker) {
      PutKeyboardOn(picker, "LstInstrment", "PX13A");
      // Add is not pressed as well, which would tell that no serial number is chosen.
      Press(Qt::Key_Return);
      EXPECT_TRUE(picker.isVisible());
      EXPECT_TRUE(Find<QListWidget>(picker, "lstSerialNumber").hasFocus());
      Press(Qt::Key_Return);
      EXPECT_FALSE(picker.isVisible());
      EXPECT_EQ(picker.Result, 0);
    });
    Click(screen, "btnAdd");
    EXPECT_EQ(TextOf(screen, "txtData_0"), "PX13A");
    EXPECT_EQ(ComboText(screen, "cmbSerial"), "9");
    LeaveUnsaved(screen);
  });
}

TEST_F(StationListEntries, EnterOnAnEmptySerialListPressesThePickersAdd) {
  tree_.Write(R"(c:\calfactors\PX13A\notes)", "x");
  AtStation([&](frmStationModelList& screen) {
    user_.At<frmStationGetInstr>([&](frmStationGetInstr& picker) {
      DoubleClickEntry(picker, "LstInstrment", "PX13A");
      questions_.ExpectNotice("Model number or serial number is no selected.");
      Press(Qt::Key_Return);
      EXPECT_TRUE(picker.isVisible());
      Press(Qt::Key_Escape);
    });
    Click(screen, "btnAdd");
    Click(screen, "btnReturn");
  });
}

}  // namespace
}  // namespace tarvell
