// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "screens/caldata/TabEditorFixture.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/station/StationFixture.h"
#include "support/DesktopTestPlatform.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

namespace fs = std::filesystem;

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr const char* kFolder = "c:\\calfactors\\PX12A";
constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

fs::path Trash() {
  return fs::path(qgetenv("XDG_DATA_HOME").toStdString()) / "Trash";
}

/// Contents of the files in the trash.
Texts Trashed() {
  Texts contents;
  if (fs::exists(Trash() / "files")) {
    for (const auto& entry : fs::directory_iterator(Trash() / "files")) {
      contents.push_back(ReadNative(entry.path()));
    }
  }
  return contents;
}

/// Expects the question whether to replace a file that the user has not seen.
void ExpectReplaceQuestion(ScriptedQuestions& questions, const QString& text,
                           QMessageBox::StandardButton answer) {
  questions.Expect({.text = text + " Do you want to replace it?",
                    .icon = QMessageBox::Warning,
                    .buttons = QMessageBox::Yes | QMessageBox::No,
                    .defaultButton = QMessageBox::No},
                   answer);
}

/// Clicks a button that saves, first with No to the question, which leaves everything as it is,
/// then with Yes. `told` stands in the question's detail.
void ClickNoThenYes(ScriptedQuestions& questions, QWidget& screen, const QString& button,
                    const QString& text, const std::string& told,
                    const std::function<void()>& expectUnchanged) {
  ExpectReplaceQuestion(questions, text, QMessageBox::No);
  Click(screen, button);
  EXPECT_TRUE(screen.isVisible());
  expectUnchanged();
  EXPECT_EQ(Trashed(), Texts{});
  ExpectReplaceQuestion(questions, text, QMessageBox::Yes);
  Click(screen, button);
  for (const QString& detail : questions.details) {
    EXPECT_TRUE(Contains(detail.toStdString(), told)) << detail.toStdString();
  }
}

/// A file that a save replaces can be brought back from the trash.
class WayBack : public SensorStage {
 protected:
  WayBack() { fs::remove_all(Trash()); }
};

TEST_F(WayBack, FromNewDataOverAFileOfAnotherSerialNumber) {
  const SensorFile old{.serial = "OLD12345", .comment = "old", .rows = {{"50.00", "99.0"}}};
  tree_.Write(kPath, old.Bytes());
  SensorFile added{.comment = "new", .rows = {{"50.00", "100.0"}}};
  ShowNew(added, [&](frmCalDataInput& editor) {
    Fill(editor, "txtSerial", "NEW12345");
    ClickNoThenYes(questions_, editor, "btnOk",
                   "The file SN12345 holds the data of another serial number, \"OLD12345\".",
                   "Calibration number: C-0042\nCalibrated: 5 MAR 2001\nDue: 5 MAR 2002\n", [&] {
                     EXPECT_EQ(TextOf(editor, "txtSerial"), "NEW12345");
                     EXPECT_EQ(tree_.Read(kPath), old.Bytes());
                   });
    EXPECT_FALSE(editor.isVisible());
  });
  added.serial = "NEW12345";
  EXPECT_EQ(tree_.Read(kPath), added.Bytes());
  EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12345"});
  EXPECT_EQ(Trashed(), Texts{old.Bytes()});
}

TEST_F(WayBack, FromACorrectionThatSomebodyElseMadeMeanwhile) {
  SensorFile file{.comment = "factory", .rows = {{"50.00", "100.0"}}};
  SensorFile others = file;
  others.comment = "others";
  ShowFile(file, [&](frmCalDataInput& editor) {
    tree_.Write(kPath, others.Bytes());
    Fill(editor, "txtComment", "mine");
    ClickNoThenYes(questions_, editor, "btnOk",
                   "The file SN12345 has changed since it was opened here.", "Comment: others",
                   [&] {
                     EXPECT_EQ(TextOf(editor, "txtComment"), "mine");
                     EXPECT_EQ(tree_.Read(kPath), others.Bytes());
                   });
    EXPECT_FALSE(editor.isVisible());
  });
  file.comment = "mine";
  EXPECT_EQ(tree_.Read(kPath), file.Bytes());
  EXPECT_EQ(Trashed(), Texts{others.Bytes()});
}

