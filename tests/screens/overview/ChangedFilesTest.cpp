// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QTableWidget>

#include "screens/overview/OverviewStage.h"
#include "screens/overview/UpdatePreview.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtPath.h"
#include "support/ClickInMenu.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// What others change while the overview is open.
class ChangedFiles : public OverviewStage {
 protected:
  void Remove(const char* path) const { std::filesystem::remove(tree_.Native(path)); }
  static const NoticeLine& Notices(frmOverview& overview) {
    return Find<NoticeLine>(overview, "notices");
  }
};

TEST_F(ChangedFiles, AreReadAgainWithTheStationAfterAnUpdate) {
  AtFilled([&](frmOverview& overview) {
    sensor_.dueDate = "20280305";
    tree_.Write(kSensor, sensor_.Bytes());
    ClickRow(overview, kStation1Row);
    user_.At<UpdatePreview>([](UpdatePreview& preview) { Click(preview, "btnOk"); });
    Click(overview, "btnUpdate");
    EXPECT_EQ(Cell(overview, kSensorRow, SurveyColumn::Due), "2028-03-05");
    EXPECT_EQ(Cell(overview, kStation1Row, SurveyColumn::State), "");
    EXPECT_EQ(Cell(overview, kStation2Row, SurveyColumn::State), "due date differs");
  });
}

TEST_F(ChangedFiles, ThatAreGoneAreReportedAndTakenOutWhenTheyAreOpened) {
  AtFilled([&](frmOverview& overview) {
    Remove(kSensor);
    ClickRow(overview, kSensorRow);
    questions_.ExpectNotice(
        R"(c:\calfactors\PX12A\SN12345 is not there any more: somebody has deleted or renamed it. )"
        "Its folder was read again.");
    Press(Qt::Key_Return);
    EXPECT_EQ(Counts(overview), "4 of 4 rows, 3 with something to do");
    Remove(kAtStation2);
    questions_.ExpectNotice(
        R"(c:\stations\ST2\PX12A is not there any more: somebody has deleted or renamed it. )"
        "Its folder was read again.");
    DoubleClickCell(TableOf(overview), 4, 1);
    EXPECT_EQ(Cell(overview, 4, SurveyColumn::Kind), "list") << "INDEX names the missing file";
  });
}

TEST_F(ChangedFiles, ThatAreGoneAreTakenOutByAnUpdateThatCannotReadThem) {
  AtFilled([&](frmOverview& overview) {
    Remove(kAtStation1);
    ClickRow(overview, kStation1Row);
    user_.At<UpdatePreview>([](UpdatePreview& preview) {
      const auto& table = Find<QTableWidget>(preview, "tblPreview");
      const QString reason = table.item(0, 2)->text();
      EXPECT_TRUE(reason.contains("does not exist (any more)")) << reason.toStdString();
      Settle();
      const QRect cell = table.visualItemRect(table.item(0, 2));
      const QRect text = table.fontMetrics().boundingRect(
          QRect(0, 0, cell.width(), QWIDGETSIZE_MAX), Qt::TextWordWrap, reason);
      EXPECT_LT(cell.right(), table.viewport()->width());
      EXPECT_GE(cell.height(), text.height()) << "the whole reason is shown";
      Click(preview, "btnCancel");
    });
    Click(overview, "btnUpdate");
    EXPECT_EQ(Column(overview, SurveyColumn::Model),
              (Texts{"PX12A", "PX12A", "INDEX", "ZZ9", "PX12A"}));
  });
}

TEST_F(ChangedFiles, ThatAreGoneAreNotExported) {
  const std::filesystem::path csv = tree_.Root() / "overview.csv";
  AtFilled([&](frmOverview& overview) {
    Remove(kAtStation2);
    questions_.ExpectFilePicker("Save the table", {"CSV for spreadsheets (*.csv)"}, PathForQt(csv));
    ClickInMenu(overview, "btnFile", "Save the table as CSV...");
    EXPECT_EQ(
        Notices(overview).Remark().toStdString(),
        "Saved as " + csv.string() + ". Files were deleted meanwhile: their rows were taken out.");
  });
  const std::string table = ReadNative(csv);
  EXPECT_FALSE(Contains(table, "\r\ninstrument,PX12A,3318A12345,,,2027-03-05"));
  EXPECT_TRUE(Contains(table, "INDEX names a missing file"));
}

TEST_F(ChangedFiles, AreReportedAsSavedWhateverIsToBeDoneAboutTheRow) {
  const std::filesystem::path pdf = tree_.Root() / "overview.pdf";
  AtFilled([&](frmOverview& overview) {
    ClickRow(overview, kUnusedSensorRow);
    const std::string saved = "Saved as " + pdf.string() + ".";
    for (int time = 0; time < 2; ++time) {
      questions_.ExpectFilePicker("Save as PDF", {"PDF, A4 (*.pdf)", "PDF, Letter (*.pdf)"},
                                  PathForQt(pdf));
      ClickInMenu(overview, "btnFile", "Save as PDF...");
      EXPECT_TRUE(ToDo(overview).starts_with(saved + " Past due: ")) << ToDo(overview);
    }
    ClickRow(overview, kSensorRow);
    EXPECT_EQ(ToDo(overview), "") << "another row";
  });
  EXPECT_TRUE(ReadNative(pdf).starts_with("%PDF"));
}

}  // namespace
}  // namespace tarvell
