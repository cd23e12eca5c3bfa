// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QtWidgets>

#include "screens/station/StationFixture.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/UpDown.h"
#include "support/KeptFiles.h"
#include "support/ScreenFaults.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

const std::vector<const char*> kBoxes = {"txtData_0",  "txtData_2",  "txtData_3", "txtData_4",
                                         "txtData_5",  "txtData_6",  "txtData_8", "txtData_9",
                                         "txtData_10", "txtData_11", "txtData_12"};

class StationInstruments : public StationStage {
 protected:
  StationInstruments() { tree_.MakeFolders(kStation); }

  static bool ListIsEnabled(frmStationModelList& screen) {
    return Find<QListWidget>(screen, "LstInstrment").isEnabled();
  }
  /// The selected entry of the list.
  static std::string Selected(QWidget& screen) {
    const auto selected = Find<QListWidget>(screen, "LstInstrment").selectedItems();
    return selected.isEmpty() ? "" : selected.first()->text().toStdString();
  }
  /// Whether an entry is marked as not saved, both by its icon and for a screen reader.
  static bool IsMarkedUnsaved(QWidget& screen, const QString& name) {
    const auto found = Find<QListWidget>(screen, "LstInstrment").findItems(name, Qt::MatchExactly);
    EXPECT_EQ(found.size(), 1) << name.toStdString();
    const bool isMarked =
        found.value(0)->data(Qt::AccessibleTextRole).toString() == name + ", not saved";
    EXPECT_FALSE(isMarked && found.value(0)->icon().isNull());
    return isMarked;
  }
  static QString NoticeOn(QWidget& screen) {
    Settle();
    return Find<QLabel>(screen, "lblNotice").text();
  }
  void Delete(frmStationModelList& screen, const QString& model,
              QMessageBox::StandardButton answer = QMessageBox::Ok) {
    ExpectDeleteInstrumentQuestion(model, answer);
    Click(screen, "btnDelete");
  }
  void AddListed(frmStationModelList& screen, const QString& model, const QString& serial) {
    questions_.ExpectNotice("This instrment is already exist.");
    Add(screen, model, serial);
  }
};

TEST_F(StationInstruments, TheScreenShowsItsCaptionsAndChoices) {
  AtStation([](frmStationModelList& screen) {
    EXPECT_EQ(screen.windowTitle(), "ST1 - Station Data Edit - Morrand Tarvell");
    EXPECT_TRUE(screen.isModal());
    EXPECT_EQ(ComboEntries(screen, "cmbAddressType"), (Texts{"GP-IB", "GPIO", "SERIAL", "NONE"}));
    EXPECT_EQ(ComboEntries(screen, "cmbCalMonth"),
              (Texts{"", "JAN", "FEB", "MAR", "APR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT",
                     "NOV", "DEC"}));
    EXPECT_EQ(ComboEntries(screen, "cmbSerial"), Texts{});
    EXPECT_EQ(ShownFields(screen), kEmptyFields);
    QStringList captions;
    for (const QWidget* control : screen.findChildren<QWidget*>()) {
      captions.push_back(PlainCaption(control->property("text").toString()));
    }
    const QString texts =
        "StationName :  ST1|Current Station Instrments|MODEL NUMBER|SERIAL NUMBER|ADDRESS TYPE|"
        "ADDRESS|STATION|OPTIONS|AVAILABILITY|CAL DUE DATE|ASSET|TRACE|COMMENT|CAL DATA|Year|"
        "Add Instrment|Delete Instrment|Clear Instrment List|Save Instrment Data|Return";
    for (const QString& text : texts.split('|')) {
      EXPECT_EQ(captions.count(text), 1) << text.toStdString();
    }
    Click(screen, "btnReturn");
  });
}

