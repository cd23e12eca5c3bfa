// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QTabBar>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/history/History.h"
#include "exchange/Certificate.h"
#include "screens/caldata/CurvePane.h"
#include "screens/caldata/EitherEditor.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/caldata/frmDeleted.h"
#include "screens/caldata/frmHistory.h"
#include "screens/widgets/NoticeLine.h"
#include "support/ClickInMenu.h"
#include "support/ErrorOf.h"
#include "support/FaultPlatform.h"
#include "support/KeptFiles.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// The cells of a table by row; the captions are not among them.
std::vector<Texts> CellsOf(QWidget& screen, const QString& name) {
  const auto& table = Find<QTableWidget>(screen, name);
  std::vector<Texts> rows;
  for (int row = 0; row < table.rowCount(); ++row) {
    Texts& cells = rows.emplace_back();
    for (int column = 0; column < table.columnCount(); ++column) {
      cells.push_back(table.item(row, column)->text().toStdString());
    }
  }
  return rows;
}

std::string LabelOf(QWidget& screen, const QString& name) {
  return Find<QLabel>(screen, name).text().toStdString();
}

void ClickRow(QWidget& screen, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  auto& table = Find<QTableWidget>(screen, "tblVersions");
  QTest::mouseClick(table.viewport(), Qt::LeftButton, modifiers,
                    table.visualItemRect(table.item(row, 0)).center());
}

/// The history of a data set that was saved three times, and opened from the menu.
class Versions : public EitherEditor {
 protected:
  Versions() {
    qputenv("TZ", "UTC");
    tree_.MakeFolders(Folder());
    for (const auto& [number, value] : {std::pair("C-1", "98.00"), {"C-2", "98.50"}}) {
      header_.calNo = number;
      values_[0] = HasPages() ? Values()[0] : value;
      SaveWithHistory(Path(), Bytes(header_, values_));
    }
    header_.calNo = "C-3";
    SaveWithHistory(Path(), Bytes(header_));
  }

  /// Opens the history by the More menu and closes all after `act`.
  void AtHistory(const std::function<void(frmHistory& history)>& act) {
    user_.At<frmCalibrationMain>([&](frmCalibrationMain& menu) {
      ClickEntry(menu, "LstInstrment", QString::fromStdString(Code()));
      ClickEntry(menu, "lstSerialNumber", "3318A12345");
      user_.At<frmHistory>([&](frmHistory& history) {
        act(history);
        Press(Qt::Key_Escape);
        EXPECT_FALSE(history.isVisible());
      });
      ClickInMenu(menu, "btnMore", "History...");
      Settle();
      Click(menu, "btnReturn");
    });
    frmCalibrationMain menu(nullptr);
    menu.ShowModally();
  }

