// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "support/OrdinaryUser.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)
using Texts = std::vector<std::string>;

const std::string kRoot = R"(c:\calfactors)";

class CalibrationMenu : public SensorStage {
 protected:
  CalibrationMenu() { tree_.MakeFolders(kRoot); }

  /// Writes a PX12A data file of this serial number under a name of the test's.
  void WriteData(const std::string& folder, const std::string& name,
                 const std::string& serial) const {
    const SensorFile file{.serial = serial, .rows = {{"50.00", "100.0"}}};
    tree_.Write(kRoot + "\\" + folder + "\\" + name, file.Bytes());
  }

  /// Names without a dot in a folder, in the platform's order.
  [[nodiscard]] Texts InOrder(const std::string& folder) const {
    Texts names;
    EXPECT_FALSE(CurrentPlatform().Search(tree_.Native(folder).string(),
                                          SearchKind::NamesWithoutDot,
                                          [&](const std::string& name, EntryKind) {
                                            names.push_back(name);
                                            return true;
                                          }));
    return names;
  }

  /// Answers the delete question.
  void AnswerDelete(const QString& what, QMessageBox::StandardButton answer) {
    questions_.Expect({.text = "Are you sure you want to delete " + what + "?",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      answer);
  }
};

Texts Models(frmCalibrationMain& menu) {
  return EntriesOf(menu, "LstInstrment");
}

Texts Serials(frmCalibrationMain& menu) {
  return EntriesOf(menu, "lstSerialNumber");
}

/// The selected entry of a list, "" when none is.
std::string Selected(frmCalibrationMain& menu, const QString& list) {
  const QList<QListWidgetItem*> selected = Find<QListWidget>(menu, list).selectedItems();
  return selected.isEmpty() ? std::string() : selected.first()->text().toStdString();
}

std::string Caption(frmCalibrationMain& menu, const QString& button) {
  return Find<QPushButton>(menu, button).text().toStdString();
}

void Choose(frmCalibrationMain& menu, const QString& model, const QString& serial) {
  ClickEntry(menu, "LstInstrment", model);
  ClickEntry(menu, "lstSerialNumber", serial);
}

// ---- The screen.

TEST_F(CalibrationMenu, ShowsItsCaptions) {
  AtMenu([](frmCalibrationMain& menu) {
    EXPECT_EQ(menu.windowTitle(), "Calibration Data Menu - Morrand Tarvell");
    EXPECT_EQ(Find<QLabel>(menu, "Label1").text(), "Current  Modules Lists");
    EXPECT_EQ(Caption(menu, "btnAdd"), "Add");
    EXPECT_EQ(Caption(menu, "btnEdit"), "Edit");
    EXPECT_EQ(Caption(menu, "btnDelete"), "Delete");
    EXPECT_EQ(Caption(menu, "btnReturn"), "Return to Main");
    EXPECT_TRUE(menu.findChildren<QMenuBar*>().isEmpty());
  });
  RunMenu();
}

TEST_F(CalibrationMenu, TheAddMenuHoldsElevenModelsInOrder) {
  AtMenu([](frmCalibrationMain& menu) { Click(menu, "btnAdd"); });
  user_.At<QMenu>([](QMenu& add) {
    Texts captions;
    for (const QAction* entry : add.actions()) {
      captions.push_back(entry->text().toStdString());
      EXPECT_EQ(entry->objectName(), "mnu" + entry->text());
      EXPECT_TRUE(entry->isEnabled()) << captions.back();
    }
    EXPECT_EQ(captions, (Texts{"RT410A", "RT410B", "RT520A", "RT520C", "RT730A", "PX11D", "PX12A",
                               "PX13A", "PX11A", "PX60G", "PX60H"}));
    EXPECT_EQ(add.title(), "Add");
    QTest::keyClick(&add, Qt::Key_Escape);
  });
  AtMenu([](frmCalibrationMain& menu) { EXPECT_TRUE(Models(menu).empty()); });
  RunMenu();
  EXPECT_EQ(tree_.Names(kRoot), Texts{});
}

TEST_F(CalibrationMenu, TheAddMenuComesUpBesideItsButton) {
  AtMenu([&](frmCalibrationMain& menu) {
    user_.At<QMenu>([&menu](QMenu& add) {
      const auto& button = Find<QPushButton>(menu, "btnAdd");
      const QRect place(button.mapToGlobal(QPoint(0, 0)), button.size());
      EXPECT_TRUE(place.adjusted(-5, -5, 5, 5).contains(add.geometry().topLeft()));
      add.close();
    });
    Click(menu, "btnAdd");
  });
  RunMenu();
}

TEST_F(CalibrationMenu, EscapeReturnsToTheMainMenu) {
  user_.At<frmCalibrationMain>([](frmCalibrationMain& menu) {
    Find<QPushButton>(menu, "btnAdd").setFocus();
    Press(Qt::Key_Escape);
    EXPECT_FALSE(menu.isVisible());
  });
  frmCalibrationMain menu(nullptr);
  menu.ShowModally();
}

// ---- The lists.

TEST_F(CalibrationMenu, ListsTheFilledFoldersInThePlatformsOrder) {
  for (const char* model : {"PX12A", "PX11D", "RT410A", "OTHER"}) {
    WriteData(model, "SN1", "1");
  }
  const Texts order = InOrder(kRoot);
  ASSERT_EQ(order.size(), 4U);
  AtMenu([&](frmCalibrationMain& menu) {
    EXPECT_EQ(Models(menu), order);
    EXPECT_TRUE(Serials(menu).empty());
    EXPECT_EQ(Selected(menu, "LstInstrment"), "");
  });
  RunMenu();
}

TEST_F(CalibrationMenu, ListsNoEmptyFolderNoFileAndNoNameWithADot) {
  WriteData("PX12A", "SN1", "1");
  WriteData("PX13A.old", "SN1", "1");
  tree_.MakeFolders(kRoot + R"(\PX11A)");
  tree_.Write(kRoot + R"(\README)", "text");
  AtMenu([](frmCalibrationMain& menu) { EXPECT_EQ(Models(menu), Texts{"PX12A"}); });
  RunMenu();
}

TEST_F(CalibrationMenu, ARootThatIsEmptyOrMissingGivesEmptyLists) {
  for (const bool missing : {false, true}) {
    if (missing) {
      std::filesystem::remove(tree_.Native(kRoot));
    }
    AtMenu([](frmCalibrationMain& menu) {
      EXPECT_TRUE(Models(menu).empty());
      EXPECT_TRUE(Serials(menu).empty());
    });
    RunMenu();
  }
}

TEST_F(CalibrationMenu, ListsTheSerialNumbersOfTheChosenModelInThePlatformsOrder) {
  for (const char* serial : {"AB1", "AB2", "AB3", "AB4"}) {
    WriteData("PX12A", "SN" + std::string(serial), serial);
  }
  WriteData("PX11D", "SN9", "9");
  Texts order = InOrder(kRoot + R"(\PX12A)");
  for (std::string& name : order) {
    name = name.substr(2);
  }
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(Serials(menu), order);
    EXPECT_EQ(Selected(menu, "lstSerialNumber"), "");
    ClickEntry(menu, "LstInstrment", "PX11D");
    EXPECT_EQ(Serials(menu), Texts{"9"});
  });
  RunMenu();
}

