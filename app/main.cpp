// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>

#include <csignal>

#include "screens/main/frmMain.h"
#include "screens/widgets/DesktopPlatform.h"
#include "screens/widgets/UserSettings.h"

namespace {

/// By default, a write beyond the shell's file size limit, or to a pipe without a reader, ends the
/// program. When these signals are ignored, such a write fails with an error like any other.
void IgnoreSignalsOfRefusedWrites() {
#ifdef SIGXFSZ
  (void)std::signal(SIGXFSZ, SIG_IGN);
#endif
#ifdef SIGPIPE
  (void)std::signal(SIGPIPE, SIG_IGN);
#endif
}

}  // namespace

int main(int argc, char** argv) {
  IgnoreSignalsOfRefusedWrites();
  const QApplication application(argc, argv);
  tarvell::DesktopPlatform platform;
  tarvell::SetCurrentPlatform(&platform);
  tarvell::KeepUserSettingsIn(tarvell::UsualUserSettings());
  tarvell::frmMain mainMenu;
  mainMenu.Form_Load();
  return QApplication::exec();
}
