// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QPushButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "screens/caldata/EitherEditor.h"
#include "screens/main/ScreenFaults.h"
#include "support/ErrorOf.h"

/// What both editors of calibration data share: opening, the header, OK and Cancel.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

using BoxTexts = std::vector<std::pair<const char*, const char*>>;

void ExpectBoxes(QWidget& editor, const BoxTexts& boxes) {
  for (const auto& [box, text] : boxes) {
    EXPECT_EQ(TextOf(editor, box), text) << box;
  }
}

QColor Background(QWidget& screen, const QString& box) {
  return Find<QLineEdit>(screen, box).palette().color(QPalette::Base);
}

/// Fills every field of the header except the serial number.
void FillHeader(QWidget& editor) {
  Fill(editor, "txtCalNo", "C-7");
  Fill(editor, "txtCalYear", "2010");
  Choose(editor, "cmbCalMonth", "APR");
  Fill(editor, "txtCalDay", "6");
  Fill(editor, "txtDueYear", "2011");
  Choose(editor, "cmbDueMonth", "FEB");
  Fill(editor, "txtDueDay", "7");
  Fill(editor, "txtComment", "after repair: as found");
}

class Editor : public EitherEditor {
 protected:
  /// The header after FillHeader.
  static SetHeader Filled(const std::string& serial) {
    return {Code(), serial, "20100406", "C-7", "20110207", "after repair: as found"};
  }

  /// Fills the header and types into a cell, which both stay when OK fails.
  void FillAll(QWidget& editor) {
    FillHeader(editor);
    ClickCell(GridOf(editor), 1, 1);
    Type("91");
    Press(Qt::Key_Return);
  }
  static Texts FilledValues() {
    Texts values = Values();
    values[0] = Stored(1, "91");
    return values;
  }
  void ExpectAllThere(QWidget& editor) {
    EXPECT_TRUE(editor.isVisible());
    ExpectBoxes(editor, {{"txtCalNo", "C-7"},
                         {"txtCalYear", "2010"},
                         {"txtCalDay", "6"},
                         {"txtDueYear", "2011"},
                         {"txtDueDay", "7"},
                         {"txtComment", "after repair: as found"}});
    EXPECT_EQ(ComboText(editor, "cmbCalMonth"), "APR");
    EXPECT_EQ(ComboText(editor, "cmbDueMonth"), "FEB");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), FilledValues());
  }
};

INSTANTIATE_TEST_SUITE_P(Editors, Editor, testing::ValuesIn(kBothEditors), KindName);

// ---- What the screen shows.

TEST_P(Editor, ShowsAFileWithItsSerialNumberLocked) {
  Edit([&](CalEditor& editor) {
    EXPECT_EQ(editor.windowTitle().toStdString(), CaptionOf("3318A12345"));
    Texts captions;
    for (const QLabel* label : editor.findChildren<QLabel*>()) {
      captions.push_back(label->text().toStdString());
    }
    for (const char* caption : {"Model Number", "Serial Number", "Calibration Number",
                                "Calibration Date", "Calibration Due Date", "Comment"}) {
      EXPECT_EQ(std::count(captions.begin(), captions.end(), caption), 1) << caption;
    }
    EXPECT_EQ(Find<QPushButton>(editor, "btnOk").text(), "OK");
    EXPECT_EQ(Find<QPushButton>(editor, "btnCancel").text(), "Cancel");
    ExpectBoxes(editor, {{"txtSerial", "3318A12345"},
                         {"txtCalNo", "C-0042"},
                         {"txtCalYear", "2001"},
                         {"txtCalDay", "5"},
                         {"txtDueYear", "2002"},
                         {"txtDueDay", "5"},
                         {"txtComment", "factory"}});
    const Texts months = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                          "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
    for (const char* month : {"cmbCalMonth", "cmbDueMonth"}) {
      EXPECT_EQ(ComboText(editor, month), "MAR");
      EXPECT_EQ(ComboEntries(editor, month), months);
      EXPECT_FALSE(Find<QComboBox>(editor, month).isEditable());
    }
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), Values());
    EXPECT_EQ(NoticesOf(editor), Texts());
    EXPECT_EQ(QApplication::focusWidget(), &Find<QLineEdit>(editor, "txtCalNo"));
    const QColor grey = editor.palette().color(QPalette::Button);
    ASSERT_NE(grey, Background(editor, "txtCalNo"));
    for (const char* box : {"txtModel", "txtSerial"}) {
      const std::string before = TextOf(editor, box);
      QTest::mouseClick(&Find<QLineEdit>(editor, box), Qt::LeftButton);
      Type("9");
      Press(Qt::Key_Backspace);
      EXPECT_EQ(TextOf(editor, box), before);
      EXPECT_EQ(Background(editor, box), grey) << box;
    }
  });
}

