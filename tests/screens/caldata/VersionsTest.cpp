// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QTabBar>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/history/History.h"
#include "screens/caldata/EitherEditor.h"
#include "screens/caldata/frmCalibrationMain.h"
#include "screens/caldata/frmHistory.h"
#include "screens/widgets/NoticeLine.h"
#include "support/ClickInMenu.h"
#include "support/ErrorOf.h"
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

}  // namespace
}  // namespace tarvell
