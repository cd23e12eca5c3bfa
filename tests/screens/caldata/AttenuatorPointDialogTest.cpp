// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QPushButton>
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

#include "screens/caldata/AttenuatorFixture.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class AttenuatorPointDialog : public AttenuatorStage {};

// The point dialog.

TEST_P(AttenuatorPointDialog, ThePointDialogOffersItsListsAndPresets) {
  WriteTemplate({});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    AskPoint(editor, [](frmInputPX60H& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Select calibration point...");
      EXPECT_EQ(Find<QLabel>(dialog, "lblCaption").text(),
                "Select calibration point and calibration frequency");
      EXPECT_NE(dialog.findChild<QLabel*>("Label1"), nullptr);
      EXPECT_EQ(Find<QPushButton>(dialog, "btnOk").text(), "Ok");
      EXPECT_EQ(Find<QPushButton>(dialog, "btnCancel").text(), "Cancel");
      EXPECT_EQ(ComboEntries(dialog, "cmbSetting"), (Texts{"0", "10", "20", "30", "40", "50", "60",
                                                           "70", "80", "90", "100", "110", "120"}));
      EXPECT_EQ(ComboEntries(dialog, "cmbFreq"),
                (Texts{"1.00E05", "3.00E05", "1.00E06", "1.00E07", "5.00E07", "1.00E08", "1.00E09",
                       "3.00E09", "6.9925E09"}));
      EXPECT_EQ(ComboText(dialog, "cmbSetting"), "0");
      EXPECT_EQ(ComboText(dialog, "cmbFreq"), GetParam().presetFrequency);
      Press(Qt::Key_Return);
    });
    EXPECT_EQ(DialogResult, "OK");
    ExpectRows(grid, {"0"}, {GetParam().presetFrequency}, {"0.0000"});
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorPointDialog, TypingReplacesThePresets) {
  WriteTemplate({});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    AskPoint(editor, [](frmInputPX60H&) {
      Type("5");
      Press(Qt::Key_Tab);
      Type("2E9");
      Press(Qt::Key_Return);
    });
    ExpectRows(grid, {"5"}, {"2.00E09"}, {"5.0000"});
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorPointDialog, TheListsGoOnFromThePresets) {
  WriteTemplate({});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    AskPoint(editor, [](frmInputPX60H& dialog) {
      Find<QComboBox>(dialog, "cmbFreq").setFocus();
      Press(Qt::Key_Down);
      EXPECT_EQ(ComboText(dialog, "cmbFreq"), GetParam().frequencyBelow);
      Find<QComboBox>(dialog, "cmbSetting").setFocus();
      Press(Qt::Key_Down);
      EXPECT_EQ(ComboText(dialog, "cmbSetting"), "10");
      Click(dialog, "btnOk");
    });
    ExpectRows(grid, {"10"}, {GetParam().frequencyBelow}, {"10.0000"});
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorPointDialog, EveryFrequencyOfTheListGoesToTheFileUnchanged) {
  WriteTemplate({});
  WithNewData([&](frmCalDataInput& editor, CalGrid& /*grid*/) {
    for (const char* frequency : {"6.9925E09", "1.00E05", "3.00E09", "3.00E05", "1.00E09",
                                  "1.00E06", "1.00E08", "1.00E07", "5.00E07"}) {
      ChoosePoint(editor, "0", frequency);
    }
    Fill(editor, "txtSerial", "12");
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(FileNamed("SN12")),
            PlainFile("12", {"*  0  :   1.00E05   :   0.0000", "*  0  :   3.00E05   :   0.0000",
                             "*  0  :   1.00E06   :   0.0000", "*  0  :   1.00E07   :   0.0000",
                             "*  0  :   5.00E07   :   0.0000", "*  0  :   1.00E08   :   0.0000",
                             "*  0  :   1.00E09   :   0.0000", "*  0  :   3.00E09   :   0.0000",
                             "*  0  :  6.9925E09   :   0.0000"}));
}

TEST_P(AttenuatorPointDialog, TypedTextIsTakenAsItIsTyped) {
  WriteTemplate({});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    // Each begins an entry of its list, which must not complete it.
    TypePoint(editor, "1", "3");
    TypePoint(editor, "12", "6.9925E0");
    TypePoint(editor, "5", "1");
    TypePoint(editor, "10.5", "5.00e07");
    ExpectRows(grid, {"1", "5", "11", "12"}, {"3.00E00", "1.00E00", "5.00E07", "6.9925E00"},
               {"1.0000", "5.0000", "11.0000", "12.0000"});
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorPointDialog, ThePointThatWasAddedIsTheCurrentOne) {
  WriteTemplate({"* 10  :   5.00E07   :  10.0000", "* 30  :   5.00E07   :  30.0000"});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    ChoosePoint(editor, "20", "1.00E09");
    EXPECT_EQ(grid.CurrentRow(), 2);
    EXPECT_EQ(grid.CurrentColumn(), 2);
    // As a window manager does when the dialog is gone.
    editor.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    Type("20.25");
    Press(Qt::Key_Return);
    ExpectRows(grid, {"10", "20", "30"}, {"5.00E07", "1.00E09", "5.00E07"},
               {"10.0000", "20.2500", "30.0000"});
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorPointDialog, ATakenPointIsRefused) {
  WriteTemplate({"* 10  :   5.00E07   :  10.0000", "* 20  :  6.9925E09   :  20.0000"});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    const auto expectUnchanged = [&] {
      ExpectRows(grid, {"10", "20"}, {"5.00E07", "6.9925E09"}, {"10.0000", "20.0000"});
    };
    AskPoint(editor, [&](frmInputPX60H& dialog) {
      Choose(dialog, "cmbSetting", "20");
      Choose(dialog, "cmbFreq", "6.9925E09");
      ExpectTaken();
      Click(dialog, "btnOk");
    });
    expectUnchanged();
    AskPoint(editor, [&](frmInputPX60H& dialog) {
      FillCombo(dialog, "cmbSetting", "10.0");
      FillCombo(dialog, "cmbFreq", "50000000");
      ExpectTaken();
      Press(Qt::Key_Return);
    });
    expectUnchanged();
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorPointDialog, APointBelowZeroIsRefused) {
  WriteTemplate({"* 10  :   5.00E07   :  10.0000"});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    const std::vector<std::pair<const char*, const char*>> points = {{"-10", "5.00E07"},
                                                                     {"20", "-5.00E07"}};
    for (const auto& point : points) {
      AskPoint(editor, [&](frmInputPX60H& dialog) {
        FillCombo(dialog, "cmbSetting", point.first);
        FillCombo(dialog, "cmbFreq", point.second);
        ExpectMessage({"below zero"});
        Click(dialog, "btnOk");
      });
      ExpectRows(grid, {"10"}, {"5.00E07"}, {"10.0000"});
    }
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorPointDialog, ATextThatIsNoNumberGetsAMessage) {
  WriteTemplate({"* 10  :   5.00E07   :  10.0000"});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    struct Case {
      const char* setting;
      const char* frequency;
      Texts message;
    };
    const std::vector<Case> cases = {{"dB", "5.00E07", {"Setting", "\"dB\""}},
                                     {"", "5.00E07", {"Setting"}},
                                     {"20", "fast", {"Frequency", "\"fast\""}},
                                     {"20", "", {"Frequency"}},
                                     {"40000", "5.00E07", {"Setting", "40000"}}};
    for (const Case& test : cases) {
      AskPoint(editor, [&](frmInputPX60H& dialog) {
        FillCombo(dialog, "cmbSetting", test.setting);
        FillCombo(dialog, "cmbFreq", test.frequency);
        ExpectMessage(test.message);
        Click(dialog, "btnOk");
      });
      ExpectRows(grid, {"10"}, {"5.00E07"}, {"10.0000"});
    }
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorPointDialog, APointDialogThatIsCancelledAddsNothing) {
  WriteTemplate({"* 10  :   5.00E07   :  10.0000"});
  const std::vector<std::function<void(frmInputPX60H & dialog)>> ways = {
      [](frmInputPX60H& dialog) { Click(dialog, "btnCancel"); },
      [](frmInputPX60H& /*dialog*/) { Press(Qt::Key_Escape); },
      [](frmInputPX60H& dialog) { dialog.close(); }};
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    for (const auto& cancel : ways) {
      DialogResult = "before";
      AskPoint(editor, [&](frmInputPX60H& dialog) {
        FillCombo(dialog, "cmbSetting", "20");
        FillCombo(dialog, "cmbFreq", "1.00E09");
        cancel(dialog);
      });
      EXPECT_EQ(DialogResult, "CANCEL");
      ExpectRows(grid, {"10"}, {"5.00E07"}, {"10.0000"});
    }
    // What was typed then is forgotten.
    AskPoint(editor, [](frmInputPX60H& dialog) {
      EXPECT_EQ(ComboText(dialog, "cmbSetting"), "0");
      EXPECT_EQ(ComboText(dialog, "cmbFreq"), GetParam().presetFrequency);
      Click(dialog, "btnOk");
    });
    ExpectRows(grid, {"0", "10"}, {GetParam().presetFrequency, "5.00E07"}, {"0.0000", "10.0000"});
    Click(editor, "btnCancel");
  });
}

