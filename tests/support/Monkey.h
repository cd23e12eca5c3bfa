// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_MONKEY_H
#define TARVELL_TESTS_SUPPORT_MONKEY_H

#include <QTest>
#include <QtTest/qtestspontaneevent.h>
#include <QtWidgets>

#include <algorithm>
#include <array>
#include <deque>
#include <functional>
#include <iostream>
#include <random>
#include <set>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "screens/main/frmMain.h"

namespace tarvell::test {

/// Valid inputs, without which random actions would hardly get past the main menu.
struct MonkeyPlaces {
  QString calibrationDir;
  QString stationDir;
  std::vector<std::string> files;    ///< native, for the file dialog
  std::vector<std::string> folders;  ///< native; their "calfactors" and "stations" are picked
};

using IsKnownMessage = std::function<bool(const QString& text)>;

inline constexpr unsigned kPatience = 30;  // s
inline constexpr std::size_t kTrailLength = 60;

inline const std::array<Qt::Key, 32> kKeys = {
    Qt::Key_Return,    Qt::Key_Enter,  Qt::Key_Escape,   Qt::Key_Tab,    Qt::Key_Tab,
    Qt::Key_Backtab,   Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Left,   Qt::Key_Right,
    Qt::Key_Up,        Qt::Key_Down,   Qt::Key_Delete,   Qt::Key_Home,   Qt::Key_End,
    Qt::Key_PageUp,    Qt::Key_F1,     Qt::Key_PageDown, Qt::Key_Insert, Qt::Key_Backspace,
    Qt::Key_Space,     Qt::Key_F2,     Qt::Key_F3,       Qt::Key_F4,     Qt::Key_F5,
    Qt::Key_F10,       Qt::Key_F12,    Qt::Key_Menu,     Qt::Key_Pause,  Qt::Key_Return,
    Qt::Key_Backspace, Qt::Key_Select,
};

inline const std::array<Qt::Key, 12> kShortcuts = {
    Qt::Key_C, Qt::Key_V, Qt::Key_X,    Qt::Key_Z,   Qt::Key_A,    Qt::Key_Y,
    Qt::Key_V, Qt::Key_Q, Qt::Key_Home, Qt::Key_End, Qt::Key_Left, Qt::Key_Delete,
};

inline const QString kCharacters = QStringLiteral(
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ01234567890123456789 .,-+eE\"'#*!:;/\\%&"
    "()<>|?_=@$~^`{}[]");

/// Characters of several code units, and characters that the files cannot hold. The last two are
/// half of a surrogate pair and a number that is no character.
inline const QStringList kOddCharacters =
    QString("\u00E9|\u00B5|\u20AC|\u2126|\u4F60|\U0001F600|\u0301|\u202E|\u00A0").split('|')
    << QString(QChar(0xD83D)) << QString(QChar(0xFFFE));

inline const QStringList kTexts =
    QString(
        "12345|3318A00007|C-0042|1|0|-1|10|28|31|1.5|0.05|99.25|100.00005|1E3|1E999|-1E-300|40000|"
        "32767|2002|1999|50|120|0.1|6.9925E09|MAR|JAN|ST3|Lab 7|INDEX|CON|a.b|..|PX12A|QZ PX13A "
        "Opt001|factory, second|says \"ok\"| 7 ppm||   |#MODEL_NO : X|!End|* 1 : 2|a b c d e f g h "
        "i j k l m n o p q r s t u v w x y z a b c d e f g h|one\r\ntwo|tab\tinside")
        .split('|')
    << QStringLiteral("null\0inside");

template <typename Control>
std::vector<Control*> Usable(const QWidget& top) {
  std::vector<Control*> usable;
  for (Control* control : top.findChildren<Control*>()) {
    if (control->isVisible() && control->isEnabled() && control->window() == &top) {
      usable.push_back(control);
    }
  }
  return usable;
}

inline bool HasEmptySerial(const QWidget& screen) {
  const auto* serial = screen.findChild<QLineEdit*>("txtSerial");
  return serial != nullptr && !serial->isReadOnly() && serial->text().isEmpty();
}

inline std::string Describe(const QWidget& control) {
  const QString name = control.objectName();
  return std::string(control.metaObject()->className()) + " " + name.toStdString();
}

inline void SendMouse(QWidget* control, QEvent::Type type, const QPoint& at,
                      Qt::MouseButton button) {
  const Qt::MouseButtons held =
      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
  QMouseEvent event(type, at, control->mapToGlobal(at), button, held, Qt::NoModifier);
  // Only a spontaneous press, as from the window system, gives the focus.
  QSpontaneKeyEvent::setSpontaneous(&event);
  QCoreApplication::instance()->notify(control, &event);
}

/// Uses the whole program at random: keys, clicks, wheel, clipboard, closing and resizing windows.
/// The same seed gives the same actions. When the program ends, it is started again, until all
/// actions are done. A program that hangs is ended by SIGALRM; with TARVELL_MONKEY_TRACE set, every
/// action of the seed is printed before it is done.
class Monkey {
 public:
  Monkey(unsigned seed, int actions, MonkeyPlaces places, IsKnownMessage isKnown)
      : seed_(seed),
        wanted_(actions),
        places_(std::move(places)),
        isKnown_(std::move(isKnown)),
        random_(seed) {}

