// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QBuffer>
#include <QComboBox>
#include <QHeaderView>
#include <QSpinBox>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <latch>
#include <optional>
#include <system_error>

#include "screens/caldata/frmCalDataInput.h"
#include "screens/overview/OverviewStage.h"
#include "screens/station/frmStationModelList.h"
#include "screens/widgets/QtPath.h"
#include "screens/widgets/UserSettings.h"
#include "support/ClickInMenu.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

using Overview = OverviewStage;

TEST_F(Overview, ListsEveryDataSetAndEveryInstrumentWithWhatToDo) {
  AtFilled([](frmOverview& overview) {
    std::vector<Texts> rows;
    for (int row = 0; row <= 5; ++row) {
      Texts& cells = rows.emplace_back();
      for (int column = 0; column < kOverviewColumns; ++column) {
        cells.push_back(CellOf(TableOf(overview), row, column));
      }
    }
    EXPECT_EQ(rows, (std::vector<Texts>{
                        {"Kind", "Model", "Serial number", "Calibration number", "Calibrated",
                         "Due", "Days left", "Comment", "Stations", "State"},
                        {"data set", "PX12A", "3318A00001", "C-9", "2025-11-21", "2026-11-21", "-1",
                         "certificate", "", "past due, not used"},
                        {"data set", "PX12A", "3318A12345", "C-0042", "2026-03-05", "2027-03-05",
                         "103", "certificate", "ST1, ST2", ""},
                        {"instrument", "PX12A", "3318A12345", "", "", "2026-03-05", "-262",
                         "factory", "ST1", "due date differs"},
                        {"instrument", "ZZ9", "77", "", "", "", "", "certificate", "ST1", ""},
                        {"instrument", "PX12A", "3318A12345", "", "", "2027-03-05", "103",
                         "certificate", "ST2", ""}}));
    EXPECT_EQ(TableOf(overview).model()->rowCount(), 5);
    EXPECT_EQ(Counts(overview), "5 of 5 rows, 2 with something to do");
    // The first row is the current one; the keyboard goes on from it.
    EXPECT_TRUE(TableOf(overview).hasFocus());
    EXPECT_EQ(ToDo(overview),
              "Past due: The calibration is due on 21 NOV 2026. Have the instrument calibrated.\n"
              "Not used: No station uses the data set. If a station should, add the instrument "
              "there.");
    Press(Qt::Key_Down);
    EXPECT_EQ(ToDo(overview), "");
    Press(Qt::Key_Down);
    const std::string differs =
        "Due date differs: The station says 5 MAR 2026, the data set 5 MAR 2027. Update the "
        "station.";
    EXPECT_EQ(ToDo(overview), differs);
    const QModelIndex current = TableOf(overview).currentIndex();
    EXPECT_EQ(current.data(Qt::AccessibleDescriptionRole).toString().toStdString(), differs);
    EXPECT_TRUE(current.data(Qt::ToolTipRole).toString().contains("Update the station."));
  });
}

TEST_F(Overview, MarksAStateByAnIconAndAColourThatTheOthersDoNotHave) {
  AtFilled([](frmOverview& overview) {
    const auto look = [&](int row) {
      const QModelIndex cell = TableOf(overview).model()->index(row - 1, kOverviewColumns - 1);
      return std::pair(cell.data(Qt::DecorationRole), cell.data(Qt::ForegroundRole));
    };
    EXPECT_TRUE(look(kUnusedSensorRow).first.isValid());
    EXPECT_TRUE(look(kStation1Row).first.isValid());
    EXPECT_NE(look(kUnusedSensorRow).second, look(kStation1Row).second);
    EXPECT_EQ(look(kSensorRow), std::pair(QVariant(), QVariant()));
  });
}

// ---- Which rows are shown, and in what order.

