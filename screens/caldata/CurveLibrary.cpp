// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/CurveLibrary.h"

#include <QCoreApplication>

#include "screens/widgets/ProgramLibrary.h"

namespace tarvell {

LoadedPlot LoadPlot(QWidget* parent) {
  const LibraryFunction library = FunctionOf("tarvell_curve", kNewCurvePlot);
  if (library.function == nullptr) {
    return {nullptr, QCoreApplication::translate(
                         "CurveLibrary",
                         "The curve cannot be shown, because a part of the program is missing or "
                         "damaged. Everything else works. Install the program again to see the "
                         "curve. (%1)")
                         .arg(library.error)};
  }
  return {reinterpret_cast<NewCurvePlotFunction>(library.function)(parent), {}};
}

}  // namespace tarvell
