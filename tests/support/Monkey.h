// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_MONKEY_H
#define TARVELL_TESTS_SUPPORT_MONKEY_H

#include <QMessageBox>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace tarvell {
class frmMain;
}

namespace tarvell::test {

/// Ends the process, with what `tell` returns, when nobody reports progress for too long. It runs
/// in a thread of its own, and so also finds an endless loop.
class Watchdog {
 public:
  explicit Watchdog(std::function<std::string()> tell);
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;
  ~Watchdog();

  void Progress();

 private:
  void Watch();

  std::function<std::string()> tell_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::uint64_t progress_ = 0;
  bool ended_ = false;
  std::thread thread_;  ///< last: it uses the others
};

/// What the Monkey may type where it matters, so that it gets anywhere.
struct MonkeyPlaces {
  QString calibrationDir;
  QString stationDir;
  std::vector<std::string> files;    ///< native, for the file dialog
  std::vector<std::string> folders;  ///< native; their "calfactors" and "stations" are picked
};

/// Uses the whole program with random hands: keys, clicks, wheel, clipboard, closed and resized
/// windows. The same seed gives the same actions. Whenever the program is closed, it is started
/// again, until the actions are used up.
class Monkey {
 public:
  using IsKnownMessage = std::function<bool(const QString& text)>;

  Monkey(unsigned seed, int actions, MonkeyPlaces places, IsKnownMessage isKnown);
  Monkey(const Monkey&) = delete;
  Monkey& operator=(const Monkey&) = delete;
  ~Monkey();

  void Run();

  /// The message boxes that no pattern knows, each with the actions that led to it.
  [[nodiscard]] const std::vector<std::string>& Unknown() const { return unknown_; }
  /// The classes of the screens that were acted upon, in the order in which they came first.
  [[nodiscard]] const std::vector<std::string>& Visited() const { return visited_; }
  [[nodiscard]] int Actions() const { return done_; }

 private:
  void Tick();
  /// The pop-up or screen that has the user's attention, nullptr while there is none.
  [[nodiscard]] QWidget* Top() const;
  void Act(QWidget& top);
  void Leave(QWidget& top);
  void LookAtBox(QMessageBox& box);

  // Hands for one kind of screen.
  void UseMenuPopup(QWidget& popup);
  void UseBox(QMessageBox& box);
  void UseFileDialog(QWidget& dialog);
  void UseMainMenu(QWidget& menu);
  void UseAnyScreen(QWidget& top);

  // What hands do.
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
  [[nodiscard]] bool Chance(int percent) { return Below(100) < percent; }
  [[nodiscard]] QString AnyText();
  [[nodiscard]] QPoint AnyPoint(const QWidget& control);
  void Note(const std::string& action);
  [[nodiscard]] std::string Trail();

  unsigned seed_;
  int wanted_;
  int done_ = 0;
  MonkeyPlaces places_;
  IsKnownMessage isKnown_;
  std::mt19937 random_;
  frmMain* menu_ = nullptr;
  bool running_ = false;
  QPointer<QMessageBox> looked_;  ///< the box whose text has been compared
  std::vector<std::string> unknown_;
  std::vector<std::string> visited_;
  std::mutex trailMutex_;
  std::deque<std::string> trail_;
  QObject context_;
  Watchdog watchdog_;
};

}  // namespace tarvell::test

#endif
