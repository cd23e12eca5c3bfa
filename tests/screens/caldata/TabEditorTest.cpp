// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCheckBox>
#include <QClipboard>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/TabEditorFixture.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

const std::vector<std::string> kMonths = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                          "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

/// Clicks an arrow, "up" or "down", of a spinner.
void ClickArrow(QWidget& screen, const QString& spinner, const QString& arrow) {
  QTest::mouseClick(&Find<QToolButton>(Find<QWidget>(screen, spinner), arrow), Qt::LeftButton);
}

bool IsGrey(QLineEdit& box) {
  return box.palette().color(QPalette::Base) == QApplication::palette().color(QPalette::Button);
}

class TabEditor : public TabEditorFixture {
 protected:
  TabEditor() { WriteTemplates(); }
};

TEST_F(TabEditor, NewDataStartFromTheTemplateWithoutASerialNumber) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    EXPECT_TRUE(editor.isModal());
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (RT520A - TPLA0)");
    EXPECT_EQ(TextOf(editor, "txtModel"), "RT520A");
    EXPECT_TRUE(Find<QLineEdit>(editor, "txtModel").isReadOnly());
    EXPECT_EQ(TextOf(editor, "txtSerial"), "");
    EXPECT_FALSE(Find<QLineEdit>(editor, "txtSerial").isReadOnly());
    EXPECT_FALSE(IsGrey(Find<QLineEdit>(editor, "txtSerial")));
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "T-1");
    EXPECT_EQ(TextOf(editor, "txtCalYear"), "2000");
    EXPECT_EQ(ComboText(editor, "cmbCalMonth"), "JAN");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "31");
    EXPECT_EQ(TextOf(editor, "txtDueYear"), "2001");
    EXPECT_EQ(ComboText(editor, "cmbDueMonth"), "JAN");
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "31");
    EXPECT_EQ(TextOf(editor, "txtComment"), "template");
    EXPECT_EQ(SelectedTab(editor), 1);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M001");
    EXPECT_EQ(RowOf(editor, 0),
              (Texts{"Frequency[Hz]", "Capacitance[pF]", "Unc.", "Disspation Factor", "Unc."}));
    EXPECT_EQ(RowOf(editor, 1), (Texts{"1000", "1.000012pF", "12 ppm", "0.00001", "0.00002"}));
    EXPECT_EQ(RowOf(editor, 2), (Texts{"10000", "1.00002pF", "0.005 %", "0.00003", "0.00004"}));
    EXPECT_EQ(RowOf(editor, 3), (Texts{"100000", "1.00003pF", "60.000 ppm", "0.00005", "0.00006"}));
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 4);
    EXPECT_FALSE(CellBoxOf(editor).isVisible());
    EXPECT_FALSE(UnitBoxOf(editor).isVisible());
  });
}

TEST_F(TabEditor, EveryModelHasTheControlsOfAMember) {
  for (const char* model : {"RT520A", "RT520C", "RT730A"}) {
    SCOPED_TRACE(model);
    EditNew(model, [&](frmCalDataTabInput& editor) {
      auto& label = Find<QLabel>(editor, "lblTabSerial");
      auto& box = Find<QLineEdit>(editor, "txtTabSerial");
      EXPECT_TRUE(label.isVisible());
      EXPECT_TRUE(box.isVisible());
      EXPECT_FALSE(box.isReadOnly());
      EXPECT_EQ(label.buddy(), &box);
      EXPECT_EQ(ComboEntries(editor, "cmbCalMonth"), kMonths);
      EXPECT_EQ(ComboEntries(editor, "cmbDueMonth"), kMonths);
      EXPECT_EQ(TextOf(editor, "txtModel"), model);
      // The serial number is what is missing: it can be typed at once.
      EXPECT_EQ(QApplication::focusWidget(), &Find<QLineEdit>(editor, "txtSerial"));
    });
  }
}

TEST_F(TabEditor, TheCaptionFollowsTheSerialNumberThatIsTyped) {
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (RT730A - TPLR0)");
    Fill(editor, "txtSerial", "33");
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (RT730A - 33)");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (RT730A - 3)");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (RT730A - )");
  });
}

