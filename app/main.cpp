// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>

#include <csignal>

#include "screens/main/frmMain.h"
#include "screens/widgets/DesktopPlatform.h"

namespace {

/// A write beyond the shell's limit of the file size, or to a pipe that nobody reads, is told like
/// any other write that fails; by default it would end the program with all that was typed.
void KeepRunningWhenAWriteIsRefused() {
#ifdef SIGXFSZ
  (void)std::signal(SIGXFSZ, SIG_IGN);
#endif
#ifdef SIGPIPE
  (void)std::signal(SIGPIPE, SIG_IGN);
#endif
}

}  // namespace

int main(int argc, char** argv) {
  KeepRunningWhenAWriteIsRefused();
  const QApplication application(argc, argv);
  tarvell::DesktopPlatform platform;
  tarvell::SetCurrentPlatform(&platform);
  tarvell::frmMain mainMenu;
  mainMenu.Form_Load();
  return QApplication::exec();
}
