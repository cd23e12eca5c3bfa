// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QPushButton>
#include <QToolButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/UpDown.h"
#include "screens/widgets/frmInput.h"
#include "support/ErrorOf.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)
using Texts = std::vector<std::string>;

constexpr const char* kFolder = R"(c:\calfactors\PX12A)";
constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

class SensorEditor : public SensorStage {
 protected:
  SensorEditor() { file_.rows = {{"0.10", "98.8"}, {"50.00", "100.0"}, {"1000.00", "97.0"}}; }

  void Edit(const Act& act) { ShowFile(file_, act); }
  void New(const Act& act) { ShowNew(file_, act); }

  /// Adds a point that the table does not take, which is told by `notice`.
  void AddRefusedPoint(frmCalDataInput& editor, const QString& number, const QString& unit,
                       const QString& notice) {
    questions_.ExpectNotice(notice);
    AddPoint(editor, number, unit);
  }

  SensorFile file_;
};

/// Clicks an arrow of a spinner.
void ClickArrow(QWidget& screen, const QString& spinner, const QString& arrow) {
  QTest::mouseClick(&Find<QToolButton>(Find<UpDown>(screen, spinner), arrow), Qt::LeftButton);
}

std::string MonthOf(QWidget& screen, const QString& combo) {
  return Find<QComboBox>(screen, combo).currentText().toStdString();
}

QColor Ground(QWidget& screen, const QString& box) {
  return Find<QLineEdit>(screen, box).palette().color(QPalette::Base);
}

// ---- What the screen shows.

TEST_F(SensorEditor, ShowsItsCaptions) {
  Edit([&](frmCalDataInput& editor) {
    Texts captions;
    for (const QLabel* label : editor.findChildren<QLabel*>()) {
      captions.push_back(label->text().toStdString());
    }
    for (const char* caption :
         {"Model Number", "Serial Number", "Calibration Number", "Calibration Date",
          "Calibration Due Date", "Comment", "Calibration Data"}) {
      EXPECT_EQ(std::count(captions.begin(), captions.end(), caption), 1) << caption;
    }
    EXPECT_EQ(Find<QPushButton>(editor, "btnOk").text(), "OK");
    EXPECT_EQ(Find<QPushButton>(editor, "btnCancel").text(), "Cancel");
    EXPECT_EQ(Find<QPushButton>(editor, "btnAddPoint").text(), "Add Calibration Point");
    EXPECT_EQ(Find<QPushButton>(editor, "btnDeletePoint").text(), "Delete Calibration Point");
  });
}

TEST_F(SensorEditor, ShowsTheDataOfTheFile) {
  Edit([&](frmCalDataInput& editor) {
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - 3318A12345)");
    EXPECT_EQ(TextOf(editor, "txtModel"), "PX12A");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "3318A12345");
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-0042");
    EXPECT_EQ(TextOf(editor, "txtCalYear"), "2001");
    EXPECT_EQ(MonthOf(editor, "cmbCalMonth"), "MAR");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "5");
    EXPECT_EQ(TextOf(editor, "txtDueYear"), "2002");
    EXPECT_EQ(MonthOf(editor, "cmbDueMonth"), "MAR");
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "5");
    EXPECT_EQ(TextOf(editor, "txtComment"), "factory");
    EXPECT_EQ(CellOf(GridOf(editor), 0, 0), "Frequency  [MHz]");
    EXPECT_EQ(CellOf(GridOf(editor), 0, 1), "Calibration factor[%]");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0.10", "50.00", "1000.00"}));
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"98.8", "100.0", "97.0"}));
  });
}

TEST_F(SensorEditor, ShowsOnlyTheFirstWordOfAComment) {
  file_.comment = "done in lab";
  Edit([&](frmCalDataInput& editor) { EXPECT_EQ(TextOf(editor, "txtComment"), "done"); });
}

TEST_F(SensorEditor, NewDataShowTheTemplate) {
  file_.serial = "T1";
  New([&](frmCalDataInput& editor) {
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - T1)");
    EXPECT_EQ(TextOf(editor, "txtModel"), "PX12A");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "T1");
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-0042");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0.10", "50.00", "1000.00"}));
  });
}

TEST_F(SensorEditor, NothingOfTheDataShownBeforeIsLeft) {
  Edit([&](frmCalDataInput& editor) { Fill(editor, "txtCalNo", "changed"); });
  file_ = {.model = "PX12A",
           .serial = "",
           .calDate = "19990131",
           .calNo = "",
           .dueDate = "20000131",
           .comment = "",
           .rows = {{"7.00", "99.0"}}};
  New([&](frmCalDataInput& editor) {
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - )");
    for (const char* box : {"txtSerial", "txtCalNo", "txtComment"}) {
      EXPECT_EQ(TextOf(editor, box), "") << box;
    }
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), Texts{"7.00"});
  });
}