TEST_F(TabEditor, AnExistingFileIsShownWithItsSerialNumberLocked) {
  std::vector<Member> members = SetAMembers();
  members[0].rows[0][1] = "1.000100pF";
  members[0].serial = "K001";
  members[1].serial = "K002";
  const std::string path = R"(c:\calfactors\RT520A\SN00042)";
  tree_.Write(
      path, CapacitorFile({"RT520A", "9000A00042", "20030228", "C-7", "20040229", "lab"}, members));
  EditFile("RT520A", path, [](frmCalDataTabInput& editor) {
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (RT520A - 9000A00042)");
    EXPECT_EQ(TextOf(editor, "txtModel"), "RT520A");
    EXPECT_TRUE(Find<QLineEdit>(editor, "txtModel").isReadOnly());
    auto& serial = Find<QLineEdit>(editor, "txtSerial");
    EXPECT_TRUE(serial.isReadOnly());
    EXPECT_TRUE(IsGrey(serial));
    Fill(editor, "txtSerial", "1");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "9000A00042") << "it cannot be typed over";
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-7");
    EXPECT_EQ(TextOf(editor, "txtCalYear"), "2003");
    EXPECT_EQ(ComboText(editor, "cmbCalMonth"), "FEB");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "28");
    EXPECT_EQ(TextOf(editor, "txtDueYear"), "2004");
    EXPECT_EQ(ComboText(editor, "cmbDueMonth"), "FEB");
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "29");
    EXPECT_EQ(TextOf(editor, "txtComment"), "lab");
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K001");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"1000", "1.000100pF", "12 ppm", "0.00001", "0.00002"}));
    ClickTab(editor, 2);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K002");
  });
}

TEST_F(TabEditor, TheSerialNumberCanBeTypedAgainAfterAnExistingFile) {
  const std::string path = R"(c:\calfactors\RT520A\SN00042)";
  tree_.Write(path, CapacitorFile({"RT520A", "00042"}, SetAMembers()));
  frmCalDataTabInput editor(nullptr);
  EditFile(editor, "RT520A", path, [](frmCalDataTabInput& screen) {
    EXPECT_TRUE(IsGrey(Find<QLineEdit>(screen, "txtSerial")));
  });
  EditNew(editor, "RT520A", [](frmCalDataTabInput& screen) {
    EXPECT_FALSE(IsGrey(Find<QLineEdit>(screen, "txtSerial")));
    Fill(screen, "txtSerial", "77");
    EXPECT_EQ(TextOf(screen, "txtSerial"), "77");
  });
}

TEST_F(TabEditor, WhatAFileDoesNotHoldIsTheTemplates) {
  // No CAL_NO and COMMENT line, one row instead of three, no page RT523A.
  const std::string path = R"(c:\calfactors\RT520A\SN00042)";
  tree_.Write(
      path, Lines({"#MODEL_NO : RT520A", "#SER_NO   : 00042", "#CAL_DATE : 20030301",
                   "#DUE_DATE : 20040301", "!", "#RT521A    :     K001",
                   "*          500 :       1.000500pF :    0.0015 :            0.00091 :   0.00092",
                   "!END", "!", "#RT522A    :     K002", "!END", "!", "#RT524A    :     K004",
                   "*         1000 :       1000.009pF :    0.0040 :            0.00031 :   0.00032",
                   "!END", "!"}));
  questions_.ExpectError({"RT523A"});
  EditFile("RT520A", path, [](frmCalDataTabInput& editor) {
    EXPECT_EQ(TextOf(editor, "txtSerial"), "00042");
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "T-1");
    EXPECT_EQ(TextOf(editor, "txtComment"), "template");
    EXPECT_EQ(TextOf(editor, "txtCalYear"), "2003");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"500", "1.000500pF", "15 ppm", "0.00091", "0.00092"}));
    EXPECT_EQ(RowOf(editor, 2), (Texts{"10000", "1.00002pF", "0.005 %", "0.00003", "0.00004"}))
        << "the template's remaining rows follow the file's";
    EXPECT_EQ(RowOf(editor, 3), (Texts{"100000", "1.00003pF", "60.000 ppm", "0.00005", "0.00006"}));
    ClickTab(editor, 2);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K002");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"10.00001pF", "10.00002pF"}));
    ClickTab(editor, 3);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M003");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"100.0001pF"}));
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K004");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"1000.009pF"}));
  });
  EXPECT_TRUE(Contains(questions_.details.front().toStdString(), "The file is as it was"));
}

