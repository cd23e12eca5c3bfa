// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QMenu>
#include <QPushButton>
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "app/Tarvell_MainModule.h"
#include "calscreens/CalGrid.h"
#include "calscreens/frmCalDataInput.h"
#include "calscreens/frmCalibrationMain.h"
#include "calscreens/frmInputPX60H.h"
#include "common/frmInput.h"
#include "support/DesktopTestPlatform.h"
#include "support/TestTree.h"
#include "support/User.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)
using Texts = std::vector<std::string>;

/// In what the two models differ on the screens and in the file.
struct Attenuator {
  const char* code;
  const char* frequencyCaption;
  const char* presetFrequency;
  const char* frequencyBelow;  ///< the entry below the preset one
  Texts commentLines;
};

void PrintTo(const Attenuator& attenuator, std::ostream* stream) {
  *stream << attenuator.code;
}

Texts ItemsOf(QWidget& screen, const QString& combo) {
  auto& control = Find<QComboBox>(screen, combo);
  Texts items;
  for (int i = 0; i < control.count(); ++i) {
    items.push_back(control.itemText(i).toStdString());
  }
  return items;
}

std::string ChosenIn(QWidget& screen, const QString& combo) {
  return Find<QComboBox>(screen, combo).currentText().toStdString();
}

/// Types over the text of a list that takes typed text as well.
void FillList(QWidget& screen, const QString& combo, const QString& text) {
  auto& control = Find<QComboBox>(screen, combo);
  ASSERT_TRUE(control.isEditable()) << combo.toStdString();
  QTest::mouseClick(control.lineEdit(), Qt::LeftButton);
  Press(Qt::Key_A, Qt::ControlModifier);
  Press(Qt::Key_Delete);
  Type(text);
}

