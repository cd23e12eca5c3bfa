// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/DataSetEditors.h"
#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/station/StationFixture.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/UserSettings.h"
#include "support/ClickInMenu.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// The entries that are not hidden.
Texts Shown(QWidget& screen, const QString& name) {
  const auto& list = Find<QListWidget>(screen, name);
  Texts shown;
  for (int row = 0; row < list.count(); ++row) {
    if (!list.item(row)->isHidden()) {
      shown.push_back(list.item(row)->text().toStdString());
    }
  }
  return shown;
}

std::string Selected(QWidget& screen, const QString& list) {
  return SelectedName(&Find<QListWidget>(screen, list));
}

bool NoticeIs(QWidget& screen, const QString& part) {
  return Find<NoticeLine>(screen, "notices").Notices().join("\n").contains(part);
}

class ListHeads : public StationStage {
 protected:
  /// Opens the calibration data menu and runs `act`, which must close it.
  void AtMenu(const std::function<void(frmCalibrationMain& menu)>& act) {
    frmCalibrationMain menu(nullptr);
    user_.At<frmCalibrationMain>([&](frmCalibrationMain& at) {
      act(at);
      CloseIfOpen(at);
    });
    menu.ShowModally();
  }
};

TEST_F(ListHeads, TheFilterReachesEveryDataSetOfALargeFolder) {
  for (int i = 100; i < 160; ++i) {
    const std::string serial = "A" + std::to_string(i);
    WriteCalFile("PX12A", "SN" + serial, {.serial = serial, .comment = "Rack 1"});
  }
  AtMenu([&](frmCalibrationMain& menu) {
    questions_.ExpectError({"more than 51 data files", "filter above the serial numbers"});
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(Shown(menu, "lstSerialNumber").size(), 51U);
    Press(Qt::Key_Tab);
    EXPECT_TRUE(Find<QListWidget>(menu, "lstSerialNumber").hasFocus());
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "lstSerialNumberFilter");
    for (int i = 100; i < 160; ++i) {
      const QString serial = "a" + QString::number(i);
      Fill(menu, "lstSerialNumberFilter", serial);
      Press(Qt::Key_Return);
      EXPECT_EQ(Shown(menu, "lstSerialNumber"), Texts{serial.toUpper().toStdString()});
    }
    EXPECT_TRUE(Find<QListWidget>(menu, "lstSerialNumber").hasFocus());
    EXPECT_EQ(gCalFiles[0].SerialNumber, "A159");
    // What is typed is listed without another key; too many are a notice.
    Press(Qt::Key_F, Qt::ControlModifier);
    Type("rack");
    EXPECT_TRUE(QTest::qWaitFor([&] { return NoticeIs(menu, "More than 51 data files match"); }));
    EXPECT_EQ(Shown(menu, "lstSerialNumber").size(), 51U);
    Type("s");
    EXPECT_TRUE(QTest::qWaitFor([&] { return NoticeIs(menu, "No data set of PX12A matches"); }));
    EXPECT_EQ(Shown(menu, "lstSerialNumber"), Texts());
    Press(Qt::Key_Escape);
    EXPECT_EQ(Shown(menu, "lstSerialNumber").size(), 51U);
    EXPECT_TRUE(NoticeIs(menu, "more than 51 data files"));
    Press(Qt::Key_Escape);
    EXPECT_FALSE(menu.isVisible());
  });
}

TEST_F(ListHeads, TheLastDataSetOfALargeFolderIsOutlinedAlthoughItIsNotListed) {
  KeepUserSettingsIn(QString::fromStdString((tree_.Root() / "config/settings.ini").string()));
  const auto forget = qScopeGuard([] { KeepUserSettingsIn(""); });
  std::set<std::string> serials;
  for (int i = 100; i < 160; ++i) {
    const std::string serial = "A" + std::to_string(i);
    WriteCalFile("PX12A", "SN" + serial, {.serial = serial});
    serials.insert(serial);
  }
  AtMenu([&](frmCalibrationMain& menu) {
    questions_.ExpectError({"more than 51 data files"});
    ClickEntry(menu, "LstInstrment", "PX12A");
    for (const std::string& listed : Shown(menu, "lstSerialNumber")) {
      serials.erase(listed);
    }
    Click(menu, "btnReturn");
  });
  ASSERT_EQ(serials.size(), 9U);
  RememberDataSet("PX12A", *serials.begin());
  AtMenu([&](frmCalibrationMain& menu) {
    questions_.ExpectError({"more than 51 data files"});
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(Shown(menu, "lstSerialNumber"), Texts{*serials.begin()});
    Press(Qt::Key_Return);
    user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
      EXPECT_EQ(TextOf(editor, "txtSerial"), *serials.begin());
      Press(Qt::Key_Escape);
    });
    Press(Qt::Key_Return);
    Click(menu, "btnReturn");
  });
}

