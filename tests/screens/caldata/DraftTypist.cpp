// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QTest>
#include <QtWidgets>

#include <chrono>
#include <iostream>
#include <map>
#include <random>
#include <thread>

#include "core/files/Paths.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/CalGrid.h"
#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/widgets/Questions.h"
#include "support/DesktopTestPlatform.h"

/// A user whose program is killed: a program that opens an editor, and whose random hands then type
/// into it.
///
/// `draft_typist ROOT MODEL FILE BEGIN type SEED KEYS` prints what the editor shows, with the time,
/// when it opens and after each key. `draft_typist ROOT MODEL FILE BEGIN restore` opens the editor
/// again, presses Restore if it is offered, and prints what the editor then shows. FILE is "" for
/// new data; BEGIN is "new" for a new calibration of its instrument.
///
/// After KEYS keys and the second after which a draft must be written, or after Restore, it prints
/// "end" and waits: an exit would write the draft again.
namespace tarvell::test {
namespace {

/// Somebody who presses Yes or OK in every message.
class AnyAnswer final : public Questions {
 public:
  QMessageBox::StandardButton Ask(QWidget* /*owner*/, const Question& question) override {
    return question.buttons.testFlag(QMessageBox::Yes) ? QMessageBox::Yes : QMessageBox::Ok;
  }
  QString PickFile(QWidget* /*owner*/, FileRequest& /*request*/) override { return {}; }
  QString PickFolder(QWidget* /*owner*/, const QString& /*title*/,
                     const QString& /*initialDir*/) override {
    return {};
  }
};

/// What the screen shows, in one line. Pages that are not shown are as they were when they were.
class Onlooker {
 public:
  explicit Onlooker(QWidget& editor) : editor_(editor) {
    grid_ = editor.findChild<CalGrid*>();
    tabs_ = editor.findChild<QTabBar*>("tTab");
    // A page that is left stores its open cell first.
    QObject::connect(grid_->model(), &QAbstractItemModel::modelAboutToBeReset, [this] {
      if (!isLeft_) {
        LookAtPage();
        isLeft_ = true;
      }
    });
  }

  /// Looks at every page, also at the one that the option hides.
  void Walk() {
    if (tabs_ == nullptr) {
      return;
    }
    auto* option = editor_.findChild<QCheckBox*>("chkCheck");
    const bool isHidden = option->isVisible() && !option->isChecked();
    if (isHidden) {
      option->click();
    }
    const int shown = tabs_->currentIndex();
    for (int page = 0; page < tabs_->count(); ++page) {
      tabs_->setCurrentIndex(page);
      LookAtNewPage();
    }
    tabs_->setCurrentIndex(shown);
    if (isHidden) {
      option->click();
    }
  }

  /// Everything but the pages that are not shown.
  [[nodiscard]] QString Shown() {
    QString text;
    for (const char* name : {"txtSerial", "txtCalNo", "txtCalYear", "txtCalDay", "txtDueYear",
                             "txtDueDay", "txtComment"}) {
      text += editor_.findChild<QLineEdit*>(name)->text() + '|';
    }
    for (const char* name : {"cmbCalMonth", "cmbDueMonth"}) {
      text += editor_.findChild<QComboBox*>(name)->currentText() + '|';
    }
    const auto* cell = editor_.findChild<QLineEdit*>("txtCell");
    const auto* unit = editor_.findChild<QComboBox*>("txtCellCmb");
    if (!cell->isHidden()) {
      text += QString("cell %1 %2 %3 %4|")
                  .arg(grid_->currentIndex().row())
                  .arg(grid_->currentIndex().column())
                  .arg(cell->text(), unit->isHidden() ? QString() : unit->currentText());
    }
    LookAtNewPage();
    return text + QString("page %1|").arg(page_);
  }

  [[nodiscard]] QString Pages() const {
    QString text;
    const int count = tabs_ == nullptr ? 1 : tabs_->count();
    for (int page = 0; page < count; ++page) {
      text += pages_.at(page) + '|';
    }
    return text;
  }

 private:
  void LookAtNewPage() {
    page_ = tabs_ == nullptr ? 0 : tabs_->currentIndex();
    isLeft_ = false;
    LookAtPage();
  }

  void LookAtPage() {
    QString text;
    const QAbstractItemModel& model = *grid_->model();
    for (int row = 0; row < model.rowCount(); ++row) {
      for (int column = 0; column < model.columnCount(); ++column) {
        text += model.index(row, column).data().toString() + ';';
      }
    }
    const auto* serial = editor_.findChild<QLineEdit*>("txtTabSerial");
    pages_[page_] = text + (serial == nullptr ? QString() : serial->text());
  }

