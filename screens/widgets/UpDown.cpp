// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/UpDown.h"

#include <QEvent>
#include <QKeyEvent>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tarvell {

void TypeInto(QLineEdit* box, int number) {
  box->selectAll();
  box->insert(QString::number(number));
}

UpDown::UpDown(QWidget* parent) : QWidget(parent) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  // As high as the box beside it, regardless of the size hints of the buttons.
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  const auto addButton = [&](const QString& name, Qt::ArrowType arrow, int step) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    // The Up and Down keys work in the box itself.
    button->setFocusPolicy(Qt::NoFocus);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    connect(button, &QToolButton::clicked, this, [this, step] { SetValue(value_ + step); });
    layout->addWidget(button);
  };
  addButton("up", Qt::UpArrow, 1);
  addButton("down", Qt::DownArrow, -1);
}

void UpDown::SetBuddy(QLineEdit* box) {
  box_ = box;
  for (auto* button : findChildren<QToolButton*>()) {
    button->setAccessibleName(
        (button->objectName() == "up" ? tr("%1, up") : tr("%1, down")).arg(box->accessibleName()));
  }
  box_->installEventFilter(this);
  connect(box_, &QLineEdit::textChanged, this, &UpDown::FollowBox);
}

void UpDown::SetRange(int minimum, int maximum) {
  minimum_ = minimum;
  SetMaximum(maximum);
}

void UpDown::SetMaximum(int maximum) {
  maximum_ = maximum;
  value_ = std::clamp(value_, minimum_, maximum_);
}

void UpDown::SetValue(int value) {
  value_ = std::clamp(value, minimum_, maximum_);
  if (box_ != nullptr) {
    TypeInto(box_, value_);
  }
}

bool UpDown::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Up || key == Qt::Key_Down) {
      SetValue(value_ + (key == Qt::Key_Up ? 1 : -1));
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void UpDown::FollowBox(const QString& text) {
  bool isNumber = false;
  const int number = text.trimmed().toInt(&isNumber);
  if (isNumber) {
    value_ = std::clamp(number, minimum_, maximum_);
  }
}

}  // namespace tarvell
