// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "screens/caldata/DraftStrip.h"
#include "screens/caldata/EitherEditor.h"
#include "screens/widgets/DefaultDate.h"
#include "support/FaultPlatform.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class DraftOf : public EitherEditor {
 protected:
  DraftOf() : dataHome_(qgetenv("XDG_DATA_HOME")) {
    qputenv("XDG_DATA_HOME", (tree_.Root() / "home").string().c_str());
  }
  ~DraftOf() override { qputenv("XDG_DATA_HOME", dataHome_); }
  DraftOf(const DraftOf&) = delete;
  DraftOf& operator=(const DraftOf&) = delete;
  static bool IsOffered(CalEditor& editor) { return Find<DraftStrip>(editor, "draft").isVisible(); }
  static bool HasNotice(CalEditor& editor, const std::string& part) {
    return std::ranges::any_of(NoticesOf(editor), [&](const std::string& notice) {
      return notice.find(part) != std::string::npos;
    });
  }

  [[nodiscard]] std::vector<std::filesystem::path> Drafts() const {
    std::vector<std::filesystem::path> drafts;
    const std::filesystem::path folder = tree_.UserFolder() / "drafts";
    if (std::filesystem::exists(folder)) {
      for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".draft") {
          drafts.push_back(entry.path());
        }
      }
    }
    return drafts;
  }

  /// Types something into every part of the editor. The last cell stays open.
  static void TypeAll(CalEditor& editor) {
    Fill(editor, "txtCalNo", "D-1");
    Choose(editor, "cmbDueMonth", "JUL");
    Fill(editor, "txtComment", "from the certificate, 100%");
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 1, 1);
    Type("91");
    Press(Qt::Key_Return);
    ClickCell(grid, 3, 1);
    Type("77");
    // Such a date cannot be saved.
    Find<QLineEdit>(editor, "txtDueDay").clear();
  }
  /// Types into a cell and closes the editor by Escape.
  static void TypeAndEscape(CalEditor& editor, int row, const QString& text) {
    TypeCell(editor, row, 1, text);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(editor.isVisible());
  }

 private:
  QByteArray dataHome_;
};

INSTANTIATE_TEST_SUITE_P(Editors, DraftOf, testing::Bool(), KindName);

TEST_P(DraftOf, TheEditorBringsEverythingBackAfterEscape) {
  Edit([](CalEditor& editor) {
    EXPECT_FALSE(IsOffered(editor));
    TypeAll(editor);
    editor.reject();
  });
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_)) << "Cancel saves nothing";
  ASSERT_EQ(Drafts().size(), 1U);
  EditAgain([&](CalEditor& editor) {
    EXPECT_TRUE(IsOffered(editor));
    const QString offer = Find<QLabel>(editor, "lblDraft").text();
    EXPECT_TRUE(offer.contains(QDate::currentDate().toString("yyyy"))) << offer.toStdString();
    EXPECT_TRUE(Find<QLineEdit>(editor, "txtCalNo").hasFocus()) << "the strip takes no focus";
    EXPECT_EQ(TextOf(editor, "txtCalNo"), header_.calNo);
    Press(Qt::Key_R, Qt::AltModifier);
    QTRY_VERIFY(!IsOffered(editor));
    Find<QPushButton>(editor, "btnRestore").click();  // as a screen reader does, hidden or not
    ExpectOpen(editor, "77");
    EXPECT_EQ(GridOf(editor).CurrentCell().row.number, 3);
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "");
    EXPECT_EQ(editor.History().count(), 1);
    Find<QLineEdit>(editor, "txtDueDay").setText("5");
    Click(editor, "btnOk");
  });
  SetHeader saved = header_;
  saved.calNo = "D-1";
  saved.dueDate = "20020705";
  saved.comment = "from the certificate, 100%";
  Texts values = Values();
  values[0] = Stored(1, "91");
  values[2] = Stored(3, "77");
  EXPECT_EQ(tree_.Read(Path()), Bytes(saved, values));
  EXPECT_TRUE(Drafts().empty()) << "the save contains it";
  EditAgain([](CalEditor& editor) { EXPECT_FALSE(IsOffered(editor)); });
}