/// An operator's way from the calibration data menu to the file of an attenuator and back.
class AttenuatorWorkflow : public testing::TestWithParam<Attenuator> {
 protected:
  AttenuatorWorkflow() : platform_(tree_.ProgramFolder()) {
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
    user_.At<QMenu>([code](QMenu& menu) {
      for (QAction* entry : menu.actions()) {
        if (entry->text().toStdString() == code) {
          ASSERT_TRUE(entry->isEnabled());
          QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(entry).center());
          return;
        }
      }
      FAIL() << "no entry " << code;
    });
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
      EXPECT_EQ(ChosenIn(dialog, "cmbSetting"), setting.toStdString());
      EXPECT_EQ(ChosenIn(dialog, "cmbFreq"), frequency.toStdString());
      Click(dialog, "btnOk");
    });
  }

  /// Adds a point by typing both texts and pressing Enter.
  void TypePoint(frmCalDataInput& editor, const QString& setting, const QString& frequency) {
    AskPoint(editor, [=](frmInputPX60H& dialog) {
      FillList(dialog, "cmbSetting", setting);
      FillList(dialog, "cmbFreq", frequency);
      EXPECT_EQ(ChosenIn(dialog, "cmbSetting"), setting.toStdString());
      EXPECT_EQ(ChosenIn(dialog, "cmbFreq"), frequency.toStdString());
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

TEST_P(AttenuatorWorkflow, AnAttenuatorIsAddedCorrectedAndSavedByteForByte) {
  WriteTemplate({"*  0  :   5.00E07   :   0.0000", "* 10  :   5.00E07   :  10.0000",
                 "* 10  :   1.00E08   :  10.0000"});
  const Texts header = {"#SER_NO   : 3318A12345", "#CAL_DATE : 20010305", "#CAL_NO   : C-0042",
                        "#DUE_DATE : 20020425", "#COMMENT  : factory"};
  const std::string path = FileNamed("SN12345");
  const auto addData = [&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    EXPECT_EQ(editor.windowTitle().toStdString(), "Editing calibraition data (" + Code() + " - )");
    EXPECT_EQ(TextOf(editor, "txtModel"), Code());
    ASSERT_EQ(grid.model()->columnCount(), 3);
    EXPECT_EQ(CellOf(grid, 0, 0), "Setting [dB]");
    EXPECT_EQ(CellOf(grid, 0, 1), GetParam().frequencyCaption);
    EXPECT_EQ(CellOf(grid, 0, 2), "Cal Data [dB]");
    ExpectRows(grid, {"0", "10", "10"}, {"5.00E07", "5.00E07", "1.00E08"},
               {"0.0000", "10.0000", "10.0000"});

    Fill(editor, "txtSerial", "3318A12345");
    EXPECT_EQ(editor.windowTitle().toStdString(),
              "Editing calibraition data (" + Code() + " - 3318A12345)");
    Fill(editor, "txtCalNo", "C-0042");
    Fill(editor, "txtCalYear", "2001");
    Choose(editor, "cmbCalMonth", "FEB");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "28") << "the template's 31 is no day of February";
    Choose(editor, "cmbCalMonth", "MAR");
    Fill(editor, "txtCalDay", "5");
    Fill(editor, "txtDueYear", "2002");
    Choose(editor, "cmbDueMonth", "APR");
    Fill(editor, "txtDueDay", "25");
    Fill(editor, "txtComment", "factory");

    // Typing over a value; the Down key stores it and goes on.
    ClickCell(grid, 1, 2);
    Type("0.05124");
    Press(Qt::Key_Down);
    EXPECT_EQ(CellOf(grid, 1, 2), "0.0512");
    EXPECT_EQ(grid.CurrentRow(), 2);
    Type("10.01235");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 2, 2), "10.0124");

    ChoosePoint(editor, "20", "1.00E09");
    ChoosePoint(editor, "10", "6.9925E09");
    ChoosePoint(editor, "120", "1.00E05");
    TypePoint(editor, "5", "1234567");
    TypePoint(editor, "10", "1E6");
    ExpectRows(
        grid, {"0", "5", "10", "10", "10", "10", "20", "120"},
        {"5.00E07", "1.2346E06", "1.00E06", "5.00E07", "1.00E08", "6.9925E09", "1.00E09",
         "1.00E05"},
        {"0.0512", "5.0000", "10.0000", "10.0124", "10.0000", "10.0000", "20.0000", "120.0000"});

    ClickCell(grid, 4, 2);
    Delete(editor, "10dB, 50MHz", QMessageBox::No);
    EXPECT_EQ(grid.Data().RowCount(), 1 + 8);
    ClickCell(grid, 7, 2);
    Delete(editor, "20dB, 1GHz", QMessageBox::Yes);
    ClickCell(grid, 5, 0);
    Delete(editor, "10dB, 100MHz", QMessageBox::Yes);
    EXPECT_EQ(ColumnOf(grid, 1),
              (Texts{"5.00E07", "1.2346E06", "1.00E06", "5.00E07", "6.9925E09", "1.00E05"}));
    Click(editor, "btnOk");
  };
  const auto correctData = [&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    EXPECT_EQ(editor.windowTitle().toStdString(),
              "Editing calibraition data (" + Code() + " - 3318A12345)");
    EXPECT_TRUE(Find<QLineEdit>(editor, "txtSerial").isReadOnly());
    EXPECT_EQ(TextOf(editor, "txtSerial"), "3318A12345");
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-0042");
    EXPECT_EQ(TextOf(editor, "txtCalYear"), "2001");
    EXPECT_EQ(ChosenIn(editor, "cmbCalMonth"), "MAR");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "5");
    EXPECT_EQ(TextOf(editor, "txtDueYear"), "2002");
    EXPECT_EQ(ChosenIn(editor, "cmbDueMonth"), "APR");
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "25");
    EXPECT_EQ(TextOf(editor, "txtComment"), "factory");
    ExpectRows(grid, {"0", "5", "10", "10", "10", "120"},
               {"5.00E07", "1.2346E06", "1.00E06", "5.00E07", "6.9925E09", "1.00E05"},
               {"0.0512", "5.0000", "10.0000", "10.0124", "10.0000", "120.0000"});
    ClickCell(grid, 5, 2);
    Type("10.5");
    Click(editor, "btnOk");  // with the edit still open
  };
  Run({[&](frmCalibrationMain& screen) { Add(screen, Code(), addData); },
       [&](frmCalibrationMain& screen) {
         EXPECT_EQ(tree_.Read(path),
                   FileOf(header,
                          {"*  0  :   5.00E07   :   0.0512", "*  5  :  1.2346E06   :   5.0000",
                           "* 10  :   1.00E06   :  10.0000", "* 10  :   5.00E07   :  10.0124",
                           "* 10  :  6.9925E09   :  10.0000", "*120  :   1.00E05   :  120.0000"}));
         EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{Code()});
         EXPECT_EQ(EntriesOf(screen, "lstSerialNumber"), Texts{"3318A12345"});
         Edit(screen, "3318A12345", correctData);
       },
       [&](frmCalibrationMain& /*screen*/) {
         EXPECT_EQ(tree_.Read(path),
                   FileOf(header,
                          {"*  0  :   5.00E07   :   0.0512", "*  5  :  1.2346E06   :   5.0000",
                           "* 10  :   1.00E06   :  10.0000", "* 10  :   5.00E07   :  10.0124",
                           "* 10  :  6.9925E09   :  10.5000", "*120  :   1.00E05   :  120.0000"}));
         EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
       }});
}

