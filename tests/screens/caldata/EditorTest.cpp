// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCalendarWidget>
#include <QPushButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "screens/caldata/EitherEditor.h"
#include "support/ErrorOf.h"
#include "support/ScreenFaults.h"

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

class Editor : public EitherEditor {
 protected:
  /// Fills the header and types into a cell, which both stay when OK fails.
  void FillAll(QWidget& editor) {
    FillHeader(editor);
    TypeCell(editor, 1, 1, "91");
  }
  static Texts FilledValues() { return {Stored(1, "91"), Values()[1], Values()[2]}; }
  static std::string FilledBytes(const std::string& serial) {
    return Bytes(FilledHeader(Code(), serial), FilledValues());
  }
  void ExpectAllThere(QWidget& editor) {
    EXPECT_TRUE(editor.isVisible());
    ExpectBoxes(editor, {{"txtCalNo", "C-7"},
                         {"txtCalYear", "2010"},
                         {"txtCalDay", "6"},
                         {"txtDueYear", "2011"},
                         {"txtDueDay", "7"},
                         {"txtComment", "lab"}});
    EXPECT_EQ(ComboText(editor, "cmbCalMonth"), "APR");
    EXPECT_EQ(ComboText(editor, "cmbDueMonth"), "FEB");
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), FilledValues());
  }
};

INSTANTIATE_TEST_SUITE_P(Editors, Editor, testing::Bool(), KindName);

// ---- What the screen shows.

TEST_P(Editor, ShowsAFileWithItsSerialNumberLocked) {
  Edit([&](CalEditor& editor) {
    EXPECT_EQ(editor.windowTitle().toStdString(), CaptionOf("3318A12345"));
    Texts captions;
    for (const QLabel* label : editor.findChildren<QLabel*>()) {
      captions.push_back(PlainCaption(label->text()).toStdString());
    }
    for (const char* caption : {"Model Number", "Serial Number", "Calibration Number",
                                "Calibration Date", "Calibration Due Date", "Comment"}) {
      EXPECT_EQ(std::count(captions.begin(), captions.end(), caption), 1) << caption;
    }
    EXPECT_EQ(PlainCaption(Find<QPushButton>(editor, "btnOk").text()), "OK");
    EXPECT_EQ(PlainCaption(Find<QPushButton>(editor, "btnCancel").text()), "Cancel");
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
      EXPECT_TRUE(Find<QLineEdit>(editor, box).isReadOnly());
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
    EXPECT_EQ(Background(editor, "txtSerial"), Background(editor, "txtCalNo"));
    // The month chosen before does not limit the day.
    Fill(editor, "txtCalDay", "30");
    ClickArrow(editor, "udCalDay", "up");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "31");
    // The caption follows the serial number.
    Fill(editor, "txtSerial", "2 b");
    EXPECT_EQ(editor.windowTitle().toStdString(), CaptionOf("2 b"));
  });
}

TEST_P(Editor, RefusesRowsAndModelsThatDoNotExist) {
  const auto kindOf = [&](std::int16_t row, const std::string& code) {
    return ErrorOf([&] { editor_->SetupDat(row, code); }).Kind();
  };
  EXPECT_EQ(kindOf(-1, Code()), ErrorKind::Index);
  EXPECT_EQ(kindOf(51, Code()), ErrorKind::Index);
  EXPECT_EQ(kindOf(CalEditor::kNewData, "px12a"), ErrorKind::Index);
  EXPECT_EQ(kindOf(CalEditor::kNewData, "RT410A"), ErrorKind::Index) << "a test kit";
  gCalFiles[50].FilePath = Folder() + R"(\SN00099)";
  EXPECT_EQ(kindOf(50, Code()), ErrorKind::NotFound);
  EXPECT_FALSE(editor_->isVisible());
}

// ---- Dates.

TEST_P(Editor, SpinnersGoOnFromTheFileAndKeepTheirRanges) {
  const struct {
    const char* spinner;
    const char* box;
    const char* next;
    const char* least;
    const char* most;
  } spinners[] = {{"udCalYear", "txtCalYear", "2002", "1904", "2037"},
                  {"udCalDay", "txtCalDay", "6", "1", "31"},
                  {"udDueYear", "txtDueYear", "2003", "1904", "2037"},
                  {"udDueDay", "txtDueDay", "6", "1", "31"}};
  Edit([&](CalEditor& editor) {
    for (const auto& [spinner, box, next, least, most] : spinners) {
      SCOPED_TRACE(spinner);
      ClickArrow(editor, spinner, "up");
      EXPECT_EQ(TextOf(editor, box), next);
      Find<UpDown>(editor, spinner).SetValue(9999);
      EXPECT_EQ(TextOf(editor, box), most);
      Find<UpDown>(editor, spinner).SetValue(0);
      EXPECT_EQ(TextOf(editor, box), least);
    }
  });
}

