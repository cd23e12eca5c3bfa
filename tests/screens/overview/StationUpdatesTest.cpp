// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QTableWidget>

#include "screens/overview/OverviewStage.h"
#include "screens/overview/UpdatePreview.h"
#include "screens/widgets/QtPath.h"
#include "support/ClickInMenu.h"
#include "support/ErrorOf.h"
#include "support/KeptFiles.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// What is saved from the overview.
class StationUpdates : public OverviewStage {
 protected:
  /// Presses "Update the station", checks the lines of the preview and presses a button of it.
  void Update(frmOverview& overview, const std::vector<Texts>& lines, const QString& button) {
    user_.At<UpdatePreview>([=](UpdatePreview& preview) {
      const auto& table = Find<QTableWidget>(preview, "tblPreview");
      std::vector<Texts> shown;
      for (int row = 0; row < table.rowCount(); ++row) {
        Texts& cells = shown.emplace_back();
        for (int column = 0; column < table.columnCount(); ++column) {
          cells.push_back(table.item(row, column)->text().toStdString());
        }
      }
      EXPECT_EQ(shown, lines);
      Click(preview, button);
    });
    Click(overview, "btnUpdate");
  }

  const std::string before1_ = tree_.Read(kAtStation1);
  const std::string before2_ = tree_.Read(kAtStation2);
  const std::vector<Texts> lines1_ = {
      {kAtStation1, "CAL DUE DATE 5 MAR 2026", "CAL DUE DATE 5 MAR 2027"},
      {kAtStation1, "COMMENT factory", "COMMENT certificate"}};
};

TEST_F(StationUpdates, TakeTheDueDateAndCommentOfTheDataSetAfterAPreview) {
  AtFilled([&](frmOverview& overview) {
    ClickRow(overview, kStation1Row);
    Update(overview, lines1_, "btnCancel");
    EXPECT_EQ(tree_.Read(kAtStation1), before1_);
    EXPECT_FALSE(overview.HasChangedFiles());
    Update(overview, lines1_, "btnOk");
    EXPECT_EQ(Cell(overview, kStation1Row, SurveyColumn::Due), "2027-03-05");
    EXPECT_EQ(Cell(overview, kStation1Row, SurveyColumn::State), "");
    EXPECT_EQ(Counts(overview), "5 of 5 rows, 1 with something to do");
    EXPECT_TRUE(overview.HasChangedFiles());
    questions_.ExpectNotice(
        "Nothing has to be updated: the files of the stations have the due dates and comments of "
        "the data sets.");
    Click(overview, "btnUpdate");
  });
  EXPECT_EQ(tree_.Read(kAtStation1), AtStation{}.Bytes());
  EXPECT_EQ(KeptOf(tree_, R"(c:\stations)", R"(ST1\PX12A)"), Texts{before1_});
}

TEST_F(StationUpdates, OfADataSetReachEveryStationThatUsesIt) {
  sensor_.dueDate = "20280305";
  tree_.Write(kSensor, sensor_.Bytes());
  AtFilled([&](frmOverview& overview) {
    ClickRow(overview, kSensorRow);
    Update(overview,
           {{kAtStation1, "CAL DUE DATE 5 MAR 2026", "CAL DUE DATE 5 MAR 2028"},
            {kAtStation1, "COMMENT factory", "COMMENT certificate"},
            {kAtStation2, "CAL DUE DATE 5 MAR 2027", "CAL DUE DATE 5 MAR 2028"}},
           "btnOk");
  });
  EXPECT_EQ(tree_.Read(kAtStation1), AtStation{.due = "5 MAR 2028"}.Bytes());
  EXPECT_EQ(tree_.Read(kAtStation2), AtStation{.due = "5 MAR 2028"}.Bytes());
}

TEST_F(StationUpdates, SayWhichFileCannotBeUpdatedAndWhy) {
  tree_.Write(kAtStation2, AtStation{.serial = "4419B12345"}.Bytes());
  AtFilled([&](frmOverview& overview) {
    ClickRow(overview, kSensorRow);
    std::vector<Texts> lines = lines1_;
    lines.push_back({kAtStation2, "",
                     "Not updated: The station has the PX12A 4419B12345, the data set is that of "
                     "3318A12345. Choose the right serial number at the station first."});
    Update(overview, lines, "btnOk");
    EXPECT_EQ(Cell(overview, kStation2Row, SurveyColumn::State), "serial number differs");
    ClickRow(overview, kUnusedSensorRow);
    questions_.ExpectNotice(
        "No station has an instrument that could be updated by what is selected. Select "
        "instruments that have a data set, or data sets that stations use. The data of a test kit "
        "need a due date.");
    Click(overview, "btnUpdate");
  });
  EXPECT_EQ(tree_.Read(kAtStation1), AtStation{}.Bytes());
}