TEST_F(SensorEditor, TheCaptionFollowsTheSerialNumber) {
  file_.serial = "";
  New([&](frmCalDataInput& editor) {
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - )");
    Fill(editor, "txtSerial", "1");
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - 1)");
    Type("2 b");
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - 12 b)");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(editor.windowTitle(), "Editing calibraition data (PX12A - 12 )");
  });
}

TEST_F(SensorEditor, ModelAndSerialNumberOfAFileAreLockedAndGrey) {
  Edit([&](frmCalDataInput& editor) {
    const QColor grey = editor.palette().color(QPalette::Button);
    ASSERT_NE(grey, Ground(editor, "txtCalNo"));
    for (const char* box : {"txtModel", "txtSerial"}) {
      SCOPED_TRACE(box);
      const std::string before = TextOf(editor, box);
      QTest::mouseClick(&Find<QLineEdit>(editor, box), Qt::LeftButton);
      Type("9");
      Press(Qt::Key_Backspace);
      EXPECT_EQ(TextOf(editor, box), before);
      EXPECT_EQ(Ground(editor, box), grey);
    }
  });
}

TEST_F(SensorEditor, TheSerialNumberOfNewDataIsFreeAlsoAfterAFileWasShown) {
  Edit([](frmCalDataInput&) {});
  file_.serial = "";
  New([&](frmCalDataInput& editor) {
    EXPECT_EQ(Ground(editor, "txtSerial"), Ground(editor, "txtCalNo"));
    Fill(editor, "txtSerial", "12");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "12");
    EXPECT_TRUE(Find<QLineEdit>(editor, "txtModel").isReadOnly());
  });
  file_.serial = "3318A12345";
  Edit([&](frmCalDataInput& editor) {
    EXPECT_TRUE(Find<QLineEdit>(editor, "txtSerial").isReadOnly());
    EXPECT_EQ(Ground(editor, "txtSerial"), editor.palette().color(QPalette::Button));
  });
}

TEST_F(SensorEditor, TheKeyboardGoesThroughTheControlsInReadingOrder) {
  file_.serial = "";
  New([&](frmCalDataInput& editor) {
    Find<QLineEdit>(editor, "txtModel").setFocus();
    for (const char* next : {"txtSerial", "txtCalNo", "txtCalDay", "cmbCalMonth", "txtCalYear",
                             "txtDueDay", "cmbDueMonth", "txtDueYear", "txtComment", "Grid",
                             "btnAddPoint", "btnDeletePoint", "btnOk", "btnCancel"}) {
      Press(Qt::Key_Tab);
      ASSERT_NE(QApplication::focusWidget(), nullptr);
      EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), next);
    }
  });
}

// ---- Dates.

TEST_F(SensorEditor, TheMonthsStandInCalendarOrder) {
  Edit([&](frmCalDataInput& editor) {
    for (const char* name : {"cmbCalMonth", "cmbDueMonth"}) {
      const auto& combo = Find<QComboBox>(editor, name);
      Texts months;
      for (int i = 0; i < combo.count(); ++i) {
        months.push_back(combo.itemText(i).toStdString());
      }
      EXPECT_EQ(months, (Texts{"JAN", "FEB", "MAR", "APR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT",
                               "NOV", "DEC"}));
      EXPECT_FALSE(combo.isEditable());
    }
  });
}

TEST_F(SensorEditor, TheSpinnersKeepTheirRanges) {
  const struct {
    const char* spinner;
    const char* box;
    int least;
    int most;
  } spinners[] = {{"udCalYear", "txtCalYear", 1904, 2037},
                  {"udCalDay", "txtCalDay", 1, 31},
                  {"udDueYear", "txtDueYear", 1904, 2037},
                  {"udDueDay", "txtDueDay", 1, 31}};
  Edit([&](frmCalDataInput& editor) {
    for (const auto& [spinner, box, least, most] : spinners) {
      SCOPED_TRACE(spinner);
      Fill(editor, box, QString::number(most - 1));
      ClickArrow(editor, spinner, "up");
      EXPECT_EQ(TextOf(editor, box), std::to_string(most));
      ClickArrow(editor, spinner, "up");
      EXPECT_EQ(TextOf(editor, box), std::to_string(most));
      Fill(editor, box, QString::number(least + 1));
      ClickArrow(editor, spinner, "down");
      EXPECT_EQ(TextOf(editor, box), std::to_string(least));
      ClickArrow(editor, spinner, "down");
      EXPECT_EQ(TextOf(editor, box), std::to_string(least));
    }
  });
}

TEST_F(SensorEditor, TheSpinnersGoOnFromTheDatesOfTheFile) {
  Edit([&](frmCalDataInput& editor) {
    ClickArrow(editor, "udCalYear", "up");
    ClickArrow(editor, "udCalDay", "down");
    ClickArrow(editor, "udDueYear", "down");
    ClickArrow(editor, "udDueDay", "up");
    EXPECT_EQ(TextOf(editor, "txtCalYear"), "2002");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "4");
    EXPECT_EQ(TextOf(editor, "txtDueYear"), "2001");
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "6");
  });
}