TEST_P(AttenuatorWorkflow, TheShippedTemplateIsShownAndSavedWhole) {
  tree_.InstallTemplate(Code());
  const std::string shipped = ReadNative(tree_.ProgramFolder() / ("Temp" + Code()));
  std::string expected = shipped;
  const std::string serialLine = "#SER_NO   : ";
  expected.insert(expected.find(serialLine) + serialLine.size(), "12");
  Run({[&](frmCalibrationMain& screen) {
         Add(screen, Code(), [](frmCalDataInput& editor) {
           Fill(editor, "txtSerial", "12");
           Click(editor, "btnOk");
         });
       },
       [&](frmCalibrationMain& screen) {
         EXPECT_EQ(tree_.Read(FileNamed("SN12")), expected);
         Edit(screen, "12", [](frmCalDataInput& editor) { Click(editor, "btnOk"); });
       }});
  EXPECT_EQ(tree_.Read(FileNamed("SN12")), expected);
}

// The point dialog.

TEST_P(AttenuatorWorkflow, ThePointDialogOffersItsListsAndPresets) {
  WriteTemplate({});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    AskPoint(editor, [](frmInputPX60H& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Select calibration point...");
      EXPECT_EQ(Find<QLabel>(dialog, "lblCaption").text(),
                "Select calibration point and calibration frequency");
      EXPECT_NE(dialog.findChild<QLabel*>("Label1"), nullptr);
      EXPECT_EQ(Find<QPushButton>(dialog, "btnOk").text(), "Ok");
      EXPECT_EQ(Find<QPushButton>(dialog, "btnCancel").text(), "Cancel");
      EXPECT_EQ(ItemsOf(dialog, "cmbSetting"), (Texts{"0", "10", "20", "30", "40", "50", "60", "70",
                                                      "80", "90", "100", "110", "120"}));
      EXPECT_EQ(ItemsOf(dialog, "cmbFreq"),
                (Texts{"1.00E05", "3.00E05", "1.00E06", "1.00E07", "5.00E07", "1.00E08", "1.00E09",
                       "3.00E09", "6.9925E09"}));
      EXPECT_EQ(ChosenIn(dialog, "cmbSetting"), "0");
      EXPECT_EQ(ChosenIn(dialog, "cmbFreq"), GetParam().presetFrequency);
      Press(Qt::Key_Return);
    });
    EXPECT_EQ(DialogResult, "OK");
    ExpectRows(grid, {"0"}, {GetParam().presetFrequency}, {"0.0000"});
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorWorkflow, TheListsGoOnFromThePresets) {
  WriteTemplate({});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    AskPoint(editor, [](frmInputPX60H& dialog) {
      Find<QComboBox>(dialog, "cmbFreq").setFocus();
      Press(Qt::Key_Down);
      EXPECT_EQ(ChosenIn(dialog, "cmbFreq"), GetParam().frequencyBelow);
      Find<QComboBox>(dialog, "cmbSetting").setFocus();
      Press(Qt::Key_Down);
      EXPECT_EQ(ChosenIn(dialog, "cmbSetting"), "10");
      Click(dialog, "btnOk");
    });
    ExpectRows(grid, {"10"}, {GetParam().frequencyBelow}, {"10.0000"});
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorWorkflow, EveryFrequencyOfTheListGoesToTheFileUnchanged) {
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

TEST_P(AttenuatorWorkflow, TypedTextIsTakenAsItIsTyped) {
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

TEST_P(AttenuatorWorkflow, ThePointThatWasAddedIsTheCurrentOne) {
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

TEST_P(AttenuatorWorkflow, ATakenPointIsRefused) {
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
      FillList(dialog, "cmbSetting", "10.0");
      FillList(dialog, "cmbFreq", "50000000");
      ExpectTaken();
      Press(Qt::Key_Return);
    });
    expectUnchanged();
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorWorkflow, APointBelowZeroIsRefused) {
  WriteTemplate({"* 10  :   5.00E07   :  10.0000"});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    const std::vector<std::pair<const char*, const char*>> points = {{"-10", "5.00E07"},
                                                                     {"20", "-5.00E07"}};
    for (const auto& [setting, frequency] : points) {
      AskPoint(editor, [&](frmInputPX60H& dialog) {
        FillList(dialog, "cmbSetting", setting);
        FillList(dialog, "cmbFreq", frequency);
        ExpectMessage({"below zero"});
        Click(dialog, "btnOk");
      });
      ExpectRows(grid, {"10"}, {"5.00E07"}, {"10.0000"});
    }
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorWorkflow, ATextThatIsNoNumberGetsAMessage) {
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
        FillList(dialog, "cmbSetting", test.setting);
        FillList(dialog, "cmbFreq", test.frequency);
        ExpectMessage(test.message);
        Click(dialog, "btnOk");
      });
      ExpectRows(grid, {"10"}, {"5.00E07"}, {"10.0000"});
    }
    Click(editor, "btnCancel");
  });
}