  /// Returns the messages that are not known, each with the actions that led to it.
  [[nodiscard]] std::vector<std::string> Run() {
    const bool quits = QApplication::quitOnLastWindowClosed();
    // Closing the main menu must not end the test.
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::clipboard()->clear();
    running_ = true;
    ::alarm(kPatience);
    QTimer::singleShot(0, &context_, [this] { Tick(); });
    while (done_ < wanted_ && unknown_.empty()) {
      frmMain menu;
      menu_ = &menu;
      Note("the program starts");
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
        !(visited_.contains("tarvell::frmMain") && visited_.contains("QMessageBox"))) {
      unknown_.emplace_back("Nothing can be found in one screen only.\n" + Trail());
    }
    return unknown_;
  }

 private:
  [[nodiscard]] int Below(int bound) {
    return static_cast<int>(random_() % static_cast<std::uint32_t>(bound));
  }

  template <typename Items>
  [[nodiscard]] auto AnyOf(const Items& items) {
    return items[static_cast<decltype(items.size())>(Below(static_cast<int>(items.size())))];
  }
  [[nodiscard]] bool Chance(int percent) { return Below(100) < percent; }

  void Tick() {
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
    if (done_ >= wanted_ || !unknown_.empty()) {
      Leave(*top);
      return;
    }
    ++done_;
    ::alarm(kPatience);
    Act(*top);
  }

