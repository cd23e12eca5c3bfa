// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QMenu>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/TabEditorFixture.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "support/ErrorOf.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// The lines of a file without the `nth` one, from 0, that equals `line`.
Texts Without(Texts lines, const std::string& line, int nth = 0) {
  for (auto found = lines.begin(); found != lines.end(); ++found) {
    if (*found == line && nth-- == 0) {
      lines.erase(found);
      return lines;
    }
  }
  ADD_FAILURE() << "no line " << line;
  return lines;
}

Texts Joined(std::initializer_list<Texts> parts) {
  Texts lines;
  for (const Texts& part : parts) {
    lines.insert(lines.end(), part.begin(), part.end());
  }
  return lines;
}

/// The lines of a file of set A.
Texts SetALines(const std::vector<Member>& members = SetAMembers()) {
  Texts lines = HeaderLines({"RT520A", "00042"});
  for (const Member& member : members) {
    lines = Joined({lines, MemberLines(member)});
  }
  return lines;
}

/// Bytes of lines taken apart at CR LF.
Texts LinesOf(const std::string& bytes) {
  Texts lines;
  std::size_t start = 0;
  for (std::size_t end = bytes.find("\r\n"); end != std::string::npos;
       end = bytes.find("\r\n", start)) {
    lines.push_back(bytes.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

Texts ResistorLines(const ResistorRows& rows = SetRRows()) {
  return LinesOf(ResistorFile({"RT730A", "00042"}, rows));
}

/// Files and entries that cannot be right, from the list of the files on.
class TabBadInput : public TabEditorFixture {
 protected:
  TabBadInput() { WriteTemplates(); }

  /// Chooses the file 00042 of a model with these bytes and uses the screen that opens after a
  /// message with these parts; the screen is cancelled, and the file is as it was.
  void ExpectToldAndShown(const std::string& model, const std::string& bytes,
                          const std::vector<std::string>& parts, const Act& act) {
    const std::string path = PathOf(model);
    tree_.Write(path, bytes);
    questions_.ExpectError(parts);
    user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) { ChooseFile(screen, model); });
    user_.At<frmCalDataTabInput>([&](frmCalDataTabInput& editor) {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
      EXPECT_TRUE(Contains(questions_.details.back().toStdString(), "The file is as it was"));
      EXPECT_EQ(editor.windowTitle().toStdString(),
                "Editing calibraition data (" + model + " - 00042)");
      act(editor);
      Click(editor, "btnCancel");
    });
    user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
      ExpectAsBefore(screen, model);
      Click(screen, "btnReturn");
    });
    frmCalibrationMain menu(nullptr);
    menu.ShowModally();
    EXPECT_EQ(tree_.Read(path), bytes);
    EXPECT_EQ(tree_.Names(gCalibrationDir + "\\" + model), (Texts{"SN00042"}));
  }

  /// The same with a file that is refused: no screen opens.
  void ExpectRefused(const std::string& model, const std::string& bytes,
                     const std::vector<std::string>& parts) {
    const std::string path = PathOf(model);
    tree_.Write(path, bytes);
    questions_.ExpectError(parts);
    user_.At<frmCalibrationMain>([&](frmCalibrationMain& screen) {
      ChooseFile(screen, model);
      EXPECT_EQ(QApplication::activeModalWidget(), &screen) << "no editor has opened";
      ExpectAsBefore(screen, model);
      Click(screen, "btnReturn");
    });
    frmCalibrationMain menu(nullptr);
    menu.ShowModally();
    EXPECT_EQ(tree_.Read(path), bytes);
    EXPECT_EQ(tree_.Names(gCalibrationDir + "\\" + model), (Texts{"SN00042"}));
  }

  static std::string PathOf(const std::string& model) {
    return R"(c:\calfactors\)" + model + R"(\SN00042)";
  }

 private:
  static void ChooseFile(frmCalibrationMain& screen, const std::string& model) {
    EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
    ClickEntry(screen, "LstInstrment", QString::fromStdString(model));
    ClickEntry(screen, "lstSerialNumber", "00042");
    Click(screen, "btnEdit");
  }

  static void ExpectAsBefore(frmCalibrationMain& screen, const std::string& model) {
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), (Texts{model}));
    EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), (Texts{"00042"}));
    EXPECT_EQ(Find<QListWidget>(screen, "lstSerialNumber").currentItem()->text(), "00042");
  }
};

