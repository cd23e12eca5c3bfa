// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CURVELIBRARY_H
#define TARVELL_SCREENS_CALDATA_CURVELIBRARY_H

#include <QString>

#include "screens/curve/CurvePlot.h"

/// The library that draws curves. It is loaded with the first plot and stays loaded.
namespace tarvell {

struct LoadedPlot {
  CurvePlot* plot = nullptr;  ///< the parent owns it; nullptr if the library cannot be loaded
  QString message;            ///< why it cannot, and what to do
};
[[nodiscard]] LoadedPlot LoadPlot(QWidget* parent);

}  // namespace tarvell

#endif
