// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>

#include "core/history/History.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/TabEditorFixture.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "support/ErrorOf.h"
#include "support/SensorStage.h"

/// Slips of typing are marked in the editor, and nothing is refused.
namespace tarvell::test {
namespace {

class SlipMarks : public SensorStage {
 protected:
  /// What a user sees of a cell: its text, "!" if it is marked, and what the pointer shows.
  static std::string Shown(CalGrid& grid, int row) {
    const QModelIndex cell = grid.model()->index(row - 1, 1);
    const auto font = cell.data(Qt::FontRole).value<QFont>();
    const bool isMarked =
        font.underline() && font.bold() && !cell.data(Qt::DecorationRole).isNull();
    return FromQt(cell.data(Qt::AccessibleTextRole).toString()) + (isMarked ? "! " : " ") +
           FromQt(cell.data(Qt::ToolTipRole).toString());
  }

  static void TypeFactor(CalGrid& grid, int row, const QString& text) {
    ClickCell(grid, row, 1);
    Type(text);
    Press(Qt::Key_Return);
    Settle();
  }

  static QStringList NoticesOf(QWidget& editor) {
    return Find<NoticeLine>(editor, "notices").Notices();
  }

  SensorFile file_ = {.rows = {{"1", "99.0"},
                               {"2", "98.1"},
                               {"50.00", "97.4"},
                               {"100", "96.2"},
                               {"200", "95.1"},
                               {"300", "94.0"}}};
};

TEST_F(SlipMarks, AValueThatStandsOutIsMarkedUntilItIsUndoneAndSavedAsTyped) {
  const char* why =
      "The value stands out from its neighbours on the curve, which suggest about 96.";
  ShowFile(file_, [&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    Settle();
    EXPECT_EQ(Shown(grid, 4), "96.2 ");
    TypeFactor(grid, 4, "69.2");
    EXPECT_TRUE(Shown(grid, 4).starts_with("69.2 (possible slip)! " + std::string(why)))
        << Shown(grid, 4);
    EXPECT_EQ(Shown(grid, 3), "97.4 ");
    EXPECT_EQ(NoticesOf(editor).filter("1 value may be a slip of typing. 100 MHz").size(), 1);
    Press(Qt::Key_Z, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(Shown(grid, 4), "96.2 ");
    EXPECT_EQ(NoticesOf(editor), QStringList());
    TypeFactor(grid, 4, "69.2");
    Click(editor, "btnOk");
  });
  file_.rows[3].second = "69.2";
  EXPECT_EQ(tree_.Read(gCalFiles[0].FilePath), file_.Bytes());
}

TEST_F(SlipMarks, ANewCalibrationIsComparedWithTheFile) {
  ShowFile(file_, [](frmCalDataInput&) {});
  user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    TypeFactor(grid, 2, "99.0");
    EXPECT_EQ(Shown(grid, 2), "99.0 ");
    TypeFactor(grid, 2, "99.1");
    EXPECT_EQ(Shown(grid, 2),
              "99.1 (possible slip)! The earlier calibration has 98.1, a change of +1.0; the limit "
              "is 0.98.");
    tree_.Write(gCalibrationDir + "\\limits.tarvell", "[PX12A]\r\nper cent = 2\r\n");
    editor.reject();
  });
  editor_.SetupDat(0, "PX12A", CalEditor::Begin::NewCalibration);
  // The line that cannot be used is reported, and the others are not needed.
  ShowFile(file_, [&](frmCalDataInput& editor) {
    Settle();
    EXPECT_EQ(NoticesOf(editor).filter("Line 2 of limits.tarvell was not used").size(), 1);
  });
}

TEST_F(SlipMarks, ARowThatWasLeftOutIsReported) {
  ShowFile(file_, [](frmCalDataInput&) {});
  user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    const std::vector<const char*> typed = {"99.0", "97.3", "96.2", "95.0", "94.0"};
    for (std::size_t row = 0; row < typed.size(); ++row) {
      TypeFactor(grid, static_cast<int>(row) + 1, typed[row]);
    }
    EXPECT_EQ(NoticesOf(editor).filter("from 50 MHz on, all values fit the earlier").size(), 1)
        << NoticesOf(editor).join('\n').toStdString();
    // Removing rows moves what is judged, and the marks with it.
    DeletePoint(editor, "200MHz", QMessageBox::Yes);
    Settle();
    EXPECT_EQ(grid.model()->rowCount(), 5);
    editor.reject();
  });
  editor_.SetupDat(0, "PX12A", CalEditor::Begin::NewCalibration);
}