TEST_F(TabEditor, ARowThatIsNotInTheListIsRefused) {
  frmCalDataTabInput editor(nullptr);
  for (const int index : {-1, 51, 998, 1000}) {
    const Error error =
        ErrorOf([&] { editor.SetupDat(static_cast<std::int16_t>(index), "RT520A"); });
    EXPECT_EQ(error.Kind(), ErrorKind::Index) << index;
    EXPECT_FALSE(editor.isVisible()) << index;
  }
}

TEST_F(TabEditor, TheLastRowOfTheListIsNotRefused) {
  const std::string path = R"(c:\calfactors\RT520A\SN00050)";
  tree_.Write(path, CapacitorFile({"RT520A", "00050"}, SetAMembers()));
  gCalFiles.at(50).FilePath = path;
  user_.At<frmCalDataTabInput>([](frmCalDataTabInput& editor) {
    EXPECT_EQ(TextOf(editor, "txtSerial"), "00050");
    Click(editor, "btnCancel");
  });
  frmCalDataTabInput editor(nullptr);
  editor.SetupDat(50, "RT520A");
}

TEST_F(TabEditor, AFileThatIsNotThereIsRefused) {
  frmCalDataTabInput editor(nullptr);
  gCalFiles.at(0).FilePath = R"(c:\calfactors\RT520A\SN00099)";
  const Error error = ErrorOf([&] { editor.SetupDat(0, "RT520A"); });
  EXPECT_EQ(error.Kind(), ErrorKind::NotFound);
  EXPECT_TRUE(Contains(error.what(), "SN00099")) << error.what();
  EXPECT_FALSE(editor.isVisible());
}

TEST_F(TabEditor, EveryPageHasATabWithItsName) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    EXPECT_EQ(TitlesOf(editor), (Texts{"RT521A", "RT522A", "RT523A", "RT524A"}));
  });
  EditNew("RT520C", [](frmCalDataTabInput& editor) {
    EXPECT_EQ(TitlesOf(editor), (Texts{"RT525A", "RT526A", "RT527A", "RT528A"}));
  });
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    EXPECT_EQ(TitlesOf(editor), (Texts{"DC Registance", "Indactance / Parallel Capacitance",
                                       "HF Calibration at 10ohm", "HF Calibration at 100ohm",
                                       "HF Calibration at 1kohm", "HF Calibration at 10kohm",
                                       "HF Calibration at 100kohm"}));
  });
}

TEST_F(TabEditor, OneScreenServesOneModelAfterTheOther) {
  frmCalDataTabInput editor(nullptr);
  EditNew(editor, "RT730A", [](frmCalDataTabInput& screen) {
    EXPECT_EQ(TabsOf(screen).count(), 7);
    KeyToTab(screen, 6);
  });
  EditNew(editor, "RT520C", [](frmCalDataTabInput& screen) {
    EXPECT_EQ(TitlesOf(screen), (Texts{"RT525A", "RT526A", "RT527A", "RT528A"}));
    EXPECT_EQ(SelectedTab(screen), 1);
    EXPECT_EQ(TextOf(screen, "txtTabSerial"), "C001");
    EXPECT_TRUE(Find<QCheckBox>(screen, "chkCheck").isVisible());
    ClickTab(screen, 2);
  });
  EditNew(editor, "RT520A", [](frmCalDataTabInput& screen) {
    EXPECT_EQ(TitlesOf(screen), (Texts{"RT521A", "RT522A", "RT523A", "RT524A"}));
    EXPECT_EQ(SelectedTab(screen), 1);
    EXPECT_EQ(TextOf(screen, "txtTabSerial"), "M001");
    EXPECT_FALSE(Find<QCheckBox>(screen, "chkCheck").isVisible());
    EXPECT_EQ(TextOf(screen, "txtSerial"), "");
  });
}

