// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "screens/caldata/DraftStrip.h"
#include "screens/caldata/EitherEditor.h"
#include "support/FaultPlatform.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class DraftOf : public EitherEditor {
 protected:
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
  New([](CalEditor& editor) { Fill(editor, "txtSerial", "first"); });
  New([&](CalEditor& editor) {
    Fill(editor, "txtSerial", "second");
    Click(editor, "btnRestore");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "first");
    EXPECT_TRUE(IsOffered(editor));
    Click(editor, "btnRestore");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "second");
    EXPECT_EQ(Drafts().size(), 2U);
    Click(editor, "btnDiscard");
    EXPECT_FALSE(IsOffered(editor));
    EXPECT_EQ(TextOf(editor, "txtSerial"), "second");
  });
  EXPECT_EQ(Drafts().size(), 1U);
}

TEST_P(DraftOf, TheEditorIsOnlyWrittenWhenSomethingWasTyped) {
  Edit([](CalEditor& editor) {
    Press(Qt::Key_Tab);
    ClickCell(GridOf(editor), 2, 1);
    Press(Qt::Key_Return);
    Press(Qt::Key_Return);
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
  WriteNative(Drafts().at(0), "torn");
  EditAgain([&](CalEditor& editor) {
    EXPECT_FALSE(IsOffered(editor));
    EXPECT_TRUE(HasNotice(editor, "A draft of these data cannot be read"));
  });
}

}  // namespace
}  // namespace tarvell