struct MonthRule {
  const char* year;
  const char* month;
  const char* day;
  const char* kept;
  int maximum;
};

void PrintTo(const MonthRule& rule, std::ostream* stream) {
  *stream << rule.day << " " << rule.month << " " << rule.year;
}

class SensorEditorMonth : public SensorEditor, public testing::WithParamInterface<MonthRule> {};

TEST_P(SensorEditorMonth, ChoosingAMonthKeepsTheDayWithinIt) {
  const MonthRule& rule = GetParam();
  file_.calDate = "20010805";
  file_.dueDate = "20020805";
  Edit([&](frmCalDataInput& editor) {
    for (const QString& date : {QString("Cal"), QString("Due")}) {
      SCOPED_TRACE(date.toStdString());
      Fill(editor, "txt" + date + "Year", rule.year);
      Fill(editor, "txt" + date + "Day", rule.day);
      Choose(editor, "cmb" + date + "Month", rule.month);
      EXPECT_EQ(TextOf(editor, "txt" + date + "Day"), rule.kept);
      Fill(editor, "txt" + date + "Day", QString::number(rule.maximum - 1));
      ClickArrow(editor, "ud" + date + "Day", "up");
      ClickArrow(editor, "ud" + date + "Day", "up");
      EXPECT_EQ(TextOf(editor, "txt" + date + "Day"), std::to_string(rule.maximum));
    }
  });
}

// The months beside AUG in the list, so that no other month is passed on the way.
INSTANTIATE_TEST_SUITE_P(NextToAugust, SensorEditorMonth,
                         testing::Values(MonthRule{"2001", "JUL", "31", "31", 31},
                                         MonthRule{"2001", "SEP", "31", "30", 30},
                                         MonthRule{"2001", "SEP", "30", "30", 30},
                                         MonthRule{"2001", "SEP", "45", "30", 30},
                                         MonthRule{"2001", "SEP", "7", "7", 30},
                                         MonthRule{"2001", "SEP", "x", "x", 30}));

// FEB is reached through APR and MAR.
INSTANTIATE_TEST_SUITE_P(February, SensorEditorMonth,
                         testing::Values(MonthRule{"2001", "FEB", "31", "28", 28},
                                         MonthRule{"2000", "FEB", "31", "29", 29},
                                         MonthRule{"2004", "FEB", "29", "29", 29},
                                         MonthRule{"1900", "FEB", "29", "28", 28},
                                         MonthRule{"x", "FEB", "28", "28", 29}));

TEST_F(SensorEditor, ADayTypedAfterTheMonthIsLeftAsTyped) {
  Edit([&](frmCalDataInput& editor) {
    Choose(editor, "cmbCalMonth", "FEB");
    Fill(editor, "txtCalDay", "31");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "31");
    Fill(editor, "txtCalYear", "2004");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "31");
    Click(editor, "btnOk");
  });
  file_.calDate = "20040231";
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(SensorEditor, TheDaysOfOneDateDoNotLimitTheOther) {
  Edit([&](frmCalDataInput& editor) {
    Choose(editor, "cmbCalMonth", "FEB");
    Fill(editor, "txtDueDay", "30");
    ClickArrow(editor, "udDueDay", "up");
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "31");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "5");
  });
}

TEST_F(SensorEditor, TheDaysOfTheDataShownBeforeDoNotLimitTheNext) {
  Edit([&](frmCalDataInput& editor) { Choose(editor, "cmbCalMonth", "FEB"); });
  Edit([&](frmCalDataInput& editor) {
    Fill(editor, "txtCalDay", "30");
    ClickArrow(editor, "udCalDay", "up");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "31");
  });
}

