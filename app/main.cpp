// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>

#include "app/frmMain.h"
#include "common/DesktopPlatform.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  tarvell::DesktopPlatform platform;
  tarvell::SetCurrentPlatform(&platform);
  tarvell::frmMain mainMenu;
  mainMenu.Form_Load();
  return QApplication::exec();
}
