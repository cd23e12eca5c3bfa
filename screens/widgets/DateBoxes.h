// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_DATEBOXES_H
#define TARVELL_SCREENS_WIDGETS_DATEBOXES_H

#include <QComboBox>
#include <QLineEdit>

#include "screens/widgets/UpDown.h"

/// The controls of a date: a text box with a spinner for the day, another for the year, and a list
/// for the month.
namespace tarvell {

inline constexpr int kMaxDay = 31;
inline constexpr int kFirstYear = 1904;
inline constexpr int kLastYear = 2037;

/// The boxes of a date.
struct DateControls {
  QLineEdit* day;
  QComboBox* month;
  QLineEdit* year;
};

/// Fits the width of the box to its numbers and sets the spinner's range to 1 to kMaxDay.
void SetUpDayBox(QLineEdit* box, UpDown* spinner);

/// The same for a year, from 1904 to 2037.
void SetUpYearBox(QLineEdit* box, UpDown* spinner);

/// Appends "JAN" to "DEC".
void AddMonths(QComboBox* list);

}  // namespace tarvell

#endif
