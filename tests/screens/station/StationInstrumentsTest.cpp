// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDir>
#include <QFile>
#include <QToolButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "screens/station/StationFixture.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/UpDown.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

const std::vector<const char*> kBoxes = {"txtData_0",  "txtData_2",  "txtData_3", "txtData_4",
                                         "txtData_5",  "txtData_6",  "txtData_8", "txtData_9",
                                         "txtData_10", "txtData_11", "txtData_12"};

class StationInstruments : public StationStage {
 protected:
  StationInstruments() { tree_.MakeFolders(kStation); }

  static bool ListIsEnabled(frmStationModelList& screen) {
    return Find<QListWidget>(screen, "LstInstrment").isEnabled();
  }

  void Delete(frmStationModelList& screen, const QString& model,
              QMessageBox::StandardButton answer) {
    ExpectDeleteInstrumentQuestion(model, answer);
    Click(screen, "btnDelete");
  }
};

TEST_F(StationInstruments, TheScreenSaysWhatItIs) {
  AtStation([](frmStationModelList& screen) {
    EXPECT_EQ(screen.windowTitle(), "ST1 - Station Data Edit - Morrand Tarvell");
    EXPECT_TRUE(screen.isModal());
    EXPECT_EQ(Find<QLabel>(screen, "lbStation").text(), "StationName :  ST1");
    EXPECT_EQ(Find<QLabel>(screen, "Label2").text(), "Current Station Instrments");
    EXPECT_EQ(Find<QAbstractButton>(screen, "btnAdd").text(), "Add Instrment");
    EXPECT_EQ(Find<QAbstractButton>(screen, "btnDelete").text(), "Delete Instrment");
    EXPECT_EQ(Find<QAbstractButton>(screen, "btnClear").text(), "Clear Instrment List");
    EXPECT_EQ(Find<QAbstractButton>(screen, "btnSave").text(), "Save Instrment Data");
    EXPECT_EQ(Find<QAbstractButton>(screen, "btnReturn").text(), "Return");
    EXPECT_EQ(ComboEntries(screen, "cmbAddressType"), (Texts{"GP-IB", "GPIO", "SERIAL", "NONE"}));
    EXPECT_EQ(ComboEntries(screen, "cmbCalMonth"),
              (Texts{"", "JAN", "FEB", "MAR", "APR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT",
                     "NOV", "DEC"}));
    EXPECT_EQ(ComboEntries(screen, "cmbSerial"), Texts{});
    Texts labels;
    for (const QLabel* label : screen.findChildren<QLabel*>()) {
      labels.push_back(label->text().toStdString());
    }
    for (const char* text :
         {"MODEL NUMBER", "SERIAL NUMBER", "ADDRESS TYPE", "ADDRESS", "STATION", "OPTIONS",
          "AVAILABILITY", "CAL DUE DATE", "ASSET", "TRACE", "COMMENT", "CAL DATA", "Year"}) {
      EXPECT_EQ(std::count(labels.begin(), labels.end(), text), 1) << text;
    }
    Click(screen, "btnReturn");
  });
}

TEST_F(StationInstruments, AnEmptyStationShowsThePlaceholder) {
  AtStation([&](frmStationModelList& screen) {
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    EXPECT_FALSE(ListIsEnabled(screen));
    EXPECT_FALSE(CanSave(screen));
    EXPECT_FALSE(tree_.Exists(kIndex));
    Click(screen, "btnReturn");
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Read(kIndex), "INDEX\r\n");
}

TEST_F(StationInstruments, InstrumentsStandInTheOrderOfTheSystem) {
  for (const char* name : {"PX13A", "PX12A", "RT 730.A", "b", "A10"}) {
    WriteInstrument(name, "x");
  }
  tree_.MakeFolders(R"(c:\stations\ST1\folder)");
  tree_.Write(kIndex, "of an earlier day, and longer than the new one\r\n\r\n\r\n\r\n\r\n\r\n");
  Texts expected;
  for (const std::string& name : NamesInOrder(kStation)) {
    if (name != "INDEX" && name != "folder") {
      expected.push_back(name);
    }
  }
  ASSERT_EQ(expected.size(), 5U);
  AtStation([&](frmStationModelList& screen) {
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), expected);
    EXPECT_TRUE(ListIsEnabled(screen));
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kIndex), Lines(expected) + "INDEX\r\n");
}

// ---- Choosing an instrument.

