// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QProgressBar>
#include <QTimer>

#include "core/session/Tarvell_MainModule.h"
#include "screens/overview/frmOverview.h"

/// Shows the overview of a laboratory, whose folder is the argument, and ends when it is full.
int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const std::string folder = QApplication::arguments().value(1).toStdString();
  tarvell::gCalibrationDir = folder + "/calfactors";
  tarvell::gStationDir = folder + "/stations";
  tarvell::frmOverview overview(nullptr);
  const auto* progress = overview.findChild<QProgressBar*>("prgSurvey");
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    if (!progress->isVisible()) {
      overview.close();
    }
  });
  look.start(100);
  overview.ShowModally([] { return tarvell::FileDate{2026, 11, 22}; });
  return 0;
}
