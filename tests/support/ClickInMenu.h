// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_CLICKINMENU_H
#define TARVELL_TESTS_SUPPORT_CLICKINMENU_H

#include <QMenu>

#include "support/User.h"

namespace tarvell::test {

/// Clicks a button that opens a menu, and the entry with this caption, without its "&".
inline void ClickInMenu(QWidget& screen, const QString& button, const QString& caption) {
  Click(screen, button);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr) << button.toStdString() << " opens no menu";
  for (QAction* entry : menu->actions()) {
    if (entry->text().remove('&') == caption) {
      QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
      return;
    }
  }
  ADD_FAILURE() << "no entry " << caption.toStdString();
}

}  // namespace tarvell::test

#endif
