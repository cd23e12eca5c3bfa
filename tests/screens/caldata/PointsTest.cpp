// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QPushButton>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/EitherEditor.h"
#include "screens/caldata/PastePreview.h"
#include "screens/caldata/frmInputPX60H.h"
#include "screens/widgets/frmInput.h"
#include "support/ErrorOf.h"
#include "support/SensorStage.h"

/// Adding and deleting calibration points of power sensors and step attenuators.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

// ---- Power sensors.

class SensorPoints : public SensorStage {
 protected:
  SensorPoints() { file_.rows = {{"0.10", "98.8"}, {"50.00", "100.0"}, {"1000.00", "97.0"}}; }

  void Edit(const Act& act) { ShowFile(file_, act); }

  /// Presses Add and does `act` in the dialog.
  void AskPoint(frmCalDataInput& editor, const std::function<void(frmInput& dialog)>& act) {
    user_.At<frmInput>(act);
    Click(editor, "btnAddPoint");
  }

  static Texts Frequencies(frmCalDataInput& editor) { return ColumnOf(GridOf(editor), 0); }
  static Texts Factors(frmCalDataInput& editor) { return ColumnOf(GridOf(editor), 1); }

  const Texts kFrequencies = {"0.10", "50.00", "1000.00"};
  SensorFile file_;
};

TEST_F(SensorPoints, BecomeRowsInOrderWithTheFactor100) {
  Edit([&](frmCalDataInput& editor) {
    AddPoint(editor, "18", "GHz");
    AddPoint(editor, "50.005", "MHz");
    // The new point has the keyboard.
    Type("96.5");
    Press(Qt::Key_Return);
    EXPECT_EQ(Frequencies(editor), (Texts{"0.10", "50.00", "50.01", "1000.00", "18000.0"}));
    EXPECT_EQ(Factors(editor), (Texts{"98.8", "100.0", "96.5", "97.0", "100.0"}));
  });
  ShowFile({.model = "PX13A", .rows = {}}, [&](frmCalDataInput& editor) {
    AskPoint(editor, [&](frmInput& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Input calibration point...");
      EXPECT_EQ(PlainCaption(Find<QLabel>(dialog, "lblCaption").text()), "Input calibration Point");
      EXPECT_EQ(ComboText(dialog, "cmbUnit"), "GHz") << "the unit of the table";
      Type("2");
      Press(Qt::Key_Return);
    });
    AddPoint(editor, "50", "MHz");
    EXPECT_EQ(Frequencies(editor), (Texts{"0.0500", "2.0000"}));
    DeletePoint(editor, "0.05GHz", QMessageBox::No);
  });
}

TEST_F(SensorPoints, AreRefusedWhenTheTableCannotTakeThem) {
  Edit([&](frmCalDataInput& editor) {
    const struct {
      const char* number;
      const char* unit;
      const char* notice;
    } points[] = {
        {"0.05", "GHz", "Cannot add to same calibration point"},
        {"-5", "MHz", "A calibration point cannot be below zero."},
        {"1", "KHz",
         "This calibration point is too small: its row would show zero. Check its unit."}};
    for (const auto& [number, unit, notice] : points) {
      questions_.ExpectNotice(notice);
      AddPoint(editor, number, unit);
    }
    questions_.ExpectError({"9E999", "too large"});
    AddPoint(editor, "9E999", "MHz");
    EXPECT_EQ(Frequencies(editor), kFrequencies);
  });
  file_.rows = ManyRows(51);
  Edit([&](frmCalDataInput& editor) {
    questions_.ExpectError({"51"});
    ClickWithoutDialog(editor, "btnAddPoint");
  });
}

