// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "screens/station/StationFixture.h"
#include "screens/widgets/frmInput.h"
#include "support/FullDisk.h"
#include "support/Noise.h"
#include "support/OrdinaryUser.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

class StationBadInput : public StationStage {
 protected:
  StationBadInput() { tree_.MakeFolders(kStation); }

  void AddStation(frmStationMain& screen, const QString& name) {
    user_.At<frmInput>([=](frmInput& dialog) {
      Find<QLineEdit>(dialog, "txtText").setText(name);  // pasted
      Press(Qt::Key_Return);
    });
    Click(screen, "btnAdd");
  }
  void DeleteStation(frmStationMain& screen, const QString& name) {
    ClickEntry(screen, "lstStation", name);
    ExpectDeleteStationQuestion(name, QMessageBox::Ok);
    Click(screen, "btnDelete");
  }
  [[nodiscard]] bool LastDetailHolds(const std::string& part) const {
    return !questions_.details.empty() && Contains(questions_.details.back().toStdString(), part);
  }
};

// ---- Stations.

TEST_F(StationBadInput, AStationNameThatNoSystemTakesIsToldAndMakesNothing) {
  const std::vector<std::pair<QString, std::string>> names = {
      {"a/b", "the character \"/\""},
      {"a\\b", "the character \"\\\""},
      {"..\\up", "the character \"\\\""},
      {"c:up", "the character \":\""},
      {"a*", "the character \"*\""},
      {"a?", "the character \"?\""},
      {"a\"b", "(double quote)"},
      {"a<b", "the character \"<\""},
      {"a>b", "the character \">\""},
      {"a|b", "the character \"|\""},
      {"a\tb", "a control character (number 9)"},
      {".", "it means a folder itself"},
      {"..", "it means a folder itself"},
      {"a.", "it ends with the character \".\""},
      {"a ", "it ends with a blank"},
      {"con", "it is the name of a device"},
      {"COM1", "it is the name of a device"},
      {"rack.2", "the station list would never show it"},
      {"INDEX", "is the name of the list of stations"},
      {"index", "is the name of the list of stations"},
      {QString(300, u'x'), "its name is too long"},
      {u"10 k\u03A9"_qs, "\u03A9"}};
  AtStationList([&](frmStationMain& screen) {
    for (const auto& [name, why] : names) {
      SCOPED_TRACE(name.toStdString());
      questions_.ExpectNotice("Can't make a new station");
      AddStation(screen, name);
      EXPECT_TRUE(LastDetailHolds(why)) << questions_.details.back().toStdString();
      EXPECT_EQ(tree_.Names(kRoot), Texts{"ST1"});
      EXPECT_EQ(tree_.Names("c:\\"), (Texts{"calfactors", "stations"}));
      EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"ST1"});
    }
    Click(screen, "btnReturn");
  });
}

TEST_F(StationBadInput, ARootThatVanishedIsTold) {
  AtStationList([&](frmStationMain& screen) {
    fs::remove_all(tree_.Native(kRoot));
    questions_.ExpectNotice("Can't make a new station");
    questions_.ExpectError({"Cannot list the folder", "does not exist", kRoot});
    AddStation(screen, "ST2");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    questions_.ExpectError({"Cannot list the folder", "does not exist", kRoot});
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_FALSE(tree_.Exists(kRoot));
    Press(Qt::Key_Escape);
    EXPECT_FALSE(screen.isVisible());
  });
}

