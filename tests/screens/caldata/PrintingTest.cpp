// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QBuffer>
#include <QFileDialog>
#include <QRegularExpression>
#include <QTableWidget>

#include <algorithm>

#include "core/history/History.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/TabEditorFixture.h"
#include "screens/caldata/frmHistory.h"
#include "screens/widgets/PaperPainter.h"
#include "screens/widgets/ProgramLibrary.h"
#include "screens/widgets/UserSettings.h"
#include "support/ErrorOf.h"
#include "support/SensorStage.h"

/// "Print..." and "Save as PDF..." by their keys, and the bytes that come out.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

const QStringList kPdfFilters = {"PDF, A4 (*.pdf)", "PDF, Letter (*.pdf)"};

/// How many sheets a PDF has.
qsizetype SheetCount(const QByteArray& pdf) {
  return pdf.count("/Type /Page\n");
}

/// Width and height of the first sheet in points, "595 842".
std::string SheetSize(const QByteArray& pdf) {
  static const QRegularExpression box(R"(/MediaBox \[0 0 (\d+)\S* (\d+)\S*\])");
  const QRegularExpressionMatch match = box.match(QString::fromLatin1(pdf));
  return (match.captured(1) + ' ' + match.captured(2)).toStdString();
}

class Printing : public SensorStage {
 protected:
  Printing() {
    tree_.MakeFolders(R"(c:\calfactors\PX12A)");
    SaveWithHistory(kPath, SensorFile{.rows = {{"50.00", "100.0"}, {"100.00", "98.5"}}}.Bytes());
    file_.calDate = "20020305";
    file_.rows = {{"50.00", "100.0"}, {"100.00", "98.4"}};
    SaveWithHistory(kPath, file_.Bytes());
    gCalFiles[0].FilePath = kPath;
  }

  void Show(const Act& act) {
    SensorStage::Show(0, "PX12A", [&](frmCalDataInput& editor) {
      ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
      act(editor);
    });
  }

  /// Chooses an entry of the File menu by its letter.
  static void ChooseInFileMenu(QWidget& screen, Qt::Key letter) {
    Click(screen, "btnFile");
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
    QTest::keyClick(QApplication::activePopupWidget(), letter);
    Settle();
  }

  [[nodiscard]] std::string File(const std::string& name) const {
    return (tree_.Root() / name).generic_string();
  }
  [[nodiscard]] QByteArray Pdf(const std::string& name) const {
    return QByteArray::fromStdString(ReadNative(File(name)));
  }

  static constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";
  SensorFile file_;
};

TEST_F(Printing, SavesAPdfInTheChosenSizeAndLeavesTheDataAsTheyAre) {
  const std::string before = tree_.Read(kPath);
  KeepUserSettingsIn(QString::fromStdString(File("settings.ini")));
  Remember("paper/size", QString("Letter"));
  questions_.ExpectFilePicker("Save as PDF", kPdfFilters, QString::fromStdString(File("one.pdf")));
  questions_.ExpectFilePicker("Save as PDF", kPdfFilters, QString::fromStdString(File("two.pdf")));
  Show([](frmCalDataInput& editor) {
    ClickCell(Find<CalGrid>(editor, "Grid"), 2, 1);
    Type("97.9");
    ChooseInFileMenu(editor, Qt::Key_S);
    // The open cell was stored, and the change can be undone.
    EXPECT_EQ(CellOf(Find<CalGrid>(editor, "Grid"), 2, 1), "97.9");
    EXPECT_EQ(editor.History().count(), 1);
    Remember("paper/size", QString("A4"));
    ChooseInFileMenu(editor, Qt::Key_S);
  });
  EXPECT_EQ(
      questions_.initialDirs,
      (std::vector<QString>{"", QString::fromStdString(File("").substr(0, File("").size() - 1))}));
  KeepUserSettingsIn("");
  EXPECT_TRUE(Pdf("one.pdf").startsWith("%PDF-1."));
  EXPECT_EQ(SheetCount(Pdf("one.pdf")), 1);
  EXPECT_EQ(SheetSize(Pdf("one.pdf")), "612 792");
  EXPECT_EQ(SheetSize(Pdf("two.pdf")), "595 842");
  EXPECT_EQ(tree_.Read(kPath), before);
}

TEST_F(Printing, PrintsOnTheChosenPrinter) {
  QByteArray pages;
  QBuffer paper(&pages);
  paper.open(QIODevice::WriteOnly);
  file_.rows = ManyRows(51);
  tree_.Write(kPath, file_.Bytes());
  questions_.ExpectPrinter("Calibration data of PX12A 3318A12345", &paper);
  Show([](frmCalDataInput& /*editor*/) {
    Press(Qt::Key_P, Qt::ControlModifier);
    Settle();
  });
  // 51 rows, the header and a curve.
  EXPECT_EQ(SheetCount(pages), 2);
}

TEST_F(Printing, ReportsAFileThatCannotBeWritten) {
  questions_.ExpectFilePicker("Save as PDF", kPdfFilters,
                              QString::fromStdString(File("missing/one.pdf")));
  questions_.ExpectError({"Cannot save the file", "does not exist"});
  Show([](frmCalDataInput& editor) {
    ChooseInFileMenu(editor, Qt::Key_S);
    EXPECT_TRUE(editor.isVisible());
  });
}

