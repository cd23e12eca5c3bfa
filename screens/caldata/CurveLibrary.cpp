// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CurveLibrary.h"

#include <QCoreApplication>
#include <QLibrary>

namespace tarvell {

namespace {

QString& LibraryFolder() {
  static QString folder;
  return folder;
}

}  // namespace

void TakeCurveLibraryFrom(const QString& folder) {
  LibraryFolder() = folder;
}

LoadedPlot LoadPlot(QWidget* parent) {
  const QString folder =
      LibraryFolder().isEmpty() ? QCoreApplication::applicationDirPath() : LibraryFolder();
  QLibrary library(folder + "/tarvell_curve");
  const auto make = reinterpret_cast<NewCurvePlotFunction>(library.resolve(kNewCurvePlot));
  if (make == nullptr) {
    return {nullptr, QCoreApplication::translate(
                         "CurveLibrary",
                         "The curve cannot be shown, because a part of the program is missing or "
                         "damaged. Everything else works. Install the program again to see the "
                         "curve. (%1)")
                         .arg(library.errorString())};
  }
  return {make(parent), {}};
}

}  // namespace tarvell
