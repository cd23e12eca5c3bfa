// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCheckBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QUrl>
#include <gtest/gtest.h>

#include <string>

#include "screens/caldata/ImportPreview.h"
#include "screens/caldata/TabEditorFixture.h"
#include "screens/widgets/UserSettings.h"
#include "support/ClickInMenu.h"
#include "support/SensorStage.h"

/// Importing certificates into an open editor, and exporting what it shows.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

using ActInPreview = std::function<void(ImportPreview& preview)>;

const QStringList kFilters = {"Certificates (*.csv *.tsv *.txt *.xml *.dcc)", "All files (*)"};

void ActivateAgain(QWidget& editor) {
  // As a window manager does when the preview is gone.
  editor.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
}

/// Chooses "Import..." in the File menu and picks a file of this content.
void ImportFile(QWidget& editor, ScriptedQuestions& questions, const std::filesystem::path& file,
                const std::string& bytes) {
  WriteNative(file, bytes);
  questions.ExpectFilePicker("Import a certificate", kFilters,
                             QString::fromStdString(file.string()));
  ClickInMenu(editor, "btnFile", "Import...");
}

std::string Hint(ImportPreview& preview) {
  return Find<QLabel>(preview, "lblHint").text().toStdString();
}

std::string Notes(ImportPreview& preview) {
  return Find<QPlainTextEdit>(preview, "txtNotes").toPlainText().toStdString();
}

bool CanImport(ImportPreview& preview) {
  return Find<QPushButton>(preview, "btnOk").isEnabled();
}

/// The cells of a row of a preview table. A changed one has a star.
std::string PreviewRow(ImportPreview& preview, const QString& name, int row) {
  auto& table = Find<QTableWidget>(preview, name);
  std::string line;
  for (int column = 0; column < table.columnCount(); ++column) {
    const QTableWidgetItem& cell = *table.item(row, column);
    line += (column == 0 ? "" : "|") + cell.text().toStdString() + (cell.font().bold() ? "*" : "");
  }
  return line;
}

class ImportingASensor : public SensorStage {
 protected:
  ImportingASensor() {
    file_.rows = {{"50.00", "100.0"}, {"1000.00", "97.0"}, {"2000.00", "96.0"}};
  }

