// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QLabel>

#include "Finish.h"
#include "Painted.h"

/// The least program with a window: it ends, without tidying up, as soon as that is painted. With
/// an argument it shows one such window before, as a splash.
int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QLabel first("Splash");
  QLabel label("Tarvell");
  const tarvell::bench::Painted painted([&](const QWidget& window) { return &window == &label; },
                                        [](QWidget&) { tarvell::bench::Finish(); });
  const tarvell::bench::Painted firstPainted(
      [&](const QWidget& window) { return &window == &first; },
      [&](QWidget&) {
        first.hide();
        label.show();
      });
  (argc > 1 ? first : label).show();
  return QApplication::exec();
}
