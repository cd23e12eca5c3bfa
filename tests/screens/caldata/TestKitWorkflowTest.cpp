// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "support/DesktopTestPlatform.h"
#include "support/OrdinaryUser.h"
#include "support/ScriptedQuestions.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)
namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

/// Lets a test look around while the user is asked for a file.
class WatchedQuestions : public ScriptedQuestions {
 public:
  std::function<void()> whilePicking = [] {};

  QString PickFile(QWidget* owner, FileRequest& request) override {
    whilePicking();
    return ScriptedQuestions::PickFile(owner, request);
  }
};

/// A finished file of a kit, with every kind of byte in it.
std::string KitFile(const std::string& serial) {
  std::string bytes = "QZ RT410A\r\n" + serial + "\r\n05MAR2001\r\n";
  for (int byte = 0; byte < 256; ++byte) {
    bytes += static_cast<char>(byte);
  }
  return bytes + "\n\r\r\n";
}

/// Waits until the dialog has come up and has the keyboard.
void Await(QFileDialog& dialog) {
  EXPECT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  dialog.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
}

/// The dialog shows exactly these files.
void ExpectFiles(QFileDialog& dialog, const QStringList& names) {
  const auto& view = Find<QListView>(dialog, "listView");
  QStringList shown;
  const bool asExpected = QTest::qWaitFor([&] {
    shown.clear();
    for (int row = 0; row < view.model()->rowCount(view.rootIndex()); ++row) {
      shown << view.model()->index(row, 0, view.rootIndex()).data().toString();
    }
    shown.sort();
    return shown == names;
  });
  EXPECT_TRUE(asExpected) << shown.join(", ").toStdString();
}

/// Types a file's name and opens it.
void PickFile(QFileDialog& dialog, const QString& name) {
  Fill(dialog, "fileNameEdit", name);
  if (QWidget* completions = QApplication::activePopupWidget()) {
    completions->close();
  }
  QTest::mouseClick(Find<QDialogButtonBox>(dialog, "buttonBox").button(QDialogButtonBox::Open),
                    Qt::LeftButton);
}

/// An operator who takes in the finished file of a test kit. The parameter is the kit's model.
class TestKitWorkflow : public testing::TestWithParam<const char*> {
 public:
  TestKitWorkflow() : platform_(tree_.ProgramFolder()) {
    gCalibrationDir = R"(c:\calfactors)";
    tree_.MakeFolders(gCalibrationDir);
    fs::create_directories(Desktop());
  }
  ~TestKitWorkflow() override { fs::remove_all(Desktop()); }
  TestKitWorkflow(const TestKitWorkflow&) = delete;
  TestKitWorkflow& operator=(const TestKitWorkflow&) = delete;

 protected:
  [[nodiscard]] static std::string Code() { return GetParam(); }
  [[nodiscard]] static std::string Folder() { return gCalibrationDir + "\\" + Code(); }
  [[nodiscard]] static std::string FileNamed(const std::string& name) {
    return Folder() + "\\" + name;
  }
  [[nodiscard]] static fs::path Desktop() { return QDir::homePath().toStdString() + "/Desktop"; }
  [[nodiscard]] static fs::path Source() { return Desktop() / "kit.dat"; }
  [[nodiscard]] static QString PickerTitle() {
    return QString("Choice %1 Calibration Data File from Folder").arg(GetParam());
  }

  /// Expects the picker, in which the user picks `picked`; "" cancels.
  static void ExpectPicker(ScriptedQuestions& questions, const fs::path& picked) {
    questions.ExpectFilePicker(PickerTitle(),
                               {"Calibration Data(*.dat) (*.dat)", "All files(*.*) (*)"},
                               QString::fromStdString(picked.string()));
  }

