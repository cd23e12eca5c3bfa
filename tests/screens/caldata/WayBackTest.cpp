// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "screens/caldata/EitherEditor.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/station/StationFixture.h"

namespace tarvell {
namespace {

namespace fs = std::filesystem;

using namespace test;  // NOLINT(google-build-using-namespace)

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

// ---- A data set.

/// The trash holds the file that a save replaced, where the user may want it back.
class WayBack : public EitherEditor {
 protected:
  WayBack() { fs::remove_all(Trash()); }

  /// Presses OK. The question comes twice: No leaves everything as it is, Yes saves. `detail` is a
  /// part of its detail.
  void ClickOkNoThenYes(CalEditor& editor, const QString& question, const QString& detail) {
    const std::string before = tree_.Read(Path());
    ExpectReplaceQuestion(questions_, question, QMessageBox::No);
    Click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(tree_.Read(Path()), before);
    EXPECT_EQ(Trashed(), Texts{});
    ExpectReplaceQuestion(questions_, question, QMessageBox::Yes);
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
    for (const QString& shown : questions_.details) {
      EXPECT_TRUE(shown.contains(detail)) << shown.toStdString();
    }
    EXPECT_EQ(Trashed(), Texts{before});
    EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
  }
};

INSTANTIATE_TEST_SUITE_P(Editors, WayBack, testing::ValuesIn(kBothEditors), KindName);

TEST_P(WayBack, FromNewDataOverAFileOfAnotherSerialNumber) {
  SetHeader old = header_;
  old.serial = "OLD12345";
  tree_.Write(Path(), Bytes(old));
  New([&](CalEditor& editor) {
    Fill(editor, "txtSerial", "NEW12345");
    ClickOkNoThenYes(editor,
                     "The file SN12345 holds the data of another serial number, \"OLD12345\".",
                     "Calibration number: C-0042\nCalibrated: 5 MAR 2001\nDue: 5 MAR 2002\n");
  });
  header_.serial = "NEW12345";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
}

TEST_P(WayBack, FromACorrectionThatSomebodyElseMadeMeanwhile) {
  Edit([&](CalEditor& editor) {
    SetHeader others = header_;
    others.comment = "others";
    tree_.Write(Path(), Bytes(others));
    Fill(editor, "txtComment", "mine");
    ClickOkNoThenYes(editor, "The file SN12345 has changed since it was opened here.",
                     "Comment: others");
  });
  header_.comment = "mine";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
}

TEST_P(WayBack, FromTheFirstCorrectionOfAFileThatHoldsMoreThanTheScreen) {
  header_.comment = "done in lab 7";
  Edit([](CalEditor& editor) { Click(editor, "btnOk"); });
  EXPECT_EQ(Trashed(), Texts{Bytes(header_)});
  header_.comment = "done";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
}

TEST_P(WayBack, IsNotNeededFromTheUsersOwnCorrection) {
  Edit([](CalEditor& editor) {
    Fill(editor, "txtComment", "mine");
    Click(editor, "btnOk");
  });
  header_.comment = "mine";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
  EXPECT_EQ(Trashed(), Texts{});
}

// ---- An instrument of a station.

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

// After No the user stays at the instrument, on leaving as well.
TEST_F(WayBackOfAnInstrument, IsNotNeededAfterNo) {
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

// The file's cal data are not shown in their box.
TEST_F(WayBackOfAnInstrument, FromASaveWithoutTheCalDataOfTheFile) {
  WriteInstrument({.calData = "kept elsewhere"});
  Correct([] {});
  EXPECT_EQ(Trashed(), Texts{InstrumentFile{.calData = "kept elsewhere"}.Bytes()});
}

// ---- The file of a test kit.

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