  void ExpectPutBackQuestion(QMessageBox::StandardButton answer) {
    questions_.Expect({.text = "Do you want to put back this version of SN12345?",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      answer);
  }

  /// Opens the deleted and damaged data, after which the data set is listed again.
  void ExpectFoundAgain(frmCalibrationMain& menu) {
    ClickInMenu(menu, "btnMore", "Deleted or damaged data...");
    Settle();
    ClickEntry(menu, "LstInstrment", QString::fromStdString(Code()));
    EXPECT_EQ(EntriesOf(menu, "lstSerialNumber"), Texts{"3318A12345"});
    Click(menu, "btnReturn");
  }

  [[nodiscard]] Texts Kept() const {
    return KeptOf(tree_, R"(c:\calfactors)", Code() + R"(\SN12345)");
  }

  Texts values_ = Values();
};

INSTANTIATE_TEST_SUITE_P(Editors, Versions, testing::Bool(), KindName);

TEST_P(Versions, AreListedWithDatesNumberAndWhoReplacedThem) {
  AtHistory([&](frmHistory& history) {
    const std::string time = "5 MAR 2026 14:03:07";
    EXPECT_EQ(CellsOf(history, "tblVersions"),
              (std::vector<Texts>{
                  {"5 MAR 2001", "C-3", "5 MAR 2002", "(the present file)", "", "As saved."},
                  {"5 MAR 2001", "C-2", "5 MAR 2002", time, "anna", "As saved."},
                  {"5 MAR 2001", "C-1", "5 MAR 2002", time, "anna", "As saved."}}));
    EXPECT_EQ(CellsOf(history, "tblData").at(0).at(1), Values()[0]);
    EXPECT_FALSE(Find<QPushButton>(history, "btnPutBack").isEnabled());
    EXPECT_EQ(Find<QTabBar>(history, "tabPages").isVisible(), HasPages());
    // By the keyboard.
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(CellsOf(history, "tblData").at(0).at(1), HasPages() ? Values()[0] : "98.00");
    EXPECT_TRUE(Contains(LabelOf(history, "lblHeader"), "calibration number C-1"));
  });
}

TEST_P(Versions, AreComparedWhenTwoAreSelected) {
  AtHistory([&](frmHistory& history) {
    ClickRow(history, 0);
    ClickRow(history, 2, Qt::ControlModifier);
    EXPECT_TRUE(Contains(LabelOf(history, "lblHeader"),
                         "Earlier: Serial number 3318A12345, "
                         "calibration number C-1"));
    const std::vector<Texts> rows = CellsOf(history, "tblData");
    if (HasPages()) {
      EXPECT_EQ(rows.at(0).back(), "equal");
    } else {
      EXPECT_EQ(rows, (std::vector<Texts>{{"0.10", "98.00", "98.80", "+0.80", "different"},
                                          {"50.00", "100.0", "100.0", "", "equal"},
                                          {"1000.00", "98.84", "98.84", "", "equal"}}));
    }
    EXPECT_FALSE(Find<QPushButton>(history, "btnPutBack").isEnabled());
  });
}

TEST_P(Versions, ArePutBackAsANewSave) {
  const std::string present = tree_.Read(Path());
  const std::string first = Kept().at(0);
  AtHistory([&](frmHistory& history) {
    ClickRow(history, 2);
    ExpectPutBackQuestion(QMessageBox::No);
    Click(history, "btnPutBack");
    EXPECT_EQ(tree_.Read(Path()), present);
    ExpectPutBackQuestion(QMessageBox::Yes);
    Press(Qt::Key_P, Qt::AltModifier);
    EXPECT_EQ(CellsOf(history, "tblVersions").size(), 4U);
  });
  EXPECT_EQ(tree_.Read(Path()), first);
  EXPECT_EQ(Kept().size(), 3U);
  EXPECT_EQ(Kept().back(), present);
}

TEST_P(Versions, AreExportedAsTheyWere) {
  const std::string file = (tree_.Root() / "old.csv").string();
  const auto exportByKeys = [](QWidget& history) {
    Click(history, "btnFile");
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_E);
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() == nullptr; }));
    // As a window manager does when the menu is gone.
    history.activateWindow();
    auto& table = Find<QTableWidget>(history, "tblVersions");
    table.setFocus();
    EXPECT_TRUE(QTest::qWaitFor([&] { return table.hasFocus(); }));
  };
  AtHistory([&](frmHistory& history) {
    ClickRow(history, 2);
    questions_.ExpectFilePicker("Export the calibration data",
                                {"CSV for spreadsheets (*.csv)", "JSON for programs (*.json)"},
                                QString::fromStdString(file));
    exportByKeys(history);
    const QStringList notices = Find<NoticeLine>(history, "notices").Notices();
    EXPECT_TRUE(notices.join("|").startsWith("Saved as " + QString::fromStdString(file) + "."));
    ClickRow(history, 1, Qt::ControlModifier);
    questions_.ExpectError({"Nothing was exported. Select one version."});
    exportByKeys(history);
  });
  const std::string header = "\r\nModel," + Code() +
                             "\r\nSerial number,3318A12345\r\nCalibration number,C-1\r\n"
                             "Calibration date,2001-03-05\r\nDue date,2002-03-05\r\n"
                             "Comment,factory\r\n\r\n";
  const std::string csv = ReadNative(file);
  const std::string lines = csv.substr(csv.find('\r'));
  EXPECT_EQ(csv.substr(0, csv.size() - lines.size()), "Format," + ExportFormat(lines.substr(2)));
  if (HasPages()) {
    EXPECT_TRUE(lines.starts_with(header + "Page,RT521A\r\nMember serial number,M001\r\n"
                                           "Frequency [Hz],Capacitance [pF],Unc. of Capacitance,"
                                           "Disspation Factor,Unc. of Disspation Factor\r\n"
                                           "1000,1.000012,12 ppm,0.00001,0.00002\r\n"));
  } else {
    EXPECT_EQ(lines, header +
                         "Frequency [MHz],Calibration factor [%]\r\n0.10,98.00\r\n"
                         "50.00,100.0\r\n1000.00,98.84\r\n");
  }
}