TEST_F(TabEditor, TheTitlesOfTheResistorSetCanBeRead) {
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    QTabBar& tabs = TabsOf(editor);
    ASSERT_EQ(tabs.count(), 7);
    EXPECT_EQ(tabs.elideMode(), Qt::ElideNone);
    for (int tab = 0; tab < tabs.count(); ++tab) {
      const QString title = tabs.tabText(tab);
      EXPECT_GE(tabs.tabRect(tab).width(), tabs.fontMetrics().horizontalAdvance(title))
          << title.toStdString();
      EXPECT_GE(tabs.tabRect(tab).height(), tabs.fontMetrics().height()) << title.toStdString();
      KeyToTab(editor, tab + 1);
      EXPECT_TRUE(tabs.rect().contains(tabs.tabRect(tab)))
          << "selected, it stands in the strip as a whole: " << title.toStdString();
    }
  });
}

TEST_F(TabEditor, TheTitlesOfTheCapacitorSetsStandSideBySide) {
  for (const char* model : {"RT520A", "RT520C"}) {
    EditNew(model, [](frmCalDataTabInput& editor) {
      QTabBar& tabs = TabsOf(editor);
      for (int tab = 0; tab < tabs.count(); ++tab) {
        EXPECT_GE(tabs.tabRect(tab).width(),
                  tabs.fontMetrics().horizontalAdvance(tabs.tabText(tab)));
        EXPECT_TRUE(tabs.rect().contains(tabs.tabRect(tab)));
      }
    });
  }
}

TEST_F(TabEditor, TheColumnsShareTheWidthOfTheGrid) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    ASSERT_EQ(grid.model()->columnCount(), 5);
    const int wide = grid.columnWidth(0);
    EXPECT_GT(wide, 0);
    EXPECT_NEAR(grid.columnWidth(1), wide, 1);
    EXPECT_NEAR(grid.columnWidth(3), wide, 1);
    // A fifth of the width against a sixth.
    EXPECT_NEAR(grid.columnWidth(2), wide * 5.0 / 6, 1);
    EXPECT_NEAR(grid.columnWidth(4), wide * 5.0 / 6, 1);
    EXPECT_EQ(grid.horizontalScrollBar()->maximum(), 0) << "all columns are in sight";
  });
}

TEST_F(TabEditor, ATabShowsTheTableAndTheSerialNumberOfItsMember) {
  EditNew("RT520C", [](frmCalDataTabInput& editor) {
    EXPECT_EQ(RowOf(editor, 0),
              (Texts{"Frequency[Hz]", "Capacitance[nF]", "Unc.", "Disspation Factor", "Unc."}));
    EXPECT_EQ(RowOf(editor, 1), (Texts{"100", "10.0001nF", "200 ppm", "0.00010", "0.00020"}));
    ClickTab(editor, 2);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C002");
    EXPECT_EQ(CellOf(GridOf(editor), 0, 1), "Capacitance[nF]");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"100", "100.001nF", "0.0150 %", "0.00030", "0.00040"}));
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C004");
    EXPECT_EQ(CellOf(GridOf(editor), 0, 1), "Capacitance[uF]");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"100", "1000"}));
    EXPECT_EQ(RowOf(editor, 2), (Texts{"1000", "10.0003uF", "400 ppm", "0.00071", "0.00081"}));
    ClickTab(editor, 3);
    EXPECT_EQ(CellOf(GridOf(editor), 0, 1), "Capacitance[uF]");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"1.00001uF"}));
  });
}

TEST_F(TabEditor, CaptionsOfColumnsThatAPageDoesNotUseAreCleared) {
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    EXPECT_EQ(RowOf(editor, 0),
              (Texts{"Model", "Nominal Value", "Calibrated Value", "Unc. (%)", ""}));
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT731A", "1 mohm", "1.0000  mohm", "0.1 %", ""}));
    EXPECT_EQ(RowOf(editor, 2), (Texts{"RT732A", "10 mohm", "10.000  mohm", "12 ppm", ""}));
    KeyToTab(editor, 3);
    EXPECT_EQ(RowOf(editor, 0), (Texts{"Frequency[MHz]", "Resistance[ohm]", "Unc.  [%]",
                                       "Reactance [ohm]", "Unc. (%)"}));
    EXPECT_EQ(RowOf(editor, 2), (Texts{"3", "10.001 ohm", "25.00 ppm", "0.001 ohm", "0.020 ohm"}));
    KeyToTab(editor, 2);
    EXPECT_EQ(RowOf(editor, 0), (Texts{"Model", "Calibrated Value", "Unc. (%)", "", ""}));
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT734A", "Ls/5 nH", "0.5 nH", "", ""}));
    KeyToTab(editor, 7);
    EXPECT_EQ(RowOf(editor, 0), (Texts{"Frequency[MHz]", "Resistance[kohm]", "Unc.  [%]",
                                       "Susceptance [uS]", "Unc. (uS)"}));
    EXPECT_EQ(RowOf(editor, 1), (Texts{"1", "100.00 kohm", "0.20 %", "0.000 uS", "0.010 uS"}));
  });
}