TEST_F(SensorPoints, AreNotAddedWithoutANumber) {
  Edit([&](frmCalDataInput& editor) {
    for (const char* entry : {"", "0"}) {
      AddPoint(editor, entry, "GHz");
      EXPECT_EQ(Frequencies(editor), kFrequencies) << entry;
    }
    // An open edit is stored before the question.
    ClickCell(GridOf(editor), 3, 1);
    Type("7");
    AskPoint(editor, [&](frmInput& dialog) {
      EXPECT_EQ(Factors(editor), (Texts{"98.8", "100.0", "7.0"}));
      EXPECT_EQ(ComboText(dialog, "cmbUnit"), "MHz") << "the unit of the table";
      Type("77");
      dialog.close();
    });
    ExpectClosed(editor);
    EXPECT_EQ(Frequencies(editor), kFrequencies);
    // What is not added as it was typed is reported.
    const auto& notices = Find<NoticeLine>(editor, "notices");
    AddPoint(editor, "1,75", "MHz");
    EXPECT_TRUE(notices.text().contains("\"1,75\" is not a number; \"1.00\" was added."));
    AddPoint(editor, "abc", "MHz");
    EXPECT_TRUE(notices.text().contains("\"abc\" is not a number; no point was added."));
    questions_.ExpectNotice("Cannot add to same calibration point");
    AddPoint(editor, "50", "MHz");
    EXPECT_EQ(NoticesOf(editor), Texts());
  });
}

TEST_F(SensorPoints, AreDeletedAfterAQuestionThatNamesThem) {
  Edit([&](frmCalDataInput& editor) {
    // An open edit is stored before the question.
    ClickCell(GridOf(editor), 3, 1);
    Type("7");
    DeletePoint(editor, "1000MHz", QMessageBox::No);
    ExpectClosed(editor);
    EXPECT_EQ(Factors(editor), (Texts{"98.8", "100.0", "7.0"}));
    ClickCell(GridOf(editor), 2, 1);
    for (const QString point : {"50MHz", "1000MHz", "0.1MHz"}) {
      DeletePoint(editor, point, QMessageBox::Yes);
    }
    EXPECT_EQ(Frequencies(editor), Texts());
    Click(editor, "btnDeletePoint");  // asks nothing
    AddPoint(editor, "5", "MHz");
    EXPECT_EQ(Frequencies(editor), Texts{"5.00"});
    DeletePoint(editor, "5MHz", QMessageBox::Yes);
    Click(editor, "btnOk");
  });
  file_.rows = {};
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN12345)"), file_.Bytes());
}

TEST_F(SensorPoints, LeaveTheSameRowNumberCurrentWhenOneIsDeleted) {
  file_.rows = ManyRows(40);
  Edit([&](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 39, 1);
    for (const QString point : {"39MHz", "40MHz"}) {
      DeletePoint(editor, point, QMessageBox::Yes);
      EXPECT_EQ(grid.currentIndex(), grid.model()->index(point == "39MHz" ? 38 : 37, 1));
      EXPECT_EQ(grid.selectionModel()->selectedIndexes(), QModelIndexList{grid.currentIndex()});
      EXPECT_TRUE(grid.viewport()->rect().contains(grid.visualRect(grid.currentIndex())));
    }
  });
}

TEST_F(SensorPoints, AreDeletedTogetherWhenSeveralAreSelected) {
  file_.rows = ManyRows(6);
  Edit([&](frmCalDataInput& editor) {
    const auto pressDelete = [&](const QString& points) {
      questions_.Expect({.text = "Are you want delete? (" + points + ")",
                         .icon = QMessageBox::Warning,
                         .buttons = QMessageBox::Yes | QMessageBox::No,
                         .defaultButton = QMessageBox::No},
                        QMessageBox::Yes);
      Press(Qt::Key_Delete);
    };
    ClickCell(GridOf(editor), 4, 1);
    Press(Qt::Key_Up, Qt::ShiftModifier);
    Press(Qt::Key_Up, Qt::ShiftModifier);
    pressDelete("2MHz to 4MHz, 3 points");
    EXPECT_EQ(Frequencies(editor), (Texts{"1.00", "5.00", "6.00"}));
    EXPECT_TRUE(GridOf(editor).hasFocus());
    pressDelete("5MHz");
    // In an open cell, the key deletes a character.
    Type("7");
    Press(Qt::Key_Home);
    Press(Qt::Key_Delete);
    EXPECT_EQ(TextOf(editor, "txtCell"), "");
    Press(Qt::Key_Escape);
    EXPECT_EQ(Frequencies(editor), (Texts{"1.00", "6.00"}));
    Press(Qt::Key_Z, Qt::ControlModifier);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Frequencies(editor), (Texts{"1.00", "2.00", "3.00", "4.00", "5.00", "6.00"}));
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN12345)"), file_.Bytes());
}

