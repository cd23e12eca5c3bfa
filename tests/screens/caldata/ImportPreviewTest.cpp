// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QAbstractItemView>
#include <QCheckBox>
#include <QSplitter>
#include <QTabWidget>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <string>

#include "screens/caldata/ImportStage.h"
#include "screens/caldata/TabEditorFixture.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/UserSettings.h"
#include "support/ErrorOf.h"

/// Importing certificates into an open editor, and exporting what it shows.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

TEST_F(ImportingASensor, ShowsWhatChangesAndTakesItAsOneActThatCanBeUndone) {
  SensorFile imported = file_;
  imported.calDate = "20260807";
  imported.calNo = "C-0099";
  imported.rows = {
      {"50.00", "100.0"}, {"1000.00", "97.5"}, {"1500.00", "96.8"}, {"2000.00", "96.0"}};
  Import(
      header_ + "f [GHz];KF [%];Gamma\n0,05;100,0;0,01\n1,5;96,8;0,02\n1;97,47;0,03\n",
      [](ImportPreview& preview) {
        EXPECT_EQ(Find<QLabel>(preview, "lblSummary").text().toStdString(),
                  "c.csv (Text, UTF-8, separated by semicolons): 3318A12345. Rows: 1 updated, 1 "
                  "added, 1 as before.");
        EXPECT_EQ(PreviewRow(preview, "tblRows", 0), "as it was|50.00|100.0");
        EXPECT_EQ(PreviewRow(preview, "tblRows", 1), "updated|1000.00|97.0 \u2192 97.5*");
        EXPECT_EQ(PreviewRow(preview, "tblRows", 2), "added|1500.00*|96.8*");
        EXPECT_EQ(PreviewRow(preview, "tblRows", 3), "not in it, is kept|2000.00|96.0");
        EXPECT_EQ(Find<QTabWidget>(preview, "tabs").tabText(1), "&Header: 2 changed");
        EXPECT_EQ(PreviewRow(preview, "tblHeader", 0), "Calibration number|C-0042|C-0099*|line 2");
        EXPECT_EQ(PreviewRow(preview, "tblHeader", 1),
                  "Calibration date|5 MAR 2001|7 AUG 2026*|line 3");
        EXPECT_EQ(Notes(preview),
                  "The format of the table rounds:\n- 1 GHz: 97.47 % becomes 97.5.\n\nNot used:\n- "
                  "These columns are not used: \"Gamma\".\n- The certificate names no due date. It "
                  "stays 5 MAR 2002.");
        Press(Qt::Key_Return);
      },
      [&](QWidget& editor) {
        GridOf(editor).setFocus();
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(ColumnOf(GridOf(editor), 1).size(), 3U);
        EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-0042");
        EXPECT_EQ(ComboText(editor, "cmbCalMonth"), "MAR");
        Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
      });
  ExpectSaved(imported);
}

/// Whether a cell of the preview's table is marked as a possible slip.
bool IsMarked(ImportPreview& preview, int row, int column) {
  const QTableWidgetItem& cell = *Find<QTableWidget>(preview, "tblRows").item(row, column);
  EXPECT_EQ(cell.font().underline(), !cell.icon().isNull());
  return cell.font().underline();
}

