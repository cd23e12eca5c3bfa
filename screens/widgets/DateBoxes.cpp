// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/DateBoxes.h"

#include <cstdint>

#include "core/session/Tarvell_MainModule.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

constexpr int kDayCharacters = 7;  // with room for a warning icon
constexpr int kYearCharacters = 5;

void SetUpNumber(QLineEdit* box, UpDown* spinner, int minimum, int maximum, int characters) {
  box->setFixedWidth(box->fontMetrics().horizontalAdvance(QString(characters, u'0')) +
                     box->fontMetrics().height());
  box->setAlignment(Qt::AlignRight);
  spinner->SetRange(minimum, maximum);
  spinner->SetBuddy(box);
}

}  // namespace

void SetUpDayBox(QLineEdit* box, UpDown* spinner) {
  SetUpNumber(box, spinner, 1, kMaxDay, kDayCharacters);
}

void SetUpYearBox(QLineEdit* box, UpDown* spinner) {
  SetUpNumber(box, spinner, kFirstYear, kLastYear, kYearCharacters);
}

void AddMonths(QComboBox* list) {
  for (std::int16_t month = 1; !NumberToMonth(month).empty(); ++month) {
    list->addItem(ToQt(NumberToMonth(month)));
  }
}

}  // namespace tarvell