TEST_F(StationBadInput, AStationThatVanishedIsTold) {
  tree_.MakeFolders("c:\\stations\\ST2");
  AtStationList([&](frmStationMain& screen) {
    fs::remove(tree_.Native(kStation));
    ClickEntry(screen, "lstStation", "ST1");
    questions_.ExpectError({"Cannot list the folder", "does not exist", kStation});
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      EXPECT_EQ(EntriesOf(instruments, "LstInstrment"), Texts{"No Model"});
      const auto returnAnd = [&](QMessageBox::StandardButton answer) {
        questions_.ExpectError({"Cannot list the folder", "does not exist", kStation});
        questions_.Expect({.text = "The folder of this station is not there any more. Leave the "
                                   "station without writing its list INDEX?",
                           .icon = QMessageBox::Warning,
                           .buttons = QMessageBox::Yes | QMessageBox::No,
                           .defaultButton = QMessageBox::No},
                          answer);
        Click(instruments, "btnReturn");
      };
      returnAnd(QMessageBox::No);
      EXPECT_TRUE(instruments.isVisible());
      returnAnd(QMessageBox::Yes);
      EXPECT_FALSE(instruments.isVisible());
    });
    Click(screen, "btnEdit");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"ST2"});
    EXPECT_FALSE(tree_.Exists(kStation));
    ClickEntry(screen, "lstStation", "ST2");
    fs::remove(tree_.Native("c:\\stations\\ST2"));
    questions_.ExpectError({"Cannot list the folder", "does not exist", "ST2"});
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      // The frame asks nothing.
      questions_.ExpectError({"Cannot list the folder", "does not exist", "ST2"});
      Press(Qt::Key_Escape);
      EXPECT_FALSE(instruments.isVisible());
    });
    Click(screen, "btnEdit");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "");
}

// The folder takes new files but does not tell its names.
TEST_F(StationBadInput, AnIndexIsNotReplacedByAListThatCouldNotBeRead) {
  tree_.Write(kRootIndex, "ST1\r\nST2\r\n");
  tree_.Write(kIndex, "PX12A\r\nINDEX\r\n");
  WriteInstrument();
  const OrdinaryUser user(tree_.Root());
  fs::permissions(tree_.Native(kStation), fs::perms(0333));
  questions_.ExpectError({"Cannot list the folder", "you have no permission", kStation});
  AtStation([&](frmStationModelList& screen) {
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    questions_.ExpectError({"Cannot list the folder", "you have no permission", kStation});
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    questions_.ExpectError({"Cannot list the folder", "you have no permission", kStation});
    screen.close();
  });
  fs::permissions(tree_.Native(kStation), fs::perms(0755));
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
  fs::permissions(tree_.Native(kRoot), fs::perms(0333));
  questions_.ExpectError({"Cannot list the folder", "you have no permission", kRoot});
  AtStationList([&](frmStationMain& screen) {
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    questions_.ExpectError({"Cannot list the folder", "you have no permission", kRoot});
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    // As soon as the list can be read, it is the one that is written.
    fs::permissions(tree_.Native(kRoot), fs::perms(0755));
    Click(screen, "btnReturn");
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\n");
}

TEST_F(StationBadInput, NamesInTheCharactersOfAnOlderSystemAreListedAndDeleted) {
  // "Pruef" with the single byte of a u with two dots, which is no UTF-8.
  const std::string older =
      "Pr\xFC"
      "f";
  tree_.Write("c:\\stations\\" + older + "\\M\xFC", InstrumentFile().Bytes());
  AtStationList([&](frmStationMain& screen) { Click(screen, "btnReturn"); });
  EXPECT_EQ(tree_.Read(kRootIndex).size(), std::string("ST1\r\nPr.f\r\n").size());
  EXPECT_TRUE(Contains(tree_.Read(kRootIndex), older + "\r\n"));
  AtStationList([&](frmStationMain& screen) {
    auto& list = Find<QListWidget>(screen, "lstStation");
    list.setCurrentRow(list.item(0)->text() == "ST1" ? 1 : 0);
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      EXPECT_EQ(EntriesOf(instruments, "LstInstrment").size(), 1U);
      Clear(instruments);
      Click(instruments, "btnReturn");
    });
    Click(screen, "btnEdit");
    EXPECT_EQ(tree_.Names("c:\\stations\\" + older), Texts{"INDEX"});
    list.setCurrentRow(list.item(0)->text() == "ST1" ? 1 : 0);
    ExpectDeleteStationQuestion(list.currentItem()->text(), QMessageBox::Ok);
    Click(screen, "btnDelete");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"ST1"});
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Names(kRoot), (Texts{"INDEX", "ST1"}));
}

