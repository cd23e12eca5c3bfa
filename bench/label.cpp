// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QLabel>

#include <cstdlib>

#include "Painted.h"

/// The least program with a window: it ends, without tidying up, as soon as that is painted.
int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QLabel label("Tarvell");
  const tarvell::bench::Painted painted([](const QWidget&) { return true; },
                                        [](QWidget&) { std::_Exit(0); });
  label.show();
  return QApplication::exec();
}