TEST_F(SensorEditor, AMonthThatIsNoneSelectsNothingAndIsKept) {
  file_.calDate = "20010005";
  file_.dueDate = "20021305";
  Edit([&](frmCalDataInput& editor) {
    EXPECT_EQ(Find<QComboBox>(editor, "cmbCalMonth").currentIndex(), -1);
    EXPECT_EQ(Find<QComboBox>(editor, "cmbDueMonth").currentIndex(), -1);
    Click(editor, "btnOk");
  });
  file_.dueDate = "20020005";
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(SensorEditor, DatesAreSavedAsTheyWereTyped) {
  Edit([&](frmCalDataInput& editor) {
    Fill(editor, "txtCalYear", "-1999");
    Fill(editor, "txtCalDay", "45");
    Fill(editor, "txtDueYear", "2002.5");
    Fill(editor, "txtDueDay", " 7 ");
    Click(editor, "btnOk");
  });
  file_.calDate = "19990345";
  file_.dueDate = "20030307";
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

// ---- Adding points.

TEST_F(SensorEditor, AsksForAPointInTheUnitOfTheTable) {
  Edit([&](frmCalDataInput& editor) {
    user_.At<frmInput>([](frmInput& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Input calibration point...");
      EXPECT_EQ(Find<QLabel>(dialog, "lblCaption").text(), "Input calibration Point");
      EXPECT_EQ(Find<QComboBox>(dialog, "cmbUnit").currentText(), "MHz");
      EXPECT_EQ(TextOf(dialog, "txtText"), "");
      Press(Qt::Key_Escape);
    });
    Click(editor, "btnAddPoint");
  });
  SensorFile inGHz{.model = "PX13A", .rows = {{"0.0500", "100.0"}}, .reference = "0.0500"};
  ShowFile(inGHz, [&](frmCalDataInput& editor) {
    user_.At<frmInput>([](frmInput& dialog) {
      EXPECT_EQ(Find<QComboBox>(dialog, "cmbUnit").currentText(), "GHz");
      Press(Qt::Key_Escape);
    });
    Click(editor, "btnAddPoint");
  });
}

struct Point {
  const char* number;
  const char* unit;
  const char* row;  ///< the frequency cell
};

void PrintTo(const Point& point, std::ostream* stream) {
  *stream << point.number << " " << point.unit;
}

class PointInMHz : public SensorEditor, public testing::WithParamInterface<Point> {};

TEST_P(PointInMHz, BecomesARow) {
  const Point& point = GetParam();
  file_.rows = {};
  for (const char* model : {"PX12A", "PX11D", "PX11A"}) {
    SCOPED_TRACE(model);
    file_.model = model;
    Edit([&](frmCalDataInput& editor) {
      AddPoint(editor, point.number, point.unit);
      EXPECT_EQ(ColumnOf(GridOf(editor), 0), Texts{point.row});
      EXPECT_EQ(ColumnOf(GridOf(editor), 1), Texts{"100.0"});
    });
  }
}

INSTANTIATE_TEST_SUITE_P(
    EveryUnit, PointInMHz,
    testing::Values(Point{"100", "MHz", "100.00"}, Point{"2", "GHz", "2000.00"},
                    Point{"300", "KHz", "0.30"}, Point{"0.1", "MHz", "0.10"},
                    Point{"1.005", "MHz", "1.01"}, Point{"9999.994", "MHz", "9999.99"},
                    Point{"10000", "MHz", "10000.00"}, Point{"10", "GHz", "10000.00"},
                    Point{"10000.1", "MHz", "10000.1"}, Point{"10000.05", "MHz", "10000.1"},
                    Point{"12000", "MHz", "12000.0"}, Point{"18", "GHz", "18000.0"},
                    Point{"1E3", "MHz", "1000.00"}, Point{" 5 0 ", "MHz", "50.00"},
                    Point{"7abc", "MHz", "7.00"}));

class PointInGHz : public SensorEditor, public testing::WithParamInterface<Point> {};

TEST_P(PointInGHz, BecomesARow) {
  const Point& point = GetParam();
  file_ = {.model = "PX13A", .rows = {}};
  Edit([&](frmCalDataInput& editor) {
    AddPoint(editor, point.number, point.unit);
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), Texts{point.row});
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), Texts{"100.0"});
  });
}

INSTANTIATE_TEST_SUITE_P(EveryUnit, PointInGHz,
                         testing::Values(Point{"0.5", "MHz", "0.0005"}, Point{"2", "GHz", "2.0000"},
                                         Point{"300", "KHz", "0.0003"},
                                         Point{"26.5", "GHz", "26.5000"},
                                         Point{"50", "MHz", "0.0500"},
                                         Point{"12000", "GHz", "12000.0000"}));

TEST_F(SensorEditor, PointsKeepTheTableInOrder) {
  Edit([&](frmCalDataInput& editor) {
    AddPoint(editor, "0.05", "MHz");
    AddPoint(editor, "10", "MHz");
    AddPoint(editor, "100", "MHz");
    AddPoint(editor, "2", "GHz");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0),
              (Texts{"0.05", "0.10", "10.00", "50.00", "100.00", "1000.00", "2000.00"}));
    EXPECT_EQ(ColumnOf(GridOf(editor), 1),
              (Texts{"100.0", "98.8", "100.0", "100.0", "100.0", "97.0", "100.0"}));
    Click(editor, "btnOk");
  });
  file_.rows = {{"0.05", "100.0"},   {"0.10", "98.8"},    {"10.00", "100.0"},  {"50.00", "100.0"},
                {"100.00", "100.0"}, {"1000.00", "97.0"}, {"2000.00", "100.0"}};
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(SensorEditor, APointThatTheTableHasIsRefused) {
  Edit([&](frmCalDataInput& editor) {
    const std::vector<std::pair<const char*, const char*>> points = {
        {"50", "MHz"}, {"0.05", "GHz"}, {"50000", "KHz"},  {"0.1", "MHz"},   {"100", "KHz"},
        {"1", "GHz"},  {"1000", "MHz"}, {"50.000", "MHz"}, {"50.004", "MHz"}};
    for (const auto& [number, unit] : points) {
      SCOPED_TRACE(testing::Message() << number << unit);
      AddRefusedPoint(editor, number, unit, "Cannot add to same calibration point");
      EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0.10", "50.00", "1000.00"}));
    }
  });
}