TEST_F(CalibrationMenu, ListsTheWholeSerialNumberOfTheHeader) {
  WriteData("PX12A", "SN5:67", "US 12:34 5:67");
  AtMenu([](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(Serials(menu), Texts{"US 12:34 5:67"});
  });
  RunMenu();
}

TEST_F(CalibrationMenu, AFolderOfOtherFilesIsListedWithoutSerialNumbers) {
  for (const char* name : {"sN1", "SN1.dat", "S", "XSN1", "notes"}) {
    WriteData("PX12A", name, "1");
  }
  AtMenu([](frmCalibrationMain& menu) {
    EXPECT_EQ(Models(menu), Texts{"PX12A"});
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_TRUE(Serials(menu).empty());
  });
  RunMenu();
}

TEST_F(CalibrationMenu, TheKeyboardChoosesAModelToo) {
  WriteData("PX12A", "SN1", "1");
  WriteData("RT410A", "SN2", "2");
  AtMenu([](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", QString::fromStdString(Models(menu).at(0)));
    const Texts first = Serials(menu);
    const std::string caption = Caption(menu, "btnEdit");
    Press(Qt::Key_Down);
    EXPECT_EQ(Selected(menu, "LstInstrment"), Models(menu).at(1));
    EXPECT_NE(Serials(menu), first);
    EXPECT_NE(Caption(menu, "btnEdit"), caption);
    Press(Qt::Key_Up);
    EXPECT_EQ(Serials(menu), first);
    EXPECT_EQ(Caption(menu, "btnEdit"), caption);
  });
  RunMenu();
}

