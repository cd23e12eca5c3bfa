// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screens/caldata/TabEditorFixture.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

void Paste(const QString& text) {
  QApplication::clipboard()->setText(text);
  Press(Qt::Key_V, Qt::ControlModifier);
}

std::string Copied() {
  Press(Qt::Key_C, Qt::ControlModifier);
  return QApplication::clipboard()->text().toStdString();
}

/// Pasting into the factors of a power sensor.
class SensorPasting : public SensorStage {
 protected:
  SensorPasting() {
    file_.rows = {{"0.10", "98.80"}, {"50.00", "100.0"}, {"100.00", "98.84"}, {"1000.00", "97.0"}};
  }

  void Show(const Act& act) { ShowFile(file_, act); }

  /// Pastes into a cell what is refused with these parts of a message, and saves.
  void ExpectRefused(const QString& text, int row, int column,
                     const std::vector<std::string>& parts) {
    SCOPED_TRACE(text.toStdString());
    Show([&](frmCalDataInput& editor) {
      ClickCell(GridOf(editor), row, column);
      questions_.ExpectError(parts);
      Paste(text);
      EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0.10", "50.00", "100.00", "1000.00"}));
      EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"98.80", "100.0", "98.84", "97.0"}));
      EXPECT_EQ(GridOf(editor).CurrentRow(), row);
      EXPECT_EQ(GridOf(editor).CurrentColumn(), column);
      EXPECT_FALSE(Find<QLineEdit>(editor, "txtCell").isVisible());
      Click(editor, "btnOk");
    });
    EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
  }

  static constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";
  SensorFile file_;
};

TEST_F(SensorPasting, PutsAColumnIntoTheRowsFromTheCurrentOneOn) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 1);
    Paste("97.26\r\n1E2\r\n-0.55\r\n");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"98.80", "97.3", "100.0", "-0.6"}));
    Click(editor, "btnOk");
  });
  file_.rows = {{"0.10", "98.80"}, {"50.00", "97.3"}, {"100.00", "100.0"}, {"1000.00", "-0.6"}};
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(SensorPasting, TakesEveryKindOfLineEndAndOneAtTheEnd) {
  Show([](frmCalDataInput& editor) {
    for (const char* text :
         {"1\n2\n3\n4", "1\n2\n3\n4\n", "1\r\n2\r\n3\r\n4", "1\r\n2\n3\n4\r\n"}) {
      ClickCell(GridOf(editor), 1, 1);
      Paste("9\n9\n9\n9");
      Paste(text);
      EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"1.0", "2.0", "3.0", "4.0"})) << text;
    }
  });
}

TEST_F(SensorPasting, FormatsAValueAsTypingItWould) {
  for (const char* text : {"7", "98.84", "97.25", ".5", "-5.04", "1E2", "99.96", "0", "5.5D0"}) {
    Show([&](frmCalDataInput& editor) {
      ClickCell(GridOf(editor), 1, 1);
      Type(text);
      Press(Qt::Key_Return);
      ClickCell(GridOf(editor), 3, 1);
      Paste(text);
      EXPECT_EQ(CellOf(GridOf(editor), 3, 1), CellOf(GridOf(editor), 1, 1)) << text;
      EXPECT_NE(CellOf(GridOf(editor), 3, 1), "98.84") << text;
    });
  }
}

TEST_F(SensorPasting, SelectsWhatItHasStored) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 1);
    Paste("1\n2\n");
    EXPECT_EQ(Copied(), "1.0\n2.0");
    EXPECT_EQ(GridOf(editor).CurrentRow(), 2);
    EXPECT_EQ(GridOf(editor).CurrentColumn(), 1);
    EXPECT_TRUE(GridOf(editor).hasFocus());
  });
}

TEST_F(SensorPasting, BeginsInTheFirstOfTheSelectedCells) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 1);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    ASSERT_EQ(GridOf(editor).CurrentRow(), 4);
    Paste("1\n2\n3");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"98.80", "1.0", "2.0", "3.0"}));
  });
}

TEST_F(SensorPasting, TakesBackWhatWasCopied) {
  Show([](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "98.80\n100.0");
    ClickCell(GridOf(editor), 3, 1);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"98.80", "100.0", "98.8", "100.0"}));
  });
}

TEST_F(SensorPasting, RefusesWhatIsNoNumber) {
  ExpectRefused("1\n2\n12,5\n", 1, 1, {"Nothing was pasted", "Line 3", "\"12,5\" is no number"});
  ExpectRefused("Factor\n1\n2", 1, 1, {"Line 1", "\"Factor\" is no number"});
  ExpectRefused("1\n\n2", 1, 1, {"Line 2", "no value"});
  ExpectRefused("1\n12%", 1, 1, {"Line 2", "\"12%\" is no number"});
}