TEST_F(TabEditor, AClickOnATabStoresAnOpenEditInThePageItBelongsTo) {
  EditNew("RT520A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00001");
    ClickCell(GridOf(editor), 1, 1);
    Type("1.0000987");
    ClickTab(editor, 2);
    EXPECT_FALSE(CellBoxOf(editor).isVisible());
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"10.00001pF", "10.00002pF"}));
    ClickCell(GridOf(editor), 2, 3);
    Type("0.5");
    ClickTab(editor, 1);
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"1.000099pF", "1.00002pF", "1.00003pF"}))
        << "the first page's six decimals";
    ClickTab(editor, 2);
    EXPECT_EQ(ColumnOf(GridOf(editor), 3), (Texts{"0.00011", "0.50000"}));
    Click(editor, "btnOk");
  });
  std::vector<Member> members = SetAMembersSaved();
  members[0].rows[0][1] = "1.000099pF";
  members[1].rows[1][3] = "0.50000";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520A\SN00001)"),
            CapacitorFile({"RT520A", "00001"}, members));
}

TEST_F(TabEditor, TheKeysOfTheTabStripStoreAnOpenEditToo) {
  EditNew("RT730A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00001");
    ClickCell(GridOf(editor), 1, 2);
    Type("1.00056");
    KeyToTab(editor, 2);
    EXPECT_FALSE(CellBoxOf(editor).isVisible());
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT734A", "Ls/5 nH", "0.5 nH", "", ""}));
    ClickCell(GridOf(editor), 2, 1);
    Type("6.256");
    KeyToTab(editor, 7);
    EXPECT_EQ(RowOf(editor, 1), (Texts{"1", "100.00 kohm", "0.20 %", "0.000 uS", "0.010 uS"}));
    ClickCell(GridOf(editor), 1, 4);
    Type("0.0126");
    KeyToTab(editor, 1);
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT731A", "1 mohm", "1.0006  mohm", "0.1 %", ""}));
    Click(editor, "btnOk");
  });
  ResistorRows rows = SetRRows();
  rows[0][0] = "*   RT731A :        1 mohm :     1.0006  mohm :       0.1 % ";
  rows[1][1] = "*   RT735A :       Ls/6.26 nH :  0.6 nH";
  rows[6][0] = "*        1 :   100.00 kohm :      0.20 % :       0.000 uS :    0.013 uS";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT730A\SN00001)"), ResistorFile({"RT730A", "00001"}, rows));
}

TEST_F(TabEditor, MemberSerialNumbersStayWithTheirPages) {
  EditNew("RT520A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00001");
    Fill(editor, "txtTabSerial", "N1");
    ClickTab(editor, 3);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M003");
    Fill(editor, "txtTabSerial", "N3");
    ClickTab(editor, 1);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N1");
    ClickTab(editor, 2);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M002");
    ClickTab(editor, 3);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N3");
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "N4");
    Click(editor, "btnOk");  // the page that is shown is stored now
  });
  std::vector<Member> members = SetAMembersSaved();
  members[0].serial = "N1";
  members[2].serial = "N3";
  members[3].serial = "N4";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520A\SN00001)"),
            CapacitorFile({"RT520A", "00001"}, members));
}

