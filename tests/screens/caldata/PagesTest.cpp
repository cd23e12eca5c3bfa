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

TEST_F(Pages, HaveTabsThatCanBeRead) {
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    EXPECT_EQ(TitlesOf(editor), (Texts{"DC Registance", "Indactance / Parallel Capacitance",
                                       "HF Calibration at 10ohm", "HF Calibration at 100ohm",
                                       "HF Calibration at 1kohm", "HF Calibration at 10kohm",
                                       "HF Calibration at 100kohm"}));
    const QTabBar& tabs = TabsOf(editor);
    for (int tab = 0; tab < tabs.count(); ++tab) {
      KeyToTab(editor, tab + 1);
      EXPECT_TRUE(tabs.rect().contains(tabs.tabRect(tab))) << tab;
    }
  });
}

TEST_F(Pages, ShareTheWidthOfTheTableByFifthsAndSixths) {
  EditNew("RT520A", [](frmCalDataTabInput& editor) {
    CalGrid& grid = GridOf(editor);
    const int fifth = grid.columnWidth(0);
    for (const int column : {1, 3}) {
      EXPECT_NEAR(grid.columnWidth(column), fifth, 1);
    }
    for (const int column : {2, 4}) {
      EXPECT_NEAR(grid.columnWidth(column), fifth * 5.0 / 6, 1);
    }
    EXPECT_EQ(grid.horizontalScrollBar()->maximum(), 0);
  });
}

TEST_F(Pages, ShowTheTableAndTheSerialNumberOfTheirMember) {
  EditNew("RT520C", [](frmCalDataTabInput& editor) {
    EXPECT_EQ(RowOf(editor, 0),
              (Texts{"Frequency[Hz]", "Capacitance[nF]", "Unc.", "Disspation Factor", "Unc."}));
    EXPECT_EQ(RowOf(editor, 1), (Texts{"100", "10.0001nF", "200 ppm", "0.00010", "0.00020"}));
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C004");
    EXPECT_EQ(CellOf(GridOf(editor), 0, 1), "Capacitance[uF]");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"100", "1000"}));
    ClickTab(editor, 2);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C002");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"100", "100.001nF", "150 ppm", "0.00030", "0.00040"}));
  });
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    KeyToTab(editor, 3);
    EXPECT_EQ(RowOf(editor, 2), (Texts{"3", "10.001 ohm", "25.00 ppm", "0.001 ohm", "0.020 ohm"}));
    // Two columns fewer: nothing is left of the page before, and they take no typing.
    KeyToTab(editor, 2);
    EXPECT_EQ(RowOf(editor, 0), (Texts{"Model", "Calibrated Value", "Unc. (%)", "", ""}));
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT734A", "Ls/5 nH", "0.5 nH", "", ""}));
    ClickCell(GridOf(editor), 1, 3);
    for (const Qt::Key key : {Qt::Key_5, Qt::Key_Return}) {
      Press(key);
      EXPECT_FALSE(CellBoxOf(editor).isVisible());
    }
    EXPECT_EQ(NoticesOf(editor), Texts{"Nothing was typed: this column is not used."});
    EXPECT_EQ(CellOf(GridOf(editor), 1, 3), "");
  });
}

TEST_F(Pages, OfOneModelFollowThoseOfAnotherInTheSameScreen) {
  frmCalDataTabInput editor(nullptr);
  const auto& option = Find<QCheckBox>(editor, "chkCheck");
  EditNew(editor, "RT730A", [&](frmCalDataTabInput& screen) {
    EXPECT_FALSE(option.isVisible());
    KeyToTab(screen, 6);
  });
  EditNew(editor, "RT520C", [&](frmCalDataTabInput& screen) {
    EXPECT_TRUE(option.isVisible() && option.isChecked());
    EXPECT_EQ(option.text(), "Opt 001 (Add 10uF)");
    EXPECT_EQ(TabsOf(screen).count(), 4);
    EXPECT_EQ(SelectedTab(screen), 1);
    EXPECT_EQ(TextOf(screen, "txtTabSerial"), "C001");
    EXPECT_EQ(Find<QLineEdit>(screen, "txtTabSerial").toolTip(), "");
    ClickCell(GridOf(screen), 1, 1);
    Type("9");
  });
  EditNew(editor, "RT520A", [&](frmCalDataTabInput& screen) {
    EXPECT_FALSE(option.isVisible() || option.isChecked());
    EXPECT_FALSE(CellBoxOf(screen).isVisible());
    EXPECT_EQ(TextOf(screen, "txtTabSerial"), "M001");
  });
}