TEST_F(ListHeads, AHiddenEntryIsNotSelectedAndIndexKeepsIt) {
  for (const char* station : {"Lab 9", "lab 10", "BENCH"}) {
    tree_.MakeFolders(std::string(kRoot) + "\\" + station);
  }
  const Texts order = NamesInOrder(kRoot);
  AtStationList([&](frmStationMain& screen) {
    ClickEntry(screen, "lstStation", "BENCH");
    Press(Qt::Key_F, Qt::ControlModifier);
    Type("LAB");
    Settle();
    ClickInMenu(screen, "lstStationSort", "By name");
    EXPECT_EQ(Shown(screen, "lstStation"), (Texts{"Lab 9", "lab 10"}));
    EXPECT_EQ(Selected(screen, "lstStation"), "");
    questions_.ExpectNotice("No station is selected.");
    Click(screen, "btnEdit");
    // The keyboard goes to what is shown.
    Find<QLineEdit>(screen, "lstStationFilter").setFocus();
    Press(Qt::Key_Down);
    EXPECT_FALSE(Find<QListWidget>(screen, "lstStation").currentItem()->isHidden());
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kRootIndex), Lines(order));
}

TEST_F(ListHeads, TheOrderIsRememberedAndEditAndDeleteStillFindTheFile) {
  KeepUserSettingsIn(QString::fromStdString((tree_.Root() / "config/settings.ini").string()));
  const auto forget = qScopeGuard([] { KeepUserSettingsIn(""); });
  WriteCalFile("PX12A", "SNc", {.serial = "c", .dueDate = "20020305"});
  WriteCalFile("PX12A", "SNA", {.serial = "A", .dueDate = "20040305"});
  WriteCalFile("PX12A", "SNb", {.serial = "b", .dueDate = "20030305"});
  WriteCalFile("PX12A", "SNd", {.serial = "d", .dueDate = "00000000"});
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    ClickInMenu(menu, "lstSerialNumberSort", "By name");
    EXPECT_EQ(Shown(menu, "lstSerialNumber"), (Texts{"A", "b", "c", "d"}));
    ClickInMenu(menu, "lstSerialNumberSort", "By due date");
    ClickEntry(menu, "lstSerialNumber", "A");
    Click(menu, "btnReturn");
  });
  AtMenu([&](frmCalibrationMain& menu) {
    // Nothing is selected, but Enter and Enter again open what the user selected last.
    EXPECT_EQ(Selected(menu, "LstInstrment"), "");
    Press(Qt::Key_Return);
    EXPECT_EQ(Selected(menu, "LstInstrment") + Selected(menu, "lstSerialNumber"), "PX12A");
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      EXPECT_EQ(TextOf(editor, "txtSerial"), "A");
      editor.reject();
    });
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(menu, "lstSerialNumber"), (Texts{"c", "b", "A", "d"}));
    ClickEntry(menu, "lstSerialNumber", "b");
    questions_.Expect({.text = "Are you sure you want to delete PX12A(b)?",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      QMessageBox::Yes);
    Click(menu, "btnDelete");
    EXPECT_FALSE(tree_.Exists(R"(c:\calfactors\PX12A\SNb)"));
    // F5 reads the lists again and keeps the selection.
    ClickEntry(menu, "lstSerialNumber", "A");
    WriteCalFile("PX12A", "SNe", {.serial = "e", .dueDate = "20030101"});
    WriteCalFile("PX13A", "SN1", {.model = "PX13A"});
    Press(Qt::Key_F5);
    EXPECT_EQ(Shown(menu, "lstSerialNumber"), (Texts{"c", "e", "A", "d"}));
    EXPECT_EQ(Shown(menu, "LstInstrment").size(), 2U);
    EXPECT_EQ(Selected(menu, "LstInstrment") + Selected(menu, "lstSerialNumber"), "PX12AA");
    Click(menu, "btnReturn");
  });
}