  /// Imports a certificate, does `act` in the preview, then `after` in the editor, and saves.
  void Import(const std::string& certificate, const ActInPreview& act,
              const std::function<void(QWidget& editor)>& after = nullptr) {
    ShowFile(file_, [&](frmCalDataInput& editor) {
      user_.At<ImportPreview>([act](ImportPreview& preview) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&preview));
        act(preview);
      });
      ImportFile(editor, questions_, tree_.Root() / "c.csv", certificate);
      ActivateAgain(editor);
      if (after) {
        after(editor);
      }
      Click(editor, "btnOk");
    });
  }

  void ExpectSaved(const SensorFile& file) const {
    EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN12345)"), file.Bytes());
  }

  SensorFile file_;
  const std::string header_ =
      "Serial number;3318A12345\nCertificate no;C-0099\nCalibration date;7.8.2026\n\n";
};

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
        EXPECT_EQ(PreviewRow(preview, "tblRows", 0), "50.00|100.0|as it was");
        EXPECT_EQ(PreviewRow(preview, "tblRows", 1), "1000.00|97.0 \u2192 97.5*|updated");
        EXPECT_EQ(PreviewRow(preview, "tblRows", 2), "1500.00*|96.8*|added");
        EXPECT_EQ(PreviewRow(preview, "tblRows", 3), "2000.00|96.0|not in it, is kept");
        EXPECT_EQ(PreviewRow(preview, "tblHeader", 0), "Calibration number|C-0042|C-0099*|line 2");
        EXPECT_EQ(PreviewRow(preview, "tblHeader", 1),
                  "Calibration date|5 MAR 2001|7 AUG 2026*|line 3");
        EXPECT_EQ(Notes(preview),
                  "The format of the table rounds:\n- 1 GHz: 97.47 % becomes 97.5.\n\nNot used:\n- "
                  "These columns are not used: \"Gamma\".");
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
                  "These values may be slips of typing:\n- 1000 MHz, Calibration factor: " + why);
        const QTableWidgetItem& cell = *Find<QTableWidget>(preview, "tblRows").item(1, 1);
        EXPECT_EQ(FromQt(cell.data(Qt::AccessibleTextRole).toString()),
                  "97.0 \u2192 79.7 (possible slip)");
        EXPECT_EQ(FromQt(cell.toolTip()), why);
        EXPECT_TRUE(IsMarked(preview, 1, 1));
        EXPECT_FALSE(IsMarked(preview, 2, 1));
        Press(Qt::Key_R, Qt::AltModifier);
        EXPECT_TRUE(IsMarked(preview, 1, 1)) << "the row above it is removed";
        EXPECT_FALSE(IsMarked(preview, 2, 1));
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
    EXPECT_EQ(ComboEntries(preview, "cmbSign"),
              (Texts{"How is 1,500 meant?", "1,500 is 1500", "1,500 is 1.5"}));
    Choose(preview, "cmbSign", "1,500 is 1500");
    EXPECT_FALSE(CanImport(preview));
    Choose(preview, "cmbDates", "07/08/2026 is 2026-07-08");
    EXPECT_EQ(Hint(preview), "");
    EXPECT_EQ(PreviewRow(preview, "tblRows", 2), "1500.00*|98.0*|added");
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
    EXPECT_TRUE(CanImport(preview));
    Click(preview, "btnCancel");
  });
  Import(certificate, [](ImportPreview& preview) {
    EXPECT_FALSE(CanImport(preview)) << "what was cancelled is not remembered";
    Choose(preview, "cmbTable", "Table of line 4 (line 4), 1 row");
    Choose(preview, "cmbColumn0", "a");
    Choose(preview, "cmbColumn1", "c");
    Click(preview, "btnOk");
  });
  Import(certificate, [](ImportPreview& preview) {
    EXPECT_EQ(ComboText(preview, "cmbColumn1"), "c");
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

TEST_F(ImportingASensor, AnotherInstrumentOfTheCertificateHasItsOwnTables) {
  Import(
      "Serial number;X1\nf [MHz];KF [%]\n50;99,5\n\nSerial number;3318A12345\nf [MHz];KF [%]\n"
      "50;98,5\n",
      [](ImportPreview& preview) {
        EXPECT_EQ(PreviewRow(preview, "tblRows", 0), "50.00|100.0 \u2192 98.5*|updated");
        Choose(preview, "cmbItem", "X1");
        EXPECT_EQ(PreviewRow(preview, "tblRows", 0), "50.00|100.0 \u2192 99.5*|updated");
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

TEST_F(ImportingASensor, AFileCanBeDroppedOnTheTable) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    const std::filesystem::path file = tree_.Root() / "c.csv";
    WriteNative(file, header_ + "f [MHz];KF [%]\n50;99,5\n");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(file.string()))});
    QWidget* table = GridOf(editor).viewport();
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table, &drop);
    bool isShown = false;
    user_.At<ImportPreview>([&](ImportPreview&) {
      isShown = true;
      Press(Qt::Key_Escape);
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return isShown; }));
  });
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
    }
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
                "1000|1.000012pF \u2192 1.000345pF*|12 ppm|0.00001|0.00002|updated");
      EXPECT_EQ(PreviewRow(preview, "tblHeader", 0), "Serial number of RT522A|M002|M9*|line 10");
      Choose(preview, "cmbPage", "RT522A");
      EXPECT_EQ(PreviewRow(preview, "tblRows", 1),
                "2000|10.00002pF \u2192 10.00070pF*|200 ppm|0.00013|0.00014|updated");
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