TEST_F(StationInstruments, AChosenInstrumentIsShown) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    Fill(screen, "txtData_12", "as it was");
    EXPECT_FALSE(CanSave(screen));
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(ShownFields(screen),
              (Texts{"PX12A", "3318A12345", "GP-IB", "13", "rack 2", "001", "yes", "5", "MAR",
                     "2002", "A-77", "lab 4", "own", "as it was"}));
    EXPECT_FALSE(CanSave(screen));
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, AClickOnTheShownInstrumentReadsItAgain) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_2", "99");
    EXPECT_TRUE(CanSave(screen));
    WriteInstrument({.address = "14"});
    Settle();
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(TextOf(screen, "txtData_2"), "14");
    EXPECT_FALSE(CanSave(screen));
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, TheFormsOfAFileAreShown) {
  WriteInstrument("OLD", Lines({"MODEL NUMBER OLD", "ADDRESS TYPE QZ-IB", "COMMENT two  blanks",
                                "CAL DUE DATE", "CAL DATA x"}));
  WriteInstrument("FREE", Lines({"MODEL NUMBER FREE", "ADDRESS TYPE RS232", "COMMENT a,b",
                                 "CAL DUE DATE 05 MAR 2002", "CAL DATA x"}));
  WriteInstrument("NONE", Lines({"MODEL NUMBER NONE", "ADDRESS TYPE ", "CAL DATA x"}));
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "OLD");
    EXPECT_EQ(ComboText(screen, "cmbAddressType"), "GP-IB");
    EXPECT_EQ(TextOf(screen, "txtData_11"), "two blanks");
    EXPECT_EQ(TextOf(screen, "txtData_8"), "1");
    EXPECT_EQ(ComboText(screen, "cmbCalMonth"), "1");
    EXPECT_EQ(TextOf(screen, "txtData_6"), "2000");
    ClickEntry(screen, "LstInstrment", "FREE");
    EXPECT_EQ(ComboText(screen, "cmbAddressType"), "RS232");
    EXPECT_EQ(TextOf(screen, "txtData_11"), "a");
    EXPECT_EQ(TextOf(screen, "txtData_8"), "5");
    EXPECT_EQ(ComboText(screen, "cmbCalMonth"), "MAR");
    EXPECT_EQ(TextOf(screen, "txtData_6"), "2002");
    ClickEntry(screen, "LstInstrment", "NONE");
    EXPECT_EQ(ComboText(screen, "cmbAddressType"), "NONE");
    EXPECT_EQ(TextOf(screen, "txtData_11"), "a") << "what the file does not hold stays";
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, TheMonthOfAFileWithoutADateIsNoDate) {
  WriteInstrument("OLD", Lines({"MODEL NUMBER OLD", "CAL DUE DATE", "CAL DATA x"}));
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "OLD");
    Fill(screen, "txtData_11", "x");
    ExpectInvalidDate();
    Click(screen, "btnSave");
    EXPECT_TRUE(CanSave(screen));
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, AnEmptyFileLeavesEverything) {
  WriteInstrument();
  WriteInstrument("EMPTY", "");
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    const Texts before = ShownFields(screen);
    ClickEntry(screen, "LstInstrment", "EMPTY");
    EXPECT_EQ(ShownFields(screen), before);
    EXPECT_FALSE(CanSave(screen));
    Fill(screen, "txtData_11", "typed");
    EXPECT_TRUE(CanSave(screen));
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_FALSE(CanSave(screen));
    Fill(screen, "txtData_11", "typed");
    ClickEntry(screen, "LstInstrment", "EMPTY");
    EXPECT_EQ(TextOf(screen, "txtData_11"), "typed");
    EXPECT_TRUE(CanSave(screen)) << "the button keeps its state";
    LeaveUnsaved(screen);
  });
}

// ---- The Save button.

TEST_F(StationInstruments, BeforeAnInstrumentIsChosenNoEditCanBeSaved) {
  AtStation([&](frmStationModelList& screen) {
    for (const char* box : kBoxes) {
      Fill(screen, box, "7");
    }
    Choose(screen, "cmbAddressType", "GPIO");
    Choose(screen, "cmbCalMonth", "MAR");
    EXPECT_FALSE(CanSave(screen));
    Click(screen, "btnReturn");  // nothing is asked
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Names(kStation), Texts{"INDEX"});
}

TEST_F(StationInstruments, EveryEditOfAChosenInstrumentCanBeSaved) {
  WriteInstrument();
  WriteInstrument({.model = "PX13A"});
  WriteCalFile("PX12A", "SN12345");
  std::vector<std::function<void(frmStationModelList&)>> edits = {
      [](frmStationModelList& screen) { Choose(screen, "cmbAddressType", "SERIAL"); },
      [](frmStationModelList& screen) { FillCombo(screen, "cmbAddressType", "RS232"); },
      [](frmStationModelList& screen) { Choose(screen, "cmbCalMonth", "APR"); },
      [](frmStationModelList& screen) { FillCombo(screen, "cmbSerial", "77"); },
      [](frmStationModelList& screen) {
        Click(Find<UpDown>(screen, "UpDown1"), "up");
        EXPECT_EQ(TextOf(screen, "txtData_8"), "6");
      },
      [](frmStationModelList& screen) {
        Click(Find<UpDown>(screen, "UpDown3"), "down");
        EXPECT_EQ(TextOf(screen, "txtData_6"), "2001");
      }};
  for (const char* box : kBoxes) {
    edits.emplace_back([box](frmStationModelList& screen) { Fill(screen, box, "7"); });
  }
  AtStation([&](frmStationModelList& screen) {
    for (std::size_t i = 0; i < edits.size(); ++i) {
      SCOPED_TRACE(i);
      ClickEntry(screen, "LstInstrment", "PX13A");
      ClickEntry(screen, "LstInstrment", "PX12A");
      EXPECT_FALSE(CanSave(screen));
      edits[i](screen);
      EXPECT_TRUE(CanSave(screen));
    }
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
}

TEST_F(StationInstruments, LookingThroughTheFieldsChangesNothing) {
  WriteInstrument();  // its comment, option and due date differ from those of the calibration
  WriteCalFile("PX12A", "SN12345", {.dueDate = "20051231"});
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    const Texts before = ShownFields(screen);
    EXPECT_EQ(before[1], "3318A12345");
    Find<QLineEdit>(screen, "txtData_0").setFocus();
    for (int i = 0; i < 20; ++i) {
      Press(Qt::Key_Tab);
    }
    EXPECT_EQ(ShownFields(screen), before);
    EXPECT_FALSE(CanSave(screen));
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, TheKeysGoOnFromTheEntryThatIsShown) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Find<QComboBox>(screen, "cmbCalMonth").setFocus();
    Press(Qt::Key_Down);
    EXPECT_EQ(ComboText(screen, "cmbCalMonth"), "APR");
    Find<QComboBox>(screen, "cmbAddressType").setFocus();
    Press(Qt::Key_Down);
    EXPECT_EQ(ComboText(screen, "cmbAddressType"), "GPIO");
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, FreeTextIsKeptAsItIsTyped) {
  WriteInstrument();
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    FillCombo(screen, "cmbAddressType", "gp");
    FillCombo(screen, "cmbSerial", "3318A");
    Press(Qt::Key_Tab);
    Click(screen, "btnSave");
    EXPECT_FALSE(CanSave(screen));
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"),
            InstrumentFile({.serial = "3318A", .addressType = "gp", .calData = ""}).Bytes());
}

// ---- Saving.

TEST_F(StationInstruments, SavingWritesTheInstrumentAndNoIndex) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_2", "14");
    Fill(screen, "txtData_8", " 05 ");
    Choose(screen, "cmbCalMonth", "DEC");
    Fill(screen, "txtData_6", "2003");
    Fill(screen, "txtData_12", "other file");
    Click(screen, "btnSave");
    EXPECT_FALSE(CanSave(screen));
    EXPECT_EQ(ReadInstrument("PX12A"),
              InstrumentFile({.address = "14", .dueDate = "05 DEC 2003", .calData = "other file"})
                  .Bytes());
    EXPECT_EQ(tree_.Names(kStation), Texts{"PX12A"});
    LeaveUnsaved(screen);  // asks although everything is saved
  });
}