TEST_F(ListHeads, TheFilterWaitsWhileAnEditorIsOpen) {
  for (const char* serial : {"A", "b"}) {
    WriteCalFile("PX12A", std::string("SN") + serial, {.serial = serial});
  }
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    ClickEntry(menu, "lstSerialNumber", "A");
    Fill(menu, "lstSerialNumberFilter", "b");
    user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
      QTest::qWait(200);  // longer than the filter waits for more typing
      EXPECT_EQ(Shown(menu, "lstSerialNumber").size(), 2U);
      Click(editor, "btnOk");
    });
    Click(menu, "btnEdit");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Shown(menu, "lstSerialNumber") == Texts{"b"}; }));
    Click(menu, "btnReturn");
  });
}

TEST_F(ListHeads, AnInstrumentPickedByTheFilterIsTheOneThatIsAdded) {
  for (int i = 100; i < 160; ++i) {
    const std::string serial = "A" + std::to_string(i);
    WriteCalFile("PX12A", "SN" + serial, {.serial = serial, .comment = "own " + serial});
  }
  tree_.MakeFolders(kStation);
  AtStation([&](frmStationModelList& screen) {
    for (const QString serial : {"A100", "A159"}) {
      for (int error = 0; error < 2; ++error) {
        questions_.ExpectError({"more than 51 data files"});
      }
      user_.At<frmStationGetInstr>([&](frmStationGetInstr& picker) {
        ClickEntry(picker, "LstInstrment", "PX12A");
        Fill(picker, "lstSerialNumberFilter", serial);
        Press(Qt::Key_Return);
        Press(Qt::Key_Return);
      });
      Click(screen, "btnAdd");
      EXPECT_EQ(ComboText(screen, "cmbSerial"), serial.toStdString());
      EXPECT_EQ(TextOf(screen, "txtData_11"), "own " + serial.toStdString());
      ExpectDeleteInstrumentQuestion("PX12A", QMessageBox::Ok);
      Click(screen, "btnDelete");
    }
    LeaveUnsaved(screen);
  });
}

TEST_F(ListHeads, InstrumentsThatAreDueAreMarkedAndSortedByTheirDueDates) {
  const auto due = [](int days) {
    return QLocale::c().toString(QDate::currentDate().addDays(days), "d MMM yyyy").toUpper();
  };
  WriteInstrument({.model = "SOON", .dueDate = due(10).toStdString()});
  WriteInstrument({.model = "FINE", .dueDate = due(50).toStdString()});
  WriteInstrument({.model = "PAST", .dueDate = due(-10).toStdString()});
  WriteInstrument("EMPTY", "");
  AtStation([&](frmStationModelList& screen) {
    ClickInMenu(screen, "LstInstrmentSort", "By due date");
    EXPECT_EQ(Shown(screen, "LstInstrment"), (Texts{"PAST", "SOON", "FINE", "EMPTY"}));
    const auto& list = Find<QListWidget>(screen, "LstInstrment");
    const auto spoken = [&](int row) {
      return list.item(row)->data(Qt::AccessibleTextRole).toString().toStdString();
    };
    EXPECT_EQ((Texts{spoken(0), spoken(1), spoken(2), spoken(3)}),
              (Texts{"PAST, past due", "SOON, due within 30 days", "", ""}));
    EXPECT_FALSE(list.item(0)->icon().isNull());
    EXPECT_TRUE(list.item(2)->icon().isNull());
    // A save updates the mark and the place.
    ClickEntry(screen, "LstInstrment", "PAST");
    Fill(screen, "txtData_6", QString::number(QDate::currentDate().year() + 9));
    Fill(screen, "txtData_8", "1");
    Click(screen, "btnSave");
    EXPECT_EQ(Shown(screen, "LstInstrment"), (Texts{"SOON", "FINE", "PAST", "EMPTY"}));
    EXPECT_EQ(spoken(2), "");
    EXPECT_EQ(Selected(screen, "LstInstrment"), "PAST");
    LeaveUnsaved(screen);
  });
}

