// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
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

}  // namespace
}  // namespace tarvell::test