TEST_F(ImportingASensor, ShowsBeforehandWhichValuesTheEditorWillMark) {
  const std::string why = "The earlier calibration has 97.0, a change of -17.3; the limit is 0.97.";
  Import(
      header_ + "f [MHz];KF [%]\n1000;79,7\n2000;96,1\n",
      [&](ImportPreview& preview) {
        EXPECT_EQ(Notes(preview),
                  "These values may be slips of typing:\n- 1000 MHz, Calibration factor: " + why +
                      "\n\nNot used:\n- The certificate names no due date. It stays 5 MAR 2002.");
        const QTableWidgetItem& cell = *Find<QTableWidget>(preview, "tblRows").item(1, 2);
        EXPECT_EQ(FromQt(cell.data(Qt::AccessibleTextRole).toString()),
                  "97.0 \u2192 79.7 (possible slip)");
        EXPECT_EQ(FromQt(cell.toolTip()), why);
        EXPECT_TRUE(IsMarked(preview, 1, 2));
        EXPECT_FALSE(IsMarked(preview, 2, 2));
        Press(Qt::Key_R, Qt::AltModifier);
        EXPECT_TRUE(IsMarked(preview, 1, 2)) << "the row above it is removed";
        EXPECT_FALSE(IsMarked(preview, 2, 2));
        Press(Qt::Key_Return);
      },
      [&](QWidget& editor) {
        Settle();
        // The file is the earlier calibration, now that the date is another one.
        EXPECT_EQ(ComboText(editor, "cmbEarlier"), "5 MAR 2001, C-0042");
        EXPECT_EQ(FromQt(GridOf(editor).model()->index(0, 1).data(Qt::ToolTipRole).toString()),
                  why);
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_FALSE(Find<QComboBox>(editor, "cmbEarlier").isVisible());
      });
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, AnUndoKeepsWhatWasTypedIntoTheHeaderSince) {
  Import(
      header_ + "f [MHz];KF [%]\n50;99,5\n", [](ImportPreview&) { Press(Qt::Key_Return); },
      [](QWidget& editor) {
        Fill(editor, "txtCalNo", "typed");
        GridOf(editor).setFocus();
        Press(Qt::Key_Z, Qt::ControlModifier);
      });
  file_.calNo = "typed";
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, ChangesNothingWhenCancelledAndRemovesPointsOnlyWhereTheUserSaysSo) {
  const std::string certificate = header_ + "f [MHz];KF [%]\n50;99,5\n";
  Import(certificate, [](ImportPreview&) { Press(Qt::Key_Escape); });
  ExpectSaved(file_);
  Import(certificate, [](ImportPreview& preview) {
    EXPECT_EQ(Find<QCheckBox>(preview, "chkRemove").text().toStdString(),
              "&Remove the 2 points that the certificate does not have");
    Press(Qt::Key_R, Qt::AltModifier);
    Press(Qt::Key_Return);
  });
  file_.calNo = "C-0099";
  file_.calDate = "20260807";
  file_.rows = {{"50.00", "99.5"}};
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, AsksHowToReadWhatCanBeReadInTwoWays) {
  Import("Calibration date;07/08/2026\nf [MHz];KF [%]\n1,500;98\n", [](ImportPreview& preview) {
    EXPECT_EQ(Hint(preview), "Say how to read what can be read in two ways.");
    const std::string dates =
        "\"07/08/2026\" can be 2026-08-07 or 2026-07-08. Choose it under \"Dates\".";
    EXPECT_TRUE(Contains(Notes(preview),
                         "Please choose:\n- \"1,500\" can be 1500 or 1.5. Choose it under "
                         "\"Numbers\".\n- " +
                             dates));
    EXPECT_EQ(ComboEntries(preview, "cmbSign"),
              (Texts{"How is 1,500 meant?", "1,500 is 1500", "1,500 is 1.5"}));
    Choose(preview, "cmbSign", "1,500 is 1500");
    EXPECT_TRUE(Contains(Notes(preview), "Please choose:\n- " + dates));
    EXPECT_FALSE(CanImport(preview));
    Choose(preview, "cmbDates", "07/08/2026 is 2026-07-08");
    EXPECT_EQ(Hint(preview), "");
    EXPECT_EQ(PreviewRow(preview, "tblRows", 2), "added|1500.00*|98.0*");
    Click(preview, "btnOk");
  });
  file_.calDate = "20260708";
  file_.rows = {{"50.00", "100.0"}, {"1000.00", "97.0"}, {"1500.00", "98.0"}, {"2000.00", "96.0"}};
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, OfAnotherInstrumentHasToBeConfirmed) {
  Import("Serial number;X1\nf [MHz];KF [%]\n50;99,5\n", [](ImportPreview& preview) {
    EXPECT_EQ(Notes(preview),
              "Please check:\n- The certificate is for the serial number \"X1\", and this data set "
              "has \"3318A12345\". The serial number stays as it is.");
    EXPECT_FALSE(CanImport(preview));
    Click(preview, "chkConfirm");
    EXPECT_TRUE(CanImport(preview));
    Click(preview, "btnOk");
  });
  file_.rows[0].second = "99.5";
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, HasToBeConfirmedAgainWhenItIsAboutSomethingElse) {
  Import(
      "Serial number;X1\nf [MHz];KF [%]\n50;99,5\n\nSerial number;X2\nf [MHz];KF [%]\n"
      "1000;98,5\n",
      [](ImportPreview& preview) {
        const auto isTicked = [&](const QString& box) {
          return Find<QCheckBox>(preview, box).isChecked();
        };
        Click(preview, "chkConfirm");
        Click(preview, "chkRemove");
        EXPECT_FALSE(isTicked("chkConfirm")) << "the import without removed points was confirmed";
        Click(preview, "chkConfirm");
        EXPECT_TRUE(CanImport(preview));
        Choose(preview, "cmbItem", "X2");
        EXPECT_FALSE(CanImport(preview));
        EXPECT_FALSE(isTicked("chkConfirm")) << "the serial number X1 was confirmed";
        EXPECT_FALSE(isTicked("chkRemove")) << "1000 and 2000 MHz were meant";
        EXPECT_EQ(PreviewRow(preview, "tblRows", 0), "not in it, is kept|50.00|100.0");
        Click(preview, "chkConfirm");
        EXPECT_TRUE(CanImport(preview));
        Choose(preview, "cmbItem", "X2");
        EXPECT_TRUE(isTicked("chkConfirm")) << "nothing has changed";
        Click(preview, "btnOk");
      });
  file_.rows[1].second = "98.5";
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, OfAnotherKindIsNotPossible) {
  Import("T [K];U [K]\n300;0,1\n", [](ImportPreview& preview) {
    EXPECT_EQ(Hint(preview), "There is nothing to import into this data set.");
    EXPECT_NE(Notes(preview).find("It has:\nTable of line 2 (line 2): T [K], U [K], 1 row."),
              std::string::npos);
    EXPECT_FALSE(CanImport(preview));
    Click(preview, "btnCancel");
  });
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, RemembersTheColumnsThatTheUserChoseForTheSameCaptions) {
  KeepUserSettingsIn(QString::fromStdString((tree_.Root() / "settings.ini").string()));
  const std::string certificate = "Serial number;3318A12345\n\na;b;c\n50;91,5;99,5\n";
  Import(certificate, [](ImportPreview& preview) {
    EXPECT_FALSE(CanImport(preview));
    Choose(preview, "cmbTable", "Table of line 4 (line 4), 1 row");
    Choose(preview, "cmbColumn0", "a");
    Choose(preview, "cmbColumn1", "b");
    Click(preview, "chkConfirm");
    EXPECT_TRUE(CanImport(preview));
    Click(preview, "btnCancel");
  });
  Import(certificate, [](ImportPreview& preview) {
    EXPECT_FALSE(CanImport(preview)) << "what was cancelled is not remembered";
    Choose(preview, "cmbTable", "Table of line 4 (line 4), 1 row");
    Choose(preview, "cmbColumn0", "a");
    Choose(preview, "cmbColumn1", "c");
    Click(preview, "chkConfirm");
    Click(preview, "btnOk");
  });
  Import(certificate, [](ImportPreview& preview) {
    EXPECT_EQ(ComboText(preview, "cmbColumn1"), "c");
    Click(preview, "chkConfirm");
    Press(Qt::Key_Return);
  });
  KeepUserSettingsIn("");
  file_.rows[0].second = "99.5";
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, AsksWhichOfTwoColumnsIsMeant) {
  Import("Serial number;3318A12345\nf [MHz];KF [%];KF [%]\n50;99,5;98,5\n",
         [](ImportPreview& preview) {
           EXPECT_EQ(Hint(preview), "Choose the columns that can be meant in several ways.");
           EXPECT_EQ(ComboEntries(preview, "cmbColumn1"),
                     (Texts{"(choose a column)", "(not used)", "f [MHz]", "KF [%] (column 2)",
                            "KF [%] (column 3)"}));
           EXPECT_FALSE(CanImport(preview));
           Choose(preview, "cmbColumn1", "KF [%] (column 3)");
           EXPECT_TRUE(CanImport(preview));
           Click(preview, "btnOk");
         });
  file_.rows[0].second = "98.5";
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, AsksWhichOfTwoTablesIsMeant) {
  Import(
      "Serial number;3318A12345\n\nAs found\nf [MHz];KF [%]\n50;91,5\n\nAs left\nf [MHz];KF "
      "[%]\n1000;98,5\n",
      [](ImportPreview& preview) {
        EXPECT_EQ(Hint(preview), "Choose the table that is meant.");
        EXPECT_EQ(ComboEntries(preview, "cmbTable"),
                  (Texts{"(choose a table)", "(none: the page stays as it is)",
                         "As found (line 5), 1 row", "As left (line 9), 1 row"}));
        EXPECT_TRUE(Contains(Notes(preview),
                             "Please choose:\n- The values can be those of \"As found\" (line 5) "
                             "or \"As left\" (line 9). Choose the table."));
        EXPECT_FALSE(CanImport(preview));
        Choose(preview, "cmbTable", "As found (line 5), 1 row");
        EXPECT_EQ(PreviewRow(preview, "tblRows", 0), "updated|50.00|100.0 \u2192 91.5*");
        Choose(preview, "cmbTable", "As left (line 9), 1 row");
        Choose(preview, "cmbTable", "(choose a table)");
        EXPECT_FALSE(CanImport(preview));
        Choose(preview, "cmbTable", "As left (line 9), 1 row");
        Click(preview, "btnOk");
      });
  file_.rows[1].second = "98.5";
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, TakesBothOfTwoTablesOnlyIfTheUserSaysSo) {
  Import("Serial number;3318A12345\n\nf [MHz];KF [%];Channel\n50;99,5;A\n1000;98,5;B\n",
         [](ImportPreview& preview) {
           EXPECT_FALSE(CanImport(preview));
           Choose(preview, "cmbTable", "2 tables together, 2 rows");
           EXPECT_TRUE(CanImport(preview));
           Click(preview, "btnOk");
         });
  file_.rows[0].second = "99.5";
  file_.rows[1].second = "98.5";
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, AnotherInstrumentOfTheCertificateHasItsOwnTables) {
  Import(
      "Serial number;X1\nf [MHz];KF [%]\n50;99,5\n\nSerial number;3318A12345\nf [MHz];KF [%]\n"
      "50;98,5\n",
      [](ImportPreview& preview) {
        EXPECT_EQ(PreviewRow(preview, "tblRows", 0), "updated|50.00|100.0 \u2192 98.5*");
        Choose(preview, "cmbItem", "X1");
        EXPECT_EQ(PreviewRow(preview, "tblRows", 0), "updated|50.00|100.0 \u2192 99.5*");
        EXPECT_FALSE(CanImport(preview));
        Choose(preview, "cmbItem", "3318A12345");
        Click(preview, "btnOk");
      });
  file_.rows[0].second = "98.5";
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, AFileThatIsNoCertificateIsRefusedAndTheEditorIsAsItWas) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    questions_.ExpectFilePicker("Import a certificate", kFilters,
                                QString::fromStdString((tree_.Root() / "c.pdf").string()));
    questions_.ExpectError({"The file is a PDF."});
    WriteNative(tree_.Root() / "c.pdf", "%PDF-1.7");
    ClickInMenu(editor, "btnFile", "Import...");
    Click(editor, "btnOk");
  });
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, ShowsLongNamesInFullAndRemembersTheRoomForThem) {
  KeepUserSettingsIn(QString::fromStdString((tree_.Root() / "settings.ini").string()));
  const std::string caption = "Calibration factor <b> of the sensor at its reference plane [%]";
  const std::string certificate = "Serial number;3318A12345\n\nf [MHz];" + caption + "\n50;99,5\n";
  QList<int> moved;
  Import(certificate, [&](ImportPreview& preview) {
    const auto& box = Find<QComboBox>(preview, "cmbColumn1");
    EXPECT_EQ(FromQt(box.toolTip()),
              "<p>Calibration factor &lt;b&gt; of the sensor at its reference plane [%]</p>");
    EXPECT_GE(box.view()->minimumWidth(), box.fontMetrics().horizontalAdvance(box.currentText()));
    auto& splitter = Find<QSplitter>(preview, "splitter");
    const QList<int> before = splitter.sizes();
    QWidget* handle = splitter.handle(1);
    const QPoint grip = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, {}, grip);
    QTest::mouseMove(handle, grip + QPoint(40, 0));
    QTest::mouseRelease(handle, Qt::LeftButton, {}, grip + QPoint(40, 0));
    moved = splitter.sizes();
    EXPECT_GT(moved.at(0), before.at(0));
    Click(preview, "btnCancel");
  });
  Import(certificate, [&](ImportPreview& preview) {
    EXPECT_EQ(Find<QSplitter>(preview, "splitter").sizes(), moved);
    Click(preview, "btnCancel");
  });
  KeepUserSettingsIn("");
  ExpectSaved(file_);
}