TEST_F(StationInstruments, TheListKeepsTheOrderOfTheDirectoryAndReturnWritesIt) {
  const auto visit = [&](const Texts& entries, const Texts& instruments) {
    AtStation([&](frmStationModelList& screen) {
      EXPECT_EQ(EntriesOf(screen, "LstInstrment"), entries);
      EXPECT_EQ(ListIsEnabled(screen), !instruments.empty());
      EXPECT_FALSE(CanSave(screen));
      Click(screen, "btnReturn");
      EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(tree_.Read(kIndex), Lines(instruments) + "INDEX\r\n");
  };
  visit({"No Model"}, {});
  for (const char* name : {"PX13A", "PX12A", "RT 730.A", "b", "A10"}) {
    WriteInstrument(name, "x");
  }
  tree_.MakeFolders(R"(c:\stations\ST1\folder)");
  tree_.Write(kIndex, "an earlier list that is longer than the new one\r\n\r\n\r\n\r\n\r\n\r\n");
  Texts expected = NamesInOrder(kStation);
  std::erase(expected, "INDEX");
  std::erase(expected, "folder");
  visit(expected, expected);
}

// ---- Choosing an instrument.

TEST_F(StationInstruments, AChosenInstrumentIsShownAndReadAgainAtEachClick) {
  WriteInstrument();
  WriteInstrument({.model = "PX13A", .serial = "9"});
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    Fill(screen, "txtData_12", "as it was");
    EXPECT_FALSE(CanSave(screen));
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(ShownFields(screen),
              (Texts{"PX12A", "3318A12345", "GP-IB", "13", "rack 2", "001", "yes", "5", "MAR",
                     "2002", "A-77", "lab 4", "own", "as it was"}));
    EXPECT_EQ(ComboEntries(screen, "cmbSerial"), Texts{"3318A12345"});
    EXPECT_FALSE(CanSave(screen));
    Fill(screen, "txtData_2", "99");
    EXPECT_TRUE(CanSave(screen));
    WriteInstrument({.address = "14"});
    Settle();
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(TextOf(screen, "txtData_2"), "14");
    EXPECT_FALSE(CanSave(screen));
    ClickEntry(screen, "LstInstrment", "PX13A");
    EXPECT_EQ(ComboEntries(screen, "cmbSerial"), Texts{});
    EXPECT_EQ(ComboText(screen, "cmbSerial"), "9");
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, AFileThatCannotBeReadLeavesTheFieldsAndTheSelection) {
  WriteInstrument();
  WriteInstrument({.model = "GONE"});
  WriteInstrument("EMPTY", "");
  AtStation([&](frmStationModelList& screen) {
    auto& list = Find<QListWidget>(screen, "LstInstrment");
    const auto clickGone = [&] {
      questions_.ExpectError({"Cannot read the file", "does not exist", "GONE"});
      ClickEntry(screen, "LstInstrment", "GONE");
    };
    fs::remove(tree_.Native(R"(c:\stations\ST1\GONE)"));
    clickGone();
    EXPECT_EQ(ShownFields(screen), kEmptyFields);
    Fill(screen, "txtData_2", "typed");
    EXPECT_FALSE(CanSave(screen)) << "no instrument is open";
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_2", "typed");
    const Texts typed = ShownFields(screen);
    clickGone();
    EXPECT_EQ(Selected(screen), "PX12A");
    EXPECT_EQ(list.currentItem()->text(), "GONE") << "the arrow keys continue from there";
    ClickEntry(screen, "LstInstrment", "EMPTY");
    EXPECT_EQ(NoticeOn(screen), "The file \"EMPTY\" is empty: nothing was read from it.");
    EXPECT_EQ(ShownFields(screen), typed);
    EXPECT_TRUE(CanSave(screen));
    // The Delete key acts on the selected instrument, not on the current entry.
    ExpectDeleteInstrumentQuestion("PX12A", QMessageBox::Cancel);
    Press(Qt::Key_Delete);
    EXPECT_EQ(list.currentItem()->text(), "PX12A");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier,
                      list.visualItemRect(list.currentItem()).center());
    EXPECT_EQ(Selected(screen), "PX12A") << "a click with Ctrl does not deselect it";
    LeaveUnsaved(screen);
  });
}

// ---- The Save button.

TEST_F(StationInstruments, EveryEditEnablesSaveAndTabAndTheWheelChangeNothing) {
  WriteInstrument();
  WriteCalFile("PX12A", "SN1", {.serial = "1", .dueDate = "20051231"});
  WriteCalFile("PX12A", "SN12345", {.dueDate = "20051231"});
  std::vector<std::function<void(QWidget&)>> edits = {
      [](QWidget& screen) { Choose(screen, "cmbAddressType", "GPIO"); },
      [](QWidget& screen) { FillCombo(screen, "cmbAddressType", "RS232"); },
      [](QWidget& screen) { Choose(screen, "cmbCalMonth", "APR"); },
      [](QWidget& screen) { FillCombo(screen, "cmbSerial", "77"); },
      [](QWidget& screen) { Click(Find<UpDown>(screen, "UpDown1"), "up"); },
      [](QWidget& screen) { Click(Find<UpDown>(screen, "UpDown3"), "down"); }};
  for (const char* box : kBoxes) {
    edits.emplace_back([box](QWidget& screen) { Fill(screen, box, "7"); });
  }
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    const Texts unchanged = ShownFields(screen);
    Find<QLineEdit>(screen, "txtData_0").setFocus();
    for (int i = 0; i < 20; ++i) {
      Press(Qt::Key_Tab);
    }
    Find<QLineEdit>(screen, "txtData_0").setFocus();
    for (const char* name : {"cmbSerial", "cmbAddressType", "cmbCalMonth"}) {
      auto& combo = Find<QComboBox>(screen, name);
      const QPointF centre = combo.rect().center();
      QWheelEvent wheel(centre, combo.mapToGlobal(centre), {}, {0, -120}, Qt::NoButton,
                        Qt::NoModifier, Qt::NoScrollPhase, false);
      QApplication::sendEvent(&combo, &wheel);
    }
    EXPECT_EQ(ShownFields(screen), unchanged);
    for (std::size_t i = 0; i < edits.size(); ++i) {
      SCOPED_TRACE(i);
      ClickEntry(screen, "LstInstrment", "PX12A");
      EXPECT_FALSE(CanSave(screen));
      edits[i](screen);
      EXPECT_TRUE(CanSave(screen));
      EXPECT_NE(ShownFields(screen), unchanged);
    }
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
}

// ---- Saving.

TEST_F(StationInstruments, SaveWritesTheTwelveLinesAsTheyAreTyped) {
  WriteInstrument();
  WriteCalFile("PX12A", "SN1", {.serial = "1", .comment = "one"});
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_2", "14");
    Fill(screen, "txtData_8", " 05 ");
    Choose(screen, "cmbCalMonth", "DEC");
    Fill(screen, "txtData_6", "2003");
    Fill(screen, "txtData_12", "other file");
    FillCombo(screen, "cmbAddressType", "gp");  // is not completed to "GP-IB"
    FillCombo(screen, "cmbSerial", "1");        // typing replaces no other field
    Press(Qt::Key_Tab);
    Click(screen, "btnSave");
    EXPECT_FALSE(CanSave(screen));
    EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile({.serial = "1",
                                                       .addressType = "gp",
                                                       .address = "14",
                                                       .dueDate = "05 DEC 2003",
                                                       .calData = "other file"})
                                           .Bytes());
    EXPECT_EQ(tree_.Names(kStation), Texts{"PX12A"}) << "INDEX is written at the end";
    // Another model number makes a new file, which the list does not show.
    Fill(screen, "txtData_0", "PX99");
    EXPECT_EQ(
        NoticeOn(screen),
        "The fields belong to the file \"PX99\", not \"PX12A\", which the list marks: Save and "
        "Delete act on \"PX99\".");
    Click(screen, "btnSave");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
    Fill(screen, "txtData_0", "PX12A");
    EXPECT_EQ(NoticeOn(screen), "");
    LeaveUnsaved(screen);  // asks although everything is saved
  });
  EXPECT_TRUE(Contains(ReadInstrument("PX12A"), "MODEL NUMBER PX12A\r\n"));
  EXPECT_TRUE(Contains(ReadInstrument("PX99"), "MODEL NUMBER PX99\r\n"));
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nPX99\r\nINDEX\r\n");
}

