// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SCREENS_CALDATA_ATTENUATORFIXTURE_H
#define TARVELL_TESTS_SCREENS_CALDATA_ATTENUATORFIXTURE_H

#include <QMenu>
#include <QPushButton>
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/caldata/frmInputPX60H.h"
#include "screens/widgets/frmInput.h"
#include "support/DesktopTestPlatform.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell::test {

using Texts = std::vector<std::string>;

/// In what the two models differ on the screens and in the file.
struct Attenuator {
  const char* code;
  const char* frequencyCaption;
  const char* presetFrequency;
  const char* frequencyBelow;  ///< the entry below the preset one
  Texts commentLines;
};

[[nodiscard]] inline std::vector<Attenuator> Attenuators() {
  return {{"PX60H",
           "Frequency[Hz]",
           "5.00E07",
           "1.00E08",
           {"!", "! Setting  /  Freq  /  CalData ", "! 50M/1000MHz are calibration points."}},
          {"PX60G", "Freq[Hz]", "1.00E05", "3.00E05", {"!", "! Setting  /  Freq  /  CalData "}}};
}

inline void PrintTo(const Attenuator& attenuator, std::ostream* stream) {
  *stream << attenuator.code;
}

/// An operator's way from the calibration data menu to the file of an attenuator and back.
class AttenuatorStage : public testing::TestWithParam<Attenuator> {
 protected:
  AttenuatorStage() : platform_(tree_.ProgramFolder()) {
    gCalibrationDir = R"(c:\calfactors)";
    tree_.MakeFolders(gCalibrationDir);
  }

  [[nodiscard]] static std::string Code() { return GetParam().code; }
  [[nodiscard]] static std::string Folder() { return gCalibrationDir + "\\" + Code(); }
  [[nodiscard]] static std::string FileNamed(const std::string& name) {
    return Folder() + "\\" + name;
  }

  [[nodiscard]] static std::string FileOf(const Texts& header, const Texts& dataLines) {
    Texts lines = {"#MODEL_NO : " + Code()};
    lines.insert(lines.end(), header.begin(), header.end());
    lines.insert(lines.end(), GetParam().commentLines.begin(), GetParam().commentLines.end());
    lines.insert(lines.end(), dataLines.begin(), dataLines.end());
    lines.emplace_back("!End");
    return Lines(lines);
  }

  /// A file whose header tells the serial number and the dates of a template alone.
  [[nodiscard]] static std::string PlainFile(const std::string& serial, const Texts& dataLines) {
    return FileOf({"#SER_NO   : " + serial, "#CAL_DATE : 20000131",
                   "#CAL_NO   : ", "#DUE_DATE : 20010101", "#COMMENT  : "},
                  dataLines);
  }

  void WriteTemplate(const Texts& dataLines) const {
    WriteNative(tree_.ProgramFolder() / ("Temp" + Code()), PlainFile("", dataLines));
  }

  /// Data lines of the settings 1 to `count` at 50 MHz.
  [[nodiscard]] static Texts ManyLines(int count) {
    Texts lines;
    for (int i = 1; i <= count; ++i) {
      const std::string setting = (i < 10 ? " " : "") + std::to_string(i);
      lines.push_back("* " + setting + "  :   5.00E07   :  " + setting + ".0000");
    }
    return lines;
  }

  void Add(frmCalibrationMain& screen, const std::string& code,
           const std::function<void(frmCalDataInput& editor)>& act) {
    user_.At<QMenu>([code](QMenu& add) { ClickModel(add, QString::fromStdString(code)); });
    user_.At<frmCalDataInput>(act);
    Click(screen, "btnAdd");
  }

  void Edit(frmCalibrationMain& screen, const QString& serial,
            const std::function<void(frmCalDataInput& editor)>& act) {
    ClickEntry(screen, "LstInstrment", QString::fromStdString(Code()));
    ClickEntry(screen, "lstSerialNumber", serial);
    user_.At<frmCalDataInput>(act);
    Click(screen, "btnEdit");
  }