TEST_F(CalibrationMenu, AFurtherClickOnTheModelReadsItsFolderAgain) {
  WriteData("PX12A", "SN1", "1");
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(Serials(menu), Texts{"1"});
    std::filesystem::remove(tree_.Native(kRoot + R"(\PX12A\SN1)"));
    WriteData("PX12A", "SN2", "2");
    Settle();
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(Serials(menu), Texts{"2"});
  });
  RunMenu();
}

TEST_F(CalibrationMenu, EveryOpeningReadsTheListsAfreshAndSelectsNothing) {
  WriteData("RT410A", "SN1", "1");
  frmCalibrationMain menu(nullptr);
  AtMenu([](frmCalibrationMain& screen) {
    Choose(screen, "RT410A", "1");
    EXPECT_EQ(Caption(screen, "btnEdit"), "Update");
    Click(screen, "btnReturn");
  });
  menu.ShowModally();
  std::filesystem::remove_all(tree_.Native(kRoot + R"(\RT410A)"));
  WriteData("PX12A", "SN2", "2");
  AtMenu([](frmCalibrationMain& screen) {
    EXPECT_EQ(Models(screen), Texts{"PX12A"});
    EXPECT_EQ(Selected(screen, "LstInstrment"), "");
    EXPECT_TRUE(Serials(screen).empty());
    EXPECT_EQ(Caption(screen, "btnEdit"), "Edit");
    Click(screen, "btnReturn");
  });
  menu.ShowModally();
}

TEST_F(CalibrationMenu, AModelFolderThatMayNotBeReadIsListedAndTold) {
  WriteData("PX12A", "SN1", "1");
  const OrdinaryUser user(tree_.Root());
  const std::filesystem::path folder = tree_.Native(kRoot + R"(\PX12A)");
  std::filesystem::permissions(folder, std::filesystem::perms(0));
  AtMenu([&](frmCalibrationMain& menu) {
    EXPECT_EQ(Models(menu), Texts{"PX12A"});
    questions_.ExpectError({"permission", kRoot + R"(\PX12A)"});
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_TRUE(Serials(menu).empty());
  });
  RunMenu();
  std::filesystem::permissions(folder, std::filesystem::perms(0755));
}

// ---- The caption of the edit button.

TEST_F(CalibrationMenu, TheEditButtonReadsUpdateForTestKits) {
  const std::vector<std::pair<const char*, const char*>> captions = {
      {"RT410A", "Update"}, {"PX12A", "Edit"}, {"RT410B", "Update"},
      {"RT520A", "Edit"},   {"OTHER", "Edit"}, {"RT410A", "Update"}};
  for (const auto& [model, caption] : captions) {
    WriteData(model, "SN1", "1");
  }
  AtMenu([&](frmCalibrationMain& menu) {
    for (const auto& [model, caption] : captions) {
      ClickEntry(menu, "LstInstrment", model);
      EXPECT_EQ(Caption(menu, "btnEdit"), caption) << model;
    }
  });
  RunMenu();
}

TEST_F(CalibrationMenu, TheCaptionFollowsTheFocusAndTheSerialListDoesNot) {
  WriteData("RT410B", "SN1", "1");
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "RT410B");
    auto& button = Find<QPushButton>(menu, "btnEdit");
    button.setFocus();
    button.setText("Edit");
    WriteData("RT410B", "SN2", "2");
    Find<QListWidget>(menu, "LstInstrment").setFocus();
    EXPECT_EQ(Caption(menu, "btnEdit"), "Update");
    EXPECT_EQ(Serials(menu), Texts{"1"});
  });
  RunMenu();
}

// ---- Add.

class EveryModel : public CalibrationMenu, public testing::WithParamInterface<const char*> {};