TEST_F(ImportingASensor, AnExportIsWrittenAsTheNameOfTheFileSays) {
  const std::filesystem::path csv = tree_.Root() / "out.csv";
  const std::filesystem::path json = tree_.Root() / "out.JSON";
  ShowFile(file_, [&](frmCalDataInput& editor) {
    for (const std::filesystem::path& file : {csv, json}) {
      questions_.ExpectFilePicker("Export the calibration data",
                                  {"CSV for spreadsheets (*.csv)", "JSON for programs (*.json)"},
                                  QString::fromStdString(file.string()));
      ClickInMenu(editor, "btnFile", "Export...");
      EXPECT_EQ(Find<NoticeLine>(editor, "notices").Notices(),
                QStringList("Saved as " + QString::fromStdString(file.string()) + "."));
    }
    ActivateAgain(editor);
    GridOf(editor).setFocus();
    Press(Qt::Key_Right);
    QTest::keyClicks(QApplication::focusWidget(), "99");
    Press(Qt::Key_Return);
    EXPECT_EQ(Find<NoticeLine>(editor, "notices").About("export"), "") << "it has other values";
  });
  EXPECT_EQ(ReadNative(csv),
            Lines({"Format,tarvell-data-set 1 "
                   "c45e2ded6ada0b0aaff82fa0064e1fdfa68154bc7d62078ccafda4ce9bec12ce",
                   "Model,PX12A", "Serial number,3318A12345", "Calibration number,C-0042",
                   "Calibration date,2001-03-05", "Due date,2002-03-05", "Comment,factory", "",
                   "Frequency [MHz],Calibration factor [%]", "50.00,100.0", "1000.00,97.0",
                   "2000.00,96.0"}));
  EXPECT_TRUE(ReadNative(json).starts_with("{\n  \"format\": \"tarvell-data-set\""));
}

