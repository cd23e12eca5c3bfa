// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SCREENS_CALDATA_TABEDITORFIXTURE_H
#define TARVELL_TESTS_SCREENS_CALDATA_TABEDITORFIXTURE_H

#include <QTabBar>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"
#include "support/ScriptedQuestions.h"
#include "support/SetModels.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell::test {

// Files of the sets, built line by line.

/// The values of the six header lines; dates are eight digits.
struct SetHeader {
  std::string model;
  std::string serial;
  std::string calDate = "20000131";
  std::string calNo = "T-1";
  std::string dueDate = "20010131";
  std::string comment = "template";
};

[[nodiscard]] inline Texts HeaderLines(const SetHeader& header) {
  return {"#MODEL_NO : " + header.model,
          "#SER_NO   : " + header.serial,
          "#CAL_DATE : " + header.calDate,
          "#CAL_NO   : " + header.calNo,
          "#DUE_DATE : " + header.dueDate,
          "#COMMENT  : " + header.comment,
          "!",
          "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)",
          "!"};
}

/// A member of a capacitor set. Each row holds the fields of the file: frequency, capacitance,
/// uncertainty in per cent, dissipation factor and its uncertainty.
struct Member {
  std::string name;
  std::string serial;
  std::vector<std::array<std::string, 5>> rows;
};

[[nodiscard]] inline Texts MemberLines(const Member& member) {
  Texts lines = {"#" + member.name + "    :     " + member.serial};
  for (const auto& [frequency, capacitance, uncertainty, factor, itsUncertainty] : member.rows) {
    lines.push_back(QString("*%1 : %2 : %3 : %4 :   %5")
                        .arg(ToQt(frequency), 13)
                        .arg(ToQt(capacitance), 16)
                        .arg(ToQt(uncertainty), 9)
                        .arg(ToQt(factor), 18)
                        .arg(ToQt(itsUncertainty))
                        .toStdString());
  }
  lines.insert(lines.end(), {"!END", "!"});
  return lines;
}

[[nodiscard]] inline std::string CapacitorFile(const SetHeader& header,
                                               const std::vector<Member>& members) {
  Texts lines = HeaderLines(header);
  for (const Member& member : members) {
    const Texts more = MemberLines(member);
    lines.insert(lines.end(), more.begin(), more.end());
  }
  return Lines(lines);
}

/// Set A. The editor shows the uncertainties of the first member as 12 ppm, 0.005 % and 60.000 ppm,
/// the others in ppm.
[[nodiscard]] inline std::vector<Member> SetAMembers() {
  return {{"RT521A",
           "M001",
           {{"1000", "1.000012pF", "0.0012", "0.00001", "0.00002"},
            {"10000", "1.00002pF", "0.005", "0.00003", "0.00004"},
            {"100000", "1.00003pF", "0.0060", "0.00005", "0.00006"}}},
          {"RT522A",
           "M002",
           {{"1000", "10.00001pF", "0.0030", "0.00011", "0.00012"},
            {"2000", "10.00002pF", "0.0200", "0.00013", "0.00014"}}},
          {"RT523A", "M003", {{"1000", "100.0001pF", "0.0010", "0.00021", "0.00022"}}},
          {"RT524A", "M004", {{"1000", "1000.001pF", "0.0040", "0.00031", "0.00032"}}}};
}

/// Set C with option 001. The editor shows the uncertainties in ppm.
[[nodiscard]] inline std::vector<Member> SetCMembers() {
  return {{"RT525A", "C001", {{"100", "10.0001nF", "0.0200", "0.00010", "0.00020"}}},
          {"RT526A", "C002", {{"100", "100.001nF", "0.0150", "0.00030", "0.00040"}}},
          {"RT527A", "C003", {{"100", "1.00001uF", "0.0100", "0.00050", "0.00060"}}},
          {"RT528A",
           "C004",
           {{"100", "10.0002uF", "0.0300", "0.00070", "0.00080"},
            {"1000", "10.0003uF", "0.0400", "0.00071", "0.00081"}}}};
}

/// The data lines of the seven pages of the resistor set.
using ResistorRows = std::array<Texts, 7>;

[[nodiscard]] inline std::string ResistorFile(const SetHeader& header, const ResistorRows& rows) {
  Texts lines = HeaderLines(header);
  for (std::size_t page = 0; page < rows.size(); ++page) {
    const Texts& titles = ResistorSet().openings.at(page);
    lines.insert(lines.end(), titles.begin(), titles.end());
    lines.insert(lines.end(), rows.at(page).begin(), rows.at(page).end());
    lines.emplace_back("!END");
  }
  return Lines(lines);
}

/// The editor shows the relative uncertainties 0.1 % and 12 ppm on the first page, 0.10 % and
/// 25.00 ppm on the third, and per cent on the others.
[[nodiscard]] inline ResistorRows SetRRows() {
  return {{{"*   RT731A :        1 mohm :     1.0000  mohm :       0.1 % ",
            "*   RT732A :       10 mohm :     10.000  mohm : 0.00120 %"},
           {"*   RT734A :          Ls/5 nH :  0.5 nH", "*   RT735A :        Ls/5.2 nH :  0.6 nH"},
           {"*        1 :   10.000 ohm :      0.10 % :      0.000 ohm :   0.010 ohm",
            "*        3 :   10.001 ohm :   0.00250 % :      0.001 ohm :   0.020 ohm"},
           {"*        1 :   100.00 ohm :      0.10 % :       0.00 ohm :    0.10 ohm"},
           {"*        1 :   1.0000 kohm :      0.10 % :         0.0 uS :      1.0 uS"},
           {"*        1 :   10.000 kohm :      0.10 % :        0.00 uS :     0.10 uS"},
           {"*        1 :   100.00 kohm :      0.20 % :       0.000 uS :    0.010 uS"}}};
}

