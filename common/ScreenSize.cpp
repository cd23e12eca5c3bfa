// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/ScreenSize.h"

#include <QEvent>
#include <QFontMetrics>
#include <QScreen>

#include <algorithm>

namespace tarvell {

namespace {

/// Height of a line of the font that the forms are drawn for.
constexpr double kDesignHeight = 14;
/// What the window manager commonly adds to a window that is not on the display yet.
constexpr QSize kFrame(16, 48);

class WithinDisplay : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show && !event->spontaneous()) {
      auto* window = static_cast<QWidget*>(watched);
      window->resize(window->size().boundedTo(window->screen()->availableSize() - kFrame));
    }
    return QObject::eventFilter(watched, event);
  }
};

}  // namespace

void SuitDisplay(QWidget* window) {
  window->resize(window->size() * std::max(1.0, window->fontMetrics().height() / kDesignHeight));
  window->installEventFilter(new WithinDisplay(window));  // the window owns it
}

}  // namespace tarvell