TEST_F(StationBadInput, ANameThatTheIndexCannotHoldIsNamed) {
  for (const std::string& name : {std::string("10 k\u03A9"), std::string("two\nlines")}) {
    tree_.MakeFolders("c:\\stations\\" + name);
    AtStationList([&](frmStationMain& screen) {
      questions_.ExpectError(
          {name, "the list cannot hold", "Rename the file or folder", kRootIndex});
      Click(screen, "btnReturn");
      EXPECT_TRUE(screen.isVisible());
      fs::remove(tree_.Native("c:\\stations\\" + name));
      Press(Qt::Key_Escape);
    });
    EXPECT_FALSE(tree_.Exists(kRootIndex));
  }
}

TEST_F(StationBadInput, AStationThatVanishedIsNotMistakenForOneOfAnotherCase) {
  tree_.Write(R"(c:\stations\ST2\PX12A)", "x");
  tree_.Write(R"(c:\stations\st2\PX12A)", "kept");
  AtStationList([&](frmStationMain& screen) {
    ClickEntry(screen, "lstStation", "ST2");
    fs::remove_all(tree_.Root() / "drives/c/stations/ST2");
    ExpectDeleteStationQuestion("ST2", QMessageBox::Ok);
    questions_.ExpectError({"Cannot delete it", "does not exist", R"(c:\stations\ST2)"});
    Click(screen, "btnDelete");
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(R"(c:\stations\st2\PX12A)"), "kept");
}

TEST_F(StationBadInput, AStationThatIsAFileIsTold) {
  tree_.Write(R"(c:\stations\NOTES)", "x");
  AtStationList([&](frmStationMain& screen) {
    ClickEntry(screen, "lstStation", "NOTES");
    const Texts parts = {"where a folder is expected, there is something else",
                         R"(c:\stations\NOTES)"};
    questions_.ExpectError(parts);
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      EXPECT_EQ(EntriesOf(instruments, "LstInstrment"), Texts{"No Model"});
      questions_.ExpectError(parts);
      Press(Qt::Key_Escape);
    });
    Click(screen, "btnEdit");
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(R"(c:\stations\NOTES)"), "x");
}

TEST_F(StationBadInput, DeletingAStationThatVanishedIsToldAndTheListReadAgain) {
  tree_.MakeFolders("c:\\stations\\ST2");
  AtStationList([&](frmStationMain& screen) {
    fs::remove(tree_.Native(kStation));
    ClickEntry(screen, "lstStation", "ST1");
    ExpectDeleteStationQuestion("ST1", QMessageBox::Ok);
    questions_.ExpectError({"Cannot delete it", "does not exist", kStation});
    Click(screen, "btnDelete");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"ST2"});
    Click(screen, "btnReturn");
  });
}

TEST_F(StationBadInput, DeletingALinkKeepsWhatItLeadsTo) {
  tree_.Write(R"(c:\other\PX12A)", "x");
  tree_.Write(R"(c:\other\file)", "y");
  fs::create_directory_symlink(tree_.Native("c:\\other"), tree_.Native("c:\\stations\\LINK"));
  fs::create_symlink(tree_.Native(R"(c:\other\file)"), tree_.Native("c:\\stations\\FILELINK"));
  fs::create_symlink("nowhere", tree_.Native("c:\\stations\\BROKEN"));
  AtStationList([&](frmStationMain& screen) {
    for (const char* name : {"LINK", "FILELINK", "BROKEN"}) {
      DeleteStation(screen, name);
    }
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"ST1"});
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Names("c:\\other"), (Texts{"PX12A", "file"}));
  EXPECT_EQ(tree_.Read(R"(c:\other\PX12A)"), "x");
}