TEST_F(ListHeads, AnInstrumentThatTheFilterHidesIsNotDeletedAndEnterLoadsTheOther) {
  WriteInstrument({.model = "PX12A"});
  WriteInstrument({.model = "PX60H", .serial = "7"});
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Press(Qt::Key_F, Qt::ControlModifier);
    Type("60");
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(screen, "LstInstrment"), Texts{"PX60H"});
    Press(Qt::Key_Delete);  // no question appears
    EXPECT_EQ(TextOf(screen, "txtData_0"), "PX12A");
    Press(Qt::Key_Return);
    EXPECT_EQ(TextOf(screen, "txtData_0"), "PX60H");
    EXPECT_EQ(Selected(screen, "LstInstrment"), "PX60H");
    ExpectDeleteInstrumentQuestion("PX60H", QMessageBox::Cancel);
    Press(Qt::Key_Delete);
    LeaveUnsaved(screen);
  });
}

TEST_F(ListHeads, AListSortedByDueDateStaysSortedAfterASaveAndFilteredAfterACancel) {
  WriteCalFile("PX12A", "SNA", {.serial = "A", .dueDate = "20020305", .comment = "x"});
  WriteCalFile("PX12A", "SNb", {.serial = "b", .dueDate = "20030305", .comment = "x"});
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    ClickInMenu(menu, "lstSerialNumberSort", "By due date");
    ClickEntry(menu, "lstSerialNumber", "A");
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      Fill(editor, "txtDueYear", "2004");
      Click(editor, "btnOk");
    });
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(menu, "lstSerialNumber"), (Texts{"b", "A"}));
    EXPECT_EQ(Selected(menu, "lstSerialNumber"), "A");
    Fill(menu, "lstSerialNumberFilter", "a");
    Press(Qt::Key_Return);
    Press(Qt::Key_Space);
    user_.At<frmCalDataInput>([](frmCalDataInput&) { Press(Qt::Key_Escape); });
    ClickInMenu(menu, "btnMore", "Add as copy");
    EXPECT_EQ(Shown(menu, "lstSerialNumber"), Texts{"A"});
    EXPECT_EQ(Selected(menu, "lstSerialNumber"), "A");
    EXPECT_EQ(TextOf(menu, "lstSerialNumberFilter"), "a");
    Click(menu, "btnReturn");
  });
}

TEST_F(ListHeads, OfTwoDataSetsWithOneSerialNumberTheSelectedOneIsOpenedAndDeleted) {
  WriteCalFile("PX12A", "SNA", {.serial = "A", .comment = "one"});
  WriteCalFile("PX12A", "SNB", {.serial = "A", .comment = "two"});
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    QListWidget& list = Find<QListWidget>(menu, "lstSerialNumber");
    const std::string comment = list.item(1)->toolTip().contains("one") ? "one" : "two";
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualItemRect(list.item(1)).center());
    if (comment == "two") {
      questions_.Expect(
          {.text = "The serial number that was read, \"A\", is not that of the file's name SNB. "
                   "Saving writes the file SNA; SNB stays.",
           .icon = QMessageBox::Warning},
          QMessageBox::Ok);
    }
    user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
      EXPECT_EQ(TextOf(editor, "txtComment"), comment);
      editor.reject();
    });
    Click(menu, "btnEdit");
    questions_.Expect({.text = "Are you sure you want to delete PX12A(A)?",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      QMessageBox::Yes);
    Click(menu, "btnDelete");
    Click(menu, "btnReturn");
    EXPECT_NE(tree_.Exists(R"(c:\calfactors\PX12A\SNA)"), comment == "one");
    EXPECT_NE(tree_.Exists(R"(c:\calfactors\PX12A\SNB)"), comment == "two");
  });
}

}  // namespace
}  // namespace tarvell
