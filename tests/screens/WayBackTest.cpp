// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/SensorStage.h"

namespace tarvell {
namespace {

namespace fs = std::filesystem;

using namespace test;  // NOLINT(google-build-using-namespace)

using Texts = std::vector<std::string>;

constexpr const char* kFolder = "c:\\calfactors\\PX12A";
constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

/// A file that a save replaces can be brought back from the trash; nobody is asked.
class WayBack : public SensorStage {
 protected:
  WayBack() { fs::remove_all(Trash()); }

  static fs::path Trash() { return fs::path(qgetenv("XDG_DATA_HOME").toStdString()) / "Trash"; }

  /// Contents of the files in the trash.
  static Texts Trashed() {
    Texts contents;
    if (fs::exists(Trash() / "files")) {
      for (const auto& entry : fs::directory_iterator(Trash() / "files")) {
        contents.push_back(ReadNative(entry.path()));
      }
    }
    return contents;
  }
};

TEST_F(WayBack, FromNewDataOverAFileOfAnotherSerialNumber) {
  const SensorFile old{.serial = "OLD12345", .comment = "old", .rows = {{"50.00", "99.0"}}};
  tree_.Write(kPath, old.Bytes());
  SensorFile added{.comment = "new", .rows = {{"50.00", "100.0"}}};
  ShowNew(added, [&](frmCalDataInput& editor) {
    Fill(editor, "txtSerial", "NEW12345");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  added.serial = "NEW12345";
  EXPECT_EQ(tree_.Read(kPath), added.Bytes());
  EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12345"});
  EXPECT_EQ(Trashed(), Texts{old.Bytes()});
}

TEST_F(WayBack, FromACorrectionThatSomebodyElseMadeMeanwhile) {
  SensorFile file{.comment = "factory", .rows = {{"50.00", "100.0"}}};
  SensorFile others = file;
  others.comment = "others";
  ShowFile(file, [&](frmCalDataInput& editor) {
    tree_.Write(kPath, others.Bytes());
    Fill(editor, "txtComment", "mine");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  file.comment = "mine";
  EXPECT_EQ(tree_.Read(kPath), file.Bytes());
  EXPECT_EQ(Trashed(), Texts{others.Bytes()});
}

TEST_F(WayBack, FromTheFirstCorrectionOfAFileThatHoldsMoreThanTheScreen) {
  SensorFile file{.comment = "done in lab 7", .rows = {{"50.00", "100.0"}}};
  const std::string before = file.Bytes();
  ShowFile(file, [&](frmCalDataInput& editor) {
    Fill(editor, "txtCalNo", "C-2");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  file.calNo = "C-2";
  file.comment = "done";
  EXPECT_EQ(tree_.Read(kPath), file.Bytes());
  EXPECT_EQ(Trashed(), Texts{before});
}

TEST_F(WayBack, IsNotNeededFromTheUsersOwnCorrection) {
  SensorFile file{.comment = "factory", .rows = {{"50.00", "100.0"}}};
  ShowFile(file, [&](frmCalDataInput& editor) {
    Fill(editor, "txtComment", "mine");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  file.comment = "mine";
  EXPECT_EQ(tree_.Read(kPath), file.Bytes());
  EXPECT_EQ(Trashed(), Texts{});
}

}  // namespace
}  // namespace tarvell
