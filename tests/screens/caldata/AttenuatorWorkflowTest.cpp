// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "screens/caldata/AttenuatorFixture.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class AttenuatorWorkflow : public AttenuatorStage {};

TEST_P(AttenuatorWorkflow, AnAttenuatorIsAddedCorrectedAndSavedByteForByte) {
  WriteTemplate({"*  0  :   5.00E07   :   0.0000", "* 10  :   5.00E07   :  10.0000",
                 "* 10  :   1.00E08   :  10.0000"});
  const Texts header = {"#SER_NO   : 3318A12345", "#CAL_DATE : 20010305", "#CAL_NO   : C-0042",
                        "#DUE_DATE : 20020425", "#COMMENT  : factory"};
  const std::string path = FileNamed("SN12345");
  const auto addData = [&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    EXPECT_EQ(editor.windowTitle().toStdString(), "Editing calibraition data (" + Code() + " - )");
    EXPECT_EQ(TextOf(editor, "txtModel"), Code());
    ASSERT_EQ(grid.model()->columnCount(), 3);
    EXPECT_EQ(CellOf(grid, 0, 0), "Setting [dB]");
    EXPECT_EQ(CellOf(grid, 0, 1), GetParam().frequencyCaption);
    EXPECT_EQ(CellOf(grid, 0, 2), "Cal Data [dB]");
    ExpectRows(grid, {"0", "10", "10"}, {"5.00E07", "5.00E07", "1.00E08"},
               {"0.0000", "10.0000", "10.0000"});

    Fill(editor, "txtSerial", "3318A12345");
    EXPECT_EQ(editor.windowTitle().toStdString(),
              "Editing calibraition data (" + Code() + " - 3318A12345)");
    Fill(editor, "txtCalNo", "C-0042");
    Fill(editor, "txtCalYear", "2001");
    Choose(editor, "cmbCalMonth", "FEB");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "28") << "the template's 31 is no day of February";
    Choose(editor, "cmbCalMonth", "MAR");
    Fill(editor, "txtCalDay", "5");
    Fill(editor, "txtDueYear", "2002");
    Choose(editor, "cmbDueMonth", "APR");
    Fill(editor, "txtDueDay", "25");
    Fill(editor, "txtComment", "factory");

    // Typing over a value; the Down key stores it and goes on.
    ClickCell(grid, 1, 2);
    Type("0.05124");
    Press(Qt::Key_Down);
    EXPECT_EQ(CellOf(grid, 1, 2), "0.0512");
    EXPECT_EQ(grid.CurrentRow(), 2);
    Type("10.01235");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 2, 2), "10.0124");

    ChoosePoint(editor, "20", "1.00E09");
    ChoosePoint(editor, "10", "6.9925E09");
    ChoosePoint(editor, "120", "1.00E05");
    TypePoint(editor, "5", "1234567");
    TypePoint(editor, "10", "1E6");
    ExpectRows(
        grid, {"0", "5", "10", "10", "10", "10", "20", "120"},
        {"5.00E07", "1.2346E06", "1.00E06", "5.00E07", "1.00E08", "6.9925E09", "1.00E09",
         "1.00E05"},
        {"0.0512", "5.0000", "10.0000", "10.0124", "10.0000", "10.0000", "20.0000", "120.0000"});

    ClickCell(grid, 4, 2);
    Delete(editor, "10dB, 50MHz", QMessageBox::No);
    EXPECT_EQ(grid.Data().RowCount(), 1 + 8);
    ClickCell(grid, 7, 2);
    Delete(editor, "20dB, 1GHz", QMessageBox::Yes);
    ClickCell(grid, 5, 0);
    Delete(editor, "10dB, 100MHz", QMessageBox::Yes);
    EXPECT_EQ(ColumnOf(grid, 1),
              (Texts{"5.00E07", "1.2346E06", "1.00E06", "5.00E07", "6.9925E09", "1.00E05"}));
    Click(editor, "btnOk");
  };
  const auto correctData = [&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    EXPECT_EQ(editor.windowTitle().toStdString(),
              "Editing calibraition data (" + Code() + " - 3318A12345)");
    EXPECT_TRUE(Find<QLineEdit>(editor, "txtSerial").isReadOnly());
    EXPECT_EQ(TextOf(editor, "txtSerial"), "3318A12345");
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-0042");
    EXPECT_EQ(TextOf(editor, "txtCalYear"), "2001");
    EXPECT_EQ(ComboText(editor, "cmbCalMonth"), "MAR");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "5");
    EXPECT_EQ(TextOf(editor, "txtDueYear"), "2002");
    EXPECT_EQ(ComboText(editor, "cmbDueMonth"), "APR");
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "25");
    EXPECT_EQ(TextOf(editor, "txtComment"), "factory");
    ExpectRows(grid, {"0", "5", "10", "10", "10", "120"},
               {"5.00E07", "1.2346E06", "1.00E06", "5.00E07", "6.9925E09", "1.00E05"},
               {"0.0512", "5.0000", "10.0000", "10.0124", "10.0000", "120.0000"});
    ClickCell(grid, 5, 2);
    Type("10.5");
    Click(editor, "btnOk");  // with the edit still open
  };
  Run({[&](frmCalibrationMain& screen) { Add(screen, Code(), addData); },
       [&](frmCalibrationMain& screen) {
         EXPECT_EQ(tree_.Read(path),
                   FileOf(header,
                          {"*  0  :   5.00E07   :   0.0512", "*  5  :  1.2346E06   :   5.0000",
                           "* 10  :   1.00E06   :  10.0000", "* 10  :   5.00E07   :  10.0124",
                           "* 10  :  6.9925E09   :  10.0000", "*120  :   1.00E05   :  120.0000"}));
         EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{Code()});
         EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), Texts{"3318A12345"});
         Edit(screen, "3318A12345", correctData);
       },
       [&](frmCalibrationMain& /*screen*/) {
         EXPECT_EQ(tree_.Read(path),
                   FileOf(header,
                          {"*  0  :   5.00E07   :   0.0512", "*  5  :  1.2346E06   :   5.0000",
                           "* 10  :   1.00E06   :  10.0000", "* 10  :   5.00E07   :  10.0124",
                           "* 10  :  6.9925E09   :  10.5000", "*120  :   1.00E05   :  120.0000"}));
         EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
       }});
}