TEST_F(StationInstruments, ANewModelTextIsANewFileThatTheListDoesNotShow) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_0", "PX99");
    Click(screen, "btnSave");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
    EXPECT_EQ(tree_.Names(kStation), (Texts{"PX12A", "PX99"}));
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
  EXPECT_EQ(ReadInstrument("PX99"), InstrumentFile({.model = "PX99", .calData = ""}).Bytes());
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nPX99\r\nINDEX\r\n");
}

TEST_F(StationInstruments, ADateThatDoesNotExistIsNotSaved) {
  WriteInstrument();
  struct Date {
    const char* day;
    const char* month;
    const char* year;
  };
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    for (const Date& date :
         {Date{"31", "APR", "2002"}, Date{"29", "FEB", "2001"}, Date{"0", "JAN", "2000"},
          Date{"32", "JAN", "2000"}, Date{"", "JAN", "2000"}, Date{"1", "", "2000"},
          Date{"x", "MAR", "2000"}, Date{"1", "mar", "2000"}}) {
      Fill(screen, "txtData_8", date.day);
      FillCombo(screen, "cmbCalMonth", date.month);
      Fill(screen, "txtData_6", date.year);
      EXPECT_TRUE(CanSave(screen));
      ExpectInvalidDate();
      Click(screen, "btnSave");
      EXPECT_TRUE(CanSave(screen));
      EXPECT_EQ(TextOf(screen, "txtData_8"), date.day);
    }
    EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
    LeaveUnsaved(screen);
  });
}

// ---- Leaving.

TEST_F(StationInstruments, ReturnAsksWhetherToSave) {
  const std::vector<std::function<void(frmStationModelList&)>> ways = {
      [](frmStationModelList& screen) { Click(screen, "btnReturn"); },
      [](frmStationModelList&) { Press(Qt::Key_Escape); },
      [](frmStationModelList& screen) { screen.close(); }};
  for (std::size_t way = 0; way < ways.size(); ++way) {
    SCOPED_TRACE(way);
    for (const auto answer : {QMessageBox::Yes, QMessageBox::No}) {
      std::filesystem::remove(tree_.Native(kIndex));
      WriteInstrument();
      AtStation([&](frmStationModelList& screen) {
        ClickEntry(screen, "LstInstrment", "PX12A");
        Fill(screen, "txtData_11", "typed");
        ExpectReturnQuestion(QMessageBox::Cancel);
        ways[way](screen);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(TextOf(screen, "txtData_11"), "typed");
        EXPECT_EQ(tree_.Names(kStation), Texts{"PX12A"});
        ExpectReturnQuestion(answer);
        ways[way](screen);
        EXPECT_FALSE(screen.isVisible());
      });
      EXPECT_EQ(ReadInstrument("PX12A"),
                answer == QMessageBox::Yes
                    ? InstrumentFile({.comment = "typed", .calData = ""}).Bytes()
                    : InstrumentFile().Bytes());
      EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
    }
  }
}

