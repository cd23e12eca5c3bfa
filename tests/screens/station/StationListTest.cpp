// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/FileCharacters.h"
#include "screens/station/StationFixture.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/frmInput.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

class StationList : public StationStage {
 protected:
  /// Presses Add, types a name and presses Enter.
  void AddStation(frmStationMain& screen, const QString& name) {
    user_.At<frmInput>([=](frmInput&) {
      Type(name);
      Press(Qt::Key_Return);
    });
    Click(screen, "btnAdd");
  }
  void DeleteStation(frmStationMain& screen, const QString& name,
                     QMessageBox::StandardButton answer = QMessageBox::Ok) {
    ClickEntry(screen, "lstStation", name);
    ExpectDeleteStationQuestion(name, answer);
    Click(screen, "btnDelete");
  }
  /// Presses Edit and Delete, neither of which finds a station.
  void ExpectNothingSelected(frmStationMain& screen) {
    questions_.ExpectNotice("No station is selected.");
    Click(screen, "btnEdit");
    questions_.ExpectNotice("No stations is selected.");
    Click(screen, "btnDelete");
  }
  static bool ListIsEnabled(frmStationMain& screen) {
    return Find<QListWidget>(screen, "lstStation").isEnabled();
  }
};

TEST_F(StationList, TheScreenShowsItsCaptions) {
  AtStationList([&](frmStationMain& screen) {
    EXPECT_EQ(screen.windowTitle(), "Station Data Edit - Morrand Tarvell");
    EXPECT_TRUE(screen.isModal());
    EXPECT_EQ(PlainCaption(Find<QLabel>(screen, "Label1").text()), "Station Name");
    for (const auto& [button, text] :
         {std::pair("btnAdd", "Add"), std::pair("btnEdit", "Edit"),
          std::pair("btnDelete", "Delete"), std::pair("btnReturn", "Return to Main")}) {
      EXPECT_EQ(PlainCaption(Find<QAbstractButton>(screen, button).text()), text);
    }
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    EXPECT_FALSE(ListIsEnabled(screen));
    ExpectNothingSelected(screen);
    EXPECT_FALSE(tree_.Exists(kRootIndex));
    Click(screen, "btnReturn");
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "");
}

TEST_F(StationList, StationsKeepTheOrderOfTheDirectoryAndOnlyReturnWritesINDEX) {
  for (const char* name : {"ST3", "ST1", "rack 2", "ST10", "a", "No Stations 2"}) {
    tree_.MakeFolders(std::string(kRoot) + "\\" + name);
  }
  const Texts expected = NamesInOrder(kRoot);
  for (const auto& leave : std::vector<std::function<void(frmStationMain&)>>{
           [](frmStationMain&) { Press(Qt::Key_Escape); },
           [](frmStationMain& screen) { screen.close(); },
           [](frmStationMain& screen) { Click(screen, "btnReturn"); }}) {
    EXPECT_FALSE(tree_.Exists(kRootIndex));
    AtStationList([&](frmStationMain& screen) {
      EXPECT_EQ(EntriesOf(screen, "lstStation"), expected);
      EXPECT_TRUE(ListIsEnabled(screen));
      ExpectNothingSelected(screen);
      leave(screen);
      EXPECT_FALSE(screen.isVisible());
    });
  }
  EXPECT_EQ(tree_.Read(kRootIndex), Lines(expected));
}

TEST_F(StationList, EscapeAsksWhetherToSaveINDEXAfterAChange) {
  tree_.MakeFolders(kStation);
  tree_.Write(kRootIndex, "earlier\r\n");
  const auto escape = [&](frmStationMain& screen, QMessageBox::StandardButton answer) {
    questions_.Expect({.text = "Stations were added or deleted, and their list INDEX was not "
                               "saved. Do you want to save it?",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                       .defaultButton = QMessageBox::Yes},
                      answer);
    ClickEntry(screen, "lstStation", "ST1");
    Press(Qt::Key_Escape);
    EXPECT_EQ(screen.isVisible(), answer == QMessageBox::Cancel);
  };
  AtStationList([&](frmStationMain& screen) {
    AddStation(screen, "ST2");
    escape(screen, QMessageBox::Cancel);
    escape(screen, QMessageBox::No);
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "earlier\r\n");
  AtStationList([&](frmStationMain& screen) {
    DeleteStation(screen, "ST2");
    escape(screen, QMessageBox::Yes);
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\n");
}

TEST_F(StationList, ANameThatCannotBeUsedMakesNoStation) {
  tree_.MakeFolders(kStation);
  AtStationList([&](frmStationMain& screen) {
    questions_.ExpectNotice("Station name is no input.");
    AddStation(screen, "  ");
    // Cancelling the dialog gives no name, whatever was typed.
    user_.At<frmInput>([](frmInput& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Add Station directory");
      EXPECT_EQ(PlainCaption(Find<QLabel>(dialog, "lblCaption").text()), "Input station name");
      EXPECT_FALSE(Find<QComboBox>(dialog, "cmbUnit").isVisible());
      Type("ST2");
      Press(Qt::Key_Escape);
    });
    questions_.ExpectNotice("Station name is no input.");
    Click(screen, "btnAdd");
    questions_.ExpectNotice("This station name was already exist.");
    AddStation(screen, "ST1");
    questions_.ExpectNotice("Can't make a new station");
    AddStation(screen, "st1");
    EXPECT_TRUE(LastDetailContains("there already is one with this name"));
    AddStation(screen, " ST1");  // the name is not trimmed
    EXPECT_EQ(tree_.Names(kRoot), (Texts{" ST1", "ST1"}));
    DeleteStation(screen, " ST1");
    DeleteStation(screen, "ST1");
    questions_.ExpectNotice("This station name was already exist.");
    AddStation(screen, "No Stations");  // the placeholder is in the list
    Click(screen, "btnReturn");
  });
}

TEST_F(StationList, AStationIsDeletedWithAllItHolds) {
  tree_.Write(R"(c:\stations\DELETED\folder\inside)", "x");
  tree_.Write(R"(c:\stations\ST2\PX12A)", "other");
  tree_.Write(R"(c:\stations\st2\PX12A)", "kept");
  AtStationList([&](frmStationMain& screen) {
    DeleteStation(screen, "DELETED", QMessageBox::Cancel);
    EXPECT_TRUE(tree_.Exists(R"(c:\stations\DELETED\folder\inside)"));
    DeleteStation(screen, "DELETED");
    EXPECT_FALSE(tree_.Exists(R"(c:\stations\DELETED)"));
    ExpectNothingSelected(screen);
    // A station that vanished is not mistaken for one whose name differs only in case.
    fs::remove_all(tree_.Root() / "drives/c/stations/ST2");
    ClickEntry(screen, "lstStation", "ST2");
    ExpectDeleteStationQuestion("ST2", QMessageBox::Ok);
    questions_.ExpectError({"Cannot delete it", "does not exist", R"(c:\stations\ST2)"});
    Click(screen, "btnDelete");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"st2"});
    DeleteStation(screen, "st2");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    EXPECT_FALSE(ListIsEnabled(screen));
    Click(screen, "btnReturn");
  });
  EXPECT_TRUE(fs::exists(InTrash("DELETED") / "folder/inside"));
  EXPECT_EQ(tree_.Read(kRootIndex), "");
}

TEST_F(StationList, AFolderNamedLikeThePlaceholderIsNeitherOpenedNorDeleted) {
  tree_.Write(R"(c:\stations\No Stations\PX12A)", "x");
  AtStationList([&](frmStationMain& screen) {
    EXPECT_TRUE(ListIsEnabled(screen));
    ClickEntry(screen, "lstStation", "No Stations");
    ExpectNothingSelected(screen);
    Click(screen, "btnReturn");
  });
  EXPECT_TRUE(tree_.Exists(R"(c:\stations\No Stations\PX12A)"));
  EXPECT_EQ(tree_.Read(kRootIndex), "");
}

// ---- Opening.

TEST_F(StationList, AStationThatVanishedCanBeLeftWithoutINDEX) {
  tree_.MakeFolders(kStation);
  tree_.Write("c:\\stations\\NOTES", "x");
  const auto expectQuestion = [&](QMessageBox::StandardButton answer) {
    questions_.Expect({.text = "The folder of this station is not there any more. Leave the "
                               "station without writing its list INDEX?",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      answer);
  };
  AtStationList([&](frmStationMain& screen) {
    fs::remove(tree_.Native(kStation));
    ClickEntry(screen, "lstStation", "ST1");
    questions_.ExpectError({"Cannot list the folder", "does not exist", kStation});
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      EXPECT_EQ(EntriesOf(instruments, "LstInstrment"), Texts{"No Model"});
      const auto returnAnd = [&](QMessageBox::StandardButton answer) {
        questions_.ExpectError({"Cannot list the folder", "does not exist", kStation});
        expectQuestion(answer);
        Click(instruments, "btnReturn");
        EXPECT_EQ(instruments.isVisible(), answer == QMessageBox::No);
      };
      returnAnd(QMessageBox::No);
      returnAnd(QMessageBox::Yes);
    });
    Click(screen, "btnEdit");
    EXPECT_FALSE(tree_.Exists(kStation));
    // A file instead of a folder; Escape asks as Return does.
    ClickEntry(screen, "lstStation", "NOTES");
    const Texts parts = {"where a folder is expected, there is something else", "NOTES"};
    questions_.ExpectError(parts);
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
        questions_.ExpectError(parts);
        expectQuestion(answer);
        Press(Qt::Key_Escape);
        EXPECT_EQ(instruments.isVisible(), answer == QMessageBox::No);
      }
    });
    Click(screen, "btnEdit");
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(R"(c:\stations\NOTES)"), "x");
}

