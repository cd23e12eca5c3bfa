// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

/// Runs the tests of the screens without a display, with a temporary home folder and trash.
/// TARVELL_TEST_DISPLAY may name a file that describes the display.
int main(int argc, char** argv) {
  const QTemporaryDir home;
  qputenv("HOME", home.path().toLocal8Bit());
  qputenv("XDG_DATA_HOME", (home.path() + "/data").toLocal8Bit());
  qputenv("XDG_CONFIG_HOME", (home.path() + "/config").toLocal8Bit());
  qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
  // No test prints, whatever printers this computer has.
  qputenv("CUPS_SERVER", home.path().toLocal8Bit() + "/no-printers");
  const QByteArray display = qgetenv("TARVELL_TEST_DISPLAY");
  qputenv("QT_QPA_PLATFORM", display.isEmpty() ? "offscreen" : "offscreen:configfile=" + display);
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
