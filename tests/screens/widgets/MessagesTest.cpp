// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/main/frmMain.h"
#include "support/ErrorOf.h"
#include "support/OrdinaryUser.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr const char* kFolder = R"(c:\calfactors\PX12A)";
constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

/// Every message of the main menu, the calibration data menu and the sensor editor, as a real box
/// on the screen.
class ARealBoxTells : public SensorStage {
 protected:
  ARealBoxTells() {
    SetCurrentQuestions(nullptr);
    file_.rows = {{"50.00", "100.0"}, {"100.00", "98.0"}};
  }

  void AnswerNotice(const QString& text) {
    user_.AnswerBox(text, QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok,
                    QMessageBox::Ok);
  }

  /// An error message tells all of `parts`.
  void AnswerError(const std::vector<std::string>& parts) {
    user_.At<QMessageBox>([=, this](QMessageBox& box) {
      for (const std::string& part : parts) {
        EXPECT_TRUE(Contains(box.text().toStdString(), part))
            << "\"" << part << "\" is missing in: " << box.text().toStdString();
      }
      EXPECT_EQ(box.windowTitle(), "Morrand Tarvell");
      EXPECT_EQ(box.icon(), QMessageBox::Warning);
      EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
      QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
      ++answered_;
    });
  }

  /// Presses Start with these two directories.
  void Start(const QString& stationDir, const QString& calibrationDir) {
    frmMain menu;
    menu.Form_Load(0);
    Fill(menu, "txtStationDir", stationDir);
    Fill(menu, "txtCalibrationDir", calibrationDir);
    Click(menu, "btnStart");
  }

  SensorFile file_;
  int answered_ = 0;  ///< error messages so far
};

/// A recycle bin that takes nothing.
class NoRecycling : public DesktopTestPlatform {
 public:
  using DesktopTestPlatform::DesktopTestPlatform;

  [[nodiscard]] std::error_code Recycle(const std::filesystem::path& /*path*/) override {
    return std::make_error_code(std::errc::permission_denied);
  }
};

// ---- Main menu.

TEST_F(ARealBoxTells, NoStationDirectory) {
  AnswerNotice("Station directory does not set.");
  Start("", "");
}

TEST_F(ARealBoxTells, NoCalibrationDataDirectory) {
  tree_.MakeFolders(R"(c:\stations)");
  AnswerNotice("Calibration data directory does not set.");
  Start(R"(c:\stations)", "");
}

TEST_F(ARealBoxTells, MissingFolders) {
  const auto question = [&](const QString& firstLine, QMessageBox::StandardButton answer) {
    user_.AnswerBox(firstLine + "\r\nIf you want to create new folder, then press Ok button.",
                    QMessageBox::Information, QMessageBox::Ok | QMessageBox::Cancel,
                    QMessageBox::Cancel, answer);
  };
  question("Input station folder does not exist.", QMessageBox::Cancel);
  Start(R"(c:\st)", R"(c:\cal)");
  EXPECT_FALSE(tree_.Exists(R"(c:\st)"));
  question("Input station folder does not exist.", QMessageBox::Ok);
  question("Select calibration data folder is not exist.", QMessageBox::Cancel);
  Start(R"(c:\st)", R"(c:\cal)");
  EXPECT_TRUE(tree_.Exists(R"(c:\st)"));
  EXPECT_FALSE(tree_.Exists(R"(c:\cal)"));
  question("Select calibration data folder is not exist.", QMessageBox::Ok);
  user_.AnswerBox("Cannot make folder!", QMessageBox::Critical, QMessageBox::Ok, QMessageBox::Ok,
                  QMessageBox::Ok);
  Start(R"(c:\st)", R"(c:\no\where)");
  EXPECT_FALSE(tree_.Exists(R"(c:\no)"));
}

TEST_F(ARealBoxTells, AnIniFileThatCannotBeWritten) {
  tree_.MakeFolders(R"(c:\windows)");
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(R"(c:\windows)"));
  frmMain menu;
  menu.Form_Load(0);
  AnswerError({"Cannot save the file", R"(c:\windows\tarvell.ini)"});
  Click(menu, "btnExit");
  EXPECT_FALSE(menu.isVisible());
}

// ---- Calibration data menu.

TEST_F(ARealBoxTells, NoCalibrationDataSelected) {
  AtMenu([&](frmCalibrationMain& menu) {
    for (const char* button : {"btnEdit", "btnDelete"}) {
      AnswerNotice("No calibration data is selected.");
      Click(menu, button);
    }
  });
  RunMenu();
}

TEST_F(ARealBoxTells, DeletingCalibrationData) {
  const NoRecycling platform(tree_.ProgramFolder());
  tree_.Write(kPath, file_.Bytes());
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    ClickEntry(menu, "lstSerialNumber", "3318A12345");
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
      user_.AnswerBox("Are you sure you want to delete PX12A(3318A12345)?", QMessageBox::Warning,
                      QMessageBox::Yes | QMessageBox::No, QMessageBox::No, answer);
      if (answer == QMessageBox::Yes) {
        AnswerNotice("Can't delete cal data");
      }
      Click(menu, "btnDelete");
    }
  });
  RunMenu();
  EXPECT_TRUE(tree_.Exists(kPath));
}