  [[nodiscard]] QWidget* Top() const {
    if (QWidget* popup = QApplication::activePopupWidget()) {
      return popup;
    }
    QWidget* top = QApplication::activeModalWidget();
    if (top == nullptr) {
      top = QApplication::activeWindow();
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

  void Leave(QWidget& top) {
    if (auto* box = qobject_cast<QMessageBox*>(&top)) {
      QAbstractButton* no = box->button(QMessageBox::No);
      (no != nullptr ? no : box->buttons().constLast())->click();
      return;
    }
    top.close();
  }

  void LookAt(QMessageBox& box) {
    looked_ = &box;
    const QString text =
        box.informativeText().isEmpty() ? box.text() : box.text() + "\n\n" + box.informativeText();
    Note("a box says: " + text.toStdString());
    if (!isKnown_(text)) {
      unknown_.push_back("An unknown message: " + text.toStdString() + "\n" + Trail());
    }
  }

  void UseMenuPopup(QWidget& popup) {
    auto* menu = qobject_cast<QMenu*>(&popup);
    if (menu != nullptr && !menu->actions().isEmpty() && Chance(60)) {
      const QAction* entry = AnyOf(menu->actions());
      Click(popup, menu->actionGeometry(const_cast<QAction*>(entry)).center());
    } else if (Chance(30)) {
      ClickSomewhere(popup);
    } else {
      PressKey(popup);
    }
  }

  void UseBox(QMessageBox& box) {
    if (Chance(70)) {
      PressButton(box);
    } else if (Chance(20)) {
      Note("close the box");
      box.close();
    } else {
      PressKey(box);
    }
  }

  void UseFileDialog(QWidget& dialog) {
    // Only its text box: its lists could rename and delete files outside the test.
    const auto* files = qobject_cast<QFileDialog*>(&dialog);
    const bool folders = files->fileMode() == QFileDialog::Directory;
    // An export could be written outside the test.
    if (Chance(30) || files->acceptMode() == QFileDialog::AcceptSave) {
      Key(&dialog, Qt::Key_Escape);
      return;
    }
    std::string path = AnyOf(folders ? places_.folders : places_.files);
    if (folders) {
      // The two trees must differ, or each would contain files of the other.
      path += dialog.windowTitle().contains("station") ? "/stations" : "/calfactors";
    }
    Note("choose " + path);
    dialog.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(path));
    QPushButton* open =
        dialog.findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Open);
    if (open->isEnabled()) {
      Click(*open, open->rect().center());
    } else {
      Key(&dialog, Qt::Key_Escape);
    }
  }

  void UseMainMenu(QWidget& menu) {
    // By chance only, no folder would ever exist.
    if (Chance(50)) {
      FillBox(*menu.findChild<QLineEdit*>("txtCalibrationDir"), places_.calibrationDir);
      FillBox(*menu.findChild<QLineEdit*>("txtStationDir"), places_.stationDir);
      return;
    }
    if (Chance(50)) {
      auto* option = menu.findChild<QAbstractButton*>(Chance(50) ? "Option1" : "Option2");
      Click(*option, QPoint(10, option->height() / 2));
      return;
    }
    auto* start = menu.findChild<QAbstractButton*>("btnStart");
    Click(*start, start->rect().center());
  }

  void UseAnyScreen(QWidget& top) {
    const int hand = Below(100);
    if (hand < 14) {
      PressButton(top);
    } else if (hand < 26) {
      FillBox(top);
    } else if (hand < 38) {
      ClickCell(top);
    } else if (hand < 41) {
      ChooseTab(top);
    } else if (hand < 46) {
      ChooseEntry(top);
    } else if (hand < 62) {
      ClickSomewhere(top);
    } else if (hand < 65) {
      PutOnClipboard();
    } else if (hand < 66) {
      Resize(top);
    } else if (hand < 67) {
      Note("close " + Describe(top));
      top.close();
    } else {
      PressKey(top);
    }
  }

  void PressButton(QWidget& top) {
    const auto buttons = Usable<QAbstractButton>(top);
    if (buttons.empty()) {
      return;
    }
    QAbstractButton& button = *AnyOf(buttons);
    Click(button, QPoint(std::min(10, button.width() / 2), button.height() / 2));
  }

  void FillBox(QWidget& top) {
    if (const auto boxes = Usable<QLineEdit>(top); !boxes.empty()) {
      FillBox(*AnyOf(boxes), AnyText());
    }
  }

  void FillBox(QWidget& box, const QString& text) {
    const QPointer<QWidget> alive(&box);
    Click(box, box.rect().center());
    if (alive) {
      Key(&box, Qt::Key_A, Qt::ControlModifier);
    }
    if (alive) {
      TypeText(box, text);
    }
  }

  void ClickCell(QWidget& top) {
    const auto views = Usable<QAbstractItemView>(top);
    if (views.empty()) {
      return;
    }
    QAbstractItemView& view = *AnyOf(views);
    const int rows = view.model()->rowCount();
    const int columns = view.model()->columnCount();
    if (rows == 0 || columns == 0) {
      return;
    }
    const QModelIndex cell = view.model()->index(Below(rows), Below(columns));
    view.scrollTo(cell);
    Click(*view.viewport(), view.visualRect(cell).center(), Qt::LeftButton, Chance(30));
  }

