// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SCREENS_CALDATA_EITHEREDITOR_H
#define TARVELL_TESTS_SCREENS_CALDATA_EITHEREDITOR_H

#include <QDialog>
#include <QTimer>
#include <QToolButton>

#include <memory>

#include "screens/caldata/TabEditorFixture.h"
#include "screens/caldata/frmCalDataInput.h"
#include "screens/widgets/UpDown.h"
#include "support/DesktopTestPlatform.h"
#include "support/SensorStage.h"

namespace tarvell::test {

/// Runs a test on both editors of calibration data: on a power sensor and on a capacitor set.
/// Column 1 of both tables can be edited, and has the values `Values()`.
class EitherEditor : public TabEditorFixture, public testing::WithParamInterface<bool> {
 protected:
  using Act = std::function<void(CalEditor& editor)>;

  EitherEditor() {
    gCalFiles.fill(CalFileInfo());
    WriteTemplates();
    if (HasPages()) {
      editor_ = std::make_unique<frmCalDataTabInput>(nullptr);
    } else {
      editor_ = std::make_unique<frmCalDataInput>(nullptr);
    }
  }

  static bool HasPages() { return GetParam(); }
  static std::string Code() { return HasPages() ? "RT520A" : "PX12A"; }
  static std::string Folder() { return R"(c:\calfactors\)" + Code(); }
  static std::string Path() { return Folder() + R"(\SN12345)"; }

  static std::string CaptionOf(const std::string& serial) {
    return "Editing calibraition data (" + Code() + " - " + serial + ")";
  }

  static Texts Values() {
    return HasPages() ? Texts{"1.000012pF", "1.00002pF", "1.00003pF"}
                      : Texts{"98.80", "100.0", "98.84"};
  }
  /// The numbers of the values, as an edit of the cells begins with them.
  static Texts Numbers() {
    return HasPages() ? Texts{"1.000012", "1.00002", "1.00003"} : Texts{"98.8", "100", "98.84"};
  }
  /// The text of the cell in row `row` after the whole number `number` was typed into it.
  static std::string Stored(int row, const std::string& number) {
    const char* capacitance = row == 1 ? ".000000pF" : ".00000pF";
    return number + (HasPages() ? capacitance : ".0");
  }

  [[nodiscard]] static std::string Bytes(const SetHeader& header, const Texts& values = Values()) {
    if (HasPages()) {
      std::vector<Member> members = SetAMembers();
      for (std::size_t row = 0; row < values.size(); ++row) {
        members[0].rows[row][1] = values[row];
      }
      return CapacitorFile(header, members);
    }
    return SensorFile{.model = header.model,
                      .serial = header.serial,
                      .calDate = header.calDate,
                      .calNo = header.calNo,
                      .dueDate = header.dueDate,
                      .comment = header.comment,
                      .rows = {{"0.10", values[0]}, {"50.00", values[1]}, {"1000.00", values[2]}}}
        .Bytes();
  }

  /// Writes the file of `header_` and edits it.
  void Edit(const Act& act) {
    tree_.Write(Path(), Bytes(header_));
    EditAgain(act);
  }
  /// Edits the file as it is.
  void EditAgain(const Act& act) {
    gCalFiles[0].FilePath = Path();
    Show(0, act);
  }
  /// Begins a new calibration of the file as it is.
  void NewCalibration(const Act& act) {
    gCalFiles[0].FilePath = Path();
    Show(0, act, CalEditor::Begin::NewCalibration);
  }
  /// Edits new data whose template has the header `header_`. Makes the folder of the model first.
  void New(const Act& act) {
    WriteTemplate(Code(), Bytes(header_));
    tree_.MakeFolders(Folder());
    Show(CalEditor::kNewData, act);
  }

  SetHeader header_{Code(), "3318A12345", "20010305", "C-0042", "20020305", "factory"};
  DesktopTestPlatform platform_{tree_.ProgramFolder()};
  std::unique_ptr<CalEditor> editor_;

 private:
  void Show(std::int16_t index, const Act& act,
            CalEditor::Begin begin = CalEditor::Begin::AsSaved) {
    user_.Within<CalEditor>(act);
    editor_->SetupDat(index, Code(), begin);
  }
};

inline std::string KindName(const testing::TestParamInfo<bool>& test) {
  return test.param ? "OfPages" : "OfOneTable";
}

/// The edit is open with this text, which has the keyboard and its cursor at its end.
inline void ExpectOpen(QWidget& editor, const std::string& text) {
  const QLineEdit& box = CellBoxOf(editor);
  EXPECT_TRUE(box.isVisible());
  EXPECT_TRUE(box.hasFocus());
  EXPECT_EQ(box.text().toStdString(), text);
  EXPECT_EQ(box.cursorPosition(), box.text().size());
  EXPECT_FALSE(box.hasSelectedText());
}

/// No edit is open, and the table has the keyboard on this cell.
inline void ExpectBackIn(QWidget& editor, CalGrid& grid, int row, int column = 1) {
  ExpectClosed(editor);
  EXPECT_TRUE(grid.hasFocus());
  EXPECT_EQ(grid.currentIndex().row() + 1, row);
  EXPECT_EQ(grid.currentIndex().column(), column);
  EXPECT_TRUE(editor.isVisible());
}

inline void ClickArrow(QWidget& screen, const QString& spinner, const QString& arrow) {
  QTest::mouseClick(&Find<QToolButton>(Find<UpDown>(screen, spinner), arrow), Qt::LeftButton);
}

/// Clicks a button that must not open a dialog. A dialog that comes fails the test and is closed.
inline void ClickWithoutDialog(QWidget& screen, const QString& button) {
  constexpr int kTimeToOpen = 500;  // ms
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&screen] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog != nullptr && dialog != &screen) {
      ADD_FAILURE() << "unexpected dialog " << dialog->metaObject()->className();
      dialog->reject();
    }
  });
  timer.start(kTimeToOpen);
  Click(screen, button);
}

}  // namespace tarvell::test

#endif