TEST_F(StationInstruments, ReturnAsksAlsoWhenNothingWasChanged) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, ReturnWithADateThatDoesNotExistLeavesWithoutSaving) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_8", "31");
    Choose(screen, "cmbCalMonth", "APR");
    ExpectReturnQuestion(QMessageBox::Yes);
    ExpectInvalidDate();
    Click(screen, "btnReturn");
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
}

// ---- Deleting and clearing.

TEST_F(StationInstruments, OneInstrumentIsDeleted) {
  WriteInstrument({.model = "TRASHED2"});
  WriteInstrument({.model = "PX13A"});
  AtStation([&](frmStationModelList& screen) {
    questions_.ExpectNotice("No model is selected.");
    Click(screen, "btnDelete");
    ClickEntry(screen, "LstInstrment", "TRASHED2");
    Delete(screen, "TRASHED2", QMessageBox::Cancel);
    EXPECT_EQ(tree_.Names(kStation), (Texts{"PX13A", "TRASHED2"}));
    EXPECT_EQ(TextOf(screen, "txtData_0"), "TRASHED2");
    FillCombo(screen, "cmbSerial", "77");
    Delete(screen, "TRASHED2", QMessageBox::Ok);
    EXPECT_EQ(tree_.Names(kStation), Texts{"PX13A"});
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX13A"});
    EXPECT_EQ(ShownFields(screen), kNoFields);
    questions_.ExpectNotice("No model is selected.");
    Click(screen, "btnDelete");
    LeaveUnsaved(screen);
  });
  EXPECT_TRUE(QFile::exists(QDir::homePath() + "/data/Trash/files/TRASHED2"));
  EXPECT_EQ(tree_.Read(kIndex), "PX13A\r\nINDEX\r\n");
}

TEST_F(StationInstruments, DeletingTheLastInstrumentShowsThePlaceholder) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Delete(screen, "PX12A", QMessageBox::Ok);
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    EXPECT_FALSE(ListIsEnabled(screen));
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Read(kIndex), "INDEX\r\n");
}

TEST_F(StationInstruments, TheModelTextSaysWhatIsDeleted) {
  WriteInstrument();
  WriteInstrument({.model = "PX13A"});
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_0", "PX13A");
    Delete(screen, "PX13A", QMessageBox::Ok);
    EXPECT_EQ(tree_.Names(kStation), Texts{"PX12A"});
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, ClearingDeletesEveryFileOfTheStation) {
  WriteInstrument();
  WriteInstrument({.model = "PX13A"});
  tree_.Write(kIndex, "PX12A\r\nINDEX\r\n");
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_11", "typed");
    ExpectClearQuestion(QMessageBox::No);
    Click(screen, "btnClear");
    EXPECT_EQ(tree_.Names(kStation), (Texts{"INDEX", "PX12A", "PX13A"}));
    EXPECT_EQ(TextOf(screen, "txtData_11"), "typed");
    EXPECT_TRUE(CanSave(screen));
    Clear(screen);
    EXPECT_EQ(tree_.Names(kStation), Texts{});
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    EXPECT_FALSE(ListIsEnabled(screen));
    EXPECT_FALSE(CanSave(screen));
    for (const char* box : kBoxes) {
      EXPECT_EQ(TextOf(screen, box), "") << box;
    }
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Names(kStation), Texts{"INDEX"});
  EXPECT_EQ(tree_.Read(kIndex), "INDEX\r\n");
}

// ---- Adding.

TEST_F(StationInstruments, WithoutCalibrationDataNothingIsAdded) {
  tree_.MakeFolders(R"(c:\calfactors\EMPTY)");
  AtStation([&](frmStationModelList& screen) {
    questions_.Expect({.text = "There is no equipment calibration data.\r\n"
                               "It's not possible to add it.",
                       .title = "No data is availval."},
                      QMessageBox::Ok);
    Click(screen, "btnAdd");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    Click(screen, "btnReturn");  // nothing is asked
  });
}

TEST_F(StationInstruments, ACancelledPickerAddsNothing) {
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    user_.At<frmStationGetInstr>([](frmStationGetInstr& picker) {
      ClickEntry(picker, "LstInstrment", "PX12A");
      ClickEntry(picker, "lstSerialNumber", "3318A12345");
      Click(picker, "btnCancel");
    });
    Click(screen, "btnAdd");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    EXPECT_EQ(ShownFields(screen), kNoFields);
    Click(screen, "btnReturn");  // nothing is asked
  });
}

TEST_F(StationInstruments, AnInstrumentIsAddedFromTheCalibrationData) {
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "3318A12345");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
    EXPECT_TRUE(ListIsEnabled(screen));
    EXPECT_EQ(ShownFields(screen), (Texts{"PX12A", "3318A12345", "NONE", "", "", "", "", "5", "MAR",
                                          "2002", "", "", "factory", ""}));
    EXPECT_TRUE(CanSave(screen)) << "what was added is not saved yet";
    EXPECT_EQ(tree_.Names(kStation), Texts{});
    ExpectReturnQuestion(QMessageBox::Yes);
    Click(screen, "btnReturn");
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile({.addressType = "NONE",
                                                     .address = "",
                                                     .station = "",
                                                     .options = "",
                                                     .availability = "",
                                                     .asset = "",
                                                     .trace = "",
                                                     .comment = "factory",
                                                     .calData = ""})
                                         .Bytes());
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
}

