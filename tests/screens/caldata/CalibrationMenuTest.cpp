// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QMenu>
#include <QPushButton>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/widgets/NoticeLine.h"
#include "support/ClickInMenu.h"
#include "support/ErrorOf.h"
#include "support/SensorStage.h"
#include "support/SetModels.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

const std::string kRoot = R"(c:\calfactors)";

class CalibrationMenu : public SensorStage {
 protected:
  CalibrationMenu() { tree_.MakeFolders(kRoot); }

  /// Writes a PX12A data file with this serial number.
  void WriteData(const std::string& folder, const std::string& name,
                 const std::string& serial) const {
    const SensorFile file{.serial = serial, .rows = {{"50.00", "100.0"}}};
    tree_.Write(kRoot + "\\" + folder + "\\" + name, file.Bytes());
  }

  /// The names in a folder, in the platform's order.
  [[nodiscard]] Texts InOrder(const std::string& folder) const {
    Texts names;
    for (const auto& entry : std::filesystem::directory_iterator(tree_.Native(folder))) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  /// Presses Delete, answers the question about `what`, and after which `expectFailure` expects a
  /// message.
  void Delete(
      frmCalibrationMain& menu, const QString& what, QMessageBox::StandardButton answer,
      const std::function<void()>& expectFailure = [] {}) {
    questions_.Expect({.text = "Are you sure you want to delete " + what + "?",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      answer);
    expectFailure();
    Click(menu, "btnDelete");
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

void ExpectSelected(frmCalibrationMain& menu, const std::string& model, const std::string& serial) {
  EXPECT_EQ(Selected(menu, "LstInstrment"), model);
  EXPECT_EQ(Selected(menu, "lstSerialNumber"), serial);
}

std::string Caption(frmCalibrationMain& menu, const QString& button) {
  return PlainCaption(Find<QPushButton>(menu, button).text()).toStdString();
}

void Choose(frmCalibrationMain& menu, const QString& model, const QString& serial) {
  ClickEntry(menu, "LstInstrment", model);
  ClickEntry(menu, "lstSerialNumber", serial);
}

// ---- The screen.

TEST_F(CalibrationMenu, ShowsItsCaptionsAndElevenModelsBesideTheAddButton) {
  AtMenu([&](frmCalibrationMain& menu) {
    EXPECT_EQ(menu.windowTitle(), "Calibration Data Menu - Morrand Tarvell");
    EXPECT_EQ(PlainCaption(Find<QLabel>(menu, "Label1").text()), "Current  Modules Lists");
    EXPECT_EQ(Caption(menu, "btnAdd"), "Add");
    EXPECT_EQ(Caption(menu, "btnEdit"), "Edit");
    EXPECT_EQ(Caption(menu, "btnDelete"), "Delete");
    EXPECT_EQ(Caption(menu, "btnReturn"), "Return to Main");
    user_.At<QMenu>([&menu](QMenu& add) {
      Texts captions;
      QString keys;
      for (const QAction* entry : add.actions()) {
        if (entry->isSeparator()) {
          captions.emplace_back("-");
          continue;
        }
        captions.push_back(PlainCaption(entry->text()).toStdString());
        keys += QKeySequence::mnemonic(entry->text()).toString().last(1);
        EXPECT_EQ(entry->objectName().toStdString(), "mnu" + captions.back());
        EXPECT_TRUE(entry->isEnabled()) << captions.back();
      }
      EXPECT_EQ(captions, (Texts{"RT410A", "RT410B", "-", "RT520A", "RT520C", "-", "RT730A", "-",
                                 "PX11D", "PX12A", "PX13A", "PX11A", "-", "PX60G", "PX60H"}));
      EXPECT_EQ(keys.toStdString(), "AB0C3D21XGH") << "the last character that is free";
      const auto& button = Find<QPushButton>(menu, "btnAdd");
      const QRect place(button.mapToGlobal(QPoint(0, 0)), button.size());
      EXPECT_TRUE(place.adjusted(-5, -5, 5, 5).contains(add.geometry().topLeft()));
      QTest::keyClick(&add, Qt::Key_Escape);
    });
    Click(menu, "btnAdd");
  });
  AtMenu([](frmCalibrationMain& menu) {
    Press(Qt::Key_Escape);
    EXPECT_FALSE(menu.isVisible());
  });
  frmCalibrationMain menu(nullptr);
  menu.ShowModally();
  EXPECT_EQ(tree_.Names(kRoot), Texts{});
}

// ---- The lists.

TEST_F(CalibrationMenu, ListsFilledFoldersAndSerialNumbersInThePlatformsOrder) {
  for (const char* model : {"PX11D", "RT410A", "OTHER"}) {
    WriteData(model, "SN1", "1");
  }
  Texts order;
  for (const char* serial : {"US 1", "US 2", "US 3", "US 4"}) {
    WriteData("PX12A", "SN" + std::string(serial), serial);
  }
  for (const std::string& name : InOrder(kRoot + R"(\PX12A)")) {
    order.push_back(name.substr(2));
  }
  const Texts models = InOrder(kRoot);
  ASSERT_EQ(models.size(), 4U);
  tree_.MakeFolders(kRoot + R"(\PX11A)");
  AtMenu([&](frmCalibrationMain& menu) {
    EXPECT_EQ(Models(menu), models);
    EXPECT_TRUE(Serials(menu).empty());
    ExpectSelected(menu, "", "");
    // The keyboard chooses, too.
    ClickEntry(menu, "LstInstrment", QString::fromStdString(models[0]));
    Press(Qt::Key_Down);
    ExpectSelected(menu, models[1], "");
    EXPECT_EQ(Serials(menu), models[1] == "PX12A" ? order : Texts{"1"});
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(Serials(menu), order);
    ExpectSelected(menu, "PX12A", "");
    // A click reads the folder again.
    std::filesystem::remove_all(tree_.Native(kRoot + R"(\PX12A)"));
    WriteData("PX12A", "SN5", "5");
  });
  AtMenu([](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(Serials(menu), Texts{"5"});
  });
  RunMenu();
}

TEST_F(CalibrationMenu, ReadsTheListsWheneverItIsOpenedAndSelectsNothing) {
  WriteData("RT410A", "SN1", "1");
  frmCalibrationMain menu(nullptr);
  AtMenu([&](frmCalibrationMain& screen) {
    Choose(screen, "RT410A", "1");
    EXPECT_EQ(Caption(screen, "btnEdit"), "Update");
    // The model list refreshes the caption when it gets the focus, but not the serial numbers.
    auto& button = Find<QPushButton>(screen, "btnEdit");
    button.setFocus();
    button.setText("Edit");
    WriteData("RT410A", "SN2", "2");
    Find<QListWidget>(screen, "LstInstrment").setFocus();
    EXPECT_EQ(Caption(screen, "btnEdit"), "Update");
    EXPECT_EQ(Serials(screen), Texts{"1"});
    Click(screen, "btnReturn");
  });
  menu.ShowModally();
  std::filesystem::remove_all(tree_.Native(kRoot + R"(\RT410A)"));
  WriteData("PX12A", "SN2", "2");
  AtMenu([](frmCalibrationMain& screen) {
    EXPECT_EQ(Models(screen), Texts{"PX12A"});
    ExpectSelected(screen, "", "");
    EXPECT_TRUE(Serials(screen).empty());
    EXPECT_EQ(Caption(screen, "btnEdit"), "Edit");
    EXPECT_TRUE(Find<QListWidget>(screen, "LstInstrment").hasFocus());
    Click(screen, "btnReturn");
  });
  menu.ShowModally();
}

// ---- Add.

TEST_F(CalibrationMenu, AddMakesTheFolderAndOpensTheEditorOfTheModel) {
  for (const std::string model :
       {"RT520A", "RT520C", "RT730A", "PX11D", "PX12A", "PX13A", "PX11A", "PX60G", "PX60H"}) {
    SCOPED_TRACE(model);
    tree_.InstallTemplate(model);
    ChooseAdd(QString::fromStdString(model));
    const auto leave = [&](QDialog& editor) {
      const QString caption = "Editing calibraition data (" + QString::fromStdString(model);
      EXPECT_TRUE(editor.windowTitle().startsWith(caption + " - "));
      editor.reject();
    };
    if (model.starts_with("RT")) {
      user_.At<frmCalDataTabInput>(leave);
    } else {
      user_.At<frmCalDataInput>(leave);
    }
    RunMenu();
    EXPECT_EQ(tree_.Names(kRoot + "\\" + model), Texts{});
  }
}

TEST_F(CalibrationMenu, AddSelectsTheModelWhenItHasData) {
  tree_.InstallTemplate("PX12A");
  WriteData("RT410A", "SN1", "1");
  AtMenu([](frmCalibrationMain& menu) { Choose(menu, "RT410A", "1"); });
  for (const char* button : {"btnCancel", "btnOk"}) {
    ChooseAdd("PX12A");
    user_.At<frmCalDataInput>([=](frmCalDataInput& editor) {
      Fill(editor, "txtSerial", "3318A12345");
      Click(editor, button);
    });
    const bool isSaved = button == std::string("btnOk");
    AtMenu([=](frmCalibrationMain& menu) {
      EXPECT_EQ(Models(menu).size(), isSaved ? 2U : 1U);
      ExpectSelected(menu, isSaved ? "PX12A" : "", "");
      EXPECT_EQ(Serials(menu), isSaved ? Texts{"3318A12345"} : Texts());
      EXPECT_EQ(Caption(menu, "btnEdit"), "Edit");
    });
  }
  RunMenu();
}

TEST_F(CalibrationMenu, AnAddThatFailsLeavesTheSelection) {
  WriteData("PX12A", "SN1", "1");
  tree_.Write(kRoot + R"(\PX60G)", "a file");
  AtMenu([&](frmCalibrationMain& menu) {
    Choose(menu, "PX12A", "1");
    questions_.ExpectError({"TempPX12A", "missing"});
    questions_.ExpectError({"TempPX11D"});
    questions_.ExpectError({kRoot + R"(\PX60G)"});
  });
  ChooseAdd("PX12A");
  AtMenu([](frmCalibrationMain& menu) { ExpectSelected(menu, "PX12A", "1"); });
  // The folder of a model is made before its template is read.
  ChooseAdd("PX11D");
  AtMenu([](frmCalibrationMain& menu) { EXPECT_EQ(Selected(menu, "LstInstrment"), "PX12A"); });
  ChooseAdd("PX60G");
  AtMenu([&](frmCalibrationMain& menu) {
    EXPECT_EQ(Serials(menu), Texts{"1"});
    std::filesystem::remove_all(tree_.Native(kRoot));
    questions_.ExpectError({"folder", kRoot + R"(\PX12A)"});
  });
  ChooseAdd("PX12A");
  RunMenu();
  EXPECT_FALSE(tree_.Exists(kRoot));
}

// ---- Edit.

TEST_F(CalibrationMenu, EditAndDeleteNeedASelectedModelAndSerialNumber) {
  WriteData("PX12A", "SN1", "1");
  WriteData("PX12AB", "SN1", "1");
  AtMenu([&](frmCalibrationMain& menu) {
    for (const QString model : {"", "PX12A"}) {
      if (!model.isEmpty()) {
        ClickEntry(menu, "LstInstrment", model);
      }
      for (const char* button : {"btnEdit", "btnDelete"}) {
        questions_.ExpectNotice("No calibration data is selected.");
        Click(menu, button);
      }
    }
    // The name of the folder must be a model.
    Choose(menu, "PX12AB", "1");
    Click(menu, "btnEdit");
    EXPECT_TRUE(menu.isActiveWindow());
    ExpectSelected(menu, "PX12AB", "1");
    // A file that is gone cannot be deleted, and a list that is out of date is an error.
    Choose(menu, "PX12A", "1");
    EXPECT_TRUE(tree_.Exists(kRoot + R"(\PX12A\SN1)"));
    std::filesystem::remove(tree_.Native(kRoot + R"(\PX12A\SN1)"));
    Delete(menu, "PX12A(1)", QMessageBox::Yes,
           [&] { questions_.ExpectNotice("Can't delete cal data"); });
    gCalFiles.fill(CalFileInfo());
    questions_.ExpectError({"not in the list any more"});
    Click(menu, "btnEdit");
    questions_.ExpectError({"not in the list any more"});
    Click(menu, "btnDelete");
    ExpectSelected(menu, "PX12A", "1");
  });
  RunMenu();
}

TEST_F(CalibrationMenu, EditOpensTheChosenDataAndLeavesTheLists) {
  for (const char* serial : {"1", "2", "3"}) {
    WriteData("PX12A", "SN" + std::string(serial), serial);
  }
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    const Texts before = Serials(menu);
    const auto rows = gCalFiles;
    for (const std::string serial : {"3", "1", "2"}) {
      ClickEntry(menu, "lstSerialNumber", QString::fromStdString(serial));
      user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
        EXPECT_EQ(TextOf(editor, "txtSerial"), serial);
        Fill(editor, "txtComment", "by " + QString::fromStdString(serial));
        WriteData("PX12A", "SN4", "4");
        // What the program does meanwhile with the table of headers changes nothing.
        gCalFiles.fill(CalFileInfo());
        Click(editor, "btnOk");
      });
      Click(menu, "btnEdit");
      EXPECT_EQ(Serials(menu), before);
      ExpectSelected(menu, "PX12A", serial);
      const auto& entry = *Find<QListWidget>(menu, "lstSerialNumber").currentItem();
      EXPECT_TRUE(entry.toolTip().contains("Comment: by")) << entry.toolTip().toStdString();
      gCalFiles = rows;
    }
  });
  RunMenu();
}