TEST_P(EveryModel, AddMakesItsFolderAndOpensItsEditor) {
  const std::string model = GetParam();
  const bool hasPages = model.substr(0, 2) == "RT";
  tree_.InstallTemplate(model);
  ChooseAdd(QString::fromStdString(model));
  const auto leave = [&](QDialog& editor) {
    EXPECT_TRUE(editor.windowTitle().startsWith("Editing calibraition data (" +
                                                QString::fromStdString(model) + " - "))
        << editor.windowTitle().toStdString();
    EXPECT_TRUE(tree_.Exists(kRoot + "\\" + model));
    editor.reject();
  };
  if (hasPages) {
    user_.At<frmCalDataTabInput>([&](frmCalDataTabInput& editor) { leave(editor); });
  } else {
    user_.At<frmCalDataInput>([&](frmCalDataInput& editor) { leave(editor); });
  }
  // Nothing was saved: the folder is there, and is not listed.
  AtMenu([](frmCalibrationMain& menu) { EXPECT_TRUE(Models(menu).empty()); });
  RunMenu();
  EXPECT_EQ(tree_.Names(kRoot), Texts{model});
  EXPECT_EQ(tree_.Names(kRoot + "\\" + model), Texts{});
}

INSTANTIATE_TEST_SUITE_P(WithAnEditor, EveryModel,
                         testing::Values("RT520A", "RT520C", "RT730A", "PX11D", "PX12A", "PX13A",
                                         "PX11A", "PX60G", "PX60H"));

TEST_F(CalibrationMenu, AddedDataAreListedAndTheirModelIsSelected) {
  tree_.InstallTemplate("PX12A");
  WriteData("RT410A", "SN1", "1");
  AtMenu([](frmCalibrationMain& menu) { Choose(menu, "RT410A", "1"); });
  ChooseAdd("PX12A");
  user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
    Fill(editor, "txtSerial", "3318A12345");
    Click(editor, "btnOk");
  });
  AtMenu([](frmCalibrationMain& menu) {
    Texts models = Models(menu);
    std::sort(models.begin(), models.end());
    EXPECT_EQ(models, (Texts{"PX12A", "RT410A"}));
    EXPECT_EQ(Selected(menu, "LstInstrment"), "PX12A");
    EXPECT_EQ(Serials(menu), Texts{"3318A12345"});
    EXPECT_EQ(Selected(menu, "lstSerialNumber"), "");
    EXPECT_EQ(Caption(menu, "btnEdit"), "Edit");
  });
  RunMenu();
  EXPECT_EQ(tree_.Names(kRoot + R"(\PX12A)"), Texts{"SN12345"});
}

TEST_F(CalibrationMenu, AfterACancelledFirstAddNothingIsSelected) {
  tree_.InstallTemplate("PX12A");
  WriteData("RT410A", "SN1", "1");
  AtMenu([](frmCalibrationMain& menu) { Choose(menu, "RT410A", "1"); });
  ChooseAdd("PX12A");
  user_.At<frmCalDataInput>([](frmCalDataInput& editor) { Click(editor, "btnCancel"); });
  AtMenu([](frmCalibrationMain& menu) {
    EXPECT_EQ(Models(menu), Texts{"RT410A"});
    EXPECT_EQ(Selected(menu, "LstInstrment"), "");
    EXPECT_TRUE(Serials(menu).empty());
    EXPECT_EQ(Caption(menu, "btnEdit"), "Edit");
  });
  RunMenu();
}

TEST_F(CalibrationMenu, AfterACancelledFurtherAddTheModelIsSelected) {
  tree_.InstallTemplate("PX12A");
  WriteData("PX12A", "SN1", "1");
  ChooseAdd("PX12A");
  user_.At<frmCalDataInput>([](frmCalDataInput& editor) { Click(editor, "btnCancel"); });
  AtMenu([](frmCalibrationMain& menu) {
    EXPECT_EQ(Selected(menu, "LstInstrment"), "PX12A");
    EXPECT_EQ(Serials(menu), Texts{"1"});
  });
  RunMenu();
}

TEST_F(CalibrationMenu, AFolderInLowerCaseWorksAndStaysOneFolder) {
  tree_.InstallTemplate("PX12A");
  WriteData("px12a", "sn1", "1");
  AtMenu([&](frmCalibrationMain& menu) {
    EXPECT_EQ(Models(menu), Texts{"PX12A"});
    Choose(menu, "PX12A", "1");
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      EXPECT_EQ(TextOf(editor, "txtSerial"), "1");
      Fill(editor, "txtComment", "second");
      Click(editor, "btnOk");
    });
    Click(menu, "btnEdit");
  });
  ChooseAdd("PX12A");
  user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
    Fill(editor, "txtSerial", "2");
    Click(editor, "btnOk");
  });
  AtMenu([&](frmCalibrationMain& menu) {
    EXPECT_EQ(Models(menu), Texts{"PX12A"});
    EXPECT_EQ(Selected(menu, "LstInstrment"), "PX12A");
    EXPECT_EQ(Serials(menu).size(), 2U);
    ClickEntry(menu, "lstSerialNumber", "1");
    AnswerDelete("PX12A(1)", QMessageBox::Yes);
    Click(menu, "btnDelete");
  });
  RunMenu();
  EXPECT_EQ(tree_.Names(kRoot), Texts{"px12a"});
  EXPECT_EQ(tree_.Names(kRoot + R"(\px12a)"), Texts{"SN2"});
}