TEST_F(StationInstruments, AnotherSerialNumberBringsItsOwnData) {
  WriteCalFile("PX12A", "SN1", {.serial = "1", .dueDate = "20020305", .comment = "one"});
  WriteCalFile("PX12A", "SN2", {.serial = "2", .dueDate = "20031231", .comment = "two"});
  tree_.Write(R"(c:\calfactors\PX12A\SN3)", "QZ PX12A Opt001\r\n3\r\n28FEB2001\r\n");
  WriteCalFile("PX12A", "SN4", {.serial = "4", .dueDate = "00000000", .comment = "four"});
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "1");
    Texts serials = ComboEntries(screen, "cmbSerial");
    std::sort(serials.begin(), serials.end());
    EXPECT_EQ(serials, (Texts{"1", "2", "3", "4"}));
    EXPECT_EQ(ComboText(screen, "cmbSerial"), "1");
    Choose(screen, "cmbSerial", "2");
    EXPECT_TRUE(CanSave(screen));
    EXPECT_EQ(ShownFields(screen), (Texts{"PX12A", "2", "NONE", "", "", "", "", "31", "DEC", "2003",
                                          "", "", "two", ""}));
    Choose(screen, "cmbSerial", "3");
    EXPECT_EQ(ShownFields(screen), (Texts{"PX12A", "3", "NONE", "", "", "001", "", "28", "FEB",
                                          "2002", "", "", "", ""}));
    Choose(screen, "cmbSerial", "4");
    EXPECT_EQ(ShownFields(screen), (Texts{"PX12A", "4", "NONE", "", "", "", "", "1", "JAN", "2000",
                                          "", "", "four", ""}));
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, APickerThatAddsNothingLeavesTheSerialNumbersTheirData) {
  WriteInstrument({.model = "PX13A", .serial = "9"});
  WriteCalFile("PX12A", "SN1", {.serial = "1", .dueDate = "20020305", .comment = "one"});
  WriteCalFile("PX13A", "SN8",
               {.model = "PX13A", .serial = "8", .dueDate = "20031231", .comment = "eight"});
  WriteInstrument({.model = "PX12A", .serial = "1"});
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX13A");
    user_.At<frmStationGetInstr>([](frmStationGetInstr& picker) {
      ClickEntry(picker, "LstInstrment", "PX12A");
      ClickEntry(picker, "lstSerialNumber", "1");
      Click(picker, "btnCancel");
    });
    Click(screen, "btnAdd");
    questions_.ExpectNotice("This instrment is already exist.");
    Add(screen, "PX12A", "1");
    Choose(screen, "cmbSerial", "8");
    EXPECT_EQ(ShownFields(screen), (Texts{"PX13A", "8", "GP-IB", "13", "rack 2", "", "yes", "31",
                                          "DEC", "2003", "A-77", "lab 4", "eight", ""}));
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, ARowWithoutADueDateIsTheFirstOfJanuary) {
  const Texts dueDates = {"00000305", "20020005", "20020300", "00000000", ""};
  for (const std::string& dueDate : dueDates) {
    SCOPED_TRACE(dueDate);
    WriteCalFile("PX12A", "SN12345", {.dueDate = dueDate});
    AtStation([&](frmStationModelList& screen) {
      Add(screen, "PX12A", "3318A12345");
      EXPECT_EQ(TextOf(screen, "txtData_8"), "1");
      EXPECT_EQ(ComboText(screen, "cmbCalMonth"), "JAN");
      EXPECT_EQ(TextOf(screen, "txtData_6"), "2000");
      LeaveUnsaved(screen);
    });
  }
}

TEST_F(StationInstruments, AListedModelIsNotAddedAgain) {
  WriteInstrument();
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    questions_.ExpectNotice("This instrment is already exist.");
    Add(screen, "PX12A", "3318A12345");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
    EXPECT_EQ(ShownFields(screen), kNoFields);
    Click(screen, "btnReturn");  // nothing is asked
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
}

TEST_F(StationInstruments, TheListNamesAModelWithoutItsMakerAndOption) {
  WriteCalFile("PX12A", "SN1", {.model = "QZ PX12A", .serial = "1"});
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "1");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
    EXPECT_EQ(TextOf(screen, "txtData_0"), "QZ PX12A") << "as the chosen serial number's file";
    LeaveUnsaved(screen);
  });
  WriteCalFile("PX13A", "SN2", {.model = "QZ PX13A Opt001", .serial = "2"});
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX13A", "2");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX13A"});
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, AModelThatIsListedWithoutItsMakerIsNotAddedAgain) {
  WriteCalFile("PX12A", "SN1", {.model = "QZ PX12A", .serial = "1"});
  WriteCalFile("PX12A", "SN2", {.model = "QZ PX12A Opt001", .serial = "2"});
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "1");
    const Texts shown = ShownFields(screen);
    for (const char* serial : {"1", "2"}) {
      questions_.ExpectNotice("This instrment is already exist.");
      Add(screen, "PX12A", serial);
      EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
      EXPECT_EQ(ShownFields(screen), shown);
    }
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, ARowThatIsNotThereIsTold) {
  WriteCalFile("PX12A", "SN1", {.model = "PX77", .serial = "1"});
  AtStation([&](frmStationModelList& screen) {
    questions_.ExpectError({"The chosen instrument is not in the calibration data any more"});
    Add(screen, "PX12A", "1");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    EXPECT_EQ(ShownFields(screen), kNoFields);
    EXPECT_EQ(tree_.Names(kStation), Texts{});
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kIndex), "INDEX\r\n");
}