TEST_F(SensorEditor, APointBelowZeroIsRefused) {
  Edit([&](frmCalDataInput& editor) {
    AddRefusedPoint(editor, "-5", "MHz", "A calibration point cannot lie below zero.");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0.10", "50.00", "1000.00"}));
    EXPECT_EQ(CellOf(GridOf(editor), 0, 0), "Frequency  [MHz]");
  });
}

TEST_F(SensorEditor, AnEntryThatIsNoNumberAddsNothingSilently) {
  Edit([&](frmCalDataInput& editor) {
    for (const char* entry : {"", "0", "abc", "0.0", "-0", "MHz"}) {
      AddPoint(editor, entry, "GHz");
      EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0.10", "50.00", "1000.00"})) << entry;
    }
  });
}

TEST_F(SensorEditor, ACancelledEntryAddsNothingSilently) {
  Edit([&](frmCalDataInput& editor) {
    user_.At<frmInput>([](frmInput& dialog) {
      Type("77");
      dialog.close();
    });
    Click(editor, "btnAddPoint");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0.10", "50.00", "1000.00"}));
  });
}

TEST_F(SensorEditor, APointTooLargeToBeANumberIsTold) {
  Edit([&](frmCalDataInput& editor) {
    questions_.ExpectError({"9E999", "too large"});
    AddPoint(editor, "9E999", "MHz");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0.10", "50.00", "1000.00"}));
  });
}

TEST_F(SensorEditor, TheNewPointIsTheNextToBeTyped) {
  Edit([&](frmCalDataInput& editor) {
    AddPoint(editor, "100", "MHz");
    Type("96.5");
    Press(Qt::Key_Return);
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"98.8", "100.0", "96.5", "97.0"}));
  });
}

// ---- A full table.

TEST_F(SensorEditor, ATableOf51RowsIsShownSavedAndReadBackWhole) {
  file_.rows = ManyRows(51);
  Edit([&](frmCalDataInput& editor) {
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 52);
    EXPECT_EQ(CellOf(GridOf(editor), 51, 0), "51.00");
    ClickCell(GridOf(editor), 51, 1);
    Type("95");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  file_.rows.at(50).second = "95.0";
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
  ShowAgain("PX12A", [&](frmCalDataInput& editor) {
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 52);
    EXPECT_EQ(CellOf(GridOf(editor), 51, 1), "95.0");
  });
}

TEST_F(SensorEditor, A52ndPointIsRefused) {
  file_.rows = ManyRows(51);
  Edit([&](frmCalDataInput& editor) {
    // Before the point is asked for.
    questions_.ExpectError({"51"});
    Click(editor, "btnAddPoint");
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 52);
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(SensorEditor, A51stPointIsTaken) {
  file_.rows = ManyRows(50);
  Edit([&](frmCalDataInput& editor) {
    AddPoint(editor, "51", "MHz");
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 52);
    Click(editor, "btnOk");
  });
  file_.rows = ManyRows(51);
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

// ---- Deleting points.

TEST_F(SensorEditor, DeletingAsksAndNoKeepsThePoint) {
  Edit([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 1);
    DeletePoint(editor, "50MHz", QMessageBox::No);
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0.10", "50.00", "1000.00"}));
    DeletePoint(editor, "50MHz", QMessageBox::Yes);
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0.10", "1000.00"}));
    Click(editor, "btnOk");
  });
  file_.rows = {{"0.10", "98.8"}, {"1000.00", "97.0"}};
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(SensorEditor, TheQuestionNamesTheFrequencyAsANumber) {
  Edit([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 0);
    DeletePoint(editor, "0.1MHz", QMessageBox::No);
    ClickCell(GridOf(editor), 3, 0);
    DeletePoint(editor, "1000MHz", QMessageBox::No);
  });
  SensorFile inGHz{
      .model = "PX13A", .rows = {{"0.0500", "100.0"}, {"26.5000", "98.0"}}, .reference = "0.0500"};
  ShowFile(inGHz, [&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 1);
    DeletePoint(editor, "0.05GHz", QMessageBox::No);
    ClickCell(GridOf(editor), 2, 1);
    DeletePoint(editor, "26.5GHz", QMessageBox::No);
  });
}