TEST_F(TabEditor, TheResistorSetSaysThatItsFileHasNoMemberSerialNumbers) {
  EditNew("RT730A", [&](frmCalDataTabInput& editor) {
    EXPECT_TRUE(
        Contains(Find<QLineEdit>(editor, "txtTabSerial").toolTip().toStdString(), "not saved"));
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "");
    Fill(editor, "txtSerial", "00001");
    Fill(editor, "txtTabSerial", "R9");
    KeyToTab(editor, 2);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "");
    KeyToTab(editor, 1);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "R9") << "kept as long as the screen is open";
    Click(editor, "btnOk");  // no word about the serial numbers that are missing
  });
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT730A\SN00001)"),
            ResistorFile({"RT730A", "00001"}, SetRRows()));
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    EXPECT_EQ(Find<QLineEdit>(editor, "txtTabSerial").toolTip(), "");
  });
}

TEST_F(TabEditor, OkSavesTheHeaderAsItStandsOnTheScreen) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "3318A12345");
    Fill(editor, "txtCalNo", "C-0042");
    Fill(editor, "txtCalYear", "2001");
    Choose(editor, "cmbCalMonth", "MAR");
    Fill(editor, "txtCalDay", "5");
    Fill(editor, "txtDueYear", "2002");
    Choose(editor, "cmbDueMonth", "DEC");
    Fill(editor, "txtDueDay", "24");
    Fill(editor, "txtComment", "done in lab");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Names(R"(c:\calfactors\RT520A)"), (Texts{"SN12345"}));
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520A\SN12345)"),
            CapacitorFile({"RT520A", "3318A12345", "20010305", "C-0042", "20021224", "done in lab"},
                          SetAMembersSaved()));
}

TEST_F(TabEditor, AShortSerialNumberNamesTheFileAsAWhole) {
  EditNew("RT520C", [](frmCalDataTabInput& editor) {
    Type("12");
    Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !editor.isVisible(); }));
  });
  EXPECT_EQ(tree_.Names(R"(c:\calfactors\RT520C)"), (Texts{"SN12"}));
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520C\SN12)"),
            CapacitorFile({"RT520C", "12"}, SetCMembersSaved()));
}

TEST_F(TabEditor, CancelSavesNothingAndAsksNothing) {
  const std::string path = R"(c:\calfactors\RT520A\SN00042)";
  const std::string bytes = CapacitorFile({"RT520A", "00042"}, SetAMembers());
  tree_.Write(path, bytes);
  const auto change = [](frmCalDataTabInput& editor) {
    Fill(editor, "txtCalNo", "X");
    Fill(editor, "txtTabSerial", "Y");
    TypeCell(editor, 1, 1, "2");
    ClickTab(editor, 2);
    TypeCell(editor, 1, 1, "3");
    ClickCell(GridOf(editor), 2, 1);
    Type("4");
  };
  EditFile("RT520A", path, [&](frmCalDataTabInput& editor) {
    change(editor);
    Click(editor, "btnCancel");
    EXPECT_FALSE(editor.isVisible());
  });
  EditFile("RT520A", path, [&](frmCalDataTabInput& editor) {
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "T-1");
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M001");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "1.000012pF");
    change(editor);
    Press(Qt::Key_Escape);  // the edit only
    EXPECT_TRUE(editor.isVisible());
    EXPECT_FALSE(CellBoxOf(editor).isVisible());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(path), bytes);
  EXPECT_EQ(tree_.Names(R"(c:\calfactors\RT520A)"), (Texts{"SN00042"}));
  EditNew("RT520C", [](frmCalDataTabInput& editor) {
    Type("1");
    Click(editor, "btnCancel");
  });
  EXPECT_TRUE(tree_.Names(R"(c:\calfactors\RT520C)").empty());
}

TEST_F(TabEditor, AChosenMonthLimitsItsDay) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    // 2000 was a leap year.
    Choose(editor, "cmbCalMonth", "FEB");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "29");
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "31") << "the other date is not touched";
    ClickArrow(editor, "udCalDay", "up");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "29");
    ClickArrow(editor, "udCalDay", "down");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "28");
    Choose(editor, "cmbCalMonth", "APR");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "28");
    Fill(editor, "txtCalDay", "30");
    ClickArrow(editor, "udCalDay", "up");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "30");
    Choose(editor, "cmbCalMonth", "DEC");
    ClickArrow(editor, "udCalDay", "up");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "31");

    Choose(editor, "cmbDueMonth", "FEB");
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "28");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "31");
    Fill(editor, "txtDueYear", "2004");
    Choose(editor, "cmbDueMonth", "MAR");
    Choose(editor, "cmbDueMonth", "FEB");
    Fill(editor, "txtDueDay", "28");
    ClickArrow(editor, "udDueDay", "up");
    ClickArrow(editor, "udDueDay", "up");
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "29");
  });
}