TEST_F(Pages, StoreEachCellInItsOwnFormat) {
  const struct {
    const char* model;
    int tab;
    int row;
    int column;
    const char* text;
    const char* stored;
  } cells[] = {{"RT520A", 1, 1, 1, "1.0000125", "1.000013pF"},
               {"RT520A", 1, 2, 2, "0.0125", "0.013 %"},
               {"RT520A", 4, 1, 1, "999.9996", "1000.000pF"},
               {"RT730A", 1, 2, 2, "10.0005", "10.001  mohm"},
               {"RT730A", 2, 1, 1, "5.256", "Ls/5.26 nH"},
               {"RT730A", 7, 1, 3, "1.2345", "1.235 uS"}};
  for (const auto& cell : cells) {
    EditNew(cell.model, [&](frmCalDataTabInput& editor) {
      KeyToTab(editor, cell.tab);
      TypeCell(editor, cell.row, cell.column, cell.text);
      EXPECT_EQ(CellOf(GridOf(editor), cell.row, cell.column), cell.stored);
    });
  }
}

TEST_F(Pages, AreStoredWithAnOpenEditWhenTheTabChanges) {
  EditNew("RT520A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtSerial", "00042");
    Fill(editor, "txtTabSerial", "N1");
    ClickCell(GridOf(editor), 1, 1);
    Type("1.0000987");
    ClickTab(editor, 2);
    EXPECT_FALSE(CellBoxOf(editor).isVisible());
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
                                        "It is saved as it stands.",
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
    EXPECT_EQ(NoticesOf(editor), Texts());
    Fill(editor, "txtSerial", "00042");
    Fill(editor, "txtTabSerial", "R 9");
    EXPECT_EQ(NoticesOf(editor), Texts());
    KeyToTab(editor, 2);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "");
    KeyToTab(editor, 1);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "R 9") << "kept while the screen is open";
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(PathOf("RT730A")), ResistorFile({"RT730A", "00042"}, SetRRows()));
}

