// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/EnterKey.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcutEvent>

namespace tarvell {

namespace {

class EnterKey : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Shortcut) {
      return PressByAltKey(watched, *static_cast<QShortcutEvent*>(event));
    }
    if (event->type() != QEvent::KeyPress) {
      return false;
    }
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (qobject_cast<QLineEdit*>(watched) != nullptr ||
        qobject_cast<QComboBox*>(watched) != nullptr ||
        qobject_cast<QAbstractItemView*>(watched) != nullptr) {
      return IsUnknownAltKey(key);
    }
    if (!IsPlainEnter(key)) {
      return false;
    }
    // A key that is held presses once, even when that press opens another screen.
    if (key.isAutoRepeat()) {
      return true;
    }
    auto* button = qobject_cast<QPushButton*>(watched);
    if (button != nullptr) {
      button->click();
    }
    return button != nullptr;
  }

 private:
  /// An Alt key that the screen does not have. The toolkit would type its letter into the box, or
  /// search for it in the list.
  /// AltGr, which types characters, is Ctrl+Alt on some systems.
  static bool IsUnknownAltKey(const QKeyEvent& key) {
    return (key.modifiers() & (Qt::AltModifier | Qt::ControlModifier)) == Qt::AltModifier &&
           !key.text().isEmpty() && key.text().at(0).isPrint();
  }

  /// The toolkit itself presses a button a moment after its Alt key, when another key may have
  /// closed the screen.
  static bool PressByAltKey(QObject* watched, const QShortcutEvent& event) {
    auto* button = qobject_cast<QAbstractButton*>(watched);
    if (button == nullptr || event.isAmbiguous()) {
      return false;
    }
    if (button->isCheckable() && (button->focusPolicy() & Qt::ClickFocus) != 0) {
      button->setFocus(Qt::ShortcutFocusReason);
    }
    button->click();
    return true;
  }
};

}  // namespace

void EnterPressesFocusedButton(QWidget* screen) {
  auto* keys = new EnterKey(screen);  // the screen owns it
  for (auto* button : screen->findChildren<QAbstractButton*>()) {
    button->installEventFilter(keys);
  }
  for (auto* box : screen->findChildren<QLineEdit*>()) {
    box->installEventFilter(keys);
  }
  for (auto* box : screen->findChildren<QComboBox*>()) {
    box->installEventFilter(keys);
  }
  for (auto* list : screen->findChildren<QAbstractItemView*>()) {
    list->installEventFilter(keys);
  }
  // A dialog presses its default button for keys that no control takes.
  screen->installEventFilter(keys);
}

bool IsPlainEnter(const QKeyEvent& key) {
  return (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) &&
         (key.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == 0;
}

}  // namespace tarvell