TEST_F(Overview, IsNarrowedByTypingByStateAndByStation) {
  AtFilled([](frmOverview& overview) {
    ClickRow(overview, kStation2Row);
    Press(Qt::Key_F, Qt::ControlModifier);
    Type("st2");
    Settle();
    EXPECT_EQ(Column(overview, SurveyColumn::Stations), (Texts{"ST1, ST2", "ST2"}));
    EXPECT_EQ(Counts(overview), "2 of 5 rows, 2 with something to do");
    Press(Qt::Key_Return);
    EXPECT_TRUE(TableOf(overview).hasFocus());
    EXPECT_EQ(TableOf(overview).currentIndex().row(), 1) << "the row stays the current one";
    Press(Qt::Key_F, Qt::ControlModifier);
    Press(Qt::Key_Escape);
    Settle();
    EXPECT_TRUE(overview.isVisible());
    EXPECT_EQ(Column(overview, SurveyColumn::Model).size(), 5U);

    Choose(overview, "cmbState", "Something to do (2)");
    EXPECT_EQ(Column(overview, SurveyColumn::State),
              (Texts{"past due, not used", "due date differs"}));
    Choose(overview, "cmbState", "Not used (1)");
    EXPECT_EQ(Column(overview, SurveyColumn::SerialNumber), Texts{"3318A00001"});
    Choose(overview, "cmbState", "All");
    EXPECT_EQ(ComboEntries(overview, "cmbStation"), (Texts{"All", "ST1", "ST2"}));
    Choose(overview, "cmbStation", "ST2");
    EXPECT_EQ(Column(overview, SurveyColumn::Kind), (Texts{"data set", "instrument"}));
  });
}

TEST_F(Overview, IsSortedByAClickOnACaptionAndKeepsTheCurrentRow) {
  AtFilled([](frmOverview& overview) {
    ClickRow(overview, kStation1Row);
    QHeaderView& header = *TableOf(overview).horizontalHeader();
    const auto click = [&] {
      const int column = static_cast<int>(SurveyColumn::DaysLeft);
      QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                        {header.sectionViewportPosition(column) + 5, header.height() / 2});
    };
    click();
    EXPECT_EQ(Column(overview, SurveyColumn::DaysLeft), (Texts{"-262", "-1", "103", "103", ""}));
    EXPECT_EQ(TableOf(overview).currentIndex().row(), 0);
    click();
    EXPECT_EQ(Column(overview, SurveyColumn::DaysLeft), (Texts{"103", "103", "-1", "-262", ""}));
    click();
    EXPECT_EQ(Column(overview, SurveyColumn::DaysLeft), (Texts{"-1", "103", "-262", "", "103"}));
    EXPECT_EQ(TableOf(overview).currentIndex().row(), kStation1Row - 1);
  });
}

TEST_F(Overview, RemembersWhatIsShownAndHow) {
  const std::filesystem::path file = tree_.Root() / "config" / "settings.ini";
  KeepUserSettingsIn(PathForQt(file));
  AtFilled([](frmOverview& overview) {
    Choose(overview, "cmbStation", "ST1");
    Choose(overview, "cmbState", "Something to do (2)");
    Find<QSpinBox>(overview, "spnDueSoon").setFocus();
    Press(Qt::Key_Up);
    QHeaderView& header = *TableOf(overview).horizontalHeader();
    header.moveSection(9, 0);
    header.resizeSection(1, 123);
    header.setSortIndicator(2, Qt::DescendingOrder);
  });
  AtFilled([](frmOverview& overview) {
    EXPECT_EQ(ComboText(overview, "cmbStation"), "ST1");
    EXPECT_EQ(ComboText(overview, "cmbState"), "Something to do (2)");
    EXPECT_EQ(Find<QSpinBox>(overview, "spnDueSoon").value(), 31);
    const QHeaderView& header = *TableOf(overview).horizontalHeader();
    EXPECT_EQ(header.visualIndex(9), 0);
    EXPECT_EQ(header.sectionSize(1), 123);
    EXPECT_EQ(header.sortIndicatorSection(), 2);
    EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
  });
  // What cannot be is not taken.
  Remember("overview/station", QString("gone"));
  Remember("overview/state", QString("no such state"));
  Remember("overview/places", std::vector<int>{0, 0, 2, 3, 4, 5, 6, 7, 8, 9});
  Remember("columns/frmOverview", std::vector<int>{0, -1});
  Remember("overview/sort", std::vector<int>{99, 0});
  AtFilled([](frmOverview& overview) {
    EXPECT_EQ(ComboText(overview, "cmbStation"), "All");
    EXPECT_EQ(Column(overview, SurveyColumn::Model).size(), 5U);
    EXPECT_EQ(TableOf(overview).horizontalHeader()->visualIndex(9), 9);
  });
  KeepUserSettingsIn("");
}