  /// Chooses the kit's entry of the Add menu; its action runs within. `expect` adds the steps of
  /// what it shows.
  void Add(
      frmCalibrationMain& screen, const std::function<void()>& expect = [] {}) {
    user_.At<QMenu>([](QMenu& add) { ClickModel(add, GetParam()); });
    expect();
    Click(screen, "btnAdd");
    // The menu stays open until its entry was chosen.
    EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() == nullptr; }));
  }

  /// Adds a file of these bytes, after which the kits of these serial numbers are listed.
  void TakeIn(const std::string& bytes, const Texts& serials) {
    WriteNative(Source(), bytes);
    ScriptedQuestions questions;
    Run([&](frmCalibrationMain& screen) {
      ExpectPicker(questions, Source());
      Add(screen);
      ExpectShown(screen, serials);
    });
  }

  static void Update(frmCalibrationMain& screen, const QString& serial) {
    ClickEntry(screen, "LstInstrment", GetParam());
    ClickEntry(screen, "lstSerialNumber", serial);
    Click(screen, "btnEdit");
  }

  /// Opens the calibration data menu, in which `act` is all that happens.
  void Run(const std::function<void(frmCalibrationMain& screen)>& act) {
    frmCalibrationMain menu(nullptr);
    user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
      act(screen);
      user_.At<frmCalibrationMain>([](frmCalibrationMain& same) { Click(same, "btnReturn"); });
    });
    menu.ShowModally();
  }

  static std::string SelectedIn(QWidget& screen, const QString& list) {
    const QList<QListWidgetItem*> selected = Find<QListWidget>(screen, list).selectedItems();
    return selected.isEmpty() ? std::string() : selected.first()->text().toStdString();
  }

  static std::string EditCaption(QWidget& screen) {
    return Find<QPushButton>(screen, "btnEdit").text().toStdString();
  }

  static Texts Sorted(Texts texts) {
    std::sort(texts.begin(), texts.end());
    return texts;
  }

  /// The kit is selected, and these are its serial numbers.
  static void ExpectShown(frmCalibrationMain& screen, const Texts& serials) {
    EXPECT_EQ(SelectedIn(screen, "LstInstrment"), Code());
    EXPECT_EQ(Sorted(EntriesOf(screen, "lstSerialNumber")), serials);
    EXPECT_EQ(EditCaption(screen), "Update");
  }

  TestTree tree_;
  DesktopTestPlatform platform_;
  User user_;
};

// Add.

TEST_P(TestKitWorkflow, AddMakesTheFolderCopiesTheFileAndShowsIt) {
  WriteNative(Source(), KitFile("3318A12345"));
  WatchedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    EXPECT_TRUE(EntriesOf(screen, "LstInstrment").empty());
    EXPECT_EQ(EditCaption(screen), "Edit");
    ExpectPicker(questions, Source());
    questions.whilePicking = [&] {
      EXPECT_EQ(tree_.Names(gCalibrationDir), Texts{Code()}) << "made before the question";
      EXPECT_TRUE(EntriesOf(screen, "LstInstrment").empty()) << "an empty folder is not listed";
    };
    Add(screen);
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{Code()});
    ExpectShown(screen, {"3318A12345"});
  });
  ASSERT_EQ(questions.initialDirs.size(), 1U);
  EXPECT_EQ(questions.initialDirs.front().toStdString(), Desktop().string());
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
  EXPECT_TRUE(tree_.Read(FileNamed("SN12345")) == KitFile("3318A12345"));
  EXPECT_TRUE(ReadNative(Source()) == KitFile("3318A12345"));
}

TEST_P(TestKitWorkflow, AddRefreshesTheModelListBeforeItAsks) {
  WatchedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    tree_.Write(R"(c:\calfactors\PX12A\SN1)", "QZ PX12A\r\n1\r\n05MAR2001\r\n");
    EXPECT_TRUE(EntriesOf(screen, "LstInstrment").empty());
    ExpectPicker(questions, "");
    questions.whilePicking = [&] { EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"}); };
    Add(screen);
  });
}

TEST_P(TestKitWorkflow, AddOfAnotherFileAddsItToTheFolder) {
  tree_.Write(FileNamed("SN11111"), KitFile("3318A11111"));
  TakeIn(KitFile("ABC"), {"3318A11111", "ABC"});
  EXPECT_EQ(tree_.Names(Folder()), (Texts{"SN11111", "SNABC"}));
  EXPECT_TRUE(tree_.Read(FileNamed("SN11111")) == KitFile("3318A11111"));
  EXPECT_TRUE(tree_.Read(FileNamed("SNABC")) == KitFile("ABC"));
}

TEST_P(TestKitWorkflow, AddReplacesTheFileOfTheSameKitWithoutAQuestion) {
  tree_.Write(FileNamed("SN12345"), "QZ RT410A\r\n3318A12345\r\n01JAN1999\r\nearlier\r\n");
  TakeIn(KitFile("3318A12345"), {"3318A12345"});
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
  EXPECT_TRUE(tree_.Read(FileNamed("SN12345")) == KitFile("3318A12345"));
}