// ---- More.

TEST_F(CalibrationMenu, ANewCalibrationSavesToTheFileOfItsInstrumentAndACopyToAnother) {
  WriteData("PX12A", "SN12345", "3318A12345");
  WriteData("RT410A", "SN1", "1");
  const QDate today = QDate::currentDate();
  AtMenu([&](frmCalibrationMain& menu) {
    questions_.ExpectNotice("No calibration data is selected.");
    ClickInMenu(menu, "btnMore", "New calibration");
    Choose(menu, "RT410A", "1");
    questions_.ExpectNotice(
        "The data of RT410A cannot be edited. Use Add or Update to copy a finished file.");
    ClickInMenu(menu, "btnMore", "Add as copy");

    Choose(menu, "PX12A", "3318A12345");
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      EXPECT_TRUE(Find<QLineEdit>(editor, "txtSerial").isReadOnly());
      EXPECT_EQ(TextOf(editor, "txtComment"), "factory");
      EXPECT_TRUE(Find<QLineEdit>(editor, "txtCalNo").hasFocus());
      EXPECT_TRUE(Find<NoticeLine>(editor, "notices").text().contains("taken over, not entered"));
      Type("C-0043");
      Click(editor, "btnOk");
    });
    ClickInMenu(menu, "btnMore", "New calibration");
    SensorFile again{.calDate = today.toString("yyyyMMdd").toStdString(),
                     .calNo = "C-0043",
                     .dueDate = today.addYears(1).toString("yyyyMMdd").toStdString(),
                     .rows = {}};
    const auto header = [&] { return again.Bytes().substr(0, again.Bytes().find('!')); };
    const std::string saved = tree_.Read(kRoot + R"(\PX12A\SN12345)");
    EXPECT_TRUE(saved.starts_with(header())) << saved;
    EXPECT_EQ(Serials(menu), Texts{"3318A12345"});
    ExpectSelected(menu, "PX12A", "3318A12345");
    EXPECT_TRUE(Find<QListWidget>(menu, "lstSerialNumber").currentItem()->toolTip().contains("43"));

    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      EXPECT_EQ(TextOf(editor, "txtSerial") + TextOf(editor, "txtComment"), "");
      EXPECT_TRUE(Find<QLineEdit>(editor, "txtSerial").hasFocus());
      Type("3318A00007");
      Click(editor, "btnOk");
    });
    ClickInMenu(menu, "btnMore", "Add as copy");
    EXPECT_EQ(tree_.Read(kRoot + R"(\PX12A\SN12345)"), saved);
    again.serial = "3318A00007";
    again.calNo = again.comment = "";
    const std::string copied = tree_.Read(kRoot + R"(\PX12A\SN00007)");
    EXPECT_TRUE(copied.starts_with(header())) << copied;
    EXPECT_TRUE(Contains(copied, saved.substr(saved.find("!FEQ")))) << copied;
    EXPECT_EQ(Serials(menu).size(), 2U);
  });
  RunMenu();
}

