// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QTableWidget>

#include "core/history/History.h"
#include "screens/caldata/frmDeleted.h"
#include "screens/caldata/frmHistory.h"
#include "screens/station/StationFixture.h"
#include "support/ClickInMenu.h"

/// The history of a station's instruments.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class HistoryOfInstruments : public StationStage {
 protected:
  HistoryOfInstruments() {
    tree_.MakeFolders(kStation);
    for (const char* comment : {"first", "second"}) {
      file_.comment = comment;
      SaveWithHistory(kFile, file_.Bytes());
    }
  }

  static std::string CellIn(QWidget& screen, const QString& table, int row, int column) {
    const QTableWidgetItem* cell = Find<QTableWidget>(screen, table).item(row, column);
    return cell == nullptr ? "(no cell)" : cell->text().toStdString();
  }

  void PutBackEarlier(frmHistory& history) {
    Press(Qt::Key_Down);
    questions_.Expect({.text = "Do you want to put back this version of PX12A?",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      QMessageBox::Yes);
    Click(history, "btnPutBack");
  }

  static constexpr const char* kFile = R"(c:\stations\ST1\PX12A)";
  InstrumentFile file_;
};

TEST_F(HistoryOfInstruments, ShowsTheFieldsAndPutsAVersionBack) {
  AtStation([&](frmStationModelList& screen) {
    questions_.ExpectNotice("No model is selected.");
    ClickInMenu(screen, "btnHistory", "History...");
    ClickEntry(screen, "LstInstrment", "PX12A");
    EXPECT_EQ(TextOf(screen, "txtData_11"), "second");
    user_.At<frmHistory>([&](frmHistory& history) {
      EXPECT_EQ(CellIn(history, "tblVersions", 1, 4), "anna");
      EXPECT_EQ(CellIn(history, "tblData", 0, 0), "MODEL NUMBER");
      EXPECT_EQ(CellIn(history, "tblData", 0, 1), "PX12A");
      EXPECT_EQ(CellIn(history, "tblData", 10, 1), "second");
      EXPECT_EQ(history.findChild<QWidget*>("curve"), nullptr);
      PutBackEarlier(history);
      Press(Qt::Key_Escape);
    });
    ClickInMenu(screen, "btnHistory", "History...");
    Settle();
    EXPECT_EQ(TextOf(screen, "txtData_11"), "first");
    LeaveUnsaved(screen);
  });
  file_.comment = "first";
  EXPECT_EQ(tree_.Read(kFile), file_.Bytes());
}

TEST_F(HistoryOfInstruments, PutsNothingBackOverWhatIsTyped) {
  AtStation([&](frmStationModelList& screen) {
    ClickEntry(screen, "LstInstrment", "PX12A");
    Fill(screen, "txtData_11", "typed");
    user_.At<frmHistory>([&](frmHistory& history) {
      Press(Qt::Key_Down);
      EXPECT_FALSE(Find<QPushButton>(history, "btnPutBack").isEnabled());
      Press(Qt::Key_Escape);
    });
    ClickInMenu(screen, "btnHistory", "History...");
    Settle();
    EXPECT_EQ(TextOf(screen, "txtData_11"), "typed");
    LeaveUnsaved(screen);
  });
}

TEST_F(HistoryOfInstruments, FindsDeletedInstrumentsAndPutsThemBack) {
  DeleteWithHistory(kStation, "PX12A");
  AtStation([&](frmStationModelList& screen) {
    user_.At<frmDeleted>([&](frmDeleted& deleted) {
      EXPECT_EQ(CellIn(deleted, "tblDeleted", 0, 0), "ST1");
      EXPECT_EQ(CellIn(deleted, "tblDeleted", 0, 1), "PX12A");
      user_.At<frmHistory>([&](frmHistory& history) {
        PutBackEarlier(history);
        Press(Qt::Key_Escape);
      });
      EXPECT_TRUE(QTest::qWaitForWindowActive(&deleted));
      Press(Qt::Key_Return);
      Click(deleted, "btnClose");
    });
    ClickInMenu(screen, "btnHistory", "Deleted instruments...");
    Settle();
    EXPECT_EQ(EntriesOf(screen, "LstInstrment"), Texts{"PX12A"});
    Click(screen, "btnReturn");
  });
  file_.comment = "first";
  EXPECT_EQ(tree_.Read(kFile), file_.Bytes());
}

}  // namespace
}  // namespace tarvell