TEST_F(TabBadInput, APageBlockWithoutItsEndIsTold) {
  // The second "!END" and the "!" behind it.
  const Texts whole = SetALines();
  Texts lines = Without(whole, "!END", 1);
  const auto next = std::find(lines.begin(), lines.end(), "#RT523A    :     M003");
  ASSERT_NE(next, lines.end());
  ASSERT_EQ(*(next - 1), "!");
  lines.erase(next - 1);
  ExpectToldAndShown(
      "RT520A", Lines(lines), {"RT522A", "!END", "RT523A"}, [](frmCalDataTabInput& editor) {
        EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M001");
        EXPECT_EQ(GridOf(editor).Data().RowCount(), 4);
        ClickTab(editor, 2);
        EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M002");
        // The page line and the rows of the next page, taken for its own.
        EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"1000", "2000", "RT523A", "1000"}));
        ClickTab(editor, 3);
        EXPECT_EQ(RowOf(editor, 1), (Texts{"1000", "100.0001pF", "0.0010 %", "0.00021", "0.00022"}))
            << "the template's";
        ClickTab(editor, 4);
        EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M004");
      });
}

TEST_F(TabBadInput, APageBlockThatTheEndOfTheFileCutsOffIsTold) {
  // Without the last "!END" and "!" the file ends with a data line, which is not read.
  std::vector<Member> members = SetAMembers();
  members[3].rows.push_back({"2000", "1000.002pF", "0.0050", "0.00033", "0.00034"});
  Texts lines = SetALines(members);
  lines.resize(lines.size() - 2);
  ExpectToldAndShown("RT520A", Lines(lines), {"RT524A", "!END"}, [](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"1000"}));
  });
}

TEST_F(TabBadInput, ASectionWithoutItsEndIsTold) {
  ExpectToldAndShown(
      "RT730A", Lines(Without(ResistorLines(), "!END", 2)),
      {"HF Calibration at 10ohm", "!END", "HF Calibration at 100ohm"},
      [](frmCalDataTabInput& editor) {
        KeyToTab(editor, 3);
        EXPECT_EQ(ColumnOf(GridOf(editor), 0),
                  (Texts{"1", "3", "100 ohm (MODEL QZ RT736A)", "Frequency", "1"}));
        KeyToTab(editor, 4);
        EXPECT_EQ(RowOf(editor, 1), (Texts{"1", "100.00 ohm", "0.10 %", "0.00 ohm", "0.10 ohm"}))
            << "the template's";
      });
}

TEST_F(TabBadInput, APageLineThatStandsTwiceIsTold) {
  const Member again = {"RT521A", "M009", {{"500", "1.000500pF", "0.0015", "0.00009", "0.00008"}}};
  ExpectToldAndShown(
      "RT520A", Lines(Joined({SetALines(), MemberLines(again)})), {"RT521A", "more than once"},
      [](frmCalDataTabInput& editor) {
        EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M009");
        EXPECT_EQ(RowOf(editor, 1), (Texts{"500", "1.000500pF", "15 ppm", "0.00009", "0.00008"}));
        EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"500", "10000", "100000"}))
            << "the earlier one's further rows stay";
      });
}

TEST_F(TabBadInput, ASectionThatStandsTwiceIsTold) {
  const Texts again = {"!", "!Series Inductance and/or Parallel Capacitance at 1MHz",
                       "!Model     : Calibrated Value : Unc.(%)",
                       "*   RT734A :          Ls/7 nH :  0.7 nH", "!END"};
  ExpectToldAndShown("RT730A", Lines(Joined({ResistorLines(), again})),
                     {"Indactance / Parallel Capacitance", "more than once"},
                     [](frmCalDataTabInput& editor) {
                       KeyToTab(editor, 2);
                       EXPECT_EQ(RowOf(editor, 1), (Texts{"RT734A", "Ls/7 nH", "0.7 nH", "", ""}));
                       EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"RT734A", "RT735A"}));
                     });
}