TEST_F(StationInstruments, ARowThatIsNotThereLeavesTheShownInstrument) {
  WriteInstrument({.model = "PX13A", .serial = "9"});
  WriteCalFile("PX13A", "SN9", {.model = "PX13A", .serial = "9", .comment = "nine"});
  WriteCalFile("PX13A", "SN8", {.model = "PX13A", .serial = "8", .comment = "eight"});
  WriteCalFile("PX12A", "SN1", {.model = "PX77", .serial = "1"});
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX13A");
    Fill(screen, "txtData_11", "typed");
    Texts shown = ShownFields(screen);
    questions_.ExpectError({"The chosen instrument is not in the calibration data any more"});
    Add(screen, "PX12A", "1");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX13A"});
    EXPECT_EQ(ShownFields(screen), shown);
    // Its serial numbers still have their data.
    Choose(screen, "cmbSerial", "8");
    EXPECT_EQ(TextOf(screen, "txtData_11"), "eight");
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Read(kIndex), "PX13A\r\nINDEX\r\n");
}

TEST_F(StationInstruments, ATypedSerialNumberReplacesNothingElse) {
  WriteCalFile("PX12A", "SN1", {.serial = "1", .comment = "one"});
  WriteCalFile("PX12A", "SN2", {.serial = "2", .comment = "two"});
  WriteInstrument({.serial = "1"});
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    FillCombo(screen, "cmbSerial", "2");
    EXPECT_TRUE(CanSave(screen));
    Press(Qt::Key_Tab);
    EXPECT_EQ(ShownFields(screen), (Texts{"PX12A", "2", "GP-IB", "13", "rack 2", "001", "yes", "5",
                                          "MAR", "2002", "A-77", "lab 4", "own", ""}));
    Fill(screen, "txtData_12", "file");
    Click(screen, "btnSave");
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile({.serial = "2"}).Bytes());
}

TEST_F(StationInstruments, TheWheelChangesNoListThatDoesNotHaveTheFocus) {
  WriteCalFile("PX12A", "SN1", {.serial = "1", .comment = "one"});
  WriteCalFile("PX12A", "SN2", {.serial = "2", .comment = "two"});
  WriteInstrument({.serial = "1"});
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    const Texts shown = ShownFields(screen);
    for (const char* name : {"cmbSerial", "cmbAddressType", "cmbCalMonth"}) {
      auto& combo = Find<QComboBox>(screen, name);
      const QPointF centre = combo.rect().center();
      for (const int turn : {-120, -120, 120}) {
        QWheelEvent wheel(centre, combo.mapToGlobal(centre), {}, {0, turn}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&combo, &wheel);
      }
    }
    EXPECT_EQ(ShownFields(screen), shown);
    EXPECT_FALSE(CanSave(screen));
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, AFileWithoutASerialNumberShowsNone) {
  WriteInstrument({.model = "PX13A", .serial = "9"});
  WriteInstrument("PX12A", Lines({"MODEL NUMBER PX12A", "ADDRESS 5", "CAL DATA x"}));
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX13A");
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(TextOf(screen, "txtData_0"), "PX12A");
    EXPECT_EQ(ComboText(screen, "cmbSerial"), "");
    EXPECT_EQ(TextOf(screen, "txtData_2"), "5");
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, ChoosingAnInstrumentFillsItsSerialNumbers) {
  WriteInstrument();
  WriteInstrument({.model = "PX13A", .serial = "9"});
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(ComboEntries(screen, "cmbSerial"), Texts{"3318A12345"});
    ClickEntry(screen, "LstInstrment", "PX13A");
    EXPECT_EQ(ComboEntries(screen, "cmbSerial"), Texts{});
    EXPECT_EQ(ComboText(screen, "cmbSerial"), "9");
    LeaveUnsaved(screen);
  });
}

// ---- What the list marks and what the fields show.

/// The one entry that the list marks, as text.
std::string Marked(QWidget& screen) {
  const auto selected = Find<QListWidget>(screen, "LstInstrment").selectedItems();
  return selected.isEmpty() ? "" : selected.first()->text().toStdString();
}

/// Whether an entry is marked as not saved, for the eye and for a screen reader.
bool IsMarkedUnsaved(QWidget& screen, const QString& name) {
  const auto found = Find<QListWidget>(screen, "LstInstrment").findItems(name, Qt::MatchExactly);
  EXPECT_EQ(found.size(), 1) << name.toStdString();
  const QListWidgetItem* entry = found.value(0);
  const bool isMarked = entry != nullptr && !entry->icon().isNull();
  EXPECT_EQ(isMarked, entry->data(Qt::AccessibleTextRole).toString() == name + ", not saved");
  return isMarked;
}

