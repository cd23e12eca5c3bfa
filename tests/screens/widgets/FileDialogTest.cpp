// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDir>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/platform/Error.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/cFileDialog.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// Picks in the user's place, and keeps what was asked.
class PickingQuestions : public Questions {
 public:
  PickingQuestions() { SetCurrentQuestions(this); }
  PickingQuestions(const PickingQuestions&) = delete;
  PickingQuestions& operator=(const PickingQuestions&) = delete;
  ~PickingQuestions() override { SetCurrentQuestions(nullptr); }

  QMessageBox::StandardButton Ask(QWidget* /*owner*/, const Question& question) override {
    told.push_back(question);
    return QMessageBox::Ok;
  }
  QString PickFile(QWidget* owner, FileRequest& request) override {
    requests.push_back(request);
    owners.push_back(owner);
    if (fails) {
      throw Error(ErrorKind::NotFound, "The disk is gone.");
    }
    request.filterIndex = pickedFilter;
    return picked;
  }

  QString picked;
  int pickedFilter = 0;
  bool fails = false;
  std::vector<FileRequest> requests;
  std::vector<QWidget*> owners;
  std::vector<Question> told;
};

TEST(FileDialog, StartsWithNoNameAndTheFirstFilter) {
  const cFileDialog dialog;
  EXPECT_EQ(dialog.FileName(), "");
  EXPECT_EQ(dialog.FilterIndex(), 1);
  EXPECT_EQ(dialog.InitialDir(), "");
  EXPECT_EQ(dialog.Flags(), 0);
  EXPECT_EQ(dialog.hInstance(), 0);
  EXPECT_EQ(dialog.OwnerWnd(), nullptr);
}

TEST(FileDialog, KeepsItsProperties) {
  QWidget owner;
  cFileDialog dialog;
  dialog.SetFilterIndex(2);
  dialog.SetInitialDir("/some/where");
  dialog.SetFlags(4);
  dialog.SetHInstance(77);
  dialog.SetOwnerWnd(&owner);
  EXPECT_EQ(dialog.FilterIndex(), 2);
  EXPECT_EQ(dialog.InitialDir(), "/some/where");
  EXPECT_EQ(dialog.Flags(), 4);
  EXPECT_EQ(dialog.hInstance(), 77);
  EXPECT_EQ(dialog.OwnerWnd(), &owner);
}

TEST(FileDialog, AFileNameEndsAtItsNulAndLosesTheBlanksAroundIt) {
  cFileDialog dialog;
  const std::vector<std::pair<QString, const char*>> names = {
      {"a.dat", "a.dat"},
      {"  a b.dat  ", "a b.dat"},
      {QString("a.dat") + QChar(u'\0') + "rest", "a.dat"},
      {QString("a.dat") + QString(512, ' '), "a.dat"},
      {QString("  a  ") + QChar(u'\0'), "a"},
      {QString(256, ' ') + QChar(u'\0'), ""},
      {"\ta.dat\t", "\ta.dat\t"},
      {"", ""}};
  for (const auto& [value, name] : names) {
    dialog.SetFileName(value);
    EXPECT_EQ(dialog.FileName().toStdString(), name);
  }
}

TEST(FileDialog, AFilterIsStoredWithNuls) {
  cFileDialog dialog;
  dialog.SetFilter("Calibration Data(*.dat)|*.dat|All files(*.*)|*.*");
  const QChar nul(u'\0');
  EXPECT_EQ(dialog.Filter(), QString("Calibration Data(*.dat)") + nul + "*.dat" + nul +
                                 "All files(*.*)" + nul + "*.*" + nul);
  dialog.SetFilter("Text");
  EXPECT_EQ(dialog.Filter(), QString("Text") + nul);
}

TEST(FileDialog, AsksForAFileToOpen) {
  PickingQuestions questions;
  QWidget owner;
  questions.picked = "/tmp/kit.dat";
  questions.pickedFilter = 1;
  cFileDialog dialog;
  dialog.SetOwnerWnd(&owner);
  dialog.SetCaption("Choice of a file");
  dialog.SetInitialDir("/tmp");
  dialog.SetFileName("proposed.dat");
  dialog.SetFilter("Calibration Data(*.dat)|*.dat|All files(*.*)|*.*");
  EXPECT_TRUE(dialog.ShowOpen());
  EXPECT_EQ(dialog.FileName(), "/tmp/kit.dat");
  EXPECT_EQ(dialog.FilterIndex(), 2);
  ASSERT_EQ(questions.requests.size(), 1U);
  const FileRequest& request = questions.requests.front();
  EXPECT_EQ(request.purpose, FileRequest::Purpose::Open);
  EXPECT_EQ(request.title, "Choice of a file");
  EXPECT_EQ(request.initialDir, "/tmp");
  EXPECT_EQ(request.fileName, "proposed.dat");
  EXPECT_EQ(request.filterIndex, 0);
  EXPECT_EQ(request.filters,
            (QStringList{"Calibration Data(*.dat) (*.dat)", "All files(*.*) (*)"}));
  EXPECT_EQ(questions.owners.front(), &owner);
  EXPECT_TRUE(questions.told.empty());
}

