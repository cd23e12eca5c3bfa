// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QtWidgets>

#include <new>
#include <stdexcept>

#include "core/platform/SystemDialogs.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/Questions.h"
#include "support/ScriptedQuestions.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// The real boxes and pickers over a window.
class RealQuestions : public testing::Test {
 protected:
  RealQuestions() {
    owner_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&owner_));
  }

  QMessageBox::StandardButton Ask(const Question& question,
                                  const std::function<void(QMessageBox& box)>& act) {
    user_.At<QMessageBox>(act);
    return CurrentQuestions().Ask(&owner_, question);
  }

  using AtPicker = std::function<void(QFileDialog& dialog)>;

  QString PickFile(FileRequest& request, const AtPicker& act) {
    user_.At<QFileDialog>(act);
    return CurrentQuestions().PickFile(&owner_, request);
  }

  QString PickFolder(const AtPicker& act) {
    user_.At<QFileDialog>(act);
    return CurrentQuestions().PickFolder(&owner_, "Browse", Folder());
  }

  [[nodiscard]] QString Folder() const {
    return QString::fromStdString(tree_.Native("c:\\files").generic_string());
  }

  /// Types a name into the line of a picker.
  static void TypeName(QFileDialog& dialog, const QString& name) {
    Fill(dialog, "fileNameEdit", name);
    if (QWidget* completions = QApplication::activePopupWidget()) {
      completions->close();
    }
  }

  static void Accept(QFileDialog& dialog, QDialogButtonBox::StandardButton button) {
    QTest::mouseClick(Find<QDialogButtonBox>(dialog, "buttonBox").button(button), Qt::LeftButton);
  }

  TestTree tree_;
  User user_;
  QWidget owner_;
};

// ---- Boxes.

TEST_F(RealQuestions, PickInTheDialogsOfASystemThatHasThem) {
  const auto look = [](QFileDialog& dialog) {
    EXPECT_NE(dialog.testOption(QFileDialog::DontUseNativeDialog), HasSystemDialogs());
    dialog.reject();
  };
  EXPECT_EQ(PickFolder(look), "");
  FileRequest request;
  EXPECT_EQ(PickFile(request, look), "");
}

TEST_F(RealQuestions, ABoxShowsAllOfAQuestionAsPlainText) {
  const Question question{.text = "<b>a&b</b>\r\nsecond line & %1",
                          .title = "Title",
                          .icon = QMessageBox::Critical,
                          .buttons = QMessageBox::Yes | QMessageBox::No,
                          .defaultButton = QMessageBox::No,
                          .detail = "Detail"};
  EXPECT_EQ(Ask(question,
                [&](QMessageBox& box) {
                  EXPECT_EQ(box.textFormat(), Qt::PlainText);
                  EXPECT_EQ(box.text(), question.text);
                  EXPECT_EQ(box.windowTitle(), "Title");
                  EXPECT_EQ(box.icon(), QMessageBox::Critical);
                  EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
                  EXPECT_EQ(box.standardButton(box.defaultButton()), QMessageBox::No);
                  EXPECT_EQ(box.informativeText(), "Detail");
                  EXPECT_EQ(box.parentWidget(), &owner_);
                  EXPECT_TRUE(box.isModal());
                  QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
                }),
            QMessageBox::Yes);
  user_.AnswerBox("Done.", QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok,
                  QMessageBox::Ok, "Morrand Tarvell");
  Tell(&owner_, "Done.");
}

// A message about a damaged file may contain a text of any length.
TEST_F(RealQuestions, OfALongTextTheBeginningAndTheEndAreShown) {
  const auto expect = [&](const QString& text, const QString& shown) {
    Ask({.text = text, .detail = text}, [&](QMessageBox& box) {
      EXPECT_EQ(box.text(), shown);
      EXPECT_EQ(box.informativeText(), shown);
      box.accept();
    });
  };
  const QString longest(2000, 'a');
  expect(longest, longest);
  expect(QString(1500, 'a') + QString(1000000, 'b') + QString(500, 'c'),
         QString(1500, 'a') + QChar(0x2026) + QString(500, 'c'));
}

TEST_F(RealQuestions, EnterEscapeAndTheFrameGiveTheCautiousAnswerAndTabReachesTheOther) {
  const Question okCancel{.text = "Make it?",
                          .buttons = QMessageBox::Ok | QMessageBox::Cancel,
                          .defaultButton = QMessageBox::Cancel};
  const Question yesNo{.text = "Delete it?",
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No};
  for (const auto& close : std::vector<std::function<void(QMessageBox&)>>{
           [](QMessageBox&) { Press(Qt::Key_Return); }, [](QMessageBox&) { Press(Qt::Key_Escape); },
           [](QMessageBox& box) { box.close(); }}) {
    EXPECT_EQ(Ask(okCancel, close), QMessageBox::Cancel);
    EXPECT_EQ(Ask(yesNo, close), QMessageBox::No);
    EXPECT_EQ(Ask({.text = "Notice"}, close), QMessageBox::Ok);
  }
  const auto otherButton = [](QMessageBox&) {
    Press(Qt::Key_Tab);
    Press(Qt::Key_Space);
  };
  EXPECT_EQ(Ask(okCancel, otherButton), QMessageBox::Ok);
  EXPECT_EQ(Ask(yesNo, otherButton), QMessageBox::Yes);
}