TEST_P(Versions, ThatWereChangedByHandAreMarked) {
  const std::string folder = R"(c:\calfactors\history.tarvell\)" + Code() + R"(\SN12345)";
  tree_.Write(folder + "\\" + tree_.Names(folder).at(1), "cut");
  tree_.Write(R"(c:\calfactors\history.tarvell\journal.txt)",
              tree_.Read(R"(c:\calfactors\history.tarvell\journal.txt)") + "2026-");
  AtHistory([&](frmHistory& history) {
    EXPECT_EQ(CellsOf(history, "tblVersions").at(1).back(),
              "Changed by hand: it is not what the program saved.");
    EXPECT_TRUE(Contains(LabelOf(history, "notices"),
                         "1 line of the journal cannot be read: it was cut off or changed."));
    ClickRow(history, 1);
    EXPECT_EQ(CellsOf(history, "tblData"), std::vector<Texts>{{"cut"}});
    EXPECT_TRUE(Contains(LabelOf(history, "notices"), "The lines of the file are shown."));
  });
}

TEST_P(Versions, OfAHistoryThatCannotBeReadGiveAMessage) {
  std::filesystem::remove_all(tree_.Native(R"(c:\calfactors\history.tarvell)"));
  tree_.Write(R"(c:\calfactors\history.tarvell)", "a file");
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", QString::fromStdString(Code()));
    ClickEntry(menu, "lstSerialNumber", "3318A12345");
    questions_.ExpectError({"In the place of its folder there is a file.", "history.tarvell"});
    ClickInMenu(menu, "btnMore", "History...");
    Click(menu, "btnReturn");
  });
  frmCalibrationMain menu(nullptr);
  menu.ShowModally();
}

TEST_P(Versions, AreDrawnAsCurvesThatLeadToTheirCells) {
  AtHistory([&](frmHistory& history) {
    if (!Find<CurvePane>(history, "curve").isVisible()) {
      Press(Qt::Key_F8);
    }
    auto& pane = Find<CurvePane>(history, "curve");
    auto& data = Find<QTableWidget>(history, "tblData");
    EXPECT_EQ(LabelOf(history, "lblSummary"),
              HasPages() ? "3 points, 1.000012 to 1.00003 pF." : "3 points, 98.80 to 100.0 %.");
    ClickRow(history, 0);
    ClickRow(history, 2, Qt::ControlModifier);
    EXPECT_EQ(LabelOf(history, "lblSummary"),
              HasPages() ? "3 points, 1.000012 to 1.00003 pF, no change."
                         : "3 points, 98.80 to 100.0 %, largest change +0.80 at 0.1 MHz.");
    Press(Qt::Key_U, Qt::AltModifier);
    ASSERT_TRUE(pane.hasFocus());
    Press(Qt::Key_End);
    EXPECT_EQ(data.currentRow(), 2);
    EXPECT_EQ(data.currentColumn(), 2) << "the later value";
    Press(Qt::Key_Home);
    EXPECT_EQ(pane.accessibleName(), HasPages() ? "Curve, 1 kHz: 1.000012 pF (earlier 1.000012 pF)"
                                                : "Curve, 0.1 MHz: 98.80 % (earlier 98.00 %)");
    Press(Qt::Key_Return);
    EXPECT_TRUE(data.hasFocus());
    EXPECT_EQ(data.currentRow(), 0);
    Press(Qt::Key_F8);
    EXPECT_FALSE(pane.isVisible());
  });
}