class ImportingASet : public TabEditorFixture {};

TEST_F(ImportingASet, ChangesEveryPageInOneActThatCanBeUndone) {
  WriteTemplates();
  std::vector<Member> members = SetAMembers();
  const std::string path = R"(c:\calfactors\RT520A\SN54321)";
  const SetHeader header = {"RT520A", "2519J54321"};
  tree_.Write(path, CapacitorFile(header, members));
  const std::string certificate =
      "Serial number;2519J54321\n\nRT521A\nf [kHz];C [pF];D\n1;1.000345;0.00007\n\n"
      "Page;RT522A\nMember serial number;M9\nf [Hz];C [nF]\n2000;0.0100007\n";
  EditFile("RT520A", path, [&](frmCalDataTabInput& editor) {
    user_.At<ImportPreview>([](ImportPreview& preview) {
      EXPECT_EQ(PreviewRow(preview, "tblRows", 0),
                "updated|1000|1.000012pF \u2192 1.000345pF*|12 ppm|0.00001|0.00002");
      EXPECT_EQ(PreviewRow(preview, "tblHeader", 0), "Serial number of RT522A|M002|M9*|line 10");
      Choose(preview, "cmbPage", "RT522A");
      EXPECT_EQ(PreviewRow(preview, "tblRows", 1),
                "updated|2000|10.00002pF \u2192 10.00070pF*|200 ppm|0.00013|0.00014");
      Click(preview, "btnOk");
    });
    ImportFile(editor, questions_, tree_.Root() / "set.csv", certificate);
    ActivateAgain(editor);
    GridOf(editor).setFocus();
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(CellOf(GridOf(editor), 1, 1), "1.000012pF");
    ClickTab(editor, 2);
    EXPECT_EQ(CellOf(GridOf(editor), 2, 1), "10.00002pF");
    EXPECT_EQ(TextOf(editor, "txtTabSerial"), "M002");
    GridOf(editor).setFocus();
    Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    Click(editor, "btnOk");
  });
  members[0].rows[0][1] = "1.000345pF";
  members[1].serial = "M9";
  members[1].rows[1][1] = "10.00070pF";
  EXPECT_EQ(tree_.Read(path), CapacitorFile(header, members));
}

TEST_F(ImportingASet, TakesTheAnswerAboutTheDecimalSignForEveryPage) {
  WriteTemplates();
  std::vector<Member> members = SetAMembers();
  const std::string path = R"(c:\calfactors\RT520A\SN54321)";
  const SetHeader header = {"RT520A", "2519J54321"};
  tree_.Write(path, CapacitorFile(header, members));
  EditFile("RT520A", path, [&](frmCalDataTabInput& editor) {
    user_.At<ImportPreview>([](ImportPreview& preview) {
      EXPECT_FALSE(CanImport(preview));
      Choose(preview, "cmbSign", "1,001 is 1.001");
      Click(preview, "btnOk");
    });
    ImportFile(editor, questions_, tree_.Root() / "set.csv",
               "Serial number;2519J54321\nf [kHz];C [pF]\n1;1,001\n\nf [kHz];C [pF]\n1;10,001\n");
    ActivateAgain(editor);
    Click(editor, "btnOk");
  });
  members[0].rows[0][1] = "1.001000pF";
  members[1].rows[0][1] = "10.00100pF";
  EXPECT_EQ(tree_.Read(path), CapacitorFile(header, members));
}

}  // namespace
}  // namespace tarvell
