// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "calscreens/frmCalibrationMain.h"
#include "screens/StationFixture.h"
#include "screens/TabEditorFixture.h"
#include "support/DesktopTestPlatform.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

namespace fs = std::filesystem;

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr const char* kFolder = "c:\\calfactors\\PX12A";
constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

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

/// A file that a save replaces can be brought back from the trash; nobody is asked.
class WayBack : public SensorStage {
 protected:
  WayBack() { fs::remove_all(Trash()); }
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

// ---- Of a set.

class WayBackOfASet : public TabEditorFixture {
 protected:
  static constexpr const char* kSetPath = R"(c:\calfactors\RT520A\SN05678)";

  WayBackOfASet() {
    fs::remove_all(Trash());
    WriteTemplates();
    tree_.Write(kSetPath, Bytes("factory"));
  }

  static std::string Bytes(const std::string& comment) {
    return CapacitorFile({.model = "RT520A", .serial = "1234A05678", .comment = comment},
                         SetAMembersSaved());
  }

  /// Saves the set with the comment "mine"; `meanwhile` happens while it is edited.
  void Correct(const std::function<void()>& meanwhile) {
    EditFile("RT520A", kSetPath, [&](frmCalDataTabInput& editor) {
      meanwhile();
      Fill(editor, "txtComment", "mine");
      Click(editor, "btnOk");
      EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(tree_.Read(kSetPath), Bytes("mine"));
    EXPECT_EQ(tree_.Names(R"(c:\calfactors\RT520A)"), Texts{"SN05678"});
  }

  DesktopTestPlatform platform_{tree_.ProgramFolder()};
};

TEST_F(WayBackOfASet, FromACorrectionThatSomebodyElseMadeMeanwhile) {
  Correct([&] { tree_.Write(kSetPath, Bytes("others")); });
  EXPECT_EQ(Trashed(), Texts{Bytes("others")});
}

TEST_F(WayBackOfASet, IsNotNeededFromTheUsersOwnCorrection) {
  Correct([] {});
  EXPECT_EQ(Trashed(), Texts{});
}

TEST_F(WayBackOfASet, FromNewDataOverAFileOfAnotherSerialNumber) {
  EditNew("RT520A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "9999B05678");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(kSetPath), CapacitorFile({"RT520A", "9999B05678"}, SetAMembersSaved()));
  EXPECT_EQ(tree_.Names(R"(c:\calfactors\RT520A)"), Texts{"SN05678"});
  EXPECT_EQ(Trashed(), Texts{Bytes("factory")});
}

// ---- Of a station's instrument.

class WayBackOfAnInstrument : public StationStage {
 protected:
  WayBackOfAnInstrument() {
    fs::remove_all(Trash());
    WriteInstrument({.calData = ""});
  }

  /// Saves the instrument with the comment "mine"; `meanwhile` happens while it is edited.
  void Correct(const std::function<void()>& meanwhile) {
    AtStation([&](frmStationModelList& screen) {
      ClickEntry(screen, "LstInstrment", "PX12A");
      meanwhile();
      Fill(screen, "txtData_11", "mine");
      Click(screen, "btnSave");
      EXPECT_FALSE(CanSave(screen));
      LeaveUnsaved(screen);
    });
    EXPECT_EQ(ReadInstrument("PX12A"), (InstrumentFile{.comment = "mine", .calData = ""}.Bytes()));
    EXPECT_EQ(tree_.Names(kStation), (Texts{"INDEX", "PX12A"}));
  }
};

TEST_F(WayBackOfAnInstrument, FromACorrectionThatSomebodyElseMadeMeanwhile) {
  const InstrumentFile others{.comment = "others"};
  Correct([&] { WriteInstrument(others); });
  EXPECT_EQ(Trashed(), Texts{others.Bytes()});
}

TEST_F(WayBackOfAnInstrument, IsNotNeededFromTheUsersOwnCorrection) {
  Correct([] {});
  EXPECT_EQ(Trashed(), Texts{});
}

// It is never read back into its box.
TEST_F(WayBackOfAnInstrument, FromASaveWithoutTheCalDataOfTheFile) {
  WriteInstrument({.calData = "kept elsewhere"});
  Correct([] {});
  EXPECT_EQ(Trashed(), Texts{InstrumentFile{.calData = "kept elsewhere"}.Bytes()});
}

// ---- Of a kit's file.

class WayBackOfAKit : public StationStage {
 protected:
  static constexpr const char* kKitPath = R"(c:\calfactors\RT410A\SN12345)";

  WayBackOfAKit() { fs::remove_all(Trash()); }

  static std::string Kit(const std::string& serial, const std::string& data) {
    return "QZ RT410A\r\n" + serial + "\r\n05MAR2001\r\n" + data + "\r\n";
  }

  /// Takes in a finished file with these bytes, by Update on the kit in the list.
  void TakeIn(const std::string& bytes, const QString& listed) {
    const std::string source = (tree_.Root() / "kit.dat").string();
    WriteNative(source, bytes);
    frmCalibrationMain menu(nullptr);
    bool shown = false;
    user_.At<frmCalibrationMain>([&](frmCalibrationMain& at) {
      shown = true;
      ClickEntry(at, "LstInstrment", "RT410A");
      ClickEntry(at, "lstSerialNumber", listed);
      questions_.ExpectFilePicker("Choice RT410A Calibration Data File from Folder",
                                  {"Calibration Data(*.dat) (*.dat)", "All files(*.*) (*)"},
                                  QString::fromStdString(source));
      Click(at, "btnEdit");
      Click(at, "btnReturn");
    });
    menu.ShowModally();
    EXPECT_TRUE(shown);
    EXPECT_EQ(tree_.Read(kKitPath), bytes);
    EXPECT_EQ(tree_.Names(R"(c:\calfactors\RT410A)"), Texts{"SN12345"});
  }
};

TEST_F(WayBackOfAKit, FromANewFileOfTheSameKit) {
  tree_.Write(kKitPath, Kit("3318A12345", "earlier"));
  TakeIn(Kit("3318A12345", "finished"), "3318A12345");
  EXPECT_EQ(Trashed(), Texts{Kit("3318A12345", "earlier")});
}

TEST_F(WayBackOfAKit, FromAnotherKitOfTheSameName) {
  tree_.Write(kKitPath, Kit("9999B12345", "earlier"));
  TakeIn(Kit("3318A12345", "finished"), "9999B12345");
  EXPECT_EQ(Trashed(), Texts{Kit("9999B12345", "earlier")});
}

TEST_F(WayBackOfAKit, IsNotNeededFromTheSameBytes) {
  tree_.Write(kKitPath, Kit("3318A12345", "finished"));
  TakeIn(Kit("3318A12345", "finished"), "3318A12345");
  EXPECT_EQ(Trashed(), Texts{});
}

}  // namespace
}  // namespace tarvell
