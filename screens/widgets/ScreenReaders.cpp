// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/ScreenReaders.h"

#include <QComboBox>
#include <QLabel>

namespace tarvell {

void LabelDropDownLists(QWidget* part) {
  for (QComboBox* list : part->findChildren<QComboBox*>()) {
    if (list->accessibleName().isEmpty()) {
      continue;
    }
    // The list's parent owns it.
    auto* label = new QLabel(list->accessibleName(), list->parentWidget());
    label->setObjectName("labelOf_" + list->objectName());
    label->hide();
    label->setBuddy(list);
    // The first label is the one that is read.
    label->lower();
  }
}

}  // namespace tarvell