TEST_F(TabBadInput, FiftyTwoRowsInAPageAreRefused) {
  std::vector<Member> members = SetAMembers();
  members[0].rows.clear();
  for (int row = 1; row <= 52; ++row) {
    members[0].rows.push_back({std::to_string(row), "1.0000pF", "0.0012", "0.00001", "0.00002"});
  }
  // Nine lines, the page line, and the 52nd row.
  ExpectRefused("RT520A", Lines(SetALines(members)), {"51", PathOf("RT520A"), "line 62"});
}

TEST_F(TabBadInput, FiftyTwoRowsInASectionAreRefused) {
  ResistorRows rows = SetRRows();
  rows[2].clear();
  for (int row = 1; row <= 52; ++row) {
    rows[2].push_back("*" + AtRight(std::to_string(row), 9) +
                      " :   10.000 ohm :      0.10 % :      0.000 ohm :   0.010 ohm");
  }
  // Nine lines, six of the first page, six of the second, four titles, and the 52nd row.
  ExpectRefused("RT730A", ResistorFile({"RT730A", "00042"}, rows),
                {"51", PathOf("RT730A"), "line 77"});
}

TEST_F(TabBadInput, SeventeenWordsOnADataLineAreRefused) {
  Texts lines = SetALines();
  ASSERT_EQ(lines[9], "#RT521A    :     M001");
  lines[11] = "* 10000 : 1.00002pF : 0.005 : 0.00003 : 0.00004 6 7 8 9 10 11 12 13 14 15 16 17";
  ExpectRefused("RT520A", Lines(lines), {PathOf("RT520A"), "line 12"});
}

TEST_F(TabBadInput, SixteenWordsOnADataLineAreRead) {
  Texts lines = SetALines();
  lines[11] = "* 10000 : 1.00002pF : 0.005 : 0.00003 : 0.00004 6 7 8 9 10 11 12 13 14 15 16";
  tree_.Write(PathOf("RT520A"), Lines(lines));
  EditFile("RT520A", PathOf("RT520A"), [](frmCalDataTabInput& editor) {
    EXPECT_EQ(RowOf(editor, 2), (Texts{"10000", "1.00002pF", "0.005 %", "0.00003", "0.00004"}));
  });
}

TEST_F(TabBadInput, SevenColumnsOnALineOfTheResistorSetAreRefused) {
  Texts lines = ResistorLines();
  ASSERT_EQ(lines[12], "*   RT731A :        1 mohm :     1.0000  mohm :       0.1 % ");
  lines[12] = "* RT731A : 1 mohm : 1.0000  mohm : 0.1 % : 5 : 6 : 7";
  ExpectRefused("RT730A", Lines(lines), {PathOf("RT730A"), "line 13"});
}

TEST_F(TabBadInput, AFileOfAnotherSetIsTold) {
  Texts lines = HeaderLines({"RT520C", "00042"});
  for (const Member& member : SetCMembers()) {
    lines = Joined({lines, MemberLines(member)});
  }
  ExpectToldAndShown("RT520A", Lines(lines),
                     {"\"RT520C\"", "\"RT520A\"", "RT521A", "RT522A", "RT523A", "RT524A"},
                     [](frmCalDataTabInput& editor) {
                       EXPECT_EQ(TextOf(editor, "txtModel"), "RT520A");
                       EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M001") << "the template's";
                     });
}

TEST_F(TabBadInput, AFileOfAnotherFamilyIsTold) {
  ExpectToldAndShown(
      "RT730A", CapacitorFile({"RT520A", "00042"}, SetAMembers()),
      {"\"RT520A\"", "\"RT730A\"", "DC Registance", "HF Calibration at 100kohm"},
      [](frmCalDataTabInput& editor) {
        EXPECT_EQ(RowOf(editor, 1), (Texts{"RT731A", "1 mohm", "1.0000  mohm", "0.1 %", ""}))
            << "the template's";
      });
}