TEST_P(AttenuatorWorkflow, APointDialogThatIsCancelledAddsNothing) {
  WriteTemplate({"* 10  :   5.00E07   :  10.0000"});
  const std::vector<std::function<void(frmInputPX60H & dialog)>> ways = {
      [](frmInputPX60H& dialog) { Click(dialog, "btnCancel"); },
      [](frmInputPX60H& /*dialog*/) { Press(Qt::Key_Escape); },
      [](frmInputPX60H& dialog) { dialog.close(); }};
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    for (const auto& cancel : ways) {
      DialogResult = "before";
      AskPoint(editor, [&](frmInputPX60H& dialog) {
        FillList(dialog, "cmbSetting", "20");
        FillList(dialog, "cmbFreq", "1.00E09");
        cancel(dialog);
      });
      EXPECT_EQ(DialogResult, "CANCEL");
      ExpectRows(grid, {"10"}, {"5.00E07"}, {"10.0000"});
    }
    // What was typed then is forgotten.
    AskPoint(editor, [](frmInputPX60H& dialog) {
      EXPECT_EQ(ChosenIn(dialog, "cmbSetting"), "0");
      EXPECT_EQ(ChosenIn(dialog, "cmbFreq"), GetParam().presetFrequency);
      Click(dialog, "btnOk");
    });
    ExpectRows(grid, {"0", "10"}, {GetParam().presetFrequency, "5.00E07"}, {"0.0000", "10.0000"});
    Click(editor, "btnCancel");
  });
}

// Cells.

TEST_P(AttenuatorWorkflow, OnlyTheValueCanBeTyped) {
  WriteTemplate({"* 10  :   5.00E07   :  10.0000"});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    const auto& box = Find<QLineEdit>(editor, "txtCell");
    for (const int column : {0, 1}) {
      ClickCell(grid, 1, column);
      Type("7");
      EXPECT_FALSE(box.isVisible()) << column;
      Press(Qt::Key_Return);
      EXPECT_FALSE(box.isVisible()) << column;
      DoubleClickCell(grid, 1, column);
      EXPECT_FALSE(box.isVisible()) << column;
    }
    ExpectRows(grid, {"10"}, {"5.00E07"}, {"10.0000"});
    ClickCell(grid, 1, 2);
    Type("7");
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(TextOf(editor, "txtCell"), "7");
    Press(Qt::Key_Return);
    EXPECT_FALSE(box.isVisible());
    ExpectRows(grid, {"10"}, {"5.00E07"}, {"7.0000"});
    Click(editor, "btnCancel");
  });
  EXPECT_EQ(tree_.Names(Folder()), Texts{});
}

