// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDir>

#include "core/platform/Error.h"
#include "core/platform/SystemName.h"
#include "screens/widgets/QtPath.h"
#include "screens/widgets/Questions.h"
#include "screens/widgets/cFileDialog.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// Answers the pickers and records the requests and messages.
class PickingQuestions : public Questions {
 public:
  PickingQuestions() { SetCurrentQuestions(this); }
  PickingQuestions(const PickingQuestions&) = delete;
  PickingQuestions& operator=(const PickingQuestions&) = delete;
  ~PickingQuestions() override { SetCurrentQuestions(nullptr); }

  QMessageBox::StandardButton Ask(QWidget* /*owner*/, const Question& question) override {
    shown.push_back(question);
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
  std::vector<Question> shown;
};

TEST(FileDialog, AFileNameEndsAtItsNulAndLosesTheBlanksAroundIt) {
  cFileDialog dialog;
  for (const auto& [value, name] : std::vector<std::pair<QString, const char*>>{
           {"  a b.dat  ", "a b.dat"},
           {QString("a.dat") + QChar(u'\0') + "rest", "a.dat"},
           {QString(256, ' ') + QChar(u'\0'), ""},
           {"\ta.dat\t", "\ta.dat\t"}}) {
    dialog.SetFileName(value);
    EXPECT_EQ(dialog.FileName().toStdString(), name);
  }
}

TEST(FileDialog, ThePathOfAFileKeepsCharactersThatAreInNoCodePage) {
  const std::string text = "/tmp/\u0142 \u03A9 \u6E2C.csv";
  const QString path = QString::fromStdString(text);
  EXPECT_EQ(SystemPath(path), SystemName(text));
  EXPECT_EQ(PathForQt(SystemPath(path)), path);
}

TEST(FileDialog, AsksForAFileToOpenWithItsProperties) {
  PickingQuestions questions;
  QWidget owner;
  questions.picked = "/tmp/kit.dat";
  questions.pickedFilter = 1;
  cFileDialog dialog;
  EXPECT_EQ(dialog.FilterIndex(), 1);
  dialog.SetOwnerWnd(&owner);
  dialog.SetCaption("Choice of a file");
  dialog.SetInitialDir("/tmp");
  dialog.SetFileName("proposed.dat");
  dialog.SetFilter("Calibration Data(*.dat)|*.dat|All files(*.*)|*.*");
  const QChar nul(u'\0');
  EXPECT_EQ(dialog.Filter(), QString("Calibration Data(*.dat)") + nul + "*.dat" + nul +
                                 "All files(*.*)" + nul + "*.*" + nul);
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
  EXPECT_TRUE(questions.shown.empty());
}

TEST(FileDialog, AsksForAFileToSaveAndKeepsItsNameWhenCancelledOrAfterAnError) {
  PickingQuestions questions;
  questions.pickedFilter = 1;
  cFileDialog dialog;
  dialog.SetFilter("Everything");  // without a pattern
  dialog.SetFilterIndex(2);
  dialog.SetFileName("kept.dat");
  EXPECT_FALSE(dialog.ShowSave());
  EXPECT_EQ(questions.requests.front().purpose, FileRequest::Purpose::Save);
  EXPECT_EQ(questions.requests.front().filterIndex, 1);
  EXPECT_EQ(questions.requests.front().filters, QStringList{"Everything (*)"});
  questions.fails = true;
  EXPECT_FALSE(dialog.ShowOpen());
  EXPECT_FALSE(dialog.ShowSave());
  EXPECT_EQ(dialog.FileName(), "kept.dat");
  ASSERT_EQ(questions.shown.size(), 2U);
  EXPECT_EQ(questions.shown.at(0).title, "GetOpenFileName");
  EXPECT_EQ(questions.shown.at(1).title, "GetSaveFileName");
  EXPECT_EQ(questions.shown.at(0).icon, QMessageBox::Warning);
  EXPECT_EQ(questions.shown.at(0).text,
            QString::number(static_cast<int>(ErrorKind::NotFound)) + "\nThe disk is gone.");
  questions.fails = false;
  questions.picked = "/tmp/new.dat";
  EXPECT_TRUE(dialog.ShowSave());
  EXPECT_EQ(dialog.FileName(), "/tmp/new.dat");
}

TEST(FileDialog, StartsInASpecialFolder) {
  cFileDialog dialog;
  EXPECT_TRUE(dialog.SetInitialDirToSpecialFolder(0));
  EXPECT_EQ(dialog.InitialDir(), QDir::homePath() + "/Desktop");
  EXPECT_TRUE(dialog.SetInitialDirToSpecialFolder(5));
  EXPECT_EQ(dialog.InitialDir(), QDir::homePath() + "/Documents");
  for (const int unknown : {-1, 1, 4, 6}) {
    EXPECT_FALSE(dialog.SetInitialDirToSpecialFolder(unknown)) << unknown;
  }
  EXPECT_EQ(dialog.InitialDir(), QDir::homePath() + "/Documents");
}

}  // namespace
}  // namespace tarvell