TEST_F(Pages, KeepTheMarkOfAnUncertaintyThatTheFileKeepsDifferently) {
  Edit("RT520A", SetA(), [](frmCalDataTabInput& editor) {
    const auto mark = [&] {
      return GridOf(editor).model()->index(2, 2).data(Qt::ToolTipRole).toString().toStdString();
    };
    TypeCell(editor, 3, 2, "12.3456");
    const std::string notice =
        "The cell shows \"12.346 ppm\", and the file will give back \"12.000 ppm\".";
    EXPECT_EQ(mark(), notice);
    ClickTab(editor, 2);
    EXPECT_EQ(NoticesOf(editor),
              Texts{"On the page RT521A: 100000, Unc. of Capacitance[pF]: " + notice});
    ClickTab(editor, 1);
    EXPECT_EQ(mark(), notice);
    TypeCell(editor, 3, 2, "12");
    EXPECT_EQ(mark(), "");
    EXPECT_EQ(NoticesOf(editor), Texts());
  });
  EditNew("RT730A", [](frmCalDataTabInput& editor) {
    KeyToTab(editor, 3);
    TypeCell(editor, 2, 2, "12.34");
    EXPECT_EQ(NoticesOf(editor).size(), 1U) << "the third page keeps one decimal of ppm";
  });
  // A file that holds such a value is marked when it is opened.
  std::vector<Member> members = SetCMembers();
  members[1].rows[0][2] = "0.015";
  Edit("RT520C", CapacitorFile({"RT520C", "00042"}, members), [](frmCalDataTabInput& editor) {
    ASSERT_EQ(NoticesOf(editor).size(), 1U);
    EXPECT_TRUE(NoticesOf(editor)[0].starts_with("On the page RT526A: 100, Unc. of Capac"));
    ClickTab(editor, 2);
    EXPECT_FALSE(GridOf(editor).model()->index(0, 2).data(Qt::ToolTipRole).toString().isEmpty());
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
    EXPECT_EQ(TitlesOf(editor), isOn ? (Texts{"RT525A", "RT526A", "RT527A", "RT528A"})
                                     : (Texts{"RT525A", "RT526A", "RT527A"}));
    return isOn;
  }
  [[nodiscard]] std::string Saved() const { return tree_.Read(PathOf("RT520C")); }
};

TEST_F(OptionPage, IsThereWhenTheFileHasIt) {
  for (const std::vector<Member>& members : {Members(), WithoutOption(Members())}) {
    Edit(members, [&](frmCalDataTabInput& editor) {
      EXPECT_EQ(IsOn(editor), members.size() == 4);
      Click(editor, "btnOk");
    });
    EXPECT_EQ(Saved(), FileOf(members));
  }
}

TEST_F(OptionPage, ComesFromTheTemplateWhenItIsSwitchedOn) {
  Edit(WithoutOption(Members()), [](frmCalDataTabInput& editor) {
    ClickTab(editor, 2);
    ClickCell(GridOf(editor), 1, 1);
    Type("100.5");
    Click(editor, "chkCheck");
    EXPECT_TRUE(IsOn(editor));
    EXPECT_EQ(SelectedTab(editor), 2) << "the page that is shown stays";
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K002");
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

TEST_F(OptionPage, IsLeftOutOfTheFileWhenItIsSwitchedOffOnAnotherTab) {
  Edit(Members(), [](frmCalDataTabInput& editor) {
    ClickTab(editor, 2);
    Fill(editor, "txtTabSerial", "N2");
    ClickCell(GridOf(editor), 1, 1);
    Type("100.5");
    Click(editor, "chkCheck");
    EXPECT_FALSE(IsOn(editor));
    EXPECT_EQ(SelectedTab(editor), 2);
    EXPECT_FALSE(CellBoxOf(editor).isVisible());
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "100.500nF");
    Click(editor, "btnOk");
  });
  std::vector<Member> members = WithoutOption(Members());
  members[1].serial = "N2";
  members[1].rows[0][1] = "100.500nF";
  EXPECT_EQ(Saved(), FileOf(members));
}

TEST_F(OptionPage, KeepsItsRowsAndSerialNumberWhileItIsOff) {
  Edit(Members(), [](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "N4");
    TypeCell(editor, 1, 1, "9.5");
    ClickCell(GridOf(editor), 2, 2);
    Type("500");
    Click(editor, "chkCheck");
    EXPECT_FALSE(IsOn(editor));
    EXPECT_FALSE(CellBoxOf(editor).isVisible());
    EXPECT_EQ(SelectedTab(editor), 3);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K003");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"1.00001uF"}));
    Find<QCheckBox>(editor, "chkCheck").setFocus();
    for (int i = 0; i < 3; ++i) {
      Press(Qt::Key_Space);
      EXPECT_EQ(IsOn(editor), i % 2 == 0);
    }
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N4");
    Click(editor, "btnOk");
  });
  std::vector<Member> members = Members();
  members[3].serial = "N4";
  members[3].rows[0][1] = "9.5000uF";
  members[3].rows[1][2] = "0.0500";
  EXPECT_EQ(Saved(), FileOf(members));
}

TEST_F(OptionPage, IsEmptyWhenTheTemplateLacksIt) {
  WriteTemplate("RT520C", CapacitorFile({"RT520C", "TPLC0"}, WithoutOption(SetCMembers())));
  EditNew("RT520C", [&](frmCalDataTabInput& editor) {
    EXPECT_FALSE(IsOn(editor));
    Fill(editor, "txtSerial", "00042");
    Click(editor, "chkCheck");
    EXPECT_EQ(NoticesOf(editor), Texts{"No serial number is entered for RT528A."});
    ClickTab(editor, 4);
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), Texts{""});
    Fill(editor, "txtTabSerial", "N4");
    Click(editor, "btnOk");
  });
  std::vector<Member> members = SetCMembers();
  members[3] = {"RT528A", "N4", {}};
  EXPECT_EQ(Saved(), FileOf(members));
}

TEST_F(OptionPage, RefusesASerialNumberThatIsASignForSwitching) {
  const std::vector<std::function<void(frmCalDataTabInput&)>> ways = {
      [](frmCalDataTabInput& editor) { ClickTab(editor, 2); },
      [](frmCalDataTabInput& editor) { Click(editor, "btnOk"); },
      [](frmCalDataTabInput& editor) { Click(editor, "chkCheck"); }};
  for (const QString sign : {"*", "/"}) {
    for (const auto& leave : ways) {
      Edit(Members(), [&](frmCalDataTabInput& editor) {
        ClickTab(editor, 4);
        TypeCell(editor, 1, 3, "0.5");
        Fill(editor, "txtTabSerial", sign);
        questions_.ExpectError({"\"" + FromQt(sign) + "\"", "serial number"});
        leave(editor);
        ASSERT_TRUE(editor.isVisible());
        EXPECT_EQ(SelectedTab(editor), 4);
        EXPECT_EQ(TextOf(editor, "txtTabSerial"), FromQt(sign));
        EXPECT_EQ(CellOf(GridOf(editor), 1, 3), "0.50000");
        EXPECT_TRUE(IsOn(editor));
      });
      EXPECT_EQ(Saved(), FileOf(Members()));
    }
  }
  // On another page it is a serial number, and an error of the header comes first.
  Edit(Members(), [&](frmCalDataTabInput& editor) {
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