TEST_F(StationList, ThatCannotBeReadDoesNotReplaceINDEX) {
  tree_.MakeFolders(kStation);
  const fs::path away = tree_.Native("c:\\away");
  fs::rename(tree_.Native(kRoot), away);
  const Texts parts = {"Cannot list the folder", "does not exist", kRoot};
  questions_.ExpectError(parts);
  AtStationList([&](frmStationMain& screen) {
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    questions_.ExpectError(parts);
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    fs::rename(away, tree_.Native(kRoot));
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\n");
}

// ---- Trees that another program filled.

// Names with characters that mean something elsewhere, that are no UTF-8, or as long as can be.
const Texts kOddNames = {"a\nb",    "\"quoted\"", "a,b",          "*",
                         " blank ", "caf\u00E9",  "\xE9\xFF\xC3", std::string(255, 'n')};

/// Selects the entry of this name.
void Select(QWidget& screen, const QString& list, const std::string& name) {
  auto& control = Find<QListWidget>(screen, list);
  const auto found = control.findItems(ToQt(NameText(name)), Qt::MatchExactly);
  ASSERT_EQ(found.size(), 1) << name;
  control.setCurrentItem(found.first());
}

using HostileTreeAtScreen = StationStage;

TEST_F(HostileTreeAtScreen, StationsAndInstrumentsOfOddNamesAreOpenedAndDeleted) {
  const fs::path root = tree_.Native(kRoot);
  for (const std::string& name : kOddNames) {
    fs::create_directory(root / name);
    WriteNative(root / name / name, InstrumentFile{.comment = "odd"}.Bytes());
  }
  tree_.Write(kRootIndex, "earlier\r\n");
  AtStationList([&](frmStationMain& screen) {
    // INDEX cannot hold a name with a line end.
    questions_.ExpectError({"\"a\nb\"", "the list cannot hold", "Rename", kRootIndex});
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(tree_.Read(kRootIndex), "earlier\r\n");
    for (const std::string& name : kOddNames) {
      SCOPED_TRACE(name);
      Select(screen, "lstStation", name);
      user_.At<frmStationModelList>([&](frmStationModelList& station) {
        Select(station, "LstInstrment", name);
        EXPECT_EQ(TextOf(station, "txtData_11"), "odd");
        Clear(station);
        LeaveUnsaved(station);
      });
      Click(screen, "btnEdit");
      EXPECT_FALSE(fs::exists(root / name / name));
      EXPECT_EQ(ReadNative(root / name / "INDEX"), "INDEX\r\n");
      Select(screen, "lstStation", name);
      ExpectDeleteStationQuestion(ToQt(NameText(name)), QMessageBox::Ok);
      Click(screen, "btnDelete");
      EXPECT_FALSE(fs::exists(root / name));
    }
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "");
}

// ---- Two visits at once.

using TwoVisits = StationStage;

TEST_F(TwoVisits, KeepInAnIndexWhatTheOtherWrote) {
  WriteInstrument({.model = "PX13A"});
  AtStationList([&](frmStationMain& stations) {
    ClickEntry(stations, "lstStation", "ST1");
    user_.At<frmStationModelList>([&](frmStationModelList& screen) {
      WriteInstrument({.model = "PX99"});
      WriteStationInstrumentIndex(kStation, {"PX13A", "PX99", "UNSAVED"});
      Fill(screen, "txtData_0", "PX99");
      ExpectDeleteInstrumentQuestion("PX99", QMessageBox::Ok);
      Click(screen, "btnDelete");
      WriteInstrument({.model = "PX11A"});
      Click(screen, "btnReturn");
    });
    Click(stations, "btnEdit");
    MakeStation(kRoot, "ST2");
    WriteStationIndex(kRoot, {"ST1", "ST2"});
    Click(stations, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kIndex), "PX13A\r\nPX11A\r\nUNSAVED\r\nINDEX\r\n");
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\nST2\r\n");
}

}  // namespace
}  // namespace tarvell
