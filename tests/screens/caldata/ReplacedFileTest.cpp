// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "screens/caldata/EitherEditor.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/station/StationFixture.h"
#include "support/KeptFiles.h"

namespace tarvell {
namespace {

namespace fs = std::filesystem;

using namespace test;  // NOLINT(google-build-using-namespace)

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

class ReplacedFile : public EitherEditor {
 protected:
  [[nodiscard]] Texts Kept() const {
    return KeptOf(tree_, R"(c:\calfactors)", Code() + R"(\SN12345)");
  }
};

INSTANTIATE_TEST_SUITE_P(Editors, ReplacedFile, testing::Bool(), KindName);

TEST_P(ReplacedFile, IsKeptWhenNewDataHaveItsName) {
  const std::string first = Bytes(header_);
  Edit([](CalEditor& editor) {
    Fill(editor, "txtComment", "mine");
    Click(editor, "btnOk");
  });
  EXPECT_EQ(Kept(), Texts{first});
  SetHeader old = header_;
  old.serial = "OLD12345";
  tree_.Write(Path(), Bytes(old));
  New([&](CalEditor& editor) {
    Fill(editor, "txtSerial", "NEW12345");
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
      EXPECT_TRUE(editor.isVisible());
      EXPECT_EQ(tree_.Read(Path()), Bytes(old));
      EXPECT_EQ(Kept(), Texts{first});
      ExpectReplaceQuestion(questions_,
                            QString::fromStdString("The file " + Code() + R"(\SN12345)") +
                                " holds the data of another serial number, \"OLD12345\".",
                            answer);
      Click(editor, "btnOk");
    }
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_TRUE(questions_.details[0].contains(
      "Calibration number: C-0042\nCalibrated: 5 MAR 2001\nDue: 5 MAR 2002\n"));
  EXPECT_EQ(Kept(), (Texts{first, Bytes(old)}));
  header_.serial = "NEW12345";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
}

// ---- An instrument of a station.

using ReplacedInstrument = StationStage;

TEST_F(ReplacedInstrument, IsKeptAfterAQuestionIfTheUserHasNotSeenIt) {
  const InstrumentFile others{.comment = "others", .calData = ""};
  WriteInstrument();
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    WriteInstrument(others);
    Fill(screen, "txtData_11", "mine");
    const QString question = "The file ST1\\PX12A has changed since it was opened here.";
    // After No the user stays at the instrument, on leaving as well.
    ExpectReturnQuestion(QMessageBox::Yes);
    ExpectReplaceQuestion(questions_, question, QMessageBox::No);
    Click(screen, "btnReturn");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_TRUE(CanSave(screen));
    EXPECT_EQ(ReadInstrument("PX12A"), others.Bytes());
    ExpectReplaceQuestion(questions_, question, QMessageBox::Yes);
    Click(screen, "btnSave");
    EXPECT_FALSE(CanSave(screen));
    LeaveUnsaved(screen);
  });
  EXPECT_EQ(ReadInstrument("PX12A"), (InstrumentFile{.comment = "mine", .calData = ""}.Bytes()));
  EXPECT_EQ(KeptOf(tree_, R"(c:\stations)", R"(ST1\PX12A)"), Texts{others.Bytes()});
}

// ---- The file of a test kit.

using ReplacedKitFile = StationStage;

TEST_F(ReplacedKitFile, IsKept) {
  const std::string path = R"(c:\calfactors\RT410A\SN12345)";
  const std::string earlier = "QZ RT410A\r\n9999B12345\r\n05MAR2001\r\nearlier\r\n";
  const std::string other = "QZ RT410A\r\n3318A12345\r\n05MAR2001\r\nanother\r\n";
  const fs::path source = tree_.Root() / "kit.dat";
  tree_.Write(path, earlier);
  WriteNative(source, other);
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& at) {
    ClickEntry(at, "LstInstrment", "RT410A");
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
      EXPECT_EQ(tree_.Read(path), earlier);
      EXPECT_EQ(KeptOf(tree_, R"(c:\calfactors)", R"(RT410A\SN12345)"), Texts());
      ClickEntry(at, "lstSerialNumber", "9999B12345");
      questions_.ExpectFilePicker("Choice RT410A Calibration Data File from Folder",
                                  {"Calibration Data(*.dat) (*.dat)", "All files(*.*) (*)"},
                                  QString::fromStdString(source.string()));
      ExpectReplaceQuestion(
          questions_,
          "The file RT410A\\SN12345 holds the data of another serial number, \"9999B12345\".",
          answer);
      Click(at, "btnEdit");
    }
    Click(at, "btnReturn");
  });
  frmCalibrationMain menu(nullptr);
  menu.ShowModally();
  EXPECT_EQ(tree_.Read(path), other);
  EXPECT_EQ(KeptOf(tree_, R"(c:\calfactors)", R"(RT410A\SN12345)"), Texts{earlier});
}

}  // namespace
}  // namespace tarvell