TEST_F(SensorPoints, KeepTheirMarksWhenRowsComeAndGo) {
  Edit([&](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    const auto marked = [&] {
      std::vector<int> rows;
      for (int row = 0; row < grid.model()->rowCount(); ++row) {
        if (grid.model()->index(row, 1).data(Qt::DecorationRole).isValid()) {
          rows.push_back(row + 1);
        }
      }
      return rows;
    };
    TypeCell(editor, 2, 1, "abc");
    const Texts notices = NoticesOf(editor);
    EXPECT_EQ(notices.size(), 1U);
    AddPoint(editor, "20", "MHz");
    EXPECT_EQ(marked(), std::vector<int>{3});
    EXPECT_EQ(NoticesOf(editor), notices);
    ClickCell(grid, 1, 1);
    DeletePoint(editor, "0.1MHz", QMessageBox::Yes);
    EXPECT_EQ(marked(), std::vector<int>{2});
    ClickCell(grid, 2, 1);
    DeletePoint(editor, "50MHz", QMessageBox::Yes);
    EXPECT_EQ(marked(), std::vector<int>());
    EXPECT_EQ(NoticesOf(editor), Texts());
  });
}

// ---- Step attenuators.

/// A step attenuator's data file.
std::string AttenuatorFile(const std::string& model, const Texts& dataLines) {
  Texts lines = {"#MODEL_NO : " + model,
                 "#SER_NO   : 3318A12345",
                 "#CAL_DATE : 20010305",
                 "#CAL_NO   : C-0042",
                 "#DUE_DATE : 20020305",
                 "#COMMENT  : lab",
                 "!",
                 "! Setting  /  Freq  /  CalData "};
  if (model == "PX60H") {
    lines.emplace_back("! 50M/1000MHz are calibration points.");
  }
  lines.insert(lines.end(), dataLines.begin(), dataLines.end());
  lines.emplace_back("!End");
  return Lines(lines);
}

class AttenuatorPoints : public SensorStage {
 protected:
  void Edit(const std::string& model, const Texts& lines, const Act& act) {
    const std::string path = gCalibrationDir + "\\" + model + R"(\SN12345)";
    tree_.Write(path, AttenuatorFile(model, lines));
    gCalFiles[0].FilePath = path;
    Show(0, model, act);
  }

  void AskPoint(frmCalDataInput& editor, const std::function<void(frmInputPX60H& dialog)>& act) {
    user_.At<frmInputPX60H>(act);
    Click(editor, "btnAddPoint");
    editor.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
  }
  /// Types a point and presses Enter.
  void TypePoint(frmCalDataInput& editor, const QString& setting, const QString& frequency) {
    AskPoint(editor, [&](frmInputPX60H& dialog) {
      FillCombo(dialog, "cmbSetting", setting);
      FillCombo(dialog, "cmbFreq", frequency);
      Press(Qt::Key_Return);
    });
  }

  static void ExpectRows(frmCalDataInput& editor, const Texts& settings, const Texts& frequencies,
                         const Texts& values) {
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), settings);
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), frequencies);
    EXPECT_EQ(ColumnOf(GridOf(editor), 2), values);
  }

  const Texts kOneRow = {"* 10  :   5.00E07   :  10.0000"};
};

