// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "screens/caldata/TabEditorFixture.h"
#include "screens/main/ScreenFaults.h"
#include "support/FaultPlatform.h"
#include "support/SensorStage.h"

/// OK in the editors while a step of saving fails: it is told, the editor stays open with all that
/// was typed, and when the fault is gone OK saves it.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// Presses OK under every fault and then without one.
void PressOkUnderEachFault(const TestTree& tree, ScriptedQuestions& questions,
                           FaultPlatform& platform, QWidget& editor, const std::string& path,
                           const std::string& bytes,
                           const std::function<Texts(QWidget& editor)>& shown) {
  const std::string earlier = tree.Read(path);
  const std::string folder = path.substr(0, path.rfind('\\'));
  const Texts names = tree.Names(folder);
  const Texts typed = shown(editor);
  ASSERT_NE(std::find(typed.begin(), typed.end(), "txtComment=typed"), typed.end());
  ASSERT_NE(earlier, bytes);
  PressUnderEachFault(
      platform,
      [&](const ScreenFault& fault) {
        questions.ExpectError({"Cannot save the file: " + fault.reason, path});
        Click(editor, "btnOk");
        ASSERT_TRUE(editor.isVisible());
        EXPECT_EQ(shown(editor), typed);
        EXPECT_EQ(tree.Read(path), fault.isReplaced ? bytes : earlier);
        EXPECT_EQ(tree.Names(folder), names);
      },
      [&] {
        Click(editor, "btnOk");
        EXPECT_FALSE(editor.isVisible());
      });
  EXPECT_EQ(tree.Read(path), bytes);
  EXPECT_EQ(tree.Names(folder), names);
}

void TypeHeader(QWidget& editor) {
  Fill(editor, "txtCalNo", "C-7");
  Fill(editor, "txtCalYear", "2010");
  Choose(editor, "cmbCalMonth", "APR");
  Fill(editor, "txtCalDay", "6");
  Fill(editor, "txtDueYear", "2011");
  Choose(editor, "cmbDueMonth", "FEB");
  Fill(editor, "txtDueDay", "7");
  Fill(editor, "txtComment", "typed");
}

// ---- A table each.

class FaultAtTableEditor : public SensorStage {
 protected:
  /// Edits the file at `path`: the whole header, and `text` over a cell.
  void Edit(const std::string& model, const std::string& path, int column, const QString& text,
            const std::string& bytes) {
    FaultPlatform platform;
    gCalFiles[0].FilePath = path;
    ShowAgain(model, [&](frmCalDataInput& editor) {
      TypeHeader(editor);
      ClickCell(GridOf(editor), 1, column);
      Type(text);
      Press(Qt::Key_Return);
      PressOkUnderEachFault(tree_, questions_, platform, editor, path, bytes,
                            [](QWidget& screen) { return TextsOn(screen); });
    });
  }
};

TEST_F(FaultAtTableEditor, OfASensorKeepsWhatWasTyped) {
  SensorFile file;
  file.rows = {{"0.10", "98.8"}, {"50.00", "100.0"}};
  const std::string path = R"(c:\calfactors\PX12A\SN12345)";
  tree_.Write(path, file.Bytes());
  file.calNo = "C-7";
  file.calDate = "20100406";
  file.dueDate = "20110207";
  file.comment = "typed";
  file.rows.at(0).second = "91.5";
  Edit("PX12A", path, 1, "91.5", file.Bytes());
}

TEST_F(FaultAtTableEditor, OfAnAttenuatorKeepsWhatWasTyped) {
  const std::string path = R"(c:\calfactors\PX60G\SN12345)";
  tree_.Write(path, Lines({"#MODEL_NO : PX60G", "#SER_NO   : 3318A12345", "#CAL_DATE : 20010305",
                           "#CAL_NO   : C-0042", "#DUE_DATE : 20020305", "#COMMENT  : factory", "!",
                           "! Setting  /  Freq  /  CalData ", "*  0  :   1.00E05   :   0.0512",
                           "* 10  :   5.00E07   :  10.0123", "!End"}));
  Edit("PX60G", path, 2, "0.25",
       Lines({"#MODEL_NO : PX60G", "#SER_NO   : 3318A12345", "#CAL_DATE : 20100406",
              "#CAL_NO   : C-7", "#DUE_DATE : 20110207", "#COMMENT  : typed", "!",
              "! Setting  /  Freq  /  CalData ", "*  0  :   1.00E05   :   0.2500",
              "* 10  :   5.00E07   :  10.0123", "!End"}));
}

