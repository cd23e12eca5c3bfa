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

/// A file that a save replaces, and that the user may want back.
class ReplacedFile : public EitherEditor {
 protected:
  ReplacedFile() { fs::remove_all(Trash()); }

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

INSTANTIATE_TEST_SUITE_P(Editors, ReplacedFile, testing::ValuesIn(kBothEditors), KindName);

TEST_P(ReplacedFile, GoesToTheTrashWhenNewDataHaveItsName) {
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

TEST_P(ReplacedFile, GoesToTheTrashWhenSomebodyElseHasChangedIt) {
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

TEST_P(ReplacedFile, GoesToTheTrashWhenItHoldsMoreThanTheScreenOnly) {
  header_.comment = "done in lab 7";
  Edit([](CalEditor& editor) { Click(editor, "btnOk"); });
  const Texts whole = {Bytes(header_)};
  EXPECT_EQ(Trashed(), whole);
  EditAgain([](CalEditor& editor) {
    Fill(editor, "txtCalNo", "mine");
    Click(editor, "btnOk");
  });
  header_.comment = "done";
  header_.calNo = "mine";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
  EXPECT_EQ(Trashed(), whole) << "the user's own correction needs none";
}

// ---- An instrument of a station.

class ReplacedInstrument : public StationStage {
 protected:
  ReplacedInstrument() { fs::remove_all(Trash()); }
};

TEST_F(ReplacedInstrument, GoesToTheTrashWhenItHoldsWhatTheUserHasNotSeen) {
  // The file's cal data are not shown in their box.
  const InstrumentFile opened{.calData = "kept elsewhere"};
  const InstrumentFile others{.comment = "others", .calData = ""};
  WriteInstrument(opened);
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_11", "mine");
    Click(screen, "btnSave");
    EXPECT_EQ(Trashed(), Texts{opened.Bytes()});
    fs::remove_all(Trash());
    Fill(screen, "txtData_11", "mine again");
    Click(screen, "btnSave");
    EXPECT_EQ(Trashed(), Texts()) << "the user's own correction";
    WriteInstrument(others);
    Fill(screen, "txtData_11", "mine");
    const QString question = "The file PX12A has changed since it was opened here.";
    // After No the user stays at the instrument, on leaving as well.
    ExpectReturnQuestion(QMessageBox::Yes);
    ExpectReplaceQuestion(questions_, question, QMessageBox::No);
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_TRUE(CanSave(screen));
    EXPECT_EQ(TextOf(screen, "txtData_11"), "mine");
    EXPECT_EQ(ReadInstrument("PX12A"), others.Bytes());
    ExpectReplaceQuestion(questions_, question, QMessageBox::Yes);
    Click(screen, "btnSave");
    EXPECT_FALSE(CanSave(screen));
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), (InstrumentFile{.comment = "mine", .calData = ""}.Bytes()));
  EXPECT_EQ(Trashed(), Texts{others.Bytes()});
}

// ---- The file of a test kit.

class ReplacedKitFile : public StationStage {
 protected:
  static std::string Kit(const std::string& serial, const std::string& data) {
    return "QZ RT410A\r\n" + serial + "\r\n05MAR2001\r\n" + data + "\r\n";
  }
};

TEST_F(ReplacedKitFile, GoesToTheTrash) {
  fs::remove_all(Trash());
  const std::string path = R"(c:\calfactors\RT410A\SN12345)";
  const fs::path source = tree_.Root() / "kit.dat";
  tree_.Write(path, Kit("9999B12345", "earlier"));
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& at) {
    ClickEntry(at, "LstInstrment", "RT410A");
    const auto update = [&](const std::string& bytes, const std::function<void()>& expect) {
      WriteNative(source, bytes);
      const std::string listed = EntriesOf(at, "lstSerialNumber").at(0);
      ClickEntry(at, "lstSerialNumber", QString::fromStdString(listed));
      questions_.ExpectFilePicker("Choice RT410A Calibration Data File from Folder",
                                  {"Calibration Data(*.dat) (*.dat)", "All files(*.*) (*)"},
                                  QString::fromStdString(source.string()));
      expect();
      Click(at, "btnEdit");
    };
    // The same kit, without a question; the same bytes, without a copy.
    for (int i = 0; i < 2; ++i) {
      update(Kit("9999B12345", "finished"), [] {});
      EXPECT_EQ(Trashed(), Texts{Kit("9999B12345", "earlier")});
    }
    fs::remove_all(Trash());
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
      EXPECT_EQ(Trashed(), Texts());
      update(Kit("3318A12345", "another"), [&] {
        ExpectReplaceQuestion(
            questions_, "The file SN12345 holds the data of another serial number, \"9999B12345\".",
            answer);
      });
    }
    Click(at, "btnReturn");
  });
  frmCalibrationMain menu(nullptr);
  menu.ShowModally();
  EXPECT_EQ(tree_.Read(path), Kit("3318A12345", "another"));
  EXPECT_EQ(Trashed(), Texts{Kit("9999B12345", "finished")});
}

}  // namespace
}  // namespace tarvell