// Deleting.

TEST_P(AttenuatorPointDialog, TheDeleteQuestionNamesThePointInMegahertzOrGigahertz) {
  WriteTemplate({"*  0  :   1.00E05   :   0.0000", "* 10  :   5.00E07   :  10.0000",
                 "*110  :   1.00E09   :  110.0000", "*120  :  6.9925E09   :  120.0000"});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    const Texts names = {"0dB, 0.1MHz", "10dB, 50MHz", "110dB, 1GHz", "120dB, 6.9925GHz"};
    for (int row = 1; row <= 4; ++row) {
      ClickCell(grid, row, row % 3);
      Delete(editor, QString::fromStdString(names.at(static_cast<std::size_t>(row - 1))),
             QMessageBox::No);
    }
    EXPECT_EQ(ColumnOf(grid, 0), (Texts{"0", "10", "110", "120"}));
    for (int row = 4; row >= 1; --row) {
      ClickCell(grid, row, 2);
      Delete(editor, QString::fromStdString(names.at(static_cast<std::size_t>(row - 1))),
             QMessageBox::Yes);
      EXPECT_EQ(grid.Data().RowCount(), row);
    }
    // Nothing is left to ask about.
    Click(editor, "btnDeletePoint");
    Fill(editor, "txtSerial", "12");
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(FileNamed("SN12")), PlainFile("12", {}));
}

INSTANTIATE_TEST_SUITE_P(Models, AttenuatorPointDialog, testing::ValuesIn(Attenuators()),
                         [](const auto& test) { return std::string(test.param.code); });

}  // namespace
}  // namespace tarvell
