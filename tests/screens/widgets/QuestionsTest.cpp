// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QPushButton>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "screens/widgets/Questions.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// The real boxes and pickers, above a screen of their own.
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

  /// Runs the picker for files; the request holds afterwards what came of it.
  QString PickFile(FileRequest& request, const std::function<void(QFileDialog& dialog)>& act) {
    user_.At<QFileDialog>(act);
    return CurrentQuestions().PickFile(&owner_, request);
  }

  QString PickFolder(const QString& title, const std::function<void(QFileDialog& dialog)>& act) {
    user_.At<QFileDialog>(act);
    return CurrentQuestions().PickFolder(&owner_, title, Folder());
  }

  [[nodiscard]] QString Folder() const {
    return QString::fromStdString(tree_.Native("c:\\files").string());
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

const Question kOkCancel{.text = "Make it?",
                         .buttons = QMessageBox::Ok | QMessageBox::Cancel,
                         .defaultButton = QMessageBox::Cancel};
const Question kYesNo{.text = "Delete it?",
                      .icon = QMessageBox::Warning,
                      .buttons = QMessageBox::Yes | QMessageBox::No,
                      .defaultButton = QMessageBox::No};

// ---- Boxes.

TEST_F(RealQuestions, ABoxShowsAllOfAQuestion) {
  const Question question{.text = "Text",
                          .title = "Title",
                          .icon = QMessageBox::Critical,
                          .buttons = QMessageBox::Yes | QMessageBox::No,
                          .defaultButton = QMessageBox::No,
                          .detail = "Detail"};
  EXPECT_EQ(Ask(question,
                [&](QMessageBox& box) {
                  EXPECT_EQ(box.text(), "Text");
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
}

TEST_F(RealQuestions, ANoticeHasTheApplicationTitleAndOk) {
  user_.AnswerBox("Done.", QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok,
                  QMessageBox::Ok, "Morrand Tarvell");
  Tell(&owner_, "Done.");
}

TEST_F(RealQuestions, TextIsShownAsItIs) {
  const QString text = "<b>a&b</b>\r\nsecond line & %1";
  Ask({.text = text}, [&](QMessageBox& box) {
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.text(), text);
    box.accept();
  });
}

// A message about a broken file may name a text of any length.
TEST_F(RealQuestions, OfALongTextTheBeginningAndTheEndAreShown) {
  const QString longest = QString(1000, 'a') + QString(1000, 'b');
  Ask({.text = longest, .detail = longest}, [&](QMessageBox& box) {
    EXPECT_EQ(box.text(), longest);
    EXPECT_EQ(box.informativeText(), longest);
    box.accept();
  });
  const QString longer = QString(1500, 'a') + QString(1000000, 'b') + QString(500, 'c');
  const QString shown = QString(1500, 'a') + QChar(0x2026) + QString(500, 'c');
  Ask({.text = longer, .detail = longer}, [&](QMessageBox& box) {
    EXPECT_EQ(box.text(), shown);
    EXPECT_EQ(box.informativeText(), shown);
    box.accept();
  });
}

TEST_F(RealQuestions, EnterPressesTheDefaultButton) {
  const auto enter = [](QMessageBox&) { Press(Qt::Key_Return); };
  EXPECT_EQ(Ask(kOkCancel, enter), QMessageBox::Cancel);
  EXPECT_EQ(Ask(kYesNo, enter), QMessageBox::No);
  EXPECT_EQ(Ask({.text = "Notice"}, enter), QMessageBox::Ok);
}

TEST_F(RealQuestions, EscapeIsNoConsent) {
  const auto escape = [](QMessageBox&) { Press(Qt::Key_Escape); };
  EXPECT_EQ(Ask(kOkCancel, escape), QMessageBox::Cancel);
  EXPECT_EQ(Ask(kYesNo, escape), QMessageBox::No);
  EXPECT_EQ(Ask({.text = "Notice"}, escape), QMessageBox::Ok);
}

TEST_F(RealQuestions, ClosingTheFrameIsNoConsent) {
  const auto close = [](QMessageBox& box) { box.close(); };
  EXPECT_EQ(Ask(kOkCancel, close), QMessageBox::Cancel);
  EXPECT_EQ(Ask(kYesNo, close), QMessageBox::No);
  EXPECT_EQ(Ask({.text = "Notice"}, close), QMessageBox::Ok);
}

TEST_F(RealQuestions, TheKeyboardReachesEveryButton) {
  const auto otherButton = [](QMessageBox&) {
    Press(Qt::Key_Tab);
    Press(Qt::Key_Space);
  };
  EXPECT_EQ(Ask(kOkCancel, otherButton), QMessageBox::Ok);
  EXPECT_EQ(Ask(kYesNo, otherButton), QMessageBox::Yes);
}

TEST_F(RealQuestions, QuestionsOfATestComeInThePlaceOfTheRealOnes) {
  class Silent : public Questions {
   public:
    QMessageBox::StandardButton Ask(QWidget* /*owner*/, const Question& /*question*/) override {
      ++asked;
      return QMessageBox::Ok;
    }
    int asked = 0;
  };
  Silent silent;
  EXPECT_EQ(SetCurrentQuestions(&silent), nullptr);
  Tell(&owner_, "Notice");
  EXPECT_EQ(SetCurrentQuestions(nullptr), &silent);
  EXPECT_EQ(silent.asked, 1);
  user_.AnswerBox("Notice", QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok,
                  QMessageBox::Ok);
  Tell(&owner_, "Notice");
  EXPECT_EQ(silent.asked, 1);
}

// ---- The picker for files.

class FilePicker : public RealQuestions {
 protected:
  FilePicker() {
    tree_.Write(R"(c:\files\a.dat)", "a");
    tree_.Write(R"(c:\files\b.txt)", "b");
    tree_.MakeFolders(R"(c:\files\sub)");
    request_ = {
        .title = "Pick one", .initialDir = Folder(), .filters = {"Data (*.dat)", "Every file (*)"}};
  }

  FileRequest request_;
};

TEST_F(FilePicker, OpensWhereItIsTold) {
  EXPECT_EQ(PickFile(request_,
                     [&](QFileDialog& dialog) {
                       EXPECT_EQ(dialog.windowTitle(), "Pick one");
                       EXPECT_EQ(dialog.directory().absolutePath(), Folder());
                       EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
                       EXPECT_EQ(dialog.nameFilters(), request_.filters);
                       EXPECT_EQ(Find<QComboBox>(dialog, "fileTypeCombo").currentText(), "Data");
                       EXPECT_EQ(dialog.parentWidget(), &owner_);
                       Press(Qt::Key_Escape);
                     }),
            "");
}

TEST_F(FilePicker, GivesTheFileThatWasTyped) {
  EXPECT_EQ(PickFile(request_,
                     [](QFileDialog& dialog) {
                       TypeName(dialog, "a.dat");
                       Press(Qt::Key_Return);
                     }),
            Folder() + "/a.dat");
  EXPECT_EQ(request_.filterIndex, 0);
}

TEST_F(FilePicker, GivesTheFilterThatWasChosen) {
  EXPECT_EQ(PickFile(request_,
                     [](QFileDialog& dialog) {
                       auto& kinds = Find<QComboBox>(dialog, "fileTypeCombo");
                       Choose(dialog, "fileTypeCombo", kinds.itemText(1));
                       TypeName(dialog, "b.txt");
                       Press(Qt::Key_Return);
                     }),
            Folder() + "/b.txt");
  EXPECT_EQ(request_.filterIndex, 1);
  // It is the one that is selected next time.
  PickFile(request_, [](QFileDialog& dialog) {
    EXPECT_EQ(Find<QComboBox>(dialog, "fileTypeCombo").currentText(), "Every file");
    Press(Qt::Key_Escape);
  });
}

TEST_F(FilePicker, CancelledGivesNothingAndKeepsTheFilter) {
  EXPECT_EQ(PickFile(request_,
                     [](QFileDialog& dialog) {
                       auto& kinds = Find<QComboBox>(dialog, "fileTypeCombo");
                       Choose(dialog, "fileTypeCombo", kinds.itemText(1));
                       TypeName(dialog, "a.dat");
                       Accept(dialog, QDialogButtonBox::Cancel);
                     }),
            "");
  EXPECT_EQ(request_.filterIndex, 0);
}

TEST_F(FilePicker, ClosedByItsFrameGivesNothing) {
  EXPECT_EQ(PickFile(request_,
                     [](QFileDialog& dialog) {
                       TypeName(dialog, "a.dat");
                       dialog.close();
                     }),
            "");
}

TEST_F(FilePicker, AFileThatIsNotThereCannotBeOpened) {
  EXPECT_EQ(PickFile(request_,
                     [&](QFileDialog& dialog) {
                       TypeName(dialog, "nowhere.dat");
                       user_.At<QMessageBox>([](QMessageBox& box) {
                         EXPECT_TRUE(box.text().contains("nowhere.dat"));
                         box.accept();
                       });
                       Press(Qt::Key_Return);
                       EXPECT_TRUE(dialog.isVisible());
                       dialog.reject();
                     }),
            "");
}

TEST_F(FilePicker, ProposesAName) {
  request_.fileName = "a.dat";
  EXPECT_EQ(PickFile(request_,
                     [](QFileDialog& dialog) {
                       EXPECT_EQ(TextOf(dialog, "fileNameEdit"), "a.dat");
                       Accept(dialog, QDialogButtonBox::Open);
                     }),
            Folder() + "/a.dat");
}

TEST_F(FilePicker, SavesUnderANewName) {
  request_.purpose = FileRequest::Purpose::Save;
  EXPECT_EQ(PickFile(request_,
                     [](QFileDialog& dialog) {
                       EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
                       TypeName(dialog, "new.dat");
                       Accept(dialog, QDialogButtonBox::Save);
                     }),
            Folder() + "/new.dat");
  EXPECT_FALSE(tree_.Exists(R"(c:\files\new.dat)")) << "picking a name makes no file";
}

TEST_F(FilePicker, AFolderThatIsNotThereIsReplacedByTheHomeFolder) {
  request_.initialDir = Folder() + "/nowhere";
  PickFile(request_, [](QFileDialog& dialog) {
    EXPECT_EQ(dialog.directory().absolutePath(), QDir::homePath());
    EXPECT_EQ(TextOf(dialog, "fileNameEdit"), "");
    Press(Qt::Key_Escape);
  });
}

// ---- The picker for folders.

class FolderPickerDialog : public RealQuestions {
 protected:
  FolderPickerDialog() {
    tree_.Write(R"(c:\files\a.dat)", "a");
    tree_.MakeFolders(R"(c:\files\sub)");
  }
};

TEST_F(FolderPickerDialog, GivesTheFolderThatWasTyped) {
  EXPECT_EQ(PickFolder("Browse",
                       [&](QFileDialog& dialog) {
                         EXPECT_EQ(dialog.windowTitle(), "Browse");
                         EXPECT_EQ(dialog.directory().absolutePath(), Folder());
                         EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
                         TypeName(dialog, "sub");
                         Accept(dialog, QDialogButtonBox::Open);
                       }),
            Folder() + "/sub");
}

TEST_F(FolderPickerDialog, GivesTheFolderItStartedIn) {
  EXPECT_EQ(
      PickFolder("Browse", [](QFileDialog& dialog) { Accept(dialog, QDialogButtonBox::Open); }),
      Folder());
}

TEST_F(FolderPickerDialog, ShowsFoldersAlone) {
  PickFolder("Browse", [](QFileDialog& dialog) {
    const auto& view = Find<QListView>(dialog, "listView");
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.model()->rowCount(view.rootIndex()) == 1; }));
    EXPECT_EQ(view.model()->index(0, 0, view.rootIndex()).data().toString(), "sub");
    Press(Qt::Key_Escape);
  });
}

TEST_F(FolderPickerDialog, CancelledGivesNothing) {
  for (const bool byEscape : {true, false}) {
    EXPECT_EQ(PickFolder("Browse",
                         [byEscape](QFileDialog& dialog) {
                           TypeName(dialog, "sub");
                           if (byEscape) {
                             dialog.setFocus();
                             Press(Qt::Key_Escape);
                           } else {
                             Accept(dialog, QDialogButtonBox::Cancel);
                           }
                         }),
              "");
  }
}

}  // namespace
}  // namespace tarvell