TEST_F(StationBadInput, AFolderOfThePlaceholdersNameIsNeitherLostNorDeleted) {
  tree_.Write(R"(c:\stations\No Stations\PX12A)", "x");
  AtStationList([&](frmStationMain& screen) {
    EXPECT_TRUE(Find<QListWidget>(screen, "lstStation").isEnabled());
    EXPECT_EQ(EntriesOf(screen, "lstStation"), NamesInOrder(kRoot));
    ClickEntry(screen, "lstStation", "No Stations");
    questions_.ExpectNotice("No station is selected.");
    Click(screen, "btnEdit");
    questions_.ExpectNotice("No stations is selected.");
    Click(screen, "btnDelete");
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(R"(c:\stations\No Stations\PX12A)"), "x");
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\n");
}

TEST_F(StationBadInput, AReadOnlyRootIsToldAtAddAndAtReturn) {
  tree_.Write(kRootIndex, "ST9\r\n");
  fs::permissions(tree_.Native(kRootIndex), fs::perms(0444));
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(kRoot));
  AtStationList([&](frmStationMain& screen) {
    questions_.ExpectNotice("Can't make a new station");
    AddStation(screen, "ST2");
    EXPECT_TRUE(LastDetailHolds("you have no permission"));
    questions_.ExpectError({"Cannot save the file", "you have no permission", kRootIndex});
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    Press(Qt::Key_Escape);
  });
  EXPECT_EQ(tree_.Names(kRoot), (Texts{"INDEX", "ST1"}));
  EXPECT_EQ(tree_.Read(kRootIndex), "ST9\r\n");
}

TEST_F(StationBadInput, AFullDiskKeepsTheStationsIndex) {
  tree_.Write(kRootIndex, "ST9\r\n");
  FullDisk disk;
  AtStationList([&](frmStationMain& screen) {
    questions_.ExpectError({"Cannot save the file", "the disk is full", kRootIndex});
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(tree_.Read(kRootIndex), "ST9\r\n");
    EXPECT_EQ(tree_.Names(kRoot), (Texts{"INDEX", "ST1"}));
    disk.isFull = false;
    Click(screen, "btnReturn");
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\n");
}

// ---- Model texts.

TEST_F(StationBadInput, AModelThatIsNoFileNameIsNeitherSavedNorDeleted) {
  WriteInstrument();
  tree_.Write("c:\\stations\\NOTES", "x");
  tree_.Write(kIndex, "PX12A\r\nINDEX\r\n");
  const std::vector<std::pair<QString, std::string>> models = {
      {"a/b", "the character \"/\""},
      {"..\\NOTES", "the character \"\\\""},
      {"../NOTES", "the character \"/\""},
      {"a:b", "the character \":\""},
      {"*", "the character \"*\""},
      {"PX12?", "the character \"?\""},
      {"..", "it means a folder itself"},
      {".", "it means a folder itself"},
      {"PX12A.", "it ends with the character \".\""},
      {"PX12A ", "it ends with a blank"},
      {"NUL", "it is the name of a device"},
      {"INDEX", "the station's list of instruments"},
      {"index", "the station's list of instruments"}};
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    for (const auto& [model, why] : models) {
      SCOPED_TRACE(model.toStdString());
      Fill(screen, "txtData_0", model);
      ExpectCannotSave();
      Click(screen, "btnSave");
      EXPECT_TRUE(LastDetailHolds(why)) << questions_.details.back().toStdString();
      EXPECT_TRUE(CanSave(screen));
      ExpectDeleteInstrumentQuestion(model, QMessageBox::Ok);
      questions_.ExpectError({why});
      Click(screen, "btnDelete");
      EXPECT_EQ(TextOf(screen, "txtData_0"), model.toStdString());
    }
    Fill(screen, "txtData_0", "");
    ExpectCannotSave();
    Click(screen, "btnSave");
    EXPECT_TRUE(LastDetailHolds("it is empty"));
    // The same on leaving, which then does not leave.
    ExpectReturnQuestion(QMessageBox::Yes);
    ExpectCannotSave();
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(TextOf(screen, "txtData_2"), "13");
    EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Names(kStation), (Texts{"INDEX", "PX12A"}));
  EXPECT_EQ(tree_.Names(kRoot), (Texts{"NOTES", "ST1"}));
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
}

TEST_F(StationBadInput, AFileOfThePlaceholdersNameIsAnInstrument) {
  WriteInstrument("No Model", InstrumentFile({.model = "No Model"}).Bytes());
  AtStation([&](frmStationModelList& screen) {
    EXPECT_TRUE(Find<QListWidget>(screen, "LstInstrment").isEnabled());
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"No Model"});
    ClickEntry(screen, "LstInstrment", "No Model");
    EXPECT_EQ(TextOf(screen, "txtData_2"), "13");
    questions_.ExpectNotice("No model is selected.");
    Click(screen, "btnDelete");
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("No Model"), InstrumentFile({.model = "No Model"}).Bytes());
  EXPECT_EQ(tree_.Read(kIndex), "No Model\r\nINDEX\r\n");
}

