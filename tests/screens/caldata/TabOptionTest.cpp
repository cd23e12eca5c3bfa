// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCheckBox>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screens/caldata/CalGrid.h"
#include "screens/caldata/TabEditorFixture.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

const Texts kThreeTabs = {"RT525A", "RT526A", "RT527A"};
const Texts kFourTabs = {"RT525A", "RT526A", "RT527A", "RT528A"};

QCheckBox& OptionOf(QWidget& editor) {
  return Find<QCheckBox>(editor, "chkCheck");
}

std::vector<Member> WithoutOption(std::vector<Member> members) {
  members.pop_back();
  return members;
}

/// Set C and its option 001, the fourth member.
class TabOption : public TabEditorFixture {
 protected:
  TabOption() { WriteTemplates(); }

  /// A file whose members differ from the template's in the serial numbers, K001 and so on.
  void WriteFile(bool withOption) const {
    tree_.Write(kPath, FileOf(withOption ? Members() : WithoutOption(Members())));
  }

  static std::vector<Member> Members() {
    std::vector<Member> members = SetCMembersSaved();
    for (Member& member : members) {
      member.serial.front() = 'K';
    }
    // As a value in per cent is read back: five characters at most stand for it.
    members[1].rows[0][2] = "0.015";
    return members;
  }

  static std::vector<Member> MembersSaved() {
    std::vector<Member> members = Members();
    members[1].rows[0][2] = "0.0150";
    return members;
  }

  static std::string FileOf(const std::vector<Member>& members) {
    return CapacitorFile({"RT520C", "9000C00042"}, members);
  }

  void Edit(const Act& act) { EditFile("RT520C", kPath, act); }

  static constexpr const char* kPath = R"(c:\calfactors\RT520C\SN00042)";
};

TEST_F(TabOption, IsOfferedForSetCAlone) {
  EditNew("RT520C", [](frmCalDataTabInput& editor) {
    EXPECT_TRUE(OptionOf(editor).isVisible());
    EXPECT_EQ(OptionOf(editor).text(), "Opt 001 (Add 10uF)");
  });
  for (const char* model : {"RT520A", "RT730A"}) {
    EditNew(model, [](frmCalDataTabInput& editor) {
      EXPECT_FALSE(OptionOf(editor).isVisible());
      EXPECT_FALSE(OptionOf(editor).isChecked());
    });
  }
}

TEST_F(TabOption, IsCheckedWhenTheFileHasTheFourthMember) {
  WriteFile(true);
  Edit([](frmCalDataTabInput& editor) {
    EXPECT_TRUE(OptionOf(editor).isChecked());
    EXPECT_EQ(TitlesOf(editor), kFourTabs);
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K004");
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(kPath), FileOf(MembersSaved()));
}

TEST_F(TabOption, AbsentInTheFileItIsUncheckedAndStaysAbsent) {
  WriteFile(false);
  Edit([](frmCalDataTabInput& editor) {
    EXPECT_FALSE(OptionOf(editor).isChecked());
    EXPECT_EQ(TitlesOf(editor), kThreeTabs);
    ClickTab(editor, 3);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K003");
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(kPath), FileOf(WithoutOption(MembersSaved())));
}

TEST_F(TabOption, CheckedItAddsTheTemplatesFourthMember) {
  WriteFile(false);
  Edit([](frmCalDataTabInput& editor) {
    ClickTab(editor, 2);
    ClickCell(GridOf(editor), 1, 1);
    Type("100.5");
    Click(editor, "chkCheck");
    EXPECT_TRUE(OptionOf(editor).isChecked());
    EXPECT_EQ(TitlesOf(editor), kFourTabs);
    EXPECT_EQ(SelectedTab(editor), 2) << "the page that is shown stays";
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K002");
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C004");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"100", "10.0002uF", "300 ppm", "0.00070", "0.00080"}));
    EXPECT_EQ(RowOf(editor, 2), (Texts{"1000", "10.0003uF", "400 ppm", "0.00071", "0.00081"}));
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 3);
    ClickTab(editor, 2);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "100.500nF");
    Click(editor, "btnOk");
  });
  std::vector<Member> members = MembersSaved();
  members[1].rows[0][1] = "100.500nF";
  members[3].serial = "C004";
  EXPECT_EQ(tree_.Read(kPath), FileOf(members));
}