TEST_P(DraftOf, WhatWasTypedBeforeRestoreIsOfferedNext) {
  New([](CalEditor& editor) {
    Fill(editor, "txtSerial", "first");
    Fill(editor, "txtCalDay", "9");
  });
  New([&](CalEditor& editor) {
    Fill(editor, "txtSerial", "second");
    EXPECT_TRUE(Find<QLabel>(editor, "lblDraft").text().endsWith(" for first."));
    Click(editor, "btnRestore");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "first");
    EXPECT_TRUE(IsOffered(editor));
    EXPECT_TRUE(Find<QLabel>(editor, "lblDraft").text().endsWith(" for second."));
    EXPECT_FALSE(IsDefaultDate(&Find<QLineEdit>(editor, "txtCalDay")));
    Click(editor, "btnRestore");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "second");
    EXPECT_TRUE(IsDefaultDate(&Find<QLineEdit>(editor, "txtCalDay"))) << "as when it was typed";
    ASSERT_EQ(Drafts().size(), 2U);
    Click(editor, "btnDiscard");
    EXPECT_FALSE(IsOffered(editor));
    EXPECT_EQ(TextOf(editor, "txtSerial"), "second");
  });
  EXPECT_EQ(Drafts().size(), 1U);
  // A wrong click can be taken back on the desktop.
  std::string discarded;
  for (const auto& entry : std::filesystem::directory_iterator(tree_.Root() / "home/Trash/files")) {
    discarded += ReadNative(entry.path());
  }
  EXPECT_NE(discarded.find("Serial number: first\r\n"), std::string::npos) << discarded;
}

TEST_P(DraftOf, ANewCalibrationIsOfferedToNewCalibrationsOnly) {
  tree_.Write(Path(), Bytes(header_));
  NewCalibration([](CalEditor& editor) { TypeAndEscape(editor, 1, "91"); });
  EditAgain([](CalEditor& editor) {
    EXPECT_FALSE(IsOffered(editor));
    EXPECT_TRUE(HasNotice(editor, "choose New calibration."));
    TypeAndEscape(editor, 1, "92");
  });
  NewCalibration([](CalEditor& editor) {
    EXPECT_TRUE(HasNotice(editor, "choose Edit."));
    Find<QLineEdit>(editor, "txtCalNo").setFocus();
    Click(editor, "btnRestore");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), Stored(1, "91"));
    EXPECT_TRUE(GridOf(editor).hasFocus()) << "Ctrl+Z takes the draft back";
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(CellOf(GridOf(editor), 1, 1), Stored(1, "91"));
  });
}

TEST_P(DraftOf, TheEditorIsOfferedAgainWhenRestoringItWasUndone) {
  Edit([](CalEditor& editor) { TypeAndEscape(editor, 1, "91"); });
  EditAgain([](CalEditor& editor) {
    Click(editor, "btnRestore");
    EXPECT_FALSE(IsOffered(editor));
    GridOf(editor).setFocus();
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), Values()[0]);
    QTRY_VERIFY(IsOffered(editor));
    Press(Qt::Key_Escape);
  });
  EditAgain([](CalEditor& editor) {
    Click(editor, "btnRestore");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), Stored(1, "91"));
  });
  EXPECT_EQ(Drafts().size(), 1U);
}

TEST_P(DraftOf, TheEditorIsKeptBesideWhatWasTypedWhenRestoringItWasUndone) {
  Edit([](CalEditor& editor) { TypeAndEscape(editor, 1, "91"); });
  EditAgain([](CalEditor& editor) {
    TypeCell(editor, 2, 1, "92");
    Press(Qt::Key_R, Qt::AltModifier);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), Values()[0]);
    EXPECT_EQ(CellOf(GridOf(editor), 2, 1), Stored(2, "92"));
    TypeCell(editor, 3, 1, "93");
    Press(Qt::Key_Escape);
  });
  EXPECT_EQ(Drafts().size(), 2U);
  EditAgain([](CalEditor& editor) {
    Click(editor, "btnRestore");
    EXPECT_EQ(CellOf(GridOf(editor), 3, 1), Stored(3, "93"));
    Click(editor, "btnRestore");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), Stored(1, "91"));
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(CellOf(GridOf(editor), 3, 1), Stored(3, "93"));
    Press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), Stored(1, "91"));
    Press(Qt::Key_Escape);
  });
  EditAgain([](CalEditor& editor) {
    EXPECT_TRUE(Find<QLabel>(editor, "lblDraft").text().contains("2 drafts"));
  });
}