TEST_F(StationBadInput, ACharacterThatTheFileCannotHoldIsRefusedWhereItIsPasted) {
  WriteInstrument();
  QApplication::clipboard()->setText(u"\u03A9"_qs);
  const auto paste = [&] {
    questions_.ExpectError({"The character \"\u03A9\" cannot be stored in a data file"});
    Press(Qt::Key_V, Qt::ControlModifier);
    Settle();
  };
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    for (const char* box : {"txtData_0", "txtData_2", "txtData_11"}) {
      Fill(screen, box, "1");
      paste();
      EXPECT_EQ(TextOf(screen, box), "1");
    }
    for (const char* combo : {"cmbSerial", "cmbAddressType", "cmbCalMonth"}) {
      FillCombo(screen, combo, "1");
      paste();
      EXPECT_EQ(ComboText(screen, combo), "1");
    }
    LeaveUnsaved(screen);
  });
}

// ---- Instrument files.

TEST_F(StationBadInput, AFileThatCannotBeReadIsToldAndTheFieldsStay) {
  WriteInstrument();
  WriteInstrument("GONE", "x");
  WriteInstrument("FOLDER", "x");
  AtStation([&](frmStationModelList& screen) {
    fs::remove(tree_.Native(R"(c:\stations\ST1\GONE)"));
    fs::remove(tree_.Native(R"(c:\stations\ST1\FOLDER)"));
    tree_.Write(R"(c:\stations\ST1\FOLDER\inside)", "x");
    // Before an instrument was opened: nothing can be saved afterwards, nothing is asked.
    questions_.ExpectError({"Cannot read the file", "does not exist", R"(c:\stations\ST1\GONE)"});
    ClickEntry(screen, "LstInstrment", "GONE");
    EXPECT_EQ(ShownFields(screen), kNoFields);
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_11", "typed");
    const Texts before = ShownFields(screen);
    questions_.ExpectError({"Cannot read the file", "does not exist", R"(c:\stations\ST1\GONE)"});
    ClickEntry(screen, "LstInstrment", "GONE");
    questions_.ExpectError({"Cannot read the file", "it is a folder", R"(c:\stations\ST1\FOLDER)"});
    ClickEntry(screen, "LstInstrment", "FOLDER");
    EXPECT_EQ(ShownFields(screen), before);
    EXPECT_TRUE(CanSave(screen));
    Click(screen, "btnSave");
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile({.comment = "typed", .calData = ""}).Bytes());
  EXPECT_EQ(tree_.Names(R"(c:\stations\ST1\FOLDER)"), Texts{"inside"});
}

TEST_F(StationBadInput, NoiseIsReadAndGivesNothing) {
  const std::string noise = Noise(std::size_t{1} << 16U, 11);
  WriteInstrument("NOISE", noise);
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Texts expected = ShownFields(screen);
    expected[1] = "";  // the serial number, which is the file's own
    ClickEntry(screen, "LstInstrment", "NOISE");
    EXPECT_EQ(ShownFields(screen), expected);
    EXPECT_FALSE(CanSave(screen));
    LeaveUnsaved(screen);
  });
  EXPECT_TRUE(ReadInstrument("NOISE") == noise);
}

TEST_F(StationBadInput, DeletingAFileThatVanishedReadsTheListAgain) {
  WriteInstrument();
  WriteInstrument({.model = "PX13A"});
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    fs::remove(tree_.Native(R"(c:\stations\ST1\PX12A)"));
    ExpectDeleteInstrumentQuestion("PX12A", QMessageBox::Ok);
    Click(screen, "btnDelete");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX13A"});
    EXPECT_EQ(ShownFields(screen), kNoFields);
    LeaveUnsaved(screen);
  });
}

