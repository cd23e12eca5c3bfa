// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>

#include "screens/station/StationFixture.h"
#include "screens/widgets/frmInput.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;

class StationList : public StationStage {
 protected:
  /// Presses Add, types a name and presses Enter.
  void AddStation(frmStationMain& screen, const QString& name) {
    user_.At<frmInput>([=](frmInput& dialog) {
      Type(name);
      EXPECT_EQ(TextOf(dialog, "txtText"), name.toStdString());
      Press(Qt::Key_Return);
    });
    Click(screen, "btnAdd");
  }

  /// Presses Delete with a station selected, and answers the question.
  void DeleteStation(frmStationMain& screen, const QString& name,
                     QMessageBox::StandardButton answer) {
    ExpectDeleteStationQuestion(name, answer);
    Click(screen, "btnDelete");
  }

  static bool ListIsEnabled(frmStationMain& screen) {
    return Find<QListWidget>(screen, "lstStation").isEnabled();
  }
};

TEST_F(StationList, TheScreenSaysWhatItIs) {
  AtStationList([](frmStationMain& screen) {
    EXPECT_EQ(screen.windowTitle(), "Station Data Edit - Morrand Tarvell");
    EXPECT_TRUE(screen.isModal());
    EXPECT_EQ(Find<QLabel>(screen, "Label1").text(), "Station Name");
    EXPECT_EQ(Find<QAbstractButton>(screen, "btnAdd").text(), "Add");
    EXPECT_EQ(Find<QAbstractButton>(screen, "btnEdit").text(), "Edit");
    EXPECT_EQ(Find<QAbstractButton>(screen, "btnDelete").text(), "Delete");
    EXPECT_EQ(Find<QAbstractButton>(screen, "btnReturn").text(), "Return to Main");
    Click(screen, "btnReturn");
  });
}

TEST_F(StationList, AnEmptyRootShowsThePlaceholderAndOpensNothing) {
  AtStationList([&](frmStationMain& screen) {
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    EXPECT_FALSE(ListIsEnabled(screen));
    questions_.ExpectNotice("No station is selected.");
    Click(screen, "btnEdit");
    questions_.ExpectNotice("No stations is selected.");
    Click(screen, "btnDelete");
    EXPECT_FALSE(tree_.Exists(kRootIndex));
    Click(screen, "btnReturn");
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "");
}

TEST_F(StationList, WithoutASelectionNothingIsOpenedOrDeleted) {
  tree_.MakeFolders(kStation);
  AtStationList([&](frmStationMain& screen) {
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"ST1"});
    EXPECT_TRUE(ListIsEnabled(screen));
    questions_.ExpectNotice("No station is selected.");
    Click(screen, "btnEdit");
    questions_.ExpectNotice("No stations is selected.");
    Click(screen, "btnDelete");
    Click(screen, "btnReturn");
  });
  EXPECT_TRUE(tree_.Exists(kStation));
}

TEST_F(StationList, StationsStandInTheOrderOfTheSystem) {
  for (const char* name : {"ST3", "ST1", "rack 2", "ST10", "a", "No Stations 2"}) {
    tree_.MakeFolders(std::string(kRoot) + "\\" + name);
  }
  tree_.Write("c:\\stations\\NOTES", "a file without extension");
  tree_.Write("c:\\stations\\notes.txt", "x");
  tree_.MakeFolders("c:\\stations\\with.dot");
  tree_.Write(kRootIndex, "of an earlier day, and longer than the new one\r\n\r\n\r\n\r\n\r\n\r\n");
  Texts expected;
  for (const std::string& name : NamesInOrder(kRoot)) {
    if (name.find('.') == std::string::npos && name != "INDEX") {
      expected.push_back(name);
    }
  }
  ASSERT_EQ(expected.size(), 7U);
  AtStationList([&](frmStationMain& screen) {
    EXPECT_EQ(EntriesOf(screen, "lstStation"), expected);
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kRootIndex), Lines(expected));
}