  void ChooseTab(QWidget& top) {
    const auto strips = Usable<QTabBar>(top);
    if (strips.empty() || strips.front()->count() == 0) {
      return;
    }
    QTabBar& strip = *strips.front();
    Click(strip, strip.tabRect(Below(strip.count())).center());
  }

  void ChooseEntry(QWidget& top) {
    if (const auto lists = Usable<QComboBox>(top); !lists.empty()) {
      QComboBox& list = *AnyOf(lists);
      Click(list, QPoint(list.width() - 5, list.height() / 2));
    }
  }

  void ClickSomewhere(QWidget& top) {
    auto controls = Usable<QWidget>(top);
    controls.push_back(&top);
    const QWidget& area = *AnyOf(controls);
    const QPoint inTop = area.mapTo(&top, AnyPoint(area));
    // The topmost control at this point gets the click.
    QWidget* control = top.childAt(inTop);
    if (control == nullptr) {
      control = &top;
    }
    const QPoint at = control->mapFrom(&top, inTop);
    const int hand = Below(100);
    if (hand < 15) {
      Note("wheel over " + Describe(*control));
      QWheelEvent event(at, control->mapToGlobal(at), {}, QPoint(0, Chance(50) ? 120 : -120),
                        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
      QApplication::sendEvent(control, &event);
    } else if (hand < 30) {
      const QPointer<QWidget> alive(control);
      Click(*control, at, Qt::RightButton);
      if (alive) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, alive->mapToGlobal(at));
        QApplication::sendEvent(alive, &event);
      }
    } else if (hand < 35) {
      Click(*control, at, Qt::MiddleButton);
    } else {
      Click(*control, at, Qt::LeftButton, hand > 85);
    }
  }

  void PressKey(QWidget& top) {
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* target = popup != nullptr ? popup->focusWidget() : QApplication::focusWidget();
    if (target == nullptr) {
      target = &top;
    }
    const int hand = Below(100);
    if (hand < 45) {
      const Qt::Key key = AnyOf(kKeys);
      Key(target, key, Chance(10) ? Qt::ShiftModifier : Qt::NoModifier);
    } else if (hand < 55) {
      const Qt::Key key = AnyOf(kShortcuts);
      // Ctrl+Q ends the program, so it is pressed less often than the others.
      if (key != Qt::Key_Q || Chance(30)) {
        Key(target, key, Qt::ControlModifier);
      }
    } else if (hand < 60) {
      Key(target, Qt::Key_A + Below(26), Qt::AltModifier);
    } else if (hand < 68) {
      Key(target, Qt::Key_unknown, Qt::NoModifier, AnyOf(kOddCharacters));
    } else if (hand < 80) {
      TypeText(*target, AnyText());
    } else {
      TypeText(*target, AnyOf(kCharacters));
    }
  }

  void TypeText(QWidget& top, const QString& text) {
    QPointer<QWidget> target(&top);
    for (const QChar character : text) {
      // The first character may have opened a box for the rest.
      QWidget* focus = QApplication::focusWidget();
      if (focus != nullptr && focus->window() == top.window()) {
        target = focus;
      }
      if (!target || !target->isVisible()) {
        return;
      }
      const bool isPlain = character.unicode() < 0x80;
      const int key = isPlain ? character.toUpper().unicode() : static_cast<int>(Qt::Key_unknown);
      Key(target, key, Qt::NoModifier, QString(character));
    }
  }

  void PutOnClipboard() {
    QString text = AnyText();
    if (Chance(20)) {
      text = text.repeated(200);
    }
    if (Chance(20)) {
      text += AnyOf(kOddCharacters);
    }
    if (Chance(40)) {
      // A table of points.
      text = Chance(30) ? "MHz\t%" : text;
      for (int line = Below(60); line > 0; --line) {
        text += QString("\n%1\t%2\t%3").arg(Below(130)).arg(Below(99999) / 10.0).arg(Below(2000));
        text = Chance(80) ? text.left(text.lastIndexOf('\t')) : text;
      }
    }
    Note("clipboard gets " + text.left(60).toStdString());
    QApplication::clipboard()->setText(text);
  }