TEST_F(StationBadInput, DeletingAnInstrumentThatIsALinkKeepsWhatItLeadsTo) {
  tree_.Write(R"(c:\other\PX12A)", InstrumentFile().Bytes());
  fs::create_symlink(tree_.Native(R"(c:\other\PX12A)"), tree_.Native(R"(c:\stations\ST1\PX12A)"));
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    ExpectDeleteInstrumentQuestion("PX12A", QMessageBox::Ok);
    Click(screen, "btnDelete");
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(tree_.Names(kStation), Texts{"INDEX"});
  EXPECT_EQ(tree_.Read(R"(c:\other\PX12A)"), InstrumentFile().Bytes());
}

TEST_F(StationBadInput, AFolderThatHasTheModelsNameIsNotDeleted) {
  tree_.Write(R"(c:\stations\ST1\notes\kept)", "x");
  AtStation([&](frmStationModelList& screen) {
    Fill(screen, "txtData_0", "notes");
    ExpectDeleteInstrumentQuestion("notes", QMessageBox::Ok);
    questions_.ExpectError(
        {"Cannot delete the instrument", "it is a folder, not a file", R"(c:\stations\ST1\notes)"});
    Click(screen, "btnDelete");
    EXPECT_EQ(TextOf(screen, "txtData_0"), "notes");
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\notes\kept)"), "x");
}

TEST_F(StationBadInput, AnIndexOfATreeFromAnotherSystemIsNoInstrument) {
  tree_.Write(R"(c:\stations\ST1\index)", "PX9\r\nINDEX\r\n");
  tree_.Write(R"(c:\stations\Index)", "ST9\r\n");
  WriteInstrument();
  AtStationList([&](frmStationMain& screen) {
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"ST1"});
    ClickEntry(screen, "lstStation", "ST1");
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      EXPECT_EQ(EntriesOf(instruments, "LstInstrment"), Texts{"PX12A"});
      Click(instruments, "btnReturn");
    });
    Click(screen, "btnEdit");
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Names(kStation), (Texts{"PX12A", "index"}));
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\index)"), "PX12A\r\nINDEX\r\n");
  EXPECT_EQ(tree_.Names(kRoot), (Texts{"Index", "ST1"}));
  EXPECT_EQ(tree_.Read(R"(c:\stations\Index)"), "ST1\r\n");
}

// ---- The calibration tree.

TEST_F(StationBadInput, OfTooManyModelFoldersTheFirstAreOffered) {
  for (int i = 0; i < 257; ++i) {
    WriteCalFile("M" + std::to_string(i), "SN1", {.serial = std::to_string(i)});
  }
  AtStation([&](frmStationModelList& screen) {
    questions_.ExpectError({"more than 256 entries", "c:\\calfactors"});
    user_.At<frmStationGetInstr>([](frmStationGetInstr& picker) {
      EXPECT_EQ(EntriesOf(picker, "LstInstrment").size(), 256U);
      Click(picker, "btnCancel");
    });
    Click(screen, "btnAdd");
    Click(screen, "btnReturn");
  });
}

TEST_F(StationBadInput, WithoutACalibrationTreeTheInstrumentsCanStillBeEdited) {
  fs::remove_all(tree_.Native("c:\\calfactors"));
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(ComboEntries(screen, "cmbSerial"), Texts{});
    EXPECT_EQ(ComboText(screen, "cmbSerial"), "3318A12345");
    questions_.Expect({.text = "There is no equipment calibration data.\r\n"
                               "It's not possible to add it.",
                       .title = "No data is availval."},
                      QMessageBox::Ok);
    Click(screen, "btnAdd");
    LeaveUnsaved(screen);
  });
  EXPECT_FALSE(tree_.Exists("c:\\calfactors"));
}

TEST_F(StationBadInput, OfTooManyCalibrationFilesTheFirstFiftyOneAreOffered) {
  for (int i = 10; i < 62; ++i) {
    WriteCalFile("PX12A", "SN" + std::to_string(i), {.serial = std::to_string(i)});
  }
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    questions_.ExpectError({"more than 51 data files", R"(c:\calfactors\PX12A)"});
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(ComboEntries(screen, "cmbSerial").size(), 51U);
    EXPECT_EQ(ComboText(screen, "cmbSerial"), "3318A12345");
    EXPECT_EQ(TextOf(screen, "txtData_2"), "13");
    LeaveUnsaved(screen);
  });
}