TEST_F(TabBadInput, AnExistingFileOpensWithoutItsTemplate) {
  for (const std::string model : {"RT520A", "RT520C", "RT730A"}) {
    std::filesystem::remove(tree_.ProgramFolder() / ("Temp" + model));
  }
  ExpectToldAndShown("RT520A", Lines(SetALines()), {"TempRT520A", "nothing that the file lacks"},
                     [](frmCalDataTabInput& editor) {
                       EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M001");
                       EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "1.000012pF");
                     });
  std::filesystem::remove_all(tree_.Native(R"(c:\calfactors\RT520A)"));
  ExpectToldAndShown(
      "RT520C", CapacitorFile({"RT520C", "00042"}, SetCMembers()), {"TempRT520C"},
      [](frmCalDataTabInput& editor) { EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "10.0001nF"); });
  std::filesystem::remove_all(tree_.Native(R"(c:\calfactors\RT520C)"));
  ExpectToldAndShown(
      "RT730A", Lines(ResistorLines()), {"TempRT730A"},
      [](frmCalDataTabInput& editor) { EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "1 mohm"); });
}

TEST_F(TabBadInput, AMissingTemplateForNewDataIsTold) {
  std::filesystem::remove(tree_.ProgramFolder() / "TempRT520A");
  tree_.MakeFolders(gCalibrationDir);
  questions_.ExpectError({"TempRT520A"});
  user_.At<frmCalibrationMain>([](frmCalibrationMain& screen) { Click(screen, "btnAdd"); });
  user_.At<QMenu>([](QMenu& add) { ClickModel(add, "RT520A"); });
  user_.At<frmCalibrationMain>([](frmCalibrationMain& screen) {
    Settle();
    EXPECT_EQ(QApplication::activeModalWidget(), &screen) << "no editor has opened";
    Click(screen, "btnReturn");
  });
  frmCalibrationMain menu(nullptr);
  menu.ShowModally();
  EXPECT_TRUE(tree_.Names(R"(c:\calfactors\RT520A)").empty());
}

TEST_F(TabBadInput, APageTitleThatIsCutOffIsTold) {
  Texts lines = SetALines();
  std::replace(lines.begin(), lines.end(), std::string("#RT523A    :     M003"),
               std::string("#RT52"));
  ExpectToldAndShown("RT520A", Lines(lines), {"RT523A"}, [](frmCalDataTabInput& editor) {
    ClickTab(editor, 3);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M003") << "the template's";
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"100.0001pF"}));
    ClickTab(editor, 4);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M004");
  });
}

TEST_F(TabBadInput, ASectionTitleThatIsCutOffIsTold) {
  Texts lines = ResistorLines();
  std::replace(lines.begin(), lines.end(), std::string("!DC Resistance"), std::string("!D"));
  ExpectToldAndShown("RT730A", Lines(lines), {"DC Registance"}, [](frmCalDataTabInput& editor) {
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"RT731A", "RT732A"})) << "the template's";
    KeyToTab(editor, 2);
    EXPECT_EQ(RowOf(editor, 1), (Texts{"RT734A", "Ls/5 nH", "0.5 nH", "", ""}));
  });
}

TEST_F(TabBadInput, APageTitleWithinWhichTheFileEndsIsTold) {
  const std::string setA = Lines(SetALines());
  ExpectToldAndShown("RT520A", setA.substr(0, setA.find("#RT524A") + 10), {"RT524A"},
                     [](frmCalDataTabInput& editor) {
                       ClickTab(editor, 4);
                       EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M004") << "the template's";
                     });
}

TEST_F(TabBadInput, ASectionTitleWithinWhichTheFileEndsIsTold) {
  const std::string resistors = Lines(ResistorLines());
  ExpectToldAndShown(
      "RT730A", resistors.substr(0, resistors.find("! 100 kohm") + 14),
      {"HF Calibration at 100kohm"}, [](frmCalDataTabInput& editor) {
        KeyToTab(editor, 7);
        EXPECT_EQ(RowOf(editor, 1), (Texts{"1", "100.00 kohm", "0.20 %", "0.000 uS", "0.010 uS"}))
            << "the template's";
      });
}