TEST_F(WayBack, FromTheFirstCorrectionOfAFileThatHoldsMoreThanTheScreen) {
  SensorFile file{.comment = "done in lab 7", .rows = {{"50.00", "100.0"}}};
  const std::string before = file.Bytes();
  ShowFile(file, [&](frmCalDataInput& editor) {
    Fill(editor, "txtCalNo", "C-2");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  file.calNo = "C-2";
  file.comment = "done";
  EXPECT_EQ(tree_.Read(kPath), file.Bytes());
  EXPECT_EQ(Trashed(), Texts{before});
}

TEST_F(WayBack, IsNotNeededFromTheUsersOwnCorrection) {
  SensorFile file{.comment = "factory", .rows = {{"50.00", "100.0"}}};
  ShowFile(file, [&](frmCalDataInput& editor) {
    Fill(editor, "txtComment", "mine");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  file.comment = "mine";
  EXPECT_EQ(tree_.Read(kPath), file.Bytes());
  EXPECT_EQ(Trashed(), Texts{});
}

// ---- Of a set.

class WayBackOfASet : public TabEditorFixture {
 protected:
  static constexpr const char* kSetPath = R"(c:\calfactors\RT520A\SN05678)";

  WayBackOfASet() {
    fs::remove_all(Trash());
    WriteTemplates();
    tree_.Write(kSetPath, Bytes("factory"));
  }

  static std::string Bytes(const std::string& comment) {
    return CapacitorFile({.model = "RT520A", .serial = "1234A05678", .comment = comment},
                         SetAMembersSaved());
  }

  /// Saves the set with the comment "mine"; `meanwhile` happens while it is edited.
  void Correct(const std::function<void()>& meanwhile) {
    EditFile("RT520A", kSetPath, [&](frmCalDataTabInput& editor) {
      meanwhile();
      Fill(editor, "txtComment", "mine");
      Click(editor, "btnOk");
      EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(tree_.Read(kSetPath), Bytes("mine"));
    EXPECT_EQ(tree_.Names(R"(c:\calfactors\RT520A)"), Texts{"SN05678"});
  }

  DesktopTestPlatform platform_{tree_.ProgramFolder()};
};

TEST_F(WayBackOfASet, FromACorrectionThatSomebodyElseMadeMeanwhile) {
  Correct([&] {
    tree_.Write(kSetPath, Bytes("others"));
    ExpectReplaceQuestion(questions_, "The file SN05678 has changed since it was opened here.",
                          QMessageBox::Yes);
  });
  EXPECT_EQ(Trashed(), Texts{Bytes("others")});
}

TEST_F(WayBackOfASet, IsNotNeededFromTheUsersOwnCorrection) {
  Correct([] {});
  EXPECT_EQ(Trashed(), Texts{});
}

TEST_F(WayBackOfASet, FromNewDataOverAFileOfAnotherSerialNumber) {
  EditNew("RT520A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "9999B05678");
    ClickNoThenYes(questions_, editor, "btnOk",
                   "The file SN05678 holds the data of another serial number, \"1234A05678\".",
                   "Serial number: 1234A05678\n", [&] {
                     EXPECT_EQ(TextOf(editor, "txtSerial"), "9999B05678");
                     EXPECT_EQ(tree_.Read(kSetPath), Bytes("factory"));
                   });
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(kSetPath), CapacitorFile({"RT520A", "9999B05678"}, SetAMembersSaved()));
  EXPECT_EQ(tree_.Names(R"(c:\calfactors\RT520A)"), Texts{"SN05678"});
  EXPECT_EQ(Trashed(), Texts{Bytes("factory")});
}

// ---- Of a station's instrument.

class WayBackOfAnInstrument : public StationStage {
 protected:
  WayBackOfAnInstrument() {
    fs::remove_all(Trash());
    WriteInstrument({.calData = ""});
  }

  /// Saves the instrument with the comment "mine"; `meanwhile` happens while it is edited.
  void Correct(const std::function<void()>& meanwhile) {
    AtStation([&](frmStationModelList& screen) {
      ClickEntry(screen, "LstInstrment", "PX12A");
      meanwhile();
      Fill(screen, "txtData_11", "mine");
      Click(screen, "btnSave");
      EXPECT_FALSE(CanSave(screen));
      LeaveUnsaved(screen);
    });
    EXPECT_EQ(ReadInstrument("PX12A"), (InstrumentFile{.comment = "mine", .calData = ""}.Bytes()));
    EXPECT_EQ(tree_.Names(kStation), (Texts{"INDEX", "PX12A"}));
  }
};

TEST_F(WayBackOfAnInstrument, FromACorrectionThatSomebodyElseMadeMeanwhile) {
  const InstrumentFile others{.comment = "others"};
  Correct([&] {
    WriteInstrument(others);
    ExpectReplaceQuestion(questions_, "The file PX12A has changed since it was opened here.",
                          QMessageBox::Yes);
  });
  EXPECT_EQ(Trashed(), Texts{others.Bytes()});
}

// Whoever takes the save back stays at the instrument, also on leaving.
TEST_F(WayBackOfAnInstrument, IsNotNeededWhereTheSaveIsTakenBack) {
  const InstrumentFile others{.comment = "others", .calData = ""};
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    WriteInstrument(others);
    Fill(screen, "txtData_11", "mine");
    ExpectReturnQuestion(QMessageBox::Yes);
    ExpectReplaceQuestion(questions_, "The file PX12A has changed since it was opened here.",
                          QMessageBox::No);
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_TRUE(CanSave(screen));
    EXPECT_EQ(TextOf(screen, "txtData_11"), "mine");
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), others.Bytes());
  EXPECT_EQ(Trashed(), Texts{});
}

TEST_F(WayBackOfAnInstrument, IsNotNeededFromTheUsersOwnCorrection) {
  Correct([] {});
  EXPECT_EQ(Trashed(), Texts{});
}

// It is never read back into its box.
TEST_F(WayBackOfAnInstrument, FromASaveWithoutTheCalDataOfTheFile) {
  WriteInstrument({.calData = "kept elsewhere"});
  Correct([] {});
  EXPECT_EQ(Trashed(), Texts{InstrumentFile{.calData = "kept elsewhere"}.Bytes()});
}

// ---- Of a kit's file.

class WayBackOfAKit : public StationStage {
 protected:
  static constexpr const char* kKitPath = R"(c:\calfactors\RT410A\SN12345)";

  WayBackOfAKit() { fs::remove_all(Trash()); }

  static std::string Kit(const std::string& serial, const std::string& data) {
    return "QZ RT410A\r\n" + serial + "\r\n05MAR2001\r\n" + data + "\r\n";
  }

  /// Takes in a finished file with these bytes, by Update on the kit in the list, and answers the
  /// question about another kit where there is one.
  void TakeIn(const std::string& bytes, const QString& listed,
              QMessageBox::StandardButton answer = QMessageBox::NoButton) {
    const std::string earlier = tree_.Read(kKitPath);
    const std::string source = (tree_.Root() / "kit.dat").string();
    WriteNative(source, bytes);
    frmCalibrationMain menu(nullptr);
    bool shown = false;
    user_.At<frmCalibrationMain>([&](frmCalibrationMain& at) {
      shown = true;
      ClickEntry(at, "LstInstrment", "RT410A");
      ClickEntry(at, "lstSerialNumber", listed);
      questions_.ExpectFilePicker("Choice RT410A Calibration Data File from Folder",
                                  {"Calibration Data(*.dat) (*.dat)", "All files(*.*) (*)"},
                                  QString::fromStdString(source));
      if (answer != QMessageBox::NoButton) {
        ExpectReplaceQuestion(
            questions_,
            "The file SN12345 holds the data of another serial number, \"" + listed + "\".",
            answer);
      }
      Click(at, "btnEdit");
      Click(at, "btnReturn");
    });
    menu.ShowModally();
    EXPECT_TRUE(shown);
    EXPECT_EQ(tree_.Read(kKitPath), answer == QMessageBox::No ? earlier : bytes);
    EXPECT_EQ(tree_.Names(R"(c:\calfactors\RT410A)"), Texts{"SN12345"});
  }
};

TEST_F(WayBackOfAKit, FromANewFileOfTheSameKit) {
  tree_.Write(kKitPath, Kit("3318A12345", "earlier"));
  TakeIn(Kit("3318A12345", "finished"), "3318A12345");
  EXPECT_EQ(Trashed(), Texts{Kit("3318A12345", "earlier")});
}

TEST_F(WayBackOfAKit, FromAnotherKitOfTheSameName) {
  tree_.Write(kKitPath, Kit("9999B12345", "earlier"));
  TakeIn(Kit("3318A12345", "finished"), "9999B12345", QMessageBox::No);
  EXPECT_EQ(Trashed(), Texts{});
  TakeIn(Kit("3318A12345", "finished"), "9999B12345", QMessageBox::Yes);
  EXPECT_EQ(Trashed(), Texts{Kit("9999B12345", "earlier")});
}

TEST_F(WayBackOfAKit, IsNotNeededFromTheSameBytes) {
  tree_.Write(kKitPath, Kit("3318A12345", "finished"));
  TakeIn(Kit("3318A12345", "finished"), "3318A12345");
  EXPECT_EQ(Trashed(), Texts{});
}

}  // namespace
}  // namespace tarvell
