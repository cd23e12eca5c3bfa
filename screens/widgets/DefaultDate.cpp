// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/DefaultDate.h"

#include <initializer_list>

namespace tarvell {

namespace {

/// The property of the box for the day.
constexpr const char* kIsDefault = "isDefault";

}  // namespace

DefaultDate::DefaultDate(const DateControls& date, QObject* parent) : QObject(parent), date_(date) {
  const auto entered = [this] {
    if (isDefault_) {
      Mark(false);
      emit Entered();
    }
  };
  connect(date.day, &QLineEdit::textChanged, this, entered);
  connect(date.month, &QComboBox::currentIndexChanged, this, entered);
  connect(date.year, &QLineEdit::textChanged, this, entered);
}

void DefaultDate::Mark(bool isDefault) {
  isDefault_ = isDefault;
  date_.day->setProperty(kIsDefault, isDefault);
  const QString spoken = tr(" (default value, not entered)");
  for (QWidget* box : std::initializer_list<QWidget*>{date_.day, date_.month, date_.year}) {
    QFont font = box->font();
    if (font.italic() != isDefault) {
      // The toolkit takes its time for this, even when nothing changes.
      font.setItalic(isDefault);
      box->setFont(font);
    }
    const QString name = box->accessibleName().remove(spoken);
    box->setAccessibleName(isDefault ? name + spoken : name);
  }
}

bool IsDefaultDate(const QLineEdit* day) {
  return day->property(kIsDefault).toBool();
}

}  // namespace tarvell