TEST_P(AttenuatorWorkflow, TheShippedTemplateIsShownAndSavedWhole) {
  tree_.InstallTemplate(Code());
  const std::string shipped = ReadNative(tree_.ProgramFolder() / ("Temp" + Code()));
  std::string expected = shipped;
  const std::string serialLine = "#SER_NO   : ";
  expected.insert(expected.find(serialLine) + serialLine.size(), "12");
  Run({[&](frmCalibrationMain& screen) {
         Add(screen, Code(), [](frmCalDataInput& editor) {
           Fill(editor, "txtSerial", "12");
           Click(editor, "btnOk");
         });
       },
       [&](frmCalibrationMain& screen) {
         EXPECT_EQ(tree_.Read(FileNamed("SN12")), expected);
         Edit(screen, "12", [](frmCalDataInput& editor) { Click(editor, "btnOk"); });
       }});
  EXPECT_EQ(tree_.Read(FileNamed("SN12")), expected);
}

// Cells.

TEST_P(AttenuatorWorkflow, OnlyTheValueCanBeTyped) {
  WriteTemplate({"* 10  :   5.00E07   :  10.0000"});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    const auto& box = Find<QLineEdit>(editor, "txtCell");
    for (const int column : {0, 1}) {
      ClickCell(grid, 1, column);
      Type("7");
      EXPECT_FALSE(box.isVisible()) << column;
      Press(Qt::Key_Return);
      EXPECT_FALSE(box.isVisible()) << column;
      DoubleClickCell(grid, 1, column);
      EXPECT_FALSE(box.isVisible()) << column;
    }
    ExpectRows(grid, {"10"}, {"5.00E07"}, {"10.0000"});
    ClickCell(grid, 1, 2);
    Type("7");
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(TextOf(editor, "txtCell"), "7");
    Press(Qt::Key_Return);
    EXPECT_FALSE(box.isVisible());
    ExpectRows(grid, {"10"}, {"5.00E07"}, {"7.0000"});
    Click(editor, "btnCancel");
  });
  EXPECT_EQ(tree_.Names(Folder()), Texts{});
}

