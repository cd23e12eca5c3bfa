// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/CalendarButton.h"

#include <QCalendarWidget>
#include <QFrame>
#include <QIcon>
#include <QKeySequence>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdint>

#include "core/session/Tarvell_MainModule.h"
#include "screens/widgets/DateBoxes.h"
#include "screens/widgets/DefaultDate.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

constexpr int kIconGap = 4;  // pixels

/// The picture of all such buttons. Reading it takes longer than making a button.
const QIcon& CalendarIcon() {
  static QIcon icon;
  if (icon.isNull()) {
    icon = QIcon(":/images/calendar.svg");
    // Pictures must not outlive the application.
    qAddPostRoutine([] { icon = QIcon(); });
  }
  return icon;
}

/// The place of a pop-up below `button`, moved so that all of it is on the display.
QPoint PlaceBelow(const QWidget& button, const QSize& popup) {
  const QRect room = button.screen()->availableGeometry();
  const QPoint below = button.mapToGlobal(button.rect().bottomLeft());
  return {std::max(room.left(), std::min(below.x(), room.right() + 1 - popup.width())),
          std::max(room.top(), std::min(below.y(), room.bottom() + 1 - popup.height()))};
}

}  // namespace

CalendarButton::CalendarButton(const DateControls& date, const QString& name, QWidget* parent)
    : QToolButton(parent), date_(date), name_(name) {
  setObjectName("calendarOf_" + date.day->objectName());
  setIcon(CalendarIcon());
  setAccessibleName(tr("Calendar for %1").arg(name));
  setToolTip(tr("Opens a calendar to choose %1 (F4 in the day or the year).").arg(name));
  setAccessibleDescription(toolTip());
  // F4 opens the calendar in the boxes themselves.
  setFocusPolicy(Qt::NoFocus);
  // As high as the boxes beside it, and narrow: small displays have no room to spare.
  setFixedWidth(iconSize().width() + kIconGap);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  connect(this, &QToolButton::clicked, this, &CalendarButton::OpenCalendar);
  for (QLineEdit* box : {date.day, date.year}) {
    auto* key = new QShortcut(QKeySequence(Qt::Key_F4), box);  // the box owns it
    key->setContext(Qt::WidgetShortcut);
    connect(key, &QShortcut::activated, this, &CalendarButton::OpenCalendar);
  }
}

void CalendarButton::OpenCalendar() {
  auto* popup = new QFrame(this, Qt::Popup);
  popup->setAttribute(Qt::WA_DeleteOnClose);
  popup->setFrameShape(QFrame::StyledPanel);
  auto* calendar = new QCalendarWidget(popup);
  calendar->setObjectName("calendar");
  calendar->setAccessibleName(accessibleName());
  calendar->setAccessibleDescription(
      tr("The arrow keys choose a day, Page Up and Page Down a month. Enter takes it."));
  // Dates are typed into their boxes; the toolkit's own box for that leaks when the calendar
  // closes.
  calendar->setDateEditEnabled(false);
  // The toolkit's red is hard to read on a dark background.
  for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
    calendar->setWeekdayTextFormat(day, calendar->weekdayTextFormat(Qt::Monday));
  }
  calendar->setDateRange(QDate(kFirstYear, 1, 1), QDate(kLastYear, 12, kMaxDay));
  calendar->setSelectedDate(Shown());
  auto* layout = new QVBoxLayout(popup);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(calendar);
  const auto take = [this, popup](const QDate& chosen) {
    popup->close();
    Take(chosen);
  };
  connect(calendar, &QCalendarWidget::clicked, this, take);
  connect(calendar, &QCalendarWidget::activated, this, take);
  popup->adjustSize();
  popup->move(PlaceBelow(*this, popup->size()));
  popup->show();
  calendar->setFocus();
}

QDate CalendarButton::Shown() const {
  const int month = MonthToNumber(FromQt(date_.month->currentText()));
  const QDate first(date_.year->text().trimmed().toInt(), month, 1);
  bool isNumber = false;
  const int day = date_.day->text().trimmed().toInt(&isNumber);
  if (!first.isValid() || !isNumber || IsDefaultDate(date_.day)) {
    return QDate::currentDate();
  }
  return first.addDays(std::clamp(day, 1, first.daysInMonth()) - 1);
}

void CalendarButton::Take(const QDate& chosen) const {
  TypeInto(date_.year, chosen.year());
  const int month =
      date_.month->findText(ToQt(NumberToMonth(static_cast<std::int16_t>(chosen.month()))));
  date_.month->setCurrentIndex(month);
  emit date_.month->activated(month);
  TypeInto(date_.day, chosen.day());
  // Undo in one box would leave a date that nobody has chosen.
  for (QLineEdit* box : {date_.day, date_.year}) {
    box->setText(box->text());
  }
  date_.day->setFocus();
}

}  // namespace tarvell