TEST_P(DraftOf, TheEditorIsKeptWhenUndoWasPressedTooOften) {
  Edit([this](CalEditor& editor) {
    TypeCell(editor, 1, 1, "91");
    TypeCell(editor, 2, 1, "92");
    QTRY_COMPARE(Drafts().size(), std::size_t{1});
    for (int i = 0; i < 4; ++i) {
      Press(Qt::Key_Z, Qt::ControlModifier);
    }
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), Values()[0]);
    Press(Qt::Key_Escape);
  });
  EditAgain([](CalEditor& editor) {
    Click(editor, "btnRestore");
    EXPECT_EQ(CellOf(GridOf(editor), 2, 1), Stored(2, "92"));
  });
}

TEST_P(DraftOf, TheEditorBringsTheNotesOfTheCellsBack) {
  Edit([](CalEditor& editor) { TypeAndEscape(editor, 1, "98,57"); });
  EditAgain([](CalEditor& editor) {
    Click(editor, "btnRestore");
    EXPECT_TRUE(HasNotice(editor, "\"98,57\" is not a number"));
  });
}

TEST_P(DraftOf, TheEditorKeepsWhatAColleagueSavedMeanwhile) {
  Edit([](CalEditor& editor) {
    Fill(editor, "txtComment", "mine");
    TypeAndEscape(editor, 1, "91");
  });
  SetHeader newer = header_;
  newer.calNo = "C-0099";
  newer.comment = "newer";
  Texts values = Values();
  values[1] = Stored(2, "92");
  tree_.Write(Path(), Bytes(newer, values));
  EditAgain([&](CalEditor& editor) {
    EXPECT_TRUE(Find<QLabel>(editor, "lblDraft").text().contains("have been saved since"));
    Click(editor, "btnRestore");
    EXPECT_TRUE(HasNotice(editor, "2 values were saved after the draft was begun"));
    Click(editor, "btnOk");
  });
  newer.comment = "mine";
  values[0] = Stored(1, "91");
  EXPECT_EQ(tree_.Read(Path()), Bytes(newer, values));
}

TEST_P(DraftOf, TheEditorIsRemovedWhenAColleagueHasSavedTheSame) {
  Edit([](CalEditor& editor) {
    Fill(editor, "txtComment", "mine");
    Press(Qt::Key_Escape);
  });
  SetHeader newer = header_;
  newer.calNo = "C-0099";
  newer.comment = "mine";
  tree_.Write(Path(), Bytes(newer));
  EditAgain([](CalEditor& editor) {
    Click(editor, "btnRestore");
    EXPECT_TRUE(HasNotice(editor, "is saved already"));
    EXPECT_FALSE(IsOffered(editor));
  });
  EXPECT_TRUE(Drafts().empty());
}