  void Resize(QWidget& top) {
    Note("resize " + Describe(top));
    top.resize(50 + Below(1200), 50 + Below(900));
  }

  void Click(QWidget& control, const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
             bool twice = false) {
    Note(std::string(twice ? "double click " : "click ") + Describe(control) + " by button " +
         std::to_string(button) + " at " + std::to_string(at.x()) + "," + std::to_string(at.y()));
    const QPointer<QWidget> alive(&control);
    const auto send = [&](QEvent::Type type) {
      if (alive) {
        SendMouse(alive, type, at, button);
      }
    };
    send(QEvent::MouseButtonPress);
    send(QEvent::MouseButtonRelease);
    if (twice) {
      send(QEvent::MouseButtonDblClick);
      send(QEvent::MouseButtonRelease);
    }
  }

  void Key(QWidget* target, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
           const QString& text = {}) {
    Note("key " + std::to_string(key) + " with " + std::to_string(modifiers.toInt()) + " " +
         text.toStdString() + " at " + Describe(*target));
    const auto code = static_cast<Qt::Key>(key);
    if (text.isEmpty()) {
      QTest::keyClick(target, code, modifiers);
      return;
    }
    QTest::sendKeyEvent(QTest::Click, target, code, text, modifiers);
  }

  [[nodiscard]] QString AnyText() {
    const int kind = Below(10);
    if (kind < 7) {
      return AnyOf(kTexts);
    }
    QString text;
    for (int left = Below(8); left >= 0; --left) {
      text += kind == 9 ? AnyOf(kOddCharacters) : QString(AnyOf(kCharacters));
    }
    return text;
  }

  [[nodiscard]] QPoint AnyPoint(const QWidget& control) {
    return {Below(std::max(control.width(), 1)), Below(std::max(control.height(), 1))};
  }

  void Note(const std::string& action) {
    static const bool traced = qEnvironmentVariableIsSet("TARVELL_MONKEY_TRACE");
    if (traced) {
      std::cerr << done_ << ": " << action << '\n';
    }
    trail_.push_back(std::to_string(done_) + ": " + action);
    if (trail_.size() > kTrailLength) {
      trail_.pop_front();
    }
  }

  [[nodiscard]] std::string Trail() const {
    std::string text = "Seed " + std::to_string(seed_) + "; the last actions:\n";
    for (const std::string& action : trail_) {
      text += "  " + action + "\n";
    }
    return text;
  }

  void Act(QWidget& top) {
    visited_.insert(top.metaObject()->className());
    if (QApplication::activePopupWidget() == &top) {
      UseMenuPopup(top);
    } else if (auto* box = qobject_cast<QMessageBox*>(&top)) {
      UseBox(*box);
    } else if (qobject_cast<QFileDialog*>(&top) != nullptr) {
      UseFileDialog(top);
    } else if (&top == menu_ && Chance(40)) {
      UseMainMenu(top);
    } else if (HasEmptySerial(top) && Chance(10)) {
      // Without a serial number, new data could never be saved.
      FillBox(*top.findChild<QLineEdit*>("txtSerial"), "3318A000" + QString::number(Below(100)));
    } else {
      UseAnyScreen(top);
    }
  }

  unsigned seed_;
  int wanted_;
  int done_ = 0;
  MonkeyPlaces places_;
  IsKnownMessage isKnown_;
  std::mt19937 random_;
  frmMain* menu_ = nullptr;
  bool running_ = false;
  QPointer<QMessageBox> looked_;  ///< the box whose text was checked
  std::vector<std::string> unknown_;
  std::set<std::string> visited_;  ///< the classes of the screens that appeared
  std::deque<std::string> trail_;
  QObject context_;
};

}  // namespace tarvell::test

#endif