TEST_P(Editor, AChosenMonthLimitsItsDayAndReportsWhenItLowersIt) {
  const struct {
    const char* year;
    const char* month;
    const char* day;
    const char* kept;
    int maximum;
  } rules[] = {{"2001", "SEP", "31", "30", 30},
               {"2001", "SEP", "30", "30", 30},
               {"2001", "SEP", "x", "x", 30},
               {"2000", "FEB", "31", "29", 29},
               {"x", "FEB", "28", "28", 29}};
  Edit([&](CalEditor& editor) {
    for (const QString date : {"Cal", "Due"}) {
      const QString box = "txt" + date + "Day";
      const QString otherDay = date == "Cal" ? "txtDueDay" : "txtCalDay";
      Fill(editor, otherDay, "31");
      for (const auto& [year, month, day, kept, maximum] : rules) {
        SCOPED_TRACE(testing::Message() << date.toStdString() << " " << day << month << year);
        // A month of 31 days beside the other: the keys pass all months between them.
        Choose(editor, "cmb" + date + "Month", month == std::string("SEP") ? "AUG" : "MAR");
        Fill(editor, "txt" + date + "Year", year);
        Fill(editor, box, day);
        Choose(editor, "cmb" + date + "Month", month);
        EXPECT_EQ(TextOf(editor, box), kept);
        const std::string notice =
            "The day 31 was lowered to " + std::string(kept) + ", the last day of " + month + ".";
        EXPECT_EQ(NoticesOf(editor), day == std::string("31") ? Texts{notice} : Texts());
        Fill(editor, box, QString::number(maximum - 1));
        EXPECT_EQ(NoticesOf(editor), Texts());
        ClickArrow(editor, "ud" + date + "Day", "up");
        ClickArrow(editor, "ud" + date + "Day", "up");
        EXPECT_EQ(TextOf(editor, box), std::to_string(maximum));
        EXPECT_EQ(TextOf(editor, otherDay), "31");
      }
    }
  });
}

TEST_P(Editor, ACalendarBesideADateReplacesItAsTypingDoes) {
  const auto press = [](Qt::Key key) {
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), key);
  };
  Edit([&](CalEditor& editor) {
    Fill(editor, "txtDueDay", "31");
    Click(editor, "calendarOf_txtDueDay");
    auto& calendar = Find<QCalendarWidget>(*QApplication::activePopupWidget(), "calendar");
    EXPECT_EQ(calendar.selectedDate(), QDate(2002, 3, 31));
    press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    ExpectBoxes(editor, {{"txtDueYear", "2002"}, {"txtDueDay", "31"}});
    // From the month with 31 days to one with fewer; F4 opens the calendar, too.
    Find<QLineEdit>(editor, "txtDueDay").setFocus();
    Press(Qt::Key_F4);
    press(Qt::Key_PageUp);
    press(Qt::Key_Left);
    press(Qt::Key_Return);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    ExpectBoxes(editor, {{"txtDueYear", "2002"}, {"txtDueDay", "27"}});
    EXPECT_EQ(ComboText(editor, "cmbDueMonth"), "FEB");
    EXPECT_EQ(NoticesOf(editor), Texts());
    EXPECT_TRUE(Find<QLineEdit>(editor, "txtDueDay").hasFocus());
    EXPECT_EQ(Find<UpDown>(editor, "udDueDay").Maximum(), 28);
    Press(Qt::Key_Z, Qt::ControlModifier);
    ExpectBoxes(editor, {{"txtDueYear", "2002"}, {"txtDueDay", "27"}});
    Click(editor, "calendarOf_txtCalDay");
    press(Qt::Key_Right);
    press(Qt::Key_Return);
    Click(editor, "btnOk");
  });
  header_.calDate = "20010306";
  header_.dueDate = "20020227";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
}

TEST_P(Editor, AMonthThatDoesNotExistSelectsNothing) {
  header_.calDate = "20010005";
  header_.dueDate = "20021305";
  Edit([](CalEditor& editor) {
    EXPECT_EQ(Find<QComboBox>(editor, "cmbCalMonth").currentIndex(), -1);
    EXPECT_EQ(Find<QComboBox>(editor, "cmbDueMonth").currentIndex(), -1);
  });
}