  QWidget& editor_;
  CalGrid* grid_;
  QTabBar* tabs_;
  int page_ = 0;
  bool isLeft_ = false;  ///< whether another page may be shown since then
  std::map<int, QString> pages_;
};

void Print(const QString& text) {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  std::cout << std::chrono::duration_cast<std::chrono::milliseconds>(now).count() << ' '
            << QString(text).replace('\n', "\\n").toStdString() << std::endl;
}

void WaitToBeKilled() {
  std::cout << "end" << std::endl;
  std::this_thread::sleep_for(std::chrono::hours(1));
}

/// Presses a random key where the keyboard is, but no button: that could save or leave the editor.
void PressAnything(std::mt19937& random) {
  QWidget* focus = QApplication::focusWidget();
  if (focus == nullptr) {
    return;
  }
  const auto below = [&](unsigned count) { return random() % count; };
  if (qobject_cast<QAbstractButton*>(focus) != nullptr) {
    const bool isOption = focus->objectName() == "chkCheck" && below(2) == 0;
    QTest::keyClick(focus, isOption ? Qt::Key_Space : Qt::Key_Tab);
    return;
  }
  const bool isOpen = focus->objectName().startsWith("txtCell");
  constexpr unsigned kOthers = 40;
  switch (below(kOthers)) {
    case 0:
      QTest::keyClick(focus, Qt::Key_Tab);
      break;
    case 1:
      QTest::keyClick(focus, Qt::Key_Backtab, Qt::ShiftModifier);
      break;
    case 2:
    case 3:
    case 4:
      QTest::keyClick(focus, Qt::Key_Return);
      break;
    case 5:
      QTest::keyClick(focus, Qt::Key_Up);
      break;
    case 6:
      QTest::keyClick(focus, Qt::Key_Down);
      break;
    case 7:
      QTest::keyClick(focus, Qt::Key_Right);
      break;
    case 8:
      QTest::keyClick(focus, Qt::Key_Backspace);
      break;
    case 9:
      if (isOpen) {
        QTest::keyClick(focus, Qt::Key_Escape);
      }
      break;
    case 10:
      QTest::keyClick(focus, Qt::Key_Z, Qt::ControlModifier);
      break;
    case 11:
      QTest::keyClick(focus, Qt::Key_V, Qt::ControlModifier);
      break;
    case 12:
      QTest::keyClick(focus, Qt::Key_Delete);
      break;
    case 13:
      QTest::keyClick(focus, Qt::Key_PageDown, Qt::ControlModifier);
      break;
    default:
      QTest::keyClick(focus, "0123456789.-eJx"[below(15)]);
  }
}

void Type(QWidget& editor, unsigned seed, int keys) {
  std::mt19937 random(seed);
  Onlooker onlooker(editor);
  onlooker.Walk();
  const QString opened = onlooker.Shown();
  Print(opened + onlooker.Pages());
  constexpr unsigned kLongestPause = 60;  // ms
  for (int key = 0; key < keys; ++key) {
    PressAnything(random);
    const QString shown = onlooker.Shown();
    Print(shown + onlooker.Pages());
    QTest::qWait(static_cast<int>(random() % kLongestPause));
  }
  constexpr int kUntilDraftIsWritten = 1000;  // ms
  QTest::qWait(kUntilDraftIsWritten);
  // What is due by now may have been held up by a busy machine.
  QApplication::processEvents();
  WaitToBeKilled();
}

void Restore(QWidget& editor) {
  auto* restore = editor.findChild<QPushButton*>("btnRestore");
  if (restore->isVisible()) {
    QTest::mouseClick(restore, Qt::LeftButton);
  }
  Onlooker onlooker(editor);
  const QString shown = onlooker.Shown();
  auto* cell = editor.findChild<QLineEdit*>("txtCell");
  if (!cell->isHidden()) {
    // Going to another page would store it.
    QTest::keyClick(cell, Qt::Key_Escape);
  }
  onlooker.Walk();
  Print(shown + onlooker.Pages());
  WaitToBeKilled();
}

int Main(const QStringList& arguments) {
  const std::filesystem::path root = arguments.at(1).toStdString();
  const std::string model = arguments.at(2).toStdString();
  const std::string file = arguments.at(3).toStdString();
  const auto begin =
      arguments.at(4) == "new" ? CalEditor::Begin::NewCalibration : CalEditor::Begin::AsSaved;
  const bool types = arguments.at(5) == "type";
  const DesktopTestPlatform platform(root / "program");
  SetDriveFolder(root / "drives");
  gCalibrationDir = "c:\\calfactors";
  gCalFiles[0].FilePath = file;
  AnyAnswer answers;
  SetCurrentQuestions(&answers);
  std::unique_ptr<CalEditor> editor;
  if (HasPages(*FindModel(model))) {
    editor = std::make_unique<frmCalDataTabInput>(nullptr);
  } else {
    editor = std::make_unique<frmCalDataInput>(nullptr);
  }
  QTimer::singleShot(0, editor.get(), [&] {
    if (!QTest::qWaitForWindowActive(editor.get())) {
      return;
    }
    if (types) {
      Type(*editor, arguments.at(6).toUInt(), arguments.at(7).toInt());
    } else {
      Restore(*editor);
    }
  });
  QGuiApplication::clipboard()->setText("3\n4.5");
  editor->SetupDat(file.empty() ? CalEditor::kNewData : std::int16_t{0}, model, begin);
  return 1;
}

}  // namespace
}  // namespace tarvell::test

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  return tarvell::test::Main(QApplication::arguments());
}