TEST_F(Overview, CountsAsDueSoonWhatTheUserSays) {
  AtFilled([](frmOverview& overview) {
    EXPECT_EQ(Cell(overview, kSensorRow, SurveyColumn::State), "");
    Fill(overview, "qt_spinbox_lineedit", "103");
    EXPECT_EQ(Cell(overview, kSensorRow, SurveyColumn::State), "due soon");
    EXPECT_EQ(Counts(overview), "5 of 5 rows, 3 with something to do");
    Press(Qt::Key_Down);
    EXPECT_EQ(Cell(overview, kSensorRow, SurveyColumn::State), "");
  });
}

TEST_F(Overview, JudgesTheDueDatesAgainWhenAnotherDayBegins) {
  AtFilled([this](frmOverview& overview) {
    today_ = {2027, 3, 6};
    overview.LookAtTheDay();
    EXPECT_EQ(Column(overview, SurveyColumn::DaysLeft), (Texts{"-105", "-1", "-366", "", "-1"}));
    EXPECT_EQ(Cell(overview, kSensorRow, SurveyColumn::State), "past due");
    today_ = {2027, 3, 5};
    Press(Qt::Key_F5);
    AwaitEnd(overview);
    EXPECT_EQ(Cell(overview, kSensorRow, SurveyColumn::State), "due soon");
  });
}

// ---- Opening a row.

TEST_F(Overview, EnterOpensADataSetAndReadsItAgain) {
  gCalFiles[0].SerialNumber = "of the menu below";
  AtFilled([&](frmOverview& overview) {
    ClickRow(overview, kSensorRow);
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      EXPECT_EQ(TextOf(editor, "txtSerial"), "3318A12345");
      Fill(editor, "txtComment", "again");
      Press(Qt::Key_S, Qt::ControlModifier);
    });
    Press(Qt::Key_Return);
    EXPECT_EQ(Cell(overview, kSensorRow, SurveyColumn::Comment), "again");
    EXPECT_EQ(TableOf(overview).currentIndex().row(), kSensorRow - 1);
    EXPECT_TRUE(overview.HasChangedFiles());
  });
  sensor_.comment = "again";
  EXPECT_EQ(tree_.Read(kSensor), sensor_.Bytes());
  EXPECT_EQ(gCalFiles[0].SerialNumber, "of the menu below");
}

TEST_F(Overview, ADoubleClickOpensAnInstrumentAtItsStation) {
  AtFilled([&](frmOverview& overview) {
    user_.At<frmStationModelList>([&](frmStationModelList& station) {
      EXPECT_EQ(TextOf(station, "txtData_0"), "PX12A");
      Fill(station, "txtData_9", "A-78");
      Choose(station, "cmbSerial", "3318A12345");
      Click(station, "btnSave");
      questions_.Expect({.text = "Instruemnt Data was changed. Do you want to save it?",
                         .title = "Instrument data was changed.",
                         .buttons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                         .defaultButton = QMessageBox::Yes},
                        QMessageBox::No);
      Click(station, "btnReturn");
    });
    DoubleClickCell(TableOf(overview), kStation1Row, 2);
    EXPECT_EQ(TableOf(overview).currentIndex().row(), kStation1Row - 1);
  });
  EXPECT_TRUE(Contains(tree_.Read(kAtStation1), "ASSET A-78\r\n"));
}