TEST_F(StationInstruments, SaveThatFailsKeepsWhatWasTyped) {
  WriteInstrument();
  const std::string saved = InstrumentFile({.comment = "typed", .calData = ""}).Bytes();
  FaultPlatform platform;
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_11", "typed");
    const Texts typed = ShownFields(screen);
    PressUnderEachFault(
        platform,
        [&](const ScreenFault& fault) {
          ExpectCannotSave();
          Click(screen, "btnSave");
          EXPECT_TRUE(LastDetailContains(fault.reason));
          EXPECT_EQ(ShownFields(screen), typed);
          EXPECT_TRUE(CanSave(screen));
          EXPECT_EQ(ReadInstrument("PX12A"), fault.isReplaced ? saved : InstrumentFile().Bytes());
        },
        [&] { Click(screen, "btnSave"); });
    EXPECT_FALSE(CanSave(screen));
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), saved);
}

TEST_F(StationInstruments, AModelThatIsNoFileNameAndAnInvalidDateAreNotSaved) {
  WriteInstrument();
  tree_.Write("c:\\stations\\NOTES", "x");
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    const std::string reason = "the character \"\\\"";
    Fill(screen, "txtData_0", "..\\NOTES");
    ExpectDeleteInstrumentQuestion("..\\NOTES", QMessageBox::Ok);
    questions_.ExpectError({reason});
    Click(screen, "btnDelete");
    ExpectReturnQuestion(QMessageBox::Yes);
    ExpectCannotSave();
    Click(screen, "btnReturn");
    EXPECT_TRUE(LastDetailContains(reason));
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(TextOf(screen, "txtData_0"), "..\\NOTES");
    Fill(screen, "txtData_0", "PX12A");
    Fill(screen, "txtData_8", "31");
    FillCombo(screen, "cmbCalMonth", "FEB");
    ExpectWarning("Error: Invailed Input Date");
    Click(screen, "btnSave");
    EXPECT_TRUE(CanSave(screen));
    EXPECT_EQ(TextOf(screen, "txtData_8"), "31");
    Fill(screen, "txtData_6", "99999");
    ExpectCannotSave();
    Click(screen, "btnSave");
    EXPECT_TRUE(LastDetailContains("The number 99999 is outside the range"));
    // Return shows the message and closes the screen without saving.
    Fill(screen, "txtData_8", "30");
    Fill(screen, "txtData_6", "2002");
    ExpectReturnQuestion(QMessageBox::Yes);
    ExpectWarning("Error: Invailed Input Date");
    Click(screen, "btnReturn");
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
  EXPECT_EQ(tree_.Names(kRoot), (Texts{"NOTES", "ST1"}));
}