// ---- Saving and leaving.

TEST_F(StationBadInput, ADueDateOutsideEveryCalendarIsTold) {
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_8", "30");
    Choose(screen, "cmbCalMonth", "FEB");
    ExpectInvalidDate();
    Click(screen, "btnSave");
    Fill(screen, "txtData_8", "1");
    Fill(screen, "txtData_6", "99999");
    ExpectCannotSave();
    Click(screen, "btnSave");
    EXPECT_TRUE(LastDetailHolds("The number 99999 is outside the range"));
    EXPECT_TRUE(CanSave(screen));
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
}

TEST_F(StationBadInput, AFullDiskIsToldAtSaveAndAtReturnAndLosesNothing) {
  WriteInstrument();
  tree_.Write(kIndex, "PX9\r\nINDEX\r\n");
  FullDisk disk;
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_11", "typed");
    ExpectCannotSave();
    Click(screen, "btnSave");
    EXPECT_TRUE(LastDetailHolds("the disk is full"));
    EXPECT_TRUE(CanSave(screen));
    ExpectReturnQuestion(QMessageBox::Yes);
    ExpectCannotSave();
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    ExpectReturnQuestion(QMessageBox::No);
    questions_.ExpectError({"Cannot save the file", "the disk is full", kIndex});
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(TextOf(screen, "txtData_11"), "typed");
    EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
    EXPECT_EQ(tree_.Read(kIndex), "PX9\r\nINDEX\r\n");
    EXPECT_EQ(tree_.Names(kStation), (Texts{"INDEX", "PX12A"}));
    disk.isFull = false;
    ExpectReturnQuestion(QMessageBox::Yes);
    Click(screen, "btnReturn");
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile({.comment = "typed", .calData = ""}).Bytes());
  EXPECT_EQ(tree_.Read(kIndex), "PX12A\r\nINDEX\r\n");
}

TEST_F(StationBadInput, AReadOnlyStationIsToldAtSaveAndAtReturnAndCanBeLeft) {
  WriteInstrument();
  tree_.Write(kIndex, "PX9\r\nINDEX\r\n");
  fs::permissions(tree_.Native(kIndex), fs::perms(0444));
  fs::permissions(tree_.Native(R"(c:\stations\ST1\PX12A)"), fs::perms(0444));
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(kStation));
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_11", "typed");
    ExpectCannotSave();
    Click(screen, "btnSave");
    EXPECT_TRUE(LastDetailHolds("you have no permission"));
    ExpectDeleteInstrumentQuestion("PX12A", QMessageBox::Ok);
    questions_.ExpectError({"Cannot delete it", "you have no permission"});
    Click(screen, "btnDelete");
    EXPECT_EQ(TextOf(screen, "txtData_11"), "typed");
    ExpectReturnQuestion(QMessageBox::Yes);
    ExpectCannotSave();
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    ExpectReturnQuestion(QMessageBox::No);
    questions_.ExpectError({"Cannot save the file", "you have no permission", kIndex});
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    ExpectReturnQuestion(QMessageBox::No);
    questions_.ExpectError({"Cannot save the file", "you have no permission", kIndex});
    screen.close();
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
  EXPECT_EQ(tree_.Read(kIndex), "PX9\r\nINDEX\r\n");
}

TEST_F(StationBadInput, ClearingAReadOnlyStationIsToldAndDeletesNothing) {
  WriteInstrument();
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(kStation));
  AtStation([&](frmStationModelList& screen) {
    ExpectClearQuestion(QMessageBox::Yes);
    questions_.ExpectError({"Cannot delete it", "you have no permission"});
    Click(screen, "btnClear");
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
    questions_.ExpectError({"Cannot save the file", "you have no permission"});
    Press(Qt::Key_Escape);
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(ReadInstrument("PX12A"), InstrumentFile().Bytes());
}

}  // namespace
}  // namespace tarvell