TEST_P(DraftOf, TheEditorIsUndoneWithItsHeaderInOneStep) {
  Edit([](CalEditor& editor) {
    Fill(editor, "txtComment", "mine");
    TypeAndEscape(editor, 1, "91");
  });
  EditAgain([this](CalEditor& editor) {
    Click(editor, "btnRestore");
    EXPECT_EQ(TextOf(editor, "txtComment"), "mine");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(TextOf(editor, "txtComment"), header_.comment);
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
}

TEST_P(DraftOf, TheEditorHoldsTheDefaultThatWasBeingTypedAgain) {
  tree_.Write(Path(), Bytes(header_));
  const auto mark = [](CalEditor& editor) {
    return GridOf(editor).model()->index(0, 1).data(Qt::AccessibleTextRole).toString();
  };
  NewCalibration([](CalEditor& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Press(Qt::Key_F2);
    const QString same = CellBoxOf(editor).text();
    Press(Qt::Key_A, Qt::ControlModifier);
    Type(same);
    editor.reject();
  });
  NewCalibration([&](CalEditor& editor) {
    const QString marked = mark(editor);
    Click(editor, "btnRestore");
    Press(Qt::Key_Return);
    EXPECT_NE(mark(editor), marked) << "the value is entered";
    QTest::qWait(0);
    EXPECT_FALSE(IsOffered(editor));
  });
}

TEST_P(DraftOf, TheEditorIsNotOfferedAfterAKillBetweenItsSaveAndItsRemoval) {
  Edit([&](CalEditor& editor) {
    TypeCell(editor, 1, 1, "91");
    QTRY_COMPARE(Drafts().size(), std::size_t{1});
    const std::filesystem::path place = Drafts().at(0);
    const std::string draft = ReadNative(place);
    Click(editor, "btnOk");
    Find<QPushButton>(editor, "btnOk").click();  // as a screen reader does, hidden or not
    EXPECT_TRUE(Drafts().empty());
    WriteNative(place, draft);
  });
  EditAgain([](CalEditor& editor) { EXPECT_FALSE(IsOffered(editor)); });
  EXPECT_TRUE(Drafts().empty());
}

TEST_P(DraftOf, TheEditorIsOnlyWrittenWhenSomethingWasTyped) {
  Edit([](CalEditor& editor) {
    Press(Qt::Key_Tab);
    ClickCell(GridOf(editor), 2, 1);
    Press(Qt::Key_Return);
    Press(Qt::Key_Return);
    Press(Qt::Key_PageDown, Qt::ControlModifier);
    // The cell stays open, but nothing is typed.
    Press(Qt::Key_F2);
  });
  EXPECT_TRUE(Drafts().empty());
  Edit([&](CalEditor& editor) {
    Fill(editor, "txtComment", "x");
    QTRY_COMPARE(Drafts().size(), std::size_t{1});
    Fill(editor, "txtComment", ToQt(header_.comment));
  });
  EXPECT_TRUE(Drafts().empty()) << "everything is as it was opened";
}

TEST_P(DraftOf, TheEditorReportsThatItCannotBeKeptAndGoesOn) {
  FaultPlatform disk;
  disk.Set(FaultPlatform::Step::Write, std::errc::no_space_on_device);
  disk.always = true;
  Edit([&](CalEditor& editor) {
    Fill(editor, "txtComment", "mine");
    QTRY_VERIFY(HasNotice(editor, "not kept as a draft. Cannot write the draft: the disk"));
    disk.step = FaultPlatform::Step::None;
    Type("x");
    QTRY_VERIFY(!HasNotice(editor, "draft"));
    EXPECT_NE(ReadNative(Drafts().at(0)).find("Comment: minex\r\n"), std::string::npos);
  });
  disk.step = FaultPlatform::Step::Write;
  EditAgain([&](CalEditor& editor) {
    const Question question = {.text =
                                   "What was typed is not kept as a draft. Close without "
                                   "saving?",
                               .icon = QMessageBox::Warning,
                               .buttons = QMessageBox::Yes | QMessageBox::No,
                               .defaultButton = QMessageBox::No};
    Find<QLineEdit>(editor, "txtComment").setFocus();
    questions_.Expect(question, QMessageBox::No);
    Type("y");
    Press(Qt::Key_Escape);
    EXPECT_TRUE(editor.isVisible());
    EXPECT_TRUE(questions_.details.back().contains("the disk is full"));
    questions_.Expect(question, QMessageBox::Yes);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(editor.isVisible());
  });
  disk.step = FaultPlatform::Step::None;
  WriteNative(Drafts().at(0), "torn");
  EditAgain([&](CalEditor& editor) {
    EXPECT_FALSE(IsOffered(editor));
    EXPECT_TRUE(HasNotice(editor, "A draft of these data cannot be read"));
  });
}

}  // namespace
}  // namespace tarvell
