// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_DATEBOXES_H
#define TARVELL_SCREENS_WIDGETS_DATEBOXES_H

#include <QComboBox>
#include <QLineEdit>

#include "screens/widgets/UpDown.h"

/// The boxes in which the screens show a date: day and year each in a text box with a spinner, the
/// month in a list.
namespace tarvell {

inline constexpr int kMostDays = 31;

/// Makes the box as wide as its numbers and gives it the spinner, from 1 to kMostDays.
void SetUpDayBox(QLineEdit* box, UpDown* spinner);

/// The same for a year, from 1904 to 2037.
void SetUpYearBox(QLineEdit* box, UpDown* spinner);

/// Appends "JAN" to "DEC".
void AddMonths(QComboBox* list);

}  // namespace tarvell

#endif