TEST_P(Editor, ShowsNewDataWithNothingOfTheDataBefore) {
  Edit([&](CalEditor& editor) {
    Fill(editor, "txtCalNo", "a b");
    Choose(editor, "cmbCalMonth", "FEB");
    EXPECT_EQ(NoticesOf(editor).size(), 1U);
  });
  header_ = {Code(), "T1", "20040131", "", "20050131", ""};
  New([&](CalEditor& editor) {
    EXPECT_EQ(editor.windowTitle().toStdString(), CaptionOf("T1"));
    // Only the table editor shows the serial number of the template.
    ExpectBoxes(editor, {{"txtModel", HasPages() ? "RT520A" : "PX12A"},
                         {"txtSerial", HasPages() ? "" : "T1"},
                         {"txtCalNo", ""},
                         {"txtComment", ""}});
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), Values());
    EXPECT_EQ(NoticesOf(editor), Texts());
    EXPECT_EQ(QApplication::focusWidget(), &Find<QLineEdit>(editor, "txtSerial"));
    EXPECT_TRUE(Find<QLineEdit>(editor, "txtModel").isReadOnly());
    EXPECT_EQ(Background(editor, "txtSerial"), Background(editor, "txtCalNo"));
    // The month chosen before does not limit the day.
    Fill(editor, "txtCalDay", "30");
    ClickArrow(editor, "udCalDay", "up");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "31");
    // The caption follows the serial number.
    Fill(editor, "txtSerial", "2 b");
    EXPECT_EQ(editor.windowTitle().toStdString(), CaptionOf("2 b"));
    Fill(editor, "txtSerial", "");
    EXPECT_EQ(editor.windowTitle().toStdString(), CaptionOf(""));
  });
  header_.serial = "3318A12345";
  Edit([&](CalEditor& editor) {
    EXPECT_TRUE(Find<QLineEdit>(editor, "txtSerial").isReadOnly());
    EXPECT_NE(Background(editor, "txtSerial"), Background(editor, "txtCalNo"));
  });
}

TEST_P(Editor, RefusesRowsAndModelsThatDoNotExist) {
  tree_.Write(Path(), Bytes(header_));
  for (const int row : {-1, 51, 998, 1000}) {
    EXPECT_EQ(ErrorOf([&] { editor_->SetupDat(static_cast<std::int16_t>(row), Code()); }).Kind(),
              ErrorKind::Index)
        << row;
  }
  for (const std::string code : {"px12a", "rt520a", "PX12A ", "", "RT410A"}) {
    EXPECT_EQ(ErrorOf([&] { editor_->SetupDat(CalEditor::kNewData, code); }).Kind(),
              ErrorKind::Index)
        << code;
  }
  gCalFiles[50].FilePath = Folder() + R"(\SN00099)";
  EXPECT_EQ(ErrorOf([&] { editor_->SetupDat(50, Code()); }).Kind(), ErrorKind::NotFound);
  EXPECT_FALSE(editor_->isVisible());
}

// ---- Dates.

