// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/RandomHands.h"

#include <QTest>
#include <QtTest/qtestspontaneevent.h>
#include <QtWidgets>

#include <algorithm>
#include <iostream>

#include "support/MonkeyInput.h"

namespace tarvell::test {

namespace {

constexpr std::size_t kTrailLength = 60;

void SendMouse(QWidget* control, QEvent::Type type, const QPoint& at, Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers) {
  const Qt::MouseButtons held =
      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
  QMouseEvent event(type, at, control->mapToGlobal(at), button, held, modifiers);
  // Only a spontaneous press, as from the window system, gives the focus.
  QSpontaneKeyEvent::setSpontaneous(&event);
  QCoreApplication::instance()->notify(control, &event);
}

}  // namespace

std::string Describe(const QWidget& control) {
  const QString name = control.objectName();
  return std::string(control.metaObject()->className()) + " " + name.toStdString();
}

QString RandomHands::AnyText() {
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

QPoint RandomHands::AnyPoint(const QWidget& control) {
  return {Below(std::max(control.width(), 1)), Below(std::max(control.height(), 1))};
}

void RandomHands::Click(QWidget& control, const QPoint& at, Qt::MouseButton button, bool twice,
                        Qt::KeyboardModifiers modifiers) {
  Note(std::string(twice ? "double click " : "click ") + Describe(control) + " by button " +
       std::to_string(button) + " at " + std::to_string(at.x()) + "," + std::to_string(at.y()));
  NoteUse(control.objectName());
  const QPointer<QWidget> alive(&control);
  const auto send = [&](QEvent::Type type) {
    if (alive) {
      SendMouse(alive, type, at, button, modifiers);
    }
  };
  send(QEvent::MouseButtonPress);
  send(QEvent::MouseButtonRelease);
  if (twice) {
    send(QEvent::MouseButtonDblClick);
    send(QEvent::MouseButtonRelease);
  }
}

void RandomHands::Click(QWidget& control) {
  Click(control, QPoint(std::min(10, control.width() / 2), control.height() / 2));
}

void RandomHands::Key(QWidget* target, int key, Qt::KeyboardModifiers modifiers,
                      const QString& text) {
  Note("key " + std::to_string(key) + " with " + std::to_string(modifiers.toInt()) + " " +
       text.toStdString() + " at " + Describe(*target));
  const auto code = static_cast<Qt::Key>(key);
  if (text.isEmpty()) {
    QTest::keyClick(target, code, modifiers);
    return;
  }
  QTest::sendKeyEvent(QTest::Click, target, code, text, modifiers);
}

void RandomHands::TypeText(QWidget& top, const QString& text) {
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

void RandomHands::FillBox(QWidget& box, const QString& text) {
  const QPointer<QWidget> alive(&box);
  Click(box, box.rect().center());
  if (alive) {
    Key(&box, Qt::Key_A, Qt::ControlModifier);
  }
  if (alive) {
    TypeText(box, text);
  }
}

void RandomHands::ClickCell(QAbstractItemView& view, bool twice, Qt::KeyboardModifiers modifiers) {
  const int rows = view.model()->rowCount();
  const int columns = view.model()->columnCount();
  if (rows == 0 || columns == 0) {
    return;
  }
  const QModelIndex cell = view.model()->index(Below(rows), Below(columns));
  view.scrollTo(cell);
  Click(*view.viewport(), view.visualRect(cell).center(), Qt::LeftButton, twice, modifiers);
}

void RandomHands::ClickSomewhere(QWidget& top) {
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

void RandomHands::PressKey(QWidget& top) {
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

void RandomHands::Note(const std::string& act) {
  static const bool traced = qEnvironmentVariableIsSet("TARVELL_MONKEY_TRACE");
  if (traced) {
    std::cerr << done_ << ": " << act << '\n';
  }
  trail_.push_back(std::to_string(done_) + ": " + act);
  if (trail_.size() > kTrailLength) {
    trail_.pop_front();
  }
}

std::string RandomHands::Trail() const {
  std::string text = "Seed " + std::to_string(seed_) + "; the last actions:\n";
  for (const std::string& act : trail_) {
    text += "  " + act + "\n";
  }
  return text;
}

}  // namespace tarvell::test