TEST_F(TabBadInput, ATitleThatIsCutOffIsWholeAgainWhenTheFileIsSaved) {
  Texts lines = ResistorLines();
  std::replace(lines.begin(), lines.end(), std::string("!DC Resistance"), std::string("!D"));
  tree_.Write(PathOf("RT730A"), Lines(lines));
  questions_.ExpectError({"DC Registance"});
  EditFile("RT730A", PathOf("RT730A"), [](frmCalDataTabInput& editor) { Click(editor, "btnOk"); });
  EXPECT_EQ(tree_.Read(PathOf("RT730A")), Lines(ResistorLines()));
}

TEST_F(TabBadInput, MembersWithoutASerialNumberAreReportedAndTheDataAreSaved) {
  tree_.Write(PathOf("RT520A"), Lines(SetALines(SetAMembersSaved())));
  EditFile("RT520A", PathOf("RT520A"), [&](frmCalDataTabInput& editor) {
    EXPECT_EQ(NoticesOf(editor), Texts());
    ClickTab(editor, 2);
    Fill(editor, "txtTabSerial", "");
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "");
    EXPECT_EQ(NoticesOf(editor), Texts{"No serial number is entered for RT522A, RT524A."});
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  std::vector<Member> members = SetAMembersSaved();
  members[1].serial = "";
  members[3].serial = "";
  EXPECT_EQ(tree_.Read(PathOf("RT520A")), Lines(SetALines(members)));
}

TEST_F(TabBadInput, NewDataOfASetHaveNoMemberSerialNumbersYet) {
  std::vector<Member> members = SetCMembersSaved();
  for (Member& member : members) {
    member.serial = "";
  }
  WriteTemplate("RT520C", CapacitorFile({"RT520C", "TPLC0"}, members));
  EditNew("RT520C", [&](frmCalDataTabInput& editor) {
    EXPECT_EQ(NoticesOf(editor),
              Texts{"No serial number is entered for RT525A, RT526A, RT527A, RT528A."});
    Click(editor, "chkCheck");
    Fill(editor, "txtTabSerial", "C001");
    EXPECT_EQ(NoticesOf(editor), Texts{"No serial number is entered for RT526A, RT527A."});
  });
}

TEST_F(TabBadInput, OfAMemberSerialNumberOnlyTheFirstWordComesBack) {
  tree_.Write(PathOf("RT520A"), Lines(SetALines(SetAMembersSaved())));
  EditFile("RT520A", PathOf("RT520A"), [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtTabSerial", "12 34");
    const std::string notice =
        "Serial number of RT521A: only \"12\" will be read back when the file is opened again.";
    EXPECT_EQ(NoticesOf(editor), Texts{notice});
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtTabSerial")).toStdString(), notice);
    Fill(editor, "txtTabSerial", "1234");
    EXPECT_EQ(NoticesOf(editor), Texts());
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtTabSerial")), "");
  });
}

TEST_F(TabBadInput, TheMemberOfAPageThatIsSwitchedOffIsNotReported) {
  WriteTemplate("RT520C", CapacitorFile({"RT520C", "TPLC0"}, SetCMembersSaved()));
  EditNew("RT520C", [&](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "12 34");
    EXPECT_EQ(NoticesOf(editor).size(), 1U);
    Click(editor, "chkCheck");
    EXPECT_EQ(NoticesOf(editor), Texts());
  });
}

TEST_F(TabBadInput, TheResistorSetHasNoPlaceForMemberSerialNumbersAndReportsNone) {
  EditNew("RT730A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtTabSerial", "12 34");
    EXPECT_EQ(NoticesOf(editor), Texts());
  });
}