// ---- Notices about the header.

TEST_P(Editor, ReportsWhatWillBeReadBackDifferentlyAndSavesIt) {
  Edit([](CalEditor& editor) {
    Choose(editor, "cmbDueMonth", "FEB");
    Fill(editor, "txtDueDay", "31");
    const std::string day =
        "Calibration Due Date: the day 31 FEB 2002 does not exist. It is saved unchanged.";
    EXPECT_EQ(NoticesOf(editor), Texts{day});
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtDueDay")).toStdString(), day);
    Fill(editor, "txtDueDay", "28");
    EXPECT_EQ(NoticesOf(editor), Texts());
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtDueDay")), "");
    Fill(editor, "txtDueYear", "2002.5");
    Fill(editor, "txtCalNo", "C 7");
    Fill(editor, "txtComment", "done in lab");
    const Texts notices = {
        "Comment: only \"done\" will be read back when the file is opened again.",
        "Calibration Number: only \"C\" will be read back when the file is opened again."};
    EXPECT_EQ(NoticesOf(editor), notices);
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtComment")).toStdString(), notices[0]);
    // The notice about the box that has the keyboard comes first.
    Find<QLineEdit>(editor, "txtCalNo").setFocus();
    EXPECT_EQ(NoticesOf(editor), (Texts{notices[1], notices[0]}));
    Fill(editor, "txtDueDay", "31");
    Click(editor, "btnOk");
  });
  header_.calNo = "C 7";
  header_.dueDate = "20030231";  // the year is rounded
  header_.comment = "done in lab";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
  EditAgain([](CalEditor& editor) {
    ExpectBoxes(editor, {{"txtCalNo", "C"}, {"txtComment", "done"}});
    EXPECT_EQ(NoticesOf(editor).size(), 1U) << "the day";
  });
}

TEST_P(Editor, RefusesACharacterThatFilesCannotHold) {
  header_.serial = "";
  New([&](CalEditor& editor) {
    for (const char* box : {"txtSerial", "txtCalNo", "txtComment"}) {
      const std::string before = TextOf(editor, box);
      questions_.ExpectError({"\u03a9"});
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
    EXPECT_TRUE(editor.isVisible());
  });
}

TEST_P(Editor, SavesNothingWhenItIsLeftWithoutOk) {
  const std::vector<std::function<void(CalEditor&)>> ways = {
      [](CalEditor& editor) { Click(editor, "btnCancel"); },
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

TEST_P(Editor, OkChecksTheSerialNumberAndThenTheDates) {
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
    Type("AB/CD");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "AB/CD") << "the serial number has the keyboard";
    questions_.ExpectError({"\"/\""});
    Click(editor, "btnOk");
    Fill(editor, "txtSerial", "AB.12345");
    Fill(editor, "txtCalDay", "6");
    const BoxTexts boxes = {{"txtCalYear", "Year of the calibration date"},
                            {"txtCalDay", "Day of the calibration date"},
                            {"txtDueYear", "Year of the due date"},
                            {"txtDueDay", "Day of the due date"}};
    for (const auto& [box, named] : boxes) {
      const QString good = Find<QLineEdit>(editor, box).text();
      Fill(editor, box, "5th");
      questions_.ExpectError({named});
      Click(editor, "btnOk");
      EXPECT_EQ(TextOf(editor, box), "5th");
      Fill(editor, box, good);
      ExpectAllThere(editor);
    }
    EXPECT_EQ(tree_.Names(Folder()), Texts{});
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
  EXPECT_EQ(tree_.Read(Path()), FilledBytes("AB.12345"));
}

TEST_P(Editor, KeepsEverythingWhenAnyStepOfASaveFails) {
  FaultPlatform platform;
  Edit([&](CalEditor& editor) {
    FillAll(editor);
    PressUnderEachFault(
        platform,
        [&](const ScreenFault& fault) {
          questions_.ExpectError({"Cannot save the file: " + fault.reason, Path()});
          Click(editor, "btnOk");
          ExpectAllThere(editor);
          EXPECT_EQ(tree_.Read(Path()),
                    fault.isReplaced ? FilledBytes("3318A12345") : Bytes(header_));
          EXPECT_EQ(tree_.Names(Folder()), Texts{"SN12345"});
        },
        [&] { Click(editor, "btnOk"); });
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(Path()), FilledBytes("3318A12345"));
}

}  // namespace
}  // namespace tarvell
