// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QHeaderView>

#include "screens/caldata/CalGrid.h"
#include "screens/main/frmMain.h"
#include "screens/widgets/QtPath.h"
#include "screens/widgets/UserSettings.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// Settings in a folder of the test's own.
class UserSettings : public SensorStage {
 protected:
  UserSettings() { KeepUserSettingsIn(PathForQt(file_)); }
  ~UserSettings() override { KeepUserSettingsIn(""); }
  UserSettings(const UserSettings&) = delete;
  UserSettings& operator=(const UserSettings&) = delete;

  const std::filesystem::path file_ = tree_.Root() / "config" / "settings.ini";
};

TEST_F(UserSettings, AreReadAgainAndWithoutAFileNothingIsRemembered) {
  Remember("a/text", QString::fromUtf8("\u00DC; \"x\" = 1, 2"));
  Remember("a/bytes", QByteArray("\0\xFF\r\n", 4));
  Remember("a/numbers", std::vector<int>{120, -3});
  EXPECT_EQ(RememberedText("a/text"), QString::fromUtf8("\u00DC; \"x\" = 1, 2"));
  EXPECT_EQ(RememberedBytes("a/bytes"), QByteArray("\0\xFF\r\n", 4));
  EXPECT_EQ(RememberedNumbers("a/numbers"), (std::vector<int>{120, -3}));
  EXPECT_EQ(RememberedNumbers("a/text"), std::vector<int>());
  EXPECT_EQ(RememberedBytes("a/numbers"), QByteArray());
  KeepUserSettingsIn("");
  Remember("a/text", QString("other"));
  EXPECT_EQ(RememberedText("a/text"), "");
}

TEST_F(UserSettings, ThatAreDamagedAreIgnoredAndReplaced) {
  Remember("a/text", QString("text"));
  const std::string whole = ReadNative(file_);
  std::string zeros(whole.size(), '\0');
  for (const std::string& damaged :
       {std::string("[a\ntext=1"), std::string("\xFF\xFE no settings"), zeros,
        std::string("[a]\ntext=@Variant(\\0\\0\\0\\x7f\\xff\\xff\\xff\\xff)\nbytes=@@@\n"
                    "numbers=1 x\n[windows]\nfrmCalDataInput=AdnQ\n[columns]\nPX12A=0 -1\n"
                    "[last]\nchoice=other\n"),
        whole.substr(0, whole.size() / 2)}) {
    WriteNative(file_, damaged);
    EXPECT_EQ(RememberedText("a/text"), "") << damaged;
    EXPECT_EQ(RememberedBytes("a/bytes"), "") << damaged;
    EXPECT_EQ(RememberedNumbers("a/numbers"), std::vector<int>()) << damaged;
    ShowFile({.rows = ManyRows(2)}, [](frmCalDataInput& editor) {
      EXPECT_GT(editor.width(), 100);
      EXPECT_GT(Find<CalGrid>(editor, "Grid").columnWidth(0), 10);
    });
    Remember("a/text", QString("again"));
    EXPECT_EQ(RememberedText("a/text"), "again") << damaged;
  }
  // A folder in the way cannot be written to.
  std::filesystem::remove(file_);
  std::filesystem::create_directory(file_);
  Remember("a/text", QString("lost"));
  EXPECT_EQ(RememberedText("a/text"), "");
}

TEST_F(UserSettings, HoldTheSizeOfAScreenAndTheWidthsThatTheUserGaveItsColumns) {
  QSize size;
  double share = 0;
  ShowFile({.rows = ManyRows(2)}, [&](frmCalDataInput& editor) {
    editor.resize(editor.size() + QSize(60, 40));
    size = editor.size();
    Settle();
    auto& grid = Find<CalGrid>(editor, "Grid");
    QHeaderView& header = *grid.horizontalHeader();
    const QPoint edge(header.sectionViewportPosition(1) - 1, header.height() / 2);
    QWidget* view = header.viewport();
    QTest::mousePress(view, Qt::LeftButton, {}, edge);
    QTest::mouseMove(view, edge + QPoint(50, 0));
    QTest::mouseRelease(view, Qt::LeftButton, {}, edge + QPoint(50, 0));
    share = grid.columnWidth(0) / (1.0 * grid.columnWidth(0) + grid.columnWidth(1));
    EXPECT_GT(share, 0.52);
  });
  frmCalDataInput other(nullptr);
  user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
    EXPECT_EQ(editor.size(), size);
    const auto& grid = Find<CalGrid>(editor, "Grid");
    const double now = grid.columnWidth(0) / (1.0 * grid.columnWidth(0) + grid.columnWidth(1));
    EXPECT_NEAR(now, share, 0.01);
    editor.reject();
  });
  other.SetupDat(0, "PX12A");
}

// Nothing is selected after a data set was added.
TEST_F(UserSettings, HoldTheDataSetThatWasSavedLast) {
  tree_.InstallTemplate("PX12A");
  tree_.Write(R"(c:\calfactors\PX12A\SN1)", SensorFile{.serial = "1", .rows = {}}.Bytes());
  ChooseAdd("PX12A");
  user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
    Fill(editor, "txtSerial", "2");
    Click(editor, "btnOk");
  });
  RunMenu();
  AtMenu([this](frmCalibrationMain& at) {
    Press(Qt::Key_Return);
    questions_.ExpectNotice("No calibration data is selected.");
    Click(at, "btnEdit");
    EXPECT_EQ(questions_.details.back().toStdString(),
              "2 has an outline, but is not selected. To select it, press the space key in the "
              "list.");
    Find<QListWidget>(at, "lstSerialNumber").setFocus();
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      EXPECT_EQ(TextOf(editor, "txtSerial"), "2");
      editor.reject();
    });
    Press(Qt::Key_Return);
  });
  RunMenu();
}

TEST_F(UserSettings, HoldTheLastChoiceOfTheMainMenu) {
  tree_.MakeFolders(R"(c:\calfactors)");
  tree_.MakeFolders(R"(c:\stations)");
  for (const bool isFirst : {true, false}) {
    frmMain menu;
    menu.Form_Load(0);
    EXPECT_EQ(Find<QRadioButton>(menu, "Option2").isChecked(), !isFirst);
    EXPECT_FALSE(Find<QRadioButton>(menu, "Option1").isChecked());
    Fill(menu, "txtCalibrationDir", R"(c:\calfactors)");
    Fill(menu, "txtStationDir", R"(c:\stations)");
    if (isFirst) {
      Click(menu, "Option2");
      AtMenu([](frmCalibrationMain& at) { Click(at, "btnReturn"); });
      Click(menu, "btnStart");
    }
  }
}

}  // namespace
}  // namespace tarvell