TEST_P(AttenuatorWorkflow, AValueThatIsOpenedAndLeftStaysAsItIs) {
  WriteTemplate({"* 10  :   5.00E07   :  10.01235", "* 20  :   5.00E07   :  20.0000"});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    const auto& box = Find<QLineEdit>(editor, "txtCell");
    const auto open = [&](const std::function<void()>& how) {
      ClickCell(grid, 1, 2);
      how();
      EXPECT_TRUE(box.isVisible());
      EXPECT_EQ(TextOf(editor, "txtCell"), "") << "a value is typed anew";
    };
    const auto byEnter = [] { Press(Qt::Key_Return); };
    const auto byDoubleClick = [&] { DoubleClickCell(grid, 1, 2); };
    for (const auto& how : std::vector<std::function<void()>>{byEnter, byDoubleClick}) {
      for (const Qt::Key leave :
           {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Down, Qt::Key_Up, Qt::Key_Tab}) {
        open(how);
        Press(leave);
        EXPECT_FALSE(box.isVisible()) << leave;
        EXPECT_EQ(ColumnOf(grid, 2), (Texts{"10.01235", "20.0000"})) << leave;
      }
      open(how);
      ClickCell(grid, 2, 2);
      EXPECT_EQ(ColumnOf(grid, 2), (Texts{"10.01235", "20.0000"}));
    }
    ClickCell(grid, 1, 2);
    Type("99");
    Press(Qt::Key_Escape);
    EXPECT_EQ(ColumnOf(grid, 2), (Texts{"10.01235", "20.0000"}));
    open(byEnter);
    Fill(editor, "txtSerial", "12");  // leaves the open box
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(FileNamed("SN12")),
            PlainFile("12", {"* 10  :   5.00E07   :  10.01235", "* 20  :   5.00E07   :  20.0000"}));
}

TEST_P(AttenuatorWorkflow, CancelLeavesTheFileAsItIs) {
  const std::string file = PlainFile("12", {"* 10  :   5.00E07   :  10.0000"});
  tree_.Write(FileNamed("SN12"), file);
  Run({[&](frmCalibrationMain& screen) {
    Edit(screen, "12", [&](frmCalDataInput& editor) {
      auto& grid = Find<CalGrid>(editor, "Grid");
      ClickCell(grid, 1, 2);
      Type("9");
      Press(Qt::Key_Return);
      ChoosePoint(editor, "20", "1.00E09");
      EXPECT_EQ(ColumnOf(grid, 2), (Texts{"9.0000", "20.0000"}));
      Click(editor, "btnCancel");
    });
  }});
  EXPECT_EQ(tree_.Read(FileNamed("SN12")), file);
}

TEST_P(AttenuatorWorkflow, WideTextsAreSavedBackWhole) {
  const std::string file = PlainFile(
      "12", {"* 10  :  6.9925E09   :  10.01234", "*1000  :  123456789012   :  -1000.00001"});
  tree_.Write(FileNamed("SN12"), file);
  Run({[&](frmCalibrationMain& screen) {
    Edit(screen, "12", [&](frmCalDataInput& editor) {
      ExpectRows(Find<CalGrid>(editor, "Grid"), {"10", "1000"}, {"6.9925E09", "123456789012"},
                 {"10.01234", "-1000.00001"});
      Click(editor, "btnOk");
    });
  }});
  EXPECT_EQ(tree_.Read(FileNamed("SN12")), file);
}

// The largest table.

TEST_P(AttenuatorWorkflow, ATableOf51RowsIsShownSavedAndReadBackWhole) {
  WriteTemplate(ManyLines(51));
  const auto refusePoint = [&](frmCalDataInput& editor, CalGrid& grid) {
    ExpectMessage({"51"});
    Click(editor, "btnAddPoint");
    EXPECT_EQ(grid.Data().RowCount(), 1 + 51);
  };
  Run({[&](frmCalibrationMain& screen) {
         Add(screen, Code(), [&](frmCalDataInput& editor) {
           auto& grid = Find<CalGrid>(editor, "Grid");
           ASSERT_EQ(grid.Data().RowCount(), 1 + 51);
           EXPECT_EQ(CellOf(grid, 51, 0), "51");
           EXPECT_EQ(CellOf(grid, 51, 2), "51.0000");
           refusePoint(editor, grid);
           Fill(editor, "txtSerial", "12");
           Click(editor, "btnOk");
         });
       },
       [&](frmCalibrationMain& screen) {
         EXPECT_EQ(tree_.Read(FileNamed("SN12")), PlainFile("12", ManyLines(51)));
         Edit(screen, "12", [&](frmCalDataInput& editor) {
           auto& grid = Find<CalGrid>(editor, "Grid");
           ASSERT_EQ(grid.Data().RowCount(), 1 + 51);
           refusePoint(editor, grid);
           // With one row less there is room again.
           ClickCell(grid, 51, 2);
           Delete(editor, "51dB, 50MHz", QMessageBox::Yes);
           ChoosePoint(editor, "120", "1.00E09");
           EXPECT_EQ(CellOf(grid, 51, 0), "120");
           Click(editor, "btnOk");
         });
       }});
  Texts lines = ManyLines(50);
  lines.emplace_back("*120  :   1.00E09   :  120.0000");
  EXPECT_EQ(tree_.Read(FileNamed("SN12")), PlainFile("12", lines));
}