TEST_F(CalibrationMenu, AddBelowARootThatVanishedIsTold) {
  tree_.InstallTemplate("PX12A");
  WriteData("PX12A", "SN1", "1");
  AtMenu([&](frmCalibrationMain& menu) {
    Choose(menu, "PX12A", "1");
    std::filesystem::remove_all(tree_.Native(kRoot));
    questions_.ExpectError({"folder", kRoot + R"(\PX12A)"});
  });
  ChooseAdd("PX12A");
  AtMenu([](frmCalibrationMain& menu) {
    EXPECT_EQ(Models(menu), Texts{"PX12A"});
    EXPECT_EQ(Serials(menu), Texts{"1"});
    EXPECT_EQ(Selected(menu, "lstSerialNumber"), "1");
  });
  RunMenu();
  EXPECT_FALSE(tree_.Exists(kRoot));
}

TEST_F(CalibrationMenu, AddWhereAFileHasTheNameOfTheFolderIsTold) {
  tree_.InstallTemplate("PX12A");
  tree_.Write(kRoot + R"(\PX12A)", "a file");
  questions_.ExpectError({kRoot + R"(\PX12A)"});
  ChooseAdd("PX12A");
  RunMenu();
  EXPECT_EQ(tree_.Read(kRoot + R"(\PX12A)"), "a file");
}

// ---- Edit.

TEST_F(CalibrationMenu, EditAndDeleteWithoutASelectionAreTold) {
  WriteData("PX12A", "SN1", "1");
  AtMenu([&](frmCalibrationMain& menu) {
    for (const char* button : {"btnEdit", "btnDelete"}) {
      questions_.ExpectNotice("No calibration data is selected.");
      Click(menu, button);
    }
    ClickEntry(menu, "LstInstrment", "PX12A");
    for (const char* button : {"btnEdit", "btnDelete"}) {
      questions_.ExpectNotice("No calibration data is selected.");
      Click(menu, button);
    }
    EXPECT_EQ(Selected(menu, "LstInstrment"), "PX12A");
    EXPECT_EQ(Serials(menu), Texts{"1"});
  });
  RunMenu();
  EXPECT_TRUE(tree_.Exists(kRoot + R"(\PX12A\SN1)"));
}

TEST_F(CalibrationMenu, EditOpensTheChosenDataAndLeavesTheListsAlone) {
  for (const char* serial : {"1", "2", "3"}) {
    WriteData("PX12A", "SN" + std::string(serial), serial);
  }
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    const Texts before = Serials(menu);
    for (const char* serial : {"3", "1", "2"}) {
      ClickEntry(menu, "lstSerialNumber", serial);
      user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
        EXPECT_EQ(TextOf(editor, "txtSerial"), serial);
        WriteData("PX12A", "SN4", "4");
        Click(editor, "btnOk");
      });
      Click(menu, "btnEdit");
      EXPECT_EQ(Serials(menu), before);
      EXPECT_EQ(Selected(menu, "LstInstrment"), "PX12A");
      EXPECT_EQ(Selected(menu, "lstSerialNumber"), serial);
    }
  });
  RunMenu();
}

TEST_F(CalibrationMenu, EditOfASetOpensTheTabbedEditor) {
  tree_.InstallTemplate("RT520A");
  ChooseAdd("RT520A");
  user_.At<frmCalDataTabInput>([](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "77");
    Click(editor, "btnOk");
  });
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "lstSerialNumber", "77");
    user_.At<frmCalDataTabInput>([](frmCalDataTabInput& editor) {
      EXPECT_EQ(TextOf(editor, "txtSerial"), "77");
      editor.reject();
    });
    Click(menu, "btnEdit");
  });
  RunMenu();
}