// ---- Delete.

TEST_F(CalibrationMenu, DeleteSelectsTheFirstModelThatIsLeft) {
  for (const char* model : {"PX12A", "OTHER", "RT410A"}) {
    WriteData(model, "SN1", model);
  }
  Texts left = InOrder(kRoot);
  AtMenu([&](frmCalibrationMain& menu) {
    // The last model first, so that the first one is left.
    while (!left.empty()) {
      const QString model = QString::fromStdString(left.back());
      Choose(menu, model, model);
      Delete(menu, model + "(" + model + ")", QMessageBox::No);
      ExpectSelected(menu, left.back(), left.back());
      left.pop_back();
      Delete(menu, model + "(" + model + ")", QMessageBox::Yes);
      EXPECT_EQ(Models(menu), left);
      ExpectSelected(menu, left.empty() ? "" : left.at(0), "");
      EXPECT_EQ(Serials(menu), left.empty() ? Texts() : Texts{left.at(0)});
      EXPECT_EQ(Caption(menu, "btnEdit"),
                !left.empty() && left.at(0) == "RT410A" ? "Update" : "Edit");
    }
  });
  RunMenu();
  EXPECT_EQ(tree_.Names(kRoot), (Texts{"OTHER", "PX12A", "RT410A", "history.tarvell"}))
      << "the folders stay";
}

}  // namespace
}  // namespace tarvell