  /// Opens the calibration data menu, in which `steps` follow one another.
  void Run(const std::vector<std::function<void(frmCalibrationMain& screen)>>& steps) {
    frmCalibrationMain menu(nullptr);
    for (const auto& step : steps) {
      user_.At<frmCalibrationMain>(step);
    }
    user_.At<frmCalibrationMain>([](frmCalibrationMain& screen) { Click(screen, "btnReturn"); });
    menu.ShowModally();
  }

  /// Runs the editor for a new data set; what it does is all that happens.
  void WithNewData(const std::function<void(frmCalDataInput& editor, CalGrid& grid)>& act) {
    Run({[&](frmCalibrationMain& screen) {
      Add(screen, Code(),
          [&](frmCalDataInput& editor) { act(editor, Find<CalGrid>(editor, "Grid")); });
    }});
  }

  /// Asks for a new point and does in the point dialog what `act` says.
  void AskPoint(frmCalDataInput& editor, const std::function<void(frmInputPX60H& dialog)>& act) {
    user_.At<frmInputPX60H>(act);
    Click(editor, "btnAddPoint");
  }

  /// Adds a point by the entries of both lists.
  void ChoosePoint(frmCalDataInput& editor, const QString& setting, const QString& frequency) {
    AskPoint(editor, [=](frmInputPX60H& dialog) {
      Choose(dialog, "cmbSetting", setting);
      Choose(dialog, "cmbFreq", frequency);
      EXPECT_EQ(ComboText(dialog, "cmbSetting"), setting.toStdString());
      EXPECT_EQ(ComboText(dialog, "cmbFreq"), frequency.toStdString());
      Click(dialog, "btnOk");
    });
  }

  /// Adds a point by typing both texts and pressing Enter.
  void TypePoint(frmCalDataInput& editor, const QString& setting, const QString& frequency) {
    AskPoint(editor, [=](frmInputPX60H& dialog) {
      FillCombo(dialog, "cmbSetting", setting);
      FillCombo(dialog, "cmbFreq", frequency);
      EXPECT_EQ(ComboText(dialog, "cmbSetting"), setting.toStdString());
      EXPECT_EQ(ComboText(dialog, "cmbFreq"), frequency.toStdString());
      Press(Qt::Key_Return);
    });
  }

  /// Expects a message that holds each of these parts.
  void ExpectMessage(const Texts& parts) {
    user_.At<QMessageBox>([parts](QMessageBox& box) {
      EXPECT_EQ(box.windowTitle(), "Morrand Tarvell");
      EXPECT_EQ(box.standardButtons(), QMessageBox::StandardButtons(QMessageBox::Ok));
      const std::string text = box.text().toStdString();
      for (const std::string& part : parts) {
        EXPECT_NE(text.find(part), std::string::npos) << part << " is missing in: " << text;
      }
      QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
    });
  }

  void ExpectTaken() {
    user_.AnswerBox("Cannot add to same calibration point", QMessageBox::Information,
                    QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok);
  }

  /// Asks to delete the current point, which the question names.
  void Delete(frmCalDataInput& editor, const QString& point, QMessageBox::StandardButton answer) {
    user_.AnswerBox("Are you want delete? (" + point + ")", QMessageBox::Warning,
                    QMessageBox::Yes | QMessageBox::No, QMessageBox::No, answer);
    Click(editor, "btnDeletePoint");
  }

  static void ExpectRows(CalGrid& grid, const Texts& settings, const Texts& frequencies,
                         const Texts& values) {
    EXPECT_EQ(ColumnOf(grid, 0), settings);
    EXPECT_EQ(ColumnOf(grid, 1), frequencies);
    EXPECT_EQ(ColumnOf(grid, 2), values);
  }

  TestTree tree_;
  DesktopTestPlatform platform_;
  User user_;
};

}  // namespace tarvell::test

#endif
