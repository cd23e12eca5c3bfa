// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCheckBox>
#include <QClipboard>
#include <QMimeData>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "screens/caldata/PastePreview.h"
#include "screens/caldata/TabEditorFixture.h"
#include "support/SensorStage.h"

/// Pasting whole tables of points, and copying them.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

class PastingPoints : public SensorStage {
 protected:
  PastingPoints() {
    file_.rows = {{"0.10", "98.84"}, {"50.00", "100.0"}, {"1000.00", "97.0"}, {"2000.00", "96.0"}};
  }

  using ActInPreview = std::function<void(PastePreview& preview)>;

  /// Pastes a text, does `act` in the preview, and saves.
  void PasteAndSave(frmCalDataInput& editor, const ActInPreview& act) {
    if (act) {
      user_.At<PastePreview>([act](PastePreview& preview) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&preview));
        act(preview);
      });
    }
    Press(Qt::Key_V, Qt::ControlModifier);
    editor.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
    EXPECT_TRUE(GridOf(editor).hasFocus());
    Click(editor, "btnOk");
  }
  /// The same in the sensor's table.
  void Paste(const QString& text, const ActInPreview& act = nullptr) {
    ShowFile(file_, [&](frmCalDataInput& editor) {
      ClickCell(GridOf(editor), 2, 1);
      QApplication::clipboard()->setText(text);
      PasteAndSave(editor, act);
    });
  }

  /// The rows of the preview. A changed cell has a star.
  static Texts RowsOf(PastePreview& preview) {
    auto& table = Find<QTableWidget>(preview, "tblPreview");
    Texts rows;
    for (int row = 0; row < table.rowCount(); ++row) {
      std::string line;
      for (int column = 0; column < table.columnCount(); ++column) {
        const QTableWidgetItem& cell = *table.item(row, column);
        EXPECT_EQ(cell.font().bold(), cell.background().style() != Qt::NoBrush);
        line +=
            (column == 0 ? "" : "|") + cell.text().toStdString() + (cell.font().bold() ? "*" : "");
      }
      rows.push_back(line);
    }
    return rows;
  }

  void ExpectSaved(const SensorRows& rows) {
    file_.rows = rows;
    EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN12345)"), file_.Bytes());
  }

  SensorFile file_;
};

TEST_F(PastingPoints, ShowsWhatChangesAndPutsEachPointInItsPlace) {
  Paste("Frequency\tFactor\r\nGHz\t%\r\n0,05\t99,86\r\n2\t96\r\n1,5\t97,3\r\n0,0001\t98,84\r\n",
        [](PastePreview& preview) {
          EXPECT_EQ(Find<QLabel>(preview, "lblSummary").text().toStdString(),
                    "The clipboard has 4 points: 1 updated, 1 added, 2 unchanged. It does not have "
                    "1 point of this table.\nFrequencies are read in GHz, as the caption says, "
                    "numbers with a decimal comma.");
          auto& table = Find<QTableWidget>(preview, "tblPreview");
          EXPECT_EQ(CellOf(table, 0, 0), "Frequency  [MHz]");
          EXPECT_EQ(CellOf(table, 0, 1), "Calibration factor[%]\nbefore");
          EXPECT_EQ(CellOf(table, 0, 2), "Calibration factor[%]\nafter");
          EXPECT_EQ(RowsOf(preview),
                    (Texts{"0.10|98.84|98.84|unchanged", "50.00|100.0|99.9*|updated",
                           "1000.00|97.0|97.0|missing, is kept", "1500.00*||97.3*|added",
                           "2000.00|96.0|96.0|unchanged"}));
          Press(Qt::Key_R, Qt::AltModifier);
          EXPECT_EQ(RowsOf(preview).at(2), "1000.00|97.0|*|missing, is removed");
          Press(Qt::Key_R, Qt::AltModifier);
          Press(Qt::Key_Return);
        });
  ExpectSaved({{"0.10", "98.84"},
               {"50.00", "99.9"},
               {"1000.00", "97.0"},
               {"1500.00", "97.3"},
               {"2000.00", "96.0"}});
}

TEST_F(PastingPoints, SaysThatValuesAroundOneMayBeRatios) {
  for (const auto& [text, mayBeRatios] :
       {std::pair("50\t1.000\n2000\t0.985\n", true), {"50\t1.000\n2000\t98.5\n", false}}) {
    Paste(text, [isWarning = mayBeRatios](PastePreview& preview) {
      EXPECT_EQ(Find<QLabel>(preview, "lblSummary")
                    .text()
                    .endsWith("All values are 2 % or less. If they are ratios, press Cancel, and "
                              "multiply them by 100 in the spreadsheet."),
                isWarning);
      Press(Qt::Key_Escape);
    });
  }
}