TEST_F(StationInstruments, NoFieldTakesACharacterThatTheFileCannotHold) {
  QApplication::clipboard()->setText(u"\u03A9"_qs);
  AtStation([&](frmStationModelList& screen) {
    const auto paste = [&] {
      questions_.ExpectError({"The character \"\u03A9\" cannot be stored in a data file"});
      Press(Qt::Key_V, Qt::ControlModifier);
      Settle();
    };
    for (const char* box : kBoxes) {
      Fill(screen, box, "1");
      paste();
      EXPECT_EQ(TextOf(screen, box), "1");
    }
    for (const char* combo : {"cmbSerial", "cmbAddressType", "cmbCalMonth"}) {
      FillCombo(screen, combo, "1");
      paste();
      EXPECT_EQ(ComboText(screen, combo), "1");
    }
    EXPECT_FALSE(CanSave(screen)) << "no instrument is open";
    Click(screen, "btnReturn");  // no question
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Names(kStation), Texts{"INDEX"});
}

TEST_F(StationInstruments, AValueThatWouldBeReadBackDifferentlyIsMarkedUntilItIsCorrected) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    auto& comment = Find<QLineEdit>(screen, "txtData_11");
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_12", "a, b");
    EXPECT_EQ(NoticeOn(screen), "") << "CAL DATA is never read back";
    const QString comma =
        "COMMENT will be read back as \"a\" only: a comma ends it. Write it without a comma.";
    Fill(screen, "txtData_11", "a, b");
    EXPECT_EQ(NoticeOn(screen), comma);
    EXPECT_EQ(MarkOf(&comment), comma);
    FillCombo(screen, "cmbSerial", "1,2");
    Fill(screen, "txtData_6", "");
    Settle();
    EXPECT_FALSE(MarkOf(Find<QComboBox>(screen, "cmbSerial").lineEdit()).isEmpty());
    EXPECT_FALSE(MarkOf(&Find<QLineEdit>(screen, "txtData_6")).isEmpty());
    Click(screen, "btnSave");
    Settle();
    EXPECT_EQ(MarkOf(&comment), comma) << "saving does not remove the mark";
    EXPECT_EQ(
        ReadInstrument("PX12A"),
        InstrumentFile({.serial = "1,2", .dueDate = "5 MAR ", .comment = "a, b", .calData = "a, b"})
            .Bytes());
    Fill(screen, "txtData_11", "a b");
    Fill(screen, "txtData_6", "2002");
    FillCombo(screen, "cmbSerial", "12");
    EXPECT_EQ(NoticeOn(screen), "");
    EXPECT_EQ(MarkOf(&comment), "");
    LeaveUnsaved(screen);
  });
}

