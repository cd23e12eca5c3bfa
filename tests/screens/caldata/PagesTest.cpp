// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCheckBox>
#include <QScrollBar>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screens/caldata/TabEditorFixture.h"
#include "screens/widgets/QtText.h"

/// The pages of a set: their tabs, the serial numbers of the members, and what is reported.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class Pages : public TabEditorFixture {
 protected:
  Pages() { WriteTemplates(); }

  static std::string PathOf(const std::string& model) {
    return R"(c:\calfactors\)" + model + R"(\SN00042)";
  }
  static std::string SetA(const std::vector<Member>& members = SetAMembers()) {
    return CapacitorFile({"RT520A", "00042"}, members);
  }
  /// Edits a file with these bytes.
  void Edit(const std::string& model, const std::string& bytes, const Act& act) {
    tree_.Write(PathOf(model), bytes);
    EditFile(model, PathOf(model), act);
  }
};

// ---- Tabs and tables.

TEST_F(Pages, ShowTheTableAndTheSerialNumberOfTheirMember) {
  EditNew("RT520C", [](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    EXPECT_EQ(RowOf(editor, 0),
              (Texts{"Frequency[Hz]", "Capacitance[nF]", "Unc.", "Disspation Factor", "Unc."}));
    // The columns share the width of the table by fifths and sixths.
    const int fifth = grid.columnWidth(0);
    EXPECT_NEAR(grid.columnWidth(1), fifth, 1);
    EXPECT_NEAR(grid.columnWidth(2), fifth * 5.0 / 6, 1);
    EXPECT_NEAR(grid.columnWidth(3), fifth, 1);
    EXPECT_NEAR(grid.columnWidth(4), fifth * 5.0 / 6, 1);
    EXPECT_EQ(grid.horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(TabsOf(editor).tabText(1), "RT526A");
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C004");
    EXPECT_EQ(CellOf(grid, 0, 1), "Capacitance[uF]");
    ClickTab(editor, 2);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C002");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"100", "100.001nF", "150 ppm", "0.00030", "0.00040"}));
  });
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    // A table as narrow as beside the earlier values still shows the names of the members.
    CalGrid& table = GridOf(editor);
    const int name = table.fontMetrics().horizontalAdvance("RT731A");
    table.resize(name * 6, table.height());
    EXPECT_GT(table.columnWidth(0), name);
    // Two columns fewer: nothing is left of the page before, and they take no typing.
    KeyToTab(editor, 3);
    KeyToTab(editor, 2);
    EXPECT_EQ(RowOf(editor, 0), (Texts{"Model", "Calibrated Value", "Unc. (%)", "", ""}));
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT734A", "Ls/5 nH", "0.5 nH", "", ""}));
    TypeCell(editor, 1, 3, "5");
    ExpectClosed(editor);
    EXPECT_EQ(NoticesOf(editor), Texts{"Nothing was typed: this column is not used."});
    EXPECT_EQ(CellOf(GridOf(editor), 1, 3), "");
  });
}

TEST_F(Pages, OfOneModelFollowThoseOfAnotherInTheSameScreen) {
  frmCalDataTabInput editor(nullptr);
  const auto& option = Find<QCheckBox>(editor, "chkCheck");
  EditNew(editor, "RT730A", [&](frmCalDataTabInput& screen) { KeyToTab(screen, 6); });
  EditNew(editor, "RT520C", [&](frmCalDataTabInput& screen) {
    EXPECT_TRUE(option.isVisible() && option.isChecked());
    EXPECT_EQ(PlainCaption(option.text()), "Opt 001 (Add 10uF)");
    EXPECT_EQ(TabsOf(screen).count(), 4);
    EXPECT_EQ(TabsOf(screen).currentIndex(), 0);
    EXPECT_EQ(Find<QLineEdit>(screen, "txtTabSerial").toolTip(), "");
    ClickCell(GridOf(screen), 1, 1);
    Type("9");
  });
  EditNew(editor, "RT520A", [&](frmCalDataTabInput& screen) {
    EXPECT_FALSE(option.isVisible() || option.isChecked());
    ExpectClosed(screen);
    EXPECT_EQ(TextOf(screen, "txtTabSerial"), "M001");
  });
}

