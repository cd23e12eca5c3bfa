// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <QMenu>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "core/numbers/Numbers.h"
#include "screens/caldata/PastePreview.h"
#include "screens/caldata/TabEditorFixture.h"
#include "screens/main/frmMain.h"
#include "screens/widgets/QtPath.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/UserSettings.h"
#include "support/SensorStage.h"

/// How many keys the usual tasks take from the main menu to the saved file: the first page of the
/// handbook promises it.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// The number of keys that the handbook gives for a task.
int PromisedFor(const std::string& task) {
  const std::string handbook = ReadNative(TARVELL_HANDBOOK_SOURCE);
  const std::string begin = "| " + task + " | ";
  const std::size_t found = handbook.find(begin);
  EXPECT_NE(found, std::string::npos) << task;
  return found == std::string::npos ? 0 : std::stoi(handbook.substr(found + begin.size()));
}

/// A certificate of a PX13A: 18 of the 30 points of the template, each with a value of four
/// characters.
SensorRows Certificate() {
  SensorRows rows;
  for (const char* frequency : {"0.0001", "0.0010", "0.0100", "0.0500", "0.1000", "0.5000",
                                "1.0000", "2.0000", "3.0000", "4.0000", "6.0000", "8.0000",
                                "10.0000", "12.0000", "12.4000", "14.0000", "16.0000", "18.0000"}) {
    rows.emplace_back(
        frequency, "9" + std::to_string(rows.size() / 10) + "." + std::to_string(rows.size() % 10));
  }
  return rows;
}

class KeyCount : public SensorStage {
 protected:
  KeyCount() {
    KeepUserSettingsIn(PathForQt(tree_.Root() / "settings.ini"));
    tree_.InstallTemplate("PX13A");
    tree_.MakeFolders(R"(c:\calfactors\PX13A)");
    tree_.MakeFolders(R"(c:\stations)");
  }
  ~KeyCount() override { KeepUserSettingsIn({}); }
  KeyCount(const KeyCount&) = delete;
  KeyCount& operator=(const KeyCount&) = delete;

  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    ++keys_;
    test::Press(key, modifiers);
  }
  void Type(const QString& text) {
    keys_ += static_cast<int>(text.size());
    test::Type(text);
  }

  /// Starts the program, presses `start` in its main menu, does `open` in the menu of the
  /// calibration data and `act` in the editor, saves by Ctrl+S and closes the menus.
  void Run(const std::vector<Qt::Key>& start, const std::function<void()>& open, const Act& act) {
    keys_ = 0;
    user_.At<frmCalibrationMain>([&](frmCalibrationMain&) { open(); });
    user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
      act(editor);
      editor.activateWindow();
      EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
      Press(Qt::Key_S, Qt::ControlModifier);
      EXPECT_FALSE(editor.isVisible());
    });
    user_.At<frmCalibrationMain>([](frmCalibrationMain& menu) { Click(menu, "btnReturn"); });
    frmMain menu;
    menu.Form_Load(0);
    menu.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&menu));
    std::ranges::for_each(start, [this](Qt::Key key) { Press(key); });
  }

  /// New data of a PX13A.
  void RunNew(const Act& act) {
    const auto open = [this] {
      user_.At<QMenu>([this](QMenu&) { Press(Qt::Key_1); });
      Press(Qt::Key_A, Qt::AltModifier);
    };
    Run({Qt::Key_Space, Qt::Key_Return}, open, [&](frmCalDataInput& editor) {
      Type("3318A12345");
      Press(Qt::Key_T, Qt::AltModifier);
      act(editor);
    });
  }

  /// Deletes what is selected, and answers Yes by its Alt key.
  void Delete(const QString& points) {
    questions_.Expect({.text = "Are you want delete? (" + points + ")",
                       .icon = QMessageBox::Warning,
                       .buttons = QMessageBox::Yes | QMessageBox::No,
                       .defaultButton = QMessageBox::No},
                      QMessageBox::Yes);
    Press(Qt::Key_Delete);
    ++keys_;
  }

  /// The saved file has these points, with other values for some.
  void ExpectSaved(const SensorRows& rows) {
    EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX13A\SN12345)"), (SensorFile{.model = "PX13A",
                                                                        .calDate = "20000101",
                                                                        .calNo = "",
                                                                        .dueDate = "20010101",
                                                                        .comment = "",
                                                                        .rows = rows,
                                                                        .reference = "0.0500"})
                                                                .Bytes());
  }

  int keys_ = 0;
};

TEST_F(KeyCount, OfATableThatIsPastedOrTypedAndOfOneValueIsThatOfTheHandbook) {
  QString copied;
  for (const auto& [frequency, factor] : Certificate()) {
    copied += QString::fromStdString(frequency + "\t" + factor + "\r\n");
  }
  QApplication::clipboard()->setText(copied);
  RunNew([this](frmCalDataInput&) {
    user_.At<PastePreview>([this](PastePreview& preview) {
      ASSERT_TRUE(QTest::qWaitForWindowActive(&preview));
      Press(Qt::Key_R, Qt::AltModifier);
      Press(Qt::Key_Return);
    });
    Press(Qt::Key_V, Qt::ControlModifier);
  });
  ExpectSaved(Certificate());
  EXPECT_EQ(keys_, PromisedFor("new PX13A with 18 points, pasted from a spreadsheet"));

  std::filesystem::remove(tree_.Native(R"(c:\calfactors\PX13A\SN12345)"));
  RunNew([this](frmCalDataInput& editor) {
    CalGrid& grid = GridOf(editor);
    for (const auto& [frequency, factor] : Certificate()) {
      while (CellOf(grid, grid.CurrentCell().row.number, 0) != frequency) {
        Delete(ToQt(Normalised(CellOf(grid, grid.CurrentCell().row.number, 0))) + "GHz");
      }
      Type(QString::fromStdString(factor));
      Press(Qt::Key_Down);
    }
    Press(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
    Delete("20GHz to 26.5GHz, 6 points");
  });
  ExpectSaved(Certificate());
  EXPECT_EQ(keys_, PromisedFor("the same, with values of four characters typed by hand"));

  // The program remembers the data set that was saved last.
  Run(
      {Qt::Key_Return},
      [this] {
        Press(Qt::Key_Return);
        Press(Qt::Key_Return);
      },
      [this](frmCalDataInput&) {
        Press(Qt::Key_T, Qt::AltModifier);
        Press(Qt::Key_Down);
        Press(Qt::Key_Down);
        Type("97.5");
      });
  SensorRows corrected = Certificate();
  corrected[2].second = "97.5";
  ExpectSaved(corrected);
  EXPECT_EQ(keys_, PromisedFor("one value of the data set that was edited last"));
}

}  // namespace
}  // namespace tarvell