TEST_P(TestKitWorkflow, AFileWithHeaderLinesIsTakenInAsWell) {
  const std::string file =
      Lines({"#MODEL_NO : " + Code(), "#SER_NO   : 3318A54321", "#CAL_DATE : 20010305",
             "#CAL_NO   : C-0042", "#DUE_DATE : 20020305", "#COMMENT  : factory", "!End"});
  TakeIn(file, {"3318A54321"});
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN54321"});
  EXPECT_EQ(tree_.Read(FileNamed("SN54321")), file);
}

TEST_P(TestKitWorkflow, ACommaInTheFirstLineNamesTheFile) {
  const std::string file = "RT410A, 3318A54321\r\n05MAR2001\r\n";
  TakeIn(file, {"3318A54321"});
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN54321"});
  EXPECT_EQ(tree_.Read(FileNamed("SN54321")), file);
}

TEST_P(TestKitWorkflow, AddThatIsCancelledCopiesNothingButRefreshes) {
  WriteNative(Source(), KitFile("3318A12345"));
  ScriptedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    tree_.Write(R"(c:\calfactors\PX12A\SN1)", "QZ PX12A\r\n1\r\n05MAR2001\r\n");
    EXPECT_TRUE(EntriesOf(screen, "LstInstrment").empty());
    ExpectPicker(questions, "");
    Add(screen);
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"}) << "an empty folder is not listed";
    EXPECT_EQ(SelectedIn(screen, "LstInstrment"), "");
    EXPECT_TRUE(EntriesOf(screen, "lstSerialNumber").empty());
    EXPECT_EQ(EditCaption(screen), "Edit");
  });
  EXPECT_EQ(Sorted(tree_.Names(gCalibrationDir)), (Texts{"PX12A", Code()}));
  EXPECT_EQ(tree_.Names(Folder()), Texts{});
}

TEST_P(TestKitWorkflow, AddThatIsCancelledSelectsAKitThatIsListed) {
  tree_.Write(FileNamed("SN11111"), KitFile("3318A11111"));
  tree_.Write(R"(c:\calfactors\PX12A\SN1)", "QZ PX12A\r\n1\r\n05MAR2001\r\n");
  ScriptedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(EditCaption(screen), "Edit");
    ExpectPicker(questions, "");
    Add(screen);
    ExpectShown(screen, {"3318A11111"});
  });
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN11111"});
}

TEST_P(TestKitWorkflow, AddBelowARootThatDoesNotExistIsAnError) {
  gCalibrationDir = R"(c:\nowhere)";
  ScriptedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    questions.ExpectError({Folder()});
    Add(screen);
  });
  EXPECT_FALSE(tree_.Exists(gCalibrationDir));
}

// Update.

TEST_P(TestKitWorkflow, UpdateReplacesTheSelectedFile) {
  tree_.Write(FileNamed("SN12345"), "QZ RT410A\r\n3318A12345\r\n01JAN1999\r\nearlier\r\n");
  WriteNative(Source(), KitFile("3318A12345"));
  ScriptedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    ExpectPicker(questions, Source());
    Update(screen, "3318A12345");
    ExpectShown(screen, {"3318A12345"});
  });
  ASSERT_EQ(questions.initialDirs.size(), 1U);
  EXPECT_EQ(questions.initialDirs.front().toStdString(), Desktop().string());
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
  EXPECT_TRUE(tree_.Read(FileNamed("SN12345")) == KitFile("3318A12345"));
}

TEST_P(TestKitWorkflow, UpdateWithAnotherSerialNumberAddsASecondFile) {
  const std::string earlier = "QZ RT410A\r\n3318A12345\r\n01JAN1999\r\nearlier\r\n";
  tree_.Write(FileNamed("SN12345"), earlier);
  WriteNative(Source(), KitFile("3318A67890"));
  ScriptedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    ExpectPicker(questions, Source());
    Update(screen, "3318A12345");
    ExpectShown(screen, {"3318A12345", "3318A67890"});
  });
  EXPECT_EQ(tree_.Names(Folder()), (Texts{"SN12345", "SN67890"}));
  EXPECT_EQ(tree_.Read(FileNamed("SN12345")), earlier);
  EXPECT_TRUE(tree_.Read(FileNamed("SN67890")) == KitFile("3318A67890"));
}