TEST_F(Pages, AreStoredWithAnOpenEditWhenTheTabChanges) {
  EditNew("RT520A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00042");
    Fill(editor, "txtTabSerial", "N1");
    ClickCell(GridOf(editor), 1, 1);
    Type("1.0000987");
    ClickTab(editor, 2);
    ExpectClosed(editor);
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"10.00001pF", "10.00002pF"}));
    ClickCell(GridOf(editor), 2, 3);
    Type("0.5");
    KeyToTab(editor, 1);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N1");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "1.000099pF") << "the six decimals of the first page";
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "N4");
    Click(editor, "btnOk");  // stores the page that is shown
  });
  std::vector<Member> members = SetAMembers();
  members[0].serial = "N1";
  members[0].rows[0][1] = "1.000099pF";
  members[1].rows[1][3] = "0.50000";
  members[3].serial = "N4";
  EXPECT_EQ(tree_.Read(PathOf("RT520A")), SetA(members));
}

TEST_F(Pages, AreTurnedByKeysFromAnywhereAndByAClickThatLeavesTheKeyboardInTheTable) {
  WriteTemplates();
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    const QTabBar& tabs = TabsOf(editor);
    Fill(editor, "txtComment", "x");
    constexpr auto kBack = Qt::CTRL | Qt::SHIFT;
    // The first page follows the last one.
    for (const auto& [key, page] :
         {std::pair(Qt::CTRL | Qt::Key_Tab, 1), std::pair(Qt::CTRL | Qt::Key_PageDown, 2),
          std::pair(Qt::CTRL | Qt::Key_PageUp, 1), std::pair(kBack | Qt::Key_Backtab, 0),
          std::pair(kBack | Qt::Key_Tab, 3), std::pair(Qt::CTRL | Qt::Key_Tab, 0)}) {
      Press(key.key(), key.keyboardModifiers());
      EXPECT_EQ(tabs.currentIndex(), page);
      EXPECT_TRUE(Find<QLineEdit>(editor, "txtComment").hasFocus());
    }
    ClickCell(GridOf(editor), 1, 1);
    Type("1.0000987");
    Press(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "10.00001pF");
    Press(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "1.000099pF");
    Find<QLineEdit>(editor, "txtComment").setFocus();
    for (const int tab : {3, 3, 1}) {
      ClickTab(editor, tab);
      EXPECT_TRUE(GridOf(editor).hasFocus()) << tab;
    }
  });
}

// ---- Notices.

TEST_F(Pages, ThatAFileLacksAreTheTemplatesAndReportedInOneMessage) {
  questions_.ExpectError({"\"RT520A\"", "\"RT730A\"", "\n\n", "HF Calibration at 100kohm"});
  Edit("RT730A", SetA(), [](frmCalDataTabInput& editor) {
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT731A", "1 mohm", "1.0000  mohm", "0.1 %", ""}));
  });
  EXPECT_EQ(questions_.details.front(),
            "The file is as it was. Check the data before you save them with OK.");
  EXPECT_EQ(tree_.Read(PathOf("RT730A")), SetA());
}