TEST_F(AttenuatorPoints, AreOfferedInListsWithPresets) {
  const struct {
    const char* name;
    const char* preset;
    const char* next;
  } models[] = {{"PX60H", "5.00E07", "1.00E08"}, {"PX60G", "1.00E05", "3.00E05"}};
  for (const auto& model : models) {
    Edit(model.name, {}, [&](frmCalDataInput& editor) {
      AskPoint(editor, [&](frmInputPX60H& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Select calibration point...");
        EXPECT_EQ(PlainCaption(Find<QLabel>(dialog, "lblCaption").text()),
                  "Select calibration point and calibration frequency");
        EXPECT_NE(dialog.findChild<QLabel*>("Label1"), nullptr);
        EXPECT_EQ(PlainCaption(Find<QPushButton>(dialog, "btnOk").text()), "Ok");
        EXPECT_EQ(PlainCaption(Find<QPushButton>(dialog, "btnCancel").text()), "Cancel");
        EXPECT_EQ(ComboEntries(dialog, "cmbSetting"),
                  (Texts{"0", "10", "20", "30", "40", "50", "60", "70", "80", "90", "100", "110",
                         "120"}));
        EXPECT_EQ(ComboEntries(dialog, "cmbFreq"),
                  (Texts{"1.00E05", "3.00E05", "1.00E06", "1.00E07", "5.00E07", "1.00E08",
                         "1.00E09", "3.00E09", "6.9925E09"}));
        Press(Qt::Key_Return);
      });
      EXPECT_EQ(DialogResult, "OK");
      AskPoint(editor, [&](frmInputPX60H& dialog) {
        for (const char* combo : {"cmbFreq", "cmbSetting"}) {
          Find<QComboBox>(dialog, combo).setFocus();
          Press(Qt::Key_Down);
        }
        Click(dialog, "btnOk");
      });
      ExpectRows(editor, {"0", "10"}, {model.preset, model.next}, {"0.0000", "10.0000"});
    });
  }
}

TEST_F(AttenuatorPoints, AreTakenAsTypedOrRefused) {
  Edit("PX60G", kOneRow, [&](frmCalDataInput& editor) {
    // What is typed first replaces the preset setting.
    AskPoint(editor, [](frmInputPX60H&) {
      Type("5");
      Press(Qt::Key_Tab);
      Type("2E9");
      Press(Qt::Key_Return);
    });
    // Each text is the beginning of an entry, which does not complete it.
    TypePoint(editor, "12", "6.9925E0");
    ExpectRows(editor, {"5", "10", "12"}, {"2.00E09", "5.00E07", "6.9925E00"},
               {"5.0000", "10.0000", "12.0000"});
    TypePoint(editor, "15,5", "1E9,5");
    EXPECT_EQ(CellOf(GridOf(editor), 4, 0), "15");
    ASSERT_EQ(NoticesOf(editor).size(), 1U);
    EXPECT_TRUE(NoticesOf(editor)[0].starts_with("\"15,5\" is not a number; \"15\" was added."));
    EXPECT_TRUE(Contains(NoticesOf(editor)[0], "\"1E9,5\" is not a number; \"1.00E09\""));
    questions_.ExpectNotice("Cannot add to same calibration point");
    TypePoint(editor, "10.0", "50000000");
    questions_.ExpectError({"Frequency"});
    TypePoint(editor, "20", "");
    EXPECT_EQ(GridOf(editor).model()->rowCount(), 4);
  });
}

