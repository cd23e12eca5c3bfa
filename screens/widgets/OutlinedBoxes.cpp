// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/OutlinedBoxes.h"

#include <QCheckBox>
#include <QPalette>

#include "screens/widgets/Colours.h"

namespace tarvell {

void OutlineCheckBoxes(QWidget* screen) {
  constexpr float kShare = 0.75F;
  for (QCheckBox* box : screen->findChildren<QCheckBox*>()) {
    QPalette palette = box->palette();
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    if (window.lightness() < text.lightness()) {
      // The style draws the outline darker than the window, which a check box does not paint.
      palette.setColor(QPalette::Window, Mixed(text, window, kShare));
      box->setPalette(palette);
    }
  }
}

}  // namespace tarvell