TEST_P(AttenuatorWorkflow, AValueThatIsOpenedAndLeftStaysAsItIs) {
  WriteTemplate({"* 10  :   5.00E07   :  10.01235", "* 20  :   5.00E07   :  20.0000"});
  WithNewData([&](frmCalDataInput& editor, CalGrid& grid) {
    const auto& box = Find<QLineEdit>(editor, "txtCell");
    const auto open = [&](const std::function<void()>& how) {
      ClickCell(grid, 1, 2);
      how();
      EXPECT_TRUE(box.isVisible());
      EXPECT_EQ(TextOf(editor, "txtCell"), "") << "a value is typed anew";
    };
    const auto byEnter = [] { Press(Qt::Key_Return); };
    const auto byDoubleClick = [&] { DoubleClickCell(grid, 1, 2); };
    for (const auto& how : std::vector<std::function<void()>>{byEnter, byDoubleClick}) {
      for (const Qt::Key leave :
           {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Down, Qt::Key_Up, Qt::Key_Tab}) {
        open(how);
        Press(leave);
        EXPECT_FALSE(box.isVisible()) << leave;
        EXPECT_EQ(ColumnOf(grid, 2), (Texts{"10.01235", "20.0000"})) << leave;
      }
      open(how);
      ClickCell(grid, 2, 2);
      EXPECT_EQ(ColumnOf(grid, 2), (Texts{"10.01235", "20.0000"}));
    }
    ClickCell(grid, 1, 2);
    Type("99");
    Press(Qt::Key_Escape);
    EXPECT_EQ(ColumnOf(grid, 2), (Texts{"10.01235", "20.0000"}));
    open(byEnter);
    Fill(editor, "txtSerial", "12");  // leaves the open box
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(FileNamed("SN12")),
            PlainFile("12", {"* 10  :   5.00E07   :  10.01235", "* 20  :   5.00E07   :  20.0000"}));
}

TEST_P(AttenuatorWorkflow, CancelLeavesTheFileAsItIs) {
  const std::string file = PlainFile("12", {"* 10  :   5.00E07   :  10.0000"});
  tree_.Write(FileNamed("SN12"), file);
  Run({[&](frmCalibrationMain& screen) {
    Edit(screen, "12", [&](frmCalDataInput& editor) {
      auto& grid = Find<CalGrid>(editor, "Grid");
      ClickCell(grid, 1, 2);
      Type("9");
      Press(Qt::Key_Return);
      ChoosePoint(editor, "20", "1.00E09");
      EXPECT_EQ(ColumnOf(grid, 2), (Texts{"9.0000", "20.0000"}));
      Click(editor, "btnCancel");
    });
  }});
  EXPECT_EQ(tree_.Read(FileNamed("SN12")), file);
}

TEST_P(AttenuatorWorkflow, WideTextsAreSavedBackWhole) {
  const std::string file = PlainFile(
      "12", {"* 10  :  6.9925E09   :  10.01234", "*1000  :  123456789012   :  -1000.00001"});
  tree_.Write(FileNamed("SN12"), file);
  Run({[&](frmCalibrationMain& screen) {
    Edit(screen, "12", [&](frmCalDataInput& editor) {
      ExpectRows(Find<CalGrid>(editor, "Grid"), {"10", "1000"}, {"6.9925E09", "123456789012"},
                 {"10.01234", "-1000.00001"});
      Click(editor, "btnOk");
    });
  }});
  EXPECT_EQ(tree_.Read(FileNamed("SN12")), file);
}

// Deleting.

TEST_P(AttenuatorWorkflow, TheDeleteQuestionNamesThePointInMegahertzOrGigahertz) {
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

// The largest table.

TEST_P(AttenuatorWorkflow, ATableOf51RowsIsShownSavedAndReadBackWhole) {
  WriteTemplate(ManyLines(51));
  const auto refusePoint = [&](frmCalDataInput& editor, CalGrid& grid) {
    for (const char* setting : {"0", "30", "120"}) {
      AskPoint(editor, [&](frmInputPX60H& dialog) {
        Choose(dialog, "cmbSetting", setting);
        Choose(dialog, "cmbFreq", "1.00E09");
        ExpectMessage({"51"});
        Click(dialog, "btnOk");
      });
      EXPECT_EQ(grid.Data().RowCount(), 1 + 51);
    }
  };
  Run({[&](frmCalibrationMain& screen) {
         Add(screen, Code(), [&](frmCalDataInput& editor) {
           auto& grid = Find<CalGrid>(editor, "Grid");
           ASSERT_EQ(grid.Data().RowCount(), 1 + 51);
           EXPECT_EQ(CellOf(grid, 51, 0), "51");
           EXPECT_EQ(CellOf(grid, 51, 2), "51.0000");
           refusePoint(editor, grid);
           Fill(editor, "txtSerial", "12");
           Click(editor, "btnOk");
         });
       },
       [&](frmCalibrationMain& screen) {
         EXPECT_EQ(tree_.Read(FileNamed("SN12")), PlainFile("12", ManyLines(51)));
         Edit(screen, "12", [&](frmCalDataInput& editor) {
           auto& grid = Find<CalGrid>(editor, "Grid");
           ASSERT_EQ(grid.Data().RowCount(), 1 + 51);
           refusePoint(editor, grid);
           // With one row less there is room again.
           ClickCell(grid, 51, 2);
           Delete(editor, "51dB, 50MHz", QMessageBox::Yes);
           ChoosePoint(editor, "120", "1.00E09");
           EXPECT_EQ(CellOf(grid, 51, 0), "120");
           Click(editor, "btnOk");
         });
       }});
  Texts lines = ManyLines(50);
  lines.emplace_back("*120  :   1.00E09   :  120.0000");
  EXPECT_EQ(tree_.Read(FileNamed("SN12")), PlainFile("12", lines));
}

TEST_P(AttenuatorWorkflow, AFileOf52RowsIsRefusedWithItsNameAndLine) {
  const std::string file = PlainFile("12", ManyLines(52));
  tree_.Write(FileNamed("SN12"), file);
  const std::size_t line = 6 + GetParam().commentLines.size() + 52;
  Run({[&](frmCalibrationMain& screen) {
    ClickEntry(screen, "LstInstrment", QString::fromStdString(Code()));
    ClickEntry(screen, "lstSerialNumber", "12");
    ExpectMessage({"51", FileNamed("SN12"), "line " + std::to_string(line)});
    Click(screen, "btnEdit");
  }});
  EXPECT_EQ(tree_.Read(FileNamed("SN12")), file);
}

// One editor for both families.

TEST_P(AttenuatorWorkflow, ASensorAndAnAttenuatorTakeTurnsInTheEditor) {
  WriteTemplate({"* 10  :   5.00E07   :  10.0000"});
  WriteNative(tree_.ProgramFolder() / "TempPX12A",
              Lines({"#MODEL_NO : PX12A", "#SER_NO   : ", "*50.00:100.0", "!End"}));
  const auto showAttenuator = [&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    ASSERT_EQ(grid.model()->columnCount(), 3);
    EXPECT_EQ(CellOf(grid, 0, 0), "Setting [dB]");
    EXPECT_EQ(CellOf(grid, 0, 1), GetParam().frequencyCaption);
    EXPECT_EQ(CellOf(grid, 0, 2), "Cal Data [dB]");
    ExpectRows(grid, {"10"}, {"5.00E07"}, {"10.0000"});
    for (int column = 0; column < 3; ++column) {
      EXPECT_GT(grid.columnWidth(column), 0) << column;
    }
    ClickCell(grid, 1, 1);
    Type("7");
    EXPECT_FALSE(Find<QLineEdit>(editor, "txtCell").isVisible());
    ChoosePoint(editor, "0", "1.00E09");
    EXPECT_EQ(ColumnOf(grid, 0), (Texts{"0", "10"}));
    Click(editor, "btnCancel");
  };
  const auto showSensor = [&](frmCalDataInput& editor) {
    auto& grid = Find<CalGrid>(editor, "Grid");
    ASSERT_EQ(grid.model()->columnCount(), 2);
    EXPECT_EQ(CellOf(grid, 0, 0), "Frequency  [MHz]");
    EXPECT_EQ(CellOf(grid, 0, 1), "Calibration factor[%]");
    EXPECT_EQ(ColumnOf(grid, 0), Texts{"50.00"});
    ClickCell(grid, 1, 1);
    Type("97.26");
    Press(Qt::Key_Return);
    EXPECT_EQ(ColumnOf(grid, 1), Texts{"97.3"});
    user_.At<frmInput>([](frmInput& /*dialog*/) {
      Type("100");
      Press(Qt::Key_Return);
    });
    Click(editor, "btnAddPoint");
    EXPECT_EQ(ColumnOf(grid, 0), (Texts{"50.00", "100.00"}));
    Click(editor, "btnCancel");
  };
  Run({[&](frmCalibrationMain& screen) { Add(screen, Code(), showAttenuator); },
       [&](frmCalibrationMain& screen) { Add(screen, "PX12A", showSensor); },
       [&](frmCalibrationMain& screen) { Add(screen, Code(), showAttenuator); }});
}

const std::vector<Attenuator> kAttenuators = {
    {"PX60H",
     "Frequency[Hz]",
     "5.00E07",
     "1.00E08",
     {"!", "! Setting  /  Freq  /  CalData ", "! 50M/1000MHz are calibration points."}},
    {"PX60G", "Freq[Hz]", "1.00E05", "3.00E05", {"!", "! Setting  /  Freq  /  CalData "}}};

INSTANTIATE_TEST_SUITE_P(Models, AttenuatorWorkflow, testing::ValuesIn(kAttenuators),
                         [](const auto& test) { return std::string(test.param.code); });

}  // namespace
}  // namespace tarvell