TEST_P(TestKitWorkflow, UpdateThatIsCancelledCopiesNothingButRefreshes) {
  tree_.Write(FileNamed("SN12345"), KitFile("3318A12345"));
  WatchedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    ExpectPicker(questions, "");
    questions.whilePicking = [&] { tree_.Write(FileNamed("SN00007"), KitFile("00007")); };
    Update(screen, "3318A12345");
    ExpectShown(screen, {"00007", "3318A12345"});
  });
  EXPECT_EQ(tree_.Names(Folder()), (Texts{"SN00007", "SN12345"}));
  EXPECT_TRUE(tree_.Read(FileNamed("SN12345")) == KitFile("3318A12345"));
}

TEST_P(TestKitWorkflow, UpdateKeepsToAFolderInLowerCase) {
  std::string folder = gCalibrationDir + "\\" + Code();
  std::transform(folder.begin(), folder.end(), folder.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
  tree_.Write(folder + "\\SN12345", KitFile("3318A12345"));
  WriteNative(Source(), KitFile("3318A67890"));
  ScriptedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    ExpectPicker(questions, Source());
    Update(screen, "3318A12345");
    ExpectShown(screen, {"3318A12345", "3318A67890"});
  });
  EXPECT_EQ(tree_.Names(gCalibrationDir).size(), 1U);
  EXPECT_EQ(tree_.Names(folder), (Texts{"SN12345", "SN67890"}));
}

TEST_P(TestKitWorkflow, UpdateWithoutASelectedFileAsksForNone) {
  tree_.Write(FileNamed("SN12345"), KitFile("3318A12345"));
  ScriptedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    ClickEntry(screen, "LstInstrment", GetParam());
    questions.ExpectNotice("No calibration data is selected.");
    Click(screen, "btnEdit");
  });
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
}

// Files that cannot be taken in.

TEST_P(TestKitWorkflow, EveryBadSourceGetsItsMessageAndChangesNothing) {
  const std::string earlier = KitFile("3318A12345");
  tree_.Write(FileNamed("SN12345"), earlier);
  const fs::path folder = Desktop() / "folder.dat";
  const fs::path pipe = Desktop() / "pipe.dat";
  const fs::path missing = Desktop() / "missing.dat";
  const fs::path itself = tree_.Native(FileNamed("SN12345"));
  fs::create_directory(folder);
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  struct Bad {
    fs::path source;
    std::string bytes;  ///< of Source()
    Texts message;
  };
  const std::string path = Source().string();
  const std::vector<Bad> table = {
      {Source(), "", {"ends too early", path}},
      {Source(), "3318A12345\r\n", {"ends too early", path}},
      {Source(), "QZ RT410A\r\n\r\n05MAR2001\r\n", {"serial number", path}},
      {Source(), "QZ RT410A\r\n3318A1/345\r\n", {"\"/\"", path}},
      {Source(), "QZ RT410A\r\n3318A1.345\r\n", {"\".\"", path}},
      {Source(), "QZ RT410A\r\n3318A1:345\r\n", {"\":\"", path}},
      {folder, "", {"folder", folder.string()}},
      {pipe, "", {"pipe", pipe.string()}},
      {missing, "", {"does not exist", missing.string()}},
      {itself, "", {"itself", FileNamed("SN12345")}}};
  ScriptedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    for (const Bad& bad : table) {
      SCOPED_TRACE(bad.message.front());
      WriteNative(Source(), bad.bytes);
      ExpectPicker(questions, bad.source);
      questions.ExpectError(bad.message);
      Add(screen);
      ExpectPicker(questions, bad.source);
      questions.ExpectError(bad.message);
      Update(screen, "3318A12345");
      ExpectShown(screen, {"3318A12345"});
      EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
      EXPECT_TRUE(tree_.Read(FileNamed("SN12345")) == earlier);
      EXPECT_EQ(ReadNative(Source()), bad.bytes);
    }
  });
  EXPECT_EQ(tree_.Names(gCalibrationDir), Texts{Code()});
}

TEST_P(TestKitWorkflow, WhatMayNotBeReadOrWrittenIsTold) {
  tree_.Write(FileNamed("SN12345"), KitFile("3318A12345"));
  const fs::path source = tree_.Root() / "kit.dat";
  WriteNative(source, KitFile("3318A67890"));
  const OrdinaryUser user(tree_.Root());
  ScriptedQuestions questions;
  Run([&](frmCalibrationMain& screen) {
    fs::permissions(source, fs::perms(0));
    ExpectPicker(questions, source);
    questions.ExpectError({"read", "permission", source.string()});
    Update(screen, "3318A12345");
    fs::permissions(source, fs::perms(0600));
    {
      const LockedFolder locked(tree_.Native(Folder()));
      ExpectPicker(questions, source);
      questions.ExpectError({"save", "permission", FileNamed("SN67890")});
      Update(screen, "3318A12345");
    }
    ExpectShown(screen, {"3318A12345"});
  });
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
  EXPECT_TRUE(tree_.Read(FileNamed("SN12345")) == KitFile("3318A12345"));
  EXPECT_TRUE(ReadNative(source) == KitFile("3318A67890"));
}

