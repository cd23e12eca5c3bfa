// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/DeliberateChoice.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QMouseEvent>

namespace tarvell {

namespace {

class DeliberateChoice : public QObject {
 public:
  explicit DeliberateChoice(QComboBox* box) : QObject(box), box_(box) {
    box->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched != box_) {
      return IsOtherButton(*event);
    }
    switch (event->type()) {
      case QEvent::Wheel:
        if (!box_->hasFocus()) {
          event->ignore();
          return true;
        }
        break;
      case QEvent::MouseButtonPress:
      case QEvent::KeyPress:
        WatchList();
        break;
      default:
        break;
    }
    return false;
  }

 private:
  static bool IsOtherButton(const QEvent& event) {
    const bool isButton = event.type() == QEvent::MouseButtonPress ||
                          event.type() == QEvent::MouseButtonRelease ||
                          event.type() == QEvent::MouseButtonDblClick;
    return isButton && static_cast<const QMouseEvent&>(event).button() != Qt::LeftButton;
  }

  /// Asking for the open list creates it, which takes time. Therefore this waits until the list may
  /// open.
  void WatchList() {
    if (!watchesList_) {
      watchesList_ = true;
      box_->view()->viewport()->installEventFilter(this);
    }
  }

  QComboBox* box_;
  bool watchesList_ = false;
};

}  // namespace

void ChangeOnlyDeliberately(QComboBox* box) {
  // StrongFocus leaves out the mouse wheel, which would otherwise give the box the focus.
  box->setFocusPolicy(Qt::StrongFocus);
  new DeliberateChoice(box);  // the box owns it
}

}  // namespace tarvell