TEST_F(SlipMarks, FollowTheEarlierCalibrationThatIsChosen) {
  tree_.MakeFolders(R"(c:\calfactors\PX12A)");
  gCalFiles[0].FilePath = R"(c:\calfactors\PX12A\SN12345)";
  for (const auto& [year, factor] :
       {std::pair("2001", "98.0"), {"2002", "90.0"}, {"2003", "98.1"}}) {
    file_.calDate = year + std::string("0305");
    file_.rows[1].second = factor;
    SaveWithHistory(gCalFiles[0].FilePath, file_.Bytes());
  }
  Show(0, "PX12A", [](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    Settle();
    EXPECT_EQ(Shown(grid, 2),
              "98.1 (possible slip)! The earlier calibration has 90.0, a change of +8.1; the limit "
              "is 0.9.");
    Choose(editor, "cmbEarlier", "5 MAR 2001, C-0042");
    Settle();
    EXPECT_EQ(Shown(grid, 2), "98.1 ");
  });
}

/// The slips of a set are marked at the tabs of its pages.
class SlipMarksOfPages : public TabEditorFixture {
 protected:
  SlipMarksOfPages() {
    WriteTemplates();
    tree_.MakeFolders(R"(c:\calfactors\RT520A)");
    SaveWithHistory(kPath, CapacitorFile({"RT520A", "3318A12345"}, SetAMembers()));
  }

  /// What the tab says, "!" if it is marked.
  static std::string TabOf(QWidget& editor, int tab) {
    Settle();
    const QTabBar& tabs = TabsOf(editor);
    const bool isMarked = !tabs.tabIcon(tab - 1).isNull();
    EXPECT_EQ(isMarked, !tabs.accessibleTabName(tab - 1).isEmpty());
    return (isMarked ? "!" : "") + tabs.tabToolTip(tab - 1).toStdString();
  }

  static constexpr const char* kPath = R"(c:\calfactors\RT520A\SN12345)";
};

TEST_F(SlipMarksOfPages, AreCountedAndShownAtTheTabs) {
  std::vector<Member> members = SetAMembers();
  members[2].rows[0][1] = "100.9001pF";
  SetHeader header = {"RT520A", "3318A12345"};
  header.calDate = "20010131";
  SaveWithHistory(kPath, CapacitorFile(header, members));
  EditFile("RT520A", kPath, [](frmCalDataTabInput& editor) {
    EXPECT_EQ(TabOf(editor, 3), "!1 value may be a slip of typing.");
    EXPECT_EQ(TabOf(editor, 1), "");
    ASSERT_EQ(NoticesOf(editor).size(), 1U);
    EXPECT_TRUE(Contains(NoticesOf(editor)[0],
                         "1 value on the page RT523A may be a slip of typing. On the page RT523A, "
                         "1 kHz, Capacitance: The earlier calibration has 100.0001pF"))
        << NoticesOf(editor)[0];
    TypeCell(editor, 1, 1, "2");
    EXPECT_EQ(TabOf(editor, 1), "!1 value may be a slip of typing.");
    EXPECT_TRUE(Contains(NoticesOf(editor)[0],
                         "2 values on the pages RT521A and RT523A may be slips of typing."))
        << NoticesOf(editor)[0];
    ClickTab(editor, 3);
    TypeCell(editor, 1, 1, "100.0002");
    EXPECT_EQ(TabOf(editor, 3), "");
    ClickTab(editor, 1);
    Press(Qt::Key_Z, Qt::ControlModifier);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(TabOf(editor, 3), "!1 value may be a slip of typing.");
    EXPECT_EQ(TabOf(editor, 1), "");
  });
}

}  // namespace
}  // namespace tarvell::test