// Controls of the editors.

[[nodiscard]] inline CalGrid& GridOf(QWidget& editor) {
  return *editor.findChild<CalGrid*>();
}

[[nodiscard]] inline QTabBar& TabsOf(QWidget& editor) {
  return Find<QTabBar>(editor, "tTab");
}

/// Clicks a tab; tabs count from 1.
inline void ClickTab(QWidget& editor, int tab) {
  QTabBar& tabs = TabsOf(editor);
  ASSERT_LE(tab, tabs.count());
  const QPoint centre = tabs.tabRect(tab - 1).center();
  ASSERT_TRUE(tabs.rect().contains(centre)) << "tab " << tab << " is out of sight";
  QTest::mouseClick(&tabs, Qt::LeftButton, {}, centre);
}

/// Goes to a tab by the Left and Right keys.
inline void KeyToTab(QWidget& editor, int tab) {
  QTabBar& tabs = TabsOf(editor);
  while (tabs.currentIndex() != tab - 1) {
    const int before = tabs.currentIndex();
    tabs.setFocus();
    Press(before < tab - 1 ? Qt::Key_Right : Qt::Key_Left);
    ASSERT_NE(tabs.currentIndex(), before);
  }
}

[[nodiscard]] inline Texts RowOf(QWidget& editor, int row) {
  Texts cells;
  for (int column = 0; column < GridOf(editor).model()->columnCount(); ++column) {
    cells.push_back(CellOf(GridOf(editor), row, column));
  }
  return cells;
}

/// The notices of an editor, the latest first.
[[nodiscard]] inline Texts NoticesOf(QWidget& screen) {
  Texts notices;
  for (const QString& notice : Find<NoticeLine>(screen, "notices").Notices()) {
    notices.push_back(notice.toStdString());
  }
  return notices;
}

/// Fills every field of the header except the serial number.
inline void FillHeader(QWidget& editor) {
  Fill(editor, "txtCalNo", "C-7");
  Fill(editor, "txtCalYear", "2010");
  Choose(editor, "cmbCalMonth", "APR");
  Fill(editor, "txtCalDay", "6");
  Fill(editor, "txtDueYear", "2011");
  Choose(editor, "cmbDueMonth", "FEB");
  Fill(editor, "txtDueDay", "7");
  Fill(editor, "txtComment", "lab");
}
/// The header after FillHeader.
[[nodiscard]] inline SetHeader FilledHeader(const std::string& model, const std::string& serial) {
  return {model, serial, "20100406", "C-7", "20110207", "lab"};
}

/// Replaces the text of a cell and presses Enter.
inline void TypeCell(QWidget& editor, int row, int column, const QString& text) {
  ClickCell(GridOf(editor), row, column);
  Type(text);
  Press(Qt::Key_Return);
}

[[nodiscard]] inline QLineEdit& CellBoxOf(QWidget& editor) {
  return Find<QLineEdit>(editor, "txtCell");
}

[[nodiscard]] inline QComboBox& UnitBoxOf(QWidget& editor) {
  return Find<QComboBox>(editor, "txtCellCmb");
}

/// No edit is open.
inline void ExpectClosed(QWidget& editor) {
  EXPECT_FALSE(CellBoxOf(editor).isVisible());
  EXPECT_FALSE(UnitBoxOf(editor).isVisible());
}

/// Opens the tabbed editor on templates and files that the test writes. `questions_` answers the
/// message boxes.
class TabEditorFixture : public testing::Test {
 protected:
  using Act = std::function<void(frmCalDataTabInput& editor)>;

  TabEditorFixture() { gCalibrationDir = R"(c:\calfactors)"; }

  void WriteTemplate(const std::string& model, const std::string& bytes) const {
    WriteNative(tree_.ProgramFolder() / ("Temp" + model), bytes);
  }

  /// Templates of all three sets.
  void WriteTemplates() const {
    WriteTemplate("RT520A", CapacitorFile({"RT520A", "TPLA0"}, SetAMembers()));
    WriteTemplate("RT520C", CapacitorFile({"RT520C", "TPLC0"}, SetCMembers()));
    WriteTemplate("RT730A", ResistorFile({"RT730A", "TPLR0"}, SetRRows()));
  }

  /// Edits new data. Makes the folder of the model first, as the menu does.
  void EditNew(const std::string& model, const Act& act) {
    frmCalDataTabInput editor(nullptr);
    EditNew(editor, model, act);
  }

  void EditNew(frmCalDataTabInput& editor, const std::string& model, const Act& act) {
    tree_.MakeFolders(gCalibrationDir + "\\" + model);
    user_.Within<frmCalDataTabInput>(act);
    editor.SetupDat(CalEditor::kNewData, model);
  }

  /// Edits the file at `path`, which a row of `gCalFiles` names.
  void EditFile(const std::string& model, const std::string& path, const Act& act) {
    constexpr std::int16_t kRow = 7;
    frmCalDataTabInput editor(nullptr);
    gCalFiles.at(kRow).FilePath = path;
    user_.Within<frmCalDataTabInput>(act);
    editor.SetupDat(kRow, model);
  }

  TestTree tree_;
  ScriptedQuestions questions_;
  User user_;
};

}  // namespace tarvell::test

#endif