// ---- Leaving.

TEST_F(StationInstruments, EveryWayOutAsksWhetherToSave) {
  const std::vector<std::function<void(frmStationModelList&)>> ways = {
      [](frmStationModelList& screen) { Click(screen, "btnReturn"); },
      [](frmStationModelList&) { Press(Qt::Key_Escape); },
      [](frmStationModelList& screen) { screen.close(); }};
  for (std::size_t way = 0; way < ways.size(); ++way) {
    SCOPED_TRACE(way);
    for (const auto answer : {QMessageBox::Yes, QMessageBox::No}) {
      fs::remove(tree_.Native(kIndex));
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
      const bool isSaved = answer == QMessageBox::Yes;
      EXPECT_EQ(Contains(ReadInstrument("PX12A"), "COMMENT typed\r\n"), isSaved);
      EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
    }
  }
}

TEST_F(StationInstruments, AListThatCannotBeReadDoesNotReplaceINDEX) {
  WriteInstrument();
  const fs::path away = tree_.Native("c:\\away");
  fs::rename(tree_.Native(kStation), away);
  questions_.ExpectError({"Cannot list the folder", "does not exist", kStation});
  AtStation([&](frmStationModelList& screen) {
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    fs::rename(away, tree_.Native(kStation));
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
}

// ---- Deleting and clearing.

TEST_F(StationInstruments, DeleteMovesTheFileOfTheModelNumberToTheTrash) {
  WriteInstrument({.model = "DELETED"});
  WriteInstrument({.model = "PX13A"});
  AtStation([&](frmStationModelList& screen) {
    for (const char* none : {"", "No Model"}) {
      Fill(screen, "txtData_0", none);
      questions_.ExpectNotice("No model is selected.");
      Click(screen, "btnDelete");
    }
    ClickEntry(screen, "LstInstrment", "PX13A");
    Fill(screen, "txtData_0", "DELETED");
    Delete(screen, "DELETED", QMessageBox::Cancel);
    EXPECT_EQ(tree_.Names(kStation), (Texts{"DELETED", "PX13A"}));
    EXPECT_EQ(TextOf(screen, "txtData_0"), "DELETED");
    FillCombo(screen, "cmbSerial", "77");
    Delete(screen, "DELETED");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX13A"});
    EXPECT_EQ(ShownFields(screen), kEmptyFields);
    ClickEntry(screen, "LstInstrment", "PX13A");
    // Another user has deleted the file: nothing is left to delete.
    fs::remove(tree_.Native(R"(c:\stations\ST1\PX13A)"));
    Delete(screen, "PX13A");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    EXPECT_FALSE(ListIsEnabled(screen));
    LeaveUnsaved(screen);
  });
  EXPECT_TRUE(fs::exists(InTrash("DELETED")));
  EXPECT_EQ(tree_.Read(kIndex), "INDEX\r\n");
}

TEST_F(StationInstruments, ClearDeletesEveryFileOfTheStation) {
  WriteInstrument();
  WriteCalFile("PX13A", "SN9", {.model = "PX13A", .serial = "9"});
  tree_.Write(kIndex, "PX12A\r\nINDEX\r\n");
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX13A", "9");
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_11", "typed");
    ExpectClearQuestion(QMessageBox::No);
    Click(screen, "btnClear");
    EXPECT_EQ(tree_.Names(kStation), (Texts{"INDEX", "PX12A"}));
    EXPECT_EQ(TextOf(screen, "txtData_11"), "typed");
    EXPECT_TRUE(CanSave(screen));
    Clear(screen);
    EXPECT_EQ(tree_.Names(kStation), Texts{});
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    EXPECT_FALSE(CanSave(screen));
    for (const char* box : kBoxes) {
      EXPECT_EQ(TextOf(screen, box), "") << box;
    }
    LeaveUnsaved(screen);  // nothing that was added is lost
    EXPECT_EQ(questions_.details.back(), "");
  });
  EXPECT_EQ(tree_.Read(kIndex), "INDEX\r\n");
}

