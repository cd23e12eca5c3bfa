// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <QHeaderView>
#include <QScrollBar>

#include <filesystem>

#include "core/history/History.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/ChangeTable.h"
#include "screens/caldata/CurvePane.h"
#include "screens/widgets/NoticeLine.h"
#include "support/SensorStage.h"

/// The earlier calibration beside the table and on the curve.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class ChangeOfASensor : public SensorStage {
 protected:
  ChangeOfASensor() {
    tree_.MakeFolders(R"(c:\calfactors\PX12A)");
    Keep("20010305", "C-1", {{"50.00", "100.0"}, {"100.00", "98.1"}, {"500.00", "90.0"}});
    Keep("20020305", "C-2", {{"50.00", "100.0"}, {"100.00", "98.5"}, {"500.00", "95.0"}});
    Keep("20030305", "C-3", {{"50.00", "100.0"}, {"100.00", "98.4"}, {"300.00", "97.0"}});
    gCalFiles[0].FilePath = kPath;
  }

  /// Saves a calibration over the one before it.
  static void Keep(const char* date, const char* number, const SensorRows& rows) {
    SaveWithHistory(kPath, SensorFile{.calDate = date, .calNo = number, .rows = rows}.Bytes());
  }

  void Show(const Act& act) {
    SensorStage::Show(0, "PX12A", [&](frmCalDataInput& editor) {
      ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
      Settle();
      act(editor);
    });
  }

  static std::string NoticesOf(QWidget& editor) {
    Settle();
    return Find<NoticeLine>(editor, "notices").Notices().join("|").toStdString();
  }

  static std::vector<std::string> Changes(QWidget& editor, int column) {
    Settle();
    return ColumnOf(Find<ChangeTable>(editor, "changes"), column);
  }

  static constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";
};

using Texts = std::vector<std::string>;

TEST_F(ChangeOfASensor, LeavesRoomForThePointsAndTheValuesInANarrowWindow) {
  Show([](frmCalDataInput& editor) {
    const auto& grid = Find<CalGrid>(editor, "Grid");
    for (const int width : {editor.minimumWidth(), 700, 800, 700}) {
      editor.resize(width, editor.height());
      Settle();
      const QRect room = grid.viewport()->rect();
      for (const int column : {0, 1}) {
        const QRect cell = grid.visualRect(grid.model()->index(0, column));
        EXPECT_TRUE(room.contains(cell)) << width << ", column " << column;
        const QString text = grid.model()->index(0, column).data().toString();
        EXPECT_GT(cell.width(), grid.fontMetrics().horizontalAdvance(text)) << width;
      }
    }
  });
}

TEST_F(ChangeOfASensor, IsShownInEachRowAndFollowsWhatIsTyped) {
  const std::string before = tree_.Read(kPath);
  Show([](frmCalDataInput& editor) {
    EXPECT_EQ(ComboEntries(editor, "cmbEarlier"),
              (Texts{"5 MAR 2003, C-3", "5 MAR 2002, C-2", "5 MAR 2001, C-1"}));
    EXPECT_EQ(ComboText(editor, "cmbEarlier"), "5 MAR 2002, C-2");
    EXPECT_EQ(Changes(editor, 0), (Texts{"100.0", "98.5", ""}));
    EXPECT_EQ(Changes(editor, 1), (Texts{"0.0", "-0.1", ""}));
    const std::string notices = NoticesOf(editor);
    EXPECT_NE(notices.find("300 MHz"), std::string::npos) << notices;
    EXPECT_NE(notices.find("500 MHz"), std::string::npos) << notices;
    auto& grid = Find<CalGrid>(editor, "Grid");
    ClickCell(grid, 2, 1);
    Type("99");
    EXPECT_EQ(Changes(editor, 1)[1], "+0.5") << "while it is typed";
    Press(Qt::Key_Escape);
    EXPECT_EQ(Changes(editor, 1)[1], "-0.1");
    // Rows are side by side.
    auto& changes = Find<ChangeTable>(editor, "changes");
    for (int row = 0; row < 3; ++row) {
      const QRect mine = grid.visualRect(grid.model()->index(row, 1));
      const QRect its = changes.visualRect(changes.model()->index(row, 0));
      EXPECT_EQ(changes.viewport()->mapToGlobal(its.topLeft()).y(),
                grid.viewport()->mapToGlobal(mine.topLeft()).y());
      EXPECT_EQ(its.height(), mine.height());
    }
    // Nothing of it goes to the clipboard or into the file.
    ClickCell(grid, 1, 0);
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().count('\t'), 4);
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(kPath), before);
}