TEST_F(StationInstruments, AnAddedInstrumentIsMarkedUntilItIsSaved) {
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "3318A12345");
    EXPECT_EQ(Marked(screen), "PX12A");
    EXPECT_TRUE(IsMarkedUnsaved(screen, "PX12A"));
    Click(screen, "btnSave");
    EXPECT_FALSE(IsMarkedUnsaved(screen, "PX12A"));
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
}

TEST_F(StationInstruments, AnAddedInstrumentIsShownAgainAsItWasLeft) {
  WriteCalFile("PX12A", "SN12345");
  WriteInstrument({.model = "PX13A", .serial = "9"});
  WriteInstrument({.model = "PX99", .serial = "7"});
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "3318A12345");
    Fill(screen, "txtData_2", "17");
    const Texts shown = ShownFields(screen);
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(ShownFields(screen), shown) << "there is no file to read again";
    ClickEntry(screen, "LstInstrment", "PX13A");
    EXPECT_EQ(TextOf(screen, "txtData_0"), "PX13A");
    EXPECT_FALSE(CanSave(screen));
    // Another one is deleted meanwhile, which reads the list again.
    Delete(screen, "PX13A", QMessageBox::Ok);
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), (Texts{"PX99", "PX12A"}));
    EXPECT_EQ(Marked(screen), "");
    EXPECT_TRUE(IsMarkedUnsaved(screen, "PX12A"));
    ClickEntry(screen, "LstInstrment", "PX99");
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(ShownFields(screen), shown);
    EXPECT_EQ(ComboEntries(screen, "cmbSerial"), Texts{"3318A12345"});
    EXPECT_TRUE(CanSave(screen));
    ClickEntry(screen, "LstInstrment", "PX99");
    ExpectReturnQuestion(QMessageBox::Cancel);
    Click(screen, "btnReturn");
    EXPECT_EQ(
        questions_.details.back(),
        "Added and not saved either way: PX12A. Choose Cancel, and save each of them, to keep "
        "them.");
    ClickEntry(screen, "LstInstrment", "PX12A");
    ExpectReturnQuestion(QMessageBox::Yes);
    Click(screen, "btnReturn");
    EXPECT_EQ(questions_.details.back(), "");
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile({.addressType = "NONE",
                                                     .address = "17",
                                                     .station = "",
                                                     .options = "",
                                                     .availability = "",
                                                     .asset = "",
                                                     .trace = "",
                                                     .comment = "factory",
                                                     .calData = ""})
                                         .Bytes());
}

TEST_F(StationInstruments, DeletingAnAddedInstrumentTakesItAndNoOtherOffTheList) {
  WriteCalFile("PX12A", "SN12345");
  WriteInstrument({.model = "PX13A"});
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "3318A12345");
    ClickEntry(screen, "LstInstrment", "PX13A");
    ClickEntry(screen, "LstInstrment", "PX12A");
    Delete(screen, "PX12A", QMessageBox::Ok);
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX13A"});
    EXPECT_EQ(ShownFields(screen), kNoFields);
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Names(kStation), (Texts{"INDEX", "PX13A"}));
  EXPECT_EQ(tree_.Read(kIndex), "PX13A\r\nINDEX\r\n");
}