TEST_F(StationInstruments, AReadOnlyStationKeepsItsFilesAndCanBeLeft) {
  WriteInstrument();
  tree_.Write(kIndex, "PX9\r\nINDEX\r\n");
  fs::permissions(tree_.Native(kIndex), fs::perms(0444));
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(kStation));
  AtStation([&](frmStationModelList& screen) {
    const auto expectNoIndex = [&] {
      questions_.ExpectError({"Cannot save the file", "you have no permission", kIndex});
    };
    ExpectClearQuestion(QMessageBox::Yes);
    questions_.ExpectError({"Cannot delete it", "you have no permission"});
    Click(screen, "btnClear");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_11", "typed");
    ExpectDeleteInstrumentQuestion("PX12A", QMessageBox::Ok);
    questions_.ExpectError({"Cannot delete it", "you have no permission"});
    Click(screen, "btnDelete");
    EXPECT_EQ(TextOf(screen, "txtData_11"), "typed");
    ExpectReturnQuestion(QMessageBox::No);
    expectNoIndex();
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    ExpectReturnQuestion(QMessageBox::No);
    expectNoIndex();
    screen.close();
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
  EXPECT_EQ(tree_.Read(kIndex), "PX9\r\nINDEX\r\n");
}

// ---- Adding.

TEST_F(StationInstruments,
       WithoutCalibrationDataNothingIsAddedAndOfTooManyModelsTheFirstAreOffered) {
  tree_.MakeFolders(R"(c:\calfactors\EMPTY)");
  AtStation([&](frmStationModelList& screen) {
    questions_.Expect({.text = "There is no equipment calibration data.\r\n"
                               "It's not possible to add it.",
                       .title = "No data is availval."},
                      QMessageBox::Ok);
    Click(screen, "btnAdd");
    for (int i = 0; i < 256; ++i) {
      tree_.MakeFolders("c:\\calfactors\\M" + std::to_string(i) + "\\x");
    }
    questions_.ExpectError({"more than 256 entries", "c:\\calfactors"});
    user_.At<frmStationGetInstr>([](frmStationGetInstr& picker) {
      EXPECT_GE(EntriesOf(picker, "LstInstrment").size(), 255U) << "the empty one is not offered";
      Click(picker, "btnCancel");
    });
    Click(screen, "btnAdd");
    Click(screen, "btnReturn");  // no question
  });
}

TEST_F(StationInstruments, AnotherSerialNumberBringsItsOwnData) {
  WriteCalFile("PX12A", "SN2", {.serial = "2", .dueDate = "20031231", .comment = "two"});
  tree_.Write(R"(c:\calfactors\PX12A\SN3)", "QZ PX12A Opt001\r\n3\r\n28FEB2001\r\n");
  // Without a year, a month or a day the due date becomes 1 JAN 2000.
  for (const std::string due : {"4 00000305", "5 20020005", "6 20020300"}) {
    WriteCalFile("PX12A", "SN" + due.substr(0, 1),
                 {.serial = due.substr(0, 1), .dueDate = due.substr(2)});
  }
  // The list shows the model without its maker and option, as it is compared with.
  WriteCalFile("PX13A", "SN7", {.model = "QZ PX13A Opt001", .serial = "7"});
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "4");
    EXPECT_EQ(TextOf(screen, "txtData_6"), "2000");
    Texts serials = ComboEntries(screen, "cmbSerial");
    std::sort(serials.begin(), serials.end());
    EXPECT_EQ(serials, (Texts{"2", "3", "4", "5", "6"}));
    EXPECT_EQ(ComboText(screen, "cmbSerial"), "4");
    const auto expect = [&](const char* serial, const char* option, const Texts& date,
                            const char* comment) {
      Choose(screen, "cmbSerial", serial);
      EXPECT_EQ(ShownFields(screen), (Texts{"PX12A", serial, "NONE", "", "", option, "", date[0],
                                            date[1], date[2], "", "", comment, ""}));
      EXPECT_TRUE(CanSave(screen));
    };
    expect("2", "", {"31", "DEC", "2003"}, "two");
    expect("3", "001", {"28", "FEB", "2002"}, "");
    for (const char* serial : {"4", "5", "6"}) {
      expect(serial, "", {"1", "JAN", "2000"}, "factory");
    }
    Add(screen, "PX13A", "7");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), (Texts{"PX12A", "PX13A"}));
    EXPECT_EQ(TextOf(screen, "txtData_0"), "QZ PX13A Opt001")
        << "from the file of the serial number";
    AddListed(screen, "PX13A", "7");
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, APickerThatAddsNothingLeavesTheSerialNumbersAndTheirData) {
  WriteInstrument({.model = "PX13A", .serial = "9"});
  WriteCalFile("PX13A", "SN8",
               {.model = "PX13A", .serial = "8", .dueDate = "20031231", .comment = "eight"});
  WriteInstrument({.serial = "1"});
  WriteCalFile("PX12A", "SN1", {.serial = "1"});
  WriteCalFile("PX14A", "SN2", {.model = "PX77", .serial = "2"});
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX13A");
    const Texts shown = ShownFields(screen);
    user_.At<frmStationGetInstr>([](frmStationGetInstr& picker) {
      ClickEntry(picker, "LstInstrment", "PX12A");
      ClickEntry(picker, "lstSerialNumber", "1");
      Click(picker, "btnCancel");
    });
    Click(screen, "btnAdd");
    AddListed(screen, "PX12A", "1");
    // The header names a model of which there is no folder.
    questions_.ExpectError({"The chosen instrument is not in the calibration data any more"});
    Add(screen, "PX14A", "2");
    // The list changes while the picker is open.
    user_.At<frmStationGetInstr>([](frmStationGetInstr& picker) {
      ClickEntry(picker, "LstInstrment", "PX12A");
      ClickEntry(picker, "lstSerialNumber", "1");
      gCalFiles = {};
      Click(picker, "btnAdd");
    });
    questions_.ExpectError({"The chosen instrument is not in the calibration data any more"});
    Click(screen, "btnAdd");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment").size(), 2U);
    EXPECT_EQ(ShownFields(screen), shown);
    Choose(screen, "cmbSerial", "8");
    EXPECT_EQ(ShownFields(screen), (Texts{"PX13A", "8", "GP-IB", "13", "rack 2", "", "yes", "31",
                                          "DEC", "2003", "A-77", "lab 4", "eight", ""}));
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, AnAddedInstrumentKeepsWhatWasTypedUntilItIsSaved) {
  WriteCalFile("PX12A", "SN12345");
  WriteInstrument({.model = "PX13A", .serial = "9"});
  WriteInstrument({.model = "PX99", .serial = "7"});
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "3318A12345");
    EXPECT_EQ(Selected(screen), "PX12A");
    EXPECT_EQ(ShownFields(screen), (Texts{"PX12A", "3318A12345", "NONE", "", "", "", "", "5", "MAR",
                                          "2002", "", "", "factory", ""}));
    Fill(screen, "txtData_2", "17");
    const Texts shown = ShownFields(screen);
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(ShownFields(screen), shown) << "there is no file to read again";
    ClickEntry(screen, "LstInstrment", "PX13A");
    EXPECT_FALSE(CanSave(screen));
    ExpectReturnQuestion(QMessageBox::Cancel);
    Click(screen, "btnReturn");
    EXPECT_TRUE(
        LastDetailContains("These instruments were added but not saved: PX12A. Yes and No both "
                           "lose them. To keep them, "
                           "choose Cancel and save each one."));
    // Deleting another instrument reads the list again.
    Delete(screen, "PX13A");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), (Texts{"PX99", "PX12A"}));
    EXPECT_EQ(Selected(screen), "");
    EXPECT_TRUE(IsMarkedUnsaved(screen, "PX12A"));
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(ShownFields(screen), shown);
    EXPECT_EQ(ComboEntries(screen, "cmbSerial"), Texts{"3318A12345"});
    EXPECT_TRUE(CanSave(screen));
    Fill(screen, "txtData_0", "PX99");
    Delete(screen, "PX99");
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(TextOf(screen, "txtData_0"), "PX99") << "the fields are kept as they were left";
    Fill(screen, "txtData_0", "PX12A");
    EXPECT_EQ(tree_.Names(kStation), Texts{});
    Click(screen, "btnSave");
    EXPECT_FALSE(IsMarkedUnsaved(screen, "PX12A"));
    EXPECT_TRUE(Contains(ReadInstrument("PX12A"), "ADDRESS TYPE NONE\r\nADDRESS 17\r\n"));
    LeaveUnsaved(screen);
    EXPECT_EQ(questions_.details.back(), "");
  });
}