TEST_F(TabEditor, AMonthChosenByTheMouseLimitsItsDayToo) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    ChooseByMouse(Find<QComboBox>(editor, "cmbCalMonth"), 8);
    EXPECT_EQ(ComboText(editor, "cmbCalMonth"), "SEP");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "30");
  });
}

TEST_F(TabEditor, TheSpinnersKeepToTheirRanges) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    for (const std::string date : {"Cal", "Due"}) {
      SCOPED_TRACE(date);
      const QString year = QString::fromStdString("txt" + date + "Year");
      const QString day = QString::fromStdString("txt" + date + "Day");
      Fill(editor, year, "2036");
      Press(Qt::Key_Up);
      EXPECT_EQ(TextOf(editor, year), "2037");
      Press(Qt::Key_Up);
      EXPECT_EQ(TextOf(editor, year), "2037");
      Fill(editor, year, "1905");
      ClickArrow(editor, QString::fromStdString("ud" + date + "Year"), "down");
      EXPECT_EQ(TextOf(editor, year), "1904");
      ClickArrow(editor, QString::fromStdString("ud" + date + "Year"), "down");
      EXPECT_EQ(TextOf(editor, year), "1904");
      Fill(editor, day, "2");
      Press(Qt::Key_Down);
      Press(Qt::Key_Down);
      EXPECT_EQ(TextOf(editor, day), "1");
      Fill(editor, day, "30");
      ClickArrow(editor, QString::fromStdString("ud" + date + "Day"), "up");
      ClickArrow(editor, QString::fromStdString("ud" + date + "Day"), "up");
      EXPECT_EQ(TextOf(editor, day), "31");
    }
  });
}

TEST_F(TabEditor, ADateThatIsNoNumberIsNamedAndNothingIsSaved) {
  const std::string path = R"(c:\calfactors\RT520A\SN00042)";
  const std::string bytes = CapacitorFile({"RT520A", "00042"}, SetAMembers());
  tree_.Write(path, bytes);
  EditFile("RT520A", path, [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtComment", "kept");
    TypeCell(editor, 1, 1, "2");
    Fill(editor, "txtCalDay", "x");
    questions_.ExpectError({"Day of the calibration date"});
    Click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
    Fill(editor, "txtCalDay", "1");
    Fill(editor, "txtDueYear", "");
    questions_.ExpectError({"Year of the due date"});
    Click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(TextOf(editor, "txtComment"), "kept");
    EXPECT_EQ(TextOf(editor, "txtDueYear"), "");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "2.000000pF");
    EXPECT_EQ(tree_.Read(path), bytes);
    Fill(editor, "txtDueYear", "2002");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  std::vector<Member> members = SetAMembersSaved();
  members[0].rows[0][1] = "2.000000pF";
  EXPECT_EQ(tree_.Read(path),
            CapacitorFile({"RT520A", "00042", "20000101", "T-1", "20020131", "kept"}, members));
}

TEST_F(TabEditor, ASerialNumberThatCannotNameAFileIsRefused) {
  EditNew("RT520A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "1000A/0001");
    TypeCell(editor, 1, 1, "2");
    questions_.ExpectError({"/"});
    Click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(TextOf(editor, "txtSerial"), "1000A/0001");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "2.000000pF");
    EXPECT_TRUE(tree_.Names(R"(c:\calfactors\RT520A)").empty());
    EXPECT_EQ(tree_.Names(R"(c:\calfactors)"), (Texts{"RT520A"}));
    Fill(editor, "txtSerial", "1000A-001");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Names(R"(c:\calfactors\RT520A)"), (Texts{"SNA-001"}));
}