TEST_F(TabOption, UncheckedOnAnotherTabItStoresThatTabAndLeavesTheFourthOut) {
  WriteFile(true);
  Edit([](frmCalDataTabInput& editor) {
    ClickTab(editor, 2);
    Fill(editor, "txtTabSerial", "N2");
    ClickCell(GridOf(editor), 1, 1);
    Type("100.5");
    Click(editor, "chkCheck");
    EXPECT_FALSE(OptionOf(editor).isChecked());
    EXPECT_EQ(TitlesOf(editor), kThreeTabs);
    EXPECT_EQ(SelectedTab(editor), 2);
    EXPECT_FALSE(CellBoxOf(editor).isVisible());
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N2");
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "100.500nF");
    Click(editor, "btnOk");
  });
  std::vector<Member> members = WithoutOption(MembersSaved());
  members[1].serial = "N2";
  members[1].rows[0][1] = "100.500nF";
  EXPECT_EQ(tree_.Read(kPath), FileOf(members));
}

TEST_F(TabOption, UncheckedOnItsOwnTabItRemembersRowsAndSerialNumber) {
  WriteFile(true);
  Edit([](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "N4");
    TypeCell(editor, 1, 1, "9.5");
    ClickCell(GridOf(editor), 2, 2);
    Type("0.0123");
    Choose(editor, "txtCellCmb", "%");
    Click(editor, "chkCheck");
    EXPECT_FALSE(OptionOf(editor).isChecked());
    EXPECT_EQ(TitlesOf(editor), kThreeTabs);
    EXPECT_FALSE(CellBoxOf(editor).isVisible());
    EXPECT_FALSE(UnitBoxOf(editor).isVisible());
    EXPECT_EQ(SelectedTab(editor), 3);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K003");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"100", "1.00001uF", "100 ppm", "0.00050", "0.00060"}));
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 2);
    ClickTab(editor, 1);
    Click(editor, "chkCheck");
    EXPECT_EQ(TitlesOf(editor), kFourTabs);
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N4");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"100", "9.5000uF", "300 ppm", "0.00070", "0.00080"}));
    EXPECT_EQ(RowOf(editor, 2), (Texts{"1000", "10.0003uF", "0.0123 %", "0.00071", "0.00081"}));
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 3);
    Click(editor, "btnOk");
  });
  std::vector<Member> members = MembersSaved();
  members[3].serial = "N4";
  members[3].rows[0][1] = "9.5000uF";
  members[3].rows[1][2] = "0.0123";
  EXPECT_EQ(tree_.Read(kPath), FileOf(members));
}

TEST_F(TabOption, SwitchedOffItIsLeftOutOfTheFileAndComesBackAsTheTemplates) {
  WriteFile(true);
  Edit([](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "N4");
    Click(editor, "chkCheck");
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(kPath), FileOf(WithoutOption(MembersSaved())));
  Edit([](frmCalDataTabInput& editor) {
    EXPECT_FALSE(OptionOf(editor).isChecked());
    EXPECT_EQ(TitlesOf(editor), kThreeTabs);
    Click(editor, "chkCheck");
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "C004");
  });
}

TEST_F(TabOption, TheBlankSwitchesItAsOftenAsWanted) {
  WriteFile(true);
  Edit([](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    OptionOf(editor).setFocus();
    for (int i = 0; i < 3; ++i) {
      Press(Qt::Key_Space);
      EXPECT_FALSE(OptionOf(editor).isChecked());
      EXPECT_EQ(TitlesOf(editor), kThreeTabs);
      Press(Qt::Key_Space);
      EXPECT_TRUE(OptionOf(editor).isChecked());
      EXPECT_EQ(TitlesOf(editor), kFourTabs);
    }
    for (int tab = 1; tab <= 4; ++tab) {
      ClickTab(editor, tab);
      EXPECT_EQ(TextOf(editor, "txtTabSerial"), "K00" + std::to_string(tab));
    }
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(kPath), FileOf(MembersSaved()));
}

TEST_F(TabOption, SwitchedAndCancelledItChangesNothing) {
  WriteFile(true);
  Edit([](frmCalDataTabInput& editor) {
    Click(editor, "chkCheck");
    Click(editor, "btnCancel");
  });
  EXPECT_EQ(tree_.Read(kPath), FileOf(Members()));
  Edit([](frmCalDataTabInput& editor) { EXPECT_TRUE(OptionOf(editor).isChecked()); });
}

TEST_F(TabOption, ATemplateWithoutItLeavesTheFourthMemberEmpty) {
  WriteTemplate("RT520C", CapacitorFile({"RT520C", "TPLC0"}, WithoutOption(SetCMembers())));
  EditNew("RT520C", [&](frmCalDataTabInput& editor) {
    EXPECT_FALSE(OptionOf(editor).isChecked());
    EXPECT_EQ(TitlesOf(editor), kThreeTabs);
    Fill(editor, "txtSerial", "00001");
    Click(editor, "chkCheck");
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "");
    EXPECT_EQ(CellOf(GridOf(editor), 0, 1), "Capacitance[uF]");
    EXPECT_EQ(RowOf(editor, 1), (Texts{"", "", "", "", ""}));
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 2);
    Fill(editor, "txtTabSerial", "N4");
    Click(editor, "btnOk");
  });
  std::vector<Member> members = SetCMembersSaved();
  members[3] = {"RT528A", "N4", {}};
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\RT520C\SN00001)"),
            CapacitorFile({"RT520C", "00001"}, members));
}