TEST_F(StationList, OnlyReturnWritesTheIndex) {
  tree_.MakeFolders(kStation);
  AtStationList([&](frmStationMain& screen) {
    Press(Qt::Key_Escape);
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_FALSE(tree_.Exists(kRootIndex));
  AtStationList([&](frmStationMain& screen) {
    screen.close();
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_FALSE(tree_.Exists(kRootIndex));
  AtStationList([&](frmStationMain& screen) {
    Find<QAbstractButton>(screen, "btnReturn").setFocus();
    Press(Qt::Key_Space);
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "ST1\r\n");
}

TEST_F(StationList, EachVisitReadsTheListAfresh) {
  frmStationMain screen(nullptr);
  user_.At<frmStationMain>([](frmStationMain& at) {
    EXPECT_EQ(EntriesOf(at, "lstStation"), Texts{"No Stations"});
    Click(at, "btnReturn");
  });
  screen.ShowModally();
  tree_.MakeFolders(kStation);
  user_.At<frmStationMain>([](frmStationMain& at) {
    EXPECT_EQ(EntriesOf(at, "lstStation"), Texts{"ST1"});
    EXPECT_TRUE(ListIsEnabled(at));
    Click(at, "btnReturn");
  });
  screen.ShowModally();
}

TEST_F(StationList, TabGoesThroughTheScreenInReadingOrder) {
  tree_.MakeFolders(kStation);
  AtStationList([](frmStationMain& screen) {
    Find<QListWidget>(screen, "lstStation").setFocus();
    for (const char* button : {"btnAdd", "btnEdit", "btnDelete", "btnReturn"}) {
      Press(Qt::Key_Tab);
      EXPECT_EQ(QApplication::focusWidget(), &Find<QAbstractButton>(screen, button)) << button;
    }
    Click(screen, "btnReturn");
  });
}

// ---- Adding.

TEST_F(StationList, AStationIsAdded) {
  AtStationList([&](frmStationMain& screen) {
    user_.At<frmInput>([](frmInput& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Add Station directory");
      EXPECT_EQ(Find<QLabel>(dialog, "lblCaption").text(), "Input station name");
      EXPECT_EQ(TextOf(dialog, "txtText"), "");
      EXPECT_FALSE(Find<QComboBox>(dialog, "cmbUnit").isVisible());
      Type("ST1");
      Click(dialog, "btnOk");
    });
    Click(screen, "btnAdd");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"ST1"});
    EXPECT_TRUE(ListIsEnabled(screen));
    EXPECT_TRUE(fs::is_directory(tree_.Native(kStation)));
    AddStation(screen, "rack 2");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), NamesInOrder(kRoot));
    EXPECT_EQ(tree_.Names(kRoot), (Texts{"ST1", "rack 2"}));
    Click(screen, "btnReturn");
  });
}

TEST_F(StationList, NoNameIsTold) {
  AtStationList([&](frmStationMain& screen) {
    for (const char* name : {"", " ", "    "}) {
      questions_.ExpectNotice("Station name is no input.");
      AddStation(screen, name);
    }
    // Giving the dialog up is no name, whatever was typed.
    user_.At<frmInput>([](frmInput&) {
      Type("ST1");
      Press(Qt::Key_Escape);
    });
    questions_.ExpectNotice("Station name is no input.");
    Click(screen, "btnAdd");
    user_.At<frmInput>([](frmInput& dialog) {
      Type("ST1");
      dialog.close();
    });
    questions_.ExpectNotice("Station name is no input.");
    Click(screen, "btnAdd");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    EXPECT_EQ(tree_.Names(kRoot), Texts{});
    Click(screen, "btnReturn");
  });
}

TEST_F(StationList, AListedNameIsTold) {
  tree_.MakeFolders(kStation);
  tree_.Write("c:\\stations\\NOTES", "x");
  AtStationList([&](frmStationMain& screen) {
    for (const char* name : {"ST1", "NOTES"}) {
      questions_.ExpectNotice("This station name was already exist.");
      AddStation(screen, name);
    }
    EXPECT_EQ(tree_.Names(kRoot), (Texts{"NOTES", "ST1"}));
    Click(screen, "btnReturn");
  });
}

TEST_F(StationList, APlaceholderIsAListedNameAsWell) {
  AtStationList([&](frmStationMain& screen) {
    questions_.ExpectNotice("This station name was already exist.");
    AddStation(screen, "No Stations");
    EXPECT_EQ(tree_.Names(kRoot), Texts{});
    Click(screen, "btnReturn");
  });
}

TEST_F(StationList, TheNameIsTakenAsItWasTyped) {
  tree_.MakeFolders(R"(c:\stations\St1)");
  AtStationList([&](frmStationMain& screen) {
    questions_.ExpectNotice("Can't make a new station");
    AddStation(screen, " St1 ");
    EXPECT_EQ(tree_.Names(kRoot), Texts{"St1"});
    AddStation(screen, " St1");
    EXPECT_EQ(tree_.Names(kRoot), (Texts{" St1", "St1"}));
    EXPECT_EQ(EntriesOf(screen, "lstStation"), NamesInOrder(kRoot));
    Click(screen, "btnReturn");
  });
  ASSERT_EQ(questions_.details.size(), 1U);
  EXPECT_TRUE(Contains(questions_.details[0].toStdString(), "it ends with a blank"));
}

TEST_F(StationList, ANameThatDiffersInCaseAloneIsNotMade) {
  tree_.Write(R"(c:\stations\ST1\PX12A)", "x");
  AtStationList([&](frmStationMain& screen) {
    questions_.ExpectNotice("Can't make a new station");
    AddStation(screen, "st1");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"ST1"});
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Names(kRoot), (Texts{"INDEX", "ST1"}));
  EXPECT_EQ(tree_.Read(R"(c:\stations\ST1\PX12A)"), "x");
  ASSERT_EQ(questions_.details.size(), 1U);
  EXPECT_TRUE(Contains(questions_.details[0].toStdString(), "there is one of this name already"));
}