TEST_F(ARealBoxTells, AListThatIsOutOfDate) {
  tree_.Write(kPath, file_.Bytes());
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    ClickEntry(menu, "lstSerialNumber", "3318A12345");
    gCalFiles.fill(CalFileInfo());
    AnswerError({"not in the list any more"});
    Click(menu, "btnEdit");
  });
  RunMenu();
}

TEST_F(ARealBoxTells, TooManyDataFiles) {
  for (int i = 0; i < 52; ++i) {
    file_.serial = std::to_string(10000 + i);
    tree_.Write(std::string(kFolder) + R"(\SN)" + file_.serial, file_.Bytes());
  }
  AtMenu([&](frmCalibrationMain& menu) {
    AnswerError({"more than 51 data files", kFolder});
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(EntriesOf(menu, "lstSerialNumber").size(), 51U);
  });
  RunMenu();
}

TEST_F(ARealBoxTells, ATemplateThatIsMissing) {
  tree_.MakeFolders(R"(c:\calfactors)");
  ChooseAdd("PX12A");
  AnswerError({"template", "TempPX12A"});
  RunMenu();
}

TEST_F(ARealBoxTells, AFileWithoutItsLastLine) {
  const std::string bytes = file_.Bytes();
  tree_.Write(kPath, bytes.substr(0, bytes.find("!End")));
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    ClickEntry(menu, "lstSerialNumber", "3318A12345");
    AnswerError({"!End"});
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      EXPECT_EQ(ColumnOf(GridOf(editor), 0), std::vector<std::string>{"50.00"});
      Click(editor, "btnCancel");
    });
    Click(menu, "btnEdit");
  });
  RunMenu();
}

// ---- Editor.

TEST_F(ARealBoxTells, NoSerialNumber) {
  file_.serial = "";
  ShowNew(file_, [&](frmCalDataInput& editor) {
    AnswerNotice("Please input serial number");
    Click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
  });
}

TEST_F(ARealBoxTells, PointsThatAreNotAdded) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    const auto add = [&](const QString& number) {
      // The dialog comes before the message.
      user_.At<QDialog>([=](QDialog& dialog) {
        Type(number);
        Click(dialog, "btnOk");
      });
    };
    add("50");
    AnswerNotice("Cannot add to same calibration point");
    Click(editor, "btnAddPoint");
    add("-50");
    AnswerNotice("A calibration point cannot lie below zero.");
    Click(editor, "btnAddPoint");
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 3);
  });
  file_.rows = ManyRows(51);
  ShowFile(file_, [&](frmCalDataInput& editor) {
    AnswerError({"A table holds at most 51 rows"});
    Click(editor, "btnAddPoint");
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 52);
  });
}

TEST_F(ARealBoxTells, DeletingAPoint) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
      ClickCell(GridOf(editor), 1, 1);
      user_.AnswerBox("Are you want delete? (50MHz)", QMessageBox::Warning,
                      QMessageBox::Yes | QMessageBox::No, QMessageBox::No, answer);
      Click(editor, "btnDeletePoint");
      EXPECT_EQ(GridOf(editor).Data().RowCount(), answer == QMessageBox::No ? 3 : 2);
    }
  });
}

TEST_F(ARealBoxTells, WhatCannotBeSaved) {
  file_.serial = "";
  ShowNew(file_, [&](frmCalDataInput& editor) {
    Fill(editor, "txtSerial", "A:B");
    AnswerError({"the character \":\""});
    Click(editor, "btnOk");
    Fill(editor, "txtSerial", "12");
    Fill(editor, "txtDueDay", "x");
    AnswerError({"Day of the due date", "\"x\" is not a number"});
    Click(editor, "btnOk");
    Fill(editor, "txtDueDay", "1");
    std::filesystem::remove(tree_.Native(kFolder));
    AnswerError({"Cannot save the file", R"(c:\calfactors\PX12A\SN12)"});
    Click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
  });
}

TEST_F(ARealBoxTells, ANumberThatIsTooLarge) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Type("9E999");
    AnswerError({"9E999", "too large"});
    ClickCell(GridOf(editor), 2, 1);
    auto& box = Find<QLineEdit>(editor, "txtCell");
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(box.text(), "9E999");
    EXPECT_EQ(GridOf(editor).CurrentRow(), 1);
  });
}

TEST_F(ARealBoxTells, WhatCannotBePasted) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    const std::string before = CellOf(GridOf(editor), 1, 1);
    ClickCell(GridOf(editor), 1, 1);
    QApplication::clipboard()->setText("12,5");
    AnswerError({"Nothing was pasted", "Line 1", "\"12,5\" is no number"});
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), before);
  });
}

TEST_F(ARealBoxTells, ACharacterThatTheFileCannotHold) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    AnswerError({"The character \"\u03a9\" cannot be stored in a data file"});
    Find<QLineEdit>(editor, "txtComment").setFocus();
    Find<QLineEdit>(editor, "txtComment").insert("\u03a9");
    // The message comes when the box is done with the text.
    EXPECT_TRUE(QTest::qWaitFor([&] { return answered_ == 1; }));
    EXPECT_EQ(TextOf(editor, "txtComment"), "factory");
  });
}

}  // namespace
}  // namespace tarvell