TEST_F(ChangeOfASensor, IsThatToTheCalibrationWhichTheUserChooses) {
  Show([](frmCalDataInput& editor) {
    Choose(editor, "cmbEarlier", "5 MAR 2001, C-1");
    EXPECT_EQ(Changes(editor, 0), (Texts{"100.0", "98.1", ""}));
    EXPECT_EQ(Changes(editor, 1), (Texts{"0.0", "+0.3", ""}));
  });
}

TEST_F(ChangeOfASensor, FollowsACalibrationDateThatIsTyped) {
  std::filesystem::remove_all(tree_.Native(R"(c:\calfactors\history.tarvell)"));
  Show([](frmCalDataInput& editor) {
    EXPECT_FALSE(Find<QComboBox>(editor, "cmbEarlier").isVisible()) << "never calibrated again";
    Fill(editor, "txtCalYear", "2004");
    EXPECT_EQ(Changes(editor, 0), (Texts{"100.0", "98.4", "97.0"}));
    EXPECT_EQ(ComboText(editor, "cmbEarlier"), "5 MAR 2003, C-3");
    ClickCell(Find<CalGrid>(editor, "Grid"), 2, 1);
    Type("9.8");
    Press(Qt::Key_Return);
    EXPECT_EQ(Changes(editor, 1)[1], "-88.6");
    const std::string notices = NoticesOf(editor);
    EXPECT_NE(notices.find("a change of -88.6"), std::string::npos) << notices;
    Fill(editor, "txtCalYear", "2003");
    EXPECT_FALSE(Find<ChangeTable>(editor, "changes").isVisible());
  });
}

TEST_F(ChangeOfASensor, IsNotMadeWithoutTheHistoryButThatIsSaid) {
  std::filesystem::remove_all(tree_.Native(R"(c:\calfactors\history.tarvell)"));
  tree_.Write(R"(c:\calfactors\history.tarvell)", "a file");
  Show([](frmCalDataInput& editor) {
    const std::string notices = NoticesOf(editor);
    EXPECT_NE(notices.find("the history cannot be read. In the place of its folder"),
              std::string::npos)
        << notices;
  });
}

TEST_F(ChangeOfASensor, IsOnTheCurveToo) {
  Show([](frmCalDataInput& editor) {
    auto& pane = Find<CurvePane>(editor, "curve");
    if (!pane.isVisible()) {
      Press(Qt::Key_F8);
    }
    Settle();
    EXPECT_EQ(Find<QLabel>(editor, "lblSummary").text(),
              "3 points, 97.0 to 100.0 %, largest change -0.1 at 100 MHz.");
    Press(Qt::Key_V, Qt::AltModifier);
    Press(Qt::Key_Home);
    Press(Qt::Key_Right);
    EXPECT_EQ(pane.accessibleName(), "Curve, 100 MHz: 98.4 % (earlier 98.5 %)");
    Press(Qt::Key_Right);
    EXPECT_EQ(pane.accessibleName(), "Curve, 300 MHz: 97.0 %");
  });
}

TEST_F(ChangeOfASensor, ScrollsWithTheTable) {
  SensorRows rows = ManyRows(51);
  Keep("20040305", "C-4", rows);
  Keep("20050305", "C-5", rows);
  Show([](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    auto& changes = Find<ChangeTable>(editor, "changes");
    for (const int row : {51, 1, 30}) {
      grid.scrollTo(grid.model()->index(row - 1, 1));
      EXPECT_EQ(changes.rowViewportPosition(row - 1), grid.rowViewportPosition(row - 1)) << row;
    }
    changes.verticalScrollBar()->setValue(5);
    EXPECT_EQ(changes.rowViewportPosition(9), grid.rowViewportPosition(9));
  });
}

TEST_F(ChangeOfASensor, IsHiddenWithoutAnEarlierCalibration) {
  ShowFile({.serial = "3318A00001", .rows = {{"50.00", "100.0"}}}, [](frmCalDataInput& editor) {
    EXPECT_EQ(editor.findChild<ChangeTable*>(), nullptr);
    EXPECT_FALSE(Find<QComboBox>(editor, "cmbEarlier").isVisible());
    EXPECT_EQ(NoticesOf(editor), "");
  });
}

TEST_F(ChangeOfASensor, ReportsAnEarlierCalibrationThatCannotBeRead) {
  Show([this](frmCalDataInput& editor) {
    const auto kept = tree_.Native(R"(c:\calfactors\history.tarvell)");
    std::filesystem::remove_all(kept);
    Choose(editor, "cmbEarlier", "5 MAR 2001, C-1");
    EXPECT_EQ(Changes(editor, 0), (Texts{"", "", ""}));
    EXPECT_NE(NoticesOf(editor).find("The chosen earlier calibration cannot be read"),
              std::string::npos);
  });
}

}  // namespace
}  // namespace tarvell