// ---- Deleting.

TEST_F(StationList, AStationIsDeletedWithAllItHolds) {
  tree_.Write(R"(c:\stations\TRASHED1\PX12A)", "x");
  tree_.Write(R"(c:\stations\TRASHED1\folder\inside)", "x");
  tree_.Write(R"(c:\stations\ST2\PX12A)", "other");
  AtStationList([&](frmStationMain& screen) {
    ClickEntry(screen, "lstStation", "TRASHED1");
    DeleteStation(screen, "TRASHED1", QMessageBox::Cancel);
    EXPECT_EQ(tree_.Names(R"(c:\stations\TRASHED1)"), (Texts{"PX12A", "folder"}));
    EXPECT_EQ(EntriesOf(screen, "lstStation"), NamesInOrder(kRoot));
    DeleteStation(screen, "TRASHED1", QMessageBox::Ok);
    EXPECT_FALSE(tree_.Exists(R"(c:\stations\TRASHED1)"));
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"ST2"});
    EXPECT_EQ(tree_.Read(R"(c:\stations\ST2\PX12A)"), "other");
    questions_.ExpectNotice("No stations is selected.");
    Click(screen, "btnDelete");
    Click(screen, "btnReturn");
  });
  EXPECT_TRUE(QFile::exists(QDir::homePath() + "/data/Trash/files/TRASHED1/PX12A"));
  EXPECT_EQ(tree_.Read(kRootIndex), "ST2\r\n");
}

TEST_F(StationList, DeletingTheLastStationShowsThePlaceholder) {
  tree_.MakeFolders(kStation);
  AtStationList([&](frmStationMain& screen) {
    ClickEntry(screen, "lstStation", "ST1");
    DeleteStation(screen, "ST1", QMessageBox::Ok);
    EXPECT_EQ(EntriesOf(screen, "lstStation"), Texts{"No Stations"});
    EXPECT_FALSE(ListIsEnabled(screen));
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(kRootIndex), "");
}

// ---- Opening.

TEST_F(StationList, AStationIsOpenedAndTheListReadAgain) {
  tree_.MakeFolders("c:\\stations\\rack 2");
  AtStationList([&](frmStationMain& screen) {
    ClickEntry(screen, "lstStation", "rack 2");
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      EXPECT_EQ(instruments.StationName, "rack 2");
      EXPECT_EQ(instruments.windowTitle(), "rack 2 - Station Data Edit - Morrand Tarvell");
      EXPECT_EQ(Find<QLabel>(instruments, "lbStation").text(), "StationName :  rack 2");
      tree_.MakeFolders("c:\\stations\\ST2");
      Click(instruments, "btnReturn");
    });
    Click(screen, "btnEdit");
    EXPECT_EQ(EntriesOf(screen, "lstStation"), NamesInOrder(kRoot));
    EXPECT_EQ(EntriesOf(screen, "lstStation").size(), 2U);
    EXPECT_FALSE(tree_.Exists(kRootIndex));
    Click(screen, "btnReturn");
  });
  EXPECT_EQ(tree_.Read(R"(c:\stations\rack 2\INDEX)"), "INDEX\r\n");
}

TEST_F(StationList, EachVisitOfAStationHasAScreenOfItsOwn) {
  WriteInstrument();
  AtStationList([&](frmStationMain& screen) {
    ClickEntry(screen, "lstStation", "ST1");
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      ClickEntry(instruments, "LstInstrment", "PX12A");
      LeaveUnsaved(instruments);
    });
    Click(screen, "btnEdit");
    ClickEntry(screen, "lstStation", "ST1");
    user_.At<frmStationModelList>([&](frmStationModelList& instruments) {
      EXPECT_EQ(ShownFields(instruments), kNoFields);
      Click(instruments, "btnReturn");
    });
    Click(screen, "btnEdit");
    Click(screen, "btnReturn");
  });
}

}  // namespace
}  // namespace tarvell
