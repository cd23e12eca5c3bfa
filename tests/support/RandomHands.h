// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_RANDOMHANDS_H
#define TARVELL_TESTS_SUPPORT_RANDOMHANDS_H

#include <QAbstractItemView>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <deque>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace tarvell::test {

/// The controls of a screen that can be used now.
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

/// The hands of the Monkey: they choose at random, click, press and type, and note what they did.
/// The same seed gives the same choices. With TARVELL_MONKEY_TRACE set, every act is printed before
/// it is done.
class RandomHands {
 public:
  explicit RandomHands(unsigned seed) : seed_(seed), random_(seed) {}

  [[nodiscard]] int Below(int bound) {
    return static_cast<int>(random_() % static_cast<std::uint32_t>(bound));
  }
  [[nodiscard]] bool Chance(int percent) { return Below(100) < percent; }
  template <typename Items>
  [[nodiscard]] auto AnyOf(const Items& items) {
    return items[static_cast<decltype(items.size())>(Below(static_cast<int>(items.size())))];
  }
  [[nodiscard]] QString AnyText();

  void Click(QWidget& control, const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
             bool twice = false, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Clicks where a control of any size is: near its left end.
  void Click(QWidget& control);
  void Key(QWidget* target, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
           const QString& text = {});
  /// Types where the keyboard is, while it stays in the window of `top`.
  void TypeText(QWidget& top, const QString& text);
  /// Replaces the text of a box.
  void FillBox(QWidget& box, const QString& text);
  /// Clicks any cell of a list or table.
  void ClickCell(QAbstractItemView& view, bool twice = false,
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void ClickSomewhere(QWidget& top);
  /// Presses any key or types, where the keyboard is.
  void PressKey(QWidget& top);

  /// Begins the next action.
  void Next() { ++done_; }
  [[nodiscard]] int Done() const { return done_; }
  void Note(const std::string& act);
  /// The seed and the latest acts.
  [[nodiscard]] std::string Trail() const;

  /// Notes that a screen, control or menu entry was used.
  void NoteUse(const QString& name) { used_.insert(name.toStdString()); }
  /// The classes of the screens that appeared, and the names of the controls and menu entries that
  /// were used.
  [[nodiscard]] const std::set<std::string>& Used() const { return used_; }

 private:
  [[nodiscard]] QPoint AnyPoint(const QWidget& control);

  unsigned seed_;
  std::mt19937 random_;
  int done_ = 0;
  std::set<std::string> used_;
  std::deque<std::string> trail_;
};

/// The class and the name of a control.
[[nodiscard]] std::string Describe(const QWidget& control);

}  // namespace tarvell::test

#endif