TEST_F(SensorPasting, RefusesANumberThatIsTooLarge) {
  ExpectRefused("1\n9E999", 1, 1, {"Line 2", "9E999", "too large"});
}

TEST_F(SensorPasting, RefusesACharacterThatTheFilesCannotHold) {
  ExpectRefused(QString::fromUtf8("1\n\u22122"), 1, 1, {"Line 2", "\u2212", "cannot be stored"});
}

TEST_F(SensorPasting, RefusesMoreLinesThanRowsAreLeft) {
  ExpectRefused("1\n2\n3", 3, 1, {"3 lines", "2 rows"});
}

TEST_F(SensorPasting, RefusesTheColumnOfTheFrequencies) {
  ExpectRefused("1\n2", 1, 0, {"\"Frequency  [MHz]\" cannot be edited"});
  ExpectRefused("1\t2", 1, 0, {"\"Frequency  [MHz]\" cannot be edited"});
}

TEST_F(SensorPasting, RefusesAColumnThatTheTableDoesNotHave) {
  ExpectRefused("1\t2\n3\t4", 1, 1, {"Line 1", "2 columns"});
}

TEST_F(SensorPasting, RefusesAClipboardWithoutText) {
  ExpectRefused("", 1, 1, {"no text to paste"});
}

TEST_F(SensorPasting, IntoAnEmptyTableIsRefused) {
  file_.rows = {};
  Show([&](frmCalDataInput& editor) {
    GridOf(editor).setFocus();
    questions_.ExpectError({"no current cell"});
    Paste("1");
    EXPECT_TRUE(ColumnOf(GridOf(editor), 1).empty());
  });
}

/// Pasting into the values of a step attenuator.
class AttenuatorPasting : public SensorStage {
 protected:
  static std::string File(const std::string& model, const Texts& values) {
    const Texts points = {"  0  :   5.00E07", " 10  :   5.00E07", " 10  :   1.00E09"};
    Texts lines = {"#MODEL_NO : " + model,
                   "#SER_NO   : 3318A12345",
                   "#CAL_DATE : 20010305",
                   "#CAL_NO   : C-0042",
                   "#DUE_DATE : 20020305",
                   "#COMMENT  : factory",
                   "!",
                   "! Setting  /  Freq  /  CalData "};
    if (model == "PX60H") {
      lines.emplace_back("! 50M/1000MHz are calibration points.");
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
      lines.push_back("*" + points[i] + "   :  " + values.at(i));
    }
    lines.emplace_back("!End");
    return Lines(lines);
  }
};

TEST_F(AttenuatorPasting, PutsAColumnIntoTheValuesAndIntoNoOtherColumn) {
  for (const std::string model : {"PX60G", "PX60H"}) {
    SCOPED_TRACE(model);
    const std::string path = R"(c:\calfactors\)" + model + R"(\SN12345)";
    tree_.Write(path, File(model, {" 0.0000", "10.0000", "10.0000"}));
    gCalFiles[0].FilePath = path;
    ShowAgain(model, [&](frmCalDataInput& editor) {
      for (const int column : {0, 1}) {
        ClickCell(GridOf(editor), 1, column);
        questions_.ExpectError({"cannot be edited"});
        Paste("1");
      }
      ClickCell(GridOf(editor), 2, 2);
      Paste("10.01235\r\n9.98764\r\n");
      EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0", "10", "10"}));
      EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"5.00E07", "5.00E07", "1.00E09"}));
      EXPECT_EQ(ColumnOf(GridOf(editor), 2), (Texts{"0.0000", "10.0124", "9.9876"}));
      Click(editor, "btnOk");
    });
    EXPECT_EQ(tree_.Read(path), File(model, {" 0.0000", "10.0124", " 9.9876"}));
  }
}

/// Pasting into the tables of the sets.
class SetPasting : public TabEditorFixture {
 protected:
  SetPasting() { WriteTemplates(); }
};

