// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>

#include <memory>

#include "Painted.h"
#include "core/files/Paths.h"
#include "core/session/Tarvell_MainModule.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/main/frmMain.h"
#include "screens/widgets/DesktopPlatform.h"

/// Runs the program, without the splash screen's wait, until its main menu is painted or, with a
/// second argument, until the editor shows a resistor set. Then it ends without tidying up. The
/// arguments are the folder with the drives and the path of the set's data file.
int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  tarvell::DesktopPlatform platform;
  tarvell::SetCurrentPlatform(&platform);
  tarvell::SetDriveFolder(arguments.value(1).toStdString());
  tarvell::frmMain mainMenu;
  const bool isEditor = arguments.size() > 2;
  const auto editor = isEditor ? std::make_unique<tarvell::frmCalDataTabInput>(&mainMenu) : nullptr;
  const tarvell::bench::Painted editorPainted(
      [&](const QWidget& window) { return &window == editor.get(); },
      [](QWidget&) { tarvell::bench::Finish(); });
  const tarvell::bench::Painted menuPainted(
      [&](const QWidget& window) { return &window == &mainMenu; },
      [&](QWidget&) {
        if (!isEditor) {
          tarvell::bench::Finish();
        }
        tarvell::gCalFiles[0].FilePath = arguments.value(2).toStdString();
        editor->SetupDat(0, "RT730A");
      });
  mainMenu.Form_Load(0);
  return QApplication::exec();
}