TEST_F(TabBadInput, AnUncertaintyThatTheFileKeepsDifferentlyIsReportedAndMarked) {
  tree_.Write(PathOf("RT520A"), Lines(SetALines(SetAMembersSaved())));
  EditFile("RT520A", PathOf("RT520A"), [&](frmCalDataTabInput& editor) {
    // The third row is shown in ppm.
    TypeCell(editor, 3, 2, "12.3456");
    EXPECT_EQ(CellOf(GridOf(editor), 3, 2), "12.346 ppm");
    const std::string notice =
        "The cell shows \"12.346 ppm\", and the file will give back \"12.000 ppm\".";
    EXPECT_EQ(NoticesOf(editor), Texts{"100000, Unc. of Capacitance[pF]: " + notice});
    EXPECT_EQ(GridOf(editor).Model().NoteAt(3, 2).toStdString(), notice);
    // It stays marked from page to page, until it is edited again.
    ClickTab(editor, 2);
    EXPECT_EQ(NoticesOf(editor),
              Texts{"On the page RT521A: 100000, Unc. of Capacitance[pF]: " + notice});
    ClickTab(editor, 1);
    EXPECT_EQ(GridOf(editor).Model().NoteAt(3, 2).toStdString(), notice);
    TypeCell(editor, 3, 2, "12");
    EXPECT_EQ(GridOf(editor).Model().NoteAt(3, 2), "");
    EXPECT_EQ(NoticesOf(editor), Texts());
  });
}

TEST_F(TabBadInput, AMemberThatIsNotThereNeedsNoSerialNumber) {
  std::vector<Member> members = SetCMembers();
  tree_.Write(PathOf("RT520C"), CapacitorFile({"RT520C", "00042"}, members));
  EditFile("RT520C", PathOf("RT520C"), [](frmCalDataTabInput& editor) {
    ClickTab(editor, 4);
    Fill(editor, "txtTabSerial", "");
    Click(editor, "chkCheck");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  members = SetCMembersSaved();
  members.pop_back();
  EXPECT_EQ(tree_.Read(PathOf("RT520C")), CapacitorFile({"RT520C", "00042"}, members));
}

TEST_F(TabBadInput, OkWithAnEmptySetSerialNumberStoresTheOpenEditAndIsRefused) {
  EditNew("RT520A", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtCalNo", "C-9");
    Choose(editor, "cmbCalMonth", "MAY");
    Fill(editor, "txtCalDay", "30");
    Fill(editor, "txtTabSerial", "N1");
    TypeCell(editor, 2, 1, "2");
    ClickTab(editor, 2);
    Fill(editor, "txtTabSerial", "N2");
    ClickCell(GridOf(editor), 1, 2);
    Type("0.5");
    Choose(editor, "txtCellCmb", "%");
    questions_.ExpectNotice("Please input serial number");
    Click(editor, "btnOk");
    ASSERT_TRUE(editor.isVisible());
    EXPECT_TRUE(tree_.Names(R"(c:\calfactors\RT520A)").empty());
    EXPECT_FALSE(CellBoxOf(editor).isVisible());
    EXPECT_FALSE(UnitBoxOf(editor).isVisible());
    EXPECT_EQ(CellOf(GridOf(editor), 1, 2), "0.5000 %") << "the edit was stored first";
    EXPECT_EQ(SelectedTab(editor), 2);
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "N2");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "");
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-9");
    EXPECT_EQ(ComboText(editor, "cmbCalMonth"), "MAY");
    Fill(editor, "txtSerial", "00042");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  std::vector<Member> members = SetAMembersSaved();
  members[0].serial = "N1";
  members[0].rows[1][1] = "2.00000pF";
  members[1].serial = "N2";
  members[1].rows[0][2] = "0.5000";
  EXPECT_EQ(tree_.Read(PathOf("RT520A")),
            CapacitorFile({"RT520A", "00042", "20000530", "C-9"}, members));
}

TEST_F(TabBadInput, OkWithAnEmptySetSerialNumberIsToldBeforeAnythingElse) {
  // Neither the missing serial number of the member nor the day is looked at yet.
  EditNew("RT520C", [&](frmCalDataTabInput& editor) {
    Fill(editor, "txtTabSerial", "");
    Fill(editor, "txtCalDay", "x");
    questions_.ExpectNotice("Please input serial number");
    Click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "x");
  });
  EXPECT_TRUE(tree_.Names(R"(c:\calfactors\RT520C)").empty());
}

}  // namespace
}  // namespace tarvell