TEST_F(Overview, SaysWhyARowCannotBeOpened) {
  tree_.Write(R"(c:\calfactors\ZZ9\SN00077)",
              Lines({"#MODEL_NO : ZZ9", "#SER_NO   : 77", "#CAL_DATE : 20260305", "#CAL_NO   : 1",
                     "#DUE_DATE : 20270305", "#COMMENT  : "}));
  std::filesystem::create_directories(tree_.Native(R"(c:\calfactors\PX12A\SN99999)"));
  AtFilled([&](frmOverview& overview) {
    ClickRow(overview, 3);
    EXPECT_EQ(Cell(overview, 3, SurveyColumn::State),
              R"(cannot be read: c:\calfactors\PX12A\SN99999)");
    questions_.ExpectError({"it is a folder, not a file", "SN99999"});
    Press(Qt::Key_Return);
    ClickRow(overview, 4);
    questions_.ExpectNotice(
        "The data of ZZ9 cannot be edited. Use Add or Update to copy a finished file.");
    Click(overview, "btnOpen");
  });
}

// ---- While it fills.

/// Lets one data file and the INDEX files be read, and the others when the gate is opened.
class Gate : public ForwardingPlatform {
 public:
  Gate() : ForwardingPlatform(CurrentPlatform()), before_(SetCurrentPlatform(this)) {}
  Gate(const Gate&) = delete;
  Gate& operator=(const Gate&) = delete;
  ~Gate() override { SetCurrentPlatform(before_); }

  [[nodiscard]] std::error_code OpenFound(const FoundEntry& entry,
                                          std::unique_ptr<InputFile>& file) override {
    if (entry.name != "INDEX" && isPassed_.exchange(true)) {
      gate_.wait();
    }
    return ForwardingPlatform::OpenFound(entry, file);
  }
  void Open() { gate_.count_down(); }

 private:
  Platform* before_;
  std::atomic<bool> isPassed_ = false;
  std::latch gate_{1};
};

/// Cancels the filling when the first row is shown.
void CancelAfterTheFirstRow(const QAbstractItemModel& rows, Gate& gate) {
  EXPECT_TRUE(QTest::qWaitFor([&] { return rows.rowCount() == 1; }));
  gate.Open();
  Press(Qt::Key_C, Qt::AltModifier);
}

TEST_F(Overview, ShowsTheFirstRowAndTakesKeysWhileFilesAreRead) {
  Gate gate;
  AtOverview([&](frmOverview& overview) {
    const QAbstractItemModel& rows = *TableOf(overview).model();
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows.rowCount() == 1; }));
    EXPECT_EQ(Cell(overview, 1, SurveyColumn::SerialNumber), "3318A00001");
    EXPECT_TRUE(Find<QProgressBar>(overview, "prgSurvey").isVisible());
    Press(Qt::Key_F, Qt::ControlModifier);
    Type("zz");
    Settle();
    EXPECT_EQ(rows.rowCount(), 0);
    for (const char* button : {"Save the table as CSV...", "Save all due dates as a calendar...",
                               "Print...", "Save as PDF..."}) {
      questions_.ExpectError({"Not all files have been read", "press F5 to read them again"});
      ClickInMenu(overview, "btnFile", button);
    }
    questions_.ExpectNotice("Wait until all files have been read, or press F5 to read them again.");
    Click(overview, "btnUpdate");
    gate.Open();
    AwaitEnd(overview);
    EXPECT_EQ(Column(overview, SurveyColumn::Model), Texts{"ZZ9"});
  });
}

TEST_F(Overview, PrintsTheRowsThatItShows) {
  QByteArray pages;
  QBuffer paper(&pages);
  paper.open(QIODevice::WriteOnly);
  AtFilled([&](frmOverview& /*overview*/) {
    questions_.ExpectPrinter("Overview of the calibrations", &paper);
    Press(Qt::Key_P, Qt::ControlModifier);
  });
  EXPECT_EQ(pages.count("/Type /Page\n"), 1);
}