TEST_P(Editor, SpinnersGoOnFromTheFileAndKeepTheirRanges) {
  const struct {
    const char* spinner;
    const char* box;
    const char* next;
    int least;
    int most;
  } spinners[] = {{"udCalYear", "txtCalYear", "2002", 1904, 2037},
                  {"udCalDay", "txtCalDay", "6", 1, 31},
                  {"udDueYear", "txtDueYear", "2003", 1904, 2037},
                  {"udDueDay", "txtDueDay", "6", 1, 31}};
  Edit([&](CalEditor& editor) {
    for (const auto& [spinner, box, next, least, most] : spinners) {
      SCOPED_TRACE(spinner);
      ClickArrow(editor, spinner, "up");
      EXPECT_EQ(TextOf(editor, box), next);
      Fill(editor, box, QString::number(most - 1));
      ClickArrow(editor, spinner, "up");
      ClickArrow(editor, spinner, "up");
      EXPECT_EQ(TextOf(editor, box), std::to_string(most));
      Fill(editor, box, QString::number(least + 1));
      ClickArrow(editor, spinner, "down");
      ClickArrow(editor, spinner, "down");
      EXPECT_EQ(TextOf(editor, box), std::to_string(least));
    }
  });
}

TEST_P(Editor, AChosenMonthLimitsItsDay) {
  const struct {
    const char* year;
    const char* month;
    const char* day;
    const char* kept;
    int maximum;
  } rules[] = {{"2001", "JUL", "31", "31", 31}, {"2001", "SEP", "31", "30", 30},
               {"2001", "SEP", "7", "7", 30},   {"2001", "SEP", "x", "x", 30},
               {"2001", "FEB", "31", "28", 28}, {"2000", "FEB", "31", "29", 29},
               {"x", "FEB", "28", "28", 29}};
  Edit([&](CalEditor& editor) {
    for (const QString date : {"Cal", "Due"}) {
      const QString otherDay = date == "Cal" ? "txtDueDay" : "txtCalDay";
      Fill(editor, otherDay, "31");
      for (const auto& [year, month, day, kept, maximum] : rules) {
        SCOPED_TRACE(testing::Message() << date.toStdString() << " " << day << month << year);
        const QString box = "txt" + date + "Day";
        Choose(editor, "cmb" + date + "Month", "AUG");
        Fill(editor, "txt" + date + "Year", year);
        Fill(editor, box, day);
        Choose(editor, "cmb" + date + "Month", month);
        EXPECT_EQ(TextOf(editor, box), kept);
        Fill(editor, box, QString::number(maximum - 1));
        ClickArrow(editor, "ud" + date + "Day", "up");
        ClickArrow(editor, "ud" + date + "Day", "up");
        EXPECT_EQ(TextOf(editor, box), std::to_string(maximum));
        EXPECT_EQ(TextOf(editor, otherDay), "31");
      }
    }
  });
}

TEST_P(Editor, AMonthThatDoesNotExistSelectsNothingAndIsSavedAsZero) {
  header_.calDate = "20010005";
  header_.dueDate = "20021305";
  Edit([](CalEditor& editor) {
    EXPECT_EQ(Find<QComboBox>(editor, "cmbCalMonth").currentIndex(), -1);
    EXPECT_EQ(Find<QComboBox>(editor, "cmbDueMonth").currentIndex(), -1);
    Click(editor, "btnOk");
  });
  header_.dueDate = "20020005";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
}

// ---- Notices about the header.

TEST_P(Editor, ReportsADayThatDoesNotExistAndSavesIt) {
  Edit([](CalEditor& editor) {
    Choose(editor, "cmbDueMonth", "FEB");
    Fill(editor, "txtDueDay", "31");
    const std::string notice =
        "Calibration Due Date: the day 31 FEB 2002 does not exist. It is saved as it stands.";
    EXPECT_EQ(NoticesOf(editor), Texts{notice});
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtDueDay")).toStdString(), notice);
    Fill(editor, "txtDueDay", "28");
    EXPECT_EQ(NoticesOf(editor), Texts());
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtDueDay")), "");
    Fill(editor, "txtDueDay", "31");
    Click(editor, "btnOk");
  });
  header_.dueDate = "20020231";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
  EditAgain([](CalEditor& editor) { EXPECT_EQ(NoticesOf(editor).size(), 1U); });
}