TEST_F(StationInstruments, DeletingAnAddedInstrumentKeepsTheFileThatAnotherUserSaved) {
  WriteCalFile("PX12A", "SN12345");
  WriteInstrument({.model = "PX13A"});
  AtStation([&](frmStationModelList& screen) {
    Add(screen, "PX12A", "3318A12345");
    Delete(screen, "PX12A");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX13A"});
    EXPECT_EQ(ShownFields(screen), kEmptyFields);
    Add(screen, "PX12A", "3318A12345");
    WriteInstrument();
    Delete(screen, "PX12A");
    EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
    EXPECT_FALSE(IsMarkedUnsaved(screen, "PX12A")) << "the entry now means the file";
    ClickEntry(screen, "LstInstrment", "PX12A");
    Delete(screen, "PX12A");
    EXPECT_EQ(tree_.Names(kStation), Texts{"PX13A"});
    LeaveUnsaved(screen);
  });
}

TEST_F(StationInstruments, AnAddedInstrumentThatReplacesTheOpenOneAsksAndKeepsItsFile) {
  WriteInstrument({.model = "KEPT"});
  WriteCalFile("PX12A", "SN12345");
  AtStation([&](frmStationModelList& screen) {
    const auto saveAsKept = [&](QMessageBox::StandardButton answer) {
      Fill(screen, "txtData_0", "KEPT");
      questions_.Expect({.text = "The file ST1\\KEPT holds the data of another serial number, "
                                 "\"3318A12345\". Do you want to replace it?",
                         .icon = QMessageBox::Warning,
                         .buttons = QMessageBox::Yes | QMessageBox::No,
                         .defaultButton = QMessageBox::No},
                        answer);
      Click(screen, "btnSave");
    };
    ClickEntry(screen, "LstInstrment", "KEPT");
    Add(screen, "PX12A", "3318A12345");
    FillCombo(screen, "cmbSerial", "2");
    saveAsKept(QMessageBox::No);
    EXPECT_TRUE(CanSave(screen));
    ClickEntry(screen, "LstInstrment", "KEPT");
    ClickEntry(screen, "LstInstrment", "PX12A");
    saveAsKept(QMessageBox::Yes);
    LeaveUnsaved(screen);
  });
  EXPECT_TRUE(Contains(ReadInstrument("KEPT"), "SERIAL NUMBER 2\r\n"));
  EXPECT_EQ(KeptOf(tree_, kRoot, R"(ST1\KEPT)"), Texts{InstrumentFile({.model = "KEPT"}).Bytes()});
}

}  // namespace
}  // namespace tarvell