TEST_F(StationUpdates, AskBeforeTheyReplaceAFileThatHasChangedSinceThePreview) {
  const std::string other = AtStation{.due = "5 MAR 2026", .comment = "typed meanwhile"}.Bytes();
  AtFilled([&](frmOverview& overview) {
    ClickRow(overview, kStation1Row);
    user_.At<UpdatePreview>([&](UpdatePreview& preview) {
      tree_.Write(kAtStation1, other);
      questions_.Expect(
          {.text = "The file ST1\\PX12A has changed since it was opened here. Do you want "
                   "to replace it?",
           .icon = QMessageBox::Warning,
           .buttons = QMessageBox::Yes | QMessageBox::No,
           .defaultButton = QMessageBox::No},
          QMessageBox::No);
      Click(preview, "btnOk");
    });
    Click(overview, "btnUpdate");
  });
  EXPECT_EQ(tree_.Read(kAtStation1), other);
}

// ---- Files.

TEST_F(StationUpdates, ACalendarThatLacksDueDatesSaysSo) {
  tree_.Write(R"(c:\calfactors\PX12A\SN00009)", "#MODEL_NO : PX12A\r\n");
  const std::filesystem::path calendar = tree_.Root() / "due.ics";
  AtFilled([&](frmOverview& overview) {
    questions_.ExpectFilePicker("Save the due dates", {"Calendars (*.ics)"}, PathForQt(calendar));
    ClickInMenu(overview, "btnFile", "Save all due dates as a calendar...");
    EXPECT_TRUE(Contains(ToDo(overview),
                         "Saved as " + calendar.string() +
                             ". It lacks due dates: files and folders that cannot be read, or "
                             "without a date: 1."));
  });
}

TEST_F(StationUpdates, TheTableAndTheDueDatesAreSavedAsFiles) {
  const std::filesystem::path csv = tree_.Root() / "overview.csv";
  const std::filesystem::path calendar = tree_.Root() / "due.ics";
  AtFilled([&](frmOverview& overview) {
    Choose(overview, "cmbStation", "ST1");
    questions_.ExpectFilePicker("Save the table", {"CSV for spreadsheets (*.csv)"}, PathForQt(csv));
    ClickInMenu(overview, "btnFile", "Save the table as CSV...");
    EXPECT_TRUE(Contains(ToDo(overview), "Saved as " + csv.string()));
    questions_.ExpectFilePicker("Save the due dates", {"Calendars (*.ics)"}, PathForQt(calendar));
    ClickInMenu(overview, "btnFile", "Save all due dates as a calendar...");
    // A folder that is gone.
    questions_.ExpectFilePicker("Save the table", {"CSV for spreadsheets (*.csv)"},
                                PathForQt(tree_.Root() / "gone" / "x.csv"));
    questions_.ExpectError({"Cannot save the file", "gone"});
    ClickInMenu(overview, "btnFile", "Save the table as CSV...");
  });
  EXPECT_EQ(ReadNative(csv),
            Lines({"Kind,Model,Serial number,Calibration number,Calibrated,Due,Days left,Comment,"
                   "Stations,State,What to do,Path",
                   "data set,PX12A,3318A12345,C-0042,2026-03-05,2027-03-05,103,certificate,"
                   "\"ST1, ST2\",,,c:\\calfactors\\PX12A\\SN12345",
                   "instrument,PX12A,3318A12345,,,2026-03-05,-262,factory,ST1,due date differs,"
                   "\"The station says 5 MAR 2026, the data set 5 MAR 2027. Update the station.\","
                   "c:\\stations\\ST1\\PX12A",
                   "instrument,ZZ9,77,,,,,certificate,ST1,,,c:\\stations\\ST1\\ZZ9"}));
  const std::string entries = ReadNative(calendar);
  EXPECT_TRUE(Contains(entries,
                       "UID:data-set_PX12A_SN00001@tarvell\r\nDTSTAMP:20260305T140307Z\r\n"
                       "DTSTART;VALUE=DATE:20261121\r\n"));
  EXPECT_TRUE(Contains(entries, "UID:data-set_PX12A_SN12345@tarvell\r\n"));
}

}  // namespace
}  // namespace tarvell