TEST_P(Editor, ReportsADayThatAMonthLowers) {
  Edit([](CalEditor& editor) {
    for (const QString date : {"Cal", "Due"}) {
      Fill(editor, "txt" + date + "Year", "2001");
      Fill(editor, "txt" + date + "Day", "31");
      Find<QComboBox>(editor, "cmb" + date + "Month").setFocus();
      Press(Qt::Key_Up);
      Press(Qt::Key_Up);
      EXPECT_EQ(ComboText(editor, "cmb" + date + "Month"), "JAN");
      EXPECT_EQ(TextOf(editor, "txt" + date + "Day"), "28");
      EXPECT_EQ(NoticesOf(editor), Texts{"The day 31 was lowered to 28, the last day of FEB."});
      Fill(editor, "txt" + date + "Day", "31");
      EXPECT_EQ(NoticesOf(editor), Texts());
    }
  });
}

TEST_P(Editor, ReportsAValueOfWhichOnlyTheFirstWordIsReadBack) {
  Edit([](CalEditor& editor) {
    Fill(editor, "txtCalNo", "C 7");
    Fill(editor, "txtDueYear", "2002.5");
    Fill(editor, "txtComment", "done in lab");
    const Texts notices = {
        "Comment: only \"done\" will be read back when the file is opened again.",
        "Calibration Number: only \"C\" will be read back when the file is "
        "opened again."};
    EXPECT_EQ(NoticesOf(editor), notices);
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtComment")).toStdString(), notices[0]);
    // The notice about the box that has the keyboard comes first.
    Find<QLineEdit>(editor, "txtCalNo").setFocus();
    EXPECT_EQ(NoticesOf(editor), (Texts{notices[1], notices[0]}));
    Click(editor, "btnOk");
  });
  header_.calNo = "C 7";
  header_.dueDate = "20030305";  // rounded
  header_.comment = "done in lab";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
  EditAgain([](CalEditor& editor) {
    ExpectBoxes(editor, {{"txtCalNo", "C"}, {"txtComment", "done"}});
  });
}

TEST_P(Editor, RefusesACharacterThatFilesCannotHold) {
  header_.serial = "";
  New([&](CalEditor& editor) {
    Fill(editor, "txtSerial", "12");
    for (const char* box : {"txtSerial", "txtCalNo", "txtComment"}) {
      const std::string before = TextOf(editor, box);
      questions_.ExpectError({"\u03a9"});
      Find<QLineEdit>(editor, box).setFocus();
      Find<QLineEdit>(editor, box).insert("5 k\u03a9");
      Settle();
      EXPECT_EQ(TextOf(editor, box), before) << box;
    }
  });
}

// ---- Keys.

TEST_P(Editor, EnterGoesFromFieldToFieldAndNeverSaves) {
  Edit([&](CalEditor& editor) {
    const auto expectNext = [&](Qt::Key enter, const std::string& next) {
      Press(enter);
      EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), next);
    };
    Find<QWidget>(editor, "txtSerial").setFocus();
    for (const char* next : {"txtCalNo", "txtCalDay", "cmbCalMonth", "txtCalYear", "txtDueDay",
                             "cmbDueMonth", "txtDueYear", "txtComment"}) {
      expectNext(QString(next).startsWith("cmb") ? Qt::Key_Enter : Qt::Key_Return, next);
    }
    expectNext(Qt::Key_Return, HasPages() ? "tTab" : "Grid");
    if (HasPages()) {
      Find<QWidget>(editor, "txtTabSerial").setFocus();
      expectNext(Qt::Key_Return, "grid");
    }
    Fill(editor, "txtComment", "entered");
    Press(Qt::Key_Return);
    EXPECT_TRUE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
}

TEST_P(Editor, CtrlSSavesWithAnOpenEdit) {
  Edit([&](CalEditor& editor) {
    EXPECT_EQ(Find<QPushButton>(editor, "btnOk").toolTip(),
              "Saves the data and closes this screen (Ctrl+S).");
    ClickCell(GridOf(editor), 1, 1);
    Type("97");
    Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !editor.isVisible(); }));
  });
  Texts values = Values();
  values[0] = Stored(1, "97");
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_, values));
}

