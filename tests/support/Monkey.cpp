// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Monkey.h"

#include <QtWidgets>

#include <unistd.h>

#include "screens/widgets/Handbook.h"
#include "support/KnownMessages.h"
#include "support/MonkeyFeatures.h"

namespace tarvell::test {

namespace {

constexpr unsigned kPatience = 30;  // s

bool HasEmptySerial(const QWidget& screen) {
  const auto* serial = screen.findChild<QLineEdit*>("txtSerial");
  return serial != nullptr && !serial->isReadOnly() && serial->text().isEmpty();
}

}  // namespace

std::vector<std::string> Monkey::Run() {
  const bool quits = QApplication::quitOnLastWindowClosed();
  // Closing the main menu must not end the test.
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::clipboard()->clear();
  running_ = true;
  ::alarm(kPatience);
  QTimer::singleShot(0, &context_, [this] { Tick(); });
  while (hands_.Done() < wanted_ && unknown_.empty()) {
    frmMain menu;
    menu_ = &menu;
    hands_.Note("the program starts");
    menu.Form_Load(0);
    while (menu.isVisible()) {
      QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    menu_ = nullptr;
  }
  running_ = false;
  ::alarm(0);
  QApplication::setQuitOnLastWindowClosed(quits);
  if (unknown_.empty() &&
      !(Used().contains("tarvell::frmMain") && Used().contains("QMessageBox"))) {
    unknown_.emplace_back("Nothing can be found in one screen only.\n" + hands_.Trail());
  }
  return unknown_;
}

void Monkey::Tick() {
  if (!running_) {
    return;
  }
  // Before this action, which may open a screen: the next one must run within that screen.
  QTimer::singleShot(0, &context_, [this] { Tick(); });
  QWidget* top = Top();
  if (top == nullptr) {
    return;
  }
  if (auto* box = qobject_cast<QMessageBox*>(top); box != nullptr && box != looked_) {
    LookAt(*box);
  }
  if (hands_.Done() >= wanted_ || !unknown_.empty()) {
    Leave(*top);
    return;
  }
  hands_.Next();
  ::alarm(kPatience);
  Act(*top);
}

QWidget* Monkey::Top() const {
  if (QWidget* popup = QApplication::activePopupWidget()) {
    return popup;
  }
  QWidget* active = QApplication::activeWindow();
  if (qobject_cast<HandbookWindow*>(active) != nullptr && active->isVisible()) {
    // It can be used beside a modal screen.
    return active;
  }
  QWidget* top = QApplication::activeModalWidget();
  if (top == nullptr) {
    top = active;
  }
  if (top == nullptr || !top->isVisible()) {
    top = menu_;
  }
  if (top == nullptr || !top->isVisible()) {
    return nullptr;
  }
  if (!top->isActiveWindow()) {
    // The window manager would do this.
    top->activateWindow();
    return nullptr;
  }
  return top;
}

void Monkey::Act(QWidget& top) {
  hands_.NoteUse(top.metaObject()->className());
  if (QApplication::activePopupWidget() == &top) {
    UsePopup(top);
  } else if (auto* box = qobject_cast<QMessageBox*>(&top)) {
    UseBox(*box);
  } else if (qobject_cast<QFileDialog*>(&top) != nullptr) {
    UseFileDialog(top);
  } else if (&top == menu_ && hands_.Chance(40)) {
    UseMainMenu(top);
  } else if (HasEmptySerial(top) && hands_.Chance(10)) {
    // Without a serial number, new data could never be saved.
    hands_.FillBox(*top.findChild<QLineEdit*>("txtSerial"),
                   "3318A000" + QString::number(hands_.Below(100)));
  } else if (!hands_.Chance(15) || !UseFeature(hands_, top)) {
    UseAnyScreen(top);
  }
}

void Monkey::Leave(QWidget& top) {
  if (auto* box = qobject_cast<QMessageBox*>(&top)) {
    QAbstractButton* no = box->button(QMessageBox::No);
    (no != nullptr ? no : box->buttons().constLast())->click();
    return;
  }
  top.close();
}

void Monkey::LookAt(QMessageBox& box) {
  looked_ = &box;
  const QString text =
      box.informativeText().isEmpty() ? box.text() : box.text() + "\n\n" + box.informativeText();
  hands_.Note("a box says: " + text.toStdString());
  hands_.NoteUse(box.text());
  if (!IsKnownMessage(text)) {
    unknown_.push_back("An unknown message: " + text.toStdString() + "\n" + hands_.Trail());
  }
}

void Monkey::UsePopup(QWidget& popup) {
  auto* menu = qobject_cast<QMenu*>(&popup);
  if (menu != nullptr && !menu->actions().isEmpty() && hands_.Chance(60)) {
    QAction* entry = hands_.AnyOf(menu->actions());
    hands_.NoteUse(entry->objectName());
    hands_.Click(popup, menu->actionGeometry(entry).center());
  } else if (menu == nullptr && hands_.Chance(40)) {
    // A list of choices, or a calendar.
    ClickAnyCell(popup);
  } else if (hands_.Chance(30)) {
    hands_.ClickSomewhere(popup);
  } else {
    hands_.PressKey(popup);
  }
}

void Monkey::UseBox(QMessageBox& box) {
  if (hands_.Chance(70)) {
    PressButton(box);
  } else if (hands_.Chance(20)) {
    hands_.Note("close the box");
    box.close();
  } else {
    hands_.PressKey(box);
  }
}

void Monkey::UseFileDialog(QWidget& dialog) {
  // Only its text box: its lists could rename and delete files outside the test.
  const auto* files = qobject_cast<QFileDialog*>(&dialog);
  const bool saves = files->acceptMode() == QFileDialog::AcceptSave;
  if (hands_.Chance(30)) {
    hands_.Key(&dialog, Qt::Key_Escape);
    return;
  }
  const std::string path = saves ? NewExport() : FileToChoose(*files);
  hands_.Note("choose " + path);
  dialog.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(path));
  QPushButton* open = dialog.findChild<QDialogButtonBox*>("buttonBox")
                          ->button(saves ? QDialogButtonBox::Save : QDialogButtonBox::Open);
  if (open->isEnabled()) {
    hands_.NoteUse(saves ? "a file exported" : "a file chosen");
    hands_.Click(*open, open->rect().center());
  } else {
    hands_.Key(&dialog, Qt::Key_Escape);
  }
}

std::string Monkey::FileToChoose(const QFileDialog& dialog) {
  if (dialog.fileMode() != QFileDialog::Directory) {
    return hands_.AnyOf(places_.files);
  }
  // The two trees must differ, or each would contain files of the other.
  return hands_.AnyOf(places_.folders) +
         (dialog.windowTitle().contains("station") ? "/stations" : "/calfactors");
}

/// A file that does not exist: the dialog would ask whether to replace it.
std::string Monkey::NewExport() {
  static const std::vector<std::string> kEndings = {".csv", ".json", ""};
  return places_.exports + "/" + std::to_string(hands_.Done()) + hands_.AnyOf(kEndings);
}

void Monkey::UseMainMenu(QWidget& menu) {
  // By chance only, no folder would ever exist.
  if (hands_.Chance(50)) {
    hands_.FillBox(*menu.findChild<QLineEdit*>("txtCalibrationDir"), places_.calibrationDir);
    hands_.FillBox(*menu.findChild<QLineEdit*>("txtStationDir"), places_.stationDir);
  } else if (hands_.Chance(50)) {
    auto* option = menu.findChild<QAbstractButton*>(hands_.Chance(50) ? "Option1" : "Option2");
    hands_.Click(*option);
  } else {
    auto* start = menu.findChild<QAbstractButton*>("btnStart");
    hands_.Click(*start, start->rect().center());
  }
}

void Monkey::UseAnyScreen(QWidget& top) {
  const int hand = hands_.Below(100);
  if (hand < 14) {
    PressButton(top);
  } else if (hand < 26) {
    FillAnyBox(top);
  } else if (hand < 38) {
    ClickAnyCell(top);
  } else if (hand < 41) {
    ChooseTab(top);
  } else if (hand < 46) {
    ChooseEntry(top);
  } else if (hand < 62) {
    hands_.ClickSomewhere(top);
  } else if (hand < 65) {
    PutOnClipboard();
  } else if (hand < 66) {
    Resize(top);
  } else if (hand < 67) {
    hands_.Note("close " + Describe(top));
    top.close();
  } else {
    hands_.PressKey(top);
  }
}

void Monkey::PressButton(QWidget& top) {
  if (const auto buttons = Usable<QAbstractButton>(top); !buttons.empty()) {
    hands_.Click(*hands_.AnyOf(buttons));
  }
}

void Monkey::FillAnyBox(QWidget& top) {
  if (const auto boxes = Usable<QLineEdit>(top); !boxes.empty()) {
    QLineEdit& box = *hands_.AnyOf(boxes);
    hands_.FillBox(box, hands_.AnyText());
  }
}

void Monkey::ClickAnyCell(QWidget& top) {
  if (const auto views = Usable<QAbstractItemView>(top); !views.empty()) {
    QAbstractItemView& view = *hands_.AnyOf(views);
    hands_.ClickCell(view, hands_.Chance(30));
  }
}

void Monkey::ChooseTab(QWidget& top) {
  const auto strips = Usable<QTabBar>(top);
  if (strips.empty() || strips.front()->count() == 0) {
    return;
  }
  QTabBar& strip = *strips.front();
  hands_.Click(strip, strip.tabRect(hands_.Below(strip.count())).center());
}

void Monkey::ChooseEntry(QWidget& top) {
  if (const auto lists = Usable<QComboBox>(top); !lists.empty()) {
    QComboBox& list = *hands_.AnyOf(lists);
    hands_.Click(list, QPoint(list.width() - 5, list.height() / 2));
  }
}

void Monkey::PutOnClipboard() {
  const QString text = hands_.Chance(40)   ? TableOfPoints(hands_)
                       : hands_.Chance(20) ? hands_.AnyText().repeated(200)
                                           : hands_.AnyText();
  hands_.Note("clipboard gets " + text.left(60).toStdString());
  QApplication::clipboard()->setText(text);
}

void Monkey::Resize(QWidget& top) {
  hands_.Note("resize " + Describe(top));
  top.resize(50 + hands_.Below(1200), 50 + hands_.Below(900));
}

}  // namespace tarvell::test