TEST_F(Overview, CanBeCancelledAndReadAgain) {
  Gate gate;
  AtOverview([&](frmOverview& overview) {
    const QAbstractItemModel& rows = *TableOf(overview).model();
    CancelAfterTheFirstRow(rows, gate);
    EXPECT_FALSE(Find<QProgressBar>(overview, "prgSurvey").isVisible());
    EXPECT_EQ(rows.rowCount(), 1);
    EXPECT_TRUE(Contains(ToDo(overview), "Not all files were read"));
    TableOf(overview).setFocus();
    Press(Qt::Key_F5);
    AwaitEnd(overview);
    EXPECT_EQ(rows.rowCount(), 5);
    EXPECT_FALSE(Contains(ToDo(overview), "Not all files were read"));
  });
}

TEST_F(Overview, FollowsTheDaysAndWhatIsEditedAlsoAfterCancel) {
  Gate gate;
  AtOverview([&](frmOverview& overview) {
    CancelAfterTheFirstRow(*TableOf(overview).model(), gate);
    EXPECT_EQ(Column(overview, SurveyColumn::State), Texts{"past due"});
    ClickRow(overview, kUnusedSensorRow);
    user_.At<frmCalDataInput>([](frmCalDataInput& editor) {
      Fill(editor, "txtComment", "again");
      Press(Qt::Key_S, Qt::ControlModifier);
    });
    Press(Qt::Key_Return);
    EXPECT_EQ(Column(overview, SurveyColumn::Comment), (Texts{"again", "certificate"}));
    EXPECT_EQ(Column(overview, SurveyColumn::State), (Texts{"past due", ""}));
    Fill(overview, "qt_spinbox_lineedit", "103");
    EXPECT_EQ(Column(overview, SurveyColumn::State), (Texts{"past due", "due soon"}));
  });
}

TEST_F(Overview, FillsWithoutAThreadWhereTheSystemStartsNone) {
  std::vector<SurveyRow> found;
  std::optional<SurveyResult> result;
  const SurveyThread survey(
      {.calibrationDir = gCalibrationDir, .stationDir = gStationDir, .today = today_},
      {.found = [&](std::vector<SurveyRow> rows,
                    double /*done*/) { std::ranges::move(rows, std::back_inserter(found)); },
       .finished = [&](SurveyResult whole) { result = std::move(whole); },
       .failed = [](const std::exception_ptr& failure) { std::rethrow_exception(failure); }},
      [](const auto& /*work*/) -> std::jthread {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
      });
  EXPECT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }));
  EXPECT_EQ(result->rows.size(), 5U);
  EXPECT_FALSE(found.empty()) << "rows are shown before the end";
}

TEST_F(Overview, CanBeClosedWhileItFills) {
  Gate gate;
  AtOverview([&](frmOverview& overview) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return TableOf(overview).model()->rowCount() == 1; }));
    gate.Open();
    Press(Qt::Key_Escape);
    EXPECT_FALSE(overview.isVisible());
  });
}

TEST_F(Overview, ReportsADirectoryThatIsGone) {
  gStationDir = R"(c:\gone)";
  AtFilled([&](frmOverview& overview) {
    EXPECT_EQ(Cell(overview, 1, SurveyColumn::Kind), "folder");
    EXPECT_EQ(Cell(overview, 1, SurveyColumn::Model), "gone");
    EXPECT_EQ(Cell(overview, 1, SurveyColumn::State), R"(cannot be read: c:\gone)");
    EXPECT_EQ(Cell(overview, 3, SurveyColumn::State), "") << "it is not known who uses it";
    questions_.ExpectNotice(
        "There is no screen for this folder or list. The line below the table "
        "says what to do.");
    Press(Qt::Key_Return);
  });
}

}  // namespace
}  // namespace tarvell