TEST_F(SensorEditor, APointThatIsNotWhatWasTypedIsReported) {
  Edit([&](frmCalDataInput& editor) {
    const NoticeLine& notices = Find<NoticeLine>(editor, "notices");
    AddPoint(editor, "1,75", "MHz");
    ASSERT_EQ(notices.Notices().size(), 1);
    EXPECT_TRUE(notices.text().startsWith("\"1,75\" is not a number; \"1.00\" was added."))
        << notices.text().toStdString();
    AddPoint(editor, "abc", "MHz");
    EXPECT_TRUE(notices.text().startsWith("\"abc\" is not a number; no point was added."))
        << notices.text().toStdString();
    AddPoint(editor, "60", "MHz");
    EXPECT_EQ(notices.text(), "");
  });
}

TEST_F(SensorEditor, PointsAreDeletedOneAfterAnotherByTheKeyboard) {
  file_.rows = ManyRows(5);
  Edit([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 2, 1);
    Find<QPushButton>(editor, "btnDeletePoint").setFocus();
    for (const char* point : {"2MHz", "3MHz"}) {
      questions_.Expect({.text = "Are you want delete? (" + QString(point) + ")",
                         .icon = QMessageBox::Warning,
                         .buttons = QMessageBox::Yes | QMessageBox::No,
                         .defaultButton = QMessageBox::No},
                        QMessageBox::Yes);
      Press(Qt::Key_Return);
    }
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"1.00", "4.00", "5.00"}));
  });
}

TEST_F(SensorEditor, AfterADeletionTheSameRowNumberStaysCurrentAndMarked) {
  file_.rows = ManyRows(40);
  Edit([&](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    ClickCell(grid, 30, 1);
    const auto expectCurrent = [&](int row) {
      EXPECT_EQ(grid.CurrentRow(), row);
      EXPECT_EQ(grid.selectionModel()->selectedIndexes(), QModelIndexList{grid.currentIndex()});
      EXPECT_TRUE(grid.viewport()->rect().contains(grid.visualRect(grid.currentIndex())));
    };
    DeletePoint(editor, "30MHz", QMessageBox::Yes);
    expectCurrent(30);
    DeletePoint(editor, "31MHz", QMessageBox::Yes);
    expectCurrent(30);
    ClickCell(grid, 38, 1);
    DeletePoint(editor, "40MHz", QMessageBox::Yes);
    expectCurrent(37);
  });
}

TEST_F(SensorEditor, EveryRowCanBeDeletedAndThenNothingHappens) {
  Edit([&](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 3, 1);
    DeletePoint(editor, "1000MHz", QMessageBox::Yes);
    DeletePoint(editor, "50MHz", QMessageBox::Yes);
    DeletePoint(editor, "0.1MHz", QMessageBox::Yes);
    EXPECT_EQ(GridOf(editor).Data().RowCount(), 1);
    EXPECT_EQ(CellOf(GridOf(editor), 0, 0), "Frequency  [MHz]");
    Click(editor, "btnDeletePoint");  // asks nothing
    EXPECT_TRUE(editor.isVisible());
    AddPoint(editor, "5", "MHz");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), Texts{"5.00"});
    DeletePoint(editor, "5MHz", QMessageBox::Yes);
    Click(editor, "btnOk");
  });
  file_.rows = {};
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

// ---- OK.

