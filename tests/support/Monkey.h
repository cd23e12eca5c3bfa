// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_MONKEY_H
#define TARVELL_TESTS_SUPPORT_MONKEY_H

#include <QMessageBox>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <deque>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace tarvell {
class frmMain;
}

namespace tarvell::test {

/// Valid inputs, without which the Monkey would hardly get past the main menu.
struct MonkeyPlaces {
  QString calibrationDir;
  QString stationDir;
  std::vector<std::string> files;    ///< native, for the file dialog
  std::vector<std::string> folders;  ///< native; their "calfactors" and "stations" are picked
};

/// Uses the whole program at random: keys, clicks, wheel, clipboard, closing and resizing windows.
/// The same seed gives the same actions. When the program ends, it is started again, until all
/// actions are done. A program that hangs is ended by SIGALRM; with TARVELL_MONKEY_TRACE set, every
/// action of the seed is printed before it is done.
class Monkey {
 public:
  using IsKnownMessage = std::function<bool(const QString& text)>;

  Monkey(unsigned seed, int actions, MonkeyPlaces places, IsKnownMessage isKnown);
  Monkey(const Monkey&) = delete;
  Monkey& operator=(const Monkey&) = delete;
  ~Monkey() = default;

  void Run();

  /// The messages that are not known, each with the actions that led to it.
  [[nodiscard]] const std::vector<std::string>& Unknown() const { return unknown_; }
  /// The classes of the screens that appeared, in the order of their first appearance.
  [[nodiscard]] const std::vector<std::string>& Visited() const { return visited_; }
  [[nodiscard]] int Actions() const { return done_; }

 private:
  void Tick();
  /// The active pop-up or screen, nullptr when there is none.
  [[nodiscard]] QWidget* Top() const;
  void Act(QWidget& top);
  void Leave(QWidget& top);
  void LookAtBox(QMessageBox& box);

  // Actions on each kind of screen.
  void UseMenuPopup(QWidget& popup);
  void UseBox(QMessageBox& box);
  void UseFileDialog(QWidget& dialog);
  void UseMainMenu(QWidget& menu);
  void UseAnyScreen(QWidget& top);

  // Actions.
  void PressButton(QWidget& top);
  void FillBox(QWidget& top);
  void FillBox(QWidget& box, const QString& text);
  void ClickCell(QWidget& top);
  void ChooseTab(QWidget& top);
  void ChooseEntry(QWidget& top);
  void ClickSomewhere(QWidget& top);
  void PressKey(QWidget& top);
  void TypeText(QWidget& top, const QString& text);
  void PutOnClipboard();
  void Resize(QWidget& top);
  void Click(QWidget& control, const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
             bool twice = false);
  void Key(QWidget* target, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
           const QString& text = {});

  [[nodiscard]] int Below(int bound);
  template <typename Items>
  [[nodiscard]] auto AnyOf(const Items& items) {
    return items[static_cast<decltype(items.size())>(Below(static_cast<int>(items.size())))];
  }
  [[nodiscard]] bool Chance(int percent) { return Below(100) < percent; }
  [[nodiscard]] QString AnyText();
  [[nodiscard]] QPoint AnyPoint(const QWidget& control);
  void Note(const std::string& action);
  [[nodiscard]] std::string Trail() const;

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
  std::vector<std::string> visited_;
  std::deque<std::string> trail_;
  QObject context_;
};

}  // namespace tarvell::test

#endif