TEST_F(PastingPoints, RemovesThePointsThatTheClipboardLacksOnlyWhereTheUserSaysSo) {
  Paste("5\t90\n50\t99\n", [](PastePreview& preview) {
    EXPECT_EQ(Find<QCheckBox>(preview, "chkRemove").text().toStdString(),
              "&Remove the 3 points that the clipboard does not have");
    Press(Qt::Key_R, Qt::AltModifier);
    Press(Qt::Key_Return);
  });
  ExpectSaved({{"5.00", "90.0"}, {"50.00", "99.0"}});
  Paste("5\t91\n", [](PastePreview&) { Press(Qt::Key_Escape); });
  ExpectSaved({{"5.00", "90.0"}, {"50.00", "99.0"}});
  Paste("5\t91\n50\t99", [](PastePreview& preview) {
    EXPECT_FALSE(Find<QCheckBox>(preview, "chkRemove").isVisible());
    Click(preview, "btnOk");
  });
  ExpectSaved({{"5.00", "91.0"}, {"50.00", "99.0"}});
}

TEST_F(PastingPoints, OfAFullTableHaveToReplaceOthers) {
  file_.rows = ManyRows(51);
  Paste("100\t99\n", [](PastePreview& preview) {
    EXPECT_FALSE(Find<QPushButton>(preview, "btnOk").isEnabled());
    EXPECT_NE(Find<QLabel>(preview, "lblFull").text().toStdString().find("room for 51 points"),
              std::string::npos);
    Press(Qt::Key_R, Qt::AltModifier);
    EXPECT_EQ(Find<QLabel>(preview, "lblFull").text().toStdString(), "");
    Click(preview, "btnOk");
  });
  ExpectSaved({{"100.00", "99.0"}});
}

TEST_F(PastingPoints, ShowTheFirstChangeAndWhatStaysADefault) {
  ShowNew({.rows = ManyRows(50)}, [&](frmCalDataInput& editor) {
    Fill(editor, "txtSerial", "12345");
    ClickCell(GridOf(editor), 1, 1);
    QApplication::clipboard()->setText("49\t97\n");
    PasteAndSave(editor, [](PastePreview& preview) {
      auto& table = Find<QTableWidget>(preview, "tblPreview");
      EXPECT_TRUE(table.viewport()->rect().contains(table.visualItemRect(table.item(48, 0))));
      EXPECT_TRUE(table.item(47, 2)->font().italic()) << "is kept, and is still to be entered";
      EXPECT_FALSE(table.item(48, 2)->font().italic());
      Press(Qt::Key_Return);
    });
  });
}

TEST_F(PastingPoints, AreNotGuessedAndNotTakenInPart) {
  const SensorRows before = file_.rows;
  questions_.ExpectError({"Nothing was pasted, and the table is as it was.\n\nLine 1, column 1: ",
                          "Line 2, column 2: "});
  Paste("5O\t99\n2\tn/a\n60\t98\n");
  ExpectSaved(before);
  const Question unclear = {
      .text = "\"1.500\" can be read as 1.5 or as 1500.\n\nIs the point in it a decimal point?",
      .icon = QMessageBox::Question,
      .buttons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
      .defaultButton = QMessageBox::Cancel};
  questions_.Expect(unclear, QMessageBox::Cancel);
  Paste("1.500\t99");
  ExpectSaved(before);
  questions_.Expect(unclear, QMessageBox::No);
  Paste("1.500\t99", [](PastePreview&) { Press(Qt::Key_Return); });
  SensorRows after = before;
  after.insert(after.end() - 1, {"1500.00", "99.0"});
  ExpectSaved(after);
  questions_.Expect(unclear, QMessageBox::Yes);
  Paste("1.500\t99", [](PastePreview&) { Press(Qt::Key_Return); });
  after.insert(after.begin() + 1, {"1.50", "99.0"});
  ExpectSaved(after);
}

TEST_F(PastingPoints, CopiesWholeRowsWithTheirCaptionsAsTextAndAsATable) {
  file_.comment = "a";
  ShowFile(file_, [this](frmCalDataInput& editor) {
    ClickCell(GridOf(editor), 1, 0);
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    const QMimeData& copied = *QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied.text().toStdString(),
              "Frequency  [MHz]\tCalibration factor[%]\n0.10\t98.84\n50.00\t100.0\n1000.00\t97.0\n"
              "2000.00\t96.0");
    const std::string html = copied.html().toStdString();
    EXPECT_NE(html.find("<table><tr><th>Frequency  [MHz]</th><th>Calibration factor[%]</th></tr>"
                        "<tr><td>0.10</td><td>98.84</td></tr>"),
              std::string::npos)
        << html;
    // Pasted back, it changes nothing, not even the text of a value with more decimals.
    PasteAndSave(editor, [](PastePreview& preview) {
      EXPECT_EQ(RowsOf(preview).front(), "0.10|98.84|98.84|unchanged");
      Press(Qt::Key_Return);
    });
  });
  ExpectSaved(file_.rows);
}

}  // namespace
}  // namespace tarvell