// ---- A table on each tab.

class FaultAtTabEditor : public TabEditorFixture {
 protected:
  FaultAtTabEditor() { WriteTemplates(); }

  /// Edits the file at `path`: the whole header, and `text` over a cell of each of two tabs.
  void Edit(const std::string& model, const std::string& path, int column, const QString& text,
            int otherTab, int otherColumn, const QString& otherText, const std::string& bytes) {
    FaultPlatform platform;
    EditFile(model, path, [&](frmCalDataTabInput& editor) {
      TypeHeader(editor);
      TypeCell(editor, 1, column, text);
      ClickTab(editor, otherTab);
      TypeCell(editor, 1, otherColumn, otherText);
      PressOkUnderEachFault(tree_, questions_, platform, editor, path, bytes, &TextsOfTabs);
    });
  }

  /// The texts of every tab, one after the other.
  static Texts TextsOfTabs(QWidget& editor) {
    Texts texts;
    const int selected = SelectedTab(editor);
    for (int tab = 1; tab <= TabsOf(editor).count(); ++tab) {
      KeyToTab(editor, tab);
      const Texts shown = TextsOn(editor);
      texts.insert(texts.end(), shown.begin(), shown.end());
    }
    KeyToTab(editor, selected);
    return texts;
  }

  static SetHeader Typed(const std::string& model, const std::string& serial) {
    return {model, serial, "20100406", "C-7", "20110207", "typed"};
  }
};

TEST_F(FaultAtTabEditor, OfACapacitorSetKeepsWhatWasTyped) {
  const std::string path = R"(c:\calfactors\RT520A\SN05678)";
  tree_.Write(path, CapacitorFile({"RT520A", "1234A05678"}, SetAMembersSaved()));
  std::vector<Member> members = SetAMembersSaved();
  members[0].rows[0][3] = "0.00017";
  members[3].rows[0][4] = "0.00018";
  Edit("RT520A", path, 3, "0.00017", 4, 4, "0.00018",
       CapacitorFile(Typed("RT520A", "1234A05678"), members));
}

TEST_F(FaultAtTabEditor, OfTheOtherCapacitorSetKeepsWhatWasTyped) {
  const std::string path = R"(c:\calfactors\RT520C\SN05678)";
  tree_.Write(path, CapacitorFile({"RT520C", "1234C05678"}, SetCMembersSaved()));
  std::vector<Member> members = SetCMembersSaved();
  members[0].rows[0][3] = "0.00017";
  members[3].rows[0][4] = "0.00018";
  Edit("RT520C", path, 3, "0.00017", 4, 4, "0.00018",
       CapacitorFile(Typed("RT520C", "1234C05678"), members));
}

TEST_F(FaultAtTabEditor, OfTheResistorSetKeepsWhatWasTyped) {
  const std::string path = R"(c:\calfactors\RT730A\SN05678)";
  // Each with the unit and the decimals in which it is saved again.
  ResistorRows rows = SetRRows();
  rows[0][1] = "*   RT732A :       10 mohm :     10.000  mohm :       0.1 % ";
  rows[2][1] = "*        3 :   10.001 ohm :      0.25 % :      0.001 ohm :   0.020 ohm";
  tree_.Write(path, ResistorFile({"RT730A", "1234R05678"}, rows));
  rows[1][0] = "*   RT734A :          Ls/5 nH :  0.7 nH";
  rows[2][0] = "*        1 :   10.002 ohm :      0.10 % :      0.000 ohm :   0.010 ohm";
  FaultPlatform platform;
  EditFile("RT730A", path, [&](frmCalDataTabInput& editor) {
    TypeHeader(editor);
    ClickTab(editor, 2);
    TypeCell(editor, 1, 2, "0.7");
    ClickTab(editor, 3);
    TypeCell(editor, 1, 1, "10.002");
    PressOkUnderEachFault(tree_, questions_, platform, editor, path,
                          ResistorFile(Typed("RT730A", "1234R05678"), rows), &TextsOfTabs);
  });
}

}  // namespace
}  // namespace tarvell