TEST(FileDialog, AsksForAFileToSave) {
  PickingQuestions questions;
  questions.picked = "/tmp/new.dat";
  questions.pickedFilter = 1;
  cFileDialog dialog;
  dialog.SetFilter("A|*.a|B|*.b");
  dialog.SetFilterIndex(2);
  EXPECT_TRUE(dialog.ShowSave());
  EXPECT_EQ(dialog.FileName(), "/tmp/new.dat");
  EXPECT_EQ(dialog.FilterIndex(), 2);
  ASSERT_EQ(questions.requests.size(), 1U);
  EXPECT_EQ(questions.requests.front().purpose, FileRequest::Purpose::Save);
  EXPECT_EQ(questions.requests.front().filterIndex, 1);
  EXPECT_EQ(questions.requests.front().fileName, "");
}

TEST(FileDialog, AFilterWithoutABarIsOneEntryWithoutAPattern) {
  PickingQuestions questions;
  cFileDialog dialog;
  dialog.SetFilter("Everything");
  EXPECT_FALSE(dialog.ShowOpen());
  EXPECT_EQ(questions.requests.front().filters, QStringList{"Everything (*)"});
}

TEST(FileDialog, ACancelledDialogLeavesTheFileName) {
  PickingQuestions questions;
  questions.picked = "";
  cFileDialog dialog;
  dialog.SetFileName("kept.dat");
  EXPECT_FALSE(dialog.ShowOpen());
  EXPECT_EQ(dialog.FileName(), "kept.dat");
  EXPECT_FALSE(dialog.ShowSave());
  EXPECT_EQ(dialog.FileName(), "kept.dat");
  EXPECT_TRUE(questions.told.empty());
}

TEST(FileDialog, AnErrorIsToldWithItsNumberUnderTheNameOfTheFunction) {
  PickingQuestions questions;
  questions.fails = true;
  cFileDialog dialog;
  dialog.SetFileName("kept.dat");
  EXPECT_FALSE(dialog.ShowOpen());
  EXPECT_FALSE(dialog.ShowSave());
  ASSERT_EQ(questions.told.size(), 2U);
  EXPECT_EQ(questions.told.at(0).title, "GetOpenFileName");
  EXPECT_EQ(questions.told.at(1).title, "GetSaveFileName");
  for (const Question& question : questions.told) {
    EXPECT_EQ(question.icon, QMessageBox::Warning);
    EXPECT_EQ(question.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    const QStringList lines = question.text.split('\n');
    ASSERT_EQ(lines.size(), 2);
    bool isNumber = false;
    EXPECT_GE(lines.at(0).trimmed().toInt(&isNumber), 0);
    EXPECT_TRUE(isNumber);
    EXPECT_EQ(lines.at(1), "The disk is gone.");
  }
  EXPECT_EQ(dialog.FileName(), "kept.dat");
}

TEST(FileDialog, StartsInASpecialFolder) {
  cFileDialog dialog;
  EXPECT_TRUE(dialog.SetInitialDirToSpecialFolder(0));
  EXPECT_EQ(dialog.InitialDir(), QDir::homePath() + "/Desktop");
  EXPECT_TRUE(dialog.SetInitialDirToSpecialFolder(5));
  EXPECT_EQ(dialog.InitialDir(), QDir::homePath() + "/Documents");
}

TEST(FileDialog, AnUnknownSpecialFolderChangesNothing) {
  cFileDialog dialog;
  dialog.SetInitialDir("/before");
  for (const int folder : {-1, 1, 4, 6, 99999}) {
    EXPECT_FALSE(dialog.SetInitialDirToSpecialFolder(folder)) << folder;
    EXPECT_EQ(dialog.InitialDir(), "/before");
  }
}

}  // namespace
}  // namespace tarvell