TEST_F(Pages, ReportMembersWithoutASerialNumberAfterWhatIsWrongInTheHeader) {
  std::vector<Member> members = SetAMembers();
  members[0].serial = "";
  SetHeader header = {"RT520A", "00042"};
  header.dueDate = "20010231";
  const std::string bytes = CapacitorFile(header, members);
  Edit("RT520A", bytes, [&](frmCalDataTabInput& editor) {
    const std::string missing = "No serial number is entered for RT521A.";
    EXPECT_EQ(NoticesOf(editor), (Texts{"Calibration Due Date: the day 31 FEB 2001 does not exist. "
                                        "It is saved unchanged.",
                                        missing}));
    // OK stops at the date, and the notice about the member stays.
    Fill(editor, "txtDueDay", "x");
    questions_.ExpectError({"Day of the due date"});
    Click(editor, "btnOk");
    EXPECT_EQ(NoticesOf(editor), Texts{missing});
    EXPECT_EQ(tree_.Read(PathOf("RT520A")), bytes);
    ClickTab(editor, 3);
    Fill(editor, "txtTabSerial", "");
    EXPECT_EQ(NoticesOf(editor), Texts{"No serial number is entered for RT521A, RT523A."});
    Fill(editor, "txtDueDay", "28");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  header.dueDate = "20010228";
  members[2].serial = "";
  EXPECT_EQ(tree_.Read(PathOf("RT520A")), CapacitorFile(header, members));
}

TEST_F(Pages, ReportAMemberSerialNumberOfWhichOnlyTheFirstWordIsReadBack) {
  EditNew("RT520C", [this](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "12 34");
    const std::string notice =
        "Serial number of RT528A: only \"12\" will be read back when the file is opened again.";
    EXPECT_EQ(NoticesOf(editor), Texts{notice});
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtTabSerial")).toStdString(), notice);
    Fill(editor, "txtComment", "a b");
    EXPECT_NE(NoticesOf(editor).front(), notice);
    Find<QLineEdit>(editor, "txtTabSerial").setFocus();
    EXPECT_EQ(NoticesOf(editor).front(), notice);
    Fill(editor, "txtComment", "");
    // A page that is switched off is not reported.
    Click(editor, "chkCheck");
    EXPECT_EQ(NoticesOf(editor), Texts());
    questions_.ExpectError({"\u03a9"});
    Find<QLineEdit>(editor, "txtTabSerial").setFocus();
    Find<QLineEdit>(editor, "txtTabSerial").insert("\u03a9");
    Settle();
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C003");
  });
}

TEST_F(Pages, OfTheResistorSetHaveNoPlaceForMemberSerialNumbers) {
  EditNew("RT730A", [&](frmCalDataTabInput& editor) {
    EXPECT_TRUE(
        Find<QLineEdit>(editor, "txtTabSerial").toolTip().contains("what is entered here is not"));
    Fill(editor, "txtSerial", "00042");
    Fill(editor, "txtTabSerial", "R 9");
    EXPECT_EQ(NoticesOf(editor), Texts());
    KeyToTab(editor, 2);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "");
    KeyToTab(editor, 1);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "R 9") << "kept while the screen is open";
    TypeCell(editor, 2, 2, "10.0005");
    Click(editor, "btnOk");
  });
  ResistorRows rows = SetRRows();
  rows[0][1] = "*   RT732A :       10 mohm :     10.001  mohm : 0.00120 %";
  EXPECT_EQ(tree_.Read(PathOf("RT730A")), ResistorFile({"RT730A", "00042"}, rows));
}

TEST_F(Pages, KeepTheMarkOfAnUncertaintyThatTheFileKeepsDifferently) {
  const auto mark = [](QWidget& editor, int row) {
    return GridOf(editor).model()->index(row, 2).data(Qt::ToolTipRole).toString().toStdString();
  };
  Edit("RT520A", SetA(), [&](frmCalDataTabInput& editor) {
    TypeCell(editor, 3, 2, "12.3456");
    const std::string notice =
        "The cell shows \"12.346 ppm\", and will be read back as \"12.000 ppm\".";
    EXPECT_EQ(mark(editor, 2), notice);
    ClickTab(editor, 2);
    EXPECT_EQ(NoticesOf(editor),
              Texts{"On the page RT521A: 100000, Unc. of Capacitance[pF]: " + notice});
    ClickTab(editor, 1);
    EXPECT_EQ(mark(editor, 2), notice);
    TypeCell(editor, 3, 2, "12");
    EXPECT_EQ(mark(editor, 2), "");
    EXPECT_EQ(NoticesOf(editor), Texts());
  });
  // A file that holds such a value is marked when it is opened.
  std::vector<Member> members = SetCMembers();
  members[3].rows[0][2] = "0.030";
  Edit("RT520C", CapacitorFile({"RT520C", "00042"}, members), [&](frmCalDataTabInput& editor) {
    ASSERT_EQ(NoticesOf(editor).size(), 1U);
    EXPECT_TRUE(NoticesOf(editor)[0].starts_with("On the page RT528A: 100, Unc. of Capac"));
    ClickTab(editor, 4);
    EXPECT_NE(mark(editor, 0), "");
    Click(editor, "chkCheck");
    EXPECT_EQ(NoticesOf(editor), Texts()) << "the page is switched off";
  });
}

// ---- Option 001 of set C, its fourth page.

class OptionPage : public Pages {
 protected:
  /// The members of a file whose serial numbers differ from the template's: K001 and so on.
  static std::vector<Member> Members() {
    std::vector<Member> members = SetCMembers();
    for (Member& member : members) {
      member.serial.front() = 'K';
    }
    return members;
  }
  static std::vector<Member> WithoutOption(std::vector<Member> members) {
    members.pop_back();
    return members;
  }
  static std::string FileOf(const std::vector<Member>& members) {
    return CapacitorFile({"RT520C", "00042"}, members);
  }
  void Edit(const std::vector<Member>& members, const Act& act) {
    Pages::Edit("RT520C", FileOf(members), act);
  }
  static bool IsOn(QWidget& editor) {
    const bool isOn = Find<QCheckBox>(editor, "chkCheck").isChecked();
    EXPECT_EQ(TabsOf(editor).count(), isOn ? 4 : 3);
    return isOn;
  }
  [[nodiscard]] std::string Saved() const { return tree_.Read(PathOf("RT520C")); }
};