TEST_F(CalibrationMenu, EditDoesNothingForOtherFolders) {
  for (const char* folder : {"OTHER", "PX12", "PX12AB"}) {
    WriteData(folder, "SN1", "1");
  }
  AtMenu([](frmCalibrationMain& menu) {
    for (const char* folder : {"OTHER", "PX12", "PX12AB"}) {
      Choose(menu, folder, "1");
      Click(menu, "btnEdit");
      EXPECT_TRUE(menu.isActiveWindow());
      EXPECT_EQ(Selected(menu, "lstSerialNumber"), "1");
    }
  });
  RunMenu();
}

TEST_F(CalibrationMenu, OfTwoFilesOfOneSerialNumberTheFirstIsEditedAndDeleted) {
  WriteData("PX12A", "SN1", "same");
  WriteData("PX12A", "SN2", "same");
  const Texts order = InOrder(kRoot + R"(\PX12A)");
  const std::string first = kRoot + R"(\PX12A\)" + order.at(0);
  SensorFile other{.serial = "same", .comment = "first", .rows = {{"7.00", "99.0"}}};
  tree_.Write(first, other.Bytes());
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    ASSERT_EQ(Serials(menu), (Texts{"same", "same"}));
    Find<QListWidget>(menu, "lstSerialNumber").setCurrentRow(1);
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      EXPECT_EQ(TextOf(editor, "txtComment"), "first");
      Click(editor, "btnCancel");
    });
    // Its serial number is not that of its name.
    questions_.ExpectError({"\"same\"", order.at(0) + " stays", "SNsame"});
    Click(menu, "btnEdit");
    AnswerDelete("PX12A(same)", QMessageBox::Yes);
    Click(menu, "btnDelete");
    EXPECT_EQ(Serials(menu), Texts{"same"});
  });
  RunMenu();
  EXPECT_EQ(tree_.Names(kRoot + R"(\PX12A)"), Texts{order.at(1)});
}

TEST_F(CalibrationMenu, AListThatIsOutOfDateIsTold) {
  WriteData("PX12A", "SN1", "1");
  AtMenu([&](frmCalibrationMain& menu) {
    Choose(menu, "PX12A", "1");
    gCalFiles.fill(CalFileInfo());
    questions_.ExpectError({"not in the list any more"});
    Click(menu, "btnEdit");
    AnswerDelete("PX12A(1)", QMessageBox::Yes);
    questions_.ExpectError({"not in the list any more"});
    Click(menu, "btnDelete");
    EXPECT_EQ(Selected(menu, "lstSerialNumber"), "1");
  });
  RunMenu();
  EXPECT_TRUE(tree_.Exists(kRoot + R"(\PX12A\SN1)"));
}

// ---- Delete.

TEST_F(CalibrationMenu, DeleteAsksAndNoKeepsTheFile) {
  WriteData("PX12A", "SN12345", "3318A12345");
  AtMenu([&](frmCalibrationMain& menu) {
    Choose(menu, "PX12A", "3318A12345");
    AnswerDelete("PX12A(3318A12345)", QMessageBox::No);
    Click(menu, "btnDelete");
    EXPECT_TRUE(tree_.Exists(kRoot + R"(\PX12A\SN12345)"));
    EXPECT_EQ(Selected(menu, "LstInstrment"), "PX12A");
    EXPECT_EQ(Selected(menu, "lstSerialNumber"), "3318A12345");
  });
  RunMenu();
}

TEST_F(CalibrationMenu, DeletingTheLastFileSelectsTheFirstModelThatIsLeft) {
  for (const char* model : {"PX12A", "PX11D", "RT410A"}) {
    WriteData(model, "SN1", model);
  }
  Texts left = InOrder(kRoot);
  AtMenu([&](frmCalibrationMain& menu) {
    // The first one last: it is then the one that is left.
    while (!left.empty()) {
      const QString model = QString::fromStdString(left.back());
      left.pop_back();
      Choose(menu, model, model);
      AnswerDelete(model + "(" + model + ")", QMessageBox::Yes);
      Click(menu, "btnDelete");
      EXPECT_EQ(Models(menu), left);
      EXPECT_EQ(Selected(menu, "LstInstrment"), left.empty() ? "" : left.at(0));
      EXPECT_EQ(Serials(menu), left.empty() ? Texts() : Texts{left.at(0)});
      EXPECT_EQ(Caption(menu, "btnEdit"),
                !left.empty() && left.at(0) == "RT410A" ? "Update" : "Edit");
    }
    questions_.ExpectNotice("No calibration data is selected.");
    Click(menu, "btnDelete");
  });
  RunMenu();
  EXPECT_EQ(tree_.Names(kRoot), (Texts{"PX11D", "PX12A", "RT410A"})) << "the folders are kept";
}