TEST_P(Versions, OfADeletedDataSetAreFoundAndPutBack) {
  const std::string present = tree_.Read(Path());
  DeleteWithHistory(Folder(), "SN12345");
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& menu) {
    user_.At<frmDeleted>([&](frmDeleted& deleted) {
      EXPECT_EQ(CellsOf(deleted, "tblDeleted"),
                (std::vector<Texts>{{Code(), "SN12345", "3318A12345", "5 MAR 2001",
                                     "5 MAR 2026 14:03:07", "anna"}}));
      user_.At<frmHistory>([&](frmHistory& history) {
        EXPECT_EQ(CellsOf(history, "tblVersions").size(), 3U);
        ExpectPutBackQuestion(QMessageBox::Yes);
        Click(history, "btnPutBack");
        Press(Qt::Key_Escape);
      });
      Click(deleted, "btnHistory");
      EXPECT_EQ(CellsOf(deleted, "tblDeleted"), std::vector<Texts>());
      EXPECT_FALSE(Find<QPushButton>(deleted, "btnHistory").isEnabled());
      Click(deleted, "btnClose");
    });
    ExpectFoundAgain(menu);
  });
  frmCalibrationMain menu(nullptr);
  menu.ShowModally();
  EXPECT_EQ(tree_.Read(Path()), present);
}

TEST_P(Versions, OfADamagedDataSetAreFoundAndPutBack) {
  tree_.Write(Path(), "");
  user_.At<frmCalibrationMain>([&](frmCalibrationMain& menu) {
    questions_.ExpectError({"The file ends too early", Path()});
    ClickEntry(menu, "LstInstrment", QString::fromStdString(Code()));
    user_.At<frmDeleted>([&](frmDeleted& deleted) {
      EXPECT_EQ(CellsOf(deleted, "tblDeleted"),
                (std::vector<Texts>{
                    {Code(), "SN12345", "3318A12345", "5 MAR 2001", "no, but damaged", ""}}));
      user_.At<frmHistory>([&](frmHistory& history) {
        ClickRow(history, 1);
        ExpectPutBackQuestion(QMessageBox::Yes);
        Click(history, "btnPutBack");
        Press(Qt::Key_Escape);
      });
      Click(deleted, "btnHistory");
      Click(deleted, "btnClose");
    });
    ExpectFoundAgain(menu);
  });
  frmCalibrationMain menu(nullptr);
  menu.ShowModally();
}

class VersionsOfAnOption : public TabEditorFixture {};

TEST_F(VersionsOfAnOption, AreComparedOnThePageThatOnlyTheEarlierOneHas) {
  const std::string path = R"(c:\calfactors\RT520C\SN12345)";
  tree_.MakeFolders(R"(c:\calfactors\RT520C)");
  std::vector<Member> members = SetCMembers();
  SaveWithHistory(path, CapacitorFile({"RT520C", "3318A12345"}, members));
  members.pop_back();
  SaveWithHistory(path, CapacitorFile({"RT520C", "3318A12345"}, members));
  frmHistory history({.path = path, .model = FindModel("RT520C")}, nullptr);
  history.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&history));
  auto& pages = Find<QTabBar>(history, "tabPages");
  EXPECT_EQ(pages.count(), 3);
  ClickRow(history, 0);
  ClickRow(history, 1, Qt::ControlModifier);
  ASSERT_EQ(pages.count(), 4);
  QTest::mouseClick(&pages, Qt::LeftButton, {}, pages.tabRect(3).center());
  const std::vector<Texts> rows = CellsOf(history, "tblData");
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].at(1), "10.0002uF");
  EXPECT_EQ(rows[0].at(2), "");
  EXPECT_EQ(rows[0].back(), "only earlier");
}