TEST_F(StationInstruments, DeletingAnAddedInstrumentLeavesTheFileThatSomebodyElseSaved) {
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "3318A12345");
    WriteInstrument();
    Delete(screen, "PX12A", QMessageBox::Ok);
    EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"}) << "the one of the file";
    EXPECT_FALSE(IsMarkedUnsaved(screen, "PX12A"));
    EXPECT_EQ(ShownFields(screen), kNoFields);
    ClickEntry(screen, "LstInstrment", "PX12A");
    Delete(screen, "PX12A", QMessageBox::Ok);
    EXPECT_EQ(tree_.Names(kStation), Texts{}) << "it is deleted once it was read";
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, DeletingAnotherFileKeepsWhatWasAddedAndNotSaved) {
  WriteCalFile("RT520A", "SN1", {.model = "RT520A", .serial = "1"});
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "RT520A", "1");
    Fill(screen, "txtData_2", "17");
    Fill(screen, "txtData_0", "PX12A");
    const Texts shown = ShownFields(screen);
    Delete(screen, "PX12A", QMessageBox::Ok);
    EXPECT_EQ(tree_.Names(kStation), Texts{});
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"RT520A"});
    EXPECT_TRUE(IsMarkedUnsaved(screen, "RT520A"));
    EXPECT_EQ(ShownFields(screen), kNoFields);
    ClickEntry(screen, "LstInstrment", "RT520A");
    EXPECT_EQ(ShownFields(screen), shown);
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, TheDeleteKeyMeansTheMarkedInstrumentAfterAFailedRead) {
  WriteInstrument();
  WriteInstrument("EMPTY", "");
  AtStation([&](frmStationModelList& screen) {
    auto& list = Find<QListWidget>(screen, "LstInstrment");
    ClickEntry(screen, "LstInstrment", "PX12A");
    ClickEntry(screen, "LstInstrment", "EMPTY");
    ASSERT_EQ(list.currentItem()->text(), "EMPTY");
    ExpectDeleteInstrumentQuestion("PX12A", QMessageBox::Cancel);
    Press(Qt::Key_Delete);
    EXPECT_EQ(list.currentItem()->text(), "PX12A") << "what was asked about";
    EXPECT_EQ(Marked(screen), "PX12A");
    ExpectDeleteInstrumentQuestion("PX12A", QMessageBox::Ok);
    Press(Qt::Key_Delete);
    EXPECT_EQ(tree_.Names(kStation), Texts{"EMPTY"});
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, AfterAFailedReadTheListMarksWhatTheFieldsShow) {
  WriteInstrument();
  WriteInstrument({.model = "PX13A"});
  WriteInstrument("EMPTY", "");
  AtStation([&](frmStationModelList& screen) {
    auto& list = Find<QListWidget>(screen, "LstInstrment");
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_2", "typed");
    std::filesystem::remove(tree_.Native(R"(c:\stations\ST1\PX13A)"));
    questions_.ExpectError({"does not exist", R"(c:\stations\ST1\PX13A)"});
    ClickEntry(screen, "LstInstrment", "PX13A");
    EXPECT_EQ(Marked(screen), "PX12A");
    EXPECT_EQ(list.currentItem()->text(), "PX13A") << "the keys go on from there";
    ClickEntry(screen, "LstInstrment", "EMPTY");
    EXPECT_EQ(Marked(screen), "PX12A");
    Settle();
    EXPECT_EQ(Find<QLabel>(screen, "lblNotice").text(),
              "The file \"EMPTY\" is empty: nothing was read from it.");
    EXPECT_EQ(TextOf(screen, "txtData_2"), "typed");
    EXPECT_TRUE(CanSave(screen));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier,
                      list.visualItemRect(list.selectedItems().first()).center());
    EXPECT_EQ(Marked(screen), "PX12A");
    Delete(screen, "PX12A", QMessageBox::Ok);
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Names(kStation), (Texts{"EMPTY", "INDEX"}));
}

TEST_F(StationInstruments, FieldsOfAnotherFileThanTheMarkedOneAreReported) {
  WriteInstrument("COPY", InstrumentFile().Bytes());
  AtStation([&](frmStationModelList& screen) {
    auto& notice = Find<QLabel>(screen, "lblNotice");
    ClickEntry(screen, "LstInstrment", "COPY");
    Settle();
    EXPECT_EQ(notice.text(),
              "The fields mean the file \"PX12A\", not \"COPY\", which the list marks: Save and "
              "Delete act on \"PX12A\".");
    Fill(screen, "txtData_0", "COPY");
    Settle();
    EXPECT_EQ(notice.text(), "");
    LeaveUnsaved(screen);
  });
}

// ---- What will not be read back.

TEST_F(StationInstruments, AValueThatWillBeReadBackDifferentlyIsMarkedUntilItIsCorrected) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    auto& notice = Find<QLabel>(screen, "lblNotice");
    auto& comment = Find<QLineEdit>(screen, "txtData_11");
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_12", "a, b");
    Settle();
    EXPECT_EQ(notice.text(), "") << "CAL DATA is never read back";
    Fill(screen, "txtData_11", "a, b");
    Settle();
    const QString why =
        "COMMENT will be read back as \"a\" only: a comma ends it. Write it without a comma.";
    EXPECT_EQ(notice.text(), why);
    EXPECT_EQ(MarkOf(&comment), why);
    EXPECT_TRUE(comment.hasFocus());
    FillCombo(screen, "cmbSerial", "1,2");
    Settle();
    EXPECT_FALSE(MarkOf(Find<QComboBox>(screen, "cmbSerial").lineEdit()).isEmpty());
    Click(screen, "btnSave");
    Settle();
    EXPECT_EQ(MarkOf(&comment), why) << "it stays until it is edited";
    Fill(screen, "txtData_11", "a b");
    FillCombo(screen, "cmbSerial", "12");
    Settle();
    EXPECT_EQ(notice.text(), "");
    EXPECT_EQ(MarkOf(&comment), "");
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"),
            InstrumentFile({.serial = "1,2", .comment = "a, b", .calData = "a, b"}).Bytes());
}

TEST_F(StationInstruments, ADueDateThatIsWrittenAsItIsTypedIsMarked) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    auto& notice = Find<QLabel>(screen, "lblNotice");
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_8", "5 x");
    Settle();
    EXPECT_FALSE(MarkOf(&Find<QLineEdit>(screen, "txtData_8")).isEmpty());
    Click(screen, "btnSave");
    EXPECT_TRUE(Contains(ReadInstrument("PX12A"), "CAL DUE DATE 5 x MAR 2002\r\n"));
    Fill(screen, "txtData_8", "5");
    Fill(screen, "txtData_6", "");
    Settle();
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(screen, "txtData_8")), "");
    EXPECT_FALSE(MarkOf(&Find<QLineEdit>(screen, "txtData_6")).isEmpty());
    EXPECT_EQ(notice.text(),
              "CAL DUE DATE will be read back as \"5 MAR 0\". Write its day and its "
              "year as numbers only.");
    Click(screen, "btnSave");
    EXPECT_TRUE(Contains(ReadInstrument("PX12A"), "CAL DUE DATE 5 MAR \r\n"));
    LeaveUnsaved(screen);
  });
}

}  // namespace
}  // namespace tarvell