TEST_F(SetPasting, GivesEachValueOfACapacitorSetTheFormatAndTheUnitOfItsCell) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00001");
    ClickCell(GridOf(editor), 1, 1);
    Paste("1.0000126\t12.6\r\n1.000025\t0.0125\r\n1.5\t61.00049\r\n");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"1000", "1.000013pF", "13 ppm", "0.00001", "0.00002"}));
    EXPECT_EQ(RowOf(editor, 2), (Texts{"10000", "1.00003pF", "0.013 %", "0.00003", "0.00004"}));
    EXPECT_EQ(RowOf(editor, 3), (Texts{"100000", "1.50000pF", "61.000 ppm", "0.00005", "0.00006"}));
    EXPECT_EQ(Copied(), "1.000013pF\t13 ppm\n1.00003pF\t0.013 %\n1.50000pF\t61.000 ppm");
    ClickTab(editor, 4);
    ClickCell(GridOf(editor), 1, 3);
    Paste("0.000015");
    Click(editor, "btnOk");
  });
  std::vector<Member> members = SetAMembersSaved();
  members[0].rows = {{"1000", "1.000013pF", "0.0013", "0.00001", "0.00002"},
                     {"10000", "1.00003pF", "0.013", "0.00003", "0.00004"},
                     {"100000", "1.50000pF", "0.0061", "0.00005", "0.00006"}};
  members[3].rows[0][3] = "0.00002";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520A\SN00001)"),
            CapacitorFile({"RT520A", "00001"}, members));
}

TEST_F(SetPasting, GivesEachValueOfAResistorSetTheFormatAndTheUnitOfItsCell) {
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00001");
    KeyToTab(editor, 3);
    ClickCell(GridOf(editor), 1, 2);
    Paste("0.125\t-0.0015\t0.0105\n24.995\t0\t1");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"1", "10.000 ohm", "0.13 %", "-0.002 ohm", "0.011 ohm"}));
    EXPECT_EQ(RowOf(editor, 2), (Texts{"3", "10.001 ohm", "25.00 ppm", "0.000 ohm", "1.000 ohm"}));
    Click(editor, "btnOk");
  });
  ResistorRows rows = SetRRows();
  rows[2] = {"*        1 :   10.000 ohm :      0.13 % :     -0.002 ohm :   0.011 ohm",
             "*        3 :   10.001 ohm :   0.00250 % :      0.000 ohm :   1.000 ohm"};
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT730A\SN00001)"), ResistorFile({"RT730A", "00001"}, rows));
}

TEST_F(SetPasting, TakesBackWhatWasCopiedWithItsUnits) {
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    KeyToTab(editor, 2);
    ClickCell(GridOf(editor), 2, 1);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Copied(), "Ls/5.2 nH\t0.6 nH");
    ClickCell(GridOf(editor), 1, 1);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT734A", "Ls/5.2 nH", "0.6 nH", "", ""}));
  });
}

TEST_F(SetPasting, RefusesAValueInAnotherUnitThanItsCell) {
  EditNew("RT520A", [this](frmCalDataTabInput& editor) {
    ClickCell(GridOf(editor), 1, 2);
    questions_.ExpectError({"Nothing was pasted", "Line 2", "\"14 ppm\" is no number (in %)"});
    Paste("13 ppm\n14 ppm");
    EXPECT_EQ(ColumnOf(GridOf(editor), 2), (Texts{"12 ppm", "0.005 %", "60.000 ppm"}));
  });
}

TEST_F(SetPasting, ChangesNothingWhenOneOfTheColumnsCannotBeStored) {
  EditNew("RT520A", [this](frmCalDataTabInput& editor) {
    const Texts first = RowOf(editor, 1);
    const Texts second = RowOf(editor, 2);
    ClickCell(GridOf(editor), 1, 3);
    questions_.ExpectError({"Line 2", "no value"});
    Paste("1\t2\n3\t");
    questions_.ExpectError({"Line 1", "3 columns", "2 from"});
    Paste("1\t2\t3");
    // A number that the table can hold in ppm alone.
    ClickCell(GridOf(editor), 1, 2);
    questions_.ExpectError({"Line 2", "too large"});
    Paste("1\n1E305");
    ClickCell(GridOf(editor), 1, 0);
    questions_.ExpectError({"\"Frequency[Hz]\" cannot be edited"});
    Paste("1\t2");
    EXPECT_EQ(RowOf(editor, 1), first);
    EXPECT_EQ(RowOf(editor, 2), second);
  });
}

TEST_F(SetPasting, RefusesTheColumnsThatAPageDoesNotUse) {
  EditNew("RT730A", [this](frmCalDataTabInput& editor) {
    KeyToTab(editor, 2);
    ClickCell(GridOf(editor), 1, 2);
    questions_.ExpectError({"Line 1", "no value in this place"});
    Paste("0.7\t1");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT734A", "Ls/5 nH", "0.5 nH", "", ""}));
  });
}

}  // namespace
}  // namespace tarvell