TEST_F(Printing, SaysThatNoPrinterIsSetUpOrThatAPartOfTheProgramIsMissing) {
  const auto pick = [] { static_cast<void>(Questions().PickPrinter(nullptr, {.title = "x"})); };
  EXPECT_TRUE(Contains(ErrorOf(pick).Text(), "No printer is set up on this computer."));
  TakeLibrariesFrom(QString::fromStdString(tree_.Root().string()));
  EXPECT_TRUE(Contains(ErrorOf(pick).Text(), "a part of it is missing or damaged"));
  TakeLibrariesFrom("");
}

/// Whether one of the texts is this one.
bool Has(const Painted& painted, const std::string& text) {
  return std::ranges::find(painted.texts, text) != painted.texts.end();
}

/// Whether one of the texts begins with this.
bool HasBeginning(const Painted& painted, const std::string& text) {
  return std::ranges::any_of(painted.texts,
                             [&](const std::string& each) { return each.starts_with(text); });
}

TEST_F(Printing, PutsWhatTheEditorShowsOnPaper) {
  QBuffer unused;
  Painted painted;
  questions_.ExpectPrinter("Calibration data of PX12A 3318A12345", &unused, &painted);
  Show([](frmCalDataInput& editor) {
    ClickCell(Find<CalGrid>(editor, "Grid"), 2, 1);
    Type("9.8");
    Press(Qt::Key_P, Qt::ControlModifier);
    Settle();
  });
  EXPECT_TRUE(Has(painted, "9.8"));
  EXPECT_TRUE(Has(painted, "?")) << "the mark";
  EXPECT_TRUE(HasBeginning(painted, "? 100 MHz, ")) << "why it is there";
  EXPECT_TRUE(Has(painted, "98.5")) << "the earlier value";
  EXPECT_TRUE(Has(painted, "-88.7")) << "the change";
  EXPECT_TRUE(HasBeginning(painted, "NOT SAVED, c:"));
  EXPECT_TRUE(Has(painted, "earlier: 5 MAR 2001")) << "the legend of the curve";
  EXPECT_GE(painted.polylines, 2) << "the curve and the earlier one";
}

class PrintingOfASet : public TabEditorFixture {
 protected:
  PrintingOfASet() {
    WriteTemplates();
    tree_.MakeFolders(R"(c:\calfactors\RT520A)");
    gCalFiles.fill(CalFileInfo());
  }
};

TEST_F(PrintingOfASet, PutsEachPageOnPaper) {
  const std::string path = R"(c:\calfactors\RT520A\SN12345)";
  std::vector<Member> members = SetAMembers();
  SaveWithHistory(path, CapacitorFile({"RT520A", "3318A12345"}, members));
  members[2].rows[0][1] = "100.9001pF";
  SetHeader header = {"RT520A", "3318A12345"};
  header.calDate = "20030131";
  SaveWithHistory(path, CapacitorFile(header, members));
  QBuffer unused;
  Painted painted;
  questions_.ExpectPrinter("Calibration data of RT520A 3318A12345", &unused, &painted);
  EditFile("RT520A", path, [](frmCalDataTabInput& /*editor*/) {
    Press(Qt::Key_P, Qt::ControlModifier);
    Settle();
  });
  for (const char* value : {"1.000012pF", "10.00001pF", "100.9001pF", "1000.001pF"}) {
    EXPECT_TRUE(Has(painted, value)) << value;
  }
  EXPECT_TRUE(Has(painted, "?")) << "the mark";
  EXPECT_TRUE(Has(painted, "100.0001pF")) << "the earlier value";
  EXPECT_GE(painted.polylines, 2) << "the curves";
}

TEST_F(Printing, PrintsTheSelectedVersion) {
  QBuffer unused;
  Painted painted;
  frmHistory history({.path = kPath, .model = FindModel("PX12A")}, nullptr);
  history.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&history));
  Press(Qt::Key_Down);
  questions_.ExpectPrinter("Calibration data of PX12A 3318A12345", &unused, &painted);
  ChooseInFileMenu(history, Qt::Key_P);
  EXPECT_TRUE(Has(painted, "98.5"));
  EXPECT_FALSE(Has(painted, "98.4")) << "the present file";
  EXPECT_TRUE(HasBeginning(painted, "replaced 5 MAR 2026"));
  EXPECT_TRUE(Has(painted, "As saved."));
}

TEST_F(Printing, PrintsAVersionOfTheHistory) {
  QByteArray pages;
  QBuffer paper(&pages);
  paper.open(QIODevice::WriteOnly);
  frmHistory history({.path = kPath, .model = FindModel("PX12A")}, nullptr);
  history.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&history));
  questions_.ExpectPrinter("Calibration data of PX12A 3318A12345", &paper);
  ChooseInFileMenu(history, Qt::Key_P);
  EXPECT_EQ(SheetCount(pages), 1);
  Find<QTableWidget>(history, "tblVersions").clearSelection();
  questions_.ExpectError({"Select one version, or two"});
  ChooseInFileMenu(history, Qt::Key_P);
}

}  // namespace
}  // namespace tarvell