TEST_F(SensorEditor, OkWithoutASerialNumberIsRefused) {
  file_.serial = "";
  New([&](frmCalDataInput& editor) {
    Fill(editor, "txtComment", "typed");
    questions_.ExpectNotice("Please input serial number");
    Click(editor, "btnOk");
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(TextOf(editor, "txtComment"), "typed");
    EXPECT_EQ(tree_.Names(kFolder), Texts{});
    Type("12");
    EXPECT_EQ(TextOf(editor, "txtSerial"), "12") << "the serial number is typed next";
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12"});
}

struct Naming {
  const char* serial;
  const char* file;
};

class SensorFileName : public SensorEditor, public testing::WithParamInterface<Naming> {};

TEST_P(SensorFileName, KeepsTheLastFiveCharacters) {
  file_.serial = "";
  New([&](frmCalDataInput& editor) {
    // Pasted, as it holds characters that not every keyboard has.
    Find<QLineEdit>(editor, "txtSerial").insert(GetParam().serial);
    Click(editor, "btnOk");
  });
  EXPECT_EQ(tree_.Names(kFolder), Texts{GetParam().file});
}

INSTANTIATE_TEST_SUITE_P(
    SerialNumbers, SensorFileName,
    testing::Values(Naming{"3318A12345", "SN12345"}, Naming{"12345", "SN12345"},
                    Naming{"1234", "SN1234"}, Naming{"1", "SN1"}, Naming{"ABC12345", "SN12345"},
                    Naming{"AB.12345", "SN12345"}, Naming{"no 12 45", "SN12 45"},
                    Naming{"x\u00c4\u00d6\u20ac12", "SN\u00c4\u00d6\u20ac12"}));

TEST_F(SensorEditor, OkSavesEverythingThatWasTyped) {
  file_.serial = "";
  New([&](frmCalDataInput& editor) {
    Fill(editor, "txtSerial", "US 41:7");
    Fill(editor, "txtCalNo", "C 1");
    Fill(editor, "txtCalYear", "2010");
    Choose(editor, "cmbCalMonth", "DEC");
    Fill(editor, "txtCalDay", "24");
    Fill(editor, "txtDueYear", "2011");
    Choose(editor, "cmbDueMonth", "JAN");
    Fill(editor, "txtDueDay", "9");
    Fill(editor, "txtComment", "after repair: as found");
    questions_.ExpectError({"\":\""});
    Click(editor, "btnOk");
    Fill(editor, "txtSerial", "US 41-7");
    Click(editor, "btnOk");
  });
  file_.serial = "US 41-7";
  file_.calNo = "C 1";
  file_.calDate = "20101224";
  file_.dueDate = "20110109";
  file_.comment = "after repair: as found";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN 41-7)"), file_.Bytes());
  EXPECT_EQ(tree_.Names(kFolder), Texts{"SN 41-7"});
}

TEST_F(SensorEditor, EnterGoesFromFieldToFieldAndNeverSaves) {
  Edit([&](frmCalDataInput& editor) {
    Find<QWidget>(editor, "txtSerial").setFocus();
    for (const char* next : {"txtCalNo", "txtCalDay", "cmbCalMonth", "txtCalYear", "txtDueDay",
                             "cmbDueMonth", "txtDueYear", "txtComment", "Grid"}) {
      Press(QString(next).startsWith("cmb") ? Qt::Key_Enter : Qt::Key_Return);
      EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), next);
    }
    Fill(editor, "txtComment", "entered");
    Press(Qt::Key_Return);
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
  });
}

TEST_F(SensorEditor, ADayThatDoesNotExistIsReportedAndMarkedAndSavedAsTyped) {
  Edit([&](frmCalDataInput& editor) {
    const NoticeLine& notices = Find<NoticeLine>(editor, "notices");
    EXPECT_EQ(notices.Notices(), QStringList());
    Choose(editor, "cmbDueMonth", "FEB");
    Fill(editor, "txtDueDay", "31");
    const QString notice =
        "Calibration Due Date: the day 31 FEB 2002 does not exist. It is saved as it stands.";
    EXPECT_EQ(notices.Notices(), QStringList{notice});
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtDueDay")), notice);
    Fill(editor, "txtDueDay", "28");
    EXPECT_EQ(notices.Notices(), QStringList());
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtDueDay")), "");
    Fill(editor, "txtDueDay", "31");
    Click(editor, "btnOk");
  });
  file_.dueDate = "20020231";
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(SensorEditor, ADayThatAMonthLowersIsReported) {
  Edit([&](frmCalDataInput& editor) {
    const NoticeLine& notices = Find<NoticeLine>(editor, "notices");
    Fill(editor, "txtCalDay", "31");
    Find<QComboBox>(editor, "cmbCalMonth").setFocus();
    Press(Qt::Key_Up);
    Press(Qt::Key_Up);
    EXPECT_EQ(ComboText(editor, "cmbCalMonth"), "JAN");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "28");
    EXPECT_EQ(notices.Notices(), QStringList{"The day 31 was lowered to 28, the last day of FEB."});
    Fill(editor, "txtCalDay", "31");
    EXPECT_EQ(notices.Notices(), QStringList());
  });
}

TEST_F(SensorEditor, ACommentOfWhichOnlyTheFirstWordComesBackIsReported) {
  Edit([&](frmCalDataInput& editor) {
    Fill(editor, "txtComment", "done in lab");
    const QString notice =
        "Comment: only \"done\" will be read back when the file is opened again.";
    EXPECT_EQ(Find<NoticeLine>(editor, "notices").Notices(), QStringList{notice});
    EXPECT_EQ(MarkOf(&Find<QLineEdit>(editor, "txtComment")), notice);
    Click(editor, "btnOk");
  });
  file_.comment = "done in lab";
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(SensorEditor, CtrlSSavesWhatIsTypedIntoAnOpenCell) {
  Edit([&](frmCalDataInput& editor) {
    EXPECT_EQ(Find<QPushButton>(editor, "btnOk").toolTip(),
              "Saves the data and closes this screen (Ctrl+S).");
    ClickCell(GridOf(editor), 1, 1);
    Type("97");
    Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !editor.isVisible(); }));
  });
  file_.rows.front().second = "97.0";
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
}