TEST_P(AttenuatorWorkflow, AFileOf52RowsIsRefusedWithItsNameAndLine) {
  const std::string file = PlainFile("12", ManyLines(52));
  tree_.Write(FileNamed("SN12"), file);
  const std::size_t line = 6 + GetParam().commentLines.size() + 52;
  Run({[&](frmCalibrationMain& screen) {
    ClickEntry(screen, "LstInstrment", QString::fromStdString(Code()));
    ClickEntry(screen, "lstSerialNumber", "12");
    ExpectMessage({"51", FileNamed("SN12"), "line " + std::to_string(line)});
    Click(screen, "btnEdit");
  }});
  EXPECT_EQ(tree_.Read(FileNamed("SN12")), file);
}

// One editor for both families.

TEST_P(AttenuatorWorkflow, ASensorAndAnAttenuatorTakeTurnsInTheEditor) {
  WriteTemplate({"* 10  :   5.00E07   :  10.0000"});
  WriteNative(tree_.ProgramFolder() / "TempPX12A",
              Lines({"#MODEL_NO : PX12A", "#SER_NO   : ", "*50.00:100.0", "!End"}));
  const auto showAttenuator = [&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    ASSERT_EQ(grid.model()->columnCount(), 3);
    EXPECT_EQ(CellOf(grid, 0, 0), "Setting [dB]");
    EXPECT_EQ(CellOf(grid, 0, 1), GetParam().frequencyCaption);
    EXPECT_EQ(CellOf(grid, 0, 2), "Cal Data [dB]");
    ExpectRows(grid, {"10"}, {"5.00E07"}, {"10.0000"});
    for (int column = 0; column < 3; ++column) {
      EXPECT_GT(grid.columnWidth(column), 0) << column;
    }
    ClickCell(grid, 1, 1);
    Type("7");
    EXPECT_FALSE(Find<QLineEdit>(editor, "txtCell").isVisible());
    ChoosePoint(editor, "0", "1.00E09");
    EXPECT_EQ(ColumnOf(grid, 0), (Texts{"0", "10"}));
    Click(editor, "btnCancel");
  };
  const auto showSensor = [&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    ASSERT_EQ(grid.model()->columnCount(), 2);
    EXPECT_EQ(CellOf(grid, 0, 0), "Frequency  [MHz]");
    EXPECT_EQ(CellOf(grid, 0, 1), "Calibration factor[%]");
    EXPECT_EQ(ColumnOf(grid, 0), Texts{"50.00"});
    ClickCell(grid, 1, 1);
    Type("97.26");
    Press(Qt::Key_Return);
    EXPECT_EQ(ColumnOf(grid, 1), Texts{"97.3"});
    user_.At<frmInput>([](frmInput& /*dialog*/) {
      Type("100");
      Press(Qt::Key_Return);
    });
    Click(editor, "btnAddPoint");
    EXPECT_EQ(ColumnOf(grid, 0), (Texts{"50.00", "100.00"}));
    Click(editor, "btnCancel");
  };
  Run({[&](frmCalibrationMain& screen) { Add(screen, Code(), showAttenuator); },
       [&](frmCalibrationMain& screen) { Add(screen, "PX12A", showSensor); },
       [&](frmCalibrationMain& screen) { Add(screen, Code(), showAttenuator); }});
}

INSTANTIATE_TEST_SUITE_P(Models, AttenuatorWorkflow, testing::ValuesIn(Attenuators()),
                         [](const auto& test) { return std::string(test.param.code); });

}  // namespace
}  // namespace tarvell
