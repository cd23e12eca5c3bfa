// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/CalmWheel.h"

#include <QEvent>

namespace tarvell {

namespace {

class CalmWheel : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool stops =
        event->type() == QEvent::Wheel && !static_cast<QWidget*>(watched)->hasFocus();
    if (stops) {
      event->ignore();
    }
    return stops;
  }
};

}  // namespace

void IgnoreWheelWithoutFocus(QComboBox* box) {
  // Not by the wheel, or it would have the focus at once.
  box->setFocusPolicy(Qt::StrongFocus);
  box->installEventFilter(new CalmWheel(box));  // the box owns it
}

}  // namespace tarvell