TEST_F(TabOption, ASignTypedAsASerialNumberIsRefusedOnATabChange) {
  WriteFile(true);
  for (const QString sign : {"*", "/"}) {
    {
      constexpr int tab = 4;
      SCOPED_TRACE(sign.toStdString());
      Edit([&](frmCalDataTabInput& editor) {
        ClickTab(editor, tab);
        TypeCell(editor, 1, 3, "0.5");
        Fill(editor, "txtTabSerial", sign);
        questions_.ExpectError({"\"" + sign.toStdString() + "\"", "serial number"});
        ClickTab(editor, 2);
        EXPECT_EQ(SelectedTab(editor), tab);
        EXPECT_EQ(TextOf(editor, "txtTabSerial"), sign.toStdString());
        EXPECT_EQ(CellOf(GridOf(editor), 1, 3), "0.50000");
        EXPECT_EQ(TitlesOf(editor), kFourTabs);
        EXPECT_TRUE(OptionOf(editor).isChecked());
        // Corrected, the tab can be left.
        Fill(editor, "txtTabSerial", sign + "1");
        ClickTab(editor, 2);
        EXPECT_EQ(SelectedTab(editor), 2);
        ClickTab(editor, tab);
        EXPECT_EQ(TextOf(editor, "txtTabSerial"), sign.toStdString() + "1");
        EXPECT_EQ(CellOf(GridOf(editor), 1, 3), "0.50000");
      });
    }
  }
}

TEST_F(TabOption, ASignTypedAsASerialNumberIsRefusedAtOk) {
  WriteFile(true);
  for (const QString sign : {"*", "/"}) {
    SCOPED_TRACE(sign.toStdString());
    Edit([&](frmCalDataTabInput& editor) {
      Fill(editor, "txtComment", "kept");
      ClickTab(editor, 4);
      TypeCell(editor, 1, 3, "0.5");
      Fill(editor, "txtTabSerial", sign);
      questions_.ExpectError({"\"" + sign.toStdString() + "\"", "serial number"});
      Click(editor, "btnOk");
      ASSERT_TRUE(editor.isVisible());
      EXPECT_EQ(SelectedTab(editor), 4);
      EXPECT_EQ(TextOf(editor, "txtTabSerial"), sign.toStdString());
      EXPECT_EQ(TextOf(editor, "txtComment"), "kept");
      EXPECT_EQ(CellOf(GridOf(editor), 1, 3), "0.50000");
      EXPECT_EQ(tree_.Read(kPath), FileOf(Members()));
      EXPECT_EQ(tree_.Names(R"(c:\calfactors\RT520C)"), (Texts{"SN00042"}));
    });
  }
}

TEST_F(TabOption, ASignTypedAsASerialNumberKeepsTheOptionFromBeingSwitchedOff) {
  WriteFile(true);
  {
    constexpr int tab = 4;
    Edit([&](frmCalDataTabInput& editor) {
      ClickTab(editor, tab);
      TypeCell(editor, 1, 3, "0.5");
      Fill(editor, "txtTabSerial", "*");
      questions_.ExpectError({"\"*\"", "serial number"});
      Click(editor, "chkCheck");
      EXPECT_TRUE(OptionOf(editor).isChecked());
      EXPECT_EQ(TitlesOf(editor), kFourTabs);
      EXPECT_EQ(SelectedTab(editor), tab);
      EXPECT_EQ(TextOf(editor, "txtTabSerial"), "*");
      EXPECT_EQ(CellOf(GridOf(editor), 1, 3), "0.50000");
    });
  }
}

}  // namespace
}  // namespace tarvell