TEST_F(OptionPage, ComesFromTheTemplateWhenItIsSwitchedOn) {
  Edit(WithoutOption(Members()), [](frmCalDataTabInput& editor) {
    EXPECT_FALSE(IsOn(editor));
    ClickTab(editor, 2);
    ClickCell(GridOf(editor), 1, 1);
    Type("100.5");
    Click(editor, "chkCheck");
    EXPECT_TRUE(IsOn(editor));
    EXPECT_EQ(TabsOf(editor).currentIndex(), 1) << "the page that is shown stays";
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C004");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"10.0002uF", "10.0003uF"}));
    Click(editor, "btnOk");
  });
  std::vector<Member> members = Members();
  members[1].rows[0][1] = "100.500nF";
  members[3].serial = "C004";
  EXPECT_EQ(Saved(), FileOf(members));
}

TEST_F(OptionPage, IsKeptWhileItIsOffAndLeftOutOfTheFile) {
  for (const bool isOn : {true, false}) {
    Edit(Members(), [&](frmCalDataTabInput& editor) {
      ClickTab(editor, 4);
      Fill(editor, "txtTabSerial", "N4");
      ClickCell(GridOf(editor), 2, 2);
      Type("500");
      Click(editor, "chkCheck");
      EXPECT_FALSE(IsOn(editor));
      ExpectClosed(editor);
      EXPECT_EQ(TabsOf(editor).currentIndex(), 2);
      EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K003");
      Find<QCheckBox>(editor, "chkCheck").setFocus();
      Press(Qt::Key_Space);
      ClickTab(editor, 4);
      EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N4");
      if (!isOn) {
        // Switched off on another tab.
        ClickTab(editor, 2);
        Fill(editor, "txtTabSerial", "N2");
        ClickCell(GridOf(editor), 1, 1);
        Type("100.5");
        Click(editor, "chkCheck");
        EXPECT_EQ(TabsOf(editor).currentIndex(), 1);
        EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "100.500nF");
      }
      EXPECT_EQ(IsOn(editor), isOn);
      Click(editor, "btnOk");
    });
    std::vector<Member> members = Members();
    if (isOn) {
      members[3].serial = "N4";
      members[3].rows[1][2] = "0.0500";
    } else {
      members = WithoutOption(members);
      members[1].serial = "N2";
      members[1].rows[0][1] = "100.500nF";
    }
    EXPECT_EQ(Saved(), FileOf(members));
  }
}

TEST_F(OptionPage, RefusesASerialNumberThatIsASignForSwitching) {
  const std::vector<std::function<void(frmCalDataTabInput&)>> ways = {
      [](frmCalDataTabInput& editor) { ClickTab(editor, 2); },
      [](frmCalDataTabInput& editor) { Click(editor, "btnOk"); },
      [](frmCalDataTabInput& editor) { Click(editor, "chkCheck"); }};
  Edit(Members(), [&](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    for (const QString sign : {"*", "/"}) {
      Fill(editor, "txtTabSerial", sign);
      for (const auto& leave : ways) {
        questions_.ExpectError({"\"" + FromQt(sign) + "\"", "serial number"});
        leave(editor);
        ASSERT_TRUE(editor.isVisible());
        EXPECT_EQ(TabsOf(editor).currentIndex(), 3);
        EXPECT_EQ(TextOf(editor, "txtTabSerial"), FromQt(sign));
        EXPECT_TRUE(IsOn(editor));
      }
    }
    EXPECT_EQ(Saved(), FileOf(Members()));
    // On another page it is a serial number, and an error of the header comes first.
    Fill(editor, "txtTabSerial", "");
    ClickTab(editor, 1);
    Fill(editor, "txtTabSerial", "*");
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "/");
    Fill(editor, "txtCalDay", "x");
    questions_.ExpectError({"Day of the calibration date"});
    Click(editor, "btnOk");
  });
}

}  // namespace
}  // namespace tarvell