TEST_F(SensorEditor, OkAsksWhetherToReplaceTheFileOfTheSameLastFiveCharacters) {
  tree_.Write(kPath, "another instrument");
  file_.serial = "";
  New([&](frmCalDataInput& editor) {
    Fill(editor, "txtSerial", "X12345");
    questions_.Expect({.text = "The file SN12345 holds data without a serial number. Do you want "
                               "to replace it?",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      QMessageBox::Yes);
    Click(editor, "btnOk");
  });
  file_.serial = "X12345";
  EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
  EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12345"});
}

TEST_F(SensorEditor, AFolderInLowerCaseStaysOneFolder) {
  tree_.Write(R"(c:\calfactors\px12a\sn12345)", file_.Bytes());
  gCalFiles[0].FilePath = kPath;
  ShowAgain("PX12A", [&](frmCalDataInput& editor) {
    Fill(editor, "txtComment", "second");
    Click(editor, "btnOk");
  });
  file_.comment = "second";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\px12a\sn12345)"), file_.Bytes());
  EXPECT_EQ(tree_.Names(R"(c:\calfactors)"), Texts{"px12a"});
  EXPECT_EQ(tree_.Names(R"(c:\calfactors\px12a)"), Texts{"sn12345"});
}

class EverySensor : public SensorEditor, public testing::WithParamInterface<const char*> {};

TEST_P(EverySensor, SavesWhatItShowsByteForByte) {
  const bool inGHz = std::string(GetParam()) == "PX13A";
  file_ = {.model = GetParam(),
           .rows = {{inGHz ? "0.0100" : "10.00", "98.8"},
                    {inGHz ? "0.0500" : "50.00", "100.0"},
                    {inGHz ? "2.0000" : "2000.00", "9.5"}},
           .reference = inGHz ? "0.0500" : "50.00"};
  Edit([&](frmCalDataInput& editor) {
    EXPECT_EQ(editor.windowTitle().toStdString(),
              "Editing calibraition data (" + file_.model + " - 3318A12345)");
    EXPECT_EQ(CellOf(GridOf(editor), 0, 0), inGHz ? "Frequency  [GHz]" : "Frequency  [MHz]");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\)" + file_.model + R"(\SN12345)"), file_.Bytes());
}

INSTANTIATE_TEST_SUITE_P(Models, EverySensor, testing::Values("PX12A", "PX11D", "PX11A", "PX13A"));

// ---- Cancel.

class SensorEditorLeft : public SensorEditor {
 protected:
  /// Changes everything, leaves by `leave`, and finds the file as it was.
  void ExpectNothingSaved(const Act& leave) {
    Edit([&](frmCalDataInput& editor) {
      Fill(editor, "txtCalNo", "changed");
      Choose(editor, "cmbCalMonth", "DEC");
      ClickCell(GridOf(editor), 1, 1);
      Type("7");
      Press(Qt::Key_Return);
      AddPoint(editor, "5", "MHz");
      DeletePoint(editor, "5MHz", QMessageBox::Yes);
      leave(editor);
      EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
    EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12345"});
  }
};

TEST_F(SensorEditorLeft, ByCancelSavesNothing) {
  ExpectNothingSaved([](frmCalDataInput& editor) { Click(editor, "btnCancel"); });
}

TEST_F(SensorEditorLeft, ByEscapeSavesNothing) {
  ExpectNothingSaved([](frmCalDataInput& editor) {
    Find<QLineEdit>(editor, "txtCalNo").setFocus();
    Press(Qt::Key_Escape);
  });
}

TEST_F(SensorEditorLeft, ByItsFrameSavesNothing) {
  ExpectNothingSaved([](frmCalDataInput& editor) { editor.close(); });
}

TEST_F(SensorEditor, NewDataThatAreCancelledLeaveNoFile) {
  New([&](frmCalDataInput& editor) {
    Fill(editor, "txtSerial", "1");
    Click(editor, "btnCancel");
  });
  EXPECT_EQ(tree_.Names(kFolder), Texts{});
}

// ---- What cannot be shown.

TEST_F(SensorEditor, ARowThatDoesNotExistIsAnIndexError) {
  for (const int row : {-1, 51, 998, 1000}) {
    EXPECT_EQ(ErrorOf([&] { editor_.SetupDat(static_cast<std::int16_t>(row), "PX12A"); }).Kind(),
              ErrorKind::Index)
        << row;
    EXPECT_FALSE(editor_.isVisible());
  }
}

TEST_F(SensorEditor, ModelCodesAreComparedExactly) {
  WriteTemplate(file_);
  for (const char* code : {"px12a", "PX12A ", "", "PX99Z"}) {
    EXPECT_EQ(ErrorOf([&] { editor_.SetupDat(frmCalDataInput::kNewData, code); }).Kind(),
              ErrorKind::Index)
        << code;
    EXPECT_FALSE(editor_.isVisible());
  }
}

}  // namespace
}  // namespace tarvell