TEST_P(Editor, SavesNothingWhenItIsLeftWithoutOk) {
  const std::vector<std::function<void(CalEditor&)>> ways = {
      [](CalEditor& editor) { Click(editor, "btnCancel"); },
      [](CalEditor& editor) {
        Find<QPushButton>(editor, "btnCancel").setFocus();
        Press(Qt::Key_Return);
      },
      [](CalEditor& editor) {
        Find<QLineEdit>(editor, "txtCalNo").setFocus();
        Press(Qt::Key_Escape);
      },
      [](CalEditor& editor) { editor.close(); }};
  for (const auto& leave : ways) {
    Edit([&](CalEditor& editor) {
      ExpectClosed(editor);
      EXPECT_EQ(ColumnOf(GridOf(editor), 1), Values());
      FillAll(editor);
      ClickCell(GridOf(editor), 2, 1);
      Type("4");
      leave(editor);
      EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
  }
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
}

// ---- OK.

TEST_P(Editor, OkRefusesASerialNumberThatNamesNoFile) {
  header_.serial = "";
  New([&](CalEditor& editor) {
    FillAll(editor);
    const BoxTexts serials = {{"AB/CD", "\"/\""}, {"12.45", "\".\""}, {"1234 ", "blank"}};
    for (const auto& [serial, named] : serials) {
      Fill(editor, "txtSerial", serial);
      questions_.ExpectError({named});
      Click(editor, "btnOk");
      ExpectAllThere(editor);
      EXPECT_EQ(TextOf(editor, "txtSerial"), serial);
      EXPECT_EQ(tree_.Names(Folder()), Texts{});
    }
    Fill(editor, "txtSerial", "AB.12345");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
  EXPECT_EQ(tree_.Read(Path()), Bytes(Filled("AB.12345"), FilledValues()));
}

TEST_P(Editor, OkAsksForAMissingSerialNumberBeforeItLooksAtAnythingElse) {
  header_.serial = "";
  New([&](CalEditor& editor) {
    FillHeader(editor);
    Fill(editor, "txtCalDay", "x");
    ClickCell(GridOf(editor), 1, 1);
    Type("91");
    questions_.ExpectNotice("Please input serial number");
    Click(editor, "btnOk");
    ExpectClosed(editor);
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), FilledValues()) << "the open edit is stored first";
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "x");
    EXPECT_EQ(tree_.Names(Folder()), Texts{});
    Type("12");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "12") << "the serial number has the keyboard";
    Fill(editor, "txtCalDay", "6");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(Folder() + R"(\SN12)"), Bytes(Filled("12"), FilledValues()));
}

TEST_P(Editor, OkNamesADateBoxThatHoldsNoNumber) {
  const BoxTexts boxes = {{"txtCalYear", "Year of the calibration date"},
                          {"txtCalDay", "Day of the calibration date"},
                          {"txtDueYear", "Year of the due date"},
                          {"txtDueDay", "Day of the due date"}};
  Edit([&](CalEditor& editor) {
    FillAll(editor);
    for (const auto& [box, named] : boxes) {
      const QString good = Find<QLineEdit>(editor, box).text();
      for (const char* text : {"", "5th", "40000"}) {
        Fill(editor, box, text);
        questions_.ExpectError({named});
        Click(editor, "btnOk");
        EXPECT_EQ(TextOf(editor, box), text);
      }
      Fill(editor, box, good);
      ExpectAllThere(editor);
      EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
    }
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(Path()), Bytes(Filled("3318A12345"), FilledValues()));
}

TEST_P(Editor, KeepsEverythingWhenAnyStepOfASaveFails) {
  FaultPlatform platform;
  const std::string bytes = Bytes(Filled("3318A12345"), FilledValues());
  Edit([&](CalEditor& editor) {
    FillAll(editor);
    PressUnderEachFault(
        platform,
        [&](const ScreenFault& fault) {
          questions_.ExpectError({"Cannot save the file: " + fault.reason, Path()});
          Click(editor, "btnOk");
          ExpectAllThere(editor);
          EXPECT_EQ(tree_.Read(Path()), fault.isReplaced ? bytes : Bytes(header_));
          EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
        },
        [&] {
          Click(editor, "btnOk");
          EXPECT_FALSE(editor.isVisible());
        });
  });
  EXPECT_EQ(tree_.Read(Path()), bytes);
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
}

}  // namespace
}  // namespace tarvell