TEST_F(CalibrationMenu, DeletingOneOfSeveralFilesKeepsTheOthers) {
  for (const char* serial : {"1", "2", "3"}) {
    WriteData("PX12A", "SN" + std::string(serial), serial);
  }
  AtMenu([&](frmCalibrationMain& menu) {
    Choose(menu, "PX12A", "2");
    AnswerDelete("PX12A(2)", QMessageBox::Yes);
    Click(menu, "btnDelete");
    EXPECT_EQ(Selected(menu, "LstInstrment"), "PX12A");
    Texts serials = Serials(menu);
    std::sort(serials.begin(), serials.end());
    EXPECT_EQ(serials, (Texts{"1", "3"}));
    EXPECT_EQ(Selected(menu, "lstSerialNumber"), "");
  });
  RunMenu();
  EXPECT_EQ(tree_.Names(kRoot + R"(\PX12A)"), (Texts{"SN1", "SN3"}));
}

TEST_F(CalibrationMenu, ADataFileOfAnyFolderCanBeDeleted) {
  WriteData("OTHER", "SN1", "1");
  AtMenu([&](frmCalibrationMain& menu) {
    Choose(menu, "OTHER", "1");
    AnswerDelete("OTHER(1)", QMessageBox::Yes);
    Click(menu, "btnDelete");
  });
  RunMenu();
  EXPECT_FALSE(tree_.Exists(kRoot + R"(\OTHER\SN1)"));
}

/// A recycle bin that takes nothing.
class NoRecycling : public DesktopTestPlatform {
 public:
  using DesktopTestPlatform::DesktopTestPlatform;

  [[nodiscard]] std::error_code Recycle(const std::filesystem::path& /*path*/) override {
    return std::make_error_code(std::errc::permission_denied);
  }
};

TEST_F(CalibrationMenu, ADeleteThatFailsIsToldAndTheListsStay) {
  const NoRecycling platform(tree_.ProgramFolder());
  WriteData("PX12A", "SN1", "1");
  AtMenu([&](frmCalibrationMain& menu) {
    Choose(menu, "PX12A", "1");
    AnswerDelete("PX12A(1)", QMessageBox::Yes);
    questions_.ExpectNotice("Can't delete cal data");
    Click(menu, "btnDelete");
    EXPECT_EQ(Selected(menu, "LstInstrment"), "PX12A");
    EXPECT_EQ(Selected(menu, "lstSerialNumber"), "1");
  });
  RunMenu();
  EXPECT_TRUE(tree_.Exists(kRoot + R"(\PX12A\SN1)"));
}

TEST_F(CalibrationMenu, AFileThatVanishedCannotBeDeleted) {
  WriteData("PX12A", "SN1", "1");
  WriteData("PX12A", "SN2", "2");
  AtMenu([&](frmCalibrationMain& menu) {
    Choose(menu, "PX12A", "1");
    std::filesystem::remove(tree_.Native(kRoot + R"(\PX12A\SN1)"));
    AnswerDelete("PX12A(1)", QMessageBox::Yes);
    questions_.ExpectNotice("Can't delete cal data");
    Click(menu, "btnDelete");
  });
  RunMenu();
  EXPECT_EQ(tree_.Names(kRoot + R"(\PX12A)"), Texts{"SN2"});
}

TEST_F(CalibrationMenu, AFolderThatMayNotBeChangedKeepsItsFile) {
  WriteData("PX12A", "SN1", "1");
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(kRoot + R"(\PX12A)"));
  AtMenu([&](frmCalibrationMain& menu) {
    Choose(menu, "PX12A", "1");
    AnswerDelete("PX12A(1)", QMessageBox::Yes);
    questions_.ExpectNotice("Can't delete cal data");
    Click(menu, "btnDelete");
    EXPECT_EQ(Serials(menu), Texts{"1"});
  });
  RunMenu();
  EXPECT_EQ(tree_.Names(kRoot + R"(\PX12A)"), Texts{"SN1"});
}

}  // namespace
}  // namespace tarvell
