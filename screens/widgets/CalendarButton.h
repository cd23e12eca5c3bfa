// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_CALENDARBUTTON_H
#define TARVELL_SCREENS_WIDGETS_CALENDARBUTTON_H

#include <QDate>
#include <QString>
#include <QToolButton>

#include "screens/widgets/DateBoxes.h"

namespace tarvell {

/// A button that opens a calendar beside the boxes of a date; F4 in the day or the year does the
/// same. A chosen date goes into the boxes as if it were typed. Escape leaves them as they are.
class CalendarButton final : public QToolButton {
  Q_OBJECT

 public:
  /// `name` is the name of the date in a sentence, such as "the due date". The boxes must live as
  /// long as the button.
  CalendarButton(const DateControls& date, const QString& name, QWidget* parent);

 private:
  void OpenCalendar();
  /// The date in the boxes, limited to the end of its month and to the years of the calendar;
  /// today when the boxes hold none, or one that nobody has entered.
  [[nodiscard]] QDate Shown() const;
  void Take(const QDate& chosen) const;

  DateControls date_;
  QString name_;
};

}  // namespace tarvell

#endif