// The button's caption.

TEST_P(TestKitWorkflow, TheButtonReadsUpdateWhileAKitIsSelected) {
  tree_.Write(FileNamed("SN12345"), KitFile("3318A12345"));
  tree_.Write(R"(c:\calfactors\PX12A\SN1)", "QZ PX12A\r\n1\r\n05MAR2001\r\n");
  Run([&](frmCalibrationMain& screen) {
    EXPECT_EQ(EditCaption(screen), "Edit");
    ClickEntry(screen, "LstInstrment", GetParam());
    EXPECT_EQ(EditCaption(screen), "Update");
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(EditCaption(screen), "Edit");
    ClickEntry(screen, "LstInstrment", GetParam());
    EXPECT_EQ(EditCaption(screen), "Update");
    ClickEntry(screen, "lstSerialNumber", "3318A12345");
    EXPECT_EQ(EditCaption(screen), "Update");
  });
}

// The real file dialog and the real message.

TEST_P(TestKitWorkflow, TheFileDialogTakesInAFile) {
  WriteNative(Source(), KitFile("3318A12345"));
  WriteNative(Desktop() / "plain", KitFile("3318A67890"));
  const auto expectStart = [](QFileDialog& dialog) {
    Await(dialog);
    EXPECT_EQ(dialog.windowTitle(), PickerTitle());
    EXPECT_EQ(dialog.directory().absolutePath().toStdString(), Desktop().string());
    EXPECT_EQ(Find<QComboBox>(dialog, "fileTypeCombo").currentText(), "Calibration Data(*.dat)");
  };
  Run([&](frmCalibrationMain& screen) {
    Add(screen, [&] {
      user_.At<QFileDialog>([&](QFileDialog& dialog) {
        expectStart(dialog);
        Press(Qt::Key_Escape);
      });
    });
    EXPECT_EQ(tree_.Names(Folder()), Texts{});

    // A file of the first kind.
    Add(screen, [&] {
      user_.At<QFileDialog>([&](QFileDialog& dialog) {
        expectStart(dialog);
        auto& kinds = Find<QComboBox>(dialog, "fileTypeCombo");
        ASSERT_EQ(kinds.count(), 2);
        EXPECT_EQ(kinds.itemText(1), "All files(*.*)");
        ExpectFiles(dialog, {"kit.dat"});
        PickFile(dialog, "kit.dat");
      });
    });
    ExpectShown(screen, {"3318A12345"});

    // One of any kind.
    user_.At<QFileDialog>([&](QFileDialog& dialog) {
      expectStart(dialog);
      Choose(dialog, "fileTypeCombo", "All files(*.*)");
      ExpectFiles(dialog, {"kit.dat", "plain"});
      PickFile(dialog, "plain");
    });
    Update(screen, "3318A12345");
    ExpectShown(screen, {"3318A12345", "3318A67890"});
  });
  EXPECT_EQ(tree_.Names(Folder()), (Texts{"SN12345", "SN67890"}));
  EXPECT_TRUE(tree_.Read(FileNamed("SN12345")) == KitFile("3318A12345"));
  EXPECT_TRUE(tree_.Read(FileNamed("SN67890")) == KitFile("3318A67890"));
}

TEST_P(TestKitWorkflow, ARefusalIsShownInARealBox) {
  WriteNative(Source(), "QZ RT410A\r\n\r\n05MAR2001\r\n");
  Run([&](frmCalibrationMain& screen) {
    Add(screen, [&] {
      user_.At<QFileDialog>([](QFileDialog& dialog) {
        Await(dialog);
        PickFile(dialog, "kit.dat");
      });
      user_.At<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Morrand Tarvell");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_TRUE(box.text().contains("serial number")) << box.text().toStdString();
        EXPECT_TRUE(box.text().contains(QString::fromStdString(Source().string())))
            << box.text().toStdString();
        QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
      });
    });
  });
  EXPECT_EQ(tree_.Names(Folder()), Texts{});
}

INSTANTIATE_TEST_SUITE_P(Kits, TestKitWorkflow, testing::Values("RT410A", "RT410B"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace tarvell