TEST(VersionsOfAKit, AreListedAndShownLineByLine) {
  const TestTree tree;
  const DesktopTestPlatform platform(tree.ProgramFolder());
  const std::string path = R"(c:\calfactors\RT410B\SN12345)";
  tree.MakeFolders(R"(c:\calfactors\RT410B)");
  SaveWithHistory(path, "QZ RT410B\r\n3318A12345\r\n05MAR2001\r\n");
  SaveWithHistory(path, "QZ RT410B\r\n3318A12345\r\n05MAR2002\r\n");
  frmHistory history({.path = path, .model = FindModel("RT410B")}, nullptr);
  history.show();
  ClickRow(history, 1);
  EXPECT_EQ(CellsOf(history, "tblData"),
            (std::vector<Texts>{{"QZ RT410B"}, {"3318A12345"}, {"05MAR2001"}}));
  EXPECT_EQ(history.findChild<QWidget*>("curve"), nullptr);
}

// ---- From an editor.

TEST_P(Versions, AreOnlyShownWhileAnEditorIsOpen) {
  EditAgain([&](CalEditor& editor) {
    user_.At<frmHistory>([&](frmHistory& history) {
      ClickRow(history, 1);
      EXPECT_FALSE(Find<QPushButton>(history, "btnPutBack").isEnabled());
      Press(Qt::Key_Escape);
    });
    ClickInMenu(editor, "btnFile", "History...");
    Settle();
    EXPECT_TRUE(editor.isVisible());
  });
}

TEST_P(Versions, AreNotLostWithoutAnAnswerWhenASaveCannotKeepThem) {
  std::filesystem::remove_all(tree_.Native(R"(c:\calfactors\history.tarvell)"));
  tree_.Write(R"(c:\calfactors\history.tarvell)", "a file");
  const std::string present = tree_.Read(Path());
  EditAgain([&](CalEditor& editor) {
    Fill(editor, "txtComment", "mine");
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
      EXPECT_EQ(tree_.Read(Path()), present);
      EXPECT_TRUE(editor.isVisible());
      EXPECT_EQ(TextOf(editor, "txtComment"), "mine");
      questions_.Expect({.text = "The earlier data cannot be kept in the history. Do you want to "
                                 "save without it?",
                         .icon = QMessageBox::Warning,
                         .buttons = QMessageBox::Yes | QMessageBox::No,
                         .defaultButton = QMessageBox::No},
                        answer);
      Press(Qt::Key_S, Qt::ControlModifier);
    }
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_TRUE(questions_.details[0].startsWith("In the place of its folder there is a file."));
  header_.comment = "mine";
  EXPECT_EQ(tree_.Read(Path()), Bytes(header_));
}

TEST_P(Versions, AreNotLostWhenAnotherUserSavesWhileTheQuestionIsOpen) {
  header_.comment = "theirs";
  const std::string theirs = Bytes(header_);
  const auto expect = [&](const QString& text, QMessageBox::StandardButton answer,
                          const std::function<void()>& meanwhile = {}) {
    questions_.Expect({.text = text,
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      answer, meanwhile);
  };
  const QString file = QString::fromStdString("The file " + Code() + R"(\SN12345)");
  const auto whileAnotherUserSaves = [&](const std::function<void()>& act) {
    FaultPlatform platform;
    platform.Set(FaultPlatform::Step::Append);
    expect("The earlier data cannot be kept in the history. Do you want to save without it?",
           QMessageBox::Yes, [&] { tree_.Write(Path(), theirs); });
    act();
    EXPECT_EQ(platform.faults, 1);
    EXPECT_EQ(tree_.Read(Path()), theirs);
  };
  EditAgain([&](CalEditor& editor) {
    Fill(editor, "txtComment", "mine");
    whileAnotherUserSaves([&] {
      expect(file + " has changed since it was opened here. Do you want to replace it?",
             QMessageBox::No);
      Press(Qt::Key_S, Qt::ControlModifier);
    });
    EXPECT_EQ(TextOf(editor, "txtComment"), "mine");
    Press(Qt::Key_Escape);
  });
  header_.comment = "present";
  SaveWithHistory(Path(), Bytes(header_));
  AtHistory([&](frmHistory& history) {
    ClickRow(history, 2);
    ExpectPutBackQuestion(QMessageBox::Yes);
    whileAnotherUserSaves([&] {
      questions_.ExpectNotice(file +
                              " has changed in the meantime. Nothing was done. Look at what it "
                              "holds now, then try again.");
      Click(history, "btnPutBack");
    });
  });
}

}  // namespace
}  // namespace tarvell