// ---- The picker for files.

class FilePicker : public RealQuestions {
 protected:
  FilePicker() { tree_.Write(R"(c:\files\a.dat)", "a"); }

  FileRequest request_ = {
      .title = "Pick one", .initialDir = Folder(), .filters = {"Data (*.dat)", "Every file (*)"}};
};

TEST_F(FilePicker, GivesAFileThatExistsAndTheChosenFilter) {
  QString picked = PickFile(request_, [&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Pick one");
    EXPECT_EQ(dialog.directory().absolutePath(), Folder());
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
    EXPECT_EQ(dialog.nameFilters(), request_.filters);
    EXPECT_EQ(dialog.parentWidget(), &owner_);
    TypeName(dialog, "nowhere.dat");
    user_.At<QMessageBox>([](QMessageBox& box) {
      EXPECT_TRUE(box.text().contains("nowhere.dat"));
      box.accept();
    });
    Press(Qt::Key_Return);
    EXPECT_EQ(ComboText(dialog, "fileTypeCombo"), "Data");
    Choose(dialog, "fileTypeCombo", "Every file");
    TypeName(dialog, "a.dat");
    Press(Qt::Key_Return);
  });
  EXPECT_EQ(picked, Folder() + "/a.dat");
  EXPECT_EQ(request_.filterIndex, 1);
  // The next picker starts with that filter and the proposed name; cancelling it keeps the filter.
  request_.fileName = "a.dat";
  picked = PickFile(request_, [](QFileDialog& dialog) {
    EXPECT_EQ(TextOf(dialog, "fileNameEdit"), "a.dat");
    EXPECT_EQ(ComboText(dialog, "fileTypeCombo"), "Every file");
    Choose(dialog, "fileTypeCombo", "Data");
    Accept(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_EQ(picked, "");
  EXPECT_EQ(request_.filterIndex, 1);
}

TEST_F(FilePicker, SavesUnderANewNameStartingInTheHomeFolderWhenItsFolderDoesNotExist) {
  request_.purpose = FileRequest::Purpose::Save;
  request_.initialDir = Folder() + "/nowhere";
  const QString picked = PickFile(request_, [](QFileDialog& dialog) {
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog.directory().absolutePath(), QDir::homePath());
    TypeName(dialog, "new.dat");
    Accept(dialog, QDialogButtonBox::Save);
  });
  EXPECT_EQ(picked, QDir::homePath() + "/new.dat");
  EXPECT_FALSE(QFile::exists(picked)) << "picking a name makes no file";
}

TEST_F(FilePicker, AddsTheSuffixBeforeItAsksWhetherToReplaceAFile) {
  request_.purpose = FileRequest::Purpose::Save;
  request_.suffix = "dat";
  const QString picked = PickFile(request_, [this](QFileDialog& dialog) {
    user_.At<QMessageBox>([](QMessageBox& box) {
      EXPECT_TRUE(box.text().contains("a.dat already exists")) << box.text().toStdString();
      box.button(QMessageBox::No)->click();
    });
    TypeName(dialog, "a");
    Accept(dialog, QDialogButtonBox::Save);
    TypeName(dialog, "b");
    Accept(dialog, QDialogButtonBox::Save);
  });
  EXPECT_EQ(picked, Folder() + "/b.dat");
}

// ---- The picker for folders.

TEST_F(RealQuestions, TheFolderPickerShowsAndGivesOnlyFolders) {
  tree_.Write(R"(c:\files\a.dat)", "a");
  tree_.MakeFolders(R"(c:\files\sub)");
  const QString picked = PickFolder([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Browse");
    EXPECT_EQ(dialog.directory().absolutePath(), Folder());
    EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
    const auto& view = Find<QListView>(dialog, "listView");
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.model()->rowCount(view.rootIndex()) == 1; }));
    TypeName(dialog, "sub");
    Accept(dialog, QDialogButtonBox::Open);
  });
  EXPECT_EQ(picked, Folder() + "/sub");
  EXPECT_EQ(PickFolder([](QFileDialog& dialog) { Accept(dialog, QDialogButtonBox::Open); }),
            Folder());
  EXPECT_EQ(PickFolder([](QFileDialog& dialog) { Accept(dialog, QDialogButtonBox::Cancel); }), "");
}

// ---- Errors.

TEST(Guard, ShowsEveryStandardExceptionAndSaysThatTheActionDidNotEnd) {
  ScriptedQuestions questions;
  questions.ExpectError({"row 5", "no such row"});
  EXPECT_FALSE(Guarded(nullptr, [] { throw Error(ErrorKind::Index, "no such row", "row 5"); }));
  questions.ExpectError({"not enough memory"});
  EXPECT_FALSE(Guarded(nullptr, [] { throw std::bad_alloc(); }));
  questions.ExpectError({"stray position", "What you typed is still here"});
  EXPECT_FALSE(Guarded(nullptr, [] { throw std::out_of_range("stray position"); }));
  EXPECT_TRUE(Guarded(nullptr, [] {}));
}

}  // namespace
}  // namespace tarvell