TEST_F(AttenuatorPoints, AreNotAddedWhenTheDialogIsCancelled) {
  const std::vector<std::function<void(frmInputPX60H & dialog)>> ways = {
      [](frmInputPX60H& dialog) { Click(dialog, "btnCancel"); },
      [](frmInputPX60H& /*dialog*/) { Press(Qt::Key_Escape); },
      [](frmInputPX60H& dialog) { dialog.close(); }};
  Edit("PX60H", kOneRow, [&](frmCalDataInput& editor) {
    for (const auto& cancel : ways) {
      DialogResult = "before";
      // An open edit is stored before the question.
      ClickCell(GridOf(editor), 1, 2);
      Type("7");
      AskPoint(editor, [&](frmInputPX60H& dialog) {
        EXPECT_EQ(ComboText(dialog, "cmbSetting"), "0") << "nothing is kept from the last time";
        FillCombo(dialog, "cmbSetting", "20");
        FillCombo(dialog, "cmbFreq", "1.00E09");
        cancel(dialog);
      });
      EXPECT_EQ(DialogResult, "CANCEL");
      ExpectClosed(editor);
      ExpectRows(editor, {"10"}, {"5.00E07"}, {"7.0000"});
    }
  });
}

TEST_F(AttenuatorPoints, HaveOneColumnThatIsTypedAndOneThatIsEmptyWhenOpened) {
  Edit("PX60H", {"* 10  :   5.00E07   :  10.01235"}, [&](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    for (const int column : {0, 1}) {
      ClickCell(grid, 1, column);
      Type("7");
      ExpectBackIn(editor, grid, 1, column);
    }
    DoubleClickCell(grid, 1, 2);
    ExpectOpen(editor, "");
    Press(Qt::Key_Return);
    EXPECT_EQ(CellOf(grid, 1, 2), "10.01235");
    TypePoint(editor, "20", "1E9");
    Type("20.12345");  // the new point has the keyboard in its value
    Press(Qt::Key_Return);
    TypePoint(editor, "120", "6.9925E09");
    DeletePoint(editor, "120dB, 6.9925GHz", QMessageBox::Yes);
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX60H\SN12345)"),
            AttenuatorFile("PX60H",
                           {"* 10  :   5.00E07   :  10.01235", "* 20  :   1.00E09   :  20.1235"}));
}

TEST_F(AttenuatorPoints, ArePastedFromThreeColumnsOfASpreadsheet) {
  Edit("PX60H", kOneRow, [&](frmCalDataInput& editor) {
    QGuiApplication::clipboard()->setText(
        "Setting\tFrequency\tAttenuation\r\ndB\tMHz\tdB\r\n20\t1000\t20.5\r\n10\t50\t10.0123\r\n");
    user_.At<PastePreview>([](PastePreview& preview) {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&preview));
      EXPECT_EQ(Find<QTableWidget>(preview, "tblPreview").rowCount(), 2);
      Press(Qt::Key_Return);
    });
    ClickCell(GridOf(editor), 1, 2);
    Press(Qt::Key_V, Qt::ControlModifier);
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX60H\SN12345)"),
            AttenuatorFile("PX60H",
                           {"* 10  :   5.00E07   :  10.0123", "* 20  :   1.00E09   :  20.5000"}));
}

// ---- One screen for both.

TEST_F(AttenuatorPoints, AndThoseOfASensorTakeTurnsInTheEditor) {
  for (int i = 0; i < 2; ++i) {
    Edit("PX60H", kOneRow, [&](frmCalDataInput& editor) {
      GridOf(editor).setFocus();
      ExpectBackIn(editor, GridOf(editor), 1, 2);
      TypePoint(editor, "0", "1.00E09");
      EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0", "10"}));
    });
    ShowFile({.rows = {{"50.00", "100.0"}}}, [&](frmCalDataInput& editor) {
      ASSERT_EQ(GridOf(editor).model()->columnCount(), 2);
      GridOf(editor).setFocus();
      ExpectBackIn(editor, GridOf(editor), 1, 1);
      AddPoint(editor, "100", "MHz");
      EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"50.00", "100.00"}));
    });
  }
}

}  // namespace
}  // namespace tarvell