TEST_F(TabEditor, ASaveThatFailsLeavesEverythingOnTheScreen) {
  EditNew("RT520A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00001");
    TypeCell(editor, 1, 1, "2");
    ClickTab(editor, 2);
    Fill(editor, "txtTabSerial", "N2");
    TypeCell(editor, 1, 1, "3");
    std::filesystem::remove(tree_.Native(R"(c:\calfactors\RT520A)"));
    questions_.ExpectError({R"(c:\calfactors\RT520A\SN00001)"});
    Click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(SelectedTab(editor), 2);
    EXPECT_EQ(TextOf(editor, "txtSerial"), "00001");
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N2");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "3.00000pF");
    tree_.MakeFolders(R"(c:\calfactors\RT520A)");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  std::vector<Member> members = SetAMembersSaved();
  members[0].rows[0][1] = "2.000000pF";
  members[1].rows[0][1] = "3.00000pF";
  members[1].serial = "N2";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520A\SN00001)"),
            CapacitorFile({"RT520A", "00001"}, members));
}

TEST_F(TabEditor, AFullPageOf51RowsIsSavedWhole) {
  std::vector<Member> members = SetCMembers();
  members[1].rows.clear();
  for (int row = 1; row <= 51; ++row) {
    members[1].rows.push_back({std::to_string(row), "100.001nF", "0.0200", "0.00030", "0.00040"});
  }
  const std::string path = R"(c:\calfactors\RT520C\SN00042)";
  tree_.Write(path, CapacitorFile({"RT520C", "00042"}, members));
  EditFile("RT520C", path, [](frmCalDataTabInput& editor) {
    ClickTab(editor, 2);
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 52);
    TypeCell(editor, 51, 1, "99");
    EXPECT_EQ(RowOf(editor, 51), (Texts{"51", "99.000nF", "200 ppm", "0.00030", "0.00040"}));
    ClickTab(editor, 1);
    ClickTab(editor, 2);
    EXPECT_EQ(CellOf(GridOf(editor), 51, 1), "99.000nF");
    Click(editor, "btnOk");
  });
  members[1].rows.back()[1] = "99.000nF";
  EXPECT_EQ(tree_.Read(path), CapacitorFile({"RT520C", "00042"}, members));
}

TEST_F(TabEditor, ACharacterThatFilesCannotHoldIsRefusedWhereItIsPasted) {
  EditNew("RT520A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtTabSerial", "N1");
    QApplication::clipboard()->setText(QString::fromUtf16(u"\u03A9"));
    questions_.ExpectError({"\xCE\xA9"});
    Press(Qt::Key_V, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N1");
  });
}

TEST_F(TabEditor, TheTabKeyGoesThroughTheScreenInReadingOrder) {
  EditNew("RT520C", [](const frmCalDataTabInput& /*editor*/) {
    Texts order;
    for (int i = 0; i < 30; ++i) {
      const std::string name = QApplication::focusWidget()->objectName().toStdString();
      if (!order.empty() && name == order.front()) {
        break;
      }
      order.push_back(name);
      Press(Qt::Key_Tab);
    }
    const auto placeOf = [&](const char* name) {
      const auto found = std::find(order.begin(), order.end(), name);
      EXPECT_NE(found, order.end()) << name << " cannot be reached";
      return found - order.begin();
    };
    EXPECT_EQ(order.front(), "txtSerial");
    EXPECT_LT(placeOf("txtCalNo"), placeOf("txtCalDay"));
    EXPECT_LT(placeOf("txtCalDay"), placeOf("cmbCalMonth"));
    EXPECT_LT(placeOf("cmbCalMonth"), placeOf("txtCalYear"));
    EXPECT_LT(placeOf("txtCalYear"), placeOf("txtDueDay"));
    EXPECT_LT(placeOf("txtDueDay"), placeOf("txtComment"));
    EXPECT_LT(placeOf("txtComment"), placeOf("tTab"));
    EXPECT_LT(placeOf("tTab"), placeOf("txtTabSerial"));
    EXPECT_LT(placeOf("txtTabSerial"), placeOf("chkCheck"));
    EXPECT_LT(placeOf("chkCheck"), placeOf("grid"));
    EXPECT_NE(placeOf("btnOk"), placeOf("btnCancel"));
  });
}

}  // namespace
}  // namespace tarvell
